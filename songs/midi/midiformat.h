#pragma once

#include <QtGlobal>

namespace tarvel4 {

/** Names of the bytes of a Standard MIDI File; integers are big-endian. docs/formats.md, MIDI
 * metadata. */
namespace MidiFormat {

constexpr char fileMagic[] = "MThd";
constexpr char trackMagic[] = "MTrk";
constexpr int magicSize = 4;

constexpr int formatOffset = 8; ///< 16 bits: 0 or 1; format 2 is not a song
constexpr int chunkLengthOffset = 4; ///< from a chunk's magic; 32 bits
constexpr int chunkHeaderSize = 8;
constexpr int trackLengthOffset = 4; ///< from the "MTrk"; 32 bits, bytes of the track
constexpr int trackHeaderSize = 8;

constexpr char deltaTime = 0x00; ///< of every event that we write
constexpr char metaStatus = '\xFF';

enum class Meta : quint8 {
    Copyright = 0x02,
    TrackName = 0x03,
    SongInfo = 0x4B, ///< the private event; docs/formats.md, Song-info event
    KeySignature = 0x59,
};

// Standard meta events that only the memory's index looks at.
constexpr quint8 markerMeta = 0x06;
constexpr quint8 setTempoMeta = 0x51; ///< microseconds a quarter note, 24 bits

/** The fields that a song-info event can carry. */
enum class SubType : quint8 {
    Genre = 1,
    Artist = 2,
    Author = 3,
    Length = 4, ///< seconds, decimal digits
    Bpm = 5, ///< decimal digits
    Marker = 6, ///< a bar, then a text
};

// From the status byte 0xFF of a meta event.
constexpr int typeOffset = 1;
constexpr int lengthOffset = 2; ///< one byte, never a variable-length quantity
constexpr int payloadOffset = 3;

// Within the payload of a song-info event.
constexpr int subTypeSize = 1;
constexpr int barSize = 2; ///< of a marker, after the sub-type

// A length byte beyond this one is, to those who follow the standard, only the beginning of a
// length.
constexpr int maxPlainLength = 127;

constexpr int maxTextCharacters = 125; ///< of a text that we write, before it becomes UTF-8

} // namespace MidiFormat

} // namespace tarvel4
