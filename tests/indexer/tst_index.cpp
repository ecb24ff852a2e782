#include "tests/indexer/memoryfixture.h"

#include <QMetaMethod>
#include <QProcess>
#include <QSignalSpy>

using namespace SongBytes;

namespace {

const QStringList preparedFiles{QStringLiteral("aartist.id3"), QStringLiteral("artist.id3"),
                                QStringLiteral("atitle.id3"),  QStringLiteral("fsinfos.id3"),
                                QStringLiteral("index.id3"),   QStringLiteral("ordfile.id3"),
                                QStringLiteral("title.id3")};

QByteArray zeros(int count)
{
    return QByteArray(count, '\0');
}

/** 64 unclaimed slots but one. */
QByteArray alphaWith(int slot, const char *offset)
{
    return QByteArray(256, '\xFF').replace(4 * slot, 4, hex(offset));
}

/** A disk whose flushing is not waited for. */
class UnflushedDisk : public Disk
{
public:
    bool syncVolume(const QString &) override { return true; }
};

} // namespace

/** A rebuild: the bytes of the seven files and what the layout says of them. */
class tst_Index : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exactlyOneFile();
    void severalFiles();
    void aMemoryWithoutSongsGetsNoIndexFiles();
    void whatIsIndexed_data();
    void whatIsIndexed();
    void pathOrder_data();
    void pathOrder();
    void alphaSlots_data();
    void alphaSlots();
    void titlesOf58BytesHaveNoNul_data();
    void titlesOf58BytesHaveNoNul();
    void artistsThatDifferInCaseFormOneGroup();
    void backCountsLeadFromGroupToGroup();
    void dateAndTimeAreDigits();
    void textsOutsideLatin1AreReplaced();
    void pathsOf252CharactersAreReported();
    void otherFilesOfThePlayerStay();
    void aTrailingSeparatorIsRemoved_data();
    void aTrailingSeparatorIsRemoved();
    void unusableRoots_data();
    void unusableRoots();
    void signalsTellTheProgress();
    void oddEntriesAreNoSongs();
    void loopsOfLinksEnd();
    void realSongs();
    void seventyThousandSongs();
};

void tst_Index::exactlyOneFile()
{
    MemoryFixture memory;
    memory.put(QStringLiteral("/a.mid"), midi0(meta(3, "Alfa") + hex("00 FF5103 07A120")));
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    QCOMPARE(index.found(), 1);
    QVERIFY(index.changed());
    QVERIFY(!index.failed());

    QCOMPARE(memory.indexFiles(), preparedFiles);
    const QByteArray title = hex("00000000") + "ALFA" + zeros(54) + hex("7800");
    QCOMPARE(memory.read("index.id3").toHex(),
             (hex("00000000") + "/a.mid" + zeros(246) + "20090305070809").toHex());
    QCOMPARE(memory.read("ordfile.id3").toHex(), QByteArray("0000"));
    QCOMPARE(memory.read("title.id3").toHex(), title.toHex());
    QCOMPARE(memory.read("artist.id3").toHex(),
             (hex("00000001") + "<UNKNOWN>" + zeros(49) + hex("00ff") + title).toHex());
    QCOMPARE(memory.read("atitle.id3").toHex(), alphaWith('A' - ' ', "00000000").toHex());
    QCOMPARE(memory.read("aartist.id3").toHex(), alphaWith('<' - ' ', "00000000").toHex());
    QCOMPARE(memory.read("fsinfos.id3").toHex(), QByteArray("010001000000000000000000"));
}

