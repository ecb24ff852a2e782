#include "library/copybatch.h"

#include "indexer/indexformat.h"
#include "storage/filestamp.h"
#include "storage/recovery.h"
#include "storage/regularfile.h"
#include "storage/systemerror.h"
#include "storage/systemfile.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStorageInfo>

#include <algorithm>
#include <utility>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cerrno>
#include <csignal>
#endif

namespace tarvel4 {

namespace {

constexpr qint64 batchBytes = 64 << 20;
constexpr std::size_t batchSongs = 500;

bool isRunning(qint64 pid)
{
#ifdef Q_OS_WIN
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(pid));
    if (!process)
        return GetLastError() == ERROR_ACCESS_DENIED; // another user's
    const bool running = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return running;
#else
    return kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM;
#endif
}

/** True for a temporary file whose copier is gone. */
bool isLeftover(const QString &name)
{
    static const QRegularExpression pattern(QStringLiteral("^\\.tarvel4soft-(\\d+)-\\d+\\.part$"));
    const QRegularExpressionMatch match = pattern.match(name);
    if (!match.hasMatch())
        return false;
    const qint64 pid = match.captured(1).toLongLong();
    return pid == QCoreApplication::applicationPid() || !isRunning(pid);
}

/** The source's; where a copy replaces a file of nearly that time, that one's, if both begin alike,
 * or else a later one: an update of a memory's index knows by its time that a song is another one,
 * and may not have come to it after the last transfer. */
QDateTime timeOfCopy(const QString &source, const QDateTime &modified, const QString &destination)
{
    constexpr qint64 coarsest = 2; // seconds, in which FAT counts
    const FileStamp old(destination);
    if (!old.isFile() || qAbs(old.modified().msecsTo(modified)) > coarsest * 1000)
        return modified;
    const auto start = [](const QString &path) {
        return RegularFile(path).read(IndexFormat::songBytesRead);
    };
    return start(source) == start(destination) ? old.modified() : old.modified().addSecs(coarsest);
}

} // namespace

CopyBatch::CopyBatch(Disk &disk, const QString &folder, Observer observer)
    : m_disk(disk)
    , m_folder(folder)
    , m_observer(std::move(observer))
    // A dot at the front keeps the name out of every list of songs.
    , m_namePrefix(QDir(folder).filePath(
          QStringLiteral(".tarvel4soft-%1-").arg(QCoreApplication::applicationPid())))
{}

CopyBatch::~CopyBatch()
{
    for (const Staged &staged : m_staged)
        discard(staged);
}

Outcome CopyBatch::makeFolder(const QString &folder)
{
    return SystemFile::makeFolder(folder);
}

Outcome CopyBatch::checkLeftovers() const
{
    constexpr QDir::Filters filters = QDir::Files | QDir::Hidden | QDir::NoSymLinks;
    const QDir folder(m_folder);
    // Where a long name was cut the short one is left: "TARVEL~1.PAR".
    const QFileInfoList leftovers = folder.entryInfoList(
        {QStringLiteral("*.part"), QStringLiteral("*.par"), QStringLiteral("*.bak")}, filters);
    if (leftovers.isEmpty() || !m_disk.losesReplacedFiles(leftovers.first().filePath()))
        return {};
    const QFileInfoList files = folder.entryInfoList(filters);
    for (const QFileInfo &leftover : leftovers) {
        for (const QFileInfo &file : files) {
            if (file.fileName() != leftover.fileName() && !isLeftover(file.fileName())
                && Recovery::mayBeOneFile(file, leftover))
                return {Outcome::Code::MediumFailed,
                        m_folder,
                        QCoreApplication::translate(
                            "Outcome", "%1 e %2 sono forse lo stesso file: va riparata")
                            .arg(file.fileName(), leftover.fileName()),
                        {}};
        }
    }
    return {};
}

