#include "tests/indexer/memoryfixture.h"

#include <functional>

using namespace tarvel4;
using namespace SongBytes;

using Change = std::function<void(MemoryFixture &memory)>;
Q_DECLARE_METATYPE(Change)

namespace {

QByteArray padded(const QByteArray &text, int size)
{
    return text.leftJustified(size, '\0', true);
}

QByteArray pathRecord(quint32 number, const QByteArray &path)
{
    return bigEndian(number, 4) + padded(path, 252) + "20090305070809";
}

QByteArray songRecord(quint32 number, const QByteArray &title)
{
    return bigEndian(number, 4) + padded(title, 58) + hex("7800");
}

QByteArray groupRecord(quint32 previous, quint32 count, const QByteArray &artist)
{
    return bigEndian(previous, 2) + bigEndian(count, 2) + padded(artist, 58) + hex("00ff");
}

/** All slots unclaimed but those given as character and offset. */
QByteArray alpha(const QMap<char, quint32> &slots_)
{
    QByteArray result;
    for (char c = ' '; c <= '_'; ++c)
        result += bigEndian(slots_.value(c, 0xFFFFFFFF), 4);
    return result;
}

/** Four songs of two artists: /Zeta/x.mid (0), /b.mid (1), /Zeta.mid (2), /sub/d.mp3 (3). */
void fill(MemoryFixture &memory)
{
    for (const char *path : {"/Zeta/x.mid", "/b.mid", "/Zeta.mid", "/sub/d.mp3"})
        memory.put(QString::fromLatin1(path), "song");
    memory.put("/index.id3"_s,
               pathRecord(0, "/Zeta/x.mid") + pathRecord(1, "/b.mid") + pathRecord(2, "/Zeta.mid")
                   + pathRecord(3, "/sub/d.mp3"));
    memory.put("/ordfile.id3"_s, hex("0100 0300 0200 0000"));
    memory.put("/title.id3"_s,
               songRecord(1, "ALFA") + songRecord(0, "BETA") + songRecord(3, "BETA 2")
                   + songRecord(2, "\xC0"));
    memory.put("/atitle.id3"_s, alpha({{'A', 0}, {'B', 64}}));
    memory.put("/artist.id3"_s,
               groupRecord(0, 3, "<UNKNOWN>") + songRecord(1, "ALFA") + songRecord(3, "BETA 2")
                   + songRecord(2, "\xC0") + groupRecord(3, 1, "ABBA") + songRecord(0, "BETA"));
    memory.put("/aartist.id3"_s, alpha({{'<', 0}, {'A', 256}}));
    memory.put("/fsinfos.id3"_s, hex("040002000000000000000000"));
}

/** Overwrites the bytes at an offset of a file. */
Change patch(const char *file, int offset, const QByteArray &bytes)
{
    return [=](MemoryFixture &memory) { memory.patch(file, offset, bytes); };
}

Change resize(const char *file, int size)
{
    return [=](MemoryFixture &memory) { QVERIFY(QFile::resize(memory.file(file), size)); };
}

Change without(const char *file)
{
    return [=](MemoryFixture &memory) { QVERIFY(QFile::remove(memory.file(file))); };
}

/** A folder in the place of a file. */
Change replaceByFolder(const char *file)
{
    return [=](MemoryFixture &memory) {
        without(file)(memory);
        QVERIFY(QDir().mkdir(memory.file(file)));
    };
}

/** Made anew, as not every system gives a file its own name in another case. */
Change renamed(const char *file, const QString &name)
{
    return [=](MemoryFixture &memory) {
        without(file)(memory);
        memory.put(name, "song");
    };
}

/** A song that the index does not have. */
Change with(const QString &song)
{
    return [=](MemoryFixture &memory) { memory.put(song, "song"); };
}

/** Changes made one after the other. */
Change all(const QVector<Change> &changes)
{
    return [=](MemoryFixture &memory) {
        for (const Change &change : changes)
            change(memory);
    };
}

} // namespace

