#include "library/roweditor.h"

#include "db/usersongsreltablemodel.h"
#include "library/workflowlog.h"

#include <QDebug>

namespace tarvel4 {

RowEditor::RowEditor(UserSongsRelTableModel &model, WorkflowHost &host, Disk &disk)
    : m_model(model)
    , m_host(host)
    , m_disk(disk)
{}

bool RowEditor::saveRow(SongEdit &song, const SongInfo &info, int row)
{
    const bool saved = song.save(info);
    m_model.updateSong(row, song.info());
    // required: a row counts as edited whatever became of its save
    m_model.setStatus(row, UserSongsRelTableModel::Edited);
    return saved;
}

void RowEditor::applyToOthers(const SongInfo &edited, const ApplyToAll &fields, int editedRow)
{
    m_failures.clear();
    const int rows = m_model.totalRows();
    m_host.beginProgress(
        {tr("Aggiornamento file"), tr("Aggiorno la libreria..."), tr("Interrompi")}, rows);
    for (int row = 0; row < rows && !m_host.wasCancelled(); ++row) {
        if (row == editedRow)
            continue;
        if (!applyToRow(edited, fields, row))
            m_failures.append(m_model.fileNameOf(row));
        m_host.setProgress(row + 1);
        m_host.processPendingEvents();
    }
    m_host.endProgress();
    WorkflowLog::failures("[MainWindow]", m_failures);
}

bool RowEditor::applyToRow(const SongInfo &edited, const ApplyToAll &fields, int row)
{
    SongEdit song(m_disk);
    const QString path = m_model.fileNameOf(row);
    if (!song.load(path))
        return false;
    SongInfo info = song.info();
    if (fields.author)
        info.author = edited.author;
    if (fields.artist)
        info.artist = edited.artist;
    if (fields.genre)
        info.genre = edited.genre;
    if (fields.title)
        info.title = SongEdit::titleFromPath(path); // required: not the edited title
    return saveRow(song, info, row);
}

} // namespace tarvel4