void tst_Index::severalFiles()
{
    MemoryFixture memory; // scanned in path order: /b.mf4 is met before /Zeta/x.mid
    memory.put(QStringLiteral("/Zeta/x.mid"),
               midi0(meta(3, "Alfa") + songInfo(2, "Abba") + meta(6, "Refrain")));
    memory.put(QStringLiteral("/b.mf4"),
               mfxHeader(4, {"beta", "", "", "", "", 300, 1}) + zeros(100));
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    QCOMPARE(memory.read("index.id3").toHex(),
             (hex("00000000") + "/b.mf4" + zeros(246) + "20090305070809" + hex("00000001")
              + "/Zeta/x.mid" + zeros(241) + "20090305070809")
                 .toHex());
    QCOMPARE(memory.read("ordfile.id3").toHex(), QByteArray("00000100"));
    const QByteArray beta =
        hex("00000000") + "BETA" + zeros(54) + hex("2c 0b"); // 300 cut to 8 bits; markers, kind 3
    const QByteArray alfa = hex("00000001") + "ALFA" + zeros(54) + hex("00 08");
    QCOMPARE(memory.read("title.id3").toHex(), (alfa + beta).toHex());
    QCOMPARE(memory.read("artist.id3").toHex(),
             (hex("00000001") + "<UNKNOWN>" + zeros(49) + hex("00ff") + beta + hex("00010001")
              + "ABBA" + zeros(54) + hex("00ff") + alfa)
                 .toHex());
    QCOMPARE(memory.read("atitle.id3").toHex(),
             alphaWith('A' - ' ', "00000000").replace(4 * ('B' - ' '), 4, hex("00000040")).toHex());
    QCOMPARE(memory.read("aartist.id3").toHex(),
             alphaWith('<' - ' ', "00000000").replace(4 * ('A' - ' '), 4, hex("00000080")).toHex());
    QCOMPARE(memory.read("fsinfos.id3").toHex(), QByteArray("020002000000000000000000"));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_Index::aMemoryWithoutSongsGetsNoIndexFiles()
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

void tst_Index::whatIsIndexed_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("indexed");
    const auto row = [](const char *name, const char *path, bool indexed) {
        QTest::newRow(name) << QString::fromUtf8(path) << indexed;
    };
    for (const char *suffix :
         {"mid", "kar", "mf3", "mf4", "mf5", "mp3", "MID", "Kar", "mF3", "MP3"})
        row(qPrintable(QStringLiteral("a file named song.%1 is taken").arg(QLatin1String(suffix))),
            QByteArray("/song.").append(suffix), true);
    row("a file named song.wav is not", "/song.wav", false);
    row("a file without suffix is not", "/mid", false);
    row("the last suffix counts", "/song.mid.bak", false);
    row("a name with two points is taken", "/song.01.mid", true);
    row("a folder called sfx is skipped", "/sfx/song.mid", false);
    row("a folder called bridge is skipped", "/bridge/song.mid", false);
    row("in any case of letters", "/SFX/song.mid", false);
    row("below the root, too", "/a/b/Bridge/c/song.mid", false);
    row("a folder that begins so is not skipped", "/sfx2/song.mid", true);
    row("a file called sfx.mid is taken", "/sfx.mid", true);
    row("a nested folder is scanned", "/a/b/c/d/song.mid", true);
    row("a playlist folder is scanned", "/playlist/song.mid", true);
    row("a name that begins with a point is no song", "/._song.mid", false);
    row("nor is what lies in such a folder", "/.Trash/song.mid", false);
}

void tst_Index::whatIsIndexed()
{
    QFETCH(QString, path);
    QFETCH(bool, indexed);
    MemoryFixture memory;
    memory.put(path, midi0());
    Index index;
    QCOMPARE(index.rebuild(memory.root()), indexed);
    QCOMPARE(index.found(), indexed ? 1 : 0);
    if (indexed)
        QCOMPARE(memory.paths(), QStringList{path});
}

void tst_Index::pathOrder_data()
{
    QTest::addColumn<QStringList>("sorted");
    QTest::newRow("/b.mid comes before /Zeta.mid")
        << QStringList{QStringLiteral("/b.mid"), QStringLiteral("/Zeta.mid")};
    QTest::newRow("/Zeta.mid comes before /Zeta/x.mid")
        << QStringList{QStringLiteral("/Zeta.mid"), QStringLiteral("/Zeta/x.mid")};
    QTest::newRow("accented letters come behind all others, as capitals") << QStringList{
        QStringLiteral("/z.mid"), QStringLiteral("/\u00e0.mid"), QStringLiteral("/\u00c8.mid")};
    QTest::newRow("bytes compare as unsigned")
        << QStringList{QStringLiteral("/~.mid"), QStringLiteral("/\u00a1.mid")};
}

