#pragma once

#include <QString>
#include <QVector>

#include <algorithm>
#include <numeric>

/** What the files of an index are sorted by, computed once a song; docs/formats.md, Player memory.
 */
namespace SortKeys {

/** Of the path order: upper case, then ISO 8859-1, compared byte by byte up to a zero byte. */
inline QByteArray ofPath(const QString &relativePath)
{
    return relativePath.toUpper().toLatin1();
}

/** Of titles and artists: compares as the text does without regard to case, whatever the language.
 */
QString ofText(const QString &text);

/** The numbers from 0 to \a count - 1 in the order of \a less; equal ones keep theirs. */
template <typename Less> QVector<int> sorted(int count, Less less)
{
    QVector<int> positions(count);
    std::iota(positions.begin(), positions.end(), 0);
    std::stable_sort(positions.begin(), positions.end(), less);
    return positions;
}

} // namespace SortKeys
