#pragma once

#include <QStringList>

namespace tarvel4 {

/** The lines of the log that several workflows share. */
namespace WorkflowLog {

/** Opens a workflow's block: its title between two rulers. */
void title(const char *text);

/** Closes a song's block. */
void songEnd();

/** Says how many songs a run could not handle, and which; nothing where there is none. */
void failures(const char *operation, const QStringList &paths);

} // namespace WorkflowLog

} // namespace tarvel4
