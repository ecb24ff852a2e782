#include "library/loadedsong.h"

#include "library/songpath.h"

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

} // namespace tarvel4
