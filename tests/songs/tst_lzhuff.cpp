#include "songs/lzhuff.h"

#include <QtTest>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

class tst_LzHuff : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void vectors_data();
    void vectors();
    void comesBackUnchanged_data();
    void comesBackUnchanged();
    void statedSize_data();
    void statedSize();
    void damagedStreams_data();
    void damagedStreams();
    void copiesAreCompletedPastTheStatedSize();
    void anObjectCanBeUsedAgain();
    void logsWhatItDid();
};

namespace {

QStringList messages;

void keepMessage(QtMsgType, const QMessageLogContext &, const QString &text)
{
    messages.append(text);
}

/** A reproducible sequence; \a range limits the byte values. */
QByteArray pseudoRandom(int size, quint32 range)
{
    QByteArray bytes;
    quint32 state = 12345;
    for (int i = 0; i < size; ++i) {
        state = state * 1664525U + 1013904223U;
        bytes.append(static_cast<char>((state >> 16) % range));
    }
    return bytes;
}

/** The input that the vectors' rule describes. */
QByteArray generated(int size)
{
    QByteArray bytes;
    quint32 state = 12345;
    for (int i = 0; i < size; ++i) {
        state = (state * 1103515245U + 12345U) & 0x7FFFFFFFU;
        bytes.append(static_cast<char>(state >> 16 & 15));
    }
    return bytes;
}

} // namespace

void tst_LzHuff::vectors_data()
{
    QTest::addColumn<QJsonObject>("vector");
    QFile file(QStringLiteral(TARVEL4_TEST_DATA "/lzhuff.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonArray vectors = QJsonDocument::fromJson(file.readAll()).array();
    QCOMPARE(vectors.size(), 12);
    for (const QJsonValue &value : vectors) {
        const QJsonObject vector = value.toObject();
        QTest::newRow(qPrintable(vector.value(QLatin1String("name")).toString())) << vector;
    }
}

/** A vector holds its bytes in full, or the rule of the input with the length and digest of the
 * result. */
void tst_LzHuff::vectors()
{
    QFETCH(QJsonObject, vector);
    const auto hex = [&vector](const char *key) {
        return QByteArray::fromHex(vector.value(QLatin1String(key)).toString().toLatin1());
    };
    const bool inFull = vector.contains(QLatin1String("input"));
    const QByteArray input =
        inFull ? hex("input") : generated(vector.value(QLatin1String("length")).toInt());
    QVERIFY(!input.isEmpty());

    LzHuff codec;
    QByteArray compressed;
    codec.compress(input, compressed);
    if (inFull) {
        QCOMPARE(compressed.toHex(), hex("compressed").toHex());
    } else {
        QCOMPARE(compressed.size(), vector.value(QLatin1String("compressed_length")).toInt());
        QCOMPARE(QCryptographicHash::hash(compressed, QCryptographicHash::Sha256).toHex(),
                 hex("compressed_sha256").toHex());
    }
    QByteArray output;
    QVERIFY(codec.expand(compressed, output));
    QVERIFY(output == input);
}

void tst_LzHuff::comesBackUnchanged_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::newRow("a run of 29 equal bytes") << QByteArray(29, 'a');
    QTest::newRow("a run of 30 equal bytes") << QByteArray(30, 'a');
    QTest::newRow("a run of 5000 equal bytes") << QByteArray(5000, '\0');
    QTest::newRow("an input that starts with spaces")
        << QByteArray(64, ' ') + "song" + QByteArray(40, ' ');
    QTest::newRow("4096 spaces, as many as the ring holds") << QByteArray(4096, ' ');
    QTest::newRow("two bytes") << QByteArray("ab");
    QTest::newRow("noise, which no match shortens") << pseudoRandom(20000, 256);
    QTest::newRow("few values, matches of every length") << pseudoRandom(60000, 3);
    QTest::newRow("long enough for the tree to be rebuilt often") << pseudoRandom(200000, 200);
    QTest::newRow("the largest input, 500,000 bytes") << pseudoRandom(500000, 16);
}

void tst_LzHuff::comesBackUnchanged()
{
    QFETCH(QByteArray, input);
    LzHuff codec;
    QByteArray compressed;
    QByteArray output;
    codec.compress(input, compressed);
    QVERIFY(codec.expand(compressed, output));
    QVERIFY(output == input);
}

void tst_LzHuff::statedSize_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QString>("statedSize"); // in the log; empty where it is not logged
    QTest::newRow("a stated size of 500,000 is accepted")
        << QByteArray::fromHex("20a10700") << true << QString();
    QTest::newRow("a stated size of 500,001 is rejected with the message block")
        << QByteArray::fromHex("21a10700") << false << QStringLiteral("500001");
    QTest::newRow("a 3-byte input is too large: the missing byte counts as 0xFF")
        << QByteArray::fromHex("010000") << false << QStringLiteral("4278190081");
    QTest::newRow("an empty input is too large")
        << QByteArray() << false << QStringLiteral("4294967295");
    QTest::newRow("compressing nothing gives four zero bytes, which do not expand")
        << QByteArray::fromHex("00000000") << false << QString();
}

