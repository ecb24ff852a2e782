#include "songs/lzhuff.h"

#include <QDebug>
#include <QtEndian>

#include <algorithm>

using namespace LzHuffFormat;

namespace {

/** Bits of a stream, most significant first; zeros behind its end. */
class BitReader
{
public:
    BitReader(const char *begin, const char *end)
        : m_next(begin)
        , m_end(end)
    {}

    int bit() { return static_cast<int>(bits(1)); }

    /** 1 to 8 bits as a number. */
    quint32 bits(int count)
    {
        const quint32 value = peek(count);
        m_filled -= count;
        return value;
    }

    quint32 peek(int count)
    {
        while (m_filled < count) {
            const auto byte = m_next < m_end ? static_cast<quint8>(*m_next++) : quint8(0);
            m_buffer = m_buffer << 8 | byte;
            m_filled += 8;
        }
        return m_buffer >> (m_filled - count) & ((1U << count) - 1);
    }

private:
    const char *m_next;
    const char *m_end;
    quint32 m_buffer = 0;
    int m_filled = 0;
};

class BitWriter
{
public:
    explicit BitWriter(QByteArray &output)
        : m_output(output)
    {}

    /** Appends the lowest \a count bits of a value, 32 at most. */
    void write(quint32 value, int count)
    {
        m_buffer = m_buffer << count | value;
        m_filled += count;
        while (m_filled >= 8) {
            m_filled -= 8;
            m_output.append(static_cast<char>(m_buffer >> m_filled & 0xFF));
        }
    }

    /** Pads with zero bits to a whole byte. */
    void flush()
    {
        if (m_filled > 0)
            write(0, 8 - m_filled);
    }

private:
    QByteArray &m_output;
    quint64 m_buffer = 0;
    int m_filled = 0;
};

int decodePosition(BitReader &reader)
{
    const quint8 high = positionCode.decode[reader.peek(8)];
    reader.bits(positionCode.encode[high].width);
    return high << positionLowBits | static_cast<int>(reader.bits(positionLowBits));
}

void encodePosition(BitWriter &writer, int position)
{
    const auto code = positionCode.encode[static_cast<std::size_t>(position >> positionLowBits)];
    writer.write(code.bits >> (8 - code.width), code.width);
    writer.write(static_cast<quint32>(position) & ((1U << positionLowBits) - 1), positionLowBits);
}

quint32 statedSize(const QByteArray &input)
{
    char field[sizeFieldWidth];
    std::fill_n(field, sizeFieldWidth, '\xFF'); // required: a missing byte counts as 0xFF
    std::copy_n(input.constData(), std::min(input.size(), sizeFieldWidth), field);
    return qFromLittleEndian<quint32>(field);
}

void logCorruptStream(quint32 size)
{
    const auto line = "=====================================================================";
    qDebug() << line;
    qDebug() << "WARNING: skipping file, compressed stream corrupted/wrong size !!!";
    qDebug() << "Text size:" << size;
    qDebug() << line;
}

} // namespace

bool LzHuff::expand(const QByteArray &input, QByteArray &output)
{
    output.clear();
    const quint32 size = statedSize(input);
    if (size > largestSize)
        logCorruptStream(size);
    if (size > largestSize || size == 0) {
        qDebug() << "Expand: ERROR";
        return false;
    }

    m_tree.reset();
    std::array<char, ringSize> ring;
    ring.fill(0);
    std::fill_n(ring.begin(), firstPosition, ringFill);
    int writePosition = firstPosition;

    QByteArray bytes(static_cast<int>(size) + longestMatch, Qt::Uninitialized);
    char *next = bytes.data();
    const char *const end = next + size;
    const auto put = [&](char byte) {
        *next++ = byte;
        ring[static_cast<std::size_t>(writePosition)] = byte;
        writePosition = (writePosition + 1) & (ringSize - 1);
    };

    BitReader reader(input.constData() + sizeFieldWidth, input.constData() + input.size());
    const auto nextBit = [&reader] { return reader.bit(); };
    while (next < end) {
        const int symbol = m_tree.decode(nextBit);
        m_tree.update(symbol);
        if (symbol < literalCount) {
            put(static_cast<char>(symbol));
            continue;
        }
        const int source = writePosition - decodePosition(reader) - 1;
        // required: a copy is completed, even past the stated size
        for (int i = 0; i < symbol - matchSymbolBase; ++i)
            put(ring[static_cast<std::size_t>((source + i) & (ringSize - 1))]);
    }
    bytes.truncate(static_cast<int>(next - bytes.constData()));
    output = bytes;
    qDebug() << "Expand:" << input.size() << " -->" << output.size();
    return true;
}

void LzHuff::compress(const QByteArray &input, QByteArray &output)
{
    QByteArray bytes(sizeFieldWidth, '\0');
    qToLittleEndian(static_cast<quint32>(input.size()), bytes.data());
    bytes.reserve(input.size() + sizeFieldWidth);

    m_tree.reset();
    m_matcher.reset();
    const char *next = input.constData();
    const char *const end = next + input.size();
    int read = 0; // where the next byte enters the ring
    int position = firstPosition;
    int ahead = 0; // bytes known from the position on
    while (ahead < longestMatch && next < end)
        m_matcher.setByte(position + ahead++, static_cast<quint8>(*next++));
    for (int back = 1; ahead > 0 && back <= longestMatch; ++back)
        m_matcher.insert(position - back);
    if (ahead > 0)
        m_matcher.insert(position);

    const auto step = [&] {
        m_matcher.remove(read);
        if (next < end)
            m_matcher.setByte(read, static_cast<quint8>(*next++));
        else
            --ahead;
        read = (read + 1) & (ringSize - 1);
        position = (position + 1) & (ringSize - 1);
        if (ahead > 0)
            m_matcher.insert(position);
    };

    BitWriter writer(bytes);
    const auto putSymbol = [&](int symbol) {
        int width = 0;
        const quint32 code = m_tree.code(symbol, width);
        writer.write(code, width);
        m_tree.update(symbol);
    };
    while (ahead > 0) {
        int length = std::min(m_matcher.length(), ahead);
        if (length <= threshold) {
            length = 1;
            putSymbol(m_matcher.byteAt(position));
        } else {
            putSymbol(matchSymbolBase + length);
            encodePosition(writer, m_matcher.distance());
        }
        for (int i = 0; i < length; ++i)
            step();
    }
    writer.flush();
    output = bytes;
    qDebug() << "Compress:" << input.size() << " -->" << output.size();
}
