#pragma once

#include "storage/outcome.h"

#include <QVector>

namespace tarvel4 {

class Song;
struct SongInfo;

/** What is to be known of one field of an edited record before it is saved. */
struct FieldNote
{
    /** In the order of their weight. */
    enum class Grade {
        Refused, ///< the save would write nothing
        Misread, ///< other programs would no longer read the song
        Garbled, ///< a player would show other letters
        Cut, ///< only the beginning is kept
        NearLimit, ///< all is well, but few more characters fit
    };

    Grade grade = Grade::NearLimit;
    QString field; ///< the key in a song's record: "title" ...; empty: the song as a whole
    QString text; ///< the translated sentence
};

/** Tells beforehand what an edit would do, by doing it to a trial in memory: what is refused here
 * is refused by a save, and what is garbled here is what a reader would get. */
namespace FieldCheck {

/** At most one note for each text, its gravest; in the order of the fields. */
QVector<FieldNote> ofEdit(const Song &song, const SongInfo &edited);

} // namespace FieldCheck

} // namespace tarvel4
