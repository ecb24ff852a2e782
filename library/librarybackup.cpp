#include "library/librarybackup.h"

#include "library/filecopier.h"
#include "library/songpath.h"
#include "library/workflowlog.h"

#include <QDebug>
#include <QDir>
#include <QHash>

namespace tarvel4 {

LibraryBackup::LibraryBackup(WorkflowHost &host, Disk &disk, Clock clock)
    : m_host(host)
    , m_disk(disk)
    , m_clock(std::move(clock))
{}

bool LibraryBackup::backupUserLibrary(const QStringList &selectedFiles)
{
    m_folder.clear();
    m_copied = 0;
    m_failed.clear();
    const BackupChoice choice = m_host.askBackup();
    if (choice.action == BackupChoice::ProceedWithout)
        return true;
    if (choice.action != BackupChoice::Backup)
        return false;
    if (choice.folder.isEmpty())
        return fail();

    WorkflowLog::title("BACKUP USER LIBRARY");
    const QString destination = choice.folder + QLatin1String("/backup_kvaro_")
        + m_clock().toString(QStringLiteral("yyyy_MM_dd_hh-mm-ss"));
    qDebug() << "Making new root backup dir:" << destination;
    if (!QDir().mkdir(destination)) {
        qDebug() << "Dest root dir creation failed";
        return fail();
    }
    if (!copyInto(destination, selectedFiles))
        return fail();
    m_folder = destination;
    m_host.information(tr("Backup"), tr("Backup eseguito correttamente"));
    return true;
}

QVector<QPair<QString, QString>> LibraryBackup::sameNames(const QStringList &selectedFiles)
{
    QVector<QPair<QString, QString>> pairs;
    QHash<QString, QString> pathOfName;
    for (const QString &path : selectedFiles) {
        const QString name = SongPath::fileName(path).toCaseFolded();
        const auto known = pathOfName.constFind(name);
        if (known == pathOfName.constEnd())
            pathOfName.insert(name, path);
        else if (*known != path)
            pairs.append({*known, path});
    }
    return pairs;
}

bool LibraryBackup::copyInto(const QString &folder, const QStringList &selectedFiles)
{
    m_host.beginProgress({tr("Backup"), tr("Eseguo backup dellla libreria..."), tr("Interrompi")},
                         selectedFiles.size());
    FileCopier copier(m_host, m_disk);
    const bool complete = copier.copyFiles(selectedFiles, folder);
    m_host.endProgress();
    m_copied = copier.copied();
    m_failed = copier.failed();
    // Two songs of one name: the user's answers decide which the folder holds, and the log says so.
    for (const QString &path : copier.displaced())
        qDebug() << "[BACKUP] WARNING: not in the backup, as chosen:" << path;
    return complete;
}

bool LibraryBackup::fail()
{
    m_host.critical(tr("Backup"), tr("Backup FALLITO !!!"));
    return false;
}

} // namespace tarvel4
