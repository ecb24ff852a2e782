#pragma once

#include "library/copybatch.h"
#include "library/songoutcome.h"

#include <QHash>
#include <QStringList>

#include <optional>
#include <vector>

namespace tarvel4 {

class Messages;
class Progress;
class Questions;

/** How a copy of songs ended. */
struct CopySummary
{
    int copied = 0; ///< songs on the medium, those that were there already included; 0 after a
                    ///< cancel
    int kept = 0; ///< songs left as they were at the destination
    QVector<SongOutcome> failures;
    /** Songs whose name another one has at the destination, as the user chose. */
    QStringList displaced;
    bool isCancelled = false;
    Outcome cause; ///< why the copy was not even begun

    bool isComplete() const { return cause && !isCancelled && failures.isEmpty(); }
    /** Why it was not begun, and one line a song that failed, "name: cause". */
    QStringList details() const;
};

/** Copies songs flat into a folder, each whole or not at all; shared by backup and transfer. */
class FileCopier
{
public:
    /** For one run; \a observer is told of each song that the run came to. */
    FileCopier(Progress &progress, Questions &questions, Messages &messages, Disk &disk,
               SongObserver observer = {});

    /**
     * Copies the songs of \a paths into \a destDir, asking about names that exist there. Moves the
     * running progress by one a song. Nothing is copied where there is no room for all of it. Once
     * it returns all is on the medium. The log names the folder \a finalDir where it will be called
     * so later.
     */
    CopySummary copy(const QStringList &paths, const QString &destDir,
                     const QString &finalDir = {});

private:
    struct Result
    {
        SongResult result;
        Outcome cause;
    };

    bool copyEach(const QString &destDir, CopyBatch &batch);
    bool copySong(int song, const QString &destination, CopyBatch &batch);
    void addToBatch(int song, const QString &destination, CopyBatch &batch);
    bool mayReplace(const QString &source, const QString &destination);
    void setResult(int song, SongResult result, const Outcome &cause = {});

    Progress &m_progress;
    Questions &m_questions;
    Messages &m_messages;
    Disk &m_disk;
    SongObserver m_observer;
    QStringList m_paths;
    QString m_finalDir;
    std::vector<std::optional<Result>> m_results; ///< by song; some are known before earlier ones
    int m_told = 0; ///< songs that the observer was told of
    CopySummary m_summary;
    bool m_askOverwrite = true;
    bool m_overwrite = false;
    QHash<QString, QString> m_sources; ///< by case-folded destination
};

} // namespace tarvel4
