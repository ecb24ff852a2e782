#include "songs/lzhufftree.h"

#include <algorithm>

namespace LzHuffFormat {

namespace {

/** The codes are canonical: each is the one before plus one, shifted left when the width grows. */
PositionCode makePositionCode()
{
    // How many values have a code of 3, 4, 5, 6, 7 and 8 bits.
    constexpr std::array<int, 6> valuesOfWidth{1, 3, 8, 12, 24, 16};
    constexpr int narrowest = 3;

    PositionCode table{};
    std::size_t value = 0;
    std::size_t code = 0; // left-justified in eight bits
    for (std::size_t i = 0; i < valuesOfWidth.size(); ++i) {
        const auto width = static_cast<quint8>(narrowest + i);
        const std::size_t step = 1U << (8 - width);
        for (int n = 0; n < valuesOfWidth[i]; ++n, ++value, code += step) {
            table.encode[value] = {static_cast<quint8>(code), width};
            std::fill_n(table.decode.begin() + code, step, static_cast<quint8>(value));
        }
    }
    return table;
}

} // namespace

const PositionCode positionCode = makePositionCode();

} // namespace LzHuffFormat

using namespace LzHuffFormat;

void LzHuffTree::reset()
{
    for (int symbol = 0; symbol < symbolCount; ++symbol) {
        m_frequency[symbol] = 1;
        m_child[symbol] = static_cast<quint16>(nodeCount + symbol);
        m_parent[nodeCount + symbol] = static_cast<quint16>(symbol);
    }
    for (int node = symbolCount, child = 0; node < nodeCount; ++node, child += 2) {
        m_frequency[node] = static_cast<quint16>(m_frequency[child] + m_frequency[child + 1]);
        m_child[node] = static_cast<quint16>(child);
        m_parent[child] = m_parent[child + 1] = static_cast<quint16>(node);
    }
    m_frequency[nodeCount] = sentinel;
    m_parent[root] = 0;
}

quint32 LzHuffTree::code(int symbol, int &width) const
{
    quint32 bits = 0;
    width = 0;
    for (int node = m_parent[nodeCount + symbol]; node != root; node = m_parent[node]) {
        bits |= static_cast<quint32>(node & 1) << width;
        ++width;
    }
    return bits;
}

void LzHuffTree::update(int symbol)
{
    if (m_frequency[root] == largestFrequency)
        rebuild();

    int node = m_parent[nodeCount + symbol];
    do {
        const quint16 frequency = ++m_frequency[node];
        int other = node + 1;
        if (frequency <= m_frequency[other])
            continue;
        while (frequency > m_frequency[other + 1])
            ++other;
        // The node changes places with the last one that is now less frequent.
        m_frequency[node] = m_frequency[other];
        m_frequency[other] = frequency;
        std::swap(m_child[node], m_child[other]);
        for (const int moved : {node, other}) {
            const int child = m_child[moved];
            m_parent[child] = static_cast<quint16>(moved);
            if (child < nodeCount)
                m_parent[child + 1] = static_cast<quint16>(moved);
        }
        node = other;
    } while ((node = m_parent[node]) != 0);
}

void LzHuffTree::rebuild()
{
    // The leaves move to the front, at half their frequency, rounded up.
    int leaf = 0;
    for (int node = 0; node < nodeCount; ++node) {
        if (m_child[node] < nodeCount)
            continue;
        m_frequency[leaf] = static_cast<quint16>((m_frequency[node] + 1) / 2);
        m_child[leaf] = m_child[node];
        ++leaf;
    }
    // Each inner node joins the next two and is inserted behind the last one that is not more
    // frequent.
    for (int node = symbolCount, child = 0; node < nodeCount; ++node, child += 2) {
        const auto frequency = static_cast<quint16>(m_frequency[child] + m_frequency[child + 1]);
        const auto place =
            std::upper_bound(m_frequency.begin(), m_frequency.begin() + node, frequency);
        const auto index = place - m_frequency.begin();
        std::copy_backward(place, m_frequency.begin() + node, m_frequency.begin() + node + 1);
        std::copy_backward(m_child.begin() + index, m_child.begin() + node,
                           m_child.begin() + node + 1);
        m_frequency[static_cast<std::size_t>(index)] = frequency;
        m_child[static_cast<std::size_t>(index)] = static_cast<quint16>(child);
    }
    for (int node = 0; node < nodeCount; ++node) {
        const int child = m_child[node];
        m_parent[child] = static_cast<quint16>(node);
        if (child < nodeCount)
            m_parent[child + 1] = static_cast<quint16>(node);
    }
}
