#include "tests/library/copyfixture.h"
#include "tests/storage/tmpfsmount.h"

#include <QtTest>

#include <sys/stat.h>
#include <sys/sysmacros.h>

using namespace tarvel4;

/** Copies that fail: what nobody can read or write, and media that are full, dead or protected. */
class tst_CopyFaults : public QObject, private CopyFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void whatIsNoRegularFileFails_data();
    void whatIsNoRegularFileFails();
    void aFolderOfTheSameNameFails();
    void failingDisk_data();
    void failingDisk();
    void aDeadMediumFailsEverySong();
    void aSourceThatChangesWhileCopiedFails_data();
    void aSourceThatChangesWhileCopiedFails();
    void aFullVolume();
    void replacedSongsMakeRoomOnAFullVolume();
    void aSongThatDoesNotFitBesideItsOldOne_data();
    void aSongThatDoesNotFitBesideItsOldOne();
    void aWriteProtectedVolume();
};

void tst_CopyFaults::whatIsNoRegularFileFails_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("a song that has vanished") << text("none");
    QTest::newRow("a folder called like a song") << text("folder");
    QTest::newRow("a FIFO, which would hang") << text("fifo");
    QTest::newRow("a device") << text("device");
    QTest::newRow("a link that leads nowhere") << text("link");
    QTest::newRow("a song that must not be read") << text("unreadable");
}

void tst_CopyFaults::whatIsNoRegularFileFails()
{
    QFETCH(QString, kind);
    const QString song = source(text("x.mid"));
    const QByteArray native = QFile::encodeName(song);
    if (kind == text("folder"))
        QVERIFY(QDir().mkdir(song));
    if (kind == text("fifo"))
        QCOMPARE(mkfifo(native.constData(), 0600), 0);
    if (kind == text("device") && mknod(native.constData(), S_IFCHR | 0600, makedev(1, 3)) != 0)
        QSKIP("devices can't be made here");
    if (kind == text("link"))
        QVERIFY(QFile::link(source(text("nowhere.mid")), song));
    if (kind == text("unreadable")) {
        TestFiles::write(song, newBytes);
        QVERIFY(QFile::setPermissions(song, QFile::Permissions()));
        if (QFile(song).open(QIODevice::ReadOnly))
            QSKIP("this user may read everything");
    }
    TestFiles::write(source(text("y.mid")), newBytes);
    TestFiles::write(target(text("x.mid")), oldBytes);

    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    LogCapture log;
    QVERIFY(!copier.copyFiles({song, source(text("y.mid"))}, targetFolder()));
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(copier.copied(), 1); // the loop goes on
    QCOMPARE(targetNames(), strings({"x.mid", "y.mid"}));
    QCOMPARE(TestFiles::read(target(text("x.mid"))), oldBytes);
    QVERIFY(LogCapture::tells({text("can't be read"), song}));
}

void tst_CopyFaults::aFolderOfTheSameNameFails()
{
    TestFiles::write(source(text("a.mid")), newBytes);
    TestFiles::write(target(text("a.mid/inside")), oldBytes);
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(!copier.copyFiles({source(text("a.mid"))}, targetFolder()));
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(targetNames(), strings({"a.mid"}));
    QCOMPARE(TestFiles::read(target(text("a.mid/inside"))), oldBytes);
}

void tst_CopyFaults::failingDisk_data()
{
    QTest::addColumn<int>("failingWrite");
    QTest::addColumn<int>("failingSync");
    QTest::addColumn<int>("failingReplace");
    QTest::addColumn<QStringList>("replaced");
    QTest::addColumn<int>("failures");

    QTest::newRow("the first write") << 1 << 0 << 0 << strings({"b.mid", "c.mid"}) << 1;
    QTest::newRow("a later write, also when tried again")
        << 2 << 0 << 0 << strings({"a.mid", "b.mid", "c.mid"}) << 0;
    QTest::newRow("the flush of the bytes") << 0 << 1 << 0 << QStringList() << 3;
    QTest::newRow("the first name") << 0 << 0 << 1 << strings({"b.mid", "c.mid"}) << 1;
    QTest::newRow("the last name") << 0 << 0 << 3 << strings({"a.mid", "b.mid"}) << 1;
    QTest::newRow("the flush of the names, so that nothing is certain")
        << 0 << 2 << 0 << strings({"a.mid", "b.mid", "c.mid"}) << 3;
}

void tst_CopyFaults::failingDisk()
{
    QFETCH(int, failingWrite);
    QFETCH(int, failingSync);
    QFETCH(int, failingReplace);
    QFETCH(QStringList, replaced);
    QFETCH(int, failures);
    const QStringList names = strings({"a.mid", "b.mid", "c.mid"});
    const QStringList files = newOverOld(names);
    ScriptedHost host;
    FailingDisk disk;
    disk.failingWrite = failingWrite;
    disk.failingSync = failingSync;
    disk.failingReplace = failingReplace;
    FileCopier copier(host, disk);

    LogCapture log;
    QCOMPARE(copier.copyFiles(files, targetFolder()), failures == 0);
    QCOMPARE(copier.failures(), failures);
    QCOMPARE(copier.copied(), files.size() - failures);
    QCOMPARE(targetNames(), names); // no temporary file
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), replaced.contains(name) ? newBytes : oldBytes);
    QVERIFY(LogCapture::tells({text("WARNING")}));
}

