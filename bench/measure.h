#pragma once

#include <QStringList>

#include <functional>

namespace tarvel4 {

/** Whole processes, each timed beside a plain one that does the least that its work needs. */
namespace Measure {

/** Seconds; on a busy machine only the processor's (program and system) say what a job costs. */
struct Cost
{
    double wall = 0;
    double processor = 0;
};

/** What to measure, and on which medium. */
struct Setup
{
    QString folder;
    QString cli;
};

/** From the arguments [FOLDER [CLI]]; without them the folder for temporary files, and the command
 * line of this build. */
Setup setup(int argc, char **argv);

/** Runs a command, which must exit with \a status. Its output is thrown away; \a home is where it
 * keeps what it remembers. */
Cost run(const QStringList &command, const QString &home = QString(), int status = 0);

/** The command that copies a folder with cp and flushes the copy. */
QStringList copyAndFlush(const QString &from, const QString &to);

/** A command, and what must be there before it: made anew for each round, and not timed. */
struct Side
{
    QStringList command;
    std::function<void()> prepare;
    int status = 0; //!< that the command must exit with
};

/** The heading of the lines that compare() prints. */
void printHeading(const char *plain, const char *ours);

/** Empties \a folder and makes \a home, which lies in it. */
void renewFolder(const QString &folder, const QString &home);

/** Prints the medians of \a rounds rounds, in which the two take turns, each beginning with nothing
 * but what it prepares in \a work, flushed, and a home without files. Returns what ours costs. */
Cost compare(const QString &name, int songs, const QString &work, const Side &plain,
             const Side &ours, int rounds = 5);

} // namespace Measure

} // namespace tarvel4
