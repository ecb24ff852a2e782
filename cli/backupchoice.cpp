#include "cli/backupchoice.h"

#include "cli/songpaths.h"
#include "cli/texts.h"
#include "library/librarybackup.h"

#include <QFileInfo>

namespace tarvel4 {

bool chooseBackup(Session &session, const QString &dir, const QStringList &files)
{
    TerminalHost &host = session.host;
    if (!QFileInfo(dir).isDir()) {
        host.say(Cli::tr("%1: non è una cartella").arg(dir));
        return false;
    }
    const auto clashes = LibraryBackup::sameNames(files);
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

void sayWhyNoBackup(Session &session, const LibraryBackup &backup, const QString &dir)
{
    sayNotCopied(session, backup.failed());
    if (backup.failed().isEmpty() && backup.folder().isEmpty() && !session.host.wasCancelled())
        session.host.say(Cli::tr("%1: non può essere scritto").arg(dir));
}

} // namespace tarvel4
