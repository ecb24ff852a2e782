#include "indexer/memoryscan.h"

#include "indexer/indexformat.h"
#include "indexer/sortkeys.h"
#include "storage/recovery.h"

#include <QStringBuilder>

#include <algorithm>

namespace tarvel4 {

namespace {

template <std::size_t N> bool isOneOf(QStringView name, const std::array<const char *, N> &names)
{
    return std::any_of(names.begin(), names.end(), [name](const char *candidate) {
        return name.compare(QLatin1String(candidate), Qt::CaseInsensitive) == 0;
    });
}

bool isWanted(const QString &name, bool isFolder)
{
    if (name.startsWith(u'.'))
        return false;
    if (isFolder)
        return !isOneOf(name, IndexFormat::skippedFolders);
    if (Recovery::isRecoveryName(name))
        return true;
    const int point = name.lastIndexOf(u'.');
    return point >= 0 && isOneOf(QStringView(name).mid(point + 1), IndexFormat::songSuffixes);
}

} // namespace

bool MemoryScan::scan(const QString &root)
{
    m_root = root;
    m_entered.clear();
    m_hasFollowedLink = false;
    const FolderListing listing = list(root + u'/');
    if (!listing.isListed())
        return false;
    m_entered.insert(listing.identity());
    walk(listing, QString(), QByteArray());
    return true;
}

FolderListing MemoryScan::list(const QString &path) const
{
    FolderListing listing(path, isWanted);
    const auto isSetAside = [](const FolderListing::Entry &entry) {
        return !entry.isFolder && Recovery::isRecoveryName(entry.name);
    };
    if (!onSetAside || std::none_of(listing.entries().begin(), listing.entries().end(), isSetAside))
        return listing;
    onSetAside(path);
    return FolderListing(path, isWanted);
}

/** A folder's name counts with its slash: "Zeta.mid" stands before what "Zeta" holds. */
std::vector<MemoryScan::KeyedEntry> MemoryScan::inPathOrder(const FolderListing &listing,
                                                            const QByteArray &keyOfFolder)
{
    std::vector<KeyedEntry> entries;
    entries.reserve(listing.entries().size());
    for (const FolderListing::Entry &entry : listing.entries()) {
        if (!entry.isFolder && Recovery::isRecoveryName(entry.name))
            continue;
        const QByteArray key = keyOfFolder % '/' % SortKeys::ofPath(entry.name);
        entries.push_back({entry.isFolder ? QByteArray(key % '/') : key, entry});
    }
    std::sort(entries.begin(), entries.end(), [](const KeyedEntry &left, const KeyedEntry &right) {
        const int order = SortKeys::comparePaths(left.key, right.key);
        return order != 0 ? order < 0 : left.entry.name < right.entry.name;
    });
    return entries;
}

void MemoryScan::walk(const FolderListing &listing, const QString &relativePath,
                      const QByteArray &key)
{
    for (const KeyedEntry &keyed : inPathOrder(listing, key)) {
        const FolderListing::Entry &entry = keyed.entry;
        const QString path = relativePath % u'/' % entry.name;
        if (!entry.isUsable)
            onUnreadable(m_root + path);
        else if (entry.isFolder)
            enter(entry, path, keyed.key.chopped(1));
        else
            onSong({path, keyed.key, entry.date, entry.time});
    }
}

void MemoryScan::enter(const FolderListing::Entry &folder, const QString &relativePath,
                       const QByteArray &key)
{
    const FolderListing listing = list(m_root + relativePath);
    if (!listing.isListed())
        onUnreadable(m_root + relativePath);
    if (!isFirstVisit(listing, folder.isLink))
        return;
    onFolder(m_root + relativePath);
    walk(listing, relativePath, key);
}

/**
 * Once a link was followed, a folder may turn up a second time. Before that none is asked whether
 * it was met, for there are file systems that can't tell their folders apart for certain.
 */
bool MemoryScan::isFirstVisit(const FolderListing &listing, bool isLink)
{
    m_hasFollowedLink = m_hasFollowedLink || isLink;
    if (m_hasFollowedLink && m_entered.contains(listing.identity()))
        return false;
    m_entered.insert(listing.identity());
    return true;
}

} // namespace tarvel4
