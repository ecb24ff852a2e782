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
    Outcome::Code cause = Outcome::Code::MediumFailed; ///< of the failure
    bool staysBroken = false; ///< every operation after that fails, too
    bool isFat = false; ///< names are changed as on FAT
    std::function<void(const QString &operation)> before; ///< called before each operation

    QStringList operations; ///< what was asked for, in order

    Outcome write(QFileDevice &file, const QByteArray &bytes) override
    {
        const Outcome entered = enter("write");
        if (entered)
            return Disk::write(file, bytes);
        Disk::write(file, bytes.left(bytes.size() / 2));
        return entered;
    }
    Outcome reserve(QFileDevice &file, qint64 size) override
    {
        const Outcome entered = enter("reserve");
        return entered ? Disk::reserve(file, size) : entered;
    }
    Outcome truncate(QFileDevice &file, qint64 size) override
    {
        const Outcome entered = enter("truncate");
        return entered ? Disk::truncate(file, size) : entered;
    }
    Outcome sync(QFileDevice &file) override
    {
        const Outcome entered = enter("sync");
        return entered ? Disk::sync(file) : entered;
    }
    Outcome syncFolder(const QString &path) override
    {
        const Outcome entered = enter("syncFolder");
        return entered ? Disk::syncFolder(path) : entered;
    }
    Outcome syncVolume(const QString &path) override
    {
        const Outcome entered = enter("syncVolume");
        return entered ? Disk::syncVolume(path) : entered;
    }
    Outcome remove(const QString &path) override
    {
        const Outcome entered = enter("remove");
        return entered ? Disk::remove(path) : entered;
    }

protected:
    Outcome rename(const QString &from, const QString &to) override
    {
        const Outcome entered = enter("rename");
        return entered ? Disk::rename(from, to) : entered;
    }
    bool losesReplacedFiles(const QString &path) const override
    {
        return isFat || Disk::losesReplacedFiles(path);
    }

private:
    Outcome enter(const char *operation)
    {
        operations.append(QString::fromLatin1(operation));
        if (before)
            before(operations.last());
        const int count = operations.size();
        if (failAt == 0 || count < failAt || (count > failAt && !staysBroken))
            return {};
        return {cause, {}, {}, {}};
    }
};

} // namespace tarvel4
