#include "indexer/songreader.h"

#include "indexer/indexentry.h"
#include "indexer/indexformat.h"
#include "songs/bytes.h"
#include "songs/id3/id3format.h"
#include "songs/mfx/mfxheader.h"
#include "songs/midi/midiformat.h"
#include "storage/debuglog.h"
#include "storage/regularfile.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tarvel4 {

namespace {

constexpr int fewestBytes = 5; ///< a shorter file keeps the defaults
constexpr int id3BytesSearched = 512;
constexpr int midiEventsOffset =
    22; ///< first event of the first track behind a header of usual length
constexpr quint8 tempoOfUnknown = 120;
constexpr quint32 microsecondsPerMinute = 60000000;
constexpr int tempoSize = 3;

QString id3Text(const QByteArray &bytes, Id3Format::TextFrame frame)
{
    const char *const id = Id3Format::frameId(frame);
    const auto end = bytes.begin() + qMin<qint64>(bytes.size(), id3BytesSearched);
    const auto found =
        std::search(bytes.begin() + Id3Format::headerSize, end, id, id + Id3Format::frameIdSize);
    if (found == end)
        return {};
    const int at = static_cast<int>(found - bytes.begin());
    const auto size = Bytes::bigEndianAt<quint32>(bytes, at + Id3Format::frameSizeOffset);
    return Bytes::text(bytes, at + Id3Format::frameHeaderSize + Id3Format::encodingSize,
                       static_cast<qint64>(size) - Id3Format::encodingSize);
}

void readMp3(const QByteArray &bytes, IndexEntry &entry)
{
    entry.kind = static_cast<quint8>(IndexFormat::Kind::Mp3);
    if (!bytes.startsWith(Id3Format::tagMagic) || bytes.size() < Id3Format::headerSize)
        return;
    entry.title = id3Text(bytes, Id3Format::TextFrame::Title);
    entry.artist = id3Text(bytes, Id3Format::TextFrame::Artist);
    entry.genre = id3Text(bytes, Id3Format::TextFrame::Genre);
}

void readMfx(const MfxHeader &header, IndexEntry &entry)
{
    entry.title = header.title();
    entry.artist = header.artist();
    entry.genre = header.genre();
    entry.kind = static_cast<quint8>(header.version() - 1); // versions 3, 4, 5 are kinds 2, 3, 4
    entry.tempo = static_cast<quint8>(header.bpm());
    entry.markers = (header.flags() & MfxFormat::hasMarkersFlag) != 0 ? 1 : 0;
}

/** The meta events of a MIDI song that the index has a use for; of each the first one counts. */
class MidiWalk
{
public:
    /** Looks at each pair of 0xFF and a type; a known event inside the bytes is taken, any other
     * byte skipped. */
    explicit MidiWalk(const QByteArray &bytes)
        : m_bytes(bytes)
    {
        int at = Bytes::indexOfByte(bytes, MidiFormat::metaStatus, midiEventsOffset);
        while (at >= 0 && !isComplete()) {
            const int begin = at + MidiFormat::payloadOffset;
            const int size = Bytes::byteAt(bytes, at + MidiFormat::lengthOffset);
            const bool isTaken = Bytes::containsRange(bytes, begin, size)
                && take(Bytes::byteAt(bytes, at + MidiFormat::typeOffset), begin, size);
            at = Bytes::indexOfByte(bytes, MidiFormat::metaStatus, isTaken ? begin + size : at + 1);
        }
    }

    void fill(IndexEntry &entry) const
    {
        entry.title = m_title;
        entry.artist = m_artist;
        entry.genre = m_genre;
        entry.tempo = m_tempo;
        entry.markers = m_hasMarkers ? 1 : 0;
    }

private:
    /** The payload of \a size bytes at \a begin, all of them there. */
    bool take(quint8 type, int begin, int size)
    {
        if (type == static_cast<quint8>(MidiFormat::Meta::TrackName))
            takeText(m_title, m_hasTitle, begin, size);
        else if (type == static_cast<quint8>(MidiFormat::Meta::SongInfo))
            takeSongInfo(begin, size);
        else if (type == MidiFormat::setTempoMeta)
            takeTempo(begin, size);
        else if (type == MidiFormat::markerMeta)
            m_hasMarkers = true;
        else
            return false;
        return true;
    }

