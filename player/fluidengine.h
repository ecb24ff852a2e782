#pragma once

#include "player/fluidlibrary.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

namespace tarvel4 {

/** One MIDI song on its way through FluidSynth, from the song's bytes to sound. */
class FluidEngine
{
public:
    static constexpr int framesPerSecond = 44100;

    explicit FluidEngine(const FluidLibrary &fluid);
    ~FluidEngine();
    Q_DISABLE_COPY(FluidEngine)

    /** Takes the instruments from a soundfont. */
    bool loadSounds(const QString &soundfont);
    /** Gets a song ready to be heard from a tick on; false where it can't be played. */
    bool start(const QByteArray &midi, qint64 fromTick);

    /** Lets it be heard: by the first of these drivers that opens an output, an empty name standing
     * for the library's own choice; \a file is what the driver "file" writes. */
    bool openOutput(const QStringList &drivers, const QString &file = {});
    /** Where no output is open: makes the next frames, left and right in turn. */
    void render(qint16 *samples, int frames);

    bool isDone() const;
    qint64 tick() const;

private:
    template <typename Type> using Owned = std::unique_ptr<Type, void (*)(Type *)>;

    const FluidLibrary &m_fluid;
    Owned<FluidLibrary::Settings> m_settings;
    Owned<FluidLibrary::Synth> m_synth;
    Owned<FluidLibrary::Player> m_player;
    Owned<FluidLibrary::Driver> m_driver; ///< goes first: it asks the synth for sound
};

} // namespace tarvel4
