#include "tests/library/logcapture.h"
#include "tests/songs/midifixture.h"

using namespace tarvel4;

using namespace MidiFixture;
using namespace SongBytes;

/** What the writers make of a track. */
class tst_RawMidiFileEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingLoadedTakesNoEdit();
    void write_data();
    void write();
    void writtenKeyIsRead_data();
    void writtenKeyIsRead();
    void unknownKeyIsLogged();
    void remove_data();
    void remove();
    void laterTracksAreReadAndKept();
    void addMarkerReturnsTheBytesInserted();
    void lengthFieldStaysTrue();
};

using Edit = std::function<void(RawMidiFile &)>;
Q_DECLARE_METATYPE(Edit)

void tst_RawMidiFileEdit::nothingLoadedTakesNoEdit()
{
    RawMidiFile midi;
    midi.setTrackName(latin1("Title"));
    midi.setMarkers({{1, latin1("Intro")}});
    midi.setKey(latin1("C"));
    QCOMPARE(midi.addMarker({1, latin1("Intro")}), 0);
    QCOMPARE(midi.data(), QByteArray());
    QCOMPARE(midi.trackName(), QString());
    QVERIFY(!midi.hasMarkers());
}

void tst_RawMidiFileEdit::write_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QByteArray>("after"); // the events at the head of the track

    const auto row = [](const char *name, const QByteArray &before, const Edit &edit,
                        const QByteArray &after) {
        QTest::newRow(name) << before << edit << after;
    };
    row(
        "a title is one event at delta-time 0", {},
        [](RawMidiFile &midi) { midi.setTrackName(latin1("Ciao")); }, hex("00 FF 03 04") + "Ciao");
    row(
        "a title replaces every title of the track", meta(3, "One") + note() + meta(3, "Two"),
        [](RawMidiFile &midi) { midi.setTrackName(latin1("New")); }, meta(3, "New") + note());
    row(
        "an empty title is an empty event", meta(3, "One"),
        [](RawMidiFile &midi) { midi.setTrackName(QString()); }, hex("00 FF 03 00"));
    row(
        "a title of 200 characters stores its first 125", {},
        [](RawMidiFile &midi) { midi.setTrackName(QString(200, QLatin1Char('x'))); },
        hex("00 FF 03 7D") + QByteArray(125, 'x'));
    row(
        "125 non-ASCII characters make the length byte hold 250", {},
        [](RawMidiFile &midi) { midi.setTrackName(QString(125, QChar(0xE8))); },
        hex("00 FF 03 FA") + QByteArray("\xC3\xA8").repeated(125));
    row(
        "125 characters of three bytes make the length byte wrap", {},
        [](RawMidiFile &midi) { midi.setTrackName(QString(125, QChar(0x20AC))); },
        hex("00 FF 03 77") + QByteArray("\xE2\x82\xAC").repeated(125)); // 375 - 256
    row(
        "so it wraps in a field of our own, the sub-type counted", {},
        [](RawMidiFile &midi) { midi.setArtist(QString(125, QChar(0x20AC))); },
        hex("00 FF 4B 78 02") + QByteArray("\xE2\x82\xAC").repeated(125));
    row(
        "text is written as UTF-8", {},
        [](RawMidiFile &midi) { midi.setAuthor(QString(QChar(0xE8))); },
        hex("00 FF 4B 03 03 C3 A8"));
    row(
        "genre has sub-type 1", {}, [](RawMidiFile &midi) { midi.setGenre(latin1("Pop")); },
        hex("00 FF 4B 04 01") + "Pop");
    row(
        "artist has sub-type 2", {}, [](RawMidiFile &midi) { midi.setArtist(latin1("Mina")); },
        hex("00 FF 4B 05 02") + "Mina");
    row(
        "author has sub-type 3", {}, [](RawMidiFile &midi) { midi.setAuthor(latin1("Conte")); },
        hex("00 FF 4B 06 03") + "Conte");
    row(
        "length has sub-type 4", {}, [](RawMidiFile &midi) { midi.setLength(215); },
        hex("00 FF 4B 04 04") + "215");
    row(
        "bpm has sub-type 5", {}, [](RawMidiFile &midi) { midi.setBpm(0); },
        hex("00 FF 4B 02 05") + "0");
    row(
        "a field replaces every event of its sub-type, and no other",
        songInfo(2, "A") + songInfo(1, "Pop") + songInfo(2, "B"),
        [](RawMidiFile &midi) { midi.setArtist(latin1("C")); },
        songInfo(2, "C") + songInfo(1, "Pop"));
    row(
        "markers stand in the order of the list", {},
        [](RawMidiFile &midi) {
            midi.setMarkers({{1, latin1("Intro")}, {5, latin1("Chorus 1")}});
        },
        hex("00 FF 4B 08 06 0001") + "Intro" + hex("00 FF 4B 0B 06 0005") + "Chorus 1");
    row(
        "a marker's bar is written high byte first", {},
        [](RawMidiFile &midi) {
            midi.setMarkers({{0x1234, QString()}});
        },
        hex("00 FF 4B 03 06 12 34"));
    row(
        "new markers replace the old ones", marker(1, "A") + note() + marker(2, "B"),
        [](RawMidiFile &midi) {
            midi.setMarkers({{3, latin1("C")}});
        },
        marker(3, "C") + note());
    row(
        "an empty list of markers removes them", marker(1, "A") + note() + marker(2, "B"),
        [](RawMidiFile &midi) { midi.setMarkers({}); }, note());
    row(
        "a marker's text is cut to 125 characters", {},
        [](RawMidiFile &midi) {
            midi.setMarkers({{1, QString(130, QLatin1Char('m'))}});
        },
        hex("00 FF 4B 80 06 0001") + QByteArray(125, 'm'));
    row(
        "an added marker stands before those present", marker(5, "B"),
        [](RawMidiFile &midi) {
            midi.addMarker({9, latin1("A")});
        },
        marker(9, "A") + marker(5, "B"));
    row(
        "a key is two bytes", {}, [](RawMidiFile &midi) { midi.setKey(latin1("Eb")); },
        hex("00 FF 59 02 FD 00"));
    row(
        "a minor key", {}, [](RawMidiFile &midi) { midi.setKey(latin1("F#-")); },
        hex("00 FF 59 02 03 01"));
    row(
        "a key replaces every key", meta(0x59, hex("0000")) + note() + meta(0x59, hex("0100")),
        [](RawMidiFile &midi) { midi.setKey(latin1("D")); }, meta(0x59, hex("0200")) + note());
    row(
        "an empty key removes the keys", meta(0x59, hex("0000")) + note(),
        [](RawMidiFile &midi) { midi.setKey(QString()); }, note());
    row(
        "an unknown key removes the keys, too", meta(0x59, hex("0000")) + note(),
        [](RawMidiFile &midi) { midi.setKey(latin1("H")); }, note());
    row(
        "a key of blanks removes the keys", meta(0x59, hex("0000")) + note(),
        [](RawMidiFile &midi) { midi.setKey(latin1("  ")); }, note());
}

