#include "storage/disk.h"

#include "tests/storage/foldertest.h"
#include "tests/storage/tmpfsmount.h"

#ifdef Q_OS_LINUX
#include <algorithm>
#include <cerrno>
#include <sys/syscall.h>
#include <unistd.h>
#endif

using namespace tarvel4;
using namespace SongBytes;

namespace {

/** How the system's copying behaves. */
struct SystemCopy
{
    int error = 0; ///< with which it fails
    int errorAt = 1; ///< from which call on; EINTR: at that one only
    bool isShort = false; ///< it copies a part
    bool copiesNothing = false; ///< and says so
    int calls = 0;
};

SystemCopy systemCopy;

} // namespace

#ifdef Q_OS_LINUX

extern "C" ssize_t copy_file_range(int from, off64_t *source, int to, off64_t *target,
                                   std::size_t size, unsigned flags)
{
    ++systemCopy.calls;
    const bool isReached = systemCopy.error == EINTR ? systemCopy.calls == systemCopy.errorAt
                                                     : systemCopy.calls >= systemCopy.errorAt;
    if (systemCopy.error != 0 && isReached) {
        errno = systemCopy.error;
        return -1;
    }
    if (systemCopy.copiesNothing)
        return 0;
    const std::size_t part = systemCopy.isShort ? std::min<std::size_t>(size, 999'999) : size;
    return syscall(SYS_copy_file_range, from, source, to, target, part, flags);
}

#endif

/** A range of a file copied to another, whatever the system's own copying does. */
class tst_CopyRange : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        systemCopy = {};
    }

    void whateverTheSystemDoesAllBytesAreCopied_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("errorAt");
        QTest::addColumn<bool>("isShort");
        QTest::addColumn<bool>("copiesNothing");
        QTest::addColumn<int>("calls");
        QTest::newRow("it copies all") << 0 << 1 << false << false << 1;
        QTest::newRow("it copies a part each time") << 0 << 1 << true << false << 4;
        QTest::newRow("it copies nothing") << 0 << 1 << false << true << 1;
#ifdef Q_OS_LINUX
        QTest::newRow("it is interrupted") << EINTR << 2 << true << false << 5;
        QTest::newRow("not between these two volumes") << EXDEV << 1 << false << false << 1;
        QTest::newRow("not from its second part on") << EINVAL << 2 << true << false << 2;
        QTest::newRow("not on this file system") << EOPNOTSUPP << 1 << false << false << 1;
        QTest::newRow("it is not there") << ENOSYS << 1 << false << false << 1;
        QTest::newRow("not for a file in use") << ETXTBSY << 1 << false << false << 1;
        QTest::newRow("its failure is one of reading or writing") << EIO << 2 << true << false << 2;
