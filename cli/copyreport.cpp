#include "cli/copyreport.h"
#include "cli/songrecord.h"

namespace tarvel4 {

SongObserver CopyReport::observer()
{
    return [this](const SongOutcome &song) { add(song); };
}

void CopyReport::add(const SongOutcome &song)
{
    const QString &given = m_paths.songs().at(m_next++).given;
    if (!song.isFailure())
        return;
    m_session.host.say(given + QLatin1String(": ") + song.sentence());
    if (m_records == Records::None)
        return;
    Record record = m_session.records.begin();
    record.addText("path", given);
    addFailure(record, song.cause, song.sentence());
    m_session.records.write(record);
}

} // namespace tarvel4
