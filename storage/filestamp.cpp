#include "storage/filestamp.h"

#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace tarvel4 {

namespace {

QByteArray identityOf(const QFileInfo &info)
{
#ifdef Q_OS_UNIX
    struct stat status = {};
    if (stat(QFile::encodeName(info.filePath()).constData(), &status) != 0)
        return {};
    return QByteArray::number(static_cast<quint64>(status.st_dev)) + ' '
        + QByteArray::number(static_cast<quint64>(status.st_ino));
#else
    return info.canonicalFilePath().toCaseFolded().toUtf8();
#endif
}

} // namespace

FileStamp::FileStamp(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return;
    m_size = info.size();
    m_modified = info.lastModified();
    m_identity = identityOf(info);
}

bool FileStamp::matches(const QString &path) const
{
    const FileStamp now(path);
    return isFile() && now.m_size == m_size && now.m_modified == m_modified;
}

} // namespace tarvel4
