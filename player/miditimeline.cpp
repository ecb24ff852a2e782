#include "player/miditimeline.h"

#include "songs/bytes.h"
#include "songs/midi/midiformat.h"

#include <algorithm>

namespace tarvel4 {

namespace {

constexpr int divisionOffset = 12;
constexpr int signatureMeta = 0x58;
constexpr int endOfTrackMeta = 0x2F;
constexpr qint64 usualTempo = 500000; // 120 beats a minute
constexpr int beatsOfUsualBar = 4;
constexpr qint64 longestSong = qint64{1} << 40; // of ticks: no sum of them runs over

/** Reads the events of a track, and never leaves its bytes. */
class TrackCursor
{
public:
    explicit TrackCursor(const QByteArray &bytes)
        : m_bytes(bytes)
    {}

    bool isAtEnd() const { return m_at >= m_bytes.size(); }
    int byte() { return Bytes::byteAt(m_bytes, m_at++); }
    void goBack() { --m_at; }
    void skip(qint64 count) { m_at += count; }

    qint64 number()
    {
        qint64 value = 0;
        for (int i = 0; i < 4; ++i) {
            const int next = byte();
            value = value << 7 | (next & 0x7F);
            if (next < 0x80)
                break;
        }
        return value;
    }

    QByteArray payload()
    {
        const qint64 size = number();
        const QByteArray bytes = Bytes::slice(m_bytes, m_at, size);
        m_at += size;
        return bytes;
    }

private:
    const QByteArray &m_bytes;
    qint64 m_at = 0;
};

/** Bytes behind the status of a channel's event. */
int dataSize(int status)
{
    const int kind = status & 0xF0;
    return kind == 0xC0 || kind == 0xD0 ? 1 : 2;
}

template <typename Change> void putInOrder(std::vector<Change> &changes)
{
    std::stable_sort(changes.begin(), changes.end(),
                     [](const Change &a, const Change &b) { return a.tick < b.tick; });
}

} // namespace

MidiTimeline::MidiTimeline(const QByteArray &smf)
{
    using namespace MidiFormat;
    const auto division = Bytes::bigEndianAt<qint16>(smf, divisionOffset);
    if (division > 0) {
        m_ticksPerQuarter = division;
    } else if (division < 0) { // frames a second, below zero, and ticks a frame
        const int frames = -(division >> 8);
        m_ticksPerMs = std::max(1, frames * (division & 0xFF)) / 1000.0;
    }
    m_tempos.push_back({0, usualTempo});
    m_signatures.push_back({0, qint64{m_ticksPerQuarter} * beatsOfUsualBar});

    qint64 at = chunkHeaderSize + qint64{Bytes::bigEndianAt<quint32>(smf, chunkLengthOffset)};
    while (Bytes::containsRange(smf, at, chunkHeaderSize)) {
        const qint64 size = Bytes::bigEndianAt<quint32>(smf, at + chunkLengthOffset);
        if (Bytes::slice(smf, at, magicSize) == trackMagic)
            readTrack(Bytes::slice(smf, at + trackHeaderSize, size));
        at += chunkHeaderSize + size;
    }
    putInOrder(m_tempos);
    putInOrder(m_signatures);
}

void MidiTimeline::readTrack(const QByteArray &track)
{
    TrackCursor cursor(track);
    qint64 tick = 0;
    int running = 0;
    while (!cursor.isAtEnd() && tick < longestSong) {
        tick += cursor.number();
        int status = cursor.byte();
        if (status == 0xFF) {
            const int type = cursor.byte();
            takeMeta(type, cursor.payload(), tick);
            if (type == endOfTrackMeta)
                break;
        } else if (status == 0xF0 || status == 0xF7) {
            cursor.payload();
        } else {
            if (status < 0x80) { // the last status goes on
                cursor.goBack();
                status = running;
            }
            if (status < 0x80 || status >= 0xF0)
                break; // no event: what follows can't be told
            running = status;
            cursor.skip(dataSize(status));
        }
    }
    m_lastTick = std::max(m_lastTick, tick);
}

void MidiTimeline::takeMeta(int type, const QByteArray &payload, qint64 tick)
{
    if (type == MidiFormat::setTempoMeta && payload.size() >= 3) {
        const qint64 tempo = Bytes::bigEndianAt<quint32>('\0' + payload.left(3), 0);
        m_tempos.push_back({tick, std::max<qint64>(1, tempo)});
    } else if (type == signatureMeta && payload.size() >= 2) {
        const qint64 beats = std::max<qint64>(1, Bytes::byteAt(payload, 0));
        const int part = std::min<int>(7, Bytes::byteAt(payload, 1)); // of a whole note: 2^part
        const qint64 ticksPerBar = qint64{m_ticksPerQuarter} * 4 * beats >> part;
        m_signatures.push_back({tick, std::max<qint64>(1, ticksPerBar)});
    }
}

double MidiTimeline::msPerTick(qint64 microseconds) const
{
    return m_ticksPerMs > 0 ? 1 / m_ticksPerMs
                            : static_cast<double>(microseconds) / 1000 / m_ticksPerQuarter;
}

qint64 MidiTimeline::msOfTick(qint64 tick) const
{
    double ms = 0;
    for (std::size_t i = 0; i < m_tempos.size() && m_tempos[i].tick < tick; ++i) {
        const qint64 end = i + 1 < m_tempos.size() ? std::min(tick, m_tempos[i + 1].tick) : tick;
        ms += static_cast<double>(end - m_tempos[i].tick) * msPerTick(m_tempos[i].microseconds);
    }
    return qRound64(ms);
}

qint64 MidiTimeline::tickOfMs(qint64 ms) const
{
    double left = static_cast<double>(ms);
    for (std::size_t i = 0; i < m_tempos.size(); ++i) {
        const double perTick = msPerTick(m_tempos[i].microseconds);
        if (i + 1 < m_tempos.size()) {
            const double part =
                static_cast<double>(m_tempos[i + 1].tick - m_tempos[i].tick) * perTick;
            if (left >= part) {
                left -= part;
                continue;
            }
        }
        return m_tempos[i].tick + qRound64(left / perTick);
    }
    return 0;
}

qint64 MidiTimeline::tickOfBar(int bar) const
{
    qint64 left = std::max(0, bar - 1);
    for (std::size_t i = 0; i + 1 < m_signatures.size(); ++i) {
        const qint64 ticks = m_signatures[i + 1].tick - m_signatures[i].tick;
        const qint64 perBar = m_signatures[i].ticksPerBar;
        const qint64 bars = (ticks + perBar - 1) / perBar; // a new signature begins a bar
        if (left < bars)
            return m_signatures[i].tick + left * perBar;
        left -= bars;
    }
    return m_signatures.back().tick + left * m_signatures.back().ticksPerBar;
}

} // namespace tarvel4
