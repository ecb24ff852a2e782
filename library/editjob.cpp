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
                    info.title = SongPath::baseName(info.filename); // required
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

void EditSummary::add(const EditSummary &later)
{
    edited += later.edited;
    unsaved += later.unsaved;
    problems += later.problems;
}

EditSummary EditJob::run(const QStringList &paths, const SongChange &change,
                         const SongObserver &observer, int leftOut)
{
    EditSummary summary;
    const auto tell = [&](const SongOutcome &song) {
        summary.add(song);
        observer(song);
    };
    m_progress.beginProgress(
        {tr("Aggiornamento file"), tr("Aggiorno la libreria..."), tr("Interrompi")},
        static_cast<int>(paths.size()));
    for (int i = 0; i < paths.size() && !m_progress.wasCancelled(); ++i) {
        if (i == leftOut)
            continue;
        edit(paths.at(i), change, tell);
        m_progress.setProgress(i + 1);
        m_progress.processPendingEvents();
    }
    m_saves.commit();
    m_progress.endProgress();
    return summary;
}

void EditJob::edit(const QString &path, const SongChange &change, const SongObserver &tell)
{
    m_saves.beforeReading(path);
    SongEdit song(m_saves.disk());
    Outcome outcome = song.load(path);
    const SongResult result = outcome ? SongResult::Failed : SongResult::Unreadable;
    if (outcome)
        outcome = song.addMarkers(change.markers);
    if (outcome)
        return song.save(change.record(song.info()), m_saves, tell);
    m_saves.inTurn([tell, failed = song.failure(result, outcome)] { tell(failed); });
}

} // namespace tarvel4
