#include "app/startup.h"
#include "tests/library/texts.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QSettings>
#include <QtTest>

using namespace tarvel4;

namespace {

std::function<void()> atStart;

/** Has atStart called as the first event of the application object that has just been made. */
void scheduleAtStart()
{
    if (atStart)
        QMetaObject::invokeMethod(qApp, atStart, Qt::QueuedConnection);
}

QWidget *mainWindow()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (widget->isVisible() && widget->objectName() == text("MainWindow"))
            return widget;
    }
    return nullptr;
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(scheduleAtStart)

/** The program from its start to its end, seen from inside. */
class tst_Program : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithItsLanguageAndItsLooks_data();
    void startsWithItsLanguageAndItsLooks();
};

void tst_Program::startsWithItsLanguageAndItsLooks_data()
{
    QTest::addColumn<QStringList>("shown");
    QTest::newRow("it") << strings({"actionItalian", "Aiuto"});
    QTest::newRow("en") << strings({"actionEnglish", "Help"});
    QTest::newRow("de") << strings({"actionGerman", "Help"});
    QTest::newRow("fr") << strings({"actionEnglish", "Help"});
}

void tst_Program::startsWithItsLanguageAndItsLooks()
{
    {
        QSettings settings(text("kvaro"), text("tarvel4soft"));
        settings.clear();
        settings.setValue(text("language"), QLatin1String(QTest::currentDataTag()));
    }
    QStringList seen;
    QPalette palette;
    QString style;
    atStart = [&] {
        QWidget *window = mainWindow();
        QVERIFY(window);
        for (const QAction *action : window->findChild<QMenu *>(text("menuLanguage"))->actions()) {
            if (action->isChecked())
                seen.append(action->objectName());
        }
        seen.append(window->findChild<QMenu *>(text("menuHelp"))->title());
        palette = QApplication::palette();
        style = qApp->styleSheet();
        window->close();
    };
    char name[] = "tst_program";
    char *arguments[] = {name, nullptr};
    QCOMPARE(Startup::runProgram(1, arguments), 0);

    QTEST(seen, "shown");
    QCOMPARE(palette.color(QPalette::Link), QColor(0x0b, 0x72, 0x85));
    QCOMPARE(palette.color(QPalette::LinkVisited), QColor(0x0b, 0x72, 0x85));
    QFile sheet(text(":/style/default.qss"));
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    QCOMPARE(style, QString::fromLatin1(sheet.readAll()));
}

QTEST_APPLESS_MAIN(tst_Program)
#include "tst_program.moc"
