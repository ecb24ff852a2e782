#include "cli/console.h"
#include "cli/program.h"
#include "library/messagelog.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

using namespace tarvel4;

namespace {

bool isItalian()
{
    const QStringList languages = QLocale::system().uiLanguages();
    return !languages.isEmpty() && QLocale(languages.first()).language() == QLocale::Italian;
}

} // namespace

int main(int argc, char **argv)
{
    Console::prepare();
    MessageLog::silence();
    const QByteArrayList words = Console::words(argc, argv);

    QCoreApplication application(argc, argv);
    QTranslator translator;
    const bool isLoaded = translator.load(isItalian() ? QStringLiteral(":/trans/tarvel4soft_it")
                                                      : QStringLiteral(":/trans/tarvel4soft_en"));
    Q_ASSERT(isLoaded); // it is part of the program
    Q_UNUSED(isLoaded)
    QCoreApplication::installTranslator(&translator);
    return static_cast<int>(Program(allCommands()).run(words));
}
