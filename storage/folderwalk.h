#pragma once

#include "storage/folderlisting.h"

#include <QByteArray>
#include <QSet>
#include <QString>

#include <vector>

namespace tarvel4 {

/**
 * The one walk over a folder tree: each folder once, in an order that its user gives, links
 * followed. What can't be reached is told and never skipped in silence. A user derives from it and
 * takes what it needs. Paths \a below are those below the root: they begin with "/", the root's own
 * is empty.
 */
class FolderWalk
{
public:
    virtual ~FolderWalk() = default;
    Q_DISABLE_COPY(FolderWalk)

    /** False: file() stopped it. */
    bool walk(const QString &root);

protected:
    struct Item
    {
        QByteArray key; ///< of keyOf()
        FolderListing::Entry entry;
    };

    explicit FolderWalk(const FolderListing::Filter &filter)
        : m_filter(filter)
    {}

    QString pathOf(const QString &below) const;

    /** Takes a folder for one that was met already, so that it is not entered. */
    void leaveOut(const QString &path);

    virtual FolderListing list(const QString &path) { return FolderListing(path, m_filter); }

    /** What items are sorted by, ties by name; a folder's is handed to those of what it holds. */
    virtual QByteArray keyOf(const QByteArray &keyOfFolder,
                             const FolderListing::Entry &entry) const;
    virtual int compareKeys(const QByteArray &left, const QByteArray &right) const;

    /** A folder, the root too, that will be listed. */
    virtual void meet(const QString &below);
    /** A folder that was listed, for the first time; where \a listed is a failure, not to its end.
     * True: what was listed is walked, and leave() is called behind it. */
    virtual bool enter(const QString &below, const Outcome &listed) = 0;
    virtual void leave(const QString &below);
    /** False stops the walk. */
    virtual bool file(const QString &below, const Item &item) = 0;
    /** A wanted name that can't be said, or leads to nothing that can be looked at. */
    virtual void unreachable(const QString &below) = 0;

private:
    bool walkFolder(const QString &below, const QByteArray &key, bool isLink);
    bool walkItem(const QString &below, const Item &item);
    std::vector<Item> inOrder(const FolderListing &listing, const QByteArray &key) const;
    bool isFirstVisit(const FolderListing &listing, bool isLink);

    FolderListing::Filter m_filter;
    QString m_root;
    QString m_start; ///< of each path below it: without a slash at its end
    QSet<QByteArray> m_met; ///< identities of folders
    bool m_mayMeetAgain = false;
};

} // namespace tarvel4
