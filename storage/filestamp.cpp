#include "storage/filestamp.h"

#ifdef Q_OS_UNIX
#include <QFile>

#include <sys/stat.h>
#else
#include <QFileInfo>
#endif

namespace tarvel4 {

#ifdef Q_OS_UNIX

// One question to the system; Qt's answers to the same ask it for the time zone each time.
FileStamp::FileStamp(const QString &path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return;
#ifdef Q_OS_MACOS
    const timespec &modified = status.st_mtimespec;
#else
    const timespec &modified = status.st_mtim;
#endif
    constexpr qint64 nanoseconds = 1000000000;
    m_size = status.st_size;
    m_modified = modified.tv_sec * nanoseconds + modified.tv_nsec;
    m_identity = {static_cast<quint64>(status.st_dev), static_cast<quint64>(status.st_ino)};
}

QByteArray FileStamp::identity() const
{
    return isFile()
        ? QByteArray(reinterpret_cast<const char *>(m_identity.data()), sizeof m_identity)
        : QByteArray();
}

#else

FileStamp::FileStamp(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return;
    m_size = info.size();
    m_modified = info.lastModified().toMSecsSinceEpoch() * 1000000;
    m_identity = info.canonicalFilePath().toCaseFolded();
}

QByteArray FileStamp::identity() const
{
    return m_identity.toUtf8();
}

#endif

bool FileStamp::matches(const QString &path) const
{
    const FileStamp now(path);
    return isFile() && now.m_size == m_size && now.m_modified == m_modified;
}

} // namespace tarvel4
