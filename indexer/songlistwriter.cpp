#include "indexer/songlistwriter.h"

#include "indexer/index.h"
#include "indexer/sortkeys.h"

namespace tarvel4 {

namespace {

QString line(const QString &title, const QString &artist, const QString &file)
{
    // required: no quoting, so a title with a semicolon shifts the columns of its line
    return title + QLatin1Char(';') + artist + QLatin1Char(';') + file + QLatin1String(";\n");
}

} // namespace

void SongListWriter::sort(QVector<IndexEntry> &entries, int order)
{
    std::vector<int> positions = SortKeys::byText(entries, &IndexEntry::title);
    if (order == Index::ByArtist)
        positions = SortKeys::byText(entries, &IndexEntry::artist, std::move(positions));
    else if (order == Index::ByGenre)
        positions = SortKeys::byText(entries, &IndexEntry::genre, std::move(positions));

    QVector<IndexEntry> sorted;
    sorted.reserve(entries.size());
    for (const int position : positions)
        sorted.append(entries.at(position));
    entries = sorted;
}

QByteArray SongListWriter::listOf(const QVector<IndexEntry> &entries, Encoding encoding,
                                  const Observer &observer)
{
    QByteArray list;
    const auto append = [&](const QString &text) {
        list += encoding == Encoding::Utf8 ? text.toUtf8() : text.toLocal8Bit();
    };
    append(line(tr("TITOLO"), tr("ARTISTA"), tr("FILE")));
    int count = 0;
    for (const IndexEntry &entry : entries) {
        append(line(entry.title, entry.artist, entry.relativePath));
        ++count;
        if (observer)
            observer(entry, count);
    }
    return list;
}

} // namespace tarvel4
