#include "library/songupdate.h"

#include "db/database.h"
#include "library/songpath.h"

#include <QDebug>

namespace tarvel4 {

namespace {

QVariantList toVariants(const QVector<Marker> &markers)
{
    QVariantList list;
    for (const Marker &marker : markers)
        list.append(QVariantMap{{QStringLiteral("bar"), marker.bar},
                                {QStringLiteral("text"), marker.text}});
    return list;
}

/** The fields of a record that a song file can hold. */
QVector<QPair<QString, QVariant>> storedFields(const SongInfo &info)
{
    return {{QStringLiteral("title"), info.title},
            {QStringLiteral("artist"), info.artist},
            {QStringLiteral("genre"), info.genre},
            {QStringLiteral("author"), info.author},
            {QStringLiteral("length"), info.length},
            {QStringLiteral("bpm"), info.bpm},
            {QStringLiteral("key"), info.key},
            {QStringLiteral("publisher"), info.isPublisher},
            {QStringLiteral("markers"), toVariants(info.markers)},
            {QStringLiteral("mfxLongName"), info.mfxLongName},
            {QStringLiteral("mfxFlags"), int(info.mfxFlags)}};
}

} // namespace

SongUpdate::SongUpdate(Disk &disk)
    : m_disk(disk)
    , m_song(disk)
{}

bool SongUpdate::load(const QString &path, const QString &shortName)
{
    m_path = path;
    m_stamp = FileStamp(path);
    if (!m_song.importFile(path))
        return false;
    m_song.readInfo(m_before);
    m_before.filename = path;
    m_before.shortname = shortName;
    m_after = m_before;
    return true;
}

bool SongUpdate::match(Database &db)
{
    const QString nameKey = SongPath::catalogueKey(m_before.shortname);
    const QString longNameKey = SongPath::catalogueKey(m_before.mfxLongName);
    const QString titleKey = m_before.title.toUpper();

    if (db.getRecordByFilename(nameKey, m_catalogueRecord))
        m_reason = QLatin1String("FILENAME: ") + nameKey;
    else if (!longNameKey.isEmpty() && db.getRecordByFilename(longNameKey, m_catalogueRecord))
        m_reason = QLatin1String("MFXLONGNAME: ") + longNameKey;
    else if (db.getRecordByTitle(titleKey, m_catalogueRecord))
        m_reason = QLatin1String("TITLE: ") + titleKey;

    if (m_reason.isEmpty()) {
        qDebug() << "Record " << nameKey << "/" << titleKey << "NOT found in DB";
        return false;
    }
    qDebug() << "Found in DB by: " << m_reason;
    Database::dumpRecord(m_catalogueRecord);
    return true;
}

bool SongUpdate::prepare()
{
    SongInfo merged = m_before;
    merged.title = m_catalogueRecord.title;
    merged.artist = m_catalogueRecord.artist;
    merged.altArtist = m_catalogueRecord.altArtist;
    merged.genre = m_catalogueRecord.genre;
    merged.author = m_catalogueRecord.author;
    merged.length = m_catalogueRecord.length;
    merged.bpm = m_catalogueRecord.bpm;
    merged.key = m_catalogueRecord.key;
    merged.markers = m_catalogueRecord.markers;
    m_song.setSongInfo(merged, WrittenBy::Catalogue);

    if (!m_song.whyNotSavable()) {
        qDebug() << "[UPDATE] WARNING: such a song can't be saved:" << m_path;
        return false;
    }
    m_song.readInfo(m_after);
    m_after.filename = m_before.filename;
    m_after.shortname = m_before.shortname;
    return true;
}

bool SongUpdate::perform()
{
    if (!m_stamp.matches(m_path)) {
        qDebug() << "[UPDATE] WARNING: changed or gone since it was read:" << m_path;
        return false;
    }
    if (!m_song.saveToFile(m_path)) {
        qDebug() << "[UPDATE] WARNING: not saved:" << m_path;
        return false;
    }
    MetaSong written(m_disk);
    if (!written.importFile(m_path)) {
        qDebug() << "[UPDATE] WARNING: saved, but can't be read back:" << m_path;
        return false;
    }
    written.readInfo(m_after);
    m_after.filename = m_before.filename;
    m_after.shortname = m_before.shortname;
    return true;
}

QVector<FieldChange> SongUpdate::changes() const
{
    const auto before = storedFields(m_before);
    const auto after = storedFields(m_after);
    QVector<FieldChange> changes;
    for (int i = 0; i < before.size(); ++i) {
        if (before[i].second != after[i].second)
            changes.append({before[i].first, before[i].second, after[i].second});
    }
    return changes;
}

} // namespace tarvel4
