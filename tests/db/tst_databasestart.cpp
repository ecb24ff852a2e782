#include "db/database.h"

#include "tests/db/cataloguefixture.h"
#include "tests/db/scripteddriver.h"

#include <QtTest>

#include <QSqlQuery>

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
class tst_DatabaseStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void listsKeepTheirOrderAndTheEmptyValue();
    void catalogueIsReadOnly();
    void debugFileIsUsedInPlace();
    void startsAnyNumberOfTimes();
    void memoryThatDoesNotOpen();
    void temporaryFileThatCanNotBeMade();
    void temporaryFileThatCanNotBeWritten();
    void resourceThatIsMissing();
    void builtInCatalogueComesThroughATemporaryFile();
    void failures_data();
    void failures();
    void aCatalogueThatNeverEnds_data();
    void aCatalogueThatNeverEnds();
    void clearsTheUserSongs();
    void dumpsARecord();

private:
    bool open() { return m_database->init(m_catalogue); }

    QTemporaryDir m_folder;
    QString m_catalogue;
    std::unique_ptr<Database> m_database = std::make_unique<Database>();
};

void tst_DatabaseStart::initTestCase()
{
    m_catalogue = m_folder.filePath(QStringLiteral("catalogue"));
    CatalogueFixture::make(m_catalogue);
}

void tst_DatabaseStart::cleanup()
{
    m_database = std::make_unique<Database>();
    QFile::remove(QStringLiteral("songsdb_debug"));
    for (const char *name : {"con_songsdb", "con_mem"})
        QSqlDatabase::removeDatabase(QLatin1String(name));
}

void tst_DatabaseStart::listsKeepTheirOrderAndTheEmptyValue()
{
    QVERIFY(open());
    QCOMPARE(m_database->genres(),
             (QStringList{QStringLiteral(" DANCE "), QStringLiteral("BLUES"), QString(), QString(),
                          QStringLiteral("x")}));
    QCOMPARE(m_database->altArtists(),
             (QStringList{QStringLiteral(" Bice "), QStringLiteral("a"), QStringLiteral("b"),
                          QString()}));
}

void tst_DatabaseStart::catalogueIsReadOnly()
{
    QVERIFY(open());
    QSqlQuery query(QSqlDatabase::database(QStringLiteral("con_songsdb")));
    QVERIFY(!query.exec(QStringLiteral("delete from songs")));
    QVERIFY(query.exec(QStringLiteral("select count(*) from songs")) && query.next());
    QCOMPARE(query.value(0).toInt(), 11);
}

void tst_DatabaseStart::debugFileIsUsedInPlace()
{
    QVERIFY(QFile::copy(m_catalogue, QStringLiteral("songsdb_debug")));
    {
        withdrawResource(); // it is not even looked at
        const QByteArray folder = qgetenv("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(m_catalogue)); // nor is a temporary file made
        const MessageCapture log;
        const bool opened = m_database->init();
        restoreResource();
        folder.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", folder);
        QVERIFY(opened);
        QCOMPARE(MessageCapture::messages(),
                 QStringList{QStringLiteral("Using local file: 'songsdb_debug' as database")});
    }
    QCOMPARE(QSqlDatabase::database(QStringLiteral("con_songsdb")).databaseName(),
             QStringLiteral("songsdb_debug"));
    SongInfo record;
    QVERIFY(m_database->getRecordByFilename(QStringLiteral("12ANNI"), record));
    QSqlQuery query(QSqlDatabase::database(QStringLiteral("con_songsdb")));
    QVERIFY(!query.exec(QStringLiteral("delete from songs")));
}

void tst_DatabaseStart::startsAnyNumberOfTimes()
{
    const MessageCapture log;
    for (int i = 0; i < 3; ++i) {
        m_database = std::make_unique<Database>();
        QVERIFY(open());
        QSqlQuery query(m_database->userSongsDatabase());
        QVERIFY(query.exec(QStringLiteral("select count(*) from usersongs")) && query.next());
        QCOMPARE(query.value(0).toInt(), 0);
        QVERIFY(query.exec(QStringLiteral("insert into usersongs (title) values ('x')")));
        m_database.reset();
    }
    QCOMPARE(MessageCapture::messages(),
             QStringList()); // nor does Qt complain about a connection made twice
}

void tst_DatabaseStart::memoryThatDoesNotOpen()
{
    const ScriptedDriver driver;
    ScriptedDriver::failingConnection = QStringLiteral(":memory:");
    ScriptedDriver::failingStatement.clear();
    const MessageCapture log;
    QVERIFY(!m_database->init());
    QCOMPARE(MessageCapture::messages(), QStringList());
    QVERIFY(!QSqlDatabase::contains(QStringLiteral("con_songsdb")));
}

void tst_DatabaseStart::temporaryFileThatCanNotBeMade()
{
    const QByteArray folder = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(m_catalogue)); // a file, in which no other can be made
    const MessageCapture log;
    const bool opened = m_database->init();
    folder.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", folder);
    QVERIFY(!opened);
    QCOMPARE(MessageCapture::messages(),
             QStringList{
                 QStringLiteral("[Database::init] FATAL: Unable to create temporary files !!!")});
    QVERIFY(m_database->userSongsDatabase().isOpen());
}

void tst_DatabaseStart::temporaryFileThatCanNotBeWritten()
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
             QStringLiteral("[Database::init] FATAL: Unable to create temporary files !!!"));
    QVERIFY(!QSqlDatabase::contains(QStringLiteral("con_songsdb")));
#else
    QSKIP("no limit of a file's size here");
