#include "cli/copyreport.h"
#include "cli/songrecord.h"
#include "cli/texts.h"

namespace tarvel4 {

SongObserver CopyReport::observer()
{
    return [this](const SongOutcome &song) { add(song); };
}

void CopyReport::add(const SongOutcome &song)
{
    const QString &given = m_paths.songs().at(m_next++).given;
    if (!song.isFailure())
        return sayDone(m_session, given,
                       song.result == SongResult::Kept ? Cli::tr("esiste già, non copiata")
                                                       : Cli::tr("copiata"));
    m_session.host.say(given + QLatin1String(": ") + song.sentence());
    sayDetail(m_session, given, song.cause);
    if (m_records == Records::None)
        return;
    Record record = m_session.records.begin();
    record.addText("path", given);
    addFailure(record, song.cause, song.sentence());
    m_session.records.write(record);
}

} // namespace tarvel4
