#include "storage/newfile.h"

#include "storage/disk.h"
#include "storage/recovery.h"
#include "storage/systemerror.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tarvel4 {

namespace {

/** The name of a file until it is whole; a dot at the front keeps it out of every list of songs.
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

Outcome writeBeside(Disk &disk, const QString &unfinishedPath, const QString &path,
                    const QByteArray &bytes)
{
    QFile old(path);
    // Who may not write a file may not replace it either.
    SystemError::presumeDenied();
    if (old.exists() && !old.open(QIODevice::ReadWrite))
        return SystemError::outcomeOf(false, path);
    disk.remove(unfinishedPath); // of a run that was killed
    QFile file(unfinishedPath);
    Outcome outcome = disk.createNew(file);
    if (!outcome)
        return outcome;
    if (old.isOpen())
        Disk::inherit(file, old);
    outcome = disk.write(file, bytes);
    if (outcome)
        outcome = disk.sync(file);
    file.close();
    return outcome;
}

} // namespace

Outcome NewFile::write(Disk &disk, const QString &path, const QByteArray &bytes)
{
    const QFileInfo info(path);
    const QString target = info.isSymLink() ? info.canonicalFilePath() : path;
    if (target.isEmpty() || (info.exists() && !info.isFile()))
        return {Outcome::Code::NotAFile, path, {}, {}};
    Recovery::recover(disk, target, isText); // its name is needed
    const QString unfinishedPath = unfinished(target);
    Outcome outcome = writeBeside(disk, unfinishedPath, target, bytes);
    if (outcome)
        outcome = disk.replace(unfinishedPath, target);
    if (outcome) {
        if (!disk.syncAll({target}))
            outcome.code = Outcome::Code::NotConfirmed;
    } else if (!disk.remove(unfinishedPath)) {
        qDebug() << "[NewFile::write] WARNING: can't be removed:" << unfinishedPath;
    }
    outcome.path = path;
    return outcome;
}

} // namespace tarvel4