#endif
}

void tst_DatabaseStart::resourceThatIsMissing()
{
    withdrawResource();
    const MessageCapture log;
    const bool opened = m_database->init();
    restoreResource();
    QVERIFY(!opened);
    QCOMPARE(MessageCapture::messages().size(), 2);
    QVERIFY(MessageCapture::messages().at(0).startsWith(
        QLatin1String("[Database::init] Created temporary db file:")));
    QCOMPARE(MessageCapture::messages().at(1),
             QStringLiteral("[Database::init] FATAL: Unable to open db resource file !!!"));
    QVERIFY(m_database->genres().isEmpty() && m_database->altArtists().isEmpty());
    QVERIFY(m_database->userSongsDatabase().isOpen());
}

void tst_DatabaseStart::builtInCatalogueComesThroughATemporaryFile()
{
    const MessageCapture log;
    QVERIFY(m_database->init());
    const QString file = QSqlDatabase::database(QStringLiteral("con_songsdb")).databaseName();
    QCOMPARE(MessageCapture::messages(),
             QStringList{
                 QStringLiteral("[Database::init] Created temporary db file:  \"%1\"").arg(file)});
    QVERIFY(QFileInfo::exists(file));
    SongInfo record;
    QVERIFY(m_database->getRecordByFilename(QStringLiteral("SANTALUC"), record));
    QCOMPARE(record.title, QStringLiteral("Santa Lucia"));
    m_database.reset();
    QVERIFY(!QFileInfo::exists(file));
}

void tst_DatabaseStart::failures_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("opens");
    QTest::newRow("a catalogue file that is not there")
        << QStringLiteral("/nowhere/catalogue") << false;
    QTest::newRow("a catalogue file that is a folder") << QStringLiteral("/") << false;
}

void tst_DatabaseStart::failures()
{
    QFETCH(QString, file);
    QVERIFY(!m_database->init(file));
    QVERIFY(m_database->genres().isEmpty());
    QVERIFY(m_database->altArtists().isEmpty());
    QVERIFY(m_database->userSongsDatabase().isOpen());
    SongInfo record;
    QVERIFY(!m_database->getRecordByFilename(QStringLiteral("12ANNI"), record));
    QVERIFY(!m_database->getRecordByTitle(QStringLiteral("%"), record));
}

void tst_DatabaseStart::aCatalogueThatNeverEnds_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("a view that calculates its songs")
        << "create view Songs as with recursive n(i) as (select 1 union all select i + 1 from n) "
           "select i as title, i as artist, i as genre, i as author, i as length, i as bpm, "
           "i as key, i as filename, '' as markers, i as altartist from n";
    QTest::newRow("a virtual table") << "create virtual table songs using fts5(genre)";
    QTest::newRow("a table that has too many songs")
        << "create table songs as with recursive n(i) as (select 1 union all select i + 1 from n "
           "limit 1000001) select i as genre from n";
}

void tst_DatabaseStart::aCatalogueThatNeverEnds()
{
    QFETCH(QString, statement);
    const QString file = m_folder.filePath(QStringLiteral("endless"));
    QFile::remove(file);
    {
        QSqlDatabase database =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("make"));
        database.setDatabaseName(file);
        QVERIFY(database.open());
        QVERIFY(QSqlQuery(database).exec(statement));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("make"));
    QVERIFY(!m_database->init(file));
    QCOMPARE(m_database->genres(), QStringList());
    SongInfo record;
    QVERIFY(!m_database->getRecordByTitle(QStringLiteral("%"), record));
}

void tst_DatabaseStart::clearsTheUserSongs()
{
    QVERIFY(open());
    QSqlQuery query(m_database->userSongsDatabase());
    QVERIFY(query.exec(QStringLiteral("insert into usersongs (title) values ('x')")));
    QVERIFY(m_database->clearUserSongs());
    QVERIFY(query.exec(QStringLiteral("select count(*) from usersongs")) && query.next());
    QCOMPARE(query.value(0).toInt(), 0);
    QVERIFY(query.exec(QStringLiteral("drop table usersongs")));
    QVERIFY(!m_database->clearUserSongs());
}

void tst_DatabaseStart::dumpsARecord()
{
    SongInfo record;
    record.title = QStringLiteral("T");
    record.genre = QStringLiteral("G");
    record.artist = QStringLiteral("A");
    record.altArtist = QStringLiteral("AA");
    record.author = QStringLiteral("U");
    record.bpm = 120;
    record.key = QStringLiteral("C");
    record.length = 60;
    const MessageCapture log;
    Database::dumpRecord(record);
    QStringList expected{
        QStringLiteral("  Title     : \"T\""), QStringLiteral("  Genre     : \"G\""),
        QStringLiteral("  Artist    : \"A\""), QStringLiteral("  AltArtist : \"AA\""),
        QStringLiteral("  Author    : \"U\""), QStringLiteral("  Bpm       : 120"),
        QStringLiteral("  Key       : \"C\""), QStringLiteral("  Length    : 60")};
    QCOMPARE(MessageCapture::messages(), expected + QStringList{QStringLiteral("  NO Markers")});

    MessageCapture::messages().clear();
    record.markers = {{5, QStringLiteral("Verse")}};
    Database::dumpRecord(record);
    expected << QStringLiteral("  Markers:") << QStringLiteral("    bar: 5   text: \"Verse\"");
    QCOMPARE(MessageCapture::messages(), expected);
}

QTEST_GUILESS_MAIN(tst_DatabaseStart)
#include "tst_databasestart.moc"
