#pragma once

#include <QByteArray>

namespace tarvel4 {

/** New bytes for a file, worked out in memory: its first part is exchanged, the rest stays. */
struct FileChange
{
    enum class Way {
        InPlace, ///< the file stays the same one to whoever links to it; nothing of it stays
        Beside, ///< a new file takes its name once it is whole
    };

    Way way = Way::InPlace;
    QByteArray oldHead; ///< the file's first bytes as they were read; in place: all of them
    QByteArray newHead; ///< what stands in place of the bytes up to the tail
    qint64 tail = 0; ///< beside: the offset of what stays; beyond the end where nothing does
    const char *logLine = nullptr; ///< for the log when the file could be opened; null: none
};

} // namespace tarvel4
