#include "cli/backupchoice.h"
#include "cli/songpaths.h"
#include "cli/texts.h"
#include "library/librarybackup.h"

namespace tarvel4 {

namespace {

ExitStatus runBackup(const Arguments &arguments, Session &session)
{
    if (!arguments.has("to"))
        return wrongUsage(session, Cli::tr("manca --to DIR"));
    SongPaths paths(session.host);
    if (!paths.collect(arguments.operands(), arguments.has("recursive")))
        return ExitStatus::Failed;
    paths.removeRepeats();
    if (!chooseBackup(session, arguments.value("to"), paths.files()))
        return ExitStatus::Failed;

    LibraryBackup backup(session.host);
    const bool isComplete = backup.backupUserLibrary(paths.files());
    if (!isComplete || session.host.hasNameClash()) {
        sayWhyNoBackup(session, backup, arguments.value("to"));
        return ExitStatus::Failed;
    }
    Record record = session.records.begin();
    record.addText("folder", backup.folder());
    record.addNumber("copied", backup.copied());
    session.records.writeLine(record, backup.folder());
    return paths.hasSkipped() ? ExitStatus::SomeFailed : ExitStatus::Done;
}

} // namespace

Command backupCommand()
{
    return {"backup",
            "PATH...",
            QT_TRANSLATE_NOOP("Cli", "Copia le song in una nuova cartella di backup."),
            {{"to", Option::Path, "DIR",
              QT_TRANSLATE_NOOP("Cli", "cartella che riceve la cartella di backup (necessaria)")},
             recursiveOption()},
            1,
            INT_MAX,
            runBackup};
}

} // namespace tarvel4
