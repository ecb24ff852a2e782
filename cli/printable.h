#pragma once

#include <QString>

namespace tarvel4 {

/**
 * True for a character that a terminal would act upon in place of showing it: the control codes,
 * and those that turn the direction of the text.
 */
bool isUnprintable(QChar character);

/** The text with each such character as \\u and four hexadecimal digits. */
QString printable(const QString &text);

} // namespace tarvel4
