#include "library/importjob.h"

#include "library/recoveryjob.h"
#include "library/usersettings.h"

#include "tests/library/logcapture.h"
#include "tests/library/testlibrary.h"
#include "tests/library/texts.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/unixfile.h"

#include <QSettings>
#include <QtTest>

using namespace tarvel4;

using namespace SongBytes;

namespace {

const char begin[] = "begin Lettura file|Importo la libreria...|Interrompi|%1";

} // namespace

class tst_ImportJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void readableSongsBecomeRows();
    void anImportGivesItsNeighboursTheirNamesBack();
    void publishersSongsAreCounted_data();
    void publishersSongsAreCounted();
    void unreadableFilesAreSkippedAndTold();
    void theLogTellsEachFile();
    void anImportClearsTheOldRows();
    void aTableThatCantBeClearedAbortsTheImport();
    void aCancelIsNotLookedAt();
    void aWholeFolderBecomesRows();
    void aFolderIsLeftWhereTheUserCancels();
    void sameNamesInTwoFoldersAreTwoRows();
    void noFilesGiveAnEmptyTable();
    void theSummaryAsksAndKeepsItsBox_data();
    void theSummaryAsksAndKeepsItsBox();
    void theSummaryIsSilentWhereTheSettingSaysSo();

private:
    ImportSummary scan(const QString &folder)
    {
        return ImportJob(m_library->host(), SongRows::imported(m_library->model())).scanDir(folder);
    }

    QScopedPointer<TestLibrary> m_library;
};

void tst_ImportJob::init()
{
    QSettings(QStringLiteral("kvaro"), QStringLiteral("tarvel4soft")).clear();
    m_library.reset();
    m_library.reset(new TestLibrary({}));
}

void tst_ImportJob::readableSongsBecomeRows()
{
    const QString path =
        m_library->add(text("a song.mid"),
                       midi0(meta(3, "Azzurro") + songInfo(1, "POP") + songInfo(2, "CELENTANO")
                             + songInfo(3, "CONTE") + songInfo(4, "185") + songInfo(5, "120")
                             + meta(0x59, hex("0001"))));
    m_library->add(text("b.mp3"), tag(frame("TIT2", "Ciao")) + audio());
    const ImportSummary summary = m_library->import(m_library->files());
    QVERIFY(summary.isDone);

    QCOMPARE(summary.found, 2);
    QCOMPARE(summary.unknown, 0);
    QCOMPARE(m_library->model().totalRows(), 2);
    QCOMPARE(m_library->cell(0, "id"), text("1"));
    QCOMPARE(m_library->cell(0, "type"), text("MIDI"));
    QCOMPARE(m_library->cell(0, "title"), text("Azzurro"));
    QCOMPARE(m_library->cell(0, "artist"), text("CELENTANO"));
    QCOMPARE(m_library->cell(0, "genre"), text("POP"));
    QCOMPARE(m_library->cell(0, "author"), text("CONTE"));
    QCOMPARE(m_library->cell(0, "length"), text("03:05"));
    QCOMPARE(m_library->cell(0, "userbpm"), text("120"));
    QCOMPARE(m_library->cell(0, "key"), text("A-"));
    QCOMPARE(m_library->cell(0, "filename"), path);
    QCOMPARE(m_library->cell(0, "shortname"), text("a song.mid"));
    QCOMPARE(m_library->cell(0, "status"), text("0"));
    QCOMPARE(m_library->cell(1, "type"), text("MP3"));
    QCOMPARE(m_library->cell(1, "title"), text("Ciao"));

    QCOMPARE(m_library->host().events,
             QStringList({text(begin).arg(2), text("progress 1"), text("processPendingEvents"),
                          text("progress 2"), text("processPendingEvents")}));
}

void tst_ImportJob::anImportGivesItsNeighboursTheirNamesBack()
{
    const QString path = m_library->add(text("a.mid"), midi0());
    const QString gone = QFileInfo(path).dir().filePath(text("gone.mp3"));
    write(gone + text(".tarvel4.bak"), "old");
    RecoveryJob(m_library->host()).recoverBeside({path});
    QCOMPARE(m_library->host().eventsOf(text("recovered")).size(), 1);
    QCOMPARE(read(gone), QByteArray("old"));
}

void tst_ImportJob::publishersSongsAreCounted_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("published");
    QTest::newRow("a MIDI song of the maker's")
        << text("a.mid") << midi0(meta(2, "(c) K-Varo")) << 1;
    QTest::newRow("a MIDI song under the maker's other name")
        << text("a.mid") << midi1(meta(2, "Veltrano 1999")) << 1;
    QTest::newRow("a MIDI song of somebody else") << text("a.kar") << midi0(meta(2, "me")) << 0;
    QTest::newRow("a MIDI song without a copyright") << text("a.mid") << midi0() << 0;
    QTest::newRow("an MP3 of the maker's")
        << text("a.mp3") << tag(frame("TCOP", "2001 k-varo")) + audio() << 1;
    QTest::newRow("an MP3 of somebody else")
        << text("a.mp3") << tag(frame("TCOP", "me")) + audio() << 0;
    for (int version = 3; version <= 5; ++version)
        QTest::addRow("every MF%d song", version)
            << text("a.mf%1").arg(version) << mfx(version, MfxFields(), midi0()) << 1;
}

