#include "library/updatepreview.h"

#include "library/progress.h"
#include "library/updatejob.h"

#include <QDebug>

namespace tarvel4 {

namespace {

/** Shows a job's progress under other texts. */
class RenamedProgress : public Progress
{
public:
    RenamedProgress(Progress &progress, const ProgressTexts &texts)
        : m_progress(progress)
        , m_texts(texts)
    {}

    void beginProgress(const ProgressTexts &, int maximum) override
    {
        m_progress.beginProgress(m_texts, maximum);
    }
    void setProgressMaximum(int maximum) override { m_progress.setProgressMaximum(maximum); }
    void setProgress(int value) override { m_progress.setProgress(value); }
    void setProgressValue(int value) override { m_progress.setProgressValue(value); }
    void processPendingEvents() override { m_progress.processPendingEvents(); }
    void endProgress() override { m_progress.endProgress(); }
    bool wasCancelled() const override { return m_progress.wasCancelled(); }

private:
    Progress &m_progress;
    const ProgressTexts m_texts;
};

} // namespace

UpdatePreview::UpdatePreview(Database &db, Progress &progress, Questions &questions)
    : m_db(db)
    , m_progress(progress)
    , m_questions(questions)
{}

std::optional<JobReport> UpdatePreview::run(const QStringList &paths, bool asksUnpublished)
{
    qDebug() << "[PREVIEW] nothing is written by the update that follows";
    RenamedProgress progress(
        m_progress, {tr("Anteprima"), tr("Cerco che cosa cambierebbe..."), tr("Interrompi")});
    UpdateJob::Options options;
    options.asksUnpublished = false; // it is the synchronisation itself that asks
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
    if (!UpdateJob(m_db, progress, m_questions, options, saves)
             .run(paths, note, [] { return false; })
             .isComplete)
        return std::nullopt;
    plan.finish(paths);
    return plan;
}

} // namespace tarvel4
