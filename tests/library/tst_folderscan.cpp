#include "library/folderscan.h"

#include "tests/library/logcapture.h"
#include "tests/library/testfiles.h"
#include "tests/storage/unixfile.h"

#include <QtTest>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#endif

using namespace tarvel4;

class tst_FolderScan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void isSongName_data();
    void isSongName();
    void songsAreFoundInNameOrder();
    void whatAPowerCutLeftAsideIsFoundAndLeftAlone();
    void onlyRegularFilesAreFound();
    void aWalkCanBeStopped();
    void loopsOfLinksEnd();
    void aFolderReachedTwiceIsWalkedOnce();
    void whatCantBeReachedIsReported();
    void aTreeDeeperThanPathsMayBeIsReported();
    void anUnreadableFolderIsReported();
    void theLogFollowsTheWalk();
    void countFiles();
    void countingALoopEnds();

private:
    QString path(const char *name) const { return m_dir->filePath(QString::fromUtf8(name)); }
    /** Walks the folder of the test; the paths are below it. */
    bool walk(const std::function<bool(const QString &)> &found = nullptr);

    QScopedPointer<QTemporaryDir> m_dir;
    QStringList m_found;
    QStringList m_skipped;
};

void tst_FolderScan::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
}

bool tst_FolderScan::walk(const std::function<bool(const QString &)> &found)
{
    m_found.clear();
    m_skipped.clear();
    const auto below = [this](const QString &full) { return full.mid(m_dir->path().size() + 1); };
    return FolderScan::scanDir(
        m_dir->path(),
        [&](const QString &song) {
            m_found.append(below(song));
            return !found || found(song);
        },
        [&](const QString &entry) { m_skipped.append(below(entry)); });
}

void tst_FolderScan::isSongName_data()
{
    QTest::addColumn<bool>("isSong");
    for (const char *name : {"a.mid", "a.kar", "a.mp3", "a.mf3", "a.mf4", "a.mf5", "a.MID", "a.Mp3",
                             "a.b.kar", "-rf.mid", ".mid"})
        QTest::newRow(name) << true;
    for (const char *name :
         {"a.wav", "a.mid.bak", "mid", "a.", "", "a.mf", "a.mf6", "a.cdg", "a.mid "})
        QTest::newRow(name) << false;
}

void tst_FolderScan::isSongName()
{
    QFETCH(bool, isSong);
    QCOMPARE(FolderScan::isSongName(QString::fromUtf8(QTest::currentDataTag())), isSong);
}

void tst_FolderScan::songsAreFoundInNameOrder()
{
    for (const char *name : {"b.mid", "a.KAR", "c/z.mf3", "c/a.mp3", "C.mid", "text.txt", "._a.mid",
                             ".hidden/a.mid", "=cmd.mid", "%s%n.mid", "a/b/c/deep.mf5"})
        TestFiles::write(path(name), "x");
    TestFiles::write(m_dir->path() + QLatin1String("/:colon.mid"), "x");
    QVERIFY(walk());
    QCOMPARE(m_found,
             QStringList({QStringLiteral("%s%n.mid"), QStringLiteral(":colon.mid"),
                          QStringLiteral("=cmd.mid"), QStringLiteral("C.mid"),
                          QStringLiteral("a/b/c/deep.mf5"), QStringLiteral("a.KAR"),
                          QStringLiteral("b.mid"), QStringLiteral("c/a.mp3"),
                          QStringLiteral("c/z.mf3")}));
    QCOMPARE(m_skipped, QStringList());
}

void tst_FolderScan::whatAPowerCutLeftAsideIsFoundAndLeftAlone()
{
    TestFiles::write(path("a/gone.mp3.tarvel4.bak"), "old");
    TestFiles::write(path("a/own.mp3.bak"), "x");
    QVERIFY(QFile::link(m_dir->path(), path("a/loop")));
    QVERIFY(walk());
    QCOMPARE(m_found, QStringList());
    QCOMPARE(TestFiles::namesIn(path("a")),
             QStringList({QStringLiteral("gone.mp3.tarvel4.bak"), QStringLiteral("loop"),
                          QStringLiteral("own.mp3.bak")}));
    QCOMPARE(FolderScan::setAsideBelow(m_dir->path()), QStringList(path("a/gone.mp3")));
    int asked = 0;
    QCOMPARE(FolderScan::setAsideBelow(m_dir->path(), [&asked] { return ++asked == 1; }),
             QStringList());
    QCOMPARE(asked, 2);
}

void tst_FolderScan::onlyRegularFilesAreFound()
{
    SKIP_WITHOUT_UNIX(true, "FIFO");
    QVERIFY(UnixFile::makeFifo(path("fifo.mid")));
    TestFiles::write(path("folder.mid/song.mid"), "x");
    QVERIFY(QFile::link(path("folder.mid/song.mid"), path("link.mid")));
    QVERIFY(walk());
    QCOMPARE(m_found,
             QStringList({QStringLiteral("folder.mid/song.mid"), QStringLiteral("link.mid")}));
    QCOMPARE(m_skipped, QStringList());
}

void tst_FolderScan::aWalkCanBeStopped()
{
    for (const char *name : {"a/1.mid", "a/2.mid", "b.mid"})
        TestFiles::write(path(name), "x");
    QVERIFY(!walk([](const QString &) { return false; }));
    QCOMPARE(m_found, QStringList(QStringLiteral("a/1.mid")));
}

