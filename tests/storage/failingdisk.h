#pragma once

#include "storage/disk.h"

#include <QFileDevice>
#include <QStringList>

#include <functional>

namespace tarvel4 {

/** The real disk, which keeps what was done, and fails or does something else first on demand. A
 * write that fails leaves half of its bytes. It does not wait for the medium: that costs time and
 * shows nothing. */
class FailingDisk : public Disk
{
public:
    // The n-th call fails, counted from 1; 0: none does.
    int failAt = 0; ///< of all operations together
    int failingWrite = 0;
    int failingSync = 0; ///< of a file or of many
    int failingReplace = 0;
    Outcome::Code cause = Outcome::Code::MediumFailed; ///< of the failure
    bool staysBroken = false; ///< every later call that is counted so fails, too
    QString badPart; ///< no file whose path contains this is flushed; empty: none is so bad
    bool isFat = false; ///< names are changed as on FAT
    std::function<void(const QString &operation, int count)> before; ///< called before each one

    QStringList operations; ///< what was asked for, in order

    int countOf(const char *operation) const
    {
        return static_cast<int>(operations.count(QLatin1String(operation)));
    }

    Outcome write(QFileDevice &file, const QByteArray &bytes) override
    {
        const Outcome entered = enter("write", failingWrite, countOf("write") + 1);
        const Outcome written = Disk::write(file, entered ? bytes : bytes.left(bytes.size() / 2));
        return entered ? written : entered;
    }
    Outcome copyRange(QFileDevice &from, QFileDevice &to, qint64 size) override
    {
        const Outcome entered = enter("write", failingWrite, countOf("write") + 1);
        const Outcome copied = Disk::copyRange(from, to, entered ? size : size / 2);
        return entered ? copied : entered;
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
        file.flush();
        const Outcome entered = enter("sync", failingSync, syncCount() + 1);
        return entered ? flushed({file.fileName()}) : entered;
    }
    Outcome syncAll(const QStringList &paths) override
    {
        const Outcome entered = enter("syncAll", failingSync, syncCount() + 1);
        return entered ? flushed(paths) : entered;
    }
    Outcome replace(const QString &from, const QString &to) override
    {
        const Outcome entered = enter("replace", failingReplace, countOf("replace") + 1);
        return entered ? Disk::replace(from, to) : entered;
    }
    Outcome remove(const QString &path) override
    {
        const Outcome entered = enter("remove");
        return entered ? Disk::remove(path) : entered;
    }
    bool losesReplacedFiles(const QString &path) const override
    {
        return isFat || Disk::losesReplacedFiles(path);
    }

protected:
    Outcome rename(const QString &from, const QString &to) override
    {
        const Outcome entered = enter("rename");
        return entered ? Disk::rename(from, to) : entered;
    }

private:
    int syncCount() const { return countOf("sync") + countOf("syncAll"); }

    Outcome flushed(const QStringList &paths) const
    {
        const bool isBad = !badPart.isEmpty() && !paths.filter(badPart).isEmpty();
        return isBad ? Outcome{cause, {}, {}, {}} : Outcome();
    }
    bool isFailing(int failing, int count) const
    {
        return failing > 0 && (staysBroken ? count >= failing : count == failing);
    }
    Outcome enter(const char *operation, int failing = 0, int count = 0)
    {
        operations.append(QLatin1String(operation));
        if (before)
            before(operations.last(), countOf(operation));
        if (isFailing(failAt, static_cast<int>(operations.size())) || isFailing(failing, count))
            return {cause, {}, {}, {}};
        return {};
    }
};

} // namespace tarvel4
