#pragma once

#include "songs/mfx/lzhuffformat.h"

#include <QByteArray>

#include <array>

namespace tarvel4 {

/**
 * Finds the longest earlier occurrence of what comes next in a text, for the encoder.
 *
 * The last windowSize bytes lie in a ring. The strings that start at each of its positions are kept
 * in 256 binary search trees, one for each first byte; docs/formats.md, LzHuff stream.
 */
class LzHuffMatcher
{
public:
    struct Match
    {
        int length = 0; ///< at most the bytes left; no match when below shortestMatch
        int position = 0; ///< bytes back from the current one, minus one
    };

    /** Goes to the first byte of \a text, which must outlive the walk. */
    void start(const QByteArray &text);

    /** True when the whole text has been walked over. */
    bool atEnd() const { return m_ahead == 0; }

    /** The byte that comes next. */
    uchar current() const { return m_window[m_current]; }

    /** The longest match of what comes next; of equal ones the nearest. */
    Match match() const;

    /** Walks over the next \a count bytes, no more than are left. */
    void advance(int count);

private:
    void insert(int node);
    void remove(int node);
    void consider(int candidate, int length);
    int commonLength(int node, int candidate) const;
    int substituteFor(int node);
    void giveLinks(int from, int to);
    void putInPlaceOf(int node, int substitute);

    static constexpr int noNode = LzHuffFormat::windowSize;
    static constexpr int firstRoot = LzHuffFormat::windowSize + 1; ///< of strings that begin with 0

    // The ring, and after it a copy of its first bytes: a string never has to be read around its
    // end.
    std::array<uchar, LzHuffFormat::windowSize + LzHuffFormat::longestMatch - 1> m_window;
    std::array<quint16, LzHuffFormat::windowSize + 1> m_left; ///< lesser strings
    std::array<quint16, firstRoot + 256> m_right; ///< greater strings; of a root the whole tree
    std::array<quint16, LzHuffFormat::windowSize + 1> m_parent; ///< noNode: not in a tree

    const char *m_next = nullptr; ///< the first byte that is not in the window yet
    const char *m_end = nullptr;
    int m_current = 0; ///< where in the window the string starts that comes next
    int m_ahead = 0; ///< how many bytes of it the text still has, up to longestMatch
    Match m_match;
};

} // namespace tarvel4
