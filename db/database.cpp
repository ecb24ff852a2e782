#include "db/database.h"

#include "storage/debuglog.h"

#include <QDebug>
#include <QFile>
#include <QSet>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryFile>
#include <QVariant>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvel4 {

namespace {

const QString catalogueConnection = QStringLiteral("con_songsdb");
const QString userSongsConnection = QStringLiteral("con_mem");
const QString debugCatalogue = QStringLiteral("songsdb_debug");

// The whole catalogue fits (2.7 MB), so that each of its pages is read once; SQLite's own 2 MB
// would read all of them again for each statement that looks at every row.
const QString keepCatalogueInMemory = QStringLiteral("PRAGMA cache_size = -8192");
// For what a start reads, which many runs need no more: 3 MB less of a window that waits.
const QString keepLittleInMemory = QStringLiteral("PRAGMA cache_size = -80");

const QString countCalculated =
    QStringLiteral("SELECT sum(type = 'view' or sql like 'create virtual%') from sqlite_master "
                   "WHERE name like 'songs'");
const QString countUpTo = QStringLiteral("SELECT count(*) from (SELECT 1 from songs limit %1)");

// The table's texts are read as Qt keeps them; converting them is a fifth of reading all rows.
const QString keepTextsAsUtf16 = QStringLiteral("PRAGMA encoding = 'UTF-16'");

const QString createUserSongs =
    QStringLiteral("create table usersongs (id integer primary key, type varchar, title varchar, "
                   "artist varchar, genre varchar, author varchar, length varchar, userbpm int, "
                   "key varchar, filename varchar, shortname varchar, status int)");

// required: the searched text goes in between double quotes as it stands, so "%" and "_" in it are
// wildcards
const QString selectSong =
    QStringLiteral("SELECT title,artist,genre,author,length,bpm,key,markers,altartist FROM songs ");
const QString selectByFilename = selectSong + QStringLiteral("WHERE filename like \"%1\"");
const QString selectByTitle = selectSong + QStringLiteral("WHERE title like \"%1\"");
// what the statements above give for a text without wildcards, without a look at every row
const QString selectByRow = selectSong + QStringLiteral("WHERE rowid = ?");
const QString selectKeys =
    QStringLiteral("SELECT rowid, cast(%1 as text) from songs order by rowid");
const QString countByTitle = QStringLiteral("SELECT count(*) from songs WHERE title like \"%1\"");

/** Adds a connection to SQLite; one of that name that an earlier Database left goes. */
QSqlDatabase addConnection(const QString &name)
{
    if (QSqlDatabase::contains(name))
        QSqlDatabase::removeDatabase(name);
    return QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
}

/** Folds a text as LIKE does: ASCII letters only. */
QString folded(QString text)
{
    for (QChar &c : text) {
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            c = QChar(c.unicode() - u'A' + u'a');
    }
    return text;
}

/** True for a text in double quotes that SQLite would take for a column's value rather than for a
 * text. */
bool isColumnName(const QString &text)
{
    static const QSet<QString> columns{
        QStringLiteral("title"),     QStringLiteral("artist"),   QStringLiteral("genre"),
        QStringLiteral("author"),    QStringLiteral("length"),   QStringLiteral("bpm"),
        QStringLiteral("key"),       QStringLiteral("filename"), QStringLiteral("markers"),
        QStringLiteral("altartist"), QStringLiteral("rowid"),    QStringLiteral("oid"),
        QStringLiteral("_rowid_")};
    return columns.contains(folded(text));
}

/**
 * True for a text that LIKE compares letter by letter: without wildcards, and without what SQLite
 * reads as something else - U+0000 ends a statement, half a surrogate pair takes its neighbour
 * along, and U+FFFD to U+FFFF are all one.
 */
bool isPlain(const QString &text)
{
    return std::none_of(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char('%') || c == QLatin1Char('_') || c.isNull() || c.isSurrogate()
            || c >= u'\uFFFD';
    });
}

/** False for a text whose statement could not have a row of its own: it is then not executed. */
bool isAskable(const QString &text)
{
    return !text.contains(QLatin1Char('"')) && !isColumnName(text);
}

/** True for a text that is the same to LIKE as to a comparison of folded texts. */
bool isKey(const QString &text)
{
    constexpr int longestPattern = 50'000 / 4; // SQLite's limit is in bytes
    return isPlain(text) && text.size() <= longestPattern;
}

