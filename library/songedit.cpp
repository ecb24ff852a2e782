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

SongOutcome SongEdit::save(const SongInfo &edited)
{
    m_song.song().setSongInfo(edited, WrittenBy::User);
    qDebug() << "Saving to file: " << m_song.path();
    const Outcome cause = m_song.save();
    qDebug() << (cause ? "Ok" : "Error!");
    if (!cause)
        return failure(SongResult::Failed, cause);
    SongOutcome outcome;
    outcome.path = m_song.path();
    outcome.result = SongResult::Edited;
    outcome.before = m_before;
    outcome.after = m_song.info();
    return outcome;
}

SongOutcome SongEdit::failure(SongResult result, const Outcome &cause) const
{
    SongOutcome outcome;
    outcome.path = m_song.path();
    outcome.result = result;
    outcome.cause = cause;
    outcome.before = m_before;
    LoadedSong now(m_disk);
    const bool isReadable = result == SongResult::Failed && now.load(m_song.path());
    outcome.after = isReadable ? now.info() : m_before;
    WorkflowLog::refused("[EDIT]", outcome);
    return outcome;
}

QString SongEdit::titleFromPath(const QString &path)
{
    return SongPath::baseName(path);
}

} // namespace tarvel4
