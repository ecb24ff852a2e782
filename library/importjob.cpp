#include "library/importjob.h"

#include "library/folderscan.h"
#include "library/messages.h"
#include "library/usersettings.h"
#include "library/workflowlog.h"
#include "songs/metasong.h"
#include "storage/debuglog.h"
#include "storage/disk.h"

#include <QDebug>
#include <QFileInfo>
#include <QSet>

namespace tarvel4 {

ImportJob::ImportJob(Progress &progress, SongObserver observer)
    : m_progress(progress)
    , m_observer(std::move(observer))
{}

ImportSummary ImportJob::run(const QStringList &paths, const std::function<bool()> &clearOldSongs)
{
    WorkflowLog::title("IMPORT USER LIBRARY");
    if (!clearOldSongs()) {
        qDebug() << "[importUserLibrary] WARNING: impossible to CLEAR table. Aborting import !!!";
        return m_summary;
    }
    m_progress.beginProgress({tr("Lettura file"), tr("Importo la libreria..."), tr("Interrompi")},
                             static_cast<int>(paths.size()));
    // required: the cancel button is shown but not looked at
    for (const QString &path : paths) {
        qCDebug(debugLog) << "Found file:" << path;
        importSong(path, "");
    }
    m_summary.isDone = true;
    return m_summary;
}

ImportSummary ImportJob::scanDir(const QString &path)
{
    const auto showCount = [this] {
        m_progress.setProgress(m_summary.found + m_summary.unknown);
        m_progress.processPendingEvents();
    };
    m_summary.isDone = FolderScan::scanDir(
        path,
        [this](const QString &file) {
            if (m_progress.wasCancelled())
                return false;
            importSong(file, "[scanDir] ");
            return true;
        },
        [](const QString &entry) { qDebug() << "[scanDir] WARNING: can't be read:" << entry; },
        FolderScan::Files::All, showCount);
    return m_summary;
}

void ImportJob::importSong(const QString &path, const char *operation)
{
    const SongOutcome song = read(path);
    if (song.isFailure()) {
        ++m_summary.unknown;
        m_summary.problems += song.problem();
        qDebug().nospace() << operation << "Unknown/corrupted file " << path;
        WorkflowLog::refused("[IMPORT]", song);
    } else {
        ++m_summary.found;
        qCDebug(debugLog) << "Song Index: " << m_summary.found;
        if (song.after.isPublisher)
            ++m_summary.published;
        dumpSongInfo(song.after);
    }
    m_observer(song);
    m_progress.setProgress(m_summary.found + m_summary.unknown);
    m_progress.processPendingEvents();
}

SongOutcome ImportJob::read(const QString &path)
{
    SongOutcome outcome;
    outcome.path = path;
    MetaSong song;
    outcome.cause = song.importFile(path);
    outcome.result = outcome.cause ? SongResult::Read : SongResult::Unreadable;
    if (!outcome.cause)
        return outcome;
    song.readInfo(outcome.after);
    outcome.after.filename = path;
    outcome.after.shortname = SongPath::fileName(path);
    return outcome;
}

bool ImportJob::askSynchronise(const ImportSummary &summary, Questions &questions)
{
    if (!UserSettings::copyrightAsk())
        return false;
    const ProceedChoice choice = questions.askProceed(summary);
    UserSettings::setCopyrightAsk(choice.showAgain);
    return choice.synchronise;
}

} // namespace tarvel4
