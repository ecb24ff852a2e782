#include "songs/mfx/mfxheader.h"

#include <QtTest>

#include <functional>

using namespace tarvel4;

namespace {

const char magics[][5] = {"_MF3", "_MF4", "_MF5"};

/** A header in which every byte that has no other meaning tells where it stands. */
QByteArray header(int version)
{
    QByteArray bytes(version == 5 ? 1024 : 512, '\0');
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = char(i * 7 + i / 256);
    bytes.replace(0, 4, magics[version - 3]);
    bytes.replace(4, 4, QByteArray::fromHex("78563412"));
    bytes.replace(12, 4, QByteArray::fromHex("21a10700"));
    bytes.replace(38, 2, QByteArray::fromHex("7800"));
    bytes.replace(42, 13, QByteArray("SANTA LUCIA").leftJustified(13, '\0'));
    bytes.replace(122, 32, QByteArray("Santa Lucia").leftJustified(32, '\0'));
    bytes[185] = char(0x42);
    bytes.replace(186, 32, QByteArray("Cottrau").leftJustified(32, '\0'));
    bytes.replace(218, 32, QByteArray("Tradizionale").leftJustified(32, '\0'));
    bytes.replace(250, 32, QByteArray("Folk").leftJustified(32, '\0'));
    return bytes;
}

QByteArray replaced(QByteArray bytes, int offset, const QByteArray &by)
{
    return bytes.replace(offset, by.size(), by);
}

MfxHeader parsed(const QByteArray &bytes)
{
    MfxHeader header;
    header.parse(bytes);
    return header;
}

} // namespace

Q_DECLARE_METATYPE(std::function<void(MfxHeader &)>)

class tst_MfxHeader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parse_data();
    void parse();
    void failedParseForgetsTheHeaderBefore();
    void readers();
    void textField_data();
    void textField();
    void bpm_data();
    void bpm();
    void writerChangesItsBytesOnly_data();
    void writerChangesItsBytesOnly();
    void nonAsciiTextLengthensTheHeader_data();
    void nonAsciiTextLengthensTheHeader();
    void flagsAreOnlyEverAdded();
    void sizeOf_data();
    void sizeOf();
    void withoutAHeaderNothingIsReadOrWritten();
};

void tst_MfxHeader::parse_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("version");

    QTest::newRow("MF3 of 512 bytes") << header(3) << 3;
    QTest::newRow("MF4 of 512 bytes") << header(4) << 4;
    QTest::newRow("MF5 of 1024 bytes") << header(5) << 5;
    QTest::newRow("MF3 of 511 bytes is too short") << header(3).chopped(1) << 0;
    QTest::newRow("MF4 of 511 bytes is too short") << header(4).chopped(1) << 0;
    QTest::newRow("MF5 of 1023 bytes is too short") << header(5).chopped(1) << 0;
    QTest::newRow("MF5 of 512 bytes is too short") << header(5).left(512) << 0;
    QTest::newRow("MF3 with more bytes keeps them all") << header(3) + "more" << 3;
    QTest::newRow("nothing but a magic") << QByteArray("_MF3") << 0;
    QTest::newRow("no byte at all") << QByteArray() << 0;
    QTest::newRow("unknown version 6") << replaced(header(5), 0, "_MF6") << 0;
    QTest::newRow("unknown version 2") << replaced(header(5), 0, "_MF2") << 0;
    QTest::newRow("magic in lower case") << replaced(header(3), 0, "_mf3") << 0;
    QTest::newRow("magic at offset 1") << '_' + header(3) << 0;
    QTest::newRow("a MIDI file") << replaced(header(3), 0, "MThd") << 0;
    QTest::newRow("sizes that lie are not looked at")
        << replaced(header(3), 4, QByteArray(12, '\xFF')) << 3;
}

void tst_MfxHeader::parse()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, version);

    MfxHeader header;
    QCOMPARE(header.parse(bytes), version != 0);
    QCOMPARE(header.version(), version);
    QCOMPARE(header.headerBytes(), version != 0 ? bytes : QByteArray());
}

void tst_MfxHeader::failedParseForgetsTheHeaderBefore()
{
    MfxHeader mfx = parsed(header(5));
    QVERIFY(!mfx.parse("_MF5"));
    QCOMPARE(mfx.version(), 0);
    QVERIFY(mfx.headerBytes().isEmpty());
    QVERIFY(!mfx.hasTitle());
}

