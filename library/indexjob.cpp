#include "library/indexjob.h"

#include "indexer/index.h"
#include "library/messages.h"
#include "library/progress.h"

namespace tarvel4 {

QStringList IndexSummary::details() const
{
    return cause ? errors : errors + QStringList(cause.message());
}

IndexJob::IndexJob(Progress &progress, Messages &messages, Disk &disk)
    : m_progress(progress)
    , m_messages(messages)
    , m_disk(disk)
{}

IndexSummary IndexJob::run(Kind kind, const QString &root, const ProgressTexts &texts, int maximum)
{
    m_progress.beginProgress(texts, maximum);
    Index index(nullptr, m_disk);
    index.setStopWhen(m_stopWhen);
    index.setOnRecovered(
        [this](const QString &path, Recovery::Result result, const Outcome &cause) {
            m_messages.recovered(path, result, cause);
        });
    QObject::connect(&index, &Index::fileFoundChanged,
                     [this](int count) { m_progress.setProgressValue(count); });
    QObject::connect(&index, &Index::progressMaxSetup,
                     [this](int newMaximum) { m_progress.setProgressMaximum(newMaximum); });
    QObject::connect(&index, &Index::progressValueChanged,
                     [this](int value) { m_progress.setProgressValue(value); });
    if (m_onPath)
        QObject::connect(&index, &Index::currentPathChanged, m_onPath);
    IndexSummary summary = run(kind, root, index);
    m_progress.endProgress();
    return summary;
}

IndexSummary IndexJob::run(Kind kind, const QString &root, Index &index)
{
    IndexSummary summary;
    const auto errors =
        QObject::connect(&index, &Index::errorFromIndex,
                         [&summary](const QString &text) { summary.errors += text; });
    summary.isDone = kind == Kind::Update ? index.update(root) : index.rebuild(root);
    QObject::disconnect(errors);
    summary.found = index.found();
    summary.isChanged = index.changed();
    summary.isPrepared = Index::isPrepared(root);
    summary.hasFailed = index.failed();
    summary.cause = index.outcome();
    return summary;
}

} // namespace tarvel4
