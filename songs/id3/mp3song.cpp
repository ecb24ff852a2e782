#include "songs/id3/mp3song.h"

#include "songs/metasong.h"
#include "storage/regularfile.h"

#include <QCoreApplication>

#include <algorithm>

namespace tarvel4 {

using namespace Id3Format;

bool Mp3Song::isRecognised(const QString &path, const QByteArray &start)
{
    if (!path.endsWith(QLatin1String("MP3"), Qt::CaseInsensitive))
        return false;
    if (start.startsWith(tagMagic) || start.startsWith(QByteArray(2, '\0')))
        return true;
    // required: a signed comparison, which lets 0x00-0x7F pass as well as 0xF3-0xFF
    constexpr qint8 leastSecondByte = -13;
    return start.size() >= 2 && start.at(0) == '\xFF'
        && static_cast<qint8>(start.at(1)) >= leastSecondByte;
}

Outcome Mp3Song::load(RegularFile &file, const QByteArray &start)
{
    const auto damaged = [](const char *what) {
        return Outcome{
            Outcome::Code::DamagedSong, {}, QCoreApplication::translate("Outcome", what), {}};
    };
    const qint64 wanted = Id3v2Tag::bytesWanted(start);
    if (wanted - headerSize > maxSongBytes)
        return {Outcome::Code::TooLarge, {}, FileBytes::sizeLimitText(maxSongBytes), {}};
    m_oldStart = start.left(static_cast<int>(wanted));
    const Outcome read = file.readUpTo(std::min(wanted, file.size()), m_oldStart);
    if (!read)
        return read;
    if (!m_tag.parse(m_oldStart))
        return damaged(QT_TRANSLATE_NOOP("Outcome", "il tag ID3 è incompleto"));
    return {};
}

int Mp3Song::format() const
{
    return MetaSong::Mp3;
}

void Mp3Song::readInto(SongInfo &info) const
{
    info.title = m_tag.title();
    info.artist = m_tag.artist();
    info.author = m_tag.author();
    info.genre = m_tag.genre();
    info.key = m_tag.key();
    info.isPublisher = m_tag.isPublisher();
    info.length = m_tag.length();
    info.bpm = m_tag.bpm();
}

QString Mp3Song::textIn(SongField field) const
{
    switch (field) {
    case SongField::Title:
        return m_tag.title();
    case SongField::Author:
        return m_tag.author();
    case SongField::Artist:
        return m_tag.artist();
    case SongField::Genre:
        return m_tag.genre();
    default:
        return {};
    }
}

bool Mp3Song::lacks(SongField field) const
{
    switch (field) {
    case SongField::Markers:
        return false;
    case SongField::Key:
        return !m_tag.hasKey();
    case SongField::Length:
        return !m_tag.hasLength();
    case SongField::Title:
        return !m_tag.hasTitle();
    case SongField::Author:
        return !m_tag.hasAuthor();
    case SongField::Bpm:
        return !m_tag.hasBpm();
    case SongField::Artist:
        return !m_tag.hasArtist();
    case SongField::Genre:
        return !m_tag.hasGenre();
    }
    return false;
}

void Mp3Song::write(SongField field, const SongInfo &info)
{
    set(field, info);
    if (m_tag.tagSize() > static_cast<quint32>(maxSongBytes) && m_fieldTooLong.isEmpty())
        m_fieldTooLong = keyOf(field);
}

void Mp3Song::set(SongField field, const SongInfo &info)
{
    switch (field) {
    case SongField::Markers:
        return;
    case SongField::Key:
        return m_tag.setKey(info.key);
    case SongField::Length:
        return m_tag.setLength(info.length);
    case SongField::Title:
        return m_tag.setTitle(info.title);
    case SongField::Author:
        return m_tag.setAuthor(info.author);
    case SongField::Bpm:
        return m_tag.setBpm(info.bpm);
    case SongField::Artist:
        return m_tag.setArtist(info.artist);
    case SongField::Genre:
        return m_tag.setGenre(info.genre);
    }
}

void Mp3Song::noteChange(const SongInfo &)
{
    if (!m_tag.hasEditMark())
        m_tag.addEditMark();
}

Outcome Mp3Song::whyNotSavable() const
{
    if (m_tag.tagSize() <= static_cast<quint32>(maxSongBytes))
        return {};
    const QString detail =
        QCoreApplication::translate("Outcome", "il tag avrebbe %1 byte, ne sono ammessi %2")
            .arg(m_tag.tagSize())
            .arg(maxSongBytes);
    const auto code =
        m_fieldTooLong.isEmpty() ? Outcome::Code::TooLarge : Outcome::Code::TextTooLong;
    return {code, {}, detail, m_fieldTooLong};
}

FileChange Mp3Song::change() const
{
    return {FileChange::Way::Beside, m_oldStart, m_tag.tag(), m_tag.audioStart(), nullptr};
}

} // namespace tarvel4
