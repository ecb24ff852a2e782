#include "library/updatepreview.h"

#include "library/updatejob.h"

#include <QDebug>

namespace tarvel4 {

UpdatePreview::UpdatePreview(Database &db, Progress &progress, Questions &questions)
    : m_db(db)
    , m_progress(progress)
    , m_questions(questions)
{}

std::optional<JobReport> UpdatePreview::run(const QStringList &paths, bool asksUnpublished)
{
    qDebug() << "[PREVIEW] nothing is written by the update that follows";
    UpdateJob::Options options;
    options.texts = {tr("Anteprima"), tr("Cerco che cosa cambierebbe..."), tr("Interrompi")};
    options.unpublished = UnpublishedPolicy::Change; // it is the synchronisation itself that asks
    options.isDryRun = true;
    SaveRun saves(Disk::real(), nullptr, QStringLiteral("sync"));
    JobReport plan(JobReport::Job::Preview);
    const auto note = [&plan, asksUnpublished](const SongOutcome &song) {
        if (asksUnpublished && song.result == SongResult::Updated && !song.before.isPublisher
            && !song.changes.isEmpty())
            plan.add(song, JobReport::Group::ToConfirm);
        else
            plan.add(song);
    };
    if (!UpdateJob(m_db, m_progress, m_questions, options, saves)
             .run(paths, note, [] { return false; })
             .isComplete)
        return std::nullopt;
    plan.finish(paths);
    return plan;
}

} // namespace tarvel4
