#pragma once

#include "songs/metasong.h"

#include <QPair>
#include <QVector>

class Database;

/** How one song of an update ended, or would end. */
enum class UpdateOutcome { Updated, NotFound, Refused, Unreadable, Failed };

/** A field that an update changes; names are the keys of a song's record ("title", "markers" ...).
 */
struct FieldChange
{
    QString field;
    QVariant before;
    QVariant after; ///< as it would be read back from the file
};

/**
 * What an update would do to one song, worked out without touching its file: the match, the merged
 * record and the fields that change. The song in memory already carries the new record; perform()
 * writes it.
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

    /** Saves the prepared song and reads it back. False: the file holds its old bytes. */
    bool perform();

    QString reason() const { return m_reason; } ///< such as "FILENAME: 12ANNI"
    const SongInfo &before() const { return m_before; }
    const SongInfo &after() const
    {
        return m_after;
    } ///< after prepare(): planned; after perform(): read back
    QVector<FieldChange> changes() const;

private:
    MetaSong m_song;
    QString m_path;
    QString m_reason;
    SongInfo m_before;
    SongInfo m_catalogueRecord;
    SongInfo m_after;
};
