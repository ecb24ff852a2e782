#include "songs/metasong.h"
#include "songs/mfx/lzhuff.h"
#include "tests/songs/songfixture.h"

#include <QtEndian>
#include <QtTest>

using namespace tarvel4;
using namespace SongBytes;

namespace {

using Columns = QMap<QString, QString>;

QString samplePath(const QString &name)
{
    return QStringLiteral(TARVEL4_SAMPLES "/") + name;
}

QStringList cellsOf(const QString &row)
{
    QStringList cells;
    for (const QString &cell : row.mid(1, row.size() - 2).split(QLatin1Char('|')))
        cells.append(cell.trimmed());
    return cells;
}

/** What the tables of samples/README.md say: file name to column to cell. */
QMap<QString, Columns> readTables()
{
    QMap<QString, Columns> files;
    QStringList header;
    const QString text = QString::fromUtf8(read(samplePath("README.md"_s)));
    for (const QString &line : text.split(u'\n')) {
        if (!line.startsWith(QLatin1Char('|')) || line.startsWith("|-"_s)) {
            if (line.isEmpty())
                header.clear();
            continue;
        }
        const QStringList cells = cellsOf(line);
        if (header.isEmpty()) {
            header = cells;
            continue;
        }
        for (int i = 1; i < std::min(header.size(), cells.size()); ++i)
            files[cells.first()].insert(header[i], cells[i]);
    }
    return files;
}

/** A number as the tables show it: nothing when there is none. */
QString shown(int number)
{
    return number == 0 ? QString() : QString::number(number);
}

QString shown(const QVector<Marker> &markers)
{
    QStringList texts;
    for (const Marker &marker : markers)
        texts.append(marker.text);
    return texts.join(", "_s);
}

Columns columnsOf(const SongInfo &info)
{
    const auto name = [](const char *column) { return QString::fromLatin1(column); };
    Columns columns = {{name("Format"), info.format},
                       {name("Title"), info.title},
                       {name("Artist"), info.artist},
                       {name("Author"), info.author},
                       {name("Genre"), info.genre},
                       {name("Length"), shown(info.length)},
                       {name("Bpm"), shown(info.bpm)},
                       {name("Key"), info.key},
                       {name("Markers"), shown(info.markers)},
                       {name("Published"), name(info.isPublisher ? "yes" : "no")}};
    if (info.format.startsWith("MF"_s)) {
        columns.insert(name("Long name"), info.mfxLongName);
        columns.insert(name("Flags"), QString::number(info.mfxFlags));
    }
    return columns;
}

} // namespace

