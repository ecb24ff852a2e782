#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/** The folder walk: finds the songs of a folder tree. */
namespace FolderScan {

/** True for a name whose suffix, in any case, is a song's. */
bool isSongName(const QString &fileName);

/** All files below \a path, folders first; link loops end. */
void countFiles(const QString &path, int &count);

/**
 * Calls \a found with each song below \a path: regular files with a song suffix in name order,
 * names that begin with a point passed over. Stops when \a found returns false. \a skipped gets
 * each entry that can't be reached (a name that is not valid in the locale, an unreadable folder).
 */
bool scanDir(const QString &path, const std::function<bool(const QString &)> &found,
             const std::function<void(const QString &)> &skipped);

} // namespace FolderScan
