#pragma once

#include "cli/arguments.h"
#include "cli/recordwriter.h"
#include "cli/terminalhost.h"
#include "storage/journal.h"
#include "storage/outcome.h"

#include <climits>

namespace tarvel4 {

/** What a command works with besides its arguments. */
struct Session
{
    RecordWriter &records;
    TerminalHost &host;
    Journal &journal;
    QString catalogue; ///< file in place of the built-in catalogue; empty where none is
};

/** What a command can do, where its first operand says which. */
struct Action
{
    const char *name;
    const char *operands; ///< those behind the name
    const char *summary; ///< source text of the context "Cli"
    const char *examples; ///< as those of a command
};

/** One command of the program: its parsing and its help come from this description. */
struct Command
{
    const char *name;
    const char *operands; ///< as help shows them
    const char *summary; ///< source text of the context "Cli"
    const char *examples; ///< lines, each behind the program's name
    QVector<Option> options;
    int leastOperands = 1;
    int mostOperands = INT_MAX;
    ExitStatus (*run)(const Arguments &, Session &) = nullptr;
    QVector<Action> actions = {}; ///< each has a help of its own
};

/** The commands, in the order of the help. */
QVector<Command> allCommands();

Command infoCommand();
Command editCommand();
Command syncCommand();
Command historyCommand();
Command undoCommand();
Command restoreCommand();
Command backupCommand();
Command transferCommand();
Command indexCommand();
Command listCommand();
Command extractCommand();
Command catalogueCommand();
Command completionCommand();

/** The options of every command. */
const QVector<Option> &globalOptions();

/** The option of the commands that take folders. */
Option recursiveOption();

/** The option of the commands that can show what they would do. */
Option dryRunOption();

/** Adds the options of the commands that take PATHs to their own. */
QVector<Option> withPathLists(const QVector<Option> &options);

/** Says what is wrong with the usage, and that nothing was done. */
ExitStatus wrongUsage(Session &session, const QString &text);

/** Says why something could not be done with \a path, as the user named it. */
void sayFailure(Session &session, const QString &path, const Outcome &cause);

/** With --verbose: what the system itself said of a failure, where it had a word in it. */
void sayDetail(Session &session, const QString &path, const Outcome &cause);

/** With --verbose: \a what was done with a file. */
void sayDone(Session &session, const QString &path, const QString &what);

/** Says why the job could not be done. */
ExitStatus jobFailed(Session &session, const QString &text);

ExitStatus jobFailed(Session &session, const QString &path, const Outcome &cause);

/** What is said of an empty path, of which a message has nothing else to show. */
QString emptyPathText();

/** Says that no folder is there. */
ExitStatus notAFolder(Session &session, const QString &path);

} // namespace tarvel4
