#include "indexer/memoryscan.h"

#include "indexer/folderlisting.h"
#include "indexer/indexformat.h"

#include <algorithm>

namespace {

template <std::size_t N> bool isOneOf(QStringView name, const std::array<const char *, N> &names)
{
    return std::any_of(names.begin(), names.end(), [name](const char *candidate) {
        return name.compare(QLatin1String(candidate), Qt::CaseInsensitive) == 0;
    });
}

bool isSongName(const QString &name)
{
    const int point = name.lastIndexOf(u'.');
    return point >= 0 && isOneOf(QStringView(name).mid(point + 1), IndexFormat::songSuffixes);
}

} // namespace

bool MemoryScan::scan(const QString &root)
{
    m_root = root;
    m_entered.clear();
    return scanFolder(QString());
}

bool MemoryScan::scanFolder(const QString &relativePath)
{
    const FolderListing listing(relativePath.isEmpty() ? m_root + u'/' : m_root + relativePath,
                                isSongName);
    if (!listing.isListed())
        return false;
    if (m_entered.contains(listing.identity()))
        return true;
    m_entered.insert(listing.identity());

    for (const FolderListing::Entry &entry : listing.entries()) {
        const QString path = relativePath + u'/' + entry.name;
        if (entry.name.isEmpty()) {
            onUnreadable(m_root + path);
        } else if (!entry.isFolder) {
            onSong({path, entry.date, entry.time});
        } else if (!isOneOf(entry.name, IndexFormat::skippedFolders)) {
            onFolder(m_root + path);
            if (!scanFolder(path))
                onUnreadable(m_root + path);
        }
    }
    return true;
}
