#include "songs/fieldrules.h"

#include "songs/songfields.h"

namespace tarvel4 {

namespace {

void updateMarkers(SongFields &song, const SongInfo &info)
{
    if (song.lacksMarkers())
        song.setMarkers(info.markers);
}

void updateKey(SongFields &song, const SongInfo &info)
{
    if (song.lacksKey() && info.isPublisher)
        song.setKey(info.key);
}

void updateLength(SongFields &song, const SongInfo &info)
{
    if (song.lacksLength() && info.length >= 0 && info.isPublisher)
        song.setLength(info.length);
}

void updateTitle(SongFields &song, const SongInfo &info)
{
    if (song.lacksTitle() || song.yieldsTitleTo(info.title))
        song.setTitle(info.title);
}

void updateAuthor(SongFields &song, const SongInfo &info)
{
    if (song.lacksAuthor())
        song.setAuthor(info.author);
}

void updateBpm(SongFields &song, const SongInfo &info)
{
    if (song.lacksBpm() && info.bpm >= 0 && (info.isPublisher || !song.bpmNeedsPublisher()))
        song.setBpm(info.bpm);
}

void updateArtist(SongFields &song, const SongInfo &info)
{
    if (song.lacksArtist()) {
        song.setArtist(info.altArtist.isEmpty() ? info.artist : info.altArtist);
        return;
    }
    const QString current = song.artist();
    if (current == info.altArtist)
        return;
    // required: one update flips a song from the artist to the other name, the next leaves it
    const bool flips = !info.altArtist.isEmpty() && current == info.artist;
    song.setArtist(flips ? info.altArtist : info.artist);
}

void updateGenre(SongFields &song, const SongInfo &info)
{
    if (song.lacksGenre())
        song.setGenre(info.genre);
}

} // namespace

void FieldRules::applyEdit(SongFields &song, const SongInfo &info)
{
    song.setKey(info.key);
    song.setLength(info.length);
    song.setTitle(info.title);
    song.setAuthor(info.author);
    song.setBpm(info.bpm);
    song.setArtist(info.artist);
    song.setGenre(info.genre);
    song.noteChange(info);
}

void FieldRules::applyUpdate(SongFields &song, const SongInfo &info)
{
    updateMarkers(song, info);
    updateKey(song, info);
    updateLength(song, info);
    updateTitle(song, info);
    updateAuthor(song, info);
    updateBpm(song, info);
    updateArtist(song, info);
    updateGenre(song, info);
    song.noteChange(info);
}

} // namespace tarvel4
