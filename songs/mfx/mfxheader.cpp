#include "songs/mfx/mfxheader.h"

#include "songs/bytes.h"

#include <QtEndian>

#include <algorithm>

namespace tarvel4 {

using namespace MfxFormat;

namespace {

template <typename Number> Number numberAt(const QByteArray &header, int offset)
{
    if (header.size() - offset < static_cast<int>(sizeof(Number)))
        return 0;
    return qFromLittleEndian<Number>(header.constData() + offset);
}

template <typename Number> void setNumberAt(QByteArray &header, int offset, Number number)
{
    constexpr int width = sizeof(Number);
    if (header.size() - offset < width)
        return;
    char raw[width];
    qToLittleEndian(number, raw);
    header.replace(offset, width, raw, width);
}

} // namespace

bool MfxHeader::parse(const QByteArray &bytes)
{
    *this = MfxHeader();
    const auto variant =
        std::find_if(std::begin(variants), std::end(variants),
                     [&](const Variant &candidate) { return bytes.startsWith(candidate.magic); });
    if (variant == std::end(variants) || bytes.size() < variant->headerSize)
        return false;
    m_header = bytes;
    m_version = variant->version;
    return true;
}

int MfxHeader::sizeOf(int version)
{
    const auto variant =
        std::find_if(std::begin(variants), std::end(variants),
                     [&](const Variant &candidate) { return candidate.version == version; });
    return variant == std::end(variants) ? 0 : variant->headerSize;
}

int MfxHeader::bpm() const
{
    return numberAt<quint16>(m_header, bpmOffset);
}

bool MfxHeader::hasBpm() const
{
    return bpm() >= minBpm && bpm() <= maxBpm;
}

quint8 MfxHeader::flags() const
{
    return numberAt<quint8>(m_header, flagsOffset);
}

void MfxHeader::setBpm(int bpm)
{
    setNumberAt(m_header, bpmOffset, static_cast<quint16>(bpm));
}

void MfxHeader::setFlag(quint8 bits)
{
    setNumberAt(m_header, flagsOffset, static_cast<quint8>(flags() | bits));
}

void MfxHeader::setTotalSize(quint32 bytes)
{
    setNumberAt(m_header, totalSizeOffset, bytes);
}

void MfxHeader::setUncompressedSize(quint32 bytes)
{
    setNumberAt(m_header, uncompressedSizeOffset, bytes);
}

QString MfxHeader::text(TextField field) const
{
    return Bytes::text(m_header, field.offset, field.width);
}

void MfxHeader::setText(TextField field, const QString &text)
{
    if (m_version == 0)
        return;
    // required: padded as characters, then encoded, so that non-ASCII text lengthens the header
    const QByteArray bytes = text.leftJustified(field.width, QChar(QChar::Null), true).toUtf8();
    m_header.replace(field.offset, field.width, bytes);
}

} // namespace tarvel4
