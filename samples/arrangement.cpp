#include "samples/arrangement.h"

#include "samples/notation.h"

#include <algorithm>

namespace tarvel4 {

namespace {

using Note = Arrangement::Note;
using Notation::Chord;

constexpr int ticksInEighth = Arrangement::ticksInQuarter / 2;
constexpr int acousticBass = 32;
constexpr int strings = 48;

// The percussion of General MIDI.
constexpr int kick = 36;
constexpr int snare = 38;
constexpr int closedHat = 42;
constexpr int tambourine = 54;
constexpr int ride = 51;

/** What the accompaniment does in one beat of a bar; times in eighths. */
struct Stroke
{
    enum What { Root, Fifth, Chord, Broken, Drum };
    What what;
    double at;
    double length;
    int drum = 0; // which drum, or which note of a broken chord
};

struct Pattern
{
    Tune::Style style;
    QVector<Stroke> strokes;
};

const QVector<Stroke> &strokesOf(Tune::Style style)
{
    static const Pattern patterns[] = {
        {Tune::Style::Waltz,
         {{Stroke::Root, 0, 2},
          {Stroke::Chord, 2, 1.5},
          {Stroke::Chord, 4, 1.5},
          {Stroke::Drum, 0, 1, kick},
          {Stroke::Drum, 2, 1, closedHat},
          {Stroke::Drum, 4, 1, closedHat}}},
        {Tune::Style::Tarantella,
         {{Stroke::Root, 0, 2},
          {Stroke::Fifth, 3, 2},
          {Stroke::Chord, 2, 0.8},
          {Stroke::Chord, 5, 0.8},
          {Stroke::Drum, 0, 1, kick},
          {Stroke::Drum, 3, 1, snare},
          {Stroke::Drum, 0, 1, tambourine},
          {Stroke::Drum, 1, 1, tambourine},
          {Stroke::Drum, 2, 1, tambourine},
          {Stroke::Drum, 3, 1, tambourine},
          {Stroke::Drum, 4, 1, tambourine},
          {Stroke::Drum, 5, 1, tambourine}}},
        {Tune::Style::March,
         {{Stroke::Root, 0, 1.5},
          {Stroke::Fifth, 4, 1.5},
          {Stroke::Chord, 2, 1},
          {Stroke::Chord, 6, 1},
          {Stroke::Drum, 0, 1, kick},
          {Stroke::Drum, 2, 1, snare},
          {Stroke::Drum, 4, 1, kick},
          {Stroke::Drum, 6, 1, snare},
          {Stroke::Drum, 1, 1, closedHat},
          {Stroke::Drum, 3, 1, closedHat},
          {Stroke::Drum, 5, 1, closedHat},
          {Stroke::Drum, 7, 1, closedHat}}},
        {Tune::Style::Serenade,
         {{Stroke::Root, 0, 2.5},
          {Stroke::Fifth, 3, 1},
          {Stroke::Root, 4, 2},
          {Stroke::Fifth, 6, 2},
          {Stroke::Chord, 2, 0.8},
          {Stroke::Chord, 3, 0.8},
          {Stroke::Chord, 6, 0.8},
          {Stroke::Chord, 7, 0.8},
          {Stroke::Drum, 0, 1, kick},
          {Stroke::Drum, 3, 1, closedHat},
          {Stroke::Drum, 4, 1, kick},
          {Stroke::Drum, 6, 1, closedHat}}},
        {Tune::Style::Ballad,
         {{Stroke::Root, 0, 3},
          {Stroke::Fifth, 3, 3},
          {Stroke::Broken, 0, 2, 0},
          {Stroke::Broken, 1, 2, 1},
          {Stroke::Broken, 2, 1, 2},
          {Stroke::Broken, 3, 2, 3},
          {Stroke::Broken, 4, 2, 2},
          {Stroke::Broken, 5, 1, 1},
          {Stroke::Drum, 0, 1, ride},
          {Stroke::Drum, 2, 1, closedHat},
          {Stroke::Drum, 3, 1, ride},
          {Stroke::Drum, 5, 1, closedHat}}},
    };
    const auto found =
        std::find_if(std::begin(patterns), std::end(patterns),
                     [style](const Pattern &pattern) { return pattern.style == style; });
    return found->strokes;
}

int ticks(double eighths)
{
    return qRound(eighths * ticksInEighth);
}

/** The note of pitch class \a note that is not below \a lowest. */
int atLeast(int lowest, int note)
{
    return lowest + ((note - lowest) % 12 + 12) % 12;
}

/** Plays a tune bar by bar into an arrangement. */
class Arranger
{
public:
    explicit Arranger(const Tune &tune)
        : m_tune(tune)
    {
        m_song.ticksInBar = ticks(tune.eighthsInBar);
        m_song.parts = {{"Melody", 0, tune.melodyProgram, {}},
                        {"Chords", 1, tune.chordProgram, {}},
                        {"Bass", 2, acousticBass, {}},
                        {"Strings", 3, strings, {}},
                        {"Drums", Arrangement::drumChannel, 0, {}}};
    }

