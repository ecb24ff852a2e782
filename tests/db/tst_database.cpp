#include "db/database.h"

#include <QtTest>

#include <QSqlQuery>

namespace {

QStringList messages;

void keepMessage(QtMsgType, const QMessageLogContext &, const QString &text)
{
    messages.append(text);
}

/** Keeps the log lines of its lifetime. */
class LogCapture
{
public:
    LogCapture()
    {
        messages.clear();
        m_previous = qInstallMessageHandler(keepMessage);
    }
    ~LogCapture() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY(LogCapture)

private:
    QtMessageHandler m_previous;
};

const QString schema = QStringLiteral(
    "CREATE TABLE Songs(title varchar, artist varchar, genre varchar, author varchar, length "
    "integer, bpm integer, key varchar, filename varchar primary key, markers varchar, altartist "
    "varchar)");

/** Makes a catalogue with the rows of the tests. */
void makeCatalogue(const QString &path)
{
    {
        QSqlDatabase database =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("make"));
        database.setDatabaseName(path);
        QVERIFY(database.open());
        QSqlQuery query(database);
        for (const QString &statement :
             {schema,
              QStringLiteral("insert into Songs values (' Dodici anni ', ' Ada ', ' DANCE ', ' "
                             "Berto ', 215, 120, "
                             "' A - ', '12ANNI', ' 1;Intro;5;Verse 1; ', ' Bice ')"),
              QStringLiteral("insert into Songs values ('Twice', 'first', 'BLUES', 'x', 100, 90, "
                             "'C', 'TWICE_1', NULL, 'a')"),
              QStringLiteral("insert into Songs values ('Twice', 'second', '', 'x', 100, 90, 'C', "
                             "'TWICE_2', NULL, 'b')"),
              QStringLiteral(
                  "insert into Songs values ('Odd', 'x', 'BLUES', 'x', 'unknown', '', '', 'ODD', "
                  "'1;Intro;x;Bad;7;Verse;', 'a')"),
              QStringLiteral("insert into Songs values ('Nulls', NULL, NULL, NULL, NULL, NULL, "
                             "NULL, 'NULLS', NULL, NULL)"),
              QStringLiteral("insert into Songs values ('Half', 'x', 'x', 'x', 1, 1, '', 'HALF', "
                             "'1;Intro;5', 'a')"),
              QStringLiteral("insert into Songs values ('Bars', 'x', 'x', 'x', 1, 1, '', 'BARS', "
                             "'0;Zero;-1;Minus;;;9;Nine;', 'a')"),
              QStringLiteral("insert into Songs values ('Perch\u00e9', 'x', 'x', 'x', 1, 1, '', "
                             "'ACCENT', NULL, 'a')")})
            QVERIFY2(query.exec(statement), qPrintable(statement));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("make"));
}

} // namespace

Q_DECLARE_METATYPE(QVector<Marker>)

class tst_Database : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void lookups_data();
    void lookups();
    void fillsTheRecordTrimmed();
    void leavesTheRecordUntouchedWithoutAHit();
    void markers_data();
    void markers();
    void numbers_data();
    void numbers();
    void listsKeepTheirOrderAndTheEmptyValue();
    void logsWhyATitleIsNotTaken();
    void answersAsTheStatementWould();
    void catalogueIsReadOnly();
    void debugFileIsUsedInPlace();
    void builtInCatalogueComesThroughATemporaryFile();
    void failures_data();
    void failures();
    void clearsTheUserSongs();
    void dumpsARecord();

private:
    bool open() { return m_database->init(m_catalogue); }

    QTemporaryDir m_folder;
    QString m_catalogue;
    std::unique_ptr<Database> m_database = std::make_unique<Database>();
};

void tst_Database::initTestCase()
{
    m_catalogue = m_folder.filePath(QStringLiteral("catalogue"));
    makeCatalogue(m_catalogue);
}

void tst_Database::cleanup()
{
    m_database = std::make_unique<Database>();
    QFile::remove(QStringLiteral("songsdb_debug"));
    for (const char *name : {"con_songsdb", "con_mem"})
        QSqlDatabase::removeDatabase(QLatin1String(name));
}

