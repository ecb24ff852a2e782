#include "storage/newfile.h"

#include "storage/disk.h"
#include "storage/recovery.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tarvel4 {

namespace {

/** The name of a file until it is whole; a point at the front keeps it out of every list of songs.
 */
QString unfinished(const QString &path)
{
    const QFileInfo info(path);
    // Shortened, since a file system that takes the name itself might not take more.
    return info.dir().filePath(QLatin1Char('.') + info.fileName().left(60)
                               + QLatin1String(".tarvel4.part"));
}

/** What a power cut spoils holds zeros, and no text does. */
bool isText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && !file.readAll().contains('\0');
}

bool writeBeside(Disk &disk, QFile &file, const QString &path, const QByteArray &bytes)
{
    QFile old(path);
    // Who may not write a file may not replace it either.
    if (old.exists() && !old.open(QIODevice::ReadWrite))
        return false;
    disk.remove(file.fileName()); // of a run that was killed
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return false;
    if (old.isOpen())
        Disk::inherit(file, old);
    const bool isWhole = disk.write(file, bytes) && disk.sync(file);
    file.close();
    return isWhole;
}

} // namespace

bool NewFile::write(Disk &disk, const QString &path, const QByteArray &bytes)
{
    const QFileInfo info(path);
    const QString target = info.isSymLink() ? info.canonicalFilePath() : path;
    if (target.isEmpty() || (info.exists() && !info.isFile()))
        return false;
    Recovery::recover(disk, target, isText); // its name is needed
    QFile file(unfinished(target));
    if (writeBeside(disk, file, target, bytes) && disk.replace(file.fileName(), target))
        return disk.syncFolder(target);
    if (!disk.remove(file.fileName()))
        qDebug() << "[NewFile::write] WARNING: can't be removed:" << file.fileName();
    return false;
}

} // namespace tarvel4
