#include "storage/journalfile.h"

#include "storage/outcome.h"
#include "storage/systemerror.h"
#include "storage/systemfile.h"

#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QUrl>
#include <QUuid>

namespace tarvel4 {

namespace {

constexpr int schemaVersion = 1;

// docs/formats.md, Journal
constexpr const char *schema[] = {
    "CREATE TABLE run (id INTEGER PRIMARY KEY AUTOINCREMENT, time INTEGER NOT NULL,"
    " what TEXT NOT NULL, lock TEXT NOT NULL)",
    "CREATE TABLE song (id INTEGER PRIMARY KEY AUTOINCREMENT, run INTEGER NOT NULL,"
    " path TEXT NOT NULL, way INTEGER NOT NULL, oldSize INTEGER NOT NULL, newSize INTEGER NOT NULL,"
    " prefix INTEGER NOT NULL, suffix INTEGER NOT NULL, newHash BLOB, oldMiddle BLOB NOT NULL)",
    "CREATE INDEX songOfRun ON song (run)",
    "CREATE INDEX songOfPath ON song (path)",
    "CREATE TABLE pending (song INTEGER PRIMARY KEY, isTold INTEGER NOT NULL,"
    " temporary TEXT NOT NULL, newMiddle BLOB NOT NULL, oldBytes BLOB NOT NULL)",
};

// Came later: older programs of version 1 leave it alone, and their journals lack it.
constexpr char unfinishedTable[] = "CREATE TABLE IF NOT EXISTS unfinished"
                                   " (run INTEGER PRIMARY KEY, takesBack INTEGER NOT NULL)";

/** How SQLite opens the journal without changing anything on the disk: not even the index beside
 * its log, which it would otherwise bring up to date. */
struct ReadOnlyAccess
{
    QString query; ///< of the file's URL
    bool isExclusive = false;

    explicit ReadOnlyAccess(const QString &path)
    {
        if (QFileInfo(path + QLatin1String("-wal")).size() == 0) {
            query = QStringLiteral("immutable=1"); // nobody is writing
            return;
        }
        query = QStringLiteral("mode=ro&readonly_shm=1");
#ifdef Q_OS_UNIX
        // Without that index nobody is writing either; it would be made, but for one who is alone.
        isExclusive = !QFileInfo::exists(path + QLatin1String("-shm"));
        if (isExclusive)
            query = QStringLiteral("mode=ro&vfs=unix-none");
#endif
    }
};

// of SQLite's result codes
enum ResultCode { Busy = 5, Corrupt = 11, Full = 13, NotADatabase = 26 };

int resultCode(const QSqlError &error)
{
    constexpr int primaryMask = 0xFF;
    return error.nativeErrorCode().toInt() & primaryMask;
}

bool isDamage(const QSqlError &error)
{
    const int code = resultCode(error);
    return code == Corrupt || code == NotADatabase;
}

QString causeOf(const QSqlError &error)
{
    switch (resultCode(error)) {
    case Busy:
        return Outcome{Outcome::Code::InUse, {}, {}, {}}.sentence();
    case Full:
        return Outcome{Outcome::Code::NoRoom, {}, {}, {}}.sentence();
    default:
        return error.databaseText().isEmpty() ? error.text() : error.databaseText();
    }
}

} // namespace

JournalFile::JournalFile(const QString &folder, Notice notice)
    : m_folder(folder)
    , m_notice(std::move(notice))
    , m_connection(QLatin1String("journal ") + QUuid::createUuid().toString())
{}

JournalFile::~JournalFile()
{
    disconnect();
}

QString JournalFile::path() const
{
    return m_folder + QLatin1String("/journal.db");
}

bool JournalFile::exists() const
{
    const QFileInfo journal(path());
    return journal.size() > 0 || journal.isDir() // which has no size on Windows
        || QFileInfo(path() + QLatin1String("-wal")).size() > 0;
}

bool JournalFile::open(Access access)
{
    if (m_users > 0) {
        const bool isEnough = m_db.isOpen() && (access == Access::Read || m_access == access);
        m_users += isEnough ? 1 : 0;
        return isEnough;
    }
    m_wasSetAside = false;
    m_access = access;
    if (access == Access::Read ? !exists() : !makeFile())
        return false;
    // A damaged or newer one is set aside, and the second try makes a new one.
    bool isOpen = connectTo(access);
    if (!isOpen && m_wasSetAside)
        isOpen = makeFile() && connectTo(access);
    if (!isOpen) {
        disconnect();
        return false;
    }
    m_wasSetAside = false;
    m_users = 1;
    return true;
}

void JournalFile::close()
{
    if (m_users > 0 && --m_users == 0)
        disconnect();
}

void JournalFile::disconnect()
{
    m_users = 0;
    if (!m_db.isValid())
        return;
    m_db.close();
    m_db = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_connection);
}

/** For the owner only: the old bytes of songs are as private as the songs. */
bool JournalFile::makeFile()
{
    constexpr auto ownerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    Outcome made = SystemFile::makeFolders(m_folder);
    QFile file(path());
    SystemError::presumeFailedMedium();
    if (made)
        made = SystemError::outcomeOf(
            QFile::setPermissions(m_folder, ownerOnly | QFileDevice::ExeOwner)
                && (file.exists()
                    || (file.open(QIODevice::WriteOnly) && file.setPermissions(ownerOnly))),
            path());
    if (made)
        return true;
    say(tr("Il registro delle modifiche %1 non può essere scritto (%2): le song vengono salvate "
           "lo stesso, ma queste modifiche non si potranno annullare.")
            .arg(path(), made.sentence()));
    return false;
}

