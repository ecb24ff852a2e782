#pragma once

#include "storage/recovery.h"

namespace tarvel4 {

class Journal;

/** Puts songs in order whose save was cut short by a power cut, a kill or a bad medium. */
namespace JournalRecovery {

/**
 * Compares each song that \a journal holds as not settled with its old and its new bytes, and gives
 * it the old ones where it has neither. A song that was given other bytes by somebody else is left
 * alone, and one that can't be reached waits for the next time; \a report is told so once.
 */
void recover(Journal &journal, Disk &disk, const Recovery::IsSong &isSong,
             const Recovery::Report &report);

} // namespace JournalRecovery

} // namespace tarvel4
