#include "ui/manualedit.h"

#include "db/database.h"
#include "db/usersongsreltablemodel.h"
#include "library/editjob.h"
#include "library/jobreport.h"
#include "library/songrows.h"
#include "songs/metasong.h"
#include "ui/dataeditdialog.h"
#include "ui/songtable.h"
#include "ui/windowhost.h"

#include <QDebug>
#include <QTableView>

namespace tarvel4 {

namespace {

constexpr int firstShownColumn = 1;

} // namespace

void ManualEdit::editRow(int row)
{
    DataEditDialog dialog(m_at.table.window());
    dialog.setArtists(m_at.db.altArtists());
    dialog.setGenres(m_at.db.genres());
    dialog.setKeys(MetaSong::keyList());
    if (!open(row, dialog))
        return; // required: no box
    QObject::connect(&dialog, &DataEditDialog::stepRequested, &dialog,
                     [this, &dialog](int direction) { step(direction, dialog); });
    bool isSaved = false;
    while (!isSaved && dialog.exec() == QDialog::Accepted)
        isSaved = save(dialog);
    if (!isSaved) {
        qDebug() << "Rejected!";
        dumpSongInfo(m_record);
    }
    if (m_hasEditedAll)
        SongTable::readAgain(m_at.table, m_at.model);
}

/** Shows the song of a row in the dialog; false where it can't be read. */
bool ManualEdit::open(int row, DataEditDialog &dialog)
{
    const QString path = m_at.model.fileNameOf(row);
    qDebug() << "File name: " << path;
    qDebug() << "[MainWindow] Manual modifing row: " << row; // required spelling
    SongOutcome failure;
    if (!load(path, failure)) {
        SongRows::showEdit(m_at.model, row, failure);
        return false;
    }
    m_row = row;
    dialog.setSong(m_record);
    dialog.setCheck([this](const SongInfo &edited) {
        return m_song ? m_song->check(edited) : QVector<FieldNote>();
    });
    dialog.setNeighbours(neighbour(row, -1) >= 0, neighbour(row, 1) >= 0);
    return true;
}

/** False: no song is there, and \a failure tells why. */
bool ManualEdit::load(const QString &path, SongOutcome &failure)
{
    SongEdit &song = m_song.emplace();
    const Outcome loaded = song.load(path);
    if (loaded) {
        m_record = song.info();
    } else {
        failure = song.failure(SongResult::Unreadable, loaded);
        m_song.reset();
    }
    return m_song.has_value();
}

/** Saves what the dialog shows. False: it was told why the song itself was not saved. */
bool ManualEdit::save(DataEditDialog &dialog)
{
    qDebug() << "Accepted";
    EditSummary summary;
    bool isSaved = false;
    SongOutcome failure;
    if (m_song || load(m_record.filename, failure)) {
        SongInfo edited = m_record;
        dialog.getSong(edited);
        dumpSongInfo(edited);
        isSaved = saveTo(*m_song, edited, dialog, summary);
        m_song.reset(); // is read afresh for each save
        if (!isSaved) {
            load(m_record.filename, failure);
            dialog.clearApplyToAll(); // the others have it
        }
    } else {
        SongRows::showEdit(m_at.model, m_row, failure);
        summary.add(failure);
    }
    tellUnsaved(m_at.host, summary);
    m_at.host.tellNotices();
    return isSaved;
}

/** True when the song itself was saved; \a summary counts all. */
bool ManualEdit::saveTo(SongEdit &song, const SongInfo &edited, const DataEditDialog &dialog,
                        EditSummary &summary)
{
    bool isSaved = false;
    const ApplyToAll fields{dialog.applyToAllAuthor(), dialog.applyToAllArtist(),
                            dialog.applyToAllGenre(), dialog.applyToAllTitle()};
    JobReport report(JobReport::Job::Edit);
    SaveRun saves(Disk::real(), &m_at.journal, QStringLiteral("edit"));
    song.save(edited, saves, report.observe([&](const SongOutcome &saved) {
        SongRows::showEdit(m_at.model, m_row, saved);
        isSaved = !saved.isFailure();
        summary.add(saved);
    }));
    saves.commit();
    m_hasEditedAll |= fields.any();
    if (fields.any()) {
        const QStringList paths = SongRows::paths(m_at.model);
        summary.add(EditJob(m_at.host, saves)
                        .run(paths, fields.changeFrom(edited),
                             report.observe(SongRows::edited(m_at.model, m_row)), m_row));
        report.finish(paths);
    }
    m_at.host.endProgress();
    if (fields.any()) // what became of one song alone, its row tells
        m_at.host.report(report);
    return isSaved;
}

void ManualEdit::tellUnsaved(WindowHost &host, const EditSummary &summary)
{
    QStringList paths = summary.unsaved;
    if (paths.isEmpty())
        return;
    constexpr int shown = 10;
    if (paths.size() > shown)
        paths = paths.mid(0, shown) << QStringLiteral("...");
    host.warning(tr("Modifica dati song"),
                 tr("Non è stato possibile salvare i seguenti file:") + QStringLiteral("\n\n")
                     + paths.join(QLatin1Char('\n')),
                 summary.problems);
}

/** Saves what was changed, as Salva would, and shows the next song in the table's order that can be
 * read. Where the save fails the dialog stays with what was typed. */
void ManualEdit::step(int direction, DataEditDialog &dialog)
{
    int row = neighbour(m_row, direction);
    if (row < 0)
        return;
    const QString path = m_at.model.fileNameOf(row); // a save may sort its song to another row
    if (dialog.isChanged() && !save(dialog))
        return;
    for (row = rowOf(path, row); row >= 0; row = neighbour(row, direction)) {
        if (open(row, dialog)) {
            const int column = qMax(firstShownColumn, m_at.table.currentIndex().column());
            m_at.table.setCurrentIndex(m_at.model.cellIndex(row, column));
            return;
        }
    }
    const int here = rowOf(m_record.filename, m_row);
    if (here >= 0 && open(here, dialog))
        dialog.setNeighbours(direction > 0, direction < 0); // nothing can be read there
}

/** The next row on show; -1 where there is none. */
int ManualEdit::neighbour(int row, int direction) const
{
    const int rows = m_at.model.totalRows();
    int next = row + direction;
    while (next >= 0 && next < rows && m_at.table.isRowHidden(next))
        next += direction;
    return next < rows ? next : -1;
}

/** Looks where the song was first, then ever farther from there; -1 where it is gone. */
int ManualEdit::rowOf(const QString &path, int near) const
{
    const int rows = m_at.model.totalRows();
    for (int distance = 0; distance < rows; ++distance) {
        for (const int row : {near - distance, near + distance}) {
            if (row >= 0 && row < rows && m_at.model.fileNameOf(row) == path)
                return row;
        }
    }
    return -1;
}

} // namespace tarvel4