void tst_Index::pathOrder()
{
    QFETCH(QStringList, sorted);
    MemoryFixture memory;
    for (const QString &path : std::as_const(sorted))
        memory.put(path, midi0());
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    const QStringList paths = memory.paths();
    const QByteArray order = memory.read("ordfile.id3");
    QStringList actual;
    for (int i = 0; i < order.size(); i += 2)
        actual.append(paths.value(quint8(order.at(i))));
    QCOMPARE(actual, sorted);
}

void tst_Index::alphaSlots_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("slot"); // -1: none
    QTest::newRow("a title beginning with \"a\" claims slot 33") << QStringLiteral("alfa") << 33;
    QTest::newRow("a title beginning with \"\u00e0\" claims no slot")
        << QStringLiteral("\u00e0 la") << -1;
    QTest::newRow("a title beginning with \"{\" claims no slot") << QStringLiteral("{x}") << -1;
    QTest::newRow("the last slot is that of \"_\"") << QStringLiteral("_x") << 63;
    QTest::newRow("an exclamation mark claims slot 1") << QStringLiteral("!x") << 1;
    QTest::newRow("a digit claims its slot") << QStringLiteral("12 anni") << 17;
}

void tst_Index::alphaSlots()
{
    QFETCH(QString, title);
    QFETCH(int, slot);
    MemoryFixture memory;
    memory.putMidi(QStringLiteral("/a.mid"), title.toLatin1());
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    const QByteArray expected = slot < 0 ? QByteArray(256, '\xFF') : alphaWith(slot, "00000000");
    QCOMPARE(memory.read("atitle.id3").toHex(), expected.toHex());
}

void tst_Index::titlesOf58BytesHaveNoNul_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("57 bytes end with a NUL") << 57 << QByteArray(57, 'X') + '\0';
    QTest::newRow("58 bytes fill the field") << 58 << QByteArray(58, 'X');
    QTest::newRow("more are cut") << 59 << QByteArray(58, 'X');
}

