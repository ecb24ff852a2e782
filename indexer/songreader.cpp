#include "indexer/songreader.h"

#include "indexer/indexentry.h"
#include "indexer/indexformat.h"
#include "songs/bytes.h"
#include "songs/id3format.h"
#include "songs/mfxheader.h"
#include "songs/midiformat.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <array>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

constexpr int bytesRead = 3072;
constexpr int fewestBytes = 5; ///< a shorter file keeps the defaults
constexpr int id3BytesSearched = 512;
constexpr int midiEventsOffset =
    22; ///< first event of the first track behind a header of usual length
constexpr quint8 tempoOfUnknown = 120;
constexpr quint32 microsecondsPerMinute = 60000000;
constexpr int tempoSize = 3;

/** The first bytes of a regular file; \a opened tells an unreadable file from an empty one. */
QByteArray firstBytes(const QString &path, bool &opened)
{
    std::array<char, bytesRead> buffer;
#ifdef Q_OS_UNIX
    const int file =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    const ssize_t count = file < 0 ? -1 : ::read(file, buffer.data(), buffer.size());
    if (file >= 0)
        close(file);
#else
    QFile file(path);
    const qint64 count = file.open(QIODevice::ReadOnly) ? file.read(buffer.data(), bytesRead) : -1;
#endif
    opened = count >= 0;
    return QByteArray(buffer.data(), static_cast<int>(qMax<qint64>(count, 0)));
}

QString id3Text(const QByteArray &bytes, Id3Format::Frame frame)
{
    const int at =
        bytes.left(id3BytesSearched).indexOf(Id3Format::frameId(frame), Id3Format::headerSize);
    if (at < 0)
        return {};
    const auto size = Bytes::bigEndianAt<quint32>(bytes, at + Id3Format::frameSizeOffset);
    return Bytes::text(Bytes::part(bytes, at + Id3Format::frameHeaderSize + Id3Format::encodingSize,
                                   qint64(size) - Id3Format::encodingSize));
}

void readMp3(const QByteArray &bytes, IndexEntry &entry)
{
    entry.kind = static_cast<quint8>(IndexFormat::Kind::Mp3);
    if (!bytes.startsWith(Id3Format::tagMagic))
        return;
    entry.title = id3Text(bytes, Id3Format::Frame::Title);
    entry.artist = id3Text(bytes, Id3Format::Frame::Artist);
    entry.genre = id3Text(bytes, Id3Format::Frame::Genre);
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
     * byte passed over. */
    explicit MidiWalk(const QByteArray &bytes)
    {
        int at = midiEventsOffset;
        while (at + MidiFormat::payloadOffset <= bytes.size() && !isComplete()) {
            const int size = Bytes::byteAt(bytes, at + MidiFormat::lengthOffset);
            const bool inside = Bytes::holds(bytes, at + MidiFormat::payloadOffset, size);
            if (bytes.at(at) == MidiFormat::metaStatus && inside
                && take(Bytes::byteAt(bytes, at + MidiFormat::typeOffset),
                        bytes.mid(at + MidiFormat::payloadOffset, size)))
                at += MidiFormat::payloadOffset + size;
            else
                ++at;
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
    bool take(quint8 type, const QByteArray &payload)
    {
        if (type == static_cast<quint8>(MidiFormat::Meta::TrackName))
            takeText(m_title, m_hasTitle, payload);
        else if (type == static_cast<quint8>(MidiFormat::Meta::SongInfo))
            takeSongInfo(Bytes::byteAt(payload, 0), payload.mid(MidiFormat::subTypeSize));
        else if (type == MidiFormat::setTempoMeta)
            takeTempo(payload);
        else if (type == MidiFormat::markerMeta)
            m_hasMarkers = true;
        else
            return false;
        return true;
    }

    void takeSongInfo(quint8 subType, const QByteArray &payload)
    {
        if (subType == static_cast<quint8>(MidiFormat::SubType::Genre))
            takeText(m_genre, m_hasGenre, payload);
        else if (subType == static_cast<quint8>(MidiFormat::SubType::Artist))
            takeText(m_artist, m_hasArtist, payload);
    }

    static void takeText(QString &text, bool &taken, const QByteArray &payload)
    {
        if (!taken)
            text = Bytes::text(payload);
        taken = true;
    }

    void takeTempo(const QByteArray &payload)
    {
        if (m_hasTempo || payload.size() != tempoSize)
            return;
        const auto microseconds = Bytes::bigEndianAt<quint32>(QByteArray(1, '\0') + payload, 0);
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

QString tidied(const QString &text, const QString &fallback)
{
    const QString trimmed = text.trimmed();
    return (trimmed.isEmpty() ? fallback : trimmed).toUpper().trimmed();
}

} // namespace

void SongReader::read(IndexEntry &entry)
{
    qDebug() << entry.absolutePath;
    const QFileInfo file(entry.absolutePath);
    entry.title = entry.artist = entry.genre = QString();
    entry.kind = entry.tempo = entry.reserved = entry.markers = 0;

    bool opened = false;
    const QByteArray bytes = firstBytes(entry.absolutePath, opened);
    MfxHeader mfx;
    if (!opened)
        entry.tempo = tempoOfUnknown;
    else if (bytes.size() < fewestBytes)
        ; // the defaults
    else if (file.suffix().compare(QLatin1String("mp3"), Qt::CaseInsensitive) == 0)
        readMp3(bytes, entry);
    else if (mfx.parse(bytes))
        readMfx(mfx, entry);
    else if (bytes.startsWith(MidiFormat::fileMagic))
        MidiWalk(bytes).fill(entry);
    else
        entry.tempo = tempoOfUnknown;

    const QString unknown = QLatin1String(IndexFormat::unknownText);
    entry.title = tidied(entry.title, file.completeBaseName());
    entry.artist = tidied(entry.artist, unknown);
    entry.genre = tidied(entry.genre, unknown);
}
