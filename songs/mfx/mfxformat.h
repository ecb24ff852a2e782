#pragma once

#include <QtGlobal>

namespace tarvel4 {

/** The names of an MFx header's bytes, all numbers little-endian; docs/formats.md, MFx container.
 */
namespace MfxFormat {

constexpr int magicWidth = 4;

/** One way of beginning an MFx file. */
struct Variant
{
    const char *magic;
    int version;
    int headerSize; ///< bytes before the stream
};

constexpr Variant variants[] = {{"_MF3", 3, 512}, {"_MF4", 4, 512}, {"_MF5", 5, 1024}};

constexpr int totalSizeOffset = 4; ///< 32 bits: header and stream, the size of the file in bytes
constexpr int uncompressedSizeOffset = 12; ///< 32 bits: bytes before compression
constexpr int bpmOffset = 38; ///< 16 bits
constexpr int flagsOffset = 185; ///< 8 bits

constexpr quint8 hasMarkersFlag = 0x01;

constexpr int minBpm = 1; ///< a bpm outside minBpm..maxBpm counts as absent
constexpr int maxBpm = 499;

/** A text, filled up with zero bytes. */
struct TextField
{
    int offset;
    int width;
};

constexpr TextField longNameField = {42, 13};
constexpr TextField titleField = {122, 32};
constexpr TextField authorField = {186, 32};
constexpr TextField artistField = {218, 32};
constexpr TextField genreField = {250, 32};

} // namespace MfxFormat

} // namespace tarvel4
