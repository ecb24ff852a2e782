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
    QTest::addColumn<QString>("ticked");
    QTest::addColumn<QString>("help");
    QTest::newRow("it") << text("actionItalian") << text("Aiuto");
    QTest::newRow("en") << text("actionEnglish") << text("Help");
    QTest::newRow("de") << text("actionGerman") << text("Help");
    QTest::newRow("fr") << text("actionEnglish") << text("Help");
}

void tst_Program::startsWithItsLanguageAndItsLooks()
{
    QFETCH(QString, ticked);
    QFETCH(QString, help);
    {
        QSettings settings(text("kvaro"), text("tarvel4soft"));
        settings.clear();
        settings.setValue(text("language"), QLatin1String(QTest::currentDataTag()));
    }
    QStringList seenTicked;
    QString seenHelp;
    QPalette palette;
    QString style;
    atStart = [&] {
        QWidget *window = mainWindow();
        QVERIFY(window);
        for (const char *name : {"actionItalian", "actionEnglish", "actionGerman"}) {
            if (window->findChild<QAction *>(QLatin1String(name))->isChecked())
                seenTicked.append(QLatin1String(name));
        }
        seenHelp = window->findChild<QMenu *>(text("menuHelp"))->title();
        palette = QApplication::palette();
        style = qApp->styleSheet();
        window->close();
    };
    char name[] = "tst_program";
    char *arguments[] = {name, nullptr};
    QCOMPARE(Startup::runProgram(1, arguments), 0);

    QCOMPARE(seenTicked, QStringList({ticked}));
    QCOMPARE(seenHelp, help);
    QCOMPARE(palette.color(QPalette::Link), QColor(0x0b, 0x72, 0x85));
    QCOMPARE(palette.color(QPalette::LinkVisited), QColor(0x0b, 0x72, 0x85));
    QFile sheet(text(":/style/default.qss"));
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    QCOMPARE(style, QString::fromLatin1(sheet.readAll()));
}

QTEST_APPLESS_MAIN(tst_Program)
#include "tst_program.moc"
