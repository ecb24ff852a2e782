#include "tests/songs/songfixture.h"

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

namespace {

/** Everything that a MIDI song can hold. */
QByteArray midiEvents()
{
    return meta(2, "(C) K-VARO") + meta(3, "Volare") + meta(0x59, hex("FD00")) + songInfo(1, "Pop")
        + songInfo(2, "Mina") + songInfo(3, "Conte") + songInfo(4, "215") + songInfo(5, "120")
        + marker(1, "Intro") + marker(5, "Chorus 1");
}

const MfxFields mfxFields = {"Azzurro", "Celentano", "Conte", "Italian", "AZZURRO.MF3", 98, 0x41};

} // namespace

/** The record of a song that was loaded, and what is logged of it. */
class tst_MetaSong : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void readInfo_data()
    {
        const Table<QString, QByteArray, QString> row;
        const QByteArray song = midi0(midiEvents());
        const QByteArray mp3Body = frame("TIT2", "Title") + frame("TPE1", "Artist")
            + frame("TCOM", "Author") + frame("TCON", "Genre") + frame("TKEY", "A-")
            + frame("TLEN", "215999") + frame("TBPM", "131") + frame("TCOP", "K-Varo");
        row("a MIDI song has everything in its track", "a.mid", song,
            "MIDI|Volare|Mina||Pop|Conte|215|120|Eb|1|1:Intro,5:Chorus 1||0");
        row("a bare MIDI song has nothing", "a.mid", midi1(), "MIDI||||||0|0||0|||0");
        row("an MF3 song has key, length and markers in its stream, the rest in its header",
            "a.mf3", mfx(3, mfxFields, song),
            "MF3|Azzurro|Celentano||Italian|Conte|215|98|Eb|1|1:Intro,5:Chorus 1|AZZURRO.MF3|65");
        row("so has an MF4 song", "a.mf4", mfx(4, mfxFields, withFiller(song)),
            "MF4|Azzurro|Celentano||Italian|Conte|215|98|Eb|1|1:Intro,5:Chorus 1|AZZURRO.MF3|65");
        row("so has an MF5 song", "a.mf5", mfx(5, mfxFields, song),
            "MF5|Azzurro|Celentano||Italian|Conte|215|98|Eb|1|1:Intro,5:Chorus 1|AZZURRO.MF3|65");
        row("every MFx song is published by the maker", "a.mf3", mfx(3, {}, midi0()),
            "MF3||||||0|0||1|||0");
        row("an MP3 song has everything in its tag, and no markers", "a.mp3",
            tag(mp3Body) + audio(), "MP3|Title|Artist||Genre|Author|215|131|A-|1|||0");
        row("an MP3 song without a tag has nothing", "a.mp3", audio(), "MP3||||||0|0||0|||0");
    }
    void readInfo()
    {
        const auto [name, bytes, record] = cells<QString, QByteArray, QString>();
        // What was there before is cleared.
        SongInfo info;
        for (QString *text : {&info.title, &info.artist, &info.altArtist, &info.genre, &info.author,
                              &info.key, &info.filename, &info.shortname, &info.mfxLongName})
            *text = "old"_s;
        info.mfxFlags = 7;
        info.markers = {{1, "old"_s}};
        info.length = info.bpm = 7;
        info.isPublisher = true;
        imported(write(path(name), bytes)).readInfo(info);

        QCOMPARE(textOf(info), record);
        QCOMPARE(info.filename + info.shortname, QString());
    }

    void addMarker()
    {
        const QString file = write(path("a.mf4"), mfx(4, {}, withFiller(midi0(marker(5, "B")))));
        MetaSong song = imported(file);
        const LogCapture capture;
        QCOMPARE(song.addMarker("Intro"_s, 1), 12);
        QCOMPARE(capture.lines(),
                 QStringList({"[MetaSong] addMarker"_s, "Marker added, len=  12"_s,
                              "-----------------------------------"_s}));
        QCOMPARE(song.midiData(), midi0(marker(1, "Intro") + marker(5, "B")));
        QCOMPARE(recordOf(song).mfxFlags, static_cast<quint8>(0));
    }

    void anMp3TakesNoMarker()
    {
        MetaSong song = imported(write(path("a.mp3"), tag() + audio()));
        QCOMPARE(song.addMarker("Intro"_s, 1), 0);
        QCOMPARE(song.midiData(), QByteArray());
    }

    void setSongInfoIsLogged()
    {
        MetaSong song = imported(write(path("a.mid"), midi0()));
        SongInfo info;
        info.title = "Logged"_s;
        const LogCapture capture;
        song.setSongInfo(info, edit);
        QCOMPARE(capture.lines().first(), "[MetaSong] setSongInfo,"_s);
        QVERIFY(LogCapture::has("Title      : \"Logged\""_s));
        QCOMPARE(capture.lines().last(), "manual:  true"_s);
        song.setSongInfo(info, update);
        QCOMPARE(capture.lines().last(), "manual:  false"_s);
    }

    void dump()
    {
        const QStringList expected = {
            "Dump Info song ----------------------------------------------"_s,
            "Format     : \"MF3\""_s,
            "Filename   : \"\""_s,
            "Shortname  : \"\""_s,
            "Is K-Varo  : true"_s,
            "Title      : \"Azzurro\""_s,
            "Artist     : \"Celentano\""_s,
            "AltArtist  : \"\""_s,
            "Genre      : \"Italian\""_s,
            "Author     : \"Conte\""_s,
            "Length     : 215"_s,
            "userBpm    : 98"_s,
            "Key        : \"Eb\""_s,
            "Markers:"_s,
            "  bar: 1"_s,
            "  text: \"Intro\""_s,
            "  bar: 5"_s,
            "  text: \"Chorus 1\""_s,
            "MfxLongName: \"AZZURRO.MF3\""_s,
            "MfxFlags   : \"0x41\""_s,
            "Dump END ----------------------------------------------------"_s};
        const LogCapture capture;
        imported(write(path("a.mf3"), mfx(3, mfxFields, midi0(midiEvents())))).dump();
        QCOMPARE(capture.lines().mid(capture.lines().size() - expected.size()), expected);
        imported(write(path("a.mid"), midi0())).dump();
        QVERIFY(LogCapture::has("NO Markers"_s) && LogCapture::has("Is K-Varo  : false"_s));
    }

    void anUnloadedSongTakesNothing()
    {
        MetaSong song;
        SongInfo info;
        info.title = "Title"_s;
        song.setSongInfo(info, edit);
        QCOMPARE(recordOf(song).title, QString());
        QCOMPARE(song.whyNotSavable().codeName(), "not-a-song"_s);
    }

    void formatName()
    {
        QStringList names;
        for (int code = -1; code <= 7; ++code)
            names.append(MetaSong::formatName(code));
        QCOMPARE(names, words("UNKNOWN UNKNOWN MIDI MIDI MF3 MF4 MF5 MP3 UNKNOWN"));
    }

    void keyList() { QCOMPARE(MetaSong::keyList().size(), 30); }

    void whatIsSetAsideIsReadByTheNameOfItsSong_data()
    {
        const Table<QString, QByteArray, bool> row;
        const QByteArray mp3 = tag(frame("TIT2", "x"));
        row("an MP3", "a.mp3", mp3, true);
        row("an MP3 set aside", "a.MP3.tarvel4.bak", mp3, true);
        row("an MP3 under no song's name", "a.bak", mp3, false);
        row("a MIDI song set aside", "a.mid.tarvel4.bak", midi0(), true);
        row("no song", "a.mid.tarvel4.bak", QByteArray(100, '\0'), false);
    }
    void whatIsSetAsideIsReadByTheNameOfItsSong()
    {
        const auto [name, bytes, isSong] = cells<QString, QByteArray, bool>();
        QCOMPARE(MetaSong::isSong(write(path(name), bytes)), isSong);
    }
};

QTEST_GUILESS_MAIN(tst_MetaSong)
#include "tst_metasong.moc"
