#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace tarvel4 {

/** A tune as it is written down in tunes.cpp, before anything is played. */
struct Tune
{
    /** A stretch of the tune that a marker names. */
    struct Section
    {
        const char *name;
        /// Bars separated by "|"; in them pitch:length such as "c#5:1.5", r for a rest, in eighths.
        QByteArray melody;
        /// One a bar, or two of half a bar joined by a comma: "Am C,G7 F".
        QByteArray chords;
        /// One a note: "-" after it joins it to the next, "/" before it begins a line, "_" in it is
        /// a blank and alone a note without a syllable.
        QByteArray syllables = {};
    };

    enum class Style { Waltz, Tarantella, March, Serenade, Ballad };

    QString fileName;
    QString title;
    QString artist; ///< this and the next two: empty where the song tells nothing of it
    QString author;
    QString genre;
    QString copyright;
    QString longName; ///< of an MFx header
    QString key; ///< as in the key table
    bool tellsLength = true;
    bool tellsTempo = true;
    bool tellsMarkers = true;
    int bpm = 120; ///< quarters a minute
    int eighthsInBar = 8;
    int transpose = 0; ///< semitones from the notes as written to the notes as played
    int melodyProgram = 0; ///< General MIDI, from 0
    int chordProgram = 0;
    Style style = Style::March;
    QVector<Section> sections;
};

/** The seven tunes of samples/; all of them older than anybody who hears them. */
QVector<Tune> allTunes();

} // namespace tarvel4