qint32 toNumber(const QVariant &value)
{
    bool isNumber = false;
    const double size = value.toDouble(&isNumber); // toInt() alone wraps what is too large
    if (value.isNull() || !isNumber || std::abs(size) > std::numeric_limits<qint32>::max())
        return -1;
    const qint32 number = value.toInt(&isNumber);
    return isNumber ? number : -1;
}

/** "1;Intro;5;Verse 1;" to markers; a pair whose bar is no number of 0 or more is left out. */
QVector<Marker> toMarkers(const QString &text)
{
    QVector<Marker> markers;
    const QStringList parts = text.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        bool isNumber = false;
        const int bar = parts.at(i).toInt(&isNumber, 10);
        if (isNumber && bar >= 0)
            markers.append({static_cast<quint16>(bar), parts.at(i + 1)});
    }
    return markers;
}

void fillRecord(const QSqlQuery &row, SongInfo &record)
{
    const auto text = [&row](int column) { return row.value(column).toString().trimmed(); };
    record.title = text(0);
    record.artist = text(1);
    record.genre = text(2);
    record.author = text(3);
    record.length = toNumber(row.value(4));
    record.bpm = toNumber(row.value(5));
    record.key = text(6);
    record.markers = toMarkers(text(7));
    record.altArtist = text(8);
}

} // namespace

Database::Database() = default;
Database::~Database()
{
    m_catalogue.close(); // a file that is open can't be removed on Windows
}

bool Database::init(const QString &catalogueFile)
{
    m_userSongs = addConnection(userSongsConnection);
    m_userSongs.setDatabaseName(QStringLiteral(":memory:"));
    if (!m_userSongs.open())
        return false;
    QSqlQuery(m_userSongs).exec(keepTextsAsUtf16);
    QSqlQuery(m_userSongs).exec(createUserSongs);

    const QString file = catalogueFile.isEmpty() ? prepareCatalogueFile() : catalogueFile;
    if (file.isEmpty())
        return false;
    m_catalogue = addConnection(catalogueConnection);
    m_catalogue.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    m_catalogue.setDatabaseName(file);
    if (!m_catalogue.open())
        return false;
    QSqlQuery(m_catalogue).exec(keepLittleInMemory);
    if (!isBounded()) {
        m_catalogue.close();
        return false;
    }

    m_genres = firstColumn(QStringLiteral("select distinct genre from songs"));
    m_altArtists = firstColumn(QStringLiteral("select distinct altartist from songs"));
    QSqlQuery(m_catalogue).exec(keepCatalogueInMemory);
    return true;
}

/** The name of a catalogue that SQLite can open; empty when there is none. */
QString Database::prepareCatalogueFile()
{
    if (QFile::exists(debugCatalogue)) {
        qDebug() << "Using local file: 'songsdb_debug' as database";
        return debugCatalogue;
    }
    m_temporaryFile = std::make_unique<QTemporaryFile>();
    if (!m_temporaryFile->open()) {
        qDebug() << "[Database::init] FATAL: Unable to create temporary files !!!";
        return {};
    }
    qDebug() << "[Database::init] Created temporary db file: " << m_temporaryFile->fileName();
    QFile resource(QStringLiteral(":/db/songsdb"));
    if (!resource.open(QIODevice::ReadOnly)) {
        qDebug() << "[Database::init] FATAL: Unable to open db resource file !!!";
        return {};
    }
    const QByteArray catalogue = resource.readAll();
    if (m_temporaryFile->write(catalogue) != catalogue.size() || !m_temporaryFile->flush()) {
        qDebug() << "[Database::init] FATAL: Unable to create temporary files !!!";
        return {};
    }
    return m_temporaryFile->fileName();
}

/** A file of a few bytes can hold any number of songs: in a view that calculates them, or in pages
 * that refer to each other in a ring. */
bool Database::isBounded() const
{
    constexpr int mostSongs = 1'000'000;
    const auto number = [this](const QString &statement) {
        QSqlQuery query(m_catalogue);
        return query.exec(statement) && query.next() ? query.value(0).toInt() : 0;
    };
    return number(countCalculated) == 0 && number(countUpTo.arg(mostSongs + 1)) <= mostSongs;
}

QStringList Database::firstColumn(const QString &statement) const
{
    QStringList values;
    QSqlQuery query(m_catalogue);
    query.setForwardOnly(true);
    if (query.exec(statement)) {
        while (query.next())
            values.append(query.value(0).toString());
    }
    return values;
}

/** All of the catalogue is read for them, which a start need not wait for. */
void Database::readKeys()
{
    if (m_hasReadKeys || !m_catalogue.isOpen())
        return;
    m_hasReadKeys = true;
    m_filenames = keysOf(QStringLiteral("filename"));
    m_titles = keysOf(QStringLiteral("title"));
}

