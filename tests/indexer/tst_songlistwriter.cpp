#include "indexer/songlistwriter.h"
#include "tests/indexer/memoryfixture.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/unixfile.h"

#include <QCoreApplication>
#include <QTranslator>
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#endif

using namespace tarvel4;

namespace {

IndexEntry song(const char *title, const char *artist, const char *genre, const char *path)
{
    IndexEntry entry;
    entry.title = QString::fromUtf8(title);
    entry.artist = QString::fromUtf8(artist);
    entry.genre = QString::fromUtf8(genre);
    entry.relativePath = QString::fromUtf8(path);
    return entry;
}

/** Translates every text to itself in brackets. */
class Brackets : public QTranslator
{
public:
    QString translate(const char *, const char *text, const char *, int) const override
    {
        return QLatin1Char('[') + QString::fromUtf8(text) + QLatin1Char(']');
    }
    bool isEmpty() const override { return false; }
};

/** A memory with three songs. */
class ListedMemory : public MemoryFixture
{
public:
    ListedMemory()
    {
        putMidi("/a.mid"_s, "Beta", "Zucchero");
        putMidi("/Pop/b.mid"_s, "alfa; live", "ABBA");
        putMidi("/c.mid"_s, "caff\xE8");
        if (!Index().rebuild(root()))
            qFatal("the memory is not prepared");
    }
};

} // namespace

