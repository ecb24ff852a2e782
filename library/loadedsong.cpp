#include "library/loadedsong.h"

#include "library/songpath.h"

#include <QFileInfo>

namespace tarvel4 {

Outcome LoadedSong::load(const QString &path)
{
    m_path = path;
    m_stamp = FileStamp(path);
    return m_song.importFile(path);
}

SongInfo LoadedSong::info() const
{
    SongInfo info;
    m_song.readInfo(info);
    info.filename = m_path;
    info.shortname = SongPath::fileName(m_path);
    return info;
}

Outcome LoadedSong::whyNotSavable() const
{
    Outcome outcome = m_song.whyNotSavable();
    outcome.path = m_path;
    return outcome;
}

Outcome LoadedSong::save()
{
    const Outcome changed = changedSinceLoad();
    return changed ? m_song.saveToFile(m_path) : changed;
}

Outcome LoadedSong::changedSinceLoad() const
{
    if (m_stamp.matches(m_path))
        return {Outcome::Code::Done, m_path, {}, {}};
    const QFileInfo now(m_path);
    if (!now.exists())
        return {Outcome::Code::NotFound, m_path, {}, {}};
    return {
        now.isFile() ? Outcome::Code::ChangedMeanwhile : Outcome::Code::NotAFile, m_path, {}, {}};
}

} // namespace tarvel4
