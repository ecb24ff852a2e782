#pragma once

#include "storage/disk.h"
#include "storage/filechange.h"
#include "storage/filestamp.h"
#include "storage/journal.h"

#include <QElapsedTimer>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace tarvel4 {

class FileRewrite;

/**
 * Many songs that are saved together: all or nothing of each, and the medium is flushed a fixed
 * number of times for all of them. Their old bytes go into the journal first. A song that fails
 * takes none of the others with it.
 */
class SaveBatch
{
public:
    static constexpr int mostSongs = 200;
    static constexpr qint64 mostBytes = 64 << 20; ///< of files
    static constexpr int mostMilliseconds = 500;

    /** Told how a save ended, once that is on the medium; in the order in which they were added. */
    using Done = std::function<void(const Outcome &)>;

    /** \a run: null where nothing is kept for an undo, nor for after a power cut. */
    explicit SaveBatch(Disk &disk, Journal::Run *run = nullptr);
    /** Commits. */
    ~SaveBatch();
    Q_DISABLE_COPY(SaveBatch)

    /** True for a file that waits here to be written, by whatever name: what it holds now is not to
     * be worked on. */
    bool hasPending(const FileStamp &file) const;

    /** Adds a file that is to be changed if it is still as \a stamp says; any file's change is
     * written where the stamp is of none. */
    void add(const QString &path, const FileStamp &stamp, const FileChange &change, Done done);

    /** Calls \a what when everything that was added before has been told: at once, where nothing
     * waits. */
    void inTurn(std::function<void()> what);

    /** True when it is time to commit. */
    bool isFull() const;

    /** Writes what waits, and tells. */
    void commit();

private:
    struct Save
    {
        QString path;
        FileStamp stamp;
        FileChange change;
        Done done;
        std::unique_ptr<FileRewrite> rewrite;
        Outcome outcome;
        qint64 entry = 0; ///< in the journal; 0: none
    };
    using Saves = std::vector<Save *>;

    Saves writable();
    void note(const Saves &saves);
    void write(const Saves &saves);
    void finish(Saves &written);
    Saves flushWritten(const Saves &written);
    Saves setAside(const Saves &flushed);
    Outcome flush(const QStringList &paths);
    void settle(const Saves &saves);

    Disk &m_disk;
    Journal::Run *m_run;
    std::vector<Save> m_saves;
    QSet<QByteArray> m_pending; ///< identities of the files
    qint64 m_bytes = 0;
    QElapsedTimer m_age;
};

} // namespace tarvel4
