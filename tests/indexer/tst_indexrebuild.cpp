#include "tests/indexer/memoryfixture.h"
#include "tests/library/logcapture.h"

#include <QMetaMethod>
#include <QSignalSpy>

#include <filesystem>

using namespace tarvel4;
using namespace SongBytes;

namespace {

/** A disk whose flushing is not waited for. */
class UnflushedDisk : public Disk
{
public:
    Outcome syncAll(const QStringList &) override { return {}; }
};

/** A path of the \a i-th of many songs, a thousand a folder. */
QString songPath(int i)
{
    return "/%1/%2.mid"_s.arg(i / 1000, 2, 10, QLatin1Char('0')).arg(i, 5, 10, QLatin1Char('0'));
}

/** Gives a file another name, which is far quicker than another file. */
bool putSameFile(const QString &path, const QString &other)
{
    std::error_code error;
    std::filesystem::create_hard_link(path.toStdString(), other.toStdString(), error);
    return !error || QFile::copy(path, other);
}

} // namespace

/** The run of a rebuild: what it takes for a song, leaves alone, tells and logs. */
class tst_IndexRebuild : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMemoryWithoutSongsGetsNoIndexFiles()
    {
        MemoryFixture memory;
        memory.put("/notes.txt"_s, "x");
        memory.put("/index.id3"_s, "old");
        memory.put("/temp1.id3"_s, "old");
        Index index;
        QVERIFY(!index.rebuild(memory.root()));
        QCOMPARE(index.found(), 0);
        QVERIFY(!index.failed());
        QVERIFY(!index.changed());
        QCOMPARE(memory.indexFiles(), QStringList());
    }

    void pathsOf252CharactersAreReported()
    {
        MemoryFixture memory;
        const QString longest = QLatin1Char('/') + QString(100, QLatin1Char('d')) + QLatin1Char('/')
            + QString(145, QLatin1Char('x')) + ".mid"_s; // 251
        const QString tooLong = QLatin1Char('/') + QString(100, QLatin1Char('d')) + QLatin1Char('/')
            + QString(146, QLatin1Char('x')) + ".mid"_s; // 252
        memory.put(longest, midi0());
        memory.put(tooLong, midi0());
        Index index;
        QSignalSpy errors(&index, &Index::errorFromIndex);
        QVERIFY(index.rebuild(memory.root()));
        QCOMPARE(index.found(), 1);
        QCOMPARE(memory.paths(), QStringList{longest});
        QCOMPARE(errors.size(), 1);
        QCOMPARE(errors.at(0).at(0).toString(),
                 "File non importato, path troppo lungo: "_s + memory.path(tooLong));
        QCOMPARE(memory.problems(), QStringList());
    }

    void namesThatCannotBeSaidAreTold()
    {
        MemoryFixture memory;
        memory.putMidi("/a.mid"_s, "a");
        const QByteArray bad = QFile::encodeName(memory.path("/bad"_s)) + "\xff.mid";
        std::error_code refused;
        std::filesystem::create_symlink("a.mid", bad.toStdString(), refused);
        if (refused)
            QSKIP("the file system takes only names in UTF-8");
        Index index;
        QSignalSpy errors(&index, &Index::errorFromIndex);
        const bool isBuilt = index.rebuild(memory.root());
        std::filesystem::remove(bad.toStdString()); // Qt can't
        QVERIFY(isBuilt);
        QCOMPARE(memory.paths(), QStringList("/a.mid"_s));
        QCOMPARE(errors.size(), 1);
        QVERIFY(errors.at(0).at(0).toString().startsWith("Impossibile leggere: "_s
                                                         + memory.path("/bad"_s)));
    }

    void otherFilesOfThePlayerStay()
    {
        MemoryFixture memory;
        const QStringList deleted{
            "genre.id3"_s,   "agenre.id3"_s,   "title3.id3"_s,  "artist3.id3"_s, "genre3.id3"_s,
            "atitle3.id3"_s, "aartist3.id3"_s, "agenre3.id3"_s, "temp1.id3"_s,   "temp2.id3"_s};
        for (const QString &name : deleted)
            memory.put(QLatin1Char('/') + name, "x");
        memory.put("/sfx.id3"_s, "mine");
        memory.put("/playlist/playlist.dat"_s, "mine");
        memory.put("/.fsinfos.new"_s, "left by a killed run");
        memory.put("/a.mid"_s, midi0());
        Index index;
        QVERIFY(index.rebuild(memory.root()));
        QStringList left = MemoryFixture::preparedFiles();
        left.insert(6, "sfx.id3"_s);
        QCOMPARE(memory.indexFiles(), left);
        QVERIFY(index.deleteIndex(memory.root()));
        QCOMPARE(memory.indexFiles(), QStringList("sfx.id3"_s));
        QCOMPARE(memory.read("playlist/playlist.dat"), QByteArray("mine"));
        QVERIFY(index.deleteIndex(memory.root())); // nothing there is skipped
    }

    void aTrailingSeparatorIsRemoved()
    {
        for (const char *separator : {"", "/", "\\"}) {
            MemoryFixture memory;
            memory.put("/a.mid"_s, midi0());
            const QString root = memory.root() + QLatin1String(separator);
            Index index;
            QVERIFY2(index.rebuild(root) && index.update(root) && !index.changed(), separator);
            QCOMPARE(memory.paths(), QStringList("/a.mid"_s));
            QVERIFY2(Index::isPrepared(root), separator);
        }
    }

    void unusableRoots()
    {
        MemoryFixture memory;
        memory.put("/a.mid"_s, midi0());
        for (const QString &root :
             {memory.path("/nowhere"_s), memory.path("/a.mid"_s), QString()}) {
            for (const auto job : {&Index::rebuild, &Index::update}) {
                Index index;
                QVERIFY(!(index.*job)(root));
                QVERIFY(index.failed());
                QCOMPARE(index.outcome().codeName(), "not-found"_s);
                QCOMPARE(index.outcome().path, root);
            }
        }
        QCOMPARE(names(memory.root()), QStringList("a.mid"_s));
    }

    void signalsTellTheProgress()
    {
        MemoryFixture memory;
        memory.putMidi("/sub/b.mid"_s, "b");
        memory.putMidi("/a.mid"_s, "a");
        Index index;
        QStringList signals_;
        QObject::connect(&index, &Index::fileFoundChanged,
                         [&](int n) { signals_ << "found %1"_s.arg(n); });
        QObject::connect(&index, &Index::progressMaxSetup,
                         [&](int n) { signals_ << "max %1"_s.arg(n); });
        QObject::connect(&index, &Index::progressValueChanged,
                         [&](int n) { signals_ << "value %1"_s.arg(n); });
        QObject::connect(&index, &Index::currentPathChanged, [&](const QString &path) {
            signals_ << "path "_s + (path.isEmpty() ? path : path.mid(memory.root().size()));
        });
        QVERIFY(index.rebuild(memory.root()));
        QCOMPARE(signals_.join(QLatin1Char(',')),
                 QStringLiteral(
                     "value 0,found 1,path /sub,found 2,max 2,path /a.mid,value 1,path /sub/b.mid,"
                     "value 2,path ,max 100,value 0,value 10,value 20,value 30,value 40,value 50,"
                     "value 90,value 100"));

        signals_.clear();
        QVERIFY(index.update(memory.root())); // nothing changed: only up to the found count
        QCOMPARE(signals_.join(QLatin1Char(',')),
                 QStringLiteral(
                     "value 0,found 1,path /sub,found 2,max 2,path /a.mid,value 1,path /sub/b.mid,"
                     "value 2,path "));

        const QMetaObject &meta = Index::staticMetaObject;
        QStringList declared;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            declared << QString::fromLatin1(meta.method(i).methodSignature());
        QCOMPARE(declared,
                 (QStringList{"fileFoundChanged(int)"_s, "progressMaxSetup(int)"_s,
                              "progressValueChanged(int)"_s, "currentPathChanged(QString)"_s,
                              "errorFromIndex(QString)"_s}));
    }

    /** Each step says what it does, in this order. */
    void theLogNamesEachStep()
    {
        MemoryFixture memory;
        memory.put("/b.mid"_s, midi0());
        memory.put("/a.mid"_s, midi0());
        Index index;
        const LogCapture log;
        QVERIFY(index.rebuild(memory.root()));
        const auto quoted = [&memory](const char *below) {
            return QString(QLatin1Char('"') + memory.path(QLatin1String(below)) + QLatin1Char('"'));
        };
        QCOMPARE(LogCapture::lines(),
                 (QStringList{"delete index"_s, "create title index"_s, quoted("/a.mid"),
                              quoted("/b.mid"), "write ord index"_s, "write path index"_s,
                              "write title index"_s, "write alpha index"_s, "write artist index"_s,
                              "write alpha index"_s, "write numfile index"_s}));
    }

    void realSongs()
    {
        const QDir songs("/usr/share/games/openttd/baseset/openmsx"_s);
        const QStringList midis = songs.entryList({"*.mid"_s});
        if (midis.isEmpty())
            QSKIP("openttd-openmsx is not installed");
        MemoryFixture memory;
        for (const QString &name : midis)
            QVERIFY(QFile::copy(songs.filePath(name), memory.root() + QLatin1Char('/') + name));
        Index index;
        QVERIFY(index.rebuild(memory.root()));
        QCOMPARE(index.found(), midis.size());
        QCOMPARE(memory.problems(), QStringList());
        QCOMPARE(memory.titles().size(), midis.size());
        QVERIFY(memory.titles().contains(QStringLiteral("CARELESS LOVE")));
    }

    /** Numbers in two bytes wrap: the ord index and the counts are cut to 16 bits, the 32-bit ones
     * are not. */
    void seventyThousandSongs()
    {
#ifdef Q_OS_WIN
        QSKIP("wine takes minutes for so many files, and no number depends on the system");
#endif
        constexpr int songs = 70000;
        MemoryFixture memory;
        for (int i = 0; i < songs; i += 1000) {
            memory.put(songPath(i), QByteArray());
            for (int j = i + 1; j < i + 1000; ++j)
                QVERIFY(putSameFile(memory.path(songPath(i)), memory.path(songPath(j))));
        }
        const LogCapture silence;
        UnflushedDisk disk;
        Index index(nullptr, disk);
        QVERIFY(index.rebuild(memory.root()));
        QCOMPARE(index.found(), songs);
        QCOMPARE(memory.hexOf("fsinfos.id3"),
                 "701101000000000000000000"_s); // 70,000 - 65,536 = 0x1170
        QCOMPARE(memory.hexOf("ordfile.id3", 2 * 65536, 4), "00000100"_s);
        QCOMPARE(memory.hexOf("index.id3", 270 * 69999, 4), "0001116f"_s);
        QCOMPARE(memory.hexOf("artist.id3", 0, 4), "00001170"_s);
        QCOMPARE(memory.problems(), QStringList());

        const QVector<IndexEntry> entries = Index::readEntries(memory.root()).entries;
        QCOMPARE(entries.size(), songs);
        QCOMPARE(entries.last().title, "69999"_s);
        QVERIFY(index.update(memory.root()));
        QVERIFY(!index.changed());
    }
};

QTEST_GUILESS_MAIN(tst_IndexRebuild)
#include "tst_indexrebuild.moc"
