#include "tests/songs/songfixture.h"

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

using Read = std::function<QString(const RawMidiFile &)>;
Q_DECLARE_METATYPE(Read)

namespace {

QString shown(const QString &text)
{
    return text;
}

QString shown(int number)
{
    return QString::number(number);
}

QString shown(const QVector<Marker> &markers)
{
    QStringList texts;
    for (const Marker &marker : markers)
        texts.append(QString::number(marker.bar) + QLatin1Char(':') + marker.text);
    return texts.join(QLatin1Char(','));
}

} // namespace

#define READ(call) [](const RawMidiFile &midi) { return shown(midi.call); }

/** What is read from a file, and which files are loaded. */
class tst_RawMidiFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void load_data()
    {
        const Table<QByteArray, int> row; // type: 0: refused
        const QByteArray good = midi0();
        row("format 0 is type 1", good, 1);
        row("format 1 is type 2", midi1(), 2);
        row("format 2 is refused", midi(2, {track(endOfTrack())}), 0);
        row("format 256 is refused", midi(256, {track(endOfTrack())}), 0);
        row("an RMID wrapper is refused",
            "RIFF" + littleEndian(static_cast<quint32>(good.size() + 12), 4) + "RMIDdata"
                + littleEndian(static_cast<quint32>(good.size()), 4) + good,
            0);
        row("RIFF in the place of MThd is refused", QByteArray(good).replace(0, 4, "RIFF"), 0);
        // three bytes: where the format is read, one that would be taken stands
        row("junk before MThd is refused", "xyz" + good, 0);
        row("a file without any MTrk is refused", good.left(14) + "MTrx" + good.mid(18), 0);
        row("a file without MThd is refused", track(endOfTrack()), 0);
        row("an empty file is refused", {}, 0);
        row("MThd alone is refused", "MThd", 0);
        row("a file cut in its header is refused", "MThdMTrk", 0);
        row("a file cut in the track's length is refused", good.left(14 + 7), 0);
        row("a file cut after the track's length is loaded", good.left(14 + 8), 1);
        row("the header's length is not read", QByteArray(good).replace(4, 4, hex("FFFFFFFF")), 1);
        row("chunks before the first track are skipped",
            good.left(14) + "XFIH" + bigEndian(3, 4) + "abc" + good.mid(14), 1);
        row("a track length beyond the file is loaded",
            QByteArray(good).replace(18, 4, hex("FFFFFFFF")), 1);
    }
    void load()
    {
        const auto [bytes, type] = cells<QByteArray, int>();
        RawMidiFile midi;
        QCOMPARE(midi.load(bytes), type != 0);
        QCOMPARE(midi.type(), type);
        QCOMPARE(midi.data(), type == 0 ? QByteArray() : bytes);
    }

    void aFailedLoadChangesNothing()
    {
        const QByteArray bytes = midi1(meta(3, "Kept"));
        RawMidiFile midi = loaded(bytes);
        QVERIFY(!midi.load("RIFF"));
        QCOMPARE(midi.data(), bytes);
        QCOMPARE(midi.trackName(), "Kept"_s);
    }

    void read_data()
    {
        Table<QByteArray, Read, QString>();
        addTextRows();
        addNumberRows();
        addKeyRows();
        addMarkerRows();
        addPublisherRows();
    }
    void read()
    {
        const auto [events, reader, value] = cells<QByteArray, Read, QString>();
        QCOMPARE(reader(loaded(midi(0, {track(events)}))), value);
    }

    void unknownKeysAreLogged_data()
    {
        const Table<QByteArray, QString> row; // shown: in the log; empty: no line
        row("none is not", {}, "");
        row("a known one is not", meta(0x59, hex("0200")), "");
        row("ten sharps are", meta(0x59, hex("0A00")), "[sf=0a|mi=00]");
        row("sf is in lower case, mi in upper case", meta(0x59, hex("ABCD")), "[sf=ab|mi=CD]");
    }
    void unknownKeysAreLogged()
    {
        const auto [signature, shown] = cells<QByteArray, QString>();
        const RawMidiFile midi = loaded(midi0(signature));
        const LogCapture capture;
        QCOMPARE(midi.key(), signature == meta(0x59, hex("0200")) ? "D"_s : QString());
        const QString line =
            "[RawMidiFile::extractKey] WARNING: unknown key metaevent %1 in MIDI file."_s;
        QCOMPARE(capture.lines(), shown.isEmpty() ? QStringList() : QStringList(line.arg(shown)));
    }

    void presence_data()
    {
        const Table<QByteArray, int> row; // present: index into the list of the test; -1: none
        row("nothing", note(), -1);
        row("track name, empty", meta(3, ""), 0);
        row("genre", songInfo(1, ""), 1);
        row("artist", songInfo(2, ""), 2);
        row("author", songInfo(3, ""), 3);
        row("length that is no number", songInfo(4, "x"), 4);
        row("bpm that is no number", songInfo(5, "x"), 5);
        row("marker", marker(1, "A"), 6);
        row("key with an unknown code", meta(0x59, hex("0A00")), 7);
    }
    void presence()
    {
        const auto [events, present] = cells<QByteArray, int>();
        const RawMidiFile midi = loaded(midi0(events));
        const QVector<bool> found = {midi.hasTrackName(), midi.hasGenre(),  midi.hasArtist(),
                                     midi.hasAuthor(),    midi.hasLength(), midi.hasBpm(),
                                     midi.hasMarkers(),   midi.hasKey()};
        for (int i = 0; i < found.size(); ++i)
            QCOMPARE(found.at(i), i == present);
    }

    void keyList()
    {
        QCOMPARE(RawMidiFile::keyList(),
                 words("C A- G E- D B- A F#- E C#- B G#- F# D#- C# A#- "
                       "Cb Ab- Gb Eb- Db Bb- Ab F- Eb C- Bb G- F D-"));
    }

    void knownKeys_data()
    {
        const Table<QString, bool> row;
        row("a name of the list", "F#-", true);
        row("an alias", "G#", true);
        row("with blanks", " D b - ", true);
        row("in lower case", "c", false);
        row("an Italian name", "Do", false);
        row("nothing", {}, false);
    }
    void knownKeys()
    {
        const auto [name, isKnown] = cells<QString, bool>();
        QCOMPARE(RawMidiFile::isKnownKey(name), isKnown);
    }

