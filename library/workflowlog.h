#pragma once

namespace tarvel4 {

struct SongOutcome;

/** The lines of the log that several workflows share. */
namespace WorkflowLog {

/** Opens a workflow's block: its title between two rulers. */
void title(const char *text);

/** Closes a song's block. */
void songEnd();

/** Says why a song could not be read or saved. */
void refused(const char *operation, const SongOutcome &song);

} // namespace WorkflowLog

} // namespace tarvel4
