#include "library/saverun.h"

#include "library/loadedsong.h"
#include "storage/recovery.h"

#include <QFileInfo>

namespace tarvel4 {

SaveRun::SaveRun(Disk &disk, Journal *journal, const QString &what)
    : m_disk(disk)
    , m_run(journal ? std::make_unique<Journal::Run>(*journal, what) : nullptr)
    , m_batch(disk, m_run.get())
{}

void SaveRun::takeBack(qint64 run)
{
    if (m_run)
        m_run->takeBack(run);
}

void SaveRun::finish()
{
    if (m_run)
        m_run->finish();
}

void SaveRun::beforeReading(const QString &path)
{
    if (m_batch.hasPending(FileStamp(path)))
        m_batch.commit();
}

void SaveRun::save(const LoadedSong &song, SaveBatch::Done done)
{
    FileChange change;
    Outcome outcome = song.song().planSave(change);
    if (outcome)
        return save(song.path(), song.stamp(), change, std::move(done));
    outcome.path = song.path();
    inTurn([outcome, done = std::move(done)] { done(outcome); });
}

void SaveRun::save(const QString &path, const FileStamp &stamp, const FileChange &change,
                   SaveBatch::Done done)
{
    if (change.way == FileChange::Way::Beside) { // the name of what is set aside is needed
        const QFileInfo info(path);
        Recovery::recover(m_disk, info.isSymLink() ? info.canonicalFilePath() : path,
                          MetaSong::isSong);
    }
    m_batch.add(path, stamp, change, std::move(done));
    if (m_batch.isFull())
        m_batch.commit();
}

} // namespace tarvel4
