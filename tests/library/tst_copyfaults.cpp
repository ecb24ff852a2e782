#include "tests/library/copyfixture.h"
#include "tests/storage/tmpfsmount.h"
#include "tests/storage/unixfile.h"

#include <QtTest>

#ifdef Q_OS_UNIX
#include <sys/sysmacros.h>
#endif

using namespace tarvel4;

namespace {

/** Takes the superuser's rights away while it lives. */
class AsNobody
{
public:
    AsNobody()
    {
#ifdef Q_OS_UNIX
        if (geteuid() == 0 && seteuid(65534) != 0)
            qFatal("can't become nobody");
#endif
    }
    ~AsNobody()
    {
#ifdef Q_OS_UNIX
        if (seteuid(getuid()) != 0)
            qFatal("can't become oneself again");
#endif
    }
    Q_DISABLE_COPY(AsNobody)
};

} // namespace

/** Copies that fail, each by its cause: what nobody can read or write, and media that are full,
 * dead or protected. */
class tst_CopyFaults : public QObject, private CopyFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void whatCantBeReadFailsAndStopsNoOther_data();
    void whatCantBeReadFailsAndStopsNoOther();
    void whatCantBeWrittenFails_data();
    void whatCantBeWrittenFails();
    void failingDisk_data();
    void failingDisk();
    void aSourceThatChangesWhileCopiedFails_data();
    void aSourceThatChangesWhileCopiedFails();
    void aVolumeThatOthersFillMeanwhile();
    void songsThatDoNotFitAreNotBegun();
    void replacedSongsMakeRoomOnAFullVolume();
    void noSongMakesRoomOnAVolumeThatDoesNotTellItsRoom();
    void aSongThatDoesNotFitBesideItsOldOne_data();
    void aSongThatDoesNotFitBesideItsOldOne();

private:
    /** Lets nobody into the folders. */
    void openFolders() const
    {
        const auto all = QFile::Permissions(0x7777);
        for (const QString &folder : {m_dir->path(), source({}), targetFolder()})
            QVERIFY(QFile::setPermissions(folder, all));
    }
};

void tst_CopyFaults::whatCantBeReadFailsAndStopsNoOther_data()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("a song that has vanished") << text("not-found");
    QTest::newRow("a link that leads nowhere") << text("not-found");
    QTest::newRow("a folder called like a song") << text("not-a-file");
    QTest::newRow("a FIFO, which would hang") << text("not-a-file");
    QTest::newRow("a device") << text("not-a-file");
    QTest::newRow("a song that must not be read") << text("read-denied");
}

void tst_CopyFaults::whatCantBeReadFailsAndStopsNoOther()
{
    QFETCH(QString, code);
    const QString kind = text(QTest::currentDataTag());
    const QString song = source(text("x.mid"));
    SKIP_WITHOUT_UNIX(kind.contains(text("link")), "links that Qt makes");
    SKIP_WITHOUT_UNIX(kind.contains(text("FIFO")) || kind.contains(text("device")), "such files");
    SKIP_WITHOUT_UNIX(kind.contains(text("must not")), "permissions by mode bits");
    if (kind.contains(text("link")))
        QVERIFY(QFile::link(source(text("nowhere.mid")), song));
    if (kind.contains(text("folder")))
        QVERIFY(QDir().mkdir(song));
    if (kind.contains(text("FIFO")))
        QVERIFY(UnixFile::makeFifo(song));
#ifdef Q_OS_UNIX
    if (kind.contains(text("device"))
        && mknod(QFile::encodeName(song).constData(), S_IFCHR | 0600, makedev(1, 3)) != 0)
        QSKIP("devices can't be made here");
#endif
    if (kind.contains(text("must not"))) {
        TestFiles::write(song, newBytes);
        QVERIFY(QFile::setPermissions(song, QFile::Permissions()));
    }
    TestFiles::write(source(text("y.mid")), newBytes);
    TestFiles::write(target(text("x.mid")), oldBytes);
    openFolders();

    LogCapture log;
    CopySummary summary;
    {
        const AsNobody nobody;
        summary = copy({song, source(text("y.mid"))});
    }
    QVERIFY(!summary.isComplete());
    QCOMPARE(m_told, QStringList({text("x.mid ") + code, text("y.mid copied")})); // it goes on
    QCOMPARE(summary.copied, 1);
    QCOMPARE(summary.details(), {text("x.mid: ") + summary.failures.at(0).cause.sentence()});
    QCOMPARE(targetNames(), strings({"x.mid", "y.mid"}));
    QCOMPARE(TestFiles::read(target(text("x.mid"))), oldBytes);
    QVERIFY(LogCapture::tells({text("can't be read"), song}));
}

