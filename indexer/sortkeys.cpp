#include "indexer/sortkeys.h"

#include <algorithm>
#include <numeric>

namespace tarvel4 {

namespace {

std::vector<int> allPositions(std::size_t count)
{
    std::vector<int> positions(count);
    std::iota(positions.begin(), positions.end(), 0);
    return positions;
}

} // namespace

QByteArray SortKeys::ofPath(const QString &path)
{
    constexpr ushort firstOther = 0x80;
    QByteArray key(path.size(), Qt::Uninitialized);
    ushort all = 0;
    std::transform(path.begin(), path.end(), key.begin(), [&all](QChar c) {
        all |= c.unicode();
        return c >= u'a' && c <= u'z' ? static_cast<char>(c.unicode() - u'a' + u'A')
                                      : static_cast<char>(c.unicode());
    });
    return all < firstOther ? key : path.toUpper().toLatin1();
}

QString SortKeys::ofText(const QString &text)
{
    constexpr ushort firstOther = 0x80;
    QString key(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), key.begin(), [](QChar c) {
        if (c.unicode() >= firstOther)
            return c.toCaseFolded();
        return c >= u'A' && c <= u'Z' ? QChar(c.unicode() - u'A' + u'a') : c;
    });
    return key;
}

std::vector<int> SortKeys::byPath(const std::vector<QByteArray> &keys)
{
    const auto isLess = [&keys](int left, int right) {
        return comparePaths(keys[static_cast<std::size_t>(left)],
                            keys[static_cast<std::size_t>(right)])
            < 0;
    };
    std::vector<int> positions = allPositions(keys.size());
    // A rebuild finds the songs in this order, and an update most of them.
    if (!std::is_sorted(positions.begin(), positions.end(), isLess))
        std::stable_sort(positions.begin(), positions.end(), isLess);
    return positions;
}

std::vector<int> SortKeys::byPath(const QVector<IndexEntry> &entries)
{
    std::vector<QByteArray> keys;
    keys.reserve(static_cast<std::size_t>(entries.size()));
    for (const IndexEntry &entry : entries)
        keys.push_back(ofPath(entry.relativePath));
    return byPath(keys);
}

std::vector<int> SortKeys::byText(const QVector<IndexEntry> &entries, QString IndexEntry::*text)
{
    return byText(entries, text, allPositions(static_cast<std::size_t>(entries.size())));
}

std::vector<int> SortKeys::byText(const QVector<IndexEntry> &entries, QString IndexEntry::*text,
                                  std::vector<int> positions)
{
    struct Keyed
    {
        QString key;
        int position;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(positions.size());
    for (const int position : positions)
        keyed.push_back({ofText(entries.at(position).*text), position});
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const Keyed &left, const Keyed &right) { return left.key < right.key; });
    std::transform(keyed.begin(), keyed.end(), positions.begin(),
                   [](const Keyed &entry) { return entry.position; });
    return positions;
}

} // namespace tarvel4
