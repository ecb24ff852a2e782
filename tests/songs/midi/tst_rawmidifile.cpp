#include "tests/library/logcapture.h"
#include "tests/songs/midifixture.h"

using namespace tarvel4;

using namespace MidiFixture;
using namespace SongBytes;

/** What is read from a file, and which files are loaded. */
class tst_RawMidiFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void load_data();
    void load();
    void aFailedLoadChangesNothing();
    void readText_data();
    void readText();
    void readNumber_data();
    void readNumber();
    void readKey_data();
    void readKey();
    void readMarkers_data();
    void readMarkers();
    void publisher_data();
    void publisher();
    void presence_data();
    void presence();
    void keyList();
    void knownKeys_data();
    void knownKeys();
};

Q_DECLARE_METATYPE(Marker)

void tst_RawMidiFile::load_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("type"); // 0: refused

    const QByteArray good = midi0();
    QTest::newRow("format 0 is type 1") << good << 1;
    QTest::newRow("format 1 is type 2") << midi1() << 2;
    QTest::newRow("format 2 is refused") << midi(2, {track(endOfTrack())}) << 0;
    QTest::newRow("format 256 is refused") << midi(256, {track(endOfTrack())}) << 0;
    QTest::newRow("an RMID wrapper is refused")
        << "RIFF" + littleEndian(quint32(good.size() + 12), 4) + "RMIDdata"
            + littleEndian(quint32(good.size()), 4) + good
        << 0;
    QTest::newRow("junk before MThd is refused") << "x" + good << 0;
    QTest::newRow("a file without any MTrk is refused")
        << good.left(14) + "MTrx" + good.mid(18) << 0;
    QTest::newRow("a file without MThd is refused") << track(endOfTrack()) << 0;
    QTest::newRow("an empty file is refused") << QByteArray() << 0;
    QTest::newRow("MThd alone is refused") << QByteArray("MThd") << 0;
    QTest::newRow("a file cut in its header is refused") << QByteArray("MThdMTrk") << 0;
    QTest::newRow("a file cut in the track's length is refused") << good.left(14 + 7) << 0;
    QTest::newRow("a file cut after the track's length is loaded") << good.left(14 + 8) << 1;
    QTest::newRow("the header's length is not read")
        << QByteArray(good).replace(4, 4, hex("FFFFFFFF")) << 1;
    QTest::newRow("chunks before the first track are skipped")
        << good.left(14) + "XFIH" + bigEndian(3, 4) + "abc" + good.mid(14) << 1;
    QTest::newRow("a track length beyond the file is loaded")
        << QByteArray(good).replace(18, 4, hex("FFFFFFFF")) << 1;
}

void tst_RawMidiFile::load()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, type);

    RawMidiFile midi;
    QCOMPARE(midi.load(bytes), type != 0);
    QCOMPARE(midi.type(), type);
    QCOMPARE(midi.data(), type == 0 ? QByteArray() : bytes);
}

void tst_RawMidiFile::aFailedLoadChangesNothing()
{
    const QByteArray bytes = midi1(meta(3, "Kept"));
    RawMidiFile midi = loaded(bytes);
    QVERIFY(!midi.load("RIFF"));
    QCOMPARE(midi.data(), bytes);
    QCOMPARE(midi.trackName(), latin1("Kept"));
}

