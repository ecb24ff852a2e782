#pragma once

#include "songs/lzhufftree.h"

#include <QtGlobal>

#include <array>

/** Finds the longest earlier occurrence of the bytes ahead: the ring buffer with a binary search
 * tree over it. */
class LzHuffMatcher
{
public:
    LzHuffMatcher() { reset(); }

    /** Empties the tree and fills the ring as both directions of the codec begin. */
    void reset();

    quint8 byteAt(int position) const { return m_ring[position]; }
    void setByte(int position, quint8 byte);

    /** Enters the string at \a position into the tree and finds its best match, see length() and
     * distance(). */
    void insert(int position);
    void remove(int position);

    int length() const { return m_length; }
    /** Bytes between the position and its match, less one; 0..4095. Of equally long matches the
     * nearest. */
    int distance() const { return m_distance; }

private:
    static constexpr int none = LzHuffFormat::ringSize;
    static constexpr int firstRoot = LzHuffFormat::ringSize + 1; ///< one root for each first byte

    void replace(int oldNode, int position);
    void hang(int node, int oldNode);

    // The look-ahead may run past the end of the ring: its first bytes stand there again.
    std::array<quint8, LzHuffFormat::ringSize + LzHuffFormat::longestMatch - 1> m_ring;
    std::array<quint16, LzHuffFormat::ringSize + 1> m_left;
    std::array<quint16, firstRoot + 256> m_right; ///< the roots keep their trees here
    std::array<quint16, LzHuffFormat::ringSize + 1> m_parent;
    int m_length = 0;
    int m_distance = 0;
};
