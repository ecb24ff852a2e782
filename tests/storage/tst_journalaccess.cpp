#include "tests/storage/savefixture.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using namespace tarvel4;
using namespace SongBytes;

namespace {

/** A program of its own, which notes one song and then waits until it is killed. */
class OtherProgram
{
public:
    explicit OtherProgram(const std::function<void()> &work)
    {
        int fds[2] = {};
        if (pipe(fds) != 0)
            qFatal("no pipe");
        m_pid = fork();
        if (m_pid == 0) {
            work();
            const char ready = 'r';
            if (::write(fds[1], &ready, 1) != 1)
                _exit(1);
            for (;;)
                pause();
        }
        char ready = 0;
        close(fds[1]);
        m_isReady = m_pid > 0 && ::read(fds[0], &ready, 1) == 1;
        close(fds[0]);
    }
    ~OtherProgram() { end(); }
    Q_DISABLE_COPY(OtherProgram)

    bool isReady() const { return m_isReady; }
    void end()
    {
        if (m_pid > 0 && kill(m_pid, SIGKILL) == 0)
            waitpid(m_pid, nullptr, 0);
        m_pid = 0;
    }

private:
    pid_t m_pid = 0;
    bool m_isReady = false;
};

} // namespace

/** Several programs, and readers, over one journal. */
class tst_JournalAccess : public SaveTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void twoJournalsWriteAtOnce()
    {
        Journal first(journalFolder());
        Journal second(journalFolder());
        {
            Journal::Run sync(first, "sync"_s);
            Journal::Run edit(second, "edit"_s);
            SaveBatch syncBatch(Disk::real(), &sync);
            SaveBatch editBatch(Disk::real(), &edit);
            for (const char *name : {"a", "b", "c"}) {
                add(syncBatch, write(path(name), "old"), Way::InPlace, "new");
                syncBatch.commit();
                add(editBatch, write(path(QLatin1String(name) + ".mid"_s), "old"), Way::InPlace,
                    "new");
                editBatch.commit();
            }
        }
        const QVector<JournalRun> runs = first.runs().value();
        QCOMPARE(runs.size(), 2);
        for (const JournalRun &run : runs) {
            const QVector<JournalEntry> songs = second.songsOf(run.id);
            QCOMPARE(songs.size(), 3);
            for (const JournalEntry &song : songs)
                QCOMPARE(song.path.endsWith(".mid"_s), run.what == "edit"_s);
        }
    }

    void onlyARunThatEndedIsRecovered_data()
    {
        const Table<bool> row; // isOther: its program
        row("of this program", false);
        row("of another program, which was killed", true);
    }
    void onlyARunThatEndedIsRecovered()
    {
        const auto [isOther] = cells<bool>();
        const QString file = write(path("a.mid"), "old");
        // A journal that is open here before is not taken along into the other program.
        const auto note = [&](std::unique_ptr<Journal> &journal,
                              std::unique_ptr<Journal::Run> &run) {
            journal = std::make_unique<Journal>(journalFolder());
            run = std::make_unique<Journal::Run>(*journal, "edit"_s);
            QVector<JournalEntry> entries{
                JournalEntry::of(file, changeOf(Way::InPlace, "old", "new"), 3)};
            if (!run->add(entries))
                qFatal("the journal takes no entry");
        };
        std::unique_ptr<Journal> living;
        std::unique_ptr<Journal::Run> run;
        std::unique_ptr<OtherProgram> program;
        if (isOther) {
            program = std::make_unique<OtherProgram>([&] { note(living, run); });
            QVERIFY(program->isReady());
        } else {
            note(living, run);
        }
        QCOMPARE(unfinished(), QStringList());
        QCOMPARE(unfinished(), QStringList());

        if (isOther)
            program->end();
        run.reset();
        QCOMPARE(unfinished(), QStringList(file));
        QCOMPARE(unfinished(), QStringList());
        QCOMPARE(SongBytes::names(journalFolder()), words("journal.db"));
    }

    void anUndoThatWasCutShortIsGoneOnWith_data()
    {
        const Table<bool, bool, int> row; // isOver: the first one; isOfOther: the second; runs
        row("in the same run", true, false, 2);
        row("in a run of its own while the first one lives", false, false, 3);
        row("in a run of its own where it takes back another run", true, true, 3);
    }
    void anUndoThatWasCutShortIsGoneOnWith()
    {
        const auto [isOver, isOfOther, runs] = cells<bool, bool, int>();
        Journal journal(journalFolder());
        save(journal, write(path("a.mid"), "old"), "new");
        const qint64 edit = journal.runs()->first().id;
        const auto takeBack = [this](Journal::Run &run, qint64 which, const char *song) {
            run.takeBack(which);
            SaveBatch batch(Disk::real(), &run);
            add(batch, write(path(song), "new"), Way::InPlace, "old");
        };
        auto first = std::make_unique<Journal::Run>(journal, "undo"_s);
        takeBack(*first, edit, "b.mid");
        QCOMPARE(journal.runs()->first().takesBack, edit);
        if (isOver)
            first.reset();
        Journal other(journalFolder());
        {
            Journal::Run second(other, "undo"_s);
            takeBack(second, isOfOther ? edit + 9 : edit, "c.mid");
            QVERIFY(other.runs()->first().takesBack != 0);
            QVector<JournalEntry> entries{
                JournalEntry::of(path("d.mid"), changeOf(Way::InPlace, "new", "old"), 3)};
            QVERIFY(second.add(entries));
            QCOMPARE(unfinished(), QStringList()); // it lives
            second.settle({{entries.first().id, QByteArray()}});
            second.finish();
        }
        QCOMPARE(journal.runs()->size(), runs);
        QCOMPARE(journal.runs()->first().takesBack, 0);
        QCOMPARE(journal.songsOf(journal.runs()->first().id).size(), runs == 2 ? 2 : 1);
        QCOMPARE(unfinished(), QStringList());
    }

    void aJournalOfAnOlderProgramIsReadAndWritten()
    {
        const QString file = write(path("a.mid"), "old");
        Journal journal(journalFolder());
        save(journal, file, "new");
        {
            JournalFile raw(journalFolder(), {});
            QVERIFY(raw.open(JournalFile::Access::Write));
            QVERIFY(raw.exec("DROP TABLE unfinished"));
        }
        QCOMPARE(journal.runs()->size(), 1);
        Journal::Run run(journal, "undo"_s);
        run.takeBack(1);
        {
            SaveBatch batch(Disk::real(), &run);
            add(batch, file, Way::InPlace, "old");
        }
        QCOMPARE(journal.runs()->first().takesBack, 1);
        QCOMPARE(journal.songsOf(1).size(), 1);
    }

    void aSongThatHasToWaitIsAskedAboutAgain()
    {
        const QString file = write(path("a.mid"), "old");
        Journal journal(journalFolder());
        noteAndDie(journal, file, Way::InPlace, "new");
        for (int round = 0; round < 3; ++round) {
            int asked = 0;
            journal.settleUnfinished([&](JournalEntry &entry) {
                ++asked;
                if (entry.isTold != (round > 0))
                    qFatal("isTold is not kept");
                entry.isTold = true;
                return std::optional<QByteArray>();
            });
            QCOMPARE(asked, 1);
        }
    }

    void whoReadsChangesNothing_data()
    {
        const Table<QString> row;
        row("of a journal at rest", "closed");
        row("of one whose program was killed, with its log beside it", "killed");
        row("of text", "text");
        row("of zeros", "zeros");
        row("of an empty file", "empty");
        row("of none, where there is a folder", "none");
    }
    void whoReadsChangesNothing()
    {
        const auto [state] = cells<QString>();
        prepare(state);
        const QStringList before = snapshot();
        QStringList said;
        Journal journal(journalFolder(), [&](const QString &sentence) { said += sentence; });
        const bool isReadable = state != "text"_s && state != "zeros"_s;
        const int runs = state == "closed"_s || state == "killed"_s ? 1 : 0;
        for (int time = 0; time < 2; ++time) {
            QCOMPARE(journal.runs().has_value(), isReadable);
            QCOMPARE(journal.runs().value_or(QVector<JournalRun>()).size(), runs);
            QCOMPARE(journal.songsOf(1).size(), runs);
        }
        QCOMPARE(snapshot(), before);
        QCOMPARE(said.size(), isReadable ? 0 : 1);
    }

