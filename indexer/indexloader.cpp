#include "indexer/indexloader.h"

#include "indexer/indexformat.h"
#include "storage/regularfile.h"

#include <QtEndian>

#include <algorithm>
#include <numeric>

namespace tarvel4 {

using namespace IndexFormat;

namespace {

QString textField(const char *field, int size)
{
    return QString::fromLatin1(field, static_cast<int>(qstrnlen(field, static_cast<uint>(size))));
}

/** The number that decimal digits give; 0 when one is no digit. */
quint32 number(const char *digits, int size)
{
    const bool isNumber =
        std::all_of(digits, digits + size, [](char digit) { return digit >= '0' && digit <= '9'; });
    if (!isNumber)
        return 0;
    return std::accumulate(digits, digits + size, 0U, [](quint32 value, char digit) {
        return value * 10 + static_cast<quint32>(digit - '0');
    });
}

/** The text of a song's or group's record, as the index stores it. */
QString storedText(const char *record)
{
    return textField(record + SongRecord::textAt, SongRecord::textSize).toUpper().trimmed();
}

bool isGroup(const char *record)
{
    return record[GroupRecord::zeroAt] == 0
        && static_cast<quint8>(record[GroupRecord::markAt]) == GroupRecord::mark;
}

qint32 numberOf(const char *record)
{
    return qFromBigEndian<qint32>(record + SongRecord::numberAt);
}

} // namespace

Outcome IndexLoader::load()
{
    m_entries.clear();
    Outcome loaded = loadPaths();
    if (loaded)
        loaded = loadTitles();
    return loaded ? loadArtists() : loaded;
}

Outcome IndexLoader::readFile(const char *name, qint64 largestSize, QByteArray &records) const
{
    const QString path = m_root + QLatin1Char('/') + QLatin1String(name);
    RegularFile file(path);
    if (!file.outcome())
        return file.outcome();
    if (file.size() <= largestSize)
        return file.readUpTo(file.size(), records);
    return {Outcome::Code::DamagedIndex,
            path,
            QLatin1String(name) + QLatin1String(": ") + FileBytes::sizeLimitText(largestSize),
            {}};
}

Outcome IndexLoader::loadPaths()
{
    QByteArray records;
    if (const Outcome read = readFile(pathFile, largestFile(PathRecord::size), records); !read)
        return read;
    if (records.size() % PathRecord::size != 0) {
        const QString name = QLatin1String(pathFile);
        return {Outcome::Code::DamagedIndex,
                m_root + QLatin1Char('/') + name,
                tr("%1: l'ultimo record non è intero").arg(name),
                {}};
    }
    const QString unknown = QLatin1String(unknownText);
    m_entries.resize(records.size() / PathRecord::size);
    const char *record = records.constData();
    for (int i = 0; i < m_entries.size(); ++i, record += PathRecord::size) {
        IndexEntry &entry = m_entries[i];
        entry.number = qFromBigEndian<qint32>(record + PathRecord::numberAt);
        entry.order = i;
        entry.relativePath = textField(record + PathRecord::pathAt, PathRecord::pathSize);
        entry.absolutePath = m_root + entry.relativePath;
        entry.date = number(record + PathRecord::dateAt, PathRecord::dateSize);
        entry.time = number(record + PathRecord::timeAt, PathRecord::timeSize);
        entry.genre = unknown;
    }
    m_byNumber.resize(static_cast<std::size_t>(m_entries.size()));
    std::iota(m_byNumber.begin(), m_byNumber.end(), 0);
    std::stable_sort(m_byNumber.begin(), m_byNumber.end(), [this](int left, int right) {
        return m_entries.at(left).number < m_entries.at(right).number;
    });
    return {};
}

IndexEntry *IndexLoader::entryWithNumber(qint32 number)
{
    // A record's number is its place, but for an index that somebody else made.
    if (number >= 0 && number < m_entries.size() && m_entries.at(number).number == number)
        return &m_entries[number];
    const auto it = std::lower_bound(
        m_byNumber.cbegin(), m_byNumber.cend(), number,
        [this](int entry, qint32 wanted) { return m_entries.at(entry).number < wanted; });
    if (it == m_byNumber.cend() || m_entries.at(*it).number != number)
        return nullptr;
    return &m_entries[*it];
}

Outcome IndexLoader::loadTitles()
{
    QByteArray records;
    if (const Outcome read = readFile(titleFile, largestFile(SongRecord::size), records); !read)
        return read;
    records.chop(records.size() % SongRecord::size);
    for (const char *record = records.constData(); record < records.constData() + records.size();
         record += SongRecord::size) {
        IndexEntry *entry = entryWithNumber(numberOf(record));
        if (!entry)
            continue;
        const auto attribute = static_cast<quint8>(record[SongRecord::attributeAt]);
        entry->title = storedText(record);
        entry->tempo = static_cast<quint8>(record[SongRecord::tempoAt]);
        entry->kind = attribute & SongRecord::kindMask;
        entry->markers = attribute >> SongRecord::markersShift & 1;
    }
    return {};
}

Outcome IndexLoader::loadArtists()
{
    QByteArray records;
    const Outcome read = readFile(artistFile, largestFile(GroupRecord::bytesASong), records);
    if (!read)
        return read;
    records.chop(records.size() % SongRecord::size);
    QString artist;
    for (const char *record = records.constData(); record < records.constData() + records.size();
         record += SongRecord::size) {
        if (isGroup(record))
            artist = storedText(record);
        else if (IndexEntry *entry = entryWithNumber(numberOf(record)))
            entry->artist = artist;
    }
    return {};
}

} // namespace tarvel4
