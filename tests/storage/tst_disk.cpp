#include "storage/disk.h"

#include "storage/newfile.h"
#include "tests/library/logcapture.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/tmpfsmount.h"

#include <QTemporaryDir>
#include <QtTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace tarvel4;

using namespace SongBytes;

class tst_Disk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void replaceOnFat_data();
    void replaceOnFat();
    void replaceOfAMissingFileOnFatIsOneStep();
    void replaceOnFatKeepsAForeignBak();
    void replaceOnFatFailsWhileOneThatStayedBehindIsInTheWay();
    void everyFailureOnFatLeavesOneWholeFile();
    void aNewFileIsThereWholeOrNotAtAll_data();
    void aNewFileIsThereWholeOrNotAtAll();
    void replaceElsewhereIsOneStep();
    void replaceIntoAMissingFolderFails();
    void reserveKeepsTheFile_data();
    void reserveKeepsTheFile();
    void reserveOnAFullDiskFails();
    void writeOnAFullDiskFails();
    void writeBeyondTheSizeLimitFails();
    void openForWriting_data();
    void openForWriting();
    void remove_data();
    void remove();
    void syncs();
    void inherit();

private:
    QString path(const char *name) const { return m_folder->filePath(QLatin1String(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

const QStringList fatSteps = words("syncVolume rename rename syncVolume remove syncVolume");

} // namespace

void tst_Disk::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_Disk::replaceOnFat_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<QStringList>("names"); // just before that step

    QTest::newRow("the new file is synced before anything") << 1 << words("b new");
    QTest::newRow("the old file goes out of the way") << 2 << words("b new");
    QTest::newRow("the new one takes the name") << 3 << words("b.tarvel4.bak new");
    QTest::newRow("the names are synced while both are there") << 4 << words("b b.tarvel4.bak");
    QTest::newRow("then the old one goes") << 5 << words("b b.tarvel4.bak");
    QTest::newRow("for good") << 6 << words("b");
}

void tst_Disk::replaceOnFat()
{
    QFETCH(int, step);
    QFETCH(QStringList, names);

    write(path("new"), "new");
    write(path("b"), "old");
    FailingDisk disk;
    disk.isFat = true;
    QStringList seen;
    disk.before = [&](const QString &) {
        if (disk.operations.size() == step)
            seen = SongBytes::names(m_folder->path());
    };
    QVERIFY(disk.replace(path("new"), path("b")));
    QCOMPARE(seen, names);
    QCOMPARE(disk.operations, fatSteps);
    QCOMPARE(SongBytes::names(m_folder->path()), words("b"));
    QCOMPARE(read(path("b")), QByteArray("new"));
}

void tst_Disk::replaceOfAMissingFileOnFatIsOneStep()
{
    write(path("new"), "new");
    FailingDisk disk;
    disk.isFat = true;
    QVERIFY(disk.replace(path("new"), path("b")));
    QCOMPARE(disk.operations, words("rename"));
    QCOMPARE(read(path("b")), QByteArray("new"));
}

void tst_Disk::replaceOnFatKeepsAForeignBak()
{
    write(path("new"), "new");
    write(path("b"), "old");
    write(path("b.bak"), "foreign");
    FailingDisk disk;
    disk.isFat = true;
    QVERIFY(disk.replace(path("new"), path("b")));
    QCOMPARE(read(path("b")), QByteArray("new"));
    QCOMPARE(read(path("b.bak")), QByteArray("foreign"));
    QCOMPARE(names(m_folder->path()), words("b b.bak"));
}

void tst_Disk::replaceOnFatFailsWhileOneThatStayedBehindIsInTheWay()
{
    write(path("new"), "new");
    write(path("b"), "old");
    write(path("b.tarvel4.bak"), "older");
    FailingDisk disk;
    disk.isFat = true;
    const LogCapture capture;
    QVERIFY(!disk.replace(path("new"), path("b")));
    QCOMPARE(read(path("b")), QByteArray("old"));
    QCOMPARE(read(path("b.tarvel4.bak")), QByteArray("older"));
    QVERIFY(capture.lines().value(0).contains(path("b.tarvel4.bak")));
}

void tst_Disk::everyFailureOnFatLeavesOneWholeFile()
{
    for (int step = 1; step <= fatSteps.size(); ++step) {
        write(path("new"), "new");
        write(path("b"), "old");
        QFile::remove(path("b.tarvel4.bak"));
        FailingDisk disk;
        disk.isFat = true;
        disk.failAt = step;
        const LogCapture capture;
        const auto isReplaced = static_cast<bool>(disk.replace(path("new"), path("b")));
        // Once the names are synced the new file is there, whatever becomes of the old one.
        QCOMPARE(isReplaced, step > 4);
        QCOMPARE(read(path("b")), QByteArray(isReplaced ? "new" : "old"));
        QCOMPARE(QFile::exists(path("new")), !isReplaced);
        QCOMPARE(QFile::exists(path("b.tarvel4.bak")), step == 5);
        QCOMPARE(capture.lines().size(), isReplaced ? 1 : 0);
    }
    // Where even the way back is barred, the old file is named in the log.
    write(path("new"), "new");
    write(path("b"), "old");
    QFile::remove(path("b.tarvel4.bak"));
    FailingDisk disk;
    disk.isFat = true;
    disk.failAt = 3;
    disk.staysBroken = true;
    const LogCapture capture;
    QVERIFY(!disk.replace(path("new"), path("b")));
    QCOMPARE(read(path("b.tarvel4.bak")), QByteArray("old"));
    QCOMPARE(read(path("new")), QByteArray("new"));
    QVERIFY(capture.lines().value(0).contains(path("b.tarvel4.bak")));
}

void tst_Disk::aNewFileIsThereWholeOrNotAtAll_data()
{
    QTest::addColumn<bool>("isFat");
    QTest::addColumn<QByteArray>("old");
    QTest::addColumn<QByteArray>("waiting"); // what an earlier replacement left
    QTest::newRow("where there is none") << false << QByteArray() << QByteArray();
    QTest::newRow("over an old one") << false << QByteArray("old") << QByteArray();
    QTest::newRow("over an old one on FAT") << true << QByteArray("old") << QByteArray();
    QTest::newRow("over one that a power cut spoilt")
        << true << QByteArray(9, '\0') << QByteArray("old");
}

void tst_Disk::aNewFileIsThereWholeOrNotAtAll()
{
    QFETCH(bool, isFat);
    QFETCH(QByteArray, old);
    QFETCH(QByteArray, waiting);
    const QString link = path("link");
    QVERIFY(QFile::link(path("b"), link));
    bool hasFailed = true;
    int step = 0;
    while (hasFailed) {
        if (!old.isEmpty())
            write(path("b"), old);
        if (!waiting.isEmpty())
            write(path("b.tarvel4.bak"), waiting);
        for (const char *name : {"b", "b.tarvel4.bak"})
            QFile::setPermissions(path(name), QFile::ReadOwner | QFile::WriteOwner);
        write(path(".b.tarvel4.part"), "of a run that was killed");
        FailingDisk disk;
        disk.isFat = isFat;
        disk.failAt = ++step;
        const LogCapture capture;
        const auto isWritten =
            static_cast<bool>(NewFile::write(disk, old.isEmpty() ? path("b") : link, "new"));
        hasFailed = disk.operations.size() >= step;
        QVERIFY(hasFailed || isWritten);
        const bool isNew =
            isWritten || disk.operations.value(step - 1) == QLatin1String("syncFolder");
        const QByteArray now = read(path("b"));
        const bool isOld = now == old || now == waiting
            || (!waiting.isEmpty() && read(path("b.tarvel4.bak")) == waiting);
        QVERIFY(isNew ? now == "new" : old.isEmpty() ? !QFile::exists(path("b")) : isOld);
        const bool staysBehind = disk.operations.value(step - 1) == QLatin1String("remove");
        QVERIFY(staysBehind || !QFile::exists(path(".b.tarvel4.part")));
        QFile::remove(path("b.tarvel4.bak"));
    }
    QVERIFY(step > 4);
    QVERIFY(QFileInfo(link).isSymLink());
    QVERIFY(old.isEmpty() || !(QFile::permissions(path("b")) & QFile::ReadOther));
}

void tst_Disk::replaceElsewhereIsOneStep()
{
    write(path("new"), "new");
    write(path("b"), "old");
    FailingDisk disk;
    if (disk.replace(path("new"), path("b")) && disk.operations == fatSteps)
        QSKIP("The temporary folder is on FAT");
    QCOMPARE(disk.operations, words("rename"));
    QCOMPARE(names(m_folder->path()), words("b"));
    QCOMPARE(read(path("b")), QByteArray("new"));
}

void tst_Disk::replaceIntoAMissingFolderFails()
{
    write(path("new"), "new");
    for (const bool isFat : {false, true}) {
        FailingDisk disk;
        disk.isFat = isFat;
        QVERIFY(!disk.replace(path("new"), path("nowhere/b")));
        QVERIFY(!disk.replace(path("missing"), path("new")));
        QCOMPARE(read(path("new")), QByteArray("new"));
        QCOMPARE(names(m_folder->path()), words("new"));
    }
}

void tst_Disk::reserveKeepsTheFile_data()
{
    QTest::addColumn<qint64>("size");
    QTest::newRow("more than it has") << qint64(1'000'000);
    QTest::newRow("as much as it has") << qint64(5);
    QTest::newRow("less than it has") << qint64(2);
    QTest::newRow("nothing") << qint64(0);
}

void tst_Disk::reserveKeepsTheFile()
{
    QFETCH(qint64, size);

    QFile file(write(path("a"), "bytes"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(Disk::real().reserve(file, size));
    file.close();
    QVERIFY(read(path("a")).startsWith("bytes"));
#ifdef Q_OS_LINUX
    QCOMPARE(read(path("a")), QByteArray("bytes"));
#endif
}

void tst_Disk::reserveOnAFullDiskFails()
{
    const TmpfsMount volume(path("small"), "size=64k");
    if (!volume.isMounted())
        QSKIP("A volume can't be mounted here");
    QFile file(write(path("small/a"), QByteArray(40'000, 'a')));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(!Disk::real().reserve(file, 100'000));
    QCOMPARE(read(path("small/a")), QByteArray(40'000, 'a'));
    // What was reserved is given back.
    QVERIFY(Disk::real().reserve(file, 60'000));
}

void tst_Disk::writeOnAFullDiskFails()
{
    const TmpfsMount volume(path("small"), "size=64k");
    if (!volume.isMounted())
        QSKIP("A volume can't be mounted here");
    QFile file(path("small/a"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QVERIFY(Disk::real().write(file, QByteArray(60'000, 'a')));
    QVERIFY(!Disk::real().write(file, QByteArray(60'000, 'a')));
    QFile buffered(path("small/b"));
    QVERIFY(buffered.open(QIODevice::WriteOnly));
    QVERIFY(!Disk::real().write(buffered, QByteArray(5'000, 'a')));
}

void tst_Disk::writeBeyondTheSizeLimitFails()
{
#ifndef Q_OS_UNIX
    QSKIP("There is no such limit here");
#else
    struct rlimit old;
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &old), 0);
    struct rlimit small = old;
    small.rlim_cur = 50'000;
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    QFile file(path("a"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    setrlimit(RLIMIT_FSIZE, &small);
    const auto isWritten = static_cast<bool>(Disk::real().write(file, QByteArray(60'000, 'a')));
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, previous);
    QVERIFY(!isWritten);
#endif
}

void tst_Disk::openForWriting_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isOpened");
    QTest::newRow("a file that is not there") << QStringLiteral("new") << true;
    QTest::newRow("a file is emptied") << QStringLiteral("file") << true;
    QTest::newRow("a link is removed, not followed") << QStringLiteral("link") << true;
    QTest::newRow("a link that leads nowhere, too") << QStringLiteral("dangling") << true;
    QTest::newRow("a link to a folder, too") << QStringLiteral("folderlink") << true;
    QTest::newRow("a FIFO is removed, not waited for") << QStringLiteral("fifo") << true;
    QTest::newRow("a folder stays") << QStringLiteral("folder") << false;
    QTest::newRow("a folder that is missing") << QStringLiteral("nowhere/x") << false;
}

void tst_Disk::openForWriting()
{
#ifndef Q_OS_UNIX
    QSKIP("There are no such links here");
#else
    QFETCH(QString, name);
    QFETCH(bool, isOpened);
    write(path("file"), "a long text");
    write(path("outside"), "a long text");
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder")));
    for (const auto &[target, link] :
         {std::pair{"outside", "link"}, {"gone", "dangling"}, {"folder", "folderlink"}})
        QVERIFY(QFile::link(path(target), path(link)));
    QCOMPARE(mkfifo(QFile::encodeName(path("fifo")).constData(), 0600), 0);

    // Where one comes back behind the removal, nothing is opened.
    struct : Disk
    {
        Outcome remove(const QString &) override { return {}; }
    } disk;
    for (const char *other : {"link", "dangling", "folderlink", "fifo"}) {
        QFile file(path(other));
        QVERIFY2(!disk.openForWriting(file), other);
    }

    QFile file(m_folder->filePath(name));
    QCOMPARE(static_cast<bool>(Disk::real().openForWriting(file)), isOpened);
    QCOMPARE(file.isOpen(), isOpened);
    QCOMPARE(read(path("outside")), QByteArray("a long text"));
    QVERIFY(!QFile::exists(path("gone")));
    QVERIFY(QFileInfo(path("folder")).isDir());
    if (!isOpened)
        return;
    QVERIFY(Disk::real().write(file, "bytes"));
    file.close();
    const QFileInfo info(m_folder->filePath(name));
    QVERIFY(info.isFile() && !info.isSymLink());
    QCOMPARE(read(info.filePath()), QByteArray("bytes"));
#endif
}

void tst_Disk::remove_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isGone");
    QTest::newRow("a file") << QStringLiteral("file") << true;
    QTest::newRow("what is not there") << QStringLiteral("missing") << true;
    QTest::newRow("a folder with something in it stays") << QStringLiteral("folder") << false;
}

void tst_Disk::remove()
{
    QFETCH(QString, name);
    QFETCH(bool, isGone);

    write(path("file"), "x");
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder")));
    write(path("folder/x"), "x");
    QCOMPARE(static_cast<bool>(Disk::real().remove(m_folder->filePath(name))), isGone);
    QCOMPARE(QFileInfo::exists(m_folder->filePath(name)), !isGone);
}

void tst_Disk::syncs()
{
    QFile file(path("a"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("x"), qint64(1));
    QVERIFY(Disk::real().sync(file));
    QCOMPARE(read(path("a")), QByteArray("x"));
    QVERIFY(Disk::real().syncFolder(path("a")));
    QVERIFY(Disk::real().syncVolume(path("a")));
    QVERIFY(Disk::real().syncVolume(m_folder->path()));
#ifdef Q_OS_LINUX
    QVERIFY(!Disk::real().syncFolder(path("nowhere/a")));
    QVERIFY(!Disk::real().syncVolume(path("nowhere")));
#endif
}

void tst_Disk::inherit()
{
#ifndef Q_OS_UNIX
    QSKIP("There are no such permissions here");
#else
    QFile model(write(path("model"), "x"));
    QFile file(path("new"));
    QVERIFY(model.open(QIODevice::ReadOnly));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(chmod(QFile::encodeName(model.fileName()).constData(), 02710), 0);
    const bool isRoot = geteuid() == 0;
    if (isRoot)
        QCOMPARE(chown(QFile::encodeName(model.fileName()).constData(), 12345, 23456), 0);
    // A change of owner took the bit away; the new file has it again.
    QCOMPARE(chmod(QFile::encodeName(model.fileName()).constData(), 02710), 0);
    Disk::inherit(file, model);
    struct stat status;
    QCOMPARE(fstat(file.handle(), &status), 0);
    QCOMPARE(int(status.st_mode & 07777), 02710);
    if (isRoot) {
        QCOMPARE(int(status.st_uid), 12345);
        QCOMPARE(int(status.st_gid), 23456);
    }
#endif
}

QTEST_GUILESS_MAIN(tst_Disk)
#include "tst_disk.moc"
