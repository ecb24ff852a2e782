#pragma once

#include "songs/mfx/lzhuff.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>

#include <algorithm>
#include <initializer_list>

namespace tarvel4 {

/** Songs put together by hand, byte by byte, for the tests of every module. Nothing here calls the
 * code under test but the codec, which has tests of its own. */
namespace SongBytes {

/** Bytes from their hexadecimal form; blanks are ignored. */
inline QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

inline QByteArray littleEndian(quint32 number, int width)
{
    QByteArray bytes;
    for (int shift = 0; shift < 8 * width; shift += 8)
        bytes.append(static_cast<char>(number >> shift & 0xFF));
    return bytes;
}

inline QByteArray bigEndian(quint32 number, int width)
{
    QByteArray bytes = littleEndian(number, width);
    std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

// --- MIDI -----------------------------------------------------------------------------------

inline QByteArray endOfTrack()
{
    return hex("00 FF 2F 00");
}

/** A note that sounds for a quarter. */
inline QByteArray note()
{
    return hex("00 90 3C 40  60 80 3C 00");
}

/** A meta event at delta-time 0. */
inline QByteArray meta(int type, const QByteArray &payload)
{
    return hex("00 FF") + static_cast<char>(type) + static_cast<char>(payload.size()) + payload;
}

/** A field of our own, at delta-time 0. */
inline QByteArray songInfo(int subType, const QByteArray &payload)
{
    return meta(0x4B, static_cast<char>(subType) + payload);
}

inline QByteArray marker(int bar, const QByteArray &text)
{
    return songInfo(6, bigEndian(static_cast<quint32>(bar), 2) + text);
}

inline QByteArray track(const QByteArray &events)
{
    return "MTrk" + bigEndian(static_cast<quint32>(events.size()), 4) + events;
}

inline QByteArray midi(int format, std::initializer_list<QByteArray> tracks)
{
    QByteArray bytes = "MThd" + hex("00000006") + bigEndian(static_cast<quint32>(format), 2)
        + bigEndian(static_cast<quint32>(tracks.size()), 2) + hex("0060");
    for (const QByteArray &chunk : tracks)
        bytes += chunk;
    return bytes;
}

/** A format 0 song whose track begins with \a events. */
inline QByteArray midi0(const QByteArray &events = QByteArray())
{
    return midi(0, {track(events + note() + endOfTrack())});
}

/** A format 1 song whose first track holds \a events and whose second one a note. */
inline QByteArray midi1(const QByteArray &events = QByteArray())
{
    return midi(1, {track(events + endOfTrack()), track(note() + endOfTrack())});
}

// --- MP3 ------------------------------------------------------------------------------------

inline QByteArray syncSafe(quint32 size)
{
    QByteArray bytes;
    for (int shift = 21; shift >= 0; shift -= 7)
        bytes.append(static_cast<char>(size >> shift & 0x7F));
    return bytes;
}

/** A text frame of an ID3v2.3 tag, Latin-1. */
inline QByteArray frame(const char *id, const QByteArray &text)
{
    return id + bigEndian(static_cast<quint32>(text.size() + 1), 4) + hex("0000 00") + text;
}

/** An ID3v2.3 tag around \a body. */
inline QByteArray tag(const QByteArray &body = QByteArray())
{
    return "ID3" + hex("03 00 00") + syncSafe(static_cast<quint32>(body.size())) + body;
}

/** What the system marks an edited MP3 with. */
inline QByteArray editMark()
{
    return hex("4D454454 00000004 0000 00 000000");
}

/** Silent MPEG-1 layer III frames: 128 kbit/s, 44.1 kHz, joint stereo, 417 bytes each. */
inline QByteArray audio(int frames = 3)
{
    QByteArray bytes;
    for (int i = 0; i < frames; ++i)
        bytes += hex("FFFB9064") + QByteArray(413, '\0');
    return bytes;
}

// --- MFx ------------------------------------------------------------------------------------

/** The fields of an MFx header that tests set; texts are put down as they are. */
struct MfxFields
{
    QByteArray title;
    QByteArray artist;
    QByteArray author;
    QByteArray genre;
    QByteArray longName;
    int bpm = 0;
    int flags = 0;
};

/** An MFx header of version 3, 4 or 5; what no field covers is filled with 0xA5, which must
 * survive a save. */
inline QByteArray mfxHeader(int version, const MfxFields &fields = MfxFields())
{
    QByteArray header(version == 5 ? 1024 : 512, '\xA5');
    const auto put = [&](int offset, int width, const QByteArray &bytes) {
        header.replace(offset, width, bytes.leftJustified(width, '\0', true));
    };
    put(0, 4, "_MF" + QByteArray::number(version));
    put(4, 4, QByteArray());
    put(12, 4, QByteArray());
    put(38, 2, littleEndian(static_cast<quint32>(fields.bpm), 2));
    put(42, 13, fields.longName);
    put(122, 32, fields.title);
    put(185, 1, QByteArray(1, static_cast<char>(fields.flags)));
    put(186, 32, fields.author);
    put(218, 32, fields.artist);
    put(250, 32, fields.genre);
    return header;
}

/** An MFx song around the bytes of a MIDI file, with the sizes in its header. */
inline QByteArray mfx(int version, const MfxFields &fields, const QByteArray &midi)
{
    QByteArray stream;
    LzHuff().compress(midi, stream);
    QByteArray header = mfxHeader(version, fields);
    header.replace(4, 4, littleEndian(static_cast<quint32>(header.size() + stream.size()), 4));
    header.replace(12, 4, littleEndian(static_cast<quint32>(midi.size()), 4));
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

// --- Files ----------------------------------------------------------------------------------

/** Writes a file; the test is wrong when that fails. */
inline QString write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    if (!written)
        qFatal("can't write %s", qPrintable(path));
    return path;
}

/** The bytes of a file; one that can't be read gives a text that no song equals. */
inline QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

/** The names in a folder, in order, those that begin with a dot included. */
inline QStringList names(const QString &folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace SongBytes

} // namespace tarvel4
