#pragma once

#include <QString>

namespace tarvel4 {

/** Shows a file in the system's file manager: chosen in its folder where the manager can do so,
 * else the folder alone. */
void showInFolder(const QString &path);

} // namespace tarvel4
