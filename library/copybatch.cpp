#include "library/copybatch.h"

#include "storage/filestamp.h"
#include "storage/nativepath.h"
#include "storage/recovery.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStorageInfo>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cerrno>
#include <csignal>
#endif

#include <filesystem>

namespace tarvel4 {

namespace {

constexpr int blockSize = 1 << 17;
constexpr qint64 batchBytes = 64 << 20;
constexpr std::size_t batchSongs = 500;

bool isRunning(qint64 pid)
{
#ifdef Q_OS_WIN
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, DWORD(pid));
    if (!process)
        return false;
    const bool running = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return running;
#else
    return kill(pid_t(pid), 0) == 0 || errno == EPERM;
#endif
}

void copyPermissions(const QString &source, const QString &target)
{
    // A card that knows no permissions refuses them; the copy is good all the same.
    std::error_code ignored;
    const std::filesystem::file_status status =
        std::filesystem::status(nativePath(source), ignored);
    std::filesystem::permissions(nativePath(target), status.permissions(), ignored);
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

} // namespace

CopyBatch::CopyBatch(Disk &disk, const QString &folder)
    : m_disk(disk)
    , m_folder(folder)
    // A point at the front keeps the name out of every list of songs.
    , m_namePrefix(QDir(folder).filePath(
          QStringLiteral(".tarvel4soft-%1-").arg(QCoreApplication::applicationPid())))
{
    m_buffer.resize(blockSize);
}

CopyBatch::~CopyBatch()
{
    for (const Staged &song : m_staged)
        discard(song);
}

void CopyBatch::removeLeftovers()
{
    const QDir folder(m_folder);
    const QStringList names = folder.entryList({QStringLiteral(".tarvel4soft-*.part")},
                                               QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QString &name : names) {
        if (isLeftover(name) && !m_disk.remove(folder.filePath(name)))
            qDebug() << "[copyFiles] WARNING: can't be removed:" << folder.filePath(name);
    }
}

CopyBatch::StageResult CopyBatch::add(const Song &song)
{
    Staged staged{song.source,   QString(), song.destination, QString(), song.companionDestination,
                  song.isCounted};
    const StageResult songAdded = stage(song.source, staged.temporary);
    if (songAdded != StageResult::Yes)
        return songAdded;
    if (!song.companionSource.isEmpty()) {
        const StageResult companionAdded = stage(song.companionSource, staged.companionTemporary);
        if (companionAdded != StageResult::Yes) {
            discard(staged);
            return companionAdded;
        }
        m_pending.insert(song.companionDestination.toCaseFolded());
    }
    m_pending.insert(song.destination.toCaseFolded());
    m_staged.push_back(staged);
    return StageResult::Yes;
}

bool CopyBatch::hideProgress(const Song &song)
{
    const QFileInfo old(song.destination);
    const QStorageInfo volume(m_folder);
    const auto blocks = [size = qMax(1, volume.blockSize())](qint64 bytes) {
        return (bytes + size - 1) / size;
    };
    qint64 wanted = blocks(QFileInfo(song.source).size());
    if (!song.companionSource.isEmpty())
        wanted += blocks(QFileInfo(song.companionSource).size());
    const qint64 missing = wanted - volume.bytesAvailable() / qMax(1, volume.blockSize());
    if (!old.isFile() || old.isSymLink() || missing <= 0 || missing > blocks(old.size()))
        return false;
    qDebug() << "[copyFiles] removed to make room:" << song.destination;
    return m_disk.remove(song.destination) && m_disk.syncVolume(m_folder);
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
    const bool flushed = flush();
    for (const Staged &song : m_staged) {
        const bool isPlaced = flushed && place(song);
        if (song.isCounted)
            (isPlaced ? m_unflushed : m_failed).append(song.source);
        if (!isPlaced)
            discard(song);
    }
    m_isDirty = m_isDirty || flushed;
    m_staged.clear();
    m_pending.clear();
    m_stagedBytes = 0;
}

void CopyBatch::finish()
{
    commit();
    while (m_isDirty)
        flush();
}

CopyBatch::StageResult CopyBatch::stage(const QString &source, QString &temporary)
{
    QFile target;
    do {
        temporary = m_namePrefix + QString::number(m_nextName++) + QLatin1String(".part");
        target.setFileName(temporary);
    } while (!target.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)
             && QFileInfo::exists(temporary));
    if (!target.isOpen()) {
        qDebug() << "[copyFiles] WARNING: can't be written:" << temporary << target.errorString();
        return StageResult::TargetFailed;
    }
    const StageResult added = copyBytes(source, target);
    target.close();
    if (added != StageResult::Yes)
        m_disk.remove(temporary);
    return added;
}

