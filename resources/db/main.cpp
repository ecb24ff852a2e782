#include "resources/db/cataloguerows.h"

#include <QCoreApplication>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTextStream>
#include <QVariant>

using namespace tarvel4;

namespace {

const QString schema = QStringLiteral(
    "CREATE TABLE Songs(title varchar, artist varchar, genre varchar, author varchar, length "
    "integer, bpm integer, key varchar, filename varchar primary key, markers varchar, altartist "
    "varchar)");

int fail(const QString &message)
{
    QTextStream(stderr) << message << Qt::endl;
    return 1;
}

bool insertRows(QSqlDatabase &database)
{
    QSqlQuery insert(database);
    if (!insert.prepare(QStringLiteral("insert into Songs values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")))
        return false;
    const auto rows = makeCatalogueRows();
    for (const CatalogueRow &row : rows) {
        // Only the markers may be NULL: a null text is an empty one.
        const auto text = [](const QString &value) {
            return value.isNull() ? QStringLiteral("") : value;
        };
        const QVariant values[] = {text(row.title),    text(row.artist),   text(row.genre),
                                   text(row.author),   row.length,         row.bpm,
                                   text(row.key),      text(row.filename), row.markers,
                                   text(row.altArtist)};
        int position = 0;
        for (const QVariant &value : values)
            insert.bindValue(position++, value);
        if (!insert.exec())
            return false;
    }
    return true;
}

int make(QSqlDatabase &database, const QString &path)
{
    QFile::remove(path);
    database.setDatabaseName(path);
    if (!database.open())
        return fail(path + QStringLiteral(": can't be created"));
    QSqlQuery query(database);
    const bool made = query.exec(QStringLiteral("pragma page_size = 1024"))
        && database.transaction() && query.exec(schema) && insertRows(database)
        && database.commit();
    return made ? 0 : fail(path + QStringLiteral(": can't be written"));
}

/** A catalogue is whole, and holds one table, created by exactly our statement, and its automatic
 * index. */
int check(QSqlDatabase &database, const QString &path)
{
    database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    database.setDatabaseName(path);
    QSqlQuery query(database.open() ? database : QSqlDatabase());
    if (!query.exec(QStringLiteral("select sql from sqlite_master where sql is not null")))
        return fail(path + QStringLiteral(": is no SQLite database that can be read"));
    QStringList statements;
    while (query.next())
        statements.append(query.value(0).toString());
    if (statements != QStringList{schema})
        return fail(path + QStringLiteral(": its schema is not the catalogue's:\n  ")
                    + statements.join(QStringLiteral("\n  ")) + QStringLiteral("\ninstead of\n  ")
                    + schema);
    if (!query.exec(QStringLiteral("pragma integrity_check")) || !query.next()
        || query.value(0) != QLatin1String("ok"))
        return fail(path + QStringLiteral(": is damaged: ") + query.value(0).toString());
    return 0;
}

} // namespace

/** make_catalogue FILE writes the built-in catalogue; make_catalogue --check FILE tells whether a
 * file could be one. */
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    if (arguments.size() == 2 && arguments.at(0) == QLatin1String("--check"))
        return check(database, arguments.at(1));
    if (arguments.size() == 1)
        return make(database, arguments.at(0));
    return fail(QStringLiteral("usage: make_catalogue FILE | make_catalogue --check FILE"));
}
