#include "indexer/songlistwriter.h"
#include "tests/indexer/memoryfixture.h"
#include "tests/storage/failingdisk.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QTextCodec>
#include <QTranslator>

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

/** Takes so many bytes and no more. */
class FullBuffer : public QBuffer
{
public:
    explicit FullBuffer(qint64 room)
        : m_room(room)
    {}

protected:
    qint64 writeData(const char *data, qint64 size) override
    {
        return QBuffer::writeData(data, qMin(size, m_room - pos()));
    }

private:
    qint64 m_room;
};

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

/** Three songs; the memory's own root is not part of a list. */
void prepare(MemoryFixture &memory)
{
    memory.putMidi(QStringLiteral("/a.mid"), "Beta", "Zucchero");
    memory.putMidi(QStringLiteral("/Pop/b.mid"), "alfa; live", "ABBA");
    memory.putMidi(QStringLiteral("/c.mid"), "caff\xE8");
    QVERIFY(Index().rebuild(memory.root()));
}

} // namespace

/** The list of a memory's songs as text. */
class tst_SongListWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void orders_data();
    void orders();
    void linesAreNotEscaped();
    void theListOfAMemory();
    void itIsWrittenInTheSystemsEncoding();
    void theHeaderIsTranslated();
    void signalsTellEachSong();
    void aMemoryThatIsNotPrepared_data();
    void aMemoryThatIsNotPrepared();
    void targetsThatCannotBeWritten_data();
    void targetsThatCannotBeWritten();
    void anIndexsNameElsewhereIsAnyOther();
    void aFullDeviceIsAFailure();
};

void tst_SongListWriter::orders_data()
{
    QTest::addColumn<int>("order");
    QTest::addColumn<QString>("titles");
    QTest::newRow("0: by title") << 0 << QStringLiteral("a b C D éa Éb");
    QTest::newRow("1: by artist, ties by title; Abba and ABBA are mixed in title order")
        << 1 << QStringLiteral("b C D a éa Éb");
    QTest::newRow("2: by genre, ties by title") << 2 << QStringLiteral("C a b D éa Éb");
    QTest::newRow("any other order is by title") << 7 << QStringLiteral("a b C D éa Éb");
}

void tst_SongListWriter::orders()
{
    QFETCH(int, order);
    QVector<IndexEntry> entries{song("D", "Abba", "rock", "/1"), song("a", "Zed", "Pop", "/2"),
                                song("C", "ABBA", "Beat", "/3"), song("b", "abba", "pop", "/4"),
                                song("Éb", "è", "È", "/5"),      song("éa", "È", "è", "/6")};
    SongListWriter::sort(entries, order);
    QStringList titles;
    for (const IndexEntry &entry : entries)
        titles.append(entry.title);
    QTEST(titles.join(QLatin1Char(' ')), "titles");
}

void tst_SongListWriter::linesAreNotEscaped()
{
    QBuffer list;
    QVERIFY(list.open(QIODevice::WriteOnly));
    QVERIFY(SongListWriter::write(
        list, {song("A;B", "\"X\"", "", "/a.mid"), song("Песня", "Й", "", "/п.mid")},
        SongListWriter::Encoding::Utf8));
    QCOMPARE(list.data(), QByteArray("TITOLO;ARTISTA;FILE;\nA;B;\"X\";/a.mid;\nПесня;Й;/п.mid;\n"));
}

void tst_SongListWriter::theListOfAMemory()
{
    MemoryFixture memory;
    prepare(memory);
    const QString target = memory.path(QStringLiteral("/SongsList.csv"));
    QCOMPARE(Index().writeSongList(memory.root(), target, Index::ByTitle), 1);
    QCOMPARE(memory.read("SongsList.csv"),
             QByteArray("TITOLO;ARTISTA;FILE;\n"
                        "ALFA; LIVE;ABBA;/Pop/b.mid;\n"
                        "BETA;ZUCCHERO;/a.mid;\n")
                 + QStringLiteral("CAFF\u00c8;<UNKNOWN>;/c.mid;\n").toLocal8Bit());
    QCOMPARE(Index().writeSongList(memory.root() + QLatin1Char('/'), target, Index::ByArtist), 1);
    QVERIFY(memory.read("SongsList.csv").startsWith("TITOLO;ARTISTA;FILE;\nCAFF"));
}

void tst_SongListWriter::itIsWrittenInTheSystemsEncoding()
{
    const QVector<IndexEntry> entries{song("È", "Й", "", "/п")};
    QBuffer list;
    QVERIFY(list.open(QIODevice::WriteOnly));
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
    const bool isWritten = SongListWriter::write(list, entries, SongListWriter::Encoding::Local);
    QTextCodec::setCodecForLocale(nullptr);
    QVERIFY(isWritten);
    QCOMPARE(list.data(), QByteArray("TITOLO;ARTISTA;FILE;\n\xC8;?;/?;\n"));
}

