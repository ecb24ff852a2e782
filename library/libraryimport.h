#pragma once

#include "library/workflowhost.h"

#include <QCoreApplication>
#include <QStringList>

namespace tarvel4 {

class Database;
class UserSongsRelTableModel;

/** Step 1: reads the chosen song files into the table. */
class LibraryImport
{
    Q_DECLARE_TR_FUNCTIONS(LibraryImport)

public:
    LibraryImport(Database &db, UserSongsRelTableModel &model, WorkflowHost &host);

    /** How an import goes about its files. */
    struct Manner
    {
        bool recovers = true; ///< what a power cut left aside is put in order first
        bool isCancellable = false;
    };

    /** False when the old rows could not be cleared and nothing was imported. Progress is begun,
     * not ended. */
    bool importUserLibrary(const QStringList &selectedFiles, Manner manner);
    bool importUserLibrary(const QStringList &selectedFiles)
    {
        return importUserLibrary(selectedFiles, Manner());
    }

    /** Adds every song below \a path to the table; false when it was cancelled. Progress is the
     * caller's. */
    bool scanDir(const QString &path);

    const ImportCounts &counts() const { return m_counts; }

    /**
     * Shows the summary where the setting asks for it and keeps its box in the setting. True when
     * the user wants the songs synchronised now.
     */
    bool askSynchronise();

private:
    bool clearTable();
    void putInOrder(const QStringList &files);
    void importSong(const QString &path);
    /** False for what is no song. */
    bool addSong(const QString &path);
    void showCount();

    Database &m_db;
    UserSongsRelTableModel &m_model;
    WorkflowHost &m_host;
    ImportCounts m_counts;
};

} // namespace tarvel4
