#include "indexer/indexverifier.h"

#include "indexer/indexformat.h"
#include "indexer/memorysongs.h"
#include "indexer/recordedtext.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <numeric>

namespace tarvel4 {

using namespace IndexFormat;
using namespace RecordedText;

namespace {

const QString pathName = QLatin1String(pathFile);
const QString ordName = QLatin1String(ordFile);
const QString titleName = QLatin1String(titleFile);
const QString artistName = QLatin1String(artistFile);

quint16 cut(int number)
{
    return static_cast<quint16>(number);
}

QByteArray textOf(const QByteArray &songRecord)
{
    return untilNul(songRecord.mid(SongRecord::textAt, SongRecord::textSize));
}

/** The \a index-th record of a file of songs and groups. */
QByteArray recordAt(const QByteArray &records, int index)
{
    return records.mid(index * SongRecord::size, SongRecord::size);
}

bool isGroup(const QByteArray &record)
{
    return record.at(GroupRecord::zeroAt) == 0
        && static_cast<quint8>(record.at(GroupRecord::markAt)) == GroupRecord::mark;
}

QByteArray pathSortKey(const QString &path)
{
    return untilNul(path.toUpper().toLatin1());
}

} // namespace

IndexVerifier::IndexVerifier(const QString &root)
    : m_root(root)
{
    if (m_root.endsWith(QLatin1Char('/')) || m_root.endsWith(QLatin1Char('\\')))
        m_root.chop(1);
}

QVector<IndexProblem> IndexVerifier::verify()
{
    m_problems.clear();
    checkPathIndex();
    checkSongs();
    checkOrdIndex();
    checkTitleIndex();
    checkAlphaIndex(QLatin1String(titleAlphaFile), m_titles, false);
    checkArtistIndex();
    checkAlphaIndex(QLatin1String(artistAlphaFile), m_artists, true);
    checkNumfileIndex();
    return m_problems;
}

void IndexVerifier::report(const QString &file, int record, const QString &problem)
{
    m_problems.append({file, record, problem});
}

/** The whole records of a file; what is wrong with the file as such is reported. */
QByteArray IndexVerifier::read(const QString &name, int recordSize, qint64 largestSize)
{
    QFile file(m_root + QLatin1Char('/') + name);
    QByteArray bytes;
    if (QFileInfo(file).isFile() && file.size() <= largestSize && file.open(QIODevice::ReadOnly))
        bytes = file.readAll();
    if (!file.isOpen() || bytes.size() != file.size()) {
        report(name, -1, tr("Il file non si può leggere"));
        return {};
    }
    if (const auto rest = bytes.size() % recordSize; rest != 0) {
        report(name, static_cast<int>(bytes.size() / recordSize), tr("Il record è incompleto"));
        bytes.chop(rest);
    }
    return bytes;
}

/** A text field holds nothing but zero bytes behind the first one. */
void IndexVerifier::checkText(const QString &file, int record, const QByteArray &field)
{
    const QByteArray tail = field.mid(untilNul(field).size());
    if (tail.count('\0') != tail.size())
        report(file, record, tr("Dopo il testo ci sono altri byte"));
}

/** The text of a song's or group's record: there is one, and it is as texts are stored. */
void IndexVerifier::checkStoredText(const QString &file, int record, const QByteArray &bytes)
{
    static_assert(GroupRecord::textAt == SongRecord::textAt
                  && GroupRecord::textSize == SongRecord::textSize);
    checkText(file, record, bytes.mid(SongRecord::textAt, SongRecord::textSize));
    const QByteArray text = textOf(bytes);
    if (text.isEmpty())
        report(file, record, tr("Il testo è vuoto"));
    else if (!isTidy(text, SongRecord::textSize))
        report(file, record, tr("Il testo non è in maiuscolo o ha spazi attorno"));
}

void IndexVerifier::takeNumber(const QString &file, int record, quint32 number, QVector<bool> &used)
{
    if (number >= static_cast<quint32>(used.size())) {
        report(file, record, tr("Il numero %1 non è di nessuna song").arg(number));
        return;
    }
    bool &isUsed = used[static_cast<int>(number)];
    if (isUsed)
        report(file, record, tr("Il numero %1 è usato due volte").arg(number));
    isUsed = true;
}

void IndexVerifier::reportUnused(const QString &file, const QVector<bool> &used)
{
    for (int number = 0; number < used.size(); ++number) {
        if (!used.at(number))
            report(file, -1, tr("Il numero %1 non c'è").arg(number));
    }
}

void IndexVerifier::checkPathIndex()
{
    const QByteArray records = read(pathName, PathRecord::size, largestFile(PathRecord::size));
    m_songs = QVector<Song>(records.size() / PathRecord::size);
    QVector<bool> used(m_songs.size());
    for (int i = 0; i < m_songs.size(); ++i) {
        const QByteArray record = records.mid(i * PathRecord::size, PathRecord::size);
        const auto number = qFromBigEndian<quint32>(record.constData() + PathRecord::numberAt);
        takeNumber(pathName, i, number, used);
        if (number != static_cast<quint32>(i))
            report(pathName, i, tr("Il numero %1 non è quello del record").arg(number));

        const QByteArray path = record.mid(PathRecord::pathAt, PathRecord::pathSize);
        checkText(pathName, i, path);
        if (!path.startsWith('/') || !path.contains('\0'))
            report(pathName, i, tr("Il percorso non è valido"));

        Song &song = m_songs[i];
        song.path = QString::fromLatin1(untilNul(path));
        song.sortKey = pathSortKey(song.path);
        song.stamp = record.mid(PathRecord::dateAt, PathRecord::dateSize + PathRecord::timeSize);
    }
    reportUnused(pathName, used);
}

/** Every record stands for one song of the memory, with its date and time, and every song has a
 * record. */
void IndexVerifier::checkSongs()
{
    MemorySongs onMemory(m_root);
    for (int i = 0; i < m_songs.size(); ++i) {
        Song &song = m_songs[i];
        const auto [path, hasStamp] = onMemory.take(song.path, song.stamp);
        if (path.isEmpty()) {
            report(pathName, i, tr("La song non esiste: %1").arg(song.path));
            continue;
        }
        song.sortKey = pathSortKey(path);
        if (path.toLatin1() != song.path.toLatin1())
            report(pathName, i, tr("Il percorso della song è %1").arg(path));
        if (!hasStamp)
            report(pathName, i, tr("La data o l'ora non sono quelle della song: %1").arg(path));
    }
    const QStringList left = onMemory.left();
    for (const QString &path : left)
        report(pathName, -1, tr("La song non è nell'indice: %1").arg(path));
}

/**
 * The values are record numbers cut to 16 bits, so one may stand for several records, and records
 * with equal keys may stand in any order: each stretch of equal keys must hold the numbers of its
 * records, in whatever order.
 */
void IndexVerifier::checkOrdIndex()
{
    const QByteArray bytes = read(ordName, OrdRecord::size, largestFile(OrdRecord::size));
    const int count = static_cast<int>(bytes.size() / OrdRecord::size);
    if (count != m_songs.size()) {
        report(ordName, -1, tr("I record sono %1 e non %2").arg(count).arg(m_songs.size()));
        return;
    }
    const auto key = [this](int record) -> const QByteArray & {
        return m_songs.at(record).sortKey;
    };
    QVector<int> sorted(count);
    std::iota(sorted.begin(), sorted.end(), 0);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [key](int left, int right) { return qstrcmp(key(left), key(right)) < 0; });

