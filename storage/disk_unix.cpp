#include "storage/disk.h"

#include "storage/systemerror.h"

#include <QDebug>
#include <QFile>
#include <QFileDevice>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef Q_OS_LINUX
#include <sys/vfs.h>
#include <sys/xattr.h>
#endif
#ifdef Q_OS_DARWIN
#include <sys/mount.h>
#include <sys/param.h>
#endif

namespace tarvel4 {

using SystemError::outcomeOf;

namespace {

/** Waits until what is written to an open file is on the medium. */
int flushFile(int fd)
{
#ifdef F_FULLFSYNC
    // On this system fsync() leaves the bytes in the medium's own memory.
    if (fcntl(fd, F_FULLFSYNC) == 0)
        return 0;
    if (errno != ENOTSUP && errno != EINVAL && errno != ENOTTY)
        return -1;
#endif
    return fsync(fd);
}

/** Opens what is at \a path, a folder too, without waiting for the writer of a FIFO. */
int openToFlush(const QString &path)
{
    return open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

/** Waits with \a flush until what is open is on the medium, and closes it. */
Outcome flushAndClose(int fd, const QString &path, int (*flush)(int))
{
    if (fd < 0)
        return outcomeOf(false, path);
    const Outcome outcome = outcomeOf(flush(fd) == 0, path);
    close(fd);
    return outcome;
}

Outcome flushFolder(const QString &folder)
{
    // Some file systems have nothing to flush for a folder, and say so with EINVAL.
    const auto flush = [](int fd) {
        const int result = flushFile(fd);
        return result < 0 && errno == EINVAL ? 0 : result;
    };
    return flushAndClose(openToFlush(folder), folder, flush);
}

bool isGone(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

#ifdef Q_OS_LINUX

/** What can be opened of a volume, one of it as good as the other. */
struct VolumePlaces
{
    dev_t device;
    QString path; ///< to blame
    QStringList places;
};

using Volumes = std::vector<VolumePlaces>; // in the order of their first paths

/** Adds the volume of a file's bytes and that of its name, which a link holds apart. */
Outcome addVolumes(const QString &path, Volumes &volumes)
{
    const auto add = [&](dev_t device, const QString &place) {
        auto volume =
            std::find_if(volumes.begin(), volumes.end(),
                         [device](const VolumePlaces &other) { return other.device == device; });
        if (volume == volumes.end())
            volume = volumes.insert(volumes.end(), {device, path, {}});
        volume->places.append(place);
    };
    struct stat status = {};
    const bool isThere = stat(QFile::encodeName(path).constData(), &status) == 0;
    if (!isThere && !isGone(errno))
        return outcomeOf(false, path);
    const bool isFolder = isThere && S_ISDIR(status.st_mode);
    if (isFolder || (isThere && S_ISREG(status.st_mode)))
        add(status.st_dev, path);
    if (isFolder) // its own name may be on another volume, where it is a place to mount at
        return {};
    const QString folder = QFileInfo(path).absolutePath();
    if (stat(QFile::encodeName(folder).constData(), &status) != 0)
        return outcomeOf(false, path);
    add(status.st_dev, folder);
    return {};
}

/** Opens \a place if it is still on its volume, which may have been taken out meanwhile. */
int openOn(dev_t device, const QString &place)
{
    struct stat status = {};
    const int fd = openToFlush(place);
    if (fd < 0 || (fstat(fd, &status) == 0 && status.st_dev == device))
        return fd;
    close(fd);
    errno = ENOENT;
    return -1;
}

Outcome flushVolume(const VolumePlaces &volume)
{
    int fd = -1;
    errno = EACCES;
    for (int i = 0; i < volume.places.size() && fd < 0 && (errno == EACCES || isGone(errno)); ++i)
        fd = openOn(volume.device, volume.places.at(i));
    return flushAndClose(fd, volume.path, syncfs);
}

#endif

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

} // namespace

void SystemError::presumeFullDisk()
{
    errno = ENOSPC;
}

void SystemError::presumeFailedMedium()
{
    errno = EIO;
}

void SystemError::presumeDenied()
{
    errno = EACCES;
}

Outcome SystemError::outcomeOf(bool isDone, const QString &path, bool isWriting)
{
    return isDone ? Outcome{Outcome::Code::Done, path, {}, {}}
                  : Outcome::ofSystemError(errno, path, isWriting);
}

Outcome Disk::openForWriting(QFile &file)
{
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
}

Outcome Disk::createNew(QFile &file)
{
    return openAs(file, O_WRONLY | O_CREAT | O_EXCL);
}

Outcome Disk::copyRange(QFileDevice &from, QFileDevice &to, qint64 size)
{
    qint64 left = size;
#ifdef Q_OS_LINUX
    off64_t source = from.pos();
    off64_t target = to.pos();
    ssize_t count = 1;
    while (left > 0 && (count > 0 || (count < 0 && errno == EINTR))) {
        count = copy_file_range(from.handle(), &source, to.handle(), &target,
                                static_cast<std::size_t>(left), 0);
        left -= std::max<ssize_t>(count, 0);
    }
    if (count < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EFBIG))
        return outcomeOf(false, to.fileName());
    // The system's call moves neither file on; what waits in a buffer is written here, too.
    SystemError::presumeFailedMedium();
    if (!from.seek(source) || !to.seek(target))
        return outcomeOf(false, to.fileName());
        // What it can't copy, or can't from here on, reading and writing can, or they tell which of
        // the two files is to blame.
#endif
    return copyBlocks(from, to, left);
}

Outcome Disk::reserve(QFileDevice &file, qint64 size)
{
#ifdef Q_OS_LINUX
    if (size <= 0 || fallocate(file.handle(), FALLOC_FL_KEEP_SIZE, 0, size) == 0)
        return {};
    if (errno == EOPNOTSUPP || errno == ENOSYS)
        return growWithZeros(file, size);
    const Outcome outcome = outcomeOf(false, file.fileName());
    file.resize(file.size()); // gives back what was reserved
    return outcome;
#else
    return growWithZeros(file, size);
#endif
}

Outcome Disk::sync(QFileDevice &file)
{
    return outcomeOf(file.flush() && flushFile(file.handle()) == 0, file.fileName());
}

#ifdef Q_OS_LINUX

Outcome Disk::syncAll(const QStringList &paths)
{
    struct stat status = {};
    // All of a busy system disk would take long.
    if (paths.size() == 1 && lstat(QFile::encodeName(paths.first()).constData(), &status) == 0
        && S_ISREG(status.st_mode) && !losesReplacedFiles(paths.first())) {
        const int fd = openToFlush(paths.first());
        if (fd >= 0) {
            Outcome flushed = flushAndClose(fd, paths.first(), flushFile);
            return flushed ? flushFolder(QFileInfo(paths.first()).absolutePath()) : flushed;
        }
    }
    Volumes volumes;
    Outcome outcome;
    const auto keepFailure = [&outcome](const Outcome &next) {
        if (outcome)
            outcome = next;
    };
    for (const QString &path : paths)
        keepFailure(addVolumes(path, volumes));
    for (const VolumePlaces &volume : volumes)
        keepFailure(flushVolume(volume));
    return outcome;
}

#else

Outcome Disk::syncAll(const QStringList &paths)
{
    Outcome outcome;
    QStringList folders;
    const auto keepFailure = [&outcome](const Outcome &next) {
        if (outcome)
            outcome = next;
    };
    for (const QString &path : paths) {
        struct stat status = {};
        const QFileInfo info(path);
        folders.append(info.absolutePath());
        if (stat(QFile::encodeName(path).constData(), &status) != 0) {
            if (!isGone(errno))
                keepFailure(outcomeOf(false, path));
        } else if (S_ISDIR(status.st_mode)) {
            folders.append(info.absoluteFilePath());
        } else if (S_ISREG(status.st_mode)) {
            folders.append(QFileInfo(info.canonicalFilePath()).path()); // a link's file's
            keepFailure(flushAndClose(openToFlush(path), path, flushFile));
        }
    }
    folders.removeDuplicates();
    for (const QString &folder : folders)
        keepFailure(flushFolder(folder));
    return outcome;
}

#endif

#ifdef Q_OS_LINUX

/** What desktops and backups note beside a file's bytes: comments, ratings, access lists. */
static void inheritAttributes(int file, int model)
{
    const ssize_t size = flistxattr(model, nullptr, 0);
    QByteArray names(static_cast<int>(std::max<ssize_t>(size, 0)), '\0');
    if (size <= 0 || flistxattr(model, names.data(), static_cast<std::size_t>(size)) != size)
        return;
    for (const QByteArray &name : names.split('\0')) {
        const ssize_t length = name.isEmpty() ? -1 : fgetxattr(model, name.constData(), nullptr, 0);
        QByteArray value(static_cast<int>(std::max<ssize_t>(length, 0)), '\0');
        if (length >= 0
            && fgetxattr(model, name.constData(), value.data(), static_cast<std::size_t>(length))
                == length
            && fsetxattr(file, name.constData(), value.constData(),
                         static_cast<std::size_t>(length), 0)
                != 0)
            qDebug() << "[Disk::inherit] attribute not kept:" << name;
    }
}

#endif

void Disk::inherit(QFileDevice &file, const QFileDevice &model)
{
#ifdef Q_OS_LINUX
    inheritAttributes(file.handle(), model.handle());
#endif
    struct stat status;
    if (fstat(model.handle(), &status) != 0)
        return;
    // The mode comes last, since a change of owner takes some of its bits away.
    if (fchown(file.handle(), status.st_uid, status.st_gid) != 0)
        qDebug() << "[Disk::inherit] owner not kept:" << file.fileName();
    if (fchmod(file.handle(), status.st_mode & 07777) != 0)
        qDebug() << "[Disk::inherit] permissions not kept:" << file.fileName();
}

Outcome Disk::rename(const QString &from, const QString &to)
{
    const QByteArray oldName = QFile::encodeName(from);
    return outcomeOf(std::rename(oldName.constData(), QFile::encodeName(to).constData()) == 0, to);
}

bool Disk::losesReplacedFiles(const QString &path) const
{
#if defined(Q_OS_LINUX) || defined(Q_OS_DARWIN)
    struct statfs volume;
    if (statfs(QFile::encodeName(QFileInfo(path).absolutePath()).constData(), &volume) != 0)
        return false;
#endif
#if defined(Q_OS_LINUX)
    constexpr decltype(statfs::f_type) magics[] = {0x4d44, 0x2011BAB0}; // FAT, exFAT
    return std::find(std::cbegin(magics), std::cend(magics), volume.f_type) != std::cend(magics);
#elif defined(Q_OS_DARWIN)
    const QLatin1String name(volume.f_fstypename);
    return name == QLatin1String("msdos") || name == QLatin1String("exfat");
#else
    Q_UNUSED(path)
    return false;
#endif
}

} // namespace tarvel4
