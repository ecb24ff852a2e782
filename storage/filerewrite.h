#pragma once

#include "storage/disk.h"
#include "storage/filechange.h"
#include "storage/filestamp.h"

#include <QByteArray>

#include <memory>

namespace tarvel4 {

/** A FileChange on its way to the medium, step by step, so that many files can be flushed together
 * between two steps. Until publish() is confirmed the old bytes can be had again. */
class FileRewrite
{
public:
    virtual ~FileRewrite() = default;

    static std::unique_ptr<FileRewrite> make(Disk &disk, const QString &path,
                                             const FileStamp &stamp, const FileChange &change);

    /** Opens what is needed, and makes sure of room where no old byte is touched. */
    virtual Outcome open() = 0;
    /** Beside: the path of the new file until it has its name. Known once open() is done. */
    virtual QString temporary() const { return {}; }

    /** Writes the new bytes, without waiting for the medium. Not done: the file has its old ones,
     * or the outcome is NotRestored. */
    virtual Outcome write() = 0;
    /** What must be flushed before publish(). */
    virtual QString written() const = 0;
    /** Flushes that alone. */
    virtual Outcome sync() = 0;
    /** Takes back a write whose bytes, or a name that, did not reach the medium, for \a cause; what
     * that is to be called. */
    virtual Outcome takeBack(const Outcome &cause) = 0;

    /** Gives the old file another name, where a medium could lose both in one step; on the medium
     * before publish(). */
    virtual Outcome setAside() { return {}; }
    virtual bool isSetAside() const { return false; }

    /** True where the new bytes come into their place by publish(), and the name is to be flushed.
     */
    virtual bool hasName() const { return false; }
    virtual Outcome publish() { return {}; }
    /** Once the name is on the medium, or is known not to be. True: another flush is needed. */
    virtual bool confirm(Outcome &) { return false; }

    /** The ContentHash of the new bytes, once they are written. */
    virtual QByteArray hash() const = 0;
};

} // namespace tarvel4
