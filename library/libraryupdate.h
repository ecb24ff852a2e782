#pragma once

#include "library/songupdate.h"
#include "library/workflowhost.h"

#include <QCoreApplication>
#include <QStringList>

#include <functional>

namespace tarvel4 {

class Database;
class UserSongsRelTableModel;

/** Step 2: finds each song of the table in the catalogue and writes the catalogue's data into its
 * file. */
class LibraryUpdate
{
    Q_DECLARE_TR_FUNCTIONS(LibraryUpdate)

public:
    /** Whether songs that the maker did not publish are asked about, and the answer where they are
     * not. */
    struct UnpublishedPolicy
    {
        bool ask = true;
        bool answerForAll = true;
    };

    /** Called after each row with the song's plan; the song is dropped afterwards. */
    using Observer = std::function<void(int row, UpdateOutcome outcome, const SongUpdate &song)>;

    LibraryUpdate(Database &db, UserSongsRelTableModel &model, WorkflowHost &host,
                  UnpublishedPolicy unpublished, Disk &disk = Disk::real());

    void setObserver(Observer observer) { m_observer = std::move(observer); }

    /** Plans every row and writes nothing: no file, no status. */
    void setDryRun(bool dryRun) { m_dryRun = dryRun; }

    /** Makes the backup first, but for a dry run. True when \a backup said so and every row was
     * processed. */
    bool updateUserLibrary(const std::function<bool()> &backup);

    /** Songs of the last run that could not be read or saved. */
    const QStringList &failures() const { return m_failures; }

private:
    bool updateRows(int rows);
    void updateRow(int row);
    UpdateOutcome syncRow(int row, SongUpdate &song);
    bool mayChange(const SongUpdate &song);

    Database &m_db;
    UserSongsRelTableModel &m_model;
    WorkflowHost &m_host;
    Disk &m_disk;
    bool m_askThisRun;
    bool m_answerForAll;
    bool m_dryRun = false;
    Observer m_observer;
    QStringList m_failures;
};

} // namespace tarvel4
