#pragma once

#include "songs/metasong.h"
#include "tests/songs/mfxbytes.h"

#include <QTemporaryDir>
#include <QtTest>

namespace tarvel4 {

/** What the tests of a record that is written into a song share. */
namespace RecordFixture {

constexpr WrittenBy edit = WrittenBy::User;
constexpr WrittenBy update = WrittenBy::Catalogue;

/** A disk that is not waited for: what is on it counts here, not when. */
class UnsyncedDisk : public Disk
{
public:
    Outcome sync(QFileDevice &) override { return {}; }
    Outcome syncFolder(const QString &) override { return {}; }
};

inline QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

inline SongInfo recordWith(const QByteArray &field, const QByteArray &value, bool isPublisher)
{
    SongInfo info;
    info.isPublisher = isPublisher;
    info.length = field == "length" ? value.toInt() : -1;
    info.bpm = field == "bpm" ? value.toInt() : -1;
    const QString text = QString::fromLatin1(value);
    info.key = field == "key" ? text : QString();
    info.title = field == "title" ? text : QString();
    info.author = field == "author" ? text : QString();
    info.artist = field == "artist" ? text : QString();
    info.genre = field == "genre" ? text : QString();
    return info;
}

/** A song on disk that is loaded, saved and loaded again. */
class FixtureSong
{
public:
    MetaSong imported(const QString &suffix, const QByteArray &bytes)
    {
        m_path = SongBytes::write(m_folder.filePath(latin1("song.") + suffix), bytes);
        MetaSong song(m_disk);
        if (!song.importFile(m_path))
            qFatal("the fixture is no song");
        return song;
    }

    SongInfo savedAndReadBack(MetaSong &song) const
    {
        SongInfo info;
        MetaSong again;
        if (!song.saveToFile(m_path) || !again.importFile(m_path))
            info.title = latin1("not saved");
        else
            again.readInfo(info);
        return info;
    }

    const QString &path() const { return m_path; }

private:
    QTemporaryDir m_folder;
    QString m_path;
    UnsyncedDisk m_disk;
};

} // namespace RecordFixture

} // namespace tarvel4

Q_DECLARE_METATYPE(tarvel4::WrittenBy)
