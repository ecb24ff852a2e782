#include "storage/regularfile.h"

#include "tests/songs/songfixture.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

namespace {

constexpr char notASong[] = "not-a-song";
constexpr char notMidi[] = "damaged-song: non è un file MIDI di formato 0 o 1";
constexpr char cutHeader[] = "damaged-song: l'intestazione è incompleta";
constexpr char notExpanded[] = "damaged-song: la parte compressa non si espande";
constexpr char noMidiInside[] = "damaged-song: la parte compressa non contiene MIDI";
constexpr char cutTag[] = "damaged-song: il tag ID3 è incompleto";

/** The code and the detail of an outcome; empty when all went well. */
QString causeOf(const Outcome &outcome)
{
    return outcome.detail.isEmpty() ? outcome.codeName()
                                    : outcome.codeName() + ": "_s + outcome.detail;
}

} // namespace

/** Which files are taken for songs, of which format, and why others are not. */
class tst_SongImport : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void importFile_data()
    {
        Table<QString, QByteArray, int, QString>();
        addMidiAndMfxRows();
        addMp3Rows();
        addRefusedRows();
    }
    void importFile()
    {
        const auto [name, bytes, format, cause] = cells<QString, QByteArray, int, QString>();
        const QString file = write(path(name), bytes);
        MetaSong song;
        const LogCapture capture;
        const Outcome outcome = song.importFile(file);
        QCOMPARE(causeOf(outcome), cause);
        QCOMPARE(outcome.path, file);
        QCOMPARE(song.format(), format);
        QCOMPARE(read(file), bytes);
        QCOMPARE(LogCapture::has("[MetaSong::importFile] LzHuff Expand filed, skipping file"_s),
                 cause == QString::fromUtf8(notExpanded));
        QCOMPARE(LogCapture::has("[MetaSong::importFile] MidiStream corrupted, skipping file"_s),
                 cause == QString::fromUtf8(noMidiInside));
        // required: nothing is logged of a header that is unknown or short
        QVERIFY(cause == QString::fromUtf8(noMidiInside) || cause == QString::fromUtf8(notExpanded)
                || LogCapture::lines().filter("MetaSong"_s).isEmpty());
    }

    void onlyRegularFilesAreSongs_data()
    {
        const Table<QString> row;
        row("missing", "not-found");
        row("dangling link", "not-found");
        for (const char *kind : {"folder", "FIFO", "socket", "device"})
            row(kind, "not-a-file");
        row("link to itself", "link-out-of-memory");
        row("link to a song", "");
    }
    void onlyRegularFilesAreSongs()
    {
        const auto [code] = cells<QString>();
#ifndef Q_OS_UNIX
        QSKIP("There are no such files here");
#else
        const QByteArray kind = QTest::currentDataTag();
        const QString file = path("x.mid");
        const QByteArray name = QFile::encodeName(file);
        if (kind == "folder")
            QVERIFY(QDir().mkdir(file));
        if (kind == "FIFO")
            QCOMPARE(mkfifo(name.constData(), 0600), 0);
        if (kind == "socket" && mknod(name.constData(), S_IFSOCK | 0600, 0) != 0)
            QSKIP("A socket can't be made here");
        const QMap<QByteArray, QString> links = {{"device", "/dev/zero"_s},
                                                 {"dangling link", path("nowhere.mid")},
                                                 {"link to itself", file},
                                                 {"link to a song", write(path("song"), midi0())}};
        QVERIFY(!links.contains(kind) || QFile::link(links.value(kind), file));
        QCOMPARE(MetaSong().importFile(file).codeName(), code);
#endif
    }

    void aFileOfMoreThanTwoGigabytesIsTooLarge_data()
    {
        const Table<QByteArray> row;
        row("MIDI", midi0());
        row("MF3", mfx(3, {}, midi0()));
    }
    void aFileOfMoreThanTwoGigabytesIsTooLarge()
    {
        const auto [start] = cells<QByteArray>();
        QFile file(write(path("big.mid"), start));
        QVERIFY(file.open(QIODevice::ReadWrite));
        if (!file.resize(3'000'000'000))
            QSKIP("The file system takes no file of 3 GB");
        QCOMPARE(causeOf(MetaSong().importFile(file.fileName())),
                 "too-large: sono ammessi al massimo 2.000.000.000 byte"_s);
    }

    void aReadThatFailsHalfWayIsToldOf()
    {
        // The kernel gives its files the size of a page and fewer bytes.
        QFile file("/sys/kernel/mm/transparent_hugepage/enabled"_s);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            QSKIP("There is no file here that gives fewer bytes than its size");
        QByteArray bytes;
        QVERIFY(!FileBytes::readAll(file, bytes));
        bytes.clear();
        RegularFile same(file.fileName());
        QCOMPARE(same.readUpTo(same.size(), bytes).codeName(), "changed-meanwhile"_s);
    }

    void largeTags_data()
    {
        const Table<int, int, QString> row;
        row("a tag of 1,000,000 bytes is read", 1'000'000, 1'000'000, "");
        row("a tag of 1,000,001 bytes is not", 1'000'001, 1'000'000,
            "too-large: sono ammessi al massimo 1.000.000 byte");
        row("a file that ends before its tag of 900,000 bytes is refused", 900'000, -11, cutTag);
    }
    void largeTags()
    {
        const auto [tagSize, audioSize, cause] = cells<int, int, QString>();
        QByteArray bytes =
            tag(frame("TIT2", "Title") + QByteArray(tagSize - 32, '\0') + frame("TPE1", "Last!"));
        bytes.chop(std::max(0, -audioSize));
        bytes += QByteArray(std::max(0, audioSize), 'a');
        MetaSong song;
        QCOMPARE(causeOf(song.importFile(write(path("x.mp3"), bytes))), cause);
        QCOMPARE(recordOf(song).artist, cause.isEmpty() ? "Last!"_s : QString());
    }

    void aFailedImportForgetsTheSongBefore()
    {
        MetaSong song = imported(write(path("a.mid"), midi0(meta(3, "Volare") + note())));
        QCOMPARE(song.midiData(), midi0(meta(3, "Volare") + note()));
        QVERIFY(!song.importFile(path("missing.mid")));
        QCOMPARE(song.format(), 0);
        QCOMPARE(song.midiData(), QByteArray());
        QCOMPARE(textOf(recordOf(song)), "UNKNOWN||||||0|0||0|||0"_s);
        QVERIFY(!song.whyNotSavable());
        QCOMPARE(song.addMarker("A"_s, 1), 0);
    }

    void mf4FillerIsTakenOut_data()
    {
        const Table<int, QByteArray, QByteArray> row;
        const QByteArray song = midi1(meta(3, "Volare") + note());
        row("of an MF4 song, whatever it is", 4, withFiller(song, "abc"), song);
        row("and no more than that", 4, withFiller(withFiller(song)), withFiller(song));
        row("but not of an MF3 song", 3, song, song);
        row("nor of an MF5 song", 5, song, song);
    }
    void mf4FillerIsTakenOut()
    {
        const auto [version, stream, midi] = cells<int, QByteArray, QByteArray>();
        QCOMPARE(imported(write(path("a"), mfx(version, {}, stream))).midiData(), midi);
    }

private:
    static void add(const char *sentence, const char *name, const QByteArray &bytes, int format)
    {
        QTest::newRow(sentence) << name << bytes << format << "";
    }
    static void addRefused(const char *sentence, const char *name, const QByteArray &bytes,
                           const char *cause)
    {
        QTest::newRow(sentence) << name << bytes << 0 << cause;
    }

    static void addMidiAndMfxRows()
    {
        const QByteArray song = midi0();
        add("a MIDI song of format 0 has code 1", "a.mid", song, MetaSong::Midi0);
        add("a MIDI song of format 1 has code 2", "a.kar", midi1(), MetaSong::Midi1);
        add("the bytes decide, not the suffix", "a.mp3", song, MetaSong::Midi0);
        add("a MIDI song needs no suffix", "song", song, MetaSong::Midi0);
        add("an MF3 song, 512 bytes of header and a stream, has code 3", "a.mf3", mfx(3, {}, song),
            MetaSong::Mf3);
        add("an MF4 song has code 4", "a.mf4", mfx(4, {}, withFiller(song)), MetaSong::Mf4);
        add("an MF5 song has code 5", "a.mf5", mfx(5, {}, song), MetaSong::Mf5);
        add("an MFx song around format 1 keeps the code of its container", "a.mf3",
            mfx(3, {}, midi1()), MetaSong::Mf3);
        add("an MF4 song that ends with its track header is loaded", "a.mf4",
            mfx(4, {}, song.left(22)), MetaSong::Mf4);
        addRefused("a MIDI song of format 2", "a.mid", midi(2, {track(note())}), notMidi);
        addRefused("an MFx song of an unknown version", "a.mf6",
                   mfx(3, {}, song).replace(0, 4, "_MF6"), notASong);
        addRefused("an MF5 song of 1023 bytes, one less than its header", "a.mf5",
                   mfx(5, {}, song).left(1023), cutHeader);
        addRefused("an MF5 song of 1027 bytes, one less than its header and a size", "a.mf5",
                   mfx(5, {}, song).left(1027), notExpanded);
        addRefused("an MF3 song of 512 bytes", "a.mf3", mfx(3, {}, song).left(512), notExpanded);
        addRefused("an MFx song around nothing", "a.mf3", mfx(3, {}, {}), notExpanded);
        addRefused("an MFx song of more than 500,000 bytes", "a.mf3",
                   mfxHeader(3) + littleEndian(500'001, 4), notExpanded);
        addRefused("an MFx song around no MIDI", "a.mf3", mfx(3, {}, "no MIDI at all"),
                   noMidiInside);
        addRefused("an MFx song around format 2", "a.mf4", mfx(4, {}, midi(2, {track(note())})),
                   noMidiInside);
        addRefused("an MFx song whose stream is damaged", "a.mf3",
                   mfxHeader(3) + littleEndian(1000, 4) + QByteArray(200, '\xFF'), noMidiInside);
        addRefused("an MFx song whose stream ends at once", "a.mf3",
                   mfxHeader(3) + littleEndian(500'000, 4), noMidiInside);
    }

    static void addMp3Rows()
    {
        const QByteArray rest(20, 'x');
        add("an MP3 song with a tag has code 6", "a.mp3", tag() + audio(), MetaSong::Mp3);
        add("an MP3 song without one, too", "a.mp3", audio(), MetaSong::Mp3);
        add("x.MP3 that begins with 00 00 is an MP3", "x.MP3", QByteArray(20, '\0'), MetaSong::Mp3);
        add("x.mp3 that begins with FF 05 is an MP3", "x.mp3", hex("FF05") + rest, MetaSong::Mp3);
        add("FF F3 is an MP3", "x.mp3", hex("FFF3") + rest, MetaSong::Mp3);
        add("FF FF is an MP3", "x.mp3", hex("FFFF") + rest, MetaSong::Mp3);
        add("FF 7F is an MP3", "x.mp3", hex("FF7F") + rest, MetaSong::Mp3);
        addRefused("FF 80 is none", "x.mp3", hex("FF80") + rest, notASong);
        addRefused("FF F2 is none", "x.mp3", hex("FFF2") + rest, notASong);
        addRefused("00 01 is none", "x.mp3", hex("0001") + rest, notASong);
        add("a name that ends with mp3 without a point is enough", "xMp3", audio(), MetaSong::Mp3);
        add("an MP3 of ten bytes is loaded", "x.mp3", audio().left(10), MetaSong::Mp3);
        add("an MP3 as long as the size in its tag is loaded", "x.mp3",
            "ID3" + hex("030000 00000100") + QByteArray(118, 'x'), MetaSong::Mp3);
        add("an MP3 whose tag counts as empty is loaded", "x.mp3",
            "ID3" + hex("030000 00000081") + QByteArray(9, 'x'), MetaSong::Mp3);
        addRefused("an MP3 of nine bytes", "x.mp3", audio().left(9), cutTag);
        addRefused("an MP3 shorter than its tag", "x.mp3",
                   "ID3" + hex("030000 00000100") + QByteArray(100, 'x'), cutTag);
    }

    static void addRefusedRows()
    {
        addRefused("an MP3 frame in x.mid", "x.mid", audio(), notASong);
        addRefused("an MP3 frame in x.mp3.bak", "x.mp3.bak", audio(), notASong);
        addRefused("a tag in x.mid", "x.mid", tag() + audio(), notASong);
        addRefused("an empty file", "x.mid", QByteArray(), notASong);
        addRefused("an empty MP3", "x.mp3", QByteArray(), notASong);
        addRefused("one byte", "x.mp3", hex("FF"), notASong);
        addRefused("a text", "x.mid", "Once upon a time", notASong);
    }
};

QTEST_GUILESS_MAIN(tst_SongImport)
#include "tst_songimport.moc"