void tst_RawMidiFileEdit::write()
{
    QFETCH(QByteArray, before);
    QFETCH(Edit, edit);
    QFETCH(QByteArray, after);

    RawMidiFile zero = loaded(midi0(before));
    edit(zero);
    QCOMPARE(zero.data(), midi0(after));
    RawMidiFile one = loaded(midi1(before));
    edit(one);
    QCOMPARE(one.data(), midi1(after));
}

void tst_RawMidiFileEdit::writtenKeyIsRead_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("read");

    QTest::newRow("Eb is read as Eb") << latin1("Eb") << latin1("Eb");
    QTest::newRow("D# is read as Eb") << latin1("D#") << latin1("Eb");
    QTest::newRow("G# is read as E") << latin1("G#") << latin1("E");
    QTest::newRow("Db- is read as C#-") << latin1("Db-") << latin1("C#-");
    QTest::newRow("C, blank, # is read as C#") << latin1("C #") << latin1("C#");
    QTest::newRow("H is not written") << latin1("H") << QString();
    for (const QString &key : RawMidiFile::keyList())
        QTest::addRow("each name: %s", qPrintable(key)) << key << key;
}

void tst_RawMidiFileEdit::writtenKeyIsRead()
{
    QFETCH(QString, written);
    QFETCH(QString, read);

    RawMidiFile midi = loaded(midi1(meta(0x59, hex("0701"))));
    midi.setKey(written);
    QCOMPARE(midi.key(), read);
}

void tst_RawMidiFileEdit::unknownKeyIsLogged()
{
    RawMidiFile midi = loaded(midi0());
    const LogCapture capture;
    midi.setKey(latin1("Do b"));
    QCOMPARE(capture.lines(),
             QStringList(latin1("[RawMidiFile::setKey] WARNING: unknown key: \"Dob\" . "
                                "Metaevent not added !!!")));
}

