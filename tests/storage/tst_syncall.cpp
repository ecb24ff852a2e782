#include "storage/disk.h"

#include "tests/storage/foldertest.h"
#include "tests/storage/tmpfsmount.h"

#include <cerrno>

#ifdef Q_OS_LINUX
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace tarvel4;
using namespace SongBytes;

namespace {

/** A disk that takes every volume for FAT. */
struct FatDisk : Disk
{
    bool losesReplacedFiles(const QString &) const override { return true; }
};

/** What the system was asked to flush, and which of that it fails. */
struct Flushes
{
    QStringList done; ///< the call and the path
    QString failing;
    int error = 0;

    int note(const char *call, int fd)
    {
        const QString path = QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(fd));
        done.append(QLatin1String(call) + QLatin1Char(' ') + path);
        if (failing.isEmpty() || done.last() != failing)
            return 0;
        errno = error;
        return -1;
    }
};

Flushes flushes;

} // namespace

#ifdef Q_OS_LINUX

// In the place of the system's, which show nothing of what they do.
extern "C" int fsync(int fd)
{
    return flushes.note("fsync", fd);
}

extern "C" int syncfs(int fd) noexcept
{
    return flushes.note("syncfs", fd);
}

#endif

/** Which files, folders and volumes are flushed for a list of paths. */
class tst_SyncAll : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
#ifndef Q_OS_LINUX
        QSKIP("The calls are known on Linux alone");
