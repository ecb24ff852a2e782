#include "songs/metasong.h"

#include "tests/library/logcapture.h"
#include "tests/songs/mfxbytes.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace tarvel4;

Q_DECLARE_METATYPE(WrittenBy)

using namespace SongBytes;

/** The record of a song that was loaded, and what is logged of it. */
class tst_MetaSong : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void readInfo_data();
    void readInfo();
    void addMarker();
    void anMp3TakesNoMarker();
    void setSongInfoIsLogged_data();
    void setSongInfoIsLogged();
    void dump();
    void dumpOfASongWithoutMarkers();
    void anUnloadedSongTakesNothing();
    void formatName();
    void keyList();

private:
    QString path(const char *name) const { return m_folder->filePath(QLatin1String(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

/** Everything that a MIDI song can hold. */
QByteArray midiEvents()
{
    return meta(2, "(C) K-VARO") + meta(3, "Volare") + meta(0x59, hex("FD00")) + songInfo(1, "Pop")
        + songInfo(2, "Mina") + songInfo(3, "Conte") + songInfo(4, "215") + songInfo(5, "120")
        + marker(1, "Intro") + marker(5, "Chorus 1");
}

const MfxFields mfxFields = {"Azzurro", "Celentano", "Conte", "Italian", "AZZURRO.MF3", 98, 0x41};

} // namespace

void tst_MetaSong::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_MetaSong::readInfo_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("record");

    const QByteArray song = midi0(midiEvents());
    const QByteArray mp3Body = frame("TIT2", "Title") + frame("TPE1", "Artist")
        + frame("TCOM", "Author") + frame("TCON", "Genre") + frame("TKEY", "A-")
        + frame("TLEN", "215999") + frame("TBPM", "131") + frame("TCOP", "K-Varo");
    const auto row = [](const char *sentence, const char *name, const QByteArray &bytes,
                        const char *record) {
        QTest::newRow(sentence) << QString::fromLatin1(name) << bytes
                                << QString::fromLatin1(record);
    };
    row("a MIDI song has everything in its track", "a.mid", song,
        "MIDI|Volare|Mina||Pop|Conte|215|120|Eb|true|1:Intro,5:Chorus 1||0");
    row("a bare MIDI song has nothing", "a.mid", midi1(), "MIDI||||||0|0||false|||0");
    const char *mfxRecord = "|Azzurro|Celentano||Italian|Conte|215|98|Eb|true|1:Intro,5:Chorus 1|"
                            "AZZURRO.MF3|65";
    row("an MF3 song has key, length and markers in its stream, the rest in its header", "a.mf3",
        mfx(3, mfxFields, song), QByteArray("MF3").append(mfxRecord).constData());
    row("so has an MF4 song", "a.mf4", mfx(4, mfxFields, withFiller(song)),
        QByteArray("MF4").append(mfxRecord).constData());
    row("so has an MF5 song", "a.mf5", mfx(5, mfxFields, song),
        QByteArray("MF5").append(mfxRecord).constData());
    row("every MFx song is published by the maker", "a.mf3", mfx(3, {}, midi0()),
        "MF3||||||0|0||true|||0");
    row("an MP3 song has everything in its tag, and no markers", "a.mp3", tag(mp3Body) + audio(),
        "MP3|Title|Artist||Genre|Author|215|131|A-|true|||0");
    row("an MP3 song without a tag has nothing", "a.mp3", audio(), "MP3||||||0|0||false|||0");
    row("VELTRANO publishes MIDI songs", "a.mid", midi0(meta(2, "Veltrano")),
        "MIDI||||||0|0||true|||0");
    row("but no MP3 songs", "a.mp3", tag(frame("TCOP", "Veltrano")), "MP3||||||0|0||false|||0");
}

void tst_MetaSong::readInfo()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, record);

    MetaSong song;
    QVERIFY(song.importFile(write(m_folder->filePath(name), bytes)));
    // What was there before is cleared.
    SongInfo info;
    info.title = info.altArtist = info.key = info.filename = info.shortname = latin1("old");
    info.mfxLongName = latin1("old");
    info.mfxFlags = 7;
    info.markers = {{1, latin1("old")}};
    info.length = info.bpm = 7;
    info.isPublisher = true;
    song.readInfo(info);

    QStringList markers;
    for (const Marker &marker : qAsConst(info.markers))
        markers.append(QString::number(marker.bar) + QLatin1Char(':') + marker.text);
    const QStringList fields = {info.format,
                                info.title,
                                info.artist,
                                info.altArtist,
                                info.genre,
                                info.author,
                                QString::number(info.length),
                                QString::number(info.bpm),
                                info.key,
                                info.isPublisher ? latin1("true") : latin1("false"),
                                markers.join(QLatin1Char(',')),
                                info.mfxLongName,
                                QString::number(info.mfxFlags)};
    QCOMPARE(fields.join(QLatin1Char('|')), record);
    QCOMPARE(info.filename, QString());
    QCOMPARE(info.shortname, QString());
}

