#include "samples/midiwriter.h"

#include <QtEndian>

#include <algorithm>

namespace tarvel4 {

namespace MidiWriter {

namespace {

constexpr char noteOn = '\x90';
constexpr char noteOff = '\x80';
constexpr char programChange = '\xC0';

constexpr char textMeta = 0x01;
constexpr char copyrightMeta = 0x02;
constexpr char trackNameMeta = 0x03;
constexpr char lyricMeta = 0x05;
constexpr char endOfTrackMeta = 0x2F;
constexpr char tempoMeta = 0x51;
constexpr char timeSignatureMeta = 0x58;

struct Event
{
    int tick;
    QByteArray bytes;
};

template <typename Number> QByteArray bigEndian(Number number)
{
    QByteArray bytes(sizeof(Number), Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return bytes;
}

/** Seven bits a byte, the highest bit set in all but the last. */
QByteArray variableLength(quint32 number)
{
    QByteArray bytes(1, static_cast<char>(number & 0x7F));
    while (number >>= 7)
        bytes.prepend(static_cast<char>((number & 0x7F) | 0x80));
    return bytes;
}

QByteArray meta(char type, const QByteArray &payload)
{
    return QByteArray("\xFF") + type + variableLength(static_cast<quint32>(payload.size()))
        + payload;
}

QByteArray message(char status, int channel, std::initializer_list<int> data)
{
    QByteArray bytes(1, static_cast<char>(status | channel));
    for (int value : data)
        bytes.append(static_cast<char>(value));
    return bytes;
}

QVector<Event> songEvents(const Tune &tune)
{
    const int microseconds = 60000000 / tune.bpm;
    const bool compound =
        tune.style == Tune::Style::Tarantella || tune.style == Tune::Style::Ballad;
    // Beats in a bar, the beat as a power of two, clocks a click, 32nds a quarter.
    const QByteArray time = compound
        ? QByteArray::fromRawData("\x06\x03\x24\x08", 4)
        : QByteArray(1, static_cast<char>(tune.eighthsInBar / 2)) + "\x02\x18\x08";
    QVector<Event> events = {{0, meta(timeSignatureMeta, time)},
                             {0, meta(tempoMeta, bigEndian(microseconds).mid(1))}};
    if (!tune.copyright.isEmpty())
        events.prepend({0, meta(copyrightMeta, tune.copyright.toLatin1())});
    return events;
}

/** The lyric events, and before them what tells a karaoke player that there are some. */
QVector<Event> lyricEvents(const Tune &tune, const Arrangement &song)
{
    QVector<Event> events;
    if (song.syllables.isEmpty())
        return events;
    events = {{0, meta(textMeta, "@KMIDI KARAOKE FILE")},
              {0, meta(textMeta, "@LITAL")},
              {0, meta(textMeta, "@T" + tune.title.toLatin1())}};
    for (const Arrangement::Syllable &syllable : song.syllables) {
        const QByteArray lineBreak = syllable.beginsLine ? "/" : "";
        events.append({syllable.start, meta(lyricMeta, lineBreak + syllable.text)});
    }
    return events;
}

QVector<Event> partEvents(const Arrangement::Part &part)
{
    QVector<Event> events;
    if (part.channel != Arrangement::drumChannel)
        events.append({0, message(programChange, part.channel, {part.program})});
    for (const Arrangement::Note &note : part.notes) {
        events.append({note.start, message(noteOn, part.channel, {note.pitch, note.velocity})});
        events.append({note.start + note.length, message(noteOff, part.channel, {note.pitch, 64})});
    }
    return events;
}

/** A track chunk. Of events at the same time those that end a note come first. */
QByteArray track(QVector<Event> events, int endTick)
{
    const auto endsNote = [](const Event &event) {
        return (event.bytes.at(0) & '\xF0') == noteOff;
    };
    std::stable_sort(events.begin(), events.end(), [&](const Event &a, const Event &b) {
        return a.tick != b.tick ? a.tick < b.tick : endsNote(a) && !endsNote(b);
    });
    events.append({std::max(endTick, events.isEmpty() ? 0 : events.last().tick),
                   meta(endOfTrackMeta, QByteArray())});
    QByteArray bytes;
    int before = 0;
    for (const Event &event : events) {
        bytes += variableLength(static_cast<quint32>(event.tick - before)) + event.bytes;
        before = event.tick;
    }
    return "MTrk" + bigEndian(static_cast<quint32>(bytes.size())) + bytes;
}

} // namespace

QByteArray write(const Tune &tune, const Arrangement &song, int format)
{
    QVector<QByteArray> tracks;
    QVector<Event> all = songEvents(tune) + lyricEvents(tune, song);
    if (format == 0) {
        for (const Arrangement::Part &part : song.parts)
            all += partEvents(part);
        tracks.append(track(all, song.endTick()));
    } else {
        tracks.append(track(all, song.endTick()));
        for (const Arrangement::Part &part : song.parts) {
            const QVector<Event> name = {{0, meta(trackNameMeta, part.name)}};
            tracks.append(track(name + partEvents(part), song.endTick()));
        }
    }
    QByteArray bytes = "MThd" + bigEndian(static_cast<quint32>(6))
        + bigEndian(static_cast<quint16>(format)) + bigEndian(static_cast<quint16>(tracks.size()))
        + bigEndian(static_cast<quint16>(Arrangement::ticksInQuarter));
    for (const QByteArray &chunk : tracks)
        bytes += chunk;
    return bytes;
}

} // namespace MidiWriter

} // namespace tarvel4
