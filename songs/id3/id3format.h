#pragma once

#include <QtGlobal>

namespace tarvel4 {

/** Names of the bytes of an ID3v2 tag; integers are big-endian. docs/formats.md, ID3v2 tags. */
namespace Id3Format {

constexpr char tagMagic[] = "ID3";
constexpr int headerSize = 10;
constexpr char majorVersion = 3; ///< of a tag that we make; other versions are read all the same

constexpr int sizeOffset = 6; ///< of the body, without the header: 4 bytes of 7 bits
constexpr int sizeBytes = 4;
constexpr int sizeBitsPerByte = 7;
constexpr quint8 maxSizeByte = 128; ///< required: 128 itself passes for a size byte

constexpr int frameIdSize = 4;
constexpr int frameSizeOffset = 4; ///< from the frame's start; 32 bits, counts from the encoding on
constexpr int frameHeaderSize = 10;
constexpr int encodingSize = 1;
constexpr char encoding = 0; ///< of every frame that we write

/** A private frame: the file was edited by this program. */
constexpr char editMarkId[] = "MEDT";
constexpr int editMarkSize = 3; ///< its payload, zero bytes

constexpr int maxSongBytes = 1'000'000; ///< a tag must end within so many bytes of its file

enum class TextFrame {
    Title,
    Artist,
    Author,
    Genre,
    Key,
    Length, ///< milliseconds, decimal digits
    Bpm, ///< decimal digits
    Copyright,
};

constexpr char frameLetter = 'T'; ///< begins every ID

/** The ID of each TextFrame, in the order of the enumeration. */
constexpr const char *frameIds[] = {"TIT2", "TPE1", "TCOM", "TCON", "TKEY", "TLEN", "TBPM", "TCOP"};
constexpr int frameCount = sizeof(frameIds) / sizeof(frameIds[0]);

constexpr const char *frameId(TextFrame frame)
{
    return frameIds[static_cast<int>(frame)];
}

} // namespace Id3Format

} // namespace tarvel4
