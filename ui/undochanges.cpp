#include "ui/undochanges.h"

#include "library/jobreport.h"
#include "library/songpath.h"
#include "library/songrows.h"
#include "library/undojob.h"
#include "storage/disk.h"
#include "storage/journal.h"
#include "ui/songtable.h"
#include "ui/unbrokenlabel.h"
#include "ui/windowhost.h"

#include <QDir>
#include <QLocale>
#include <QMessageBox>
#include <QSet>
#include <QTableView>

namespace tarvel4 {

UndoChanges::UndoChanges(QTableView &table, UserSongsRelTableModel *model, WindowHost &host,
                         Journal &journal)
    : m_table(table)
    , m_model(model)
    , m_host(host)
    , m_journal(journal)
{}

void UndoChanges::undoLast()
{
    if (m_host.isRunning())
        return;
    m_host.finishSaves(m_journal); // some may be on a card that is there only now
    askAndUndo();
    m_host.tellNotices();
}

void UndoChanges::askAndUndo()
{
    const auto runs = m_journal.runs();
    if (!runs) {
        if (m_host.tellNotices()) // it says why
            return;
        m_host.warning(tr("Annulla l'ultima modifica"),
                       tr("Le ultime modifiche non si possono leggere: nessuna song è cambiata."),
                       {});
        return;
    }
    const auto next = UndoJob::next(m_journal, *runs);
    if (!next) {
        m_host.information(tr("Annulla l'ultima modifica"),
                           tr("Non c'è nessuna modifica da annullare."), {});
        return;
    }
    if (ask(next->run, next->left, static_cast<int>(next->files.size() - next->left.size())))
        undo(next->run, next->files);
}

/** \a done: songs that an undo brought back before it was cut short. */
bool UndoChanges::ask(const JournalRun &run, const QStringList &paths, int done) const
{
    QString summary = tr("Ultima modifica: %1\nData e ora: %2\nSong: %3")
                          .arg(UnbrokenLabel::unbroken(kindOf(run)),
                               QLocale::system().toString(run.time, QLocale::ShortFormat),
                               QString::number(paths.size()));
    if (done > 0)
        summary += QLatin1Char('\n')
            + tr("Già tornate com'erano, prima che l'annullamento fosse interrotto: %1").arg(done);
    const QString question = tr("Vuoi rimettere queste song com'erano prima?");
    QMessageBox box(QMessageBox::Question, tr("Annulla l'ultima modifica"),
                    QStringList({summary, firstOf(paths), question}).join(QLatin1String("\n\n")),
                    QMessageBox::Yes | QMessageBox::No, m_table.window());
    box.setTextFormat(Qt::PlainText);
    QStringList details;
    for (const QString &path : paths)
        details += QDir::toNativeSeparators(path);
    box.setDetailedText(details.join(QLatin1Char('\n')));
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

QString UndoChanges::kindOf(const JournalRun &run)
{
    if (run.what == QLatin1String("edit"))
        return tr("correzione dei dati");
    if (run.what == QLatin1String("sync"))
        return tr("sincronizzazione con il database K-Varo");
    if (run.what == QLatin1String("undo"))
        return tr("annullamento di una modifica");
    if (run.what == QLatin1String("restore"))
        return tr("ripristino da un backup");
    return run.what;
}

QString UndoChanges::firstOf(const QStringList &paths)
{
    constexpr int shown = 10;
    QStringList names;
    for (const QString &path : paths.mid(0, shown))
        names += SongPath::fileName(path);
    if (paths.size() > shown)
        names += QStringLiteral("...");
    return names.join(QLatin1Char('\n'));
}

void UndoChanges::undo(const JournalRun &run, const QStringList &paths)
{
    const SongObserver show = m_model ? SongRows::restored(*m_model) : SongObserver();
    JobReport report(JobReport::Job::Undo);
    QSet<QString> restored; // a run may have written a song twice
    QStringList failed;
    QStringList problems;
    {
        SaveRun saves(Disk::real(), &m_journal, QStringLiteral("undo"));
        const SongObserver note = report.observe(show);
        const auto observe = [&](const SongOutcome &song) {
            note(song);
            if (song.isFailure())
                failed += song.path;
            else
                restored += song.path;
        };
        problems = UndoJob(m_host, saves).undo(m_journal, run.id, observe).problems;
    }
    report.finish(paths);
    m_host.report(report);
    if (m_model) {
        SongTable::readAgain(m_table, *m_model);
        SongTable::resizeColumns(m_table);
    }
    tellResult(static_cast<int>(restored.size()), static_cast<int>(paths.size()), failed, problems);
}

void UndoChanges::tellResult(int restored, int songs, const QStringList &failed,
                             const QStringList &problems)
{
    const QString title = tr("Annulla l'ultima modifica");
    const QString count = tr("Song tornate com'erano: %1 di %2").arg(restored).arg(songs);
    if (failed.isEmpty())
        m_host.information(title, count, {});
    else
        m_host.warning(title,
                       count + QLatin1String("\n\n") + tr("Queste song restano come sono:")
                           + QLatin1Char('\n') + firstOf(failed),
                       problems);
}

} // namespace tarvel4
