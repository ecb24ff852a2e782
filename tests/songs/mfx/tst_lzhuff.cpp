#include "songs/mfx/lzhuff.h"
#include "tests/library/logcapture.h"
#include "tests/storage/table.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QtTest>

using namespace tarvel4;

namespace {

const QString frame = "====================================================================="_s;

/** The bytes of the vectors' generator rule. */
QByteArray lcg(int size)
{
    QByteArray bytes;
    quint32 x = 12345;
    for (int i = 0; i < size; ++i) {
        x = (x * 1103515245U + 12345U) & 0x7FFFFFFFU;
        bytes.append(static_cast<char>((x >> 16) & 15U));
    }
    return bytes;
}

QByteArray random(int size, quint32 seed, int values = 256)
{
    QRandomGenerator generator(seed);
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(static_cast<char>(generator.bounded(values)));
    return bytes;
}

QByteArray expanded(const QByteArray &stream)
{
    QByteArray text = "left over";
    LzHuff codec;
    return codec.expand(stream, text) ? text : QByteArray("refused");
}

QByteArray compressed(const QByteArray &text)
{
    QByteArray stream = "left over";
    LzHuff codec;
    codec.compress(text, stream);
    return stream;
}

} // namespace

class tst_LzHuff : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void vectors_data()
    {
        const Table<QByteArray, QByteArray, int, QByteArray> row;
        QFile file(QStringLiteral(TARVEL4_TEST_DATA "/lzhuff.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonArray vectors = QJsonDocument::fromJson(file.readAll()).array();
        QCOMPARE(vectors.size(), 12);
        const auto bytes = [](const QJsonObject &vector, const char *key) {
            return QByteArray::fromHex(vector.value(QLatin1String(key)).toString().toLatin1());
        };
        for (const QJsonValue &value : vectors) {
            const QJsonObject vector = value.toObject();
            const bool generated = vector.contains("rule"_s);
            const QByteArray stream = bytes(vector, "compressed");
            row(qPrintable(vector.value("name"_s).toString()),
                (generated ? lcg(vector.value("length"_s).toInt()) : bytes(vector, "input")),
                stream, (generated ? vector.value("compressed_length"_s).toInt() : stream.size()),
                (generated ? bytes(vector, "compressed_sha256")
                           : QCryptographicHash::hash(stream, QCryptographicHash::Sha256)));
        }
    }
    void vectors()
    {
        const auto [text, stream, streamSize, streamHash] =
            cells<QByteArray, QByteArray, int, QByteArray>();
        const QByteArray result = compressed(text);
        if (!stream.isEmpty())
            QCOMPARE(result.toHex(), stream.toHex());
        QCOMPARE(result.size(), streamSize);
        QCOMPARE(QCryptographicHash::hash(result, QCryptographicHash::Sha256).toHex(),
                 streamHash.toHex());
        QCOMPARE(expanded(stream.isEmpty() ? result : stream).toHex(), text.toHex());
    }

    void roundTrip_data()
    {
        const Table<QByteArray> row;
        row("one zero byte", QByteArray(1, '\0'));
        row("28 equal bytes: one less than the longest match", QByteArray(28, 'x'));
        row("29 equal bytes: the longest match", QByteArray(29, 'x'));
        row("30 equal bytes: one more than the longest match", QByteArray(30, 'x'));
        row("a text that starts with the spaces the window is filled with",
            QByteArray(60, ' ') + "MThd");
        row("nothing but more spaces than the window holds", QByteArray(5000, ' '));
        row("zero bytes, as the end of the first window holds", QByteArray(5000, '\0'));
        row("random bytes: nothing to save", random(20000, 1));
        row("two values: a match nearly everywhere", random(20000, 2, 2));
        row("matches that reach back the whole window",
            random(4096, 3) + random(4096, 3) + random(4095, 3) + random(4097, 3));
        row("a text of 500,000 bytes: the largest", lcg(500000));
        row("500,000 equal bytes", QByteArray(500000, '\x7F'));
    }
    void roundTrip()
    {
        const auto [text] = cells<QByteArray>();
        QVERIFY(expanded(compressed(text)) == text);
    }

    void sizeField_data()
    {
        const Table<QByteArray, bool, QString> row;
        // loggedSize: empty: the corrupt-stream block is not written
        const auto hex = [](const char *digits) { return QByteArray::fromHex(digits); };
        row("500,000 is accepted", hex("20a1070000000000"), true, {});
        row("500,001 is rejected with the message block", hex("21a1070000000000"), false, "500001");
        row("the largest size there is", hex("ffffffff00000000"), false, "4294967295");
        row("a size of 0 fails without the block", hex("00000000ffffffff"), false, {});
        row("3 bytes: the missing one counts as FF", hex("010000"), false, "4278190081");
        row("2 bytes", hex("0100"), false, "4294901761");
        row("1 byte", hex("01"), false, "4294967041");
        row("no byte at all", hex(""), false, "4294967295");
        row("4 bytes: a size and no bits", hex("05000000"), true, {});
    }
    void sizeField()
    {
        const auto [stream, accepted, loggedSize] = cells<QByteArray, bool, QString>();
        LogCapture log;
        QByteArray text = "left over";
        LzHuff codec;
        QCOMPARE(codec.expand(stream, text), accepted);
        QCOMPARE(text.isEmpty(), !accepted);

        QStringList expected;
        if (!loggedSize.isEmpty()) {
            expected << frame
                     << "WARNING: skipping file, compressed stream corrupted/wrong size !!!"_s
                     << "Text size:  "_s + loggedSize << frame;
        }
        if (!accepted)
            expected << "Expand: ERROR"_s;
        else
            expected << "Expand: %1  --> %2"_s.arg(stream.size()).arg(text.size());
        QCOMPARE(LogCapture::lines(), expected);
    }

    void damagedStream_data()
    {
        const Table<QByteArray> row;
        const QByteArray sound = compressed(lcg(3000));
        row("cut after its size", sound.left(4));
        row("cut in the middle", sound.left(sound.size() / 2));
        row("its last byte missing", sound.chopped(1));
        row("a size that promises more than there is",
            QByteArray::fromHex("20a10700") + sound.mid(4));
        row("all bits set", QByteArray::fromHex("20a10700") + QByteArray(3000, '\xFF'));
        row("all bits clear", QByteArray::fromHex("20a10700") + QByteArray(3000, '\0'));
        row("random bits", QByteArray::fromHex("20a10700") + random(100000, 4));
        for (int bit = 40; bit < 400; bit += 41) {
            QByteArray flipped = sound;
            flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
            QTest::addRow("bit %d flipped", bit) << flipped;
        }
    }
    void damagedStream()
    {
        const auto [stream] = cells<QByteArray>();
        const QByteArray text = expanded(stream);
        const int size = qFromLittleEndian<qint32>(stream.constData());
        QVERIFY2(text.size() >= size && text.size() <= size + 28, QByteArray::number(text.size()));
        QVERIFY(expanded(stream) == text);
    }

    void theFirstMatchReachesBackTwentyNineSpaces()
    {
        // The code of the longest match, 11100100, then position 28: 000 011100.
        QCOMPARE(compressed(QByteArray(29, ' ')).toHex(), QByteArray("1d000000e40e00"));
    }

    void aMatchIsCopiedWholeEvenPastTheSize()
    {
        // "x", then a match of 28: the stream of 29 equal bytes with a size that ends within the
        // match.
        QCOMPARE(expanded(QByteArray::fromHex("0200000042e30000")), QByteArray(29, 'x'));
    }

    void anEndedStreamGoesOnWithZeroBits()
    {
        const QByteArray bits = QByteArray::fromHex("e8030000") + random(20, 5);
        QCOMPARE(expanded(bits), expanded(bits + QByteArray(2000, '\0')));
    }

    void anEmptyTextIsFourZeroBytesAndExpandingThemFails()
    {
        QCOMPARE(compressed(QByteArray()).toHex(), QByteArray("00000000"));
        QCOMPARE(expanded(QByteArray(4, '\0')), QByteArray("refused"));
    }

    void aCodecCanBeReusedWhateverItDidBefore()
    {
        // The last pair differs when the matcher compares with what the text before has left.
        const std::pair<QByteArray, QByteArray> textsAfterOthers[] = {
            {QByteArray(), "tarvel tarvel"},
            {lcg(70000), "tarvel tarvel"},
            {random(9000, 6), lcg(700)},
            {"bbabababaabaaaaaababbaabbaababababbaaabbaaaaaaaaabbaabaaaaabbaabaabbbaa",
             "abaa a ab   bbbbabbb"}};
        for (const auto &[before, text] : textsAfterOthers) {
            LzHuff used;
            QByteArray stream;
            QByteArray expandedText;
            used.compress(before, stream);
            used.expand(stream, expandedText);
            used.expand(QByteArray::fromHex("10270000") + random(500, 7), expandedText);

            used.compress(text, stream);
            QCOMPARE(stream.toHex(), compressed(text).toHex());
            QVERIFY(used.expand(stream, expandedText));
            QCOMPARE(expandedText, text);
        }
    }

    void inputAndOutputMayBeTheSameArray()
    {
        LzHuff codec;
        QByteArray bytes = lcg(1000);
        codec.compress(bytes, bytes);
        QVERIFY(codec.expand(bytes, bytes));
        QCOMPARE(bytes, lcg(1000));
    }

    void theSizesAreLogged()
    {
        LogCapture log;
        compressed("A");
        expanded(QByteArray::fromHex("010000000b"));
        compressed(QByteArray());
        QCOMPARE(
            LogCapture::lines(),
            (QStringList{"Compress: 1  --> 5"_s, "Expand: 5  --> 1"_s, "Compress: 0  --> 4"_s}));
    }
};

QTEST_GUILESS_MAIN(tst_LzHuff)
#include "tst_lzhuff.moc"
