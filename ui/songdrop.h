#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

QT_BEGIN_NAMESPACE
class QDropEvent;
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

/** Takes song files and folders that are dropped on the window. */
class SongDrop : public QObject
{
    Q_OBJECT

public:
    /** The songs and folders of this computer among what is dragged; \a unreachable: those whose
     * names Qt can't open a file by. */
    struct Songs
    {
        QStringList paths;
        QStringList unreachable;
    };

    /** \a take gets the songs once the drop is over; \a isBusy is asked at each event of a drag. */
    SongDrop(QWidget &window, std::function<bool()> isBusy,
             std::function<void(const Songs &)> take);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void offer(QDropEvent &event) const;

    std::function<bool()> m_isBusy;
    std::function<void(const Songs &)> m_take;
    Songs m_songs; ///< of the drag that is over the window
};

} // namespace tarvel4
