#pragma once

#include "songs/songinfo.h"

#include <QHash>
#include <QSqlDatabase>
#include <QStringList>

#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QSqlQuery;
class QTemporaryFile;
QT_END_NAMESPACE

namespace tarvel4 {

/**
 * The maker's catalogue, read-only, and the in-memory table of the user's songs: the two
 * connections of a run; docs/formats.md, Catalogue.
 */
class Database
{
public:
    Database();
    ~Database();
    Q_DISABLE_COPY(Database)

    /**
     * Opens both connections and loads the two lists; once, before anything else. An empty \a
     * catalogueFile means "songsdb_debug" of the working directory where there is one, else the
     * built-in catalogue. False also for a file whose songs might never end.
     */
    bool init(const QString &catalogueFile = QString());

    /**
     * Fills title, artist, altArtist, genre, author, length, bpm, key and markers from the first
     * row whose file name matches; a length or bpm that is no integer becomes -1. False: no row,
     * and the record is untouched. "%" and "_" in the name are wildcards, and ASCII letters match
     * in either case.
     */
    bool getRecordByFilename(const QString &name, SongInfo &record);

    /** The same by title; true only for a title that exactly one row has. */
    bool getRecordByTitle(const QString &title, SongInfo &record);

    /** Distinct values in the catalogue's order, the empty one included. */
    const QStringList &genres() const { return m_genres; }
    const QStringList &altArtists() const { return m_altArtists; }

    QSqlDatabase userSongsDatabase() const { return m_userSongs; }
    bool clearUserSongs();

    static void dumpRecord(const SongInfo &record);

private:
    /** The rows of one value, without regard to case of ASCII letters. */
    struct Matches
    {
        qlonglong firstRow = 0; ///< its rowid; rows are scanned in the order of these
        int count = 0;
    };
    /** The values of one column as LIKE compares them, so that a look-up need not scan the rows. */
    using Keys = QHash<QString, Matches>;

    QString prepareCatalogueFile();
    bool isBounded() const;
    QStringList firstColumn(const QString &statement) const;
    void readKeys();
    std::optional<Keys> keysOf(const QString &column) const;
    bool select(const QString &statement, SongInfo &record) const;
    bool selectRow(qlonglong row, SongInfo &record);
    bool isTheOnly(const QString &title) const;

    std::unique_ptr<QTemporaryFile>
        m_temporaryFile; ///< null when a catalogue file is used in place
    QSqlDatabase m_catalogue; ///< connection "con_songsdb"
    QSqlDatabase m_userSongs; ///< connection "con_mem"
    QStringList m_genres;
    QStringList m_altArtists;
    bool m_hasReadKeys = false;
    std::optional<Keys> m_filenames;
    std::optional<Keys> m_titles;
    std::unique_ptr<QSqlQuery> m_rowQuery; ///< null until the first look-up finds something
};

} // namespace tarvel4
