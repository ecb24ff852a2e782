#pragma once

#include "storage/disk.h"
#include "storage/writepermission.h"

#include <QByteArray>
#include <QFile>

namespace tarvel4 {

/** Gives a file new bytes in its own place, so that it stays the same file to whoever links to it,
 * and its old bytes again when that fails. */
class InPlaceRewrite
{
public:
    InPlaceRewrite(Disk &disk, const QString &path);

    /** Makes the file writable, opens it and keeps its bytes. False: it can't be written, and is as
     * it was. */
    bool open();

    /** True once the file has the new bytes, on the medium. False: it has its old ones; the log
     * says why. */
    bool write(const QByteArray &image);

private:
    bool overwrite(const QByteArray &bytes);
    void putBack();

    Disk &m_disk;
    WritePermission m_permission;
    QFile m_file;
    QByteArray m_old;
    bool m_isNew;
};

} // namespace tarvel4
