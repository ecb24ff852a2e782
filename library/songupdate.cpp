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
            {QStringLiteral("mfxFlags"), static_cast<int>(info.mfxFlags)}};
}

QVector<FieldChange> changesBetween(const SongInfo &oldInfo, const SongInfo &newInfo)
{
    const auto before = storedFields(oldInfo);
    const auto after = storedFields(newInfo);
    QVector<FieldChange> changes;
    for (int i = 0; i < before.size(); ++i) {
        if (before[i].second != after[i].second)
            changes.append({before[i].first, before[i].second, after[i].second});
    }
    return changes;
}

} // namespace

Outcome SongUpdate::load(const QString &path)
{
    const Outcome outcome = m_song.load(path);
    if (outcome)
        m_before = m_after = m_song.info();
    return outcome;
}

bool SongUpdate::match(Database &db)
{
    const QString nameKey = SongPath::catalogueKey(m_before.shortname);
    const QString longNameKey = SongPath::catalogueKey(m_before.mfxLongName);
    const QString titleKey = m_before.title.toUpper();

    if (db.getRecordByFilename(nameKey, m_catalogueRecord))
        m_matchedBy = QLatin1String("FILENAME: ") + nameKey;
    else if (!longNameKey.isEmpty() && db.getRecordByFilename(longNameKey, m_catalogueRecord))
        m_matchedBy = QLatin1String("MFXLONGNAME: ") + longNameKey;
    else if (db.getRecordByTitle(titleKey, m_catalogueRecord))
        m_matchedBy = QLatin1String("TITLE: ") + titleKey;

    if (m_matchedBy.isEmpty()) {
        qDebug() << "Record " << nameKey << "/" << titleKey << "NOT found in DB";
        return false;
    }
    qDebug() << "Found in DB by: " << m_matchedBy;
    Database::dumpRecord(m_catalogueRecord);
    return true;
}

Outcome SongUpdate::prepare()
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
    m_song.song().setSongInfo(merged, WrittenBy::Catalogue);

    const Outcome outcome = m_song.whyNotSavable();
    if (outcome)
        m_after = m_song.info();
    return outcome;
}

SongOutcome SongUpdate::outcome(SongResult result, const Outcome &cause) const
{
    const bool isChanged = result == SongResult::Updated || cause == Outcome::Code::NotConfirmed;
    SongOutcome outcome;
    outcome.path = m_song.path();
    outcome.result = result;
    outcome.cause = cause;
    outcome.before = m_before;
    outcome.after = isChanged ? m_after : m_before;
    outcome.matchedBy = m_matchedBy;
    outcome.changes = changesBetween(outcome.before, outcome.after);
    return outcome;
}

} // namespace tarvel4