CopyBatch::StageResult CopyBatch::copyBytes(const QString &source, QFileDevice &target)
{
    const FileStamp stamp(source);
    QFile file(source);
    if (!stamp.isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        qDebug() << "[copyFiles] WARNING: can't be read:" << source << file.errorString();
        return StageResult::SourceFailed;
    }
    qint64 left = stamp.size();
    while (left > 0) {
        const qint64 count = file.read(m_buffer.data(), qMin<qint64>(left, m_buffer.size()));
        if (count <= 0)
            break;
        const QByteArray block = QByteArray::fromRawData(m_buffer.constData(), int(count));
        if (!m_disk.write(target, block)) {
            qDebug() << "[copyFiles] WARNING: can't be written:" << target.fileName()
                     << target.errorString();
            return StageResult::TargetFailed;
        }
        left -= count;
    }
    if (left > 0 || !stamp.matches(source)) {
        qDebug() << "[copyFiles] WARNING: changed while it was copied:" << source;
        return StageResult::SourceFailed;
    }
    copyPermissions(source, target.fileName());
    if (!target.setFileTime(stamp.modified(), QFileDevice::FileModificationTime))
        qDebug() << "[copyFiles] WARNING: time not kept:" << source;
    m_stagedBytes += stamp.size();
    return StageResult::Yes;
}

bool CopyBatch::place(const Staged &song)
{
    // The companion comes last, since without its song it would stand in the way of the next try.
    return publish(song.temporary, song.destination)
        && (song.companionTemporary.isEmpty()
            || publish(song.companionTemporary, song.companionDestination));
}

bool CopyBatch::publish(const QString &temporary, const QString &destination)
{
    // Disk::replace() keeps the old file too, but flushes three times for each.
    const bool keepsOld = QFileInfo::exists(destination) && m_disk.losesReplacedFiles(destination);
    const QString old = keepsOld ? Recovery::recoveryPathOf(destination) : QString();
    const bool isFree = !keepsOld || (!QFileInfo::exists(old) && m_disk.replace(destination, old));
    if (isFree && m_disk.replace(temporary, destination)) {
        if (keepsOld)
            m_setAside.push_back({old, destination});
        return true;
    }
    qDebug() << "[copyFiles] WARNING: can't be named:" << destination;
    if (keepsOld && isFree && !m_disk.replace(old, destination))
        qDebug() << "[copyFiles] WARNING: the old file is now called" << old;
    return false;
}

void CopyBatch::discard(const Staged &song)
{
    for (const QString &temporary : {song.temporary, song.companionTemporary}) {
        if (!temporary.isEmpty() && !m_disk.remove(temporary))
            qDebug() << "[copyFiles] WARNING: can't be removed:" << temporary;
    }
}

bool CopyBatch::flush()
{
    m_isDirty = false;
    const auto flushed = static_cast<bool>(m_disk.syncVolume(m_folder));
    if (flushed) {
        m_copied += m_unflushed.size();
        removeSetAside();
    } else {
        qDebug() << "[copyFiles] WARNING: not on the medium:" << m_folder;
        m_failed += m_unflushed;
        restoreSetAside();
    }
    m_unflushed.clear();
    return flushed;
}

void CopyBatch::removeSetAside()
{
    for (const Replaced &old : m_setAside) {
        if (!m_disk.remove(old.path))
            qDebug() << "[copyFiles] WARNING: can't be removed:" << old.path;
    }
    m_isDirty = !m_setAside.empty();
    m_setAside.clear();
}

void CopyBatch::restoreSetAside()
{
    for (const Replaced &old : m_setAside) {
        if (!m_disk.remove(old.destination) || !m_disk.replace(old.path, old.destination))
            qDebug() << "[copyFiles] WARNING: the old file is now called" << old.path;
    }
    m_setAside.clear();
}

} // namespace tarvel4
