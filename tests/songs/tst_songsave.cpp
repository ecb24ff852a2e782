#include "tests/songs/songfixture.h"

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

/** What is on disk after a save, and which images are not saved. */
class tst_SongSave : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void aLetterBeyondAsciiIsNotStoredInAHeader_data()
    {
        const Table<QString, QString, QString, QString> row;
        row("mf3: in a title", "mf3", "title", "Perch\xE9 \xE0"_s, "\xE9"_s);
        row("mf4: in an author", "mf4", "author", "\xC8"_s, "\xC8"_s);
        row("mf5: in an artist", "mf5", "artist", "\xC8"_s, "\xC8"_s);
        row("mf3: in a genre, one of two units", "mf3", "genre", "a\U0001F3B5b", "\U0001F3B5");
        row("mf3: a letter that is cut off is stored as nothing", "mf3", "title",
            QString(32, QLatin1Char('x')) + "\xE9"_s, {});
    }
    void aLetterBeyondAsciiIsNotStoredInAHeader()
    {
        const auto [suffix, field, text, letter] = cells<QString, QString, QString, QString>();
        const QByteArray old = songOf(suffix);
        const QString file = write(path("a."_s + suffix), old);
        FailingDisk disk;
        MetaSong song = imported(file, disk);
        QVERIFY(song.whyNotSavable());
        SongInfo info;
        (field == "title"_s        ? info.title
             : field == "author"_s ? info.author
             : field == "artist"_s ? info.artist
                                   : info.genre) = text;
        song.setSongInfo(info, edit);
        const LogCapture capture;
        const Outcome outcome = song.saveToFile(file);
        QCOMPARE(static_cast<bool>(song.whyNotSavable()), letter.isNull());
        if (letter.isNull()) {
            QVERIFY(outcome);
            return;
        }
        QCOMPARE(outcome.codeName(), "letter-not-storable"_s);
        QCOMPARE(outcome.field, field);
        QCOMPARE(outcome.detail, letter);
        QCOMPARE(capture.lines(), QStringList(QString::fromLatin1(unknownFormat)));
        QCOMPARE(disk.operations, QStringList());
        QCOMPARE(read(file), old);
    }

    void aSongThatWasNotLoadedIsNotSaved()
    {
        const QString file = write(path("a.mid"), "somebody's");
        MetaSong song;
        QVERIFY(!song.importFile(file));
        const LogCapture capture;
        QCOMPARE(song.saveToFile(file).codeName(), "not-a-song"_s);
        QCOMPARE(capture.lines(), QStringList(QString::fromLatin1(unknownFormat)));
        QCOMPARE(read(file), QByteArray("somebody's"));
    }

    void theLargestStreamIsSaved_data()
    {
        const Table<int, int, bool> row;
        // midiSize: after the edit, without the filler of an MF4 song
        row("an MF3 stream of 500,000 bytes", 3, 500'000, true);
        row("an MF3 stream of 500,001 bytes is not saved", 3, 500'001, false);
        row("an MF4 stream of 499,997 bytes and its filler", 4, 499'997, true);
        row("an MF4 stream of 499,998 bytes and its filler is not saved", 4, 499'998, false);
    }
    void theLargestStreamIsSaved()
    {
        const auto [version, midiSize, isSavable] = cells<int, int, bool>();
        constexpr int markerSize = 8; // of one with a label of one letter
        const int bodySize = static_cast<int>(midiSize - midi1().size() - markerSize - 4 - 4);
        const QByteArray song =
            midi1(hex("00 FF 01 00") + QByteArray(bodySize, 'x') + hex("00 FF 01 00"));
        const QByteArray old = mfx(version, {}, version == 4 ? withFiller(song) : song);
        const QString file = write(path("a.mf"), old);
        MetaSong object = imported(file);
        QCOMPARE(object.addMarker("A"_s, 1), markerSize);
        const Outcome outcome = object.saveToFile(file);
        QCOMPARE(outcome.codeName(), isSavable ? QString() : "too-large"_s);
        QCOMPARE(outcome.detail.contains("500"_s), !isSavable);
        if (isSavable)
            QCOMPARE(imported(file).midiData().size(), midiSize);
        else
            QCOMPARE(read(file), old);
    }

    void anMp3TagThatCouldNotBeReadAgainIsNotSaved()
    {
        const QString file = write(path("a.mp3"), tag());
        MetaSong edited = imported(file);
        setTitle(edited, "x"_s);
        QVERIFY(edited.saveToFile(file));
        const QByteArray frames = read(file).mid(10);
        write(file, tag(frames + QByteArray(999'999 - frames.size(), '\0')) + audio());

        MetaSong song = imported(file);
        setTitle(song, "xx"_s);
        QVERIFY(song.saveToFile(file)); // 1,000,000 bytes
        const QByteArray old = read(file);
        setTitle(song, "xxx"_s);
        const LogCapture capture;
        const Outcome outcome = song.saveToFile(file);
        QCOMPARE(outcome.codeName(), "text-too-long"_s);
        QCOMPARE(outcome.field, "title"_s);
        QCOMPARE(outcome.detail, "il tag avrebbe 1000001 byte, ne sono ammessi 1000000"_s);
        QCOMPARE(capture.lines(), QStringList(QString::fromLatin1(unknownFormat)));
        QCOMPARE(read(file), old);
        QCOMPARE(names(), words("a.mp3"));
    }

    void mfxSizesFollowTheStream_data() { addSuffixRows("mf3 mf4 mf5"); }
    void mfxSizesFollowTheStream()
    {
        QFETCH(QString, suffix);
        const QByteArray old = songOf(suffix);
        const QString file = write(path("a"), old);
        MetaSong song = imported(file);
        setTitle(song, "Ciao"_s);
        QCOMPARE(song.addMarker("Intro"_s, 1), 12);
        const LogCapture capture;
        QVERIFY(song.saveToFile(file));
        QVERIFY(LogCapture::has("[MetaSong::saveToFile] MFx"_s));

        const QByteArray saved = read(file);
        const int streamSize =
            static_cast<int>(song.midiData().size() + (suffix == "mf4"_s ? 3 : 0));
        QCOMPARE(expanded(saved).size(), streamSize);
        // Nothing else in the header has changed.
        QByteArray header = old.left(suffix == "mf5"_s ? 1024 : 512);
        header.replace(4, 4, littleEndian(static_cast<quint32>(saved.size()), 4));
        header.replace(12, 4, littleEndian(static_cast<quint32>(streamSize), 4));
        header.replace(122, 32, QByteArray("Ciao").leftJustified(32, '\0'));
        QCOMPARE(saved.left(header.size()), header);
    }

    void mf4FillerIsPutBack()
    {
        const QByteArray song = midi1(meta(3, "Song"));
        const QString file = write(path("a.mf4"), mfx(4, {}, withFiller(song, "abc")));
        QVERIFY(imported(file).saveToFile(file));
        QCOMPARE(expanded(read(file)), withFiller(song, hex("FF00FF")));
    }

    void whatStandsBehindTheLastChunkIsKept_data()
    {
        QTest::addColumn<QByteArray>("tail");
        QTest::newRow("a chunk of zeros, as one filled up a song that became shorter")
            << QByteArray("T4cu\0\0\0\5\0\0\0\0\0", 13);
        QTest::newRow("zeros") << QByteArray(13, '\0');
        QTest::newRow("somebody's chunk") << "XFIH" + bigEndian(3, 4) + "abc";
    }
    void whatStandsBehindTheLastChunkIsKept()
    {
        QFETCH(QByteArray, tail);
        const QString file = write(path("a.mid"), midi0(meta(3, "Old")) + tail);
        MetaSong song = imported(file);
        setTitle(song, "O"_s);
        QVERIFY(song.saveToFile(file));
        QCOMPARE(titleIn(file), "O"_s);
        QVERIFY(read(file).endsWith(midi0().right(4) + tail));
    }

    void savingUnchangedChangesNothing_data() { addSuffixRows(); }
    void savingUnchangedChangesNothing()
    {
        QFETCH(QString, suffix);
        const QString file = write(path("a."_s + suffix), songOf(suffix));
        const LogCapture capture;
        QVERIFY(imported(file).saveToFile(file));
        QCOMPARE(LogCapture::has("[MetaSong::saveToFile] MIDI"_s), suffix == "mid"_s);
        QCOMPARE(read(file), songOf(suffix));
        QCOMPARE(names().size(), 1);
    }
};

QTEST_GUILESS_MAIN(tst_SongSave)
#include "tst_songsave.moc"
