#include "storage/disk.h"

#include "tests/storage/foldertest.h"
#include "tests/storage/tmpfsmount.h"

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/xattr.h>
#endif

using namespace tarvel4;
using namespace SongBytes;

/** What the platform's disk does, and what it calls its failures. */
class tst_Disk : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void replaceOnFat_data()
    {
        QTest::addColumn<int>("step");
        QTest::addColumn<QStringList>("names"); // just before that step
        QTest::newRow("the old file goes out of the way") << 2 << words("b new");
        QTest::newRow("that and the new one's bytes are synced") << 3 << words("b.tarvel4.bak new");
        QTest::newRow("the new one takes the name") << 4 << words("b.tarvel4.bak new");
        QTest::newRow("the names are synced while both are there") << 5 << words("b b.tarvel4.bak");
        QTest::newRow("then the old one goes") << 6 << words("b b.tarvel4.bak");
        QTest::newRow("for good") << 7 << words("b");
    }
    void replaceOnFat()
    {
        QFETCH(int, step);
        write(path("new"), "new");
        write(path("b"), "old");
        FailingDisk disk;
        disk.isFat = true;
        QStringList seen;
        disk.before = [&](const QString &, int) {
            if (disk.operations.size() == step)
                seen = names();
        };
        QVERIFY(disk.replace(path("new"), path("b")));
        QTEST(seen, "names");
        QCOMPARE(disk.operations, fatSteps);
        QCOMPARE(names(), words("b"));
        QCOMPARE(read(path("b")), QByteArray("new"));
    }

    void replaceOfAMissingFileOnFatIsOneStep()
    {
        write(path("new"), "new");
        FailingDisk disk;
        disk.isFat = true;
        QVERIFY(disk.replace(path("new"), path("b")));
        QCOMPARE(disk.operations, words("replace rename"));
        QCOMPARE(read(path("b")), QByteArray("new"));
    }

    void whatIsBesideAReplacedFileOnFatIsKept_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("code");
        QTest::newRow("a foreign bak") << "b.bak"
                                       << "";
        QTest::newRow("one that stayed behind, which is in the way") << "b.tarvel4.bak"
                                                                     << "already-exists";
    }
    void whatIsBesideAReplacedFileOnFatIsKept()
    {
        QFETCH(QString, name);
        QFETCH(QString, code);
        write(path("new"), "new");
        write(path("b"), "old");
        write(path(name), "older");
        FailingDisk disk;
        disk.isFat = true;
        const LogCapture capture;
        QCOMPARE(disk.replace(path("new"), path("b")).codeName(), code);
        QCOMPARE(read(path("b")), QByteArray(code.isEmpty() ? "new" : "old"));
        QCOMPARE(read(path(name)), QByteArray("older"));
        QCOMPARE(names().size(), code.isEmpty() ? 2 : 3);
        QCOMPARE(LogCapture::tells({path(name)}), !code.isEmpty());
    }

    void everyFailureOnFatLeavesOneWholeFile()
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
            QCOMPARE(isReplaced, step > 5);
            QCOMPARE(read(path("b")), QByteArray(isReplaced ? "new" : "old"));
            QCOMPARE(QFile::exists(path("new")), !isReplaced);
            QCOMPARE(QFile::exists(path("b.tarvel4.bak")), step == 6);
            QCOMPARE(capture.lines().size(), isReplaced ? 1 : 0);
        }
    }

    void whereTheWayBackIsBarredTheOldFileIsNamed()
    {
        write(path("new"), "new");
        write(path("b"), "old");
        FailingDisk disk;
        disk.isFat = true;
        disk.failAt = 4;
        disk.staysBroken = true;
        const LogCapture capture;
        const Outcome outcome = disk.replace(path("new"), path("b"));
        QCOMPARE(outcome.codeName(), "not-restored"_s);
        QCOMPARE(outcome.detail, path("b.tarvel4.bak"));
        QCOMPARE(read(path("b.tarvel4.bak")), QByteArray("old"));
        QCOMPARE(read(path("new")), QByteArray("new"));
        QVERIFY(LogCapture::tells({path("b.tarvel4.bak")}));
    }

    void replaceElsewhereIsOneStep()
    {
        write(path("new"), "new");
        write(path("b"), "old");
        FailingDisk disk;
        if (disk.replace(path("new"), path("b")) && disk.operations == fatSteps)
            QSKIP("The temporary folder is on FAT");
        QCOMPARE(disk.operations, words("replace rename"));
        QCOMPARE(names(), words("b"));
        QCOMPARE(read(path("b")), QByteArray("new"));
    }

    void whatIsMissingIsNotFound()
    {
        write(path("new"), "new");
        for (const bool isFat : {false, true}) {
            FailingDisk disk;
            disk.isFat = isFat;
            QCOMPARE(disk.replace(path("new"), path("nowhere/b")).codeName(), "not-found"_s);
            QCOMPARE(disk.replace(path("missing"), path("new")).codeName(), "not-found"_s);
            QCOMPARE(read(path("new")), QByteArray("new"));
            QCOMPARE(names(), words("new"));
        }
#ifdef Q_OS_LINUX
        QCOMPARE(Disk::real().syncAll({path("nowhere/a")}).codeName(), "not-found"_s);
#endif
    }

    void reserveKeepsTheFile()
    {
        QFile file(write(path("a"), "bytes"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        for (const qint64 size : {1'000'000, 5, 2, 0})
            QVERIFY(Disk::real().reserve(file, size));
        file.close();
#ifdef Q_OS_LINUX
        QCOMPARE(read(path("a")), QByteArray("bytes"));
#else
        QVERIFY(read(path("a")).startsWith("bytes"));
#endif
    }

    void aFullDiskHasNoRoom()
    {
        const TmpfsMount volume(path("small"), "size=64k");
        if (!volume.isMounted())
            QSKIP("A volume can't be mounted here");
        QFile file(write(path("small/a"), QByteArray(40'000, 'a')));
        QVERIFY(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        QCOMPARE(Disk::real().reserve(file, 100'000).codeName(), "no-room"_s);
        QCOMPARE(read(path("small/a")), QByteArray(40'000, 'a'));
        QVERIFY(Disk::real().reserve(file, 60'000)); // what was reserved is given back

        QCOMPARE(Disk::real().write(file, QByteArray(80'000, 'a')).codeName(), "no-room"_s);
        QFile buffered(path("small/b"));
        QVERIFY(buffered.open(QIODevice::WriteOnly));
        QCOMPARE(Disk::real().write(buffered, QByteArray(5'000, 'a')).codeName(), "no-room"_s);
    }

    void whatIsBeyondTheSizeLimitIsTooLarge()
    {
#ifndef Q_OS_UNIX
        QSKIP("There is no such limit here");
#else
        struct rlimit old;
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &old), 0);
        const struct rlimit small = {50'000, old.rlim_max};
        const auto previous = std::signal(SIGXFSZ, SIG_IGN);
        QFile file(path("a"));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        setrlimit(RLIMIT_FSIZE, &small);
        QVERIFY(Disk::real().write(file, QByteArray(50'000, 'a')));
        const Outcome outcome = Disk::real().write(file, QByteArray(10'000, 'a'));
        setrlimit(RLIMIT_FSIZE, &old);
        std::signal(SIGXFSZ, previous);
        QCOMPARE(outcome.codeName(), "too-large"_s);
#endif
    }

    void openForWriting_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("code");
        QTest::newRow("a file that is not there") << "new"
                                                  << "";
        QTest::newRow("a file is emptied") << "file"
                                           << "";
        QTest::newRow("a link is removed, not followed") << "link"
                                                         << "";
        QTest::newRow("a link that leads nowhere, too") << "dangling"
                                                        << "";
        QTest::newRow("a link to a folder, too") << "folderlink"
                                                 << "";
        QTest::newRow("a FIFO is removed, not waited for") << "fifo"
                                                           << "";
        QTest::newRow("a folder stays") << "folder"
                                        << "not-a-file";
        QTest::newRow("a folder that is missing") << "nowhere/x"
                                                  << "not-found";
        QTest::newRow("a name of 300 letters") << QString(300, QLatin1Char('x')) << "name-too-long";
    }
    void openForWriting()
    {
#ifndef Q_OS_UNIX
        QSKIP("There are no such links here");
#else
        QFETCH(QString, name);
        QFETCH(QString, code);
        write(path("file"), "a long text");
        write(path("outside"), "a long text");
        QVERIFY(QDir(path()).mkdir("folder"_s));
        for (const auto &[target, link] :
             {std::pair{"outside", "link"}, {"gone", "dangling"}, {"folder", "folderlink"}})
            QVERIFY(QFile::link(path(target), path(link)));
        QCOMPARE(mkfifo(QFile::encodeName(path("fifo")).constData(), 0600), 0);

        // Where one comes back behind the removal, nothing is opened.
        struct : Disk
        {
            Outcome remove(const QString &) override { return {}; }
        } disk;
        for (const char *other : {"link", "dangling", "folderlink"}) {
            QFile file(path(other));
            QCOMPARE(disk.openForWriting(file).codeName(), "link-out-of-memory"_s);
        }
        QFile fifo(path("fifo"));
        QVERIFY(!disk.openForWriting(fifo));
        // Where it can't be removed, it is said what it is.
        FailingDisk failing;
        failing.failAt = 1;
        QFile link(path("link"));
        QCOMPARE(failing.openForWriting(link).codeName(), "link-out-of-memory"_s);

        QFile file(path(name));
        QCOMPARE(Disk::real().openForWriting(file).codeName(), code);
        QCOMPARE(file.isOpen(), code.isEmpty());
        QCOMPARE(read(path("outside")), QByteArray("a long text"));
        QVERIFY(!QFile::exists(path("gone")));
        QFile another(path("outside"));
        QCOMPARE(Disk::real().createNew(another).codeName(), "already-exists"_s);
        QVERIFY(QFileInfo(path("folder")).isDir());
        if (!code.isEmpty())
            return;
        QVERIFY(Disk::real().write(file, "bytes"));
        file.close();
        QVERIFY(QFileInfo(path(name)).isFile() && !QFileInfo(path(name)).isSymLink());
        QCOMPARE(read(path(name)), QByteArray("bytes"));
#endif
    }

    void remove_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("code");
        QTest::newRow("a file") << "file"
                                << "";
        QTest::newRow("what is not there") << "missing"
                                           << "";
        QTest::newRow("a folder with something in it stays") << "folder"
                                                             << "not-a-file";
    }
    void remove()
    {
        QFETCH(QString, name);
        QFETCH(QString, code);
        write(path("file"), "x");
        QVERIFY(QDir(path()).mkdir("folder"_s));
        write(path("folder/x"), "x");
        QCOMPARE(Disk::real().remove(path(name)).codeName(), code);
        QCOMPARE(QFileInfo::exists(path(name)), !code.isEmpty());
    }

    void inherit()
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
        QCOMPARE(static_cast<int>(status.st_mode & 07777), 02710);
        if (isRoot) {
            QCOMPARE(static_cast<int>(status.st_uid), 12345);
            QCOMPARE(static_cast<int>(status.st_gid), 23456);
        }
#endif
    }

    void inheritKeepsExtendedAttributes()
    {
#ifndef Q_OS_LINUX
        QSKIP("They are kept on Linux only");
#else
        QFile model(write(path("model"), "x"));
        QFile file(path("new"));
        QVERIFY(model.open(QIODevice::ReadOnly));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QByteArray comment("for the wedding\0 in June", 24);
        if (fsetxattr(model.handle(), "user.comment", comment.constData(), 24, 0) != 0)
            QSKIP("This volume keeps no attributes");
        QCOMPARE(fsetxattr(model.handle(), "user.empty", "", 0, 0), 0);
        Disk::inherit(file, model);
        char found[100];
        QCOMPARE(fgetxattr(file.handle(), "user.comment", found, sizeof found), ssize_t(24));
        QCOMPARE(QByteArray(found, 24), comment);
        QCOMPARE(fgetxattr(file.handle(), "user.empty", found, sizeof found), ssize_t(0));
#endif
    }

private:
    const QStringList fatSteps = words("replace rename syncAll rename syncAll remove syncAll");
};

QTEST_GUILESS_MAIN(tst_Disk)
#include "tst_disk.moc"
