#pragma once

#include "indexer/indexentry.h"

#include <QCoreApplication>
#include <QVector>

#include <functional>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace tarvel4 {

/** Writes the songs of a memory as a semicolon-separated list; docs/formats.md, Song list. */
class SongListWriter
{
    Q_DECLARE_TR_FUNCTIONS(SongListWriter)

public:
    enum class Encoding { Local, Utf8 };

    /** Called after each line with its song and the number of songs written. */
    using Observer = std::function<void(const IndexEntry &entry, int written)>;

    /** Sorts by the order's texts without regard to case, ties by title; \a order is an
     * Index::SongOrder. */
    static void sort(QVector<IndexEntry> &entries, int order);

    /** False: the device did not take every byte. */
    static bool write(QIODevice &device, const QVector<IndexEntry> &entries, Encoding encoding,
                      const Observer &observer = {});
};

} // namespace tarvel4
