#include "ui/schemefollower.h"

#include "ui/appearance.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>

namespace tarvel4 {

namespace {

bool hasOurColours()
{
    const QPalette ours = Colours::palette(Appearance::scheme());
    const QPalette shown = QApplication::palette();
    return shown.color(QPalette::Window) == ours.color(QPalette::Window)
        && shown.color(QPalette::Highlight) == ours.color(QPalette::Highlight);
}

} // namespace

SchemeFollower::SchemeFollower(QObject *parent)
    : QObject(parent)
{
    Appearance::followDesktop();
    qApp->installEventFilter(this);
}

bool SchemeFollower::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange && !hasOurColours())
        QMetaObject::invokeMethod(this, &SchemeFollower::follow, Qt::QueuedConnection);
    return false;
}

/** Later than the change, which has to reach all widgets first. */
void SchemeFollower::follow()
{
    if (hasOurColours())
        return;
    Appearance::followDesktop();
    qApp->setStyleSheet(qApp->styleSheet()); // it looks its colours up once
}

} // namespace tarvel4
