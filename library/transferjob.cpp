#include "library/transferjob.h"

#include "indexer/index.h"
#include "library/messages.h"
#include "library/progress.h"
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

TransferJob::TransferJob(Progress &progress, Questions &questions, Messages &messages,
                         const Volume &volume, Disk &disk)
    : m_progress(progress)
    , m_questions(questions)
    , m_messages(messages)
    , m_volume(volume)
    , m_disk(disk)
{}

TransferSummary TransferJob::run(const QStringList &paths, const QString &dir)
{
    TransferSummary summary;
    const QString destination =
        dir.isEmpty() ? dir : destinationFor(QDir::cleanPath(QFileInfo(dir).absoluteFilePath()));
    if (destination.isEmpty())
        return summary;

    WorkflowLog::title("TRASFERIMENTO FILE");
    const QString root = m_volume.rootOf(destination);
    summary.songs = copySongs(paths, destination);
    if (summary.songs.isComplete())
        summary.index = updateIndex(root);
    else if (!summary.songs.cause && m_hasMadeFolder)
        QDir().rmdir(destination); // nothing on the card is to change then
    m_progress.endProgress();
    summary.index.isPrepared = Index::isPrepared(root);
    if (!summary.index.isDone || !summary.index.errors.isEmpty()) {
        summary.result = TransferSummary::Result::Failed;
        m_messages.critical(tr("Trasferimento"), tr("Non è stato possibile copiare uno o più file"),
                            summary.songs.details() + summary.index.details());
        return summary;
    }
    summary.result = TransferSummary::Result::Done;
    qDebug() << "[TRANSFER] all is on the medium:" << root;
    m_messages.information(tr("Trasferimento"), tr("Tutti i file sono stati copiati correttamente"),
                           {tr("Tutto è scritto: ora si può togliere la memoria.")});
    qDebug() << "";
    return summary;
}

/** The folder to copy into; empty where the user was told why there is none. */
QString TransferJob::destinationFor(const QString &dir)
{
    if (m_volume.isSystemDisk(dir))
        return refuse(tr("Non è possibile copiare i file sul disco di sistema"));
    QString destination = dir;
    if (m_volume.isRootFolder(dir)) {
        destination = QDir(dir).filePath(QLatin1String(songsFolder));
        m_hasMadeFolder = !QFileInfo(destination).isDir();
        if (m_hasMadeFolder && !QDir().mkdir(destination))
            return refuse(tr("Non è possibile copiare i file sulla cartella principale, creare o "
                             "selezionare una sottocartella"));
    }
    if (isReserved(SongPath::fileName(destination)))
        return refuse(tr("Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST perchè "
                         "sono riservate, selezionare un'altra cartella"));
    return destination;
}

CopySummary TransferJob::copySongs(const QStringList &paths, const QString &destination)
{
    m_progress.beginProgress({tr("Trasferimento"), tr("Trasferimento file..."), tr("Interrompi")},
                             static_cast<int>(paths.size()));
    return FileCopier(m_progress, m_questions, m_messages, m_disk, m_observer)
        .copy(paths, destination);
}

IndexSummary TransferJob::updateIndex(const QString &root)
{
    if (!QFileInfo::exists(root)) {
        IndexSummary summary;
        summary.hasFailed = true;
        summary.cause = {Outcome::Code::NotFound, root, {}, {}};
        return summary;
    }
    constexpr int defaultMaximum = 100;
    IndexSummary summary =
        IndexJob(m_progress, m_messages, m_disk)
            .run(IndexJob::Kind::Update, root,
                 {tr("Aggiornamento"), tr("Aggiornamento database..."), tr("Interrompi")},
                 defaultMaximum);
    // Only behind this one, whatever the copies and the index flushed, may the card be pulled.
    if (summary.isDone && !m_disk.syncAll({root})) {
        summary.isDone = false;
        summary.cause = {Outcome::Code::NotConfirmed, root, {}, {}};
    }
    return summary;
}

QString TransferJob::refuse(const QString &text)
{
    m_messages.warning(tr("Trasferimento"), text);
    return QString();
}

} // namespace tarvel4
