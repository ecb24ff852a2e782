#include "ui/manualedit.h"

#include "db/database.h"
#include "db/usersongsreltablemodel.h"
#include "library/editjob.h"
#include "library/songedit.h"
#include "library/songrows.h"
#include "songs/metasong.h"
#include "ui/dataeditdialog.h"
#include "ui/windowhost.h"

#include <QDebug>

namespace tarvel4 {

ManualEdit::ManualEdit(QWidget *window, const Database &db, UserSongsRelTableModel &model,
                       WindowHost &host, Journal &journal)
    : m_window(window)
    , m_db(db)
    , m_model(model)
    , m_host(host)
    , m_journal(journal)
{}

void ManualEdit::editRow(int row)
{
    const QString path = m_model.fileNameOf(row);
    qDebug() << "File name: " << path;
    qDebug() << "[MainWindow] Manual modifing row: " << row; // required spelling
    SongEdit song;
    const Outcome loaded = song.load(path);
    if (!loaded) {
        // required: no box
        SongRows::showEdit(m_model, row, song.failure(SongResult::Unreadable, loaded));
        return;
    }

    DataEditDialog dialog(m_window);
    dialog.setArtists(m_db.altArtists());
    dialog.setGenres(m_db.genres());
    dialog.setKeys(MetaSong::keyList());
    dialog.setSong(song.info());
    if (dialog.exec() != QDialog::Accepted) {
        qDebug() << "Rejected!";
        dumpSongInfo(song.info());
        return;
    }
    qDebug() << "Accepted";
    SongInfo edited = song.info();
    dialog.getSong(edited);
    dumpSongInfo(edited);

    tellUnsaved(save(row, song, edited,
                     {dialog.applyToAllAuthor(), dialog.applyToAllArtist(),
                      dialog.applyToAllGenre(), dialog.applyToAllTitle()}));
    m_host.tellNotices();
}

EditSummary ManualEdit::save(int row, SongEdit &song, const SongInfo &edited,
                             const ApplyToAll &fields)
{
    EditSummary summary;
    SaveRun saves(Disk::real(), &m_journal, QStringLiteral("edit"));
    song.save(edited, saves, [this, row, &summary](const SongOutcome &saved) {
        SongRows::showEdit(m_model, row, saved);
        summary.add(saved);
    });
    saves.commit();
    if (fields.any())
        summary.add(EditJob(m_host, saves)
                        .run(SongRows::paths(m_model), fields.changeFrom(edited),
                             SongRows::edited(m_model, row), row));
    m_host.endProgress();
    return summary;
}

void ManualEdit::tellUnsaved(const EditSummary &summary)
{
    QStringList paths = summary.unsaved;
    if (paths.isEmpty())
        return;
    constexpr int shown = 10;
    if (paths.size() > shown)
        paths = paths.mid(0, shown) << QStringLiteral("...");
    m_host.warning(tr("Modifica dati song"),
                   tr("Non è stato possibile salvare i seguenti file:") + QStringLiteral("\n\n")
                       + paths.join(QLatin1Char('\n')),
                   summary.problems);
}

} // namespace tarvel4
