#pragma once

#include "library/workflowhost.h"
#include "storage/disk.h"

#include <QHash>
#include <QStringList>

namespace tarvel4 {

class CopyBatch;

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
    int failures() const { return m_failed.size(); } ///< copies that failed
    const QStringList &failed() const { return m_failed; } ///< and the songs they were of
    int kept() const { return m_kept; } ///< songs left as they were at the destination

    /** Sources of the last run whose name another song has at the destination, as the user chose.
     */
    const QStringList &displaced() const { return m_displaced; }

private:
    bool copyEach(const QStringList &selectedFiles, const QString &destDir, CopyBatch &batch);
    bool copySong(const QString &source, const QString &destination, CopyBatch &batch);
    void addToBatch(const QString &source, const QString &destination, CopyBatch &batch);
    bool mayReplace(const QString &source, const QString &destination);

    WorkflowHost &m_host;
    Disk &m_disk;
    bool m_askOverwrite = true;
    bool m_overwrite = false;
    int m_copied = 0;
    QStringList m_failed;
    int m_kept = 0;
    QHash<QString, QString> m_sources; ///< by case-folded destination
    QStringList m_displaced;
};

} // namespace tarvel4
