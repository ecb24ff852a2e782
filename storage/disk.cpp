#include "storage/disk.h"

#include "storage/recovery.h"
#include "storage/systemerror.h"
#include "storage/systemfile.h"

#include <QDebug>
#include <QFile>
#include <QFileDevice>
#include <QFileInfo>

#include <algorithm>

namespace tarvel4 {

using SystemError::outcomeOf;

Outcome Disk::write(QFileDevice &file, const QByteArray &bytes)
{
    // A full disk shows as a short count or only in flush(), not as an error of write().
    SystemError::presumeFullDisk();
    const bool isWritten = file.write(bytes) == bytes.size() && file.flush();
    return outcomeOf(isWritten, file.fileName());
}

/** Reads and writes, where the system does not copy. */
Outcome Disk::copyBlocks(QFileDevice &from, QFileDevice &to, qint64 size)
{
    constexpr qint64 blockSize = 1 << 20;
    QByteArray block(static_cast<int>(std::clamp<qint64>(size, 0, blockSize)), Qt::Uninitialized);
    for (qint64 left = size; left > 0;) {
        SystemError::presumeFailedMedium();
        const qint64 count = from.read(block.data(), std::min(left, blockSize));
        if (count < 0)
            return outcomeOf(false, from.fileName(), false);
        if (count == 0)
            return {Outcome::Code::ChangedMeanwhile, from.fileName(), {}, {}};
        // Not by the virtual one: the copy is one operation.
        Outcome written =
            Disk::write(to, QByteArray::fromRawData(block.constData(), static_cast<int>(count)));
        if (!written)
            return written;
        left -= count;
    }
    return {};
}

/** Lets the file grow by writing zeros at its end, where blocks can't be had otherwise. */
Outcome Disk::growWithZeros(QFileDevice &file, qint64 size)
{
    const qint64 oldSize = file.size();
    if (size <= oldSize)
        return {};
    Outcome grown = outcomeOf(file.seek(oldSize), file.fileName());
    if (grown)
        grown = write(file, QByteArray(static_cast<int>(size - oldSize), '\0'));
    if (grown)
        grown = sync(file);
    if (!grown)
        file.resize(oldSize);
    return grown;
}

Outcome Disk::truncate(QFileDevice &file, qint64 size)
{
    return outcomeOf(file.resize(size), file.fileName());
}

Outcome Disk::replace(const QString &from, const QString &to)
{
    if (losesReplacedFiles(to) && QFileInfo::exists(to))
        return replaceKeepingOld(from, to);
    return rename(from, to);
}

Outcome Disk::remove(const QString &path)
{
    Outcome removed = SystemFile::removeFile(path);
    if (!removed && QFileInfo(path).isDir()) // for which not every system has an error of its own
        removed.code = Outcome::Code::NotAFile;
    return removed;
}

Disk &Disk::real()
{
    static Disk disk;
    return disk;
}

/** The old file's other name is on the medium before the new one takes its own, and goes once that
 * is there. */
Outcome Disk::replaceKeepingOld(const QString &from, const QString &to)
{
    const QString old = Recovery::recoveryPathOf(to);
    if (QFileInfo::exists(old)) {
        // It may be all that is left of a song; whoever knows songs decides (Recovery::recover).
        qDebug() << "[Disk::replace] WARNING: in the way:" << old;
        return {Outcome::Code::AlreadyExists, old, {}, {}};
    }
    if (const Outcome setAside = rename(to, old); !setAside)
        return setAside;
    Outcome named = syncAll({from, old});
    if (named)
        named = rename(from, to);
    const bool isNamed = static_cast<bool>(named);
    if (isNamed)
        named = syncAll({to, old});
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
    if (!remove(old) || !syncAll({old}))
        qDebug() << "[Disk::replace] WARNING: can't be removed:" << old;
    return {};
}

} // namespace tarvel4
