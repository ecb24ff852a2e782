#pragma once

#include "indexer/indexentry.h"
#include "indexer/memoryscan.h"

#include <QVector>

#include <vector>

namespace tarvel4 {

/** An entry of the index to be built, before its song has been read. */
struct IndexCandidate
{
    IndexEntry entry;
    QByteArray sortKey; ///< SortKeys::ofPath() of its path
    bool isFound = false; ///< its file is on the memory
    bool mustBeRead = false; ///< new, changed, or not wholly known
    bool isRenamed = false; ///< the file's name differs from the one in the old index
};

/**
 * Brings the entries of an old index and the songs of a scan together. An old entry holds the ISO
 * 8859-1 form of its path; a song matches it when that form of its own path is the same without
 * regard to case, and each entry is matched by one song only. The entry then takes the song's path.
 * A song without an entry gets a new one, with the next number. The candidates stand by number:
 * those of the old index, then the new ones in the order of the scan.
 */
std::vector<IndexCandidate> matchEntries(const QVector<IndexEntry> &known,
                                         const std::vector<ScannedSong> &songs,
                                         const QString &root);

} // namespace tarvel4
