#pragma once

#include "library/loadedsong.h"
#include "library/saverun.h"
#include "library/songoutcome.h"

namespace tarvel4 {

/** The user's own correction of one song: the window's manual edit and the command line's edit.
 * Good for one song and one save. */
class SongEdit
{
public:
    explicit SongEdit(Disk &disk = Disk::real())
        : m_disk(disk)
        , m_song(disk)
    {}

    Outcome load(const QString &path);

    /** The record of the song in memory, with the markers that were added. */
    SongInfo info() const { return m_song.info(); }

    /** What is to be said of an edited record before it is saved. */
    QVector<FieldNote> check(const SongInfo &edited) const
    {
        return m_song.song().checkEdit(edited);
    }

    /** Puts markers ahead of those present, in this order. */
    Outcome addMarkers(const QVector<Marker> &markers);

    /** Writes the edited record with the manual rules. \a tell learns how that ended; after a
     * failure, what the file holds now. */
    void save(const SongInfo &edited, SaveRun &run, SongObserver tell);

    /** What is to be told of a song that was not saved; nothing was changed. */
    SongOutcome failure(SongResult result, const Outcome &cause) const;

private:
    static SongOutcome failureOf(Disk &disk, SongOutcome outcome, SongResult result,
                                 const Outcome &cause);

    Disk &m_disk;
    LoadedSong m_song;
    SongInfo m_before;
};

} // namespace tarvel4