void tst_FolderScan::loopsOfLinksEnd()
{
    SKIP_WITHOUT_UNIX(true, "links that Qt makes");
    TestFiles::write(path("a/song.mid"), "x");
    QVERIFY(QFile::link(m_dir->path(), path("a/up")));
    QVERIFY(QFile::link(path("a"), path("a/self")));
    QVERIFY(walk());
    QCOMPARE(m_found, QStringList(QStringLiteral("a/song.mid")));
}

void tst_FolderScan::aFolderReachedTwiceIsWalkedOnce()
{
    SKIP_WITHOUT_UNIX(true, "links that Qt makes");
    TestFiles::write(path("b/song.mid"), "x");
    QVERIFY(QFile::link(path("b"), path("a")));
    QVERIFY(walk());
    QCOMPARE(m_found, QStringList(QStringLiteral("a/song.mid")));
}

void tst_FolderScan::whatCantBeReachedIsReported()
{
    SKIP_WITHOUT_UNIX(true, "names that are no text");
#ifdef Q_OS_UNIX
    const QByteArray native = QFile::encodeName(path("bad")) + "\xff.mid";
    const int file = open(native.constData(), O_CREAT | O_WRONLY, 0600);
    if (file < 0)
        QSKIP("this file system refuses such names");
    close(file);
    QVERIFY(QFile::link(path("nowhere.mid"), path("dangling.mid")));
    TestFiles::write(path("good.mid"), "x");
    const bool finished = walk();
    unlink(native.constData());
    QVERIFY(finished);
    QCOMPARE(m_found, QStringList(QStringLiteral("good.mid")));
    QCOMPARE(m_skipped.size(), 2);
    QVERIFY(m_skipped.at(0).startsWith(QStringLiteral("bad")));
    QCOMPARE(m_skipped.at(1), QStringLiteral("dangling.mid"));
#endif
}

void tst_FolderScan::aTreeDeeperThanPathsMayBeIsReported()
{
    SKIP_WITHOUT_UNIX(true, "working folder below its longest path");
#ifdef Q_OS_UNIX
    const QString name(200, QLatin1Char('d'));
    const int start = open(".", O_RDONLY);
    QCOMPARE(chdir(QFile::encodeName(m_dir->path()).constData()), 0);
    for (int depth = 0; depth < 25; ++depth) {
        QCOMPARE(mkdir(name.toLatin1().constData(), 0700), 0);
        QCOMPARE(chdir(name.toLatin1().constData()), 0);
    }
    const bool finished = walk();
    // No path reaches the lowest folders, so they are taken away from inside.
    for (int depth = 0; depth < 25; ++depth) {
        QCOMPARE(chdir(".."), 0);
        QCOMPARE(rmdir(name.toLatin1().constData()), 0);
    }
    QCOMPARE(fchdir(start), 0);
    close(start);
    QVERIFY(finished);
    QCOMPARE(m_skipped.size(), 1);
#endif
}

void tst_FolderScan::anUnreadableFolderIsReported()
{
    SKIP_WITHOUT_UNIX(true, "permissions by mode bits");
    TestFiles::write(path("closed/song.mid"), "x");
    QVERIFY(QFile::setPermissions(path("closed"), QFile::Permissions()));
    const bool readable = QFileInfo(path("closed")).isReadable();
    walk();
    QFile::setPermissions(path("closed"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (readable)
        QSKIP("this user may read everything");
    QCOMPARE(m_skipped, QStringList(QStringLiteral("closed")));
}

void tst_FolderScan::theLogFollowsTheWalk()
{
    TestFiles::write(path("a/song.mid"), "x");
    LogCapture log;
    QVERIFY(walk());
    const QString root = m_dir->path();
    QCOMPARE(LogCapture::lines(),
             QStringList({QStringLiteral("[scanDir] Analyzing directory: \"%1\"").arg(root),
                          QStringLiteral("[scanDir] Found directory: \"%1/a\"").arg(root),
                          QStringLiteral("[scanDir] Analyzing directory: \"%1/a\"").arg(root),
                          QStringLiteral("[scanDir] Found file: \"%1/a/song.mid\"").arg(root),
                          QString(74, QLatin1Char('='))}));
}

void tst_FolderScan::countFiles()
{
    for (const char *name : {"a.mid", "b.txt", "c/d.mid", "c/e/f"})
        TestFiles::write(path(name), "x");
    int count = 0;
    FolderScan::countFiles(m_dir->path(), count);
    QCOMPARE(count, 4);
    FolderScan::countFiles(m_dir->path(), count); // adds up
    QCOMPARE(count, 8);
}

void tst_FolderScan::countingALoopEnds()
{
    SKIP_WITHOUT_UNIX(true, "links that Qt makes");
    TestFiles::write(path("a/song.mid"), "x");
    QVERIFY(QFile::link(m_dir->path(), path("a/up")));
    int count = 0;
    FolderScan::countFiles(m_dir->path(), count);
    QCOMPARE(count, 1);
}

QTEST_GUILESS_MAIN(tst_FolderScan)
#include "tst_folderscan.moc"