void tst_CopyFaults::whatCantBeWrittenFails_data()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("a folder has the name") << text("not-a-file");
    QTest::newRow("a folder that must not be written") << text("write-denied");
    QTest::newRow("a write-protected volume") << text("read-only-volume");
}

void tst_CopyFaults::whatCantBeWrittenFails()
{
    QFETCH(QString, code);
    const QString kind = text(QTest::currentDataTag());
    SKIP_WITHOUT_UNIX(kind.contains(text("must not")), "permissions by mode bits");
    TmpfsMount volume(targetFolder(), "size=64k");
    const bool isVolume = kind.contains(text("volume"));
    if (isVolume && !volume.isMounted())
        QSKIP("mounting is not possible here");
    const QString old =
        target(kind.startsWith(text("a folder has")) ? text("a.mid/inside") : text("a.mid"));
    TestFiles::write(old, oldBytes);
    TestFiles::write(source(text("a.mid")), newBytes);
    openFolders();
    const bool isProtected = kind.contains(text("must not"));
    const auto readable = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
    if (isProtected)
        QVERIFY(QFile::setPermissions(targetFolder(), readable));
    if (isVolume)
        QVERIFY(volume.makeReadOnly());
    {
        const AsNobody nobody;
        QVERIFY(!copy({source(text("a.mid"))}).isComplete());
    }
    if (isProtected)
        QVERIFY(QFile::setPermissions(targetFolder(), readable | QFile::WriteOwner));
    QCOMPARE(m_told, {text("a.mid ") + code});
    QCOMPARE(targetNames(), strings({"a.mid"}));
    QCOMPARE(TestFiles::read(old), oldBytes);
}

void tst_CopyFaults::failingDisk_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("failing");
    QTest::addColumn<bool>("staysBroken");
    QTest::addColumn<QStringList>("replaced");
    QTest::addColumn<QStringList>("told");

    const auto row = [](const char *name, const char *operation, int failing, bool staysBroken,
                        const char *replaced, const char *results) {
        const QStringList codes = text(results).split(QLatin1Char(' '));
        QTest::newRow(name) << text(operation) << failing << staysBroken
                            << text(replaced).split(QLatin1Char(' '))
                            << QStringList({text("a.mid ") + codes.at(0),
                                            text("b.mid ") + codes.at(1),
                                            text("c.mid ") + codes.at(2)});
    };
    row("the first write", "write", 1, false, "b.mid c.mid", "in-use copied copied");
    row("a later write, also when tried again", "write", 2, false, "a.mid b.mid c.mid",
        "copied copied copied");
    row("the flush of the bytes", "sync", 1, false, "", "in-use in-use in-use");
    row("a medium that is dead from then on", "sync", 1, true, "", "in-use in-use in-use");
    row("the first name", "replace", 1, false, "b.mid c.mid", "in-use copied copied");
    row("the last name", "replace", 3, false, "a.mid b.mid", "copied copied in-use");
    row("the flush of the names, so that nothing is certain", "sync", 2, false, "a.mid b.mid c.mid",
        "not-confirmed not-confirmed not-confirmed");
}

