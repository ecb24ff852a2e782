#include "tests/library/logcapture.h"
#include "tests/songs/savefixture.h"
#include "tests/storage/failingdisk.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace tarvel4;

using namespace SaveFixture;
using namespace SongBytes;

/** Whom a song belongs to and by which names it is reached, before and after a save. */
class tst_SongSaveAccess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<Folder>(); }
    void cleanup();

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

private:
    template <typename Name> QString path(const Name &name) const { return m_folder->path(name); }
    QString path() const { return m_folder->path(); }
    QStringList names() const { return m_folder->names(); }

    std::unique_ptr<Folder> m_folder;
};

namespace {

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

void tst_SongSaveAccess::cleanup()
{
#ifdef Q_OS_UNIX
    setMode(path(), 0700);
#endif
    m_folder.reset();
}

void tst_SongSaveAccess::readOnlyFiles_data()
{
    addSuffixRows();
}

void tst_SongSaveAccess::readOnlyFiles()
{
#ifndef Q_OS_UNIX
    QSKIP("There are no such permissions here");
#else
    QFETCH(QString, suffix);

    const QString file = write(path(QLatin1String("a.") + suffix), songOf(suffix));
    setMode(file, 0444);
    setMode(path(), 0777);
    Nobody::own(file);
    const Nobody nobody;
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    QVERIFY(song.saveToFile(file));
    QCOMPARE(titleIn(file), latin1("New"));
    QCOMPARE(modeOf(file), 0644);
#endif
}

void tst_SongSaveAccess::permissionsStay_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<int>("mode");
    for (const char *suffix : {"mid", "mp3"}) {
        for (const int mode : {0600, 0640, 0666, 0755, 02660})
            QTest::newRow(qPrintable(QStringLiteral("%1: %2").arg(latin1(suffix)).arg(mode, 0, 8)))
                << latin1(suffix) << mode;
    }
}

void tst_SongSaveAccess::permissionsStay()
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

void tst_SongSaveAccess::aFailedSaveTakesTheWritePermissionBack_data()
{
    addSuffixRows("mid mp3");
}

void tst_SongSaveAccess::aFailedSaveTakesTheWritePermissionBack()
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

void tst_SongSaveAccess::notAllowed_data()
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

void tst_SongSaveAccess::notAllowed()
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
    setMode(path(), folderMode);
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

void tst_SongSaveAccess::linksAreFollowed_data()
{
    addSuffixRows();
}

void tst_SongSaveAccess::linksAreFollowed()
{
    QFETCH(QString, suffix);

    QVERIFY(QDir(path()).mkdir(latin1("real")));
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

void tst_SongSaveAccess::hardLinks_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("otherTitle");

    QTest::newRow("a MIDI song stays one file under both names") << latin1("mid") << latin1("New");
    QTest::newRow("an MFx song, too") << latin1("mf5") << latin1("New");
    QTest::newRow("an MP3 keeps its old bytes under the other name")
        << latin1("mp3") << latin1("Old");
}

void tst_SongSaveAccess::hardLinks()
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

void tst_SongSaveAccess::notARegularFile_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("kind");
    for (const char *suffix : {"mid", "mp3"}) {
        for (const char *kind : {"FIFO", "folder"})
            QTest::addRow("%s: a %s in its place", suffix, kind) << latin1(suffix) << latin1(kind);
    }
}

void tst_SongSaveAccess::notARegularFile()
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

QTEST_GUILESS_MAIN(tst_SongSaveAccess)
#include "tst_songsaveaccess.moc"
