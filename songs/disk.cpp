#include "songs/disk.h"

#include <QFile>
#include <QFileDevice>
#include <QFileInfo>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>
#endif

bool Disk::write(QFileDevice &file, const QByteArray &bytes)
{
    // A full disk shows as a short count or only in flush(), not as an error of write().
    return file.write(bytes) == bytes.size() && file.flush();
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

bool Disk::syncVolume(const QString &path)
{
#ifdef Q_OS_LINUX
    const int fd = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return false;
    const bool synced = syncfs(fd) == 0;
    close(fd);
    return synced;
#else
    Q_UNUSED(path)
    return true;
#endif
}

bool Disk::replace(const QString &from, const QString &to)
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

bool Disk::remove(const QString &path)
{
    return QFile::remove(path) || !QFileInfo::exists(path);
}

Disk &Disk::real()
{
    static Disk disk;
    return disk;
}