void tst_MetaSong::addMarker()
{
    MetaSong song;
    QVERIFY(song.importFile(write(path("a.mf4"), mfx(4, {}, withFiller(midi0(marker(5, "B")))))));
    {
        const LogCapture capture;
        QCOMPARE(song.addMarker(latin1("Intro"), 1), 12);
        QCOMPARE(capture.lines(),
                 QStringList({latin1("[MetaSong] addMarker"), latin1("Marker added, len=  12"),
                              latin1("-----------------------------------")}));
    }
    QCOMPARE(song.midiData(), midi0(marker(1, "Intro") + marker(5, "B")));
    SongInfo info;
    song.readInfo(info);
    QCOMPARE(info.markers, QVector<Marker>({{1, latin1("Intro")}, {5, latin1("B")}}));
    QCOMPARE(info.mfxFlags, quint8(0));
}

void tst_MetaSong::anMp3TakesNoMarker()
{
    MetaSong song;
    QVERIFY(song.importFile(write(path("a.mp3"), tag() + audio())));
    QCOMPARE(song.addMarker(latin1("Intro"), 1), 0);
    QCOMPARE(song.midiData(), QByteArray());
}

void tst_MetaSong::setSongInfoIsLogged_data()
{
    QTest::addColumn<WrittenBy>("writtenBy");
    QTest::newRow("an edit") << WrittenBy::User;
    QTest::newRow("an update") << WrittenBy::Catalogue;
}

void tst_MetaSong::setSongInfoIsLogged()
{
    QFETCH(WrittenBy, writtenBy);

    MetaSong song;
    QVERIFY(song.importFile(write(path("a.mid"), midi0())));
    SongInfo info;
    info.title = latin1("Logged");
    const LogCapture capture;
    song.setSongInfo(info, writtenBy);
    QCOMPARE(capture.lines().first(), latin1("[MetaSong] setSongInfo,"));
    QVERIFY(capture.lines().contains(latin1("Title      : \"Logged\"")));
    QCOMPARE(capture.lines().last(),
             latin1(writtenBy == WrittenBy::User ? "manual:  true" : "manual:  false"));
}

void tst_MetaSong::dump()
{
    MetaSong song;
    QVERIFY(song.importFile(write(path("a.mf3"), mfx(3, mfxFields, midi0(midiEvents())))));
    const LogCapture capture;
    song.dump();
    QCOMPARE(
        capture.lines(),
        QStringList({latin1("Dump Info song ----------------------------------------------"),
                     latin1("Format     : \"MF3\""),
                     latin1("Filename   : \"\""),
                     latin1("Shortname  : \"\""),
                     latin1("Is K-Varo  : true"),
                     latin1("Title      : \"Azzurro\""),
                     latin1("Artist     : \"Celentano\""),
                     latin1("AltArtist  : \"\""),
                     latin1("Genre      : \"Italian\""),
                     latin1("Author     : \"Conte\""),
                     latin1("Length     : 215"),
                     latin1("userBpm    : 98"),
                     latin1("Key        : \"Eb\""),
                     latin1("Markers:"),
                     latin1("  bar: 1"),
                     latin1("  text: \"Intro\""),
                     latin1("  bar: 5"),
                     latin1("  text: \"Chorus 1\""),
                     latin1("MfxLongName: \"AZZURRO.MF3\""),
                     latin1("MfxFlags   : \"0x41\""),
                     latin1("Dump END ----------------------------------------------------")}));
}

void tst_MetaSong::dumpOfASongWithoutMarkers()
{
    MetaSong song;
    QVERIFY(song.importFile(write(path("a.mid"), midi0())));
    const LogCapture capture;
    song.dump();
    QCOMPARE(
        capture.lines().mid(12),
        QStringList({latin1("Key        : \"\""), latin1("NO Markers"), latin1("MfxLongName: \"\""),
                     latin1("MfxFlags   : \"0x0\""),
                     latin1("Dump END ----------------------------------------------------")}));
}

void tst_MetaSong::anUnloadedSongTakesNothing()
{
    MetaSong song;
    SongInfo info;
    info.title = latin1("Title");
    song.setSongInfo(info, WrittenBy::User);
    song.readInfo(info);
    QCOMPARE(info.title, QString());
    QVERIFY(!song.whyNotSavable());
}

void tst_MetaSong::formatName()
{
    QStringList names;
    for (int code = -1; code <= 7; ++code)
        names.append(MetaSong::formatName(code));
    QCOMPARE(names.join(QLatin1Char(' ')),
             latin1("UNKNOWN UNKNOWN MIDI MIDI MF3 MF4 MF5 MP3 UNKNOWN"));
}

void tst_MetaSong::keyList()
{
    QCOMPARE(MetaSong::keyList().size(), 30);
    QCOMPARE(MetaSong::keyList().first(), latin1("C"));
    QCOMPARE(MetaSong::keyList().last(), latin1("D-"));
}

QTEST_GUILESS_MAIN(tst_MetaSong)
#include "tst_metasong.moc"