void tst_ImportJob::publishersSongsAreCounted()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(int, published);
    m_library->add(text("1/") + name, bytes);
    m_library->add(text("2/") + name, bytes);
    const ImportSummary summary = m_library->import(m_library->files());
    QVERIFY(summary.isDone);
    QCOMPARE(summary.found, 2);
    QCOMPARE(summary.published, 2 * published);
}

void tst_ImportJob::unreadableFilesAreSkippedAndTold()
{
    SKIP_WITHOUT_UNIX(true, "FIFO");
    m_library->add(text("text.mid"), "no song at all");
    m_library->add(text("good.mid"), midi0());
    m_library->add(text("empty.mid"), QByteArray());
    const QString fifo = m_library->filePath("fifo.mid");
    QVERIFY(UnixFile::makeFifo(fifo));
    const QStringList files = m_library->files()
        + QStringList({fifo, m_library->filePath("vanished.mid"), m_library->filePath("songs")});

    const ImportSummary summary = m_library->import(files);
    QVERIFY(summary.isDone);
    QCOMPARE(summary.found, 1);
    QCOMPARE(summary.unknown, 5);
    QCOMPARE(summary.problems.size(), 5);
    const Outcome noFile{Outcome::Code::NotAFile, {}, {}, {}};
    QCOMPARE(summary.problems.at(2), text("fifo.mid: ") + noFile.sentence());
    QCOMPARE(m_library->model().totalRows(), 1);
    QCOMPARE(m_library->cell(0, "shortname"), text("good.mid"));
    QCOMPARE(m_library->host().eventsOf(text("progress")).last(), text("progress 6"));

    ImportJob::askSynchronise(summary, m_library->host());
    QCOMPARE(m_library->host().events.last(), text("ask proceed 1 5 0"));

    // The observer hears of each file, in the order of the paths.
    QStringList told;
    ImportJob(m_library->host(), [&told](const SongOutcome &song) {
        told += SongPath::fileName(song.path) + QLatin1Char(' ') + song.cause.codeName();
    }).run(files, [] { return true; });
    QCOMPARE(told,
             strings({"text.mid not-a-song", "good.mid ", "empty.mid not-a-song",
                      "fifo.mid not-a-file", "vanished.mid not-found", "songs not-a-file"}));
}

void tst_ImportJob::theLogTellsEachFile()
{
    const QString good = m_library->add(text("good.mid"), midi0());
    const QString bad = m_library->add(text("bad.mid"), "x");
    LogCapture log;
    QVERIFY(m_library->import(m_library->files()).isDone);
    const QStringList &lines = LogCapture::lines();
    const QString ruler(44, QLatin1Char('='));
    QCOMPARE(lines.mid(0, 5),
             QStringList({ruler, text("          IMPORT USER LIBRARY"), ruler,
                          text("Found file: \"%1\"").arg(good), text("Song Index:  1")}));
    QCOMPARE(lines.mid(lines.size() - 3, 2),
             QStringList({text("Found file: \"%1\"").arg(bad),
                          text("Unknown/corrupted file \"%1\"").arg(bad)}));
    QVERIFY(lines.last().startsWith(text("[IMPORT] Reading %1 refused: ").arg(bad)));
    QVERIFY(LogCapture::tells({text("Filename   :"), good})); // the record was dumped
}

void tst_ImportJob::anImportClearsTheOldRows()
{
    m_library->add(text("a.mid"), midi0(meta(3, "A")));
    m_library->add(text("b.mid"), midi0(meta(3, "B")));
    const ImportSummary summary = m_library->import(m_library->files());
    QVERIFY(summary.isDone);
    QCOMPARE(m_library->import({m_library->files().at(1)}).found, 1);
    QCOMPARE(m_library->model().totalRows(), 1);
    QCOMPARE(m_library->cell(0, "id"), text("1"));
    QCOMPARE(m_library->cell(0, "title"), text("B"));
}

void tst_ImportJob::aTableThatCantBeClearedAbortsTheImport()
{
    m_library->add(text("a.mid"), midi0());
    m_library->import();
    QVERIFY(QSqlQuery(m_library->db().userSongsDatabase()).exec(text("drop table usersongs")));
    LogCapture log;
    const ImportSummary summary = m_library->import(m_library->files());
    QVERIFY(!summary.isDone);
    QVERIFY(LogCapture::has(
        text("[importUserLibrary] WARNING: impossible to CLEAR table. Aborting import !!!")));
    QCOMPARE(m_library->host().events, QStringList());
    QCOMPARE(summary.found, 0);
}

