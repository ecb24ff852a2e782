#include "player/fluidlibrary.h"

#include <QLibrary>

#include <array>
#include <optional>

namespace tarvel4 {

namespace {

/** Finds functions in a library, and notes when one is missing. */
class Functions
{
public:
    explicit Functions(QLibrary &library)
        : m_library(library)
    {}

    template <typename Function> void find(Function &function, const char *name)
    {
        function = reinterpret_cast<Function>(m_library.resolve(name));
        m_areThere = m_areThere && function;
    }
    bool areThere() const { return m_areThere; }

private:
    QLibrary &m_library;
    bool m_areThere = true;
};

std::optional<FluidLibrary> loadVersion(int version)
{
    QLibrary library(QStringLiteral("fluidsynth"), version);
    if (!library.load())
        return {};
    FluidLibrary fluid{};
    Functions functions(library);
    functions.find(fluid.newSettings, "new_fluid_settings");
    functions.find(fluid.deleteSettings, "delete_fluid_settings");
    functions.find(fluid.setText, "fluid_settings_setstr");
    functions.find(fluid.setNumber, "fluid_settings_setnum");
    functions.find(fluid.newSynth, "new_fluid_synth");
    functions.find(fluid.deleteSynth, "delete_fluid_synth");
    functions.find(fluid.loadSounds, "fluid_synth_sfload");
    functions.find(fluid.write, "fluid_synth_write_s16");
    functions.find(fluid.activeVoices, "fluid_synth_get_active_voice_count");
    functions.find(fluid.newPlayer, "new_fluid_player");
    functions.find(fluid.deletePlayer, "delete_fluid_player");
    functions.find(fluid.addBytes, "fluid_player_add_mem");
    functions.find(fluid.play, "fluid_player_play");
    functions.find(fluid.stop, "fluid_player_stop");
    functions.find(fluid.seek, "fluid_player_seek");
    functions.find(fluid.status, "fluid_player_get_status");
    functions.find(fluid.currentTick, "fluid_player_get_current_tick");
    functions.find(fluid.totalTicks, "fluid_player_get_total_ticks");
    functions.find(fluid.newDriver, "new_fluid_audio_driver");
    functions.find(fluid.deleteDriver, "delete_fluid_audio_driver");
    functions.find(fluid.setLog, "fluid_set_log_function");
    if (!functions.areThere())
        return {};
    constexpr int levels = 5; // what fails is told to the user, not to the terminal
    for (int level = 0; level < levels; ++level)
        fluid.setLog(level, nullptr, nullptr);
    return fluid;
}

} // namespace

const FluidLibrary *FluidLibrary::load()
{
    static const std::optional<FluidLibrary> library = [] {
        constexpr std::array<int, 2> versions{3, 2}; // of FluidSynth from 2.2 on, and before
        for (const int version : versions) {
            if (const auto found = loadVersion(version))
                return found;
        }
        return std::optional<FluidLibrary>();
    }();
    return library ? &*library : nullptr;
}

} // namespace tarvel4
