#pragma once

#include "songs/mfx/lzhuff.h"

#include "tests/songs/songbytes.h"

namespace tarvel4 {

namespace SongBytes {

/** An MFx song around the bytes of a MIDI file, with the sizes in its header. The codec has tests
 * of its own. */
inline QByteArray mfx(int version, const MfxFields &fields, const QByteArray &midi)
{
    QByteArray stream;
    LzHuff().compress(midi, stream);
    QByteArray header = mfxHeader(version, fields);
    header.replace(4, 4, littleEndian(quint32(header.size() + stream.size()), 4));
    header.replace(12, 4, littleEndian(quint32(midi.size()), 4));
    return header + stream;
}

/** The MIDI bytes as an MF4 stream holds them: three more after the header of the first track. */
inline QByteArray withFiller(QByteArray midi, const QByteArray &filler = hex("FF00FF"))
{
    return midi.insert(midi.indexOf("MTrk") + 8, filler);
}

/** The MIDI bytes that an MFx song holds, as they stand before compression. */
inline QByteArray expanded(const QByteArray &mfxSong)
{
    QByteArray midi;
    LzHuff().expand(mfxSong.mid(mfxSong.startsWith("_MF5") ? 1024 : 512), midi);
    return midi;
}

} // namespace SongBytes

} // namespace tarvel4
