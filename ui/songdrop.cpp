#include "ui/songdrop.h"

#include "library/folderscan.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace tarvel4 {

namespace {

/** The songs and folders of this computer among what is dragged. */
QStringList songsOf(const QDropEvent &event)
{
    QStringList paths;
    const QList<QUrl> urls = event.mimeData()->urls();
    for (const QUrl &url : urls) {
        const QString path = url.isLocalFile() ? url.toLocalFile() : QString();
        if (!path.isEmpty() && (FolderScan::isSongName(path) || QFileInfo(path).isDir()))
            paths += path;
    }
    return paths;
}

} // namespace

SongDrop::SongDrop(QWidget &window, std::function<bool()> isBusy,
                   std::function<void(const QStringList &)> take)
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
    offer(*drop);
    if (type == QEvent::Drop && drop->isAccepted()) {
        const QStringList paths = songsOf(*drop);
        // the program that the songs come from waits until this event is over
        QTimer::singleShot(0, this, [this, paths] { m_take(paths); });
    }
    return true;
}

/** Accepts what can be imported, and never as a move: the other program would delete the songs. */
void SongDrop::offer(QDropEvent &event) const
{
    const bool isTaken = !m_isBusy() && !QApplication::activeModalWidget()
        && (event.possibleActions() & Qt::CopyAction) && !songsOf(event).isEmpty();
    if (isTaken)
        event.setDropAction(Qt::CopyAction);
    event.setAccepted(isTaken);
}

} // namespace tarvel4
