#include "storage/filestamp.h"

#include <QFileInfo>

namespace tarvel4 {

FileStamp::FileStamp(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return;
    m_size = info.size();
    m_modified = info.lastModified();
}

bool FileStamp::matches(const QString &path) const
{
    const FileStamp now(path);
    return isFile() && now.m_size == m_size && now.m_modified == m_modified;
}

} // namespace tarvel4
