#include "ui/recentfolder.h"

#include "ui/statefile.h"

#include <QFileInfo>

namespace tarvel4 {

QString RecentFolder::folder(const QString &first) const
{
    const QString last = StateFile::value(m_key);
    return QFileInfo(last).isAbsolute() && QFileInfo(last).isDir() ? last : first;
}

void RecentFolder::setFolder(const QString &folder) const
{
    StateFile::setValue(m_key, folder);
}

} // namespace tarvel4
