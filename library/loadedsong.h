#pragma once

#include "songs/metasong.h"
#include "storage/filestamp.h"

namespace tarvel4 {

/** A song read from its file to be changed in memory and, by a SaveRun, written back once. */
class LoadedSong
{
public:
    explicit LoadedSong(Disk &disk = Disk::real())
        : m_song(disk)
    {}

    Outcome load(const QString &path);
    const QString &path() const { return m_path; }

    /** The file as it was when load() began. */
    const FileStamp &stamp() const { return m_stamp; }

    MetaSong &song() { return m_song; }
    const MetaSong &song() const { return m_song; }
    /** The record of the song as it is in memory, with its path and name. */
    SongInfo info() const;

    /** Why nothing of the song in memory can be saved; done where it can. */
    Outcome whyNotSavable() const;

private:
    MetaSong m_song;
    QString m_path;
    FileStamp m_stamp;
};

} // namespace tarvel4
