#pragma once

#include "tests/program/programtest.h"

#include <QDirIterator>
#include <QMap>

namespace tarvel4 {

/** A test of what the journal makes possible. */
class HistoryTest : public ProgramTest
{
protected:
    /** A copy of each sample in the folder "s", and MP3s with what may stand around their audio. */
    void makeSongs() const
    {
        for (const QString &sample : sampleSongs())
            write("s/"_s + sample.section(QLatin1Char('/'), -1), Fixtures::read(sample));
        const QByteArray audio = QByteArray::fromHex("FFFB9000") + QByteArray(3'000'000, 'x');
        const QByteArray id3v1 = "TAG" + QByteArray("An old title").leftJustified(125, '\0');
        write("s/untagged.mp3", audio);
        write("s/id3v1.mp3", audio + id3v1);
        write("s/both.mp3", Fixtures::read(sampleSongs().filter(".mp3"_s).value(0)) + id3v1);
        write("s/short.mp3", QByteArray::fromHex("FFFB9000") + QByteArray(20, 'x'));
    }

    /** The bytes of each file below the folder "s". */
    QMap<QString, QByteArray> songs() const
    {
        QMap<QString, QByteArray> bytes;
        QDirIterator files(path("s"), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            bytes.insert(file, Fixtures::read(file));
        }
        return bytes;
    }

    QString journal() const { return home() + "/.local/share/kvaro/tarvel4soft/journal.db"_s; }

    QVector<QJsonObject> history() const { return cli("history --json").records(); }

    /** A value of each run of the history, the newest first. */
    QVariantList historyOf(const char *key) const
    {
        QVariantList values;
        for (const QJsonObject &run : history())
            values.append(run.value(QLatin1String(key)).toVariant());
        return values;
    }

    /** Everything about each file in the songs' and in the user's folder that a command may change.
     */
    QByteArray everything() const
    {
        return shell(
                   "find . '%1' -printf '%p %i %m %n %s %T@\\n' -type f -exec sha256sum {} + | sort"_s
                       .arg(home()))
            .out;
    }
};

} // namespace tarvel4
