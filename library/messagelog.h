#pragma once

#include <QString>
#include <QtGlobal>

namespace tarvel4 {

/** The log of a run: every debug line of the program, in "log.txt" of the working directory. */
namespace MessageLog {

constexpr char fileName[] = "log.txt";

/**
 * Message handler that appends one UTF-8 line, "[dd-MM-yyyy hh:mm:ss]D| text", to the log file and
 * closes it again, so that the log is whole up to the last line of a crash. Info messages are left
 * out; a log that can't be written loses the line; a fatal message ends the process.
 */
void writeMessage(QtMsgType type, const QMessageLogContext &context, const QString &text);

/** Message handler that drops everything; a fatal message still ends the process. */
void dropMessage(QtMsgType type, const QMessageLogContext &context, const QString &text);

/** Installs dropMessage(), and spares the debug lines of songs the trouble of being put together.
 */
void silence();

/** Installs writeMessage() and opens the log with the banner, whatever rules filter debug output.
 */
void start();

/** Writes the six lines that open each run's log. */
void writeBanner();

/** The compiler's date and time, as in "Dec  9 2016 - 17:00:45". */
QString buildStamp();

} // namespace MessageLog

} // namespace tarvel4
