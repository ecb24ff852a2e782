#include "ui/announcement.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWidget>

namespace tarvel4 {

namespace {

constexpr char objectName[] = "announcement";

/** A notification: readers say the name of one that comes up. */
class NotificationInterface : public QAccessibleWidget
{
public:
    explicit NotificationInterface(QWidget *widget)
        : QAccessibleWidget(widget, QAccessible::Notification)
    {}
};

QAccessibleInterface *makeInterface(const QString &className, QObject *object)
{
    Q_UNUSED(className)
    auto *widget = qobject_cast<QWidget *>(object);
    return widget && widget->objectName() == QLatin1String(objectName)
        ? new NotificationInterface(widget)
        : nullptr;
}

/** A spot of the window, in which nothing is painted. */
QWidget *notificationOf(QWidget *window)
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    Q_UNUSED(isInstalled)
    const QString name = QString::fromLatin1(objectName);
    if (auto *made = window->findChild<QWidget *>(name, Qt::FindDirectChildrenOnly))
        return made;
    auto *widget = new QWidget(window);
    widget->setObjectName(name);
    widget->setAttribute(Qt::WA_TransparentForMouseEvents);
    widget->setGeometry(0, 0, 1, 1);
    widget->show();
    return widget;
}

} // namespace

void Announcement::say(QWidget &widget, const QString &text)
{
    QWidget *notification = notificationOf(widget.window());
    notification->setAccessibleName(text);
    if (!QAccessible::isActive())
        return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent announcement(notification, text);
    QAccessible::updateAccessibility(&announcement);
#else
    for (const QAccessible::Event type : {QAccessible::ObjectShow, QAccessible::Alert}) {
        QAccessibleEvent event(notification, type);
        QAccessible::updateAccessibility(&event);
    }
#endif
}

} // namespace tarvel4
