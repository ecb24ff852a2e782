#pragma once

#include <QString>

class Disk;

/**
 * The old files that wait under another name until what replaces them is safe, where a rename over
 * a file can lose both; docs/formats.md, Song formats. When the power fails meanwhile one stays
 * behind, and is then all that is left of its song, or only in the way.
 */
namespace SetAside {

/** The name under which the file \a path waits. */
QString pathOf(const QString &path);

/** True for such a name. */
bool isOne(const QString &fileName);

/** Gives back the song of \a path what stayed behind of it, or removes that where the song is
 * there. True when nothing stays behind. */
bool recover(Disk &disk, const QString &path);

/** The same for each file in \a folder. */
bool recoverAll(Disk &disk, const QString &folder);

} // namespace SetAside