    for (int begin = 0, end = 0; begin < count; begin = end) {
        QVector<quint16> expected;
        QVector<quint16> actual;
        for (end = begin; end < count && key(sorted.at(end)) == key(sorted.at(begin)); ++end) {
            expected.append(cut(sorted.at(end)));
            actual.append(qFromLittleEndian<quint16>(bytes.constData() + end * OrdRecord::size));
        }
        std::sort(expected.begin(), expected.end());
        std::sort(actual.begin(), actual.end());
        if (expected != actual)
            report(ordName, begin, tr("Qui non sta questa song"));
    }
}

void IndexVerifier::checkTitleIndex()
{
    m_titles = read(titleName, SongRecord::size, largestFile(SongRecord::size));
    QVector<bool> used(m_songs.size());
    OrderCheck order;
    for (int i = 0; i < m_titles.size() / SongRecord::size; ++i) {
        const QByteArray record = recordAt(m_titles, i);
        takeNumber(titleName, i, qFromBigEndian<quint32>(record.constData()), used);
        checkStoredText(titleName, i, record);
        if (!order.follows(textOf(record)))
            report(titleName, i, tr("Il titolo non è in ordine"));
        const auto attribute = static_cast<quint8>(record.at(SongRecord::attributeAt));
        if ((attribute & SongRecord::kindMask) > highestKind
            || attribute >> SongRecord::markersShift > 1)
            report(titleName, i, tr("L'attributo %1 non è valido").arg(attribute));
    }
    reportUnused(titleName, used);
}

void IndexVerifier::checkArtistIndex()
{
    m_artists = read(artistName, SongRecord::size, largestFile(GroupRecord::bytesASong));
    const int count = static_cast<int>(m_artists.size() / SongRecord::size);
    QHash<QByteArray, int> titles; // each title record, and how often it may still occur
    for (int i = 0; i < m_titles.size() / SongRecord::size; ++i)
        ++titles[recordAt(m_titles, i)];

    m_groups = 0;
    if (count > 0 && !isGroup(recordAt(m_artists, 0)))
        report(artistName, 0, tr("Il primo record non è di un interprete"));
    QVector<bool> used(m_songs.size());
    OrderCheck order;
    int previousCount = 0;
    for (int header = 0, next = 0; header < count; header = next) {
        next = header + 1;
        while (next < count && !isGroup(recordAt(m_artists, next)))
            ++next;
        const bool headless = !isGroup(recordAt(m_artists, header));
        const int first = headless ? header : header + 1;
        checkGroupSongs(first, next - first, titles, used);
        if (headless)
            continue;
        checkGroup(header, previousCount, next - first);
        if (!order.follows(textOf(recordAt(m_artists, header))))
            report(artistName, header, tr("L'interprete non è in ordine"));
        previousCount = next - first;
        ++m_groups;
    }
    reportUnused(artistName, used);
}

