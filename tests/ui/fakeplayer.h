#pragma once

#include "player/songplayers.h"
#include "tests/library/texts.h"

#include <QFileInfo>
#include <QStringList>

#include <utility>

namespace tarvel4 {

/** Hears nothing, and notes what it is asked for. */
class FakePlayer : public SongPlayer
{
public:
    explicit FakePlayer(QStringList &calls)
        : m_calls(calls)
    {}

    QString play(const SongSound &song, qint64 fromMs, Ended ended) override
    {
        m_calls += QFileInfo(song.path).fileName() + text(" %1").arg(fromMs);
        m_ended = std::move(ended);
        return failure;
    }
    void stop() override
    {
        m_calls += text("stop");
        m_ended = nullptr;
    }
    qint64 position() const override { return ms; }

    void end(const QString &cause)
    {
        if (const Ended ended = m_ended)
            ended(cause);
    }

    QString failure;
    qint64 ms = 0;

private:
    QStringList &m_calls;
    Ended m_ended;
};

class FakePlayers : public SongPlayers
{
public:
    FakePlayers(FakePlayer &player, const bool &hasMidi)
        : m_player(player)
        , m_hasMidi(hasMidi)
    {}

    SongPlayer *playerFor(SongSound::Kind kind) override
    {
        return kind == SongSound::Kind::Midi && m_hasMidi ? &m_player : nullptr;
    }

private:
    FakePlayer &m_player;
    const bool &m_hasMidi;
};

} // namespace tarvel4
