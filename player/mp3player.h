#pragma once

#include "player/songplayer.h"

#include <QCoreApplication>
#include <QMediaPlayer>

namespace tarvel4 {

/** Plays MP3 songs by what the system plays media with. */
class Mp3Player : public SongPlayer
{
    Q_DECLARE_TR_FUNCTIONS(Mp3Player)

public:
    Mp3Player();

    QString play(const SongSound &song, qint64 fromMs, Ended ended) override;
    void stop() override;
    qint64 position() const override { return m_player.position(); }

    bool isAvailable() const;

private:
    void setFile(const QUrl &url);
    void end(const QString &cause);

    QMediaPlayer m_player;
    Ended m_ended;
    int m_song = 0; ///< counts what was begun and ended
};

/** Brings the player of MP3 songs into the program. */
class Mp3Plugin : public QObject, public SongPlayerPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TARVEL4_SONG_PLAYER_PLUGIN)
    Q_INTERFACES(tarvel4::SongPlayerPlugin)

public:
    SongPlayer *createPlayer() override;
};

} // namespace tarvel4