void IndexVerifier::checkGroup(int header, int previousCount, int count)
{
    const QByteArray record = recordAt(m_artists, header);
    const auto numberAt = [&record](int offset) {
        return qFromBigEndian<quint16>(record.constData() + offset);
    };
    checkStoredText(artistName, header, record);
    if (numberAt(GroupRecord::backCountAt) != cut(previousCount))
        report(artistName, header, tr("Il gruppo precedente ha %1 song").arg(previousCount));
    if (numberAt(GroupRecord::countAt) != cut(count))
        report(artistName, header, tr("Il gruppo ha %1 song").arg(count));
    if (count == 0)
        report(artistName, header, tr("Il gruppo è vuoto"));

    // A text that is cut, or that holds a replaced character, may hide the difference between two
    // artists.
    const QByteArray artist = textOf(record);
    if (header == 0 || artist.size() == GroupRecord::textSize || artist.contains(replacement))
        return;
    int previous = header - 1;
    while (previous > 0 && !isGroup(recordAt(m_artists, previous)))
        --previous;
    if (QString::compare(QString::fromLatin1(artist),
                         QString::fromLatin1(textOf(recordAt(m_artists, previous))),
                         Qt::CaseInsensitive)
        == 0)
        report(artistName, header, tr("L'interprete ha già un gruppo"));
}

void IndexVerifier::checkGroupSongs(int first, int count, QHash<QByteArray, int> &titles,
                                    QVector<bool> &used)
{
    OrderCheck order;
    for (int i = first; i < first + count; ++i) {
        const QByteArray record = recordAt(m_artists, i);
        takeNumber(artistName, i, qFromBigEndian<quint32>(record.constData()), used);
        if (--titles[record] < 0)
            report(artistName, i, tr("Il record non è quello dei titoli"));
        if (!order.follows(textOf(record)))
            report(artistName, i, tr("Il titolo non è in ordine"));
    }
}

/** Every slot points at the first record whose text begins with its character. */
void IndexVerifier::checkAlphaIndex(const QString &file, const QByteArray &records, bool groupsOnly)
{
    const QByteArray bytes = read(file, AlphaIndex::size, 2 * AlphaIndex::size);
    if (bytes.size() != AlphaIndex::size) {
        report(file, -1, tr("Il file non è lungo %1 byte").arg(AlphaIndex::size));
        return;
    }
    std::array<quint32, AlphaIndex::slots> expected;
    expected.fill(AlphaIndex::unclaimed);
    for (int i = 0; i < records.size() / SongRecord::size; ++i) {
        const QByteArray record = recordAt(records, i);
        const QString text = QString::fromLatin1(textOf(record)).toUpper();
        if (text.isEmpty() || (groupsOnly && !isGroup(record)))
            continue;
        const int slot = text.at(0).unicode() - AlphaIndex::firstCharacter;
        if (slot >= 0 && slot < AlphaIndex::slots && expected[slot] == AlphaIndex::unclaimed)
            expected[slot] = static_cast<quint32>(i * SongRecord::size);
    }
    for (int slot = 0; slot < AlphaIndex::slots; ++slot) {
        const auto actual =
            qFromBigEndian<quint32>(bytes.constData() + slot * AlphaIndex::slotSize);
        // A text may begin with a replaced character, which claims no slot, or with a real question
        // mark.
        const bool unknown = slot == replacement - AlphaIndex::firstCharacter
            && (actual == AlphaIndex::unclaimed
                || textOf(records.mid(static_cast<int>(actual), SongRecord::size))
                       .startsWith(replacement));
        if (actual != expected[slot] && !unknown)
            report(file, slot,
                   tr("La lettera \"%1\" non è al suo posto")
                       .arg(QChar(AlphaIndex::firstCharacter + slot)));
    }
}

void IndexVerifier::checkNumfileIndex()
{
    const QString file = QLatin1String(numFile);
    const QByteArray bytes = read(file, NumRecord::size, 2 * NumRecord::size);
    if (bytes.size() != NumRecord::size) {
        report(file, -1, tr("Il file non è lungo %1 byte").arg(NumRecord::size));
        return;
    }
    const auto countAt = [&bytes](int offset) {
        return qFromLittleEndian<quint16>(bytes.constData() + offset);
    };
    const int titles = static_cast<int>(m_titles.size() / SongRecord::size);
    if (titles != m_songs.size())
        report(titleName, -1, tr("I record sono %1 e non %2").arg(titles).arg(m_songs.size()));
    if (countAt(NumRecord::titlesAt) != cut(titles))
        report(file, 0, tr("I titoli sono %1").arg(titles));
    if (countAt(NumRecord::artistsAt) != cut(m_groups))
        report(file, 0, tr("Gli interpreti sono %1").arg(m_groups));
    if (bytes.mid(NumRecord::reservedAt).count('\0') != NumRecord::size - NumRecord::reservedAt)
        report(file, 0, tr("Un numero riservato non è zero"));
}

} // namespace tarvel4
