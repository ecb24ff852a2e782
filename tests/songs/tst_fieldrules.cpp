#include "songs/metasong.h"

#include "mfxbytes.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace SongBytes;

/** The rules by which an edit and an update write a record into a song, one named row each; every
 * row is also saved and read back. */
class tst_FieldRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void fields_data();
    void fields();
    void artist_data();
    void artist();
    void artistFlipsOnceInEachFormat_data();
    void artistFlipsOnceInEachFormat();
    void markers_data();
    void markers();
    void mfxFlags_data();
    void mfxFlags();
    void editMark_data();
    void editMark();
    void whatWasNotReadIsUntouched_data();
    void whatWasNotReadIsUntouched();
    void theRecordReadBack_data();
    void theRecordReadBack();
    void examplesOfTheFormatsPage();
    void anUnloadedSongTakesNothing();

private:
    MetaSong imported(const QString &suffix, const QByteArray &bytes);
    SongInfo savedAndReadBack(MetaSong &song);

    QTemporaryDir m_folder;
    QString m_path;
    std::unique_ptr<Disk> m_disk;
};

Q_DECLARE_METATYPE(SongInfo)
Q_DECLARE_METATYPE(Marker)

namespace {

/** A disk that is not waited for: what is on it counts here, not when. */
class UnsyncedDisk : public Disk
{
public:
    bool sync(QFileDevice &) override { return true; }
    bool syncFolder(const QString &) override { return true; }
};

QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

/** A song of a format (the suffix of its file) that holds one field; a null value: none. */
QByteArray songWith(const QString &format, const QByteArray &field, const QByteArray &value)
{
    const bool isThere = !value.isNull();
    const auto inTrack = [&](const QByteArray &event) { return isThere ? event : QByteArray(); };
    QByteArray events;
    if (field == "key")
        events = inTrack(meta(0x59, value == "D" ? hex("0200") : hex("0A00")));
    if (field == "length")
        events = inTrack(songInfo(4, value));
    if (format == latin1("mp3")) {
        const QMap<QByteArray, const char *> ids = {
            {"key", "TKEY"}, {"length", "TLEN"}, {"title", "TIT2"}, {"author", "TCOM"},
            {"bpm", "TBPM"}, {"artist", "TPE1"}, {"genre", "TCON"},
        };
        const QByteArray text = field == "length" ? value + "999" : value;
        return tag(isThere ? frame(ids.value(field), text) : QByteArray()) + audio();
    }
    if (format == latin1("mid")) {
        if (field == "title")
            events = inTrack(meta(3, value));
        const QMap<QByteArray, int> subTypes = {
            {"genre", 1}, {"artist", 2}, {"author", 3}, {"bpm", 5}};
        if (subTypes.contains(field))
            events = inTrack(songInfo(subTypes.value(field), value));
        return midi1(events);
    }
    MfxFields header;
    header.title = field == "title" ? value : QByteArray();
    header.author = field == "author" ? value : QByteArray();
    header.artist = field == "artist" ? value : QByteArray();
    header.genre = field == "genre" ? value : QByteArray();
    header.bpm = field == "bpm" ? value.toInt() : 0;
    const int version = format.right(1).toInt();
    const QByteArray song = midi1(events);
    return mfx(version, header, version == 4 ? withFiller(song) : song);
}

SongInfo recordWith(const QByteArray &field, const QByteArray &value, bool isPublisher)
{
    SongInfo info;
    info.isPublisher = isPublisher;
    info.length = field == "length" ? value.toInt() : -1;
    info.bpm = field == "bpm" ? value.toInt() : -1;
    const QString text = QString::fromLatin1(value);
    info.key = field == "key" ? text : QString();
    info.title = field == "title" ? text : QString();
    info.author = field == "author" ? text : QString();
    info.artist = field == "artist" ? text : QString();
    info.genre = field == "genre" ? text : QString();
    return info;
}

QString fieldOf(const SongInfo &info, const QByteArray &field)
{
    const QMap<QByteArray, QString> fields = {
        {"key", info.key},       {"length", QString::number(info.length)},
        {"title", info.title},   {"author", info.author},
        {"artist", info.artist}, {"bpm", QString::number(info.bpm)},
        {"genre", info.genre},
    };
    return fields.value(field);
}

struct Rule
{
    const char *sentence;
    const char *formats;
    const char *field;
    const char *before; // nullptr: absent
    bool manual;
    bool isPublisher; // of the record
    const char *record;
    const char *after;
};

constexpr bool edit = true;
constexpr bool update = false;
constexpr bool published = true;
constexpr bool unpublished = false;
constexpr char all[] = "mid mf3 mf4 mf5 mp3";
constexpr char mfxOnly[] = "mf3 mf4 mf5";
constexpr char midiAndMp3[] = "mid mp3";
constexpr char mfxAndMp3[] = "mf3 mf4 mf5 mp3";

constexpr Rule rules[] = {
    {"an edit replaces a key", all, "key", "D", edit, unpublished, "A-", "A-"},
    {"an edit adds a key", all, "key", nullptr, edit, unpublished, "A-", "A-"},
    {"an edit with no key removes it", all, "key", "D", edit, published, "", ""},
    {"an update keeps a key", all, "key", "D", update, published, "A-", "D"},
    {"an update adds a key to a published song", all, "key", nullptr, update, published, "A-",
     "A-"},
    {"an update adds no key to another", all, "key", nullptr, update, unpublished, "A-", ""},
    {"an update keeps a key that is unknown", "mid mf3", "key", "?", update, published, "A-", ""},

    {"an edit replaces a length", all, "length", "100", edit, unpublished, "215", "215"},
    {"an edit adds a length", all, "length", nullptr, edit, unpublished, "215", "215"},
    {"an edit writes a length of 0", all, "length", "100", edit, published, "0", "0"},
    {"an edit writes a length of -1, which reads as 0", all, "length", "100", edit, published, "-1",
     "0"},
    {"an update keeps a length", all, "length", "100", update, published, "215", "100"},
    {"an update adds a length to a published song", all, "length", nullptr, update, published,
     "215", "215"},
    {"an update adds no length to another", all, "length", nullptr, update, unpublished, "215",
     "0"},
    {"an update with length -1 writes none", all, "length", nullptr, update, published, "-1", "0"},

    {"an edit replaces a title", all, "title", "Volare", edit, unpublished, "Azzurro", "Azzurro"},
    {"an edit adds a title", all, "title", nullptr, edit, unpublished, "Azzurro", "Azzurro"},
    {"an edit empties a title", all, "title", "Volare", edit, unpublished, "", ""},
    {"an update adds a title", all, "title", nullptr, update, unpublished, "Azzurro", "Azzurro"},
    {"an update keeps a title", mfxAndMp3, "title", "Volare", update, published, "Azzurro",
     "Volare"},
    {"an update keeps a title that the record's begins with", mfxAndMp3, "title", "Volare", update,
     published, "VOLARE (Nel blu)", "Volare"},
    {"an update replaces a placeholder title", mfxOnly, "title", "-", update, unpublished,
     "Azzurro", "Azzurro"},
    {"an update replaces a placeholder title of two", mfxOnly, "title", "--", update, unpublished,
     "Azzurro", "Azzurro"},
    {"three hyphens are a title", mfxOnly, "title", "---", update, published, "Azzurro", "---"},
    {"a hyphen is a title in other formats", midiAndMp3, "title", "-", update, published, "Azzurro",
     "-"},
    {"an update replaces a track name that the title begins with", "mid", "title", "Volare", update,
     unpublished, "Volare (Nel blu)", "Volare (Nel blu)"},
    {"in whatever case", "mid", "title", "volare", update, unpublished, "VOLARE (Nel blu)",
     "VOLARE (Nel blu)"},
    {"an equal one, too", "mid", "title", "VOLARE", update, unpublished, "Volare", "Volare"},
    {"an update keeps a track name that stands within the title", "mid", "title", "Nel blu", update,
     published, "Volare (Nel blu)", "Nel blu"},
    {"an update keeps a track name longer than the title", "mid", "title", "Volare ancora", update,
     published, "Volare", "Volare ancora"},
    {"an update replaces an empty track name", "mid", "title", "", update, unpublished, "Volare",
     "Volare"},

    {"an edit replaces an author", all, "author", "Conte", edit, unpublished, "Modugno", "Modugno"},
    {"an edit adds an author", all, "author", nullptr, edit, unpublished, "Modugno", "Modugno"},
    {"an edit empties an author", all, "author", "Conte", edit, unpublished, "", ""},
    {"an update keeps an author", all, "author", "Conte", update, published, "Modugno", "Conte"},
    {"an update adds an author", all, "author", nullptr, update, unpublished, "Modugno", "Modugno"},
    {"an update replaces a placeholder author", mfxOnly, "author", "-", update, unpublished,
     "Modugno", "Modugno"},
    {"an update replaces a placeholder author of two", mfxOnly, "author", "--", update, unpublished,
     "Modugno", "Modugno"},
    {"a hyphen is an author in other formats", midiAndMp3, "author", "--", update, published,
     "Modugno", "--"},

    {"an edit replaces a bpm", all, "bpm", "100", edit, unpublished, "120", "120"},
    {"an edit adds a bpm", all, "bpm", nullptr, edit, unpublished, "120", "120"},
    {"an edit writes a bpm of 0", all, "bpm", "100", edit, unpublished, "0", "0"},
    {"an update keeps a bpm", all, "bpm", "100", update, published, "120", "100"},
    {"an update adds a bpm to a published song", all, "bpm", nullptr, update, published, "120",
     "120"},
    {"an update adds no bpm to another", midiAndMp3, "bpm", nullptr, update, unpublished, "120",
     "0"},
    {"an update adds a bpm to any MFx song", mfxOnly, "bpm", nullptr, update, unpublished, "120",
     "120"},
    {"an update with bpm -1 writes none", all, "bpm", nullptr, update, published, "-1", "0"},
    {"a bpm of 1 counts as present", mfxOnly, "bpm", "1", update, published, "120", "1"},
    {"a bpm of 499 counts as present", mfxOnly, "bpm", "499", update, published, "120", "499"},
    {"a bpm of 500 counts as absent", mfxOnly, "bpm", "500", update, published, "120", "120"},
    {"a bpm of 500 stays without one in the record", mfxOnly, "bpm", "500", update, published, "-1",
     "500"},

    {"an edit replaces a genre", all, "genre", "Pop", edit, unpublished, "Rock", "Rock"},
    {"an edit adds a genre", all, "genre", nullptr, edit, unpublished, "Rock", "Rock"},
    {"an edit empties a genre", all, "genre", "Pop", edit, unpublished, "", ""},
    {"an update keeps a genre", all, "genre", "Pop", update, published, "Rock", "Pop"},
    {"an update adds a genre", all, "genre", nullptr, update, unpublished, "Rock", "Rock"},
    {"an update replaces a placeholder genre", mfxOnly, "genre", "-", update, unpublished, "Rock",
     "Rock"},
    {"an update replaces a placeholder genre of two", mfxOnly, "genre", "--", update, unpublished,
     "Rock", "Rock"},
    {"a hyphen is a genre in other formats", midiAndMp3, "genre", "-", update, published, "Rock",
     "-"},

    {"an edit replaces an artist", all, "artist", "Mina", edit, unpublished, "Celentano",
     "Celentano"},
    {"an edit adds an artist", all, "artist", nullptr, edit, unpublished, "Celentano", "Celentano"},
    {"an edit empties an artist", all, "artist", "Mina", edit, unpublished, "", ""},
};

struct ArtistRule
{
    const char *sentence;
    const char *before; // nullptr: absent
    const char *artist; // of the record
    const char *altArtist;
    const char *after;
};

constexpr ArtistRule artistRules[] = {
    {"no artist: the other name is written", nullptr, "Mina", "Mazzini", "Mazzini"},
    {"no artist and no other name: the artist is written", nullptr, "Mina", "", "Mina"},
    {"the artist flips to the other name", "Mina", "Mina", "Mazzini", "Mazzini"},
    {"the other name is left", "Mazzini", "Mina", "Mazzini", "Mazzini"},
    {"somebody else becomes the artist", "Celentano", "Mina", "Mazzini", "Mina"},
    {"without another name the artist is written", "Celentano", "Mina", "", "Mina"},
    {"without another name the same artist stays", "Mina", "Mina", "", "Mina"},
    {"letters of another case are somebody else", "MINA", "Mina", "Mazzini", "Mina"},
};

} // namespace

