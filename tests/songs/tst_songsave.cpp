#include "songs/metasong.h"

#include "failingdisk.h"
#include "mfxbytes.h"
#include "tests/library/logcapture.h"
#include "tests/library/tmpfsmount.h"

#include <QTemporaryDir>
#include <QtTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace SongBytes;

Q_DECLARE_METATYPE(SongInfo)

/** What is on disk after a save, and after one that failed. */
class tst_SongSave : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void imagesThatAreNotSaved_data();
    void imagesThatAreNotSaved();
    void theLargestStreamIsSaved_data();
    void theLargestStreamIsSaved();
    void aMp3TagThatCouldNotBeReadAgainIsNotSaved();
    void saveIsLogged_data();
    void saveIsLogged();

    void mfxSizesFollowTheStream_data();
    void mfxSizesFollowTheStream();
    void mf4FillerIsPutBack();
    void savingUnchangedChangesNothing_data();
    void savingUnchangedChangesNothing();
    void aShorterSongLeavesNoTail();

    void everyFailureLeavesTheOldSong_data();
    void everyFailureLeavesTheOldSong();
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

    void readOnlyFiles_data();
    void readOnlyFiles();
    void permissionsStay_data();
    void permissionsStay();
    void aFailedSaveTakesTheWritePermissionBack_data();
    void aFailedSaveTakesTheWritePermissionBack();
    void notAllowed_data();
    void notAllowed();
    void linksAreFollowed_data();
    void linksAreFollowed();
    void hardLinks_data();
    void hardLinks();
    void notARegularFile_data();
    void notARegularFile();

    void temporaryName_data();
    void temporaryName();
    void aForeignTemporaryFileIsKept_data();
    void aForeignTemporaryFileIsKept();
    void whatAKilledSaveLeftIsCleared_data();
    void whatAKilledSaveLeftIsCleared();
    void sourceChangedBeforeTheSave_data();
    void sourceChangedBeforeTheSave();
    void sourceChangesDuringTheSave_data();
    void sourceChangesDuringTheSave();
    void aVanishedMidiSongIsWrittenAgain();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString path(const char *name) const { return path(QString::fromLatin1(name)); }
    QStringList names() const { return SongBytes::names(m_folder->path()); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

const char unknownFormat[] =
    "[MetaSong::saveToFile] UNKNOWN format (or data corrupted) in memory, aborting";
const char notWritable[] = "[MetaSong::saveToFile] Impossible to write to file. Maybe it's write "
                           "protected? Aborting!";

/** The bytes of a song of some size, by the suffix of its file. */
QByteArray songOf(const QString &suffix)
{
    const QByteArray song = midi1(meta(3, "An old and rather long title") + meta(5, "La la"));
    if (suffix == latin1("mid"))
        return song;
    if (suffix == latin1("mp3"))
        return tag(frame("TIT2", "Old") + QByteArray(30, '\0')) + audio(600);
    const int version = suffix.right(1).toInt();
    return mfx(version, {"Old", "", "", "", "", 0, 0}, version == 4 ? withFiller(song) : song);
}

MetaSong imported(const QString &file, Disk &disk = Disk::real())
{
    MetaSong song(disk);
    if (!song.importFile(file))
        qFatal("the fixture is no song");
    return song;
}

void setTitle(MetaSong &song, const QString &title)
{
    SongInfo info;
    song.readInfo(info);
    info.title = title;
    song.setSongInfo(info, true);
}

QString titleIn(const QString &file)
{
    SongInfo info;
    MetaSong song;
    if (song.importFile(file))
        song.readInfo(info);
    return info.title;
}

void addSuffixRows(const char *suffixes = "mid mf3 mf4 mf5 mp3")
{
    QTest::addColumn<QString>("suffix");
    const QStringList list = latin1(suffixes).split(QLatin1Char(' '));
    for (const QString &suffix : list)
        QTest::newRow(qPrintable(suffix)) << suffix;
}

#ifdef Q_OS_UNIX
int modeOf(const QString &file)
{
    struct stat status;
    return stat(QFile::encodeName(file).constData(), &status) == 0 ? int(status.st_mode & 07777)
                                                                   : -1;
}

void setMode(const QString &file, int mode)
{
    if (chmod(QFile::encodeName(file).constData(), mode_t(mode)) != 0)
        qFatal("can't change the mode of %s", qPrintable(file));
}

/** Somebody with no rights of their own, while it lives, where root runs the test. */
class Nobody
{
public:
    Nobody()
        : m_isRoot(geteuid() == 0 && seteuid(nobody) == 0)
    {}
    ~Nobody()
    {
        if (m_isRoot && seteuid(0) != 0)
            qFatal("can't become root again");
    }
    Q_DISABLE_COPY(Nobody)

    static constexpr uid_t nobody = 65534;

    static void own(const QString &file)
    {
        if (geteuid() == 0 && chown(QFile::encodeName(file).constData(), nobody, gid_t(-1)) != 0)
            qFatal("can't give away %s", qPrintable(file));
    }

private:
    bool m_isRoot;
};
#endif

} // namespace

