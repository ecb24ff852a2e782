#include "tests/songs/songfixture.h"
#include "tests/storage/tmpfsmount.h"
#include "tests/storage/unixfile.h"

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

/** What is on disk after a save that failed. */
class tst_SongSaveFailures : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void everyFailureLeavesTheOldSong_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("title");
        QTest::addColumn<bool>("isFat");
        const QString longer(60, QLatin1Char('T'));
        QTest::newRow("a MIDI song that grows") << "mid" << longer << false;
        QTest::newRow("a MIDI song that shrinks") << "mid"
                                                  << "T" << false;
        QTest::newRow("an MF3 song") << "mf3" << longer << false;
        QTest::newRow("an MF4 song") << "mf4"
                                     << "T" << false;
        QTest::newRow("an MP3 song that grows") << "mp3" << longer << false;
        QTest::newRow("an MP3 song that shrinks") << "mp3"
                                                  << "" << false;
        QTest::newRow("an MP3 song on FAT") << "mp3" << longer << true;
    }
    void everyFailureLeavesTheOldSong()
    {
        QFETCH(QString, suffix);
        QFETCH(QString, title);
        QFETCH(bool, isFat);
        const QByteArray old = songOf(suffix);
        const QString file = path("song."_s + suffix);
        int step = 1;
        for (;; ++step) {
            write(file, old);
            FailingDisk disk;
            disk.failAt = step;
            disk.isFat = isFat;
            MetaSong song = imported(file, disk);
            setTitle(song, title);
            const LogCapture capture;
            const auto isSaved = static_cast<bool>(song.saveToFile(file));
            if (disk.operations.size() < step) {
                QVERIFY(isSaved && read(file) != old);
                break;
            }
            // Where one rename replaces the old song, the new name may not be known to be safe; on
            // FAT only the clearing up after that may fail without harm.
            const QString operation = disk.operations.at(step - 1);
            const QStringList until = disk.operations.mid(0, step);
            const bool isReplaced = isFat ? until.contains("remove"_s)
                                          : operation == "syncAll"_s && until.contains("replace"_s);
            QCOMPARE(isSaved, isReplaced && isFat);
            QVERIFY(isReplaced ? read(file) != old && imported(file).format() == MetaSong::Mp3
                               : read(file) == old);
            // Nothing is lost where the old song's second name stays until a recovery.
            QVERIFY(!capture.lines().isEmpty() || (isSaved && operation == "syncAll"_s));
            if (operation == "remove"_s)
                QVERIFY(QFile::remove(file + ".tarvel4.bak"_s));
            QCOMPARE(names(), QStringList(QFileInfo(file).fileName()));
        }
        QVERIFY(step > 3);
    }

    void eachFailureIsNamed_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<int>("failAt");
        QTest::addColumn<QString>("operation");
        QTest::addColumn<Outcome::Code>("cause"); // that the disk gives
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("line"); // that the log begins with
        using Code = Outcome::Code;
        const auto row = [](const char *name, const char *suffix, int failAt, const char *operation,
                            Code cause, const char *code, const char *line) {
            QTest::newRow(name) << suffix << failAt << operation << cause << code
                                << "[MetaSong::saveToFile] "_s + QLatin1String(line);
        };
        const char *copy = "Impossible to copy part of file.";
        const char *putBack = "Impossible to write all bytes, the old ones go back:";
        row("mid: there is no room", "mid", 1, "reserve", Code::NoRoom, "no-room",
            "No room for the new bytes, the old ones are kept:");
        row("mid: the bytes can't be written", "mid", 2, "write", Code::WriteDenied, "write-denied",
            putBack);
        row("mid: the medium does not take them", "mid", 3, "syncAll", Code::MediumFailed,
            "medium-failed", putBack);
        row("mid: nor does it take the old ones back", "mid", 3, "syncAll", Code::MediumFailed,
            "not-restored", putBack);
        row("mp3: the tag can't be written", "mp3", 1, "write", Code::NoRoom, "no-room",
            "Impossible to write tag of file.");
        row("mp3: the audio can't be written", "mp3", 2, "write", Code::NoRoom, "no-room", copy);
        row("mp3: its second block can't be written", "mp3", 3, "write", Code::NoRoom, "no-room",
            copy);
        row("mp3: the medium does not take it", "mp3", 5, "syncAll", Code::MediumFailed,
            "medium-failed", copy);
        row("mp3: it can't take the song's name", "mp3", 6, "replace", Code::AlreadyExists,
            "already-exists", "Impossible to replace file:");
        row("mp3: its name may not be on the medium", "mp3", 8, "syncAll", Code::MediumFailed,
            "not-confirmed", "WARNING: not known to be on the medium:");
    }
    void eachFailureIsNamed()
    {
        QFETCH(QString, suffix);
        QFETCH(int, failAt);
        QFETCH(Outcome::Code, cause);
        QFETCH(QString, code);
        QFETCH(QString, line);
        if (!UnixFile::isHere && suffix == "mid"_s && failAt > 1)
            failAt += 2; // where no call reserves room, it is had by a write and a flush
        QByteArray old = songOf(suffix);
        if (suffix == "mp3"_s)
            old += QByteArray(2 << 20, 'x'); // three blocks are copied
        const QString file = write(path("song."_s + suffix), old);
        FailingDisk disk;
        disk.failAt = failAt;
        disk.cause = cause;
        disk.staysBroken = code == "not-restored"_s;
        MetaSong song = imported(file, disk);
        setTitle(song, QString(60, QLatin1Char('T')));
        const LogCapture capture;
        const Outcome outcome = song.saveToFile(file);
        QCOMPARE(outcome.codeName(), code);
        QCOMPARE(outcome.path, file);
        QTEST(disk.operations.value(failAt - 1), "operation");
        const QStringList lines = capture.lines().filter("saveToFile"_s);
        QVERIFY2(lines.value(suffix == "mid"_s).startsWith(line),
                 qPrintable(lines.join(QLatin1Char('|'))));
        if (code != "not-restored"_s) {
            QCOMPARE(read(file) == old, code != "not-confirmed"_s);
            return;
        }
        QCOMPARE(outcome.detail, "la song va ripresa da un backup"_s);
        QVERIFY(LogCapture::tells({"NOT back"_s, file}));
    }

    void aDeadMediumLosesNoMp3_data()
    {
        QTest::addColumn<bool>("isFat");
        QTest::newRow("where names change in one step") << false;
        QTest::newRow("on FAT") << true;
    }
    void aDeadMediumLosesNoMp3()
    {
        QFETCH(bool, isFat);
        const QByteArray old = songOf("mp3"_s);
        const QString file = path("song.mp3");
        QByteArray saved;
        for (int step = 15; step >= 1; --step) { // the first rounds fail nowhere
            for (const QString &name : names())
                QFile::remove(path(name));
            write(file, old);
            FailingDisk disk;
            disk.failAt = step;
            disk.staysBroken = true;
            disk.isFat = isFat;
            MetaSong song = imported(file, disk);
            setTitle(song, "New"_s);
            const LogCapture capture;
            if (song.saveToFile(file))
                saved = read(file);
            // Somewhere beside the song, or under its name, it is whole.
            const QStringList whole = names();
            QVERIFY(std::any_of(whole.cbegin(), whole.cend(), [&](const QString &name) {
                const QByteArray bytes = read(path(name));
                return bytes == old || bytes == saved;
            }));
        }
        QVERIFY(!saved.isEmpty());
    }

    void fullDisk_data() { addSuffixRows(); }
    void fullDisk()
    {
        QFETCH(QString, suffix);
        const TmpfsMount volume(path("small"), "size=1m");
        if (!volume.isMounted())
            QSKIP("A volume can't be mounted here");
        QByteArray old = songOf(suffix);
        if (suffix == "mid"_s)
            old.append(QByteArray(4096 - old.size() % 4096 - 10, '\0')); // grows into a new page
        const QString file = write(path("small/a."_s + suffix), old);
        MetaSong song = imported(file);
        for (int bar = 0; bar < 2000; ++bar) // an MFx stream grows by its changes, packed
            song.addMarker(QString::number(bar * 7919 % 10007), static_cast<quint16>(bar * 31));
        setTitle(song, QString(100, QLatin1Char('T')));

        QFile filler(path("small/filler"));
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        const QByteArray block(4096, 'x');
        while (filler.write(block) == block.size()) {}
        QCOMPARE(song.saveToFile(file).codeName(), "no-room"_s);
        QCOMPARE(read(file), old);
        QCOMPARE(SongBytes::names(path("small")).size(), 2);

        QVERIFY(filler.resize(0));
        QVERIFY(song.saveToFile(file));
        QVERIFY(read(file) != old);
    }

    void sizeLimit_data() { addSuffixRows("mid mp3"); }
    void sizeLimit()
    {
#ifndef Q_OS_UNIX
        QSKIP("There is no such limit here");
#else
        QFETCH(QString, suffix);
        const QByteArray old = songOf(suffix);
        const QString file = write(path("a."_s + suffix), old);
        MetaSong song = imported(file);
        setTitle(song, QString(120, QLatin1Char('T')));
        struct rlimit unlimited;
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
        const struct rlimit limit = {rlim_t(old.size() + 10), unlimited.rlim_max};
        const auto previous = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        Outcome outcome;
        {
            const LogCapture capture;
            outcome = song.saveToFile(file);
        }
        setrlimit(RLIMIT_FSIZE, &unlimited);
        std::signal(SIGXFSZ, previous);
        QCOMPARE(outcome.codeName(), "too-large"_s);
        QCOMPARE(read(file), old);
        QCOMPARE(names().size(), 1);
#endif
    }

    void readOnlyVolume_data()
    {
        addSuffixRows("mid mf3 mp3");
    }
    void readOnlyVolume()
    {
        QFETCH(QString, suffix);
        TmpfsMount volume(path("small"), "size=1m");
        if (!volume.isMounted())
            QSKIP("A volume can't be mounted here");
        const QString file = write(path("small/a."_s + suffix), songOf(suffix));
        MetaSong song = imported(file);
        QVERIFY(volume.makeReadOnly());
        const LogCapture capture;
        QCOMPARE(song.saveToFile(file).codeName(), "read-only-volume"_s);
        QCOMPARE(capture.lines().last(), QString::fromLatin1(notWritable));
        QCOMPARE(read(file), songOf(suffix));
    }

    void onFatTheOldSongIsKeptUntilTheNewOneIsSafe()
    {
        const QString file = write(path("song.mp3"), songOf("mp3"_s));
        FailingDisk disk;
        disk.isFat = true;
        int wholeOnes = 0;
        disk.before = [&](const QString &operation, int) {
            // At each change of names the song is there twice.
            if (operation == "rename"_s || operation == "remove"_s)
                wholeOnes += names().size() == 2;
        };
        MetaSong song = imported(file, disk);
        setTitle(song, "New"_s);
        QVERIFY(song.saveToFile(file));
        QCOMPARE(wholeOnes, 3);
        QCOMPARE(names(), words("song.mp3"));
        QCOMPARE(titleIn(file), "New"_s);
    }

    void aVanishedMidiSongIsWrittenAgain()
    {
        const QString file = write(path("song.mid"), songOf("mid"_s));
        FailingDisk disk;
        MetaSong song = imported(file, disk);
        QVERIFY(QFile::remove(file));
        disk.failAt = 2;
        QVERIFY(!song.saveToFile(file));
        QCOMPARE(names(), QStringList());
        disk.failAt = 0;
        QVERIFY(song.saveToFile(file));
        QCOMPARE(read(file), songOf("mid"_s));
    }
};

QTEST_GUILESS_MAIN(tst_SongSaveFailures)
#include "tst_songsavefailures.moc"
