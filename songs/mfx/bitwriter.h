#pragma once

#include <QByteArray>

namespace tarvel4 {

/** Appends bits to a byte array, most significant first. */
class BitWriter
{
public:
    explicit BitWriter(QByteArray &bytes)
        : m_bytes(bytes)
    {}

    /** Appends the lowest \a count bits of \a value, 1..32; the bits above them must be zero. */
    void put(quint32 value, int count)
    {
        m_waiting += count;
        m_bits |= static_cast<quint64>(value) << (64 - m_waiting);
        for (; m_waiting >= 8; m_waiting -= 8) {
            m_bytes.append(static_cast<char>(m_bits >> 56));
            m_bits <<= 8;
        }
    }

    /** Fills the last byte up with zero bits. Nothing may be put after it. */
    void finish()
    {
        if (m_waiting > 0)
            m_bytes.append(static_cast<char>(m_bits >> 56));
        m_waiting = 0;
    }

private:
    QByteArray &m_bytes;
    quint64 m_bits = 0; // the bits that do not fill a byte yet, left-justified
    int m_waiting = 0;
};

} // namespace tarvel4
