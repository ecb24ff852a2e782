#include "library/devicetransfer.h"

#include "indexer/index.h"
#include "library/filecopier.h"
#include "library/indexprogress.h"
#include "library/songpath.h"
#include "library/workflowlog.h"

#include <QDebug>
#include <QDir>

namespace tarvel4 {

namespace {

constexpr char songsFolder[] = "songs";

/** True for the names of the folders that the player keeps for itself. */
bool isReserved(const QString &folderName)
{
    static const QStringList reserved{QStringLiteral("SFX"), QStringLiteral("BRIDGE"),
                                      QStringLiteral("PLAYLIST")};
    return reserved.contains(folderName, Qt::CaseInsensitive);
}

} // namespace

DeviceTransfer::DeviceTransfer(WorkflowHost &host, const Volume &volume, Disk &disk)
    : m_host(host)
    , m_volume(volume)
    , m_disk(disk)
{}

DeviceTransfer::Result DeviceTransfer::transferFiles(const QStringList &selectedFiles,
                                                     const QString &dir)
{
    m_copied = m_kept = m_found = 0;
    m_failed.clear();
    m_errors.clear();
    m_prepared = m_indexFailed = false;
    const QString destination =
        dir.isEmpty() ? dir : destinationFor(QDir::cleanPath(QFileInfo(dir).absoluteFilePath()));
    if (destination.isEmpty())
        return Result::Refused;

    WorkflowLog::title("TRASFERIMENTO FILE");
    const bool complete = copySongs(selectedFiles, destination) && updateDeviceIndex(destination);
    m_host.endProgress();
    m_prepared = Index::isPrepared(m_volume.rootOf(destination));
    if (!complete || !m_errors.isEmpty()) {
        m_host.critical(tr("Trasferimento"), tr("Non è stato possibile copiare uno o più file"),
                        m_errors);
        return Result::Failed;
    }
    m_host.information(tr("Trasferimento"), tr("Tutti i file sono stati copiati correttamente"));
    qDebug() << "";
    return Result::Done;
}

/** The folder to copy into; empty where the user was told why there is none. */
QString DeviceTransfer::destinationFor(const QString &dir)
{
    if (m_volume.isSystemDisk(dir))
        return refuse(tr("Non è possibile copiare i file sul disco di sistema"));
    QString destination = dir;
    if (m_volume.isRootFolder(dir)) {
        destination = QDir(dir).filePath(QLatin1String(songsFolder));
        if (!QFileInfo(destination).isDir() && !QDir().mkdir(destination))
            return refuse(tr("Non è possibile copiare i file sulla cartella principale, creare o "
                             "selezionare una sottocartella"));
    }
    if (isReserved(SongPath::fileName(destination)))
        return refuse(tr("Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST perchè "
                         "sono riservate, selezionare un'altra cartella"));
    return destination;
}

bool DeviceTransfer::copySongs(const QStringList &selectedFiles, const QString &destination)
{
    m_host.beginProgress({tr("Trasferimento"), tr("Trasferimento file..."), tr("Interrompi")},
                         selectedFiles.size());
    FileCopier copier(m_host, m_disk);
    const bool complete = copier.copyFiles(selectedFiles, destination);
    m_copied = copier.copied();
    m_failed = copier.failed();
    m_kept = copier.kept();
    return complete;
}

bool DeviceTransfer::updateDeviceIndex(const QString &destDir)
{
    const QString root = m_volume.rootOf(destDir);
    if (!QFileInfo::exists(root))
        return false;
    constexpr int defaultMaximum = 100;
    m_host.beginProgress(
        {tr("Aggiornamento"), tr("Aggiornamento database..."), tr("Interrompi"), false},
        defaultMaximum);
    Index index(nullptr, m_disk);
    showProgressOf(index, m_host);
    QObject::connect(&index, &Index::errorFromIndex,
                     [this](const QString &text) { m_errors += text; });
    const bool updated = index.update(root);
    m_host.endProgress();
    m_found = index.found();
    m_indexFailed = index.failed();
    return updated;
}

QString DeviceTransfer::refuse(const QString &text)
{
    m_host.warning(tr("Trasferimento"), text);
    return QString();
}

} // namespace tarvel4
