#include "player/mp3player.h"

#include "player/songsound.h"

#include <QUrl>

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QAudioOutput>
#endif

#include <memory>
#include <utility>

namespace tarvel4 {

Mp3Player::Mp3Player()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    m_player.setAudioOutput(new QAudioOutput(&m_player));
    const auto failed = &QMediaPlayer::errorOccurred;
#else
    const auto failed = QOverload<QMediaPlayer::Error>::of(&QMediaPlayer::error);
#endif
    QObject::connect(&m_player, failed, &m_player, [this] {
        QString cause = tr("il sistema non può suonare questo file MP3");
        if (!m_player.errorString().isEmpty())
            cause += QLatin1String(" (") + m_player.errorString() + QLatin1Char(')');
        end(cause);
    });
    QObject::connect(&m_player, &QMediaPlayer::mediaStatusChanged, &m_player,
                     [this](QMediaPlayer::MediaStatus status) {
                         if (status == QMediaPlayer::EndOfMedia)
                             end({});
                     });
}

QString Mp3Player::play(const SongSound &song, qint64 fromMs, Ended ended)
{
    stop();
    m_ended = std::move(ended);
    setFile(QUrl::fromLocalFile(song.path));
    if (fromMs > 0)
        m_player.setPosition(fromMs);
    m_player.play();
    return {};
}

void Mp3Player::stop()
{
    ++m_song;
    m_ended = nullptr;
    m_player.stop();
    setFile({});
}

/** Tells it when the player has left its own signal, unless another song is heard by then. */
void Mp3Player::end(const QString &cause)
{
    const int song = m_song;
    const auto tell = [this, song, cause] {
        if (song != m_song)
            return;
        const Ended ended = std::exchange(m_ended, nullptr);
        stop();
        ended(cause);
    };
    if (m_ended)
        QMetaObject::invokeMethod(&m_player, tell, Qt::QueuedConnection);
}

void Mp3Player::setFile(const QUrl &url)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    m_player.setSource(url);
#else
    m_player.setMedia(url);
#endif
}

bool Mp3Player::isAvailable() const
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return m_player.isAvailable();
#else
    return m_player.availability() == QMultimedia::Available;
#endif
}

SongPlayer *Mp3Plugin::createPlayer()
{
    auto player = std::make_unique<Mp3Player>();
    return player->isAvailable() ? player.release() : nullptr;
}

} // namespace tarvel4
