#pragma once

#include <QByteArray>

namespace tarvel4 {

/** Hands out the bits of a byte array, most significant first; past its end all bits are zero. */
class BitReader
{
public:
    /** Reads \a bytes, which must outlive the reader, from the offset \a from on. */
    BitReader(const QByteArray &bytes, int from)
        : m_next(bytes.cbegin() + from)
        , m_end(bytes.cend())
    {}

    /** Makes at least 57 bits ready; the functions below take no more than are. */
    void refill()
    {
        for (; m_ready <= 56; m_ready += 8) {
            if (m_next != m_end)
                m_bits |= static_cast<quint64>(uchar(*m_next++)) << (56 - m_ready);
        }
    }

    int takeBit() { return take(1); }

    int take(int count)
    {
        const int value = peek(count);
        skip(count);
        return value;
    }

    /** The next \a count bits, 1..31, without taking them. */
    int peek(int count) const { return static_cast<int>(m_bits >> (64 - count)); }

    void skip(int count)
    {
        m_bits <<= count;
        m_ready -= count;
    }

private:
    const char *m_next;
    const char *m_end;
    quint64 m_bits = 0; // the bits that are ready, left-justified
    int m_ready = 0;
};

} // namespace tarvel4