private:
    QStringList unfinished() const
    {
        QStringList paths;
        Journal journal(journalFolder());
        journal.settleUnfinished([&](JournalEntry &entry) {
            paths += entry.path;
            return QByteArray();
        });
        return paths;
    }

    void prepare(const QString &state)
    {
        QDir().mkpath(journalFolder());
        const QString file = write(path("a.mid"), "old");
        const auto saveOne = [&] {
            Journal journal(journalFolder());
            if (!save(journal, file, "new"))
                qFatal("not saved");
        };
        if (state == "text"_s)
            write(journalPath(), "no journal at all, but a text");
        else if (state == "zeros"_s)
            write(journalPath(), QByteArray(40'000, '\0'));
        else if (state == "empty"_s)
            write(journalPath(), "");
        else if (state != "none"_s)
            saveOne();
        if (state == "killed"_s) {
            const OtherProgram program([&] {
                // Kept open, so that what is committed stays in the log.
                auto *const journal = new Journal(journalFolder());
                auto *const run = new Journal::Run(*journal, "edit"_s);
                QVector<JournalEntry> entries{JournalEntry::of(file, {}, 3)};
                if (!run->add(entries))
                    qFatal("the journal takes no entry");
            });
            if (!program.isReady())
                qFatal("the other program failed");
        }
    }

    /** Name, time and bytes of each file. What SQLite's readers share with others is no content. */
    QStringList snapshot() const
    {
        QStringList lines;
        for (const QString &name : SongBytes::names(journalFolder())) {
            const QFileInfo info(journalFolder() + QLatin1Char('/') + name);
            const bool isShared = name.endsWith("-shm"_s);
            lines += isShared
                ? name
                : name + QLatin1Char(' ') + QString::number(info.lastModified().toMSecsSinceEpoch())
                    + QLatin1Char(' ') + QString::fromLatin1(read(info.filePath()).toHex());
        }
        return lines;
    }
};

QTEST_GUILESS_MAIN(tst_JournalAccess)
#include "tst_journalaccess.moc"
