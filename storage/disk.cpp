#include "storage/disk.h"

#include "storage/recovery.h"

#include <QDebug>
#include <QFile>
#include <QFileDevice>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/vfs.h>
#endif

namespace tarvel4 {

namespace {

/** The outcome of a call that has just set errno where it failed. */
Outcome outcomeOf(bool isDone, const QString &path)
{
    return isDone ? Outcome{Outcome::Code::Done, path, {}, {}}
                  : Outcome::ofSystemError(errno, path);
}

#ifdef Q_OS_UNIX

/** Opens what is at \a path, a folder too, waits with \a flush until it is on the medium. */
Outcome flushPath(const QString &path, int (*flush)(int))
{
    const int fd = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return outcomeOf(false, path);
    // Some file systems have nothing to flush for a folder, and say so with EINVAL.
    const bool isFlushed = flush(fd) == 0 || errno == EINVAL;
    const Outcome outcome = outcomeOf(isFlushed, path);
    close(fd);
    return outcome;
}

/** Opens \a file by a call of the system's, of which Qt keeps no error number. */
Outcome openAs(QFile &file, int flags)
{
    const QString path = file.fileName();
    constexpr mode_t anyMode = 0666;
    const int fd = open(QFile::encodeName(path).constData(), flags | O_CLOEXEC | O_NOCTTY, anyMode);
    if (fd < 0)
        return outcomeOf(false, path);
    // What came into its place meanwhile is no file either.
    struct stat status = {};
    const bool isRegular = fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
    if (isRegular
        && file.open(fd, QIODevice::WriteOnly | QIODevice::Unbuffered,
                     QFileDevice::AutoCloseHandle))
        return {};
    close(fd);
    return {Outcome::Code::NotAFile, path, {}, {}};
}

#endif

/** Lets the file grow by writing zeros at its end, where blocks can't be had otherwise. */
Outcome growWithZeros(Disk &disk, QFileDevice &file, qint64 size)
{
    const qint64 oldSize = file.size();
    if (size <= oldSize)
        return {};
    Outcome grown = outcomeOf(file.seek(oldSize), file.fileName());
    if (grown)
        grown = disk.write(file, QByteArray(static_cast<int>(size - oldSize), '\0'));
    if (grown)
        grown = disk.sync(file);
    if (!grown)
        file.resize(oldSize);
    return grown;
}

} // namespace

Outcome Disk::openForWriting(QFile &file)
{
#ifdef Q_OS_UNIX
    const QString path = file.fileName();
    struct stat status = {};
    if (lstat(QFile::encodeName(path).constData(), &status) == 0 && !S_ISREG(status.st_mode)) {
        if (const Outcome removed = remove(path); !removed) {
            const auto code =
                S_ISLNK(status.st_mode) ? Outcome::Code::LinkOutOfMemory : Outcome::Code::NotAFile;
            return {code, path, {}, {}};
        }
    }
    return openAs(file, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_NONBLOCK);
#else
    return outcomeOf(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered), file.fileName());
#endif
}

Outcome Disk::createNew(QFile &file)
{
#ifdef Q_OS_UNIX
    return openAs(file, O_WRONLY | O_CREAT | O_EXCL);
#else
    return outcomeOf(file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered),
                     file.fileName());
#endif
}

Outcome Disk::write(QFileDevice &file, const QByteArray &bytes)
{
    // A full disk shows as a short count or only in flush(), not as an error of write().
    errno = ENOSPC;
    const bool isWritten = file.write(bytes) == bytes.size() && file.flush();
    return outcomeOf(isWritten, file.fileName());
}

Outcome Disk::reserve(QFileDevice &file, qint64 size)
{
#ifdef Q_OS_LINUX
    if (size <= 0 || fallocate(file.handle(), FALLOC_FL_KEEP_SIZE, 0, size) == 0)
        return {};
    if (errno == EOPNOTSUPP || errno == ENOSYS)
        return growWithZeros(*this, file, size);
    const Outcome outcome = outcomeOf(false, file.fileName());
    file.resize(file.size()); // gives back what was reserved
    return outcome;
#else
    return growWithZeros(*this, file, size);
#endif
}

Outcome Disk::truncate(QFileDevice &file, qint64 size)
{
    return outcomeOf(file.resize(size), file.fileName());
}

