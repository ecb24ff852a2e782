#include "tests/songs/songfixture.h"

#include <optional>
#include <sys/stat.h>
#include <unistd.h>

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

namespace {

struct stat statusOf(const QString &file)
{
    struct stat status = {};
    if (stat(QFile::encodeName(file).constData(), &status) != 0)
        qFatal("there is no %s", qPrintable(file));
    return status;
}

int modeOf(const QString &file)
{
    return static_cast<int>(statusOf(file).st_mode & 07777);
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

    static void own(const QString &file)
    {
        if (geteuid() == 0 && chown(QFile::encodeName(file).constData(), nobody, gid_t(-1)) != 0)
            qFatal("can't give away %s", qPrintable(file));
    }

private:
    static constexpr uid_t nobody = 65534;
    bool m_isRoot;
};

} // namespace

/** Whom a song belongs to and by which names it is reached, before and after a save. */
class tst_SongSaveAccess : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup() { setMode(path(), 0700); }

    void permissions_data()
    {
        Table<QString, int, int>();
        for (const QString &suffix : words(everySuffix))
            QTest::addRow("%s: a read-only song becomes writable", qPrintable(suffix))
                << suffix << 0444 << 0644;
        for (const char *suffix : {"mid", "mp3"}) {
            for (const int mode : {0600, 0640, 0666, 0755, 02660})
                QTest::addRow("%s: mode %o and the owner stay", suffix, static_cast<unsigned>(mode))
                    << suffix << mode << mode;
        }
    }
    void permissions()
    {
        const auto [suffix, mode, modeAfter] = cells<QString, int, int>();
        const QString file = write(path("a."_s + suffix), songOf(suffix));
        Nobody::own(file);
        setMode(file, mode);
        setMode(path(), 0777);
        const struct stat old = statusOf(file);
        MetaSong song = imported(file);
        setTitle(song, "New"_s);
        {
            std::optional<Nobody> owner; // root needs no permission, and might take the song over
            if (mode == 0444)
                owner.emplace();
            QVERIFY(song.saveToFile(file));
        }
        QCOMPARE(titleIn(file), "New"_s);
        QCOMPARE(modeOf(file), modeAfter);
        QCOMPARE(statusOf(file).st_uid, old.st_uid);
        QCOMPARE(statusOf(file).st_gid, old.st_gid);
    }

    void aFailedSaveTakesTheWritePermissionBack_data() { addSuffixRows("mid mp3"); }
    void aFailedSaveTakesTheWritePermissionBack()
    {
        QFETCH(QString, suffix);
        const QString file = write(path("a."_s + suffix), songOf(suffix));
        setMode(file, 0440);
        FailingDisk disk;
        disk.failAt = 2;
        QVERIFY(!imported(file, disk).saveToFile(file));
        QCOMPARE(modeOf(file), 0440);
    }

    void notAllowed_data()
    {
        const Table<QString, int, int, QString, QString> row;
        // fileMode: of a file that belongs to root
        row("a MIDI song of somebody else", "mid", 0444, 0777, "write-denied", notWritable);
        row("an MFx song of somebody else", "mf3", 0644, 0777, "write-denied", notWritable);
        row("an MP3 in a folder of somebody else", "mp3", 0666, 0755, "write-denied", notWritable);
        row("an MP3 that can't be read any more", "mp3", 0000, 0777, "read-denied",
            "[MetaSong::saveToFile] Impossible to read from file.");
    }
    void notAllowed()
    {
        const auto [suffix, fileMode, folderMode, code, line] =
            cells<QString, int, int, QString, QString>();
        if (geteuid() != 0)
            QSKIP("Only root can make a file that belongs to somebody else");
        const QString file = write(path("a."_s + suffix), songOf(suffix));
        MetaSong song = imported(file);
        setTitle(song, "New"_s);
        setMode(file, fileMode);
        setMode(path(), folderMode);
        const LogCapture capture;
        {
            const Nobody nobody;
            QCOMPARE(song.saveToFile(file).codeName(), code);
        }
        QCOMPARE(capture.lines().last(), line);
        QCOMPARE(read(file), songOf(suffix));
        QCOMPARE(modeOf(file), fileMode);
        QCOMPARE(names().size(), 1);
    }

    void aSongThatMayNotBeReadIsNotLoaded()
    {
        const QString file = write(path("a.mid"), midi0());
        setMode(file, 0);
        setMode(path(), 0777);
        const Nobody nobody;
        QCOMPARE(MetaSong().importFile(file).codeName(), "read-denied"_s);
    }

    void linksAreFollowed_data() { addSuffixRows(); }
    void linksAreFollowed()
    {
        QFETCH(QString, suffix);
        QVERIFY(QDir(path()).mkdir("real"_s));
        const QString file = write(path("real/a."_s + suffix), songOf(suffix));
        const QString link = path("link."_s + suffix);
        QVERIFY(QFile::link("real/a."_s + suffix, link));
        MetaSong song = imported(link);
        setTitle(song, "New"_s);
        QVERIFY(song.saveToFile(link));
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(titleIn(file), "New"_s);
        QCOMPARE(SongBytes::names(path("real")).size(), 1);
        QCOMPARE(names().size(), 2);
    }

    void hardLinks_data()
    {
        const Table<QString, QString> row;
        row("a MIDI song stays one file under both names", "mid", "New");
        row("an MFx song, too", "mf5", "New");
        row("an MP3 keeps its old bytes under the other name", "mp3", "Old");
    }
    void hardLinks()
    {
        const auto [suffix, otherTitle] = cells<QString, QString>();
        const QString file = write(path("a."_s + suffix), songOf(suffix));
        const QString other = path("b."_s + suffix);
        QCOMPARE(::link(QFile::encodeName(file).constData(), QFile::encodeName(other).constData()),
                 0);
        MetaSong song = imported(file);
        setTitle(song, "New"_s);
        QVERIFY(song.saveToFile(file));
        QCOMPARE(titleIn(file), "New"_s);
        QCOMPARE(titleIn(other), otherTitle);
    }

    void aFifoOrAFolderInItsPlaceIsNotAFile_data() { addSuffixRows("mid mp3"); }
    void aFifoOrAFolderInItsPlaceIsNotAFile()
    {
        QFETCH(QString, suffix);
        const QString file = write(path("a."_s + suffix), songOf(suffix));
        MetaSong song = imported(file);
        QVERIFY(QFile::remove(file) && QDir().mkdir(file));
        QCOMPARE(song.saveToFile(file).codeName(), "not-a-file"_s);
        QVERIFY(QDir().rmdir(file) && mkfifo(QFile::encodeName(file).constData(), 0644) == 0);
        QCOMPARE(song.saveToFile(file).codeName(), "not-a-file"_s);
        QCOMPARE(names().size(), 1);
    }
};

QTEST_GUILESS_MAIN(tst_SongSaveAccess)
#include "tst_songsaveaccess.moc"
