#include "songs/fieldrules.h"

#include "songs/song.h"

namespace tarvel4 {

namespace {

// The order in which the fields are written is that of their events in a MIDI song, backwards.
constexpr SongField editedFields[] = {SongField::Key,    SongField::Length, SongField::Title,
                                      SongField::Author, SongField::Bpm,    SongField::Artist,
                                      SongField::Genre};
constexpr SongField updatedFields[] = {SongField::Markers, SongField::Key,    SongField::Length,
                                       SongField::Title,   SongField::Author, SongField::Bpm,
                                       SongField::Artist,  SongField::Genre};

/** Whether an update writes the field of a song as it is by then. */
bool isUpdated(const Song &song, SongField field, const SongInfo &info)
{
    switch (field) {
    case SongField::Key:
        return song.lacks(field) && info.isPublisher;
    case SongField::Length:
        return song.lacks(field) && info.length >= 0 && info.isPublisher;
    case SongField::Title:
        return song.lacks(field) || song.yieldsTitleTo(info.title);
    case SongField::Bpm:
        return song.lacks(field) && info.bpm >= 0
            && (info.isPublisher || !song.bpmNeedsPublisher());
    case SongField::Artist:
        return song.lacks(field) || song.artist() != info.altArtist;
    default:
        return song.lacks(field);
    }
}

/** The artist that an update writes where it writes one. */
QString updatedArtist(const Song &song, const SongInfo &info)
{
    const bool hasOtherName = !info.altArtist.isEmpty();
    // required: one update flips a song from the artist to the other name, the next leaves it
    const bool takesOtherName =
        hasOtherName && (song.lacks(SongField::Artist) || song.artist() == info.artist);
    return takesOtherName ? info.altArtist : info.artist;
}

} // namespace

void FieldRules::applyEdit(Song &song, const SongInfo &info)
{
    for (const SongField field : editedFields)
        song.write(field, info);
    song.noteChange(info);
}

void FieldRules::applyUpdate(Song &song, const SongInfo &info)
{
    SongInfo update = info;
    for (const SongField field : updatedFields) {
        if (!isUpdated(song, field, info))
            continue;
        if (field == SongField::Artist)
            update.artist = updatedArtist(song, info);
        song.write(field, update);
    }
    song.noteChange(info);
}

} // namespace tarvel4
