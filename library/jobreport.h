#pragma once

#include "library/songoutcome.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QStringList>
#include <QVector>

namespace tarvel4 {

/** What one job did, song by song, to be read after its end: built while it runs by wrapping its
 * observer, and complete once finish() was called. Its texts are in the present language. */
class JobReport
{
    Q_DECLARE_TR_FUNCTIONS(JobReport)

public:
    enum class Job { Import, Synchronise, Preview, Transfer, Edit, Undo };

    /** What becomes of a song, in the order in which a reader wants to see it; of a preview, what
     * would change comes ahead of what would not. */
    enum class Group {
        Unreadable,
        Failed,
        Companion, ///< its companion is what failed
        Memory, ///< no song, but the memory that they are copied to
        NotReached, ///< the job ended before
        NotFound, ///< not in the catalogue
        Refused, ///< not published by the maker, and not to be changed
        ToConfirm, ///< of a preview: the user will be asked, since the maker did not publish it
        Kept, ///< not copied, as the user chose
        Displaced, ///< another song has taken its name, as the user chose
        Updated, ///< of a preview: would be
        Edited,
        Restored,
        Copied,
        Imported,
        Unchanged, ///< in the catalogue, which adds nothing
    };

    struct Entry
    {
        QString path; ///< empty where the job gave none
        Group group;
        Outcome cause; ///< of what failed
        QString line; ///< of the memory: said in place of a cause
        QVector<FieldChange> changes;

        /** Why, or what was changed; empty where the group says it all. */
        QString sentence() const;
    };

    explicit JobReport(Job job, const QDateTime &time = QDateTime::currentDateTime());

    /** An observer that notes each song here and hands it on. The report must stay where it is as
     * long as that is used. */
    SongObserver observe(const SongObserver &next = {});
    void add(const SongOutcome &song);
    void add(const SongOutcome &song, Group group);

    /** Notes what went wrong with the memory itself. */
    void addMemory(const QString &line) { m_entries.append({{}, Group::Memory, {}, line, {}}); }
    /** Songs that were copied, and whose name another one has got since. */
    void displace(const QStringList &paths);

    /** Notes as not reached those of the job's \a paths that it told nothing of, and puts first
     * what a reader wants to see first. */
    void finish(const QStringList &paths);

    Job job() const { return m_job; }
    const QVector<Entry> &entries() const { return m_entries; }
    /** The groups that have entries, in their order. */
    QVector<Group> groups() const;
    int count(Group group) const;
    /** Something is not as the user wanted it, and nobody chose that. */
    bool hasFailures() const;

    /** "Synchronisation: 1 not saved, 120 updated". */
    QString heading() const;
    /** What is said of one song of a group, or of many. */
    QString word(Group group, bool isOne) const;
    /** The whole report as plain text: the heading, and below each group its songs. */
    QString asText() const;

private:
    int rank(Group group) const;
    const char *failureWord(bool isOne) const;

    Job m_job;
    QDateTime m_time;
    QVector<Entry> m_entries;
};

} // namespace tarvel4
