#pragma once

#include "library/workflowhost.h"
#include "songs/disk.h"

#include <QStringList>

/** Copies songs flat into a folder, each whole or not at all; shared by backup and transfer. */
class FileCopier
{
public:
    FileCopier(WorkflowHost &host, Disk &disk);

    /**
     * Copies \a selectedFiles into \a destDir, asking the host about names that exist there. Moves
     * the running progress by one a file. True when nothing failed and the user did not cancel;
     * then all is on the medium.
     */
    bool copyFiles(const QStringList &selectedFiles, const QString &destDir);

    int copied() const { return m_copied; } ///< songs counted as transferred; 0 after a cancel
    int failures() const { return m_failures; } ///< copies that failed
    int kept() const { return m_kept; } ///< songs left as they were at the destination

private:
    WorkflowHost &m_host;
    Disk &m_disk;
    int m_copied = 0;
    int m_failures = 0;
    int m_kept = 0;
};
