#include "songs/mfx/mfxheader.h"

#include "tests/storage/foldertest.h"

using namespace tarvel4;
using namespace SongBytes;

using Edit = std::function<void(MfxHeader &)>;
Q_DECLARE_METATYPE(Edit)

#define EDIT(...) [](MfxHeader &mfx) { mfx.__VA_ARGS__; }

namespace {

const char magics[][5] = {"_MF3", "_MF4", "_MF5"};

/** A header in which every byte that has no other meaning tells where it stands. */
QByteArray header(int version)
{
    QByteArray bytes(version == 5 ? 1024 : 512, '\0');
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 256);
    bytes.replace(0, 4, magics[version - 3]);
    bytes.replace(4, 4, hex("78563412"));
    bytes.replace(12, 4, hex("21a10700"));
    bytes.replace(38, 2, hex("7800"));
    bytes.replace(42, 13, QByteArray("SANTA LUCIA").leftJustified(13, '\0'));
    bytes.replace(122, 32, QByteArray("Santa Lucia").leftJustified(32, '\0'));
    bytes[185] = static_cast<char>(0x42);
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

class tst_MfxHeader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parse_data()
    {
        const Table<QByteArray, int> row;
        row("MF3 of 512 bytes", header(3), 3);
        row("MF4 of 512 bytes", header(4), 4);
        row("MF5 of 1024 bytes", header(5), 5);
        row("MF3 of 511 bytes is too short", header(3).chopped(1), 0);
        row("MF4 of 511 bytes is too short", header(4).chopped(1), 0);
        row("MF5 of 1023 bytes is too short", header(5).chopped(1), 0);
        row("MF5 of 512 bytes is too short", header(5).left(512), 0);
        row("MF3 with more bytes keeps them all", header(3) + "more", 3);
        row("nothing but a magic", "_MF3", 0);
        row("no byte at all", {}, 0);
        row("unknown version 6", replaced(header(5), 0, "_MF6"), 0);
        row("unknown version 2", replaced(header(5), 0, "_MF2"), 0);
        row("magic in lower case", replaced(header(3), 0, "_mf3"), 0);
        row("magic at offset 1", '_' + header(3), 0);
        row("a MIDI file", replaced(header(3), 0, "MThd"), 0);
        row("sizes that lie are not looked at", replaced(header(3), 4, QByteArray(12, '\xFF')), 3);
    }
    void parse()
    {
        const auto [bytes, version] = cells<QByteArray, int>();
        MfxHeader header;
        QCOMPARE(header.parse(bytes), version != 0);
        QCOMPARE(header.version(), version);
        QCOMPARE(header.headerBytes(), version != 0 ? bytes : QByteArray());
    }

    void failedParseForgetsTheHeaderBefore()
    {
        MfxHeader mfx = parsed(header(5));
        QVERIFY(!mfx.parse("_MF5"));
        QCOMPARE(mfx.version(), 0);
        QVERIFY(mfx.headerBytes().isEmpty());
        QVERIFY(!mfx.hasTitle());
    }

    void readers()
    {
        const MfxHeader mfx = parsed(header(5));
        QCOMPARE(mfx.title(), "Santa Lucia"_s);
        QCOMPARE(mfx.artist(), "Tradizionale"_s);
        QCOMPARE(mfx.author(), "Cottrau"_s);
        QCOMPARE(mfx.genre(), "Folk"_s);
        QCOMPARE(mfx.longName(), "SANTA LUCIA"_s);
        QCOMPARE(mfx.bpm(), 120);
        QCOMPARE(mfx.flags(), static_cast<quint8>(0x42));
    }

    void textField_data()
    {
        const Table<QByteArray, QString> row;
        row("ends at the first zero byte", QByteArray("Ciao\0more", 9), "Ciao");
        row("fills the whole field", QByteArray(32, 'x'), QString(32, QLatin1Char('x')));
        row("white space around it goes", "\t Ciao bella \n", "Ciao bella");
        row("is Latin-1", "Perch\xE9", "Perché");
        row("UTF-8 is read as Latin-1", "Perch\xC3\xA9", "PerchÃ©");
        row("a placeholder is a text", "-", "-");
        row("nothing but blanks is no text", QByteArray(32, ' '), {});
        row("nothing but zero bytes is no text", QByteArray(32, '\0'), {});
        row("what stands behind a zero byte is no text", QByteArray("\0hidden", 7), {});
    }
    void textField()
    {
        const auto [field, text] = cells<QByteArray, QString>();
        const QByteArray bytes = field.leftJustified(32, '\0');
        const MfxHeader mfx = parsed(
            replaced(replaced(replaced(replaced(header(3), 122, bytes), 186, bytes), 218, bytes),
                     250, bytes));
        QCOMPARE(mfx.title(), text);
        QCOMPARE(mfx.author(), text);
        QCOMPARE(mfx.artist(), text);
        QCOMPARE(mfx.genre(), text);
        QCOMPARE(mfx.hasTitle(), !text.isEmpty());
        QCOMPARE(mfx.hasAuthor(), !text.isEmpty());
        QCOMPARE(mfx.hasArtist(), !text.isEmpty());
        QCOMPARE(mfx.hasGenre(), !text.isEmpty());
    }