class tst_Samples : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theReadmeNamesEverySong()
    {
        const QStringList suffixes = {"*.mid"_s, "*.kar"_s, "*.mf?"_s, "*.mp3"_s};
        const QStringList songs = QDir(samplePath(QString())).entryList(suffixes, QDir::Files);
        QCOMPARE(songs.size(), 7);
        QCOMPARE(QStringList(readTables().keys()), songs);
    }

    void isWhatTheReadmeSays_data()
    {
        const Table<Columns> row;
        const QMap<QString, Columns> files = readTables();
        for (auto file = files.cbegin(); file != files.cend(); ++file)
            row(qPrintable(file.key()), file.value());
    }
    void isWhatTheReadmeSays()
    {
        const auto [told] = cells<Columns>();
        const QString file = samplePath(QString::fromLatin1(QTest::currentDataTag()));
        QCOMPARE(columnsOf(SongFixture::recordOf(SongFixture::imported(file))), told);
    }

    void isWrittenBackAsItIs_data()
    {
        const Table<QString> row;
        for (const char *name : {"SANTALUC.mid", "FUNICULI.mid", "BELLACIA.kar", "FRAMARTI.mf3",
                                 "DONNAMOB.mf4", "GREENSLV.mf5", "AULDLANG.mp3"})
            row(name, QString::fromLatin1(name));
    }
    void isWrittenBackAsItIs()
    {
        const auto [name] = cells<QString>();
        const QByteArray bytes = read(samplePath(name));
        QTemporaryDir folder;
        const QString copy = write(folder.filePath(name), bytes);
        QVERIFY(SongFixture::imported(copy).saveToFile(copy));
        QVERIFY(read(copy) == bytes);
    }

    void midiTracksFillTheFile_data()
    {
        const Table<int, int> row;
        row("SANTALUC.mid", 0, 1);
        row("FUNICULI.mid", 1, 6);
        row("BELLACIA.kar", 1, 6);
    }
    void midiTracksFillTheFile()
    {
        const auto [format, tracks] = cells<int, int>();
        const QByteArray midi = read(samplePath(QString::fromLatin1(QTest::currentDataTag())));
        QVERIFY(midi.startsWith("MThd"));
        QCOMPARE(static_cast<int>(qFromBigEndian<quint16>(midi.constData() + 8)), format);
        QCOMPARE(static_cast<int>(qFromBigEndian<quint16>(midi.constData() + 10)), tracks);
        int position = 14;
        for (int track = 0; track < tracks; ++track) {
            QCOMPARE(midi.mid(position, 4), QByteArray("MTrk"));
            position += 8 + qFromBigEndian<qint32>(midi.constData() + position + 4);
            QCOMPARE(midi.mid(position - 3, 3).toHex(), QByteArray("ff2f00"));
        }
        QCOMPARE(position, midi.size());
    }

    void mfxSizesAreTrue_data()
    {
        const Table<int> row;
        row("FRAMARTI.mf3", 512);
        row("DONNAMOB.mf4", 512);
        row("GREENSLV.mf5", 1024);
    }
    void mfxSizesAreTrue()
    {
        const auto [headerSize] = cells<int>();
        const QByteArray song = read(samplePath(QString::fromLatin1(QTest::currentDataTag())));
        QCOMPARE(qFromLittleEndian<qint32>(song.constData() + 4), song.size());
        QByteArray midi;
        LzHuff codec;
        QVERIFY(codec.expand(song.mid(headerSize), midi));
        QCOMPARE(qFromLittleEndian<qint32>(song.constData() + 12), midi.size());
        const int track = static_cast<int>(midi.indexOf("MTrk"));
        QVERIFY(track > 0);
        QCOMPARE(midi.mid(track + 8, 3).toHex() == "ff00ff", song.startsWith("_MF4"));
    }

    void theKaraokeFileHasWords()
    {
        const QByteArray song = read(samplePath("BELLACIA.kar"_s));
        for (const char *lyric : {"\xFF\x05\x02/U", "\xFF\x05\x03mat",
                                  "\xFF\x05\x06"
                                  "ciao, "})
            QVERIFY2(song.contains(lyric), lyric);
    }

    void theGraphicsAreWholePackets()
    {
        constexpr int packetSize = 24;
        const QByteArray graphics = read(samplePath("AULDLANG.cdg"_s));
        QCOMPARE(graphics.size() % packetSize, 0);
        int tiles = 0;
        for (int packet = 0; packet < graphics.size(); packet += packetSize) {
            const char command = graphics.at(packet);
            const char instruction = graphics.at(packet + 1);
            QVERIFY(command == 0 || command == 9);
            if (command == 0 || instruction != 6)
                continue;
            ++tiles;
            QVERIFY(graphics.at(packet + 6) < 18);
            QVERIFY(graphics.at(packet + 7) < 50);
        }
        QVERIFY2(tiles > 300, QByteArray::number(tiles));
        // 300 packets a second, and 8000 bytes a second of sound
        const double seconds =
            static_cast<double>(graphics.size()) / static_cast<double>(packetSize) / 300;
        const double sound =
            static_cast<double>(read(samplePath("AULDLANG.mp3"_s)).size()) / 8000.0;
        QVERIFY2(qAbs(seconds - sound) < 1.0, QByteArray::number(sound));
    }
};

QTEST_GUILESS_MAIN(tst_Samples)
#include "tst_samples.moc"
