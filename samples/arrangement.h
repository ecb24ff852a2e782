#pragma once

#include "samples/tune.h"

#include "songs/songinfo.h"

#include <QByteArray>
#include <QVector>

namespace tarvel4 {

/** What is played: the tune's melody, and the accompaniment that its chords and style ask for. */
struct Arrangement
{
    static constexpr int ticksInQuarter = 480;
    static constexpr int drumChannel = 9;

    struct Note
    {
        int start; ///< ticks from the beginning of the song, as all times here
        int length;
        int pitch; ///< MIDI note number
        int velocity;
    };

    struct Part
    {
        const char *name;
        int channel;
        int program;
        QVector<Note> notes;
    };

    struct Syllable
    {
        int start;
        QByteArray text; ///< with the blank that parts it from the next word
        bool beginsLine;
    };

    QVector<Part> parts; ///< the melody is the first
    QVector<Syllable> syllables;
    QVector<Marker> markers;
    int ticksInBar = 0;
    int bars = 0;

    double secondsAt(int tick, int bpm) const { return tick * 60.0 / bpm / ticksInQuarter; }
    int endTick() const { return bars * ticksInBar; }
};

/** Plays a tune out. A mistake in its notation (a bar that is too long, an unknown chord) is fatal.
 */
Arrangement arrange(const Tune &tune);

} // namespace tarvel4
