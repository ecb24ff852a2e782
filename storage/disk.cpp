#include "storage/disk.h"

#include "storage/recovery.h"

#include <QDebug>
#include <QFile>
#include <QFileDevice>
#include <QFileInfo>

#include <algorithm>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <cerrno>
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

#ifdef Q_OS_UNIX
/** Opens what is at \a path, a folder too, waits with \a flush until it is on the medium. */
bool flushPath(const QString &path, int (*flush)(int))
{
    const int fd = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return false;
    // Some file systems have nothing to flush for a folder, and say so with EINVAL.
    const bool flushed = flush(fd) == 0 || errno == EINVAL;
    close(fd);
    return flushed;
}
#endif

/** Lets the file grow by writing zeros at its end, where blocks can't be had otherwise. */
bool growsWithZeros(Disk &disk, QFileDevice &file, qint64 size)
{
    const qint64 oldSize = file.size();
    if (size <= oldSize)
        return true;
    if (file.seek(oldSize) && disk.write(file, QByteArray(int(size - oldSize), '\0'))
        && disk.sync(file)) {
        return true;
    }
    file.resize(oldSize);
    return false;
}

} // namespace

bool Disk::openForWriting(QFile &file)
{
    const QString path = file.fileName();
#ifdef Q_OS_UNIX
    const QByteArray name = QFile::encodeName(path);
    struct stat status;
    if (lstat(name.constData(), &status) == 0 && !S_ISREG(status.st_mode) && !remove(path)) {
        qDebug() << "[Disk::openForWriting] WARNING: no regular file, and can't be removed:"
                 << path;
        return false;
    }
    constexpr mode_t anyMode = 0666;
    const int fd = open(
        name.constData(),
        O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, anyMode);
    if (fd < 0) {
        qDebug() << "[Disk::openForWriting] WARNING: can't be opened:" << path
                 << qt_error_string(errno);
        return false;
    }
    // What came into its place meanwhile is no file either.
    if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode)
        && file.open(fd, QIODevice::WriteOnly | QIODevice::Unbuffered,
                     QFileDevice::AutoCloseHandle))
        return true;
    close(fd);
    return false;
#else
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
#endif
}

bool Disk::write(QFileDevice &file, const QByteArray &bytes)
{
    // A full disk shows as a short count or only in flush(), not as an error of write().
    return file.write(bytes) == bytes.size() && file.flush();
}

bool Disk::reserve(QFileDevice &file, qint64 size)
{
#ifdef Q_OS_LINUX
    if (size <= 0 || fallocate(file.handle(), FALLOC_FL_KEEP_SIZE, 0, size) == 0)
        return true;
    if (errno == EOPNOTSUPP || errno == ENOSYS)
        return growsWithZeros(*this, file, size);
    file.resize(file.size()); // gives back what was reserved
    return false;
#else
    return growsWithZeros(*this, file, size);
#endif
}

bool Disk::truncate(QFileDevice &file, qint64 size)
{
    return file.resize(size);
}

bool Disk::sync(QFileDevice &file)
{
    if (!file.flush())
        return false;
#ifdef Q_OS_WIN
    return _commit(file.handle()) == 0;
#else
    return fsync(file.handle()) == 0;
#endif
}

bool Disk::syncFolder(const QString &path)
{
#ifdef Q_OS_UNIX
    return flushPath(QFileInfo(path).absolutePath(), fsync);
#else
    Q_UNUSED(path)
    return true;
#endif
}

bool Disk::syncVolume(const QString &path)
{
#ifdef Q_OS_LINUX
    return flushPath(path, syncfs);
#else
    Q_UNUSED(path)
    return true;
#endif
}

bool Disk::replace(const QString &from, const QString &to)
{
    if (losesReplacedFiles(to) && QFileInfo::exists(to))
        return replaceKeepingOld(from, to);
    return rename(from, to);
}

bool Disk::remove(const QString &path)
{
    return QFile::remove(path) || !QFileInfo::exists(path);
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

bool Disk::rename(const QString &from, const QString &to)
{
#ifdef Q_OS_WIN
    const auto wide = [](const QString &path) {
        return reinterpret_cast<const wchar_t *>(path.utf16());
    };
    return MoveFileExW(wide(from), wide(to), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
        != 0;
#else
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
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

bool Disk::replaceKeepingOld(const QString &from, const QString &to)
{
    const QString old = Recovery::recoveryPathOf(to);
    if (QFileInfo::exists(old)) {
        // It may be all that is left of a song; whoever knows songs decides (Recovery::recover).
        qDebug() << "[Disk::replace] WARNING: in the way:" << old;
        return false;
    }
    if (!syncVolume(from) || !rename(to, old))
        return false;
    const bool isNamed = rename(from, to);
    if (!isNamed || !syncVolume(to)) {
        if (isNamed)
            rename(to, from);
        if (!rename(old, to))
            qDebug() << "[Disk::replace] WARNING: the old file is now called" << old;
        return false;
    }
    // The new file is safe; one that stays behind is only in the way.
    if (!remove(old) || !syncVolume(to))
        qDebug() << "[Disk::replace] WARNING: can't be removed:" << old;
    return true;
}

} // namespace tarvel4
