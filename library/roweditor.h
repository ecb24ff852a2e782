#pragma once

#include "library/songedit.h"
#include "library/workflowhost.h"

#include <QCoreApplication>
#include <QStringList>

namespace tarvel4 {

class UserSongsRelTableModel;

/** The fields of an edited song that are to be written into every song of the table. */
struct ApplyToAll
{
    bool author = false;
    bool artist = false;
    bool genre = false;
    bool title = false; ///< each song's own file name without its extension, not the edited title

    bool any() const { return author || artist || genre || title; }
};

/** The manual edit of rows of the table. */
class RowEditor
{
    Q_DECLARE_TR_FUNCTIONS(RowEditor)

public:
    RowEditor(UserSongsRelTableModel &model, WorkflowHost &host, Disk &disk = Disk::real());

    /** Writes an edited record into the row's file and refreshes the row. */
    bool saveRow(SongEdit &song, const SongInfo &info, int row);

    /** Writes the chosen fields of \a edited into every other row's song, until the user cancels.
     */
    void applyToOthers(const SongInfo &edited, const ApplyToAll &fields, int editedRow);

    /** Songs of the last applyToOthers() that could not be read or saved. */
    const QStringList &failures() const { return m_failures; }

private:
    bool applyToRow(const SongInfo &edited, const ApplyToAll &fields, int row);

    UserSongsRelTableModel &m_model;
    WorkflowHost &m_host;
    Disk &m_disk;
    QStringList m_failures;
};

} // namespace tarvel4
