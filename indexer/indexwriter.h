#pragma once

#include "indexer/indexentry.h"
#include "indexer/indexformat.h"
#include "storage/outcome.h"

#include <QByteArray>
#include <QVector>

#include <array>
#include <vector>

namespace tarvel4 {

class Disk;

/**
 * Writes the files of a memory's index from its entries; docs/formats.md, Player memory. Each
 * operation returns 0 or a count, or -1 when its file can't be opened or written whole; the file is
 * then left as far as it was written.
 */
class IndexWriter
{
public:
    /** \a entries must stand in the order of their records. */
    IndexWriter(const QString &root, const QVector<IndexEntry> &entries, Disk &disk);

    int writeOrdIndex();
    int writePathIndex();
    int writeTitleIndex(); ///< number of records; fills the alpha table
    int writeArtistIndex(); ///< number of groups; fills the alpha table

    /** Writes the alpha table of the title or artist index that was written last. */
    int writeAlphaIndex(const char *name);

    /** The counts, complete at once: with this file the memory becomes prepared. */
    int writeNumfileIndex(int titleCount, int artistCount);

    /** Why an operation failed; of the last one that did. */
    const Outcome &outcome() const { return m_outcome; }

private:
    const std::vector<int> &byTitle();
    void claimSlot(const QString &text, int position);
    int write(const char *name, const QByteArray &bytes);
    bool isFlushed(const QStringList &files);
    bool isDone(Outcome outcome, const QString &path);

    QString m_root;
    const QVector<IndexEntry> &m_entries;
    Disk &m_disk;
    Outcome m_outcome;
    std::vector<int> m_byTitle; ///< once it is asked for
    std::array<quint32, IndexFormat::AlphaIndex::slots> m_alpha;
};

} // namespace tarvel4
