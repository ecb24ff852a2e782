#include "tests/library/libraryupdatefixture.h"

#include "tests/storage/failingdisk.h"
#include "tests/storage/tmpfsmount.h"

#include <QtTest>

using namespace tarvel4;

using namespace SongBytes;

/** An update that is cancelled, or whose songs or disk fail: nothing is lost, and the user is told.
 */
class tst_UpdateFaults : public QObject, private LibraryUpdateFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void cancelStopsBeforeTheNextSong_data();
    void cancelStopsBeforeTheNextSong();
    void theRunGoesOnAfterAFailure_data();
    void theRunGoesOnAfterAFailure();
    void theLogSaysHowManyFailedAndWhich();
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
    QVERIFY(!update());
    QCOMPARE(m_library->statuses(), statuses);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(TestFiles::read(m_library->files().at(row)) != makersSong(),
                 statuses.at(row) == updated);
    QCOMPARE(m_library->host().events.last(), text("end"));
}

void tst_UpdateFaults::theRunGoesOnAfterAFailure_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("cause");
    QTest::newRow("a song that has vanished") << text("vanish") << text("can't be read");
    QTest::newRow("a song that is no song any more") << text("garbage") << text("can't be read");
    QTest::newRow("a song that is a folder now") << text("folder") << text("can't be read");
    QTest::newRow("a write that comes up short") << text("write") << text("not saved");
    QTest::newRow("a song that does not reach the medium") << text("sync") << text("not saved");
    QTest::newRow("a song whose header can't hold the text")
        << text("accent") << text("can't be saved");
}

void tst_UpdateFaults::theRunGoesOnAfterAFailure()
{
    QFETCH(QString, fault);
    QFETCH(QString, cause);
    const bool isMfx = fault == text("accent");
    const QByteArray old = isMfx ? mfx(3, MfxFields(), midi0()) : makersSong();
    const QString path = m_library->add(isMfx ? text("accent.mf3") : text("one.mid"), old);
    m_library->add(text("two.mid"), makersSong());
    m_library->import();

    FailingDisk disk;
    if (fault == text("vanish") || fault == text("folder"))
        QVERIFY(QFile::remove(path));
    if (fault == text("folder"))
        QVERIFY(QDir().mkdir(path));
    if (fault == text("garbage"))
        TestFiles::write(path, "garbage");
    if (fault == text("write"))
        disk.failingWrite = 1;
    if (fault == text("sync"))
        disk.failingSync = 1;

    LogCapture log;
    QVERIFY(update({}, disk));
    QCOMPARE(m_library->statuses(), QVector<int>({failed, updated}));
    QVERIFY(LogCapture::tells({cause, path}));
    QVERIFY(LogCapture::has(text("[UPDATE] WARNING: songs that failed: 1")));
    QVERIFY(LogCapture::has(text("[UPDATE] failed: \"%1\"").arg(path)));
    if (fault == text("vanish"))
        QVERIFY(!QFileInfo::exists(path));
    if (fault == text("garbage"))
        QCOMPARE(TestFiles::read(path), QByteArray("garbage"));
    if (isMfx || fault == text("write") || fault == text("sync"))
        QVERIFY(TestFiles::read(path) == old);
}

void tst_UpdateFaults::theLogSaysHowManyFailedAndWhich()
{
    const QStringList gone{m_library->add(text("one.mid"), makersSong()),
                           m_library->add(text("two.mid"), makersSong())};
    m_library->add(text("unknown.mid"), makersSong("nothing")); // not found is no failure
    m_library->import();
    for (const QString &path : gone)
        QVERIFY(QFile::remove(path));
    LogCapture log;
    LibraryUpdate run(m_library->db(), m_library->model(), m_library->host(), {});
    QVERIFY(run.updateUserLibrary([this] { return backup().mayProceed; }));
    QCOMPARE(run.failures(), gone);
    const QStringList &lines = LogCapture::lines();
    QCOMPARE(lines.mid(lines.size() - 3),
             QStringList({text("[UPDATE] WARNING: songs that failed: 2"),
                          text("[UPDATE] failed: \"%1\"").arg(gone.at(0)),
                          text("[UPDATE] failed: \"%1\"").arg(gone.at(1))}));
}

void tst_UpdateFaults::aReadOnlySongIsMadeWritable()
{
    const QString path = m_library->add(text("one.mid"), makersSong());
    m_library->import();
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    QVERIFY(update());
    QCOMPARE(m_library->statuses(), QVector<int>({updated}));
    QVERIFY(QFileInfo(path).permissions() & QFile::WriteOwner);
}

void tst_UpdateFaults::aSongChangedDuringTheQuestionKeepsItsNewBytes()
{
    const QString path = m_library->add(text("one.mid"), midi0());
    m_library->import();
    const QByteArray newBytes = midi0(meta(3, "edited elsewhere"));
    m_library->host().onQuestion = [&] { TestFiles::write(path, newBytes); };
    QVERIFY(update());
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
        const int rest = size - makersSong().size() - 4;
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

    QVERIFY(update());
    QCOMPARE(m_library->statuses(), QVector<int>({failed, failed}));
    QVERIFY(TestFiles::read(m_library->files().at(0)) == midiSong);
    QVERIFY(TestFiles::read(m_library->files().at(1)) == mp3Song);
    QCOMPARE(TestFiles::namesIn(folder), strings({"one.mid", "rest", "two.mp3"}));
}

QTEST_GUILESS_MAIN(tst_UpdateFaults)
#include "tst_updatefaults.moc"
