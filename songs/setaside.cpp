#include "songs/setaside.h"

#include "songs/disk.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

using SetAside::IsSong;
using SetAside::Outcome;

// Nobody else gives a file such a name, so that it may be taken for ours and be removed.
constexpr char suffix[] = ".tarvel4.bak";
constexpr int suffixSize = sizeof(suffix) - 1;

/** True for a file of zeros, as a power cut leaves one that got its size but not its bytes; an MP3
 * may well begin with zeros. */
bool isBlank(const QString &path)
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

/** What is to be done about \a old; the disk has not been touched. */
Outcome decide(const QString &old, const QString &path, const IsSong &isSong)
{
    const QFileInfo info(path);
    if (info.isSymLink() || (info.exists() && !info.isFile()))
        return Outcome::Kept;
    // A file that was given its name but never got its bytes is none.
    if (!info.exists() || info.size() == 0)
        return Outcome::GivenBack;
    const auto isWhole = [&isSong](const QString &file) { return isSong(file) && !isBlank(file); };
    if (isWhole(path))
        return Outcome::Removed;
    // What can't be read may be whole all the same.
    const bool isReadable = QFile(path).open(QIODevice::ReadOnly);
    return isReadable && isWhole(old) ? Outcome::GivenBack : Outcome::Kept;
}

bool perform(Disk &disk, Outcome outcome, const QString &old, const QString &path)
{
    const bool isDone = outcome == Outcome::Removed
        ? disk.remove(old)
        : (!QFileInfo::exists(path) || disk.remove(path)) && disk.replace(old, path);
    return isDone && disk.syncVolume(path);
}

} // namespace

QString SetAside::pathOf(const QString &path)
{
    return path + QLatin1String(suffix);
}

bool SetAside::isOne(const QString &fileName)
{
    return fileName.size() > suffixSize && fileName.endsWith(QLatin1String(suffix));
}

QString SetAside::goesBackTo(const QString &path)
{
    return isOne(path) ? path.chopped(suffixSize) : path;
}

SetAside::Outcome SetAside::recover(Disk &disk, const QString &path, const IsSong &isSong)
{
    const QString old = pathOf(path);
    const QFileInfo info(old);
    if (!info.isFile() || info.isSymLink())
        return Outcome::NoneThere;
    const Outcome outcome = decide(old, path, isSong);
    if (outcome == Outcome::Kept || !perform(disk, outcome, old, path)) {
        qDebug() << "[SetAside::recover] WARNING: the old file is still called" << old;
        return Outcome::Kept;
    }
    qDebug() << "[SetAside::recover] put in order after a power cut:" << path;
    return outcome;
}

void SetAside::recoverAll(Disk &disk, const QString &folder, const IsSong &isSong,
                          const Report &report)
{
    const QDir dir(folder);
    const QStringList names =
        dir.entryList({QLatin1Char('*') + QLatin1String(suffix)}, QDir::Files | QDir::Hidden);
    for (const QString &name : names) {
        if (!isOne(name))
            continue;
        const QString path = dir.filePath(goesBackTo(name));
        const Outcome outcome = recover(disk, path, isSong);
        if (report && outcome != Outcome::NoneThere)
            report(path, outcome);
    }
}
