#pragma once

#include "library/workflowhost.h"

#include <QCoreApplication>
#include <QStringList>

class Database;
class UserSongsRelTableModel;

/** Step 1: reads the chosen song files into the table. */
class LibraryImport
{
    Q_DECLARE_TR_FUNCTIONS(LibraryImport)

public:
    LibraryImport(Database &db, UserSongsRelTableModel &model, WorkflowHost &host);

    /**
     * False when the old rows could not be cleared and nothing was imported. Progress is begun, not
     * ended. Nothing cancels an import.
     */
    bool importUserLibrary(const QStringList &selectedFiles);

    const ImportCounts &counts() const { return m_counts; }

    /**
     * Shows the summary where the setting asks for it and keeps its box in the setting. True when
     * the user wants the songs synchronised now.
     */
    bool askSynchronise();

private:
    bool clearTable();
    void importSong(const QString &path);

    Database &m_db;
    UserSongsRelTableModel &m_model;
    WorkflowHost &m_host;
    ImportCounts m_counts;
};