#endif
    }

    void init()
    {
        makeFolder();
        flushes = {};
        m_small = std::make_unique<TmpfsMount>(path("small"), "size=1m");
        for (const char *name : {"a", "b", "small/c", "small/d"})
            write(path(name), name);
        QVERIFY(QDir(path()).mkdir("folder"_s));
#ifdef Q_OS_LINUX
        QCOMPARE(mkfifo(QFile::encodeName(path("fifo")).constData(), 0600), 0);
#endif
        QVERIFY(QFile::link(path("small/c"), path("link")));
        QVERIFY(QFile::link(path("fifo"), path("fifolink")));
    }
    void cleanup()
    {
        m_small.reset();
    }

    void whatIsFlushed_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<bool>("isFat");
        QTest::addColumn<int>("files"); // fsync of a file or folder
        QTest::addColumn<int>("volumes");
        QTest::newRow("a single file is flushed by itself, with its folder")
            << words("a") << false << 2 << 0;
        QTest::newRow("on FAT its volume is") << words("a") << true << 0 << 1;
        QTest::newRow("many files' volume is flushed once")
            << words("a b folder gone") << false << 0 << 1;
        QTest::newRow("of two volumes each is flushed once")
            << words("a small/c b small/d") << false << 0 << 2;
        QTest::newRow("a link's name and its file are on two volumes")
            << words("link") << false << 0 << 2;
        QTest::newRow("a FIFO is not opened, its folder is") << words("fifo") << false << 0 << 1;
        QTest::newRow("a link to a FIFO is not followed") << words("fifolink") << false << 0 << 1;
        QTest::newRow("a FIFO among files keeps none of them from being flushed")
            << words("fifo small/c a") << false << 0 << 2;
        QTest::newRow("of a file that is gone the name is flushed")
            << words("gone") << false << 0 << 1;
        QTest::newRow("a folder that a volume is mounted on is that volume")
            << words("small") << false << 0 << 1;
        QTest::newRow("of no path nothing is flushed") << QStringList() << false << 0 << 0;
    }
    void whatIsFlushed()
    {
        QFETCH(QStringList, names);
        QFETCH(bool, isFat);
        QFETCH(int, files);
        QFETCH(int, volumes);
        if (!m_small->isMounted())
            QSKIP("A volume can't be mounted here");
        FatDisk fat;
        QVERIFY((isFat ? fat : Disk::real()).syncAll(paths(names)));
        QCOMPARE(flushes.done.filter("fsync "_s).size(), files);
        QCOMPARE(flushes.done.filter("syncfs "_s).size(), volumes);
        QVERIFY(flushes.done.filter("fifo"_s).isEmpty());
        if (files > 0) {
            QCOMPARE(flushes.done.first(), "fsync "_s + path(names.first()));
            QCOMPARE(flushes.done.last(), "fsync "_s + path());
        }
        const bool hasSmall = !names.filter("small"_s).isEmpty() || names.contains("link"_s);
        QCOMPARE(flushes.done.filter("small"_s).size(), hasSmall ? 1 : 0);
    }

    void aFailureIsToldOfItsPath_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("failing");
        QTest::addColumn<int>("error");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("blamed");
        QTest::addColumn<int>("flushed");
        QTest::newRow("a missing folder, and the other file is flushed")
            << words("nowhere/x a") << "" << 0 << "not-found"
            << "nowhere/x" << 1;
        QTest::newRow("a folder of a name too long")
            << QStringList{QString(300, QLatin1Char('x'))} << "" << 0 << "name-too-long"
            << QString(300, QLatin1Char('x')) << 0;
        QTest::newRow("a single file's bytes")
            << words("a") << "fsync %1/a" << EIO << "medium-failed"
            << "a" << 1;
        QTest::newRow("a single file that came to be none")
            << words("a") << "fsync %1/a" << EINVAL << "medium-failed"
            << "a" << 1;
        QTest::newRow("a single file's name") << words("a") << "fsync %1" << EIO << "medium-failed"
                                              << "" << 2;
        QTest::newRow("a folder for which there is nothing to flush is none")
            << words("a") << "fsync %1" << EINVAL << ""
            << "" << 2;
        QTest::newRow("the first volume, and the second is flushed")
            << words("a small/c") << "syncfs %1/a" << EIO << "medium-failed"
            << "a" << 2;
        QTest::newRow("the second volume")
            << words("a small/c") << "syncfs %1/small/c" << ENOSPC << "no-room"
            << "small/c" << 2;
    }
    void aFailureIsToldOfItsPath()
    {
        QFETCH(QStringList, names);
        QFETCH(QString, failing);
        QFETCH(int, error);
        QFETCH(QString, code);
        QFETCH(QString, blamed);
        QFETCH(int, flushed);
        if (!m_small->isMounted())
            QSKIP("A volume can't be mounted here");
        flushes.failing = failing.contains("%1"_s) ? failing.arg(path()) : failing;
        flushes.error = error;
        const Outcome outcome = Disk::real().syncAll(paths(names));
        QCOMPARE(outcome.codeName(), code);
        QCOMPARE(flushes.done.size(), flushed);
        if (!outcome)
            QCOMPARE(outcome.path, blamed.isEmpty() ? path() : path(blamed));
    }

    void whatMayNotBeReadIsFlushedByTheOther_data()
    {
        QTest::addColumn<QString>("unreadable");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("flushed");
        QTest::newRow("a file, by its folder") << "a" << words("a") << "syncfs %1";
        QTest::newRow("files, by another one") << "a" << words("a b") << "syncfs %1";
        QTest::newRow("a folder, by a file in it")
            << "folder" << words("folder/gone folder/e") << "syncfs %1/folder/e";
        QTest::newRow("a folder with nothing in it is told")
            << "folder" << words("folder/gone") << "";
    }
    void whatMayNotBeReadIsFlushedByTheOther()
    {
#ifdef Q_OS_LINUX
        QFETCH(QString, unreadable);
        QFETCH(QStringList, names);
        QFETCH(QString, flushed);
        write(path("folder/e"), "e");
        const QByteArray name = QFile::encodeName(path(unreadable));
        QCOMPARE(chmod(name.constData(), 0311), 0);
        constexpr uid_t nobody = 65534;
        const bool isRoot = geteuid() == 0;
        QCOMPARE(chmod(QFile::encodeName(path()).constData(), 0755), 0);
        QVERIFY(!isRoot || seteuid(nobody) == 0);
        const Outcome outcome = Disk::real().syncAll(paths(names));
        QVERIFY(!isRoot || seteuid(0) == 0);
        QCOMPARE(chmod(name.constData(), 0700), 0);
        QCOMPARE(flushes.done,
                 flushed.isEmpty() ? QStringList() : QStringList(flushed.arg(path())));
        QCOMPARE(outcome.codeName(), flushed.isEmpty() ? "write-denied"_s : QString());
#endif
    }

    void syncFlushesAFileWithoutItsName()
    {
        QFile file(path("a"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write("x"), static_cast<qint64>(1));
        QVERIFY(Disk::real().sync(file));
        QCOMPARE(read(path("a")), QByteArray("x"));
        QCOMPARE(flushes.done, QStringList("fsync "_s + path("a")));
    }

private:
    QStringList paths(const QStringList &names) const
    {
        QStringList all;
        for (const QString &name : names)
            all.append(path(name));
        return all;
    }

    std::unique_ptr<TmpfsMount> m_small;
};

QTEST_GUILESS_MAIN(tst_SyncAll)
#include "tst_syncall.moc"
