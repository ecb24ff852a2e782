#pragma once

#include "library/jobreport.h"

#include <optional>

namespace tarvel4 {

class Database;
class Progress;
class Questions;

/** What a synchronisation would do to each song, worked out by the update's own dry run. Writes
 * nothing and asks nothing. */
class UpdatePreview
{
    Q_DECLARE_TR_FUNCTIONS(UpdatePreview)

public:
    UpdatePreview(Database &db, Progress &progress, Questions &questions);

    /** \a asksUnpublished: whether the synchronisation would ask about each song that the maker did
     * not publish. Nothing where it was cancelled or there are no songs. */
    std::optional<JobReport> run(const QStringList &paths, bool asksUnpublished);

private:
    Database &m_db;
    Progress &m_progress;
    Questions &m_questions;
};

} // namespace tarvel4
