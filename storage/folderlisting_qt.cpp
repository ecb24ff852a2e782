#include "storage/folderlisting.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFileInfo>

namespace tarvel4 {

namespace {

void setStamp(FolderListing::Entry &entry, const QDateTime &modified)
{
    constexpr int lastYear = 9999;
    const QDate date = modified.date();
    const QTime time = modified.time();
    if (!date.isValid() || date.year() < 0 || date.year() > lastYear)
        return;
    entry.date = static_cast<quint32>(date.year() * 10000 + date.month() * 100 + date.day());
    entry.time = static_cast<quint32>(time.hour() * 10000 + time.minute() * 100 + time.second());
}

} // namespace

FolderListing::FolderListing(const QString &path, NameFilter isWanted)
{
    const QFileInfo folder(path);
    if (!folder.isDir())
        return;
    m_identity = folder.canonicalFilePath().toUtf8();
    m_isListed = folder.isReadable();

    QDirIterator iterator(path, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    while (iterator.hasNext()) {
        iterator.next();
        const QFileInfo info = iterator.fileInfo();
        Entry entry;
        entry.name = info.fileName();
        entry.isFolder = info.isDir();
        entry.isLink = info.isSymLink();
        if ((!entry.isFolder && !info.isFile()) || !isWanted(entry.name, entry.isFolder))
            continue;
        const QDateTime modified = info.lastModified(); // none for the first moment of 1970
        setStamp(entry, modified.isValid() ? modified : QDateTime::fromMSecsSinceEpoch(0));
        m_entries.push_back(entry);
    }
}

} // namespace tarvel4
