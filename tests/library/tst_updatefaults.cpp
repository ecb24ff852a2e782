#include "tests/library/updatejobfixture.h"

#include "tests/storage/failingdisk.h"
#include "tests/storage/tmpfsmount.h"

#include <QtTest>

using namespace tarvel4;

using namespace SongBytes;

/** An update that is cancelled, or whose songs or disk fail: nothing is lost, and the user is told.
 */
class tst_UpdateFaults : public QObject, private UpdateJobFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void cancelStopsBeforeTheNextSong_data();
    void cancelStopsBeforeTheNextSong();
    void theRunGoesOnAfterAFailure_data();
    void theRunGoesOnAfterAFailure();
    void aRowSaysWhyItsSongIsAsItWas();
    void aReadOnlySongIsMadeWritable();
    void aSongChangedDuringTheQuestionKeepsItsNewBytes();
    void aFullDiskLosesNothing();
};

void tst_UpdateFaults::cancelStopsBeforeTheNextSong_data()
{
    QTest::addColumn<int>("cancelAt");
    QTest::addColumn<QVector<int>>("statuses");
    QTest::newRow("before the first song") << 0 << QVector<int>{listed, listed, listed};
    QTest::newRow("during the first song") << 1 << QVector<int>{updated, listed, listed};
    QTest::newRow("during the second song") << 2 << QVector<int>{updated, updated, listed};
}

void tst_UpdateFaults::cancelStopsBeforeTheNextSong()
{
    QFETCH(int, cancelAt);
    QFETCH(QVector<int>, statuses);
    for (const char *name : {"one.mid", "two.mid", "three.mid"})
        m_library->add(text(name), makersSong());
    m_library->import();
    m_library->host().cancelAtProgress = cancelAt;
    QVERIFY(!update().isComplete);
    QCOMPARE(m_library->statuses(), statuses);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(TestFiles::read(m_library->files().at(row)) != makersSong(),
                 statuses.at(row) == updated);
    QCOMPARE(m_library->host().events.last(), text("end"));
}

void tst_UpdateFaults::theRunGoesOnAfterAFailure_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("field");
    const auto row = [](const char *name, const char *fault, const char *code,
                        const char *field = "") {
        QTest::newRow(name) << text(fault) << text(code) << text(field);
    };
    row("a song that has vanished", "vanish", "not-found");
    row("a song that is no song any more", "garbage", "not-a-song");
    row("a song that is a folder now", "folder", "not-a-file");
    row("a write that comes up short", "write", "no-room");
    row("a song that does not reach the medium", "sync", "no-room");
    row("a song whose header can't hold the text", "accent", "letter-not-storable", "title");
}

void tst_UpdateFaults::theRunGoesOnAfterAFailure()
{
    QFETCH(QString, fault);
    QFETCH(QString, code);
    QFETCH(QString, field);
    const bool isMfx = fault == text("accent");
    const QByteArray old = isMfx ? mfx(3, MfxFields(), midi0()) : makersSong();
    const QString path = m_library->add(isMfx ? text("accent.mf3") : text("one.mid"), old);
    m_library->add(text("two.mid"), makersSong());
    m_library->import();

    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    if (fault == text("vanish") || fault == text("folder"))
        QVERIFY(QFile::remove(path));
    if (fault == text("folder"))
        QVERIFY(QDir().mkdir(path));
    if (fault == text("garbage"))
        TestFiles::write(path, "garbage");
    if (fault == text("write"))
        disk.failingWrite = 1;
    if (fault == text("sync"))
        disk.badPart = QFileInfo(path).fileName();
    disk.before = [&disk](const QString &operation, int count) {
        if (operation == text("sync") && count == 2)
            disk.badPart.clear(); // the old bytes come back
    };

    LogCapture log;
    SongOutcome first;
    const UpdateSummary summary = update({}, disk, [&first](const SongOutcome &song) {
        if (first.path.isEmpty())
            first = song;
    });
    QVERIFY(summary.isComplete);
    QCOMPARE(summary.failed, 1);
    QCOMPARE(first.path, path);
    QCOMPARE(first.cause.codeName(), code);
    QCOMPARE(first.cause.field, field);
    QCOMPARE(m_library->statuses(), QVector<int>({failed, updated}));
    const QString verb = text(first.result == SongResult::Unreadable ? "Reading" : "Saving");
    QVERIFY(LogCapture::has(
        text("[UPDATE] %1 %2 refused: %3").arg(verb, path, first.cause.sentence())));

    // The row says why, to the eye and to a screen reader, until the song is a success again.
    const QModelIndex mark = m_library->model().cellIndex(0, 1);
    const QString why = text("Non aggiornata: ") + first.cause.sentence();
    QCOMPARE(mark.data(Qt::ToolTipRole).toString(), why);
    QCOMPARE(mark.data(Qt::AccessibleTextRole).toString(),
             mark.data().toString() + text(", ") + why);
    QCOMPARE(m_library->model().cellIndex(1, 1).data(Qt::ToolTipRole).toString(), QString());
    if (fault == text("vanish"))
        QVERIFY(!QFileInfo::exists(path));
    if (fault == text("garbage"))
        QCOMPARE(TestFiles::read(path), QByteArray("garbage"));
    if (isMfx || fault == text("write") || fault == text("sync"))
        QVERIFY(TestFiles::read(path) == old);
}