void tst_Database::lookups_data()
{
    QTest::addColumn<bool>("byTitle");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("artist"); // of the record found; null: none
    const auto name = [](const char *row, const char *text, const char *artist) {
        QTest::newRow(row) << false << QString::fromUtf8(text) << QString::fromUtf8(artist);
    };
    const auto title = [](const char *row, const char *text, const char *artist) {
        QTest::newRow(row) << true << QString::fromUtf8(text) << QString::fromUtf8(artist);
    };
    name("a file name of the catalogue is found", "12ANNI", "Ada");
    name("ASCII letters match in either case", "12anni", "Ada");
    name("a file name that is not there", "13ANNI", nullptr);
    name("a file name matching several rows by \"_\" yields the first row", "TWICE__", "first");
    name("a file name matching several rows by \"%\" yields the first row", "TW%", "first");
    name("a wildcard that matches nothing", "13%", nullptr);
    name("a double quote gives false", "12\"ANNI", nullptr);
    name("a double quote beside a wildcard gives false", "%\" or \"1", nullptr);
    name("a single quote is a character like others", "12'ANNI", nullptr);
    name("an empty name", "", nullptr);
    name("blanks are not trimmed from the searched name", "12ANNI ", nullptr);
    name("a name like a placeholder is a wildcard and a digit", "%1", "first");
    for (const char *column : {"title", "ARTIST", "genre", "author", "length", "bpm", "KEY",
                               "filename", "markers", "altartist", "rowid", "OID", "_rowid_"}) {
        QTest::newRow(
            qPrintable(QStringLiteral("the column name %1 never receives the first row's data")
                           .arg(QLatin1String(column))))
            << false << QString::fromLatin1(column) << QString();
        QTest::newRow(qPrintable(
            QStringLiteral("nor does a song with the title %1").arg(QLatin1String(column))))
            << true << QString::fromLatin1(column) << QString();
    }
    QTest::newRow("a very long name") << false << QString(100000, u'A') << QString();
    QTest::newRow("a very long pattern") << false << QString(100000, u'%') << QString();
    QTest::newRow("a name with a NUL inside")
        << false << QStringLiteral("12ANNI") + QChar(0) << QString();
    QTest::newRow("a lone surrogate") << false << QString(QChar(0xD800)) << QString();

    title("a title of the catalogue, trimmed there, is found with its blanks", " dodici ANNI ",
          "Ada");
    title("a title without the blanks of the catalogue is another one", "Dodici anni", nullptr);
    title("a title with several catalogue rows yields false", "Twice", nullptr);
    title("a title matching one row by a wildcard is found", "%Dodici%", "Ada");
    title("a title that is not there", "Nowhere", nullptr);
    title("a title with a double quote gives false", "Od\"d", nullptr);
    title("an accented letter matches itself", "perch\u00e9", "x");
    title("an accented letter does not match its capital", "PERCH\u00c9", nullptr);
}

void tst_Database::lookups()
{
    QFETCH(bool, byTitle);
    QFETCH(QString, text);
    QFETCH(QString, artist);
    QVERIFY(open());
    SongInfo record;
    const bool found = byTitle ? m_database->getRecordByTitle(text, record)
                               : m_database->getRecordByFilename(text, record);
    QCOMPARE(found, !artist.isNull());
    if (found)
        QCOMPARE(record.artist, artist);
}

void tst_Database::fillsTheRecordTrimmed()
{
    QVERIFY(open());
    SongInfo record;
    record.filename = record.shortname = record.format = QStringLiteral("kept");
    record.isPublisher = true;
    QVERIFY(m_database->getRecordByFilename(QStringLiteral("12ANNI"), record));
    QCOMPARE(record.title, QStringLiteral("Dodici anni"));
    QCOMPARE(record.artist, QStringLiteral("Ada"));
    QCOMPARE(record.altArtist, QStringLiteral("Bice"));
    QCOMPARE(record.genre, QStringLiteral("DANCE"));
    QCOMPARE(record.author, QStringLiteral("Berto"));
    QCOMPARE(record.length, 215);
    QCOMPARE(record.bpm, 120);
    QCOMPARE(record.key, QStringLiteral("A -"));
    QCOMPARE(record.markers,
             (QVector<Marker>{{1, QStringLiteral("Intro")}, {5, QStringLiteral("Verse 1")}}));
    for (const QString &other : {record.filename, record.shortname, record.format})
        QCOMPARE(other, QStringLiteral("kept"));
    QVERIFY(record.isPublisher);
}