void tst_SongSave::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_SongSave::cleanup()
{
#ifdef Q_OS_UNIX
    setMode(m_folder->path(), 0700);
#endif
    m_folder.reset();
}

// --- The image in memory --------------------------------------------------------------------

void tst_SongSave::imagesThatAreNotSaved_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<SongInfo>("edit");

    SongInfo accents;
    accents.title = latin1("Perch\xE9");
    for (const char *suffix : {"mf3", "mf4", "mf5"})
        QTest::addRow("%s: a text that is not ASCII makes the header too long", suffix)
            << latin1(suffix) << accents;
    SongInfo accentedGenre;
    accentedGenre.genre = latin1("\xC8");
    QTest::newRow("mf3: in any text of the header") << latin1("mf3") << accentedGenre;
}

void tst_SongSave::imagesThatAreNotSaved()
{
    QFETCH(QString, suffix);
    QFETCH(SongInfo, edit);

    const QByteArray old = songOf(suffix);
    const QString file = write(path(QLatin1String("a.") + suffix), old);
    FailingDisk disk;
    MetaSong song = imported(file, disk);
    QVERIFY(song.isSavable());
    song.setSongInfo(edit, true);
    QVERIFY(!song.isSavable());
    const LogCapture capture;
    QVERIFY(!song.saveToFile(file));
    QCOMPARE(capture.lines(), QStringList(latin1(unknownFormat)));
    QCOMPARE(disk.operations, QStringList());
    QCOMPARE(read(file), old);
}

void tst_SongSave::theLargestStreamIsSaved_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("midiSize"); // after the edit, without the filler of an MF4 song
    QTest::addColumn<bool>("isSavable");

    QTest::newRow("an MF3 stream of 500,000 bytes") << 3 << 500'000 << true;
    QTest::newRow("an MF3 stream of 500,001 bytes is not saved") << 3 << 500'001 << false;
    QTest::newRow("an MF5 stream of 500,001 bytes is not saved") << 5 << 500'001 << false;
    QTest::newRow("an MF4 stream of 499,997 bytes and its filler") << 4 << 499'997 << true;
    QTest::newRow("an MF4 stream of 499,998 bytes and its filler is not saved")
        << 4 << 499'998 << false;
}

void tst_SongSave::theLargestStreamIsSaved()
{
    QFETCH(int, version);
    QFETCH(int, midiSize);
    QFETCH(bool, isSavable);

    constexpr int markerSize = 8; // of one with a label of one letter
    const int bodySize = midiSize - midi1().size() - markerSize - 4 - 4;
    const QByteArray body = hex("00 FF 01 00") + QByteArray(bodySize, 'x') + hex("00 FF 01 00");
    const QByteArray song = midi1(body);
    QCOMPARE(song.size() + markerSize, midiSize);
    const QByteArray old = mfx(version, {}, version == 4 ? withFiller(song) : song);
    const QString file = write(path("a.mf"), old);
    MetaSong object = imported(file);
    QCOMPARE(object.addMarker(latin1("A"), 1), markerSize);
    QCOMPARE(object.isSavable(), isSavable);
    QCOMPARE(object.saveToFile(file), isSavable);
    if (isSavable)
        QCOMPARE(imported(file).midiData().size(), midiSize);
    else
        QCOMPARE(read(file), old);
}