void tst_FieldRules::initTestCase()
{
    QLoggingCategory::setFilterRules(latin1("*.debug=false"));
    QVERIFY(m_folder.isValid());
    m_disk = std::make_unique<UnsyncedDisk>();
}

MetaSong tst_FieldRules::imported(const QString &suffix, const QByteArray &bytes)
{
    m_path = write(m_folder.filePath(latin1("song.") + suffix), bytes);
    MetaSong song(*m_disk);
    if (!song.importFile(m_path))
        qFatal("the fixture is no song");
    return song;
}

SongInfo tst_FieldRules::savedAndReadBack(MetaSong &song)
{
    SongInfo info;
    MetaSong again;
    if (!song.saveToFile(m_path) || !again.importFile(m_path))
        info.title = latin1("not saved");
    else
        again.readInfo(info);
    return info;
}

void tst_FieldRules::fields_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("format");
    for (int i = 0; i < int(std::size(rules)); ++i) {
        const QStringList formats = latin1(rules[i].formats).split(QLatin1Char(' '));
        for (const QString &format : formats)
            QTest::addRow("%s: %s", qPrintable(format), rules[i].sentence) << i << format;
    }
}

void tst_FieldRules::fields()
{
    QFETCH(int, index);
    QFETCH(QString, format);

    const Rule &rule = rules[index];
    MetaSong song = imported(format, songWith(format, rule.field, rule.before));
    song.setSongInfo(recordWith(rule.field, rule.record, rule.isPublisher), rule.manual);
    SongInfo info;
    song.readInfo(info);
    QCOMPARE(fieldOf(info, rule.field), latin1(rule.after));
    QCOMPARE(fieldOf(savedAndReadBack(song), rule.field), latin1(rule.after));
}

