#pragma once

#include "cli/command.h"

namespace tarvel4 {

class LibraryBackup;

/**
 * Has the host answer the question for a backup with the folder \a dir, once nothing stands against
 * one of \a files. False, having said why: the backup can't be made, and nothing was copied.
 */
bool chooseBackup(Session &session, const QString &dir, const QStringList &files);

/** Names what a backup into \a dir failed at: songs, or the folder itself. */
void sayWhyNoBackup(Session &session, const LibraryBackup &backup, const QString &dir);

} // namespace tarvel4
