#include "ui/udisks.h"

#include "tests/library/texts.h"
#include "tests/storage/table.h"

#include <QDBusAbstractAdaptor>
#include <QDBusContext>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QProcess>
#include <QtTest>

using namespace tarvel4;

/** What the service in the test knows and was asked for. */
struct FakeService
{
    bool isRemovable = true;
    bool hasMedium = false; ///< that can be taken out and ejected
    bool hasSwitch = false;
    QString drive = text("/org/freedesktop/UDisks2/drives/Card");
    QString failing; ///< a method
    QString error;
    bool isSilent = false; ///< never answers a method
    QStringList calls;

    void called(const QString &method, const QDBusContext &context)
    {
        calls += method;
        context.setDelayedReply(isSilent);
        if (method == failing)
            context.sendErrorReply(error, text("words of the system"));
    }
};

/** An object on the bus, of which each adaptor is an interface. */
class FakeObject : public QObject, public QDBusContext
{
    Q_OBJECT

public:
    explicit FakeObject(FakeService &fake)
        : service(fake)
    {}

    FakeService &service;
};

class FakeManager : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.UDisks2.Manager")

public:
    explicit FakeManager(QObject *object)
        : QDBusAbstractAdaptor(object)
    {}

public Q_SLOTS:
    QList<QDBusObjectPath> ResolveDevice(const QVariantMap &device, const QVariantMap &)
    {
        if (device.value(text("path")) != text("/dev/sdz1"))
            return {};
        return {QDBusObjectPath(text("/org/freedesktop/UDisks2/block_devices/sdz1"))};
    }
};

class FakeBlock : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.UDisks2.Block")
    Q_PROPERTY(QDBusObjectPath Drive READ drive)

public:
    explicit FakeBlock(QObject *object)
        : QDBusAbstractAdaptor(object)
    {}

    QDBusObjectPath drive() const
    {
        return QDBusObjectPath(static_cast<FakeObject *>(parent())->service.drive);
    }
};

class FakeFilesystem : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.UDisks2.Filesystem")

public:
    explicit FakeFilesystem(QObject *object)
        : QDBusAbstractAdaptor(object)
    {}

public Q_SLOTS:
    void Unmount(const QVariantMap &)
    {
        auto *object = static_cast<FakeObject *>(parent());
        object->service.called(text("Unmount"), *object);
    }
};

class FakeDrive : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.UDisks2.Drive")
    Q_PROPERTY(bool Removable READ isRemovable)
    Q_PROPERTY(bool MediaRemovable READ hasMedium)
    Q_PROPERTY(bool Ejectable READ hasMedium)
    Q_PROPERTY(bool CanPowerOff READ hasSwitch)

public:
    explicit FakeDrive(QObject *object)
        : QDBusAbstractAdaptor(object)
    {}

    bool isRemovable() const { return service().isRemovable; }
    bool hasMedium() const { return service().hasMedium; }
    bool hasSwitch() const { return service().hasSwitch; }

public Q_SLOTS:
    void Eject(const QVariantMap &) { called("Eject"); }
    void PowerOff(const QVariantMap &) { called("PowerOff"); }

private:
    FakeService &service() const { return static_cast<FakeObject *>(parent())->service; }
    void called(const char *method)
    {
        service().called(text(method), *static_cast<FakeObject *>(parent()));
    }
};