void tst_FieldRules::artist_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("artist");
    QTest::addColumn<QString>("altArtist");
    QTest::addColumn<QString>("after");

    const QStringList formats = latin1(all).split(QLatin1Char(' '));
    for (const QString &format : formats) {
        for (const ArtistRule &rule : artistRules)
            QTest::addRow("%s: %s", qPrintable(format), rule.sentence)
                << format << QByteArray(rule.before) << latin1(rule.artist)
                << latin1(rule.altArtist) << latin1(rule.after);
    }
    for (const char *placeholder : {"-", "--"}) {
        QTest::addRow("mf3: the placeholder %s counts as no artist", placeholder)
            << latin1("mf3") << QByteArray(placeholder) << latin1("Mina") << latin1("Mazzini")
            << latin1("Mazzini");
        QTest::addRow("mid: %s is somebody else", placeholder)
            << latin1("mid") << QByteArray(placeholder) << latin1("Mina") << latin1("Mazzini")
            << latin1("Mina");
        QTest::addRow("mp3: %s is somebody else", placeholder)
            << latin1("mp3") << QByteArray(placeholder) << latin1("Mina") << latin1("Mazzini")
            << latin1("Mina");
    }
    QTest::newRow("mid: an empty artist is no missing one, and equals no other name")
        << latin1("mid") << QByteArray("") << latin1("Mina") << QString() << QString();
    QTest::newRow("mid: an empty artist is somebody else")
        << latin1("mid") << QByteArray("") << latin1("Mina") << latin1("Mazzini") << latin1("Mina");
}

