#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <vector>

namespace tarvel4 {

/** When things happen in a MIDI file: its bars and its seconds, told by ticks. Bytes that are
 * damaged end the track they are in. */
class MidiTimeline
{
public:
    explicit MidiTimeline(const QByteArray &smf);

    /** Of the last event of any track. */
    qint64 lastTick() const { return m_lastTick; }
    qint64 msOfTick(qint64 tick) const;
    qint64 tickOfMs(qint64 ms) const;
    /** Where a bar begins; the first one is bar 1. */
    qint64 tickOfBar(int bar) const;

private:
    struct Tempo
    {
        qint64 tick;
        qint64 microseconds; ///< a quarter note
    };
    struct Signature
    {
        qint64 tick;
        qint64 ticksPerBar;
    };

    void readTrack(const QByteArray &track);
    void takeMeta(int type, const QByteArray &payload, qint64 tick);
    double msPerTick(qint64 microseconds) const;

    int m_ticksPerQuarter = 96;
    double m_ticksPerMs = 0; ///< of a file that counts in seconds; 0: in quarter notes
    qint64 m_lastTick = 0;
    std::vector<Tempo> m_tempos; ///< in order, the first at tick 0
    std::vector<Signature> m_signatures; ///< in order, the first at tick 0
};

} // namespace tarvel4
