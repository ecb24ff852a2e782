#include "tests/library/texts.h"
#include "tests/storage/table.h"
#include "ui/appearance.h"
#include "ui/schemefollower.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QtTest>

#include <optional>

using namespace tarvel4;

namespace {

const QString path = text("/org/freedesktop/portal/desktop");
const QString settingsInterface = text("org.freedesktop.portal.Settings");
const QString appearance = text("org.freedesktop.appearance");

/** A portal that says which scheme it has: 0 for none, 1 dark, 2 light; it answers on demand. */
class FakePortal : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        asked += message.member() + QLatin1Char(' ') + message.arguments().value(0).toString()
            + QLatin1Char(' ') + message.arguments().value(1).toString();
        if (isDeaf) {
            bus.send(message.createErrorReply(QDBusError::UnknownMethod, text("x")));
            return true;
        }
        // in a variant of its own, as the real one does
        const QVariant inner = QVariant::fromValue(QDBusVariant(scheme));
        bus.send(message.createReply(QVariant::fromValue(QDBusVariant(inner))));
        return true;
    }

    uint scheme = 0;
    bool isDeaf = false;
    QStringList asked;
};

} // namespace

/** A desktop that says only by its portal whether it is dark. */
class tst_PortalScheme : public QObject
{
    Q_OBJECT

public:
    explicit tst_PortalScheme(const QString &address)
        : m_address(address)
    {}

private Q_SLOTS:
    void init()
    {
        if (m_address.isEmpty())
            QSKIP("There is no dbus-daemon.");
        m_before = QApplication::palette();
        m_portal.emplace();
        m_bus.emplace(QDBusConnection::connectToBus(m_address, text("portal")));
        QVERIFY(m_bus->registerVirtualObject(path, &*m_portal));
    }
    void cleanup()
    {
        m_bus.reset();
        QDBusConnection::disconnectFromBus(text("portal"));
        m_portal.reset();
        QApplication::setPalette(m_before);
    }

    void schemeIsAskedFor_data()
    {
        const Table<uint, bool, bool> row;
        row("no preference", 0U, false, false);
        row("dark", 1U, false, true);
        row("light", 2U, false, false);
        row("what there may be once", 7U, false, false);
        row("no preference, and a dark palette", 0U, true, true);
        row("dark, and a dark palette", 1U, true, true);
    }
    void schemeIsAskedFor()
    {
        const auto [scheme, hasDarkPalette, isDark] = cells<uint, bool, bool>();
        m_portal->scheme = scheme;
        paint(hasDarkPalette);
        serve();
        const SchemeFollower follower;
        QTRY_COMPARE(m_portal->asked,
                     QStringList(text("Read org.freedesktop.appearance color-scheme")));
        QTRY_COMPARE(isShownDark(), isDark);
        QTest::qWait(30); // the answer may still be on its way
        QCOMPARE(isShownDark(), isDark);
    }

    void changesAreFollowed()
    {
        paint(false);
        serve();
        m_portal->scheme = 1;
        const SchemeFollower follower;
        QTRY_VERIFY(isShownDark());
        for (const uint scheme : {2U, 1U, 0U, 1U, 2U}) {
            change(appearance, text("color-scheme"), scheme);
            QTRY_COMPARE(isShownDark(), scheme == 1);
        }
        change(appearance, text("contrast"), 1);
        change(text("org.example"), text("color-scheme"), 1);
        QTest::qWait(50);
        QVERIFY(!isShownDark());
    }

    void paletteIsFollowedAsWell()
    {
        paint(false);
        m_portal->scheme = 1;
        serve();
        const SchemeFollower follower;
        QTRY_VERIFY(isShownDark());
        paint(false); // the desktop paints its light colours over ours
        QTRY_VERIFY(isShownDark());
        change(appearance, text("color-scheme"), 0);
        QTRY_VERIFY(!isShownDark());
        paint(true);
        QTRY_VERIFY(isShownDark());
    }

    void noAnswerIsNone_data()
    {
        const Table<bool> row;
        row("nobody has the name", false);
        row("a portal without that setting", true);
    }
    void noAnswerIsNone()
    {
        const auto [isThere] = cells<bool>();
        paint(false);
        m_portal->isDeaf = true;
        if (isThere)
            serve();
        const SchemeFollower follower;
        if (isThere)
            QTRY_VERIFY(!m_portal->asked.isEmpty());
        QTest::qWait(100);
        QVERIFY(!isShownDark());
        QCOMPARE(m_portal->asked.isEmpty(), !isThere);
    }

private:
    void serve() { QVERIFY(m_bus->registerService(text("org.freedesktop.portal.Desktop"))); }

    void change(const QString &group, const QString &key, uint value) const
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(path, settingsInterface, text("SettingChanged"));
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        QVERIFY(m_bus->send(signal));
    }

    /** As the desktop does it. */
    static void paint(bool isDark)
    {
        const QColor light(0xffefefef);
        const QColor black(0xff101010);
        QApplication::setPalette(isDark
                                     ? QPalette(light, black, black, black, black, light, black)
                                     : QPalette(black, light, light, light, light, black, light));
    }

    static bool isShownDark()
    {
        return QApplication::palette().color(QPalette::Window)
            == Colours::palette(Colours::Scheme::Dark).color(QPalette::Window);
    }

    const QString m_address;
    QPalette m_before;
    std::optional<FakePortal> m_portal;
    std::optional<QDBusConnection> m_bus;
};

/** The bus comes before the application, whose it is. */
int main(int argc, char *argv[])
{
    QProcess daemon;
    daemon.start(text("dbus-daemon"),
                 {text("--session"), text("--nofork"), text("--print-address")});
    QString address;
    if (daemon.waitForStarted() && daemon.waitForReadyRead())
        address = QString::fromLatin1(daemon.readLine()).trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.toLatin1());
    int failures = 0;
    {
        QApplication app(argc, argv);
        tst_PortalScheme test(address);
        failures = QTest::qExec(&test, argc, argv);
    }
    daemon.kill();
    daemon.waitForFinished();
    return failures;
}

#include "tst_portalscheme.moc"
