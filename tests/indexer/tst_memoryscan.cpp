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
            lines << "song "_s + song.relativePath;
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

/** Runs a line of shell in the memory; false where there is no shell. */
bool shell(const MemoryFixture &memory, const char *line)
{
    return QProcess::execute("sh"_s,
                             {"-c"_s, QStringLiteral("cd \"$1\" && ") + QString::fromLatin1(line),
                              "sh"_s, memory.root()})
        == 0;
}

} // namespace

/** Which songs are found, and in which order. Runs over each way of listing folders. */
class tst_MemoryScan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsFound_data()
    {
        const Table<QStringList, QStringList> row;
        row("an empty memory", "", "");
        row("each suffix, in any case", "/a.mid /b.KAR /c.Mf3 /d.mF4 /e.MF5 /f.Mp3",
            "/a.mid /b.KAR /c.Mf3 /d.mF4 /e.MF5 /f.Mp3");
        row("other suffixes are no songs", "/a.wav /b.midi /c.mf6 /d.mp /e /mid /f.mid.bak /g.cdg",
            "");
        row("the last suffix counts", "/song.01.mid", "/song.01.mid");
        row("any depth", "/a/b/c/d/e.mid /playlist/p.mid", "/a/b/c/d/e.mid /playlist/p.mid");
        row("\"sfx\" and \"bridge\" at any depth, in any case",
            "/sfx/a.mid /Bridge/a.mid /p/SFX/a.mid /p/q/BRIDGE/a.mid /p/sfx/q/a.mid /p/b.mid",
            "/p/b.mid");
        row("names that only begin like them are entered", "/sfx2/a.mid /bridges/a.mid /a/sfx.mid",
            "/a/sfx.mid /bridges/a.mid /sfx2/a.mid");
        row("names that begin with a dot", "/._a.mid /.mid /.hidden/a.mid /a/.b.mid", "");
        row("/Zeta.mid before /Zeta/x.mid", "/Zeta/x.mid /Zeta.mid", "/Zeta.mid /Zeta/x.mid");
        row("case does not part the order", "/b.mid /C.mid /A.mid /d.mid",
            "/A.mid /b.mid /C.mid /d.mid");
        row("accented letters come behind all others, as capitals",
            "/\u00e0.mid /\u00c8.mid /z.mid /\u00a1.mid /~.mid",
            "/z.mid /~.mid /\u00a1.mid /\u00e0.mid /\u00c8.mid");
        row("a folder stands where its songs stand", "/a/z.mid /a-b.mid /ab.mid",
            "/a-b.mid /a/z.mid /ab.mid");
        row("songs of folders that differ in case only", "/pop/b.mid /POP/a.mid",
            "/POP/a.mid /pop/b.mid");
        row("letters outside ISO 8859-1", "/\u0416.mid /z.mid /\u00e8.mid",
            "/\u0416.mid /z.mid /\u00e8.mid");
    }
    void whatIsFound()
    {
        const auto [files, songs] = cells<QStringList, QStringList>();
        MemoryFixture memory;
        for (const QString &file : files)
            memory.put(file, "x");
        if (files.contains("/POP/a.mid"_s) && QFile::exists(memory.path("/pop/a.mid"_s)))
            QSKIP("names do not keep case apart here");
        const Told told(memory);
        QVERIFY(told.isListed);
        QCOMPARE(told.paths(), songs);
    }

    void foldersAreToldBeforeTheirSongs()
    {
        MemoryFixture memory;
        for (const char *path : {"/b.mid", "/a/z.mid", "/a/b/y.mid", "/sfx/x.mid", "/c/none.txt"})
            memory.put(QLatin1String(path), "x");
        QCOMPARE(Told(memory).lines,
                 (QStringList{"folder /a"_s, "folder /a/b"_s, "song /a/b/y.mid"_s,
                              "song /a/z.mid"_s, "song /b.mid"_s, "folder /c"_s}));
    }

    void theOrderIsThatOfTheSortKeys()
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
        QVERIFY2(isSorted, qPrintable(told.paths().join(QLatin1Char(' '))));
    }

    void datesAndTimesAreLocal_data()
    {
        const Table<QByteArray, QString, quint32, quint32> row;
        row("5 March 2009 at 07:08:09", "UTC", "2009-03-05T07:08:09Z", 20090305, 70809);
        row("the first day of FAT", "UTC", "1980-01-01T00:00:00Z", 19800101, 0);
        row("the last second of FAT", "UTC", "2107-12-31T23:59:58Z", 21071231, 235958);
        row("before 1970", "UTC", "1969-07-20T20:17:40Z", 19690720, 201740);
        row("five hours east", "EAST-5", "2000-02-29T21:00:00Z", 20000301, 20000);
        row("five hours west", "WEST5", "2000-02-29T21:00:00Z", 20000229, 160000);
        row("the first moment of 1970", "EAST-5", "1970-01-01T00:00:00Z", 19700101, 50000);
    }
    void datesAndTimesAreLocal()
    {
#ifndef Q_OS_UNIX
        QSKIP("the zone can't be set here");
#else
        const auto [zone, utc, date, time] = cells<QByteArray, QString, quint32, quint32>();
        const QDateTime modified = QDateTime::fromString(utc, Qt::ISODate);
        const QByteArray before = qgetenv("TZ");
        qputenv("TZ", zone);
        tzset();
        MemoryFixture memory;
        memory.put("/a.mid"_s, "x", modified);
        const Told told(memory);
        const bool isKept = modified == QFileInfo(memory.path("/a.mid"_s)).lastModified()
            || modified.toMSecsSinceEpoch() == 0;
        before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
        tzset();
        if (!isKept)
            QSKIP("the file system does not keep this time");
        QCOMPARE(told.songs.at(0).date, date);
        QCOMPARE(told.songs.at(0).time, time);
#endif
    }

    void linksAndOddEntries_data()
    {
        const Table<QByteArray, QStringList> row;
        row("to the folder itself", "ln -s . self", "/a/x.mid");
        row("to the folder above", "ln -s .. a/up", "/a/x.mid");
        row("two that lead into each other", "mkdir b && ln -s ../b a/b && ln -s ../a b/a",
            "/a/x.mid");
        row("to a folder met before", "ln -s a z", "/a/x.mid");
        row("to a folder still to come", "ln -s a 0", "/0/x.mid");
        row("to a folder outside", "rm -r a && ln -s /nowhere/else b", "");
        row("to a song", "ln -s a/x.mid b.mid", "/a/x.mid /b.mid");
        row("to nowhere, as the last of a folder", "ln -s /nowhere zz.mid && ln -s /nowhere zz",
            "/a/x.mid");
        row("to each other", "ln -s l2.mid l1.mid && ln -s l1.mid l2.mid", "/a/x.mid");
        row("a folder under a forbidden name", "ln -s a sfx", "/a/x.mid");
        row("FIFOs and devices", "mkfifo fifo.mid && ln -s /dev/null null.mid", "/a/x.mid");
        row("a folder with a song's name", "mkdir d.mid && mv a/x.mid d.mid", "/d.mid/x.mid");
    }
    void linksAndOddEntries()
    {
        const auto [commands, songs] = cells<QByteArray, QStringList>();
        MemoryFixture memory;
        memory.put("/a/x.mid"_s, "x");
        if (!shell(memory, commands.constData()))
            QSKIP("needs a POSIX shell and links");
        const Told told(memory);
        QVERIFY(told.isListed);
        QCOMPARE(told.paths(), songs);
        QVERIFY2(told.lines.filter("unreadable"_s).isEmpty(),
                 qPrintable(told.lines.join(QLatin1Char(','))));
    }

    void namesThatCannotBeSaidAreTold()
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
        QVERIFY(told.lines.at(0).startsWith("unreadable /bad"_s));
        QVERIFY(told.lines.at(1).startsWith("unreadable /f"_s));
    }

    void aFolderThatCannotBeListedIsTold()
    {
        MemoryFixture memory;
        memory.put("/a/x.mid"_s, "x");
        memory.put("/b/x.mid"_s, "x");
        if (!shell(memory, "chmod 000 a"))
            QSKIP("needs a POSIX shell");
        const bool isListable = QDir(memory.path("/a"_s)).isReadable();
        const Told told(memory);
        shell(memory, "chmod 700 a");
        if (isListable)
            QSKIP("this user may list every folder");
        QVERIFY(told.isListed);
        QCOMPARE(told.paths(), words("/b/x.mid"));
        QVERIFY(told.lines.contains("unreadable /a"_s));
    }

    /** Its songs can't be reached by a path, and that is said. */
    void aTreeDeeperThanAPathIsTold()
    {
#ifdef TARVEL4_PORTABLE_LISTING
        QSKIP("the portable listing does not see so far");
#endif
        MemoryFixture memory;
        memory.put("/a.mid"_s, "x");
        if (!shell(memory,
                   "n=$(printf '%0200d' 0); for i in $(seq 30); do mkdir $n && cd -P $n || exit 1; "
                   "done; printf x >deep.mid"))
            QSKIP("the shell can't make such a tree");
        const Told told(memory);
        QVERIFY(told.isListed);
        QCOMPARE(told.paths().last(), "/a.mid"_s);
        QCOMPARE(told.lines.filter("unreadable"_s).size(), 1);
        QVERIFY(shell(memory, "rm -rf 0*"));
    }
};

QTEST_GUILESS_MAIN(tst_MemoryScan)
#include "tst_memoryscan.moc"