void CopyBatch::removeLeftovers()
{
    const QDir folder(m_folder);
    const QStringList names = folder.entryList({QStringLiteral(".tarvel4soft-*.part")},
                                               QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QString &name : names) {
        if (!isLeftover(name))
            continue;
        m_isDirty = true;
        if (!m_disk.remove(folder.filePath(name)))
            qDebug() << "[copyFiles] WARNING: can't be removed:" << folder.filePath(name);
    }
}

Outcome CopyBatch::add(const Song &song)
{
    Staged staged{song, Replacement(m_disk, song.destination), {}, {}, {}};
    if (Outcome added = stage(song.source, song.destination, staged.temporary); !added)
        return added;
    if (!song.companionSource.isEmpty()) {
        Outcome added =
            stage(song.companionSource, song.companionDestination, staged.companionTemporary);
        if (!added) {
            discard(staged);
            return added;
        }
        m_pending.insert(song.companionDestination.toCaseFolded());
    }
    m_pending.insert(song.destination.toCaseFolded());
    m_staged.push_back(std::move(staged));
    return {};
}

Outcome CopyBatch::freeSpaceFor(const Song &song)
{
    const QFileInfo old(song.destination);
    const QStorageInfo volume(m_folder);
    if (volume.bytesTotal() <= 0) // its room is not known
        return {Outcome::Code::NoRoom, song.destination, {}, {}};
    const auto blocks = [size = qMax(1, volume.blockSize())](qint64 bytes) {
        return (bytes + size - 1) / size;
    };
    qint64 wanted = blocks(QFileInfo(song.source).size());
    if (!song.companionSource.isEmpty())
        wanted += blocks(QFileInfo(song.companionSource).size());
    const qint64 missing = wanted - volume.bytesAvailable() / qMax(1, volume.blockSize());
    if (!old.isFile() || old.isSymLink() || missing <= 0 || missing > blocks(old.size()))
        return {Outcome::Code::NoRoom, song.destination, {}, {}};
    qDebug() << "[copyFiles] removed to make room:" << song.destination;
    const Outcome removed = m_disk.remove(song.destination);
    return removed ? m_disk.syncAll({song.destination}) : removed;
}

bool CopyBatch::isEmpty() const
{
    return m_staged.empty()
        && std::none_of(m_unflushed.begin(), m_unflushed.end(),
                        [](const Staged &song) { return song.replacement.isSetAside(); });
}

bool CopyBatch::isFull() const
{
    return m_stagedBytes >= batchBytes || m_staged.size() >= batchSongs;
}

bool CopyBatch::hasPending(const QString &destination) const
{
    return m_pending.contains(destination.toCaseFolded());
}

void CopyBatch::commit()
{
    if (m_staged.empty())
        return;
    const Outcome flushed = flush();
    for (Staged &staged : m_staged)
        staged.outcome = flushed;
    setAside();
    for (Staged &staged : std::exchange(m_staged, {})) {
        place(staged);
        if (!staged.outcome)
            discard(staged);
        if (staged.replacement.isPublished())
            m_unflushed.push_back(std::move(staged));
        else
            m_observer(staged.song.id, staged.outcome);
    }
    m_isDirty = m_isDirty || flushed;
    m_pending.clear();
    m_stagedBytes = 0;
}

void CopyBatch::finish()
{
    commit();
    while (m_isDirty)
        flush();
}

Outcome CopyBatch::stage(const QString &source, const QString &destination, QString &temporary)
{
    QFile target;
    Outcome staged;
    do {
        temporary = m_namePrefix + QString::number(m_nextName++) + QLatin1String(".part");
        target.setFileName(temporary);
        staged = m_disk.createNew(target);
    } while (staged == Outcome::Code::AlreadyExists);
    if (!staged) {
        qDebug() << "[copyFiles] WARNING: can't be written:" << temporary << staged.sentence();
        staged.path = destination;
        return staged;
    }
    staged = copyBytes(source, target, temporary, destination);
    target.close();
    if (staged) {
        m_touched.append(temporary);
        return staged;
    }
    m_disk.remove(temporary);
    if (staged.path != source)
        staged.path = destination;
    return staged;
}

