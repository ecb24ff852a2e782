#pragma once

#include <QString>

namespace tarvel4 {

/** Shows a file in the system's file manager: chosen in its folder where the manager can do so,
 * else the folder alone. */
void showInFolder(const QString &path);

#ifdef Q_OS_WIN
/** By its full path: a bare name is looked for in the current folder first, which may be one of the
 * memory. */
QString explorerProgram();
#endif

} // namespace tarvel4
