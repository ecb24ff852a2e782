#include "app/startup.h"

#include <QtGlobal>

using namespace tarvel4;

#ifdef Q_OS_WIN

#include <QByteArray>
#include <QString>
#include <QVector>

#include <windows.h>

#include <shellapi.h>

/** The words in UTF-8: those that main() is given lack the letters that an old code page lacks. */
int main(int, char *[])
{
    int count = 0;
    wchar_t **wide = CommandLineToArgvW(GetCommandLineW(), &count);
    QVector<QByteArray> words;
    for (int i = 0; i < count; ++i)
        words += QString::fromWCharArray(wide[i]).toUtf8();
    LocalFree(wide);
    QVector<char *> arguments;
    for (QByteArray &word : words)
        arguments += word.data();
    arguments += nullptr;
    return Startup::runProgram(count, arguments.data());
}

#else

int main(int argc, char *argv[])
{
    return Startup::runProgram(argc, argv);
}

#endif
