#pragma once

namespace tarvel4 {

class Song;
struct SongInfo;

/** Which fields of a record go into a song; docs/formats.md, Song formats. */
namespace FieldRules {

/** An edit of the user's: every field but the markers. */
void applyEdit(Song &song, const SongInfo &info);

/** An update from the catalogue: mostly what the song lacks. */
void applyUpdate(Song &song, const SongInfo &info);

} // namespace FieldRules

} // namespace tarvel4
