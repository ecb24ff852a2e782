#pragma once

#include <QStringList>

namespace tarvel4 {

/** "text"_s: a QString of a Latin-1 literal. */
inline QString operator""_s(const char *text, std::size_t size)
{
    return QString::fromLatin1(text, static_cast<int>(size));
}

inline QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

} // namespace tarvel4
