#pragma once

#include "storage/recovery.h"

#include <QCoreApplication>
#include <QStringList>

namespace tarvel4 {

class Disk;
class Journal;
class Messages;

/** Puts in order what a power cut, a kill or a bad medium left half-done; the first step of
 * everything that writes. */
class RecoveryJob
{
    Q_DECLARE_TR_FUNCTIONS(RecoveryJob)

public:
    RecoveryJob(Messages &messages, Disk &disk);
    explicit RecoveryJob(Messages &messages);

    /** The songs whose save was cut short, wherever they are. */
    void finishSaves(Journal &journal);

    /** A song that was left under another name can't be chosen, but its neighbours can: those in
     * the folders of \a paths get their names back. */
    void recoverBeside(const QStringList &paths);

    /** What was done about one song, for people; \a cause: why it waits. */
    static QString sentence(const QString &path, Recovery::Result result, const Outcome &cause);

private:
    Recovery::Report report();

    Messages &m_messages;
    Disk &m_disk;
};

} // namespace tarvel4