void tst_RawMidiFile::readText_data()
{
    QTest::addColumn<QByteArray>("event");
    QTest::addColumn<QString>("text");

    QTest::newRow("an absent event is empty") << QByteArray() << QString();
    QTest::newRow("the payload is the text") << meta(3, "Volare") << latin1("Volare");
    QTest::newRow("white space around it goes") << meta(3, " \t Nel blu \r\n") << latin1("Nel blu");
    QTest::newRow("a zero byte ends it")
        << meta(3, QByteArray("Azzurro\0 e poi", 14)) << latin1("Azzurro");
    QTest::newRow("it is taken as Latin-1") << meta(3, "Perch\xE9") << QString(latin1("Perch\xE9"));
    QTest::newRow("UTF-8 is taken as Latin-1, too")
        << meta(3, "Perch\xC3\xA9") << latin1("Perch\xC3\xA9");
    QTest::newRow("the first of two counts") << meta(3, "One") + meta(3, "Two") << latin1("One");
    QTest::newRow("an empty event is empty") << meta(3, QByteArray()) << QString();
    QTest::newRow("the length is a single byte")
        << meta(3, QByteArray(200, 'x')) << QString(200, QLatin1Char('x'));
    QTest::newRow("a length beyond the file ends with it")
        << hex("00 FF 03 FF") + "Short" << latin1("Short");
    QTest::newRow("bytes inside another event pass for an event")
        << meta(1, hex("FF 03 02") + "No") << latin1("No");
}

void tst_RawMidiFile::readText()
{
    QFETCH(QByteArray, event);
    QFETCH(QString, text);

    QCOMPARE(loaded(midi(0, {track(event)})).trackName(), text);
    // The same rules hold for a field of our own, one byte further.
    QByteArray field = event;
    int at = 0;
    while ((at = field.indexOf(hex("FF 03"), at)) >= 0) {
        const int length = quint8(field.at(at + 2));
        field.replace(at, 3, hex("FF 4B") + char(qMin(255, length + 1)) + char(1));
        at += 4;
    }
    QCOMPARE(loaded(midi(0, {track(field)})).genre(), text);
}

void tst_RawMidiFile::readNumber_data()
{
    QTest::addColumn<QByteArray>("events");
    QTest::addColumn<int>("number");

    QTest::newRow("an absent event is 0") << QByteArray() << 0;
    QTest::newRow("decimal digits") << songInfo(4, "215") << 215;
    QTest::newRow("blanks around them do not count") << songInfo(4, " 215 ") << 215;
    QTest::newRow("a text that is no number is 0") << songInfo(4, "3:35") << 0;
    QTest::newRow("a negative number is 0") << songInfo(4, "-1") << 0;
    QTest::newRow("an empty text is 0") << songInfo(4, QByteArray()) << 0;
    QTest::newRow("the largest number") << songInfo(4, "2147483647") << 2147483647;
    QTest::newRow("a larger one is 0") << songInfo(4, "2147483648") << 0;
    QTest::newRow("hexadecimal digits are no number") << songInfo(4, "0x10") << 0;
    QTest::newRow("other sub-types are skipped")
        << songInfo(1, "4") + songInfo(5, "120") + songInfo(4, "9") << 9;
    QTest::newRow("an event of length 0 has no text") << hex("00 FF 4B 00 04") + "77" << 0;
}

void tst_RawMidiFile::readNumber()
{
    QFETCH(QByteArray, events);
    QFETCH(int, number);

    QCOMPARE(loaded(midi0(events)).length(), number);
}

void tst_RawMidiFile::readKey_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("log");

    const struct
    {
        const char *code;
        const char *major;
        const char *minor;
    } table[] = {
        {"07", "C#", "A#-"}, {"06", "F#", "D#-"}, {"05", "B", "G#-"},  {"04", "E", "C#-"},
        {"03", "A", "F#-"},  {"02", "D", "B-"},   {"01", "G", "E-"},   {"00", "C", "A-"},
        {"FF", "F", "D-"},   {"FE", "Bb", "G-"},  {"FD", "Eb", "C-"},  {"FC", "Ab", "F-"},
        {"FB", "Db", "Bb-"}, {"FA", "Gb", "Eb-"}, {"F9", "Cb", "Ab-"},
    };
    for (const auto &row : table) {
        QTest::addRow("%s", row.major)
            << meta(0x59, hex(row.code) + '\0') << latin1(row.major) << QString();
        QTest::addRow("%s", row.minor)
            << meta(0x59, hex(row.code) + '\1') << latin1(row.minor) << QString();
    }
    QTest::newRow("no event gives no key and no log line")
        << QByteArray() << QString() << QString();
    QTest::newRow("ten sharps are unknown")
        << meta(0x59, hex("0A00")) << QString()
        << latin1("[RawMidiFile::extractKey] WARNING: unknown key metaevent [sf=0a|mi=00] in MIDI "
                  "file.");
    QTest::newRow("sf in lower case, mi in upper case")
        << meta(0x59, hex("ABCD")) << QString()
        << latin1("[RawMidiFile::extractKey] WARNING: unknown key metaevent [sf=ab|mi=CD] in MIDI "
                  "file.");
    QTest::newRow("the length byte is not looked at")
        << hex("00 FF 59 00 02 00") << latin1("D") << QString();
    QTest::newRow("a signature cut by the end of the file reads zeros")
        << hex("00 FF 59 02") << latin1("C") << QString();
}

