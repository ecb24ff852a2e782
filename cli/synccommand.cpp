#include "cli/backupchoice.h"
#include "cli/copyreport.h"
#include "cli/opencatalogue.h"
#include "cli/songpaths.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "db/database.h"
#include "library/backupjob.h"
#include "library/updatejob.h"

#include <QJsonArray>
#include <QJsonObject>

namespace tarvel4 {

namespace {

/** What was done with a song that nothing went wrong with. */
QString doneText(SongResult result, bool dryRun)
{
    if (result == SongResult::NotFound)
        return Cli::tr("il catalogo non la contiene");
    if (result == SongResult::Refused)
        return Cli::tr("non pubblicata da K-Varo, lasciata com'era");
    return dryRun ? Cli::tr("da salvare") : Cli::tr("salvata");
}

const char *statusText(SongResult result, bool dryRun)
{
    switch (result) {
    case SongResult::Updated:
        return dryRun ? "would-update" : "updated";
    case SongResult::NotFound:
        return "not-found";
    case SongResult::Refused:
        return "refused";
    case SongResult::Unreadable:
        return "unreadable";
    default:
        return "failed";
    }
}

QString changedText(const QVariant &value)
{
    if (value.type() == QVariant::String)
        return QLatin1Char('"') + value.toString() + QLatin1Char('"');
    if (value.type() != QVariant::List)
        return value.toString();
    QStringList markers;
    for (const QVariant &marker : value.toList()) {
        const QVariantMap fields = marker.toMap();
        markers += fields.value(QStringLiteral("bar")).toString() + QLatin1Char(' ')
            + fields.value(QStringLiteral("text")).toString();
    }
    return QLatin1Char('[') + markers.join(QLatin1String(", ")) + QLatin1Char(']');
}

void addChanges(Record &record, const QVector<FieldChange> &changes)
{
    QJsonObject object;
    QStringList texts;
    for (const FieldChange &change : changes) {
        object.insert(change.field,
                      QJsonArray{QJsonValue::fromVariant(change.before),
                                 QJsonValue::fromVariant(change.after)});
        texts += QStringLiteral("%1 %2 -> %3")
                     .arg(change.field, changedText(change.before), changedText(change.after));
    }
    record.addValue("changes", object, texts.join(QLatin1String("; ")));
}

Record syncRecord(Record record, const QString &path, const SongOutcome &song, bool dryRun)
{
    record.addText("path", path);
    record.addText("status", QLatin1String(statusText(song.result, dryRun)));
    if (song.isFailure())
        addFailure(record, song.cause);
    if (song.result == SongResult::Unreadable)
        return record;
    if (!song.matchedBy.isEmpty())
        record.addText("match", song.matchedBy);
    addSong(record, path, dryRun ? song.before : song.after);
    if (song.result == SongResult::Updated && dryRun)
        addChanges(record, song.changes);
    return record;
}

ExitStatus synchronise(const SongPaths &paths, Session &session, const UpdateJob::Options &options,
                       const QString &backupDir)
{
    Database db;
    if (!openCatalogue(db, session))
        return ExitStatus::Failed;
    const ExitStatus complete = paths.hasSkipped() ? ExitStatus::SomeFailed : ExitStatus::Done;
    if (paths.songs().isEmpty())
        return complete;

    int next = 0;
    const auto report = [&](const SongOutcome &song) {
        const QString &path = paths.songs().at(next++).given;
        if (song.isFailure())
            sayFailure(session, path, song.cause);
        else
            sayDone(session, path, doneText(song.result, options.isDryRun));
        session.records.write(syncRecord(session.records.begin(), path, song, options.isDryRun));
    };
    BackupSummary backup;
    const auto makeBackup = [&] {
        BackupJob job(session.host, session.host, session.host);
        CopyReport copies(paths, session, CopyReport::Records::None);
        job.setObserver(copies.observer());
        backup = job.run(paths.files());
        return backup.mayProceed;
    };
    SaveRun saves(Disk::real(), &session.journal, QStringLiteral("sync"));
    const UpdateSummary summary = UpdateJob(db, session.host, session.host, options, saves)
                                      .run(paths.files(), report, makeBackup);
    if (!summary.isComplete) {
        sayWhyNoBackup(session, backup, backupDir);
        return ExitStatus::Failed;
    }
    return summary.unchanged + summary.failed > 0 ? ExitStatus::SomeFailed : complete;
}

UnpublishedPolicy unpublishedPolicy(const QString &answer)
{
    if (answer == QLatin1String("ask"))
        return UnpublishedPolicy::Ask;
    return answer == QLatin1String("yes") ? UnpublishedPolicy::Change : UnpublishedPolicy::Leave;
}

ExitStatus runSync(const Arguments &arguments, Session &session)
{
    const bool dryRun = arguments.has("dry-run");
    const bool wantsBackup = arguments.has("backup");
    if (wantsBackup && arguments.has("no-backup"))
        return wrongUsage(session, Cli::tr("--backup e --no-backup si escludono"));
    if (!wantsBackup && !arguments.has("no-backup") && !dryRun)
        return wrongUsage(session, Cli::tr("manca --backup DIR oppure --no-backup"));
    const bool canAsk = TerminalHost::canAsk();
    const QString answer =
        arguments.value("unpublished", canAsk ? QStringLiteral("ask") : QStringLiteral("no"));
    if (answer == QLatin1String("ask") && !canAsk)
        return wrongUsage(session, Cli::tr("--unpublished ask vuole un terminale"));

    SongPaths paths(session);
    const bool isRecursive = arguments.has("recursive");
    if (!(dryRun ? paths.collect(arguments.operands(), isRecursive)
                 : paths.recoverAndCollect(arguments.operands(), isRecursive)))
        return ExitStatus::Failed;
    paths.removeRepeats();
    session.host.setBackup({BackupChoice::ProceedWithout, QString()});
    if (wantsBackup && !dryRun && !chooseBackup(session, arguments.value("backup"), paths.files()))
        return ExitStatus::Failed;
    UpdateJob::Options options;
    options.unpublished = unpublishedPolicy(answer);
    options.isDryRun = dryRun;
    return synchronise(paths, session, options, arguments.value("backup"));
}

} // namespace

Command syncCommand()
{
    return {"sync",
            "PATH...",
            QT_TRANSLATE_NOOP("Cli", "Completa i dati delle song con quelli del catalogo."),
            "sync --dry-run --recursive ~/songs\n"
            "sync --backup ~/backups --recursive ~/songs",
            withPathLists(
                {{"backup", Option::Path, "DIR",
                  QT_TRANSLATE_NOOP("Cli", "prima copia le song in una nuova cartella di DIR")},
                 {"no-backup", Option::Flag, nullptr,
                  QT_TRANSLATE_NOOP("Cli", "non fa il backup (una delle due è necessaria)")},
                 {"unpublished", Option::Choice, "ask|yes|no",
                  QT_TRANSLATE_NOOP("Cli", "se cambiare le song non pubblicate da K-Varo")},
                 dryRunOption(),
                 recursiveOption()}),
            1,
            INT_MAX,
            runSync};
}

} // namespace tarvel4
