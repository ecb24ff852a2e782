#pragma once

#include <QtGlobal>

#include <array>

/** What the two directions of the codec share; docs/formats.md, LzHuff stream. */
namespace LzHuffFormat {

constexpr int ringSize = 4096;
constexpr int longestMatch = 29;
constexpr int threshold = 2; ///< a match must be longer to be coded as one
constexpr int literalCount = 256;
constexpr int symbolCount = literalCount + longestMatch - threshold; ///< literals and lengths 3..29
constexpr int firstPosition = ringSize - longestMatch;
constexpr char ringFill = 0x20;
constexpr int sizeFieldWidth = 4; ///< uncompressed size, little-endian
constexpr quint32 largestSize = 500000;

/** A match of n bytes is coded as this symbol plus n. */
constexpr int matchSymbolBase = literalCount - threshold - 1;

constexpr int positionLowBits = 6; ///< bits of a match position that are written as they are

/** The fixed prefix code of the upper six bits of a match position. */
struct PositionCode
{
    struct Code
    {
        quint8 bits; ///< left-justified
        quint8 width; ///< 3..8
    };
    std::array<Code, 64> encode;
    /** By the next eight bits of the stream: the value that they begin with. */
    std::array<quint8, 256> decode;
};
extern const PositionCode positionCode;

} // namespace LzHuffFormat

/** The adaptive Huffman tree: a code for each symbol that grows shorter the more often the symbol
 * occurs. */
class LzHuffTree
{
public:
    LzHuffTree() { reset(); }

    /** Every symbol equally frequent. */
    void reset();

    /** Counts one occurrence of a symbol and restores the order of the tree. */
    void update(int symbol);

    /** Walks from the root by the bits that \a nextBit() delivers (0 or 1); returns the symbol of
     * the leaf. */
    template <typename NextBit> int decode(NextBit nextBit) const
    {
        int child = m_child[root];
        while (child < nodeCount)
            child = m_child[child + nextBit()];
        return child - nodeCount;
    }

    /** The code of a symbol: its lowest \a width bits, the first one highest. At most 32 bits wide.
     */
    quint32 code(int symbol, int &width) const;

private:
    static constexpr int nodeCount = 2 * LzHuffFormat::symbolCount - 1;
    static constexpr int root = nodeCount - 1;
    static constexpr quint16 largestFrequency = 0x8000;
    static constexpr quint16 sentinel = 0xFFFF;

    void rebuild();

    // Nodes stand in order of frequency, never descending; a sentinel stands behind the root.
    std::array<quint16, nodeCount + 1> m_frequency;
    // Of an inner node the lower-numbered child (the other is the next number); of a leaf nodeCount
    // + its symbol.
    std::array<quint16, nodeCount> m_child;
    // Of a node its parent, 0 for the root; from nodeCount on the node of each symbol.
    std::array<quint16, nodeCount + LzHuffFormat::symbolCount> m_parent;
};
