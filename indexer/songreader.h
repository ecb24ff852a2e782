#pragma once

namespace tarvel4 {

struct IndexEntry;

/** Reads what the index holds of a song from the first bytes of its file; docs/formats.md, Song
 * reader. */
namespace SongReader {

/**
 * Fills title, artist, genre, kind, tempo and markers of an entry from the file at its
 * absolutePath; one that can't be read or recognised gets its name as the title. False, with the
 * entry as it was: there is no such file any more.
 */
bool read(IndexEntry &entry);

} // namespace SongReader

} // namespace tarvel4
