#include "app/startup.h"

#include "app/quitsignals.h"
#include "library/messagelog.h"
#include "library/usersettings.h"
#include "ui/appearance.h"
#include "ui/mainwindow.h"

#include <QApplication>
#include <QFile>
#include <QTranslator>

#ifdef Q_OS_UNIX
#include <csignal>
#endif

namespace tarvel4 {

namespace {

const QLatin1String notChosen("--");

} // namespace

int Startup::runProgram(int argc, char *argv[])
{
    const Options options = readSettings();
    openLog(options);
    setAttributes();

    QApplication app(argc, argv);
    QTranslator translator;
    Appearance::installLanguage(translator,
                                chooseLanguage(options.language, QLocale::system().language()));
    Appearance::colourLinks();
    Appearance::applyStyleSheet(QStringLiteral(":/style/default.qss"));

    std::unique_ptr<MainWindow> window;
    // before the window copies the catalogue; what comes until then waits for the event loop
    QuitSignals::callOnSignal(&app, [&window] { window->quit(); });
    window = std::make_unique<MainWindow>();
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
#ifdef Q_OS_UNIX
    std::signal(SIGXFSZ, SIG_IGN); // a file that grows too large is a failed write, not the end
#endif
}

QString Startup::chooseLanguage(const QString &stored, QLocale::Language system)
{
    if (stored != notChosen)
        return stored;
    const bool italian = QLocale::languageToString(system) == QLatin1String("Italian");
    const QString chosen = italian ? QStringLiteral("it") : QStringLiteral("en");
    UserSettings::setLanguage(chosen);
    return chosen;
}

} // namespace tarvel4
