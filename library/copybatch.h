#pragma once

#include "storage/replacement.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
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
    /** A song and, where it has one, its companion, which goes wherever the song goes. */
    struct Song
    {
        int id = 0; ///< by which whoever adds it knows it
        QString source;
        QString destination;
        QString companionSource; ///< empty: none
        QString companionDestination;
    };

    /** Told of each song that was added, as soon as it is on the medium under its name or can't be
     * any more. */
    using Observer = std::function<void(int id, const Outcome &outcome)>;

    CopyBatch(Disk &disk, const QString &folder, Observer observer);
    ~CopyBatch();
    Q_DISABLE_COPY(CopyBatch)

    /** MediumFailed where a file that a cut run left may be a second name of another one, so that
     * neither may be replaced or removed before the medium is repaired. */
    Outcome checkLeftovers() const;

    /** Removes the temporary files that a killed run left in the folder. */
    void removeLeftovers();

    /** Makes a folder to copy into; AlreadyExists where anything has its name. */
    static Outcome makeFolder(const QString &folder);

    /** Copies a song under a temporary name. When it fails nothing of it remains, and the outcome's
     * path tells the source that can't be read from the destination that can't be written. */
    Outcome add(const Song &song);

    /** Makes room for a song that does not fit beside the file that it replaces: removes that file,
     * where the song then fits. NoRoom where it would not, or where nobody knows. */
    Outcome freeSpaceFor(const Song &song);

    /** True when finish() could make no more room. */
    bool isEmpty() const;
    bool isFull() const;
    /** True when a staged file will get this path, without regard to case. */
    bool hasPending(const QString &destination) const;

    /** Flushes the staged songs and gives them their names; what stood there before is replaced. */
    void commit();

    /** Commits, and flushes the names. Afterwards the observer was told of every song. */
    void finish();

private:
    struct Staged
    {
        Song song;
        Replacement replacement;
        QString temporary;
        QString companionTemporary;
        Outcome outcome;
    };

    Outcome stage(const QString &source, const QString &destination, QString &temporary);
    Outcome copyBytes(const QString &source, QFileDevice &target, const QString &temporary,
                      const QString &destination);
    void setAside();
    void place(Staged &staged);
    void discard(const Staged &staged);
    Outcome flush();

    Disk &m_disk;
    QString m_folder;
    Observer m_observer;
    std::vector<Staged> m_staged;
    QSet<QString> m_pending; ///< case-folded destinations of the staged files
    qint64 m_stagedBytes = 0;
    QString m_namePrefix;
    int m_nextName = 0;
    std::vector<Staged> m_unflushed; ///< have their name, but are not yet on the medium
    QStringList m_touched; ///< paths that were written, named or removed since the last flush
    bool m_isDirty = false; ///< names have changed since the last flush
};

} // namespace tarvel4
