#include "songs/mfx/mfxsong.h"

#include "songs/mfx/lzhuff.h"
#include "songs/mfx/lzhuffformat.h"
#include "songs/midi/midiformat.h"
#include "storage/regularfile.h"

#include <QCoreApplication>
#include <QDebug>

#include <algorithm>
#include <iterator>

namespace tarvel4 {

namespace {

constexpr int fillerVersion = 4;
// An MF4 stream has these after the header of its first track, not counted in the track's length.
constexpr char filler[] = {'\xFF', '\x00', '\xFF'};
constexpr int fillerSize = sizeof(filler);

/** Where the filler of an MF4 stream belongs; -1 when it has no track. */
int fillerOffset(const QByteArray &midi)
{
    const int track = static_cast<int>(midi.indexOf(MidiFormat::trackMagic));
    return track < 0 ? -1 : track + MidiFormat::trackHeaderSize;
}

/** The size of the header that begins so; 0 when it is no MFx song. */
int headerSize(const QByteArray &start)
{
    const auto variant = std::find_if(
        std::begin(MfxFormat::variants), std::end(MfxFormat::variants),
        [&](const MfxFormat::Variant &candidate) { return start.startsWith(candidate.magic); });
    return variant == std::end(MfxFormat::variants) ? 0 : variant->headerSize;
}

/** A header text that only stands in for one. */
bool isMissing(const QString &text)
{
    return text.isEmpty() || text == QLatin1String("-") || text == QLatin1String("--");
}

Outcome damaged(const char *what)
{
    return {
        Outcome::Code::DamagedSong, {}, QCoreApplication::translate("Outcome", what), QString()};
}

} // namespace

bool MfxSong::isRecognised(const QByteArray &start)
{
    return headerSize(start) > 0;
}

Outcome MfxSong::load(const QByteArray &bytes)
{
    m_oldBytes = bytes;
    const int size = headerSize(bytes);
    if (!m_header.parse(bytes.left(size)))
        return damaged(QT_TRANSLATE_NOOP("Outcome", "l'intestazione è incompleta"));

    QByteArray midi;
    if (!LzHuff().expand(bytes.mid(size), midi)) {
        qDebug() << "[MetaSong::importFile] LzHuff Expand filed, skipping file";
        return damaged(QT_TRANSLATE_NOOP("Outcome", "la parte compressa non si espande"));
    }
    const int offset = fillerOffset(midi);
    if (m_header.version() == fillerVersion && offset >= 0)
        midi.remove(offset, fillerSize);
    if (!m_midi.load(midi)) {
        qDebug() << "[MetaSong::importFile] MidiStream corrupted, skipping file";
        return damaged(QT_TRANSLATE_NOOP("Outcome", "la parte compressa non contiene MIDI"));
    }
    return {};
}

std::unique_ptr<Song> MfxSong::trial() const
{
    constexpr int most =
        static_cast<int>(LzHuffFormat::maxTextSize) - fillerSize - RawMidiFile::mostEditBytes;
    if (m_midi.data().size() > most)
        return clone(); // whether it is savable depends on each byte
    auto song = std::make_unique<MfxSong>();
    song->m_header = m_header;
    song->m_misfit = m_misfit;
    song->m_midi = m_midi.head();
    return song;
}

void MfxSong::readInto(SongInfo &info) const
{
    info.title = m_header.title();
    info.artist = m_header.artist();
    info.author = m_header.author();
    info.genre = m_header.genre();
    info.key = m_midi.key();
    info.markers = m_midi.markers();
    info.isPublisher = true;
    info.length = m_midi.length();
    info.bpm = m_header.bpm();
    info.mfxLongName = m_header.longName();
    info.mfxFlags = m_header.flags();
}

QString MfxSong::textIn(SongField field) const
{
    switch (field) {
    case SongField::Title:
        return m_header.title();
    case SongField::Author:
        return m_header.author();
    case SongField::Artist:
        return m_header.artist();
    case SongField::Genre:
        return m_header.genre();
    default:
        return {};
    }
}

bool MfxSong::lacks(SongField field) const
{
    switch (field) {
    case SongField::Markers:
        return !m_midi.hasMarkers();
    case SongField::Key:
        return !m_midi.hasKey();
    case SongField::Length:
        return !m_midi.hasLength();
    case SongField::Title:
        return isMissing(m_header.title());
    case SongField::Author:
        return isMissing(m_header.author());
    case SongField::Bpm:
        return !m_header.hasBpm();
    case SongField::Artist:
        return isMissing(m_header.artist());
    case SongField::Genre:
        return isMissing(m_header.genre());
    }
    return false;
}

void MfxSong::write(SongField field, const SongInfo &info)
{
    switch (field) {
    case SongField::Markers:
        return m_midi.setMarkers(info.markers);
    case SongField::Key:
        return m_midi.setKey(info.key);
    case SongField::Length:
        return m_midi.setLength(info.length);
    case SongField::Bpm:
        return m_header.setBpm(info.bpm);
    case SongField::Title:
        return writeText(field, MfxFormat::titleField, info.title);
    case SongField::Author:
        return writeText(field, MfxFormat::authorField, info.author);
    case SongField::Artist:
        return writeText(field, MfxFormat::artistField, info.artist);
    case SongField::Genre:
        return writeText(field, MfxFormat::genreField, info.genre);
    }
}

/** The header is as long as it must be until a text with a letter beyond ASCII is written. */
void MfxSong::writeText(SongField field, MfxFormat::TextField place, const QString &text)
{
    const auto before = m_header.headerBytes().size();
    m_header.setText(place, text);
    if (m_header.headerBytes().size() == before || !m_misfit)
        return;
    constexpr ushort firstOther = 0x80;
    const auto letter =
        std::find_if(text.begin(), text.end(), [](QChar c) { return c.unicode() >= firstOther; });
    const int at = static_cast<int>(letter - text.begin());
    const int size = letter != text.end() && letter->isHighSurrogate() ? 2 : 1;
    m_misfit = {Outcome::Code::LetterNotStorable, {}, text.mid(at, size), keyOf(field)};
}

TextLimits MfxSong::limitsOf(SongField) const
{
    return {MfxFormat::titleField.width, 0}; // all four have the same
}

void MfxSong::noteChange(const SongInfo &info)
{
    if (!info.markers.isEmpty())
        m_header.setFlag(MfxFormat::hasMarkersFlag);
}

Outcome MfxSong::whyNotSavable() const
{
    if (!m_misfit)
        return m_misfit;
    if (m_header.headerBytes().size() != MfxHeader::sizeOf(m_header.version()))
        return damaged(QT_TRANSLATE_NOOP("Outcome", "l'intestazione è incompleta"));
    if (static_cast<quint32>(stream().size()) <= LzHuffFormat::maxTextSize)
        return {};
    return {Outcome::Code::TooLarge, {}, FileBytes::sizeLimitText(LzHuffFormat::maxTextSize), {}};
}

FileChange MfxSong::change() const
{
    return {FileChange::Way::InPlace, m_oldBytes, image(), 0, "[MetaSong::saveToFile] MFx"};
}

/** The MIDI bytes as an MFx file of this version holds them, before compression. */
QByteArray MfxSong::stream() const
{
    QByteArray midi = m_midi.data();
    if (m_header.version() == fillerVersion)
        midi.insert(fillerOffset(midi), QByteArray(filler, fillerSize));
    return midi;
}

QByteArray MfxSong::image() const
{
    const QByteArray uncompressed = stream();
    QByteArray compressed;
    LzHuff().compress(uncompressed, compressed);
    MfxHeader header = m_header;
    header.setTotalSize(static_cast<quint32>(header.headerBytes().size() + compressed.size()));
    header.setUncompressedSize(static_cast<quint32>(uncompressed.size()));
    return header.headerBytes() + compressed;
}

} // namespace tarvel4
