#include "player/fluidengine.h"

#include <QFile>

#include <array>

namespace tarvel4 {

namespace {

constexpr double loudness = 0.5; // the library's own 0.2 is made for many voices at full force
constexpr int firstFrames = 64; // in which the library reads the song

} // namespace

FluidEngine::FluidEngine(const FluidLibrary &fluid)
    : m_fluid(fluid)
    , m_settings(fluid.newSettings(), fluid.deleteSettings)
    , m_synth(nullptr, fluid.deleteSynth)
    , m_player(nullptr, fluid.deletePlayer)
    , m_driver(nullptr, fluid.deleteDriver)
{
    m_fluid.setNumber(m_settings.get(), "synth.sample-rate", framesPerSecond);
    m_fluid.setNumber(m_settings.get(), "synth.gain", loudness);
    m_synth.reset(fluid.newSynth(m_settings.get()));
}

FluidEngine::~FluidEngine()
{
    if (m_player)
        m_fluid.stop(m_player.get());
}

bool FluidEngine::loadSounds(const QString &soundfont)
{
    return m_synth
        && m_fluid.loadSounds(m_synth.get(), QFile::encodeName(soundfont).constData(), 1)
        != FluidLibrary::failed;
}

bool FluidEngine::start(const QByteArray &midi, qint64 fromTick)
{
    m_player.reset(m_fluid.newPlayer(m_synth.get()));
    if (!m_player
        || m_fluid.addBytes(m_player.get(), midi.constData(), static_cast<std::size_t>(midi.size()))
            == FluidLibrary::failed
        || m_fluid.play(m_player.get()) == FluidLibrary::failed) {
        return false;
    }
    std::array<qint16, firstFrames * 2> first{};
    render(first.data(), firstFrames);
    const int total = m_fluid.totalTicks(m_player.get());
    if (total <= 0)
        return false;
    return fromTick <= 0
        || (fromTick <= total
            && m_fluid.seek(m_player.get(), static_cast<int>(fromTick)) != FluidLibrary::failed);
}

bool FluidEngine::openOutput(const QStringList &drivers, const QString &file)
{
    if (!file.isEmpty())
        m_fluid.setText(m_settings.get(), "audio.file.name", QFile::encodeName(file).constData());
    for (const QString &driver : drivers) {
        if (!driver.isEmpty())
            m_fluid.setText(m_settings.get(), "audio.driver", driver.toLatin1().constData());
        m_driver.reset(m_fluid.newDriver(m_settings.get(), m_synth.get()));
        if (m_driver)
            return true;
    }
    return false;
}

void FluidEngine::render(qint16 *samples, int frames)
{
    m_fluid.write(m_synth.get(), frames, samples, 0, 2, samples, 1, 2);
}

bool FluidEngine::isDone() const
{
    if (m_fluid.status(m_player.get()) == FluidLibrary::playerDone)
        return true;
    // The library goes on for seconds after the last sound.
    return tick() > m_fluid.totalTicks(m_player.get()) && m_fluid.activeVoices(m_synth.get()) == 0;
}

qint64 FluidEngine::tick() const
{
    return m_fluid.currentTick(m_player.get());
}

} // namespace tarvel4
