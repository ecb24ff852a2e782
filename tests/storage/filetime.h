#pragma once

#include <QDateTime>
#include <QFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>

#include <ctime>
#endif

namespace tarvel4 {

/** Gives an open file a time of its last change; Qt's own has no dates after 2038 in some 32-bit
 * builds. */
inline bool setModified(QFile &file, const QDateTime &modified)
{
#ifdef Q_OS_UNIX
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = static_cast<std::time_t>(modified.toSecsSinceEpoch());
    return futimens(file.handle(), times) == 0;
#else
    return file.setFileTime(modified, QFileDevice::FileModificationTime);
#endif
}

} // namespace tarvel4
