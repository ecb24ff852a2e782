#include "player/fluidplayer.h"
#include "player/songsound.h"

#include "tests/library/texts.h"
#include "tests/songs/songfixture.h"

#include <cmath>
#include <vector>

#if __has_include(<fluidsynth.h>)
#include <fluidsynth.h>
#endif

using namespace tarvel4;
using namespace SongBytes;

#if __has_include(<fluidsynth.h>)
// The functions are called as the library declares them.
#define SAME(member, name)                                                                         \
    static_assert(std::is_same_v<decltype(FluidLibrary::member), decltype(&::name)>)
SAME(newSettings, new_fluid_settings);
SAME(deleteSettings, delete_fluid_settings);
SAME(setText, fluid_settings_setstr);
SAME(setNumber, fluid_settings_setnum);
SAME(newSynth, new_fluid_synth);
SAME(deleteSynth, delete_fluid_synth);
SAME(loadSounds, fluid_synth_sfload);
SAME(write, fluid_synth_write_s16);
SAME(activeVoices, fluid_synth_get_active_voice_count);
SAME(newPlayer, new_fluid_player);
SAME(deletePlayer, delete_fluid_player);
SAME(addBytes, fluid_player_add_mem);
SAME(play, fluid_player_play);
SAME(stop, fluid_player_stop);
SAME(seek, fluid_player_seek);
SAME(status, fluid_player_get_status);
SAME(currentTick, fluid_player_get_current_tick);
SAME(totalTicks, fluid_player_get_total_ticks);
SAME(newDriver, new_fluid_audio_driver);
SAME(deleteDriver, delete_fluid_audio_driver);
#undef SAME
static_assert(FluidLibrary::playerDone == FLUID_PLAYER_DONE
              && FluidLibrary::failed == FLUID_FAILED);
#endif

