#pragma once

#include "ui/removabledrive.h"

#include <QCoreApplication>
#include <QDBusConnection>

#include <optional>

QT_BEGIN_NAMESPACE
class QDBusMessage;
class QDBusObjectPath;
QT_END_NAMESPACE

namespace tarvel4 {

/** The drives that the service UDisks2 of a Linux desktop knows. */
class UDisks : public RemovableDrives
{
public:
    UDisks() = default;
    /** Another bus than the system's, which is connected to when it is first asked. */
    explicit UDisks(const QDBusConnection &bus);

    std::unique_ptr<RemovableDrive> driveOf(const QString &folder) override;
    /** The same by the file of its device: /dev/sdb1. */
    std::unique_ptr<RemovableDrive> driveOfDevice(const QString &device);

private:
    std::optional<QDBusConnection> m_bus;
};

/** One of them: the volume that is mounted, and what it is in. */
class UDisksDrive : public RemovableDrive
{
    Q_DECLARE_TR_FUNCTIONS(UDisksDrive)

public:
    UDisksDrive(const QDBusConnection &bus, const QString &volume, const QString &drive);

    bool isRemovable() const;
    Ejection eject() override;

private:
    /** Why a method failed; empty where it did not. */
    QString call(const QString &object, const char *interface, const char *method);
    bool is(const char *property) const;

    QDBusConnection m_bus;
    QString m_volume;
    QString m_drive;
};

} // namespace tarvel4
