#include "ui/portalscheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QFile>

namespace tarvel4 {

namespace {

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String object("/org/freedesktop/portal/desktop");
constexpr QLatin1String settingsInterface("org.freedesktop.portal.Settings");
constexpr QLatin1String appearance("org.freedesktop.appearance");
constexpr QLatin1String colourScheme("color-scheme");
constexpr uint dark = 1; // 0: no preference, 2: light

/** Else one would be started for us. */
bool hasBus()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")
        || QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QLatin1String("/bus"));
}

/** The answer wraps the value twice, the signal once. */
bool isDark(QVariant value)
{
    while (value.userType() == qMetaTypeId<QDBusVariant>())
        value = qvariant_cast<QDBusVariant>(value).variant();
    return value.toUInt() == dark;
}

} // namespace

PortalScheme::PortalScheme(QObject *parent)
    : QObject(parent)
{
    if (!hasBus())
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    // from whomever: with a name Qt would wait for the bus to tell who has it
    bus.connect(QString(), object, settingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(takeChange(QString, QString, QDBusVariant)));
    QDBusMessage read =
        QDBusMessage::createMethodCall(service, object, settingsInterface, QStringLiteral("Read"));
    read << QString(appearance) << QString(colourScheme);
    const auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher *watcher) {
                watcher->deleteLater();
                if (!watcher->isError())
                    Q_EMIT told(isDark(watcher->reply().arguments().value(0)));
            });
}

void PortalScheme::takeChange(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == appearance && key == colourScheme)
        Q_EMIT told(isDark(value.variant()));
}

} // namespace tarvel4
