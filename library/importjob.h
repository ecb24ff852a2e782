#pragma once

#include "library/progress.h"
#include "library/questions.h"
#include "library/songoutcome.h"

#include <QCoreApplication>
#include <QStringList>

#include <functional>

namespace tarvel4 {

class Messages;

/** Step 1: reads song files. Good for one run. */
class ImportJob
{
    Q_DECLARE_TR_FUNCTIONS(ImportJob)

public:
    ImportJob(Progress &progress, SongObserver observer);

    /** \a clearOldSongs comes before the first file; where it is false nothing is imported.
     * Progress is begun, not ended. */
    ImportSummary run(const QStringList &paths, const std::function<bool()> &clearOldSongs);

    /** Reads every file below a folder until it is cancelled. Progress is the caller's. */
    ImportSummary scanDir(const QString &path);

    /** Reads one song. */
    static SongOutcome read(const QString &path);

    /**
     * Shows the summary where the setting asks for it and keeps its box in the setting. True when
     * the user wants the songs synchronised now.
     */
    static bool askSynchronise(const ImportSummary &summary, Questions &questions);

private:
    void importSong(const QString &path, const char *operation);

    Progress &m_progress;
    SongObserver m_observer;
    ImportSummary m_summary;
};

} // namespace tarvel4
