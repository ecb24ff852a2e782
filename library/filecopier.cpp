#include "library/filecopier.h"

#include "library/copybatch.h"
#include "library/songpath.h"
#include "songs/metasong.h"
#include "storage/nativepath.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <filesystem>

namespace tarvel4 {

namespace {

constexpr char songSuffix[] = ".mp3";
constexpr char companionSuffix[] = ".cdg";
constexpr int suffixLength = sizeof(companionSuffix) - 1;

/** True for anything of that name, a link that leads nowhere included. */
bool exists(const QString &path)
{
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(nativePath(path), error));
}

/** True when the song is at its destination already. Where names keep case apart, paths that differ
 * in it are different songs. */
bool isInPlace(const QString &source, const QString &destination)
{
    const QString path = QDir::cleanPath(QFileInfo(source).absoluteFilePath());
    std::error_code error;
    return path.compare(destination, Qt::CaseInsensitive) == 0
        && std::filesystem::equivalent(nativePath(source), nativePath(destination), error);
}

/** The karaoke graphics of an MP3's path, in whatever case their suffix stands; empty: none. */
QString companionOf(const QString &songPath)
{
    if (!songPath.endsWith(QLatin1String(songSuffix), Qt::CaseInsensitive))
        return QString();
    const QString stem = songPath.chopped(suffixLength);
    const int letters = suffixLength - 1;
    for (int upperCase = 0; upperCase < 1 << letters; ++upperCase) {
        QString suffix = QLatin1String(companionSuffix);
        for (int letter = 0; letter < letters; ++letter) {
            if (upperCase & 1 << letter)
                suffix[letter + 1] = suffix.at(letter + 1).toUpper();
        }
        if (QFileInfo(stem + suffix).isFile())
            return stem + suffix;
    }
    return QString();
}

} // namespace

FileCopier::FileCopier(WorkflowHost &host, Disk &disk)
    : m_host(host)
    , m_disk(disk)
{}

bool FileCopier::copyFiles(const QStringList &selectedFiles, const QString &destDir)
{
    m_askOverwrite = true;
    m_overwrite = false;
    m_copied = m_kept = 0;
    m_failed.clear();
    m_sources.clear();
    m_displaced.clear();
    if (selectedFiles.isEmpty())
        return true;

    Recovery::recoverAll(
        m_disk, destDir, MetaSong::isSong,
        [this](const QString &path, Recovery::Result outcome) { m_host.recovered(path, outcome); });
    CopyBatch batch(m_disk, destDir);
    batch.removeLeftovers();
    const bool complete = copyEach(selectedFiles, destDir, batch);
    batch.finish();
    m_copied += batch.copied();
    m_failed += batch.failed();
    if (!complete) {
        m_copied = 0;
        m_host.endProgress();
        return false;
    }
    return m_failed.isEmpty();
}

bool FileCopier::copyEach(const QStringList &selectedFiles, const QString &destDir,
                          CopyBatch &batch)
{
    int index = 0;
    for (const QString &source : selectedFiles) {
        if (m_host.wasCancelled())
            return false;
        ++index;
        const QString destination = destDir + QLatin1Char('/') + SongPath::fileName(source);
        // required: a song that is in place or kept does not move the progress
        if (!copySong(source, destination, batch))
            continue;
        if (index == selectedFiles.size())
            batch.finish();
        m_host.setProgress(index);
    }
    return true;
}

/** False for a song that is in place or kept. */
bool FileCopier::copySong(const QString &source, const QString &destination, CopyBatch &batch)
{
    if (isInPlace(source, destination)) {
        ++m_copied;
        return false;
    }
    qDebug() << "Copying file:" << source << "to:" << destination;
    if (batch.hasPending(destination))
        batch.commit();
    if (exists(destination) && !mayReplace(source, destination)) {
        qDebug() << "[copyFiles] kept as it was:" << destination;
        m_displaced.append(source);
        ++m_kept;
        return false;
    }
    m_sources.insert(destination.toCaseFolded(), source);
    addToBatch(source, destination, batch);
    if (batch.isFull())
        batch.commit();
    return true;
}

void FileCopier::addToBatch(const QString &source, const QString &destination, CopyBatch &batch)
{
    CopyBatch::Song song{source, destination, companionOf(source), QString(), true};
    if (!song.companionSource.isEmpty()) {
        song.companionDestination =
            destination.chopped(suffixLength) + QLatin1String(companionSuffix);
        if (batch.hasPending(song.companionDestination))
            batch.commit();
        // required: nobody is asked about a companion that is there already; its copy fails
        if (!companionOf(destination).isEmpty()) {
            qDebug() << "[copyFiles] WARNING: exists already:" << song.companionDestination;
            song.companionSource.clear();
            song.isCounted = false;
            m_failed.append(source);
        }
    }
    CopyBatch::StageResult added = batch.add(song);
    if (added == CopyBatch::StageResult::TargetFailed && !batch.isEmpty()) {
        // The staged songs take the place of old ones, which makes room.
        batch.finish();
        added = batch.add(song);
    }
    if (added == CopyBatch::StageResult::TargetFailed && batch.hideProgress(song))
        added = batch.add(song);
    if (added != CopyBatch::StageResult::Yes && song.isCounted)
        m_failed.append(source);
}

bool FileCopier::mayReplace(const QString &source, const QString &destination)
{
    bool accepted = m_overwrite;
    if (m_askOverwrite) {
        const Answer answer = m_host.askOverwrite(SongPath::fileName(source));
        accepted = answer == Answer::Yes || answer == Answer::YesToAll;
        m_askOverwrite = answer == Answer::Yes || answer == Answer::No;
        m_overwrite = answer == Answer::YesToAll;
    }
    const auto previous = m_sources.constFind(destination.toCaseFolded());
    if (accepted && previous != m_sources.constEnd())
        m_displaced.append(*previous);
    return accepted;
}

} // namespace tarvel4