private:
    static void row(const char *name, const QByteArray &events, const Read &reader,
                    const QString &value)
    {
        QTest::newRow(name) << events << reader << value;
    }

    /** A rule for texts: it holds for a field of our own, too, one byte further. */
    static void textRow(const char *name, const QByteArray &event, const QString &text)
    {
        row(name, event, READ(trackName()), text);
        QByteArray field = event;
        for (int at = 0; (at = static_cast<int>(field.indexOf(hex("FF 03"), at))) >= 0; at += 4) {
            const int length = static_cast<quint8>(field.at(at + 2));
            field.replace(at, 3,
                          hex("FF 4B") + static_cast<char>(qMin(255, length + 1))
                              + static_cast<char>(1));
        }
        row(qPrintable("a field: "_s + QLatin1String(name)), field, READ(genre()), text);
    }

    static void addTextRows()
    {
        textRow("an absent event is empty", {}, {});
        textRow("the payload is the text", meta(3, "Volare"), "Volare"_s);
        textRow("white space around it goes", meta(3, " \t Nel blu \r\n"), "Nel blu"_s);
        textRow("a zero byte ends it", meta(3, QByteArray("Azzurro\0 e poi", 14)), "Azzurro"_s);
        textRow("it is taken as Latin-1", meta(3, "Perch\xE9"), "Perch\xE9"_s);
        textRow("UTF-8 is, too", meta(3, "Perch\xC3\xA9"), "Perch\xC3\xA9"_s);
        textRow("the first of two counts", meta(3, "One") + meta(3, "Two"), "One"_s);
        textRow("an empty event is empty", meta(3, {}), {});
        textRow("the length is a single byte", meta(3, QByteArray(200, 'x')),
                QString(200, QLatin1Char('x')));
        textRow("a length beyond the file ends with it", hex("00 FF 03 FF") + "Short", "Short"_s);
        textRow("bytes inside another event pass for an event", meta(1, hex("FF 03 02") + "No"),
                "No"_s);
    }

    static void addNumberRows()
    {
        const auto number = [](const char *name, const QByteArray &events, int value) {
            row(name, events, READ(length()), shown(value));
        };
        number("an absent event is 0", {}, 0);
        number("decimal digits", songInfo(4, "215"), 215);
        number("blanks around them do not count", songInfo(4, " 215 "), 215);
        number("a text that is no number is 0", songInfo(4, "3:35"), 0);
        number("a negative number is 0", songInfo(4, "-1"), 0);
        number("an empty text is 0", songInfo(4, {}), 0);
        number("the largest number", songInfo(4, "2147483647"), 2147483647);
        number("a larger one is 0", songInfo(4, "2147483648"), 0);
        number("hexadecimal digits are no number", songInfo(4, "0x10"), 0);
        number("other sub-types are skipped",
               songInfo(1, "4") + songInfo(5, "120") + songInfo(4, "9"), 9);
        number("an event of length 0 has no text", hex("00 FF 4B 00 04") + "77", 0);
    }

    static void addKeyRows()
    {
        const QStringList majors = words("Cb Gb Db Ab Eb Bb F C G D A E B F# C#");
        const QStringList minors = words("Ab- Eb- Bb- F- C- G- D- A- E- B- F#- C#- G#- D#- A#-");
        for (int sharps = -7; sharps <= 7; ++sharps) {
            for (const bool isMinor : {false, true}) {
                const QString &name = (isMinor ? minors : majors).at(sharps + 7);
                row(qPrintable(name),
                    meta(0x59,
                         QByteArray(1, static_cast<char>(sharps)) + static_cast<char>(isMinor)),
                    READ(key()), name);
            }
        }
        row("the length byte is not looked at", hex("00 FF 59 00 02 00"), READ(key()), "D"_s);
        row("a signature cut by the end of the file reads zeros", hex("00 FF 59 02"), READ(key()),
            "C"_s);
    }

    static void addMarkerRows()
    {
        const auto markers = [](const char *name, const QByteArray &events, const char *value) {
            row(name, events, READ(markers()), QString::fromLatin1(value));
        };
        markers("no markers", {}, "");
        markers("two, in the order of the file", marker(5, "Chorus 1") + marker(1, "Intro"),
                "5:Chorus 1,1:Intro");
        markers("with other events between them",
                marker(1, "Intro") + songInfo(2, "Mina") + note() + marker(2, "Verse"),
                "1:Intro,2:Verse");
        markers("the bar has 16 bits, high byte first", songInfo(6, hex("FFFE") + "End"),
                "65534:End");
        markers("a label is cut at its zero byte and trimmed",
                songInfo(6, hex("0003") + QByteArray(" A\0B", 4)), "3:A");
        markers("a label may be empty", marker(3, ""), "3:");
        markers("the search goes on behind a marker, not inside it",
                marker(1, hex("FF 4B 05 06 00 09") + "in") + marker(2, "B"), "1:\xFFK\x05\x06,2:B");
        markers("and not in its last byte", marker(1, "\xFF") + hex("4B FF 06 01 58"), "1:\xFF");
        markers("a marker that is too short has no label, and ends at once",
                hex("00 FF 4B 01 06") + marker(7, "C"), "255:,7:C");
        markers("a marker of length 0 does not stop the search",
                hex("00 FF 4B 00 06") + marker(7, "C"), "255:,7:C");
        markers("a label longer than the file ends with it", hex("00 FF 4B F0 06 0004") + "Bri",
                "4:Bri");
    }

    static void addPublisherRows()
    {
        const auto publisher = [](const char *name, const QByteArray &notice, bool isPublisher) {
            row(name, notice, READ(isPublisher()), shown(static_cast<int>(isPublisher)));
        };
        publisher("no notice", {}, false);
        publisher("another maker", meta(2, "(C) 1999 Somebody"), false);
        publisher("K-VARO, in any case", meta(2, "(C) 2003 K-Varo S.r.l."), true);
        publisher("VELTRANO", meta(2, "Edizioni Veltrano"), true);
        publisher("KVARO without its hyphen", meta(2, "KVARO"), false);
        publisher("the first notice decides", meta(2, "Somebody") + meta(2, "K-VARO"), false);
        publisher("the name in another event", meta(3, "K-VARO"), false);
        publisher("a name behind a zero byte", meta(2, QByteArray("x\0K-VARO", 8)), false);
    }
};

QTEST_GUILESS_MAIN(tst_RawMidiFile)
#include "tst_rawmidifile.moc"