Outcome Disk::sync(QFileDevice &file)
{
    if (!file.flush())
        return outcomeOf(false, file.fileName());
#ifdef Q_OS_WIN
    return outcomeOf(_commit(file.handle()) == 0, file.fileName());
#else
    return outcomeOf(fsync(file.handle()) == 0, file.fileName());
#endif
}

Outcome Disk::syncFolder(const QString &path)
{
#ifdef Q_OS_UNIX
    return flushPath(QFileInfo(path).absolutePath(), fsync);
#else
    Q_UNUSED(path)
    return {};
#endif
}

Outcome Disk::syncVolume(const QString &path)
{
#ifdef Q_OS_LINUX
    return flushPath(path, syncfs);
#else
    Q_UNUSED(path)
    return {};
#endif
}

Outcome Disk::replace(const QString &from, const QString &to)
{
    if (losesReplacedFiles(to) && QFileInfo::exists(to))
        return replaceKeepingOld(from, to);
    return rename(from, to);
}

Outcome Disk::remove(const QString &path)
{
    errno = EIO;
    return outcomeOf(QFile::remove(path) || !QFileInfo::exists(path), path);
}

void Disk::inherit(QFileDevice &file, const QFileDevice &model)
{
#ifdef Q_OS_UNIX
    struct stat status;
    if (fstat(model.handle(), &status) != 0)
        return;
    // The mode comes last, since a change of owner takes some of its bits away.
    if (fchown(file.handle(), status.st_uid, status.st_gid) != 0)
        qDebug() << "[Disk::inherit] owner not kept:" << file.fileName();
    if (fchmod(file.handle(), status.st_mode & 07777) != 0)
        qDebug() << "[Disk::inherit] permissions not kept:" << file.fileName();
#else
    file.setPermissions(model.permissions());
#endif
}

Disk &Disk::real()
{
    static Disk disk;
    return disk;
}

Outcome Disk::rename(const QString &from, const QString &to)
{
#ifdef Q_OS_WIN
    const auto wide = [](const QString &path) {
        return reinterpret_cast<const wchar_t *>(path.utf16());
    };
    return outcomeOf(
        MoveFileExW(wide(from), wide(to), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0,
        to);
#else
    const QByteArray oldName = QFile::encodeName(from);
    return outcomeOf(std::rename(oldName.constData(), QFile::encodeName(to).constData()) == 0, to);
#endif
}

bool Disk::losesReplacedFiles(const QString &path) const
{
#ifdef Q_OS_LINUX
    constexpr decltype(statfs::f_type) magics[] = {0x4d44, 0x2011BAB0}; // FAT, exFAT
    struct statfs volume;
    if (statfs(QFile::encodeName(QFileInfo(path).absolutePath()).constData(), &volume) != 0)
        return false;
    return std::find(std::cbegin(magics), std::cend(magics), volume.f_type) != std::cend(magics);
#else
    Q_UNUSED(path)
    return false;
#endif
}

/** The new file is on the medium; the old one waits under another name until the new one's is. */
Outcome Disk::replaceKeepingOld(const QString &from, const QString &to)
{
    const QString old = Recovery::recoveryPathOf(to);
    if (QFileInfo::exists(old)) {
        // It may be all that is left of a song; whoever knows songs decides (Recovery::recover).
        qDebug() << "[Disk::replace] WARNING: in the way:" << old;
        return {Outcome::Code::AlreadyExists, old, {}, {}};
    }
    if (const Outcome synced = syncVolume(from); !synced)
        return synced;
    if (const Outcome setAside = rename(to, old); !setAside)
        return setAside;
    Outcome named = rename(from, to);
    const bool isNamed = static_cast<bool>(named);
    if (isNamed)
        named = syncVolume(to);
    if (!named) {
        if (isNamed)
            rename(to, from);
        if (!rename(old, to)) {
            qDebug() << "[Disk::replace] WARNING: the old file is now called" << old;
            return {Outcome::Code::NotRestored, to, old, {}};
        }
        return named;
    }
    // The new file is safe; one that stays behind is only in the way.
    if (!remove(old) || !syncVolume(to))
        qDebug() << "[Disk::replace] WARNING: can't be removed:" << old;
    return {};
}

} // namespace tarvel4
