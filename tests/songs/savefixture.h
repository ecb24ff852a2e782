#pragma once

#include "songs/metasong.h"
#include "tests/songs/mfxbytes.h"

#include <QTemporaryDir>
#include <QtTest>

namespace tarvel4 {

/** What the tests of saving share: a song of each format, and a folder to save it in. */
namespace SaveFixture {

inline QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

/** The bytes of a song of some size, by the suffix of its file. */
inline QByteArray songOf(const QString &suffix)
{
    using namespace SongBytes;
    const QByteArray song = midi1(meta(3, "An old and rather long title") + meta(5, "La la"));
    if (suffix == latin1("mid"))
        return song;
    if (suffix == latin1("mp3"))
        return tag(frame("TIT2", "Old") + QByteArray(30, '\0')) + audio(600);
    const int version = suffix.right(1).toInt();
    return mfx(version, {"Old", "", "", "", "", 0, 0}, version == 4 ? withFiller(song) : song);
}

inline MetaSong imported(const QString &file, Disk &disk = Disk::real())
{
    MetaSong song(disk);
    if (!song.importFile(file))
        qFatal("the fixture is no song");
    return song;
}

inline void setTitle(MetaSong &song, const QString &title)
{
    SongInfo info;
    song.readInfo(info);
    info.title = title;
    song.setSongInfo(info, WrittenBy::User);
}

inline QString titleIn(const QString &file)
{
    SongInfo info;
    MetaSong song;
    if (song.importFile(file))
        song.readInfo(info);
    return info.title;
}

inline void addSuffixRows(const char *suffixes = "mid mf3 mf4 mf5 mp3")
{
    QTest::addColumn<QString>("suffix");
    const QStringList list = latin1(suffixes).split(QLatin1Char(' '));
    for (const QString &suffix : list)
        QTest::newRow(qPrintable(suffix)) << suffix;
}

constexpr char unknownFormat[] =
    "[MetaSong::saveToFile] UNKNOWN format (or data corrupted) in memory, aborting";
constexpr char notWritable[] = "[MetaSong::saveToFile] Impossible to write to file. Maybe it's "
                               "write protected? Aborting!";

/** A folder of its own for each row. */
class Folder
{
public:
    QString path() const { return m_folder.path(); }
    QString path(const QString &name) const { return m_folder.filePath(name); }
    QString path(const char *name) const { return path(latin1(name)); }
    QStringList names() const { return SongBytes::names(m_folder.path()); }

private:
    QTemporaryDir m_folder;
};

} // namespace SaveFixture

} // namespace tarvel4
