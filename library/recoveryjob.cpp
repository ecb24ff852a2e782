#include "library/recoveryjob.h"

#include "library/messages.h"
#include "songs/metasong.h"
#include "storage/disk.h"
#include "storage/journalrecovery.h"

#include <QFileInfo>
#include <QSet>

#include <utility>

namespace tarvel4 {

RecoveryJob::RecoveryJob(Messages &messages, Disk &disk)
    : m_messages(messages)
    , m_disk(disk)
{}

RecoveryJob::RecoveryJob(Messages &messages)
    : RecoveryJob(messages, Disk::real())
{}

void RecoveryJob::finishSaves(Journal &journal)
{
    JournalRecovery::recover(journal, m_disk, MetaSong::isSong, report());
}

void RecoveryJob::recoverBeside(const QStringList &paths)
{
    QSet<QString> folders;
    for (const QString &path : paths)
        folders.insert(QFileInfo(path).path());
    for (const QString &folder : std::as_const(folders))
        Recovery::recoverAll(m_disk, folder, MetaSong::isSong, report());
}

Recovery::Report RecoveryJob::report()
{
    return [this](const QString &path, Recovery::Result result, const Outcome &cause) {
        m_messages.recovered(path, result, cause);
    };
}

QString RecoveryJob::sentence(const QString &path, Recovery::Result result, const Outcome &cause)
{
    switch (result) {
    case Recovery::Result::GivenBack:
        return tr("%1: rimesso al suo posto dopo un'interruzione").arg(path);
    case Recovery::Result::Removed:
        return tr("%1: tolta la vecchia copia lasciata da un'interruzione").arg(path);
    case Recovery::Result::Kept:
        return tr("%1: la vecchia copia lasciata da un'interruzione resta come %2")
            .arg(path, Recovery::recoveryPathOf(path));
    case Recovery::Result::PutBack:
        return tr("%1: un salvataggio è stato interrotto, il contenuto di prima è tornato al suo "
                  "posto")
            .arg(path);
    case Recovery::Result::Waits:
        return tr("%1: un salvataggio è stato interrotto e sarà messo a posto quando la song si "
                  "potrà di nuovo leggere e scrivere (%2)")
            .arg(path, cause.sentence());
    case Recovery::Result::ChangedSince:
        return tr("%1: un salvataggio è stato interrotto, ma poi la song è stata cambiata da un "
                  "altro programma e resta com'è")
            .arg(path);
    case Recovery::Result::NoneThere:
        break;
    }
    return {};
}

} // namespace tarvel4
