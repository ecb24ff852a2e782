#include "indexer/indexwriter.h"

#include "indexer/sortkeys.h"
#include "storage/disk.h"

#include <QDebug>
#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <utility>

namespace tarvel4 {

using namespace IndexFormat;

namespace {

/** Puts a text into a field of zero bytes, cut to its size. */
void putText(char *field, int size, const QString &text)
{
    constexpr char replacement = '?';
    std::transform(
        text.begin(), text.begin() + qMin<qint64>(text.size(), size), field,
        [](QChar c) { return c.row() == 0 ? static_cast<char>(c.cell()) : replacement; });
}

/** Puts the last digits of a number, with leading zeros. */
void putDigits(char *field, int size, quint32 number)
{
    for (char *digit = field + size; digit != field; number /= 10)
        *--digit = static_cast<char>('0' + number % 10);
}

using Record = std::array<char, SongRecord::size>;
static_assert(GroupRecord::size == SongRecord::size, "groups and songs share a file");

Record songRecord(const IndexEntry &entry)
{
    Record record{};
    qToBigEndian(entry.number, record.data() + SongRecord::numberAt);
    putText(record.data() + SongRecord::textAt, SongRecord::textSize, entry.title);
    record[SongRecord::tempoAt] = static_cast<char>(entry.tempo);
    record[SongRecord::attributeAt] = static_cast<char>(entry.markers << SongRecord::markersShift
                                                        | (entry.kind & SongRecord::kindMask));
    return record;
}

Record groupRecord(const QString &artist, int previousCount, int count)
{
    Record record{};
    qToBigEndian(static_cast<quint16>(previousCount), record.data() + GroupRecord::backCountAt);
    qToBigEndian(static_cast<quint16>(count), record.data() + GroupRecord::countAt);
    putText(record.data() + GroupRecord::textAt, GroupRecord::textSize, artist);
    record[GroupRecord::markAt] = static_cast<char>(GroupRecord::mark);
    return record;
}

void append(QByteArray &bytes, const Record &record)
{
    bytes.append(record.data(), static_cast<int>(record.size()));
}

} // namespace

IndexWriter::IndexWriter(const QString &root, const QVector<IndexEntry> &entries, Disk &disk)
    : m_root(root)
    , m_entries(entries)
    , m_disk(disk)
{}

int IndexWriter::write(const char *name, const QByteArray &bytes)
{
    const QString path = m_root + QLatin1Char('/') + QLatin1String(name);
    QFile file(path);
    const bool isWritten =
        isDone(m_disk.openForWriting(file), path) && isDone(m_disk.write(file, bytes), path);
    return isWritten ? 0 : -1;
}

/** Keeps the cause of a failure, with the path of the file that it happened to. */
bool IndexWriter::isDone(Outcome outcome, const QString &path)
{
    if (outcome)
        return true;
    m_outcome = std::move(outcome);
    if (m_outcome.path.isEmpty())
        m_outcome.path = path;
    return false;
}

/** A failure is told of the memory, not of one of its files. */
bool IndexWriter::isFlushed(const QStringList &files)
{
    Outcome outcome = m_disk.syncAll(files);
    outcome.path = m_root;
    return isDone(outcome, m_root);
}

int IndexWriter::writeOrdIndex()
{
    qDebug() << "write ord index";
    const QString path = m_root + QLatin1Char('/') + QLatin1String(ordFile);
    QFile file(path);
    if (!isDone(m_disk.openForWriting(file), path))
        return -1;
    QByteArray bytes(m_entries.size() * OrdRecord::size, '\0');
    char *value = bytes.data();
    for (const int position : SortKeys::byPath(m_entries)) { // required: cut to 16 bits
        qToLittleEndian(static_cast<quint16>(m_entries.at(position).order), value);
        value += OrdRecord::size;
    }
    constexpr int blockSize = OrdRecord::blockEntries * OrdRecord::size;
    for (int begin = 0; begin < bytes.size(); begin += blockSize) {
        if (!isDone(m_disk.write(file, bytes.mid(begin, blockSize)), path))
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
        std::array<char, PathRecord::size> record{};
        qToBigEndian(entry.number, record.data() + PathRecord::numberAt);
        putText(record.data() + PathRecord::pathAt, longestPath, entry.relativePath);
        putDigits(record.data() + PathRecord::dateAt, PathRecord::dateSize, entry.date);
        putDigits(record.data() + PathRecord::timeAt, PathRecord::timeSize, entry.time);
        bytes.append(record.data(), static_cast<int>(record.size()));
    }
    return write(pathFile, bytes);
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

/** Positions of the entries, ordered by title. */
const std::vector<int> &IndexWriter::byTitle()
{
    if (m_byTitle.empty())
        m_byTitle = SortKeys::byText(m_entries, &IndexEntry::title);
    return m_byTitle;
}

int IndexWriter::writeTitleIndex()
{
    qDebug() << "write title index";
    m_alpha.fill(AlphaIndex::unclaimed);
    QByteArray bytes;
    bytes.reserve(m_entries.size() * SongRecord::size);
    for (const int position : byTitle()) {
        claimSlot(m_entries.at(position).title, static_cast<int>(bytes.size()));
        append(bytes, songRecord(m_entries.at(position)));
    }
    return write(titleFile, bytes) < 0 ? -1 : static_cast<int>(m_entries.size());
}

int IndexWriter::writeArtistIndex()
{
    qDebug() << "write artist index";
    m_alpha.fill(AlphaIndex::unclaimed);
    const std::vector<int> sorted = SortKeys::byText(m_entries, &IndexEntry::artist, byTitle());
    const auto isOther = [this](const QString &artist, int position) {
        return m_entries.at(position).artist.compare(artist, Qt::CaseInsensitive) != 0;
    };

    QByteArray bytes;
    int groups = 0;
    int previousCount = 0;
    for (auto begin = sorted.begin(), end = begin; begin != sorted.end(); begin = end) {
        const QString &artist = m_entries.at(*begin).artist;
        end = std::find_if(begin, sorted.end(),
                           [&](int position) { return isOther(artist, position); });
        const int count = static_cast<int>(end - begin);
        claimSlot(artist, static_cast<int>(bytes.size()));
        append(bytes, groupRecord(artist, previousCount, count));
        for (auto position = begin; position != end; ++position)
            append(bytes, songRecord(m_entries.at(*position)));
        previousCount = count;
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
    const QString unfinished = m_root + QLatin1Char('/') + QLatin1String(unfinishedNumFile);
    const QString path = m_root + QLatin1Char('/') + QLatin1String(numFile);
    QStringList files{unfinished};
    for (const char *name : preparedFiles)
        files.append(m_root + QLatin1Char('/') + QLatin1String(name));
    const bool written = write(unfinishedNumFile, bytes) == 0 && isFlushed(files)
        && isDone(m_disk.replace(unfinished, path), path) && isFlushed({path});
    return written ? 0 : -1;
}

} // namespace tarvel4
