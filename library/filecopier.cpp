#include "library/filecopier.h"

#include "library/companion.h"
#include "library/freespace.h"
#include "library/messages.h"
#include "library/progress.h"
#include "library/questions.h"
#include "library/songpath.h"
#include "songs/metasong.h"
#include "storage/systemfile.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

namespace tarvel4 {

namespace {

/** True when the song is at its destination already. Where names keep case apart, paths that differ
 * in it are different songs. */
bool isInPlace(const QString &source, const QString &destination)
{
    const QString path = QDir::cleanPath(QFileInfo(source).absoluteFilePath());
    return path.compare(destination, Qt::CaseInsensitive) == 0
        && SystemFile::isSame(source, destination);
}

} // namespace

QStringList CopySummary::details() const
{
    QStringList lines;
    if (!cause)
        lines += cause.message();
    for (const SongOutcome &song : failures)
        lines += song.problem();
    return lines;
}

FileCopier::FileCopier(Progress &progress, Questions &questions, Messages &messages, Disk &disk,
                       SongObserver observer)
    : m_progress(progress)
    , m_questions(questions)
    , m_messages(messages)
    , m_disk(disk)
    , m_observer(std::move(observer))
{}

CopySummary FileCopier::copy(const QStringList &paths, const QString &destDir,
                             const QString &finalDir)
{
    m_paths = paths;
    m_finalDir = finalDir.isEmpty() ? destDir : finalDir;
    m_results.resize(static_cast<std::size_t>(paths.size()));
    if (paths.isEmpty())
        return m_summary;

    CopyBatch batch(m_disk, destDir, [this](int song, const Outcome &outcome) {
        setResult(song, outcome ? SongResult::Copied : SongResult::Failed, outcome);
    });
    m_summary.cause = batch.checkLeftovers();
    if (m_summary.cause) {
        Recovery::recoverAll(
            m_disk, destDir, MetaSong::isSong,
            [this](const QString &path, Recovery::Result result, const Outcome &cause) {
                m_messages.recovered(path, result, cause);
            });
        batch.removeLeftovers();
        m_summary.cause = FreeSpace::check(paths, destDir, m_disk);
    }
    if (!m_summary.cause) {
        m_summary.cause.path = m_finalDir;
        qDebug() << "[copyFiles] WARNING: not begun:" << m_summary.cause.message();
        return m_summary;
    }
    m_summary.isCancelled = !copyEach(destDir, batch);
    batch.finish();
    if (m_summary.isCancelled) {
        m_summary.copied = 0; // required
        m_progress.endProgress();
    }
    return m_summary;
}

bool FileCopier::copyEach(const QString &destDir, CopyBatch &batch)
{
    for (int song = 0; song < m_paths.size(); ++song) {
        if (m_progress.wasCancelled())
            return false;
        const QString destination =
            destDir + QLatin1Char('/') + SongPath::fileName(m_paths.at(song));
        // required: a song that is in place or kept does not move the progress
        if (!copySong(song, destination, batch)) {
            if (m_progress.wasCancelled())
                return false; // whoever was asked wants no such copy
            continue;
        }
        if (song + 1 == m_paths.size())
            batch.finish();
        m_progress.setProgress(song + 1);
    }
    return true;
}

/** False for a song that is in place or kept. */
bool FileCopier::copySong(int song, const QString &destination, CopyBatch &batch)
{
    const QString source = m_paths.at(song);
    if (isInPlace(source, destination)) {
        setResult(song, SongResult::Copied);
        return false;
    }
    qDebug() << "Copying file:" << source
             << "to:" << m_finalDir + QLatin1Char('/') + SongPath::fileName(source);
    if (batch.hasPending(destination))
        batch.commit();
    if (SystemFile::isTaken(destination) && !mayReplace(source, destination)) {
        qDebug() << "[copyFiles] kept as it was:" << destination;
        m_summary.displaced.append(source);
        setResult(song, SongResult::Kept);
        return false;
    }
    m_sources.insert(destination.toCaseFolded(), source);
    addToBatch(song, destination, batch);
    if (batch.isFull())
        batch.commit();
    return true;
}

void FileCopier::addToBatch(int song, const QString &destination, CopyBatch &batch)
{
    const QString source = m_paths.at(song);
    CopyBatch::Song copy{song, source, destination, Companion::of(source), QString()};
    if (!copy.companionSource.isEmpty()) {
        copy.companionDestination = Companion::destinationFor(destination);
        if (batch.hasPending(copy.companionDestination))
            batch.commit();
        // required: nobody is asked about a companion that is there already; its copy fails
        if (!Companion::of(destination).isEmpty()) {
            qDebug() << "[copyFiles] WARNING: exists already:" << copy.companionDestination;
            copy.companionSource.clear();
            setResult(song, SongResult::Failed,
                      {Outcome::Code::AlreadyExists, copy.companionDestination, {}, {}});
        }
    }
    const auto targetFailed = [&copy](const Outcome &outcome) {
        return !outcome
            && (outcome.path == copy.destination || outcome.path == copy.companionDestination);
    };
    Outcome added = batch.add(copy);
    if (targetFailed(added) && !batch.isEmpty()) {
        // The staged songs take the place of old ones, which makes room.
        batch.finish();
        added = batch.add(copy);
    }
    if (targetFailed(added) && batch.freeSpaceFor(copy))
        added = batch.add(copy);
    if (!added)
        setResult(song, SongResult::Failed, added);
}

bool FileCopier::mayReplace(const QString &source, const QString &destination)
{
    bool accepted = m_overwrite;
    if (m_askOverwrite) {
        const Answer answer = m_questions.askOverwrite(source, destination);
        accepted = answer == Answer::Yes || answer == Answer::YesToAll;
        m_askOverwrite = answer == Answer::Yes || answer == Answer::No;
        m_overwrite = answer == Answer::YesToAll;
    }
    const auto previous = m_sources.constFind(destination.toCaseFolded());
    if (accepted && previous != m_sources.constEnd())
        m_summary.displaced.append(*previous);
    return accepted;
}

/** The first result of a song stands; the observer is told of each as soon as none before it is
 * open. */
void FileCopier::setResult(int song, SongResult result, const Outcome &cause)
{
    auto &own = m_results[static_cast<std::size_t>(song)];
    if (!own)
        own = {result, cause};
    for (; m_told < m_paths.size(); ++m_told) {
        const auto &next = m_results[static_cast<std::size_t>(m_told)];
        if (!next)
            break;
        SongOutcome outcome;
        outcome.path = m_paths.at(m_told);
        outcome.result = next->result;
        outcome.cause = next->cause;
        if (outcome.isFailure())
            m_summary.failures.append(outcome);
        else
            ++(outcome.result == SongResult::Kept ? m_summary.kept : m_summary.copied);
        if (m_observer)
            m_observer(outcome);
    }
}

} // namespace tarvel4
