#pragma once

#include "indexer/indexentry.h"
#include "storage/outcome.h"

#include <QCoreApplication>
#include <QVector>

#include <utility>
#include <vector>

namespace tarvel4 {

/** Reads the index of a prepared memory back; docs/formats.md, Player memory. */
class IndexLoader
{
    Q_DECLARE_TR_FUNCTIONS(IndexLoader)

public:
    explicit IndexLoader(const QString &root)
        : m_root(root)
    {}

    /**
     * Reads path, title and artist of every record, in the order of the path index; genre is not
     * stored. Records of titles and artists that fit no entry, and what is no whole record behind
     * them, are skipped. Fails where a file can't be read, or the path index ends inside a record.
     */
    Outcome load();

    QVector<IndexEntry> takeEntries() { return std::move(m_entries); }

private:
    Outcome loadPaths();
    Outcome loadTitles();
    Outcome loadArtists();
    Outcome readFile(const char *name, qint64 largestSize, QByteArray &records) const;
    IndexEntry *entryWithNumber(qint32 number);

    QString m_root;
    QVector<IndexEntry> m_entries;
    std::vector<int> m_byNumber; ///< positions of the entries, ordered by their numbers
};

} // namespace tarvel4