/** The list of a memory's songs as text. */
class tst_SongListWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void orders_data()
    {
        const Table<int, QString> row;
        row("0: by title", 0, "a b C D éa Éb");
        row("1: by artist, ties by title; Abba and ABBA are mixed in title order", 1,
            "b C D a éa Éb");
        row("2: by genre, ties by title", 2, "C a b D éa Éb");
        row("any other order is by title", 7, "a b C D éa Éb");
    }
    void orders()
    {
        const auto [order, sorted] = cells<int, QString>();
        QVector<IndexEntry> entries{song("D", "Abba", "rock", "/1"), song("a", "Zed", "Pop", "/2"),
                                    song("C", "ABBA", "Beat", "/3"), song("b", "abba", "pop", "/4"),
                                    song("Éb", "è", "È", "/5"),      song("éa", "È", "è", "/6")};
        SongListWriter::sort(entries, order);
        QStringList titles;
        for (const IndexEntry &entry : entries)
            titles.append(entry.title);
        QCOMPARE(titles.join(QLatin1Char(' ')), sorted);
    }

    void linesAreNotEscaped()
    {
        QCOMPARE(SongListWriter::listOf(
                     {song("A;B", "\"X\"", "", "/a.mid"), song("Песня", "Й", "", "/п.mid")},
                     SongListWriter::Encoding::Utf8),
                 QByteArray("TITOLO;ARTISTA;FILE;\nA;B;\"X\";/a.mid;\nПесня;Й;/п.mid;\n"));
    }

    void theListOfAMemory()
    {
        ListedMemory memory;
        const QString target = memory.file("SongsList.csv");
        QCOMPARE(Index().writeSongList(memory.root(), target, Index::ByTitle), 1);
        QCOMPARE(memory.read("SongsList.csv"),
                 QByteArray("TITOLO;ARTISTA;FILE;\n"
                            "ALFA; LIVE;ABBA;/Pop/b.mid;\n"
                            "BETA;ZUCCHERO;/a.mid;\n")
                     + QStringLiteral("CAFF\u00c8;<UNKNOWN>;/c.mid;\n").toLocal8Bit());
        QCOMPARE(Index().writeSongList(memory.root() + QLatin1Char('/'), target, Index::ByArtist),
                 1);
        QVERIFY(memory.read("SongsList.csv").startsWith("TITOLO;ARTISTA;FILE;\nCAFF"));
    }

    void itIsWrittenInTheSystemsEncoding()
    {
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
        const QByteArray list =
            SongListWriter::listOf({song("È", "Й", "", "/п")}, SongListWriter::Encoding::Local);
        QTextCodec::setCodecForLocale(nullptr);
        QCOMPARE(list, QByteArray("TITOLO;ARTISTA;FILE;\n\xC8;?;/?;\n"));
#elif defined(Q_OS_WIN)
        QCOMPARE(
            SongListWriter::listOf({song("È", "Й", "", "/п")}, SongListWriter::Encoding::Local),
            QStringLiteral("TITOLO;ARTISTA;FILE;\n\u00C8;\u0419;/\u043F;\n").toLocal8Bit());
#else // takes every system but Windows for one of UTF-8
        QCOMPARE(
            SongListWriter::listOf({song("È", "Й", "", "/п")}, SongListWriter::Encoding::Local),
            QByteArray("TITOLO;ARTISTA;FILE;\n") + "È;Й;/п;\n");
#endif
    }

    void theHeaderIsTranslated()
    {
        Brackets brackets;
        QVERIFY(QCoreApplication::installTranslator(&brackets));
        QCOMPARE(SongListWriter::listOf({}, SongListWriter::Encoding::Utf8),
                 QByteArray("[TITOLO];[ARTISTA];[FILE];\n"));
    }

    void signalsTellEachSong()
    {
        ListedMemory memory;
        Index index;
        QStringList told;
        QObject::connect(&index, &Index::progressMaxSetup,
                         [&](int n) { told << "max %1"_s.arg(n); });
        QObject::connect(&index, &Index::currentPathChanged,
                         [&](const QString &path) { told << path; });
        QObject::connect(&index, &Index::progressValueChanged,
                         [&](int n) { told << QString::number(n); });
        QCOMPARE(index.writeSongList(memory.root(), memory.file("l.csv"), 0), 1);
        QCOMPARE(told.join(QLatin1Char(' ')), "max 3 /Pop/b.mid 1 /a.mid 2 /c.mid 3"_s);
    }

    void aMemoryThatIsNotPrepared_data()
    {
        const Table<QString> row;
        for (const char *name : {"index.id3", "ordfile.id3", "title.id3", "artist.id3",
                                 "atitle.id3", "aartist.id3", "fsinfos.id3"})
            row(name, name);
    }
    void aMemoryThatIsNotPrepared()
    {
        const auto [missing] = cells<QString>();
        ListedMemory memory;
        QVERIFY(QFile::remove(memory.file(missing)));
        Index index;
        QCOMPARE(index.writeSongList(memory.root(), memory.file("l.csv"), 0), -1);
        QCOMPARE(index.outcome().path, memory.file(missing));
        QVERIFY(!QFile::exists(memory.file("l.csv")));
    }

    void targetsThatCannotBeWritten_data()
    {
        const Table<QString, QString> row;
        row("a folder that is not there", "/none/l.csv", "not-found");
        row("a folder in its place", "/Pop", "not-a-file");
        row("no name", "", "not-a-file");
        row("a song", "/a.mid", "refused-target");
        row("a song's name, in any case", "/new.Mp3", "refused-target");
        row("a MIDI song under another name", "/midi.csv", "refused-target");
        row("an MP3 under another name", "/mp3.csv", "refused-target");
        row("a link to a song", "/link.csv", "refused-target");
        row("a catalogue", "/catalogue.csv", "refused-target");
        row("a file of the index", "/index.id3", "refused-target");
        row("a name that the index may use, in any case", "/TEMP1.id3", "refused-target");
        row("a file of the player's", "/SFX.ID3", "refused-target");
    }
    void targetsThatCannotBeWritten()
    {
        const auto [below, cause] = cells<QString, QString>();
        SKIP_WITHOUT_UNIX(below.contains("link"_s), "links that Qt makes");
        ListedMemory memory;
        QVERIFY(QFile::copy(memory.path("/a.mid"_s), memory.file("midi.csv")));
        QVERIFY(QFile::link(memory.path("/a.mid"_s), memory.file("link.csv")));
        memory.put("/mp3.csv"_s, SongBytes::tag());
        memory.put("/catalogue.csv"_s, QByteArray("SQLite format 3", 16));
        const QString target = below.isEmpty() ? QString() : memory.path(below);
        const bool isThere = QFile::exists(target);
        const QByteArray old = SongBytes::read(target);
        Index index;
        QCOMPARE(index.writeSongList(memory.root(), target, 0), 0);
        QCOMPARE(index.outcome().codeName(), cause);
        QCOMPARE(index.outcome().path, target);
        QCOMPARE(QFile::exists(target), isThere);
        QCOMPARE(SongBytes::read(target), old);
    }

    void anIndexsNameElsewhereIsAnyOther()
    {
        ListedMemory memory;
        const QString target = memory.path("/Pop/index.id3"_s);
        QCOMPARE(Index().writeSongList(memory.root(), target, 0), 1);
    }

    void aFullDeviceIsAFailure()
    {
        ListedMemory memory;
        const QString target = memory.file("l.csv");
        memory.put("/l.csv"_s, "old list");
        const QStringList names = SongBytes::names(memory.root());
        for (const int step : {2, 3, 4}) { // its bytes, their flush, its name
            FailingDisk disk;
            disk.failAt = step;
            disk.cause = Outcome::Code::NoRoom;
            Index index(nullptr, disk);
            QCOMPARE(index.writeSongList(memory.root(), target, 0), 0);
            QCOMPARE(index.outcome().codeName(), "no-room"_s);
        }
        QCOMPARE(memory.read("l.csv"), QByteArray("old list"));
        QCOMPARE(SongBytes::names(memory.root()), names);
    }
};

QTEST_GUILESS_MAIN(tst_SongListWriter)
#include "tst_songlistwriter.moc"
