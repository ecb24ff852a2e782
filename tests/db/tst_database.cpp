#include "db/database.h"

#include "tests/db/cataloguefixture.h"
#include "tests/db/scripteddriver.h"

#include <QtTest>

#include <QSqlQuery>

using namespace tarvel4;

namespace {

/** Makes a catalogue whose file names and titles are texts that SQLite reads in ways of its own. */
void makeOddCatalogue(const QString &path, const QStringList &texts)
{
    {
        QSqlDatabase database =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("make"));
        database.setDatabaseName(path);
        QVERIFY(database.open());
        QSqlQuery query(database);
        QVERIFY(database.transaction() && query.exec(CatalogueFixture::schema()));
        QVERIFY(query.prepare(
            QStringLiteral("insert into Songs values (?, '', '', '', 1, 1, '', ?, NULL, '')")));
        for (const QString &text : texts) {
            query.bindValue(0, text);
            query.bindValue(1, text);
            QVERIFY(query.exec());
        }
        QVERIFY(query.exec(QStringLiteral("insert into Songs values (CAST(x'C3A9FF41' AS TEXT), "
                                          "'', '', '', 1, 1, '', 'BYTES', NULL, '')")));
        QVERIFY(database.commit());
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
    void logsWhyATitleIsNotTaken();
    void answersAsTheStatementWould();
    void answersAsTheStatementWouldForOddTexts();
    void countThatFails_data();
    void countThatFails();

private:
    bool open() { return m_database->init(m_catalogue); }

    QTemporaryDir m_folder;
    QString m_catalogue;
    std::unique_ptr<Database> m_database = std::make_unique<Database>();
};

void tst_Database::initTestCase()
{
    m_catalogue = m_folder.filePath(QStringLiteral("catalogue"));
    CatalogueFixture::make(m_catalogue);
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
    QTest::newRow("a bar beyond 16 bits wraps, one beyond 32 bits is no number")
        << QStringLiteral("LARGE") << QVector<Marker>{marker(70000 - 65536, "Far")};
    QTest::newRow("bar 0 counts, a negative bar does not, empty parts are dropped")
        << QStringLiteral("BARS") << QVector<Marker>{marker(0, "Zero"), marker(9, "Nine")};
    QTest::newRow("the column is trimmed, the labels in it are not")
        << QStringLiteral("BLANKS") << QVector<Marker>{marker(3, " Bridge "), marker(5, "Fine")};
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
    QTest::newRow("numbers beyond 32 bits give -1") << QStringLiteral("LARGE") << -1 << -1;
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

void tst_Database::logsWhyATitleIsNotTaken()
{
    QVERIFY(open());
    SongInfo record;
    const MessageCapture log;
    QVERIFY(!m_database->getRecordByTitle(QStringLiteral("Twice"), record));
    QCOMPARE(MessageCapture::messages(),
             QStringList{QStringLiteral(
                 "[getRecordByTitle] WARNING: multiple reusults in query, aborting !!!")});
    MessageCapture::messages().clear();
    QVERIFY(!m_database->getRecordByTitle(QStringLiteral("Nowhere"), record));
    QCOMPARE(MessageCapture::messages(), QStringList());
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

/** Texts that SQLite does not compare, or not even read, letter by letter. */
void tst_Database::answersAsTheStatementWouldForOddTexts()
{
    const QChar half(0xD800);
    QStringList texts{QStringLiteral("\uFFFD"),
                      QStringLiteral("a\uFFFEb"),
                      QStringLiteral("A\U00010041B"),
                      QStringLiteral("\U0001F3B5"),
                      QStringLiteral("NUL") + QChar(0) + QStringLiteral("behind"),
                      QStringLiteral("back\\slash"),
                      QStringLiteral("[a-z]*?"),
                      QStringLiteral("it's"),
                      QStringLiteral(" blank "),
                      QStringLiteral("\u00E9"),
                      QStringLiteral("\u212AEY"),
                      QStringLiteral("true"),
                      QStringLiteral("null"),
                      QStringLiteral("songs"),
                      QStringLiteral("current_date"),
                      QStringLiteral("100%"),
                      QStringLiteral("%1"),
                      QStringLiteral("line\nbreak"),
                      QString(50000, u'L'),
                      QString(50001, u'L')};
    const QString file = m_folder.filePath(QStringLiteral("odd"));
    makeOddCatalogue(file, texts);
    QVERIFY(m_database->init(file));

    texts << QStringLiteral("NUL") << QStringLiteral("NUL") + QChar(0) << QString()
          << QStringLiteral("blank") << QStringLiteral("\uFFFF") << QStringLiteral("A\uFFFDB")
          << QStringLiteral("a\uFFFFB") << half << half + QStringLiteral("A")
          << QStringLiteral("A") + half + QStringLiteral("A")
          << QStringLiteral("A") + half + QChar(0x0041) + u'B' << QChar(0xDC00)
          << QStringLiteral("\u00C9") << QStringLiteral("\u00E9\uFFFDA")
          << QStringLiteral("key\u0301") << QStringLiteral("IT'S") << QStringLiteral("%%%L")
          << QString(50001, u'%') << QStringLiteral("title ") << QStringLiteral("songs.title")
          << QStringLiteral("?") << QStringLiteral(":a") << QStringLiteral("@a")
          << QStringLiteral("1");
    const QSqlDatabase catalogue = QSqlDatabase::database(QStringLiteral("con_songsdb"));
    int hits = 0;
    for (const QString &text : std::as_const(texts)) {
        for (const char *column : {"filename", "title"}) {
            const bool byTitle = qstrcmp(column, "title") == 0;
            QSqlQuery query(catalogue);
            int rows = 0;
            query.exec(QStringLiteral("SELECT title FROM songs WHERE %1 like \"")
                           .arg(QLatin1String(column))
                       + text + u'"');
            while (query.next())
                ++rows;
            SongInfo record;
            const bool found = byTitle ? m_database->getRecordByTitle(text, record)
                                       : m_database->getRecordByFilename(text, record);
            QVERIFY2(found == (byTitle ? rows == 1 : rows > 0),
                     qPrintable(QLatin1String(column) + u' ' + text.toHtmlEscaped().left(99)));
            hits += found;
        }
    }
    QVERIFY(hits > 30);
}

void tst_Database::countThatFails_data()
{
    QTest::addColumn<QString>("failingStatement");
    QTest::addColumn<QString>("count");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QString>("message");
    const QString unable =
        QStringLiteral("[getRecordByTitle] WARNING: unable to count reusults, aborting !!!");
    const QString multiple =
        QStringLiteral("[getRecordByTitle] WARNING: multiple reusults in query, aborting !!!");
    QTest::newRow("a count that can't be executed is not one")
        << QStringLiteral("SELECT count") << QStringLiteral("1") << false << unable;
    QTest::newRow("a count that is no number is not one")
        << QString() << QStringLiteral("many") << false << multiple;
    QTest::newRow("a count of 2 is not one")
        << QString() << QStringLiteral("2") << false << multiple;
    QTest::newRow("a count of 1 is one") << QString() << QStringLiteral("1") << true << QString();
    QTest::newRow("a lookup that can't be executed fails without a message")
        << QStringLiteral("SELECT title") << QStringLiteral("1") << false << QString();
}

void tst_Database::countThatFails()
{
    QFETCH(QString, failingStatement);
    QFETCH(QString, count);
    QFETCH(bool, found);
    QFETCH(QString, message);
    const ScriptedDriver driver;
    ScriptedDriver::failingConnection.clear();
    ScriptedDriver::failingStatement = failingStatement;
    ScriptedDriver::count = count;
    QVERIFY(m_database->init(QStringLiteral("scripted")));
    const MessageCapture log;
    SongInfo record;
    QCOMPARE(m_database->getRecordByTitle(QStringLiteral("x"), record), found);
    QCOMPARE(MessageCapture::messages(), message.isEmpty() ? QStringList() : QStringList{message});
    QCOMPARE(record.title, found ? QStringLiteral("x") : QString());
}

QTEST_GUILESS_MAIN(tst_Database)
#include "tst_database.moc"
