#include "library/backupjob.h"

#include "library/messages.h"
#include "library/progress.h"
#include "library/questions.h"
#include "library/songpath.h"
#include "library/workflowlog.h"
#include "storage/systemfile.h"

#include <QDebug>
#include <QHash>

namespace tarvel4 {

namespace {

/** What a backup's folder is called until it is whole; FAT and Windows take each letter of it. */
QString incompleteName(const QString &destination)
{
    return destination + QLatin1String(" (incomplete)");
}

/** Makes the folder under its incomplete name, where none has either name. */
Outcome makeFolder(const QString &destination)
{
    const QString folder = incompleteName(destination);
    Outcome made = CopyBatch::makeFolder(folder);
    if (made == Outcome::Code::AlreadyExists)
        return made;
    if (!made) {
        made.path = destination;
        return made;
    }
    // In this order two programs can't both find the names free.
    if (!SystemFile::isTaken(destination))
        return {};
    SystemFile::removeEmptyFolder(folder);
    return {Outcome::Code::AlreadyExists, destination, {}, {}};
}

} // namespace

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
    summary.cause = makeFolder(destination);
    if (!summary.cause) {
        qDebug() << "Dest root dir creation failed";
        fail({summary.cause.message()});
        return summary;
    }
    summary.songs = copyInto(destination, paths);
    summary.cause = summary.songs.cause;
    if (summary.songs.isComplete())
        summary.cause = publish(destination);
    if (!summary.songs.isComplete() || !summary.cause) {
        failIncomplete(destination, summary);
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

CopySummary BackupJob::copyInto(const QString &destination, const QStringList &paths)
{
    m_progress.beginProgress(
        {tr("Backup"), tr("Eseguo backup dellla libreria..."), tr("Interrompi")},
        static_cast<int>(paths.size()));
    const CopySummary summary = FileCopier(m_progress, m_questions, m_messages, m_disk, m_observer)
                                    .copy(paths, incompleteName(destination), destination);
    m_progress.endProgress();
    // Two songs of one name: the user's answers decide which the folder holds, and the log says so.
    for (const QString &path : summary.displaced)
        qDebug() << "[BACKUP] WARNING: not in the backup, as chosen:" << path;
    return summary;
}

/** Gives the folder, whose songs are on the medium, its name. */
Outcome BackupJob::publish(const QString &destination)
{
    const QString folder = incompleteName(destination);
    if (SystemFile::isTaken(destination))
        return {Outcome::Code::AlreadyExists, destination, {}, {}};
    Outcome named = m_disk.replace(folder, destination);
    if (named) {
        // A flush of the names alone does not do: on FAT the new one then leads to nothing.
        named = m_disk.syncAll({destination});
        if (!named)
            m_disk.replace(destination, folder);
    }
    named.path = destination;
    return named;
}

/** Leaves what was copied, under the name that tells it from a backup, and says where. */
void BackupJob::failIncomplete(const QString &destination, BackupSummary &summary)
{
    QStringList details = summary.songs.details();
    if (!summary.cause && summary.songs.cause)
        details += summary.cause.message();
    const QString folder = incompleteName(destination);
    if (SystemFile::isTaken(folder) && !SystemFile::removeEmptyFolder(folder)) {
        qDebug() << "[BACKUP] WARNING: incomplete:" << folder;
        details += tr("%1: qui resta il backup incompleto").arg(folder);
        summary.incompleteFolder = folder;
    }
    fail(details);
}

void BackupJob::fail(const QStringList &details)
{
    m_messages.critical(tr("Backup"), tr("Backup FALLITO !!!"), details);
}

} // namespace tarvel4
