#pragma once

#include <QString>

namespace tarvel4 {

/** The library that the programs about reading songs measure with. */
namespace SongLibrary {

constexpr char midiFolder[] = "midi";
constexpr char mp3Folder[] = "mp3";
constexpr char mfxFolder[] = "mfx";

struct Counts
{
    int midi;
    int mp3;
    int mfx;
    int leastMp3Frames = 100; //!< of 417 bytes
    int mostMp3Frames = 100;
};

/** Writes that many songs, each kind to its folder below \a folder. */
void make(const QString &folder, const Counts &counts);

} // namespace SongLibrary

} // namespace tarvel4
