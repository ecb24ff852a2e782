#include "library/libraryimport.h"

#include "db/database.h"
#include "db/usersongsreltablemodel.h"
#include "library/folderscan.h"
#include "library/songpath.h"
#include "library/usersettings.h"
#include "library/workflowlog.h"
#include "songs/metasong.h"
#include "storage/debuglog.h"
#include "storage/disk.h"

#include <QDebug>
#include <QFileInfo>
#include <QSet>

namespace tarvel4 {

LibraryImport::LibraryImport(Database &db, UserSongsRelTableModel &model, WorkflowHost &host)
    : m_db(db)
    , m_model(model)
    , m_host(host)
{}

bool LibraryImport::importUserLibrary(const QStringList &selectedFiles, Manner manner)
{
    WorkflowLog::title("IMPORT USER LIBRARY");
    m_counts = ImportCounts();
    if (!clearTable()) {
        qDebug() << "[importUserLibrary] WARNING: impossible to CLEAR table. Aborting import !!!";
        return false;
    }

    if (manner.recovers)
        putInOrder(selectedFiles);
    m_host.beginProgress({tr("Lettura file"), tr("Importo la libreria..."), tr("Interrompi")},
                         selectedFiles.size());
    for (const QString &path : selectedFiles) {
        // required: the window's cancel button is shown but not looked at
        if (manner.isCancellable && m_host.wasCancelled())
            break;
        importSong(path);
        showCount();
    }
    return true;
}

bool LibraryImport::scanDir(const QString &path)
{
    return FolderScan::scanDir(
        path,
        [this](const QString &file) {
            if (m_host.wasCancelled())
                return false;
            if (!addSong(file))
                qDebug() << "[scanDir] Unknown/corrupted file" << file;
            showCount();
            return true;
        },
        [](const QString &entry) { qDebug() << "[scanDir] WARNING: can't be read:" << entry; },
        FolderScan::Files::All, [this] { showCount(); });
}

bool LibraryImport::askSynchronise()
{
    if (!UserSettings::copyrightAsk())
        return false;
    const ProceedChoice choice = m_host.askProceed(m_counts);
    UserSettings::setCopyrightAsk(choice.showAgain);
    return choice.synchronise;
}

bool LibraryImport::clearTable()
{
    if (m_model.totalRows() == 0)
        return true;
    if (!m_db.clearUserSongs())
        return false;
    m_model.select();
    return true;
}

/** A song that a power cut left under another name can't be chosen, but its neighbours can. */
void LibraryImport::putInOrder(const QStringList &files)
{
    QSet<QString> folders;
    for (const QString &file : files)
        folders.insert(QFileInfo(file).path());
    for (const QString &folder : qAsConst(folders)) {
        Recovery::recoverAll(Disk::real(), folder, MetaSong::isSong,
                             [this](const QString &path, Recovery::Result outcome) {
                                 m_host.recovered(path, outcome);
                             });
    }
}

void LibraryImport::showCount()
{
    m_host.setProgress(m_counts.found + m_counts.unknown);
    m_host.processPendingEvents();
}

void LibraryImport::importSong(const QString &path)
{
    qCDebug(debugLog) << "Found file:" << path;
    if (!addSong(path))
        qDebug() << "Unknown/corrupted file" << path;
}

bool LibraryImport::addSong(const QString &path)
{
    MetaSong song;
    if (!song.importFile(path)) {
        ++m_counts.unknown;
        return false;
    }
    ++m_counts.found;
    qCDebug(debugLog) << "Song Index: " << m_counts.found;

    SongInfo info;
    song.readInfo(info);
    info.filename = path;
    info.shortname = SongPath::fileName(path);
    if (info.isPublisher)
        ++m_counts.published;
    dumpSongInfo(info);
    if (!m_model.appendSong(info))
        qDebug() << "[importUserLibrary] WARNING: no row for" << path;
    return true;
}

} // namespace tarvel4
