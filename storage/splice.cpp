#include "storage/splice.h"

#include <algorithm>
#include <cstring>

namespace tarvel4 {

namespace {

constexpr int blockSize = 256; // what is equal, nearly always, is compared by the block

/** How many bytes at their starts the two have in common, of at most \a most. */
int commonStart(const char *first, const char *second, int most)
{
    int common = 0;
    while (most - common >= blockSize
           && std::memcmp(first + common, second + common, blockSize) == 0)
        common += blockSize;
    return static_cast<int>(std::mismatch(first + common, first + most, second + common).first
                            - first);
}

/** The same before two ends. */
int commonEnd(const char *firstEnd, const char *secondEnd, int most)
{
    int common = 0;
    while (most - common >= blockSize
           && std::memcmp(firstEnd - common - blockSize, secondEnd - common - blockSize, blockSize)
               == 0)
        common += blockSize;
    while (common < most && firstEnd[-common - 1] == secondEnd[-common - 1])
        ++common;
    return common;
}

} // namespace

Splice Splice::between(const QByteArray &oldBytes, const QByteArray &newBytes, qint64 rest)
{
    const int most = static_cast<int>(qMin(oldBytes.size(), newBytes.size()));
    const int prefix = commonStart(oldBytes.constData(), newBytes.constData(), most);
    const int suffix = commonEnd(oldBytes.constData() + oldBytes.size(),
                                 newBytes.constData() + newBytes.size(), most - prefix);
    return {prefix, suffix + rest, oldBytes.mid(prefix, oldBytes.size() - suffix - prefix),
            newBytes.mid(prefix, newBytes.size() - suffix - prefix)};
}

} // namespace tarvel4
