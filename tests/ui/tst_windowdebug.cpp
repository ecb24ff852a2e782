#include "tests/library/logcapture.h"
#include "tests/ui/windowfixture.h"

#include "ui/dataeditdialog.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QSpinBox>

using namespace tarvel4;

/** The hidden panels: the log's settings, and what developers try songs and styles with. */
class tst_WindowDebug : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void debugPanelsAreHidden();
    void logBoxesShowAndKeepTheSettings_data();
    void logBoxesShowAndKeepTheSettings();
    void hideTogglesTheDebugPanel();
    void reloadStyleReadsTheProgramsFolder();
    void developersSave();
    void developersMarker();
    void developersDialog_data();
    void developersDialog();

private:
    QStringList import(int songs);

    QScopedPointer<WindowFixture> m_window;
};

void tst_WindowDebug::init()
{
    m_window.reset(new WindowFixture);
    m_window->settings().setValue(QStringLiteral("copyrightAsk"), false);
    m_window->settings().sync();
    m_window->open();
}

/** Imports as many songs and returns their paths. */
QStringList tst_WindowDebug::import(int songs)
{
    QStringList paths;
    for (int i = 0; i < songs; ++i)
        paths.append(m_window->addSong(QStringLiteral("s%1.mid").arg(i), "Song"));
    m_window->import(paths);
    return paths;
}

void tst_WindowDebug::cleanup()
{
    const QString problems = m_window->driver.problems();
    m_window.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems));
}

void tst_WindowDebug::debugPanelsAreHidden()
{
    QVERIFY(m_window->find<QGroupBox>("debugGroupBox")->isHidden());
    QVERIFY(m_window->find<QGroupBox>("debugKvaroGroupBox")->isHidden());
}

void tst_WindowDebug::logBoxesShowAndKeepTheSettings_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("key");
    QTest::newRow("the log is enabled")
        << QStringLiteral("dbgLogEnableCheckBox") << QStringLiteral("logenabled");
    QTest::newRow("the log is cleared")
        << QStringLiteral("dbgLogClearCheckBox") << QStringLiteral("logclear");
}

void tst_WindowDebug::logBoxesShowAndKeepTheSettings()
{
    QFETCH(QString, box);
    QFETCH(QString, key);
    m_window->find<QGroupBox>("debugKvaroGroupBox")->show();
    QCheckBox *found = m_window->window->findChild<QCheckBox *>(box);
    QVERIFY(!found->isChecked());
    QVERIFY(!m_window->settings().contains(key));
    found->click();
    QCOMPARE(m_window->settings().value(key).toBool(), true);

    m_window->window.reset();
    m_window->open(); // the next window shows what was kept
    found = m_window->window->findChild<QCheckBox *>(box);
    QVERIFY(found->isChecked());
    found->click();
    QCOMPARE(m_window->settings().value(key).toBool(), false);
}

void tst_WindowDebug::hideTogglesTheDebugPanel()
{
    auto *panel = m_window->find<QGroupBox>("debugGroupBox");
    auto *button = m_window->find<QPushButton>("dbgHidePushButton");
    button->click();
    QVERIFY(panel->isVisible());
    button->click();
    QVERIFY(!panel->isVisible());
}

void tst_WindowDebug::reloadStyleReadsTheProgramsFolder()
{
    const QString file = QCoreApplication::applicationDirPath() + QStringLiteral("/default.qss");
    QVERIFY(!QFile::exists(file));
    m_window->write(file, "QLabel#nobody { color: red }");
    m_window->find<QPushButton>("dbgReloadStylePushButton")->click();
    QFile::remove(file);
    const QString applied = qApp->styleSheet();
    qApp->setStyleSheet(QString());
    QCOMPARE(applied, QStringLiteral("QLabel#nobody { color: red }"));
}

void tst_WindowDebug::developersSave()
{
    const QStringList songs = import(2);
    m_window->find<QPushButton>("dbgSavePushButton")->click(); // no row selected: nothing
    QVERIFY(!QFile::exists(m_window->path("test_save.bin")));
    m_window->table()->selectRow(1);
    const LogCapture log;
    m_window->find<QPushButton>("dbgSavePushButton")->click();
    QCOMPARE(LogCapture::lines().mid(0, 2),
             QStringList({QStringLiteral("[MainWindow] Saving row:  1"),
                          QStringLiteral("Saving to file:  \"test_save.bin\"")}));
    QCOMPARE(LogCapture::lines().constLast(), QStringLiteral("Ok"));
    QCOMPARE(WindowFixture::read(m_window->path("test_save.bin")),
             WindowFixture::read(songs.at(1)));
}

void tst_WindowDebug::developersMarker()
{
    const QStringList songs = import(1);
    const QByteArray before = WindowFixture::read(songs.at(0));
    m_window->table()->selectRow(0);
    m_window->find<QLineEdit>("dbgMarkerTextLineEdit")->setText(QStringLiteral("Refrain"));
    m_window->find<QSpinBox>("dbgMarkerBarSpinBox")->setValue(7);
    const LogCapture log;
    m_window->find<QPushButton>("dbgAddMarkerPushButton")->click();
    QVERIFY(LogCapture::has(QStringLiteral("[MainWindow] Adding marker to row:  0")));
    QVERIFY(WindowFixture::read(m_window->path("test_addmarker.bin")).contains("Refrain"));
    QCOMPARE(WindowFixture::read(songs.at(0)), before);
}

void tst_WindowDebug::developersDialog_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("saved") << QStringLiteral("savePushButton") << QByteArray("Accettato");
    QTest::newRow("left") << QStringLiteral("exitPushButton") << QByteArray("Rifiutato");
}

void tst_WindowDebug::developersDialog()
{
    QFETCH(QString, button);
    QFETCH(QByteArray, line);
    m_window->driver.click<DataEditDialog>(button);
    QTest::ignoreMessage(QtDebugMsg, line.constData());
    m_window->find<QPushButton>("dbgShowDialogPushButton")->click();
}

QTEST_MAIN(tst_WindowDebug)
#include "tst_windowdebug.moc"
