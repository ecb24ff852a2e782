#include "tests/library/logcapture.h"
#include "tests/songs/savefixture.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/tmpfsmount.h"

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace tarvel4;

using namespace SaveFixture;
using namespace SongBytes;

/** What is on disk after a save that failed. */
class tst_SongSaveFailures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<Folder>(); }
    void everyFailureLeavesTheOldSong_data();
    void everyFailureLeavesTheOldSong();
    void eachFailureOfAnMp3HasItsLine_data();
    void eachFailureOfAnMp3HasItsLine();
    void aDeadMediumLosesNoMp3_data();
    void aDeadMediumLosesNoMp3();
    void wherePuttingBackFailsTheLogSaysSo();
    void fullDisk_data();
    void fullDisk();
    void sizeLimit_data();
    void sizeLimit();
    void readOnlyVolume_data();
    void readOnlyVolume();
    void onFatTheOldSongIsKeptUntilTheNewOneIsSafe();
    void aVanishedMidiSongIsWrittenAgain();

private:
    template <typename Name> QString path(const Name &name) const { return m_folder->path(name); }
    QString path() const { return m_folder->path(); }
    QStringList names() const { return m_folder->names(); }

    std::unique_ptr<Folder> m_folder;
};

void tst_SongSaveFailures::everyFailureLeavesTheOldSong_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("isFat");

    const QString longer(60, QLatin1Char('T'));
    QTest::newRow("a MIDI song that grows") << latin1("mid") << longer << false;
    QTest::newRow("a MIDI song that shrinks") << latin1("mid") << latin1("T") << false;
    QTest::newRow("an MF3 song") << latin1("mf3") << longer << false;
    QTest::newRow("an MF4 song") << latin1("mf4") << latin1("T") << false;
    QTest::newRow("an MF5 song") << latin1("mf5") << longer << false;
    QTest::newRow("an MP3 song that grows") << latin1("mp3") << longer << false;
    QTest::newRow("an MP3 song that shrinks") << latin1("mp3") << QString() << false;
    QTest::newRow("an MP3 song on FAT") << latin1("mp3") << longer << true;
}

void tst_SongSaveFailures::everyFailureLeavesTheOldSong()
{
    QFETCH(QString, suffix);
    QFETCH(QString, title);
    QFETCH(bool, isFat);

    const QByteArray old = songOf(suffix);
    const QString file = path(QLatin1String("song.") + suffix);
    int failures = 0;
    for (int step = 1;; ++step) {
        write(file, old);
        FailingDisk disk;
        disk.failAt = step;
        disk.isFat = isFat;
        MetaSong song = imported(file, disk);
        setTitle(song, title);
        const LogCapture capture;
        const auto isSaved = static_cast<bool>(song.saveToFile(file));
        const bool hasFailed = disk.operations.size() >= step;
        if (isSaved && !hasFailed) {
            QVERIFY(read(file) != old);
            break;
        }
        // Only the clearing up after a replaced file may fail without harm, and the names may not
        // be known to be safe once the new song stands there.
        const QString operation = disk.operations.at(step - 1);
        const bool isReplaced = operation == latin1("syncFolder")
            || (isFat && disk.operations.mid(0, step).contains(latin1("remove")));
        QCOMPARE(isSaved, isReplaced && operation != latin1("syncFolder"));
        QVERIFY(isReplaced ? read(file) != old && imported(file).format() == MetaSong::Mp3
                           : read(file) == old);
        QVERIFY(!capture.lines().isEmpty());
        if (operation == latin1("remove"))
            QVERIFY(QFile::remove(file + QLatin1String(".tarvel4.bak")));
        QCOMPARE(names(), QStringList(QFileInfo(file).fileName()));
        ++failures;
    }
    QVERIFY(failures >= 3);
}

void tst_SongSaveFailures::eachFailureOfAnMp3HasItsLine_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("line");

    const QString copy = latin1("[MetaSong::saveToFile] Impossible to copy part of file.");
    QTest::newRow("the tag can't be written")
        << 1 << latin1("write")
        << latin1("[MetaSong::saveToFile] Impossible to write tag of file.");
    QTest::newRow("the audio can't be written") << 2 << latin1("write") << copy;
    QTest::newRow("its second block can't be written") << 3 << latin1("write") << copy;
}

