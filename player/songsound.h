#pragma once

#include "storage/outcome.h"

#include <QByteArray>
#include <QVector>

namespace tarvel4 {

/** A place of a song that has a name: "Refrain". */
struct SoundMark
{
    qint64 ms = 0; ///< from the song's start
    QString text;
};

/** What of a song can be heard: read once, so that its file is not held open. */
struct SongSound
{
    /** Which player a song needs. */
    enum class Kind { Midi, Mp3 };

    Kind kind = Kind::Midi;
    QString path;
    QString title; ///< the file's name where the song has none
    QByteArray midi; ///< of a MIDI song and of an MFx song; an MP3 is read by its player
    qint64 lengthMs = 0; ///< 0 where it is not known
    QVector<SoundMark> marks; ///< in the order of their time

    /** Reads a song; not done where it is none. */
    static Outcome read(const QString &path, SongSound &sound);
    /** The kind of a song whose format has this name in the table. */
    static Kind kindOf(const QString &formatName);

    /** The mark in which a time lies; -1 ahead of the first one. */
    int markAt(qint64 ms) const;
};

} // namespace tarvel4
