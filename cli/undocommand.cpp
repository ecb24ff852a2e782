#include "cli/command.h"
#include "cli/songpaths.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "library/recoveryjob.h"
#include "library/undojob.h"

#include <QFileInfo>

namespace tarvel4 {

namespace {

/** Why a song was not restored; where the file in the backup is to blame, with its path. */
QString whyNotRestored(const SongOutcome &song)
{
    if (song.cause.path == song.path)
        return song.cause.sentence();
    return song.cause == Outcome::Code::NotFound
        ? Cli::tr("il backup non contiene una song con questo nome")
        : song.cause.message();
}

/** Writes the record of a song, by the path that the user knows it by. */
void report(Session &session, const QString &path, const SongOutcome &song, const QString &error,
            bool isDryRun)
{
    Record record = session.records.begin();
    record.addText("path", path);
    if (song.isFailure()) {
        session.host.say(path + QLatin1String(": ") + error);
        sayDetail(session, path, song.cause);
        record.addText("status", QStringLiteral("failed"));
        addFailure(record, song.cause, error);
    } else {
        sayDone(session, path, isDryRun ? Cli::tr("da ripristinare") : Cli::tr("ripristinata"));
        record.addText("status",
                       isDryRun ? QStringLiteral("would-restore") : QStringLiteral("restored"));
        if (!song.after.format.isEmpty()) // what a damaged song was given back may be damaged too
            addSong(record, path, song.after);
    }
    session.records.write(record);
}

ExitStatus runUndo(const Arguments &arguments, Session &session)
{
    const bool isDryRun = arguments.has("dry-run");
    if (!isDryRun)
        RecoveryJob(session.host).finishSaves(session.journal);
    const auto runs = session.journal.runs();
    if (!runs)
        return ExitStatus::Failed;
    const bool isNamed = !arguments.operands().isEmpty();
    const QString given = arguments.operands().value(0);
    qint64 run = 0;
    if (!isNamed) {
        if (const auto next = UndoJob::next(session.journal, *runs))
            run = next->run.id;
    }
    for (const JournalRun &named : *runs) {
        if (given == QString::number(named.id))
            run = named.id;
    }
    if (run == 0)
        return isNamed ? wrongUsage(session, Cli::tr("nessuna modifica ha il numero %1").arg(given))
                       : jobFailed(session, Cli::tr("non c'è nulla da annullare"));

    SaveRun saves(Disk::real(), &session.journal, QStringLiteral("undo"));
    const UndoSummary summary =
        UndoJob(session.host, saves, isDryRun)
            .undo(session.journal, run, [&](const SongOutcome &song) {
                report(session, song.path, song, song.cause.sentence(), isDryRun);
            });
    return summary.failed > 0 ? ExitStatus::SomeFailed : ExitStatus::Done;
}

ExitStatus runRestore(const Arguments &arguments, Session &session)
{
    if (!arguments.has("from"))
        return wrongUsage(session, Cli::tr("manca --from BACKUP"));
    const QString backup = arguments.value("from");
    const bool isDryRun = arguments.has("dry-run");
    if (!QFileInfo(backup).isDir())
        return notAFolder(session, backup);
    SongPaths paths(session);
    const bool isRecursive = arguments.has("recursive");
    if (!(isDryRun ? paths.collect(arguments.operands(), isRecursive)
                   : paths.recoverAndCollect(arguments.operands(), isRecursive)))
        return ExitStatus::Failed;
    paths.removeRepeats();

    SaveRun saves(Disk::real(), &session.journal, QStringLiteral("restore"));
    int next = 0;
    const UndoSummary summary = UndoJob(session.host, saves, isDryRun)
                                    .restore(paths.files(), backup, [&](const SongOutcome &song) {
                                        report(session, paths.songs().at(next++).given, song,
                                               whyNotRestored(song), isDryRun);
                                    });
    return summary.failed > 0 || paths.hasSkipped() ? ExitStatus::SomeFailed : ExitStatus::Done;
}

} // namespace

Command undoCommand()
{
    return {
        "undo",
        "[RUN]",
        QT_TRANSLATE_NOOP(
            "Cli", "Annulla l'ultima modifica, o quella che history chiama RUN, byte per byte."),
        "undo --dry-run\nundo 12",
        {dryRunOption()},
        0,
        1,
        runUndo};
}

Command restoreCommand()
{
    return {"restore",
            "PATH...",
            QT_TRANSLATE_NOOP("Cli", "Rimette le song come sono in un backup."),
            "restore --from ~/backups/backup_kvaro_2026_01_31_12-00-00 --recursive ~/songs",
            withPathLists({{"from", Option::Path, "BACKUP",
                            QT_TRANSLATE_NOOP("Cli", "cartella del backup (necessaria)")},
                           dryRunOption(),
                           recursiveOption()}),
            1,
            INT_MAX,
            runRestore};
}

} // namespace tarvel4
