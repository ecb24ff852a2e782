#include "cli/songrecord.h"

#include <QJsonObject>

void addSong(Record &record, const QString &path, const SongInfo &info)
{
    record.add("name", path.mid(path.lastIndexOf(QLatin1Char('/')) + 1));
    record.add("format", info.format);
    record.add("title", info.title);
    record.add("artist", info.artist);
    record.add("genre", info.genre);
    record.add("author", info.author);
    record.add("length", info.length);
    record.add("bpm", info.bpm);
    record.add("key", info.key);
    record.add("publisher", info.isPublisher);
    record.add("markers", markerArray(info.markers), markerText(info.markers));
    if (info.format.startsWith(QLatin1String("MF"))) {
        record.add("mfxLongName", info.mfxLongName);
        record.add("mfxFlags", info.mfxFlags);
    }
}

QJsonArray markerArray(const QVector<Marker> &markers)
{
    QJsonArray array;
    for (const Marker &marker : markers) {
        array.append(QJsonObject{{QStringLiteral("bar"), marker.bar},
                                 {QStringLiteral("text"), marker.text}});
    }
    return array;
}

QString markerText(const QVector<Marker> &markers)
{
    QStringList texts;
    for (const Marker &marker : markers)
        texts += QStringLiteral("%1 %2").arg(marker.bar).arg(marker.text);
    return texts.join(QLatin1String(", "));
}

Record songRecord(const QString &path, const SongInfo &info)
{
    Record record;
    record.add("path", path);
    addSong(record, path, info);
    return record;
}

Record errorRecord(const QString &path, const char *error)
{
    Record record;
    record.add("path", path);
    record.add("error", QLatin1String(error));
    return record;
}
