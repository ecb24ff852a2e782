#pragma once

#include <QString>

namespace tarvel4 {

/** The names inside a song's path; "/" is the only separator, as everywhere in the program. */
namespace SongPath {

/** The text after the last "/". */
QString fileName(const QString &path);

/** The file name without its last dot and what follows; whole where it has no dot. */
QString baseName(const QString &path);

/** In upper case, without a dot and exactly three word characters at its end: the catalogue's key.
 */
QString catalogueKey(const QString &name);

} // namespace SongPath

} // namespace tarvel4
