#include "indexer/indexentry.h"
#include "indexer/songreader.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/table.h"
#include "tests/storage/unixfile.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace tarvel4;
using namespace SongBytes;

namespace {

QByteArray tempo(const char *microseconds)
{
    return meta(0x51, hex(microseconds));
}

/** An MP3 with a tag around \a body. */
QByteArray mp3(const QByteArray &body)
{
    return tag(body) + audio();
}

} // namespace

/** What the index reads from the first bytes of a song. */
class tst_SongReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data()
    {
        const Table<QString, QByteArray, QString> row; // texts: title|artist|genre

        row("MIDI: track name, artist and genre", "a.mid",
            midi0(meta(3, "Alfa") + songInfo(2, "Abba") + songInfo(1, "Pop")), "ALFA|ABBA|POP");
        row("MIDI: the first occurrence counts", "a.mid",
            midi0(meta(3, "One") + meta(3, "Two") + songInfo(2, "A") + songInfo(2, "B")),
            "ONE|A|<UNKNOWN>");
        row("MIDI: an empty first name keeps the default", "a.mid",
            midi0(meta(3, "") + meta(3, "Two")), "A|<UNKNOWN>|<UNKNOWN>");
        row("MIDI: author, length, bpm and marker fields are skipped", "a.mid",
            midi0(songInfo(3, "X") + songInfo(4, "9") + songInfo(5, "9") + marker(1, "M")
                  + songInfo(2, "Abba")),
            "A|ABBA|<UNKNOWN>");
        row("MIDI: a text ends at its first zero byte and is trimmed", "a.mid",
            midi0(meta(3, QByteArray("  Alfa \0Beta", 12))), "ALFA|<UNKNOWN>|<UNKNOWN>");
        row("MIDI: texts are Latin-1, whatever they are", "a.mid", midi0(meta(3, "caff\xE8")),
            "CAFFÈ|<UNKNOWN>|<UNKNOWN>");
        row("MIDI: capitals that Latin-1 does not have", "a.mid", midi0(meta(3, "\xFF\xDF")),
            "ŸSS|<UNKNOWN>|<UNKNOWN>");
        row("MIDI: an event within another one's payload is not met", "a.mid",
            midi0(songInfo(3, hex("FF0303") + "no!") + meta(3, "Yes")), "YES|<UNKNOWN>|<UNKNOWN>");
        row("MIDI: unknown meta events are stepped over by one byte", "a.mid",
            midi0(meta(1, hex("FF0304") + "Alfa")), "ALFA|<UNKNOWN>|<UNKNOWN>");
        row("MIDI: events of a second track count", "a.mid",
            midi(1, {track(endOfTrack()), track(meta(3, "Alfa") + endOfTrack())}),
            "ALFA|<UNKNOWN>|<UNKNOWN>");
        row("MIDI: an event before the first track's first event does not count", "a.mid",
            "MThd" + hex("00000006 0000 0001 0060") + hex("FF0304") + "Alfa" + QByteArray(20, '\0'),
            "A|<UNKNOWN>|<UNKNOWN>");
        const QByteArray header = "MThd" + hex("00000006 0000 0001 0060");
        row("MIDI: an event at byte 21 does not count", "a.mid",
            header + QByteArray(7, '\0') + hex("FF0304") + "Alfa", "A|<UNKNOWN>|<UNKNOWN>");
        row("MIDI: an event at byte 22 counts", "a.mid",
            header + QByteArray(8, '\0') + hex("FF0304") + "Alfa", "ALFA|<UNKNOWN>|<UNKNOWN>");
        row("MIDI: an event that ends at byte 3072 counts", "a.mid",
            midi0().leftJustified(3072 - 7, '\0') + hex("FF0304") + "Alfa",
            "ALFA|<UNKNOWN>|<UNKNOWN>");
        row("MIDI: an event that ends behind byte 3072 does not", "a.mid",
            midi0().leftJustified(3072 - 6, '\0') + hex("FF0304") + "Alfa",
            "A|<UNKNOWN>|<UNKNOWN>");

        row("MFx: texts of the header", "a.mf3",
            mfxHeader(3, {"Alfa", "Abba", "X", "Pop", "", 1, 0}), "ALFA|ABBA|POP");
        row("MFx: empty texts are defaults", "a.mf5", mfxHeader(5, {}), "A|<UNKNOWN>|<UNKNOWN>");
        row("MFx: a text of 32 characters has no end", "a.mf4",
            mfxHeader(
                4, {QByteArray(32, 'x'), QByteArray(32, 'y'), "", QByteArray(32, 'z'), "", 0, 0}),
            "XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX|YYYYYYYYYYYYYYYYYYYYYYYYYYYYYYYY|"
            "ZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZ");
        row("the bytes decide, not the suffix: MFx in a .mid", "a.mid",
            mfxHeader(3, {"Alfa", "", "", "", "", 0, 0}), "ALFA|<UNKNOWN>|<UNKNOWN>");
        row("the bytes decide, not the suffix: MIDI in a .mf3", "a.mf3", midi0(meta(3, "Alfa")),
            "ALFA|<UNKNOWN>|<UNKNOWN>");

        row("MP3: TIT2, TPE1 and TCON", "a.mp3",
            mp3(frame("TIT2", "Alfa") + frame("TPE1", "Abba") + frame("TCON", "Pop")),
            "ALFA|ABBA|POP");
        row("MP3: no tag keeps the defaults", "a.mp3", audio(), "A|<UNKNOWN>|<UNKNOWN>");
        row("MP3: the suffix decides, in any case of letters", "a.Mp3", midi0(meta(3, "Alfa")),
            "A|<UNKNOWN>|<UNKNOWN>");
        row("MP3: a frame whose name ends at byte 512 is found", "a.mp3",
            tag(QByteArray(512 - 10 - 4, '\0') + frame("TIT2", "Alfa")),
            "ALFA|<UNKNOWN>|<UNKNOWN>");
        row("MP3: a frame whose name ends behind byte 512 is not", "a.mp3",
            tag(QByteArray(512 - 10 - 3, '\0') + frame("TIT2", "Alfa")), "A|<UNKNOWN>|<UNKNOWN>");
        row("MP3: the size of a frame may lie", "a.mp3",
            mp3("TIT2" + hex("FFFFFFFF 0000 00") + "Alfa" + QByteArray(1, '\0')),
            "ALFA|<UNKNOWN>|<UNKNOWN>");
        row("MP3: a frame of size zero is empty", "a.mp3",
            mp3("TIT2" + hex("00000000 0000 00") + "Alfa"), "A|<UNKNOWN>|<UNKNOWN>");
        row("MP3: the encoding is not looked at", "a.mp3",
            mp3("TIT2" + hex("00000007 0000 01") + hex("FFFE41004200")), "ŸÞA|<UNKNOWN>|<UNKNOWN>");

        row("the default title is the file's name without its suffix", "My.best song.mid",
            "nothing", "MY.BEST SONG|<UNKNOWN>|<UNKNOWN>");
        row("a title of white space keeps the default", "a.mid", midi0(meta(3, "   ")),
            "A|<UNKNOWN>|<UNKNOWN>");
        row("a name of white space keeps its suffix", " .mid", "nothing",
            ".MID|<UNKNOWN>|<UNKNOWN>");
        row("a name is a title in any alphabet", "песня.mid", "nothing",
            "ПЕСНЯ|<UNKNOWN>|<UNKNOWN>");
    }
    void texts()
    {
        const auto [name, bytes, texts] = cells<QString, QByteArray, QString>();
        const QTemporaryDir folder;
        IndexEntry entry;
        entry.absolutePath = write(folder.filePath(name), bytes);
        entry.title = entry.artist = entry.genre = "OLD"_s;
        QVERIFY(SongReader::read(entry));
        QCOMPARE(entry.title + QLatin1Char('|') + entry.artist + QLatin1Char('|') + entry.genre,
                 texts);
    }

    void attributes_data()
    {
        const Table<QString, QByteArray, int, int, int> row;
        row("MIDI: 500,000 microseconds are 120", "a.mid", midi0(tempo("07A120")), 0, 120, 0);
        row("MIDI: the first Set Tempo counts", "a.mid", midi0(tempo("07A120") + tempo("0F4240")),
            0, 120, 0);
        row("MIDI: the tempo is kept to 8 bits", "a.mid", midi0(tempo("030D40")), 0, 300 - 256, 0);
        row("MIDI: a tempo of zero is none", "a.mid", midi0(tempo("000000") + tempo("0F4240")), 0,
            60, 0);
        row("MIDI: a tempo of two bytes is none", "a.mid", midi0(tempo("07A1") + tempo("0F4240")),
            0, 60, 0);
        row("MIDI: without a tempo it is 0", "a.kar", midi0(), 0, 0, 0);
        row("MIDI: one microsecond a quarter", "a.mid", midi0(tempo("000001")), 0, 60000000 % 256,
            0);
        row("MIDI: a marker event sets markers", "a.mid", midi0(meta(6, "Refrain")), 0, 0, 1);
        row("MIDI: a marker of the song-info event does not", "a.mid", midi0(marker(1, "Refrain")),
            0, 0, 0);
        row("MIDI: a meta event cut off by the end is none", "a.mid",
            midi0().left(30) + hex("FF06 05 41"), 0, 0, 0);
        row("MF3: kind 2", "a.mf3", mfxHeader(3, {"", "", "", "", "", 100, 0}), 2, 100, 0);
        row("MF4: kind 3", "a.mf4", mfxHeader(4, {"", "", "", "", "", 100, 0}), 3, 100, 0);
        row("MF5: kind 4", "a.mf5", mfxHeader(5, {"", "", "", "", "", 100, 0}), 4, 100, 0);
        row("MFx: bit 0 of the flags sets markers", "a.mf5",
            mfxHeader(5, {"", "", "", "", "", 100, 0x81}), 4, 100, 1);
        row("MFx: the other flags do not", "a.mf5", mfxHeader(5, {"", "", "", "", "", 100, 0xFE}),
            4, 100, 0);
        row("MFx: only the low byte of the tempo is read", "a.mf5",
            mfxHeader(5, {"", "", "", "", "", 0x1FF, 0}), 4, 0xFF, 0);
        row("MP3: kind 1, tempo 0, no markers", "a.mp3", mp3(frame("TBPM", "120")), 1, 0, 0);
        row("MP3 without a tag: kind 1", "a.mp3", audio(), 1, 0, 0);
        row("MP3 of four bytes keeps the defaults", "a.mp3", "ID3\3", 0, 0, 0);
        row("MP3 of five bytes is one", "a.mp3", "ID3\3\1", 1, 0, 0);
        row("an empty file keeps the defaults", "a.mid", "", 0, 0, 0);
        row("four bytes keep the defaults", "a.mid", "junk", 0, 0, 0);
        row("what can't be recognised has tempo 120", "a.mid", "junk!", 0, 120, 0);
        row("a tag in a .mid is not recognised", "a.mid", mp3(frame("TIT2", "x")), 0, 120, 0);
        row("RIFF is not recognised", "a.mid", "RIFF" + midi0(), 0, 120, 0);
        row("an MF3 shorter than its header is not recognised", "a.mf3", mfxHeader(3).left(511), 0,
            120, 0);
    }
    void attributes()
    {
        const auto [name, bytes, kind, tempo, markers] =
            cells<QString, QByteArray, int, int, int>();
        const QTemporaryDir folder;
        IndexEntry entry;
        entry.absolutePath = write(folder.filePath(name), bytes);
        entry.kind = entry.tempo = entry.reserved = entry.markers = 99;
        QVERIFY(SongReader::read(entry));
        QCOMPARE(static_cast<int>(entry.kind), kind);
        QCOMPARE(static_cast<int>(entry.tempo), tempo);
        QCOMPARE(static_cast<int>(entry.markers), markers);
        QCOMPARE(static_cast<int>(entry.reserved), 0);
    }

    void everyTruncationIsRead_data()
    {
        const Table<QString, QByteArray> row;
        row("MIDI", "a.mid",
            midi0(meta(3, "Alfa") + songInfo(2, "Abba") + songInfo(1, "Pop") + tempo("07A120")
                  + meta(6, "M")));
        row("MP3", QStringLiteral("a.mp3"),
            tag(frame("TIT2", "Alfa") + frame("TPE1", "Abba") + frame("TCON", "Pop")));
        row("MF4", "a.mf4", mfxHeader(4, {"Alfa", "", "", "", "", 0, 0}));
    }
    /** A song that ends anywhere is read, and its title is whole, a part of it or the default. */
    void everyTruncationIsRead()
    {
        const auto [name, bytes] = cells<QString, QByteArray>();
        const QTemporaryDir folder;
        for (int size = 0; size <= bytes.size(); ++size) {
            IndexEntry entry;
            entry.absolutePath = write(folder.filePath(name), bytes.left(size));
            QVERIFY(SongReader::read(entry));
            QVERIFY2(QStringLiteral("ALFA").startsWith(entry.title), qPrintable(entry.title));
            QVERIFY(!entry.title.isEmpty() && !entry.artist.isEmpty() && !entry.genre.isEmpty());
        }
    }

    void aMissingFileLeavesTheEntryAlone()
    {
        const QTemporaryDir folder;
        IndexEntry entry;
        entry.title = "OLD"_s;
        for (const char *name : {"none.mid", "none/none.mid"}) {
            entry.absolutePath = folder.filePath(QLatin1String(name));
            QVERIFY(!SongReader::read(entry));
            QCOMPARE(entry.title, "OLD"_s);
        }
    }

    /** Neither is read, and nobody waits for the writer of a FIFO. */
    void foldersAndFifosKeepTheDefaults()
    {
        const QTemporaryDir folder;
        for (const char *name : {"FOLDER", "FIFO"}) {
            IndexEntry entry;
            entry.absolutePath = folder.filePath(QLatin1String(name) + ".mp3"_s);
            if (qstrcmp(name, "FOLDER") == 0)
                QVERIFY(QDir().mkdir(entry.absolutePath));
            else if (!UnixFile::makeFifo(entry.absolutePath))
                QSKIP("there are no FIFOs here");
            QVERIFY(SongReader::read(entry));
            QCOMPARE(entry.title, QString::fromLatin1(name));
            QCOMPARE(entry.artist, "<UNKNOWN>"_s);
            QCOMPARE(static_cast<int>(entry.kind), 0);
            QCOMPARE(static_cast<int>(entry.tempo),
                     qstrcmp(name, "FOLDER") == 0 ? 120 : 0); // an empty file has 0
        }
    }
};

QTEST_GUILESS_MAIN(tst_SongReader)
#include "tst_songreader.moc"