void tst_MfxHeader::readers()
{
    const MfxHeader mfx = parsed(header(5));
    QCOMPARE(mfx.title(), QStringLiteral("Santa Lucia"));
    QCOMPARE(mfx.artist(), QStringLiteral("Tradizionale"));
    QCOMPARE(mfx.author(), QStringLiteral("Cottrau"));
    QCOMPARE(mfx.genre(), QStringLiteral("Folk"));
    QCOMPARE(mfx.longName(), QStringLiteral("SANTA LUCIA"));
    QCOMPARE(mfx.bpm(), 120);
    QCOMPARE(mfx.flags(), quint8(0x42));
    QVERIFY(mfx.hasTitle() && mfx.hasArtist() && mfx.hasAuthor() && mfx.hasGenre());
    QVERIFY(mfx.hasBpm());
}

void tst_MfxHeader::textField_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QString>("text");

    QTest::newRow("ends at the first zero byte") << QByteArray("Ciao\0more", 9) << "Ciao";
    QTest::newRow("fills the whole field") << QByteArray(32, 'x') << QString(32, QLatin1Char('x'));
    QTest::newRow("white space around it goes") << QByteArray("\t Ciao bella \n") << "Ciao bella";
    QTest::newRow("is Latin-1") << QByteArray("Perch\xE9") << QString::fromUtf8("Perché");
    QTest::newRow("UTF-8 is read as Latin-1")
        << QByteArray("Perch\xC3\xA9") << QString::fromUtf8("PerchÃ©");
    QTest::newRow("a placeholder is a text") << QByteArray("-") << "-";
    QTest::newRow("nothing but blanks is no text") << QByteArray(32, ' ') << QString();
    QTest::newRow("nothing but zero bytes is no text") << QByteArray(32, '\0') << QString();
    QTest::newRow("what stands behind a zero byte is no text")
        << QByteArray("\0hidden", 7) << QString();
}

void tst_MfxHeader::textField()
{
    QFETCH(QByteArray, field);
    QFETCH(QString, text);

    const QByteArray bytes = field.leftJustified(32, '\0');
    const MfxHeader mfx = parsed(replaced(
        replaced(replaced(replaced(header(3), 122, bytes), 186, bytes), 218, bytes), 250, bytes));
    QCOMPARE(mfx.title(), text);
    QCOMPARE(mfx.author(), text);
    QCOMPARE(mfx.artist(), text);
    QCOMPARE(mfx.genre(), text);
    QCOMPARE(mfx.hasTitle(), !text.isEmpty());
    QCOMPARE(mfx.hasAuthor(), !text.isEmpty());
    QCOMPARE(mfx.hasArtist(), !text.isEmpty());
    QCOMPARE(mfx.hasGenre(), !text.isEmpty());
}

void tst_MfxHeader::bpm_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<int>("bpm");
    QTest::addColumn<bool>("present");

    const auto row = [](const char *name, const char *field, int bpm, bool present) {
        QTest::newRow(name) << QByteArray::fromHex(field) << bpm << present;
    };
    row("0 counts as absent", "0000", 0, false);
    row("1 is the least", "0100", 1, true);
    row("the low byte comes first", "2c01", 300, true);
    row("499 is the most", "f301", 499, true);
    row("500 counts as absent", "f401", 500, false);
    row("the field is unsigned", "ffff", 65535, false);
}

void tst_MfxHeader::bpm()
{
    QFETCH(QByteArray, field);
    QFETCH(int, bpm);
    QFETCH(bool, present);

    const MfxHeader mfx = parsed(replaced(header(4), 38, field));
    QCOMPARE(mfx.bpm(), bpm);
    QCOMPARE(mfx.hasBpm(), present);
}