void tst_CopyFaults::failingDisk()
{
    QFETCH(QString, operation);
    QFETCH(int, failing);
    QFETCH(bool, staysBroken);
    QFETCH(QStringList, replaced);
    QFETCH(QStringList, told);
    const QStringList names = strings({"a.mid", "b.mid", "c.mid"});
    const QStringList files = newOverOld(names);
    FailingDisk disk;
    disk.cause = Outcome::Code::InUse;
    disk.staysBroken = staysBroken;
    disk.failingWrite = operation == text("write") ? failing : 0;
    disk.failingSync = operation == text("sync") ? failing : 0;
    disk.failingReplace = operation == text("replace") ? failing : 0;

    LogCapture log;
    const CopySummary summary = copy(files, disk);
    QCOMPARE(m_told, told);
    QCOMPARE(summary.copied, told.filter(text(" copied")).size());
    QCOMPARE(summary.isComplete(), summary.copied == 3);
    QCOMPARE(targetNames(), names); // no temporary file
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), replaced.contains(name) ? newBytes : oldBytes);
    QVERIFY(LogCapture::tells({text("WARNING")}));
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
    SKIP_WITHOUT_UNIX(changed.isEmpty(), "way to remove a file that a program has open like that");
    const QString song = TestFiles::write(source(text("a.mid")), "first text");
    TestFiles::setModified(song, QDateTime::currentDateTime().addSecs(-60));
    TestFiles::write(target(text("a.mid")), oldBytes);
    FailingDisk disk;
    disk.before = [&](const QString &operation, int) {
        if (operation != text("write"))
            return;
        if (changed.isEmpty())
            QFile::remove(song);
        else
            TestFiles::write(song, changed);
    };
    QVERIFY(!copy({song}, disk).isComplete());
    QCOMPARE(m_told, strings({"a.mid changed-meanwhile"}));
    QCOMPARE(targetNames(), strings({"a.mid"}));
    QCOMPARE(TestFiles::read(target(text("a.mid"))), oldBytes);
}

void tst_CopyFaults::aVolumeThatOthersFillMeanwhile()
{
    TmpfsMount volume(targetFolder(), "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    const QStringList files{TestFiles::write(source(text("small.mid")), QByteArray(1000, 's')),
                            TestFiles::write(source(text("big.mid")), QByteArray(45000, 'b')),
                            TestFiles::write(source(text("tiny.mid")), QByteArray(100, 't'))};
    FailingDisk disk;
    disk.before = [this](const QString &, int count) {
        if (count == 1)
            TestFiles::write(target(text("x")), QByteArray(20000, 'x'));
    };
    const CopySummary summary = copy(files, disk);
    QVERIFY(!summary.isComplete());
    QCOMPARE(summary.copied, 2);
    QCOMPARE(m_told, strings({"small.mid copied", "big.mid no-room", "tiny.mid copied"}));
    QCOMPARE(targetNames(), strings({"small.mid", "tiny.mid", "x"}));
    QCOMPARE(TestFiles::read(target(text("small.mid"))), QByteArray(1000, 's'));
}

void tst_CopyFaults::songsThatDoNotFitAreNotBegun()
{
    TmpfsMount volume(targetFolder(), "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    const QStringList files{TestFiles::write(source(text("a.mid")), newBytes),
                            TestFiles::write(source(text("big.mid")), QByteArray(100000, 'b'))};
    TestFiles::write(target(text("a.mid")), oldBytes);
    LogCapture log;
    const CopySummary summary = copy(files);
    QVERIFY(!summary.isComplete());
    QCOMPARE(summary.cause.codeName(), text("no-room"));
    QCOMPARE(summary.details(), QStringList(summary.cause.message()));
    QVERIFY(summary.cause.message().startsWith(targetFolder() + text(": ")));
    QVERIFY(LogCapture::tells({text("WARNING"), summary.cause.message()}));
    QCOMPARE(m_told, QStringList());
    QCOMPARE(m_host.events, QStringList()); // not even a question
    QCOMPARE(targetNames(), strings({"a.mid"}));
    QCOMPARE(TestFiles::read(target(text("a.mid"))), oldBytes);
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
    const CopySummary summary = copy(files);
    QCOMPARE(summary.copied, 2);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), QByteArray(40000, 'n'));
}

void tst_CopyFaults::noSongMakesRoomOnAVolumeThatDoesNotTellItsRoom()
{
    TmpfsMount volume(targetFolder(), "", "ramfs");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    const QStringList files{TestFiles::write(source(text("a.mid")), newBytes)};
    TestFiles::write(target(text("a.mid")), oldBytes);
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    disk.failingWrite = 1;
    copy(files, disk);
    QCOMPARE(m_told, strings({"a.mid no-room"}));
    QCOMPARE(TestFiles::read(target(text("a.mid"))), oldBytes);
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
    const CopySummary summary = copy({source(text("a.mp3"))});
    QCOMPARE(summary.isComplete(), isReplaced);
    QCOMPARE(TestFiles::read(target(text("a.mp3"))),
             isReplaced ? QByteArray(newSize, 'n') : QByteArray(oldSize, 'o'));
    QCOMPARE(targetNames().size(), isReplaced && companionSize > 0 ? 3 : 2);
}

QTEST_GUILESS_MAIN(tst_CopyFaults)
#include "tst_copyfaults.moc"
