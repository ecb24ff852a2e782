#pragma once

#include <QString>
#include <QtPlugin>

#include <functional>

namespace tarvel4 {

struct SongSound;

/** Lets one song at a time be heard, by whatever knows its format. */
class SongPlayer
{
public:
    /** Called when a song comes to its end by itself; \a cause, translated, where it broke off. */
    using Ended = std::function<void(const QString &cause)>;

    virtual ~SongPlayer() = default;

    /** Plays in place of the song that is heard, if any. Returns at once: with the reason, as a
     * translated sentence, where nothing will be heard, else with an empty text. */
    virtual QString play(const SongSound &song, qint64 fromMs, Ended ended) = 0;
    /** Ends without a call of Ended; the song's file is no longer open. */
    virtual void stop() = 0;
    /** Milliseconds from the song's start. */
    virtual qint64 position() const = 0;
};

/** What a plugin offers that brings a player of its own. */
class SongPlayerPlugin
{
public:
    virtual ~SongPlayerPlugin() = default;

    /** The caller's; null where the system can't play. */
    virtual SongPlayer *createPlayer() = 0;
};

} // namespace tarvel4

#define TARVEL4_SONG_PLAYER_PLUGIN "tarvel4.SongPlayerPlugin/1"
Q_DECLARE_INTERFACE(tarvel4::SongPlayerPlugin, TARVEL4_SONG_PLAYER_PLUGIN)
