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
                     SaveRun &saves)
    : m_db(db)
    , m_progress(progress)
    , m_questions(questions)
    , m_saves(saves)
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

    m_progress.beginProgress(m_options.texts, static_cast<int>(paths.size()));
    const auto tell = [&](const SongOutcome &song) {
        count(song, summary);
        observer(song);
    };
    int done = 0;
    for (const QString &path : paths) {
        if (m_progress.wasCancelled())
            break;
        qCDebug(debugLog) << "[UPDATE] rowIdx: " << done;
        qCDebug(debugLog) << "[UPDATE] updating file: " << path;
        update(path, tell);
        m_progress.setProgress(++done);
        WorkflowLog::songEnd();
        qDebug() << "";
        m_progress.processPendingEvents();
    }
    m_saves.commit();
    m_progress.endProgress();
    summary.isComplete = done == paths.size();
    return summary;
}

void UpdateJob::update(const QString &path, const SongObserver &tell)
{
    m_saves.beforeReading(path);
    const auto song = std::make_shared<SongUpdate>(m_saves.disk());
    const Outcome loaded = song->load(path);
    const SongOutcome planned =
        loaded ? plan(*song) : song->outcome(SongResult::Unreadable, loaded);
    if (planned.isFailure())
        WorkflowLog::refused("[UPDATE]", planned);
    if (planned.result != SongResult::Updated || m_options.isDryRun)
        return m_saves.inTurn([tell, planned] { tell(planned); });
    m_saves.save(song->prepared(), [tell, song, planned](const Outcome &outcome) {
        if (outcome)
            return tell(planned);
        const SongOutcome failed = song->outcome(SongResult::Failed, outcome);
        WorkflowLog::refused("[UPDATE]", failed);
        tell(failed);
    });
}

SongOutcome UpdateJob::plan(SongUpdate &song)
{
    if (!song.before().isPublisher && !mayChange(song.before()))
        return song.outcome(SongResult::Refused);
    if (!song.match(m_db))
        return song.outcome(SongResult::NotFound);
    const Outcome prepared = song.prepare();
    return song.outcome(prepared ? SongResult::Updated : SongResult::Failed, prepared);
}

bool UpdateJob::mayChange(const SongInfo &song)
{
    if (m_options.unpublished != UnpublishedPolicy::Ask)
        return m_options.unpublished == UnpublishedPolicy::Change;
    m_saves.commit(); // nothing waits for an answer
    const Answer answer = m_questions.askNotPublished(song.shortname);
    if (answer == Answer::YesToAll)
        m_options.unpublished = UnpublishedPolicy::Change;
    else if (answer == Answer::NoToAll)
        m_options.unpublished = UnpublishedPolicy::Leave;
    return answer == Answer::Yes || answer == Answer::YesToAll;
}

} // namespace tarvel4
