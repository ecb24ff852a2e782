#include "cli/songrecord.h"

#include <QJsonArray>
#include <QJsonObject>

namespace tarvel4 {

const QByteArrayList &songKeys()
{
    static const QByteArrayList keys{"path",      "name",    "format",      "title",   "artist",
                                     "genre",     "author",  "length",      "bpm",     "key",
                                     "publisher", "markers", "mfxLongName", "mfxFlags"};
    return keys;
}

void addSong(Record &record, const QString &path, const SongInfo &info)
{
    record.addText("name", path.mid(path.lastIndexOf(QLatin1Char('/')) + 1));
    record.addText("format", info.format);
    record.addText("title", info.title);
    record.addText("artist", info.artist);
    record.addText("genre", info.genre);
    record.addText("author", info.author);
    record.addNumber("length", info.length);
    record.addNumber("bpm", info.bpm);
    record.addText("key", info.key);
    record.addFlag("publisher", info.isPublisher);
    addMarkers(record, info.markers);
    if (info.format.startsWith(QLatin1String("MF"))) {
        record.addText("mfxLongName", info.mfxLongName);
        record.addNumber("mfxFlags", info.mfxFlags);
    }
}

void addMarkers(Record &record, const QVector<Marker> &markers)
{
    QJsonArray array;
    QStringList texts;
    for (const Marker &marker : markers) {
        array.append(QJsonObject{{QStringLiteral("bar"), marker.bar},
                                 {QStringLiteral("text"), marker.text}});
        texts += QString::number(marker.bar) + QLatin1Char(' ') + marker.text;
    }
    record.addValue("markers", array, texts.join(QLatin1String(", ")));
}

Record songRecord(Record record, const QString &path, const SongInfo &info)
{
    record.addText("path", path);
    addSong(record, path, info);
    return record;
}

void addFailure(Record &record, const Outcome &cause, const QString &error)
{
    record.addText("error", error.isEmpty() ? cause.sentence() : error);
    record.addText("code", cause.codeName());
    if (!cause.field.isEmpty())
        record.addText("field", cause.field);
}

Record errorRecord(Record record, const QString &path, const Outcome &cause, const QString &error)
{
    record.addText("path", path);
    addFailure(record, cause, error);
    return record;
}

} // namespace tarvel4
