#include "indexer/indexwriter.h"

#include "tests/indexer/memoryfixture.h"
#include "tests/storage/failingdisk.h"

using namespace tarvel4;
using namespace SongBytes;

namespace {

using Operation = int (*)(IndexWriter &writer);

IndexEntry entry(int number, const char *title, const char *artist)
{
    IndexEntry entry;
    entry.number = entry.order = number;
    entry.relativePath = "/%1.mid"_s.arg(number, 6, 10, QLatin1Char('0'));
    entry.title = QString::fromLatin1(title);
    entry.artist = QString::fromLatin1(artist);
    return entry;
}

QVector<IndexEntry> threeSongs()
{
    return {entry(0, "B", "ADA"), entry(1, "A", "BICE"), entry(2, "C", "ADA")};
}

} // namespace

Q_DECLARE_METATYPE(Operation)

/** Each writer by itself: its result, how it writes, and where two bytes wrap. */
class tst_IndexWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void results_data()
    {
        const Table<QString, int, Operation> row;
        row("ord index: 0, -1 where it can't be opened or written", "ordfile.id3", 0,
            [](IndexWriter &w) { return w.writeOrdIndex(); });
        row("path index: 0, -1 where it can't be opened or written", "index.id3", 0,
            [](IndexWriter &w) { return w.writePathIndex(); });
        row("title index: the records, -1 where it can't be opened or written", "title.id3", 3,
            [](IndexWriter &w) { return w.writeTitleIndex(); });
        row("artist index: the groups, -1 where it can't be opened or written", "artist.id3", 2,
            [](IndexWriter &w) { return w.writeArtistIndex(); });
        row("alpha index: 0, -1 where it can't be opened or written", "atitle.id3", 0,
            [](IndexWriter &w) { return w.writeAlphaIndex("atitle.id3"); });
        row("numfile index: 0, -1 where it can't be opened or written", "fsinfos.id3", 0,
            [](IndexWriter &w) { return w.writeNumfileIndex(3, 2); });
    }
    void results()
    {
        const auto [name, result, operation] = cells<QString, int, Operation>();
        const QVector<IndexEntry> songs = threeSongs();
        MemoryFixture memory;
        IndexWriter writer(memory.root(), songs, Disk::real());
        QCOMPARE(operation(writer), result);
        QVERIFY(QFile::exists(memory.file(name)));

        FailingDisk disk;
        disk.failAt = 1;
        IndexWriter onFullCard(memory.root(), songs, disk);
        QCOMPARE(operation(onFullCard), -1);
        QCOMPARE(disk.operations.value(0), "write"_s);
        QVERIFY(onFullCard.outcome() == disk.cause);
        QVERIFY(onFullCard.outcome().path.startsWith(memory.root() + QLatin1Char('/')));

        QVERIFY(QFile::remove(memory.file(name)));
        QVERIFY(QDir(memory.root()).mkpath(name + "/in the way"_s));
        QCOMPARE(operation(writer), -1);
    }

    void ordValuesAreWrittenInBlocks_data()
    {
        const Table<int, int, QByteArray> row;
        row("512 values are one block", 512, 1, "ff01");
        row("513 values are two", 513, 2, "0002");
        row("1024 values are two", 1024, 2, "ff03");
    }
    void ordValuesAreWrittenInBlocks()
    {
        const auto [songs, writes, last] = cells<int, int, QByteArray>();
        QVector<IndexEntry> entries;
        for (int i = 0; i < songs; ++i)
            entries.append(entry(i, "T", "A"));
        MemoryFixture memory;
        FailingDisk disk;
        QCOMPARE(IndexWriter(memory.root(), entries, disk).writeOrdIndex(), 0);
        QCOMPARE(disk.operations.count("write"_s), writes);
        QCOMPARE(memory.read("ordfile.id3").size(), 2 * songs);
        QCOMPARE(memory.read("ordfile.id3").right(2).toHex(), last);

        disk.failAt = static_cast<int>(disk.operations.size()) + writes;
        QCOMPARE(IndexWriter(memory.root(), entries, disk).writeOrdIndex(), -1);
        QVERIFY(memory.read("ordfile.id3").size() < 2 * songs);
    }

    void anAlphaIndexIsThatOfTheWriterBefore()
    {
        const QVector<IndexEntry> songs = threeSongs();
        MemoryFixture memory;
        IndexWriter writer(memory.root(), songs, Disk::real());
        QCOMPARE(writer.writeTitleIndex(), 3);
        QCOMPARE(writer.writeAlphaIndex("atitle.id3"), 0);
        QCOMPARE(writer.writeArtistIndex(), 2);
        QCOMPARE(writer.writeAlphaIndex("aartist.id3"), 0);
        const QByteArray unclaimed(4, '\xFF');
        QCOMPARE(memory.hexOf("atitle.id3", 4 * 33, 12), "000000000000004000000080"_s);
        QCOMPARE(memory.read("aartist.id3").mid(4 * 33, 12).toHex(),
                 QByteArray("00000000000000c0") + unclaimed.toHex()); // "C" began a title only
    }

    void aKindTakesThreeBitsAndLeavesTheMarkersAlone_data()
    {
        const Table<int, int, QString> row;
        row("the highest kind there is", 4, 0, "04");
        row("with markers", 4, 1, "0c");
        row("a kind of more than three bits", 0xFF, 0, "07");
    }
    void aKindTakesThreeBitsAndLeavesTheMarkersAlone()
    {
        const auto [kind, markers, attribute] = cells<int, int, QString>();
        IndexEntry song = entry(0, "A", "ADA");
        song.kind = static_cast<quint8>(kind);
        song.markers = static_cast<quint8>(markers);
        MemoryFixture memory;
        QCOMPARE(IndexWriter(memory.root(), {song}, Disk::real()).writeTitleIndex(), 1);
        QCOMPARE(memory.hexOf("title.id3", 63, 1), attribute);
    }

    void lettersOfAnotherCaseAreTheSame()
    {
        const QVector<IndexEntry> songs = {entry(0, "alfa", "Ada"), entry(1, "Beta", "ADA")};
        MemoryFixture memory;
        IndexWriter writer(memory.root(), songs, Disk::real());
        QCOMPARE(writer.writeTitleIndex(), 2);
        QCOMPARE(writer.writeAlphaIndex("atitle.id3"), 0);
        QCOMPARE(memory.hexOf("atitle.id3", 4 * ('A' - ' '), 8), "0000000000000040"_s);
        QCOMPARE(writer.writeArtistIndex(), 1); // one group
    }

    void theCountsGetTheirNameOnceEveryFileIsOnTheMedium_data()
    {
        const Table<QString> row;
        const QStringList names = words("index.id3 ordfile.id3 title.id3 artist.id3 atitle.id3 "
                                        "aartist.id3 .fsinfos.new");
        for (const QString &name : names)
            row(qPrintable("not before %1 is"_s.arg(name)), name);
    }
    void theCountsGetTheirNameOnceEveryFileIsOnTheMedium()
    {
        const auto [name] = cells<QString>();
        const QVector<IndexEntry> songs = threeSongs();
        MemoryFixture memory;
        FailingDisk disk;
        disk.badPart = QLatin1Char('/') + name;
        IndexWriter writer(memory.root(), songs, disk);
        QCOMPARE(writer.writeNumfileIndex(3, 2), -1);
        QCOMPARE(disk.operations, words("write syncAll"));
        QVERIFY(!QFile::exists(memory.file("fsinfos.id3")));
    }

    void countsWrapAt16Bits()
    {
        constexpr int songs = 65794; // 0x10102
        QVector<IndexEntry> entries;
        for (int i = 0; i < songs; ++i)
            entries.append(entry(i, "T", "ADA"));
        entries.append(entry(songs, "U", "BICE"));
        MemoryFixture memory;
        IndexWriter writer(memory.root(), entries, Disk::real());
        QCOMPARE(writer.writeArtistIndex(), 2);
        QCOMPARE(writer.writeAlphaIndex("aartist.id3"), 0);
        const QByteArray artists = memory.read("artist.id3");
        QCOMPARE(artists.left(4).toHex(), QByteArray("00000102"));
        QCOMPARE(artists.mid(64 * (songs + 1), 4).toHex(), QByteArray("01020001"));
        QCOMPARE(artists.right(64).left(4).toHex(), QByteArray("00010102")); // a number does not
        QCOMPARE(memory.hexOf("aartist.id3", 4 * ('B' - ' '), 4), "004040c0"_s);
        QCOMPARE(writer.writeNumfileIndex(65538, 65541), 0);
        QCOMPARE(memory.hexOf("fsinfos.id3"), "020005000000000000000000"_s);
    }
};

QTEST_GUILESS_MAIN(tst_IndexWriter)
#include "tst_indexwriter.moc"