    void takeSongInfo(int begin, int size)
    {
        const quint8 subType = size > 0 ? Bytes::byteAt(m_bytes, begin) : static_cast<quint8>(0);
        const int textBegin = begin + MidiFormat::subTypeSize;
        const int textSize = size - MidiFormat::subTypeSize;
        if (subType == static_cast<quint8>(MidiFormat::SubType::Genre))
            takeText(m_genre, m_hasGenre, textBegin, textSize);
        else if (subType == static_cast<quint8>(MidiFormat::SubType::Artist))
            takeText(m_artist, m_hasArtist, textBegin, textSize);
    }

    void takeText(QString &text, bool &taken, int begin, int size) const
    {
        if (!taken)
            text = Bytes::text(m_bytes, begin, size);
        taken = true;
    }

    void takeTempo(int begin, int size)
    {
        if (m_hasTempo || size != tempoSize)
            return;
        constexpr quint32 tempoMask = 0xFFFFFF; // the byte before it is its length
        const auto microseconds = Bytes::bigEndianAt<quint32>(m_bytes, begin - 1) & tempoMask;
        if (microseconds == 0)
            return;
        m_tempo =
            static_cast<quint8>(microsecondsPerMinute / microseconds); // required: kept to 8 bits
        m_hasTempo = true;
    }

    bool isComplete() const
    {
        return m_hasTitle && m_hasArtist && m_hasGenre && m_hasTempo && m_hasMarkers;
    }

    const QByteArray &m_bytes;
    QString m_title;
    QString m_artist;
    QString m_genre;
    quint8 m_tempo = 0;
    bool m_hasTitle = false;
    bool m_hasArtist = false;
    bool m_hasGenre = false;
    bool m_hasTempo = false;
    bool m_hasMarkers = false;
};

void readFormat(const QByteArray &bytes, IndexEntry &entry)
{
    MfxHeader mfx;
    if (entry.absolutePath.endsWith(QLatin1String(".mp3"), Qt::CaseInsensitive))
        readMp3(bytes, entry);
    else if (bytes.startsWith(MidiFormat::fileMagic))
        MidiWalk(bytes).fill(entry);
    else if (mfx.parse(bytes))
        readMfx(mfx, entry);
    else
        entry.tempo = tempoOfUnknown;
}

/** The file's name without its suffix, or with it where nothing but blanks is left. */
QString defaultTitle(const QString &path)
{
    const QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    const QString title = name.left(name.lastIndexOf(QLatin1Char('.')));
    return title.trimmed().isEmpty() ? name : title;
}

/** A text as it is stored; empty when nothing but white space is left. */
QString tidied(QString text)
{
    return std::move(text).trimmed().toUpper().trimmed(); // in place, as far as it can be
}

} // namespace

bool SongReader::read(IndexEntry &entry)
{
    qCDebug(debugLog) << entry.absolutePath;
    RegularFile file(entry.absolutePath, RegularFile::Kind::Listed);
    if (file.outcome() == Outcome::Code::NotFound)
        return false;
    entry.title = entry.artist = entry.genre = QString();
    entry.kind = entry.tempo = entry.reserved = entry.markers = 0;
    std::array<char, IndexFormat::songBytesRead> head;
    const qint64 size = file.outcome() ? file.readOnce(head.data(), head.size()) : 0;
    if (!file.outcome())
        entry.tempo = tempoOfUnknown;
    else if (size >= fewestBytes)
        readFormat(QByteArray::fromRawData(head.data(), static_cast<int>(size)), entry);

    entry.title = tidied(std::move(entry.title));
    if (entry.title.isEmpty())
        entry.title = tidied(defaultTitle(entry.absolutePath));
    static const QString unknown = QLatin1String(IndexFormat::unknownText);
    for (QString *const text : {&entry.artist, &entry.genre}) {
        const QString stored = tidied(std::move(*text));
        *text = stored.isEmpty() ? unknown : stored;
    }
    return true;
}

} // namespace tarvel4
