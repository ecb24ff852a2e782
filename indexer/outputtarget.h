#pragma once

#include "storage/outcome.h"

#include <QString>

namespace tarvel4 {

/** Files that no list and no song that is taken out of another may be written over. */
namespace OutputTarget {

enum class Obstacle {
    None,
    NoFile, ///< something else than a regular file has the name
    Song, ///< by its bytes or by its name, also where there is no such file
    Catalogue,
    IndexFile ///< a name that the index of the prepared memory there uses
};

Obstacle obstacleAt(const QString &path);

/** The same as a cause. */
Outcome check(const QString &path);

} // namespace OutputTarget

} // namespace tarvel4