void tst_SongListWriter::theHeaderIsTranslated()
{
    Brackets brackets;
    QVERIFY(QCoreApplication::installTranslator(&brackets));
    QBuffer list;
    QVERIFY(list.open(QIODevice::WriteOnly));
    QVERIFY(SongListWriter::write(list, {}, SongListWriter::Encoding::Utf8));
    QCOMPARE(list.data(), QByteArray("[TITOLO];[ARTISTA];[FILE];\n"));
}

void tst_SongListWriter::signalsTellEachSong()
{
    MemoryFixture memory;
    prepare(memory);
    Index index;
    QStringList told;
    QObject::connect(&index, &Index::progressMaxSetup,
                     [&](int n) { told << QStringLiteral("max %1").arg(n); });
    QObject::connect(&index, &Index::currentPathChanged,
                     [&](const QString &path) { told << path; });
    QObject::connect(&index, &Index::progressValueChanged,
                     [&](int n) { told << QString::number(n); });
    QCOMPARE(index.writeSongList(memory.root(), memory.path(QStringLiteral("/l.csv")), 0), 1);
    QCOMPARE(told.join(QLatin1Char(' ')), QStringLiteral("max 3 /Pop/b.mid 1 /a.mid 2 /c.mid 3"));
}

void tst_SongListWriter::aMemoryThatIsNotPrepared_data()
{
    QTest::addColumn<QString>("missing");
    for (const char *name : {"index.id3", "ordfile.id3", "title.id3", "artist.id3", "atitle.id3",
                             "aartist.id3", "fsinfos.id3"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_SongListWriter::aMemoryThatIsNotPrepared()
{
    QFETCH(QString, missing);
    MemoryFixture memory;
    prepare(memory);
    QVERIFY(QFile::remove(memory.path(QLatin1Char('/') + missing)));
    Index index;
    QCOMPARE(index.writeSongList(memory.root(), memory.path(QStringLiteral("/l.csv")), 0), -1);
    QCOMPARE(index.outcome().path, memory.path(QLatin1Char('/') + missing));
    QVERIFY(!QFile::exists(memory.path(QStringLiteral("/l.csv"))));
}

void tst_SongListWriter::targetsThatCannotBeWritten_data()
{
    QTest::addColumn<QString>("below");
    QTest::addColumn<QString>("cause");
    const auto row = [](const char *what, const char *below, const char *cause) {
        QTest::newRow(what) << QString::fromLatin1(below) << QString::fromLatin1(cause);
    };
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

void tst_SongListWriter::targetsThatCannotBeWritten()
{
    QFETCH(QString, below);
    MemoryFixture memory;
    prepare(memory);
    QVERIFY(QFile::copy(memory.path(QStringLiteral("/a.mid")),
                        memory.path(QStringLiteral("/midi.csv"))));
    QVERIFY(QFile::link(memory.path(QStringLiteral("/a.mid")),
                        memory.path(QStringLiteral("/link.csv"))));
    memory.put(QStringLiteral("/mp3.csv"), SongBytes::tag());
    memory.put(QStringLiteral("/catalogue.csv"), QByteArray("SQLite format 3", 16));
    const QString target = below.isEmpty() ? QString() : memory.path(below);
    const bool isThere = QFile::exists(target);
    const QByteArray old = SongBytes::read(target);
    Index index;
    QCOMPARE(index.writeSongList(memory.root(), target, 0), 0);
    QTEST(index.outcome().codeName(), "cause");
    QCOMPARE(index.outcome().path, target);
    QCOMPARE(QFile::exists(target), isThere);
    QCOMPARE(SongBytes::read(target), old);
}

void tst_SongListWriter::anIndexsNameElsewhereIsAnyOther()
{
    MemoryFixture memory;
    prepare(memory);
    const QString target = memory.path(QStringLiteral("/Pop/index.id3"));
    QCOMPARE(Index().writeSongList(memory.root(), target, 0), 1);
}

void tst_SongListWriter::aFullDeviceIsAFailure()
{
    MemoryFixture memory;
    prepare(memory);
    const QString target = memory.path(QStringLiteral("/l.csv"));
    memory.put(QStringLiteral("/l.csv"), "old list");
    const QStringList names = SongBytes::names(memory.root());
    for (const int step : {2, 3, 4}) { // its bytes, their flush, its name
        FailingDisk disk;
        disk.failAt = step;
        disk.cause = Outcome::Code::NoRoom;
        Index index(nullptr, disk);
        QCOMPARE(index.writeSongList(memory.root(), target, 0), 0);
        QCOMPARE(index.outcome().codeName(), QStringLiteral("no-room"));
    }
    QCOMPARE(memory.read("l.csv"), QByteArray("old list"));
    QCOMPARE(SongBytes::names(memory.root()), names);

    const QVector<IndexEntry> entries{song("A", "B", "", "/c")};
    for (const int room : {0, 10, 21, 28}) {
        FullBuffer device(room);
        QVERIFY(device.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        QVERIFY2(!SongListWriter::write(device, entries, SongListWriter::Encoding::Utf8),
                 qPrintable(QString::number(room)));
    }
}

QTEST_GUILESS_MAIN(tst_SongListWriter)
#include "tst_songlistwriter.moc"
