#include "ui/manualedit.h"

#include "db/database.h"
#include "db/usersongsreltablemodel.h"
#include "library/roweditor.h"
#include "library/songedit.h"
#include "songs/metasong.h"
#include "ui/dataeditdialog.h"
#include "ui/windowhost.h"

#include <QDebug>

namespace tarvel4 {

ManualEdit::ManualEdit(QWidget *window, const Database &db, UserSongsRelTableModel &model,
                       WindowHost &host)
    : m_window(window)
    , m_db(db)
    , m_model(model)
    , m_host(host)
{}

void ManualEdit::editRow(int row)
{
    const QString path = m_model.fileNameOf(row);
    qDebug() << "File name: " << path;
    qDebug() << "[MainWindow] Manual modifing row: " << row; // required spelling
    SongEdit song;
    if (!song.load(path))
        return;

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

    RowEditor editor(m_model, m_host);
    QStringList unsaved;
    if (!editor.saveRow(song, edited, row))
        unsaved.append(path);
    const ApplyToAll fields{dialog.applyToAllAuthor(), dialog.applyToAllArtist(),
                            dialog.applyToAllGenre(), dialog.applyToAllTitle()};
    if (fields.any())
        editor.applyToOthers(edited, fields, row);
    m_host.endProgress();
    tellUnsaved(unsaved + editor.failures());
}

void ManualEdit::tellUnsaved(QStringList paths)
{
    if (paths.isEmpty())
        return;
    constexpr int shown = 10;
    if (paths.size() > shown)
        paths = paths.mid(0, shown) << QStringLiteral("...");
    m_host.warning(tr("Modifica dati song"),
                   tr("Non è stato possibile salvare i seguenti file:") + QStringLiteral("\n\n")
                       + paths.join(QLatin1Char('\n')),
                   {});
}

} // namespace tarvel4
