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
    return QStringLiteral("/%1/%2.mid")
        .arg(i / 1000, 2, 10, QLatin1Char('0'))
        .arg(i, 5, 10, QLatin1Char('0'));
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
    void aMemoryWithoutSongsGetsNoIndexFiles();
    void pathsOf252CharactersAreReported();
    void namesThatCannotBeSaidAreTold();
    void otherFilesOfThePlayerStay();
    void aTrailingSeparatorIsRemoved();
    void unusableRoots();
    void signalsTellTheProgress();
    void theLogNamesEachStep();
    void realSongs();
    void seventyThousandSongs();
};

void tst_IndexRebuild::aMemoryWithoutSongsGetsNoIndexFiles()
{
    MemoryFixture memory;
    memory.put(QStringLiteral("/notes.txt"), "x");
    memory.put(QStringLiteral("/index.id3"), "old");
    memory.put(QStringLiteral("/temp1.id3"), "old");
    Index index;
    QVERIFY(!index.rebuild(memory.root()));
    QCOMPARE(index.found(), 0);
    QVERIFY(!index.failed());
    QVERIFY(!index.changed());
    QCOMPARE(memory.indexFiles(), QStringList());
}

void tst_IndexRebuild::pathsOf252CharactersAreReported()
{
    MemoryFixture memory;
    const QString longest = QLatin1Char('/') + QString(100, QLatin1Char('d')) + QLatin1Char('/')
        + QString(145, QLatin1Char('x')) + QStringLiteral(".mid"); // 251
    const QString tooLong = QLatin1Char('/') + QString(100, QLatin1Char('d')) + QLatin1Char('/')
        + QString(146, QLatin1Char('x')) + QStringLiteral(".mid"); // 252
    memory.put(longest, midi0());
    memory.put(tooLong, midi0());
    Index index;
    QSignalSpy errors(&index, &Index::errorFromIndex);
    QVERIFY(index.rebuild(memory.root()));
    QCOMPARE(index.found(), 1);
    QCOMPARE(memory.paths(), QStringList{longest});
    QCOMPARE(errors.size(), 1);
    QCOMPARE(errors.at(0).at(0).toString(),
             QStringLiteral("File non importato, path troppo lungo: ") + memory.path(tooLong));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_IndexRebuild::namesThatCannotBeSaidAreTold()
{
    MemoryFixture memory;
    memory.putMidi(QStringLiteral("/a.mid"), "a");
    const QByteArray bad = QFile::encodeName(memory.path(QStringLiteral("/bad"))) + "\xff.mid";
    std::error_code refused;
    std::filesystem::create_symlink("a.mid", bad.toStdString(), refused);
    if (refused)
        QSKIP("the file system takes only names in UTF-8");
    Index index;
    QSignalSpy errors(&index, &Index::errorFromIndex);
    const bool isBuilt = index.rebuild(memory.root());
    std::filesystem::remove(bad.toStdString()); // Qt can't
    QVERIFY(isBuilt);
    QCOMPARE(memory.paths(), QStringList{QStringLiteral("/a.mid")});
    QCOMPARE(errors.size(), 1);
    QVERIFY(errors.at(0).at(0).toString().startsWith(QStringLiteral("Impossibile leggere: ")
                                                     + memory.path(QStringLiteral("/bad"))));
}

void tst_IndexRebuild::otherFilesOfThePlayerStay()
{
    MemoryFixture memory;
    const QStringList deleted{QStringLiteral("genre.id3"),    QStringLiteral("agenre.id3"),
                              QStringLiteral("title3.id3"),   QStringLiteral("artist3.id3"),
                              QStringLiteral("genre3.id3"),   QStringLiteral("atitle3.id3"),
                              QStringLiteral("aartist3.id3"), QStringLiteral("agenre3.id3"),
                              QStringLiteral("temp1.id3"),    QStringLiteral("temp2.id3")};
    for (const QString &name : deleted)
        memory.put(QLatin1Char('/') + name, "x");
    memory.put(QStringLiteral("/sfx.id3"), "mine");
    memory.put(QStringLiteral("/playlist/playlist.dat"), "mine");
    memory.put(QStringLiteral("/.fsinfos.new"), "left by a killed run");
    memory.put(QStringLiteral("/a.mid"), midi0());
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    QStringList left = MemoryFixture::preparedFiles();
    left.insert(6, QStringLiteral("sfx.id3"));
    QCOMPARE(memory.indexFiles(), left);
    QVERIFY(index.deleteIndex(memory.root()));
    QCOMPARE(memory.indexFiles(), QStringList{QStringLiteral("sfx.id3")});
    QCOMPARE(memory.read("playlist/playlist.dat"), QByteArray("mine"));
    QVERIFY(index.deleteIndex(memory.root())); // nothing there is skipped
}

void tst_IndexRebuild::aTrailingSeparatorIsRemoved()
{
    for (const char *separator : {"", "/", "\\"}) {
        MemoryFixture memory;
        memory.put(QStringLiteral("/a.mid"), midi0());
        const QString root = memory.root() + QLatin1String(separator);
        Index index;
        QVERIFY2(index.rebuild(root) && index.update(root) && !index.changed(), separator);
        QCOMPARE(memory.paths(), QStringList{QStringLiteral("/a.mid")});
        QVERIFY2(Index::isPrepared(root), separator);
    }
}

void tst_IndexRebuild::unusableRoots()
{
    MemoryFixture memory;
    memory.put(QStringLiteral("/a.mid"), midi0());
    for (const QString &root : {memory.path(QStringLiteral("/nowhere")),
                                memory.path(QStringLiteral("/a.mid")), QString()}) {
        for (const auto job : {&Index::rebuild, &Index::update}) {
            Index index;
            QVERIFY(!(index.*job)(root));
            QVERIFY(index.failed());
            QCOMPARE(index.outcome().codeName(), QStringLiteral("not-found"));
            QCOMPARE(index.outcome().path, root);
        }
    }
    QCOMPARE(names(memory.root()), QStringList{QStringLiteral("a.mid")});
}

void tst_IndexRebuild::signalsTellTheProgress()
{
    MemoryFixture memory;
    memory.putMidi(QStringLiteral("/sub/b.mid"), "b");
    memory.putMidi(QStringLiteral("/a.mid"), "a");
    Index index;
    QStringList signals_;
    QObject::connect(&index, &Index::fileFoundChanged,
                     [&](int n) { signals_ << QStringLiteral("found %1").arg(n); });
    QObject::connect(&index, &Index::progressMaxSetup,
                     [&](int n) { signals_ << QStringLiteral("max %1").arg(n); });
    QObject::connect(&index, &Index::progressValueChanged,
                     [&](int n) { signals_ << QStringLiteral("value %1").arg(n); });
    QObject::connect(&index, &Index::currentPathChanged, [&](const QString &path) {
        signals_ << QStringLiteral("path ")
                + (path.isEmpty() ? path : path.mid(memory.root().size()));
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
             (QStringList{QStringLiteral("fileFoundChanged(int)"),
                          QStringLiteral("progressMaxSetup(int)"),
                          QStringLiteral("progressValueChanged(int)"),
                          QStringLiteral("currentPathChanged(QString)"),
                          QStringLiteral("errorFromIndex(QString)")}));
}

/** Each step says what it does, in this order. */
void tst_IndexRebuild::theLogNamesEachStep()
{
    MemoryFixture memory;
    memory.put(QStringLiteral("/b.mid"), midi0());
    memory.put(QStringLiteral("/a.mid"), midi0());
    Index index;
    const LogCapture log;
    QVERIFY(index.rebuild(memory.root()));
    const auto quoted = [&memory](const char *below) {
        return QString(QLatin1Char('"') + memory.path(QLatin1String(below)) + QLatin1Char('"'));
    };
    QCOMPARE(
        LogCapture::lines(),
        (QStringList{QStringLiteral("delete index"), QStringLiteral("create title index"),
                     quoted("/a.mid"), quoted("/b.mid"), QStringLiteral("write ord index"),
                     QStringLiteral("write path index"), QStringLiteral("write title index"),
                     QStringLiteral("write alpha index"), QStringLiteral("write artist index"),
                     QStringLiteral("write alpha index"), QStringLiteral("write numfile index")}));
}

void tst_IndexRebuild::realSongs()
{
    const QDir songs(QStringLiteral("/usr/share/games/openttd/baseset/openmsx"));
    const QStringList midis = songs.entryList({QStringLiteral("*.mid")});
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

/** Numbers in two bytes wrap: the ord index and the counts are cut to 16 bits, the 32-bit ones are
 * not. */
void tst_IndexRebuild::seventyThousandSongs()
{
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
    QCOMPARE(memory.read("fsinfos.id3").toHex(),
             QByteArray("701101000000000000000000")); // 70,000 - 65,536 = 0x1170
    QCOMPARE(memory.read("ordfile.id3").mid(2 * 65536, 4).toHex(), QByteArray("00000100"));
    QCOMPARE(memory.read("index.id3").mid(270 * 69999, 4).toHex(), QByteArray("0001116f"));
    QCOMPARE(memory.read("artist.id3").left(4).toHex(), QByteArray("00001170"));
    QCOMPARE(memory.problems(), QStringList());

    const QVector<IndexEntry> entries = Index::readEntries(memory.root()).entries;
    QCOMPARE(entries.size(), songs);
    QCOMPARE(entries.last().title, QStringLiteral("69999"));
    QVERIFY(index.update(memory.root()));
    QVERIFY(!index.changed());
}

QTEST_GUILESS_MAIN(tst_IndexRebuild)
#include "tst_indexrebuild.moc"
