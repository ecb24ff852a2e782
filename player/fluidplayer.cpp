#include "player/fluidplayer.h"

#include "player/songsound.h"

#include <QDir>
#include <QStandardPaths>

#include <utility>

namespace tarvel4 {

namespace {

constexpr int lookEvery = 100; // ms

} // namespace

FluidPlayer::FluidPlayer(const FluidLibrary &fluid, const QString &soundfont, const Output &output)
    : m_fluid(fluid)
    , m_soundfont(soundfont)
    , m_output(output)
{
    m_timer.setInterval(lookEvery);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
}

QString FluidPlayer::play(const SongSound &song, qint64 fromMs, Ended ended)
{
    stop();
    m_engine.emplace(m_fluid);
    m_timeline.emplace(song.midi);
    QString cause;
    if (!m_engine->loadSounds(m_soundfont))
        cause = tr("i suoni in %1 non possono essere letti").arg(m_soundfont);
    else if (!m_engine->start(song.midi, m_timeline->tickOfMs(fromMs)))
        cause = tr("la parte MIDI è danneggiata e non può essere suonata");
    else if (!m_engine->openOutput(m_output.drivers, m_output.file))
        cause = tr("nessuna uscita audio è disponibile");
    if (!cause.isEmpty()) {
        m_engine.reset();
        return cause;
    }
    m_ended = std::move(ended);
    m_timer.start();
    return {};
}

void FluidPlayer::stop()
{
    m_timer.stop();
    m_engine.reset();
    m_ended = nullptr;
}

qint64 FluidPlayer::position() const
{
    return m_engine ? m_timeline->msOfTick(m_engine->tick()) : 0;
}

void FluidPlayer::look()
{
    if (!m_engine || !m_engine->isDone())
        return;
    const Ended ended = std::exchange(m_ended, nullptr);
    stop();
    if (ended)
        ended({});
}

QStringList FluidPlayer::systemDrivers()
{
#if defined(Q_OS_WIN)
    return {QString(), QStringLiteral("wasapi"), QStringLiteral("dsound")};
#elif defined(Q_OS_MACOS)
    return {QString(), QStringLiteral("coreaudio")};
#else
    // PipeWire behind PulseAudio: where both run, it may be there for pictures alone.
    return {QStringLiteral("pulseaudio"), QStringLiteral("pipewire"), QStringLiteral("alsa")};
#endif
}

QString FluidPlayer::systemSoundfont()
{
    const QStringList wanted{QStringLiteral("sounds/sf2/default-GM.sf2"),
                             QStringLiteral("sounds/sf3/default-GM.sf3"),
                             QStringLiteral("soundfonts/default.sf2")};
    for (const QString &name : wanted) {
        const QString file = QStandardPaths::locate(QStandardPaths::GenericDataLocation, name);
        if (!file.isEmpty())
            return file;
    }
    const QStringList folders =
        QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("sounds/sf2"),
                                  QStandardPaths::LocateDirectory);
    for (const QString &folder : folders) {
        const QFileInfoList files =
            QDir(folder).entryInfoList({QStringLiteral("*.sf2")}, QDir::Files, QDir::Name);
        if (!files.isEmpty())
            return files.constFirst().filePath();
    }
    return {};
}

} // namespace tarvel4
