#include "cli/copyreport.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "library/transferjob.h"

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
    notAFolder(session, path);
    return QString();
}

bool isInside(const QString &folder, const QString &root)
{
    const QString prefix = root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/');
    return folder == root || folder.startsWith(prefix);
}

void writeSummary(const TransferSummary &summary, Session &session)
{
    for (const QString &error : summary.index.errors)
        session.host.say(error);
    Record record = session.records.begin();
    record.addNumber("copied", summary.songs.copied);
    record.addNumber("failed", static_cast<int>(summary.songs.failures.size()));
    record.addNumber("kept", summary.songs.kept);
    record.addNumber("found", summary.index.found);
    record.addFlag("prepared", summary.index.isPrepared);
    record.addValue("errors", QJsonArray::fromStringList(summary.index.errors),
                    summary.index.errors.join(QLatin1String(", ")));
    const Outcome &cause = summary.songs.cause ? summary.index.cause : summary.songs.cause;
    if (!cause)
        addFailure(record, cause);
    session.records.write(record);
}

ExitStatus transfer(const SongPaths &paths, const QString &dir, const Volume &volume,
                    Session &session)
{
    TransferJob job(session.host, session.host, session.host, volume);
    CopyReport report(paths, session, CopyReport::Records::Failures);
    job.setObserver(report.observer());
    const TransferSummary summary = job.run(paths.files(), dir);
    if (summary.result == TransferSummary::Result::Refused)
        return ExitStatus::Failed;
    writeSummary(summary, session);
    if (summary.result == TransferSummary::Result::Done)
        return paths.hasSkipped() ? ExitStatus::SomeFailed : ExitStatus::Done;
    if (!summary.songs.cause)
        return jobFailed(session, dir, summary.songs.cause); // no song was begun
    const IndexSummary &index = summary.index;
    if (!summary.songs.failures.isEmpty() || (!index.errors.isEmpty() && !index.hasFailed))
        return ExitStatus::SomeFailed;
    if (!index.cause)
        return jobFailed(session, volume.rootOf(dir), index.cause);
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

    SongPaths paths(session);
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
    return transfer(paths, dir, *volume, session);
}

} // namespace

Command transferCommand()
{
    return {
        "transfer",
        "PATH...",
        QT_TRANSLATE_NOOP("Cli", "Copia le song nella memoria e ne aggiorna l'indice."),
        "transfer --to /media/card/songs --recursive ~/songs\n"
        "transfer --to ~/card/songs --memory ~/card SANTALUC.mid",
        withPathLists(
            {{"to", Option::Path, "DIR",
              QT_TRANSLATE_NOOP("Cli", "cartella della memoria che riceve le song (necessaria)")},
             {"memory", Option::Path, "ROOT",
              QT_TRANSLATE_NOOP("Cli", "cartella da prendere per la memoria, al posto del volume")},
             {"overwrite", Option::Choice, "ask|yes|no",
              QT_TRANSLATE_NOOP("Cli", "se sostituire le song che esistono già")},
             recursiveOption()}),
        1,
        INT_MAX,
        runTransfer};
}

} // namespace tarvel4
