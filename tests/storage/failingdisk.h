#pragma once

#include "storage/disk.h"

#include <QFileDevice>
#include <QStringList>

#include <functional>

namespace tarvel4 {

/** The real disk, whose n-th operation fails. A write that fails leaves half of its bytes. */
class FailingDisk : public Disk
{
public:
    int failAt = 0; ///< counted over all operations, from 1; 0: none fails
    bool staysBroken = false; ///< every operation after that fails, too
    bool isFat = false; ///< names are changed as on FAT
    std::function<void(const QString &operation)> before; ///< called before each operation

    QStringList operations; ///< what was asked for, in order

    bool write(QFileDevice &file, const QByteArray &bytes) override
    {
        if (enter("write"))
            return Disk::write(file, bytes);
        Disk::write(file, bytes.left(bytes.size() / 2));
        return false;
    }
    bool reserve(QFileDevice &file, qint64 size) override
    {
        return enter("reserve") && Disk::reserve(file, size);
    }
    bool truncate(QFileDevice &file, qint64 size) override
    {
        return enter("truncate") && Disk::truncate(file, size);
    }
    bool sync(QFileDevice &file) override { return enter("sync") && Disk::sync(file); }
    bool syncFolder(const QString &path) override
    {
        return enter("syncFolder") && Disk::syncFolder(path);
    }
    bool syncVolume(const QString &path) override
    {
        return enter("syncVolume") && Disk::syncVolume(path);
    }
    bool remove(const QString &path) override { return enter("remove") && Disk::remove(path); }

protected:
    bool rename(const QString &from, const QString &to) override
    {
        return enter("rename") && Disk::rename(from, to);
    }
    bool losesReplacedFiles(const QString &path) const override
    {
        return isFat || Disk::losesReplacedFiles(path);
    }

private:
    bool enter(const char *operation)
    {
        operations.append(QString::fromLatin1(operation));
        if (before)
            before(operations.last());
        const int count = operations.size();
        return failAt == 0 || count < failAt || (count > failAt && !staysBroken);
    }
};

} // namespace tarvel4