#endif
    }
    void whateverTheSystemDoesAllBytesAreCopied()
    {
        QFETCH(int, error);
        QFETCH(int, errorAt);
        QFETCH(bool, isShort);
        QFETCH(bool, copiesNothing);
        systemCopy = {error, errorAt, isShort, copiesNothing, 0};
        const QByteArray bytes = songBytes();
        for (const bool isBuffered : {false, true}) {
            systemCopy.calls = 0;
            write(path("from"), "before" + bytes + "after");
            write(path("to"), "head, and what is written over" + bytes);
            const QIODevice::OpenMode mode =
                isBuffered ? QIODevice::NotOpen : QIODevice::Unbuffered;
            QFile from(path("from"));
            QFile to(path("to"));
            QVERIFY(from.open(QIODevice::ReadOnly | mode));
            QVERIFY(to.open(QIODevice::ReadWrite | mode));
            QCOMPARE(from.read(6), QByteArray("before"));
            QCOMPARE(to.read(4), QByteArray("head"));
            QVERIFY(Disk::real().copyRange(from, to, bytes.size()));
            QCOMPARE(from.pos(), static_cast<qint64>(6 + bytes.size()));
            QCOMPARE(to.pos(), static_cast<qint64>(4 + bytes.size()));
            QCOMPARE(from.readAll(), QByteArray("after"));
            QVERIFY(Disk::real().write(to, "tail"));
            QVERIFY(Disk::real().truncate(to, 8 + bytes.size()));
            QVERIFY(read(path("to")) == "head" + bytes + "tail");
#ifdef Q_OS_LINUX
            QTEST(systemCopy.calls, "calls");
#endif
        }
    }

    void whatWasNotYetWrittenComesFirst()
    {
        write(path("from"), "bytes");
        QFile from(path("from"));
        QFile to(path("to"));
        QVERIFY(from.open(QIODevice::ReadOnly));
        QVERIFY(to.open(QIODevice::WriteOnly)); // buffered
        QCOMPARE(to.write("head "), static_cast<qint64>(5));
        QVERIFY(Disk::real().copyRange(from, to, 5));
        QVERIFY(Disk::real().copyRange(from, to, 0));
        to.close();
        QCOMPARE(read(path("to")), QByteArray("head bytes"));
    }

    void aSourceThatEndsEarlyIsToldOf()
    {
        for (const bool copiesNothing : {false, true}) {
            systemCopy.copiesNothing = copiesNothing;
            write(path("from"), "bytes");
            QFile from(path("from"));
            QFile to(path("to"));
            QVERIFY(from.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
            QVERIFY(to.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            QVERIFY(from.seek(1));
            const Outcome outcome = Disk::real().copyRange(from, to, 5);
            QCOMPARE(outcome.codeName(), "changed-meanwhile"_s);
            QCOMPARE(outcome.path, path("from"));
            QCOMPARE(read(path("to")), QByteArray("ytes"));
        }
    }

    void aSourceThatCannotBeReadIsToldOf()
    {
#ifndef Q_OS_LINUX
        QSKIP("There is no such file here");
#endif
        QFile from("/proc/self/mem"_s); // nothing is at its begin
        QFile to(path("to"));
        QVERIFY(from.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
        QVERIFY(to.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        const Outcome outcome = Disk::real().copyRange(from, to, 5);
        QCOMPARE(outcome.codeName(), "medium-failed"_s);
        QCOMPARE(outcome.path, from.fileName());
    }

    void aFullVolumeHasNoRoom()
    {
        const TmpfsMount volume(path("small"), "size=64k");
        if (!volume.isMounted())
            QSKIP("A volume can't be mounted here");
        write(path("outside"), QByteArray(80'000, 'a'));
        write(path("small/inside"), QByteArray(40'000, 'a'));
        for (const char *name : {"outside", "small/inside"}) {
            QFile from(path(name));
            QFile to(path("small/to"));
            QVERIFY(from.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
            QVERIFY(to.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            const Outcome outcome = Disk::real().copyRange(from, to, from.size());
            QCOMPARE(outcome.codeName(), "no-room"_s);
            QCOMPARE(outcome.path, path("small/to"));
        }
    }

    void itIsOneWriteOfTheFailingDisk()
    {
#ifdef Q_OS_LINUX
        for (const int error : {0, EXDEV}) {
            systemCopy.error = error;
            for (const int failing : {0, 1}) {
                write(path("from"), "01234567");
                QFile from(path("from"));
                QFile to(path("to"));
                QVERIFY(from.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
                QVERIFY(to.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
                FailingDisk disk;
                disk.failingWrite = failing;
                const Outcome outcome = disk.copyRange(from, to, 8);
                QCOMPARE(outcome.codeName(), failing ? "medium-failed"_s : QString());
                QCOMPARE(read(path("to")), QByteArray(failing ? "0123" : "01234567"));
                QCOMPARE(disk.operations, words("write"));
            }
        }
#endif
    }

private:
    /** More than three blocks, no two of which are the same. */
    static QByteArray songBytes()
    {
        QByteArray bytes;
        for (quint32 i = 0; i < 900'000; ++i)
            bytes.append(bigEndian(i, 4));
        return bytes;
    }
};

QTEST_GUILESS_MAIN(tst_CopyRange)
#include "tst_copyrange.moc"
