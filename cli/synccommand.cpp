#include "cli/backupchoice.h"
#include "cli/copyreport.h"
#include "cli/opencatalogue.h"
#include "cli/songpaths.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "db/database.h"
#include "db/usersongsreltablemodel.h"
#include "library/backupjob.h"
#include "library/libraryimport.h"
#include "library/libraryupdate.h"

#include <QJsonArray>
#include <QJsonObject>

namespace tarvel4 {

namespace {

const char *statusText(UpdateOutcome outcome, bool dryRun)
{
    switch (outcome) {
    case UpdateOutcome::Updated:
        return dryRun ? "would-update" : "updated";
    case UpdateOutcome::NotFound:
        return "not-found";
    case UpdateOutcome::Refused:
        return "refused";
    case UpdateOutcome::Unreadable:
        return "unreadable";
    case UpdateOutcome::Failed:
        break;
    }
    return "failed";
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

/** Writes the record of each song of a run, in the order in which the songs were named. */
class SyncReport
{
public:
    SyncReport(const QVector<SongPath> &songs, Session &session, bool dryRun)
        : m_songs(songs)
        , m_session(session)
        , m_dryRun(dryRun)
    {}

    void add(UpdateOutcome outcome, const SongUpdate &song)
    {
        addUnreadableUpTo(song.path());
        const SongPath &path = m_songs.at(m_next++);
        m_hasFailures = m_hasFailures || outcome != UpdateOutcome::Updated;
        if (outcome == UpdateOutcome::Failed)
            m_session.host.say(
                Cli::tr("%1: non può essere salvato, resta com'era").arg(path.given));
        if (outcome == UpdateOutcome::Unreadable)
            return write(begin(path, outcome));

        Record record = begin(path, outcome);
        if (!song.reason().isEmpty())
            record.addText("match", song.reason());
        const bool isWritten = outcome == UpdateOutcome::Updated && !m_dryRun;
        addSong(record, path.given, isWritten ? song.after() : song.before());
        if (outcome == UpdateOutcome::Updated && m_dryRun)
            addChanges(record, song.changes());
        write(record);
    }

    /** The songs at the end that the import could not read. */
    void addRest() { addUnreadableUpTo(QString()); }

    bool hasFailures() const { return m_hasFailures; }

private:
    /** A song without a row is one that the import could not read. */
    void addUnreadableUpTo(const QString &file)
    {
        for (; m_next < m_songs.size() && m_songs.at(m_next).file != file; ++m_next) {
            m_hasFailures = true;
            write(begin(m_songs.at(m_next), UpdateOutcome::Unreadable));
        }
    }

    Record begin(const SongPath &path, UpdateOutcome outcome) const
    {
        Record record = m_session.records.begin();
        record.addText("path", path.given);
        record.addText("status", QLatin1String(statusText(outcome, m_dryRun)));
        return record;
    }

    void write(const Record &record) { m_session.records.write(record); }

    const QVector<SongPath> &m_songs;
    Session &m_session;
    bool m_dryRun;
    int m_next = 0;
    bool m_hasFailures = false;
};

LibraryUpdate::UnpublishedPolicy unpublished(const QString &answer)
{
    return {answer == QLatin1String("ask"), answer != QLatin1String("no")};
}

ExitStatus synchronise(const SongPaths &paths, Session &session, bool dryRun, const QString &answer,
                       const QString &backupDir)
{
    Database db;
    if (!openCatalogue(db, session))
        return ExitStatus::Failed;
    UserSongsRelTableModel model(nullptr, db.userSongsDatabase());
    LibraryImport import(db, model, session.host);
    if (!import.importUserLibrary(paths.files(), {false, true}))
        return jobFailed(session, Cli::tr("le song non possono essere elencate"));
    if (session.host.wasCancelled())
        return ExitStatus::Interrupted;

    SyncReport report(paths.songs(), session, dryRun);
    LibraryUpdate update(db, model, session.host, unpublished(answer));
    update.setDryRun(dryRun);
    update.setObserver([&report](int, UpdateOutcome outcome, const SongUpdate &song) {
        report.add(outcome, song);
    });
    BackupSummary backup;
    const auto makeBackup = [&] {
        BackupJob job(session.host, session.host, session.host);
        CopyReport copies(paths, session, CopyReport::Records::None);
        job.setObserver(copies.observer());
        backup = job.run(paths.files());
        return backup.mayProceed;
    };
    const bool hasRows = model.totalRows() > 0;
    const bool isComplete = !hasRows || update.updateUserLibrary(makeBackup);
    if (!isComplete) {
        sayWhyNoBackup(session, backup, backupDir);
        return ExitStatus::Failed;
    }
    report.addRest();
    return report.hasFailures() || paths.hasSkipped() ? ExitStatus::SomeFailed : ExitStatus::Done;
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

    SongPaths paths(session.host);
    const bool isRecursive = arguments.has("recursive");
    if (!(dryRun ? paths.collect(arguments.operands(), isRecursive)
                 : paths.recoverAndCollect(arguments.operands(), isRecursive)))
        return ExitStatus::Failed;
    paths.removeRepeats();
    session.host.setBackup({BackupChoice::ProceedWithout, QString()});
    if (wantsBackup && !dryRun && !chooseBackup(session, arguments.value("backup"), paths.files()))
        return ExitStatus::Failed;
    return synchronise(paths, session, dryRun, answer, arguments.value("backup"));
}

} // namespace

Command syncCommand()
{
    return {"sync",
            "PATH...",
            QT_TRANSLATE_NOOP("Cli", "Completa i dati delle song con quelli del catalogo."),
            {{"backup", Option::Path, "DIR",
              QT_TRANSLATE_NOOP("Cli", "prima copia le song in una nuova cartella di DIR")},
             {"no-backup", Option::Flag, nullptr,
              QT_TRANSLATE_NOOP("Cli", "non fa il backup (una delle due è necessaria)")},
             {"unpublished", Option::Choice, "ask|yes|no",
              QT_TRANSLATE_NOOP("Cli", "se cambiare le song non pubblicate da K-Varo")},
             {"dry-run", Option::Flag, nullptr,
              QT_TRANSLATE_NOOP("Cli", "mostra che cosa cambierebbe e non scrive nulla")},
             recursiveOption()},
            1,
            INT_MAX,
            runSync};
}

} // namespace tarvel4