void tst_Index::titlesOf58BytesHaveNoNul()
{
    QFETCH(int, length);
    QFETCH(QByteArray, field);
    MemoryFixture memory;
    memory.putMidi(QStringLiteral("/a.mid"), QByteArray(length, 'x'), QByteArray(length, 'x'));
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    QCOMPARE(memory.read("title.id3").mid(4, 58), field);
    QCOMPARE(memory.read("artist.id3").mid(4, 58), field);
    QCOMPARE(memory.read("title.id3").mid(62).toHex(), QByteArray("0000"));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_Index::artistsThatDifferInCaseFormOneGroup()
{
    MemoryFixture memory;
    memory.putMidi(QStringLiteral("/a.mid"), "one", "Abba");
    memory.putMidi(QStringLiteral("/b.mid"), "two", "ABBA");
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    QCOMPARE(memory.read("artist.id3").size(), 3 * 64);
    QCOMPARE(memory.read("fsinfos.id3").left(4).toHex(), QByteArray("02000100"));
}

void tst_Index::backCountsLeadFromGroupToGroup()
{
    MemoryFixture memory;
    int number = 0;
    for (const char *artist : {"a", "a", "a", "b", "c", "c"})
        memory.putMidi(QStringLiteral("/%1.mid").arg(number++), "t", artist);
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    const QByteArray artists = memory.read("artist.id3");
    QCOMPARE(artists.left(4).toHex(), QByteArray("00000003"));
    QCOMPARE(artists.mid(4 * 64, 4).toHex(), QByteArray("00030001"));
    QCOMPARE(artists.mid(6 * 64, 4).toHex(), QByteArray("00010002"));
}

void tst_Index::dateAndTimeAreDigits()
{
    MemoryFixture memory;
    memory.put(QStringLiteral("/a.mid"), midi0(), QDateTime(QDate(2009, 3, 5), QTime(7, 8, 9)));
    memory.put(QStringLiteral("/b.mid"), midi0(),
               QDateTime(QDate(2107, 12, 31), QTime(23, 59, 58)));
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    QCOMPARE(memory.read("index.id3").mid(256, 14), QByteArray("20090305070809"));
    QCOMPARE(memory.read("index.id3").mid(270 + 256), QByteArray("21071231235958"));
}

void tst_Index::textsOutsideLatin1AreReplaced()
{
    MemoryFixture memory;
    memory.putMidi(QStringLiteral("/\u0416\u00e9.mid"), "");
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    QCOMPARE(memory.paths(), QStringList{QStringLiteral("/?\u00e9.mid")});
    QCOMPARE(memory.titles(), QStringList{QStringLiteral("?\u00c9")});
    QCOMPARE(memory.read("atitle.id3"), QByteArray(256, '\xFF'));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_Index::pathsOf252CharactersAreReported()
{
    MemoryFixture memory;
    const QString longest =
        u'/' + QString(100, u'd') + u'/' + QString(145, u'x') + QStringLiteral(".mid"); // 251
    const QString tooLong =
        u'/' + QString(100, u'd') + u'/' + QString(146, u'x') + QStringLiteral(".mid"); // 252
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

void tst_Index::otherFilesOfThePlayerStay()
{
    MemoryFixture memory;
    const QStringList deleted{QStringLiteral("genre.id3"),    QStringLiteral("agenre.id3"),
                              QStringLiteral("title3.id3"),   QStringLiteral("artist3.id3"),
                              QStringLiteral("genre3.id3"),   QStringLiteral("atitle3.id3"),
                              QStringLiteral("aartist3.id3"), QStringLiteral("agenre3.id3"),
                              QStringLiteral("temp1.id3"),    QStringLiteral("temp2.id3")};
    for (const QString &name : deleted)
        memory.put(u'/' + name, "x");
    memory.put(QStringLiteral("/sfx.id3"), "mine");
    memory.put(QStringLiteral("/playlist/playlist.dat"), "mine");
    memory.put(QStringLiteral("/.fsinfos.new"), "left by a killed run");
    memory.put(QStringLiteral("/a.mid"), midi0());
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    QStringList left = preparedFiles;
    left.insert(6, QStringLiteral("sfx.id3"));
    QCOMPARE(memory.indexFiles(), left);
    QVERIFY(index.deleteIndex(memory.root()));
    QCOMPARE(memory.indexFiles(), QStringList{QStringLiteral("sfx.id3")});
    QCOMPARE(memory.read("playlist/playlist.dat"), QByteArray("mine"));
    QVERIFY(index.deleteIndex(memory.root())); // nothing there is passed over
}

void tst_Index::aTrailingSeparatorIsRemoved_data()
{
    QTest::addColumn<QString>("separator");
    QTest::newRow("none") << QString();
    QTest::newRow("a slash") << QStringLiteral("/");
    QTest::newRow("a backslash") << QStringLiteral("\\");
}

void tst_Index::aTrailingSeparatorIsRemoved()
{
    QFETCH(QString, separator);
    MemoryFixture memory;
    memory.put(QStringLiteral("/a.mid"), midi0());
    Index index;
    QVERIFY(index.rebuild(memory.root() + separator));
    QVERIFY(index.update(memory.root() + separator));
    QVERIFY(!index.changed());
    QCOMPARE(memory.paths(), QStringList{QStringLiteral("/a.mid")});
    QVERIFY(Index::isPrepared(memory.root() + separator));
}

void tst_Index::unusableRoots_data()
{
    QTest::addColumn<QString>("below");
    QTest::newRow("a root that does not exist") << QStringLiteral("/nowhere");
    QTest::newRow("a root that is a file") << QStringLiteral("/a.mid");
}

void tst_Index::unusableRoots()
{
    QFETCH(QString, below);
    MemoryFixture memory;
    memory.put(QStringLiteral("/a.mid"), midi0());
    Index index;
    QVERIFY(!index.rebuild(memory.path(below)));
    QVERIFY(index.failed());
    QVERIFY(!index.update(memory.path(below)));
    QVERIFY(index.failed());
    QCOMPARE(names(memory.root()), QStringList{QStringLiteral("a.mid")});
}

void tst_Index::signalsTellTheProgress()
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
    QCOMPARE(signals_.join(u','),
             QStringLiteral(
                 "value 0,found 1,path /sub,found 2,max 2,path /a.mid,value 1,path /sub/b.mid,"
                 "value 2,path ,max 100,value 0,value 10,value 20,value 30,value 40,value 50,"
                 "value 90,value 100"));

    signals_.clear();
    QVERIFY(index.update(memory.root())); // nothing changed: only up to the found count
    QCOMPARE(signals_.join(u','),
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

void tst_Index::oddEntriesAreNoSongs()
{
#ifndef Q_OS_UNIX
    QSKIP("needs a POSIX shell");
#endif
    MemoryFixture memory;
    memory.putMidi(QStringLiteral("/a.mid"), "a");
    QDir(memory.root()).mkdir(QStringLiteral("folder.mid"));
    QCOMPARE(QProcess::execute(QStringLiteral("sh"),
                               {QStringLiteral("-c"),
                                QStringLiteral("cd \"$1\" && mkfifo fifo.mid && ln -s /nowhere "
                                               "link.mid && ln -s /dev/null null.mid && "
                                               "printf x > \"$(printf 'bad\\377.mid')\""),
                                QStringLiteral("sh"), memory.root()}),
             0);
    Index index;
    QSignalSpy errors(&index, &Index::errorFromIndex);
    QVERIFY(index.rebuild(memory.root()));
    QCOMPARE(memory.paths(), QStringList{QStringLiteral("/a.mid")});
    QCOMPARE(errors.size(),
             1); // the name that can't be represented is told, not dropped without a word
}

void tst_Index::loopsOfLinksEnd()
{
    MemoryFixture memory;
    memory.putMidi(QStringLiteral("/sub/a.mid"), "a");
    QVERIFY(QFile::link(memory.root(), memory.path(QStringLiteral("/sub/loop"))));
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    QCOMPARE(index.found(), 1);
}

void tst_Index::realSongs()
{
    const QDir songs(QStringLiteral("/usr/share/games/openttd/baseset/openmsx"));
    const QStringList midis = songs.entryList({QStringLiteral("*.mid")});
    if (midis.isEmpty())
        QSKIP("openttd-openmsx is not installed");
    MemoryFixture memory;
    for (const QString &name : midis)
        QVERIFY(QFile::copy(songs.filePath(name), memory.root() + u'/' + name));
    Index index;
    QVERIFY(index.rebuild(memory.root()));
    QCOMPARE(index.found(), midis.size());
    QCOMPARE(memory.problems(), QStringList());
    QVERIFY(memory.titles().contains(QStringLiteral("SPARE WHEELS BALLET"))
            || memory.titles().size() == midis.size());
}

/** Numbers in two bytes wrap: the ord index and the counts are cut to 16 bits, the 32-bit ones are
 * not. */
void tst_Index::seventyThousandSongs()
{
    constexpr int songs = 70000;
    MemoryFixture memory;
    for (int i = 0; i < songs; ++i) {
        const QString below = QStringLiteral("/%1/%2.mid")
                                  .arg(i / 1000, 2, 10, QLatin1Char('0'))
                                  .arg(i, 5, 10, QLatin1Char('0'));
        if (i % 1000 == 0)
            QDir(memory.root()).mkdir(below.mid(1, 2));
        QFile file(memory.path(below));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
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

    bool ok = false;
    const QVector<IndexEntry> entries = index.readEntries(memory.root(), ok);
    QVERIFY(ok);
    QCOMPARE(entries.size(), songs);
    QCOMPARE(entries.last().title, QStringLiteral("69999"));
    QVERIFY(index.update(memory.root()));
    QVERIFY(!index.changed());
}

QTEST_GUILESS_MAIN(tst_Index)
#include "tst_index.moc"
