#pragma once

#include "library/workflowhost.h"
#include "songs/disk.h"

#include <QDateTime>
#include <QStringList>

#include <functional>

/** Saves the chosen songs into a new, dated folder before they are rewritten. */
class LibraryBackup
{
public:
    using Clock = std::function<QDateTime()>;

    explicit LibraryBackup(WorkflowHost &host, Disk &disk = Disk::real(),
                           Clock clock = &QDateTime::currentDateTime);

    /** Asks the host, and copies where it says so. True: the update may proceed. */
    bool backupUserLibrary(const QStringList &selectedFiles);

    /** The folder of the last backup; empty where none was made. */
    QString folder() const { return m_folder; }
    int copied() const { return m_copied; }

private:
    WorkflowHost &m_host;
    Disk &m_disk;
    Clock m_clock;
    QString m_folder;
    int m_copied = 0;
};
