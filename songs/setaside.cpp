#include "songs/setaside.h"

#include "songs/disk.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

// Nobody else gives a file such a name, so that it may be taken for ours and be removed.
constexpr char suffix[] = ".tarvel4.bak";
constexpr int suffixSize = sizeof(suffix) - 1;

bool giveBack(Disk &disk, const QString &old, const QString &path)
{
    const QFileInfo info(path);
    if (info.isFile() && info.size() > 0)
        return disk.remove(old);
    // A file that was given its name but never got its bytes is none.
    if (info.exists() && !(info.isFile() && disk.remove(path)))
        return false;
    return disk.replace(old, path);
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

bool SetAside::recover(Disk &disk, const QString &path)
{
    const QString old = pathOf(path);
    if (!QFileInfo(old).isFile())
        return true;
    const bool isBack = giveBack(disk, old, path) && disk.syncVolume(path);
    if (isBack)
        qDebug() << "[SetAside::recover] put in order after a power cut:" << path;
    else
        qDebug() << "[SetAside::recover] WARNING: the old file is still called" << old;
    return isBack;
}

bool SetAside::recoverAll(Disk &disk, const QString &folder)
{
    const QDir dir(folder);
    const QStringList names =
        dir.entryList({QLatin1Char('*') + QLatin1String(suffix)}, QDir::Files | QDir::Hidden);
    return std::count_if(names.begin(), names.end(),
                         [&](const QString &name) {
                             return isOne(name)
                                 && !recover(disk, dir.filePath(name.chopped(suffixSize)));
                         })
        == 0;
}
