#pragma once

#include "library/songpath.h"
#include "songs/songinfo.h"
#include "storage/outcome.h"

#include <QVariant>
#include <QVector>

#include <functional>

namespace tarvel4 {

/** How a job ended for one song. */
enum class SongResult {
    Read, ///< imported
    Updated, ///< from the catalogue; in a dry run: would be
    Edited,
    Restored, ///< has earlier bytes again; in a dry run: would
    Copied,
    Kept, ///< not copied, as the user chose
    NotFound, ///< not in the catalogue: an answer, no failure
    Refused, ///< not published by the maker, and not to be changed: an answer, no failure
    Unreadable,
    Failed,
};

/** A field that an update changes. */
struct FieldChange
{
    QString field; ///< its key in a song's record: "title", "markers", "mfxFlags" ...
    QVariant before; ///< a text or a number; markers are a list of maps with "bar" and "text"
    QVariant after; ///< as it would be read back from the file
};

/** What a job did with one song. */
struct SongOutcome
{
    QString path; ///< as the job was given it
    SongResult result = SongResult::Failed;
    Outcome cause; ///< of Unreadable and Failed; done for all others
    SongInfo before; ///< as read; empty where the job reads no record
    SongInfo after; ///< as the file holds it afterwards, or in a dry run would
    QString matchedBy; ///< such as "FILENAME: 12ANNI"; empty where the catalogue was not asked
    QVector<FieldChange> changes;

    bool isFailure() const
    {
        return result == SongResult::Unreadable || result == SongResult::Failed;
    }
    /** In the catalogue, which adds nothing. */
    bool isComplete() const { return result == SongResult::Updated && changes.isEmpty(); }

    /** The cause; ahead of it the name of the companion where that is the file that failed. */
    QString sentence() const;
    /** A failure as a line of a message's details: "name: cause". */
    QString problem() const;
};

/** Told of each song as soon as its job is done with it, in the order of the job's paths. */
using SongObserver = std::function<void(const SongOutcome &)>;

} // namespace tarvel4
