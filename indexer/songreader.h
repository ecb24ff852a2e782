#pragma once

struct IndexEntry;

/** Reads what the index holds of a song from the first bytes of its file; docs/formats.md, Song
 * reader. */
namespace SongReader {

/**
 * Fills title, artist, genre, kind, tempo and markers of an entry from the file at its
 * absolutePath. It can't fail: a file that can't be read or recognised gets its name as the title.
 */
void read(IndexEntry &entry);

} // namespace SongReader
