#include "tests/storage/savefixture.h"
#include "tests/storage/tmpfsmount.h"

#include "storage/journalrecovery.h"

#ifdef Q_OS_UNIX
#include <sys/wait.h>
#endif

using namespace tarvel4;
using namespace SongBytes;

namespace {

const QByteArray oldSong = "SONG old title, and what the old song goes on with";
const QByteArray newSong = "SONG brand new title, and what the old song goes on with";
const QByteArray tornSong = newSong.left(10) + oldSong.mid(10);

} // namespace

/** A recovery that can't go on, or is cut short itself, is made good by the next one. */
class tst_RecoveryFaults : public SaveTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void aSongThatCantBeReachedWaits_data()
    {
        const Table<QString, QString> row;
        row("because it is gone", "gone", "not-found");
        row("because its card is gone", "card gone", "not-found");
        row("because a folder has its name", "folder", "not-a-file");
        row("because a FIFO has its name", "fifo", "not-a-file");
        row("because it may not be read", "unreadable", "read-denied");
        row("because its volume is read-only", "read-only", "read-only-volume");
    }
    void aSongThatCantBeReachedWaits()
    {
        const auto [fault, code] = cells<QString, QString>();
        SKIP_WITHOUT_UNIX(fault == "fifo"_s, "FIFO");
        SKIP_WITHOUT_UNIX(fault == "unreadable"_s, "user that a program can become");
#ifdef Q_OS_UNIX
        if (fault == "unreadable"_s && geteuid() != 0)
            QSKIP("Only root can become nobody here");
#endif
        std::unique_ptr<TmpfsMount> volume;
        QVERIFY(QDir().mkdir(path("card")));
        if (fault == "read-only"_s) {
            volume = std::make_unique<TmpfsMount>(path("card"), "size=1m");
            if (!volume->isMounted())
                QSKIP("A volume can't be mounted here");
        }
        const QString file = write(path("card/a.mid"), oldSong);
        {
            Journal journal(journalFolder());
            noteAndDie(journal, file, Way::InPlace, newSong);
            write(file, tornSong);
        }
        makeUnreachable(fault, file, volume.get());
        for (int round = 0; round < 3; ++round) {
            if (fault == "unreadable"_s) {
                waitsForNobody(file, round == 0);
            } else {
                Journal journal(journalFolder());
                QCOMPARE(recover(journal),
                         round == 0 ? QStringList("5 a.mid "_s + code) : QStringList());
            }
            QVERIFY(Journal(journalFolder()).runs()->isEmpty());
        }
        volume.reset();
        QDir().mkpath(path("card"));
        QDir().rmdir(file);
        QFile::remove(file);
        write(file, tornSong);
        Journal journal(journalFolder());
        QCOMPARE(recover(journal), QStringList("4 a.mid "_s));
        QCOMPARE(read(file), oldSong);
        QCOMPARE(recover(journal), QStringList());
    }

    void aCardThatCameBackUnderAnotherPathIsLeftAsItIs_data()
    {
        const Table<bool, QString, QByteArray> row;
        row("until it has its old path again", false, "4 a.mid ", oldSong);
        row("and for good where its song was edited there", true, "6 a.mid ",
            "SONG as it was edited there");
    }
    void aCardThatCameBackUnderAnotherPathIsLeftAsItIs()
    {
        const auto [isEdited, result, left] = cells<bool, QString, QByteArray>();
        QVERIFY(QDir().mkdir(path("card")));
        const QString file = write(path("card/a.mid"), oldSong);
        const QString elsewhere = path("card 2/a.mid");
        Journal journal(journalFolder());
        noteAndDie(journal, file, Way::InPlace, newSong);
        write(file, tornSong);
        QVERIFY(QDir().rename(path("card"), path("card 2")));
        QCOMPARE(recover(journal), QStringList("5 a.mid not-found"_s));
        QCOMPARE(read(elsewhere), tornSong);
        if (isEdited)
            QVERIFY(save(journal, elsewhere, left));
        QCOMPARE(recover(journal), QStringList());
        QVERIFY(QDir().rename(path("card 2"), path("card")));
        QCOMPARE(recover(journal), QStringList(result));
        QCOMPARE(read(file), left);
        QCOMPARE(recover(journal), QStringList());
    }

    void aRecoveryThatIsCutShortIsMadeGood_data()
    {
        Table<bool, QByteArray, QByteArray, bool>();
        for (const bool staysBroken : {false, true}) {
            const char *how = staysBroken ? "for good" : "once";
            QTest::addRow("over a torn song, where the disk fails %s", how)
                << false << tornSong << oldSong << staysBroken;
            QTest::addRow("over a song that grew, where the disk fails %s", how)
                << false << newSong.left(55) << oldSong << staysBroken;
            QTest::addRow("over a song with its new bytes, where the disk fails %s", how)
                << false << newSong << newSong << staysBroken;
            QTest::addRow("over a new file beside, where the disk fails %s", how)
                << true << oldSong << oldSong << staysBroken;
        }
    }
    void aRecoveryThatIsCutShortIsMadeGood()
    {
        const auto [isBeside, found, left, staysBroken] =
            cells<bool, QByteArray, QByteArray, bool>();
        int step = 1;
        for (;; ++step) {
            makeFolder();
            write(path("a.mp3"), oldSong);
            Journal journal(journalFolder());
            noteAndDie(journal, path("a.mp3"), isBeside ? Way::Beside : Way::InPlace, newSong,
                       path("a.tmp"));
            write(path("a.mp3"), found);
            if (isBeside)
                write(path("a.tmp"), newSong.left(30));
            FailingDisk disk;
            disk.failAt = step;
            disk.staysBroken = staysBroken;
            const QStringList first = recover(journal, disk);
            const QStringList second = recover(journal);
            QCOMPARE(read(path("a.mp3")), left);
            if (disk.operations.size() < step)
                break;
            // What is told to be back is back, and nothing is told of that is not known.
            if (first.contains("4 a.mp3 "_s))
                QVERIFY(!second.contains("4 a.mp3 "_s));
            QVERIFY(first.filter("5 a.mp3"_s).size() <= 1 && second.filter("5"_s).isEmpty());
            QCOMPARE(recover(journal), QStringList());
        }
        QVERIFY(step > 1);
    }

    void aSaveThatWasKilledAnywhere_data()
    {
        Table<bool, bool, bool>(); // isHalf: the last write
        for (const bool isHalf : {false, true}) {
            const char *where = isHalf ? "within" : "before";
            QTest::addRow("in its place, %s any step", where) << false << false << isHalf;
            QTest::addRow("beside, %s any step", where) << true << false << isHalf;
            QTest::addRow("beside on FAT, %s any step", where) << true << true << isHalf;
        }
    }
    void aSaveThatWasKilledAnywhere()
    {
        const auto [isBeside, isFat, isHalf] = cells<bool, bool, bool>();
        SKIP_WITHOUT_UNIX(true, "fork() of a test, to be killed");
        const QByteArrayList songs{"a", "b", "c"};
        int step = 1;
        for (bool isDone = false; !isDone; ++step) {
            makeFolder();
            for (const QByteArray &song : songs)
                write(path(song.constData()), oldSong);
            isDone = inAnotherProgram([&, isBeside = isBeside, isFat = isFat, isHalf = isHalf] {
                FailingDisk disk;
                disk.isFat = isFat;
                disk.before = [&disk, step, isHalf](const QString &, int) {
                    const int now = static_cast<int>(disk.operations.size());
                    if (now == step + (isHalf ? 1 : 0))
                        _exit(1);
                    disk.failAt = isHalf ? step : 0;
                };
                Journal journal(journalFolder());
                Journal::Run run(journal, "sync"_s);
                SaveBatch batch(disk, &run);
                for (const QByteArray &song : songs)
                    add(batch, path(song.constData()), isBeside ? Way::Beside : Way::InPlace,
                        newSong);
                batch.commit();
            });
            Journal journal(journalFolder());
            recover(journal);
            int saved = 0;
            for (const QByteArray &song : songs) {
                const QByteArray now = read(path(song.constData()));
                QVERIFY2(now == oldSong || now == newSong, now.constData());
                saved += now == newSong;
            }
            QCOMPARE(names(), words("a b c data"));
            QCOMPARE(SongBytes::names(journalFolder()), words("journal.db"));
            QCOMPARE(recover(journal), QStringList());
            const QVector<JournalRun> runs = journal.runs().value();
            QCOMPARE(runs.isEmpty() ? 0 : runs.first().songs, saved);
        }
        QVERIFY(step > 4);
    }

    void aDeadMediumIsPutInOrderLater_data()
    {
        const Table<bool, bool> row;
        row("in its place", false, false);
        row("beside", true, false);
        row("beside on FAT", true, true);
    }
    void aDeadMediumIsPutInOrderLater()
    {
        const auto [isBeside, isFat] = cells<bool, bool>();
        for (int step = 1; step < 16; ++step) {
            makeFolder();
            const QString file = write(path("a"), oldSong);
            FailingDisk disk;
            disk.failAt = step;
            disk.staysBroken = true;
            disk.isFat = isFat;
            Journal journal(journalFolder());
            const Outcome outcome =
                save(journal, file, newSong, isBeside ? Way::Beside : Way::InPlace, disk);
            recover(journal);
            const bool isNew = outcome || outcome == Outcome::Code::NotConfirmed;
            QVERIFY2(
                read(file) == (isNew ? newSong : oldSong)
                    || (isFat && outcome == Outcome::Code::NotRestored && read(file) == newSong),
                qPrintable("%1: %2, %3"_s.arg(step).arg(outcome.codeName(),
                                                        QString::fromLatin1(read(file)))));
            QCOMPARE(recover(journal), QStringList());
        }
    }

    void aSongBehindALinkComesBackOnFat()
    {
        SKIP_WITHOUT_UNIX(true, "links that Qt makes");
        const QString file = write(path("a.mp3"), oldSong);
        QVERIFY(QFile::link(file, path("link.mp3")));
        Journal journal(journalFolder());
        noteAndDie(journal, path("link.mp3"), Way::Beside, newSong, path("a.tmp"));
        QVERIFY(QFile::rename(file, Recovery::recoveryPathOf(file)));
        QCOMPARE(recover(journal), QStringList("1 a.mp3 "_s));
        QCOMPARE(read(file), oldSong);
    }

    void theLastRunIsTakenBackFirst()
    {
        const QString file = write(path("a.mid"), oldSong);
        Journal journal(journalFolder());
        noteAndDie(journal, file, Way::InPlace, newSong);
        write(file, newSong);
        noteAndDie(journal, file, Way::InPlace, "SONG of a later run");
        write(file, "SONG of a lat");
        QCOMPARE(recover(journal), QStringList("4 a.mid "_s));
        QCOMPARE(read(file), newSong);
        QCOMPARE(journal.runs()->size(), 1);
    }

