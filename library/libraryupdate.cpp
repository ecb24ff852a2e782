#include "library/libraryupdate.h"

#include "db/database.h"
#include "db/usersongsreltablemodel.h"
#include "library/workflowlog.h"
#include "storage/debuglog.h"

#include <QDebug>

namespace tarvel4 {

LibraryUpdate::LibraryUpdate(Database &db, UserSongsRelTableModel &model, WorkflowHost &host,
                             UnpublishedPolicy unpublished, Disk &disk)
    : m_db(db)
    , m_model(model)
    , m_host(host)
    , m_disk(disk)
    , m_askThisRun(unpublished.ask)
    , m_answerForAll(unpublished.answerForAll)
{}

bool LibraryUpdate::updateUserLibrary(const std::function<bool()> &backup)
{
    WorkflowLog::title("UPDATE USER LIBRARY");
    m_failures.clear();
    const int rows = m_model.totalRows();
    if (rows < 1) {
        qDebug() << "[UPDATE] WARNING: Empty table. Aborting update !!!";
        return false;
    }
    if (!m_dryRun && !backup())
        return false;

    m_host.beginProgress(
        {tr("Aggiornamento file"), tr("Aggiorno la libreria..."), tr("Interrompi")}, rows);
    const bool complete = updateRows(rows);
    m_host.endProgress();
    WorkflowLog::failures("[UPDATE]", m_failures);
    return complete;
}

bool LibraryUpdate::updateRows(int rows)
{
    for (int row = 0; row < rows; ++row) {
        if (m_host.wasCancelled())
            return false;
        updateRow(row);
        m_host.setProgress(row + 1);
        WorkflowLog::songEnd();
        qDebug() << "";
        m_host.processPendingEvents();
    }
    return true;
}

void LibraryUpdate::updateRow(int row)
{
    qCDebug(debugLog) << "[UPDATE] rowIdx: " << row;
    qCDebug(debugLog) << "[UPDATE] updating file: " << m_model.fileNameOf(row);
    SongUpdate song(m_disk);
    const UpdateOutcome outcome = syncRow(row, song);
    if (outcome == UpdateOutcome::Unreadable || outcome == UpdateOutcome::Failed)
        m_failures.append(song.path());
    if (!m_dryRun)
        m_model.setStatus(row,
                          outcome == UpdateOutcome::Updated ? UserSongsRelTableModel::Updated
                                                            : UserSongsRelTableModel::Failed);
    if (m_observer)
        m_observer(row, outcome, song);
}

UpdateOutcome LibraryUpdate::syncRow(int row, SongUpdate &song)
{
    if (!song.load(m_model.fileNameOf(row), m_model.shortNameOf(row))) {
        qDebug() << "[UPDATE] WARNING: can't be read:" << song.path();
        return UpdateOutcome::Unreadable;
    }
    if (!song.isPublisher() && !mayChange(song))
        return UpdateOutcome::Refused;
    if (!song.match(m_db))
        return UpdateOutcome::NotFound;
    if (!song.prepare())
        return UpdateOutcome::Failed;
    if (m_dryRun)
        return UpdateOutcome::Updated;
    if (!song.perform())
        return UpdateOutcome::Failed;
    m_model.updateSong(row, song.after());
    return UpdateOutcome::Updated;
}

bool LibraryUpdate::mayChange(const SongUpdate &song)
{
    if (!m_askThisRun)
        return m_answerForAll;
    const Answer answer = m_host.askNotPublished(song.before().shortname);
    const bool accepted = answer == Answer::Yes || answer == Answer::YesToAll;
    if (answer == Answer::YesToAll || answer == Answer::NoToAll) {
        m_askThisRun = false;
        m_answerForAll = accepted;
    }
    return accepted;
}

} // namespace tarvel4