void tst_CopyFaults::aDeadMediumFailsEverySong()
{
    const QStringList files{TestFiles::write(source(text("a.mid")), newBytes),
                            TestFiles::write(source(text("b.mid")), newBytes)};
    ScriptedHost host;
    FailingDisk disk;
    disk.failingSync = 1;
    disk.staysBroken = true;
    FileCopier copier(host, disk);
    QVERIFY(!copier.copyFiles(files, targetFolder()));
    QCOMPARE(copier.failures(), 2);
    QCOMPARE(copier.copied(), 0);
    QCOMPARE(targetNames(), QStringList());
}

void tst_CopyFaults::aSourceThatChangesWhileCopiedFails_data()
{
    QTest::addColumn<QByteArray>("changed");
    QTest::newRow("it grows") << QByteArray("longer than before");
    QTest::newRow("it shrinks") << QByteArray("x");
    QTest::newRow("it is rewritten") << QByteArray("rewritten!");
    QTest::newRow("it vanishes") << QByteArray();
}

void tst_CopyFaults::aSourceThatChangesWhileCopiedFails()
{
    QFETCH(QByteArray, changed);
    const QString song = TestFiles::write(source(text("a.mid")), "first text");
    TestFiles::setModified(song, QDateTime::currentDateTime().addSecs(-60));
    TestFiles::write(target(text("a.mid")), oldBytes);
    ScriptedHost host;
    FailingDisk disk;
    disk.before = [&](const QString &operation, int) {
        if (operation != text("write"))
            return;
        if (changed.isEmpty())
            QFile::remove(song);
        else
            TestFiles::write(song, changed);
    };
    FileCopier copier(host, disk);
    QVERIFY(!copier.copyFiles({song}, targetFolder()));
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(targetNames(), strings({"a.mid"}));
    QCOMPARE(TestFiles::read(target(text("a.mid"))), oldBytes);
}

void tst_CopyFaults::aFullVolume()
{
    TmpfsMount volume(targetFolder(), "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    const QStringList files{TestFiles::write(source(text("small.mid")), QByteArray(1000, 's')),
                            TestFiles::write(source(text("big.mid")), QByteArray(100000, 'b')),
                            TestFiles::write(source(text("tiny.mid")), QByteArray(100, 't'))};
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(!copier.copyFiles(files, targetFolder()));
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(copier.copied(), 2);
    QCOMPARE(targetNames(), strings({"small.mid", "tiny.mid"}));
    QCOMPARE(TestFiles::read(target(text("small.mid"))), QByteArray(1000, 's'));
}

void tst_CopyFaults::replacedSongsMakeRoomOnAFullVolume()
{
    TmpfsMount volume(targetFolder(), "size=128k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    const QStringList names = strings({"a.mid", "b.mid"});
    QStringList files;
    for (const QString &name : names) {
        files.append(TestFiles::write(source(name), QByteArray(40000, 'n')));
        TestFiles::write(target(name), QByteArray(40000, 'o'));
    }
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles(files, targetFolder()));
    QCOMPARE(copier.copied(), 2);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), QByteArray(40000, 'n'));
}

void tst_CopyFaults::aSongThatDoesNotFitBesideItsOldOne_data()
{
    QTest::addColumn<int>("others"); // of 16 blocks
    QTest::addColumn<int>("oldSize");
    QTest::addColumn<int>("newSize");
    QTest::addColumn<int>("companionSize");
    QTest::addColumn<bool>("isReplaced");
    constexpr int block = 4096;
    QTest::newRow("takes its place") << 0 << 40000 << 45000 << 0 << true;
    QTest::newRow("takes its place when it fills the last block")
        << 2 << 7 * block << 14 * block << 0 << true;
    QTest::newRow("leaves it where it does not fit either")
        << 2 << 7 * block << 14 * block + 1 << 0 << false;
    QTest::newRow("gets the whole block of a small one") << 14 << 1 << 2 * block << 0 << true;
    QTest::newRow("takes its place with its companion")
        << 2 << 7 * block << 13 * block << 1 << true;
    QTest::newRow("leaves it where its companion does not fit")
        << 2 << 7 * block << 14 * block << 1 << false;
}

void tst_CopyFaults::aSongThatDoesNotFitBesideItsOldOne()
{
    QFETCH(int, others);
    QFETCH(int, oldSize);
    QFETCH(int, newSize);
    QFETCH(int, companionSize);
    QFETCH(bool, isReplaced);
    TmpfsMount volume(targetFolder(), "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    TestFiles::write(target(text("other.mid")), QByteArray(others * 4096, 'x'));
    TestFiles::write(target(text("a.mp3")), QByteArray(oldSize, 'o'));
    TestFiles::write(source(text("a.mp3")), QByteArray(newSize, 'n'));
    if (companionSize > 0)
        TestFiles::write(source(text("a.cdg")), QByteArray(companionSize, 'c'));
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QCOMPARE(copier.copyFiles({source(text("a.mp3"))}, targetFolder()), isReplaced);
    QCOMPARE(TestFiles::read(target(text("a.mp3"))),
             isReplaced ? QByteArray(newSize, 'n') : QByteArray(oldSize, 'o'));
    QCOMPARE(targetNames().size(), isReplaced && companionSize > 0 ? 3 : 2);
}

void tst_CopyFaults::aWriteProtectedVolume()
{
    TmpfsMount volume(targetFolder(), "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    TestFiles::write(target(text("a.mid")), oldBytes);
    QVERIFY(volume.makeReadOnly());
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(!copier.copyFiles({TestFiles::write(source(text("a.mid")), newBytes)}, targetFolder()));
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(TestFiles::read(target(text("a.mid"))), oldBytes);
}

QTEST_GUILESS_MAIN(tst_CopyFaults)
#include "tst_copyfaults.moc"
