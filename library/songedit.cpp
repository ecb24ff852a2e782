#include "library/songedit.h"

#include "library/songpath.h"

#include <QDebug>

namespace tarvel4 {

SongEdit::SongEdit(Disk &disk)
    : m_disk(disk)
    , m_song(disk)
{}

bool SongEdit::load(const QString &path)
{
    m_path = path;
    m_stamp = FileStamp(path);
    if (!m_song.importFile(path))
        return false;
    readInfo(m_song);
    return true;
}

bool SongEdit::addMarker(const QString &text, quint16 bar)
{
    if (m_song.addMarker(text, bar) == 0)
        return false;
    readInfo(m_song);
    return true;
}

bool SongEdit::save(const SongInfo &edited)
{
    m_song.setSongInfo(edited, WrittenBy::User);
    qDebug() << "Saving to file: " << m_path;
    const bool saved = write();
    qDebug() << (saved ? "Ok" : "Error!");

    MetaSong written(m_disk);
    if (!written.importFile(m_path)) {
        qDebug() << "[SongEdit] WARNING: can't be read back:" << m_path;
        return false;
    }
    readInfo(written);
    return saved;
}

QString SongEdit::titleFromPath(const QString &path)
{
    return SongPath::baseName(path);
}

bool SongEdit::write()
{
    if (!m_stamp.matches(m_path)) {
        qDebug() << "[SongEdit] WARNING: changed or gone since it was read:" << m_path;
        return false;
    }
    return static_cast<bool>(m_song.saveToFile(m_path));
}

void SongEdit::readInfo(const MetaSong &song)
{
    song.readInfo(m_info);
    m_info.filename = m_path;
    m_info.shortname = SongPath::fileName(m_path);
}

} // namespace tarvel4
