#pragma once

#include <QString>

/** \a stem + \a suffix, or with a number between them when that name is taken: "song.tmp",
 * "song.1.tmp" ... */
QString freeName(const QString &stem, const QString &suffix);
