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

FolderListing::FolderListing(const QString &path, const Filter &filter)
{
    const QFileInfo folder(path);
    if (!folder.isDir() || !folder.isReadable()) {
        m_outcome = {
            folder.isDir() ? Outcome::Code::ReadDenied : Outcome::Code::NotFound, path, {}, {}};
        return;
    }
    m_identity = identityOf(path);

    QDirIterator iterator(path,
                          QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (iterator.hasNext()) {
        iterator.next();
        const QFileInfo info = iterator.fileInfo();
        Entry entry;
        entry.name = info.fileName();
        entry.isFolder = info.isDir();
        entry.isLink = info.isSymLink();
        entry.isUsable = info.exists();
        const bool isListed =
            entry.isUsable ? entry.isFolder || info.isFile() : entry.isLink && filter.hasDeadLinks;
        if (!isListed || !filter.isWanted(entry.name, entry.isFolder))
            continue;
        const QDateTime modified = info.lastModified(); // none for the first moment of 1970
        if (filter.hasTimes)
            setStamp(entry, modified.isValid() ? modified : QDateTime::fromMSecsSinceEpoch(0));
        m_entries.push_back(entry);
    }
}

QByteArray FolderListing::identityOf(const QString &path)
{
    return QFileInfo(path).canonicalFilePath().toUtf8();
}

} // namespace tarvel4