void tst_UpdateFaults::aRowSaysWhyItsSongIsAsItWas()
{
    m_library->add(text("one.mid"), midi0());
    m_library->add(text("unknown.mid"), makersSong());
    m_library->import();
    const auto whyOf = [this](int row) {
        return m_library->model().cellIndex(row, 1).data(Qt::ToolTipRole).toString();
    };
    QVERIFY(update({UnpublishedPolicy::Leave}).isComplete);
    QCOMPARE(whyOf(0), text("Non aggiornata: non è stata pubblicata da K-Varo, lasciata com'era"));
    QCOMPARE(whyOf(1), text("Non aggiornata: non è nel catalogo"));
    QVERIFY(update().isComplete); // now it is asked about, and changed
    QCOMPARE(whyOf(0), QString());

    QVERIFY(update({UnpublishedPolicy::Leave}).isComplete);
    QVERIFY(!whyOf(0).isEmpty());
    m_library->import(); // a new row may have the old one's id
    QCOMPARE(whyOf(0), QString());
}

void tst_UpdateFaults::aReadOnlySongIsMadeWritable()
{
    const QString path = m_library->add(text("one.mid"), makersSong());
    m_library->import();
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    QVERIFY(update().isComplete);
    QCOMPARE(m_library->statuses(), QVector<int>({updated}));
    QVERIFY(QFileInfo(path).permissions() & QFile::WriteOwner);
}

void tst_UpdateFaults::aSongChangedDuringTheQuestionKeepsItsNewBytes()
{
    const QString path = m_library->add(text("one.mid"), midi0());
    m_library->import();
    const QByteArray newBytes = midi0(meta(3, "edited elsewhere"));
    m_library->host().onQuestion = [&] { TestFiles::write(path, newBytes); };
    QVERIFY(update().isComplete);
    QCOMPARE(m_library->statuses(), QVector<int>({failed}));
    QVERIFY(TestFiles::read(path) == newBytes);
}

void tst_UpdateFaults::aFullDiskLosesNothing()
{
    const QString folder = m_library->filePath("songs/full");
    TmpfsMount volume(folder, "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    // A song that fills its pages to the last byte can't grow when there is no page left.
    const auto song = [](int size) {
        const int rest = static_cast<int>(size - makersSong().size() - 4);
        QByteArray filler;
        while (filler.size() < rest)
            filler += meta(1, QByteArray(qMin(100, rest - filler.size()), 'x'));
        return midi0(meta(2, "K-VARO") + meta(3, "") + filler);
    };
    const QByteArray midiSong = song(4080);
    const QByteArray mp3Song = tag(frame("TCOP", "K-VARO")) + audio(9);
    m_library->add(text("full/one.mid"), midiSong);
    m_library->add(text("full/two.mp3"), mp3Song);
    m_library->import();
    QFile rest(folder + text("/rest"));
    QVERIFY(rest.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (rest.write(QByteArray(4096, 'r')) == 4096) {}
    rest.close();

    QVERIFY(update().isComplete);
    QCOMPARE(m_library->statuses(), QVector<int>({failed, failed}));
    QVERIFY(TestFiles::read(m_library->files().at(0)) == midiSong);
    QVERIFY(TestFiles::read(m_library->files().at(1)) == mp3Song);
    QCOMPARE(TestFiles::namesIn(folder), strings({"one.mid", "rest", "two.mp3"}));
}

QTEST_GUILESS_MAIN(tst_UpdateFaults)
#include "tst_updatefaults.moc"
