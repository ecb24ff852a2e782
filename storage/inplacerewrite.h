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
    /** What stands behind the new bytes of a file that becomes shorter, until it is cut. */
    using Padding = QByteArray (*)(int size);

    InPlaceRewrite(Disk &disk, const QString &path, Padding padding);

    /** Makes the file writable, opens it and keeps its bytes. Not done: it is as it was. */
    Outcome open();

    /** Done once the file has the new bytes, on the medium. Else it has its old ones, but for
     * NotRestored; the log says why. */
    Outcome write(const QByteArray &image);

private:
    Outcome overwrite(const QByteArray &bytes);
    Outcome putBack(const Outcome &failure);

    Disk &m_disk;
    WritePermission m_permission;
    QFile m_file;
    Padding m_padding;
    QByteArray m_old;
    bool m_isNew;
};

} // namespace tarvel4
