#include "songs/mfx/lzhufftree.h"

#include <QtAlgorithms>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace tarvel4 {

using namespace LzHuffFormat;

/** Makes \a node the parent of its children, or the leaf of its symbol. */
Q_ALWAYS_INLINE void LzHuffTree::adoptChildren(int node)
{
    const int child = m_child[node];
    // A leaf has one entry, which is written twice: a branch would be guessed wrong too often.
    m_parent[child] = m_parent[child + static_cast<int>(child < nodeCount)] =
        static_cast<quint16>(node);
}

/** The last node of a frequency, of which \a node is one. */
Q_ALWAYS_INLINE int LzHuffTree::lastOf(quint16 frequency, int node) const
{
    constexpr quint64 everyOne = 0x0001000100010001;
    const quint64 same = everyOne * frequency;
    for (int next = node + 1;; next += searchStep) {
        quint64 frequencies;
        static_assert(sizeof(frequencies) == searchStep * sizeof(frequency));
        std::memcpy(&frequencies, &m_frequency[static_cast<std::size_t>(next)],
                    sizeof(frequencies));
        const quint64 difference = frequencies ^ same;
        if (difference != 0)
            return next - 1
                + static_cast<int>(qCountTrailingZeroBits(qFromLittleEndian(difference))) / 16;
    }
}

/** Swaps a node that has become too frequent for its number with the last less frequent one. */
Q_ALWAYS_INLINE int LzHuffTree::moveUp(int node)
{
    const int target = lastOf(static_cast<quint16>(m_frequency[node] - 1), node + 1);
    std::swap(m_frequency[node], m_frequency[target]);
    std::swap(m_child[node], m_child[target]);
    adoptChildren(node);
    adoptChildren(target);
    return target;
}

void LzHuffTree::reset()
{
    for (int symbol = 0; symbol < symbolCount; ++symbol) {
        m_frequency[symbol] = 1;
        m_child[symbol] = static_cast<quint16>(nodeCount + symbol);
    }
    for (int node = symbolCount, child = 0; node < nodeCount; ++node, child += 2) {
        m_frequency[node] = static_cast<quint16>(m_frequency[child] + m_frequency[child + 1]);
        m_child[node] = static_cast<quint16>(child);
    }
    std::fill_n(m_frequency.begin() + nodeCount, searchStep, static_cast<quint16>(0xFFFF));
    for (int node = 0; node < nodeCount; ++node)
        adoptChildren(node);
}

void LzHuffTree::encode(int symbol, BitWriter &bits)
{
    // A child is its parent's lower child plus the bit, and lower children have even numbers: so
    // the bits, the last one first, are the lowest bits of the nodes on the way up.
    quint32 code = 0;
    int length = 0;
    for (int node = m_parent[nodeCount + symbol]; node != rootNode; node = m_parent[node])
        code |= static_cast<quint32>(node & 1) << length++;
    bits.put(code, length);
    count(symbol);
}

int LzHuffTree::decode(BitReader &bits)
{
    // No code is longer than 22 bits: a leaf that deep needs a root frequency above maxFrequency.
    bits.refill();
    int child = m_child[rootNode];
    while (child < nodeCount)
        child = m_child[child + bits.takeBit()];
    const int symbol = child - nodeCount;
    count(symbol);
    return symbol;
}

void LzHuffTree::count(int symbol)
{
    if (m_frequency[rootNode] == maxFrequency)
        rebuild();
    for (int node = m_parent[nodeCount + symbol]; node != rootNode; node = m_parent[node]) {
        ++m_frequency[node];
        if (m_frequency[node] > m_frequency[node + 1])
            node = moveUp(node);
    }
    ++m_frequency[rootNode];
}

/** Halves the frequencies, so that what came lately weighs more, and builds the tree anew. */
void LzHuffTree::rebuild()
{
    int leaves = 0;
    for (int node = 0; node < nodeCount; ++node) {
        if (m_child[node] < nodeCount)
            continue;
        m_frequency[leaves] = static_cast<quint16>((m_frequency[node] + 1) / 2);
        m_child[leaves] = m_child[node];
        ++leaves;
    }
    for (int node = symbolCount, child = 0; node < nodeCount; ++node, child += 2) {
        const auto sum = static_cast<quint16>(m_frequency[child] + m_frequency[child + 1]);
        const auto begin = m_frequency.begin();
        const auto place = std::upper_bound(begin, begin + node, sum);
        std::move_backward(place, begin + node, begin + node + 1);
        *place = sum;
        const auto link = m_child.begin() + (place - begin);
        std::move_backward(link, m_child.begin() + node, m_child.begin() + node + 1);
        *link = quint16(child);
    }
    for (int node = 0; node < nodeCount; ++node)
        adoptChildren(node);
}

} // namespace tarvel4
