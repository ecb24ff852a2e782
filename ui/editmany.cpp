#include "ui/editmany.h"

#include "db/database.h"
#include "db/usersongsreltablemodel.h"
#include "library/editcheck.h"
#include "library/editjob.h"
#include "library/jobreport.h"
#include "library/songrows.h"
#include "ui/editmanydialog.h"
#include "ui/manualedit.h"
#include "ui/songtable.h"
#include "ui/windowhost.h"

#include <QTableView>

namespace tarvel4 {

namespace {

constexpr int formatColumn = 1;
constexpr int titleColumn = 2;
constexpr int artistColumn = 3;

} // namespace

void EditMany::run()
{
    const QVector<int> rows = shownRows();
    if (rows.isEmpty())
        return m_at.host.information(tr("Modifica più song"),
                                     tr("La tabella non mostra nessuna song."), {});
    QVector<EditManyDialog::Song> songs;
    QVector<EditCheck::Song> files;
    EditCheck check;
    songs.reserve(rows.size());
    files.reserve(rows.size());
    for (const int row : rows) {
        songs.append({m_at.model.cellIndex(row, titleColumn).data().toString(),
                      m_at.model.cellIndex(row, artistColumn).data().toString(),
                      m_at.model.shortNameOf(row)});
        files.append({m_at.model.cellIndex(row, formatColumn).data().toString(),
                      m_at.model.fileNameOf(row)});
    }
    EditManyDialog dialog(m_at.db.genres(), m_at.db.altArtists(), m_at.table.window());
    dialog.setSongs(songs);
    const int current = static_cast<int>(rows.indexOf(m_at.table.currentIndex().row()));
    if (current >= 0)
        dialog.choose({current});
    dialog.setCheck([&] {
        QVector<EditCheck::Song> chosen;
        for (const int song : dialog.chosen())
            chosen.append(files.at(song));
        return check.notes(chosen, dialog.fields(), dialog.values());
    });
    bool isChanged = false;
    while (dialog.exec() == QDialog::Accepted) {
        isChanged = true;
        QVector<int> unsaved;
        const EditSummary summary = save(dialog, rows, unsaved);
        ManualEdit::tellUnsaved(m_at.host, summary);
        m_at.host.tellNotices();
        if (unsaved.isEmpty())
            break;
        dialog.choose(unsaved);
    }
    if (isChanged) // not before: the dialog knows its songs by their rows
        SongTable::readAgain(m_at.table, m_at.model);
}

/** Those that no filter hides. */
QVector<int> EditMany::shownRows() const
{
    QVector<int> rows;
    const int all = m_at.model.totalRows();
    rows.reserve(all);
    for (int row = 0; row < all; ++row) {
        if (!m_at.table.isRowHidden(row))
            rows += row;
    }
    return rows;
}

/** \a unsaved gets the numbers, among \a rows, of the songs that were not saved. */
EditSummary EditMany::save(const EditManyDialog &dialog, const QVector<int> &rows,
                           QVector<int> &unsaved)
{
    const QVector<int> chosen = dialog.chosen();
    QStringList paths;
    for (const int song : chosen)
        paths += m_at.model.fileNameOf(rows.at(song));
    SaveRun saves(Disk::real(), &m_at.journal, QStringLiteral("edit"));
    const auto tell = [&, next = 0](const SongOutcome &outcome) mutable {
        const int song = chosen.at(next++);
        SongRows::showEdit(m_at.model, rows.at(song), outcome);
        if (outcome.isFailure())
            unsaved += song;
    };
    JobReport report(JobReport::Job::Edit);
    const EditSummary summary =
        EditJob(m_at.host, saves)
            .run(paths, dialog.fields().changeFrom(dialog.values()), report.observe(tell));
    report.finish(paths);
    m_at.host.endProgress();
    m_at.host.report(report);
    return summary;
}

} // namespace tarvel4
