#pragma once

#include "storage/outcome.h"

#include <QString>

#include <functional>

QT_BEGIN_NAMESPACE
class QFileInfo;
QT_END_NAMESPACE

namespace tarvel4 {

class Disk;

/**
 * The old files that wait under another name until what replaces them is safe, where a rename over
 * a file can lose both; docs/formats.md, Song formats. When the power fails meanwhile one stays
 * behind, and is then all that is left of its song, or only in the way.
 */
namespace Recovery {

/** What became of a file that stayed behind. */
enum class Result {
    NoneThere,
    GivenBack, ///< it has its name again
    Removed, ///< its song is whole without it
    Kept, ///< nobody can tell which of the two is the song, both may be one, or the disk failed
    // of a song in the journal
    PutBack, ///< it has its old bytes again
    Waits, ///< it can't be read or written now
    ChangedSince ///< it was given other bytes since, and is left alone
};

/** True for a file that can be read as a song; also asked about one that is set aside. */
using IsSong = std::function<bool(const QString &path)>;

/** Told of each file that was there, by the name that it goes back to; \a cause: why it waits. */
using Report = std::function<void(const QString &path, Result result, const Outcome &cause)>;

/** True for a file of zeros, as a power cut leaves one that got its size but not its bytes; an MP3
 * may well begin with zeros. */
bool isBlank(const QString &path);

/** True where two names may be those of one file: same size, times and bytes. A power cut amid a
 * rename leaves that on FAT where the names lie in different sectors; whichever of them is removed
 * takes the other one's bytes with it. Elsewhere a hard link is one. */
bool mayBeOneFile(const QFileInfo &file, const QFileInfo &other);

/** The name under which the file \a path waits. */
QString recoveryPathOf(const QString &path);

/** True for such a name. */
bool isRecoveryName(const QString &fileName);

/** The name to which a file set aside goes back; any other path as it is. */
QString goesBackTo(const QString &path);

/**
 * Gives \a path back what stayed behind of it, or removes that. Only what a recognised song stands
 * beside is removed, and only a recognised song takes the place of bytes that are none.
 */
Result recover(Disk &disk, const QString &path, const IsSong &isSong);

/** The same for each file in \a folder. */
void recoverAll(Disk &disk, const QString &folder, const IsSong &isSong, const Report &report = {});

} // namespace Recovery

} // namespace tarvel4
