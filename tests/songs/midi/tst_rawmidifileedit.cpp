#include "tests/songs/songfixture.h"

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

using Edit = std::function<void(RawMidiFile &)>;
Q_DECLARE_METATYPE(Edit)

#define EDIT(...) [](RawMidiFile &midi) { midi.__VA_ARGS__; }

/** What the writers make of a track. */
class tst_RawMidiFileEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingLoadedTakesNoEdit()
    {
        RawMidiFile midi;
        midi.setTrackName("Title"_s);
        midi.setMarkers({{1, "Intro"_s}});
        midi.setKey("C"_s);
        QCOMPARE(midi.addMarker({1, "Intro"_s}), 0);
        QCOMPARE(midi.data(), QByteArray());
    }

    void write_data()
    {
        Table<QByteArray, Edit, QByteArray>();
        // after: the events at the head of the track
        addTextRows();
        addMarkerAndKeyRows();
    }
    void write()
    {
        const auto [before, change, after] = cells<QByteArray, Edit, QByteArray>();
        RawMidiFile zero = loaded(midi0(before));
        change(zero);
        QCOMPARE(zero.data(), midi0(after));
        RawMidiFile one = loaded(midi1(before));
        change(one);
        QCOMPARE(one.data(), midi1(after));
    }

    void writtenKeyIsRead_data()
    {
        const Table<QString, QString> row;
        row("Eb is read as Eb", "Eb", "Eb");
        row("D# is read as Eb", "D#", "Eb");
        row("G# is read as E", "G#", "E");
        row("Db- is read as C#-", "Db-", "C#-");
        row("C, blank, # is read as C#", "C #", "C#");
        row("H is not written", "H", {});
        for (const QString &key : RawMidiFile::keyList())
            QTest::addRow("each name: %s", qPrintable(key)) << key << key;
    }
    void writtenKeyIsRead()
    {
        const auto [written, read] = cells<QString, QString>();
        RawMidiFile midi = loaded(midi1(meta(0x59, hex("0701"))));
        midi.setKey(written);
        QCOMPARE(midi.key(), read);
    }

    void markersAreStoredAndReadInTheOrderOfTheList()
    {
        const QVector<Marker> markers = {{1, "Intro"_s}, {5, "Chorus 1"_s}};
        RawMidiFile midi = loaded(midi1());
        midi.setMarkers(markers);
        QCOMPARE(midi.data(), midi1(marker(1, "Intro") + marker(5, "Chorus 1")));
        QCOMPARE(midi.markers(), markers);
    }

    void theTrackLengthReachesToTheNextChunkAfterAnySequenceOfEdits_data()
    {
        const Table<QByteArray> row;
        const QByteArray keys = meta(0x59, hex("0000")) + note() + meta(0x59, hex("0100"));
        row("of an empty track", {});
        row("of a track that holds every field",
            meta(3, "Old") + songInfo(1, "Old") + songInfo(2, "Old") + songInfo(3, "Old")
                + songInfo(4, "1") + songInfo(5, "1") + marker(1, "Old") + keys);
    }
    void theTrackLengthReachesToTheNextChunkAfterAnySequenceOfEdits()
    {
        const auto [events] = cells<QByteArray>();
        const Edit edits[] = {EDIT(setTrackName("Ciao"_s)),
                              EDIT(setKey("Eb"_s)),
                              EDIT(setMarkers({{1, "Intro"_s}, {5, {}}})),
                              EDIT(addMarker({9, "Coda"_s})),
                              EDIT(setKey("H"_s)),
                              EDIT(setGenre({})),
                              EDIT(setArtist(QString(200, u'x'))),
                              EDIT(setAuthor("Conte"_s)),
                              EDIT(setLength(215)),
                              EDIT(setBpm(0)),
                              EDIT(setMarkers({})),
                              EDIT(setTrackName({}))};
        const QByteArray before = midi1(events);
        const QByteArray second = before.mid(before.lastIndexOf("MTrk"));
        RawMidiFile midi = loaded(before);
        for (int round = 0; round < 2; ++round) {
            for (const Edit &next : edits) {
                next(midi);
                const QByteArray kept = midi.data().mid(14).chopped(second.size());
                QCOMPARE(kept, track(kept.mid(8)));
                QVERIFY(midi.data().endsWith(endOfTrack() + second));
            }
        }
    }

    void unknownKeyIsLoggedAndTheFileHasNone()
    {
        RawMidiFile midi = loaded(midi0(meta(0x59, hex("0000"))));
        const LogCapture capture;
        midi.setKey("Do b"_s);
        QCOMPARE(
            capture.lines(),
            QStringList(
                "[RawMidiFile::setKey] WARNING: unknown key: \"Dob\" . Metaevent not added !!!"_s));
        QVERIFY(!midi.hasKey());
    }

    void remove_data()
    {
        const Table<QByteArray, QByteArray> row; // after: of removing all keys
        const QByteArray key = meta(0x59, hex("0000"));
        const auto file = [](const QByteArray &events, int lengthField = -1) {
            QByteArray bytes = midi(1, {track(events), track(note())});
            if (lengthField >= 0)
                bytes.replace(18, 4, bigEndian(static_cast<quint32>(lengthField), 4));
            return bytes;
        };
        row("two in a row", file(key + key + note()), file(note()));
        row("one at the very end of the track", file(note() + key), file(note()));
        row("one after a delta-time that is not 0 stays", file(hex("60 FF 59 02 00 00") + note()),
            file(hex("60 FF 59 02 00 00") + note()));
        row("the length byte says how much goes", file(hex("00 FF 59 04 00 00 11 22") + note()),
            file(note()));
        row("an event that a removal makes is not seen",
            file(hex("00") + key + hex("FF 59 02 00 00") + note()),
            file(hex("00 FF 59 02 00 00") + note()));
        row("one that runs over the track's end goes up to there",
            file(note() + hex("00 FF 59 40 00")), file(note()));
        row("one that begins in front of the track's end goes up to there",
            file(note() + key, static_cast<int>(note().size()) + 3),
            file(note() + hex("02 00 00"), static_cast<int>(note().size())));
        row("one behind the track's end stays", file(note() + key, static_cast<int>(note().size())),
            file(note() + key, static_cast<int>(note().size())));
        row("a track length of 0 keeps everything", file(key, 0), file(key, 0));
        row("a track longer than the file loses what is there", file(key + note(), 1000),
            file(note(), 1000 - 6));
    }
    void remove()
    {
        const auto [before, after] = cells<QByteArray, QByteArray>();
        RawMidiFile midi = loaded(before);
        midi.setKey(QString());
        QCOMPARE(midi.data(), after);
    }

    void laterTracksAreReadAndKept()
    {
        const QByteArray second =
            track(meta(3, "Piano") + songInfo(2, "Mina") + meta(0x59, hex("0200")) + endOfTrack());
        RawMidiFile midi = loaded(SongBytes::midi(1, {track(endOfTrack()), second}));
        QCOMPARE(midi.trackName(), "Piano"_s);
        QCOMPARE(midi.artist(), "Mina"_s);
        QCOMPARE(midi.key(), "D"_s);

        midi.setTrackName("Song"_s);
        midi.setArtist("Conte"_s);
        midi.setKey("C"_s);
        QCOMPARE(midi.data(),
                 SongBytes::midi(1,
                                 {track(meta(0x59, hex("0000")) + songInfo(2, "Conte")
                                        + meta(3, "Song") + endOfTrack()),
                                  second}));

        // Nothing in the first track: the second one yields again.
        midi.setKey(QString());
        QCOMPARE(midi.key(), "D"_s);
    }

