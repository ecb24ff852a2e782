#pragma once

#include "storage/disk.h"

namespace tarvel4 {

/**
 * A new file's way to the name of an old one. Where a medium could lose both in one step (FAT,
 * exFAT) the old one waits under another name (storage/recovery.h) until the new one is safe;
 * elsewhere nothing is set aside. Whoever has many of them flushes them together between two steps.
 */
class Replacement
{
public:
    Replacement(Disk &disk, const QString &path);

    /** Gives the old file its other name where that is needed; on the medium before publish(). */
    Outcome setAside();
    bool isSetAside() const { return !m_aside.isEmpty(); }

    /** Gives the file \a from, whose bytes are on the medium, the name. Not done: as giveBack(). */
    Outcome publish(const QString &from);
    bool isPublished() const { return m_isPublished; }

    /** Removes the old file; the new one has its name on the medium. */
    void removeOld();

    /** The old file, where it was set aside, has its name again: \a cause, or else NotRestored. */
    Outcome giveBack(const Outcome &cause);

private:
    Disk &m_disk;
    QString m_path;
    QString m_aside; ///< the old file's name meanwhile; empty: none
    bool m_isPublished = false;
};

} // namespace tarvel4
