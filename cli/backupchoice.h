#pragma once

#include "cli/command.h"

namespace tarvel4 {

struct BackupSummary;

/**
 * Has the host answer the question for a backup with the folder \a dir, once nothing stands against
 * one of \a files. False, having said why: the backup can't be made, and nothing was copied.
 */
bool chooseBackup(Session &session, const QString &dir, const QStringList &files);

/** Says why \a dir could not take the backup; nothing where it is songs that failed. */
void sayWhyNoBackup(Session &session, const BackupSummary &summary, const QString &dir);

} // namespace tarvel4
