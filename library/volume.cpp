#include "library/volume.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <QStringList>

#include <algorithm>

namespace tarvel4 {

namespace {

constexpr int driveRootLength = 3; // "E:/"

QString wholePath(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

#ifndef Q_OS_WIN

/** The path as the file system knows it; of a path that does not exist, its nearest folder that
 * does. */
QString existingPath(const QString &path)
{
    QString candidate = wholePath(path);
    while (!QFileInfo::exists(candidate)) {
        const QString parent = QFileInfo(candidate).path();
        if (parent == candidate)
            break;
        candidate = parent;
    }
    const QString canonical = QFileInfo(candidate).canonicalFilePath();
    return canonical.isEmpty() ? candidate : canonical;
}

bool isSameVolume(const QStorageInfo &a, const QStorageInfo &b)
{
    // Several mounts can show one disk; only a real device has a name of its own.
    return a.rootPath() == b.rootPath()
        || (a.device() == b.device() && a.device().startsWith("/dev/"));
}

QStringList systemFolders()
{
    return {QStringLiteral("/"),     QStringLiteral("/bin"),    QStringLiteral("/boot"),
            QStringLiteral("/etc"),  QStringLiteral("/lib"),    QStringLiteral("/run"),
            QStringLiteral("/sbin"), QStringLiteral("/System"), QStringLiteral("/usr"),
            QStringLiteral("/var")};
}

#endif

} // namespace

QString DriveVolume::rootOf(const QString &path) const
{
    return path.left(driveRootLength);
}

bool DriveVolume::isRootFolder(const QString &path) const
{
    return path.compare(rootOf(path), Qt::CaseInsensitive) == 0;
}

bool DriveVolume::isSystemDisk(const QString &path) const
{
    return QFileInfo(rootOf(path) + QLatin1String("WINDOWS")).isDir();
}

#ifdef Q_OS_WIN

QString SystemVolume::rootOf(const QString &path) const
{
    return DriveVolume().rootOf(wholePath(path));
}

bool SystemVolume::isRootFolder(const QString &path) const
{
    return DriveVolume().isRootFolder(wholePath(path));
}

bool SystemVolume::isSystemDisk(const QString &path) const
{
    return DriveVolume().isSystemDisk(wholePath(path));
}

#else

QString SystemVolume::rootOf(const QString &path) const
{
    return QStorageInfo(existingPath(path)).rootPath();
}

bool SystemVolume::isRootFolder(const QString &path) const
{
    const QString existing = QFileInfo(path).canonicalFilePath();
    return !existing.isEmpty() && existing == rootOf(path);
}

bool SystemVolume::isSystemDisk(const QString &path) const
{
    const QStorageInfo volume(existingPath(path));
    const QStringList folders = systemFolders();
    return std::any_of(folders.begin(), folders.end(), [&volume](const QString &folder) {
        return QFileInfo(folder).isDir()
            && isSameVolume(volume, QStorageInfo(QFileInfo(folder).canonicalFilePath()));
    });
}

#endif

FolderVolume::FolderVolume(const QString &root)
    : m_root(wholePath(root))
{}

QString FolderVolume::rootOf(const QString &path) const
{
    Q_UNUSED(path)
    return m_root;
}

bool FolderVolume::isRootFolder(const QString &path) const
{
    const QString existing = QFileInfo(path).canonicalFilePath();
    return !existing.isEmpty() && existing == QFileInfo(m_root).canonicalFilePath();
}

bool FolderVolume::isSystemDisk(const QString &path) const
{
    Q_UNUSED(path)
    return false;
}

} // namespace tarvel4
