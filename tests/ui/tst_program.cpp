#include "app/startup.h"
#include "tests/storage/table.h"
#include "tests/ui/forms.h"

#include <QAction>
#include <QMenu>

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
    void startsWithItsLanguageAndItsLooks_data()
    {
        const Table<QString, QString, QString> row;
        row("it: the Italian texts", "it", "actionItalian", "Aiuto");
        row("en: the English translation", "en", "actionEnglish", "Help");
        row("de: the English translation, too", "de", "actionGerman", "Help");
        row("any other language: the English translation", "fr", "actionEnglish", "Help");
    }
    void startsWithItsLanguageAndItsLooks()
    {
        const auto [language, ticked, expected] = cells<QString, QString, QString>();
        settings().clear();
        settings().setValue(text("language"), language);
        QStringList languages;
        QString help;
        QPalette palette;
        QString style;
        atStart = [&] {
            QWidget *window = mainWindow();
            QVERIFY(window);
            for (const QAction *action : child<QMenu>(*window, "menuLanguage")->actions()) {
                if (action->isChecked())
                    languages.append(action->objectName());
            }
            help = child<QMenu>(*window, "menuHelp")->title();
            palette = QApplication::palette();
            style = qApp->styleSheet();
            window->close();
        };
        char name[] = "tst_program";
        char *arguments[] = {name, nullptr};
        QCOMPARE(Startup::runProgram(1, arguments), 0);

        QCOMPARE(languages.join(QLatin1Char(' ')), ticked);
        QCOMPARE(help, expected);
        QCOMPARE(palette.color(QPalette::Link), QColor(0x0b, 0x72, 0x85));
        QCOMPARE(palette.color(QPalette::LinkVisited), QColor(0x0b, 0x72, 0x85));
        QFile sheet(text(":/style/default.qss"));
        QVERIFY(sheet.open(QIODevice::ReadOnly));
        QCOMPARE(style, QString::fromLatin1(sheet.readAll()));
    }
};

QTEST_APPLESS_MAIN(tst_Program)
#include "tst_program.moc"
