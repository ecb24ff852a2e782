#include "ui/udisks.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEventLoop>
#include <QStorageInfo>

namespace tarvel4 {

namespace {

constexpr char service[] = "org.freedesktop.UDisks2";
constexpr char manager[] = "/org/freedesktop/UDisks2/Manager";
constexpr char managerInterface[] = "org.freedesktop.UDisks2.Manager";
constexpr char blockInterface[] = "org.freedesktop.UDisks2.Block";
constexpr char filesystemInterface[] = "org.freedesktop.UDisks2.Filesystem";
constexpr char driveInterface[] = "org.freedesktop.UDisks2.Drive";
constexpr int askPatience = 2000; // ms
constexpr int ejectPatience = 120000; // a slow card may still be writing for others

QDBusMessage methodCall(const QString &object, const char *interface, const char *method)
{
    return QDBusMessage::createMethodCall(QLatin1String(service), object, QLatin1String(interface),
                                          QLatin1String(method));
}

/** The answer; the window is drawn meanwhile, and takes no clicks. */
QDBusMessage answerTo(const QDBusConnection &bus, const QDBusMessage &call, int patience)
{
    QDBusPendingCallWatcher watcher(bus.asyncCall(call, patience));
    QEventLoop loop;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
    if (!watcher.isFinished())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    return watcher.reply();
}

QVariant propertyOf(const QDBusConnection &bus, const QString &object, const char *interface,
                    const char *name)
{
    QDBusMessage get = methodCall(object, "org.freedesktop.DBus.Properties", "Get");
    get << QString::fromLatin1(interface) << QString::fromLatin1(name);
    const QDBusPendingReply<QDBusVariant> reply = answerTo(bus, get, askPatience);
    return reply.isValid() ? reply.value().variant() : QVariant();
}

} // namespace

std::unique_ptr<RemovableDrives> RemovableDrives::ofSystem()
{
    return std::make_unique<UDisks>();
}

UDisks::UDisks(const QDBusConnection &bus)
    : m_bus(bus)
{}

std::unique_ptr<RemovableDrive> UDisks::driveOf(const QString &folder)
{
    const QString device = QString::fromLocal8Bit(QStorageInfo(folder).device());
    return device.startsWith(QLatin1String("/dev/")) ? driveOfDevice(device) : nullptr;
}

std::unique_ptr<RemovableDrive> UDisks::driveOfDevice(const QString &device)
{
    if (!m_bus)
        m_bus = QDBusConnection::systemBus();
    if (!m_bus->isConnected())
        return nullptr;
    QDBusMessage resolve = methodCall(QLatin1String(manager), managerInterface, "ResolveDevice");
    resolve << QVariantMap{{QStringLiteral("path"), device}} << QVariantMap();
    const QDBusPendingReply<QList<QDBusObjectPath>> volumes =
        answerTo(*m_bus, resolve, askPatience);
    if (!volumes.isValid() || volumes.value().isEmpty())
        return nullptr;
    const QString volume = volumes.value().constFirst().path();
    const auto drive = propertyOf(*m_bus, volume, blockInterface, "Drive").value<QDBusObjectPath>();
    auto found = std::make_unique<UDisksDrive>(*m_bus, volume, drive.path());
    return found->isRemovable() ? std::move(found) : nullptr;
}

UDisksDrive::UDisksDrive(const QDBusConnection &bus, const QString &volume, const QString &drive)
    : m_bus(bus)
    , m_volume(volume)
    , m_drive(drive)
{}

bool UDisksDrive::isRemovable() const
{
    return m_drive.size() > 1 && is("Removable"); // "/" stands for no drive
}

RemovableDrive::Ejection UDisksDrive::eject()
{
    // A reader with several slots is not to be switched off for one of its cards.
    const bool hasMedium = is("MediaRemovable") && is("Ejectable");
    const bool hasSwitch = is("CanPowerOff");
    QString cause = call(m_volume, filesystemInterface, "Unmount");
    if (!cause.isEmpty())
        return {Ejection::Result::Failed, cause};
    if (hasMedium)
        cause = call(m_drive, driveInterface, "Eject");
    else if (hasSwitch)
        cause = call(m_drive, driveInterface, "PowerOff");
    if (!cause.isEmpty())
        return {Ejection::Result::Unmounted, cause};
    return {Ejection::Result::Ejected, {}};
}

QString UDisksDrive::call(const QString &object, const char *interface, const char *method)
{
    QDBusMessage message = methodCall(object, interface, method);
    message << QVariantMap();
    message.setInteractiveAuthorizationAllowed(true);
    const QDBusMessage answer = answerTo(m_bus, message, ejectPatience);
    if (answer.type() == QDBusMessage::ReplyMessage)
        return {};
    const QString name = answer.errorName();
    if (name.endsWith(QLatin1String(".NotMounted")))
        return {}; // somebody was quicker
    if (name.endsWith(QLatin1String(".DeviceBusy")))
        return tr("un altro programma la sta usando: chiudilo e riprova");
    if (name.contains(QLatin1String(".NotAuthorized")))
        return tr("il sistema non lo permette");
    if (name.isEmpty() || name.endsWith(QLatin1String(".NoReply"))) // empty: the program is to end
        return tr("il sistema non ha risposto");
    return answer.errorMessage().isEmpty() ? name : answer.errorMessage();
}

bool UDisksDrive::is(const char *property) const
{
    return propertyOf(m_bus, m_drive, driveInterface, property).toBool();
}

} // namespace tarvel4
