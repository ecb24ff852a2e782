#pragma once

#include <QByteArrayList>

namespace tarvel4 {

/** The process's streams, locale and signals: the one place that speaks to the system, not to Qt.
 */
namespace Console {

enum Stream { Input = 0, Output = 1, Error = 2 };

/**
 * To be called before Qt is: keeps file names in UTF-8 whatever the locale, turns a closed pipe or
 * a file size limit into a failed write, and makes interrupted() tell of SIGINT, SIGTERM and
 * SIGHUP; on Windows of Ctrl+C, Ctrl+Break, and of a window that is closed (of a session that ends
 * it tells no program that loads user32.dll, as Qt does). A second one ends the process.
 */
void prepare();

/** The words behind the program's name, in UTF-8 where they are text. */
QByteArrayList words(int argc, char **argv);

bool isTerminal(Stream stream);

/** True where colours are welcome: in a terminal that has them, and NO_COLOR is not set. */
bool hasColours(Stream stream);

/** Width of the terminal behind standard error. */
int columns();

/** Writes all of \a bytes at once, without a buffer; false when any is missing. */
bool write(Stream stream, const QByteArray &bytes);

/** True once nobody read standard output any more, as behind "| head". */
bool isPipeClosed();

/** Reads a line of standard input; false at its end, and when a signal came instead. */
bool readLine(QByteArray &line);

/** Reads standard input to its end; false, with the system's error set, when it can't be read or a
 * signal came. */
bool readAll(QByteArray &bytes);

/** True once the user or the system asked to stop. */
bool interrupted();

} // namespace Console

} // namespace tarvel4
