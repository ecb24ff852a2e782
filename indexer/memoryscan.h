#pragma once

#include "storage/folderwalk.h"

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
class MemoryScan : private FolderWalk
{
public:
    MemoryScan();

    std::function<void(const QString &path)> onFolder; ///< full path of a folder that is entered
    std::function<void(const ScannedSong &song)> onSong;
    std::function<void(const QString &path)>
        onUnreadable; ///< a folder, or a name that can't be represented
    /** Full path of a folder that holds files set aside (storage/recovery.h), before its songs are
     * told: it may put them in order. */
    std::function<void(const QString &path)> onSetAside;

    /** Fails when the root is no folder that can be listed: then nothing is known of its songs. */
    Outcome scan(const QString &root);

private:
    FolderListing list(const QString &path) override;
    QByteArray keyOf(const QByteArray &keyOfFolder,
                     const FolderListing::Entry &entry) const override;
    int compareKeys(const QByteArray &left, const QByteArray &right) const override;
    bool enter(const QString &below, const Outcome &listed) override;
    bool file(const QString &below, const Item &item) override;
    void unreachable(const QString &below) override;

    Outcome m_root;
};

} // namespace tarvel4