/** MIDI songs as sound: made as fast as the processor goes, and heard by nobody. */
class tst_FluidPlayer : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_fluid = FluidLibrary::load();
        m_soundfont = FluidPlayer::systemSoundfont();
        if (!m_fluid || m_soundfont.isEmpty())
            QSKIP("There is no FluidSynth, or no soundfont (Debian: libfluidsynth3, "
                  "timgm6mb-soundfont)");
    }
    void init() { makeFolder(); }

    void samplesSound_data()
    {
        const Table<QString> row;
        row("MIDI", "FUNICULI.mid");
        row("karaoke", "BELLACIA.kar");
        row("MF3", "FRAMARTI.mf3");
        row("MF4", "DONNAMOB.mf4");
        row("MF5", "GREENSLV.mf5");
    }
    void samplesSound()
    {
        const auto [name] = cells<QString>();
        const SongSound sound = soundOf(text(TARVEL4_SAMPLES "/") + name);
        FluidEngine engine(*m_fluid);
        QVERIFY(engine.loadSounds(m_soundfont));
        QVERIFY(engine.start(sound.midi, 0));
        QVERIFY(loudnessOf(engine, 3000) > 300);
    }

    void songLastsAsLongAsItSays()
    {
        const SongSound sound = soundOf(text(TARVEL4_SAMPLES "/FUNICULI.mid"));
        const qint64 lastTick = MidiTimeline(sound.midi).lastTick();
        FluidEngine engine(*m_fluid);
        QVERIFY(engine.loadSounds(m_soundfont));
        QVERIFY(engine.start(sound.midi, 0));
        int ms = 0;
        constexpr int step = 500;
        for (; engine.tick() < lastTick && ms < 600000; ms += step)
            loudnessOf(engine, step);
        QVERIFY2(qAbs(ms - sound.lengthMs) <= step, qPrintable(QString::number(ms)));
        QVERIFY(!engine.isDone()); // what sounds may fade away
        for (int i = 0; i < 8 && !engine.isDone(); ++i)
            loudnessOf(engine, step);
        QVERIFY(engine.isDone());
    }

    void restsAreSilent()
    {
        FluidEngine engine(*m_fluid);
        QVERIFY(engine.loadSounds(m_soundfont));
        QVERIFY(engine.start(midi(0, {track(hex("8F 00") + note().mid(1) + endOfTrack())}), 0));
        QVERIFY(loudnessOf(engine, 1000) < 2);
    }

    void beginsAtAMarker()
    {
        const SongSound sound = soundOf(text(TARVEL4_SAMPLES "/GREENSLV.mf5"));
        QCOMPARE(sound.marks.size(), 4);
        QVERIFY(sound.marks.at(3).ms < sound.lengthMs);
        const MidiTimeline timeline(sound.midi);
        const qint64 tick = timeline.tickOfMs(sound.marks.at(1).ms);
        FluidEngine engine(*m_fluid);
        QVERIFY(engine.loadSounds(m_soundfont));
        QVERIFY(engine.start(sound.midi, tick));
        QVERIFY(loudnessOf(engine, 500) > 300);
        QVERIFY(engine.tick() >= tick);
        QVERIFY(timeline.msOfTick(engine.tick()) < sound.marks.at(1).ms + 700);
    }

    void playsToTheEnd()
    {
        FluidPlayer player(*m_fluid, m_soundfont, {strings({"file"}), path("out.raw")});
        QStringList ends;
        SongSound sound = soundOf(write(path("a.mid"), midi0()));
        QCOMPARE(player.play(sound, 0, [&ends](const QString &cause) { ends += cause; }),
                 QString());
        QTRY_COMPARE(ends, QStringList(QString()));
        QCOMPARE(player.position(), qint64{0});
        QVERIFY(QFileInfo(path("out.raw")).size() > 0);
    }

    void stoppedPlayerTellsNothing()
    {
        FluidPlayer player(*m_fluid, m_soundfont, {strings({"file"}), path("out.raw")});
        SongSound sound = soundOf(text(TARVEL4_SAMPLES "/FUNICULI.mid"));
        const auto never = [](const QString &) { QFAIL("a song that was stopped has no end"); };
        QCOMPARE(player.play(sound, 0, never), QString());
        QTRY_VERIFY(player.position() > 0);
        QCOMPARE(player.play(sound, 4000, never), QString()); // in place of the first
        QTRY_VERIFY(player.position() >= 4000);
        player.stop();
        QCOMPARE(player.position(), qint64{0});
    }

    void failures_data()
    {
        const Table<QByteArray, bool, bool, QString> row; // soundfont there, output there
        const QByteArray good = midi0();
        row("no soundfont", good, false, true, "suoni in");
        row("no audio output", good, true, false, "nessuna uscita audio");
        row("no track", good.left(14), true, true, "danneggiata");
        row("a track that is cut short", good.left(25), true, true, "danneggiata");
        row("no bytes", QByteArray(), true, true, "danneggiata");
    }
    void failures()
    {
        const auto [midi, hasSounds, hasOutput, words] = cells<QByteArray, bool, bool, QString>();
        FluidPlayer player(*m_fluid, hasSounds ? m_soundfont : path("none.sf2"),
                           {strings({hasOutput ? "file" : "nothing"}), path("out.raw")});
        SongSound sound;
        sound.midi = midi;
        const QString cause = player.play(sound, 0, [](const QString &) {});
        QVERIFY2(cause.contains(words), qPrintable(cause));
        QCOMPARE(player.position(), qint64{0});
    }

    void damagedSongsCrashNothing()
    {
        const QByteArray song = midi1(meta(0x51, hex("061A80")) + marker(2, "Refrain") + note());
        FluidEngine engine(*m_fluid);
        QVERIFY(engine.loadSounds(m_soundfont));
        for (int at = 0; at < song.size(); ++at) {
            const char byte = '\xFF';
            if (engine.start(QByteArray(song).replace(at, 1, &byte, 1), 0))
                loudnessOf(engine, 10);
            if (engine.start(song.left(at), 0))
                loudnessOf(engine, 10);
        }
    }

private:
    static SongSound soundOf(const QString &file)
    {
        SongSound sound;
        if (!SongSound::read(file, sound))
            qFatal("the fixture is no song");
        return sound;
    }

    /** The root of the mean square of the next sound. */
    static double loudnessOf(FluidEngine &engine, int ms)
    {
        std::vector<qint16> samples(static_cast<std::size_t>(FluidEngine::framesPerSecond) * 2
                                    * static_cast<std::size_t>(ms) / 1000 / 2 * 2);
        engine.render(samples.data(), static_cast<int>(samples.size() / 2));
        double sum = 0;
        for (const qint16 sample : samples)
            sum += static_cast<double>(sample) * sample;
        return std::sqrt(sum / static_cast<double>(samples.size()));
    }

    const FluidLibrary *m_fluid = nullptr;
    QString m_soundfont;
};

QTEST_GUILESS_MAIN(tst_FluidPlayer)
#include "tst_fluidplayer.moc"
