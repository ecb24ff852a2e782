#include "ui/songdrop.h"

#include "library/folderscan.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <utility>

namespace tarvel4 {

namespace {

SongDrop::Songs songsOf(const QDropEvent &event)
{
    SongDrop::Songs songs;
    const QList<QUrl> urls = event.mimeData()->urls();
    for (const QUrl &url : urls) {
        if (!url.isLocalFile())
            continue;
        const QString path = url.toLocalFile();
        const QByteArray name =
            QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
        if (QString::fromUtf8(name).toUtf8() != name)
            songs.unreachable += path;
        else if (FolderScan::isSongName(path) || QFileInfo(path).isDir())
            songs.paths += path;
    }
    return songs;
}

} // namespace

SongDrop::SongDrop(QWidget &window, std::function<bool()> isBusy,
                   std::function<void(const Songs &)> take)
    : QObject(&window)
    , m_isBusy(std::move(isBusy))
    , m_take(std::move(take))
{
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool SongDrop::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    auto *drop = static_cast<QDropEvent *>(event); // what the other two are as well
    if (type == QEvent::DragEnter) // once: there may be thousands, sent by another program
        m_songs = songsOf(*drop);
    offer(*drop);
    if (type == QEvent::Drop && drop->isAccepted()) {
        // the program that the songs come from waits until this event is over
        QTimer::singleShot(0, this, [this, songs = std::exchange(m_songs, {})] { m_take(songs); });
    }
    return true;
}

/** Accepts what can be imported, and never as a move: the other program would delete the songs. */
void SongDrop::offer(QDropEvent &event) const
{
    const bool isTaken = !m_isBusy() && !QApplication::activeModalWidget()
        && (event.possibleActions() & Qt::CopyAction)
        && !(m_songs.paths.isEmpty() && m_songs.unreachable.isEmpty());
    if (isTaken)
        event.setDropAction(Qt::CopyAction);
    event.setAccepted(isTaken);
}

} // namespace tarvel4
