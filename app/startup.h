#pragma once

#include <QLocale>
#include <QString>

namespace tarvel4 {

/** The program, and the steps that lead to its window, in the order in which they are taken. */
namespace Startup {

/** Shows the window; returns when the program ends, with its exit code. */
int runProgram(int argc, char *argv[]);

/** What the settings say before there is an application object. */
struct Options
{
    QString language; ///< "--" when never chosen
    bool logEnabled = false;
    bool logClear = false;
};

Options readSettings();

/** Installs the log's handler, on a cleared log where that is asked for, and writes the banner; or
 * the silent handler. */
void openLog(const Options &options);

/** What must be said to Qt and to the system before the application object exists. */
void setAttributes();

/** The language to start with: the stored one, or at the first run the system's, which is stored.
 */
QString chooseLanguage(const QString &stored, QLocale::Language system);

} // namespace Startup

} // namespace tarvel4
