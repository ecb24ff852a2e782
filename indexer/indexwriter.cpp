#include "indexer/indexwriter.h"

#include "indexer/sortkeys.h"
#include "songs/disk.h"

#include <QDebug>
#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <numeric>

using namespace IndexFormat;

namespace {

/** Puts a text into a field of zero bytes, cut to its size. */
void putText(QByteArray &record, int at, int size, const QByteArray &text)
{
    std::copy_n(text.constData(), std::min(text.size(), size), record.data() + at);
}

/** The last digits of a number, with leading zeros. */
QByteArray digits(quint32 number, int count)
{
    return QByteArray::number(number).rightJustified(count, '0').right(count);
}

} // namespace

IndexWriter::IndexWriter(const QString &root, const QVector<IndexEntry> &entries, Disk &disk)
    : m_root(root)
    , m_entries(entries)
    , m_disk(disk)
{}

int IndexWriter::write(const char *name, const QByteArray &bytes)
{
    QFile file(m_root + u'/' + QLatin1String(name));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return -1;
    const bool written = m_disk.write(file, bytes);
    file.close();
    return written ? 0 : -1;
}

int IndexWriter::writeOrdIndex()
{
    qDebug() << "write ord index";
    QVector<QByteArray> keys;
    keys.reserve(m_entries.size());
    for (const IndexEntry &entry : m_entries)
        keys.append(SortKeys::ofPath(entry.relativePath));
    const QVector<int> sorted = SortKeys::sorted(m_entries.size(), [&keys](int left, int right) {
        return qstrcmp(keys.at(left), keys.at(right)) < 0;
    });

    QFile file(m_root + u'/' + QLatin1String(ordFile));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return -1;
    for (int begin = 0; begin < sorted.size(); begin += OrdRecord::blockEntries) {
        const int end = std::min(begin + OrdRecord::blockEntries, sorted.size());
        QByteArray block((end - begin) * OrdRecord::size, '\0');
        for (int i = begin; i < end; ++i) // required: cut to 16 bits
            qToLittleEndian(static_cast<quint16>(m_entries.at(sorted.at(i)).order),
                            block.data() + (i - begin) * OrdRecord::size);
        if (!m_disk.write(file, block))
            return -1;
    }
    return 0;
}

int IndexWriter::writePathIndex()
{
    qDebug() << "write path index";
    QByteArray bytes;
    bytes.reserve(m_entries.size() * PathRecord::size);
    for (const IndexEntry &entry : m_entries) {
        QByteArray record(PathRecord::size, '\0');
        qToBigEndian(entry.number, record.data() + PathRecord::numberAt);
        putText(record, PathRecord::pathAt, longestPath, entry.relativePath.toLatin1());
        putText(record, PathRecord::dateAt, PathRecord::dateSize,
                digits(entry.date, PathRecord::dateSize));
        putText(record, PathRecord::timeAt, PathRecord::timeSize,
                digits(entry.time, PathRecord::timeSize));
        bytes.append(record);
    }
    return write(pathFile, bytes);
}

QByteArray IndexWriter::songRecord(const IndexEntry &entry) const
{
    QByteArray record(SongRecord::size, '\0');
    qToBigEndian(entry.number, record.data() + SongRecord::numberAt);
    putText(record, SongRecord::textAt, SongRecord::textSize, entry.title.toLatin1());
    record[SongRecord::tempoAt] = static_cast<char>(entry.tempo);
    record[SongRecord::attributeAt] = static_cast<char>(entry.markers << SongRecord::markersShift
                                                        | (entry.kind & SongRecord::kindMask));
    return record;
}

QByteArray IndexWriter::groupRecord(const QString &artist, int previousCount, int count) const
{
    QByteArray record(GroupRecord::size, '\0');
    qToBigEndian(static_cast<quint16>(previousCount), record.data() + GroupRecord::backCountAt);
    qToBigEndian(static_cast<quint16>(count), record.data() + GroupRecord::countAt);
    putText(record, GroupRecord::textAt, GroupRecord::textSize, artist.toLatin1());
    record[GroupRecord::markAt] = static_cast<char>(GroupRecord::mark);
    return record;
}

