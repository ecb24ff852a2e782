#pragma once

#include "indexer/indexentry.h"
#include "songs/disk.h"

#include <QObject>
#include <QVector>

/** Builds, updates and reads the files through which the player browses a memory; docs/formats.md,
 * Player memory. */
class Index : public QObject
{
    Q_OBJECT

public:
    /** How a song list is sorted, ties by title. */
    enum SongOrder { ByTitle = 0, ByArtist = 1, ByGenre = 2 };

    explicit Index(QObject *parent = nullptr, Disk &disk = Disk::real());

    /** Removes the index and builds it anew from the songs below \a root. True: the memory is
     * prepared. */
    bool rebuild(const QString &root);

    /** Brings the index up to date, reading only new and changed songs; a rebuild where there is
     * none. */
    bool update(const QString &root);

    /** Writes the list of the songs that the index holds. 1 written, -1 memory not prepared, 0
     * failed. */
    int writeSongList(const QString &root, const QString &target, int order);

    /** Reads the index of a prepared memory; empty with \a ok false when it can't be read. In order
     * of the records. */
    QVector<IndexEntry> readEntries(const QString &root, bool &ok);

    /** Entries in the order of a song list. */
    static void sortForList(QVector<IndexEntry> &entries, int order);

    /** True when the seven files of a prepared memory exist. */
    static bool isPrepared(const QString &root);

    /** Removes the index files; false when one of them is still there. */
    bool deleteIndex(const QString &root);

    /** Of the last run: songs counted, whether files were written, and whether a file or the old
     * index failed. */
    int found() const;
    bool changed() const;
    bool failed() const;

    // the order of declaration is the meta-object's
Q_SIGNALS:
    void fileFoundChanged(int count);
    void progressMaxSetup(int maximum);
    void progressValueChanged(int value);
    void currentPathChanged(const QString &path);
    void errorFromIndex(const QString &text);
};
