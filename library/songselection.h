#pragma once

#include <QStringList>

#include <functional>

namespace tarvel4 {

/** The songs that a user means by naming files and folders. */
struct SongSelection
{
    QStringList songs; ///< each path once, in the order in which it was named or met
    QStringList skipped; ///< what could not be reached below a folder
    bool isWhole = true; ///< false where the walk was stopped

    /** Files are taken as they are, folders are walked as an import walks them; \a goesOn is called
     * with the number of songs at each one and behind each folder, and stops the walk. */
    static SongSelection of(const QStringList &paths, const std::function<bool(int)> &goesOn);
};

} // namespace tarvel4
