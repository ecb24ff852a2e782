#pragma once

#include <QString>

namespace tarvel4 {

/** \a stem + \a suffix, or with a number between them when that name is taken: "song.tmp",
 * "song.1.tmp" ... */
QString uniqueFileName(const QString &stem, const QString &suffix);

} // namespace tarvel4
