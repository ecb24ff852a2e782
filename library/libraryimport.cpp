#include "library/libraryimport.h"

#include "db/database.h"
#include "db/usersongsreltablemodel.h"
#include "library/songpath.h"
#include "library/usersettings.h"
#include "library/workflowlog.h"
#include "songs/debuglog.h"
#include "songs/disk.h"
#include "songs/metasong.h"
#include "songs/setaside.h"

#include <QDebug>
#include <QFileInfo>
#include <QSet>

namespace {

/** A song that a power cut left under another name can't be chosen, but its neighbours can. */
void putInOrder(const QStringList &files)
{
    QSet<QString> folders;
    for (const QString &file : files)
        folders.insert(QFileInfo(file).path());
    for (const QString &folder : qAsConst(folders))
        SetAside::recoverAll(Disk::real(), folder);
}

} // namespace

LibraryImport::LibraryImport(Database &db, UserSongsRelTableModel &model, WorkflowHost &host)
    : m_db(db)
    , m_model(model)
    , m_host(host)
{}

bool LibraryImport::importUserLibrary(const QStringList &selectedFiles)
{
    WorkflowLog::title("IMPORT USER LIBRARY");
    m_counts = ImportCounts();
    if (!clearTable()) {
        qDebug() << "[importUserLibrary] WARNING: impossible to CLEAR table. Aborting import !!!";
        return false;
    }

    putInOrder(selectedFiles);
    m_host.beginProgress({tr("Lettura file"), tr("Importo la libreria..."), tr("Interrompi")},
                         selectedFiles.size());
    // required: the cancel button is shown but not looked at
    for (const QString &path : selectedFiles) {
        importSong(path);
        m_host.setProgress(m_counts.found + m_counts.unknown);
        m_host.breathe();
    }
    return true;
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

void LibraryImport::importSong(const QString &path)
{
    qCDebug(debugLog) << "Found file:" << path;
    MetaSong song;
    if (!song.importFile(path)) {
        qDebug() << "Unknown/corrupted file" << path;
        ++m_counts.unknown;
        return;
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
}
