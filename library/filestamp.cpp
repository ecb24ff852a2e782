#include "library/filestamp.h"

#include <QFileInfo>

FileStamp::FileStamp(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return;
    m_size = info.size();
    m_modified = info.lastModified();
}

bool FileStamp::holds(const QString &path) const
{
    const FileStamp now(path);
    return isFile() && now.m_size == m_size && now.m_modified == m_modified;
}