void tst_Database::leavesTheRecordUntouchedWithoutAHit()
{
    QVERIFY(open());
    SongInfo record;
    record.title = QStringLiteral("before");
    record.length = 7;
    QVERIFY(!m_database->getRecordByFilename(QStringLiteral("NOWHERE"), record));
    QVERIFY(!m_database->getRecordByTitle(QStringLiteral("Twice"), record));
    QCOMPARE(record.title, QStringLiteral("before"));
    QCOMPARE(record.length, 7);
}

void tst_Database::markers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVector<Marker>>("markers");
    const auto marker = [](int bar, const char *text) {
        return Marker{quint16(bar), QString::fromLatin1(text)};
    };
    QTest::newRow("a pair whose bar is no number is skipped")
        << QStringLiteral("ODD") << QVector<Marker>{marker(1, "Intro"), marker(7, "Verse")};
    QTest::newRow("an odd last part is ignored")
        << QStringLiteral("HALF") << QVector<Marker>{marker(1, "Intro")};
    QTest::newRow("a NULL column gives none") << QStringLiteral("NULLS") << QVector<Marker>();
    QTest::newRow("bar 0 counts, a negative bar does not, empty parts are dropped")
        << QStringLiteral("BARS") << QVector<Marker>{marker(0, "Zero"), marker(9, "Nine")};
}

void tst_Database::markers()
{
    QFETCH(QString, name);
    QFETCH(QVector<Marker>, markers);
    QVERIFY(open());
    SongInfo record;
    record.markers = {{99, QStringLiteral("before")}};
    QVERIFY(m_database->getRecordByFilename(name, record));
    QCOMPARE(record.markers, markers);
}

void tst_Database::numbers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("bpm");
    QTest::newRow("a length and a bpm that are no numbers give -1")
        << QStringLiteral("ODD") << -1 << -1;
    QTest::newRow("NULL gives -1") << QStringLiteral("NULLS") << -1 << -1;
    QTest::newRow("numbers") << QStringLiteral("TWICE_1") << 100 << 90;
}

void tst_Database::numbers()
{
    QFETCH(QString, name);
    QVERIFY(open());
    SongInfo record;
    QVERIFY(m_database->getRecordByFilename(name, record));
    QTEST(record.length, "length");
    QTEST(record.bpm, "bpm");
}

void tst_Database::listsKeepTheirOrderAndTheEmptyValue()
{
    QVERIFY(open());
    QCOMPARE(m_database->genres(),
             (QStringList{QStringLiteral(" DANCE "), QStringLiteral("BLUES"), QString(), QString(),
                          QStringLiteral("x")}));
    QCOMPARE(m_database->altArtists(),
             (QStringList{QStringLiteral(" Bice "), QStringLiteral("a"), QStringLiteral("b"),
                          QString()}));
}

void tst_Database::logsWhyATitleIsNotTaken()
{
    QVERIFY(open());
    SongInfo record;
    const LogCapture log;
    QVERIFY(!m_database->getRecordByTitle(QStringLiteral("Twice"), record));
    QCOMPARE(messages,
             QStringList{QStringLiteral(
                 "[getRecordByTitle] WARNING: multiple reusults in query, aborting !!!")});
    messages.clear();
    QVERIFY(!m_database->getRecordByTitle(QStringLiteral("Nowhere"), record));
    QCOMPARE(messages, QStringList());
}

/** The answer from memory, for texts that cannot hit, is the one that executing the statement
 * gives. */