void tst_SongSave::aMp3TagThatCouldNotBeReadAgainIsNotSaved()
{
    const QByteArray old = tag(QByteArray(999'990, '\0')) + audio();
    const QString file = write(path("a.mp3"), old);
    MetaSong song = imported(file);
    QVERIFY(song.isSavable());
    setTitle(song, latin1("One more frame"));
    QVERIFY(!song.isSavable());
    const LogCapture capture;
    QVERIFY(!song.saveToFile(file));
    QCOMPARE(capture.lines(), QStringList(latin1(unknownFormat)));
    QCOMPARE(read(file), old);
    QCOMPARE(names(), QStringList(latin1("a.mp3")));
}

void tst_SongSave::saveIsLogged_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("line");
    QTest::newRow("MIDI") << latin1("mid") << latin1("[MetaSong::saveToFile] MIDI");
    QTest::newRow("MFx") << latin1("mf5") << latin1("[MetaSong::saveToFile] MFx");
}

void tst_SongSave::saveIsLogged()
{
    QFETCH(QString, suffix);
    QFETCH(QString, line);

    const QString file = write(path("a"), songOf(suffix));
    MetaSong song = imported(file);
    const LogCapture capture;
    QVERIFY(song.saveToFile(file));
    QVERIFY(capture.lines().contains(line));
}

// --- What is written ------------------------------------------------------------------------

void tst_SongSave::mfxSizesFollowTheStream_data()
{
    addSuffixRows("mf3 mf4 mf5");
}

void tst_SongSave::mfxSizesFollowTheStream()
{
    QFETCH(QString, suffix);

    const QByteArray old = songOf(suffix);
    const QString file = write(path("a"), old);
    MetaSong song = imported(file);
    setTitle(song, latin1("Ciao"));
    QCOMPARE(song.addMarker(latin1("Intro"), 1), 12);
    QVERIFY(song.saveToFile(file));

    const QByteArray saved = read(file);
    const int filler = suffix == latin1("mf4") ? 3 : 0;
    QCOMPARE(saved.mid(4, 4), littleEndian(quint32(saved.size()), 4));
    QCOMPARE(saved.mid(12, 4), littleEndian(quint32(song.midiData().size() + filler), 4));
    QCOMPARE(saved.mid(122, 32), QByteArray("Ciao").leftJustified(32, '\0'));
    QCOMPARE(expanded(saved).size(), song.midiData().size() + filler);
    // Nothing else in the header has changed.
    const int headerSize = suffix == latin1("mf5") ? 1024 : 512;
    QByteArray header = old.left(headerSize);
    header.replace(4, 4, saved.mid(4, 4)).replace(12, 4, saved.mid(12, 4));
    header.replace(122, 32, saved.mid(122, 32));
    QCOMPARE(saved.left(headerSize), header);
}

void tst_SongSave::mf4FillerIsPutBack()
{
    const QByteArray song = midi1(meta(3, "Song"));
    const QString file = write(path("a.mf4"), mfx(4, {}, withFiller(song, "abc")));
    MetaSong object = imported(file);
    QVERIFY(object.saveToFile(file));
    QCOMPARE(expanded(read(file)), withFiller(song, hex("FF00FF")));
    QCOMPARE(imported(file).midiData(), song);
}

void tst_SongSave::savingUnchangedChangesNothing_data()
{
    addSuffixRows();
}

void tst_SongSave::savingUnchangedChangesNothing()
{
    QFETCH(QString, suffix);

    const QString file = write(path(QLatin1String("a.") + suffix), songOf(suffix));
    MetaSong song = imported(file);
    QVERIFY(song.saveToFile(file));
    QCOMPARE(read(file), songOf(suffix));
    QCOMPARE(names().size(), 1);
}

void tst_SongSave::aShorterSongLeavesNoTail()
{
    const QString file = write(path("a.mid"), midi1(meta(3, QByteArray(100, 'x'))));
    MetaSong song = imported(file);
    SongInfo info;
    song.setSongInfo(info, true);
    QVERIFY(song.saveToFile(file));
    QCOMPARE(read(file), song.midiData());
    QVERIFY(read(file).size() < 100);
}

// --- Failures -------------------------------------------------------------------------------

void tst_SongSave::everyFailureLeavesTheOldSong_data()
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

void tst_SongSave::everyFailureLeavesTheOldSong()
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
        const bool isSaved = song.saveToFile(file);
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
            QVERIFY(QFile::remove(file + QLatin1String(".bak")));
        QCOMPARE(names(), QStringList(QFileInfo(file).fileName()));
        ++failures;
    }
    QVERIFY(failures >= 3);
}

