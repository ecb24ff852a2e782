#include "library/copybatch.h"

#include "storage/filestamp.h"
#include "storage/nativepath.h"
#include "storage/recovery.h"
#include "storage/regularfile.h"

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
#include <utility>

namespace tarvel4 {

namespace {

constexpr int blockSize = 1 << 17;
constexpr qint64 batchBytes = 64 << 20;
constexpr std::size_t batchSongs = 500;

bool isRunning(qint64 pid)
{
#ifdef Q_OS_WIN
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(pid));
    if (!process)
        return false;
    const bool running = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return running;
#else
    return kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM;
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

CopyBatch::CopyBatch(Disk &disk, const QString &folder, Observer observer)
    : m_disk(disk)
    , m_folder(folder)
    , m_observer(std::move(observer))
    // A dot at the front keeps the name out of every list of songs.
    , m_namePrefix(QDir(folder).filePath(
          QStringLiteral(".tarvel4soft-%1-").arg(QCoreApplication::applicationPid())))
{
    m_buffer.resize(blockSize);
}

CopyBatch::~CopyBatch()
{
    for (const Staged &staged : m_staged)
        discard(staged);
}

Outcome CopyBatch::makeFolder(const QString &folder)
{
    std::error_code error;
    if (std::filesystem::create_directory(nativePath(folder), error))
        return {};
    if (!error)
        return {Outcome::Code::AlreadyExists, folder, {}, {}};
    return Outcome::ofSystemError(error.default_error_condition().value(), folder);
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
    Staged staged{song, QString(), QString()};
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
    m_staged.push_back(staged);
    return {};
}

Outcome CopyBatch::freeSpaceFor(const Song &song)
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
        return {Outcome::Code::NoRoom, song.destination, {}, {}};
    qDebug() << "[copyFiles] removed to make room:" << song.destination;
    const Outcome removed = m_disk.remove(song.destination);
    return removed ? m_disk.syncAll({song.destination}) : removed;
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
    for (const Staged &staged : m_staged) {
        const Outcome placed = flushed ? place(staged) : flushed;
        if (placed) {
            m_unflushed.push_back(staged.song);
        } else {
            discard(staged);
            m_observer(staged.song.id, placed);
        }
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
    staged = copyBytes(source, target, temporary);
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

Outcome CopyBatch::copyBytes(const QString &source, QFileDevice &target, const QString &temporary)
{
    const FileStamp stamp(source);
    RegularFile file(source);
    if (!file.outcome()) {
        qDebug() << "[copyFiles] WARNING: can't be read:" << source << file.outcome().sentence();
        return file.outcome();
    }
    qint64 left = stamp.size();
    while (left > 0) {
        const qint64 count = file.read(m_buffer.data(), qMin<qint64>(left, m_buffer.size()));
        if (count <= 0)
            break;
        const QByteArray block =
            QByteArray::fromRawData(m_buffer.constData(), static_cast<int>(count));
        if (Outcome written = m_disk.write(target, block); !written) {
            qDebug() << "[copyFiles] WARNING: can't be written:" << temporary << written.sentence();
            return written;
        }
        left -= count;
    }
    if (!file.outcome()) {
        qDebug() << "[copyFiles] WARNING: can't be read:" << source << file.outcome().sentence();
        return file.outcome();
    }
    if (left > 0 || !stamp.matches(source)) {
        qDebug() << "[copyFiles] WARNING: changed while it was copied:" << source;
        return {Outcome::Code::ChangedMeanwhile, source, {}, {}};
    }
    copyPermissions(source, temporary);
    if (!target.setFileTime(stamp.modified(), QFileDevice::FileModificationTime))
        qDebug() << "[copyFiles] WARNING: time not kept:" << source;
    m_stagedBytes += stamp.size();
    return {};
}

Outcome CopyBatch::place(const Staged &staged)
{
    // The companion comes last, since without its song it would stand in the way of the next try.
    Outcome placed = publish(staged.temporary, staged.song.destination);
    if (!placed || staged.companionTemporary.isEmpty())
        return placed;
    placed = publish(staged.companionTemporary, staged.song.companionDestination);
    placed.path = staged.song.companionDestination;
    return placed;
}

Outcome CopyBatch::publish(const QString &temporary, const QString &destination)
{
    // Disk::replace() keeps the old file too, but flushes three times for each.
    const bool keepsOld = QFileInfo::exists(destination) && m_disk.losesReplacedFiles(destination);
    const QString old = keepsOld ? Recovery::recoveryPathOf(destination) : QString();
    m_touched.append(destination);
    if (keepsOld)
        m_touched.append(old);
    Outcome named;
    if (keepsOld && QFileInfo::exists(old))
        named = {Outcome::Code::AlreadyExists, old, {}, {}};
    else if (keepsOld)
        named = m_disk.replace(destination, old);
    const auto isFree = static_cast<bool>(named);
    if (isFree)
        named = m_disk.replace(temporary, destination);
    if (named) {
        if (keepsOld)
            m_setAside.push_back({old, destination});
        return named;
    }
    qDebug() << "[copyFiles] WARNING: can't be named:" << destination << named.sentence();
    if (keepsOld && isFree && !m_disk.replace(old, destination)) {
        qDebug() << "[copyFiles] WARNING: the old file is now called" << old;
        return {Outcome::Code::NotRestored, destination, old, {}};
    }
    return named;
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
    QHash<QString, Outcome> restored;
    if (flushed) {
        removeSetAside();
    } else {
        qDebug() << "[copyFiles] WARNING: not on the medium:" << m_folder << flushed.sentence();
        restored = restoreSetAside(flushed);
    }
    const std::vector<Song> songs = std::exchange(m_unflushed, {});
    for (const Song &song : songs) {
        const Outcome unconfirmed{Outcome::Code::NotConfirmed, song.destination, {}, {}};
        m_observer(song.id, flushed ? flushed : restored.value(song.destination, unconfirmed));
    }
    return flushed;
}

void CopyBatch::removeSetAside()
{
    for (const Replaced &old : m_setAside) {
        if (!m_disk.remove(old.path))
            qDebug() << "[copyFiles] WARNING: can't be removed:" << old.path;
        m_touched.append(old.path);
    }
    m_isDirty = !m_setAside.empty();
    m_setAside.clear();
}

/** What became of each song, by its destination, whose old file was given back its name. */
QHash<QString, Outcome> CopyBatch::restoreSetAside(const Outcome &cause)
{
    QHash<QString, Outcome> outcomes;
    for (const Replaced &old : m_setAside) {
        outcomes.insert(old.destination, cause);
        if (m_disk.remove(old.destination) && m_disk.replace(old.path, old.destination))
            continue;
        qDebug() << "[copyFiles] WARNING: the old file is now called" << old.path;
        outcomes.insert(old.destination,
                        {Outcome::Code::NotRestored, old.destination, old.path, {}});
    }
    m_setAside.clear();
    return outcomes;
}

} // namespace tarvel4
