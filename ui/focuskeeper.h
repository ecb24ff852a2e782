#pragma once

#include <QList>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

/**
 * Brings the focus back to where it was when a job, which disabled the control that had it, is
 * over: somebody without a mouse would have to look for it. Where that one stays disabled, the
 * first enabled one after it gets the focus.
 */
class FocusKeeper
{
public:
    /** \a controls: those that the job disables, in their order. */
    explicit FocusKeeper(const QList<QWidget *> &controls);
    ~FocusKeeper();
    Q_DISABLE_COPY(FocusKeeper)

private:
    QList<QWidget *> m_next; ///< those that may get the focus; none where it was elsewhere
};

} // namespace tarvel4