void tst_FieldRules::artist()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, before);
    QFETCH(QString, artist);
    QFETCH(QString, altArtist);
    QFETCH(QString, after);

    for (const bool isPublisher : {true, false}) {
        MetaSong song = imported(format, songWith(format, "artist", before));
        SongInfo info = recordWith("artist", artist.toLatin1(), isPublisher);
        info.altArtist = altArtist;
        song.setSongInfo(info, update);
        song.readInfo(info);
        QCOMPARE(info.artist, after);
        QCOMPARE(savedAndReadBack(song).artist, after);
    }
}

void tst_FieldRules::artistFlipsOnceInEachFormat_data()
{
    QTest::addColumn<QString>("format");
    const QStringList formats = latin1(all).split(QLatin1Char(' '));
    for (const QString &format : formats)
        QTest::newRow(qPrintable(format)) << format;
}

void tst_FieldRules::artistFlipsOnceInEachFormat()
{
    QFETCH(QString, format);

    SongInfo record = recordWith("artist", "Mina", true);
    record.altArtist = latin1("Mazzini");
    MetaSong song = imported(format, songWith(format, "artist", "Celentano"));
    for (const char *expected : {"Mina", "Mazzini", "Mazzini"}) {
        song.setSongInfo(record, update);
        QCOMPARE(savedAndReadBack(song).artist, latin1(expected));
        QVERIFY(song.importFile(m_path));
    }
}

