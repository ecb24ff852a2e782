#include "library/volume.h"

#include "tests/library/testfiles.h"
#include "tests/storage/tmpfsmount.h"

#include <QStorageInfo>
#include <QtTest>

using namespace tarvel4;

class tst_Volume : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSystemDisk_data();
    void theSystemDisk();
    void aMountedCard();
    void aCardReachedThroughALink();
    void aCardOfTheSameKindAsASystemFolderIsNoSystemDisk();
    void aBindOfTheSystemDiskIsTheSystemDisk();
    void aFolderTakenForAMemory_data();
    void aFolderTakenForAMemory();
};

void tst_Volume::theSystemDisk_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("the root itself") << QStringLiteral("/");
    QTest::newRow("a folder of the system") << QStringLiteral("/usr/share");
    QTest::newRow("a system folder that does not exist yet")
        << QStringLiteral("/usr/no/such/folder");
    QTest::newRow("with dots in its path") << QStringLiteral("/usr/../usr/./share");
}

void tst_Volume::theSystemDisk()
{
    QFETCH(QString, path);
    const SystemVolume volume;
    QVERIFY(volume.isSystemDisk(path));
    QCOMPARE(volume.isRootFolder(path), path == QStringLiteral("/"));
    QVERIFY(path.startsWith(volume.rootOf(path)));
}

void tst_Volume::aMountedCard()
{
    QTemporaryDir dir;
    const QString card = dir.filePath(QStringLiteral("my card"));
    TmpfsMount mount(card, "size=64k");
    if (!mount.isMounted())
        QSKIP("mounting is not possible here");
    TestFiles::write(card + QStringLiteral("/songs/a.mid"), "x");

    const SystemVolume volume;
    const QString root = QFileInfo(card).canonicalFilePath();
    for (const char *below : {"", "/", "/songs", "/songs/a.mid", "/not/there"}) {
        const QString path = card + QString::fromLatin1(below);
        QCOMPARE(volume.rootOf(path), root);
        QVERIFY(!volume.isSystemDisk(path));
    }
    QVERIFY(volume.isRootFolder(card));
    QVERIFY(volume.isRootFolder(card + QStringLiteral("/")));
    QVERIFY(volume.isRootFolder(card + QStringLiteral("/songs/..")));
    QVERIFY(!volume.isRootFolder(card + QStringLiteral("/songs")));
    QVERIFY(!volume.isRootFolder(card + QStringLiteral("/not there")));
    QVERIFY(volume.rootOf(dir.path()) != root);
    QVERIFY(!volume.isRootFolder(dir.path()));
}

void tst_Volume::aCardReachedThroughALink()
{
    QTemporaryDir dir;
    const QString card = dir.filePath(QStringLiteral("card"));
    TmpfsMount mount(card, "size=64k");
    if (!mount.isMounted())
        QSKIP("mounting is not possible here");
    const QString link = dir.filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(card, link));
    const SystemVolume volume;
    QCOMPARE(volume.rootOf(link), QFileInfo(card).canonicalFilePath());
    QVERIFY(volume.isRootFolder(link));
    QVERIFY(!volume.isSystemDisk(link));
}

void tst_Volume::aCardOfTheSameKindAsASystemFolderIsNoSystemDisk()
{
    QTemporaryDir dir;
    const QString card = dir.filePath(QStringLiteral("card"));
    TmpfsMount mount(card, "size=64k");
    TmpfsMount run(QStringLiteral("/run"), "size=64k");
    if (!mount.isMounted() || !run.isMounted())
        QSKIP("mounting is not possible here");
    const SystemVolume volume; // both are called "tmpfs"
    QVERIFY(volume.isSystemDisk(QStringLiteral("/run")));
    QVERIFY(!volume.isSystemDisk(card));
}

void tst_Volume::aBindOfTheSystemDiskIsTheSystemDisk()
{
#ifdef Q_OS_LINUX
    if (!QStorageInfo::root().device().startsWith("/dev/"))
        QSKIP("the system's disk has no device of its own here");
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("outer"));
    TmpfsMount outer(folder, "size=64k");
    if (!outer.isMounted())
        QSKIP("mounting is not possible here");
    const QString bound = folder + QStringLiteral("/bound");
    QVERIFY(QDir().mkdir(bound));
    const QByteArray native = QFile::encodeName(bound);
    QCOMPARE(mount("/usr", native.constData(), nullptr, MS_BIND, nullptr), 0);
    const bool isSystem = SystemVolume().isSystemDisk(bound);
    umount2(native.constData(), MNT_DETACH);
    QVERIFY(isSystem);
#else
    QSKIP("needs bind mounts");
#endif
}

void tst_Volume::aFolderTakenForAMemory_data()
{
    QTest::addColumn<QString>("below");
    QTest::addColumn<bool>("isRoot");
    QTest::newRow("the folder itself") << QString() << true;
    QTest::newRow("with a trailing slash") << QStringLiteral("/") << true;
    QTest::newRow("with dots") << QStringLiteral("/songs/..") << true;
    QTest::newRow("a folder in it") << QStringLiteral("/songs") << false;
    QTest::newRow("a folder that is not there yet") << QStringLiteral("/new") << false;
}

void tst_Volume::aFolderTakenForAMemory()
{
    QFETCH(QString, below);
    QFETCH(bool, isRoot);
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("songs")));
    const FolderVolume volume(dir.path() + QStringLiteral("/"));
    QCOMPARE(volume.rootOf(dir.path() + below), dir.path());
    QCOMPARE(volume.isRootFolder(dir.path() + below), isRoot);
    QVERIFY(!volume.isSystemDisk(dir.path() + below)); // also where it lies on the system disk
    QVERIFY(!volume.isSystemDisk(QStringLiteral("/")));
}

QTEST_GUILESS_MAIN(tst_Volume)
#include "tst_volume.moc"
