#pragma once

#include "indexer/index.h"
#include "indexer/indexverifier.h"
#include "tests/songs/songbytes.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace tarvel4 {

/** A folder that stands for a player's memory, and what the tests put on it and read from it. */
class MemoryFixture
{
public:
    MemoryFixture()
    {
        if (!m_folder.isValid())
            qFatal("no temporary folder");
    }

    QString root() const { return m_folder.path(); }
    QString path(const QString &below) const { return root() + below; }

    /** Writes a song below the root, folders included, last changed on 5 March 2009 at 07:08:09. */
    void put(const QString &below, const QByteArray &bytes,
             const QDateTime &modified = QDateTime(QDate(2009, 3, 5), QTime(7, 8, 9)))
    {
        QDir().mkpath(path(below.left(below.lastIndexOf(QLatin1Char('/')))));
        QFile file(path(below));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()
            || !file.setFileTime(modified, QFileDevice::FileModificationTime))
            qFatal("can't write %s", qPrintable(file.fileName()));
    }

    void putMidi(const QString &below, const QByteArray &title,
                 const QByteArray &artist = QByteArray())
    {
        put(below,
            SongBytes::midi0(SongBytes::meta(3, title)
                             + (artist.isEmpty() ? artist : SongBytes::songInfo(2, artist))));
    }

    /** A memory with the songs /a.mid "ALFA", /b.mid "BETA", /c.mid "GAMMA", prepared. */
    void prepare()
    {
        putMidi(QStringLiteral("/a.mid"), "Alfa", "Ada");
        putMidi(QStringLiteral("/b.mid"), "Beta", "Bice");
        putMidi(QStringLiteral("/c.mid"), "Gamma", "Ada");
        QVERIFY(Index().rebuild(root()));
    }

    QByteArray read(const char *name) const
    {
        return SongBytes::read(root() + QLatin1Char('/') + QLatin1String(name));
    }

    /** Overwrites the bytes at an offset of one of the files. */
    void patch(const char *name, int at, const QByteArray &bytes) const
    {
        SongBytes::write(root() + QLatin1Char('/') + QLatin1String(name),
                         read(name).replace(at, bytes.size(), bytes));
    }

    /** A record of one of the files, without the zero bytes at its end. */
    QByteArray record(const char *name, int size, int index, int at, int width) const
    {
        const QByteArray field = read(name).mid(size * index + at, width);
        return field.left(
            static_cast<int>(qstrnlen(field.constData(), static_cast<uint>(field.size()))));
    }

    QStringList titles() const { return texts("title.id3", 64, 4, 58); }
    QStringList paths() const { return texts("index.id3", 270, 4, 252); }

    QStringList problems() const
    {
        QStringList texts;
        const auto found = IndexVerifier(root()).verify();
        for (const IndexProblem &problem : found)
            texts.append(QStringLiteral("%1 %2: %3")
                             .arg(problem.file)
                             .arg(problem.record)
                             .arg(problem.problem));
        return texts;
    }

    /** The names of the seven files, in their order. */
    static QStringList preparedFiles()
    {
        return {QStringLiteral("aartist.id3"), QStringLiteral("artist.id3"),
                QStringLiteral("atitle.id3"),  QStringLiteral("fsinfos.id3"),
                QStringLiteral("index.id3"),   QStringLiteral("ordfile.id3"),
                QStringLiteral("title.id3")};
    }

    QStringList indexFiles() const
    {
        return QDir(root()).entryList({QStringLiteral("*.id3"), QStringLiteral(".fsinfos*")},
                                      QDir::Files | QDir::Hidden, QDir::Name);
    }

private:
    QStringList texts(const char *name, int size, int at, int width) const
    {
        QStringList texts;
        for (int i = 0; i < read(name).size() / size; ++i)
            texts.append(QString::fromLatin1(record(name, size, i, at, width)));
        return texts;
    }

    QTemporaryDir m_folder;
};

} // namespace tarvel4
