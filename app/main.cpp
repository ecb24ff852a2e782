#include "app/quitsignals.h"
#include "app/startup.h"
#include "ui/appearance.h"
#include "ui/mainwindow.h"

#include <QApplication>
#include <QTranslator>

int main(int argc, char *argv[])
{
    const Startup::Options options = Startup::readSettings();
    Startup::openLog(options);
    Startup::setAttributes();

    QApplication app(argc, argv);
    QTranslator translator;
    Appearance::speak(translator,
                      Startup::chooseLanguage(options.language, QLocale::system().language()));
    Appearance::colourLinks();
    Appearance::applyStyleSheet(QStringLiteral(":/style/default.qss"));

    MainWindow window;
    QuitSignals::callOnSignal(&app, [&window] { window.quit(); });
    window.show();
    return QApplication::exec();
}
