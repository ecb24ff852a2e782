#pragma once

#include "library/filecopier.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QPair>
#include <QStringList>
#include <QVector>

#include <functional>

namespace tarvel4 {

/** How a backup ended. */
struct BackupSummary
{
    bool mayProceed = false; ///< it is complete, or the user wants none
    QString folder; ///< empty where none was made or it is not complete
    QString incompleteFolder; ///< what a failed one left of its songs, marked so by its name
    Outcome cause; ///< why the folder could not be made, filled or given its name
    CopySummary songs;
};

/** Saves the chosen songs into a new, dated folder before they are rewritten. The folder has its
 * name only when all of them are on the medium; until then the name says that it is incomplete. */
class BackupJob
{
    Q_DECLARE_TR_FUNCTIONS(BackupJob)

public:
    using Clock = std::function<QDateTime()>;

    explicit BackupJob(Progress &progress, Questions &questions, Messages &messages,
                       Disk &disk = Disk::real(), Clock clock = &QDateTime::currentDateTime);

    void setObserver(SongObserver observer) { m_observer = std::move(observer); }

    /** Asks whether and where, and copies where the answer says so. */
    BackupSummary run(const QStringList &paths);

    /** Songs that don't fit into one flat folder together: pairs of paths with the same file name,
     * without regard to case. */
    static QVector<QPair<QString, QString>> sameNames(const QStringList &paths);

private:
    CopySummary copyInto(const QString &destination, const QStringList &paths);
    Outcome publish(const QString &destination);
    void failIncomplete(const QString &destination, BackupSummary &summary);
    void fail(const QStringList &details);

    Progress &m_progress;
    Questions &m_questions;
    Messages &m_messages;
    Disk &m_disk;
    Clock m_clock;
    SongObserver m_observer;
};

} // namespace tarvel4
