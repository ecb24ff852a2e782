#include "songs/songfields.h"

namespace tarvel4 {

namespace {

/** A header text that only stands in for one. */
bool isPlaceholder(const QString &text)
{
    return text == QLatin1String("-") || text == QLatin1String("--");
}

} // namespace

bool MidiFields::yieldsTitleTo(const QString &title) const
{
    const QString trackName = m_midi.trackName().toUpper();
    return trackName.isEmpty() || title.toUpper().startsWith(trackName);
}

bool MfxFields::lacksTitle() const
{
    return !m_header.hasTitle() || isPlaceholder(m_header.title());
}

bool MfxFields::lacksAuthor() const
{
    return !m_header.hasAuthor() || isPlaceholder(m_header.author());
}

bool MfxFields::lacksArtist() const
{
    return !m_header.hasArtist() || isPlaceholder(m_header.artist());
}

bool MfxFields::lacksGenre() const
{
    return !m_header.hasGenre() || isPlaceholder(m_header.genre());
}

void MfxFields::noteChange(const SongInfo &info)
{
    if (!info.markers.isEmpty())
        m_header.setFlag(MfxFormat::hasMarkersFlag);
}

void Mp3Fields::noteChange(const SongInfo &)
{
    if (!m_tag.hasEditMark())
        m_tag.addEditMark();
}

} // namespace tarvel4
