#include "ui/songintake.h"

#include "library/folderscan.h"
#include "library/songselection.h"
#include "ui/folderchooser.h"
#include "ui/librarysteps.h"
#include "ui/windowhost.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>

namespace tarvel4 {

namespace {

constexpr int eventInterval = 30; // milliseconds

} // namespace

SongIntake::SongIntake(QWidget &window, LibrarySteps &steps, WindowHost &host, Journal &journal)
    : m_window(window)
    , m_steps(steps)
    , m_host(host)
    , m_journal(journal)
{}

void SongIntake::importFolder()
{
    if (m_host.isRunning())
        return;
    const QString folder =
        chooseFolder(&m_window, tr("Scegli la cartella da importare"), FolderKind::Songs);
    if (!folder.isEmpty())
        import({folder});
}

void SongIntake::import(const QStringList &paths, const QStringList &unreachable)
{
    const bool hasFolders = std::any_of(
        paths.begin(), paths.end(), [](const QString &path) { return QFileInfo(path).isDir(); });
    QElapsedTimer sinceEvents;
    sinceEvents.start();
    const auto goesOn = [&](int found) {
        // only below a progress, which keeps the user from beginning something else
        if (hasFolders && sinceEvents.hasExpired(eventInterval)) {
            m_host.setProgressValue(found);
            sinceEvents.restart();
        }
        return !m_host.wasCancelled();
    };
    if (hasFolders) {
        m_host.beginProgress({tr("Lettura cartella"), tr("Cerco le song..."), tr("Interrompi")}, 0);
        finishSavesBelow(paths, [&goesOn] { return goesOn(0); });
    }
    SongSelection selection = SongSelection::of(paths, goesOn);
    const bool isWhole = selection.isWhole && !m_host.wasCancelled();
    m_host.endProgress();
    if (!isWhole)
        return;
    selection.skipped += unreachable;
    if (!selection.skipped.isEmpty())
        tellSkipped(selection.skipped);
    if (!selection.songs.isEmpty())
        m_steps.importFiles(selection.songs);
    else if (selection.skipped.isEmpty())
        m_host.information(tr("Lettura cartella"), tr("Qui non ci sono song."), paths);
}

/** A song that was left under another name would not be met. */
void SongIntake::finishSavesBelow(const QStringList &paths, const std::function<bool()> &goesOn)
{
    QStringList setAside;
    for (const QString &path : paths) {
        if (goesOn() && QFileInfo(path).isDir())
            setAside += FolderScan::setAsideBelow(path, goesOn);
    }
    if (goesOn() && !setAside.isEmpty())
        m_host.finishSaves(m_journal, setAside);
}

void SongIntake::tellSkipped(const QStringList &skipped)
{
    QStringList details;
    for (const QString &entry : skipped)
        details += tr("%1: non può essere letto").arg(entry);
    m_host.warning(tr("Lettura cartella"),
                   tr("Alcuni file o cartelle non possono essere letti e vengono saltati."),
                   details);
}

} // namespace tarvel4
