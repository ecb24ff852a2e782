#include "indexer/memoryscan.h"
#include "indexer/sortkeys.h"
#include "tests/indexer/memoryfixture.h"

#include <QProcess>

#include <algorithm>
#include <ctime>

using namespace tarvel4;

namespace {

/** What a scan told, in its order: "folder /x", "song /x", "unreadable /x". */
struct Told
{
    bool isListed = false;
    QStringList lines;
    std::vector<ScannedSong> songs;

    explicit Told(const MemoryFixture &memory)
    {
        MemoryScan scan;
        const auto tell = [this, &memory](const char *what, const QString &path) {
            lines << QLatin1String(what) + path.mid(memory.root().size());
        };
        scan.onFolder = [tell](const QString &path) { tell("folder ", path); };
        scan.onUnreadable = [tell](const QString &path) { tell("unreadable ", path); };
        scan.onSong = [this](const ScannedSong &song) {
            lines << QStringLiteral("song ") + song.relativePath;
            songs.push_back(song);
        };
        isListed = bool(scan.scan(memory.root()));
    }

    QStringList paths() const
    {
        QStringList paths;
        for (const ScannedSong &song : songs)
            paths.append(song.relativePath);
        return paths;
    }
};

QStringList list(const char *words)
{
    return QString::fromUtf8(words).split(u' ', Qt::SkipEmptyParts);
}

/** Runs a line of shell in the memory; false where there is no shell. */
bool shell(const MemoryFixture &memory, const char *line)
{
    return QProcess::execute(QStringLiteral("sh"),
                             {QStringLiteral("-c"),
                              QStringLiteral("cd \"$1\" && ") + QString::fromLatin1(line),
                              QStringLiteral("sh"), memory.root()})
        == 0;
}

} // namespace

/** Which songs are found, and in which order. Runs over each way of listing folders. */
class tst_MemoryScan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsFound_data();
    void whatIsFound();
    void foldersAreToldBeforeTheirSongs();
    void theOrderIsThatOfTheSortKeys();
    void datesAndTimes_data();
    void datesAndTimes();
    void timesAreLocal_data();
    void timesAreLocal();
    void links_data();
    void links();
    void onlyRegularFilesAreSongs();
    void namesThatCannotBeSaidAreTold();
    void aFolderThatCannotBeListedIsTold();
    void rootsThatCannotBeListed_data();
    void rootsThatCannotBeListed();
    void aTreeDeeperThanAPathIsTold();
};

void tst_MemoryScan::whatIsFound_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QStringList>("songs");
    const auto row = [](const char *what, const char *files, const char *songs) {
        QTest::newRow(what) << list(files) << list(songs);
    };
    row("an empty memory", "", "");
    row("each suffix, in any case", "/a.mid /b.KAR /c.Mf3 /d.mF4 /e.MF5 /f.Mp3",
        "/a.mid /b.KAR /c.Mf3 /d.mF4 /e.MF5 /f.Mp3");
    row("other suffixes are no songs", "/a.wav /b.midi /c.mf6 /d.mp /e /mid /f.mid.bak /g.cdg", "");
    row("any depth", "/a/b/c/d/e.mid", "/a/b/c/d/e.mid");
    row("\"sfx\" and \"bridge\" at any depth, in any case",
        "/sfx/a.mid /Bridge/a.mid /p/SFX/a.mid /p/q/BRIDGE/a.mid /p/sfx/q/a.mid /p/b.mid",
        "/p/b.mid");
    row("names that only begin like them are entered", "/sfx2/a.mid /bridges/a.mid /a/sfx.mid",
        "/a/sfx.mid /bridges/a.mid /sfx2/a.mid");
    row("names that begin with a dot", "/._a.mid /.mid /.hidden/a.mid /a/.b.mid", "");
    row("/Zeta.mid before /Zeta/x.mid", "/Zeta/x.mid /Zeta.mid", "/Zeta.mid /Zeta/x.mid");
    row("case does not part the order", "/b.mid /C.mid /A.mid /d.mid",
        "/A.mid /b.mid /C.mid /d.mid");
    row("a folder stands where its songs stand", "/a/z.mid /a-b.mid /ab.mid",
        "/a-b.mid /a/z.mid /ab.mid");
    row("songs of folders that differ in case only", "/pop/b.mid /POP/a.mid",
        "/POP/a.mid /pop/b.mid");
    row("letters outside ISO 8859-1", "/\u0416.mid /z.mid /\u00e8.mid",
        "/\u0416.mid /z.mid /\u00e8.mid");
}

void tst_MemoryScan::whatIsFound()
{
    QFETCH(QStringList, files);
    MemoryFixture memory;
    for (const QString &file : files)
        memory.put(file, "x");
    const Told told(memory);
    QVERIFY(told.isListed);
    QTEST(told.paths(), "songs");
}

