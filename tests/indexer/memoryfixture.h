#pragma once

#include "indexer/index.h"
#include "indexer/indexverifier.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/filetime.h"
#include "tests/storage/table.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
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
    /** Of a file of the index, by its name. */
    QString file(const QString &name) const { return m_folder.filePath(name); }
    QString file(const char *name) const { return file(QString::fromLatin1(name)); }

    /** Writes a song below the root, folders included, last changed on 5 March 2009 at 07:08:09. */
    void put(const QString &below, const QByteArray &bytes,
             const QDateTime &modified = QDateTime(QDate(2009, 3, 5), QTime(7, 8, 9)))
    {
        QDir().mkpath(path(below.left(below.lastIndexOf(QLatin1Char('/')))));
        QFile file(path(below));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()
            || !setModified(file, modified))
            qFatal("can't write %s", qPrintable(file.fileName()));
    }

    void putMidi(const QString &below, const QByteArray &title,
                 const QByteArray &artist = QByteArray())
    {
        put(below,
            SongBytes::midi0(SongBytes::meta(3, title)
                             + (artist.isEmpty() ? artist : SongBytes::songInfo(2, artist))));
    }

    void putNewSong() { putMidi("/new.mid"_s, "new"); }

    QByteArray read(const char *name) const { return SongBytes::read(file(name)); }
    QString hexOf(const char *name, int at = 0, int size = -1) const
    {
        return QString::fromLatin1(read(name).mid(at, size).toHex());
    }

    /** Overwrites the bytes at an offset of one of the files. */
    void patch(const char *name, int at, const QByteArray &bytes) const
    {
        SongBytes::write(file(name), read(name).replace(at, bytes.size(), bytes));
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
            texts.append("%1 %2: %3"_s.arg(problem.file).arg(problem.record).arg(problem.problem));
        return texts;
    }

    /** The names of the seven files, in their order. */
    static QStringList preparedFiles()
    {
        return {"aartist.id3"_s, "artist.id3"_s,  "atitle.id3"_s, "fsinfos.id3"_s,
                "index.id3"_s,   "ordfile.id3"_s, "title.id3"_s};
    }

    /** The bytes of every file below the root that has such a name, by path. */
    QMap<QString, QByteArray> files(const QStringList &names = {}) const
    {
        QMap<QString, QByteArray> bytes;
        QDirIterator paths(root(), names, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (paths.hasNext()) {
            const QString path = paths.next();
            bytes.insert(path, SongBytes::read(path));
        }
        return bytes;
    }

    QStringList indexFiles() const
    {
        return QDir(root()).entryList(indexNames(), QDir::Files | QDir::Hidden, QDir::Name);
    }
    QMap<QString, QByteArray> index() const { return files(indexNames()); }

private:
    static QStringList indexNames() { return {"*.id3"_s, ".fsinfos*"_s}; }

    QStringList texts(const char *name, int size, int at, int width) const
    {
        QStringList texts;
        for (int i = 0; i < read(name).size() / size; ++i)
            texts.append(QString::fromLatin1(record(name, size, i, at, width)));
        return texts;
    }

    QTemporaryDir m_folder;
};

/** A memory with the songs /a.mid "ALFA", /b.mid "BETA" and /c.mid "GAMMA" and their index. */
class PreparedMemory : public MemoryFixture
{
public:
    PreparedMemory()
    {
        putMidi("/a.mid"_s, "Alfa", "Ada");
        putMidi("/b.mid"_s, "Beta", "Bice");
        putMidi("/c.mid"_s, "Gamma", "Ada");
        if (!Index().rebuild(root()))
            qFatal("the memory is not prepared");
    }
};

} // namespace tarvel4