void tst_FieldRules::markers_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<bool>("manual");
    QTest::addColumn<QVector<Marker>>("record");
    QTest::addColumn<QVector<Marker>>("after");

    const QVector<Marker> none;
    const QVector<Marker> old = {{7, latin1("Old")}};
    const QVector<Marker> given = {{1, latin1("Intro")}, {5, latin1("Chorus")}};
    const QByteArray present = marker(7, "Old");
    for (const char *format : {"mid", "mf3", "mf4", "mf5"}) {
        const auto row = [&](const char *sentence, const QByteArray &before, bool manual,
                             const QVector<Marker> &record, const QVector<Marker> &after) {
            QTest::addRow("%s: %s", format, sentence)
                << latin1(format) << before << manual << record << after;
        };
        row("an update adds markers where there are none", {}, update, given, given);
        row("an update without markers adds none", {}, update, none, none);
        row("an update keeps markers", present, update, given, old);
        row("an edit adds none", {}, edit, given, none);
        row("an edit keeps markers", present, edit, given, old);
        row("an edit without markers keeps them, too", present, edit, none, old);
    }
}

void tst_FieldRules::markers()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, before);
    QFETCH(bool, manual);
    QFETCH(QVector<Marker>, record);
    QFETCH(QVector<Marker>, after);

    const QByteArray bytes = format == latin1("mid") ? midi0(before)
        : format == latin1("mf4")                    ? mfx(4, {}, withFiller(midi0(before)))
                                  : mfx(format.right(1).toInt(), {}, midi0(before));
    for (const bool isPublisher : {true, false}) {
        MetaSong song = imported(format, bytes);
        SongInfo info = recordWith("title", "A", isPublisher);
        info.markers = record;
        song.setSongInfo(info, manual);
        song.readInfo(info);
        QCOMPARE(info.markers, after);
        QCOMPARE(savedAndReadBack(song).markers, after);
    }
}

