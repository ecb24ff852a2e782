#include "songs/mfx/lzhuffpositions.h"
#include "songs/mfx/lzhufftree.h"
#include "tests/storage/table.h"

#include <QtTest>

#include <numeric>
#include <random>
#include <vector>

using namespace tarvel4;

namespace {

using Symbols = std::vector<int>;

constexpr int symbolCount = LzHuffFormat::symbolCount;

/** Ten symbols, each about as frequent as all those below it together, the 273 others included, and
 * just too rare to rebuild the tree: nothing makes longer codes for the others. */
Symbols goldenSkewed()
{
    Symbols symbols;
    int symbol = 0;
    for (int count : {146, 274, 420, 695, 1116, 1812, 2929, 4742, 7672, 12415})
        symbols.insert(symbols.end(), static_cast<std::size_t>(count), symbol++);
    return symbols;
}

Symbols everySymbol()
{
    Symbols symbols(symbolCount);
    std::iota(symbols.begin(), symbols.end(), 0);
    return symbols;
}

Symbols randomSymbols(int count)
{
    std::mt19937 random;
    Symbols symbols;
    for (int i = 0; i < count; ++i)
        symbols.push_back(static_cast<int>(random() % symbolCount * (random() % 100) / 100));
    return symbols;
}

QByteArray encoded(LzHuffTree &tree, const Symbols &symbols)
{
    QByteArray bytes;
    BitWriter bits(bytes);
    for (int symbol : symbols)
        tree.encode(symbol, bits);
    bits.finish();
    return bytes;
}

} // namespace

class tst_LzHuffTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodesWhatItEncoded_data()
    {
        const Table<Symbols> row;
        row("every symbol once", everySymbol());
        row("one symbol until the tree is rebuilt twice", Symbols(70000, 282));
        row("many symbols, with rebuilt trees between", randomSymbols(200000));
        Symbols skewed = goldenSkewed();
        const Symbols all = everySymbol();
        skewed.insert(skewed.end(), all.begin(), all.end());
        row("after the most uneven counts, every symbol", skewed);
    }
    void decodesWhatItEncoded()
    {
        const auto [symbols] = cells<Symbols>();
        LzHuffTree encoder;
        const QByteArray bytes = encoded(encoder, symbols);
        LzHuffTree decoder;
        BitReader bits(bytes, 0);
        for (int symbol : symbols)
            QCOMPARE(decoder.decode(bits), symbol);
    }

    void codesLongerThanSixteenBitsAreWhole()
    {
        LzHuffTree encoder;
        encoded(encoder, goldenSkewed());
        LzHuffTree decoder = encoder;
        const QByteArray bytes = encoded(encoder, {282});
        QVERIFY2(bytes.size() == 3, QByteArray::number(bytes.size()));
        BitReader bits(bytes, 0);
        QCOMPARE(decoder.decode(bits), 282);
    }

    void aSymbolThatIsFrequentGetsAShorterCode()
    {
        LzHuffTree tree;
        QCOMPARE(encoded(tree, Symbols(8, 65)).size(), 7); // bits: 8, 8, then ever fewer
        encoded(tree, Symbols(2000, 65));
        QCOMPARE(encoded(tree, Symbols(8, 65)).toHex().size(), 2); // one bit each
    }

    void resetForgetsEveryCount()
    {
        LzHuffTree used;
        encoded(used, randomSymbols(50000));
        used.reset();
        LzHuffTree fresh;
        QCOMPARE(encoded(used, everySymbol()).toHex(), encoded(fresh, everySymbol()).toHex());
    }

    void positions_data()
    {
        const Table<int, QByteArray> row;
        row("upper bits 0: three bits", 0, "000000000");
        row("the lower six bits follow as they are", 0x2A, "000101010");
        row("upper bits 1: the first of four bits", (1 << 6), "0010000000");
        row("upper bits 3: the last of four bits", (3 << 6), "0100000000");
        row("upper bits 4: the first of five bits", (4 << 6), "01010000000");
        row("upper bits 11: the last of five bits", (11 << 6), "10001000000");
        row("upper bits 12: the first of six bits", (12 << 6), "100100000000");
        row("upper bits 23: the last of six bits", (23 << 6), "101111000000");
        row("upper bits 24: the first of seven bits", (24 << 6), "1100000000000");
        row("upper bits 47: the last of seven bits", (47 << 6), "1110111000000");
        row("upper bits 48: the first of eight bits", (48 << 6), "11110000000000");
        row("the largest position", 4095, "11111111111111");
    }
    void positions()
    {
        const auto [position, bits] = cells<int, QByteArray>();
        QByteArray bytes;
        BitWriter writer(bytes);
        LzHuffPositions::encode(position, writer);
        writer.finish();
        QByteArray written;
        for (char byte : bytes)
            written += QByteArray::number(static_cast<uchar>(byte), 2).rightJustified(8, '0');
        QCOMPARE(written, bits.leftJustified(written.size(), '0'));
        QCOMPARE((bits.size() + 7) / 8, bytes.size());
    }

    void everyPositionComesBack()
    {
        QByteArray bytes;
        BitWriter writer(bytes);
        for (int position = 0; position < LzHuffFormat::windowSize; ++position)
            LzHuffPositions::encode(position, writer);
        writer.finish();
        BitReader reader(bytes, 0);
        for (int position = 0; position < LzHuffFormat::windowSize; ++position)
            QCOMPARE(LzHuffPositions::decode(reader), position);
    }
};

QTEST_GUILESS_MAIN(tst_LzHuffTree)
#include "tst_lzhufftree.moc"
