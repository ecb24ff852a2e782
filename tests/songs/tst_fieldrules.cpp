#include "tests/songs/recordfixture.h"

using namespace tarvel4;

using namespace RecordFixture;
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

private:
    MetaSong imported(const QString &suffix, const QByteArray &bytes)
    {
        return m_file.imported(suffix, bytes);
    }
    SongInfo savedAndReadBack(MetaSong &song) const { return m_file.savedAndReadBack(song); }

    FixtureSong m_file;
};

namespace {

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
    WrittenBy writtenBy;
    bool isPublisher; // of the record
    const char *record;
    const char *after;
};

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
    song.setSongInfo(recordWith(rule.field, rule.record, rule.isPublisher), rule.writtenBy);
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
        QVERIFY(song.importFile(m_file.path()));
    }
}

QTEST_GUILESS_MAIN(tst_FieldRules)
#include "tst_fieldrules.moc"
