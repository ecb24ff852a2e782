#include "cli/command.h"
#include "cli/songpaths.h"
#include "cli/texts.h"
#include "library/devicetransfer.h"

#include <QFileInfo>
#include <QJsonArray>

#include <memory>

namespace tarvel4 {

namespace {

/** A folder as the file system knows it; empty, having said why, where there is none. */
QString folderOf(const QString &path, Session &session)
{
    const QFileInfo info(path);
    if (info.isDir())
        return info.canonicalFilePath();
    session.host.say(Cli::tr("%1: non è una cartella").arg(path));
    return QString();
}

bool isInside(const QString &folder, const QString &root)
{
    const QString prefix = root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/');
    return folder == root || folder.startsWith(prefix);
}

ExitStatus transfer(const QStringList &files, const QString &dir, const Volume &volume,
                    Session &session)
{
    DeviceTransfer transfer(session.host, volume);
    const DeviceTransfer::Result result = transfer.transferFiles(files, dir);
    if (result == DeviceTransfer::Result::Refused)
        return ExitStatus::Failed;
    sayNotCopied(session, transfer.failed());
    Record record = session.records.begin();
    record.addNumber("copied", transfer.copied());
    record.addNumber("failed", transfer.failures());
    record.addNumber("kept", transfer.kept());
    record.addNumber("found", transfer.found());
    record.addFlag("prepared", transfer.prepared());
    record.addValue("errors", QJsonArray::fromStringList(transfer.errors()),
                    transfer.errors().join(QLatin1String(", ")));
    session.records.write(record);
    if (result == DeviceTransfer::Result::Done)
        return ExitStatus::Done;
    if (transfer.failures() > 0 || (!transfer.errors().isEmpty() && !transfer.indexFailed()))
        return ExitStatus::SomeFailed;
    if (!session.host.wasCancelled())
        session.host.say(Cli::tr("%1: l'indice non è stato scritto").arg(volume.rootOf(dir)));
    return ExitStatus::Failed;
}

TerminalHost::Overwrite overwrite(const QString &answer)
{
    if (answer == QLatin1String("ask"))
        return TerminalHost::Overwrite::Ask;
    return answer == QLatin1String("yes") ? TerminalHost::Overwrite::Yes
                                          : TerminalHost::Overwrite::No;
}

ExitStatus runTransfer(const Arguments &arguments, Session &session)
{
    if (!arguments.has("to"))
        return wrongUsage(session, Cli::tr("manca --to DIR"));
    const bool canAsk = TerminalHost::canAsk();
    const QString answer =
        arguments.value("overwrite", canAsk ? QStringLiteral("ask") : QStringLiteral("no"));
    if (answer == QLatin1String("ask") && !canAsk)
        return wrongUsage(session, Cli::tr("--overwrite ask vuole un terminale"));
    session.host.setOverwrite(overwrite(answer));

    SongPaths paths(session.host);
    if (!paths.recoverAndCollect(arguments.operands(), arguments.has("recursive")))
        return ExitStatus::Failed;
    paths.removeRepeats();
    const QString dir = folderOf(arguments.value("to"), session);
    if (dir.isEmpty())
        return ExitStatus::Failed;
    std::unique_ptr<Volume> volume = std::make_unique<SystemVolume>();
    if (arguments.has("memory")) {
        const QString root = folderOf(arguments.value("memory"), session);
        if (root.isEmpty())
            return ExitStatus::Failed;
        if (!isInside(dir, root))
            return jobFailed(session, Cli::tr("%1: non si trova nella memoria %2").arg(dir, root));
        volume = std::make_unique<FolderVolume>(root);
    }
    const ExitStatus status = transfer(paths.files(), dir, *volume, session);
    return status == ExitStatus::Done && paths.hasSkipped() ? ExitStatus::SomeFailed : status;
}

} // namespace

Command transferCommand()
{
    return {"transfer",
            "PATH...",
            QT_TRANSLATE_NOOP("Cli", "Copia le song nella memoria e ne aggiorna l'indice."),
            {{"to", Option::Path, "DIR",
              QT_TRANSLATE_NOOP("Cli", "cartella della memoria che riceve le song (necessaria)")},
             {"memory", Option::Path, "ROOT",
              QT_TRANSLATE_NOOP("Cli", "cartella da prendere per la memoria, al posto del volume")},
             {"overwrite", Option::Choice, "ask|yes|no",
              QT_TRANSLATE_NOOP("Cli", "se sostituire le song che esistono già")},
             recursiveOption()},
            1,
            INT_MAX,
            runTransfer};
}

} // namespace tarvel4
