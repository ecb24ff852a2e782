#include "storage/recovery.h"

#include "storage/contenthash.h"
#include "storage/disk.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tarvel4 {

namespace {

using Recovery::IsSong;
using Recovery::Result;

// Nobody else gives a file such a name, so that it may be taken for ours and be removed.
constexpr char suffix[] = ".tarvel4.bak";
constexpr int suffixSize = sizeof(suffix) - 1;

/** What is to be done about \a old; the disk has not been touched. */
Result decide(const Disk &disk, const QString &old, const QString &path, const IsSong &isSong)
{
    const QFileInfo info(path);
    if (info.isSymLink() || (info.exists() && !info.isFile()))
        return Result::Kept;
    // A file that was given its name but never got its bytes is none.
    if (!info.exists() || info.size() == 0)
        return Result::GivenBack;
    const auto isWhole = [&isSong](const QString &file) {
        return isSong(file) && !Recovery::isBlank(file);
    };
    if (isWhole(path)) {
        const bool isSecondName =
            disk.losesReplacedFiles(path) && Recovery::mayBeOneFile(QFileInfo(old), info);
        return isSecondName ? Result::Kept : Result::Removed;
    }
    // What can't be read may be whole all the same.
    const bool isReadable = QFile(path).open(QIODevice::ReadOnly);
    return isReadable && isWhole(old) ? Result::GivenBack : Result::Kept;
}

bool perform(Disk &disk, Result result, const QString &old, const QString &path)
{
    if (result == Result::Removed)
        return disk.remove(old) && disk.syncAll({old});
    return (!QFileInfo::exists(path) || disk.remove(path)) && disk.replace(old, path)
        && disk.syncAll({path, old});
}

} // namespace

bool Recovery::isBlank(const QString &path)
{
    constexpr qint64 blockSize = 1 << 16;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QByteArray block;
    do {
        block = file.read(blockSize);
    } while (!block.isEmpty() && block.count('\0') == block.size());
    return block.isEmpty();
}

bool Recovery::mayBeOneFile(const QFileInfo &file, const QFileInfo &other)
{
    if (file.size() == 0 || file.size() != other.size()
        || file.lastModified() != other.lastModified()
        || file.metadataChangeTime() != other.metadataChangeTime()
        || file.birthTime() != other.birthTime())
        return false;
    Outcome outcome;
    const QByteArray hash = ContentHash::ofFile(file.filePath(), outcome);
    return outcome && hash == ContentHash::ofFile(other.filePath(), outcome) && outcome;
}

QString Recovery::recoveryPathOf(const QString &path)
{
    return path + QLatin1String(suffix);
}

bool Recovery::isRecoveryName(const QString &fileName)
{
    return fileName.size() > suffixSize && fileName.endsWith(QLatin1String(suffix));
}

QString Recovery::goesBackTo(const QString &path)
{
    return isRecoveryName(path) ? path.chopped(suffixSize) : path;
}

Recovery::Result Recovery::recover(Disk &disk, const QString &path, const IsSong &isSong)
{
    const QString old = recoveryPathOf(path);
    const QFileInfo info(old);
    if (!info.isFile() || info.isSymLink())
        return Result::NoneThere;
    const Result result = decide(disk, old, path, isSong);
    if (result == Result::Kept || !perform(disk, result, old, path)) {
        qDebug() << "[Recovery::recover] WARNING: the old file is still called" << old;
        return Result::Kept;
    }
    qDebug() << "[Recovery::recover] put in order after a power cut:" << path;
    return result;
}

void Recovery::recoverAll(Disk &disk, const QString &folder, const IsSong &isSong,
                          const Report &report)
{
    const QDir dir(folder);
    const QStringList names =
        dir.entryList({QLatin1Char('*') + QLatin1String(suffix)}, QDir::Files | QDir::Hidden);
    for (const QString &name : names) {
        if (!isRecoveryName(name))
            continue;
        const QString path = dir.filePath(goesBackTo(name));
        const Result result = recover(disk, path, isSong);
        if (report && result != Result::NoneThere)
            report(path, result, {});
    }
}

} // namespace tarvel4
