#pragma once

#include <QFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace tarvel4 {

/** Makes a FIFO, without a program for it; false where the system has none. */
inline bool makeFifo(const QString &path)
{
#ifdef Q_OS_UNIX
    return mkfifo(QFile::encodeName(path).constData(), S_IRUSR | S_IWUSR) == 0;
#else
    Q_UNUSED(path)
    return false;
#endif
}

} // namespace tarvel4
