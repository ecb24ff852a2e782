#include "storage/splice.h"

#include <algorithm>

namespace tarvel4 {

Splice Splice::between(const QByteArray &oldBytes, const QByteArray &newBytes, qint64 rest)
{
    const auto prefix = static_cast<int>(
        std::mismatch(oldBytes.begin(), oldBytes.end(), newBytes.begin(), newBytes.end()).first
        - oldBytes.begin());
    const auto suffix = static_cast<int>(std::mismatch(oldBytes.rbegin(), oldBytes.rend() - prefix,
                                                       newBytes.rbegin(), newBytes.rend() - prefix)
                                             .first
                                         - oldBytes.rbegin());
    return {prefix, suffix + rest, oldBytes.mid(prefix, oldBytes.size() - suffix - prefix),
            newBytes.mid(prefix, newBytes.size() - suffix - prefix)};
}

} // namespace tarvel4
