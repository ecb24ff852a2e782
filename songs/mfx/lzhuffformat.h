#pragma once

#include <QtGlobal>

namespace tarvel4 {

/** The numbers of an LzHuff stream, the same in both directions; docs/formats.md, LzHuff stream. */
namespace LzHuffFormat {

/// The uncompressed size in bytes, unsigned 32-bit little-endian, stands before the coded bits.
constexpr int sizeFieldWidth = 4;
constexpr quint32 maxTextSize = 500000;

constexpr int windowSize = 4096; ///< bytes one can look back; positions are taken modulo this
constexpr int longestMatch = 29;
constexpr int shortestMatch = 3;
constexpr int windowStart = windowSize - longestMatch; ///< where the first byte is written
constexpr char windowFill = ' '; ///< what the window holds before windowStart at first

constexpr int literalCount = 256; ///< symbols 0..255 are bytes, those above are match lengths
constexpr int symbolCount = literalCount + longestMatch - shortestMatch + 1;
constexpr int nodeCount = 2 * symbolCount - 1;
constexpr int rootNode = nodeCount - 1;
constexpr quint16 maxFrequency = 0x8000; ///< the root's; the tree is rebuilt when it gets there

constexpr int lowPositionBits = 6; ///< of a match position, written as they are
constexpr int highPositionCount = windowSize >> lowPositionBits; ///< written with a prefix code

static_assert(symbolCount == 283 && nodeCount == 565 && highPositionCount == 64);

} // namespace LzHuffFormat

} // namespace tarvel4
