#include "tests/db/cataloguefixture.h"
#include "tests/db/scripteddriver.h"

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace tarvel4;

// Resources are withdrawn and restored by functions outside any namespace.
static void withdrawResource()
{
    Q_CLEANUP_RESOURCE(catalogue);
}

static void restoreResource()
{
    Q_INIT_RESOURCE(catalogue);
}

/** What opening the two connections leaves behind, with each of its failures. */
class tst_DatabaseStart : public CatalogueTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { makeCatalogue(); }
    void cleanup() { closeDatabase(); }

    void listsKeepTheirOrderAndTheEmptyValue()
    {
        QVERIFY(open());
        QCOMPARE(m_database->genres(),
                 (QStringList{" DANCE "_s, "BLUES"_s, QString(), QString(), "x"_s}));
        QCOMPARE(m_database->altArtists(), (QStringList{" Bice "_s, "a"_s, "b"_s, QString()}));
    }

    void catalogueIsReadOnly()
    {
        QVERIFY(open());
        QSqlQuery query(QSqlDatabase::database("con_songsdb"_s));
        QVERIFY(!query.exec("delete from songs"_s));
        QVERIFY(query.exec("select count(*) from songs"_s) && query.next());
        QCOMPARE(query.value(0).toInt(), 11);
    }

    void debugFileIsUsedInPlace()
    {
        QVERIFY(QFile::copy(m_catalogue, "songsdb_debug"_s));
        {
            withdrawResource(); // it is not even looked at
#ifdef Q_OS_WIN
            QSKIP("Windows asks its own variables, once");
#endif
            const QByteArray folder = qgetenv("TMPDIR");
            qputenv("TMPDIR", QFile::encodeName(m_catalogue)); // nor is a temporary file made
            const MessageCapture log;
            const bool opened = m_database->init();
            restoreResource();
            folder.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", folder);
            QVERIFY(opened);
            QCOMPARE(MessageCapture::messages(),
                     QStringList{"Using local file: 'songsdb_debug' as database"_s});
        }
        QCOMPARE(QSqlDatabase::database("con_songsdb"_s).databaseName(), "songsdb_debug"_s);
        SongInfo record;
        QVERIFY(m_database->getRecordByFilename("12ANNI"_s, record));
        QSqlQuery query(QSqlDatabase::database("con_songsdb"_s));
        QVERIFY(!query.exec("delete from songs"_s));
    }

    void startsAnyNumberOfTimes()
    {
        const MessageCapture log;
        for (int i = 0; i < 3; ++i) {
            m_database = std::make_unique<Database>();
            QVERIFY(open());
            QSqlQuery query(m_database->userSongsDatabase());
            QVERIFY(query.exec("select count(*) from usersongs"_s) && query.next());
            QCOMPARE(query.value(0).toInt(), 0);
            QVERIFY(query.exec("insert into usersongs (title) values ('x')"_s));
            m_database.reset();
        }
        QCOMPARE(MessageCapture::messages(),
                 QStringList()); // nor does Qt complain about a connection made twice
    }

    void readsTheListsAtTheStartAndTheKeysWhenTheyAreFirstAskedFor_data()
    {
        QTest::addColumn<bool>("byTitle");
        QTest::newRow("by a title") << true;
        QTest::newRow("by a file's name") << false;
    }
    void readsTheListsAtTheStartAndTheKeysWhenTheyAreFirstAskedFor()
    {
        QFETCH(bool, byTitle);
        const ScriptedDriver driver;
        ScriptedDriver::failingConnection.clear();
        ScriptedDriver::failingStatement.clear();
        ScriptedDriver::statements.clear();
        QVERIFY(m_database->init("scripted"_s));
        const auto readings = [](const char *start) {
            int count = 0;
            for (const QString &statement : qAsConst(ScriptedDriver::statements))
                count += statement.startsWith(QLatin1String(start)) ? 1 : 0;
            return count;
        };
        QCOMPARE(readings("select distinct"), 2);
        QCOMPARE(readings("SELECT rowid"), 0);
        SongInfo record;
        for (int i = 0; i < 2; ++i) {
            if (byTitle)
                m_database->getRecordByTitle("a"_s, record);
            else
                m_database->getRecordByFilename("a"_s, record);
            QCOMPARE(readings("SELECT rowid"), 2);
        }
        QCOMPARE(m_database->genres(), QStringList{"x"_s});
        QCOMPARE(m_database->altArtists(), QStringList{"x"_s});
        QCOMPARE(readings("select distinct"), 2);
    }

    void memoryThatDoesNotOpen()
    {
        const ScriptedDriver driver;
        ScriptedDriver::failingConnection = ":memory:"_s;
        ScriptedDriver::failingStatement.clear();
        const MessageCapture log;
        QVERIFY(!m_database->init());
        QCOMPARE(MessageCapture::messages(), QStringList());
        QVERIFY(!QSqlDatabase::contains("con_songsdb"_s));
    }

    void temporaryFileThatCanNotBeMade()
    {
#ifdef Q_OS_WIN
        QSKIP("Windows asks its own variables, once");
#endif
        const QByteArray folder = qgetenv("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(m_catalogue)); // a file, in which no other can be made
        const MessageCapture log;
        const bool opened = m_database->init();
        folder.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", folder);
        QVERIFY(!opened);
        QCOMPARE(MessageCapture::messages(),
                 QStringList{"[Database::init] FATAL: Unable to create temporary files !!!"_s});
        QVERIFY(m_database->userSongsDatabase().isOpen());
    }

    void temporaryFileThatCanNotBeWritten()
    {
#ifdef Q_OS_UNIX
        const MessageCapture log;
        struct rlimit before;
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
        const struct rlimit small
        {
            100000, before.rlim_max
        };
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        const bool opened = m_database->init();
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
        QVERIFY(!opened);
        QCOMPARE(MessageCapture::messages().last(),
                 "[Database::init] FATAL: Unable to create temporary files !!!"_s);
        QVERIFY(!QSqlDatabase::contains("con_songsdb"_s));
#else
        QSKIP("no limit of a file's size here");
#endif
    }

    void resourceThatIsMissing()
    {
        withdrawResource();
        const MessageCapture log;
        const bool opened = m_database->init();
        restoreResource();
        QVERIFY(!opened);
        QCOMPARE(MessageCapture::messages().size(), 2);
        QVERIFY(MessageCapture::messages().at(0).startsWith(
            "[Database::init] Created temporary db file:"_s));
        QCOMPARE(MessageCapture::messages().at(1),
                 "[Database::init] FATAL: Unable to open db resource file !!!"_s);
        QVERIFY(m_database->genres().isEmpty() && m_database->altArtists().isEmpty());
        QVERIFY(m_database->userSongsDatabase().isOpen());
    }

    void builtInCatalogueComesThroughATemporaryFile()
    {
        const MessageCapture log;
        QVERIFY(m_database->init());
        const QString file = QSqlDatabase::database("con_songsdb"_s).databaseName();
        QCOMPARE(MessageCapture::messages(),
                 QStringList{"[Database::init] Created temporary db file:  \"%1\""_s.arg(file)});
        QVERIFY(QFileInfo::exists(file));
        SongInfo record;
        QVERIFY(m_database->getRecordByFilename("SANTALUC"_s, record));
        QCOMPARE(record.title, "Santa Lucia"_s);
        m_database.reset();
        QVERIFY(!QFileInfo::exists(file));
    }

    void aMissingCatalogueAndAFolderDoNotOpen()
    {
        for (const char *file : {"/nowhere/catalogue", "/"}) {
            QVERIFY(!m_database->init(QLatin1String(file)));
            const MessageCapture log;
            QVERIFY(m_database->genres().isEmpty() && m_database->altArtists().isEmpty());
            QCOMPARE(MessageCapture::messages(), QStringList());
            QVERIFY(m_database->userSongsDatabase().isOpen());
            SongInfo record;
            QVERIFY(!m_database->getRecordByFilename("12ANNI"_s, record));
            QVERIFY2(MessageCapture::messages().size() <= 1, "Qt's own, of the look-up");
            QVERIFY(!m_database->getRecordByTitle("%"_s, record));
        }
    }

    void listsStayEmptyWhereTheirStatementsFail()
    {
        const QString file = m_folder.filePath("without"_s);
        execute(file, {"create table other (genre)"_s});
        const MessageCapture log;
        QVERIFY2(m_database->init(file), "it could be opened");
        QVERIFY(m_database->genres().isEmpty() && m_database->altArtists().isEmpty());
        SongInfo record;
        QVERIFY(!m_database->getRecordByFilename("12ANNI"_s, record));
        QVERIFY(!m_database->getRecordByTitle("Twice"_s, record));
        QCOMPARE(MessageCapture::messages(), QStringList());
    }

    void aCatalogueThatNeverEnds_data()
    {
        const Table<QString> row;
        row("a view that calculates its songs",
            "create view Songs as with recursive n(i) as (select 1 union all select i + 1 from "
            "n) "
            "select i as title, i as artist, i as genre, i as author, i as length, i as bpm, "
            "i as key, i as filename, '' as markers, i as altartist from n");
        row("a virtual table", "create virtual table songs using fts5(genre)");
        row("a table that has too many songs",
            "create table songs as with recursive n(i) as (select 1 union all select i + 1 from "
            "n "
            "limit 1000001) select i as genre from n");
    }
    void aCatalogueThatNeverEnds()
    {
        const auto [statement] = cells<QString>();
        const QString file = m_folder.filePath("endless"_s);
        QFile::remove(file);
        execute(file, {statement});
        QVERIFY(!m_database->init(file));
        QCOMPARE(m_database->genres(), QStringList());
        SongInfo record;
        QVERIFY(!m_database->getRecordByTitle("%"_s, record));
    }

    void clearsTheUserSongs()
    {
        QVERIFY(open());
        QSqlQuery query(m_database->userSongsDatabase());
        QVERIFY(query.exec("insert into usersongs (title) values ('x')"_s));
        QVERIFY(m_database->clearUserSongs());
        QVERIFY(query.exec("select count(*) from usersongs"_s) && query.next());
        QCOMPARE(query.value(0).toInt(), 0);
        QVERIFY(query.exec("drop table usersongs"_s));
        QVERIFY(!m_database->clearUserSongs());
    }

    void dumpsARecord()
    {
        SongInfo record;
        record.title = "T"_s;
        record.genre = "G"_s;
        record.artist = "A"_s;
        record.altArtist = "AA"_s;
        record.author = "U"_s;
        record.bpm = 120;
        record.key = "C"_s;
        record.length = 60;
        const MessageCapture log;
        Database::dumpRecord(record);
        record.markers = {{5, "Verse"_s}};
        Database::dumpRecord(record);
        const QString fields =
            "  Title     : \"T\"|  Genre     : \"G\"|  Artist    : \"A\"|  AltArtist : \"AA\"|"
            "  Author    : \"U\"|  Bpm       : 120|  Key       : \"C\"|  Length    : 60|"_s;
        QCOMPARE(MessageCapture::messages().join(QLatin1Char('|')),
                 fields + "  NO Markers|"_s + fields + "  Markers:|    bar: 5   text: \"Verse\""_s);
    }
};

QTEST_GUILESS_MAIN(tst_DatabaseStart)
#include "tst_databasestart.moc"
