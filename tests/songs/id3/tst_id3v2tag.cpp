#include "songs/id3/id3v2tag.h"

#include "tests/storage/foldertest.h"

#include <functional>

using namespace tarvel4;
using namespace SongBytes;

using Edit = std::function<void(Id3v2Tag &)>;
Q_DECLARE_METATYPE(Edit)

#define EDIT(...) [](Id3v2Tag &object) { object.__VA_ARGS__; }

namespace {

Id3v2Tag parsed(const QByteArray &bytes)
{
    Id3v2Tag tag;
    if (!tag.parse(bytes))
        qFatal("the fixture is no MP3 file");
    return tag;
}

} // namespace

class tst_Id3v2Tag : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parse_data()
    {
        const Table<QByteArray, bool, QByteArray, int> row;
        const QByteArray newTag = hex("494433 03 00 00 00000000");
        const QByteArray title = frame("TIT2", "Volare");
        const auto withSize = [](const char *size, int bodyBytes) {
            return "ID3" + hex("04 00 80") + hex(size) + QByteArray(bodyBytes, '\0');
        };
        row("no tag gives a new one of version 2.3", audio(), true, newTag, 0);
        row("nine bytes are too few", QByteArray("ID3\3\0\0\0\0\0", 9), false, {}, 0);
        row("nine bytes without a tag are too few", audio().left(9), false, {}, 0);
        row("nothing is too little", {}, false, {}, 0);
        row("ten bytes without a tag are enough", audio().left(10), true, newTag, 0);
        row("an empty tag", tag() + audio(), true, tag(), 10);
        row("a tag and audio", tag(title) + audio(), true, tag(title), 27);
        row("padding belongs to the tag", tag(title + QByteArray(100, '\0')) + audio(), true,
            tag(title + QByteArray(100, '\0')), 127);
        row("the size has seven bits a byte", withSize("00000100", 128) + audio(), true,
            withSize("00000100", 128), 138);
        row("a size byte of 0x81 makes the tag an empty one", withSize("00000081", 200), true,
            withSize("00000081", 0), 10);
        row("wherever it stands", withSize("81000000", 200), true, withSize("81000000", 0), 10);
        row("a size byte of 0x80 passes", withSize("00000080", 200), true,
            withSize("00000080", 128), 138);
        row("and is combined as it is", withSize("00000181", 200), true, withSize("00000181", 0),
            10);
        row("two of them", withSize("00008080", 0x4080 + 50), true, withSize("00008080", 0x4080),
            0x4080 + 10);
        row("one that reaches into a bit that is set", withSize("00018000", 0x4000 + 50), true,
            withSize("00018000", 0x4000), 0x4000 + 10);
        row("a file shorter than the size is refused", withSize("00000100", 117), false, {}, 0);
        row("a file as long as the size is taken", withSize("00000100", 118), true,
            withSize("00000100", 118), 138);
        row("other versions and their flags are kept",
            "ID3" + hex("02 01 FF 00000002 ABCD") + audio(), true,
            "ID3" + hex("02 01 FF 00000002 ABCD"), 12);
    }
    void parse()
    {
        const auto [bytes, isParsed, tag, audioStart] = cells<QByteArray, bool, QByteArray, int>();
        Id3v2Tag object;
        QCOMPARE(object.parse(bytes), isParsed);
        QCOMPARE(object.tag(), tag);
        QCOMPARE(object.audioStart(), static_cast<qint64>(audioStart));
    }

    void bytesWantedAreTheHeaderAndTheSizeInIt()
    {
        QCOMPARE(Id3v2Tag::bytesWanted(audio().left(10)), static_cast<qint64>(10));
        QCOMPARE(Id3v2Tag::bytesWanted(tag(QByteArray(300, 'x')).left(10)),
                 static_cast<qint64>(310));
        QCOMPARE(Id3v2Tag::bytesWanted("ID3" + hex("030000 81000000")),
                 static_cast<qint64>(10)); // no size
        QCOMPARE(Id3v2Tag::bytesWanted("ID3" + hex("030000 80808080")),
                 static_cast<qint64>(0x10204080 + 10));
        QCOMPARE(Id3v2Tag::bytesWanted("ID3\3"), static_cast<qint64>(10));
    }

    void readText_data()
    {
        const Table<QByteArray, QString> row;
        row("an absent frame is empty", frame("TPE1", "Mina"), {});
        row("the payload after the encoding byte", frame("TPE1", "Mina") + frame("TIT2", "Volare"),
            "Volare");
        row("a zero byte ends it", frame("TIT2", QByteArray("A\0B", 3)), "A");
        row("it is trimmed", frame("TIT2", "  A \r\n"), "A");
        row("it is taken as Latin-1", frame("TIT2", "Perch\xE9"), "Perch\xE9"_s);
        row("whatever the encoding byte says", "TIT2" + hex("00000003 0000 03 C3A9"), "\xC3\xA9"_s);
        row("UTF-16 is cut at its first zero byte", "TIT2" + hex("00000007 0000 01 FFFE 4100 4200"),
            "\xFF\xFE"
            "A"_s);
        row("the first of two frames counts", frame("TIT2", "One") + frame("TIT2", "Two"), "One");
        row("an ID inside another frame's data counts",
            frame("TXXX", frame("TIT2", "Inner")) + frame("TIT2", "Outer"), "Inner");
        row("a frame of size 0 is empty", "TIT2" + hex("00000000 0000") + "text", {});
        row("a frame of size 1 is empty", "TIT2" + hex("00000001 0000 00") + "text", {});
        row("a size beyond the tag ends with it", "TIT2" + hex("FFFFFFFF 0000 00") + "Volare",
            "Volare");
        row("a frame cut in its header is empty", "TIT2" + hex("0000"), {});
        row("half an ID at the end is none", frame("TPE1", "Mina") + "TIT", {});
        row("flags are not interpreted", "TIT2" + hex("00000003 FFFF 00") + "OK", "OK");
    }
    void readText()
    {
        const auto [body, title] = cells<QByteArray, QString>();
        // The audio is no part of the tag, whatever it looks like.
        QCOMPARE(parsed(tag(body) + frame("TIT2", "Audio")).title(), title);
    }

    void writtenTextIsReadBack_data()
    {
        const Table<QString, QString> row;
        row("letters of ASCII as they are", "Citta", "Citta"_s);
        row("letters with accents changed: UTF-8 is read as Latin-1", "Caff\xE8"_s,
            "Caff\xC3\xA8"_s);
        row("with a second byte that is a blank there, trimmed off", "Perch\xE9 \xE0"_s,
            "Perch\xC3\xA9 \xC3"_s);
    }
    void writtenTextIsReadBack()
    {
        const auto [written, readBack] = cells<QString, QString>();
        Id3v2Tag object = parsed(audio());
        object.setTitle(written);
        QCOMPARE(parsed(object.tag() + audio()).title(), readBack);
    }

    void readNumbers_data()
    {
        const Table<QByteArray, int, int> row; // text: null: no frame
        row("absent", {}, 0, 0);
        row("215999 ms are 215 s", "215999", 215, 215999);
        row("999 ms are 0 s", "999", 0, 999);
        row("no number", "fast", 0, 0);
        row("a fraction is no number", "120.5", 0, 0);
        row("negative", "-5000", 0, 0);
        row("blanks around it", " 3000 ", 3, 3000);
        row("more milliseconds than an integer holds", "3000000000", 3000000, 0);
        row("more than anything holds", "99999999999999999999", 0, 0);
    }
    void readNumbers()
    {
        const auto [text, length, bpm] = cells<QByteArray, int, int>();
        const QByteArray body = text.isNull() ? text : frame("TLEN", text) + frame("TBPM", text);
        const Id3v2Tag object = parsed(tag(body));
        QCOMPARE(object.length(), length);
        QCOMPARE(object.bpm(), bpm);
    }

    void onlyKVaroInTheCopyrightFramePublishes()
    {
        const auto isPublisher = [](const char *frameId, const char *text) {
            return parsed(tag(frame(frameId, text))).isPublisher();
        };
        QVERIFY(isPublisher("TCOP", "2003 K-VARO"));
        QVERIFY(isPublisher("TCOP", "2003 k-Varo s.r.l."));
        QVERIFY(!isPublisher("TCOP", "2003 Somebody"));
        QVERIFY(!isPublisher("TCOP", "VELTRANO")); // which counts in a MIDI song
        QVERIFY(!isPublisher("TIT2", "K-VARO"));
    }

    void fields()
    {
        const Id3v2Tag full = parsed(
            tag(frame("TIT2", "a") + frame("TPE1", "b") + frame("TCOM", "c") + frame("TCON", "d")
                + frame("TKEY", "e") + frame("TLEN", "2000") + frame("TBPM", "3") + editMark()));
        QCOMPARE(full.title() + full.artist() + full.author() + full.genre() + full.key(),
                 "abcde"_s);
        QCOMPARE(full.length(), 2);
        QCOMPARE(full.bpm(), 3);
        QVERIFY(full.hasTitle() && full.hasArtist() && full.hasAuthor() && full.hasGenre());
        QVERIFY(full.hasKey() && full.hasLength() && full.hasBpm() && full.hasEditMark());

        const Id3v2Tag empty = parsed(audio());
        QVERIFY(!empty.hasTitle() && !empty.hasArtist() && !empty.hasAuthor() && !empty.hasGenre());
        QVERIFY(!empty.hasKey() && !empty.hasLength() && !empty.hasBpm() && !empty.hasEditMark());
    }

    void write_data()
    {
        const Table<QByteArray, Edit, QByteArray> row;
        const Edit setTitle = EDIT(setTitle("Ciao"_s));
        const QByteArray padding(20, '\0');
        const QByteArray ciao = frame("TIT2", "Ciao"), mina = frame("TPE1", "Mina");
        const QByteArray bpm = frame("TBPM", "90");
        row("a title, byte by byte", tag(), setTitle,
            hex("494433 03 00 00 0000000F") + "TIT2" + hex("00000005 0000 00") + "Ciao");
        row("a file without a tag gains one", audio(), setTitle, tag(ciao));
        row("new frames stand first, padding stays last", tag(mina + padding), setTitle,
            tag(ciao + mina + padding));
        row("the frame of that ID goes", tag(mina + frame("TIT2", "Old") + padding), setTitle,
            tag(ciao + mina + padding));
        row("only the first one of two goes", tag(frame("TIT2", "A") + frame("TIT2", "B")),
            setTitle, tag(ciao + frame("TIT2", "B")));
        row("writing the title twice leaves one", tag(),
            EDIT(setTitle("First"_s); object.setTitle("Ciao"_s)), tag(ciao));
        row("an empty title only removes", tag(mina + frame("TIT2", "Old")),
            EDIT(setTitle(QString())), tag(mina));
        row("text is written as UTF-8 under encoding 0", tag(),
            EDIT(setTitle(QString(QChar(0xE8)))), tag("TIT2" + hex("00000003 0000 00 C3A8")));
        row("artist, author, genre and key", tag(),
            EDIT(setArtist("Mina"_s); object.setAuthor("Conte"_s); object.setGenre("Pop"_s);
                 object.setKey("A-"_s)),
            tag(frame("TKEY", "A-") + frame("TCON", "Pop") + frame("TCOM", "Conte") + mina));
        row("a length of 215 s is 215000 ms", tag(frame("TLEN", "1")), EDIT(setLength(215)),
            tag(frame("TLEN", "215000")));
        row("a length of 0 is written", tag(), EDIT(setLength(0)), tag(frame("TLEN", "0")));
        row("the longest length", tag(), EDIT(setLength(2147483647)),
            tag(frame("TLEN", "2147483647000")));
        row("a bpm of 120", tag(bpm), EDIT(setBpm(120)), tag(frame("TBPM", "120")));
        row("a bpm of 0 removes the frame and writes none", tag(bpm), EDIT(setBpm(0)), tag());
        row("a negative bpm, too", tag(bpm), EDIT(setBpm(-1)), tag());
        row("the edit mark is three zero bytes", tag(frame("TIT2", "A")), EDIT(addEditMark()),
            tag(editMark() + frame("TIT2", "A")));
        row("the size is written in seven bits a byte", tag(frame("TPE1", QByteArray(200, 'x'))),
            setTitle, hex("494433 03 00 00 00000162") + ciao + frame("TPE1", QByteArray(200, 'x')));
        row("a size that was none becomes one", "ID3" + hex("04 00 00 FF000000"), setTitle,
            "ID3" + hex("04 00 00 0000000F") + ciao);
        row("a frame that claims more than the tag goes to its end",
            tag(mina + "TIT2" + hex("7FFFFFFF 0000 00") + "Old"), setTitle, tag(ciao + mina));
        row("a frame cut in its header goes, too", tag(mina + "TIT2" + hex("0000")), setTitle,
            tag(ciao + mina));
    }
    void write()
    {
        const auto [before, edit, after] = cells<QByteArray, Edit, QByteArray>();
        Id3v2Tag object = parsed(before);
        const qint64 audioStart = object.audioStart();
        edit(object);
        QCOMPARE(object.tag(), after);
        QCOMPARE(object.tagSize(), static_cast<quint32>(after.size() - 10));
        QCOMPARE(object.audioStart(), audioStart);
    }
};

QTEST_GUILESS_MAIN(tst_Id3v2Tag)
#include "tst_id3v2tag.moc"