Outcome CopyBatch::copyBytes(const QString &source, QFileDevice &target, const QString &temporary,
                             const QString &destination)
{
    const FileStamp stamp(source);
    QFile file(source);
    Outcome copied;
    SystemError::presumeFailedMedium();
    if (!stamp.isFile()) // what would have to be waited for is not opened
        copied = RegularFile(source).outcome();
    else if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        copied = SystemError::outcomeOf(false, source, false);
    else
        copied = m_disk.copyRange(file, target, stamp.size());
    if (copied && !stamp.matches(source))
        copied = {Outcome::Code::ChangedMeanwhile, source, {}, {}};
    if (!copied) {
        qDebug() << (copied.path == source ? "[copyFiles] WARNING: can't be read:"
                                           : "[copyFiles] WARNING: can't be written:")
                 << copied.message();
        return copied;
    }
    SystemFile::copyPermissions(source, temporary);
    if (!target.setFileTime(timeOfCopy(source, stamp.modified(), destination),
                            QFileDevice::FileModificationTime))
        qDebug() << "[copyFiles] WARNING: time not kept:" << source;
    m_stagedBytes += stamp.size();
    return {};
}

/** Old songs get out of the way where the medium could lose them together with the new ones; their
 * other names are on it before the new ones take theirs. */
void CopyBatch::setAside()
{
    QStringList paths;
    for (Staged &staged : m_staged) {
        if (staged.outcome)
            staged.outcome = staged.replacement.setAside();
        if (staged.replacement.isSetAside())
            paths.append(staged.song.destination);
    }
    Outcome flushed = paths.isEmpty() ? Outcome() : m_disk.syncAll(paths);
    if (flushed)
        return;
    flushed.path = m_folder;
    for (Staged &staged : m_staged) {
        if (staged.replacement.isSetAside())
            staged.outcome = staged.replacement.giveBack(flushed);
    }
}

void CopyBatch::place(Staged &staged)
{
    const Song &song = staged.song;
    if (staged.outcome) {
        staged.outcome = staged.replacement.publish(staged.temporary);
        m_touched.append(song.destination);
    }
    // The companion comes last, since without its song it would stand in the way of the next try.
    if (staged.outcome && !staged.companionTemporary.isEmpty()) {
        staged.outcome = m_disk.replace(staged.companionTemporary, song.companionDestination);
        staged.outcome.path = song.companionDestination;
        m_touched.append(song.companionDestination);
    }
    if (!staged.outcome)
        qDebug() << "[copyFiles] WARNING: not copied:" << song.destination
                 << staged.outcome.sentence();
}

void CopyBatch::discard(const Staged &staged)
{
    for (const QString &temporary : {staged.temporary, staged.companionTemporary}) {
        if (!temporary.isEmpty() && !m_disk.remove(temporary))
            qDebug() << "[copyFiles] WARNING: can't be removed:" << temporary;
    }
}

Outcome CopyBatch::flush()
{
    m_isDirty = false;
    Outcome flushed = m_disk.syncAll(std::exchange(m_touched, {}));
    flushed.path = m_folder; // one failure for all of them
    if (!flushed)
        qDebug() << "[copyFiles] WARNING: not on the medium:" << m_folder << flushed.sentence();
    for (Staged &staged : std::exchange(m_unflushed, {})) {
        const QString &destination = staged.song.destination;
        if (!flushed)
            staged.outcome = staged.replacement.isSetAside()
                ? staged.replacement.giveBack(flushed)
                : Outcome{Outcome::Code::NotConfirmed, destination, {}, {}};
        if (staged.replacement.isSetAside()) {
            staged.replacement.removeOld();
            m_touched.append(destination);
            m_isDirty = true;
        }
        m_observer(staged.song.id, staged.outcome);
    }
    return flushed;
}

} // namespace tarvel4
