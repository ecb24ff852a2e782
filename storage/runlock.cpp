#include "storage/runlock.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUuid>

namespace tarvel4 {

namespace {

const QLatin1String prefix("run-");
const QLatin1String suffix(".lock");

} // namespace

RunLock::RunLock(const QString &path)
    : m_path(path)
    , m_connection(QLatin1String("lock ") + QUuid::createUuid().toString())
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    db.setDatabaseName(path);
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=0"));
    m_isHeld = db.open()
        && QSqlQuery(db).exec(QStringLiteral("PRAGMA journal_mode=MEMORY")) // no file beside it
        && QSqlQuery(db).exec(QStringLiteral("BEGIN EXCLUSIVE"));
}

RunLock::~RunLock()
{
    const bool isThere = m_isHeld && !QFile::remove(m_path);
    QSqlDatabase::database(m_connection, false).close();
    QSqlDatabase::removeDatabase(m_connection);
    if (isThere) // Windows removes no file that is open, neither here nor in another program
        QFile::remove(m_path);
}

QString RunLock::newName()
{
    return prefix + QUuid::createUuid().toString(QUuid::WithoutBraces) + suffix;
}

void RunLock::removeEnded(const QString &folder)
{
    constexpr qint64 newest = 60; // seconds: a run may have made its file, and not locked it yet
    const QFileInfoList files =
        QDir(folder).entryInfoList({prefix + QLatin1Char('*') + suffix}, QDir::Files);
    for (const QFileInfo &file : files) {
        if (file.lastModified().secsTo(QDateTime::currentDateTime()) > newest)
            RunLock(file.filePath());
    }
}

} // namespace tarvel4
