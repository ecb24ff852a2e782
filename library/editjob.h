#pragma once

#include "library/progress.h"
#include "library/saverun.h"
#include "library/songoutcome.h"

#include <QCoreApplication>
#include <QStringList>

#include <functional>

namespace tarvel4 {

/** What becomes of each song of an edit. */
struct SongChange
{
    /** The record to be written in place of the one that was read. */
    std::function<SongInfo(const SongInfo &)> record;
    QVector<Marker> markers; ///< to be put ahead of those present, in this order
};

/** The fields of an edited song that are to be written into every song of the table. */
struct ApplyToAll
{
    bool author = false;
    bool artist = false;
    bool genre = false;
    bool title = false; ///< each song's own file name without its extension, not the edited title

    bool any() const { return author || artist || genre || title; }
    SongChange changeFrom(const SongInfo &edited) const;
};

/** What an edit did. */
struct EditSummary
{
    int edited = 0;
    QStringList unsaved; ///< paths
    QStringList problems; ///< one line for each of them, "name: cause"

    void add(const SongOutcome &song);
    void add(const EditSummary &later);
};

/** The same edit of many songs. Good for one run. */
class EditJob
{
    Q_DECLARE_TR_FUNCTIONS(EditJob)

public:
    EditJob(Progress &progress, SaveRun &saves)
        : m_progress(progress)
        , m_saves(saves)
    {}

    /** Edits each song until it is cancelled. The path at \a leftOut counts in the progress, but is
     * neither edited nor told of. */
    EditSummary run(const QStringList &paths, const SongChange &change,
                    const SongObserver &observer, int leftOut = -1);

private:
    void edit(const QString &path, const SongChange &change, const SongObserver &tell);

    Progress &m_progress;
    SaveRun &m_saves;
};

} // namespace tarvel4
