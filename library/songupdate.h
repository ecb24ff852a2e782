#pragma once

#include "library/songoutcome.h"
#include "songs/metasong.h"
#include "storage/filestamp.h"

namespace tarvel4 {

class Database;

/** How one song of an update ended, or would end. */
enum class UpdateOutcome { Updated, NotFound, Refused, Unreadable, Failed };

/**
 * What an update would do to one song, worked out without touching its file: the match, the merged
 * record and the fields that change. The song in memory already carries the new record; perform()
 * writes it. Good for one song.
 */
class SongUpdate
{
public:
    explicit SongUpdate(Disk &disk = Disk::real());

    /** Reads the song. False: unreadable. */
    bool load(const QString &path, const QString &shortName);

    /** True when the maker published the loaded song. */
    bool isPublisher() const { return m_before.isPublisher; }

    /** Looks the loaded song up, by file name, long name, then title. False: not in the catalogue.
     */
    bool match(Database &db);

    /** Merges the catalogue's record and writes it into the song in memory. False: such a song
     * can't be saved. */
    bool prepare();

    /**
     * Saves the prepared song and reads it back. False: the file holds its old bytes, or those that
     * somebody else wrote since load().
     */
    bool perform();

    const QString &path() const { return m_path; }
    const QString &reason() const { return m_reason; } ///< such as "FILENAME: 12ANNI"
    const SongInfo &before() const { return m_before; }

    /** After prepare() the planned record; after perform() the one read back. */
    const SongInfo &after() const { return m_after; }

    QVector<FieldChange> changes() const;

private:
    Disk &m_disk;
    MetaSong m_song;
    QString m_path;
    FileStamp m_stamp;
    QString m_reason;
    SongInfo m_before;
    SongInfo m_catalogueRecord;
    SongInfo m_after;
};

} // namespace tarvel4
