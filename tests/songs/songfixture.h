#pragma once

#include "songs/metasong.h"
#include "songs/midi/rawmidifile.h"
#include "tests/storage/foldertest.h"

namespace tarvel4 {

/** What the tests of whole songs share. */
namespace SongFixture {

constexpr WrittenBy edit = WrittenBy::User;
constexpr WrittenBy update = WrittenBy::Catalogue;
constexpr char everySuffix[] = "mid mf3 mf4 mf5 mp3";

/** A MIDI song as the file of a format (its suffix) holds it. */
inline QByteArray fileOf(const QString &suffix, const QByteArray &midi,
                         const SongBytes::MfxFields &fields = {})
{
    const int version = suffix.right(1).toInt();
    return version == 0
        ? midi
        : SongBytes::mfx(version, fields, version == 4 ? SongBytes::withFiller(midi) : midi);
}

/** The bytes of a song called "Old", by the suffix of its file. */
inline QByteArray songOf(const QString &suffix)
{
    using namespace SongBytes;
    if (suffix == "mp3"_s)
        return tag(frame("TIT2", "Old") + QByteArray(30, '\0')) + audio(600);
    return fileOf(suffix, midi1(meta(3, "An old and rather long title") + meta(5, "La la")),
                  {"Old", "", "", "", "", 0, 0});
}

inline MetaSong imported(const QString &file, Disk &disk = Disk::real())
{
    MetaSong song(disk);
    if (!song.importFile(file))
        qFatal("the fixture is no song");
    return song;
}

inline RawMidiFile loaded(const QByteArray &bytes)
{
    RawMidiFile midi;
    if (!midi.load(bytes))
        qFatal("the fixture is no MIDI file");
    return midi;
}

inline SongInfo recordOf(const MetaSong &song)
{
    SongInfo info;
    song.readInfo(info);
    return info;
}

/** All that a song can tell of itself, for comparing. */
inline QString textOf(const SongInfo &info)
{
    QStringList markers;
    for (const Marker &marker : info.markers)
        markers.append(QString::number(marker.bar) + QLatin1Char(':') + marker.text);
    return QStringList{info.format,
                       info.title,
                       info.artist,
                       info.altArtist,
                       info.genre,
                       info.author,
                       QString::number(info.length),
                       QString::number(info.bpm),
                       info.key,
                       QString::number(static_cast<int>(info.isPublisher)),
                       markers.join(QLatin1Char(',')),
                       info.mfxLongName,
                       QString::number(info.mfxFlags)}
        .join(QLatin1Char('|'));
}

inline QString titleIn(const QString &file)
{
    return recordOf(imported(file)).title;
}

inline void setTitle(MetaSong &song, const QString &title)
{
    SongInfo info = recordOf(song);
    info.title = title;
    song.setSongInfo(info, edit);
}

inline void addSuffixRows(const char *suffixes = everySuffix)
{
    QTest::addColumn<QString>("suffix");
    for (const QString &suffix : words(suffixes))
        QTest::newRow(qPrintable(suffix)) << suffix;
}

/** A song on disk that is loaded, saved and loaded again. */
class FixtureSong
{
public:
    MetaSong imported(const QString &suffix, const QByteArray &bytes)
    {
        m_path = SongBytes::write(m_folder.filePath("song."_s + suffix), bytes);
        return SongFixture::imported(m_path, m_disk);
    }
    SongInfo savedAndReadBack(MetaSong &song) const
    {
        if (!song.saveToFile(m_path))
            qFatal("the song is not saved");
        return recordOf(SongFixture::imported(m_path));
    }
    const QString &path() const { return m_path; }

private:
    QTemporaryDir m_folder;
    QString m_path;
    FailingDisk m_disk;
};

constexpr char unknownFormat[] =
    "[MetaSong::saveToFile] UNKNOWN format (or data corrupted) in memory, aborting";
constexpr char notWritable[] = "[MetaSong::saveToFile] Impossible to write to file. Maybe it's "
                               "write protected? Aborting!";

} // namespace SongFixture

} // namespace tarvel4

Q_DECLARE_METATYPE(tarvel4::WrittenBy)
Q_DECLARE_METATYPE(tarvel4::SongInfo)
Q_DECLARE_METATYPE(tarvel4::Marker)
