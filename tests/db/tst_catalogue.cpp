#include "tests/storage/table.h"

#include <QtTest>

#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>

using namespace tarvel4;

/** The built-in catalogue has the schema and the statistics of the maker's, and its maker refuses
 * another schema. */
class tst_Catalogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_file = m_folder.filePath("songsdb"_s);
        QVERIFY(QFile::copy(":/db/songsdb"_s, m_file));
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE"_s);
        database.setDatabaseName(m_file);
        QVERIFY(database.open());
    }

    void statistics_data()
    {
        const Table<QString, QString> row;
        row("page size 1024", "pragma page_size", "1024");
        row("about 2.7 MB",
            "select page_count * 1024 between 2650000 and 2800000 from pragma_page_count", "1");
        row("one table and its automatic index", "select group_concat(type) from sqlite_master",
            "table,index");
        row("the table's statement", "select sql from sqlite_master where type = 'table'",
            "CREATE TABLE Songs(title varchar, artist varchar, genre varchar, author varchar, "
            "length "
            "integer, bpm integer, "
            "key varchar, filename varchar primary key, markers varchar, altartist varchar)");
        row("8,642 songs", "select count(*) from songs", "8642");
        row("20 genres", "select count(distinct genre) from songs where genre <> ''", "20");
        row("and the empty one", "select count(*) > 0 from songs where genre = ''", "1");
        row("genres are upper case", "select count(*) from songs where genre <> upper(genre)", "0");
        row("2,160 alternative artists", "select count(distinct altartist) from songs", "2160");
        row("none of them empty",
            "select count(*) from songs where altartist = '' or altartist is null", "0");
        row("929 rows without markers", "select count(*) from songs where markers is null", "929");
        row("lengths from 32 to 631", "select min(length) || ' ' || max(length) from songs",
            "32 631");
        row("tempos from 45 to 240", "select min(bpm) || ' ' || max(bpm) from songs", "45 240");
        row("numbers are integers",
            "select count(*) from songs where typeof(length) || typeof(bpm) <> 'integerinteger'",
            "0");
        row("file names of 1 to 8 characters",
            "select min(length(filename)) || ' ' || max(length(filename)) from songs", "1 8");
        row("file names are upper case without extension",
            "select count(*) from songs where filename <> upper(filename) or filename like '%.%'",
            "0");
        row("authors are never empty",
            "select count(*) from songs where author = '' or author is null", "0");
        row("some titles are shared",
            "select count(*) > 100 from (select title from songs group by title having count(*) > "
            "1)",
            "1");
        row("irregular keys",
            "select count(distinct key) from songs where key in ('C#-', 'G #', ' D')", "3");
        row("minor keys are written with a blank",
            "select count(*) > 1000 from songs where key like '% -'", "1");
        row("markers end with a semicolon",
            "select count(*) from songs where markers not like '%;'", "0");
    }
    void statistics()
    {
        const auto [query, result] = cells<QString, QString>();
        QSqlQuery sql(query);
        QVERIFY(sql.next());
        QCOMPARE(sql.value(0).toString(), result);
    }

    void samplesAreInIt()
    {
        QSqlQuery sql(
            "select count(*) from songs where filename in ('SANTALUC', 'FUNICULI', 'BELLACIA', 'FRAMARTI', 'DONNAMOB', 'GREENSLV', 'AULDLANG')"_s);
        QVERIFY(sql.next());
        QCOMPARE(sql.value(0).toInt(), 7);
    }

    void isTheSameAtEachBuild()
    {
#ifdef Q_OS_WIN
        QSKIP("The host's SQLite made the built-in one, and notes its version in it");
#endif
        const QString again = m_folder.filePath("again"_s);
        QCOMPARE(make({again}), 0);
        QFile first(":/db/songsdb"_s);
        QFile second(again);
        QVERIFY(first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly));
        QVERIFY(first.readAll() == second.readAll());
    }

    void anotherReaderFindsItWhole()
    {
        QProcess sqlite;
        sqlite.start("sqlite3"_s, {m_file, "pragma integrity_check; select count(*) from Songs"_s});
        if (!sqlite.waitForStarted())
            QSKIP("sqlite3 is not installed");
        QVERIFY(sqlite.waitForFinished());
        QCOMPARE(sqlite.readAllStandardOutput(), QByteArray("ok\n8642\n"));
    }

    void schemas_data()
    {
        const Table<QString, bool> row;
        row("the maker's own schema is accepted", "delete from Songs", true);
        row("another column is refused", "alter table Songs add column year integer", false);
        row("another table is refused", "create table Genres(name varchar)", false);
        row("another index is refused", "create index i on Songs(title)", false);
        row("no table is refused", "drop table Songs", false);
    }
    void schemas()
    {
        const auto [change, accepted] = cells<QString, bool>();
        const QString file = m_folder.filePath("changed"_s);
        QFile::remove(file);
        QVERIFY(QFile::copy(m_file, file));
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
        {
            QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE"_s, "changed"_s);
            database.setDatabaseName(file);
            QVERIFY(database.open());
            QVERIFY(QSqlQuery(database).exec(change));
        }
        QSqlDatabase::removeDatabase("changed"_s);

        QString errors;
        QCOMPARE(make({"--check"_s, file}, &errors), accepted ? 0 : 1);
        QCOMPARE(errors.contains("schema"_s), !accepted);
        QCOMPARE(make({"--check"_s, "/nowhere"_s}), 1);
    }

    void damage_data()
    {
        const Table<qint64, qint64> row; // to: of what is overwritten; -1: the rest is cut off
        row("a file cut in the middle is refused", 1000000, -1);
        row("a file cut behind its schema is refused", 2048, -1);
        row("overwritten pages are refused", 500000, 600000);
        row("an overwritten header is refused", 0, 100);
        row("an empty file is refused", 0, -1);
    }
    void damage()
    {
        const auto [from, to] = cells<qint64, qint64>();
        QFile whole(m_file);
        QVERIFY(whole.open(QIODevice::ReadOnly));
        QByteArray bytes = whole.readAll();
        if (to < 0)
            bytes.truncate(static_cast<int>(from));
        else
            bytes.replace(static_cast<int>(from), static_cast<int>(to - from),
                          QByteArray(static_cast<int>(to - from), '\x55'));
        const QString file = m_folder.filePath("damaged"_s);
        QFile damaged(file);
        QVERIFY(damaged.open(QIODevice::WriteOnly));
        QCOMPARE(damaged.write(bytes), static_cast<qint64>(bytes.size()));
        damaged.close();

        QString errors;
        QCOMPARE(make({"--check"_s, file}, &errors), 1);
        QVERIFY2(errors.startsWith(file), qPrintable(errors));
    }

private:
    static int make(const QStringList &arguments, QString *errors = nullptr)
    {
        QProcess process;
        process.start(QStringLiteral(TARVEL4_MAKE_CATALOGUE), arguments);
        process.waitForFinished();
        if (errors)
            *errors = QString::fromLocal8Bit(process.readAllStandardError());
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QTemporaryDir m_folder;
    QString m_file;
};

QTEST_GUILESS_MAIN(tst_Catalogue)
#include "tst_catalogue.moc"
