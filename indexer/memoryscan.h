#pragma once

#include "storage/folderlisting.h"

#include <QSet>
#include <QString>

#include <functional>

namespace tarvel4 {

/** One song file that a scan found. */
struct ScannedSong
{
    QString relativePath; ///< below the root, begins with "/"
    QByteArray sortKey; ///< SortKeys::ofPath() of it
    quint32 date = 0; ///< last modification, as IndexEntry has it
    quint32 time = 0;
};

/**
 * Walks a memory for its songs: regular files with a song's suffix, each folder once. Folders "sfx"
 * and "bridge", in any case, and names that begin with a dot are skipped. The walk goes in
 * path order, so that a rebuild numbers the songs as the ord index lists them.
 */
class MemoryScan
{
public:
    std::function<void(const QString &path)> onFolder; ///< full path of a folder that is entered
    std::function<void(const ScannedSong &song)> onSong;
    std::function<void(const QString &path)>
        onUnreadable; ///< a folder, or a name that can't be represented
    /** Full path of a folder that holds files set aside (songs/recovery.h), before its songs are
     * told: it may put them in order. */
    std::function<void(const QString &path)> onSetAside;

    /** False when the root is no folder that can be listed: then nothing is known of its songs. */
    bool scan(const QString &root);

private:
    struct KeyedEntry
    {
        QByteArray key;
        FolderListing::Entry entry;
    };

    FolderListing list(const QString &path) const;
    static std::vector<KeyedEntry> inPathOrder(const FolderListing &listing,
                                               const QByteArray &keyOfFolder);
    void walk(const FolderListing &listing, const QString &relativePath, const QByteArray &key);
    void enter(const FolderListing::Entry &folder, const QString &relativePath,
               const QByteArray &key);
    bool isFirstVisit(const FolderListing &listing, bool isLink);

    QString m_root;
    QSet<QByteArray> m_entered; ///< identities of the folders met
    bool m_hasFollowedLink = false;
};

} // namespace tarvel4
