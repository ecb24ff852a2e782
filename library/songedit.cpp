#include "library/songedit.h"

#include "library/workflowlog.h"

#include <QDebug>

namespace tarvel4 {

Outcome SongEdit::load(const QString &path)
{
    const Outcome outcome = m_song.load(path);
    if (outcome)
        m_before = m_song.info();
    return outcome;
}

Outcome SongEdit::addMarkers(const QVector<Marker> &markers)
{
    for (auto marker = markers.crbegin(); marker != markers.crend(); ++marker) {
        if (m_song.song().addMarker(marker->text, marker->bar) == 0)
            return {Outcome::Code::NoMarkers, m_song.path(), {}, QStringLiteral("markers")};
    }
    return {};
}

void SongEdit::save(const SongInfo &edited, SaveRun &run, SongObserver tell)
{
    m_song.song().setSongInfo(edited, WrittenBy::User);
    qDebug() << "Saving to file: " << m_song.path();
    SongOutcome outcome;
    outcome.path = m_song.path();
    outcome.result = SongResult::Edited;
    outcome.before = m_before;
    outcome.after = m_song.info();
    run.save(m_song, [outcome, &disk = m_disk, tell = std::move(tell)](const Outcome &cause) {
        qDebug() << (cause ? "Ok" : "Error!");
        tell(cause ? outcome : failureOf(disk, outcome, SongResult::Failed, cause));
    });
}

SongOutcome SongEdit::failure(SongResult result, const Outcome &cause) const
{
    SongOutcome outcome;
    outcome.path = m_song.path();
    outcome.before = m_before;
    return failureOf(m_disk, outcome, result, cause);
}

SongOutcome SongEdit::failureOf(Disk &disk, SongOutcome outcome, SongResult result,
                                const Outcome &cause)
{
    outcome.result = result;
    outcome.cause = cause;
    LoadedSong now(disk);
    const bool isReadable = result == SongResult::Failed && now.load(outcome.path);
    outcome.after = isReadable ? now.info() : outcome.before;
    WorkflowLog::refused("[EDIT]", outcome);
    return outcome;
}

} // namespace tarvel4
