#include "library/editjob.h"
#include "library/songedit.h"

#include "tests/library/logcapture.h"
#include "tests/library/saveatonce.h"
#include "tests/library/testlibrary.h"
#include "tests/library/texts.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/failingdisk.h"

#include <QtTest>

using namespace tarvel4;

using namespace SongBytes;

namespace {

constexpr int listed = UserSongsRelTableModel::Listed;
constexpr int edited = UserSongsRelTableModel::Edited;

const char begin[] = "begin Aggiornamento file|Aggiorno la libreria...|Interrompi|%1";

} // namespace

class tst_EditJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void aSavedRowShowsWhatIsInTheFile();
    void aRowWhoseSaveFailsCountsAsEditedToo();
    void aSongThatVanishedKeepsItsRow();
    void applyToAll_data();
    void applyToAll();
    void theTitleOfEachSongIsItsOwnFileName();
    void progressLeavesOutTheEditedRow();
    void songsThatFailAreSkippedAndTold();
    void cancelStopsBeforeTheNextSong();

private:
    SongInfo editedRecord() const;
    QString whyOf(int row)
    {
        return m_library->model().cellIndex(row, 1).data(Qt::ToolTipRole).toString();
    }
    EditSummary applyToOthers(const ApplyToAll &fields, int leftOut, Disk &disk = Disk::real())
    {
        SaveRun saves(disk, nullptr, text("edit"));
        return EditJob(m_library->host(), saves)
            .run(SongRows::paths(m_library->model()), fields.changeFrom(editedRecord()),
                 SongRows::edited(m_library->model(), leftOut), leftOut);
    }

    QScopedPointer<TestLibrary> m_library;
};

void tst_EditJob::init()
{
    m_library.reset();
    m_library.reset(new TestLibrary({}));
    const QByteArray song = midi0(meta(3, "Old title") + songInfo(1, "OLD GENRE")
                                  + songInfo(2, "OLD ARTIST") + songInfo(3, "OLD AUTHOR"));
    for (const char *name : {"a.mid", "b.one.mid", "c.kar"})
        m_library->add(text(name), song);
    m_library->import();
}

SongInfo tst_EditJob::editedRecord() const
{
    SongInfo info;
    info.title = text("New title");
    info.artist = text("NEW ARTIST");
    info.genre = text("NEW GENRE");
    info.author = text("NEW AUTHOR");
    return info;
}

void tst_EditJob::aSavedRowShowsWhatIsInTheFile()
{
    SongEdit song;
    QVERIFY(song.load(m_library->files().at(1)));
    SongInfo info = editedRecord();
    info.title = text("Città");
    info.length = 59;
    SongRows::showEdit(m_library->model(), 1, saveAtOnce(song, info));
    QCOMPARE(m_library->cell(1, "title"), text("CittÃ")); // required: UTF-8 read as Latin-1
    QCOMPARE(m_library->cell(1, "artist"), text("NEW ARTIST"));
    QCOMPARE(m_library->cell(1, "length"), text("00:59"));
    QCOMPARE(m_library->statuses(), QVector<int>({listed, edited, listed}));
    QCOMPARE(m_library->host().events, QStringList());
}

void tst_EditJob::aRowWhoseSaveFailsCountsAsEditedToo()
{
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    disk.failingWrite = 1;
    SongEdit song(disk);
    QVERIFY(song.load(m_library->files().at(0)));
    LogCapture log;
    const SongOutcome saved = saveAtOnce(song, editedRecord(), disk);
    SongRows::showEdit(m_library->model(), 0, saved);
    QCOMPARE(whyOf(0), text("Non salvata: ") + saved.cause.sentence());
    QVERIFY(LogCapture::has(text("Error!")));
    QCOMPARE(m_library->statuses(), QVector<int>({edited, listed, listed})); // required
    QCOMPARE(m_library->cell(0, "title"), text("Old title"));
}

void tst_EditJob::aSongThatVanishedKeepsItsRow()
{
    SongEdit song;
    QVERIFY(song.load(m_library->files().at(0)));
    QVERIFY(QFile::remove(m_library->files().at(0)));
    const SongOutcome saved = saveAtOnce(song, editedRecord());
    QCOMPARE(saved.cause.codeName(), text("not-found"));
    SongRows::showEdit(m_library->model(), 0, saved);
    QCOMPARE(m_library->cell(0, "title"), text("Old title"));
    QCOMPARE(m_library->statuses().at(0), edited);
    QVERIFY(!QFileInfo::exists(m_library->files().at(0)));
}