void tst_SongSave::aDeadMediumLosesNoMp3_data()
{
    QTest::addColumn<bool>("isFat");
    QTest::newRow("where names change in one step") << false;
    QTest::newRow("on FAT") << true;
}

void tst_SongSave::aDeadMediumLosesNoMp3()
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

void tst_SongSave::wherePuttingBackFailsTheLogSaysSo()
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

void tst_SongSave::fullDisk_data()
{
    addSuffixRows();
}

void tst_SongSave::fullDisk()
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

void tst_SongSave::sizeLimit_data()
{
    addSuffixRows("mid mp3");
}

void tst_SongSave::sizeLimit()
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
        isSaved = song.saveToFile(file);
    }
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, previous);
    QVERIFY(!isSaved);
    QCOMPARE(read(file), old);
    QCOMPARE(names().size(), 1);
#endif
}

void tst_SongSave::readOnlyVolume_data()
{
    addSuffixRows("mid mf3 mp3");
}

void tst_SongSave::readOnlyVolume()
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

void tst_SongSave::onFatTheOldSongIsKeptUntilTheNewOneIsSafe()
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
        wholeOnes += names().size() == 2 && SongBytes::names(m_folder->path()).size() == 2;
    };
    MetaSong song = imported(file, disk);
    setTitle(song, latin1("New"));
    QVERIFY(song.saveToFile(file));
    QCOMPARE(wholeOnes, 3);
    QCOMPARE(names(), QStringList(latin1("song.mp3")));
    QCOMPARE(titleIn(file), latin1("New"));
}

// --- Permissions and links ------------------------------------------------------------------

void tst_SongSave::readOnlyFiles_data()
{
    addSuffixRows();
}

void tst_SongSave::readOnlyFiles()
{
#ifndef Q_OS_UNIX
    QSKIP("There are no such permissions here");
#else
    QFETCH(QString, suffix);

    const QString file = write(path(QLatin1String("a.") + suffix), songOf(suffix));
    setMode(file, 0444);
    setMode(m_folder->path(), 0777);
    Nobody::own(file);
    const Nobody nobody;
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    QVERIFY(song.saveToFile(file));
    QCOMPARE(titleIn(file), latin1("New"));
    QCOMPARE(modeOf(file), 0644);
#endif
}

void tst_SongSave::permissionsStay_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<int>("mode");
    for (const char *suffix : {"mid", "mp3"}) {
        for (const int mode : {0600, 0640, 0666, 0755, 02660})
            QTest::newRow(qPrintable(QStringLiteral("%1: %2").arg(latin1(suffix)).arg(mode, 0, 8)))
                << latin1(suffix) << mode;
    }
}

void tst_SongSave::permissionsStay()
{
#ifndef Q_OS_UNIX
    QSKIP("There are no such permissions here");
#else
    QFETCH(QString, suffix);
    QFETCH(int, mode);

    const QString file = write(path(QLatin1String("a.") + suffix), songOf(suffix));
    Nobody::own(file);
    setMode(file, mode);
    struct stat old;
    QCOMPARE(stat(QFile::encodeName(file).constData(), &old), 0);
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    QVERIFY(song.saveToFile(file));
    QCOMPARE(modeOf(file), mode);
    struct stat now;
    QCOMPARE(stat(QFile::encodeName(file).constData(), &now), 0);
    QCOMPARE(now.st_uid, old.st_uid);
    QCOMPARE(now.st_gid, old.st_gid);
#endif
}