void tst_MfxHeader::writerChangesItsBytesOnly_data()
{
    using Write = std::function<void(MfxHeader &)>;
    QTest::addColumn<Write>("write");
    QTest::addColumn<int>("offset");
    QTest::addColumn<QByteArray>("written");

    const auto row = [](const char *name, const Write &write, int offset, const QByteArray &bytes) {
        QTest::newRow(name) << write << offset << bytes;
    };
    const auto text = [](const char *ascii) { return QString::fromLatin1(ascii); };
    const auto padded = [](const char *ascii) { return QByteArray(ascii).leftJustified(32, '\0'); };

    row(
        "the title Ciao is followed by 28 zero bytes at 122",
        [=](MfxHeader &mfx) { mfx.setTitle(text("Ciao")); }, 122, "Ciao" + QByteArray(28, '\0'));
    row(
        "author", [=](MfxHeader &mfx) { mfx.setAuthor(text("G. Verdi")); }, 186,
        padded("G. Verdi"));
    row(
        "artist", [=](MfxHeader &mfx) { mfx.setArtist(text("Banda")); }, 218, padded("Banda"));
    row(
        "genre", [=](MfxHeader &mfx) { mfx.setGenre(text("Opera")); }, 250, padded("Opera"));
    row(
        "an empty text is 32 zero bytes", [=](MfxHeader &mfx) { mfx.setGenre(QString()); }, 250,
        QByteArray(32, '\0'));
    row(
        "a text of 32 characters has no zero byte behind it",
        [=](MfxHeader &mfx) { mfx.setTitle(QString(32, QLatin1Char('x'))); }, 122,
        QByteArray(32, 'x'));
    row(
        "a text of 33 characters is cut",
        [=](MfxHeader &mfx) { mfx.setTitle(QString(32, QLatin1Char('x')) + text("y")); }, 122,
        QByteArray(32, 'x'));
    row(
        "half a character at the cut becomes a question mark",
        [=](MfxHeader &mfx) {
            mfx.setTitle(QString(31, QLatin1Char('x')) + QString::fromUtf8("\U0001F3B5"));
        },
        122, QByteArray(31, 'x') + '?');
    row(
        "bpm, low byte first", [](MfxHeader &mfx) { mfx.setBpm(300); }, 38,
        QByteArray::fromHex("2c01"));
    row(
        "bpm takes the low 16 bits", [](MfxHeader &mfx) { mfx.setBpm(0x12345); }, 38,
        QByteArray::fromHex("4523"));
    row(
        "flags", [](MfxHeader &mfx) { mfx.setFlag(0x01); }, 185, QByteArray::fromHex("43"));
    row(
        "total size", [](MfxHeader &mfx) { mfx.setTotalSize(0xFEDCBA98); }, 4,
        QByteArray::fromHex("98badcfe"));
    row(
        "uncompressed size", [](MfxHeader &mfx) { mfx.setUncompressedSize(500000); }, 12,
        QByteArray::fromHex("20a10700"));
}

void tst_MfxHeader::writerChangesItsBytesOnly()
{
    QFETCH(std::function<void(MfxHeader &)>, write);
    QFETCH(int, offset);
    QFETCH(QByteArray, written);

    for (int version : {3, 4, 5}) {
        MfxHeader mfx = parsed(header(version));
        write(mfx);
        QCOMPARE(mfx.headerBytes().toHex(' '),
                 replaced(header(version), offset, written).toHex(' '));
    }
}

void tst_MfxHeader::nonAsciiTextLengthensTheHeader_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("written");

    QTest::newRow("one accent adds one byte")
        << QString::fromUtf8("Perché") << "Perch\xC3\xA9" + QByteArray(26, '\0');
    QTest::newRow("32 accents add 32 bytes")
        << QString(32, QChar(0xE9)) << QByteArray("\xC3\xA9").repeated(32);
}

void tst_MfxHeader::nonAsciiTextLengthensTheHeader()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, written);

    MfxHeader mfx = parsed(header(3));
    mfx.setTitle(text);
    QByteArray expected = header(3);
    expected.replace(122, 32, written);
    QCOMPARE(mfx.headerBytes().toHex(' '), expected.toHex(' '));
    QVERIFY(mfx.headerBytes().size() > MfxHeader::sizeOf(3));
}

void tst_MfxHeader::flagsAreOnlyEverAdded()
{
    MfxHeader mfx = parsed(replaced(header(3), 185, QByteArray(1, '\x80')));
    mfx.setFlag(MfxFormat::hasMarkersFlag);
    mfx.setFlag(0);
    mfx.setFlag(0x10);
    QCOMPARE(mfx.flags(), quint8(0x91));
}

void tst_MfxHeader::sizeOf_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("size");

    QTest::newRow("version 3") << 3 << 512;
    QTest::newRow("version 4") << 4 << 512;
    QTest::newRow("version 5") << 5 << 1024;
    QTest::newRow("no version") << 0 << 0;
    QTest::newRow("unknown version") << 6 << 0;
}

void tst_MfxHeader::sizeOf()
{
    QFETCH(int, version);
    QFETCH(int, size);

    QCOMPARE(MfxHeader::sizeOf(version), size);
}

void tst_MfxHeader::withoutAHeaderNothingIsReadOrWritten()
{
    MfxHeader mfx;
    mfx.setTitle(QStringLiteral("Ciao"));
    mfx.setAuthor(QStringLiteral("Ciao"));
    mfx.setArtist(QStringLiteral("Ciao"));
    mfx.setGenre(QStringLiteral("Ciao"));
    mfx.setBpm(120);
    mfx.setFlag(1);
    mfx.setTotalSize(1);
    mfx.setUncompressedSize(1);
    QVERIFY(mfx.headerBytes().isEmpty());
    QCOMPARE(mfx.version(), 0);
    QCOMPARE(mfx.title() + mfx.longName(), QString());
    QCOMPARE(mfx.bpm(), 0);
    QCOMPARE(mfx.flags(), quint8(0));
    QVERIFY(!mfx.hasBpm());
}

QTEST_GUILESS_MAIN(tst_MfxHeader)
#include "tst_mfxheader.moc"
