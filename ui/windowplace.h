#pragma once

#include <QObject>
#include <QRect>

QT_BEGIN_NAMESPACE
class QHeaderView;
class QSplitter;
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

/** Keeps a window's place on the screen, the widths of its table's columns and the parts of its
 * splitter from one run to the next, and the window with its frame on the screen. */
class WindowPlace : public QObject
{
    Q_OBJECT

public:
    /** All of them must outlive it. */
    WindowPlace(QWidget &window, QHeaderView &columns, QSplitter &splitter);
    /** Stores the place of a window that was not closed before. */
    ~WindowPlace() override;

    /** To be called before the window is shown; what was stored and does not fit is left out. */
    void restore();

    /** Gives the splitter's parts the sizes that the user gave them last, in this run or before. */
    void shareRoom();

    /** A frame that lies on the screen: moved as far as needed, and made smaller where it must be.
     */
    static QRect fitted(const QRect &frame, const QRect &screen);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void store() const;
    void keepFrameOnScreen();
    void restoreColumns();

    QWidget &m_window;
    QHeaderView &m_columns;
    QSplitter &m_splitter;
    QList<int> m_parts; ///< in pixels, and only shares in a window of another height
    bool m_wasPainted = false;
};

} // namespace tarvel4