void tst_SongSave::aFailedSaveTakesTheWritePermissionBack_data()
{
    addSuffixRows("mid mp3");
}

void tst_SongSave::aFailedSaveTakesTheWritePermissionBack()
{
#ifndef Q_OS_UNIX
    QSKIP("There are no such permissions here");
#else
    QFETCH(QString, suffix);

    const QString file = write(path(QLatin1String("a.") + suffix), songOf(suffix));
    setMode(file, 0440);
    FailingDisk disk;
    disk.failAt = 2;
    MetaSong song = imported(file, disk);
    setTitle(song, latin1("New"));
    QVERIFY(!song.saveToFile(file));
    QCOMPARE(modeOf(file), 0440);
#endif
}

void tst_SongSave::notAllowed_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<int>("fileMode"); // of a file that belongs to root
    QTest::addColumn<int>("folderMode");
    QTest::addColumn<QString>("line");

    QTest::newRow("a MIDI song of somebody else")
        << latin1("mid") << 0444 << 0777 << latin1(notWritable);
    QTest::newRow("an MFx song of somebody else")
        << latin1("mf3") << 0644 << 0777 << latin1(notWritable);
    QTest::newRow("an MP3 in a folder of somebody else")
        << latin1("mp3") << 0666 << 0755 << latin1(notWritable);
    QTest::newRow("an MP3 that can't be read any more")
        << latin1("mp3") << 0000 << 0777
        << latin1("[MetaSong::saveToFile] Impossible to read from file.");
}

void tst_SongSave::notAllowed()
{
#ifndef Q_OS_UNIX
    QSKIP("There are no such permissions here");
#else
    QFETCH(QString, suffix);
    QFETCH(int, fileMode);
    QFETCH(int, folderMode);
    QFETCH(QString, line);

    if (geteuid() != 0)
        QSKIP("Only root can make a file that belongs to somebody else");
    const QString file = write(path(QLatin1String("a.") + suffix), songOf(suffix));
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    setMode(file, fileMode);
    setMode(m_folder->path(), folderMode);
    const LogCapture capture;
    {
        const Nobody nobody;
        QVERIFY(!song.saveToFile(file));
    }
    QCOMPARE(capture.lines().last(), line);
    QCOMPARE(read(file), songOf(suffix));
    QCOMPARE(modeOf(file), fileMode);
    QCOMPARE(names().size(), 1);
#endif
}

void tst_SongSave::linksAreFollowed_data()
{
    addSuffixRows();
}

void tst_SongSave::linksAreFollowed()
{
    QFETCH(QString, suffix);

    QVERIFY(QDir(m_folder->path()).mkdir(latin1("real")));
    const QString file = write(path(QLatin1String("real/a.") + suffix), songOf(suffix));
    const QString link = path(QLatin1String("link.") + suffix);
    if (!QFile::link(QLatin1String("real/a.") + suffix, link))
        QSKIP("There are no links here");
    MetaSong song = imported(link);
    setTitle(song, latin1("New"));
    QVERIFY(song.saveToFile(link));
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(titleIn(file), latin1("New"));
    QCOMPARE(SongBytes::names(path("real")).size(), 1);
    QCOMPARE(names().size(), 2);
}

void tst_SongSave::hardLinks_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("otherTitle");

    QTest::newRow("a MIDI song stays one file under both names") << latin1("mid") << latin1("New");
    QTest::newRow("an MFx song, too") << latin1("mf5") << latin1("New");
    QTest::newRow("an MP3 keeps its old bytes under the other name")
        << latin1("mp3") << latin1("Old");
}

