#pragma once

namespace tarvel4 {

/** How a command ended, as the shell sees it. */
enum class ExitStatus {
    Done = 0,
    SomeFailed = 1, ///< finished, but a song was unreadable, not found, refused or failed, or an
                    ///< index has errors
    Usage = 2, ///< wrong usage, nothing done
    Failed = 3, ///< the job could not be done
    Interrupted = 130, ///< the file in hand was finished, the rest not begun
    PipeClosed = 141, ///< nobody reads the records; the songs in hand were finished
};

} // namespace tarvel4
