#include "ui/librarysteps.h"

#include "db/database.h"
#include "db/usersongsreltablemodel.h"
#include "library/backupjob.h"
#include "library/importjob.h"
#include "library/jobreport.h"
#include "library/songrows.h"
#include "library/transferjob.h"
#include "library/updatejob.h"
#include "library/usersettings.h"
#include "ui/ejectoffer.h"
#include "ui/focuskeeper.h"
#include "ui/folderchooser.h"
#include "ui/songchooser.h"
#include "ui/songtable.h"
#include "ui/windowhost.h"

#include <QAbstractButton>
#include <QTableView>

namespace tarvel4 {

LibrarySteps::LibrarySteps(const Widgets &widgets, Database &db, WindowHost &host, Journal &journal,
                           const Volume &volume)
    : m_widgets(widgets)
    , m_db(db)
    , m_host(host)
    , m_journal(journal)
    , m_volume(volume)
{}

void LibrarySteps::chooseAndImport()
{
    if (m_host.isRunning())
        return;
    importFiles(chooseSongs(m_widgets.table->window(), tr("Seleziona i file da importare")));
}

void LibrarySteps::importFiles(const QStringList &files)
{
    if (files.isEmpty())
        return;
    m_selectedFiles = files;
    const FocusKeeper focus({m_widgets.updateButton, m_widgets.transferButton});
    m_widgets.updateButton->setEnabled(false);
    m_widgets.transferButton->setEnabled(false);
    importSongs();
    m_widgets.transferButton->setEnabled(true);
}

void LibrarySteps::importSongs()
{
    if (!m_model)
        return;
    m_host.finishSaves(m_journal, m_selectedFiles); // they may be on a card that is there only now
    JobReport report(JobReport::Job::Import);
    const ImportSummary summary =
        ImportJob(m_host, report.observe(SongRows::imported(*m_model)))
            .run(m_selectedFiles, [this] { return SongRows::clear(m_db, *m_model); });
    m_host.endProgress();
    if (!summary.isDone)
        return;
    m_model->totalRows(); // shows the rows that were appended last
    SongTable::resizeColumns(*m_widgets.table);
    tellReport(report, m_selectedFiles);
    const bool synchronises = ImportJob::askSynchronise(summary, m_host);
    m_copyrightAskChanged();
    if (synchronises && updateSongs())
        return;
    m_widgets.updateButton->setEnabled(true);
}

void LibrarySteps::synchronise()
{
    if (m_host.isRunning())
        return;
    const FocusKeeper focus({m_widgets.updateButton, m_widgets.transferButton});
    m_widgets.updateButton->setEnabled(false);
    m_widgets.transferButton->setEnabled(false);
    if (!updateSongs())
        m_widgets.updateButton->setEnabled(true);
    m_widgets.transferButton->setEnabled(true);
}

bool LibrarySteps::updateSongs()
{
    if (!m_model)
        return false;
    UpdateJob::Options options;
    options.unpublished =
        UserSettings::copyrightAsk(true) ? UnpublishedPolicy::Ask : UnpublishedPolicy::Change;
    const QStringList paths = SongRows::paths(*m_model);
    JobReport report(JobReport::Job::Synchronise);
    bool begun = false;
    bool done = false;
    {
        SaveRun saves(Disk::real(), &m_journal, QStringLiteral("sync"));
        done = UpdateJob(m_db, m_host, m_host, options, saves)
                   .run(paths, report.observe(SongRows::updated(*m_model)),
                        [this, &begun] { return begun = makeBackup(); })
                   .isComplete;
    }
    SongTable::readAgain(*m_widgets.table, *m_model);
    m_host.endProgress();
    if (done)
        SongTable::resizeColumns(*m_widgets.table);
    if (begun)
        tellReport(report, paths);
    m_host.tellNotices();
    return done;
}

void LibrarySteps::backUp()
{
    makeBackup();
    m_host.endProgress();
}

bool LibrarySteps::makeBackup()
{
    return BackupJob(m_host, m_host, m_host).run(m_selectedFiles).mayProceed;
}

void LibrarySteps::transfer()
{
    if (m_host.isRunning())
        return;
    const FocusKeeper focus({m_widgets.updateButton, m_widgets.transferButton});
    m_widgets.updateButton->setEnabled(false);
    m_widgets.transferButton->setEnabled(false);
    const QString dir =
        chooseFolder(m_widgets.table->window(), tr("Scegli cartella"), FolderKind::Transfer);
    if (!dir.isEmpty()) {
        copyTo(dir);
        m_host.endProgress();
    }
    m_widgets.transferButton->setEnabled(true); // required: the update stays disabled
}

void LibrarySteps::copyTo(const QString &dir)
{
    JobReport report(JobReport::Job::Transfer);
    EjectOffer messages(m_host, m_drives, dir);
    TransferJob job(m_host, m_host, messages, m_volume);
    job.setObserver(report.observe());
    const TransferSummary summary = job.run(m_selectedFiles, dir);
    if (summary.result == TransferSummary::Result::Refused)
        return;
    report.displace(summary.songs.displaced);
    if (!summary.songs.cause)
        report.addMemory(summary.songs.cause.message());
    for (const QString &line : summary.index.details())
        report.addMemory(line);
    tellReport(report, m_selectedFiles);
}

void LibrarySteps::tellReport(JobReport &report, const QStringList &paths)
{
    report.finish(paths);
    m_host.report(report);
}

} // namespace tarvel4