void tst_FieldRules::mfxFlags_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<bool>("manual");
    QTest::addColumn<bool>("hasMarkers");
    QTest::addColumn<int>("after");

    QTest::newRow("an update with markers sets bit 0") << 0x40 << update << true << 0x41;
    QTest::newRow("an edit with markers sets bit 0") << 0x40 << edit << true << 0x41;
    QTest::newRow("an update without markers leaves the flags") << 0x40 << update << false << 0x40;
    QTest::newRow("an edit without markers leaves the flags") << 0x40 << edit << false << 0x40;
    QTest::newRow("bit 0 is never cleared by an update") << 0x81 << update << false << 0x81;
    QTest::newRow("bit 0 is never cleared by an edit") << 0x81 << edit << false << 0x81;
}

void tst_FieldRules::mfxFlags()
{
    QFETCH(int, before);
    QFETCH(bool, manual);
    QFETCH(bool, hasMarkers);
    QFETCH(int, after);

    MfxFields header;
    header.flags = before;
    // Also when the song's own markers stay.
    MetaSong song = imported(latin1("mf3"), mfx(3, header, midi0(marker(1, "A"))));
    SongInfo info;
    if (hasMarkers)
        info.markers = {{1, latin1("A")}};
    song.setSongInfo(info, manual);
    song.readInfo(info);
    QCOMPARE(int(info.mfxFlags), after);
    QCOMPARE(int(savedAndReadBack(song).mfxFlags), after);
}

void tst_FieldRules::editMark_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<bool>("manual");

    QTest::newRow("an edit marks an MP3") << tag() + audio() << edit;
    QTest::newRow("an update marks an MP3") << tag() + audio() << update;
    QTest::newRow("an MP3 without a tag is marked, too") << audio() << update;
    QTest::newRow("an edit marks it once") << tag(SongBytes::editMark()) + audio() << edit;
    QTest::newRow("an update marks it once") << tag(SongBytes::editMark()) + audio() << update;
}

void tst_FieldRules::editMark()
{
    QFETCH(QByteArray, before);
    QFETCH(bool, manual);

    MetaSong song = imported(latin1("mp3"), before);
    SongInfo info;
    info.length = -1;
    song.setSongInfo(info, manual);
    song.setSongInfo(info, manual);
    QVERIFY(song.saveToFile(m_path));
    QCOMPARE(read(m_path).count(SongBytes::editMark()), 1);
    QVERIFY(read(m_path).endsWith(audio()));
}

void tst_FieldRules::whatWasNotReadIsUntouched_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<bool>("manual");
    QTest::addColumn<QByteArray>("after");

    const QByteArray lyrics = meta(5, "La la") + hex("60 F0 03 41 10 F7");
    const QByteArray track2 = track(meta(3, "Piano") + note() + endOfTrack());
    const QByteArray lastEvents =
        songInfo(1, "Pop") + songInfo(2, "Mina") + songInfo(5, "120") + songInfo(3, "Conte");
    const QByteArray firstEvents = songInfo(4, "215") + meta(0x59, hex("0001"));
    const auto song = [&](const QByteArray &events) {
        return midi(1, {track(events + lyrics + endOfTrack()), track2});
    };
    QTest::newRow("mid: an edit changes the head of the first track only")
        << latin1("mid") << song(meta(3, "Old") + songInfo(1, "Old") + marker(1, "A")) << edit
        << song(lastEvents + meta(3, "Volare") + firstEvents + marker(1, "A"));
    QTest::newRow("mid: an update, too, and takes a name in a later track for the song's")
        << latin1("mid") << song({}) << update
        << song(lastEvents + firstEvents + marker(9, "Coda"));

    const QByteArray picture = "APIC" + bigEndian(300, 4) + hex("0000") + QByteArray(300, '\xAB');
    const QByteArray padding(64, '\0');
    const QByteArray newFrames = SongBytes::editMark() + frame("TCON", "Pop")
        + frame("TPE1", "Mina") + frame("TBPM", "120") + frame("TCOM", "Conte")
        + frame("TIT2", "Volare") + frame("TLEN", "215000") + frame("TKEY", "A-");
    QTest::newRow("mp3: an edit puts its frames first, picture, padding and audio stay")
        << latin1("mp3") << tag(frame("TIT2", "Old") + picture + padding) + audio(500) << edit
        << tag(newFrames + picture + padding) + audio(500);
    QTest::newRow("mp3: a song without a tag gains one in front of its audio")
        << latin1("mp3") << audio(500) << update << tag(newFrames) + audio(500);
    QTest::newRow("mp3: what follows a tag that counts as empty is kept")
        << latin1("mp3") << "ID3" + hex("030000 00000081") + frame("TIT2", "Lost") + audio()
        << update << tag(newFrames) + frame("TIT2", "Lost") + audio();
}

