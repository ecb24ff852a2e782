#include "library/editjob.h"

#include "library/songedit.h"

namespace tarvel4 {

SongChange ApplyToAll::changeFrom(const SongInfo &edited) const
{
    const ApplyToAll fields = *this;
    return {[fields, edited](SongInfo info) {
                if (fields.author)
                    info.author = edited.author;
                if (fields.artist)
                    info.artist = edited.artist;
                if (fields.genre)
                    info.genre = edited.genre;
                if (fields.title)
                    info.title = SongEdit::titleFromPath(info.filename); // required
                return info;
            },
            {}};
}

void EditSummary::add(const SongOutcome &song)
{
    if (song.isFailure()) {
        unsaved += song.path;
        problems += song.problem();
    } else {
        ++edited;
    }
}

EditSummary EditJob::run(const QStringList &paths, const SongChange &change,
                         const SongObserver &observer, int leftOut)
{
    EditSummary summary;
    m_progress.beginProgress(
        {tr("Aggiornamento file"), tr("Aggiorno la libreria..."), tr("Interrompi")}, paths.size());
    for (int i = 0; i < paths.size() && !m_progress.wasCancelled(); ++i) {
        if (i == leftOut)
            continue;
        const SongOutcome song = edit(paths.at(i), change);
        summary.add(song);
        observer(song);
        m_progress.setProgress(i + 1);
        m_progress.processPendingEvents();
    }
    m_progress.endProgress();
    return summary;
}

SongOutcome EditJob::edit(const QString &path, const SongChange &change)
{
    SongEdit song(m_disk);
    Outcome outcome = song.load(path);
    if (!outcome)
        return song.failure(SongResult::Unreadable, outcome);
    outcome = song.addMarkers(change.markers);
    if (!outcome)
        return song.failure(SongResult::Failed, outcome);
    return song.save(change.record(song.info()));
}

} // namespace tarvel4