/** A text claims the slot of its first character for the record at \a position, unless an earlier
 * one did. */
void IndexWriter::claimSlot(const QString &text, int position)
{
    const QString upper = text.left(1).toUpper();
    const int slot = upper.isEmpty() ? -1 : upper.at(0).unicode() - AlphaIndex::firstCharacter;
    if (slot >= 0 && slot < AlphaIndex::slots && m_alpha[slot] == AlphaIndex::unclaimed)
        m_alpha[slot] = static_cast<quint32>(position);
}

int IndexWriter::writeTitleIndex()
{
    qDebug() << "write title index";
    m_alpha.fill(AlphaIndex::unclaimed);
    QVector<QString> titles;
    titles.reserve(m_entries.size());
    for (const IndexEntry &entry : m_entries)
        titles.append(SortKeys::ofText(entry.title));
    m_byTitle = SortKeys::sorted(m_entries.size(), [&titles](int left, int right) {
        return titles.at(left) < titles.at(right);
    });

    QByteArray bytes;
    bytes.reserve(m_entries.size() * SongRecord::size);
    for (const int position : std::as_const(m_byTitle)) {
        claimSlot(m_entries.at(position).title, bytes.size());
        bytes.append(songRecord(m_entries.at(position)));
    }
    return write(titleFile, bytes) < 0 ? -1 : m_entries.size();
}

int IndexWriter::writeArtistIndex()
{
    qDebug() << "write artist index";
    m_alpha.fill(AlphaIndex::unclaimed);
    // A stable sort by artist of what is in order of title is one by artist and title.
    QVector<QString> artists;
    artists.reserve(m_entries.size());
    for (const IndexEntry &entry : m_entries)
        artists.append(SortKeys::ofText(entry.artist));
    QVector<int> sorted = m_byTitle;
    std::stable_sort(sorted.begin(), sorted.end(), [&artists](int left, int right) {
        return artists.at(left) < artists.at(right);
    });

    QByteArray bytes;
    int groups = 0;
    int previousCount = 0;
    for (int begin = 0, end = 0; begin < sorted.size(); begin = end) {
        const QString &artist = artists.at(sorted.at(begin));
        while (end < sorted.size() && artists.at(sorted.at(end)) == artist)
            ++end;
        const QString &spelling = m_entries.at(sorted.at(begin)).artist;
        claimSlot(spelling, bytes.size());
        bytes.append(groupRecord(spelling, previousCount, end - begin));
        for (int i = begin; i < end; ++i)
            bytes.append(songRecord(m_entries.at(sorted.at(i))));
        previousCount = end - begin;
        ++groups;
    }
    return write(artistFile, bytes) < 0 ? -1 : groups;
}

int IndexWriter::writeAlphaIndex(const char *name)
{
    qDebug() << "write alpha index";
    QByteArray bytes(AlphaIndex::size, '\0');
    for (int slot = 0; slot < AlphaIndex::slots; ++slot)
        qToBigEndian(m_alpha[slot], bytes.data() + slot * AlphaIndex::slotSize);
    return write(name, bytes);
}

int IndexWriter::writeNumfileIndex(int titleCount, int artistCount)
{
    qDebug() << "write numfile index";
    QByteArray bytes(NumRecord::size, '\0');
    qToLittleEndian(static_cast<quint16>(titleCount), bytes.data() + NumRecord::titlesAt);
    qToLittleEndian(static_cast<quint16>(artistCount), bytes.data() + NumRecord::artistsAt);
    const QString unfinished = m_root + u'/' + QLatin1String(unfinishedNumFile);
    const bool written = write(unfinishedNumFile, bytes) == 0 && m_disk.syncVolume(m_root)
        && m_disk.replace(unfinished, m_root + u'/' + QLatin1String(numFile))
        && m_disk.syncVolume(m_root);
    return written ? 0 : -1;
}
