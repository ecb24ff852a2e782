#pragma once

#include "storage/disk.h"

#include <QString>

namespace tarvel4 {

/** The folder copy: a whole tree beside the flat backup of the chosen songs. */
namespace FolderBackup {

/**
 * Copies what the folder \a source holds, sub-folders included, into \a dest, which is made where
 * it is missing. What stands there is not replaced. Where anything could not be copied the rest is,
 * and the outcome is the first cause, with the path that it happened to.
 */
Outcome backupDir(const QString &source, const QString &dest, Disk &disk = Disk::real());

} // namespace FolderBackup

} // namespace tarvel4