private:
    /** "RESULT NAME CODE" of each report. */
    static QStringList recover(Journal &journal, Disk &disk = Disk::real())
    {
        QStringList reports;
        JournalRecovery::recover(
            journal, disk, [](const QString &file) { return read(file).startsWith("SONG"); },
            [&](const QString &file, Recovery::Result result, const Outcome &cause) {
                reports += "%1 %2 %3"_s.arg(static_cast<int>(result))
                               .arg(QFileInfo(file).fileName(), cause.codeName());
            });
        return reports;
    }

    /** True when it came to its end by itself. */
    static bool inAnotherProgram([[maybe_unused]] const std::function<void()> &work)
    {
#ifdef Q_OS_UNIX
        const pid_t pid = fork();
        if (pid == 0) {
            work();
            _exit(0);
        }
        int status = 0;
        return pid > 0 && waitpid(pid, &status, 0) == pid && WIFEXITED(status)
            && WEXITSTATUS(status) == 0;
#else
        return false;
#endif
    }

    void makeUnreachable(const QString &fault, const QString &file, TmpfsMount *volume)
    {
        if (fault == "read-only"_s)
            QVERIFY(volume->makeReadOnly());
        else if (fault != "unreadable"_s)
            QVERIFY(QFile::remove(file));
        if (fault == "card gone"_s)
            QVERIFY(QDir().rmdir(path("card")));
        if (fault == "folder"_s)
            QVERIFY(QDir().mkdir(file));
        if (fault == "fifo"_s)
            QVERIFY(UnixFile::makeFifo(file));
#ifdef Q_OS_UNIX
        if (fault == "unreadable"_s)
            QCOMPARE(chmod(QFile::encodeName(file).constData(), 0), 0);
#endif
    }

    /** In a program without root's rights, but with the journal's. */
    void waitsForNobody([[maybe_unused]] const QString &file, [[maybe_unused]] bool isTold)
    {
#ifdef Q_OS_UNIX
        constexpr uid_t nobody = 65534;
        const auto chownTo = [this](uid_t user) {
            for (const QString &name : SongBytes::names(journalFolder()))
                QVERIFY(chown(QFile::encodeName(journalFolder() + QLatin1Char('/') + name), user,
                              gid_t(-1))
                        == 0);
            QVERIFY(chown(QFile::encodeName(journalFolder()), user, gid_t(-1)) == 0);
        };
        chownTo(nobody);
        QCOMPARE(chmod(QFile::encodeName(path()).constData(), 0755), 0);
        const bool isAsExpected = inAnotherProgram([&] {
            if (setuid(nobody) != 0)
                _exit(2);
            Journal journal(journalFolder());
            const QString expected = "5 %1 read-denied"_s.arg(QFileInfo(file).fileName());
            _exit(recover(journal) == (isTold ? QStringList(expected) : QStringList()) ? 0 : 1);
        });
        QVERIFY(isAsExpected);
        chownTo(0);
#endif
    }
};

QTEST_GUILESS_MAIN(tst_RecoveryFaults)
#include "tst_recoveryfaults.moc"