void tst_FieldRules::whatWasNotReadIsUntouched()
{
    QFETCH(QString, suffix);
    QFETCH(QByteArray, before);
    QFETCH(bool, manual);
    QFETCH(QByteArray, after);

    MetaSong song = imported(suffix, before);
    SongInfo info;
    info.title = latin1("Volare");
    info.artist = latin1("Mina");
    info.author = latin1("Conte");
    info.genre = latin1("Pop");
    info.key = latin1("A-");
    info.length = 215;
    info.bpm = 120;
    info.isPublisher = true;
    info.markers = {{9, latin1("Coda")}};
    song.setSongInfo(info, manual);
    QVERIFY(song.saveToFile(m_path));
    QCOMPARE(read(m_path), after);
}

void tst_FieldRules::theRecordReadBack_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<SongInfo>("record");
    QTest::addColumn<bool>("manual");

    SongInfo usual;
    usual.title = latin1("Volare");
    usual.artist = latin1("Mina");
    usual.altArtist = latin1("Mazzini");
    usual.author = latin1("Conte");
    usual.genre = latin1("Pop");
    usual.key = latin1("A-");
    usual.length = 215;
    usual.bpm = 120;
    usual.isPublisher = true;
    usual.markers = {{1, latin1("Intro")}, {65535, latin1("Coda")}};

    SongInfo odd;
    odd.title = latin1("  K-VARO ") + QChar(0) + latin1("hidden");
    odd.artist = QString(200, QLatin1Char('A'));
    odd.author = latin1("TIT2TPE1MEDT");
    odd.genre = latin1("\t");
    odd.key = latin1("G #");
    odd.length = 2147483647;
    odd.bpm = 70000;
    odd.isPublisher = true;
    odd.markers = {{0, QString()}, {3, QString(300, QLatin1Char('m'))}};

    SongInfo accents = usual;
    accents.title = latin1("Perch\xE9 no");
    accents.artist = QString(130, QChar(0x20AC));
    accents.markers = {{2, QString(125, QChar(0x20AC))}};

    SongInfo empty;
    empty.length = empty.bpm = -1;

    const QByteArray song = midi1(meta(2, "K-Varo") + meta(3, "Vol") + meta(0x59, hex("0A00")));
    const QVector<QPair<QString, QByteArray>> songs = {
        {latin1("mid"), song},
        {latin1("mf3"), mfx(3, {}, song)},
        {latin1("mf4"), mfx(4, {}, withFiller(song))},
        {latin1("mf5"), mfx(5, {"-", "--", "", "x", "LONG.MF5", 500, 0}, song)},
        {latin1("tagged.mp3"), tag(frame("TIT2", "Old") + QByteArray(40, '\0')) + audio()},
        {latin1("bare.mp3"), audio()},
        {latin1("odd.mp3"), "ID3" + hex("040000 00000080") + QByteArray(200, 'x') + audio()},
    };
    const QVector<QPair<const char *, SongInfo>> records = {
        {"usual", usual}, {"odd", odd}, {"accented", accents}, {"empty", empty}};
    for (const auto &[suffix, bytes] : songs) {
        for (const auto &[name, record] : records) {
            for (const bool manual : {true, false}) {
                // An MFx header takes no accents; a test of saving has that.
                if (suffix.startsWith(latin1("mf")) && qstrcmp(name, "accented") == 0)
                    continue;
                QTest::addRow("%s: %s record, %s", qPrintable(suffix), name,
                              manual ? "edit" : "update")
                    << suffix << bytes << record << manual;
            }
        }
    }
}

