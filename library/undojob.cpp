#include "library/undojob.h"

#include "library/importjob.h"
#include "library/songpath.h"
#include "library/workflowlog.h"
#include "storage/contenthash.h"
#include "storage/regularfile.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <iterator>

namespace tarvel4 {

namespace {

/** How many bytes at their ends two files have in common, as far as they can be read. */
qint64 commonEnd(const QString &path, const QString &otherPath)
{
    constexpr qint64 blockSize = 1 << 20;
    QFile first(path);
    QFile second(otherPath);
    if (!first.open(QIODevice::ReadOnly) || !second.open(QIODevice::ReadOnly))
        return 0;
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

/** The hash of \a head and of what the file \a path holds behind its first \a from bytes; empty,
 * and \a outcome the cause, where that can't be read. */
QByteArray hashOf(const QByteArray &head, const QString &path, qint64 from, Outcome &outcome)
{
    constexpr int blockSize = 1 << 20;
    ContentHash hash;
    hash.add(head);
    RegularFile file(path);
    QByteArray skipped;
    outcome = file.outcome();
    if (outcome)
        outcome = file.readUpTo(from, skipped);
    skipped.clear();
    for (qint64 left = file.size() - from; outcome && left > 0; left -= blockSize) {
        const QByteArray bytes = file.read(static_cast<int>(qMin<qint64>(left, blockSize)));
        outcome = file.outcome();
        hash.add(bytes);
    }
    return outcome ? hash.result() : QByteArray();
}

/** Those that a run wrote, in their order. */
QStringList filesOf(Journal &journal, const JournalRun &run)
{
    QStringList files;
    for (const JournalEntry &song : journal.songsOf(run.id))
        files += song.path;
    files.removeDuplicates();
    return files;
}

/** How many bytes at the end of a file its writes left as they were. */
qint64 unchangedEnd(const QVector<JournalEntry> &writes)
{
    qint64 rest = writes.first().splice.suffix;
    for (const JournalEntry &write : writes)
        rest = qMin(rest, write.way == FileChange::Way::InPlace ? 0 : write.splice.suffix);
    return rest;
}

} // namespace

UndoJob::UndoJob(Progress &progress, SaveRun &saves, bool isDryRun)
    : m_progress(progress)
    , m_saves(saves)
    , m_isDryRun(isDryRun)
{}

UndoSummary UndoJob::undo(Journal &journal, qint64 run, const SongObserver &observer)
{
    const QVector<History> files = byFile(journal.songsOf(run), journal.writtenAfter(run));
    QVector<QStringList> names;
    for (const History &file : files)
        names.append(file.names);
    if (!m_isDryRun)
        m_saves.takeBack(run);
    const UndoSummary summary = give(
        names, [&files](int i) { return planUndo(files.at(i)); }, observer);
    if (!m_isDryRun && summary.isComplete)
        m_saves.finish();
    return summary;
}

std::optional<UndoJob::Next> UndoJob::next(Journal &journal, const QVector<JournalRun> &runs)
{
    if (runs.isEmpty())
        return {};
    const JournalRun &newest = runs.constFirst();
    const QStringList written = filesOf(journal, newest);
    const auto begun = std::find_if(runs.begin(), runs.end(), [&newest](const JournalRun &run) {
        return run.id == newest.takesBack;
    });
    if (begun == runs.end())
        return Next{newest, written, written};
    const QStringList files = filesOf(journal, *begun);
    const QSet<QString> done(written.begin(), written.end());
    QStringList left;
    std::copy_if(files.begin(), files.end(), std::back_inserter(left),
                 [&done](const QString &path) { return !done.contains(path); });
    return left.isEmpty() ? Next{newest, written, written} : Next{*begun, files, left};
}

UndoSummary UndoJob::restore(const QStringList &paths, const QString &backup,
                             const SongObserver &observer)
{
    const auto sourceOf = [&](const QString &path) {
        return QDir(backup).filePath(SongPath::fileName(path));
    };
    QVector<QStringList> names;
    QHash<QByteArray, QSet<QByteArray>> songsOf; // identities
    for (const QString &path : paths) {
        names.append({path});
        songsOf[FileStamp(sourceOf(path)).identity()].insert(FileStamp(path).identity());
    }
    const auto plan = [&](int i) {
        const QString source = sourceOf(paths.at(i));
        Plan way = planRestore(paths.at(i), source);
        if (way.outcome && way.isNeeded && songsOf[FileStamp(source).identity()].size() > 1)
            way.outcome = {Outcome::Code::Refused,
                           paths.at(i),
                           tr("una di più song con questo nome, e il backup ne contiene una sola"),
                           {}};
        return way;
    };
    return give(names, plan, observer);
}

UndoSummary UndoJob::give(const QVector<QStringList> &files, const Planner &plan,
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
        static_cast<int>(files.size()));
    int done = 0;
    for (int i = 0; i < files.size() && !m_progress.wasCancelled(); ++i) {
        m_saves.beforeReading(files.at(i).first());
        giveOne(files.at(i), plan(i), tell);
        m_progress.setProgress(++done);
        m_progress.processPendingEvents();
    }
    m_saves.commit();
    m_progress.endProgress();
    summary.isComplete = done == files.size();
    return summary;
}

void UndoJob::giveOne(const QStringList &names, const Plan &plan, const SongObserver &tell)
{
    const auto done = [names, tell](Outcome outcome) {
        if (outcome == Outcome::Code::ChangedMeanwhile)
            outcome.detail = tr("è stato cambiato da allora, perciò resta com'è");
        for (const QString &name : names) {
            SongOutcome song;
            song.path = name;
            song.result = outcome ? SongResult::Restored : SongResult::Failed;
            song.cause = outcome;
            song.after = ImportJob::read(name).after;
            tell(song);
        }
    };
    if (plan.outcome && plan.isNeeded && !m_isDryRun)
        m_saves.save(names.first(), plan.stamp, plan.change, done);
    else
        m_saves.inTurn([done, cause = plan.outcome] { done(cause); });
}

/** A run may have written a song twice, by two names too. */
QVector<UndoJob::History> UndoJob::byFile(const QVector<JournalEntry> &songs,
                                          const QVector<JournalEntry> &later)
{
    QVector<History> files;
    QHash<QByteArray, int> indexOf;
    QHash<QString, int> indexOfPath;
    for (auto song = songs.crbegin(); song != songs.crend(); ++song) {
        const FileStamp stamp(song->path);
        const QByteArray file = stamp.isFile() ? stamp.identity() : song->path.toUtf8();
        const int index = indexOf.value(file, static_cast<int>(files.size()));
        if (index == files.size())
            files.append(History());
        indexOf.insert(file, index);
        indexOfPath.insert(song->path, index);
        files[index].writes.append(*song);
        if (!files.at(index).names.contains(song->path))
            files[index].names.append(song->path);
    }
    for (auto song = later.crbegin(); song != later.crend(); ++song) {
        if (indexOfPath.contains(song->path))
            files[indexOfPath.value(song->path)].later.append(*song);
    }
    return files;
}

UndoJob::Plan UndoJob::planUndo(const History &file)
{
    Plan plan = wayBack(file.writes);
    if (plan.outcome != Outcome::Code::ChangedMeanwhile)
        return plan;
    // What was taken back already, and may have been written several times since, needs nothing.
    const Plan all = wayBack(file.later + file.writes);
    if (all.outcome && all.change.oldHead == all.change.newHead) {
        plan.outcome = {};
        plan.isNeeded = false;
    }
    return plan;
}

/** How the file gets the bytes that it had before the first one of its writes. */
UndoJob::Plan UndoJob::wayBack(const Writes &writes)
{
    const JournalEntry &last = writes.first();
    Plan plan;
    plan.stamp = FileStamp(last.path);
    RegularFile file(last.path);
    plan.outcome = file.outcome();
    if (plan.outcome && file.size() != last.newSize)
        plan.outcome.code = Outcome::Code::ChangedMeanwhile;
    if (!plan.outcome)
        return plan;
    const qint64 rest = unchangedEnd(writes);
    const qint64 headSize = last.newSize - rest;
    QByteArray head;
    plan.outcome = file.readUpTo(headSize, head);
    if (!plan.outcome)
        return plan;
    QByteArray before = head;
    for (const JournalEntry &write : writes) {
        const QByteArray hash = hashOf(before, last.path, headSize, plan.outcome);
        if (plan.outcome && hash != write.newHash)
            plan.outcome.code = Outcome::Code::ChangedMeanwhile;
        if (!plan.outcome)
            return plan;
        Splice splice = write.splice;
        splice.suffix -= rest;
        before = splice.oldOf(before);
    }
    plan.change = {last.way, head, before, headSize, nullptr};
    return plan;
}

UndoJob::Plan UndoJob::planRestore(const QString &path, const QString &source)
{
    Plan plan;
    plan.stamp = FileStamp(path);
    RegularFile saved(source);
    RegularFile song(path);
    plan.outcome = saved.outcome() ? song.outcome() : saved.outcome();
    if (!plan.outcome)
        return plan;
    const bool isInPlace = !path.endsWith(QLatin1String(".mp3"), Qt::CaseInsensitive);
    const qint64 same = commonEnd(path, source);
    plan.isNeeded = song.size() != saved.size() || same != song.size();
    const qint64 kept = isInPlace ? 0 : same;
    const qint64 tail = song.size() - kept;
    QByteArray head;
    QByteArray before;
    plan.outcome = saved.readUpTo(saved.size() - kept, before);
    if (plan.outcome)
        plan.outcome = song.readUpTo(tail, head);
    if (!plan.outcome)
        return plan;
    const FileChange::Way way = isInPlace ? FileChange::Way::InPlace : FileChange::Way::Beside;
    plan.change = {way, head, before, tail, nullptr};
    return plan;
}

} // namespace tarvel4
