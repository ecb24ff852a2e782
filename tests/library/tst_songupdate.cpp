#include "tests/library/logcapture.h"
#include "tests/library/saveatonce.h"
#include "tests/library/updatefixture.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/unixfile.h"

#include <QtTest>

using namespace tarvel4;

using namespace UpdateFixture;

namespace {

SongInfo afterOf(const SongUpdate &song)
{
    return song.outcome(SongResult::Updated).after;
}

} // namespace

/** One song of an update: its match, its plan and what may come between plan and save. */
class tst_SongUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void matching_data();
    void matching();
    void theLogOfAMatch();
    void aRecordOtherwiseStaysTheSongsOwn();
    void theArtistFlipsAndThenStays();
    void aSongThatCantBeSavedIsRefusedBeforehand();
    void aSongChangedSinceItWasReadIsLeftAlone_data();
    void aSongChangedSinceItWasReadIsLeftAlone();
    void aFailingDiskLeavesTheOldBytes_data();
    void aFailingDiskLeavesTheOldBytes();
};

void tst_SongUpdate::matching_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");

    const auto titled = [](const char *title) { return midi0(meta(3, title)); };
    QTest::newRow("by file name") << text("12anni.mid") << titled("Other")
                                  << text("FILENAME: 12ANNI");
    QTest::newRow("by file name before the title")
        << text("12anni.mid") << titled("ALIAS") << text("FILENAME: 12ANNI");
    QTest::newRow("a name without an extension is whole")
        << text("12anni") << titled("") << text("FILENAME: 12ANNI");
    QTest::newRow("a two-letter extension stays in the name")
        << text("song.mf") << titled("") << text("FILENAME: SONG.MF");
    QTest::newRow("a four-letter extension stays in the name")
        << text("song.midi") << titled("") << text("FILENAME: SONG.MIDI");
    QTest::newRow("a long extension hides the name")
        << text("12anni.midi") << titled("") << QString();
    QTest::newRow("by title, in any case")
        << text("x.mid") << titled("azzurro") << text("TITLE: AZZURRO");
    QTest::newRow("a title of two rows does not match")
        << text("x.mid") << titled("Due volte") << QString();
    QTest::newRow("nothing matches") << text("x.mid") << titled("unknown") << QString();
    QTest::newRow("a song without a title") << text("x.mid") << midi0() << QString();
    QTest::newRow("a name with a quote")
        << text("a\"b.mid") << titled("\" or \"1\"=\"1") << QString();
    QTest::newRow("a name that is a column's")
        << text("filename.mid") << titled("title") << QString();
    QTest::newRow("no long name is not looked up, though a row has no name")
        << text("x.mf3") << mfx(3, MfxFields(), midi0()) << QString();
    QTest::newRow("an MFx song by file name before its long name")
        << text("alias.mf3") << mfx(3, {"", "", "", "", "12ANNI.MF3", 0, 0}, midi0())
        << text("FILENAME: ALIAS");
    QTest::newRow("an MFx song by its long name")
        << text("x.mf3") << mfx(3, {"", "", "", "", "12anni.mf3", 0, 0}, midi0())
        << text("MFXLONGNAME: 12ANNI");
    QTest::newRow("a long name before the title")
        << text("x.mf5") << mfx(5, {"ALIAS", "", "", "", "12ANNI", 0, 0}, midi0())
        << text("MFXLONGNAME: 12ANNI");
    QTest::newRow("an MFx song by its title")
        << text("x.mf3") << mfx(3, {"azzurro", "", "", "", "", 0, 0}, midi0())
        << text("TITLE: AZZURRO");
}

void tst_SongUpdate::matching()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    SKIP_WITHOUT_UNIX(fileName.contains(QLatin1Char('"')), "such names");
    // A name without a song's suffix can't come from the window, but a table row may hold it.
    TestLibrary library(catalogue());
    const QString path = library.add(fileName, bytes);
    SongUpdate song;
    QVERIFY(song.load(path));
    QCOMPARE(song.match(library.db()), !reason.isEmpty());
    QCOMPARE(song.outcome(SongResult::Updated).matchedBy, reason);
}

void tst_SongUpdate::theLogOfAMatch()
{
    TestLibrary library(catalogue());
    SongUpdate found;
    QVERIFY(found.load(library.add(text("12anni.mid"), midi0())));
    SongUpdate missed;
    QVERIFY(missed.load(library.add(text("x.mid"), midi0(meta(3, "Ciao")))));
    LogCapture log;
    QVERIFY(found.match(library.db()));
    QCOMPARE(LogCapture::lines().at(0), text("Found in DB by:  \"FILENAME: 12ANNI\""));
    QCOMPARE(LogCapture::lines().at(1), text("  Title     : \"AZZURRO\""));
    LogCapture::lines().clear();
    QVERIFY(!missed.match(library.db()));
    QCOMPARE(LogCapture::lines(), QStringList(text("Record  \"X\" / \"CIAO\" NOT found in DB")));
}

