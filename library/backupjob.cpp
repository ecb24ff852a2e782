#include "library/backupjob.h"

#include "library/messages.h"
#include "library/progress.h"
#include "library/questions.h"
#include "library/songpath.h"
#include "library/workflowlog.h"

#include <QDebug>
#include <QHash>

namespace tarvel4 {

BackupJob::BackupJob(Progress &progress, Questions &questions, Messages &messages, Disk &disk,
                     Clock clock)
    : m_progress(progress)
    , m_questions(questions)
    , m_messages(messages)
    , m_disk(disk)
    , m_clock(std::move(clock))
{}

BackupSummary BackupJob::run(const QStringList &paths)
{
    BackupSummary summary;
    const BackupChoice choice = m_questions.askBackup();
    if (choice.action != BackupChoice::Backup) {
        summary.mayProceed = choice.action == BackupChoice::ProceedWithout;
        return summary;
    }
    if (choice.folder.isEmpty()) {
        fail({});
        return summary;
    }

    WorkflowLog::title("BACKUP USER LIBRARY");
    const QString destination = choice.folder + QLatin1String("/backup_kvaro_")
        + m_clock().toString(QStringLiteral("yyyy_MM_dd_hh-mm-ss"));
    qDebug() << "Making new root backup dir:" << destination;
    summary.cause = CopyBatch::makeFolder(destination);
    if (!summary.cause) {
        qDebug() << "Dest root dir creation failed";
        fail({summary.cause.message()});
        return summary;
    }
    summary.songs = copyInto(destination, paths);
    if (!summary.songs.isComplete()) {
        fail(summary.songs.details());
        return summary;
    }
    summary.mayProceed = true;
    summary.folder = destination;
    m_messages.information(tr("Backup"), tr("Backup eseguito correttamente"));
    return summary;
}

QVector<QPair<QString, QString>> BackupJob::sameNames(const QStringList &paths)
{
    QVector<QPair<QString, QString>> pairs;
    QHash<QString, QString> pathOfName;
    for (const QString &path : paths) {
        const QString name = SongPath::fileName(path).toCaseFolded();
        const auto known = pathOfName.constFind(name);
        if (known == pathOfName.constEnd())
            pathOfName.insert(name, path);
        else if (*known != path)
            pairs.append({*known, path});
    }
    return pairs;
}

CopySummary BackupJob::copyInto(const QString &folder, const QStringList &paths)
{
    m_progress.beginProgress(
        {tr("Backup"), tr("Eseguo backup dellla libreria..."), tr("Interrompi")}, paths.size());
    const CopySummary summary =
        FileCopier(m_progress, m_questions, m_messages, m_disk, m_observer).copy(paths, folder);
    m_progress.endProgress();
    // Two songs of one name: the user's answers decide which the folder holds, and the log says so.
    for (const QString &path : summary.displaced)
        qDebug() << "[BACKUP] WARNING: not in the backup, as chosen:" << path;
    return summary;
}

void BackupJob::fail(const QStringList &details)
{
    m_messages.critical(tr("Backup"), tr("Backup FALLITO !!!"), details);
}

} // namespace tarvel4
