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
    void exactlyOneFile();
    void severalFiles();
    void alphaSlots_data();
    void alphaSlots();
    void titlesOf58BytesHaveNoNul_data();
    void titlesOf58BytesHaveNoNul();
    void groups();
    void dateAndTimeAreDigits();
    void textsOutsideLatin1AreReplaced();
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

    QCOMPARE(memory.indexFiles(), MemoryFixture::preparedFiles());
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
    QVERIFY(Index().rebuild(memory.root()));
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
    QVERIFY(Index().rebuild(memory.root()));
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
    QVERIFY(Index().rebuild(memory.root()));
    QCOMPARE(memory.read("title.id3").mid(4, 58), field);
    QCOMPARE(memory.read("artist.id3").mid(4, 58), field);
    QCOMPARE(memory.read("title.id3").mid(62).toHex(), QByteArray("0000"));
    QCOMPARE(memory.problems(), QStringList());
}

/** Artists that differ in case form one group; back-counts lead from group to group. */
void tst_Index::groups()
{
    MemoryFixture memory;
    int number = 0;
    for (const char *artist : {"a", "A", "a", "b", "c", "C"})
        memory.putMidi(QStringLiteral("/%1.mid").arg(number++), "t", artist);
    QVERIFY(Index().rebuild(memory.root()));
    const QByteArray artists = memory.read("artist.id3");
    QCOMPARE(artists.size(), 9 * 64);
    QCOMPARE(artists.left(4).toHex(), QByteArray("00000003"));
    QCOMPARE(artists.mid(4 * 64, 4).toHex(), QByteArray("00030001"));
    QCOMPARE(artists.mid(6 * 64, 4).toHex(), QByteArray("00010002"));
    QCOMPARE(memory.read("fsinfos.id3").left(4).toHex(), QByteArray("06000300"));
}

void tst_Index::dateAndTimeAreDigits()
{
    MemoryFixture memory;
    memory.put(QStringLiteral("/a.mid"), midi0(), QDateTime(QDate(2009, 3, 5), QTime(7, 8, 9)));
    memory.put(QStringLiteral("/b.mid"), midi0(),
               QDateTime(QDate(2107, 12, 31), QTime(23, 59, 58)));
    const QDateTime firstMoment = QDateTime::fromMSecsSinceEpoch(0);
    memory.put(QStringLiteral("/c.mid"), midi0(), firstMoment);
    memory.put(QStringLiteral("/d.mid"), midi0(), firstMoment.addSecs(-1));
    QVERIFY(Index().rebuild(memory.root()));
    QCOMPARE(memory.read("index.id3").mid(256, 14), QByteArray("20090305070809"));
    QCOMPARE(memory.read("index.id3").mid(270 + 256, 14), QByteArray("21071231235958"));
    QCOMPARE(memory.read("index.id3").mid(2 * 270 + 256, 14),
             firstMoment.toString(QStringLiteral("yyyyMMddhhmmss")).toLatin1());
    QCOMPARE(memory.problems(), QStringList());
}

void tst_Index::textsOutsideLatin1AreReplaced()
{
    MemoryFixture memory;
    memory.putMidi(QStringLiteral("/\u0416\u00e9.mid"), "");
    QVERIFY(Index().rebuild(memory.root()));
    QCOMPARE(memory.paths(), QStringList{QStringLiteral("/?\u00e9.mid")});
    QCOMPARE(memory.titles(), QStringList{QStringLiteral("?\u00c9")});
    QCOMPARE(memory.read("atitle.id3"), QByteArray(256, '\xFF'));
    QCOMPARE(memory.problems(), QStringList());
}

QTEST_GUILESS_MAIN(tst_Index)
#include "tst_index.moc"
