#include "songs/midi/cutpadding.h"

#include "songs/bytes.h"
#include "songs/midi/midiformat.h"

#include <algorithm>

namespace tarvel4 {

using namespace MidiFormat;

namespace {

constexpr char paddingId[] = "T4cu";

bool isPadding(const QByteArray &midi, int at)
{
    const int size = midi.size() - at;
    const int idSize = qMin(size, magicSize);
    return std::equal(paddingId, paddingId + idSize, midi.constData() + at)
        && midi.endsWith(CutPadding::ofSize(size));
}

} // namespace

QByteArray CutPadding::ofSize(int size)
{
    QByteArray padding(qMax(size, chunkHeaderSize), '\0');
    padding.replace(0, magicSize, paddingId);
    Bytes::putBigEndian(padding, chunkLengthOffset,
                        static_cast<quint32>(padding.size() - chunkHeaderSize));
    return padding.left(size);
}

void CutPadding::removeFrom(QByteArray &midi)
{
    qint64 chunk = 0;
    while (chunk < midi.size()) {
        const int at = static_cast<int>(chunk);
        if (isPadding(midi, at)) {
            midi.truncate(at);
            return;
        }
        if (!Bytes::containsRange(midi, at, chunkHeaderSize))
            return;
        chunk += chunkHeaderSize
            + static_cast<qint64>(Bytes::bigEndianAt<quint32>(midi, at + chunkLengthOffset));
    }
}

} // namespace tarvel4
