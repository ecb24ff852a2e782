#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace tarvel4 {

/** The folder walk: finds the songs of a folder tree. */
namespace FolderScan {

/** True for a name whose suffix, in any case, is a song's. */
bool isSongName(const QString &fileName);

/** All files below \a path, folders first; link loops end. */
void countFiles(const QString &path, int &count);

enum class Files { Songs, All };

/**
 * Calls \a found with each song, or each file, below \a path: regular files in name order,
 * names that begin with a dot are skipped. Stops when \a found returns false. \a skipped gets
 * each entry that can't be reached (a name that is not valid in the locale, an unreadable folder);
 * \a leftFolder is called after each folder below \a path that was walked. Changes nothing on any
 * disk.
 */
bool scanDir(const QString &path, const std::function<bool(const QString &)> &found,
             const std::function<void(const QString &)> &skipped, Files files = Files::Songs,
             const std::function<void()> &leftFolder = {});

/** The files below \a path of which one is set aside (storage/recovery.h), by the names to which
 * they go back. \a goesOn is asked at each folder; where it says no, no other folder is entered. */
QStringList setAsideBelow(const QString &path, const std::function<bool()> &goesOn = {});

} // namespace FolderScan

} // namespace tarvel4
