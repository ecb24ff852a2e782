#include "library/updatejob.h"

#include "db/database.h"
#include "library/songupdate.h"
#include "library/workflowlog.h"
#include "storage/debuglog.h"

#include <QDebug>

namespace tarvel4 {

namespace {

void count(const SongOutcome &song, UpdateSummary &summary)
{
    if (song.result == SongResult::Updated)
        ++summary.updated;
    else if (song.isFailure())
        ++summary.failed;
    else
        ++summary.unchanged;
}

} // namespace

UpdateJob::UpdateJob(Database &db, Progress &progress, Questions &questions, const Options &options,
                     Disk &disk)
    : m_db(db)
    , m_progress(progress)
    , m_questions(questions)
    , m_disk(disk)
    , m_options(options)
{}

UpdateSummary UpdateJob::run(const QStringList &paths, const SongObserver &observer,
                             const std::function<bool()> &backup)
{
    WorkflowLog::title("UPDATE USER LIBRARY");
    UpdateSummary summary;
    if (paths.isEmpty()) {
        qDebug() << "[UPDATE] WARNING: Empty table. Aborting update !!!";
        return summary;
    }
    if (!m_options.isDryRun && !backup())
        return summary;

    m_progress.beginProgress(
        {tr("Aggiornamento file"), tr("Aggiorno la libreria..."), tr("Interrompi")}, paths.size());
    int done = 0;
    for (const QString &path : paths) {
        if (m_progress.wasCancelled())
            break;
        qCDebug(debugLog) << "[UPDATE] rowIdx: " << done;
        qCDebug(debugLog) << "[UPDATE] updating file: " << path;
        const SongOutcome song = update(path);
        count(song, summary);
        observer(song);
        m_progress.setProgress(++done);
        WorkflowLog::songEnd();
        qDebug() << "";
        m_progress.processPendingEvents();
    }
    m_progress.endProgress();
    summary.isComplete = done == paths.size();
    return summary;
}

SongOutcome UpdateJob::update(const QString &path)
{
    SongUpdate song(m_disk);
    const Outcome outcome = song.load(path);
    const SongOutcome done = outcome ? update(song) : song.outcome(SongResult::Unreadable, outcome);
    if (done.isFailure())
        WorkflowLog::refused("[UPDATE]", done);
    return done;
}

SongOutcome UpdateJob::update(SongUpdate &song)
{
    if (!song.before().isPublisher && !mayChange(song.before()))
        return song.outcome(SongResult::Refused);
    if (!song.match(m_db))
        return song.outcome(SongResult::NotFound);
    Outcome outcome = song.prepare();
    if (outcome && !m_options.isDryRun)
        outcome = song.perform();
    return song.outcome(outcome ? SongResult::Updated : SongResult::Failed, outcome);
}

bool UpdateJob::mayChange(const SongInfo &song)
{
    if (!m_options.asksUnpublished)
        return m_options.changesUnpublished;
    const Answer answer = m_questions.askNotPublished(song.shortname);
    const bool accepted = answer == Answer::Yes || answer == Answer::YesToAll;
    if (answer == Answer::YesToAll || answer == Answer::NoToAll) {
        m_options.asksUnpublished = false;
        m_options.changesUnpublished = accepted;
    }
    return accepted;
}

} // namespace tarvel4
