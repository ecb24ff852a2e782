#pragma once

#include "songs/mfx/bitreader.h"
#include "songs/mfx/bitwriter.h"
#include "songs/mfx/lzhuffformat.h"

#include <array>

namespace tarvel4 {

/** The fixed prefix code of match positions; docs/formats.md, LzHuff stream. */
namespace LzHuffPositions {

constexpr int maxCodeLength = 8;

struct Code
{
    quint8 bits = 0;
    quint8 length = 0;
};

/** The code of every value of the upper six bits: canonical, the short codes first. */
constexpr std::array<Code, LzHuffFormat::highPositionCount> makeCodes()
{
    constexpr std::array<int, maxCodeLength + 1> valuesOfLength = {0, 0, 0, 1, 3, 8, 12, 24, 16};
    std::array<Code, LzHuffFormat::highPositionCount> codes = {};
    int value = 0;
    int bits = 0;
    for (int length = 1; length <= maxCodeLength; ++length) {
        bits <<= 1;
        for (int i = 0; i < valuesOfLength[length]; ++i)
            codes[value++] = {static_cast<quint8>(bits++), static_cast<quint8>(length)};
    }
    return codes;
}

constexpr auto codes = makeCodes();

/** The value whose code the next eight bits of a stream begin with. */
constexpr std::array<quint8, 1 << maxCodeLength> makeValues()
{
    std::array<quint8, 1 << maxCodeLength> values = {};
    std::size_t next = 0;
    for (std::size_t value = 0; value < codes.size(); ++value) {
        for (int i = 0; i < 1 << (maxCodeLength - codes[value].length); ++i)
            values[next++] = static_cast<quint8>(value);
    }
    return values;
}

constexpr auto values = makeValues();

static_assert(codes.back().bits == 0xFF && values.back() == codes.size() - 1, "the code is full");

inline void encode(int position, BitWriter &bits)
{
    const Code code = codes[position >> LzHuffFormat::lowPositionBits];
    bits.put(code.bits, code.length);
    bits.put(static_cast<quint32>(position) & ((1U << LzHuffFormat::lowPositionBits) - 1),
             LzHuffFormat::lowPositionBits);
}

inline int decode(BitReader &bits)
{
    bits.refill();
    const std::size_t high = values[bits.peek(maxCodeLength)];
    bits.skip(codes[high].length);
    return static_cast<int>(high) << LzHuffFormat::lowPositionBits
        | bits.take(LzHuffFormat::lowPositionBits);
}

} // namespace LzHuffPositions

} // namespace tarvel4
