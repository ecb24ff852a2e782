#include "indexer/memoryscan.h"

#include "indexer/indexformat.h"
#include "indexer/sortkeys.h"
#include "storage/recovery.h"

#include <algorithm>
#include <array>

namespace tarvel4 {

namespace {

template <std::size_t N> bool isOneOf(QStringView name, const std::array<const char *, N> &names)
{
    return std::any_of(names.begin(), names.end(), [name](const char *candidate) {
        return name.compare(QLatin1String(candidate), Qt::CaseInsensitive) == 0;
    });
}

bool isSongOrFolder(const QString &name, bool isFolder)
{
    if (name.startsWith(QLatin1Char('.')))
        return false;
    if (isFolder)
        return !isOneOf(name, IndexFormat::skippedFolders);
    const int dot = static_cast<int>(name.lastIndexOf(QLatin1Char('.')));
    return dot >= 0 && isOneOf(QStringView(name).mid(dot + 1), IndexFormat::songSuffixes);
}

bool isSetAside(const QString &name, bool isFolder)
{
    return !isFolder && !name.startsWith(QLatin1Char('.')) && Recovery::isRecoveryName(name);
}

bool isWanted(const QString &name, bool isFolder)
{
    return isSongOrFolder(name, isFolder) || isSetAside(name, isFolder);
}

} // namespace

MemoryScan::MemoryScan()
    : FolderWalk({isWanted, true, false})
{}

Outcome MemoryScan::scan(const QString &root)
{
    walk(root + QLatin1Char('/'));
    return m_root;
}

FolderListing MemoryScan::list(const QString &path)
{
    FolderListing listing = FolderWalk::list(path);
    const bool hasSetAside = std::any_of(
        listing.entries().begin(), listing.entries().end(),
        [](const FolderListing::Entry &entry) { return isSetAside(entry.name, entry.isFolder); });
    if (!hasSetAside)
        return listing;
    if (onSetAside)
        onSetAside(path);
    return FolderListing(path, {isSongOrFolder, true, false});
}

/** A folder's name counts with its slash: "Zeta.mid" stands before what "Zeta" holds. */
QByteArray MemoryScan::keyOf(const QByteArray &keyOfFolder, const FolderListing::Entry &entry) const
{
    const QByteArray name = SortKeys::ofPath(entry.name);
    const QByteArray folder = keyOfFolder.isEmpty() ? QByteArrayLiteral("/") : keyOfFolder;
    QByteArray key;
    key.reserve(folder.size() + name.size()
                + static_cast<int>(entry.isFolder)); // thousands are kept
    key += folder;
    key += name;
    if (entry.isFolder)
        key += '/';
    return key;
}

int MemoryScan::compareKeys(const QByteArray &left, const QByteArray &right) const
{
    return SortKeys::comparePaths(left, right);
}

bool MemoryScan::enter(const QString &below, const Outcome &listed)
{
    if (below.isEmpty()) {
        m_root = listed;
        return static_cast<bool>(listed);
    }
    if (!listed)
        onUnreadable(pathOf(below));
    onFolder(pathOf(below));
    return true;
}

bool MemoryScan::file(const QString &below, const Item &item)
{
    onSong({below, item.key, item.entry.date, item.entry.time});
    return true;
}

void MemoryScan::unreachable(const QString &below)
{
    onUnreadable(pathOf(below));
}

} // namespace tarvel4
