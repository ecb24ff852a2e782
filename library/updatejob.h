#pragma once

#include "library/progress.h"
#include "library/questions.h"
#include "library/saverun.h"
#include "library/songoutcome.h"

#include <QCoreApplication>
#include <QStringList>

#include <functional>

namespace tarvel4 {

class Database;
class SongUpdate;

/** What an update did. */
struct UpdateSummary
{
    bool isComplete = false; ///< every song was handled: there were some, a backup, and no cancel
    int updated = 0;
    int unchanged = 0; ///< not in the catalogue, or not published and not to be changed
    int failed = 0; ///< unreadable ones too
};

/** What an update does about a song that the maker did not publish. */
enum class UnpublishedPolicy { Ask, Change, Leave };

/** Step 2: finds each song in the catalogue and writes the catalogue's data into its file. Good for
 * one run. */
class UpdateJob
{
    Q_DECLARE_TR_FUNCTIONS(UpdateJob)

public:
    struct Options
    {
        UnpublishedPolicy unpublished = UnpublishedPolicy::Ask;
        bool isDryRun = false; ///< writes nothing and makes no backup
        ProgressTexts texts{tr("Aggiornamento file"), tr("Aggiorno la libreria..."),
                            tr("Interrompi")};
    };

    UpdateJob(Database &db, Progress &progress, Questions &questions, const Options &options,
              SaveRun &saves);

    /** \a backup is made before the first song; where it is false nothing is written. */
    UpdateSummary run(const QStringList &paths, const SongObserver &observer,
                      const std::function<bool()> &backup);

private:
    void update(const QString &path, const SongObserver &tell);
    SongOutcome plan(SongUpdate &song);
    bool mayChange(const SongInfo &song);

    Database &m_db;
    Progress &m_progress;
    Questions &m_questions;
    SaveRun &m_saves;
    Options m_options;
};

} // namespace tarvel4