/** Cards and sticks by the service of a Linux desktop, played by this test on a bus of its own. */
class tst_UDisks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_daemon.start(text("dbus-daemon"), strings({"--session", "--nofork", "--print-address"}));
        if (!m_daemon.waitForStarted())
            QSKIP("There is no dbus-daemon here");
        QVERIFY(m_daemon.waitForReadyRead());
        m_address = QString::fromLatin1(m_daemon.readLine()).trimmed();
        QVERIFY(connection("asks").isConnected());
        qDBusRegisterMetaType<QList<QDBusObjectPath>>();
    }
    void cleanupTestCase()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    void ejections_data()
    {
        using Result = RemovableDrive::Ejection::Result;
        const Table<bool, bool, QString, QString, int, QString, QString> row;
        const auto add = [&row](const char *name, bool hasMedium, bool hasSwitch,
                                const QString &failing, const QString &error, Result result,
                                const QString &calls, const QString &cause) {
            row(name, hasMedium, hasSwitch, failing, error, static_cast<int>(result), calls, cause);
        };
        const QString failed = text("org.freedesktop.UDisks2.Error.Failed");
        add("a card in a reader", true, true, {}, {}, Result::Ejected, text("Unmount Eject"), {});
        add("a stick", false, true, {}, {}, Result::Ejected, text("Unmount PowerOff"), {});
        add("what can only be unmounted", false, false, {}, {}, Result::Ejected, text("Unmount"),
            {});
        add("a card that is not unmounted is not ejected", true, true, text("Unmount"), failed,
            Result::Failed, text("Unmount"), text("words of the system"));
        add("a card in use", true, false, text("Unmount"),
            text("org.freedesktop.UDisks2.Error.DeviceBusy"), Result::Failed, text("Unmount"),
            text("un altro programma la sta usando: chiudilo e riprova"));
        add("a user who may not", true, false, text("Unmount"),
            text("org.freedesktop.UDisks2.Error.NotAuthorizedCanObtain"), Result::Failed,
            text("Unmount"), text("il sistema non lo permette"));
        add("a service that went away", true, false, text("Unmount"),
            text("org.freedesktop.DBus.Error.NoReply"), Result::Failed, text("Unmount"),
            text("il sistema non ha risposto"));
        add("one that somebody else unmounted", true, false, text("Unmount"),
            text("org.freedesktop.UDisks2.Error.NotMounted"), Result::Ejected,
            text("Unmount Eject"), {});
        add("a reader that keeps its card", true, true, text("Eject"), failed, Result::Unmounted,
            text("Unmount Eject"), text("words of the system"));
        add("a stick that stays on", false, true, text("PowerOff"), failed, Result::Unmounted,
            text("Unmount PowerOff"), text("words of the system"));
    }
    void ejections()
    {
        const auto [hasMedium, hasSwitch, failing, error, result, calls, cause] =
            cells<bool, bool, QString, QString, int, QString, QString>();
        FakeService fake;
        fake.hasMedium = hasMedium;
        fake.hasSwitch = hasSwitch;
        fake.failing = failing;
        fake.error = error;
        serve(fake);
        const auto drive = UDisks(connection("asks")).driveOfDevice(text("/dev/sdz1"));
        QVERIFY(drive);
        QVERIFY2(fake.calls.isEmpty(), "nothing is done before it is asked for");
        const RemovableDrive::Ejection ejection = drive->eject();
        QCOMPARE(fake.calls.join(QLatin1Char(' ')), calls);
        QCOMPARE(static_cast<int>(ejection.result), result);
        QCOMPARE(ejection.cause, cause);
    }

    void otherDrivesAreLeftAlone_data()
    {
        const Table<QString, bool, QString> row;
        row("a disk that is built in", "/dev/sdz1", false, "/org/freedesktop/UDisks2/drives/Card");
        row("a volume without a drive", "/dev/sdz1", true, "/");
        row("a device that the service does not know", "/dev/sdz2", true,
            "/org/freedesktop/UDisks2/drives/Card");
    }
    void otherDrivesAreLeftAlone()
    {
        const auto [device, isRemovable, drive] = cells<QString, bool, QString>();
        FakeService fake;
        fake.isRemovable = isRemovable;
        fake.drive = drive;
        serve(fake);
        QVERIFY(!UDisks(connection("asks")).driveOfDevice(device));
        QVERIFY(!UDisks(connection("asks")).driveOf(text("/proc"))); // on no device
    }

    void noServiceNoDrive()
    {
        QVERIFY(!UDisks(connection("asks")).driveOfDevice(text("/dev/sdz1")));
    }

    void noBusNoDrive()
    {
        const QDBusConnection none =
            QDBusConnection::connectToBus(text("unix:path=none"), text("n"));
        QVERIFY(!UDisks(none).driveOfDevice(text("/dev/sdz1")));
    }

    /** The last one: after an exit no event loop goes on. */
    void noAnswerIsNoSuccess()
    {
        FakeService fake;
        fake.isSilent = true;
        serve(fake);
        const auto drive = UDisks(connection("asks")).driveOfDevice(text("/dev/sdz1"));
        QVERIFY(drive);
        QTimer::singleShot(100, [] { QCoreApplication::exit(); });
        const RemovableDrive::Ejection ejection = drive->eject();
        QVERIFY(ejection.result == RemovableDrive::Ejection::Result::Failed);
        QCOMPARE(ejection.cause, text("il sistema non ha risposto"));
    }

    void cleanup()
    {
        m_objects.clear();
        QDBusConnection::disconnectFromBus(text("serves"));
    }

private:
    QDBusConnection connection(const char *name) const
    {
        const QDBusConnection known(text(name));
        return known.isConnected() ? known : QDBusConnection::connectToBus(m_address, text(name));
    }

    void serve(FakeService &fake)
    {
        QDBusConnection bus = connection("serves");
        QObject *manager = addObject(bus, fake, text("/org/freedesktop/UDisks2/Manager"));
        new FakeManager(manager);
        QObject *volume = addObject(bus, fake, text("/org/freedesktop/UDisks2/block_devices/sdz1"));
        new FakeBlock(volume);
        new FakeFilesystem(volume);
        new FakeDrive(addObject(bus, fake, text("/org/freedesktop/UDisks2/drives/Card")));
        QVERIFY(bus.registerService(text("org.freedesktop.UDisks2")));
    }
    QObject *addObject(QDBusConnection &bus, FakeService &fake, const QString &path)
    {
        m_objects.push_back(std::make_unique<FakeObject>(fake));
        bus.registerObject(path, m_objects.back().get());
        return m_objects.back().get();
    }

    QProcess m_daemon;
    QString m_address;
    std::vector<std::unique_ptr<FakeObject>> m_objects;
};

QTEST_GUILESS_MAIN(tst_UDisks)
#include "tst_udisks.moc"