void tst_ImportJob::aCancelIsNotLookedAt()
{
    m_library->add(text("a.mid"), midi0());
    m_library->add(text("b.mid"), midi0());
    m_library->host().cancelAtProgress = 1;
    QCOMPARE(m_library->import(m_library->files()).found, 2);
}

void tst_ImportJob::aWholeFolderBecomesRows()
{
    const QString song = m_library->add(text("b/song.mid"), midi0(meta(2, "(c) K-Varo")));
    const QString note = m_library->add(text("text.txt"), "x");
    m_library->add(text("old.mid.tarvel4.bak"), midi0());
    const QString folder = m_library->filePath("songs");
    const LogCapture log;
    const ImportSummary summary = scan(folder);
    QVERIFY(summary.isDone);
    QCOMPARE(m_library->model().totalRows(), 1);
    QCOMPARE(m_library->cell(0, "filename"), song);
    QCOMPARE(summary.unknown, 1);
    QCOMPARE(summary.published, 1);
    const QString ruler(74, QLatin1Char('='));
    const QStringList &lines = LogCapture::lines();
    QCOMPARE(lines.mid(0, 5),
             QStringList({text("[scanDir] Analyzing directory: \"%1\"").arg(folder),
                          text("[scanDir] Found directory: \"%1/b\"").arg(folder),
                          text("[scanDir] Analyzing directory: \"%1/b\"").arg(folder),
                          text("[scanDir] Found file: \"%1\"").arg(song), text("Song Index:  1")}));
    QCOMPARE(lines.mid(lines.size() - 5, 3),
             QStringList({ruler, text("[scanDir] Found file: \"%1\"").arg(note),
                          text("[scanDir] Unknown/corrupted file \"%1\"").arg(note)}));
    QCOMPARE(lines.last(), ruler);
    // after the song, after its folder, after the other file
    QCOMPARE(m_library->host().events,
             QStringList({text("progress 1"), text("processPendingEvents"), text("progress 1"),
                          text("processPendingEvents"), text("progress 2"),
                          text("processPendingEvents")}));
}

void tst_ImportJob::aFolderIsLeftWhereTheUserCancels()
{
    m_library->add(text("a/1.mid"), midi0());
    m_library->add(text("a/2.mid"), midi0());
    m_library->host().cancelAtProgress = 1;
    QVERIFY(!scan(m_library->filePath("songs")).isDone);
    QCOMPARE(m_library->model().totalRows(), 1);
}

void tst_ImportJob::sameNamesInTwoFoldersAreTwoRows()
{
    m_library->add(text("1/a.mid"), midi0(meta(3, "first")));
    m_library->add(text("2/a.mid"), midi0(meta(3, "second")));
    m_library->import();
    QCOMPARE(m_library->model().totalRows(), 2);
    QCOMPARE(m_library->cell(0, "shortname"), m_library->cell(1, "shortname"));
    QCOMPARE(m_library->cell(1, "title"), text("second"));
}

void tst_ImportJob::noFilesGiveAnEmptyTable()
{
    m_library->add(text("a.mid"), midi0());
    m_library->import();
    QVERIFY(m_library->import({}).isDone);
    QCOMPARE(m_library->model().totalRows(), 0);
    QCOMPARE(m_library->host().events, QStringList(text(begin).arg(0)));
}

void tst_ImportJob::theSummaryAsksAndKeepsItsBox_data()
{
    QTest::addColumn<bool>("synchronise");
    QTest::addColumn<bool>("showAgain");
    QTest::newRow("yes") << true << true;
    QTest::newRow("yes, and never again") << true << false;
    QTest::newRow("no") << false << true;
    QTest::newRow("no, and never again") << false << false;
}

void tst_ImportJob::theSummaryAsksAndKeepsItsBox()
{
    QFETCH(bool, synchronise);
    QFETCH(bool, showAgain);
    m_library->add(text("a.mid"), midi0(meta(2, "K-VARO")));
    m_library->host().proceedChoice = {synchronise, showAgain};
    const ImportSummary summary = m_library->import(m_library->files());
    QVERIFY(summary.isDone);
    QCOMPARE(ImportJob::askSynchronise(summary, m_library->host()), synchronise);
    QCOMPARE(m_library->host().events.last(), text("ask proceed 1 0 1"));
    QCOMPARE(UserSettings::copyrightAsk(), showAgain);

    // The next import asks again only where it was told so.
    m_library->host().events.clear();
    ImportJob::askSynchronise(summary, m_library->host());
    QCOMPARE(m_library->host().events.size(), showAgain ? 1 : 0);
}

void tst_ImportJob::theSummaryIsSilentWhereTheSettingSaysSo()
{
    UserSettings::setCopyrightAsk(false);
    m_library->host().proceedChoice = {true, true};
    QVERIFY(!ImportJob::askSynchronise({}, m_library->host()));
    QCOMPARE(m_library->host().events, QStringList());
    QCOMPARE(UserSettings::copyrightAsk(), false);
}

QTEST_GUILESS_MAIN(tst_ImportJob)
#include "tst_importjob.moc"
