#include "songs/id3/id3v2tag.h"

#include "songs/bytes.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

namespace tarvel4 {

using namespace Id3Format;

namespace {

bool isTagged(const QByteArray &bytes)
{
    return bytes.startsWith(tagMagic);
}

/** The size in a tag's header; 0 when it can't be one. */
quint32 sizeIn(const QByteArray &header)
{
    quint32 size = 0;
    for (int i = 0; i < sizeBytes; ++i) {
        const quint8 byte = Bytes::byteAt(header, sizeOffset + i);
        if (byte > maxSizeByte)
            return 0;
        // A byte of 128 reaches into the bits of its neighbour.
        size |= static_cast<quint32>(byte) << (sizeBytes - 1 - i) * sizeBitsPerByte;
    }
    return size;
}

QByteArray emptyTag()
{
    QByteArray header(headerSize, '\0');
    header.replace(0, static_cast<int>(qstrlen(tagMagic)), tagMagic);
    header[static_cast<int>(qstrlen(tagMagic))] = majorVersion;
    return header;
}

/** The index of the frame ID at that place; -1 when none stands there. */
int frameAt(const QByteArray &tag, int at)
{
    if (!Bytes::containsRange(tag, at, frameIdSize))
        return -1;
    const auto id = std::find_if(std::cbegin(frameIds), std::cend(frameIds), [&](const char *name) {
        return std::memcmp(name, tag.constData() + at, frameIdSize) == 0;
    });
    return id == std::cend(frameIds) ? -1 : static_cast<int>(id - std::cbegin(frameIds));
}

/** A decimal number; 0 when the text is none, or a negative one. */
qint64 toNumber(const QString &text)
{
    return std::max<qint64>(0, text.toLongLong());
}

int toInt(qint64 number)
{
    return number <= std::numeric_limits<int>::max() ? static_cast<int>(number) : 0;
}

} // namespace

bool Id3v2Tag::parse(const QByteArray &bytes)
{
    if (bytes.size() < headerSize)
        return false;
    const bool tagged = isTagged(bytes);
    const quint32 size = tagged ? sizeIn(bytes) : 0;
    if (static_cast<quint32>(bytes.size()) < size)
        return false;

    m_tag = tagged ? Bytes::slice(bytes, 0, static_cast<qint64>(size) + headerSize) : emptyTag();
    m_tagSize = size;
    m_audioStart = tagged ? static_cast<qint64>(size) + headerSize : 0;
    findFrames();
    return true;
}

qint64 Id3v2Tag::bytesWanted(const QByteArray &header)
{
    if (!isTagged(header))
        return headerSize;
    return static_cast<qint64>(sizeIn(header)) + headerSize;
}

QString Id3v2Tag::text(TextFrame frame) const
{
    const int start = position(frame);
    if (start < 0)
        return QString();
    const qint64 size = Bytes::bigEndianAt<quint32>(m_tag, start + frameSizeOffset);
    // required: whatever the encoding byte says
    return Bytes::text(m_tag, start + frameHeaderSize + encodingSize, size - encodingSize);
}

int Id3v2Tag::length() const
{
    return toInt(toNumber(text(TextFrame::Length)) / 1000);
}

int Id3v2Tag::bpm() const
{
    return toInt(toNumber(text(TextFrame::Bpm)));
}

bool Id3v2Tag::isPublisher() const
{
    return text(TextFrame::Copyright).toUpper().contains(QLatin1String("K-VARO"));
}

bool Id3v2Tag::hasEditMark() const
{
    return m_tag.indexOf(editMarkId, headerSize) >= 0;
}

void Id3v2Tag::setLength(int seconds)
{
    setText(TextFrame::Length, QString::number(static_cast<qint64>(seconds) * 1000));
}

void Id3v2Tag::setBpm(int bpm)
{
    setText(TextFrame::Bpm, bpm > 0 ? QString::number(bpm) : QString());
}

void Id3v2Tag::addEditMark()
{
    insertFrame(editMarkId, QByteArray(editMarkSize, '\0'));
}

void Id3v2Tag::setText(TextFrame frame, const QString &text)
{
    removeFrame(frame);
    insertFrame(frameId(frame),
                text.toUtf8()); // required: UTF-8 under the encoding byte of Latin-1
}

/** Removes the first frame of that ID; of one that claims more than the tag holds, the rest. */
void Id3v2Tag::removeFrame(TextFrame frame)
{
    const int start = position(frame);
    if (start < 0)
        return;
    const qint64 size = Bytes::bigEndianAt<quint32>(m_tag, start + frameSizeOffset);
    const auto removed =
        static_cast<int>(std::min<qint64>(size + frameHeaderSize, m_tag.size() - start));
    m_tag.remove(start, removed);
    m_tagSize -= static_cast<quint32>(removed);
    tagResized();
}

void Id3v2Tag::insertFrame(const char *id, const QByteArray &payload)
{
    if (payload.isEmpty() || m_tag.size() < headerSize)
        return;
    QByteArray bytes(frameHeaderSize + encodingSize, '\0');
    bytes.replace(0, frameIdSize, id);
    Bytes::putBigEndian(bytes, frameSizeOffset,
                        static_cast<quint32>(payload.size() + encodingSize));
    bytes[frameHeaderSize] = encoding;
    bytes += payload;

    m_tag.insert(headerSize, bytes);
    m_tagSize += static_cast<quint32>(bytes.size());
    tagResized();
}

void Id3v2Tag::tagResized()
{
    constexpr quint32 mask = (1U << sizeBitsPerByte) - 1;
    for (int i = 0; i < sizeBytes; ++i)
        m_tag[sizeOffset + i] =
            static_cast<char>(m_tagSize >> (sizeBytes - 1 - i) * sizeBitsPerByte & mask);
    findFrames();
}

/** One pass finds them all, so that a tag with a large picture is not searched eight times. */
void Id3v2Tag::findFrames()
{
    m_positions.fill(-1);
    for (int at = Bytes::indexOfByte(m_tag, frameLetter, headerSize); at >= 0;
         at = Bytes::indexOfByte(m_tag, frameLetter, at + 1)) {
        const int frame = frameAt(m_tag, at);
        if (frame >= 0 && m_positions[static_cast<std::size_t>(frame)] < 0)
            m_positions[static_cast<std::size_t>(frame)] = at;
    }
}

} // namespace tarvel4