private:
    static void row(const char *name, const QByteArray &before, const Edit &change,
                    const QByteArray &after)
    {
        QTest::newRow(name) << before << change << after;
    }

    static void addTextRows()
    {
        const QByteArray euro = QByteArray("\xE2\x82\xAC").repeated(125);
        row("a title is one event at delta-time 0", {}, EDIT(setTrackName("Ciao"_s)),
            hex("00 FF 03 04") + "Ciao");
        row("a title replaces every title of the track", meta(3, "One") + note() + meta(3, "Two"),
            EDIT(setTrackName("New"_s)), meta(3, "New") + note());
        row("an empty title is an empty event", meta(3, "One"), EDIT(setTrackName({})),
            hex("00 FF 03 00"));
        row("a title of 200 characters stores its first 125", {},
            EDIT(setTrackName(QString(200, QLatin1Char('x')))),
            hex("00 FF 03 7D") + QByteArray(125, 'x'));
        row("125 non-ASCII characters make the length byte hold 250", {},
            EDIT(setTrackName(QString(125, QChar(0xE8)))),
            hex("00 FF 03 FA") + QByteArray("\xC3\xA8").repeated(125));
        row("125 characters of three bytes make the length byte wrap", {},
            EDIT(setTrackName(QString(125, QChar(0x20AC)))),
            hex("00 FF 03 77") + euro); // 375 - 256
        row("so it wraps in a field of our own, the sub-type counted", {},
            EDIT(setArtist(QString(125, QChar(0x20AC)))), hex("00 FF 4B 78 02") + euro);
        row("genre has sub-type 1", {}, EDIT(setGenre("Pop"_s)), hex("00 FF 4B 04 01") + "Pop");
        row("artist has sub-type 2", {}, EDIT(setArtist("Mina"_s)), hex("00 FF 4B 05 02") + "Mina");
        row("author has sub-type 3, and is written as UTF-8", {}, EDIT(setAuthor(QChar(0xE8))),
            hex("00 FF 4B 03 03 C3 A8"));
        row("length has sub-type 4", {}, EDIT(setLength(215)), hex("00 FF 4B 04 04") + "215");
        row("bpm has sub-type 5", {}, EDIT(setBpm(0)), hex("00 FF 4B 02 05") + "0");
        row("a field replaces every event of its sub-type, and no other",
            songInfo(2, "A") + songInfo(1, "Pop") + songInfo(2, "B"), EDIT(setArtist("C"_s)),
            songInfo(2, "C") + songInfo(1, "Pop"));
    }

    static void addMarkerAndKeyRows()
    {
        row("markers stand in the order of the list, the bar high byte first", {},
            EDIT(setMarkers({{0x1234, "Intro"_s}, {5, {}}})),
            hex("00 FF 4B 08 06 1234") + "Intro" + hex("00 FF 4B 03 06 0005"));
        row("new markers replace the old ones", marker(1, "A") + note() + marker(2, "B"),
            EDIT(setMarkers({{3, "C"_s}})), marker(3, "C") + note());
        row("an empty list of markers removes them", marker(1, "A") + note() + marker(2, "B"),
            EDIT(setMarkers({})), note());
        row("a marker's text is cut to 125 characters", {},
            EDIT(setMarkers({{1, QString(130, QLatin1Char('m'))}})),
            hex("00 FF 4B 80 06 0001") + QByteArray(125, 'm'));
        row("an added marker stands before those present", marker(5, "B"),
            EDIT(addMarker({9, "A"_s})), marker(9, "A") + marker(5, "B"));
        row("a key is two bytes", {}, EDIT(setKey("Eb"_s)), hex("00 FF 59 02 FD 00"));
        row("a minor key", {}, EDIT(setKey("F#-"_s)), hex("00 FF 59 02 03 01"));
        const QByteArray keys = meta(0x59, hex("0000")) + note() + meta(0x59, hex("0100"));
        row("a key replaces every key", keys, EDIT(setKey("D"_s)),
            meta(0x59, hex("0200")) + note());
        row("an empty key removes the keys", keys, EDIT(setKey({})), note());
        row("an unknown key removes the keys, too", keys, EDIT(setKey("H"_s)), note());
        row("a key of blanks removes the keys", keys, EDIT(setKey("  "_s)), note());
    }
};

QTEST_GUILESS_MAIN(tst_RawMidiFileEdit)
#include "tst_rawmidifileedit.moc"
