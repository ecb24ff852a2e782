#pragma once

#include <QByteArray>
#include <QList>
#include <QVector>

namespace tarvel4 {

/** Reads the short notation of tunes; what can't be read ends the program with a message. */
namespace Notation {

/** A note or rest of a melody. */
struct Tone
{
    int pitch; ///< MIDI note number, below zero for a rest
    double eighths;
};

/** The tones of each bar; each bar must fill \a eighthsInBar. */
QVector<QVector<Tone>> readMelody(const QByteArray &text, int eighthsInBar);

struct Chord
{
    int root; ///< 0 for c to 11 for b
    QVector<int> intervals; ///< semitones above the root, which is the first
};

/** The one or two chords of each bar. */
QVector<QVector<Chord>> readChords(const QByteArray &text);

/** Words between blanks. */
QList<QByteArray> wordsOf(const QByteArray &text);

} // namespace Notation

} // namespace tarvel4
