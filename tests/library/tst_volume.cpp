#include "library/volume.h"

#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/storage/table.h"
#include "tests/storage/tmpfsmount.h"

#include <QStorageInfo>
#include <QtTest>

using namespace tarvel4;

class tst_Volume : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSystemDisk();
    void aMountedCardAndALinkToIt();
    void aCardOfTheSameKindAsASystemFolderIsNoSystemDisk();
    void aBindOfTheSystemDiskIsTheSystemDisk();
    void drives_data();
    void drives();
    void aSystemDiskIsADriveWithAWindowsFolder_data();
    void aSystemDiskIsADriveWithAWindowsFolder();
    void aFolderTakenForAMemory();
};

void tst_Volume::theSystemDisk()
{
    const SystemVolume volume;
    const QString root = QDir::rootPath();
    for (const char *below : {"", "usr/share", "usr/no/such", "usr/../usr/./share"}) {
        const QString path = root + text(below);
        QVERIFY2(volume.isSystemDisk(path), qPrintable(path));
        QCOMPARE(volume.isRootFolder(path), path == root);
        QVERIFY(path.startsWith(volume.rootOf(path)));
    }
}

void tst_Volume::aMountedCardAndALinkToIt()
{
    QTemporaryDir dir;
    const QString card = dir.filePath(text("my card"));
    TmpfsMount mount(card, "size=64k");
    if (!mount.isMounted())
        QSKIP("mounting is not possible here");
    TestFiles::write(card + text("/songs/a.mid"), "x");

    const SystemVolume volume;
    const QString root = QFileInfo(card).canonicalFilePath();
    for (const char *below : {"", "/", "/songs", "/songs/a.mid", "/not/there"}) {
        const QString path = card + QString::fromLatin1(below);
        QCOMPARE(volume.rootOf(path), root);
        QVERIFY(!volume.isSystemDisk(path));
    }
    for (const char *itself : {"", "/", "/songs/.."})
        QVERIFY2(volume.isRootFolder(card + text(itself)), itself);
    for (const char *below : {"/songs", "/not there"})
        QVERIFY2(!volume.isRootFolder(card + text(below)), below);
    QVERIFY(volume.rootOf(dir.path()) != root);
    QVERIFY(!volume.isRootFolder(dir.path()));

    const QString link = dir.filePath(text("link"));
    QVERIFY(QFile::link(card, link));
    QCOMPARE(volume.rootOf(link), root);
    QVERIFY(volume.isRootFolder(link));
    QVERIFY(!volume.isSystemDisk(link));
}

void tst_Volume::aCardOfTheSameKindAsASystemFolderIsNoSystemDisk()
{
    QTemporaryDir dir;
    const QString card = dir.filePath(text("card"));
    TmpfsMount mount(card, "size=64k");
    TmpfsMount run(text("/run"), "size=64k");
    if (!mount.isMounted() || !run.isMounted())
        QSKIP("mounting is not possible here");
    const SystemVolume volume; // both are called "tmpfs"
    QVERIFY(volume.isSystemDisk(text("/run")));
    QVERIFY(!volume.isSystemDisk(card));
}

void tst_Volume::aBindOfTheSystemDiskIsTheSystemDisk()
{
#ifdef Q_OS_LINUX
    if (!QStorageInfo::root().device().startsWith("/dev/"))
        QSKIP("the system's disk has no device of its own here");
    QTemporaryDir dir;
    const QString folder = dir.filePath(text("outer"));
    TmpfsMount outer(folder, "size=64k");
    if (!outer.isMounted())
        QSKIP("mounting is not possible here");
    const QString bound = folder + text("/bound");
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

void tst_Volume::drives_data()
{
    const Table<QString, QString, bool> row;
    row("a drive's root is its own root", "E:/", "E:/", true);
    row("a folder of a drive is not its root", "E:/songs", "E:/", false);
    row("nor is one with a name of one letter", "E:/s", "E:/", false);
    row("nor a file far below it", "E:/songs/Pop/a.mid", "E:/", false);
}

void tst_Volume::drives()
{
    const auto [path, root, isRoot] = cells<QString, QString, bool>();
    const DriveVolume volume;
    QCOMPARE(volume.rootOf(path), root);
    QCOMPARE(volume.isRootFolder(path), isRoot);
}

void tst_Volume::aSystemDiskIsADriveWithAWindowsFolder_data()
{
    const Table<QString, bool> row;
    row("the root of the drive with the folder", "C:/", true);
    row("a folder of that drive", "C:/Users/anna", true);
    row("the folder itself", "C:/WINDOWS", true);
    row("a folder of a drive without one", "E:/songs", false);
    row("one below the root is none", "F:/old/disk", false);
    row("a file of that name is none", "G:/", false);
    row("a drive that is not there", "H:/", false);
}

void tst_Volume::aSystemDiskIsADriveWithAWindowsFolder()
{
#ifdef Q_OS_WIN
    QSKIP("drives are no folders here; theSystemDisk() has the real one");
#endif
    const auto [path, isSystem] = cells<QString, bool>();
    QTemporaryDir dir; // its folders are the drives of a relative path
    for (const char *folder : {"C:/WINDOWS", "C:/Users/anna", "E:/songs", "F:/old/WINDOWS", "G:"})
        QVERIFY(QDir(dir.path()).mkpath(text(folder)));
    TestFiles::write(dir.filePath(text("G:/WINDOWS")), "a file");
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(dir.path()));
    const bool found = DriveVolume().isSystemDisk(path);
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(found, isSystem);
}

void tst_Volume::aFolderTakenForAMemory()
{
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(text("songs")));
    const FolderVolume volume(dir.path() + text("/"));
    for (const char *below : {"", "/", "/songs/..", "/songs", "/new"}) {
        const QString path = dir.path() + text(below);
        QCOMPARE(volume.rootOf(path), dir.path());
        QCOMPARE(volume.isRootFolder(path), QDir::cleanPath(path) == dir.path());
        QVERIFY(!volume.isSystemDisk(path)); // also where it lies on the system disk
    }
    QVERIFY(!volume.isSystemDisk(text("/")));
}

QTEST_GUILESS_MAIN(tst_Volume)
#include "tst_volume.moc"
