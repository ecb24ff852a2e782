#pragma once

#include "songs/songinfo.h"
#include "storage/filechange.h"
#include "storage/outcome.h"

#include <QByteArray>

#include <memory>

namespace tarvel4 {

/** The fields of a song that an edit or an update writes. */
enum class SongField { Markers, Key, Length, Title, Author, Bpm, Artist, Genre };

/** The key of a field in a song's record: "title" ... */
QString keyOf(SongField field);

/** How much of a text a song can take; 0 where there is no such limit. */
struct TextLimits
{
    int characters = 0; ///< what is beyond is cut off
    int bytes = 0; ///< of its UTF-8; with more, other programs take the song for damaged
};

/** One song in memory, wherever its format keeps its fields; MetaSong picks the implementation. */
class Song
{
public:
    virtual ~Song() = default;

    /** The same song with the same changes, to try others on. */
    virtual std::unique_ptr<Song> clone() const = 0;

    /** One to try edits of the fields on instead: its texts after an edit, and whether it is
     * savable then, are those of this one. It need not hold the music, and is never saved. */
    virtual std::unique_ptr<Song> trial() const { return clone(); }

    /** A MetaSong::Format. */
    virtual int format() const = 0;

    /** Fills the fields that the format has; the others stay as they are. */
    virtual void readInto(SongInfo &info) const = 0;
    /** Title, author, artist or genre as a reader gets it; empty for the other fields. */
    virtual QString textIn(SongField field) const = 0;
    QString artist() const { return textIn(SongField::Artist); }

    /** True when an update may write the field as one that is missing; false where the format has
     * no such field. */
    virtual bool lacks(SongField field) const = 0;
    /** Writes one field of a record into the song in memory. */
    virtual void write(SongField field, const SongInfo &info) = 0;

    virtual TextLimits limitsOf(SongField) const { return {}; }

    /** Puts a marker ahead of those present. Returns the bytes inserted; 0 when the format has
     * none. */
    virtual int addMarker(const Marker &) { return 0; }

    /** Whether an update gives a song that has a title this one in its place. */
    virtual bool yieldsTitleTo(const QString &) const { return false; }
    /** Whether an update writes the bpm only of a song that the maker published. */
    virtual bool bpmNeedsPublisher() const { return true; }
    /** What a format notes besides the fields, in an edit and in an update. */
    virtual void noteChange(const SongInfo &) {}

    /** Why the song as it is in memory can't be written; what could not be read again is not
     * written either. */
    virtual Outcome whyNotSavable() const = 0;
    /** What a savable song does to the file that it was loaded from. */
    virtual FileChange change() const = 0;

    /** The SMF bytes of a MIDI song, or those expanded from an MFx song; empty for MP3. */
    virtual QByteArray midiData() const { return {}; }
};

} // namespace tarvel4
