#pragma once

#include "storage/filechange.h"
#include "storage/journalfile.h"
#include "storage/splice.h"

#include <QDateTime>
#include <QVector>

#include <memory>
#include <optional>

namespace tarvel4 {

class RunLock;

/** One song of a run, as the journal knows it. */
struct JournalEntry
{
    qint64 id = 0;
    QString path; ///< absolute, of the file itself and not of a link to it
    FileChange::Way way = FileChange::Way::InPlace;
    qint64 oldSize = 0; ///< bytes of the whole file
    qint64 newSize = 0;
    Splice splice; ///< once the song is saved without the new middle
    QByteArray newHash; ///< ContentHash of the whole file; empty until the song is saved
    // only until the song is saved
    QByteArray oldBytes; ///< in place: of the whole file
    QString temporary; ///< beside: the path of the new file until it has the song's name
    bool isTold = false; ///< the user was told that it waits for its medium

    /** Of a change of a file of \a oldSize bytes. */
    static JournalEntry of(const QString &path, const FileChange &change, qint64 oldSize);
};

/** What one run changed. */
struct JournalRun
{
    qint64 id = 0; ///< larger than that of every earlier run
    QDateTime time; ///< local, of its first song
    QString what; ///< "edit", "sync", "undo" or "restore"
    int songs = 0; ///< that were written
    bool isUndoable = false; ///< one of them at least was not given other bytes by a later run
    qint64 takesBack = 0; ///< an undo that was cut short: the run of which songs are left
};

/**
 * The old bytes of every song that a save touches, on the medium before the song is: what recovery
 * and undo read; docs/formats.md, Journal. Where it can't be written nothing stops a save: the
 * caller goes on without it.
 */
class Journal
{
public:
    static constexpr int keptRuns = 20;
    static constexpr qint64 keptBytes = 256 << 20; ///< but the last run is kept whole

    /** Nothing is made in \a folder before the first song is noted. Of old bytes \a mostBytes are
     * kept. */
    explicit Journal(const QString &folder, JournalFile::Notice notice = {},
                     qint64 mostBytes = keptBytes);

    QString path() const { return m_file.path(); }

    /** How a song ended: with the hash of its new bytes, or, without one, with its old ones. */
    struct Settled
    {
        qint64 entry;
        QByteArray newHash;
    };

    /** The saves of one thing that the user asked for. Nothing stays of a run without songs. */
    class Run
    {
    public:
        Run(Journal &journal, const QString &what);
        ~Run();
        Q_DISABLE_COPY(Run)

        /** Before the first song: the saves take back that run. Where the newest run has begun to
         * and was cut short, these go on with it. */
        void takeBack(qint64 run);
        /** Of that run nothing is left to be taken back. */
        void finish();

        /** Notes songs that are about to be written and gives them their ids; true once they are
         * on the medium. Once it has failed it is not tried again. */
        bool add(QVector<JournalEntry> &entries);
        /** Songs that are on the medium. What is never settled is left to a recovery. */
        void settle(const QVector<Settled> &songs);

    private:
        bool begin();
        void end();
        bool insertRun();
        bool noteUndo();
        bool insert(QVector<JournalEntry> &entries);

        Journal &m_journal;
        QString m_what;
        qint64 m_id = 0;
        qint64 m_takenBack = 0; ///< 0: none
        qint64 m_continued = 0; ///< the run that began with it; 0: none
        QString m_lockName;
        std::unique_ptr<RunLock> m_lock; ///< null until a song is noted
        bool m_hasFailed = false;
    };

    /** Runs that wrote songs, the newest first; nothing, and the user is told why, where the
     * journal can't be read. */
    std::optional<QVector<JournalRun>> runs();
    /** The songs that a run wrote, in their order; empty where there is no such run. */
    QVector<JournalEntry> songsOf(qint64 run);
    /** What later runs wrote of these songs, in their order. */
    QVector<JournalEntry> writtenAfter(qint64 run);
    /** Forgets every run; what is not settled stays. False when it could not. */
    bool clear();

    /** Decides about a song that was never settled: what to settle it with, or nothing where it
     * has to wait; it may set isTold, and the size and splice of other new bytes. */
    using Decision = std::function<std::optional<QByteArray>(JournalEntry &)>;

    /** Has \a decide settle the songs of every run that ended before it could. A run that lives, in
     * this program or in another, is left alone. */
    void settleUnfinished(const Decision &decide);

private:
    QVector<JournalEntry> written(const char *which, qint64 run);
    QString lockPath(const QString &name) const;
    bool hasEnded(qint64 run);
    void settleRun(qint64 run, const Decision &decide);
    bool readPending(JournalEntry &entry);
    bool storeSplice(const JournalEntry &entry);
    bool storeTold(const JournalEntry &entry);
    bool settle(const QVector<Settled> &songs);
    bool tidy();

    JournalFile m_file;
    qint64 m_mostBytes;
};

} // namespace tarvel4
