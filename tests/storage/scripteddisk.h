#pragma once

#include "storage/disk.h"

#include <QFileDevice>
#include <QStringList>

#include <functional>

namespace tarvel4 {

/** The real disk, which keeps what was done and fails, or does something else first, on demand. It
 * does not wait for the medium: that costs time and shows nothing. */
class ScriptedDisk : public Disk
{
public:
    /** The n-th call (from 1) of an operation fails; 0: none does. A short write leaves half. */
    int failingWrite = 0;
    int failingSync = 0; ///< of a file or a volume
    int failingReplace = 0;
    bool isFat = false; ///< a file system that loses replaced files
    Outcome::Code cause = Outcome::Code::NoRoom; ///< of the failure
    bool staysBroken = false; ///< every later call of the operation fails too
    std::function<void(const QString &operation, int count)>
        before; ///< called before each operation

    QStringList operations; ///< "write", "sync" and "replace", in order

    int countOf(const QString &operation) const { return int(operations.count(operation)); }

    Outcome write(QFileDevice &file, const QByteArray &bytes) override
    {
        const Outcome entered = enter(QStringLiteral("write"), failingWrite);
        if (entered)
            return Disk::write(file, bytes);
        Disk::write(file, bytes.left(bytes.size() / 2));
        return entered;
    }
    Outcome sync(QFileDevice &file) override
    {
        file.flush();
        return enter(QStringLiteral("sync"), failingSync);
    }
    Outcome syncVolume(const QString &path) override
    {
        Q_UNUSED(path)
        return enter(QStringLiteral("sync"), failingSync);
    }
    Outcome replace(const QString &from, const QString &to) override
    {
        const Outcome entered = enter(QStringLiteral("replace"), failingReplace);
        return entered ? Disk::replace(from, to) : entered;
    }

    bool losesReplacedFiles(const QString &path) const override
    {
        return isFat || Disk::losesReplacedFiles(path);
    }

private:
    Outcome enter(const QString &operation, int failing)
    {
        operations.append(operation);
        const int count = countOf(operation);
        if (before)
            before(operation, count);
        if (failing == 0 || count < failing || (count > failing && !staysBroken))
            return {};
        return {cause, {}, {}, {}};
    }
};

} // namespace tarvel4
