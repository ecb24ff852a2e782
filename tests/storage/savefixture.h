#pragma once

#include "storage/journal.h"
#include "storage/savebatch.h"

#include "tests/storage/foldertest.h"

namespace tarvel4 {

/** A test of saves of small files, which need not be songs, with a journal of its own. */
class SaveTest : public FolderTest
{
protected:
    /** The journal's flushes take long on a disk, and show nothing that they don't in memory. */
    SaveTest()
    {
        const QString memory = QStringLiteral("/dev/shm");
        if (QFileInfo(memory).isWritable())
            qputenv("TMPDIR", memory.toLatin1());
    }

    using Way = FileChange::Way;

    QString journalFolder() const { return path("data"); }
    QString journalPath() const { return path("data/journal.db"); }

    /** Of a whole file in its place; beside: of its first half, the same bytes follow both. */
    static FileChange changeOf(Way way, const QByteArray &oldBytes, const QByteArray &newBytes)
    {
        FileChange change;
        change.way = way;
        change.oldHead = oldBytes;
        change.newHead = newBytes;
        if (way == Way::Beside) {
            const int same = sameAtEnd(oldBytes, newBytes);
            change.oldHead.chop(same);
            change.newHead.chop(same);
            change.tail = change.oldHead.size();
        }
        return change;
    }

    /** Adds the change of a file that holds \a oldBytes; \a outcome is told how it ends. */
    static void add(SaveBatch &batch, const QString &file, Way way, const QByteArray &newBytes,
                    Outcome *outcome = nullptr)
    {
        batch.add(file, FileStamp(file), changeOf(way, SongBytes::read(file), newBytes),
                  [outcome](const Outcome &saved) {
                      if (outcome)
                          *outcome = saved;
                  });
    }

    /** Saves one file in a run of its own. */
    static Outcome save(Journal &journal, const QString &file, const QByteArray &newBytes,
                        Way way = Way::InPlace, Disk &disk = Disk::real(),
                        const QString &what = QStringLiteral("edit"))
    {
        Outcome outcome;
        Journal::Run run(journal, what);
        SaveBatch batch(disk, &run);
        add(batch, file, way, newBytes, &outcome);
        batch.commit();
        return outcome;
    }

    /** Notes a change and then ends as a killed program does, before the song is settled. */
    static JournalEntry noteAndDie(Journal &journal, const QString &file, Way way,
                                   const QByteArray &newBytes, const QString &temporary = {})
    {
        const QByteArray oldBytes = SongBytes::read(file);
        Journal::Run run(journal, QStringLiteral("edit"));
        QVector<JournalEntry> entries{
            JournalEntry::of(file, changeOf(way, oldBytes, newBytes), oldBytes.size())};
        entries.first().temporary = temporary;
        if (!run.add(entries))
            qFatal("the journal takes no entry");
        return entries.first();
    }

private:
    static int sameAtEnd(const QByteArray &first, const QByteArray &second)
    {
        int same = 0;
        while (same < qMin(first.size(), second.size())
               && first.at(first.size() - 1 - same) == second.at(second.size() - 1 - same))
            ++same;
        return same;
    }
};

} // namespace tarvel4