void tst_RawMidiFileEdit::remove_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after"); // of removing all keys

    const QByteArray key = meta(0x59, hex("0000"));
    const auto file = [](const QByteArray &events, int lengthField = -1) {
        QByteArray bytes = midi(1, {track(events), track(note())});
        if (lengthField >= 0)
            bytes.replace(18, 4, bigEndian(quint32(lengthField), 4));
        return bytes;
    };
    QTest::newRow("two in a row") << file(key + key + note()) << file(note());
    QTest::newRow("one at the very end of the track") << file(note() + key) << file(note());
    QTest::newRow("one after a delta-time that is not 0 stays")
        << file(hex("60 FF 59 02 00 00") + note()) << file(hex("60 FF 59 02 00 00") + note());
    QTest::newRow("the length byte says how much goes")
        << file(hex("00 FF 59 04 00 00 11 22") + note()) << file(note());
    QTest::newRow("an event that a removal makes is not seen")
        << file(hex("00") + key + hex("FF 59 02 00 00") + note())
        << file(hex("00 FF 59 02 00 00") + note());
    QTest::newRow("one that runs over the track's end goes up to there")
        << file(note() + hex("00 FF 59 40 00")) << file(note());
    QTest::newRow("one that begins in front of the track's end goes up to there")
        << file(note() + key, note().size() + 3) << file(note() + hex("02 00 00"), note().size());
    QTest::newRow("one behind the track's end stays")
        << file(note() + key, note().size()) << file(note() + key, note().size());
    QTest::newRow("a track length of 0 keeps everything") << file(key, 0) << file(key, 0);
    QTest::newRow("a track longer than the file loses what is there")
        << file(key + note(), 1000) << file(note(), 1000 - 6);
}

void tst_RawMidiFileEdit::remove()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);

    RawMidiFile midi = loaded(before);
    midi.setKey(QString());
    QCOMPARE(midi.data(), after);
}

void tst_RawMidiFileEdit::laterTracksAreReadAndKept()
{
    const QByteArray second =
        track(meta(3, "Piano") + songInfo(2, "Mina") + meta(0x59, hex("0200")) + endOfTrack());
    RawMidiFile midi = loaded(SongBytes::midi(1, {track(endOfTrack()), second}));
    QCOMPARE(midi.trackName(), latin1("Piano"));
    QCOMPARE(midi.artist(), latin1("Mina"));
    QCOMPARE(midi.key(), latin1("D"));

    midi.setTrackName(latin1("Song"));
    midi.setArtist(latin1("Conte"));
    midi.setKey(latin1("C"));
    QCOMPARE(midi.data(),
             SongBytes::midi(1,
                             {track(meta(0x59, hex("0000")) + songInfo(2, "Conte") + meta(3, "Song")
                                    + endOfTrack()),
                              second}));
    QCOMPARE(midi.trackName(), latin1("Song"));

    // Nothing in the first track: the second one yields again.
    midi.setKey(QString());
    QCOMPARE(midi.key(), latin1("D"));
}

void tst_RawMidiFileEdit::addMarkerReturnsTheBytesInserted()
{
    RawMidiFile midi = loaded(midi0());
    QCOMPARE(midi.addMarker({1, latin1("Intro")}), 12);
    QCOMPARE(midi.addMarker({2, QString()}), 7);
}

void tst_RawMidiFileEdit::lengthFieldStaysTrue()
{
    RawMidiFile midi = loaded(midi1(meta(3, "Old") + songInfo(1, "Pop") + marker(1, "A")));
    const auto lengthIsTrue = [&midi] {
        const QByteArray &data = midi.data();
        const int next = data.indexOf("MTrk", 22);
        return data.mid(18, 4) == bigEndian(quint32(next - 22), 4);
    };
    const QVector<Edit> edits = {
        [](RawMidiFile &file) { file.setTrackName(QString(200, QChar(0x20AC))); },
        [](RawMidiFile &file) { file.setGenre(QString()); },
        [](RawMidiFile &file) { file.setArtist(latin1("Mina")); },
        [](RawMidiFile &file) { file.setAuthor(QString(80, QChar(0xE8))); },
        [](RawMidiFile &file) { file.setLength(-1); },
        [](RawMidiFile &file) { file.setBpm(120); },
        [](RawMidiFile &file) {
            file.setMarkers({{1, latin1("A")}, {2, latin1("B")}});
        },
        [](RawMidiFile &file) {
            file.addMarker({3, latin1("C")});
        },
        [](RawMidiFile &file) { file.setKey(latin1("Bb-")); },
        [](RawMidiFile &file) { file.setMarkers({}); },
        [](RawMidiFile &file) { file.setKey(QString()); },
        [](RawMidiFile &file) { file.setTrackName(latin1("Short")); },
    };
    for (const Edit &edit : edits) {
        edit(midi);
        QVERIFY(lengthIsTrue());
    }
}

QTEST_GUILESS_MAIN(tst_RawMidiFileEdit)
#include "tst_rawmidifileedit.moc"
