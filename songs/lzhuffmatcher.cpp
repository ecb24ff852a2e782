#include "songs/lzhuffmatcher.h"

#include <algorithm>

using namespace LzHuffFormat;

void LzHuffMatcher::reset()
{
    m_ring.fill(0);
    std::fill_n(m_ring.begin(), firstPosition, static_cast<quint8>(ringFill));
    m_left.fill(none);
    m_right.fill(none);
    m_parent.fill(none);
    m_length = 0;
    m_distance = 0;
}

void LzHuffMatcher::setByte(int position, quint8 byte)
{
    m_ring[position] = byte;
    if (position < longestMatch - 1)
        m_ring[position + ringSize] = byte;
}

void LzHuffMatcher::insert(int position)
{
    const quint8 *key = m_ring.data() + position;
    m_left[position] = m_right[position] = none;
    m_length = 0;

    int node = firstRoot + key[0];
    int order = 1;
    while (true) {
        quint16 &next = order >= 0 ? m_right[node] : m_left[node];
        if (next == none) {
            next = static_cast<quint16>(position);
            m_parent[position] = static_cast<quint16>(node);
            return;
        }
        node = next;

        const quint8 *candidate = m_ring.data() + node;
        const auto differs = std::mismatch(key + 1, key + longestMatch, candidate + 1);
        const int length = static_cast<int>(differs.first - key);
        order = length < longestMatch ? *differs.first - *differs.second : 0;
        if (length <= threshold)
            continue;
        const int distance = ((position - node) & (ringSize - 1)) - 1;
        if (length > m_length || (length == m_length && distance < m_distance)) {
            m_length = length;
            m_distance = distance;
        }
        if (length == longestMatch)
            break;
    }
    replace(node, position);
}

/** The new string takes the place of an old one that it equals in full length. */
void LzHuffMatcher::replace(int oldNode, int position)
{
    m_left[position] = m_left[oldNode];
    m_right[position] = m_right[oldNode];
    m_parent[m_left[oldNode]] = static_cast<quint16>(position);
    m_parent[m_right[oldNode]] = static_cast<quint16>(position);
    hang(position, oldNode);
}

/** Hangs \a node where \a oldNode hangs, which leaves the tree. */
void LzHuffMatcher::hang(int node, int oldNode)
{
    const int parent = m_parent[oldNode];
    m_parent[node] = static_cast<quint16>(parent);
    if (m_right[parent] == oldNode)
        m_right[parent] = static_cast<quint16>(node);
    else
        m_left[parent] = static_cast<quint16>(node);
    m_parent[oldNode] = none;
}

void LzHuffMatcher::remove(int position)
{
    if (m_parent[position] == none)
        return;
    if (m_right[position] == none) {
        hang(m_left[position], position);
        return;
    }
    if (m_left[position] == none) {
        hang(m_right[position], position);
        return;
    }
    // Two children: the largest string below the left one moves up.
    int heir = m_left[position];
    if (m_right[heir] != none) {
        do
            heir = m_right[heir];
        while (m_right[heir] != none);
        m_right[m_parent[heir]] = m_left[heir];
        m_parent[m_left[heir]] = m_parent[heir];
        m_left[heir] = m_left[position];
        m_parent[m_left[position]] = static_cast<quint16>(heir);
    }
    m_right[heir] = m_right[position];
    m_parent[m_right[position]] = static_cast<quint16>(heir);
    hang(heir, position);
}
