#pragma once

#include "storage/disk.h"

#include <QByteArray>
#include <QSet>
#include <QString>

#include <vector>

namespace tarvel4 {

/**
 * Songs that are copied into a folder together: first under temporary names, and under their own
 * once their bytes are on the medium. So each is there whole or not at all, whatever happens, and a
 * medium is flushed once for many songs.
 */
class CopyBatch
{
public:
    enum class StageResult { Yes, SourceFailed, TargetFailed };

    /** A song and, where it has one, its companion, which goes wherever the song goes. */
    struct Song
    {
        QString source;
        QString destination;
        QString companionSource; ///< empty: none
        QString companionDestination;
        bool isCounted = true; ///< false: whoever added it has counted it as failed already
    };

    CopyBatch(Disk &disk, const QString &folder);
    ~CopyBatch();
    Q_DISABLE_COPY(CopyBatch)

    /** Removes the temporary files that a killed run left in the folder. */
    void removeLeftovers();

    /** Copies a song under a temporary name. When it fails nothing of it remains. */
    StageResult add(const Song &song);

    /** Makes room for a song that does not fit beside the file that it replaces: removes that file,
     * where the song then fits. */
    bool hideProgress(const Song &song);

    /** True when finish() could make no more room. */
    bool isEmpty() const { return m_staged.empty() && m_setAside.empty(); }
    bool isFull() const;
    /** True when a staged file will get this path, without regard to case. */
    bool hasPending(const QString &destination) const;

    /** Flushes the staged songs and gives them their names; what stood there before is replaced. */
    void commit();

    /** Commits, and flushes the names. Afterwards copied() and failed() are final. */
    void finish();

    int copied() const { return m_copied; } ///< songs that are on the medium
    const QStringList &failed() const { return m_failed; } ///< sources not flushed or named

private:
    struct Staged
    {
        QString source;
        QString temporary;
        QString destination;
        QString companionTemporary;
        QString companionDestination;
        bool isCounted;
    };

    /** A replaced file that waits under another name until the new one is safe. */
    struct Replaced
    {
        QString path;
        QString destination;
    };

    StageResult stage(const QString &source, QString &temporary);
    StageResult copyBytes(const QString &source, QFileDevice &target);
    bool place(const Staged &song);
    bool publish(const QString &temporary, const QString &destination);
    void discard(const Staged &song);
    bool flush();
    void removeSetAside();
    void restoreSetAside();

    Disk &m_disk;
    QString m_folder;
    QByteArray m_buffer;
    std::vector<Staged> m_staged;
    QSet<QString> m_pending; ///< case-folded destinations of the staged files
    qint64 m_stagedBytes = 0;
    QString m_namePrefix;
    int m_nextName = 0;
    QStringList m_unflushed; ///< sources that have their name, but are not yet on the medium
    std::vector<Replaced> m_setAside;
    bool m_isDirty = false; ///< names have changed since the last flush
    int m_copied = 0;
    QStringList m_failed;
};

} // namespace tarvel4
