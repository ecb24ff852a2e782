#pragma once

#include "library/loadedsong.h"
#include "library/songoutcome.h"

namespace tarvel4 {

class Database;

/**
 * What an update would do to one song, worked out without touching its file: the match, the merged
 * record and the fields that change. The song in memory already carries the new record. Good for
 * one song.
 */
class SongUpdate
{
public:
    explicit SongUpdate(Disk &disk = Disk::real())
        : m_song(disk)
    {}

    Outcome load(const QString &path);

    /** The record as it was read. */
    const SongInfo &before() const { return m_before; }

    /** Looks the loaded song up, by file name, long name, then title. False: not in the catalogue.
     */
    bool match(Database &db);

    /** Merges the catalogue's record and writes it into the song in memory. Not done: such a song
     * can't be saved. */
    Outcome prepare();

    /** The prepared song, to be saved. */
    const LoadedSong &prepared() const { return m_song; }

    /** What is to be told of the song: how it ended, and why. */
    SongOutcome outcome(SongResult result, const Outcome &cause = {}) const;

private:
    LoadedSong m_song;
    QString m_matchedBy;
    SongInfo m_before;
    SongInfo m_catalogueRecord;
    SongInfo m_after;
};

} // namespace tarvel4
