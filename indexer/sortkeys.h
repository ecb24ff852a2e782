#pragma once

#include "indexer/indexentry.h"

#include <QByteArray>
#include <QVector>

#include <cstring>
#include <vector>

namespace tarvel4 {

/** What the files of an index are sorted by, computed once a song; docs/formats.md, Player memory.
 */
namespace SortKeys {

/** Of the path order: upper case, then ISO 8859-1. The key of a path is that of its parts, joined.
 */
QByteArray ofPath(const QString &path);

/** Compares two keys of paths, byte by byte up to a zero byte. */
inline int comparePaths(const QByteArray &left, const QByteArray &right)
{
    return std::strcmp(left.constData(), right.constData());
}

/** Of titles and artists: compares as the text does without regard to case, whatever the language.
 */
QString ofText(const QString &text);

// Positions of entries in an order; equal ones keep the order they had.

std::vector<int> byPath(const std::vector<QByteArray> &keys);
std::vector<int> byPath(const QVector<IndexEntry> &entries);
std::vector<int> byText(const QVector<IndexEntry> &entries, QString IndexEntry::*text);
/** Sorts positions that are in another order already. */
std::vector<int> byText(const QVector<IndexEntry> &entries, QString IndexEntry::*text,
                        std::vector<int> positions);

} // namespace SortKeys

} // namespace tarvel4
