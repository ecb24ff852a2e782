#pragma once

#include "songs/metasong.h"
#include "storage/filestamp.h"

namespace tarvel4 {

/** The user's own correction of one song: the window's manual edit and the command line's edit.
 * Good for one song and one save. */
class SongEdit
{
public:
    explicit SongEdit(Disk &disk = Disk::real());

    /** Reads the song. False: unreadable. */
    bool load(const QString &path);

    const SongInfo &info() const { return m_info; }

    /** Puts a marker ahead of those present; false for a song that takes none. Reads the record
     * again. */
    bool addMarker(const QString &text, quint16 bar);

    /**
     * Writes the edited record with the manual rules and reads back what the file then holds.
     * False: the file holds its old bytes, or those that somebody else wrote since load().
     */
    bool save(const SongInfo &edited);

    /** The file name of a path without its folder and the text after its last point. */
    static QString titleFromPath(const QString &path);

private:
    bool write();
    void readInfo(const MetaSong &song);

    Disk &m_disk;
    MetaSong m_song;
    QString m_path;
    FileStamp m_stamp;
    SongInfo m_info;
};

} // namespace tarvel4
