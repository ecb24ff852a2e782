#pragma once

namespace tarvel4 {

class SongFields;
struct SongInfo;

/** Which fields of a record go into a song; docs/formats.md, Song formats. */
namespace FieldRules {

/** An edit of the user's: every field but the markers. */
void applyEdit(SongFields &song, const SongInfo &info);

/** An update from the catalogue: mostly what the song lacks. */
void applyUpdate(SongFields &song, const SongInfo &info);

} // namespace FieldRules

} // namespace tarvel4
