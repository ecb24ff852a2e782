#include "storage/contenthash.h"

#include "storage/regularfile.h"

#define XXH_STATIC_LINKING_ONLY // the state's size
#define XXH_INLINE_ALL
#include <xxhash.h>

namespace tarvel4 {

struct ContentHash::State
{
    XXH3_state_t xxh3;
};

ContentHash::ContentHash()
    : m_state(std::make_unique<State>())
{
    XXH3_128bits_reset(&m_state->xxh3);
}

ContentHash::~ContentHash() = default;

void ContentHash::add(const char *bytes, qint64 count)
{
    XXH3_128bits_update(&m_state->xxh3, bytes, static_cast<std::size_t>(count));
}

QByteArray ContentHash::result() const
{
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(&canonical, XXH3_128bits_digest(&m_state->xxh3));
    static_assert(sizeof canonical.digest == size);
    return QByteArray(reinterpret_cast<const char *>(canonical.digest), size);
}

QByteArray ContentHash::ofFile(const QString &path, Outcome &outcome)
{
    constexpr int blockSize = 1 << 20;
    RegularFile file(path);
    ContentHash hash;
    QByteArray block(blockSize, Qt::Uninitialized);
    qint64 count = 0;
    while (file.outcome() && (count = file.read(block.data(), blockSize)) > 0)
        hash.add(block.constData(), count);
    outcome = file.outcome();
    return outcome ? hash.result() : QByteArray();
}

} // namespace tarvel4