class tst_IndexVerifier : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void problems_data()
    {
        const Table<QString, int, Change> row; // file and record that the problem is told of
        row("a file of the seven is missing", "title.id3", -1, without("title.id3"));
        row("a file of the seven is a folder", "artist.id3", -1, replaceByFolder("artist.id3"));
        for (const char *name :
             {"index.id3", "ordfile.id3", "title.id3", "artist.id3", "atitle.id3", "fsinfos.id3"})
            row(qPrintable("%1 claims to be larger than any"_s.arg(QLatin1String(name))), name, -1,
                resize(name, 512 * 1024 * 1024));
        row("the path index ends inside a record", "index.id3", 3,
            resize("index.id3", 4 * 270 - 1));
        row("the title index ends inside a record", "title.id3", 3,
            resize("title.id3", 4 * 64 - 1));
        row("the artist index ends inside a record", "artist.id3", 5,
            resize("artist.id3", 6 * 64 - 1));
        row("the ord index ends inside a value", "ordfile.id3", 3, resize("ordfile.id3", 7));
        row("the ord index has a value too few", "ordfile.id3", -1, resize("ordfile.id3", 6));
        row("an alpha index is short", "atitle.id3", -1, resize("atitle.id3", 255));
        row("an alpha index is long", "aartist.id3", -1, resize("aartist.id3", 512));
        row("the counts are short", "fsinfos.id3", -1, resize("fsinfos.id3", 0));

        row("the count of titles disagrees", "fsinfos.id3", 0, patch("fsinfos.id3", 0, "\x05"));
        row("the count of artists disagrees", "fsinfos.id3", 0, patch("fsinfos.id3", 2, "\x01"));
        row("a reserved count is not zero", "fsinfos.id3", 0, patch("fsinfos.id3", 11, "\x01"));
        row("a title record is missing", "title.id3", -1, resize("title.id3", 3 * 64));

        row("a path record has another's number", "index.id3", 1,
            patch("index.id3", 270 + 3, "\x02"));
        row("a path record's number is no song's", "index.id3", 1, patch("index.id3", 270, "\x80"));
        row("a number is used twice in the titles", "title.id3", 1,
            patch("title.id3", 64 + 3, "\x01"));
        row("a number is missing in the titles", "title.id3", -1,
            patch("title.id3", 64 + 3, "\x01"));
        row("a number of the artist index is no song's", "artist.id3", 1,
            patch("artist.id3", 64, "\x7f"));
        row("a value of the ord index is used twice", "ordfile.id3", 1,
            patch("ordfile.id3", 2, "\x02"));

        row("the path order does not hold", "ordfile.id3", 0,
            patch("ordfile.id3", 0, hex("03000100")));
        row("the title order does not hold", "title.id3", 1, patch("title.id3", 4, "ZETA"));
        row("the artist order does not hold", "artist.id3", 4,
            patch("artist.id3", 4, "ZETA\0\0\0\0\0"));
        row("the titles of a group are not in order", "artist.id3", 2,
            patch("artist.id3", 64 + 4, "ZETA"));
        row("two groups have one artist", "artist.id3", 4,
            patch("artist.id3", 4 * 64 + 4, "<Unknown>"));

        row("a group counts one song too many", "artist.id3", 0, patch("artist.id3", 3, "\x04"));
        row("a group's back-count is wrong", "artist.id3", 4,
            patch("artist.id3", 4 * 64 + 1, "\x02"));
        row("the first group has a back-count", "artist.id3", 0, patch("artist.id3", 1, "\x01"));
        row("a group is empty", "artist.id3", 4, resize("artist.id3", 5 * 64));
        row("the first record is no group", "artist.id3", 0,
            patch("artist.id3", 63, QByteArray(1, '\0')));
        row("a song's record differs from its title record", "artist.id3", 1,
            patch("artist.id3", 64 + 62, "\x50"));

        row("a slot points at another letter", "atitle.id3", 'A' - ' ',
            patch("atitle.id3", 4 * ('A' - ' ') + 3, "\x40"));
        row("a slot points behind the first of its letter", "atitle.id3", 'B' - ' ',
            patch("atitle.id3", 4 * ('B' - ' ') + 3, "\x80"));
        row("a slot without a letter is claimed", "atitle.id3", 'C' - ' ',
            patch("atitle.id3", 4 * ('C' - ' '), QByteArray(4, '\0')));
        row("a slot points at a song, not at its group", "aartist.id3", 'A' - ' ',
            patch("aartist.id3", 4 * ('A' - ' ') + 2, hex("0040")));

        row("a path does not begin at the root", "index.id3", 1, patch("index.id3", 270 + 4, "x"));
        row("a path does not end", "index.id3", 1,
            patch("index.id3", 270 + 4 + 6, QByteArray(246, 'x')));
        row("bytes stand behind the end of a path", "index.id3", 1,
            patch("index.id3", 270 + 255, "x"));
        row("bytes stand behind the end of a title", "title.id3", 0,
            patch("title.id3", 4 + 57, "x"));
        row("bytes stand behind the end of an artist", "artist.id3", 0,
            patch("artist.id3", 4 + 57, "x"));
        row("a title is empty", "title.id3", 0, patch("title.id3", 4, QByteArray(4, '\0')));
        row("a title is not in upper case", "title.id3", 2, patch("title.id3", 2 * 64 + 5, "e"));
        row("a title begins with a blank", "title.id3", 0, patch("title.id3", 4, " ALF"));
        row("a title ends with a blank", "title.id3", 0, patch("title.id3", 4, "ALF "));
        row("an artist is empty", "artist.id3", 4,
            patch("artist.id3", 4 * 64 + 4, QByteArray(4, '\0')));
        row("an artist is not in upper case", "artist.id3", 4,
            patch("artist.id3", 4 * 64 + 4, "Abba"));
        row("an artist has a letter without an upper-case form in ISO 8859-1", "artist.id3", 4,
            patch("artist.id3", 4 * 64 + 7, "\xff"));
        row("an artist ends with a blank", "artist.id3", 4, patch("artist.id3", 4 * 64 + 8, " "));
        row("a kind that no song has", "title.id3", 0, patch("title.id3", 63, "\x05"));
        row("an attribute byte with unknown bits", "title.id3", 0, patch("title.id3", 63, "\x10"));

        row("a song was deleted", "index.id3", 3, without("sub/d.mp3"));
        row("a path leads out of the memory", "index.id3", 1,
            patch("index.id3", 270 + 4, "/../b.mid"));
        row("a folder has the name of a song", "index.id3", 1, replaceByFolder("b.mid"));
        row("a song has another date", "index.id3", 1, [](MemoryFixture &memory) {
            memory.put("/b.mid"_s, "song", QDateTime(QDate(2009, 3, 6), QTime(7, 8, 9)));
        });
        row("a song has another time", "index.id3", 1, patch("index.id3", 270 + 269, "0"));
        row("the date is no number", "index.id3", 1, patch("index.id3", 270 + 256, "x"));
        row("a song of the memory is not in the index", "index.id3", -1, with("/sub/new.KAR"_s));
        row("a name differs in case", "index.id3", 1, renamed("b.mid", "/B.mid"_s));
    }
    void problems()
    {
        const auto [file, record, change] = cells<QString, int, Change>();
        MemoryFixture memory;
        fill(memory);
        change(memory);
        const QStringList problems = memory.problems();
        QVERIFY(problems.size() < 100); // a file that can't be one of an index is not read
        const QRegularExpression named("^%1 %2: ."_s.arg(file).arg(record));
        QVERIFY2(!problems.filter(named).isEmpty(), qPrintable(problems.join(QLatin1Char('|'))));
    }

    /** What ISO 8859-1 and 16 bits leave out is no disagreement. */
    void whatTheFilesCannotHold_data()
    {
        const Table<Change> row;
        row("nothing, in a true memory", [](MemoryFixture &) {});
        row("songs in sfx and bridge, hidden names and other files are not missed",
            all({with("/SFX/x.mid"_s), with("/sub/Bridge/x.mid"_s), with("/.Trash/x.mid"_s),
                 with("/._b.mid"_s), with("/song.wav"_s)}));
        row("a song whose path has 252 characters is not missed",
            with(QLatin1Char('/') + QString(247, QLatin1Char('x')) + ".mid"_s));
        row("a loop of links ends", [](MemoryFixture &memory) {
            QVERIFY(QFile::link(memory.root(), memory.path("/sub/loop"_s)));
        });
        row("a name outside ISO 8859-1 is its replaced form",
            all({renamed("b.mid", QStringLiteral("/\u0416.mid")),
                 patch("index.id3", 270 + 5, "?")}));
        row("a title with a replaced character may stand anywhere",
            all({patch("title.id3", 3 * 64 + 4, "?"), patch("artist.id3", 3 * 64 + 4, "?")}));
        const QByteArray cutTitle = "BETA 2" + QByteArray(51, 'X') + ' ';
        row("a title that was cut behind a blank ends with it",
            all({patch("title.id3", 2 * 64 + 4, cutTitle),
                 patch("artist.id3", 2 * 64 + 4, cutTitle)}));
        row("a title that begins with a real question mark claims its slot",
            all({patch("title.id3", 4, "?LFA"), patch("artist.id3", 64 + 4, "?LFA"),
                 patch("atitle.id3", 0, alpha({{'?', 0}, {'B', 64}}))}));
    }
    void whatTheFilesCannotHold()
    {
        const auto [change] = cells<Change>();
        MemoryFixture memory;
        fill(memory);
        change(memory);
        QCOMPARE(memory.problems(), QStringList());
        QVERIFY(IndexVerifier(memory.root() + QLatin1Char('/')).verify().isEmpty());
    }

    /** The song is known by its record, and is told with the path that it has. */
    void aNameThatDiffersInCaseIsTheSameSong_data()
    {
        const Table<QByteArray, QString, QByteArray> row; // recorded, on the memory, path order
        row("a letter of ASCII", "/b.mid", "/B.mid", hex("0100030002000000"));
        row("a letter with an accent", "/\xE0.mid", QStringLiteral("/\u00C0.mid"),
            hex("0300020000000100"));
    }
    void aNameThatDiffersInCaseIsTheSameSong()
    {
        const auto [recorded, path, order] = cells<QByteArray, QString, QByteArray>();
        MemoryFixture memory;
        fill(memory);
        all({renamed("b.mid", path), patch("index.id3", 270 + 4, recorded),
             patch("ordfile.id3", 0, order)})(memory);
        QCOMPARE(memory.problems(),
                 QStringList(QStringLiteral("index.id3 1: Il percorso della song è ") + path));
    }

    void songsWhoseNamesDifferInCaseAreToldApart()
    {
        MemoryFixture memory;
        fill(memory);
        if (QFile::exists(memory.path("/B.mid"_s)))
            QSKIP("names do not keep case apart here");
        all({renamed("Zeta.mid", "/B.mid"_s), patch("index.id3", 2 * 270 + 4, padded("/B.mid", 9)),
             patch("ordfile.id3", 0, hex("0200010003000000"))})(memory);
        QCOMPARE(memory.problems(), QStringList());
    }

    void changesNothing()
    {
        MemoryFixture memory;
        fill(memory);
        const auto before = memory.files();
        QVERIFY(before.size() == 11 && memory.problems().isEmpty());
        QVERIFY(memory.files() == before);
    }
};

QTEST_GUILESS_MAIN(tst_IndexVerifier)
#include "tst_indexverifier.moc"