void tst_MemoryScan::foldersAreToldBeforeTheirSongs()
{
    MemoryFixture memory;
    for (const char *path : {"/b.mid", "/a/z.mid", "/a/b/y.mid", "/sfx/x.mid", "/c/none.txt"})
        memory.put(QLatin1String(path), "x");
    QCOMPARE(Told(memory).lines,
             (QStringList{QStringLiteral("folder /a"), QStringLiteral("folder /a/b"),
                          QStringLiteral("song /a/b/y.mid"), QStringLiteral("song /a/z.mid"),
                          QStringLiteral("song /b.mid"), QStringLiteral("folder /c")}));
}

void tst_MemoryScan::theOrderIsThatOfTheSortKeys()
{
    MemoryFixture memory;
    for (const char *path : {"/a.mid", "/a b.mid", "/a/a.mid", "/\u00e8/x.mid", "/\u00df.mid",
                             "/ss.mid", "/\u0416/a.mid", "/~.mid", "/_.mid"})
        memory.put(QString::fromUtf8(path), "x");
    const Told told(memory);
    for (const ScannedSong &song : told.songs)
        QCOMPARE(song.sortKey, song.relativePath.toUpper().toLatin1());
    const bool isSorted = std::is_sorted(
        told.songs.begin(), told.songs.end(), [](const auto &left, const auto &right) {
            return SortKeys::comparePaths(left.sortKey, right.sortKey) < 0;
        });
    QVERIFY2(isSorted, qPrintable(told.paths().join(u' ')));
}

void tst_MemoryScan::datesAndTimes_data()
{
    QTest::addColumn<QDateTime>("modified");
    QTest::addColumn<quint32>("date");
    QTest::addColumn<quint32>("time");
    QTest::newRow("5 March 2009 at 07:08:09")
        << QDateTime(QDate(2009, 3, 5), QTime(7, 8, 9)) << 20090305u << 70809u;
    QTest::newRow("the first day of FAT")
        << QDateTime(QDate(1980, 1, 1), QTime(0, 0)) << 19800101u << 0u;
    QTest::newRow("the last second of FAT")
        << QDateTime(QDate(2107, 12, 31), QTime(23, 59, 58)) << 21071231u << 235958u;
    QTest::newRow("before 1970") << QDateTime(QDate(1969, 7, 20), QTime(20, 17, 40)) << 19690720u
                                 << 201740u;
}

void tst_MemoryScan::datesAndTimes()
{
    QFETCH(QDateTime, modified);
    MemoryFixture memory;
    memory.put(QStringLiteral("/a.mid"), "x", modified);
    if (QFileInfo(memory.path(QStringLiteral("/a.mid"))).lastModified() != modified)
        QSKIP("the file system does not keep this time");
    const Told told(memory);
    QCOMPARE(told.songs.size(), std::size_t(1));
    QTEST(told.songs[0].date, "date");
    QTEST(told.songs[0].time, "time");
}

void tst_MemoryScan::timesAreLocal_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<quint32>("date");
    QTest::addColumn<quint32>("time");
    QTest::newRow("five hours east")
        << QByteArray("EAST-5") << qint64(951858000) << 20000301u << 20000u;
    QTest::newRow("five hours west")
        << QByteArray("WEST5") << qint64(951858000) << 20000229u << 160000u;
    QTest::newRow("the first moment of 1970")
        << QByteArray("EAST-5") << qint64(0) << 19700101u << 50000u;
}

void tst_MemoryScan::timesAreLocal()
{
#ifndef Q_OS_UNIX
    QSKIP("the zone can't be set here");
#else
    QFETCH(QByteArray, zone);
    QFETCH(qint64, seconds);
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", zone);
    tzset();
    MemoryFixture memory;
    memory.put(QStringLiteral("/a.mid"), "x", QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC));
    const Told told(memory);
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
    tzset();
    QTEST(told.songs.at(0).date, "date");
    QTEST(told.songs.at(0).time, "time");
#endif
}

void tst_MemoryScan::links_data()
{
    QTest::addColumn<QByteArray>("commands");
    QTest::addColumn<QStringList>("songs");
    const auto row = [](const char *what, const char *commands, const char *songs) {
        QTest::newRow(what) << QByteArray(commands) << list(songs);
    };
    row("to the folder itself", "ln -s . self", "/a/x.mid");
    row("to the folder above", "ln -s .. a/up", "/a/x.mid");
    row("two that lead into each other", "mkdir b && ln -s ../b a/b && ln -s ../a b/a", "/a/x.mid");
    row("to a folder met before", "ln -s a z", "/a/x.mid");
    row("to a folder still to come", "ln -s a 0", "/0/x.mid");
    row("to a folder outside", "rm -r a && ln -s /nowhere/else b", "");
    row("to a song", "ln -s a/x.mid b.mid", "/a/x.mid /b.mid");
    row("to nowhere, as the last of a folder", "ln -s /nowhere zz.mid && ln -s /nowhere zz",
        "/a/x.mid");
    row("to each other", "ln -s l2.mid l1.mid && ln -s l1.mid l2.mid", "/a/x.mid");
    row("a folder under a forbidden name", "ln -s a sfx", "/a/x.mid");
}

