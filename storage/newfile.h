#pragma once

#include "storage/outcome.h"

#include <QByteArray>
#include <QString>

namespace tarvel4 {

class Disk;

/** Files that are written as a whole. */
namespace NewFile {

/**
 * Writes \a bytes beside \a path, under a name that begins with a dot, and gives them the name
 * once they are on the medium. What stood there before, a link's file too, holds its old bytes
 * until then, and hands its permissions on. False: nothing of the new bytes is left, unless it is
 * only not certain that the new name is on the medium.
 */
Outcome write(Disk &disk, const QString &path, const QByteArray &bytes);

} // namespace NewFile

} // namespace tarvel4