void tst_SongSave::hardLinks()
{
#ifndef Q_OS_UNIX
    QSKIP("There are no such links here");
#else
    QFETCH(QString, suffix);
    QFETCH(QString, otherTitle);

    const QString file = write(path(QLatin1String("a.") + suffix), songOf(suffix));
    const QString other = path(QLatin1String("b.") + suffix);
    QCOMPARE(::link(QFile::encodeName(file).constData(), QFile::encodeName(other).constData()), 0);
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    QVERIFY(song.saveToFile(file));
    QCOMPARE(titleIn(file), latin1("New"));
    QCOMPARE(titleIn(other), otherTitle);
#endif
}

void tst_SongSave::notARegularFile_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("kind");
    for (const char *suffix : {"mid", "mp3"}) {
        for (const char *kind : {"FIFO", "folder"})
            QTest::addRow("%s: a %s in its place", suffix, kind) << latin1(suffix) << latin1(kind);
    }
}

void tst_SongSave::notARegularFile()
{
#ifndef Q_OS_UNIX
    QSKIP("There are no such files here");
#else
    QFETCH(QString, suffix);
    QFETCH(QString, kind);

    const QString file = write(path(QLatin1String("a.") + suffix), songOf(suffix));
    MetaSong song = imported(file);
    QVERIFY(QFile::remove(file));
    if (kind == latin1("FIFO"))
        QCOMPARE(mkfifo(QFile::encodeName(file).constData(), 0644), 0);
    else
        QVERIFY(QDir().mkdir(file));
    QVERIFY(!song.saveToFile(file));
    QCOMPARE(names().size(), 1);
#endif
}

// --- The temporary file of an MP3 -----------------------------------------------------------

void tst_SongSave::temporaryName_data()
{
    QTest::addColumn<QString>("song");
    QTest::addColumn<QString>("temporary");

    QTest::newRow("song.mp3") << latin1("song.mp3") << latin1("song.tmp");
    QTest::newRow("only the last point counts") << latin1("a.b.mp3") << latin1("a.b.tmp");
    QTest::newRow("a name without a point") << latin1("songmp3") << latin1("songmp3.tmp");
    QTest::newRow("a point in the folder is none of the song's")
        << latin1("my.songs/songmp3") << latin1("my.songs/songmp3.tmp");
}

void tst_SongSave::temporaryName()
{
    QFETCH(QString, song);
    QFETCH(QString, temporary);

    QVERIFY(QDir(m_folder->path()).mkdir(latin1("my.songs")));
    const QString file = write(path(song), songOf(latin1("mp3")));
    FailingDisk disk;
    bool isThere = false;
    disk.before = [&](const QString &operation) {
        if (operation == latin1("sync"))
            isThere = QFile::exists(path(temporary));
    };
    QVERIFY(imported(file, disk).saveToFile(file));
    QVERIFY(isThere);
    QVERIFY(!QFile::exists(path(temporary)));
}

void tst_SongSave::aForeignTemporaryFileIsKept_data()
{
    QTest::addColumn<QByteArray>("foreign");

    const QByteArray song = songOf(latin1("mp3"));
    QTest::newRow("a text") << QByteArray("my notes");
    QTest::newRow("another song") << tag(editMark()) + audio(3).replace('\0', '\1');
    QTest::newRow("the song without our mark") << song;
    QTest::newRow("the song with more audio") << tag(editMark()) + audio(600) + "more";
    QTest::newRow("a tag cut short") << tag(editMark() + QByteArray(100, 'x')).left(60);
}

void tst_SongSave::aForeignTemporaryFileIsKept()
{
    QFETCH(QByteArray, foreign);

    const QString file = write(path("song.mp3"), songOf(latin1("mp3")));
    write(path("song.tmp"), foreign);
    write(path("song.1.tmp"), "and another");
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    QVERIFY(song.saveToFile(file));
    QCOMPARE(titleIn(file), latin1("New"));
    QVERIFY(read(file).endsWith(audio(600)));
    QCOMPARE(read(path("song.tmp")), foreign);
    QCOMPARE(read(path("song.1.tmp")), QByteArray("and another"));
    QCOMPARE(names().size(), 3);
}

