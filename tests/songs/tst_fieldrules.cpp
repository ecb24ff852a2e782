#include "tests/songs/songfixture.h"

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

namespace {

/** Where a field of a song's record is kept. */
struct Place
{
    const char *field;
    QString SongInfo::*text; // of a text
    qint32 SongInfo::*number; // of a number
    QByteArray MfxFields::*inHeader; // nullptr: not in an MFx header, or a number there
    int subType; // of its event in a MIDI track; 0: an event of another type
    const char *frame; // in an ID3 tag
};

constexpr Place places[] = {
    {"key", &SongInfo::key, nullptr, nullptr, 0, "TKEY"},
    {"length", nullptr, &SongInfo::length, nullptr, 4, "TLEN"},
    {"title", &SongInfo::title, nullptr, &MfxFields::title, 0, "TIT2"},
    {"author", &SongInfo::author, nullptr, &MfxFields::author, 3, "TCOM"},
    {"bpm", nullptr, &SongInfo::bpm, nullptr, 5, "TBPM"},
    {"artist", &SongInfo::artist, nullptr, &MfxFields::artist, 2, "TPE1"},
    {"genre", &SongInfo::genre, nullptr, &MfxFields::genre, 1, "TCON"},
};

const Place &placeOf(const QByteArray &field)
{
    return *std::find_if(std::begin(places), std::end(places),
                         [&](const Place &place) { return field == place.field; });
}

/** A song of a format (the suffix of its file) that holds one field; a null value: none. */
QByteArray songWith(const QString &format, const QByteArray &field, const QByteArray &value)
{
    const Place &place = placeOf(field);
    if (format == "mp3"_s) {
        const QByteArray text = field == "length" ? value + "999" : value;
        return (value.isNull() ? tag() : tag(frame(place.frame, text))) + audio();
    }
    if (value.isNull())
        return fileOf(format, midi1());
    if (format != "mid"_s && (place.inHeader || field == "bpm")) {
        MfxFields header;
        header.bpm = field == "bpm" ? value.toInt() : 0;
        if (place.inHeader)
            header.*place.inHeader = value;
        return fileOf(format, midi1(), header);
    }
    if (field == "key")
        return fileOf(format, midi1(meta(0x59, value == "D" ? hex("0200") : hex("0A00"))));
    return fileOf(format,
                  midi1(field == "title" ? meta(3, value) : songInfo(place.subType, value)));
}

SongInfo recordWith(const QByteArray &field, const QByteArray &value, bool isPublisher)
{
    SongInfo info;
    info.isPublisher = isPublisher;
    info.length = info.bpm = -1;
    if (const auto number = placeOf(field).number)
        info.*number = value.toInt();
    else
        info.*placeOf(field).text = QString::fromLatin1(value);
    return info;
}

QString fieldOf(const SongInfo &info, const QByteArray &field)
{
    const Place &place = placeOf(field);
    return place.number ? QString::number(info.*place.number) : info.*place.text;
}

struct Rule
{
    const char *sentence;
    const char *formats;
    const char *fields;
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
constexpr char numbers[] = "length bpm";
constexpr char texts[] = "title author artist genre";
constexpr char yielding[] = "title author genre"; // to an update where only a placeholder stands

constexpr Rule rules[] = {
    {"an edit replaces it", all, "key", "D", edit, unpublished, "A-", "A-"},
    {"an edit adds it", all, "key", nullptr, edit, unpublished, "A-", "A-"},
    {"an edit with none removes it", all, "key", "D", edit, published, "", ""},
    {"an update keeps it", all, "key", "D", update, published, "A-", "D"},
    {"an update adds it to a published song", all, "key", nullptr, update, published, "A-", "A-"},
    {"an update adds none to another", all, "key", nullptr, update, unpublished, "A-", ""},
    {"an update keeps one that is unknown", "mid mf3", "key", "?", update, published, "A-", ""},

    {"an edit replaces it", all, numbers, "100", edit, unpublished, "120", "120"},
    {"an edit adds it", all, numbers, nullptr, edit, unpublished, "120", "120"},
    {"an edit writes 0", all, numbers, "100", edit, unpublished, "0", "0"},
    {"an edit writes -1, which reads as 0", all, "length", "100", edit, published, "-1", "0"},
    {"an update keeps it", all, numbers, "100", update, published, "120", "100"},
    {"an update adds it to a published song", all, numbers, nullptr, update, published, "120",
     "120"},
    {"an update adds none to another", all, "length", nullptr, update, unpublished, "120", "0"},
    {"an update adds none to another", midiAndMp3, "bpm", nullptr, update, unpublished, "120", "0"},
    {"an update adds it to any MFx song", mfxOnly, "bpm", nullptr, update, unpublished, "120",
     "120"},
    {"an update with -1 writes none", all, numbers, nullptr, update, published, "-1", "0"},
    {"1 counts as present", mfxOnly, "bpm", "1", update, published, "120", "1"},
    {"499 counts as present", mfxOnly, "bpm", "499", update, published, "120", "499"},
    {"500 counts as absent", mfxOnly, "bpm", "500", update, published, "120", "120"},
    {"500 stays without one in the record", mfxOnly, "bpm", "500", update, published, "-1", "500"},

    {"an edit replaces it", all, texts, "Old", edit, unpublished, "New", "New"},
    {"an edit adds it", all, texts, nullptr, edit, unpublished, "New", "New"},
    {"an edit empties it", all, texts, "Old", edit, unpublished, "", ""},
    {"an update adds it", all, yielding, nullptr, update, unpublished, "New", "New"},
    {"an update keeps it", all, "author genre", "Old", update, published, "New", "Old"},
    {"an update replaces a placeholder", mfxOnly, yielding, "-", update, unpublished, "New", "New"},
    {"an update replaces one of two", mfxOnly, yielding, "--", update, unpublished, "New", "New"},
    {"three hyphens are a text", mfxOnly, yielding, "---", update, published, "New", "---"},
    {"hyphens are a text in other formats", midiAndMp3, yielding, "--", update, published, "New",
     "--"},
    {"an update keeps it, also where the record's begins with it", mfxAndMp3, "title", "Volare",
     update, published, "VOLARE (Nel blu)", "Volare"},
    {"an update replaces a track name that the title begins with, in whatever case", "mid", "title",
     "volare", update, unpublished, "VOLARE (Nel blu)", "VOLARE (Nel blu)"},
    {"an update replaces an equal track name", "mid", "title", "VOLARE", update, unpublished,
     "Volare", "Volare"},
    {"an update keeps a track name that stands within the title", "mid", "title", "Nel blu", update,
     published, "Volare (Nel blu)", "Nel blu"},
    {"an update keeps a track name longer than the title", "mid", "title", "Volare ancora", update,
     published, "Volare", "Volare ancora"},
    {"an update replaces an empty track name", "mid", "title", "", update, unpublished, "Volare",
     "Volare"},
};

struct ArtistRule
{
    const char *sentence;
    const char *formats;
    const char *before; // nullptr: absent
    const char *artist; // of the record
    const char *altArtist;
    const char *after;
};

constexpr ArtistRule artistRules[] = {
    {"no artist: the other name is written", all, nullptr, "Mina", "Mazzini", "Mazzini"},
    {"no artist and no other name: the artist is written", all, nullptr, "Mina", "", "Mina"},
    {"the artist flips to the other name", all, "Mina", "Mina", "Mazzini", "Mazzini"},
    {"the other name is left", all, "Mazzini", "Mina", "Mazzini", "Mazzini"},
    {"somebody else becomes the artist", all, "Celentano", "Mina", "Mazzini", "Mina"},
    {"without another name the artist is written", all, "Celentano", "Mina", "", "Mina"},
    {"without another name the same artist stays", all, "Mina", "Mina", "", "Mina"},
    {"letters of another case are somebody else", all, "MINA", "Mina", "Mazzini", "Mina"},
    {"the placeholder - counts as no artist", mfxOnly, "-", "Mina", "Mazzini", "Mazzini"},
    {"the placeholder -- counts as no artist", mfxOnly, "--", "Mina", "Mazzini", "Mazzini"},
    {"hyphens are somebody else", midiAndMp3, "--", "Mina", "Mazzini", "Mina"},
    {"an empty artist is no missing one, and equals no other name", "mid", "", "Mina", "", ""},
    {"an empty artist is somebody else", "mid", "", "Mina", "Mazzini", "Mina"},
};

} // namespace

/** The rules by which an edit and an update write a record into a song, one named row each; every
 * row is also saved and read back. */
class tst_FieldRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("*.debug=false"_s); }

    void fields_data()
    {
        Table<int, QString, QByteArray>();
        for (int i = 0; i < static_cast<int>(std::size(rules)); ++i) {
            for (const QString &format : words(rules[i].formats)) {
                for (const QString &field : words(rules[i].fields))
                    QTest::addRow("%s, %s: %s", qPrintable(format), qPrintable(field),
                                  rules[i].sentence)
                        << i << format << field.toLatin1();
            }
        }
    }
    void fields()
    {
        const auto [index, format, field] = cells<int, QString, QByteArray>();
        const Rule &rule = rules[index];
        MetaSong song = m_file.imported(format, songWith(format, field, rule.before));
        song.setSongInfo(recordWith(field, rule.record, rule.isPublisher), rule.writtenBy);
        QCOMPARE(fieldOf(recordOf(song), field), QString::fromLatin1(rule.after));
        QCOMPARE(fieldOf(m_file.savedAndReadBack(song), field), QString::fromLatin1(rule.after));
    }

    void artist_data()
    {
        Table<int, QString>();
        for (int i = 0; i < static_cast<int>(std::size(artistRules)); ++i) {
            for (const QString &format : words(artistRules[i].formats))
                QTest::addRow("%s: %s", qPrintable(format), artistRules[i].sentence) << i << format;
        }
    }
    void artist()
    {
        const auto [index, format] = cells<int, QString>();
        const ArtistRule &rule = artistRules[index];
        for (const bool isPublisher : {true, false}) {
            MetaSong song = m_file.imported(format, songWith(format, "artist", rule.before));
            SongInfo info = recordWith("artist", rule.artist, isPublisher);
            info.altArtist = QString::fromLatin1(rule.altArtist);
            song.setSongInfo(info, update);
            QCOMPARE(recordOf(song).artist, QString::fromLatin1(rule.after));
            QCOMPARE(m_file.savedAndReadBack(song).artist, QString::fromLatin1(rule.after));
        }
    }

private:
    FixtureSong m_file;
};

QTEST_GUILESS_MAIN(tst_FieldRules)
#include "tst_fieldrules.moc"