void tst_RawMidiFile::readKey()
{
    QFETCH(QByteArray, signature);
    QFETCH(QString, name);
    QFETCH(QString, log);

    const RawMidiFile midi = loaded(SongBytes::midi(0, {track(signature)}));
    const LogCapture capture;
    QCOMPARE(midi.key(), name);
    QCOMPARE(capture.lines(), log.isEmpty() ? QStringList() : QStringList(log));
    QCOMPARE(midi.hasKey(), !signature.isEmpty());
}

void tst_RawMidiFile::readMarkers_data()
{
    QTest::addColumn<QByteArray>("events");
    QTest::addColumn<QVector<Marker>>("markers");

    QTest::newRow("none") << QByteArray() << QVector<Marker>();
    QTest::newRow("two, in the order of the file") << marker(5, "Chorus 1")
            + marker(1, "Intro") << QVector<Marker>{{5, latin1("Chorus 1")}, {1, latin1("Intro")}};
    QTest::newRow("with other events between them")
        << marker(1, "Intro") + songInfo(2, "Mina") + note() + marker(2, "Verse")
        << QVector<Marker>{{1, latin1("Intro")}, {2, latin1("Verse")}};
    QTest::newRow("the bar has 16 bits, high byte first")
        << songInfo(6, hex("FFFE") + "End") << QVector<Marker>{{0xFFFE, latin1("End")}};
    QTest::newRow("a label is cut at its zero byte and trimmed")
        << songInfo(6, hex("0003") + QByteArray(" A\0B", 4)) << QVector<Marker>{{3, latin1("A")}};
    QTest::newRow("a label may be empty") << marker(3, "") << QVector<Marker>{{3, QString()}};
    QTest::newRow("the search goes on behind a marker, not inside it")
        << marker(1, hex("FF 4B 05 06 00 09") + "in") + marker(2, "B")
        << QVector<Marker>{{1, QString::fromLatin1("\xFFK\x05\x06")}, {2, latin1("B")}};
    QTest::newRow("and not in its last byte") << marker(1, "\xFF") + hex("4B FF 06 01 58")
                                              << QVector<Marker>{{1, QString::fromLatin1("\xFF")}};
    QTest::newRow("a marker that is too short has no label, and ends at once")
        << hex("00 FF 4B 01 06") + marker(7, "C")
        << QVector<Marker>{{0x00FF, QString()}, {7, latin1("C")}};
    QTest::newRow("a marker of length 0 does not stop the search") << hex("00 FF 4B 00 06")
            + marker(7, "C") << QVector<Marker>{{0x00FF, QString()}, {7, latin1("C")}};
    QTest::newRow("a label longer than the file ends with it")
        << hex("00 FF 4B F0 06 0004") + "Bri" << QVector<Marker>{{4, latin1("Bri")}};
}

void tst_RawMidiFile::readMarkers()
{
    QFETCH(QByteArray, events);
    QFETCH(QVector<Marker>, markers);

    const RawMidiFile midi = loaded(SongBytes::midi(0, {track(events)}));
    QCOMPARE(midi.markers(), markers);
    QCOMPARE(midi.hasMarkers(), !markers.isEmpty());
}

