#pragma once

#include "player/fluidengine.h"
#include "player/miditimeline.h"
#include "player/songplayer.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTimer>

#include <optional>

namespace tarvel4 {

/** Plays MIDI songs, and the MIDI stream of MFx songs, with the instruments of a soundfont. */
class FluidPlayer : public SongPlayer
{
    Q_DECLARE_TR_FUNCTIONS(FluidPlayer)

public:
    struct Output
    {
        QStringList drivers; ///< the first one that opens is taken
        QString file; ///< what the driver "file" writes
    };

    FluidPlayer(const FluidLibrary &fluid, const QString &soundfont, const Output &output);

    QString play(const SongSound &song, qint64 fromMs, Ended ended) override;
    void stop() override;
    qint64 position() const override;

    static QStringList systemDrivers();
    /** The first General MIDI soundfont of the system; empty where there is none. */
    static QString systemSoundfont();

private:
    void look();

    const FluidLibrary &m_fluid;
    const QString m_soundfont;
    const Output m_output;
    std::optional<FluidEngine> m_engine;
    std::optional<MidiTimeline> m_timeline;
    Ended m_ended;
    QTimer m_timer;
};

} // namespace tarvel4