void tst_MemoryScan::links()
{
    QFETCH(QByteArray, commands);
    MemoryFixture memory;
    memory.put(QStringLiteral("/a/x.mid"), "x");
    if (!shell(memory, commands.constData()))
        QSKIP("needs a POSIX shell and links");
    const Told told(memory);
    QVERIFY(told.isListed);
    QTEST(told.paths(), "songs");
    QVERIFY2(told.lines.filter(QStringLiteral("unreadable")).isEmpty(),
             qPrintable(told.lines.join(u',')));
}

void tst_MemoryScan::onlyRegularFilesAreSongs()
{
    MemoryFixture memory;
    memory.put(QStringLiteral("/d.mid/x.mid"), "x");
    if (!shell(memory, "mkfifo fifo.mid && ln -s /dev/null null.mid"))
        QSKIP("needs a POSIX shell");
    QCOMPARE(Told(memory).lines,
             (QStringList{QStringLiteral("folder /d.mid"), QStringLiteral("song /d.mid/x.mid")}));
}

void tst_MemoryScan::namesThatCannotBeSaidAreTold()
{
#ifdef TARVEL4_PORTABLE_LISTING
    QSKIP("the portable listing is not shown such names");
#endif
    MemoryFixture memory;
    if (!shell(memory,
               "printf x >\"$(printf 'bad\\377.mid')\" && printf x >\"$(printf 'b\\377.txt')\""
               " && mkdir \"$(printf 'f\\377')\""))
        QSKIP("the file system takes only names in UTF-8");
    const Told told(memory);
    QVERIFY(shell(memory, "rm -r b* f*")); // Qt can't remove them either
    QCOMPARE(told.paths(), QStringList());
    QCOMPARE(told.lines.size(), 2); // a song and a folder, but nothing else
    QVERIFY(told.lines.at(0).startsWith(QStringLiteral("unreadable /bad")));
    QVERIFY(told.lines.at(1).startsWith(QStringLiteral("unreadable /f")));
}

void tst_MemoryScan::aFolderThatCannotBeListedIsTold()
{
    MemoryFixture memory;
    memory.put(QStringLiteral("/a/x.mid"), "x");
    memory.put(QStringLiteral("/b/x.mid"), "x");
    if (!shell(memory, "chmod 000 a"))
        QSKIP("needs a POSIX shell");
    const bool isListable = QDir(memory.path(QStringLiteral("/a"))).isReadable();
    const Told told(memory);
    shell(memory, "chmod 700 a");
    if (isListable)
        QSKIP("this user may list every folder");
    QVERIFY(told.isListed);
    QCOMPARE(told.paths(), list("/b/x.mid"));
    QVERIFY(told.lines.contains(QStringLiteral("unreadable /a")));
}

void tst_MemoryScan::rootsThatCannotBeListed_data()
{
    QTest::addColumn<QString>("below");
    QTest::newRow("none") << QStringLiteral("/none");
    QTest::newRow("a file") << QStringLiteral("/a.mid");
}

void tst_MemoryScan::rootsThatCannotBeListed()
{
    QFETCH(QString, below);
    MemoryFixture memory;
    memory.put(QStringLiteral("/a.mid"), "x");
    MemoryScan scan;
    QVERIFY(!scan.scan(memory.path(below)));
}

/** Its songs can't be reached by a path, and that is said. */
void tst_MemoryScan::aTreeDeeperThanAPathIsTold()
{
#ifdef TARVEL4_PORTABLE_LISTING
    QSKIP("the portable listing does not see so far");
#endif
    MemoryFixture memory;
    memory.put(QStringLiteral("/a.mid"), "x");
    if (!shell(memory,
               "n=$(printf '%0200d' 0); for i in $(seq 30); do mkdir $n && cd -P $n || exit 1; "
               "done; printf x >deep.mid"))
        QSKIP("the shell can't make such a tree");
    const Told told(memory);
    QVERIFY(told.isListed);
    QCOMPARE(told.paths().last(), QStringLiteral("/a.mid"));
    QCOMPARE(told.lines.filter(QStringLiteral("unreadable")).size(), 1);
    QVERIFY(shell(memory, "rm -rf 0*"));
}

QTEST_GUILESS_MAIN(tst_MemoryScan)
#include "tst_memoryscan.moc"