void tst_RawMidiFile::publisher_data()
{
    QTest::addColumn<QByteArray>("notice");
    QTest::addColumn<bool>("isPublisher");

    QTest::newRow("no notice") << QByteArray() << false;
    QTest::newRow("another maker") << meta(2, "(C) 1999 Somebody") << false;
    QTest::newRow("K-VARO") << meta(2, "(C) 2003 K-VARO S.r.l.") << true;
    QTest::newRow("k-varo in any case") << meta(2, "k-Varo") << true;
    QTest::newRow("VELTRANO") << meta(2, "Edizioni Veltrano") << true;
    QTest::newRow("KVARO without its hyphen") << meta(2, "KVARO") << false;
    QTest::newRow("the first notice decides") << meta(2, "Somebody") + meta(2, "K-VARO") << false;
    QTest::newRow("the name in another event") << meta(3, "K-VARO") << false;
    QTest::newRow("a name behind a zero byte") << meta(2, QByteArray("x\0K-VARO", 8)) << false;
}

void tst_RawMidiFile::publisher()
{
    QFETCH(QByteArray, notice);
    QFETCH(bool, isPublisher);

    QCOMPARE(loaded(midi0(notice)).isPublisher(), isPublisher);
}

void tst_RawMidiFile::presence_data()
{
    QTest::addColumn<QByteArray>("events");
    QTest::addColumn<int>("present"); // index into the list of the test; -1: none

    QTest::newRow("nothing") << note() << -1;
    QTest::newRow("track name, empty") << meta(3, "") << 0;
    QTest::newRow("genre") << songInfo(1, "") << 1;
    QTest::newRow("artist") << songInfo(2, "") << 2;
    QTest::newRow("author") << songInfo(3, "") << 3;
    QTest::newRow("length that is no number") << songInfo(4, "x") << 4;
    QTest::newRow("bpm that is no number") << songInfo(5, "x") << 5;
    QTest::newRow("marker") << marker(1, "A") << 6;
    QTest::newRow("key with an unknown code") << meta(0x59, hex("0A00")) << 7;
}

void tst_RawMidiFile::presence()
{
    QFETCH(QByteArray, events);
    QFETCH(int, present);

    const RawMidiFile midi = loaded(midi0(events));
    const QVector<bool> found = {midi.hasTrackName(), midi.hasGenre(),  midi.hasArtist(),
                                 midi.hasAuthor(),    midi.hasLength(), midi.hasBpm(),
                                 midi.hasMarkers(),   midi.hasKey()};
    for (int i = 0; i < found.size(); ++i)
        QCOMPARE(found.at(i), i == present);
}

void tst_RawMidiFile::keyList()
{
    const QString expected = latin1("C A- G E- D B- A F#- E C#- B G#- F# D#- C# A#- "
                                    "Cb Ab- Gb Eb- Db Bb- Ab F- Eb C- Bb G- F D-");
    QCOMPARE(RawMidiFile::keyList().join(QLatin1Char(' ')), expected);
}

void tst_RawMidiFile::knownKeys_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isKnown");

    QTest::newRow("a name of the list") << latin1("F#-") << true;
    QTest::newRow("an alias") << latin1("G#") << true;
    QTest::newRow("with blanks") << latin1(" D b - ") << true;
    QTest::newRow("in lower case") << latin1("c") << false;
    QTest::newRow("an Italian name") << latin1("Do") << false;
    QTest::newRow("nothing") << QString() << false;
}

void tst_RawMidiFile::knownKeys()
{
    QFETCH(QString, name);
    QFETCH(bool, isKnown);

    QCOMPARE(RawMidiFile::isKnownKey(name), isKnown);
}

QTEST_GUILESS_MAIN(tst_RawMidiFile)
#include "tst_rawmidifile.moc"