void tst_LzHuff::statedSize()
{
    QFETCH(QByteArray, input);
    QFETCH(bool, accepted);
    QFETCH(QString, statedSize);
    LzHuff codec;
    QByteArray output("left from before");
    messages.clear();
    const auto previous = qInstallMessageHandler(keepMessage);
    const bool expanded = codec.expand(input, output);
    qInstallMessageHandler(previous);

    QCOMPARE(expanded, accepted);
    if (!accepted)
        QCOMPARE(output, QByteArray());
    QStringList expected;
    if (!statedSize.isEmpty()) {
        const QString line(69, u'=');
        expected = QStringList{line,
                               QStringLiteral("WARNING: skipping file, compressed stream "
                                              "corrupted/wrong size !!!"),
                               QStringLiteral("Text size: ") + statedSize, line};
    }
    if (!accepted)
        QCOMPARE(messages, expected + QStringList{QStringLiteral("Expand: ERROR")});
}

void tst_LzHuff::damagedStreams_data()
{
    QTest::addColumn<QByteArray>("stream");
    QByteArray compressed;
    LzHuff().compress(pseudoRandom(3000, 5), compressed);
    QTest::newRow("cut in half") << compressed.left(compressed.size() / 2);
    QTest::newRow("nothing behind the size: zero bits") << compressed.left(4);
    QTest::newRow("all bits set") << compressed.left(4) + QByteArray(2000, '\xFF');
    QTest::newRow("noise behind the size") << compressed.left(4) + pseudoRandom(2000, 256);
}

void tst_LzHuff::damagedStreams()
{
    QFETCH(QByteArray, stream);
    LzHuff codec;
    QByteArray output;
    QVERIFY(codec.expand(stream, output));
    QVERIFY(output.size() >= 3000);
    QVERIFY(output.size() < 3000 + LzHuffFormat::longestMatch);
}

void tst_LzHuff::copiesAreCompletedPastTheStatedSize()
{
    LzHuff codec;
    QByteArray stream;
    codec.compress(QByteArray(29, 'x'), stream);
    stream[0] = 3; // one literal and a match of 28 bytes
    QByteArray output;
    QVERIFY(codec.expand(stream, output));
    QCOMPARE(output, QByteArray(29, 'x'));
}

void tst_LzHuff::anObjectCanBeUsedAgain()
{
    LzHuff codec;
    QByteArray first;
    QByteArray second;
    QByteArray output;
    codec.compress(pseudoRandom(9000, 40), first);
    codec.expand(QByteArray::fromHex("ff000000aaaa"), output);
    codec.compress(pseudoRandom(9000, 40), second);
    QVERIFY(first == second);
}

void tst_LzHuff::logsWhatItDid()
{
    LzHuff codec;
    QByteArray stream;
    QByteArray output;
    messages.clear();
    const auto previous = qInstallMessageHandler(keepMessage);
    codec.compress(QByteArray("A"), stream);
    codec.expand(stream, output);
    qInstallMessageHandler(previous);
    QCOMPARE(
        messages,
        (QStringList{QStringLiteral("Compress: 1  --> 5"), QStringLiteral("Expand: 5  --> 1")}));
}

QTEST_GUILESS_MAIN(tst_LzHuff)
#include "tst_lzhuff.moc"
