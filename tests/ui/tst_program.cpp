#include "app/startup.h"
#include "tests/library/testfiles.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/table.h"
#include "tests/ui/forms.h"

#include <QAction>
#include <QMenu>
#include <QTableView>
#include <QTemporaryDir>

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
    void importsWhatItIsStartedWith_data()
    {
        const Table<QStringList, QString> row;
        row("a file", strings({"a.mid"}), "a.mid");
        row("files and a folder, in their order", strings({"b.kar", "below", "./a.mid"}),
            "b.kar c.mid a.mid");
        row("an absolute path", strings({"%1/below/../a.mid"}), "a.mid");
        row("a name that begins with a colon", strings({":d.mid"}), ":d.mid");
        row("a name that begins with a dash", strings({"--", "-e.mid"}), "-e.mid");
        row("a file that is no song", strings({"none.mid", "a.mid"}), "a.mid");
        row("nothing", {}, "");
    }
    void importsWhatItIsStartedWith()
    {
        const auto [words, names] = cells<QStringList, QString>();
        const QTemporaryDir folder;
        for (const char *name : {"a.mid", "b.kar", "below/c.mid", ":d.mid", "-e.mid"})
            TestFiles::write(folder.path() + QLatin1Char('/') + text(name), SongBytes::midi0());
        const QString home = QDir::currentPath();
        const auto back = qScopeGuard([&home] { QDir::setCurrent(home); });
        QDir::setCurrent(folder.path());
        settings().clear();
        settings().setValue(text("copyrightAsk"), false);
        QStringList found;
        atStart = [&, &words = words] {
            const QWidget *window = mainWindow();
            QVERIFY(window);
            const auto *table = child<QTableView>(*window, "userLibraryTableView");
            const auto *step = child<QWidget>(*window, "transferFilesToolButton");
            if (!words.isEmpty())
                QTRY_VERIFY(step->isEnabled()); // the import has ended
            for (int row = 0; row < table->model()->rowCount(); ++row)
                found += table->model()->index(row, 10).data().toString();
            mainWindow()->close();
        };
        QByteArrayList bytes{"tst_program"};
        for (const QString &word : words)
            bytes +=
                QFile::encodeName(word.contains(QLatin1Char('%')) ? word.arg(folder.path()) : word);
        QVector<char *> arguments;
        for (QByteArray &word : bytes)
            arguments += word.data();
        arguments += nullptr;
        QCOMPARE(Startup::runProgram(static_cast<int>(bytes.size()), arguments.data()), 0);
        QCOMPARE(found.join(QLatin1Char(' ')), names);
    }

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
            help = child<QMenu>(*window, "menuHelp")->title().remove(QLatin1Char('&'));
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
