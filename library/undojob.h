#pragma once

#include "library/progress.h"
#include "library/saverun.h"
#include "library/songoutcome.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVector>

#include <functional>
#include <optional>

namespace tarvel4 {

/** What an undo or a restore did. */
struct UndoSummary
{
    int restored = 0;
    int failed = 0;
    QStringList problems; ///< one line for each song that failed, "name: cause"
    bool isComplete = false; ///< no song is left because of a cancel
};

/** Gives songs the bytes back that they had before a run, or that a backup holds. Good for one run,
 * which the history shows like any other and which can be taken back like any other. */
class UndoJob
{
    Q_DECLARE_TR_FUNCTIONS(UndoJob)

public:
    /** \a isDryRun: nothing is written, and each outcome is what would become of the song. */
    UndoJob(Progress &progress, SaveRun &saves, bool isDryRun = false);

    struct Next
    {
        JournalRun run;
        QStringList files; ///< that the run wrote, in their order
        QStringList left; ///< those of them to which an undo that was cut short did not come
    };

    /** What is to be taken back where nobody names a run: the newest one, or the rest of what it
     * was taking back when it was cut short. None where there is no run. */
    static std::optional<Next> next(Journal &journal, const QVector<JournalRun> &runs);

    /** Takes back the songs of a run, the last one first, each that still has the bytes that the
     * run wrote; ChangedMeanwhile for the others, but for those that were given back already. */
    UndoSummary undo(Journal &journal, qint64 run, const SongObserver &observer);

    /** Gives each song the bytes of the file of its name in the folder \a backup; Refused for those
     * of which several have the name. */
    UndoSummary restore(const QStringList &paths, const QString &backup,
                        const SongObserver &observer);

private:
    /** A song's way back, worked out without touching it. */
    struct Plan
    {
        Outcome outcome;
        FileStamp stamp;
        FileChange change;
        bool isNeeded = true; ///< false where the song has those bytes
    };
    using Planner = std::function<Plan(int)>;
    using Writes = QVector<JournalEntry>; ///< of one file, the last one first
    /** What is known of one file. */
    struct History
    {
        QStringList names;
        Writes writes; ///< of the run
        Writes later; ///< of later runs
    };

    /** \a files: the names of each; it is written by the first one. */
    UndoSummary give(const QVector<QStringList> &files, const Planner &plan,
                     const SongObserver &observer);
    void giveOne(const QStringList &names, const Plan &plan, const SongObserver &tell);
    static QVector<History> byFile(const QVector<JournalEntry> &songs,
                                   const QVector<JournalEntry> &later);
    static Plan planUndo(const History &file);
    static Plan wayBack(const Writes &writes);
    static Plan planRestore(const QString &path, const QString &source);

    Progress &m_progress;
    SaveRun &m_saves;
    bool m_isDryRun;
};

} // namespace tarvel4
