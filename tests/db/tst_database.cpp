#include "tests/db/cataloguefixture.h"
#include "tests/db/scripteddriver.h"
#include "tests/songs/songfixture.h"

using namespace tarvel4;

class tst_Database : public CatalogueTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { makeCatalogue(); }
    void cleanup() { closeDatabase(); }

    void lookups_data()
    {
        const Table<bool, QString, QString> row; // by title, text, artist found; null: none
        const auto name = [&row](const char *sentence, const char *text, const char *artist) {
            row(sentence, false, text, artist);
        };
        const auto title = [&row](const char *sentence, const char *text, const char *artist) {
            row(sentence, true, text, artist);
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
            row(qPrintable("the column name %1 never receives the first row's data"_s.arg(
                    QLatin1String(column))),
                false, QString::fromLatin1(column), {});
            row(qPrintable("nor does a song with the title %1"_s.arg(QLatin1String(column))), true,
                QString::fromLatin1(column), {});
        }
        row("a very long name", false, QString(100000, QLatin1Char('A')), {});
        row("a very long pattern", false, QString(100000, QLatin1Char('%')), {});
        row("a name with a NUL inside", false, "12ANNI"_s + QChar(0), {});
        row("a lone surrogate", false, QString(QChar(0xD800)), {});

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
    void lookups()
    {
        const auto [byTitle, text, artist] = cells<bool, QString, QString>();
        QVERIFY(open());
        SongInfo record;
        record.artist = "untouched"_s;
        const MessageCapture log;
        QCOMPARE(byTitle ? m_database->getRecordByTitle(text, record)
                         : m_database->getRecordByFilename(text, record),
                 !artist.isNull());
        QCOMPARE(record.artist, artist.isNull() ? "untouched"_s : artist);
        const QString line =
            "[getRecordByTitle] WARNING: multiple reusults in query, aborting !!!"_s;
        QCOMPARE(MessageCapture::messages(), text == "Twice"_s ? QStringList(line) : QStringList());
    }

    void records_data()
    {
        const Table<QString, QString> row;
        row("texts are trimmed", "12ANNI",
            "kept|Dodici anni|Ada|Bice|DANCE|Berto|215|120|A -|1|1:Intro,5:Verse 1|kept|0");
        row("a length and a tempo that are no numbers give -1; a pair without a bar is skipped",
            "ODD", "kept|Odd|x|a|BLUES|x|-1|-1||1|1:Intro,7:Verse|kept|0");
        row("NULL gives -1, no text and no markers", "NULLS", "kept|Nulls|||||-1|-1||1||kept|0");
        row("numbers beyond 32 bits give -1, and no bar; a bar beyond 16 bits wraps", "LARGE",
            "kept|Large|x|a|x|x|-1|-1||1|4464:Far|kept|0");
        row("an odd last part of the markers is ignored: 1;Intro;5 gives one", "HALF",
            "kept|Half|x|a|x|x|1|1||1|1:Intro|kept|0");
        row("bar 0 counts, a negative bar does not, empty parts are dropped", "BARS",
            "kept|Bars|x|a|x|x|1|1||1|0:Zero,9:Nine|kept|0");
        row("the markers are trimmed, the labels in them are not", "BLANKS",
            "kept|Blanks|x|a|x|x|1|1||1|3: Bridge ,5:Fine|kept|0");
    }
    void records()
    {
        const auto [name, texts] = cells<QString, QString>();
        QVERIFY(open());
        SongInfo record;
        record.filename = record.shortname = record.format = record.mfxLongName = "kept"_s;
        record.isPublisher = true;
        record.markers = {{99, "before"_s}};
        QVERIFY(m_database->getRecordByFilename(name, record));
        QCOMPARE(SongFixture::textOf(record), texts);
        QCOMPARE(record.filename + record.shortname, "keptkept"_s);
    }

    /** The answer from memory, for texts that cannot hit, is the one that executing the statement
     * gives. */
    void anotherProgramCanWriteBetweenTwoLookUps()
    {
        const QString file = m_folder.filePath("written"_s);
        QVERIFY(QFile::copy(m_catalogue, file) && m_database->init(file));
        SongInfo record;
        for (const char *artist : {"first", "second"}) {
            QVERIFY(m_database->getRecordByFilename("12ANNI"_s, record));
            QVERIFY(m_database->getRecordByTitle("half"_s, record));
            execute(file, {"UPDATE Songs SET artist = '%1'"_s.arg(QLatin1String(artist))});
            QVERIFY(m_database->getRecordByFilename("12ANNI"_s, record));
            QCOMPARE(record.artist, QLatin1String(artist));
        }
    }

    void answersAsTheStatementWould()
    {
        QVERIFY(m_database->init());
        QStringList texts = words("x LA santaluc Q BELLACIA.");
        texts << "SantaLuc "_s << QString() << QStringLiteral("\u00c9");
        QSqlQuery names("select filename, title from songs"_s,
                        QSqlDatabase::database("con_songsdb"_s));
        while (names.next()) {
            if (names.at() % 400 != 0)
                continue;
            for (const QString &text : {names.value(0).toString(), names.value(1).toString()})
                texts << text << text.toLower() << text + QLatin1Char('x') << text.chopped(1);
        }
        QVERIFY(texts.size() > 100);
        QSqlQuery query(QSqlDatabase::database("con_songsdb"_s));
        for (const QString &text : std::as_const(texts)) {
            SongInfo record;
            QVERIFY(query.exec("SELECT count(*) FROM songs WHERE filename like \"%1\""_s.arg(text))
                    && query.next());
            QVERIFY2(m_database->getRecordByFilename(text, record) == (query.value(0).toInt() > 0),
                     qPrintable(text));
            QVERIFY(query.exec("SELECT count(*) FROM songs WHERE title like \"%1\""_s.arg(text))
                    && query.next());
            QVERIFY2(m_database->getRecordByTitle(text, record) == (query.value(0).toInt() == 1),
                     qPrintable(text));
        }
    }

    /** Texts that SQLite does not compare, or not even read, letter by letter. */
    void answersAsTheStatementWouldForOddTexts_data()
    {
        const Table<QString> row;
        row("rows that can be found by their numbers", {});
        row("rows that have none", " WITHOUT ROWID");
    }
    void answersAsTheStatementWouldForOddTexts()
    {
        const auto [kind] = cells<QString>();
        const QChar half(0xD800);
        QStringList texts =
            words("back\\slash [a-z]*? it's true null songs current_date 100% %1 line\nbreak");
        texts << QStringLiteral("\uFFFD") << QStringLiteral("a\uFFFEb")
              << QStringLiteral("A\U00010041B") << QStringLiteral("\U0001F3B5")
              << QStringLiteral("\u00E9") << QStringLiteral("\u212AEY")
              << QString(50000, QLatin1Char('L')) << QString(50001, QLatin1Char('L'))
              << "NUL"_s + QChar(0) + "behind"_s
              << " blank "_s;
        const QString file = m_folder.filePath("odd"_s + kind);
        execute(file,
                {schema() + kind,
                 "insert into Songs values (CAST(x'C3A9FF41' AS TEXT), '', '', '', 1, 1, '', "
                 "'BYTES', NULL, '')"_s},
                texts);
        QVERIFY(m_database->init(file));

        texts += words("NUL blank IT'S %%%L songs.title ? :a @a 1");
        texts << "NUL"_s + QChar(0) << QString() << QStringLiteral("\uFFFF")
              << QStringLiteral("A\uFFFDB") << QStringLiteral("a\uFFFFB") << half
              << half + QString(QLatin1Char('A'))
              << QString(QLatin1Char('A')) + half + QLatin1Char('A')
              << QString(QLatin1Char('A')) + half + QLatin1Char('A') + QLatin1Char('B')
              << QChar(0xDC00) << QStringLiteral("\u00C9") << QStringLiteral("\u00E9\uFFFDA")
              << QStringLiteral("key\u0301") << QString(50001, QLatin1Char('%')) << "title "_s;
        const QSqlDatabase catalogue = QSqlDatabase::database("con_songsdb"_s);
        int hits = 0;
        for (const QString &text : std::as_const(texts)) {
            for (const char *column : {"filename", "title"}) {
                const bool byTitle = qstrcmp(column, "title") == 0;
                QSqlQuery query(catalogue);
                int rows = 0;
                query.exec("SELECT title FROM songs WHERE %1 like \""_s.arg(QLatin1String(column))
                           + text + QLatin1Char('"'));
                while (query.next())
                    ++rows;
                SongInfo record;
                const bool found = byTitle ? m_database->getRecordByTitle(text, record)
                                           : m_database->getRecordByFilename(text, record);
                QVERIFY2(found == (byTitle ? rows == 1 : rows > 0),
                         qPrintable(QLatin1String(column) + QLatin1Char(' ')
                                    + text.toHtmlEscaped().left(99)));
                hits += found;
            }
        }
        QVERIFY(hits > 30);
    }

    void countThatFails_data()
    {
        const Table<QString, QString, bool, QString> row;
        const QString unable =
            "[getRecordByTitle] WARNING: unable to count reusults, aborting !!!"_s;
        const QString multiple =
            "[getRecordByTitle] WARNING: multiple reusults in query, aborting !!!"_s;
        row("a count that can't be executed is not one", "SELECT count", "1", false, unable);
        row("a count that is no number is not one", {}, "many", false, multiple);
        row("a count of 2 is not one", {}, "2", false, multiple);
        row("a count of 1 is one", {}, "1", true, {});
        row("a lookup that can't be executed fails without a message", "SELECT title", "1", false,
            {});
    }
    void countThatFails()
    {
        const auto [failingStatement, count, found, message] =
            cells<QString, QString, bool, QString>();
        const ScriptedDriver driver;
        ScriptedDriver::failingConnection.clear();
        ScriptedDriver::failingStatement = failingStatement;
        ScriptedDriver::count = count;
        QVERIFY(m_database->init("scripted"_s));
        const MessageCapture log;
        SongInfo record;
        QCOMPARE(m_database->getRecordByTitle("x"_s, record), found);
        QCOMPARE(MessageCapture::messages(),
                 message.isEmpty() ? QStringList() : QStringList{message});
        QCOMPARE(record.title, found ? "x"_s : QString());
    }
};

QTEST_GUILESS_MAIN(tst_Database)
#include "tst_database.moc"
