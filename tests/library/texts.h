#pragma once

#include <QString>
#include <QStringList>

#include <initializer_list>

namespace tarvel4 {

/** Short names for the texts that the tests of the workflows are full of. */
inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

inline QStringList strings(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *utf8 : texts)
        list.append(text(utf8));
    return list;
}

} // namespace tarvel4
