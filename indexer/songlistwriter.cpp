#include "indexer/songlistwriter.h"

#include "indexer/index.h"
#include "indexer/sortkeys.h"

#include <QIODevice>

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

bool SongListWriter::write(QIODevice &device, const QVector<IndexEntry> &entries, Encoding encoding,
                           const Observer &observer)
{
    const auto put = [&](const QString &text) {
        const QByteArray bytes = encoding == Encoding::Utf8 ? text.toUtf8() : text.toLocal8Bit();
        return device.write(bytes) == bytes.size();
    };
    if (!put(line(tr("TITOLO"), tr("ARTISTA"), tr("FILE"))))
        return false;
    int written = 0;
    for (const IndexEntry &entry : entries) {
        if (!put(line(entry.title, entry.artist, entry.relativePath)))
            return false;
        ++written;
        if (observer)
            observer(entry, written);
    }
    return true;
}

} // namespace tarvel4
