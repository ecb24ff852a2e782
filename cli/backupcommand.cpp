#include "cli/backupchoice.h"
#include "cli/copyreport.h"
#include "cli/texts.h"
#include "library/backupjob.h"

namespace tarvel4 {

namespace {

ExitStatus runBackup(const Arguments &arguments, Session &session)
{
    if (!arguments.has("to"))
        return wrongUsage(session, Cli::tr("manca --to DIR"));
    SongPaths paths(session);
    if (!paths.recoverAndCollect(arguments.operands(), arguments.has("recursive")))
        return ExitStatus::Failed;
    paths.removeRepeats();
    if (!chooseBackup(session, arguments.value("to"), paths.files()))
        return ExitStatus::Failed;

    BackupJob job(session.host, session.host, session.host);
    CopyReport report(paths, session, CopyReport::Records::Failures);
    job.setObserver(report.observer());
    const BackupSummary backup = job.run(paths.files());
    if (!backup.mayProceed || session.host.hasNameClash()) {
        sayWhyNoBackup(session, backup, arguments.value("to"));
        return ExitStatus::Failed;
    }
    Record record = session.records.begin();
    record.addText("folder", backup.folder);
    record.addNumber("copied", backup.songs.copied);
    session.records.writeLine(record, backup.folder);
    return paths.hasSkipped() ? ExitStatus::SomeFailed : ExitStatus::Done;
}

} // namespace

Command backupCommand()
{
    return {"backup",
            "PATH...",
            QT_TRANSLATE_NOOP("Cli", "Copia le song in una nuova cartella di backup."),
            "backup --to ~/backups --recursive ~/songs",
            withPathLists({{"to", Option::Path, "DIR",
                            QT_TRANSLATE_NOOP(
                                "Cli", "cartella che riceve la cartella di backup (necessaria)")},
                           recursiveOption()}),
            1,
            INT_MAX,
            runBackup};
}

} // namespace tarvel4
