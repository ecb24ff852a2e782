#include "player/miditimeline.h"

#include "tests/songs/songbytes.h"
#include "tests/storage/table.h"

using namespace tarvel4;
using namespace SongBytes;

namespace {

/** A Set Tempo event of so many microseconds a quarter note. */
QByteArray tempo(quint32 microseconds)
{
    return meta(0x51, bigEndian(microseconds, 3));
}

/** Lets a whole 4/4 bar (of 96 ticks a quarter) pass, by a text. */
QByteArray bar()
{
    return hex("83 00 FF 01 00");
}

QByteArray threeFour()
{
    return meta(0x58, hex("03 02 18 08"));
}

} // namespace

/** Bars and seconds of a MIDI file. */
class tst_MidiTimeline : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bars_data()
    {
        const Table<QByteArray, int, int, int> row; // the song, a bar, its tick, its time
        row("bar 1 is the start", midi0(), 1, 0, 0);
        row("bar 0 is the start too", midi0(), 0, 0, 0);
        row("4/4 at 120 where nothing is said", midi0(), 3, 768, 4000);
        row("a tempo", midi0(tempo(1000000)), 3, 768, 8000);
        row("a tempo that comes later", midi0(bar() + tempo(1000000)), 3, 768, 6000);
        row("a tempo of another track", midi(1, {track(endOfTrack()), track(tempo(250000))}), 2,
            384, 1000);
        row("three beats a bar", midi0(threeFour()), 3, 576, 3000);
        row("three beats a bar from bar 2 on", midi0(bar() + threeFour()), 4, 960, 5000);
        row("a signature within a bar begins the next one",
            midi0(bar() + hex("30 FF 01 00") + threeFour()), 3, 432, 2250);
        row("a tempo of nothing is no endless song", midi0(tempo(0)), 2, 384, 0);
        row("24 frames of 4 ticks a second", midi0().replace(12, 2, hex("E804")), 1, 0, 0);
    }
    void bars()
    {
        const auto [song, number, tick, ms] = cells<QByteArray, int, int, int>();
        const MidiTimeline timeline(song);
        QCOMPARE(timeline.tickOfBar(number), qint64{tick});
        QCOMPARE(timeline.msOfTick(tick), qint64{ms});
        if (ms > 0)
            QCOMPARE(timeline.tickOfMs(ms), qint64{tick});
    }

    void framesAreSeconds()
    {
        const MidiTimeline timeline(midi0(tempo(1000000)).replace(12, 2, hex("E804")));
        QCOMPARE(timeline.msOfTick(96), qint64{1000});
        QCOMPARE(timeline.tickOfMs(2000), qint64{192});
    }

    void lengths_data()
    {
        const Table<QByteArray, int> row;
        const QByteArray program = hex("00 C0 10");
        row("a note", midi0(), 96);
        row("the longest track counts",
            midi(1, {track(note() + note() + endOfTrack()), track(endOfTrack())}), 192);
        row("a status that goes on", midi(0, {track(hex("00 90 3C 40 60 3C 00") + endOfTrack())}),
            96);
        row("a program, with one byte of data", midi0(program), 96);
        row("a system message", midi0(hex("00 F0 03 7E 09 F7")), 96);
        row("nothing counts behind a track's end", midi(0, {track(note() + endOfTrack() + note())}),
            96);
        row("a track that is cut short", midi0().left(14 + 8 + 5), 96);
        row("no bytes", QByteArray(), 0);
        row("no event where one belongs", midi(0, {track(hex("00 F4 60 60 60"))}), 0);
        row("a data byte with no status ahead", midi(0, {track(hex("05 3C 40 60 60"))}), 5);
        row("a payload larger than the track", midi(0, {track(hex("07 FF 01 FF FF FF 7F"))}), 7);
        row("a track larger than the file", midi0().replace(18, 4, hex("7FFFFFFF")), 96);
        row("a header larger than the file", midi0().replace(4, 4, hex("FFFFFFFF")), 0);
    }
    void lengths()
    {
        const auto [song, ticks] = cells<QByteArray, int>();
        QCOMPARE(MidiTimeline(song).lastTick(), qint64{ticks});
    }

    void noDamageLeadsOutOfTheBytes()
    {
        const QByteArray song = midi1(tempo(400000) + threeFour() + bar() + marker(2, "Refrain"));
        for (int at = 0; at < song.size(); ++at) {
            for (const char byte : {'\0', '\x7F', '\x80', '\xFF'}) {
                const MidiTimeline timeline(QByteArray(song).replace(at, 1, &byte, 1));
                QVERIFY(timeline.tickOfBar(65535) >= 0);
                QVERIFY(timeline.msOfTick(timeline.lastTick()) >= 0);
                QVERIFY(timeline.tickOfMs(100000) >= 0);
            }
            QVERIFY(MidiTimeline(song.left(at)).lastTick() >= 0);
        }
    }
};

QTEST_APPLESS_MAIN(tst_MidiTimeline)
#include "tst_miditimeline.moc"
