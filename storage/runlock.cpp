#include "storage/runlock.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUuid>

namespace tarvel4 {

RunLock::RunLock(const QString &path)
    : m_path(path)
    , m_connection(QLatin1String("lock ") + QUuid::createUuid().toString())
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    db.setDatabaseName(path);
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=0"));
    m_isHeld = db.open() && QSqlQuery(db).exec(QStringLiteral("BEGIN EXCLUSIVE"));
}

RunLock::~RunLock()
{
    if (m_isHeld)
        QFile::remove(m_path);
    QSqlDatabase::database(m_connection, false).close();
    QSqlDatabase::removeDatabase(m_connection);
}

} // namespace tarvel4
