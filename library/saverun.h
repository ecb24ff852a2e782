#pragma once

#include "storage/savebatch.h"

#include <QString>

#include <functional>
#include <memory>

namespace tarvel4 {

class LoadedSong;

/** The saves of one thing that the user asked for, in batches; the history shows them, and takes
 * them back, as one. */
class SaveRun
{
public:
    /** \a what: as the history calls it. \a journal: null where nothing is to be kept. */
    SaveRun(Disk &disk, Journal *journal, const QString &what);

    Disk &disk() const { return m_disk; }

    /** What Journal::Run says of them. */
    void takeBack(qint64 run);
    void finish();

    /** To be called before a song is read that may be waiting to be written. */
    void beforeReading(const QString &path);

    /** Saves a song as it is in memory, unless its file has changed since it was loaded. \a done is
     * told how that ended, in the order of the calls. */
    void save(const LoadedSong &song, SaveBatch::Done done);
    /** The same for any change of a file that was \a stamp. */
    void save(const QString &path, const FileStamp &stamp, const FileChange &change,
              SaveBatch::Done done);

    /** Calls \a what once everything before it has been told. */
    void inTurn(std::function<void()> what) { m_batch.inTurn(std::move(what)); }

    /** Writes what waits. */
    void commit() { m_batch.commit(); }

private:
    Disk &m_disk;
    std::unique_ptr<Journal::Run> m_run;
    SaveBatch m_batch;
};

} // namespace tarvel4
