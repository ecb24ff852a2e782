#include "songs/mfx/lzhuffmatcher.h"

#include <QtAlgorithms>
#include <QtEndian>

#include <algorithm>

namespace tarvel4 {

using namespace LzHuffFormat;

namespace {

constexpr int inWindow(int position)
{
    return position & (windowSize - 1);
}

} // namespace

void LzHuffMatcher::start(const QByteArray &text)
{
    std::fill(m_right.begin() + firstRoot, m_right.end(), static_cast<quint16>(noNode));
    m_parent.fill(noNode);
    m_window.fill(0);
    std::fill_n(m_window.begin(), windowStart, static_cast<uchar>(windowFill));

    m_current = windowStart;
    m_ahead = static_cast<int>(qMin<qint64>(text.size(), longestMatch));
    m_next = text.cbegin() + m_ahead;
    m_end = text.cend();
    std::copy(text.cbegin(), m_next, m_window.begin() + windowStart);

    for (int back = 1; back <= longestMatch; ++back)
        insert(windowStart - back);
    insert(windowStart);
}

LzHuffMatcher::Match LzHuffMatcher::match() const
{
    return {std::min(m_match.length, m_ahead), m_match.position};
}

void LzHuffMatcher::advance(int count)
{
    for (int i = 0; i < count; ++i) {
        // The byte behind the look-ahead: the oldest one, whose string goes when it is written
        // over.
        const int oldest = inWindow(m_current + longestMatch);
        remove(oldest);
        if (m_next != m_end) {
            m_window[oldest] = uchar(*m_next++);
            if (oldest < longestMatch - 1)
                m_window[windowSize + oldest] = m_window[oldest];
        } else {
            --m_ahead;
        }
        m_current = inWindow(m_current + 1);
        if (m_ahead > 0)
            insert(m_current);
    }
}

/** Adds the string at \a node to its tree, and remembers the best match met on the way down. */
void LzHuffMatcher::insert(int node)
{
    m_match = {};
    m_left[node] = m_right[node] = noNode;

    int parent = firstRoot + m_window[node];
    bool greater = true;
    for (;;) {
        quint16 &child = greater ? m_right[parent] : m_left[parent];
        if (child == noNode) {
            child = static_cast<quint16>(node);
            m_parent[node] = static_cast<quint16>(parent);
            return;
        }
        const int candidate = child;
        const int length = commonLength(node, candidate);
        consider(candidate, length);
        if (length == longestMatch) {
            giveLinks(candidate, node);
            putInPlaceOf(candidate, node);
            return;
        }
        greater = m_window[node + length] > m_window[candidate + length];
        parent = candidate;
    }
}

void LzHuffMatcher::consider(int candidate, int length)
{
    if (length < shortestMatch || length < m_match.length)
        return;
    const int position = inWindow(m_current - candidate) - 1;
    if (length > m_match.length || position < m_match.position)
        m_match = {length, position};
}

/** The length of what two strings have in common; strings of one tree share their first byte. */
int LzHuffMatcher::commonLength(int node, int candidate) const
{
    // Eight bytes at a time, the last eight overlapping those before: most of the time goes here.
    constexpr int step = sizeof(quint64);
    constexpr int last = longestMatch - step;
    const auto eightAt = [this](int at) { return qFromLittleEndian<quint64>(&m_window[at]); };
    for (int at = 1;; at = std::min(at + step, last)) {
        const quint64 difference = eightAt(node + at) ^ eightAt(candidate + at);
        if (difference != 0)
            return at + static_cast<int>(qCountTrailingZeroBits(difference)) / 8;
        if (at == last)
            return longestMatch;
    }
}

void LzHuffMatcher::remove(int node)
{
    if (m_parent[node] == noNode)
        return;
    putInPlaceOf(node, substituteFor(node));
}

/** Takes the node that can stand in for \a node out of the tree below it, noNode when none is. */
int LzHuffMatcher::substituteFor(int node)
{
    if (m_right[node] == noNode)
        return m_left[node];
    if (m_left[node] == noNode)
        return m_right[node];

    int substitute = m_left[node];
    while (m_right[substitute] != noNode)
        substitute = m_right[substitute];
    if (substitute != m_left[node]) {
        putInPlaceOf(substitute, m_left[substitute]);
        giveLinks(node, substitute);
    } else {
        m_right[substitute] = m_right[node];
        m_parent[m_right[node]] = static_cast<quint16>(substitute);
    }
    return substitute;
}

/** Hands the children of \a from over to \a to. */
void LzHuffMatcher::giveLinks(int from, int to)
{
    m_left[to] = m_left[from];
    m_right[to] = m_right[from];
    m_parent[m_left[to]] = static_cast<quint16>(to);
    m_parent[m_right[to]] = static_cast<quint16>(to);
}

/** Hangs \a substitute where \a node hangs, and takes \a node out. */
void LzHuffMatcher::putInPlaceOf(int node, int substitute)
{
    const int parent = m_parent[node];
    if (m_right[parent] == node)
        m_right[parent] = static_cast<quint16>(substitute);
    else
        m_left[parent] = static_cast<quint16>(substitute);
    m_parent[substitute] = static_cast<quint16>(parent);
    m_parent[node] = noNode;
}

} // namespace tarvel4
