#include "library/undojob.h"

#include "library/importjob.h"
#include "library/songpath.h"
#include "library/workflowlog.h"
#include "storage/contenthash.h"
#include "storage/regularfile.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace tarvel4 {

namespace {

/** How many bytes at their ends two files have in common. */
qint64 commonEnd(QFile &first, QFile &second)
{
    constexpr qint64 blockSize = 1 << 20;
    const qint64 most = qMin(first.size(), second.size());
    qint64 common = 0;
    while (common < most) {
        const qint64 size = qMin(blockSize, most - common);
        if (!first.seek(first.size() - common - size)
            || !second.seek(second.size() - common - size))
            return common;
        const QByteArray one = first.read(size);
        const QByteArray other = second.read(size);
        if (one.size() != size || other.size() != size)
            return common;
        const auto differs = std::mismatch(one.rbegin(), one.rend(), other.rbegin()).first;
        common += differs - one.rbegin();
        if (differs != one.rend())
            return common;
    }
    return common;
}

QByteArray hashOf(const QByteArray &bytes)
{
    ContentHash hash;
    hash.add(bytes);
    return hash.result();
}

} // namespace

UndoJob::UndoJob(Progress &progress, SaveRun &saves, bool isDryRun)
    : m_progress(progress)
    , m_saves(saves)
    , m_isDryRun(isDryRun)
{}

UndoSummary UndoJob::undo(const QVector<JournalEntry> &songs, const SongObserver &observer)
{
    QVector<JournalEntry> lastFirst = songs;
    std::reverse(lastFirst.begin(), lastFirst.end()); // a run may have written a song twice
    QStringList paths;
    for (const JournalEntry &song : qAsConst(lastFirst))
        paths += song.path;
    return run(
        paths, [&](int i) { return planUndo(lastFirst.at(i)); }, observer);
}

UndoSummary UndoJob::restore(const QStringList &paths, const QString &backup,
                             const SongObserver &observer)
{
    return run(
        paths,
        [&](int i) {
            return planRestore(paths.at(i), QDir(backup).filePath(SongPath::fileName(paths.at(i))));
        },
        observer);
}

UndoSummary UndoJob::run(const QStringList &paths, const Planner &plan,
                         const SongObserver &observer)
{
    UndoSummary summary;
    const auto tell = [&](const SongOutcome &song) {
        if (song.isFailure()) {
            ++summary.failed;
            summary.problems += song.problem();
            WorkflowLog::refused("[UNDO]", song);
        } else {
            ++summary.restored;
        }
        observer(song);
    };
    m_progress.beginProgress(
        {tr("Annulla le modifiche"), tr("Rimetto le song com'erano..."), tr("Interrompi")},
        paths.size());
    for (int i = 0; i < paths.size() && !m_progress.wasCancelled(); ++i) {
        m_saves.beforeReading(paths.at(i));
        give(paths.at(i), plan(i), tell);
        m_progress.setProgress(i + 1);
        m_progress.processPendingEvents();
    }
    m_saves.commit();
    m_progress.endProgress();
    return summary;
}

void UndoJob::give(const QString &path, const Plan &plan, const SongObserver &tell)
{
    const auto done = [path, tell](const Outcome &outcome) {
        SongOutcome song;
        song.path = path;
        song.result = outcome ? SongResult::Restored : SongResult::Failed;
        song.cause = outcome;
        song.after = ImportJob::read(path).after;
        tell(song);
    };
    if (plan.outcome && plan.isNeeded && !m_isDryRun)
        m_saves.save(path, plan.stamp, plan.change, done);
    else
        m_saves.inTurn([done, cause = plan.outcome] { done(cause); });
}

UndoJob::Plan UndoJob::planUndo(const JournalEntry &song)
{
    Plan plan;
    plan.stamp = FileStamp(song.path);
    RegularFile file(song.path);
    plan.outcome = file.outcome();
    if (plan.outcome && file.size() != song.newSize)
        plan.outcome.code = Outcome::Code::ChangedMeanwhile;
    if (!plan.outcome)
        return plan;
    const bool isInPlace = song.way == FileChange::Way::InPlace;
    const qint64 headSize = isInPlace ? song.newSize : song.newSize - song.splice.suffix;
    QByteArray head;
    plan.outcome = file.readUpTo(headSize, head);
    if (!plan.outcome)
        return plan;
    const QByteArray hash = isInPlace ? hashOf(head) : ContentHash::ofFile(song.path, plan.outcome);
    if (plan.outcome && hash != song.newHash)
        plan.outcome.code = Outcome::Code::ChangedMeanwhile;
    const QByteArray before = isInPlace
        ? song.splice.oldOf(head)
        : head.left(static_cast<int>(song.splice.prefix)) + song.splice.oldMiddle;
    plan.change = {song.way, head, before, headSize, nullptr};
    return plan;
}

UndoJob::Plan UndoJob::planRestore(const QString &path, const QString &source)
{
    Plan plan;
    plan.stamp = FileStamp(path);
    for (const QString &needed : {source, path}) {
        plan.outcome = RegularFile(needed).outcome();
        if (!plan.outcome)
            return plan;
    }
    QFile song(path);
    QFile saved(source);
    const bool isInPlace = !path.endsWith(QLatin1String(".mp3"), Qt::CaseInsensitive);
    const bool isOpen = song.open(QIODevice::ReadOnly) && saved.open(QIODevice::ReadOnly);
    const qint64 same = isOpen ? commonEnd(song, saved) : 0;
    plan.isNeeded = song.size() != saved.size() || same != song.size();
    const qint64 tail = song.size() - (isInPlace ? 0 : same);
    QByteArray head;
    QByteArray before;
    if (!isOpen || !song.seek(0) || !saved.seek(0) || !FileBytes::readUpTo(song, tail, head)
        || !FileBytes::readUpTo(saved, saved.size() - (isInPlace ? 0 : same), before)) {
        plan.outcome.code = Outcome::Code::ReadDenied;
        return plan;
    }
    const FileChange::Way way = isInPlace ? FileChange::Way::InPlace : FileChange::Way::Beside;
    plan.change = {way, head, before, tail, nullptr};
    return plan;
}

} // namespace tarvel4
