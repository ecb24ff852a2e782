#pragma once

#include "songs/metasong.h"
#include "storage/filestamp.h"

namespace tarvel4 {

/** A song read from its file to be changed in memory and written back once, unless somebody else
 * changed the file in between. */
class LoadedSong
{
public:
    explicit LoadedSong(Disk &disk = Disk::real())
        : m_song(disk)
    {}

    Outcome load(const QString &path);
    const QString &path() const { return m_path; }

    MetaSong &song() { return m_song; }
    /** The record of the song as it is in memory, with its path and name. */
    SongInfo info() const;

    /** Why save() would write nothing of the song in memory; done where it would. */
    Outcome whyNotSavable() const;
    /** Not done: the file holds its old bytes, or those that somebody else wrote since load(),
     * unless the outcome says otherwise. */
    Outcome save();

private:
    Outcome changedSinceLoad() const;

    MetaSong m_song;
    QString m_path;
    FileStamp m_stamp;
};

} // namespace tarvel4