void tst_Database::answersAsTheStatementWould()
{
    QVERIFY(m_database->init());
    QStringList texts{QStringLiteral("x"),
                      QStringLiteral("LA"),
                      QStringLiteral("santaluc"),
                      QStringLiteral("SantaLuc "),
                      QString(),
                      QStringLiteral("Q"),
                      QStringLiteral("\u00c9"),
                      QStringLiteral("BELLACIA.")};
    QSqlQuery names(QStringLiteral("select filename, title from songs"),
                    QSqlDatabase::database(QStringLiteral("con_songsdb")));
    while (names.next()) {
        if (names.at() % 400 != 0)
            continue;
        for (const QString &text : {names.value(0).toString(), names.value(1).toString()})
            texts << text << text.toLower() << text + u'x' << text.chopped(1);
    }
    QVERIFY(texts.size() > 100);
    QSqlQuery query(QSqlDatabase::database(QStringLiteral("con_songsdb")));
    for (const QString &text : std::as_const(texts)) {
        SongInfo record;
        QVERIFY(
            query.exec(
                QStringLiteral("SELECT count(*) FROM songs WHERE filename like \"%1\"").arg(text))
            && query.next());
        QVERIFY2(m_database->getRecordByFilename(text, record) == (query.value(0).toInt() > 0),
                 qPrintable(text));
        QVERIFY(query.exec(
                    QStringLiteral("SELECT count(*) FROM songs WHERE title like \"%1\"").arg(text))
                && query.next());
        QVERIFY2(m_database->getRecordByTitle(text, record) == (query.value(0).toInt() == 1),
                 qPrintable(text));
    }
}

void tst_Database::catalogueIsReadOnly()
{
    QVERIFY(open());
    QSqlQuery query(QSqlDatabase::database(QStringLiteral("con_songsdb")));
    QVERIFY(!query.exec(QStringLiteral("delete from songs")));
    QVERIFY(query.exec(QStringLiteral("select count(*) from songs")) && query.next());
    QCOMPARE(query.value(0).toInt(), 8);
}

void tst_Database::debugFileIsUsedInPlace()
{
    QVERIFY(QFile::copy(m_catalogue, QStringLiteral("songsdb_debug")));
    {
        const LogCapture log;
        QVERIFY(m_database->init());
        QCOMPARE(messages,
                 QStringList{QStringLiteral("Using local file: 'songsdb_debug' as database")});
    }
    QCOMPARE(QSqlDatabase::database(QStringLiteral("con_songsdb")).databaseName(),
             QStringLiteral("songsdb_debug"));
    SongInfo record;
    QVERIFY(m_database->getRecordByFilename(QStringLiteral("12ANNI"), record));
}

void tst_Database::builtInCatalogueComesThroughATemporaryFile()
{
    const LogCapture log;
    QVERIFY(m_database->init());
    const QString file = QSqlDatabase::database(QStringLiteral("con_songsdb")).databaseName();
    QCOMPARE(messages,
             QStringList{
                 QStringLiteral("[Database::init] Created temporary db file:  \"%1\"").arg(file)});
    QVERIFY(QFileInfo::exists(file));
    SongInfo record;
    QVERIFY(m_database->getRecordByFilename(QStringLiteral("SANTALUC"), record));
    QCOMPARE(record.title, QStringLiteral("Santa Lucia"));
    m_database.reset();
    QVERIFY(!QFileInfo::exists(file));
}

void tst_Database::failures_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("opens");
    QTest::newRow("a catalogue file that is not there")
        << QStringLiteral("/nowhere/catalogue") << false;
    QTest::newRow("a catalogue file that is a folder") << QStringLiteral("/") << false;
}

void tst_Database::failures()
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

void tst_Database::clearsTheUserSongs()
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

void tst_Database::dumpsARecord()
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
    const LogCapture log;
    Database::dumpRecord(record);
    QStringList expected{
        QStringLiteral("  Title     : \"T\""), QStringLiteral("  Genre     : \"G\""),
        QStringLiteral("  Artist    : \"A\""), QStringLiteral("  AltArtist : \"AA\""),
        QStringLiteral("  Author    : \"U\""), QStringLiteral("  Bpm       : 120"),
        QStringLiteral("  Key       : \"C\""), QStringLiteral("  Length    : 60")};
    QCOMPARE(messages, expected + QStringList{QStringLiteral("  NO Markers")});

    messages.clear();
    record.markers = {{5, QStringLiteral("Verse")}};
    Database::dumpRecord(record);
    expected << QStringLiteral("  Markers:") << QStringLiteral("    bar: 5   text: \"Verse\"");
    QCOMPARE(messages, expected);
}

QTEST_GUILESS_MAIN(tst_Database)
#include "tst_database.moc"
