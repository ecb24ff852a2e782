#pragma once

#include "storage/disk.h"

#include <QStringList>

namespace tarvel4 {

/** The free space of a volume, compared with what songs will take of it. */
namespace FreeSpace {

/**
 * NoRoom, with how much is missing, where the songs and their companions can't be copied into
 * \a folder whatever is answered about those that exist there. Done wherever that is not certain:
 * where a question decides, the answer that takes least counts, and a file system whose files may
 * take less than their bytes is not judged. The disk is flushed before the answer is NoRoom, since
 * some file systems count what was deleted as free only then.
 */
Outcome check(const QStringList &paths, const QString &folder, Disk &disk);

} // namespace FreeSpace

} // namespace tarvel4
