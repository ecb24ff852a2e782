#include "tests/library/copyfixture.h"
#include "tests/storage/unixfile.h"

#include <QtTest>

#ifdef Q_OS_UNIX
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#endif

using namespace tarvel4;

/** Songs that are copied together: the order of bytes, names and flushes, and what a kill leaves.
 */
class tst_CopyBatch : public QObject, private CopyFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void namesThatDifferInCaseAreNotStagedTogether();
    void namesComeAfterTheBytesAndBeforeTheLastFlush();
    void manySongsAreFlushedInFewBatches();
    void leftovers_data();
    void leftovers();
    void onFatASecondNameOfASongIsNotRemoved_data();
    void onFatASecondNameOfASongIsNotRemoved();
    void whatAPowerCutLeftAsideIsPutInOrderFirst();
    void onFatTheOldSongsWaitUntilTheNewOnesAreSafe();
    void onFatAFailureBringsTheOldSongsBack_data();
    void onFatAFailureBringsTheOldSongsBack();
    void onFatWhereTheWayBackIsBarredTheOldSongIsNamed();
    void onFatAKillLeavesOneOfTheTwo_data();
    void onFatAKillLeavesOneOfTheTwo();
    void aKilledRunIsMadeGoodByTheNext_data();
    void aKilledRunIsMadeGoodByTheNext();

private:
    /** Copies in a process that is killed at an operation; false when it came to no harm. */
    bool copyIsKilled([[maybe_unused]] const QStringList &files,
                      [[maybe_unused]] const QString &operation, [[maybe_unused]] int count,
                      [[maybe_unused]] bool isFat = false) const
    {
#ifdef Q_OS_UNIX
        const pid_t child = fork();
        if (child == 0) {
            ScriptedHost host;
            FailingDisk disk;
            disk.cause = Outcome::Code::NoRoom;
            disk.isFat = isFat;
            disk.before = [&](const QString &done, int doneCount) {
                if (done == operation && doneCount == count)
                    raise(SIGKILL);
            };
            FileCopier(host, host, host, disk).copy(files, targetFolder());
            _exit(0);
        }
        int status = 0;
        return waitpid(child, &status, 0) == child && WIFSIGNALED(status);
#else
        return false;
#endif
    }

    /** Of a program that runs. */
    qint64 pidOfAnother()
    {
#ifdef Q_OS_UNIX
        return 1;
#else
        m_other.start(text("cmd"), {});
        return m_other.waitForStarted() ? m_other.processId() : 0;
#endif
    }

    QProcess m_other;
};

void tst_CopyBatch::namesThatDifferInCaseAreNotStagedTogether()
{
    // On a card the first must have its name before the second looks whether it is there.
    const QStringList files{TestFiles::write(source(text("1/s.mid")), "first"),
                            TestFiles::write(source(text("2/S.MID")), "second")};
    if (QFile::exists(source(text("1/S.MID"))))
        QSKIP("names do not keep case apart here");
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    QVERIFY(copy(files, disk).isComplete());
    QCOMPARE(disk.operations,
             strings({"write", "syncAll", "replace", "rename", "write", "syncAll", "replace",
                      "rename", "syncAll"}));
    QCOMPARE(targetNames(), strings({"S.MID", "s.mid"}));
}

void tst_CopyBatch::namesComeAfterTheBytesAndBeforeTheLastFlush()
{
    const QStringList files{TestFiles::write(source(text("a.mid")), newBytes),
                            TestFiles::write(source(text("b.mid")), newBytes)};
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    QStringList namesAtLastProgress;
    m_host.onProgress = [&](int value) {
        if (value == 2)
            namesAtLastProgress = disk.operations;
    };
    QVERIFY(copy(files, disk).isComplete());
    const QStringList expected =
        strings({"write", "write", "syncAll", "replace", "rename", "replace", "rename", "syncAll"});
    QCOMPARE(disk.operations, expected);
    QCOMPARE(namesAtLastProgress, expected); // a full progress bar means done
}

void tst_CopyBatch::manySongsAreFlushedInFewBatches()
{
    QStringList files;
    for (int i = 0; i < 501; ++i)
        files.append(TestFiles::write(source(QString::number(i) + text(".mid")), newBytes));
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    const CopySummary summary = copy(files, disk);
    QVERIFY(summary.isComplete());
    QCOMPARE(summary.copied, 501);
    QCOMPARE(disk.countOf("syncAll"), 3);
    QCOMPARE(targetNames().size(), 501);
}

void tst_CopyBatch::leftovers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("stays");
    const qint64 own = QCoreApplication::applicationPid();
    QTest::newRow("of a copier that is gone") << text(".tarvel4soft-2147483646-0.part") << false;
    QTest::newRow("of this process") << text(".tarvel4soft-%1-7.part").arg(own) << false;
    QTest::newRow("of a copier that is at work")
        << text(".tarvel4soft-%1-0.part").arg(pidOfAnother()) << true;
    QTest::newRow("a name that only resembles ours") << text(".tarvel4soft-x-0.part") << true;
    QTest::newRow("another name with a point") << text(".hidden") << true;
    QTest::newRow("a song") << text("tarvel4soft-2147483646-0.part.mid") << true;
}