    void bpm_data()
    {
        const Table<QByteArray, int, bool> row;
        row("0 counts as absent", hex("0000"), 0, false);
        row("1 is the least", hex("0100"), 1, true);
        row("499 is the most, the low byte first", hex("f301"), 499, true);
        row("500 counts as absent", hex("f401"), 500, false);
        row("the field is unsigned", hex("ffff"), 65535, false);
    }
    void bpm()
    {
        const auto [field, bpm, present] = cells<QByteArray, int, bool>();
        const MfxHeader mfx = parsed(replaced(header(4), 38, field));
        QCOMPARE(mfx.bpm(), bpm);
        QCOMPARE(mfx.hasBpm(), present);
    }

    void writerChangesItsBytesOnly_data()
    {
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<int>("offset");
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<int>("replaced"); // bytes
        const auto row = [](const char *name, const Edit &edit, int offset,
                            const QByteArray &written, int width = 0) {
            QTest::newRow(name) << edit << offset << written << (width ? width : written.size());
        };
        const auto padded = [](const char *text) {
            return QByteArray(text).leftJustified(32, '\0');
        };
        const QByteArray xs(31, 'x');
        const QString longText(32, QLatin1Char('x'));
        row("the title Ciao is followed by 28 zero bytes at 122", EDIT(setTitle("Ciao"_s)), 122,
            "Ciao" + QByteArray(28, '\0'));
        row("author", EDIT(setAuthor("G. Verdi"_s)), 186, padded("G. Verdi"));
        row("artist", EDIT(setArtist("Banda"_s)), 218, padded("Banda"));
        row("genre", EDIT(setGenre("Opera"_s)), 250, padded("Opera"));
        row("an empty text is 32 zero bytes", EDIT(setGenre({})), 250, padded(""));
        row("a text of 33 characters is cut, with no zero byte behind it",
            EDIT(setTitle(QString(32, QLatin1Char('x')) + QLatin1Char('y'))), 122, xs + 'x');
        row("half a character at the cut becomes a question mark",
            EDIT(setTitle(QString(31, QLatin1Char('x')) + QStringLiteral("\U0001F3B5"))), 122,
            xs + '?');
        row("one accent adds one byte to the header", EDIT(setTitle("Perch\xE9"_s)), 122,
            "Perch\xC3\xA9" + QByteArray(26, '\0'), 32);
        row("32 accents add 32 bytes", EDIT(setTitle(QString(32, QChar(0xE9)))), 122,
            QByteArray("\xC3\xA9").repeated(32), 32);
        row("bpm, low byte first", EDIT(setBpm(300)), 38, hex("2c01"));
        row("bpm takes the low 16 bits", EDIT(setBpm(0x12345)), 38, hex("4523"));
        row("a flag is added to those there", EDIT(setFlag(0x11)), 185, hex("53"));
        row("no flag is cleared", EDIT(setFlag(0)), 185, hex("42"));
        row("total size", EDIT(setTotalSize(0xFEDCBA98)), 4, hex("98badcfe"));
        row("uncompressed size", EDIT(setUncompressedSize(500000)), 12, hex("20a10700"));
    }
    void writerChangesItsBytesOnly()
    {
        QFETCH(Edit, edit);
        QFETCH(int, offset);
        QFETCH(QByteArray, written);
        QFETCH(int, replaced);
        for (int version : {3, 4, 5}) {
            MfxHeader mfx = parsed(header(version));
            edit(mfx);
            QCOMPARE(mfx.headerBytes().toHex(' '),
                     header(version).replace(offset, replaced, written).toHex(' '));
        }
    }

    void sizeOf()
    {
        QCOMPARE(MfxHeader::sizeOf(3), 512);
        QCOMPARE(MfxHeader::sizeOf(4), 512);
        QCOMPARE(MfxHeader::sizeOf(5), 1024);
        for (int unknown : {0, 6})
            QCOMPARE(MfxHeader::sizeOf(unknown), 0);
    }

    void withoutAHeaderNothingIsReadOrWritten()
    {
        MfxHeader mfx;
        mfx.setTitle("Ciao"_s);
        mfx.setAuthor("Ciao"_s);
        mfx.setArtist("Ciao"_s);
        mfx.setGenre("Ciao"_s);
        mfx.setBpm(120);
        mfx.setFlag(1);
        mfx.setTotalSize(1);
        mfx.setUncompressedSize(1);
        QVERIFY(mfx.headerBytes().isEmpty());
        QCOMPARE(mfx.version(), 0);
        QCOMPARE(mfx.title() + mfx.longName(), QString());
        QCOMPARE(mfx.bpm(), 0);
        QCOMPARE(mfx.flags(), static_cast<quint8>(0));
        QVERIFY(!mfx.hasBpm());
    }
};

QTEST_GUILESS_MAIN(tst_MfxHeader)
#include "tst_mfxheader.moc"
