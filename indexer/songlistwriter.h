#pragma once

#include "indexer/indexentry.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QVector>

#include <functional>

namespace tarvel4 {

/** Tells the songs of a memory as a semicolon-separated list; docs/formats.md, Song list. */
class SongListWriter
{
    Q_DECLARE_TR_FUNCTIONS(SongListWriter)

public:
    enum class Encoding { Local, Utf8 };

    /** Called after each line with its song and the number of songs so far. */
    using Observer = std::function<void(const IndexEntry &entry, int count)>;

    /** Sorts by the order's texts without regard to case, ties by title; \a order is an
     * Index::SongOrder. */
    static void sort(QVector<IndexEntry> &entries, int order);

    /** The bytes of the list, entries in their order. */
    static QByteArray listOf(const QVector<IndexEntry> &entries, Encoding encoding,
                             const Observer &observer = {});
};

} // namespace tarvel4