void tst_CopyBatch::leftovers()
{
    QFETCH(QString, name);
    QFETCH(bool, stays);
    TestFiles::write(target(name), "half");
    TestFiles::write(source(text("a.mid")), newBytes);
    QVERIFY(copy({source(text("a.mid"))}).isComplete());
    QCOMPARE(targetNames().contains(name), stays);
    QCOMPARE(TestFiles::read(target(text("a.mid"))), newBytes);

    // Nothing else to do: what was removed is flushed all the same.
    TestFiles::write(target(name), "half");
    FailingDisk disk;
    QVERIFY(copy({target(text("a.mid"))}, disk).isComplete());
    QCOMPARE(disk.operations, stays ? QStringList() : strings({"remove", "syncAll"}));
}

void tst_CopyBatch::onFatASecondNameOfASongIsNotRemoved_data()
{
    QTest::addColumn<QString>("leftover");
    QTest::addColumn<bool>("isOneFile"); // or else a copy of the song
    QTest::addColumn<bool>("isFat");
    QTest::addColumn<bool>("isBegun");
    const QString part = text(".tarvel4soft-2147483646-0.part");
    QTest::newRow("a copy") << part << true << true << false;
    QTest::newRow("a copy whose long name is cut") << text("TARVEL~1.PAR") << true << true << false;
    QTest::newRow("an old song set aside") << text("a.mid.tarvel4.bak") << true << true << false;
    QTest::newRow("the same bytes in another file") << part << false << true << true;
    QTest::newRow("not on FAT") << part << true << false << true;
}

void tst_CopyBatch::onFatASecondNameOfASongIsNotRemoved()
{
    SKIP_WITHOUT_UNIX(true, "a hard link, which looks as what FAT is left with");
    QFETCH(QString, leftover);
    QFETCH(bool, isOneFile);
    QFETCH(bool, isFat);
    QFETCH(bool, isBegun);
    FailingDisk disk;
    disk.isFat = isFat;
    TestFiles::write(target(text("a.mid")), oldBytes);
    TestFiles::write(target(text("b.mid.tarvel4.bak")),
                     newBytes); // other bytes, as times may agree
    if (isOneFile) {
        QVERIFY(UnixFile::makeHardLink(target(text("a.mid")), target(leftover)));
    } else {
        TestFiles::write(target(leftover), oldBytes);
        TestFiles::setModified(target(leftover), QDateTime::currentDateTime().addDays(-1));
    }
    const CopySummary summary = copy({TestFiles::write(source(text("c.mid")), newBytes)}, disk);
    QCOMPARE(summary.isComplete(), isBegun);
    QCOMPARE(targetNames().contains(leftover), !isBegun);
    QCOMPARE(targetNames().contains(text("b.mid.tarvel4.bak")), !isBegun); // all is as it was
    QCOMPARE(summary.cause.codeName(), isBegun ? QString() : text("medium-failed"));
    QCOMPARE(summary.cause.detail.contains(leftover), !isBegun);
}

void tst_CopyBatch::whatAPowerCutLeftAsideIsPutInOrderFirst()
{
    TestFiles::write(target(text("a.mid.tarvel4.bak")), oldBytes);
    TestFiles::write(target(text("b.mid.tarvel4.bak")), oldBytes);
    TestFiles::write(target(text("b.mid")), newBytes);
    QVERIFY(copy({TestFiles::write(source(text("c.mid")), newBytes)}).isComplete());
    QCOMPARE(targetNames(), strings({"a.mid", "b.mid", "c.mid"}));
    QCOMPARE(TestFiles::read(target(text("a.mid"))), QByteArray(oldBytes));
    QCOMPARE(TestFiles::read(target(text("b.mid"))), newBytes);
    QCOMPARE(m_host.eventsOf(text("recovered")).size(), 2);
}

void tst_CopyBatch::onFatTheOldSongsWaitUntilTheNewOnesAreSafe()
{
    const QStringList files{TestFiles::write(source(text("a.mid")), newBytes),
                            TestFiles::write(source(text("b.mid")), newBytes),
                            TestFiles::write(source(text("c.mid")), newBytes)};
    TestFiles::write(target(text("a.mid")), oldBytes);
    TestFiles::write(target(text("b.mid")), oldBytes);
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    disk.isFat = true;
    QVector<QStringList> songsAtFlush; // the temporary files left out
    disk.before = [&](const QString &operation, int) {
        if (operation == text("syncAll"))
            songsAtFlush.append(QDir(targetFolder()).entryList({text("?.mid*")}));
    };
    QVERIFY(copy(files, disk).isComplete());
    const QVector<QStringList> expected{
        strings({"a.mid", "b.mid"}), // the bytes
        strings({"a.mid.tarvel4.bak", "b.mid.tarvel4.bak"}),
        strings({"a.mid", "a.mid.tarvel4.bak", "b.mid", "b.mid.tarvel4.bak", "c.mid"}),
        strings({"a.mid", "b.mid", "c.mid"}), // the old ones' removal
    };
    QCOMPARE(songsAtFlush, expected);
    QCOMPARE(targetNames(), strings({"a.mid", "b.mid", "c.mid"}));
}

