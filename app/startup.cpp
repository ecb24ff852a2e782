#include "app/startup.h"

#include "app/commandline.h"
#include "app/display.h"
#include "app/printtext.h"
#include "app/quitsignals.h"
#include "library/messagelog.h"
#include "library/usersettings.h"
#include "ui/appearance.h"
#include "ui/mainwindow.h"
#include "ui/schemefollower.h"

#include <QApplication>
#include <QFile>
#include <QTranslator>

#ifdef Q_OS_UNIX
#include <csignal>
#endif
#include <cstdio>

namespace tarvel4 {

namespace {

const QLatin1String notChosen("--");

enum ProgramStatus { Done = 0, Failed = 1, Usage = 2 };

QString systemLanguage(QLocale::Language system)
{
    // required: the name decides
    const bool italian = QLocale::languageToString(system) == QLatin1String("Italian");
    return italian ? QStringLiteral("it") : QStringLiteral("en");
}

int print(std::FILE *stream, const QString &text, ProgramStatus status)
{
    return printText(stream, text) ? status : Failed;
}

/** A run without a window, whose texts are in the user's language, which is not stored. */
class WindowlessProgram
{
public:
    WindowlessProgram(int &argc, char *argv[], const QString &language)
        : m_app(argc, argv)
    {
        Appearance::installLanguage(
            m_translator,
            language == notChosen ? systemLanguage(QLocale::system().language()) : language);
    }

private:
    QCoreApplication m_app;
    QTranslator m_translator;
};

int sayUnknownOption(const QByteArray &option)
{
    const QString text = QCoreApplication::translate(
        "CommandLine", "tarvel4soft: opzione sconosciuta: %1 (--help mostra quelle che ci sono)\n");
    return print(stderr, text.arg(CommandLine::decoded(option)), Usage);
}

int sayNoDisplay()
{
    return print(stderr,
                 QCoreApplication::translate(
                     "CommandLine",
                     "tarvel4soft: nessuno schermo raggiungibile, la finestra non si apre.\n"),
                 Failed);
}

} // namespace

int Startup::runProgram(int argc, char *argv[])
{
    const Options options = readSettings();
    const CommandLine asked(argc, argv);
    if (asked.asksForHelp() || asked.asksForVersion()) {
        const WindowlessProgram program(argc, argv, options.language);
        return print(stdout, asked.asksForHelp() ? CommandLine::help() : CommandLine::version(),
                     Done);
    }
    openLog(options);
    const Display display(argc, argv);
    if (!display.isReachable()) {
        qCritical("No display can be reached");
        const WindowlessProgram program(argc, argv, options.language);
        return sayNoDisplay();
    }
    setAttributes();

    QApplication app(argc, argv);
    QTranslator translator;
    Appearance::installLanguage(translator,
                                chooseLanguage(options.language, QLocale::system().language()));
    const CommandLine commandLine(argc, argv); // what Qt has left of it
    if (!commandLine.unknownOption().isEmpty())
        return sayUnknownOption(commandLine.unknownOption());
    const SchemeFollower follower;
    Appearance::applyStyleSheet(QStringLiteral(":/style/default.qss"));

    std::unique_ptr<MainWindow> window;
    // before the window copies the catalogue; what comes until then waits for the event loop
    QuitSignals::callOnSignal(&app, [&window] { window->quit(); });
    window = std::make_unique<MainWindow>();
    if (!commandLine.paths().isEmpty() || !commandLine.unreachable().isEmpty())
        window->importWhenShown(commandLine.paths(), commandLine.unreachable());
    window->show();
    return QApplication::exec();
}

Startup::Options Startup::readSettings()
{
    Options options;
    options.language = UserSettings::language(notChosen);
    options.logEnabled = UserSettings::logEnabled();
    options.logClear = UserSettings::logClear();
    return options;
}

void Startup::openLog(const Options &options)
{
    if (!options.logEnabled) { // required: the old log is kept
        MessageLog::silence();
        return;
    }
    if (options.logClear)
        QFile::remove(QString::fromLatin1(MessageLog::fileName));
    MessageLog::start();
}

void Startup::setAttributes()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) // what it does later without being asked
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
#ifdef Q_OS_WIN
    // it takes the palette's colours, dark ones too; the style of Windows has colours of its own
    QApplication::setStyle(QStringLiteral("fusion"));
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "windows:darkmode=3"); // frame and palette as the desktop's
#endif
#ifdef Q_OS_UNIX
    std::signal(SIGXFSZ, SIG_IGN); // a file that grows too large is a failed write, not the end
#endif
}

QString Startup::chooseLanguage(const QString &stored, QLocale::Language system)
{
    if (stored != notChosen)
        return stored;
    const QString chosen = systemLanguage(system);
    UserSettings::setLanguage(chosen);
    return chosen;
}

} // namespace tarvel4
