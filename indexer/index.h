#pragma once

#include "indexer/indexentry.h"
#include "indexer/memoryscan.h"
#include "storage/disk.h"
#include "storage/outcome.h"
#include "storage/recovery.h"

#include <QObject>
#include <QVector>

#include <functional>
#include <vector>

namespace tarvel4 {

class IndexWriter;
struct IndexCandidate;

/**
 * Builds, updates and reads the files through which the player browses a memory; docs/formats.md,
 * Player memory. Runs on the caller's thread from start to end and reports by its signals.
 */
class Index : public QObject
{
    Q_OBJECT

public:
    /** How a song list is sorted, ties by title. */
    enum SongOrder { ByTitle = 0, ByArtist = 1, ByGenre = 2 };

    explicit Index(QObject *parent = nullptr, Disk &disk = Disk::real());

    /** Asked before a rebuild removes the index and before each song is read: once true, the run
     * fails and writes nothing. */
    void setStopWhen(std::function<bool()> stopWhen) { m_stopWhen = std::move(stopWhen); }

    /**
     * Removes the index and builds it anew from the songs below \a root. True: the memory is
     * prepared and everything is on the medium. A root that can't be listed is left as it is.
     */
    bool rebuild(const QString &root);

    /**
     * Brings the index up to date, reading only new and changed songs; a rebuild where there is
     * none. False with nothing changed where the old index can't be read.
     */
    bool update(const QString &root);

    /**
     * Writes the list of the songs that the index holds, in the system's 8-bit encoding. 1 written,
     * -1 memory not prepared, 0 the index can't be read or the file not be written: then it is as
     * it was. */
    int writeSongList(const QString &root, const QString &target, int order);

    struct Contents
    {
        Outcome outcome;
        QVector<IndexEntry> entries; ///< in the order of their records; none after a failure
    };

    /** Reads the index of a prepared memory. */
    static Contents readEntries(const QString &root);

    /** True when the seven files of a prepared memory exist. */
    static bool isPrepared(const QString &root);

    /** Removes the index files; false when one of them is still there. */
    bool deleteIndex(const QString &root);

    /** Told of each file that a power cut had left aside, which update() and rebuild() put in order
     * first. */
    void setOnRecovered(Recovery::Report report) { m_onRecovered = std::move(report); }

    /** Of the last run: songs counted, whether files were written, and whether it failed or was
     * stopped. */
    int found() const { return m_found; }
    bool changed() const { return m_written; }
    bool failed() const { return m_isStopped || !m_outcome; }

    /** Why the last run or list failed, as its first failure tells; nobody is to blame where it was
     * stopped. */
    const Outcome &outcome() const { return m_outcome; }

    // The order of declaration is the meta-object's.
Q_SIGNALS:
    void fileFoundChanged(int count);
    void progressMaxSetup(int maximum);
    void progressValueChanged(int value);
    void currentPathChanged(const QString &path);
    void errorFromIndex(const QString &text);

private:
    void start(const QString &root);
    bool loadEntries();
    bool scan();
    void build();
    bool readSongs(std::vector<IndexCandidate> &candidates);
    bool mustStop();
    Outcome removeIndex(const QString &root);
    bool isDone(const Outcome &outcome, const QString &path);
    void writeFiles();
    bool writeAll();
    bool writeAll(IndexWriter &writer);

    Disk &m_disk;
    Recovery::Report m_onRecovered;
    std::function<bool()> m_stopWhen;
    QString m_root;
    std::vector<ScannedSong> m_songs; ///< what the scan found, in its order
    QVector<IndexEntry> m_entries; ///< read back from the old index; then those of the new one
    bool m_changed = false; ///< something must be written
    bool m_written = false;
    bool m_isStopped = false;
    Outcome m_outcome;
    int m_found = 0;
};

} // namespace tarvel4