void tst_SongSave::whatAKilledSaveLeftIsCleared_data()
{
    QTest::addColumn<QByteArray>("left");

    const QByteArray newTag = tag(editMark() + frame("TIT2", "Whatever"));
    QTest::newRow("nothing yet") << QByteArray();
    QTest::newRow("a new tag") << newTag;
    QTest::newRow("with some of the audio") << newTag + audio(600).left(100'000);
    QTest::newRow("with all of it") << newTag + audio(600);
}

void tst_SongSave::whatAKilledSaveLeftIsCleared()
{
    QFETCH(QByteArray, left);

    const QString file = write(path("song.mp3"), songOf(latin1("mp3")));
    write(path("song.tmp"), left);
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    QVERIFY(song.saveToFile(file));
    QCOMPARE(titleIn(file), latin1("New"));
    QVERIFY(read(file).endsWith(audio(600)));
    QCOMPARE(names(), QStringList(latin1("song.mp3")));
}

void tst_SongSave::sourceChangedBeforeTheSave_data()
{
    QTest::addColumn<QByteArray>("now"); // null: removed
    QTest::addColumn<bool>("isSaved");
    QTest::addColumn<QString>("line");

    const QString seek = latin1("[MetaSong::saveToFile] Impossible to seek file.");
    const QByteArray song = songOf(latin1("mp3"));
    QTest::newRow("it has another tag")
        << tag(frame("TIT2", "Somebody's longer title")) + audio(600) << false << seek;
    QTest::newRow("it has another tag of the same size")
        << QByteArray(song).replace("Old", "Odd") << false << seek;
    QTest::newRow("it is shorter than its tag was") << song.left(20) << false << seek;
    QTest::newRow("it is empty") << QByteArray("") << false << seek;
    QTest::newRow("it has less audio, which is kept as it is")
        << song.left(song.size() - 1000) << true << QString();
    QTest::newRow("it has more audio, which is kept, too") << song + "more" << true << QString();
    QTest::newRow("it is gone") << QByteArray() << false
                                << latin1("[MetaSong::saveToFile] Impossible to read from file.");
}

void tst_SongSave::sourceChangedBeforeTheSave()
{
    QFETCH(QByteArray, now);
    QFETCH(bool, isSaved);
    QFETCH(QString, line);

    const QByteArray old = songOf(latin1("mp3"));
    const QString file = write(path("song.mp3"), old);
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    if (now.isNull())
        QVERIFY(QFile::remove(file));
    else
        write(file, now);
    const LogCapture capture;
    QCOMPARE(song.saveToFile(file), isSaved);
    QCOMPARE(capture.lines().value(0), line);
    if (isSaved)
        QVERIFY(read(file).endsWith(now.mid(old.size() - audio(600).size())));
    else if (!now.isNull())
        QCOMPARE(read(file), now);
    QCOMPARE(names().size(), now.isNull() ? 0 : 1);
}

void tst_SongSave::sourceChangesDuringTheSave_data()
{
    QTest::addColumn<QByteArray>("now"); // null: removed
    const QByteArray song = songOf(latin1("mp3"));
    QTest::newRow("it grows") << song + "more";
    QTest::newRow("it shrinks") << song.left(song.size() / 2);
    QTest::newRow("it is gone") << QByteArray();
}

void tst_SongSave::sourceChangesDuringTheSave()
{
    QFETCH(QByteArray, now);

    for (const char *operation : {"write", "sync"}) {
        const QString file = write(path("song.mp3"), songOf(latin1("mp3")));
        FailingDisk disk;
        disk.before = [&](const QString &name) {
            if (name != latin1(operation))
                return;
            if (now.isNull())
                QFile::remove(file);
            else
                write(file, now);
        };
        MetaSong song = imported(file, disk);
        setTitle(song, latin1("New"));
        const LogCapture capture;
        QVERIFY(!song.saveToFile(file));
        QVERIFY(!capture.lines().isEmpty());
        QCOMPARE(names().size(), now.isNull() ? 0 : 1);
        if (!now.isNull())
            QCOMPARE(read(file), now);
    }
}

void tst_SongSave::aVanishedMidiSongIsWrittenAgain()
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

QTEST_GUILESS_MAIN(tst_SongSave)
#include "tst_songsave.moc"
