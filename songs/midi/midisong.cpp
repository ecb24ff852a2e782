#include "songs/midi/midisong.h"

#include "storage/regularfile.h"

#include <QCoreApplication>
#include <QDebug>

namespace tarvel4 {

Outcome MidiSong::load(const QByteArray &bytes)
{
    m_oldBytes = bytes;
    if (m_midi.load(bytes))
        return {};
    return {Outcome::Code::DamagedSong,
            {},
            QCoreApplication::translate("Outcome", "non è un file MIDI di formato 0 o 1"),
            {}};
}

std::unique_ptr<Song> MidiSong::trial() const
{
    if (m_midi.data().size() > FileBytes::maxSize - RawMidiFile::mostEditBytes)
        return clone(); // whether it is savable depends on each byte
    auto song = std::make_unique<MidiSong>();
    song->m_midi = m_midi.head();
    return song;
}

void MidiSong::readInto(SongInfo &info) const
{
    info.title = m_midi.trackName();
    info.artist = m_midi.artist();
    info.author = m_midi.author();
    info.genre = m_midi.genre();
    info.key = m_midi.key();
    info.markers = m_midi.markers();
    info.isPublisher = m_midi.isPublisher();
    info.length = m_midi.length();
    info.bpm = m_midi.bpm();
}

QString MidiSong::textIn(SongField field) const
{
    switch (field) {
    case SongField::Title:
        return m_midi.trackName();
    case SongField::Author:
        return m_midi.author();
    case SongField::Artist:
        return m_midi.artist();
    case SongField::Genre:
        return m_midi.genre();
    default:
        return {};
    }
}

bool MidiSong::lacks(SongField field) const
{
    switch (field) {
    case SongField::Markers:
        return !m_midi.hasMarkers();
    case SongField::Key:
        return !m_midi.hasKey();
    case SongField::Length:
        return !m_midi.hasLength();
    case SongField::Title:
        return !m_midi.hasTrackName();
    case SongField::Author:
        return !m_midi.hasAuthor();
    case SongField::Bpm:
        return !m_midi.hasBpm();
    case SongField::Artist:
        return !m_midi.hasArtist();
    case SongField::Genre:
        return !m_midi.hasGenre();
    }
    return false;
}

void MidiSong::write(SongField field, const SongInfo &info)
{
    switch (field) {
    case SongField::Markers:
        return m_midi.setMarkers(info.markers);
    case SongField::Key:
        return m_midi.setKey(info.key);
    case SongField::Length:
        return m_midi.setLength(info.length);
    case SongField::Title:
        return m_midi.setTrackName(info.title);
    case SongField::Author:
        return m_midi.setAuthor(info.author);
    case SongField::Bpm:
        return m_midi.setBpm(info.bpm);
    case SongField::Artist:
        return m_midi.setArtist(info.artist);
    case SongField::Genre:
        return m_midi.setGenre(info.genre);
    }
}

TextLimits MidiSong::limitsOf(SongField field) const
{
    using namespace MidiFormat;
    const int inFront = field == SongField::Title ? 0 : subTypeSize;
    return {maxTextCharacters, maxPlainLength - inFront};
}

bool MidiSong::yieldsTitleTo(const QString &title) const
{
    const QString trackName = m_midi.trackName().toUpper();
    return trackName.isEmpty() || title.toUpper().startsWith(trackName);
}

Outcome MidiSong::whyNotSavable() const
{
    if (m_midi.data().size() <= FileBytes::maxSize)
        return {};
    return {Outcome::Code::TooLarge, {}, FileBytes::sizeLimitText(FileBytes::maxSize), {}};
}

FileChange MidiSong::change() const
{
    return {FileChange::Way::InPlace, m_oldBytes, m_midi.data(), 0, "[MetaSong::saveToFile] MIDI"};
}

} // namespace tarvel4
