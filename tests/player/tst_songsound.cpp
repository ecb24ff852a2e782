#include "player/songsound.h"

#include "tests/library/texts.h"
#include "tests/songs/songfixture.h"

using namespace tarvel4;
using namespace SongBytes;

/** What is read of a song that is to be heard. */
class tst_SongSound : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void midiPart_data()
    {
        const Table<QString, QString> row; // the suffix, the title
        row("MIDI", "mid", "Inside");
        row("MF3", "mf3", "Header");
        row("MF4: without its filler", "mf4", "Header");
        row("MF5", "mf5", "Header");
    }
    void midiPart()
    {
        const auto [suffix, title] = cells<QString, QString>();
        const QByteArray midi =
            midi0(meta(3, "Inside") + marker(5, "Refrain") + marker(1, "Intro"));
        const QString file =
            write(path(text("song.") + suffix),
                  SongFixture::fileOf(suffix, midi, {"Header", "", "", "", "", 0, 0}));
        SongSound sound;
        QVERIFY(SongSound::read(file, sound));
        QVERIFY(sound.kind == SongSound::Kind::Midi);
        QCOMPARE(sound.path, file);
        QCOMPARE(sound.title, title);
        QCOMPARE(sound.midi, midi);
        QCOMPARE(sound.lengthMs, qint64{500});
        QCOMPARE(sound.marks.size(), 2);
        QCOMPARE(sound.marks.at(0).text, text("Intro"));
        QCOMPARE(sound.marks.at(1).text, text("Refrain"));
        QCOMPARE(sound.marks.at(1).ms, qint64{8000});
    }

    void mp3IsLeftToItsPlayer()
    {
        const QString file = write(
            path("song.mp3"), tag(frame("TIT2", "Volare") + frame("TLEN", "125000")) + audio());
        SongSound sound;
        QVERIFY(SongSound::read(file, sound));
        QVERIFY(sound.kind == SongSound::Kind::Mp3);
        QCOMPARE(sound.title, text("Volare"));
        QCOMPARE(sound.midi, QByteArray());
        QVERIFY(sound.marks.isEmpty());
    }

    void fileNameStandsForAMissingTitle()
    {
        SongSound sound;
        QVERIFY(SongSound::read(write(path("K0012A.mid"), midi0()), sound));
        QCOMPARE(sound.title, text("K0012A.mid"));
    }

    void whatIsNoSongIsTold()
    {
        SongSound sound;
        QVERIFY(SongSound::read(path("none.mid"), sound) == Outcome::Code::NotFound);
        QVERIFY(SongSound::read(write(path("a.mid"), "text"), sound) == Outcome::Code::NotASong);
        QVERIFY(SongSound::read(write(path("b.mf3"), mfxHeader(3)), sound)
                == Outcome::Code::DamagedSong);
    }

    void whatNoSynthesiserHasRoomForIsTold()
    {
        const QString file = write(path("a.mid"), midi0(meta(1, QByteArray(17 << 20, 'x'))));
        SongSound sound;
        QVERIFY(SongSound::read(file, sound) == Outcome::Code::TooLarge);
    }

    void kindsOfTheTable()
    {
        QVERIFY(SongSound::kindOf(text("MP3")) == SongSound::Kind::Mp3);
        for (const char *name : {"MIDI", "MF3", "MF4", "MF5"})
            QVERIFY(SongSound::kindOf(text(name)) == SongSound::Kind::Midi);
    }

    void markAtATime()
    {
        SongSound sound;
        QCOMPARE(sound.markAt(0), -1);
        sound.marks = {{1000, text("a")}, {2000, text("b")}};
        QCOMPARE(sound.markAt(999), -1);
        QCOMPARE(sound.markAt(1000), 0);
        QCOMPARE(sound.markAt(1999), 0);
        QCOMPARE(sound.markAt(60000), 1);
    }
};

QTEST_APPLESS_MAIN(tst_SongSound)
#include "tst_songsound.moc"
