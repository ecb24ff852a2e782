#include "songs/midi/rawmidifile.h"

#include "songs/bytes.h"
#include "songs/midi/midikeys.h"

#include <QDebug>

#include <algorithm>

namespace tarvel4 {

using namespace MidiFormat;

namespace {

QByteArray storedText(const QString &text)
{
    // required: UTF-8, although readers take it as Latin-1
    return text.left(maxTextCharacters).toUtf8();
}

Marker markerAt(const QByteArray &data, int event)
{
    const int barOffset = event + payloadOffset + subTypeSize;
    const int textSize = Bytes::byteAt(data, event + lengthOffset) - subTypeSize - barSize;
    return {Bytes::bigEndianAt<quint16>(data, barOffset),
            Bytes::text(data, barOffset + barSize, textSize)};
}

bool isOurs(quint8 type)
{
    switch (Meta(type)) {
    case Meta::Copyright:
    case Meta::TrackName:
    case Meta::SongInfo:
    case Meta::KeySignature:
        return true;
    }
    return false;
}

/** The offsets from \a from on of every byte pair that reads as one of our meta events. */
std::vector<int> eventsIn(const QByteArray &data, int from)
{
    std::vector<int> events;
    for (int at = Bytes::indexOfByte(data, metaStatus, from); at >= 0;
         at = Bytes::indexOfByte(data, metaStatus, at + 1)) {
        if (isOurs(Bytes::byteAt(data, at + typeOffset)))
            events.push_back(at);
    }
    return events;
}

} // namespace

bool RawMidiFile::load(const QByteArray &bytes)
{
    const int track = static_cast<int>(bytes.indexOf(trackMagic));
    if (!bytes.startsWith(fileMagic) || track < 1)
        return false;
    if (!Bytes::containsRange(bytes, formatOffset, sizeof(quint16))
        || !Bytes::containsRange(bytes, track, trackHeaderSize)) {
        return false;
    }
    const auto smfFormat = Bytes::bigEndianAt<quint16>(bytes, formatOffset);
    if (smfFormat > 1)
        return false;

    m_data = bytes;
    m_type = smfFormat + 1;
    m_trackLengthPos = track + trackLengthOffset;
    m_trackStart = track + trackHeaderSize;
    m_trackLength = Bytes::bigEndianAt<quint32>(bytes, m_trackLengthPos);
    m_events = eventsIn(m_data, m_trackStart);
    return true;
}

RawMidiFile RawMidiFile::head() const
{
    RawMidiFile head;
    head.m_data = m_data.left(m_trackStart);
    head.m_trackStart = m_trackStart;
    head.m_trackLengthPos = m_trackLengthPos;
    head.m_type = m_type;
    return head;
}

QVector<Marker> RawMidiFile::markers() const
{
    QVector<Marker> markers;
    int from = m_trackStart;
    for (const int event : m_events) {
        if (event < from || !isSongInfo(event, SubType::Marker))
            continue;
        markers.append(markerAt(m_data, event));
        from = event + payloadOffset + Bytes::byteAt(m_data, event + lengthOffset);
    }
    return markers;
}

QString RawMidiFile::key() const
{
    // required: found also behind the first track's end
    const int event = findMeta(Meta::KeySignature);
    if (event < 0)
        return QString();
    const auto code = Bytes::bigEndianAt<quint16>(m_data, event + payloadOffset);
    const QString name = MidiKeys::nameOf(code);
    if (name.isEmpty()) {
        const QByteArray sharps = QByteArray::number(code >> 8, 16).rightJustified(2, '0');
        const QByteArray mode = QByteArray::number(code & 0xFF, 16).rightJustified(2, '0');
        const QByteArray shown = "[sf=" + sharps + "|mi=" + mode.toUpper() + ']';
        qDebug() << "[RawMidiFile::extractKey] WARNING: unknown key metaevent" << shown.constData()
                 << "in MIDI file.";
    }
    return name;
}

bool RawMidiFile::isPublisher() const
{
    const QString notice = metaText(Meta::Copyright).toUpper();
    return notice.contains(QLatin1String("K-VARO")) || notice.contains(QLatin1String("VELTRANO"));
}

void RawMidiFile::setTrackName(const QString &text)
{
    removeMeta(Meta::TrackName);
    insertEvent(Meta::TrackName, storedText(text));
}

void RawMidiFile::setLength(int seconds)
{
    setSongInfo(SubType::Length, QString::number(seconds));
}

void RawMidiFile::setBpm(int bpm)
{
    setSongInfo(SubType::Bpm, QString::number(bpm));
}

void RawMidiFile::setMarkers(const QVector<Marker> &markers)
{
    removeSongInfo(SubType::Marker);
    std::for_each(markers.crbegin(), markers.crend(),
                  [this](const Marker &marker) { addMarker(marker); });
}

void RawMidiFile::setKey(const QString &name)
{
    removeMeta(Meta::KeySignature);
    if (name.isEmpty())
        return;
    const int code = MidiKeys::codeOf(name);
    if (code < 0) {
        qDebug() << "[RawMidiFile::setKey] WARNING: unknown key:"
                 << QString(name).remove(QLatin1Char(' ')) << ". Metaevent not added !!!";
        return;
    }
    QByteArray payload(sizeof(quint16), '\0');
    Bytes::putBigEndian(payload, 0, static_cast<quint16>(code));
    insertEvent(Meta::KeySignature, payload);
}

int RawMidiFile::addMarker(const Marker &marker)
{
    QByteArray payload(barSize, '\0');
    Bytes::putBigEndian(payload, 0, marker.bar);
    return insertSongInfo(SubType::Marker, payload + storedText(marker.text));
}

QStringList RawMidiFile::keyList()
{
    return MidiKeys::names();
}

bool RawMidiFile::isKnownKey(const QString &name)
{
    return MidiKeys::codeOf(name) >= 0;
}

int RawMidiFile::findMeta(Meta type) const
{
    const auto event = std::find_if(m_events.cbegin(), m_events.cend(), [&](int at) {
        return Bytes::byteAt(m_data, at + typeOffset) == static_cast<quint8>(type);
    });
    return event == m_events.cend() ? -1 : *event;
}

int RawMidiFile::findSongInfo(SubType subType) const
{
    const auto event = std::find_if(m_events.cbegin(), m_events.cend(),
                                    [&](int at) { return isSongInfo(at, subType); });
    return event == m_events.cend() ? -1 : *event;
}

bool RawMidiFile::isSongInfo(int event, SubType subType) const
{
    return Bytes::byteAt(m_data, event + typeOffset) == static_cast<quint8>(Meta::SongInfo)
        && Bytes::byteAt(m_data, event + payloadOffset) == static_cast<quint8>(subType);
}

QString RawMidiFile::metaText(Meta type) const
{
    const int event = findMeta(type);
    if (event < 0)
        return QString();
    const int size = Bytes::byteAt(m_data, event + lengthOffset);
    return Bytes::text(m_data, event + payloadOffset, size);
}

QString RawMidiFile::songInfoText(SubType subType) const
{
    const int event = findSongInfo(subType);
    if (event < 0)
        return QString();
    const int size = Bytes::byteAt(m_data, event + lengthOffset) - subTypeSize;
    return Bytes::text(m_data, event + payloadOffset + subTypeSize, size);
}

int RawMidiFile::songInfoNumber(SubType subType) const
{
    return std::max(0, songInfoText(subType).toInt());
}

void RawMidiFile::setSongInfo(SubType subType, const QString &text)
{
    removeSongInfo(subType);
    insertSongInfo(subType, storedText(text));
}

void RawMidiFile::removeMeta(Meta type)
{
    removeEvents([&](int event) {
        return Bytes::byteAt(m_data, event + typeOffset) == static_cast<quint8>(type);
    });
}

void RawMidiFile::removeSongInfo(SubType subType)
{
    removeEvents([&](int event) { return isSongInfo(event, subType); });
}

/** Removes the wanted events that have a delta-time of zero and begin in the first track, in one
 * pass, and never a byte behind its end. */
template <typename Wanted> void RawMidiFile::removeEvents(Wanted isWanted)
{
    const qint64 trackEnd =
        std::min<qint64>(m_data.size(), static_cast<qint64>(m_trackStart) + m_trackLength);
    QByteArray kept;
    int from = 0;
    int searched = m_trackStart;
    for (const int event : m_events) {
        const int delta = event - 1;
        if (delta >= trackEnd)
            break;
        if (delta < searched || m_data.at(delta) != deltaTime || !isWanted(event))
            continue;
        kept.append(m_data.constData() + from, delta - from);
        const qint64 eventEnd = event + payloadOffset + Bytes::byteAt(m_data, event + lengthOffset);
        from = searched = static_cast<int>(std::min(eventEnd, trackEnd));
    }
    if (from == 0)
        return;
    kept.append(m_data.constData() + from, m_data.size() - from);
    m_trackLength -= static_cast<quint32>(m_data.size() - kept.size());
    m_data = kept;
    trackResized();
}

int RawMidiFile::insertEvent(Meta type, const QByteArray &payload)
{
    if (m_type == 0)
        return 0;
    QByteArray event;
    event.append(deltaTime).append(metaStatus).append(static_cast<char>(type));
    event.append(static_cast<char>(payload.size())); // required: the length byte wraps
    event.append(payload);
    m_data.insert(m_trackStart, event);
    m_trackLength += static_cast<quint32>(event.size());
    trackResized();
    return static_cast<int>(event.size());
}

int RawMidiFile::insertSongInfo(SubType subType, const QByteArray &payload)
{
    return insertEvent(Meta::SongInfo, static_cast<char>(subType) + payload);
}

void RawMidiFile::trackResized()
{
    Bytes::putBigEndian(m_data, m_trackLengthPos, m_trackLength);
    m_events = eventsIn(m_data, m_trackStart);
}

} // namespace tarvel4
