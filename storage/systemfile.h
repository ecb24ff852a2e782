#pragma once

#include "storage/outcome.h"

#include <QString>

namespace tarvel4 {

/** What Qt can't ask of the system, or does without telling the cause of a failure. */
namespace SystemFile {

/** True for anything of that name, a link that leads nowhere included. */
bool isTaken(const QString &path);

/** True when both paths lead to the same existing file, whatever they look like. */
bool isSame(const QString &path, const QString &other);

/** Makes a single folder; AlreadyExists where anything has its name. */
Outcome makeFolder(const QString &path);

/** Makes a folder and those above it, as far as they are missing. */
Outcome makeFolders(const QString &path);

/** False where the folder holds anything. */
bool removeEmptyFolder(const QString &path);

/** Removes a file; done when it is gone, also when it was not there. */
Outcome removeFile(const QString &path);

/** Gives a copy the permissions of its source, as far as the medium knows any. */
void copyPermissions(const QString &source, const QString &target);

} // namespace SystemFile

} // namespace tarvel4
