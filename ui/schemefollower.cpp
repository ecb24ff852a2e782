#include "ui/schemefollower.h"

#include "ui/appearance.h"
#ifdef QT_DBUS_LIB
#include "ui/portalscheme.h"
#endif

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
    , m_painted(Colours::schemeOf(QApplication::palette()))
{
    Appearance::followDesktop();
    qApp->installEventFilter(this);
#ifdef QT_DBUS_LIB
    const auto *portal = new PortalScheme(this);
    connect(portal, &PortalScheme::told, this, [this](bool isDark) {
        m_isToldDark = isDark;
        if (scheme() != Appearance::scheme())
            show();
    });
#endif
}

/** A desktop is dark where either says so: one that has no preference is light for the portal. */
Colours::Scheme SchemeFollower::scheme() const
{
    return m_isToldDark ? Colours::Scheme::Dark : m_painted;
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
    m_painted = Colours::schemeOf(QApplication::palette());
    show();
}

void SchemeFollower::show()
{
    Appearance::setScheme(scheme());
    qApp->setStyleSheet(qApp->styleSheet()); // it looks its colours up once
}

} // namespace tarvel4