void tst_SongUpdate::aRecordOtherwiseStaysTheSongsOwn()
{
    TestLibrary library(catalogue());
    const QString path =
        library.add(text("12anni.mf4"), mfx(4, allMfxFields(), withFiller(midi0())));
    SongUpdate song;
    QVERIFY(song.load(path));
    QVERIFY(song.match(library.db()));
    QVERIFY(song.prepare());
    for (int step = 0; step < 2; ++step) {
        QCOMPARE(afterOf(song).filename, path);
        QCOMPARE(afterOf(song).shortname, text("12anni.mf4"));
        QCOMPARE(afterOf(song).format, text("MF4"));
        QCOMPARE(afterOf(song).mfxLongName, text("LONG.MID"));
        if (step == 0)
            QVERIFY(saveAtOnce(song));
    }
}

void tst_SongUpdate::theArtistFlipsAndThenStays()
{
    TestLibrary library(catalogue());
    const QString path = library.add(text("12anni.mid"), midi0(songInfo(2, "MINA")));
    const QStringList expected = strings({"CELENTANO", "ADRIANO CELENTANO", "ADRIANO CELENTANO"});
    for (const QString &artist : expected) { // required
        SongUpdate song;
        QVERIFY(song.load(path) && song.match(library.db()));
        QVERIFY(song.prepare() && saveAtOnce(song));
        QCOMPARE(afterOf(song).artist, artist);
    }
}

void tst_SongUpdate::aSongThatCantBeSavedIsRefusedBeforehand()
{
    // required: an accent lengthens the header, and such a header is not written
    TestLibrary library(catalogue());
    const QByteArray bytes = mfx(3, MfxFields(), midi0());
    const QString path = library.add(text("accent.mf3"), bytes);
    SongUpdate song;
    QVERIFY(song.load(path) && song.match(library.db()));
    const Outcome outcome = song.prepare();
    QCOMPARE(outcome.message(), path + text(": ") + outcome.sentence());
    QCOMPARE(outcome.codeName(), text("letter-not-storable"));
    QCOMPARE(outcome.detail, text("\u00e0"));
    QCOMPARE(outcome.field, text("title"));
    QVERIFY(TestFiles::read(path) == bytes);
}

void tst_SongUpdate::aSongChangedSinceItWasReadIsLeftAlone_data()
{
    QTest::addColumn<QByteArray>("newBytes");
    QTest::addColumn<QString>("code");
    QTest::newRow("changed by somebody else")
        << midi0(meta(3, "newer")) << text("changed-meanwhile");
    QTest::newRow("gone") << QByteArray() << text("not-found");
}

void tst_SongUpdate::aSongChangedSinceItWasReadIsLeftAlone()
{
    QFETCH(QByteArray, newBytes);
    TestLibrary library(catalogue());
    const QString path = library.add(text("12anni.mid"), midi0());
    SongUpdate song;
    QVERIFY(song.load(path) && song.match(library.db()) && song.prepare());
    if (newBytes.isEmpty())
        QVERIFY(QFile::remove(path));
    else
        TestFiles::write(path, newBytes);
    const Outcome outcome = saveAtOnce(song);
    QTEST(outcome.codeName(), "code");
    QCOMPARE(outcome.path, path);
    QCOMPARE(QFileInfo::exists(path), !newBytes.isEmpty());
    if (!newBytes.isEmpty())
        QVERIFY(TestFiles::read(path) == newBytes);
}

void tst_SongUpdate::aFailingDiskLeavesTheOldBytes_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("MIDI") << text("12anni.mid") << midi0();
    QTest::newRow("MFx") << text("12anni.mf5") << mfx(5, MfxFields(), midi0());
    QTest::newRow("MP3") << text("12anni.mp3") << mp3(QByteArray());
}

void tst_SongUpdate::aFailingDiskLeavesTheOldBytes()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, bytes);
    TestLibrary library(catalogue());
    const QString path = library.add(fileName, bytes);
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    disk.failingWrite = 1;
    SongUpdate song(disk);
    QVERIFY(song.load(path) && song.match(library.db()) && song.prepare());
    QCOMPARE(saveAtOnce(song, disk).codeName(), text("no-room"));
    QVERIFY(TestFiles::read(path) == bytes);
    QCOMPARE(TestFiles::namesIn(QFileInfo(path).path()), QStringList(fileName));
}

QTEST_GUILESS_MAIN(tst_SongUpdate)
#include "tst_songupdate.moc"