void tst_SongSaveFailures::eachFailureOfAnMp3HasItsLine()
{
    QFETCH(int, step);
    QFETCH(QString, operation);
    QFETCH(QString, line);

    const QByteArray old = songOf(latin1("mp3"));
    QVERIFY(old.size() > 100'000);
    const QString file = write(path("song.mp3"), old);
    FailingDisk disk;
    disk.failAt = step;
    MetaSong song = imported(file, disk);
    const LogCapture capture;
    QVERIFY(!song.saveToFile(file));
    QCOMPARE(disk.operations.value(step - 1), operation);
    QCOMPARE(capture.lines().value(0), line);
    QCOMPARE(read(file), old);
}

void tst_SongSaveFailures::aDeadMediumLosesNoMp3_data()
{
    QTest::addColumn<bool>("isFat");
    QTest::newRow("where names change in one step") << false;
    QTest::newRow("on FAT") << true;
}

void tst_SongSaveFailures::aDeadMediumLosesNoMp3()
{
    QFETCH(bool, isFat);

    const QByteArray old = songOf(latin1("mp3"));
    const QString file = path("song.mp3");
    QByteArray saved;
    for (int step = 14; step >= 1; --step) { // the first rounds fail nowhere
        const QStringList left = names();
        for (const QString &name : left)
            QFile::remove(path(name));
        write(file, old);
        FailingDisk disk;
        disk.failAt = step;
        disk.staysBroken = true;
        disk.isFat = isFat;
        MetaSong song = imported(file, disk);
        setTitle(song, latin1("New"));
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

void tst_SongSaveFailures::wherePuttingBackFailsTheLogSaysSo()
{
    const QString file = write(path("a.mid"), songOf(latin1("mid")));
    FailingDisk disk;
    disk.failAt = 2; // the write
    disk.staysBroken = true;
    MetaSong song = imported(file, disk);
    setTitle(song, latin1("New"));
    const LogCapture capture;
    QVERIFY(!song.saveToFile(file));
    QVERIFY(LogCapture::tells({latin1("NOT back"), file}));
}

void tst_SongSaveFailures::fullDisk_data()
{
    addSuffixRows();
}

void tst_SongSaveFailures::fullDisk()
{
    QFETCH(QString, suffix);

    const TmpfsMount volume(path("small"), "size=1m");
    if (!volume.isMounted())
        QSKIP("A volume can't be mounted here");
    QByteArray old = songOf(suffix);
    if (suffix == latin1("mid"))
        old.append(QByteArray(4096 - old.size() % 4096 - 10, '\0')); // grows into a new page
    const QString file = write(path(QLatin1String("small/a.") + suffix), old);
    MetaSong song = imported(file);
    for (int bar = 0; bar < 2000; ++bar) // an MFx stream grows by its changes, packed
        song.addMarker(QString::number(bar * 7919 % 10007), quint16(bar * 31));
    setTitle(song, QString(100, QLatin1Char('T')));

    QFile filler(path("small/filler"));
    QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    const QByteArray block(4096, 'x');
    while (filler.write(block) == block.size()) {}
    QVERIFY(!song.saveToFile(file));
    QCOMPARE(read(file), old);
    QCOMPARE(SongBytes::names(path("small")).size(), 2);

    QVERIFY(filler.resize(0));
    QVERIFY(song.saveToFile(file));
    QVERIFY(read(file) != old);
}

void tst_SongSaveFailures::sizeLimit_data()
{
    addSuffixRows("mid mp3");
}

void tst_SongSaveFailures::sizeLimit()
{
#ifndef Q_OS_UNIX
    QSKIP("There is no such limit here");
#else
    QFETCH(QString, suffix);

    const QByteArray old = songOf(suffix);
    const QString file = write(path(QLatin1String("a.") + suffix), old);
    MetaSong song = imported(file);
    setTitle(song, QString(120, QLatin1Char('T')));
    struct rlimit unlimited;
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    struct rlimit limit = unlimited;
    limit.rlim_cur = rlim_t(old.size() + 10);
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    bool isSaved = true;
    {
        const LogCapture capture;
        isSaved = static_cast<bool>(song.saveToFile(file));
    }
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, previous);
    QVERIFY(!isSaved);
    QCOMPARE(read(file), old);
    QCOMPARE(names().size(), 1);
#endif
}

void tst_SongSaveFailures::readOnlyVolume_data()
{
    addSuffixRows("mid mf3 mp3");
}

void tst_SongSaveFailures::readOnlyVolume()
{
    QFETCH(QString, suffix);

    TmpfsMount volume(path("small"), "size=1m");
    if (!volume.isMounted())
        QSKIP("A volume can't be mounted here");
    const QString file = write(path(QLatin1String("small/a.") + suffix), songOf(suffix));
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    QVERIFY(volume.makeReadOnly());
    const LogCapture capture;
    QVERIFY(!song.saveToFile(file));
    QCOMPARE(capture.lines().last(), latin1(notWritable));
    QCOMPARE(read(file), songOf(suffix));
}

void tst_SongSaveFailures::onFatTheOldSongIsKeptUntilTheNewOneIsSafe()
{
    const QByteArray old = songOf(latin1("mp3"));
    const QString file = write(path("song.mp3"), old);
    FailingDisk disk;
    disk.isFat = true;
    int wholeOnes = 0;
    disk.before = [&](const QString &operation) {
        // At each change of names the song is there twice.
        if (operation != latin1("rename") && operation != latin1("remove"))
            return;
        wholeOnes += names().size() == 2 && SongBytes::names(path()).size() == 2;
    };
    MetaSong song = imported(file, disk);
    setTitle(song, latin1("New"));
    QVERIFY(song.saveToFile(file));
    QCOMPARE(wholeOnes, 3);
    QCOMPARE(names(), QStringList(latin1("song.mp3")));
    QCOMPARE(titleIn(file), latin1("New"));
}

void tst_SongSaveFailures::aVanishedMidiSongIsWrittenAgain()
{
    const QString file = write(path("song.mid"), songOf(latin1("mid")));
    FailingDisk disk;
    MetaSong song = imported(file, disk);
    QVERIFY(QFile::remove(file));
    disk.failAt = 2;
    QVERIFY(!song.saveToFile(file));
    QCOMPARE(names(), QStringList());
    disk.failAt = 0;
    QVERIFY(song.saveToFile(file));
    QCOMPARE(read(file), songOf(latin1("mid")));
}

QTEST_GUILESS_MAIN(tst_SongSaveFailures)
#include "tst_songsavefailures.moc"