void tst_CopyBatch::onFatAFailureBringsTheOldSongsBack_data()
{
    QTest::addColumn<int>("failingReplace");
    QTest::addColumn<int>("failingSync");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("the old song can't step aside")
        << 1 << 0 << strings({"a.mid no-room", "b.mid copied"});
    QTest::newRow("the flush of the old songs' other names")
        << 0 << 2 << strings({"a.mid no-room", "b.mid no-room"});
    QTest::newRow("the new song can't be named")
        << 3 << 0 << strings({"a.mid no-room", "b.mid copied"});
    QTest::newRow("the flush of the names")
        << 0 << 3 << strings({"a.mid no-room", "b.mid no-room"});
    QTest::newRow("the flush after the old ones' removal, which harms nothing")
        << 0 << 4 << strings({"a.mid copied", "b.mid copied"});
}

void tst_CopyBatch::onFatAFailureBringsTheOldSongsBack()
{
    QFETCH(int, failingReplace);
    QFETCH(int, failingSync);
    QFETCH(QStringList, told);
    const QStringList names = strings({"a.mid", "b.mid"});
    const QStringList files = newOverOld(names);
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    disk.isFat = true;
    disk.failingReplace = failingReplace;
    disk.failingSync = failingSync;
    copy(files, disk);
    QCOMPARE(m_told, told);
    QCOMPARE(targetNames(), names);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)),
                 told.contains(name + text(" copied")) ? newBytes : oldBytes);
}

void tst_CopyBatch::onFatWhereTheWayBackIsBarredTheOldSongIsNamed()
{
    const QStringList files = newOverOld(strings({"a.mid"}));
    FailingDisk disk;
    disk.isFat = true;
    disk.failingReplace = 2;
    disk.staysBroken = true;
    const CopySummary summary = copy(files, disk);
    QCOMPARE(m_told, strings({"a.mid not-restored"}));
    const QString old = target(text("a.mid.tarvel4.bak"));
    QVERIFY(summary.details().value(0).contains(old));
    QCOMPARE(TestFiles::read(old), oldBytes);
}

void tst_CopyBatch::onFatAKillLeavesOneOfTheTwo_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("count");
    for (int count = 1; count <= 4; ++count) {
        QTest::addRow("killed at rename %d", count) << text("replace") << count;
        QTest::addRow("killed at flush %d", count) << text("syncAll") << count;
    }
}

void tst_CopyBatch::onFatAKillLeavesOneOfTheTwo()
{
    QFETCH(QString, operation);
    QFETCH(int, count);
    const QStringList names = strings({"a.mid", "b.mid"});
    SKIP_WITHOUT_UNIX(true, "fork() of a test, to be killed");
    const QStringList files = newOverOld(names);
    QVERIFY(copyIsKilled(files, operation, count, true));
    for (const QString &name : names) {
        const QByteArray now = TestFiles::read(target(name));
        const bool isThere = now == oldBytes || now == newBytes;
        QVERIFY(isThere || TestFiles::read(target(name + text(".tarvel4.bak"))) == oldBytes);
    }
    QVERIFY(copy(files).isComplete());
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), newBytes);
}

void tst_CopyBatch::aKilledRunIsMadeGoodByTheNext_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("replaced");
    QTest::newRow("killed at the first write") << text("write") << 1 << QStringList();
    QTest::newRow("killed at the third write") << text("write") << 3 << QStringList();
    QTest::newRow("killed at the flush of the bytes") << text("syncAll") << 1 << QStringList();
    QTest::newRow("killed at the first name") << text("replace") << 1 << QStringList();
    QTest::newRow("killed at the second name") << text("replace") << 2 << strings({"a.mid"});
    QTest::newRow("killed at the last flush")
        << text("syncAll") << 2 << strings({"a.mid", "b.mid", "c.mid"});
}

void tst_CopyBatch::aKilledRunIsMadeGoodByTheNext()
{
    QFETCH(QString, operation);
    QFETCH(int, count);
    QFETCH(QStringList, replaced);
    const QStringList names = strings({"a.mid", "b.mid", "c.mid"});
    SKIP_WITHOUT_UNIX(true, "fork() of a test, to be killed");
    const QStringList files = newOverOld(names);

    QVERIFY(copyIsKilled(files, operation, count));

    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), replaced.contains(name) ? newBytes : oldBytes);
    QVERIFY(copy(files).isComplete());
    QCOMPARE(targetNames(), names);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), newBytes);
}

QTEST_GUILESS_MAIN(tst_CopyBatch)
#include "tst_copybatch.moc"
