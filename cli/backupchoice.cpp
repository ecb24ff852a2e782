#include "cli/backupchoice.h"

#include "cli/songpaths.h"
#include "cli/texts.h"
#include "library/backupjob.h"

#include <QFileInfo>

namespace tarvel4 {

bool chooseBackup(Session &session, const QString &dir, const QStringList &files)
{
    TerminalHost &host = session.host;
    if (!QFileInfo(dir).isDir()) {
        notAFolder(session, dir);
        return false;
    }
    const auto clashes = BackupJob::sameNames(files);
    if (!clashes.isEmpty() && !TerminalHost::canAsk()) {
        for (const auto &clash : clashes)
            host.say(Cli::tr("%1 e %2: hanno lo stesso nome, il backup non può contenerli entrambi")
                         .arg(clash.first, clash.second));
        return false;
    }
    host.setOverwrite(TerminalHost::canAsk() ? TerminalHost::Overwrite::Ask
                                             : TerminalHost::Overwrite::Never);
    host.setBackup({BackupChoice::Backup, withoutSlash(dir)});
    return true;
}

void sayWhyNoBackup(Session &session, const BackupSummary &summary, const QString &dir)
{
    const bool isNameTaken = summary.cause == Outcome::Code::AlreadyExists;
    if (!summary.cause)
        jobFailed(session, isNameTaken ? summary.cause.path : dir, summary.cause);
    if (!summary.incompleteFolder.isEmpty())
        session.host.say(
            Cli::tr("%1: qui resta il backup incompleto").arg(summary.incompleteFolder));
}

} // namespace tarvel4
