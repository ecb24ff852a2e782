#include "storage/folderwalk.h"

#include <QStringBuilder>

#include <algorithm>

namespace tarvel4 {

bool FolderWalk::walk(const QString &root)
{
    m_root = root;
    m_start = root.endsWith(QLatin1Char('/')) ? root.chopped(1) : root;
    return walkFolder(QString(), QByteArray(), false);
}

QString FolderWalk::pathOf(const QString &below) const
{
    return below.isEmpty() ? m_root : m_start % below;
}

void FolderWalk::leaveOut(const QString &path)
{
    m_met.insert(FolderListing::identityOf(path));
    m_mayMeetAgain = true;
}

QByteArray FolderWalk::keyOf(const QByteArray &, const FolderListing::Entry &) const
{
    return {};
}

int FolderWalk::compareKeys(const QByteArray &, const QByteArray &) const
{
    return 0;
}

void FolderWalk::meet(const QString &)
{}

void FolderWalk::leave(const QString &)
{}

bool FolderWalk::walkFolder(const QString &below, const QByteArray &key, bool isLink)
{
    meet(below);
    const FolderListing listing = list(pathOf(below));
    if (!isFirstVisit(listing, isLink) || !enter(below, listing.outcome()))
        return true;
    const std::vector<Item> items = inOrder(listing, key);
    const bool goesOn = std::all_of(items.begin(), items.end(), [&](const Item &item) {
        return walkItem(below % QLatin1Char('/') % item.entry.name, item);
    });
    leave(below);
    return goesOn;
}

bool FolderWalk::walkItem(const QString &below, const Item &item)
{
    if (item.entry.isUsable)
        return item.entry.isFolder ? walkFolder(below, item.key, item.entry.isLink)
                                   : file(below, item);
    unreachable(below);
    return true;
}

std::vector<FolderWalk::Item> FolderWalk::inOrder(const FolderListing &listing,
                                                  const QByteArray &key) const
{
    std::vector<Item> items;
    items.reserve(listing.entries().size());
    for (const FolderListing::Entry &entry : listing.entries())
        items.push_back({keyOf(key, entry), entry});
    std::sort(items.begin(), items.end(), [this](const Item &left, const Item &right) {
        const int order = compareKeys(left.key, right.key);
        return order != 0 ? order < 0 : left.entry.name < right.entry.name;
    });
    return items;
}

/**
 * Once a link was followed, a folder may turn up a second time. Before that none is asked whether
 * it was met, for there are file systems that can't tell their folders apart for certain.
 */
bool FolderWalk::isFirstVisit(const FolderListing &listing, bool isLink)
{
    if (listing.identity().isEmpty())
        return true; // it can't be listed, which is to be told each time
    m_mayMeetAgain = m_mayMeetAgain || isLink;
    const bool isKnown = m_mayMeetAgain && m_met.contains(listing.identity());
    m_met.insert(listing.identity());
    return !isKnown;
}

} // namespace tarvel4