    Arrangement play()
    {
        for (const Tune::Section &section : m_tune.sections)
            play(section);
        return m_song;
    }

private:
    enum PartIndex { Melody, Chords, Bass, Strings, Drums };

    void play(const Tune::Section &section)
    {
        const auto melody = Notation::readMelody(section.melody, m_tune.eighthsInBar);
        const auto chords = Notation::readChords(section.chords);
        if (melody.size() != chords.size())
            qFatal("%s, %s: %lld bars of melody, %lld of chords", qPrintable(m_tune.title),
                   section.name, static_cast<long long>(melody.size()),
                   static_cast<long long>(chords.size()));
        m_song.markers.append(
            {static_cast<quint16>(m_song.bars + 1), QString::fromLatin1(section.name)});
        m_syllables = Notation::wordsOf(section.syllables);
        const bool isLast = &section == &m_tune.sections.last();
        for (int bar = 0; bar < melody.size(); ++bar) {
            playMelody(melody[bar]);
            if (isLast && bar + 1 == melody.size())
                endOn(chords[bar].first());
            else
                accompany(chords[bar]);
            ++m_song.bars;
        }
        if (!m_syllables.isEmpty())
            qFatal("%s: no note for \"%s\"", section.name, m_syllables.first().constData());
    }

    void playMelody(const QVector<Notation::Tone> &bar)
    {
        double at = 0;
        for (const Notation::Tone &tone : bar) {
            if (tone.pitch >= 0) {
                sing(at);
                add(Melody, at, tone.eighths * 0.95, tone.pitch + m_tune.transpose,
                    at == 0 ? 104 : 92);
            }
            at += tone.eighths;
        }
    }

    /** Gives the note at \a at the next syllable, if the section has any left. */
    void sing(double at)
    {
        if (m_syllables.isEmpty())
            return;
        QByteArray text = m_syllables.takeFirst();
        if (text == "_")
            return;
        const bool beginsLine = text.startsWith('/');
        if (beginsLine)
            text.remove(0, 1);
        if (text.endsWith('-'))
            text.chop(1);
        else
            text.append(' ');
        text.replace('_', ' ');
        m_song.syllables.append({m_song.endTick() + ticks(at), text, beginsLine});
    }

    void accompany(const QVector<Chord> &chords)
    {
        const int count = static_cast<int>(chords.size());
        const double share = static_cast<double>(m_tune.eighthsInBar) / count;
        for (int i = 0; i < count; ++i) {
            for (int note : voicing(chords[i]))
                add(Strings, i * share, share, note, 50);
        }
        for (const Stroke &stroke : strokesOf(m_tune.style)) {
            const Chord &chord = chords[std::min(static_cast<int>(stroke.at / share), count - 1)];
            play(stroke, chord);
        }
    }

    void play(const Stroke &stroke, const Chord &chord)
    {
        const QVector<int> voices = voicing(chord);
        const int bass = bassOf(chord);
        switch (stroke.what) {
        case Stroke::Root:
            add(Bass, stroke.at, stroke.length, bass, 96);
            break;
        case Stroke::Fifth:
            add(Bass, stroke.at, stroke.length, atLeast(36, bass + 7), 84);
            break;
        case Stroke::Chord:
            for (int note : voices)
                add(Chords, stroke.at, stroke.length, note, 66);
            break;
        case Stroke::Broken:
            add(Chords, stroke.at, stroke.length,
                voices[stroke.drum % voices.size()] + (stroke.drum >= voices.size() ? 12 : 0), 70);
            break;
        case Stroke::Drum:
            add(Drums, stroke.at, 0.5, stroke.drum, stroke.at == 0 ? 88 : 64);
            break;
        }
    }

    /** The last bar: everything stops on one chord that is held. */
    void endOn(const Chord &chord)
    {
        const double length = m_tune.eighthsInBar;
        for (int note : voicing(chord)) {
            add(Chords, 0, length, note, 70);
            add(Strings, 0, length, note, 56);
        }
        add(Bass, 0, length, bassOf(chord), 96);
        add(Drums, 0, 1, kick, 96);
    }

    int bassOf(const Chord &chord) const { return atLeast(36, chord.root + m_tune.transpose); }

    /** The chord's notes from the f below middle c on. */
    QVector<int> voicing(const Chord &chord) const
    {
        QVector<int> notes;
        for (int interval : chord.intervals)
            notes.append(atLeast(53, chord.root + interval + m_tune.transpose));
        std::sort(notes.begin(), notes.end());
        return notes;
    }

    void add(PartIndex part, double at, double length, int pitch, int velocity)
    {
        m_song.parts[part].notes.append(
            {m_song.endTick() + ticks(at), ticks(length), pitch, velocity});
    }

    const Tune &m_tune;
    Arrangement m_song;
    QList<QByteArray> m_syllables; // of the section that is played, those not sung yet
};

} // namespace

Arrangement arrange(const Tune &tune)
{
    return Arranger(tune).play();
}

} // namespace tarvel4
