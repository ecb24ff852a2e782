#pragma once

#include "songs/mfx/bitreader.h"
#include "songs/mfx/bitwriter.h"
#include "songs/mfx/lzhuffformat.h"

#include <array>

namespace tarvel4 {

/**
 * The adaptive Huffman tree that codes the bytes and match lengths of an LzHuff stream.
 *
 * Encoder and decoder start with the same tree and change it in the same way after each symbol, so
 * that it never has to be stored. Nodes are numbered in order of frequency, the root last, and the
 * two children of a node are neighbours; docs/formats.md, LzHuff stream.
 */
class LzHuffTree
{
public:
    LzHuffTree() { reset(); }

    /** Makes every symbol equally likely, as at the start of a stream. */
    void reset();

    /** Writes the code of \a symbol, then counts it. */
    void encode(int symbol, BitWriter &bits);

    /** Reads one symbol, then counts it. Any bits lead to a symbol. */
    int decode(BitReader &bits);

private:
    void count(int symbol);
    void rebuild();

    // These run several times a symbol: as calls they took a fifth of the time.
    int moveUp(int node);
    int lastOf(quint16 frequency, int node) const;
    void adoptChildren(int node);

    // required: room for trees of up to 1278 symbols, although this code has only 283
    static constexpr std::size_t symbolRoom = 1278;
    static constexpr std::size_t nodeRoom = 2 * symbolRoom - 1;

    /// Frequencies compared at once: rare symbols stand in long rows of one frequency.
    static constexpr int searchStep = 4;

    std::array<quint16, nodeRoom + searchStep> m_frequency; // sentinels follow the root
    std::array<quint16, nodeRoom + symbolRoom> m_parent; // of each node, then of each symbol's leaf
    std::array<quint16, nodeRoom> m_child; // the lower child, or nodeCount + symbol in a leaf
};

} // namespace tarvel4
