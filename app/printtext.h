#pragma once

#include <QString>

#include <cstdio>

namespace tarvel4 {

/** Writes what is said without a window: to where the program was started from or, on Windows where
 * that has no terminal, into a box. False where it can't be written. */
bool printText(std::FILE *stream, const QString &text);

} // namespace tarvel4