void tst_FieldRules::theRecordReadBack()
{
    QFETCH(QString, suffix);
    QFETCH(QByteArray, bytes);
    QFETCH(SongInfo, record);
    QFETCH(bool, manual);

    MetaSong song = imported(suffix, bytes);
    song.setSongInfo(record, manual);
    QVERIFY(song.isSavable());
    SongInfo inMemory;
    song.readInfo(inMemory);
    const SongInfo inFile = savedAndReadBack(song);
    QCOMPARE(inFile.title, inMemory.title);
    QCOMPARE(inFile.artist, inMemory.artist);
    QCOMPARE(inFile.genre, inMemory.genre);
    QCOMPARE(inFile.author, inMemory.author);
    QCOMPARE(inFile.length, inMemory.length);
    QCOMPARE(inFile.bpm, inMemory.bpm);
    QCOMPARE(inFile.key, inMemory.key);
    QCOMPARE(inFile.isPublisher, inMemory.isPublisher);
    QCOMPARE(inFile.markers, inMemory.markers);
    QCOMPARE(inFile.format, inMemory.format);
    QCOMPARE(inFile.mfxLongName, inMemory.mfxLongName);
    QCOMPARE(inFile.mfxFlags, inMemory.mfxFlags);
}

void tst_FieldRules::examplesOfTheFormatsPage()
{
    const QByteArray rest = track(note() + endOfTrack());
    const QByteArray old = hex("00 ff 58 04 04 02 18 08  00 ff 51 03 07 a1 20  00 ff 2f 00");
    MetaSong song = imported(latin1("mid"), midi(1, {track(old), rest}));
    SongInfo info;
    QVERIFY(song.addMarker(latin1("Intro"), 1) > 0);
    song.readInfo(info);
    info.title = latin1("Ciao");
    info.artist = latin1("Mina");
    info.key = latin1("Eb");
    info.length = 215;
    song.setSongInfo(info, edit);
    QVERIFY(song.saveToFile(m_path));
    QCOMPARE(read(m_path),
             hex("4d 54 68 64  00 00 00 06  00 01 00 02  00 60"
                 "4d 54 72 6b  00 00 00 4e"
                 "00 ff 4b 01 01"
                 "00 ff 4b 05 02  4d 69 6e 61"
                 "00 ff 4b 02 05  30"
                 "00 ff 4b 01 03"
                 "00 ff 03 04  43 69 61 6f"
                 "00 ff 4b 04 04  32 31 35"
                 "00 ff 59 02  fd 00"
                 "00 ff 4b 08 06  00 01  49 6e 74 72 6f")
                 + old + rest);

    MetaSong mp3 = imported(latin1("mp3"), audio());
    mp3.readInfo(info);
    info.title = latin1("Ciao");
    mp3.setSongInfo(info, edit);
    QVERIFY(mp3.saveToFile(m_path));
    QCOMPARE(read(m_path),
             hex("49 44 33  03 00 00  00 00 00 29"
                 "4d 45 44 54  00 00 00 04  00 00  00  00 00 00"
                 "54 49 54 32  00 00 00 05  00 00  00  43 69 61 6f"
                 "54 4c 45 4e  00 00 00 02  00 00  00  30")
                 + audio());
}

void tst_FieldRules::anUnloadedSongTakesNothing()
{
    MetaSong song;
    SongInfo info;
    info.title = latin1("Title");
    song.setSongInfo(info, true);
    song.readInfo(info);
    QCOMPARE(info.title, QString());
    QVERIFY(!song.isSavable());
}

QTEST_GUILESS_MAIN(tst_FieldRules)
#include "tst_fieldrules.moc"
