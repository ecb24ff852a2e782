#pragma once

#include <QStringList>

namespace tarvel4 {

/** The "*" and "?" of a command line, which the shells of Windows leave to the program. */
namespace Wildcards {

/** True for a path that has any and is itself no file. */
bool areIn(const QString &path);

/** The files and folders that such a path with slashes names, as a shell gives them: by name, and
 * those that begin with a dot only where the wildcards do. The path itself where there are none. */
QStringList expanded(const QString &path);

} // namespace Wildcards

} // namespace tarvel4