void tst_EditJob::applyToAll_data()
{
    QTest::addColumn<bool>("author");
    QTest::addColumn<bool>("artist");
    QTest::addColumn<bool>("genre");
    QTest::addColumn<bool>("title");
    QTest::newRow("the author") << true << false << false << false;
    QTest::newRow("the artist") << false << true << false << false;
    QTest::newRow("the genre") << false << false << true << false;
    QTest::newRow("the title") << false << false << false << true;
    QTest::newRow("all four") << true << true << true << true;
}

void tst_EditJob::applyToAll()
{
    QFETCH(bool, author);
    QFETCH(bool, artist);
    QFETCH(bool, genre);
    QFETCH(bool, title);
    const QByteArray editedRowsFile = TestFiles::read(m_library->files().at(1));
    const ApplyToAll fields{author, artist, genre, title};
    QVERIFY(fields.any());
    QCOMPARE(applyToOthers(fields, 1).edited, 2);
    QCOMPARE(m_library->statuses(), QVector<int>({edited, listed, edited}));
    QVERIFY(TestFiles::read(m_library->files().at(1)) == editedRowsFile);
    for (int row : {0, 2}) {
        QCOMPARE(m_library->cell(row, "author"), author ? text("NEW AUTHOR") : text("OLD AUTHOR"));
        QCOMPARE(m_library->cell(row, "artist"), artist ? text("NEW ARTIST") : text("OLD ARTIST"));
        QCOMPARE(m_library->cell(row, "genre"), genre ? text("NEW GENRE") : text("OLD GENRE"));
        const QString own = row == 0 ? text("a") : text("c");
        QCOMPARE(m_library->cell(row, "title"), title ? own : text("Old title"));
        SongEdit song;
        QVERIFY(song.load(m_library->files().at(row)));
        QCOMPARE(song.info().title, m_library->cell(row, "title"));
    }
}

void tst_EditJob::theTitleOfEachSongIsItsOwnFileName()
{
    ApplyToAll fields;
    fields.title = true;
    applyToOthers(fields, 0);
    QCOMPARE(m_library->cell(1, "title"), text("b.one"));
    QCOMPARE(m_library->cell(2, "title"), text("c"));
}

void tst_EditJob::progressLeavesOutTheEditedRow()
{
    ApplyToAll fields;
    fields.genre = true;
    applyToOthers(fields, 1);
    QCOMPARE(m_library->host().events,
             QStringList({text(begin).arg(3), text("progress 1"), text("processPendingEvents"),
                          text("progress 3"), text("processPendingEvents"), text("end")}));
    QVERIFY(!ApplyToAll().any());
}

void tst_EditJob::songsThatFailAreSkippedAndTold()
{
    const QString gone = m_library->files().at(1);
    QVERIFY(QFile::remove(gone));
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    disk.failingWrite = 1;
    ApplyToAll fields;
    fields.genre = true;
    LogCapture log;
    const EditSummary summary = applyToOthers(fields, -1, disk);
    const QString noRoom = Outcome{Outcome::Code::NoRoom, {}, {}, {}}.sentence();
    const QString notFound = Outcome{Outcome::Code::NotFound, {}, {}, {}}.sentence();
    QCOMPARE(summary.edited, 1);
    QCOMPARE(summary.unsaved, QStringList({m_library->files().at(0), gone}));
    QCOMPARE(summary.problems,
             QStringList({text("a.mid: ") + noRoom, text("b.one.mid: ") + notFound}));
    QCOMPARE(whyOf(0), text("Non salvata: ") + noRoom);
    QCOMPARE(whyOf(1), text("Non letta: ") + notFound);
    QCOMPARE(whyOf(2), QString());
    QCOMPARE(m_library->statuses(), QVector<int>({edited, listed, edited}));
    QCOMPARE(m_library->cell(0, "genre"), text("OLD GENRE"));
    QCOMPARE(m_library->cell(2, "genre"), text("NEW GENRE"));
    QVERIFY(LogCapture::has(text("[EDIT] Reading %1 refused: %2").arg(gone, notFound)));

    // An edit that succeeds takes the failure away.
    QCOMPARE(applyToOthers(fields, -1).edited, 2);
    QCOMPARE(whyOf(0), QString());
}

void tst_EditJob::cancelStopsBeforeTheNextSong()
{
    m_library->host().cancelAtProgress = 1;
    ApplyToAll fields;
    fields.genre = true;
    applyToOthers(fields, -1);
    QCOMPARE(m_library->statuses(), QVector<int>({edited, listed, listed}));
    QCOMPARE(m_library->host().events.last(), text("end"));
}

QTEST_GUILESS_MAIN(tst_EditJob)
#include "tst_editjob.moc"
