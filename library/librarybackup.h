#pragma once

#include "library/workflowhost.h"
#include "storage/disk.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QPair>
#include <QStringList>
#include <QVector>

#include <functional>

namespace tarvel4 {

/** Saves the chosen songs into a new, dated folder before they are rewritten. */
class LibraryBackup
{
    Q_DECLARE_TR_FUNCTIONS(LibraryBackup)

public:
    using Clock = std::function<QDateTime()>;

    explicit LibraryBackup(WorkflowHost &host, Disk &disk = Disk::real(),
                           Clock clock = &QDateTime::currentDateTime);

    /** Asks the host, and copies where it says so. True: the update may proceed. */
    bool backupUserLibrary(const QStringList &selectedFiles);

    /** The folder of the last backup; empty where none was made or it failed. */
    const QString &folder() const { return m_folder; }
    int copied() const { return m_copied; }
    const QStringList &failed() const { return m_failed; } ///< the songs that could not be copied

    /** Songs that don't fit into one flat folder together: pairs of paths with the same file name,
     * without regard to case. */
    static QVector<QPair<QString, QString>> sameNames(const QStringList &selectedFiles);

private:
    bool copyInto(const QString &folder, const QStringList &selectedFiles);
    bool fail();

    WorkflowHost &m_host;
    Disk &m_disk;
    Clock m_clock;
    QString m_folder;
    int m_copied = 0;
    QStringList m_failed;
};

} // namespace tarvel4
