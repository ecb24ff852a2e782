#pragma once

#include <QFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tarvel4 {

/** What a test makes that only Unix has, or has in this way; false elsewhere. */
namespace UnixFile {

inline bool makeFifo(const QString &path)
{
#ifdef Q_OS_UNIX
    return mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
#else
    Q_UNUSED(path)
    return false;
#endif
}

inline bool makeHardLink(const QString &file, const QString &name)
{
#ifdef Q_OS_UNIX
    return ::link(QFile::encodeName(file).constData(), QFile::encodeName(name).constData()) == 0;
#else
    Q_UNUSED(file)
    Q_UNUSED(name)
    return false;
#endif
}

#ifdef Q_OS_UNIX
constexpr bool isHere = true;
#else
constexpr bool isHere = false;
#endif

} // namespace UnixFile

/** A row about what Windows has not ends here. */
#define SKIP_WITHOUT_UNIX(isAboutUnix, what)                                                       \
    do {                                                                                           \
        if (!UnixFile::isHere && (isAboutUnix))                                                    \
            QSKIP("Windows has no " what);                                                         \
    } while (false)

} // namespace tarvel4
