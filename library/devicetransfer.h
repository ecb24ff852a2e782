#pragma once

#include "library/volume.h"
#include "library/workflowhost.h"
#include "storage/disk.h"

#include <QCoreApplication>
#include <QStringList>

namespace tarvel4 {

/** Step 3: copies the chosen songs to the player's memory and brings its index up to date. */
class DeviceTransfer
{
    Q_DECLARE_TR_FUNCTIONS(DeviceTransfer)

public:
    enum class Result { Done, Refused, Failed };

    DeviceTransfer(WorkflowHost &host, const Volume &volume, Disk &disk = Disk::real());

    /** Checks \a dir, copies, indexes, and tells the host how it ended. An empty \a dir ends it
     * silently. */
    Result transferFiles(const QStringList &selectedFiles, const QString &dir);

    int copied() const { return m_copied; }
    int failures() const { return m_failed.size(); }
    const QStringList &failed() const { return m_failed; } ///< the songs that could not be copied
    int kept() const { return m_kept; }
    /** What the index could not take in. */
    const QStringList &errors() const { return m_errors; }
    /** True when the old index could not be read or the new one not be written. */
    bool indexFailed() const { return m_indexFailed; }
    int found() const { return m_found; } ///< songs that the index counted on the memory
    bool prepared() const { return m_prepared; } ///< the memory's state after the run

private:
    QString destinationFor(const QString &dir);
    bool copySongs(const QStringList &selectedFiles, const QString &destination);
    bool updateDeviceIndex(const QString &destDir);
    QString refuse(const QString &text);

    WorkflowHost &m_host;
    const Volume &m_volume;
    Disk &m_disk;
    int m_copied = 0;
    QStringList m_failed;
    int m_kept = 0;
    int m_found = 0;
    QStringList m_errors;
    bool m_indexFailed = false;
    bool m_prepared = false;
};

} // namespace tarvel4
