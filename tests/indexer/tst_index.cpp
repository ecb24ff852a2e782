#include "tests/indexer/memoryfixture.h"

using namespace tarvel4;
using namespace SongBytes;

namespace {

QByteArray zeros(int count)
{
    return QByteArray(count, '\0');
}

/** 64 unclaimed slots but one. */
QByteArray alphaWith(int slot, const char *offset)
{
    return QByteArray(256, '\xFF').replace(4 * slot, 4, hex(offset));
}

} // namespace

/** The bytes of the seven files that a rebuild writes, and what the layout says of them. */
class tst_Index : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exactlyOneFile()
    {
        MemoryFixture memory;
        memory.put("/a.mid"_s, midi0(meta(3, "Alfa") + hex("00 FF5103 07A120")));
        Index index;
        QVERIFY(index.rebuild(memory.root()));
        QCOMPARE(index.found(), 1);
        QVERIFY(index.changed());
        QVERIFY(!index.failed());

        QCOMPARE(memory.indexFiles(), MemoryFixture::preparedFiles());
        const QByteArray title = hex("00000000") + "ALFA" + zeros(54) + hex("7800");
        QCOMPARE(memory.read("index.id3").toHex(),
                 (hex("00000000") + "/a.mid" + zeros(246) + "20090305070809").toHex());
        QCOMPARE(memory.hexOf("ordfile.id3"), "0000"_s);
        QCOMPARE(memory.read("title.id3").toHex(), title.toHex());
        QCOMPARE(memory.read("artist.id3").toHex(),
                 (hex("00000001") + "<UNKNOWN>" + zeros(49) + hex("00ff") + title).toHex());
        QCOMPARE(memory.read("atitle.id3").toHex(), alphaWith('A' - ' ', "00000000").toHex());
        QCOMPARE(memory.read("aartist.id3").toHex(), alphaWith('<' - ' ', "00000000").toHex());
        QCOMPARE(memory.hexOf("fsinfos.id3"), "010001000000000000000000"_s);
    }

    void severalFiles()
    {
        MemoryFixture memory; // scanned in path order: /b.mf4 is met before /Zeta/x.mid
        memory.put("/Zeta/x.mid"_s,
                   midi0(meta(3, "Alfa") + songInfo(2, "Abba") + meta(6, "Refrain")));
        memory.put("/b.mf4"_s, mfxHeader(4, {"beta", "", "", "", "", 300, 1}) + zeros(100));
        QVERIFY(Index().rebuild(memory.root()));
        QCOMPARE(memory.read("index.id3").toHex(),
                 (hex("00000000") + "/b.mf4" + zeros(246) + "20090305070809" + hex("00000001")
                  + "/Zeta/x.mid" + zeros(241) + "20090305070809")
                     .toHex());
        QCOMPARE(memory.hexOf("ordfile.id3"), "00000100"_s);
        const QByteArray beta = hex("00000000") + "BETA" + zeros(54)
            + hex("2c 0b"); // 300 cut to 8 bits; markers, kind 3
        const QByteArray alfa = hex("00000001") + "ALFA" + zeros(54) + hex("00 08");
        QCOMPARE(memory.read("title.id3").toHex(), (alfa + beta).toHex());
        QCOMPARE(memory.read("artist.id3").toHex(),
                 (hex("00000001") + "<UNKNOWN>" + zeros(49) + hex("00ff") + beta + hex("00010001")
                  + "ABBA" + zeros(54) + hex("00ff") + alfa)
                     .toHex());
        QCOMPARE(
            memory.read("atitle.id3").toHex(),
            alphaWith('A' - ' ', "00000000").replace(4 * ('B' - ' '), 4, hex("00000040")).toHex());
        QCOMPARE(
            memory.read("aartist.id3").toHex(),
            alphaWith('<' - ' ', "00000000").replace(4 * ('A' - ' '), 4, hex("00000080")).toHex());
        QCOMPARE(memory.hexOf("fsinfos.id3"), "020002000000000000000000"_s);
        QCOMPARE(memory.problems(), QStringList());
    }

    void alphaSlots_data()
    {
        const Table<QString, int> row; // -1: no slot
        row("a title beginning with \"a\" claims slot 33", "alfa", 33);
        row("a title beginning with \"\u00e0\" claims no slot", "\u00e0 la", -1);
        row("a title beginning with \"{\" claims no slot", "{x}", -1);
        row("the last slot is that of \"_\"", "_x", 63);
        row("an exclamation mark claims slot 1", "!x", 1);
        row("a digit claims its slot", "12 anni", 17);
    }
    void alphaSlots()
    {
        const auto [title, slot] = cells<QString, int>();
        MemoryFixture memory;
        memory.putMidi("/a.mid"_s, title.toLatin1());
        QVERIFY(Index().rebuild(memory.root()));
        const QByteArray expected =
            slot < 0 ? QByteArray(256, '\xFF') : alphaWith(slot, "00000000");
        QCOMPARE(memory.read("atitle.id3").toHex(), expected.toHex());
    }

    void titlesOf58BytesHaveNoNul_data()
    {
        const Table<int, QByteArray> row;
        row("57 bytes end with a NUL", 57, QByteArray(57, 'X') + '\0');
        row("58 bytes fill the field, without a NUL", 58, QByteArray(58, 'X'));
        row("a longer title is cut to 58 bytes", 59, QByteArray(58, 'X'));
    }
    void titlesOf58BytesHaveNoNul()
    {
        const auto [length, field] = cells<int, QByteArray>();
        MemoryFixture memory;
        memory.putMidi("/a.mid"_s, QByteArray(length, 'x'), QByteArray(length, 'x'));
        QVERIFY(Index().rebuild(memory.root()));
        QCOMPARE(memory.read("title.id3").mid(4, 58), field);
        QCOMPARE(memory.read("artist.id3").mid(4, 58), field);
        QCOMPARE(memory.read("title.id3").mid(62).toHex(), QByteArray("0000"));
        QCOMPARE(memory.problems(), QStringList());
    }

    /** Back-counts lead from group to group. */
    void artistsThatDifferInCaseFormOneGroup()
    {
        MemoryFixture memory;
        int number = 0;
        for (const char *artist : {"Abba", "ABBA", "abba", "b", "c", "C"})
            memory.putMidi("/%1.mid"_s.arg(number++), "t", artist);
        QVERIFY(Index().rebuild(memory.root()));
        const QByteArray artists = memory.read("artist.id3");
        QCOMPARE(artists.size(), 9 * 64);
        QCOMPARE(artists.left(4).toHex(), QByteArray("00000003"));
        QCOMPARE(artists.mid(4 * 64, 4).toHex(), QByteArray("00030001"));
        QCOMPARE(artists.mid(6 * 64, 4).toHex(), QByteArray("00010002"));
        QCOMPARE(memory.hexOf("fsinfos.id3", 0, 4), "06000300"_s);
    }

    void dateAndTimeAreDigits()
    {
        MemoryFixture memory;
        memory.put("/a.mid"_s, midi0(), QDateTime(QDate(2009, 3, 5), QTime(7, 8, 9)));
        memory.put("/b.mid"_s, midi0(), QDateTime(QDate(2107, 12, 31), QTime(23, 59, 58)));
        const QDateTime firstMoment = QDateTime::fromMSecsSinceEpoch(0);
        memory.put("/c.mid"_s, midi0(), firstMoment);
        memory.put("/d.mid"_s, midi0(), firstMoment.addSecs(-1));
        QVERIFY(Index().rebuild(memory.root()));
        QCOMPARE(memory.read("index.id3").mid(256, 14), QByteArray("20090305070809"));
        QCOMPARE(memory.read("index.id3").mid(270 + 256, 14), QByteArray("21071231235958"));
        QCOMPARE(memory.read("index.id3").mid(2 * 270 + 256, 14),
                 firstMoment.toString("yyyyMMddhhmmss"_s).toLatin1());
        QCOMPARE(memory.problems(), QStringList());
    }

    void textsOutsideLatin1AreReplaced()
    {
        MemoryFixture memory;
        memory.putMidi(QStringLiteral("/\u0416\u00e9.mid"), "");
        QVERIFY(Index().rebuild(memory.root()));
        QCOMPARE(memory.paths(), QStringList{QStringLiteral("/?\u00e9.mid")});
        QCOMPARE(memory.titles(), QStringList{QStringLiteral("?\u00c9")});
        QCOMPARE(memory.read("atitle.id3"), QByteArray(256, '\xFF'));
        QCOMPARE(memory.problems(), QStringList());
    }
};

QTEST_GUILESS_MAIN(tst_Index)
#include "tst_index.moc"
