#pragma once

#include <cstddef>
#include <cstdint>

// The names of FluidSynth 2's own interface, whose headers are not needed: its library is looked
// for at run time.
extern "C" {
struct _fluid_hashtable_t;
struct _fluid_synth_t;
struct _fluid_player_t;
struct _fluid_audio_driver_t;
}

namespace tarvel4 {

/** The functions of the FluidSynth library that is found at run time. */
struct FluidLibrary
{
    using Settings = _fluid_hashtable_t;
    using Synth = _fluid_synth_t;
    using Player = _fluid_player_t;
    using Driver = _fluid_audio_driver_t;
    using Log = void (*)(int level, const char *message, void *data);

    static constexpr int failed = -1;
    static constexpr int playerDone = 3;

    Settings *(*newSettings)();
    void (*deleteSettings)(Settings *);
    int (*setText)(Settings *, const char *name, const char *value);
    int (*setNumber)(Settings *, const char *name, double value);
    Synth *(*newSynth)(Settings *);
    void (*deleteSynth)(Synth *);
    int (*loadSounds)(Synth *, const char *file, int resetPresets);
    int (*write)(Synth *, int frames, void *left, int leftAt, int leftStep, void *right,
                 int rightAt, int rightStep);
    int (*activeVoices)(Synth *);
    Player *(*newPlayer)(Synth *);
    void (*deletePlayer)(Player *);
    int (*addBytes)(Player *, const void *bytes, std::size_t size);
    int (*play)(Player *);
    int (*stop)(Player *);
    int (*seek)(Player *, int tick);
    int (*status)(Player *);
    int (*currentTick)(Player *);
    int (*totalTicks)(Player *);
    Driver *(*newDriver)(Settings *, Synth *);
    void (*deleteDriver)(Driver *);
    Log (*setLog)(int level, Log, void *data);

    /** Null where the system has no such library; loaded once. */
    static const FluidLibrary *load();
};

} // namespace tarvel4