bool JournalFile::connectTo(Access access)
{
    m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=3000");
    const ReadOnlyAccess readOnly(path());
    if (access == Access::Read) {
        QUrl url = QUrl::fromLocalFile(path());
        url.setQuery(readOnly.query);
        m_db.setDatabaseName(QString::fromLatin1(url.toEncoded()));
        options += QLatin1String(";QSQLITE_OPEN_URI;QSQLITE_OPEN_READONLY");
    } else {
        m_db.setDatabaseName(path());
    }
    m_db.setConnectOptions(options);
    if (!m_db.open()) {
        say(tr("Il registro delle modifiche %1 non può essere aperto: %2")
                .arg(path(), causeOf(m_db.lastError())));
        return false;
    }
    if (access == Access::Read && readOnly.isExclusive && !exec("PRAGMA locking_mode=EXCLUSIVE"))
        return false;
    if (access == Access::Write
        && !(isOurs() && exec("PRAGMA page_size=16384") && exec("PRAGMA journal_mode=WAL")
             && exec("PRAGMA synchronous=FULL")
             // What a batch notes stays in memory until it is committed, and is copied from the
             // log to the file only now and then: both cost more than the batch itself.
             && exec("PRAGMA cache_size=-131072") && exec("PRAGMA wal_autocheckpoint=4096")
             && exec("PRAGMA secure_delete=OFF") // or all that is deleted is written once more
             && transaction([this] { return prepareSchema(); })))
        return false;
    return isOurs() && version() == schemaVersion;
}

/** False, and it is set aside as it is, where it is of a newer program or of another one. */
bool JournalFile::isOurs()
{
    const int found = version();
    if (found > schemaVersion)
        setAside(tr("Il registro delle modifiche %1 è di una versione più recente del programma."));
    else if (found == 0 && !m_db.tables().isEmpty())
        setAside(tr("Il registro delle modifiche %1 è danneggiato."));
    return found >= 0 && m_db.isOpen();
}

/** -1 when it can't be read. */
int JournalFile::version()
{
    if (!m_db.isOpen())
        return -1;
    QSqlQuery query = prepare("PRAGMA user_version");
    return exec(query) && query.next() ? query.value(0).toInt() : -1;
}

/** Makes the tables that are missing. */
bool JournalFile::prepareSchema()
{
    const int found = version();
    for (const char *statement : schema) {
        if (found == 0 && !exec(statement))
            return false;
    }
    return found >= 0 && (found > 0 || exec("PRAGMA user_version=1"))
        && (hasUnfinished() || exec(unfinishedTable));
}

bool JournalFile::hasUnfinished() const
{
    return m_db.tables().contains(QLatin1String("unfinished"));
}

/** \a sentence says of the file %1 why. */
void JournalFile::setAside(const QString &sentence)
{
    disconnect();
    if (m_access == Access::Read) {
        say(sentence.arg(path()));
        return;
    }
    const QString aside = m_folder + QLatin1String("/journal-")
        + QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-hhmmsszzz"))
        + QLatin1String(".db");
    m_wasSetAside = QFile::rename(path(), aside);
    for (const char *suffix : {"-wal", "-shm"})
        QFile::rename(path() + QLatin1String(suffix), aside + QLatin1String(suffix));
    const QString what = m_wasSetAside
        ? tr("È stato messo da parte come %1: le modifiche precedenti non si possono annullare.")
              .arg(aside)
        : tr("Le modifiche non si potranno annullare.");
    say(sentence.arg(path()) + QLatin1Char(' ') + what);
}

QSqlQuery JournalFile::prepare(const char *statement) const
{
    QSqlQuery query(m_db);
    query.setForwardOnly(true);
    query.prepare(QLatin1String(statement));
    return query;
}

bool JournalFile::exec(QSqlQuery &query)
{
    if (m_db.isOpen() && !query.lastError().isValid() && query.exec())
        return true;
    const QSqlError error = query.lastError();
    query = QSqlQuery();
    if (!m_db.isOpen())
        return false;
    if (isDamage(error)) {
        setAside(tr("Il registro delle modifiche %1 è danneggiato."));
    } else if (m_access == Access::Read) {
        say(tr("Il registro delle modifiche %1 non può essere letto: %2")
                .arg(path(), causeOf(error)));
    } else {
        say(tr("Il registro delle modifiche %1 non può essere scritto (%2): le song vengono "
               "salvate lo stesso, ma queste modifiche non si potranno annullare.")
                .arg(path(), causeOf(error)));
    }
    return false;
}

bool JournalFile::exec(const char *statement)
{
    QSqlQuery query = prepare(statement);
    return exec(query);
}

bool JournalFile::transaction(const std::function<bool()> &changes)
{
    if (!exec("BEGIN IMMEDIATE"))
        return false;
    if (changes() && exec("COMMIT"))
        return true;
    if (m_db.isOpen())
        QSqlQuery(m_db).exec(QStringLiteral("ROLLBACK"));
    return false;
}

void JournalFile::say(const QString &sentence)
{
    if (m_said.contains(sentence))
        return;
    m_said.append(sentence);
    qDebug() << "[Journal]" << sentence;
    if (m_notice)
        m_notice(sentence);
}

} // namespace tarvel4