/** Empty where the rows have no numbers to be found by: then every look-up is the statement's. */
std::optional<Database::Keys> Database::keysOf(const QString &column) const
{
    Keys keys;
    QSqlQuery query(m_catalogue);
    query.setForwardOnly(true);
    if (!query.exec(selectKeys.arg(column)))
        return {};
    bool isNumber = true;
    qlonglong previous = std::numeric_limits<qlonglong>::min();
    while (query.next()) {
        const qlonglong row = query.value(0).toLongLong(&isNumber);
        if (!isNumber || row <= previous)
            return {};
        previous = row;
        if (query.isNull(1))
            continue;
        // LIKE looks no further than a NUL
        Matches &matches = keys[folded(query.value(1).toString().section(QChar(0), 0, 0))];
        if (matches.count++ == 0)
            matches.firstRow = row;
    }
    return keys;
}

bool Database::getRecordByFilename(const QString &name, SongInfo &record)
{
    if (!isAskable(name))
        return false;
    readKeys();
    if (m_filenames && isKey(name)) {
        const Matches matches = m_filenames->value(folded(name));
        return matches.count > 0 && selectRow(matches.firstRow, record);
    }
    return select(selectByFilename.arg(name), record);
}

bool Database::getRecordByTitle(const QString &title, SongInfo &record)
{
    if (!isAskable(title))
        return false;
    readKeys();
    if (m_titles && isKey(title)) {
        const Matches matches = m_titles->value(folded(title));
        if (matches.count > 1)
            qDebug() << "[getRecordByTitle] WARNING: multiple reusults in query, aborting !!!";
        return matches.count == 1 && selectRow(matches.firstRow, record);
    }
    SongInfo first = record;
    if (!select(selectByTitle.arg(title), first) || !isTheOnly(title))
        return false;
    record = first;
    return true;
}

bool Database::select(const QString &statement, SongInfo &record) const
{
    QSqlQuery query(m_catalogue);
    query.setForwardOnly(true);
    if (!query.exec(statement) || !query.next())
        return false;
    fillRecord(query, record);
    return true;
}

/** By a statement that SQLite compiles once, which takes it longer than to fetch a row. */
bool Database::selectRow(qlonglong row, SongInfo &record)
{
    if (!m_rowQuery) {
        m_rowQuery = std::make_unique<QSqlQuery>(m_catalogue);
        m_rowQuery->setForwardOnly(true);
        m_rowQuery->prepare(selectByRow);
    }
    m_rowQuery->bindValue(0, row);
    const bool isFound = m_rowQuery->exec() && m_rowQuery->next();
    if (isFound)
        fillRecord(*m_rowQuery, record);
    m_rowQuery->finish(); // or the file stays locked
    return isFound;
}

/** True where one row has a title like that. */
bool Database::isTheOnly(const QString &title) const
{
    QSqlQuery counting(m_catalogue);
    counting.setForwardOnly(true);
    if (!counting.exec(countByTitle.arg(title)) || !counting.next()) {
        qDebug() << "[getRecordByTitle] WARNING: unable to count reusults, aborting !!!";
        return false;
    }
    bool isNumber = false;
    const bool isOne = counting.value(0).toInt(&isNumber) == 1 && isNumber;
    if (!isOne)
        qDebug() << "[getRecordByTitle] WARNING: multiple reusults in query, aborting !!!";
    return isOne;
}

bool Database::clearUserSongs()
{
    return QSqlQuery(m_userSongs).exec(QStringLiteral("DELETE from usersongs"));
}

void Database::dumpRecord(const SongInfo &record)
{
    if (!debugLog().isDebugEnabled())
        return;
    qDebug() << "  Title     :" << record.title;
    qDebug() << "  Genre     :" << record.genre;
    qDebug() << "  Artist    :" << record.artist;
    qDebug() << "  AltArtist :" << record.altArtist;
    qDebug() << "  Author    :" << record.author;
    qDebug() << "  Bpm       :" << record.bpm;
    qDebug() << "  Key       :" << record.key;
    qDebug() << "  Length    :" << record.length;
    if (record.markers.isEmpty()) {
        qDebug() << "  NO Markers";
        return;
    }
    qDebug() << "  Markers:";
    for (const Marker &marker : record.markers)
        qDebug() << "    bar:" << marker.bar << "  text:" << marker.text;
}

} // namespace tarvel4
