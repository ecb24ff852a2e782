#include "tests/storage/savefixture.h"

#include <QSqlDatabase>
#include <QSqlQuery>

#include <sys/stat.h>

using namespace tarvel4;
using namespace SongBytes;

/** What the journal keeps of saves, for how long, and what it makes on the disk. */
class tst_Journal : public SaveTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void whatIsNotedComesBack_data()
    {
        const Table<QString, bool, QByteArray, QByteArray> row;
        row("of a song that grows in its place", "a.mid", false, QByteArray("abcdef"),
            QByteArray("abcXYZdef"));
        row("of a song that becomes shorter in its place", "a.mid", false, QByteArray("abcXYZdef"),
            QByteArray("abcdef"));
        row("of one that stays as it is", "a.mid", false, QByteArray("same"), QByteArray("same"));
        row("of one that held nothing", "a.mid", false, QByteArray(""), QByteArray("new"));
        row("of one with zeros and bytes of every kind", "a.mid", false,
            QByteArray("a\0b\0\xFF\xFE'\"", 8), QByteArray("\0\0\0", 3));
        row("of a new file beside the song", "a.mp3", true, QByteArray("oldtag+audio"),
            QByteArray("newertag+audio"));
        row("of a song whose name has quotes, accents and blanks",
            QString::fromUtf8(UnixFile::isHere ? "l'\"Città\" % è? ñ.mid" : "l'Città % è ñ.mid"),
            false, QByteArray("old"), QByteArray("new"));
    }
    void whatIsNotedComesBack()
    {
        const auto [name, isBeside, oldBytes, newBytes] =
            cells<QString, bool, QByteArray, QByteArray>();
        const QString file = write(path(name), oldBytes);
        const Way way = isBeside ? Way::Beside : Way::InPlace;
        Journal journal(journalFolder());
        const QString temporary = isBeside ? path("a.tmp") : QString();
        noteAndDie(journal, file, way, newBytes, temporary);
        QVERIFY(journal.runs()->isEmpty());

        int decided = 0;
        journal.settleUnfinished([&, isBeside = isBeside, &oldBytes = oldBytes,
                                  &newBytes = newBytes](JournalEntry &entry) {
            ++decided;
            check(entry, file, way, oldBytes, newBytes);
            [&] {
                QCOMPARE(entry.temporary, isBeside ? temporary : ""_s);
                QCOMPARE(entry.splice.newOf(oldBytes), newBytes);
                QCOMPARE(entry.oldBytes, isBeside ? QByteArray("") : oldBytes);
                QVERIFY(entry.newHash.isEmpty() && !entry.isTold);
            }();
            return QByteArray("hash");
        });
        QCOMPARE(decided, 1);
        QCOMPARE(journal.runs()->size(), 1);
        const QVector<JournalEntry> songs = journal.songsOf(journal.runs()->first().id);
        QCOMPARE(songs.size(), 1);
        check(songs.first(), file, way, oldBytes, newBytes);
        QCOMPARE(songs.first().newHash, QByteArray("hash"));
        QVERIFY(songs.first().splice.newMiddle.isEmpty());
    }

    void aRelativePathIsNotedAsAnAbsoluteOne()
    {
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(path()));
        const JournalEntry entry = JournalEntry::of("x/../a.mid"_s, {}, 0);
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(entry.path, QDir(path()).canonicalPath() + "/a.mid"_s);
    }

    void aSongBehindALinkIsNotedByItsOwnName()
    {
        SKIP_WITHOUT_UNIX(true, "links that Qt makes");
        const QString file = write(path("a.mid"), "old");
        QVERIFY(QFile::link(file, path("link.mid")));
        QCOMPARE(JournalEntry::of(path("link.mid"), {}, 3).path,
                 QFileInfo(file).canonicalFilePath());
    }

    void nothingIsMadeBeforeTheFirstSong()
    {
        Journal journal(journalFolder());
        {
            Journal::Run run(journal, "edit"_s);
            QVector<JournalEntry> none;
            QVERIFY(run.add(none));
            run.settle({});
        }
        QVERIFY(journal.runs()->isEmpty() && journal.songsOf(1).isEmpty() && journal.clear());
        journal.settleUnfinished([](JournalEntry &) { return std::nullopt; });
        QCOMPARE(names(), QStringList());
    }

    void theJournalIsItsOwnersAlone_data()
    {
        const Table<int> row; // mode: of the folder; 0: there is none
        row("in a folder that it makes", 0);
        row("in a folder that others could read", 0755);
    }
    void theJournalIsItsOwnersAlone()
    {
        SKIP_WITHOUT_UNIX(true, "permissions by mode bits");
        const auto [mode] = cells<int>();
        if (mode != 0) {
            QVERIFY(QDir().mkdir(journalFolder()));
            QCOMPARE(chmod(QFile::encodeName(journalFolder()).constData(), mode_t(mode)), 0);
        }
        const QString file = write(path("a.mid"), "old");
        Journal journal(journalFolder());
        Journal::Run run(journal, "edit"_s);
        QVector<JournalEntry> entries{JournalEntry::of(file, {}, 3)};
        QVERIFY(run.add(entries));
        QCOMPARE(modeOf(journalFolder()), 0700);
        for (const char *suffix : {"", "-wal", "-shm"})
            QCOMPARE(modeOf(journalPath() + QLatin1String(suffix)), 0600);
    }

    void aRunOfWhichNothingWasWrittenLeavesNothing()
    {
        const QString file = write(path("a.mid"), "old");
        Journal journal(journalFolder());
        FailingDisk disk;
        disk.failingWrite = 1;
        QVERIFY(!save(journal, file, "new", Way::InPlace, disk));
        QVERIFY(journal.runs()->isEmpty());
        int unfinished = 0;
        journal.settleUnfinished([&](JournalEntry &) {
            ++unfinished;
            return std::nullopt;
        });
        QCOMPARE(unfinished, 0);
        QCOMPARE(SongBytes::names(journalFolder()), words("journal.db")); // and no lock
        for (const char *table : {"run", "song", "pending"})
            QCOMPARE(countOf(table), 0);
    }

    void runsComeNewestFirst()
    {
        const qint64 start = QDateTime::currentMSecsSinceEpoch();
        Journal journal(journalFolder());
        QStringList whats = words("edit sync undo");
        for (const QString &what : whats) {
            Journal::Run run(journal, what);
            SaveBatch batch(Disk::real(), &run);
            for (const QString &song : words(what == "sync"_s ? "a.mid b.mid c.mid" : "a.mid"))
                add(batch, write(path(song), "old"), Way::InPlace, what.toLatin1());
        }
        const QVector<JournalRun> runs = journal.runs().value();
        QCOMPARE(runs.size(), 3);
        for (int i = 0; i < runs.size(); ++i) {
            QCOMPARE(runs.at(i).what, whats.takeLast());
            QCOMPARE(runs.at(i).songs, i == 1 ? 3 : 1);
            QVERIFY(runs.at(i).time.toMSecsSinceEpoch() >= start);
            QVERIFY(runs.at(i).time <= QDateTime::currentDateTime());
        }
        QVERIFY(runs.at(0).id > runs.at(1).id && runs.at(1).id > runs.at(2).id);
        QStringList songs;
        for (const JournalEntry &entry : journal.songsOf(runs.at(1).id))
            songs.append(QFileInfo(entry.path).fileName());
        QCOMPARE(songs, words("a.mid b.mid c.mid"));
        QVERIFY(journal.songsOf(4711).isEmpty());
    }

    void isUndoable_data()
    {
        // saves: "song bytes", one a run; undoable: the oldest first
        const Table<QStringList, QVector<bool>> row;
        row("a run is, as long as nothing came after it", QStringList{"a 1"_s},
            QVector<bool>{true});
        row("a run is not, once a later one wrote other bytes", QStringList{"a 1"_s, "a 2"_s},
            QVector<bool>{false, true});
        row("a run is again, once a later one wrote the same bytes",
            QStringList{"a 1"_s, "a 2"_s, "a 1"_s}, QVector<bool>{true, false, true});
        row("another song's run takes nothing from it", QStringList{"a 1"_s, "b 2"_s},
            QVector<bool>{true, true});
    }
    void isUndoable()
    {
        const auto [saves, undoable] = cells<QStringList, QVector<bool>>();
        Journal journal(journalFolder());
        for (const QString &what : saves) {
            const QString file = path(what.section(QLatin1Char(' '), 0, 0));
            if (!QFile::exists(file))
                write(file, "old");
            QVERIFY(save(journal, file, what.section(QLatin1Char(' '), 1).toLatin1()));
        }
        const QVector<JournalRun> runs = journal.runs().value();
        QCOMPARE(runs.size(), undoable.size());
        for (int i = 0; i < runs.size(); ++i)
            QCOMPARE(runs.at(runs.size() - 1 - i).isUndoable, undoable.at(i));
    }

    void theOldestRunsGo_data()
    {
        const Table<int, int, int> row; // size: of the old bytes of each; kept: of 1000 bytes
        row("20 runs are kept", 20, 10, 20);
        row("of 22 runs the two oldest go", 22, 10, 20);
        row("runs of all the bytes that are kept stay", 4, 250, 4);
        row("of runs of a byte more the oldest goes", 5, 201, 4);
        row("the last run stays, however large it is", 3, 5000, 1);
    }
    void theOldestRunsGo()
    {
        const auto [saves, size, kept] = cells<int, int, int>();
        Journal journal(journalFolder(), {}, 1000);
        const QString file = write(path("a.mid"), "");
        for (int i = 0; i <= saves; ++i) {
            const QByteArray next(size, static_cast<char>('a' + i));
            if (i == 0)
                write(file, next);
            else
                QVERIFY(save(journal, file, next));
        }
        const QVector<JournalRun> runs = journal.runs().value();
        QCOMPARE(runs.size(), kept);
        QCOMPARE(journal.songsOf(runs.first().id).first().splice.oldMiddle,
                 QByteArray(size, static_cast<char>('a' + saves - 1)));
        QCOMPARE(Journal::keptBytes, qint64(268'435'456));
    }

    void clearKeepsWhatIsNotSettled()
    {
        Journal journal(journalFolder());
        const QString lost = write(path("lost.mid"), "old");
        noteAndDie(journal, lost, Way::InPlace, "new");
        QVERIFY(save(journal, write(path("a.mid"), "old"), "new"));
        QCOMPARE(journal.runs()->size(), 1);
        QVERIFY(journal.clear());
        QVERIFY(journal.runs()->isEmpty());
        QStringList unfinished;
        journal.settleUnfinished([&](JournalEntry &entry) {
            unfinished += entry.path;
            return QByteArray();
        });
        QCOMPARE(unfinished, QStringList(lost));
    }

private:
    static int modeOf(const QString &file)
    {
        struct stat status = {};
        return stat(QFile::encodeName(file).constData(), &status) == 0
            ? static_cast<int>(status.st_mode & 07777)
            : -1;
    }

    /** Rows of a table; -1: it can't be read. */
    int countOf(const char *table) const
    {
        int count = -1;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE"_s, "count"_s);
            db.setDatabaseName(journalPath());
            QSqlQuery query(db);
            if (db.open())
                query = db.exec("SELECT count(*) FROM "_s + QLatin1String(table));
            if (query.next())
                count = query.value(0).toInt();
        }
        QSqlDatabase::removeDatabase("count"_s);
        return count;
    }

    static void check(const JournalEntry &entry, const QString &file, Way way,
                      const QByteArray &oldBytes, const QByteArray &newBytes)
    {
        QVERIFY(entry.id > 0);
        QCOMPARE(entry.path, file);
        QCOMPARE(static_cast<int>(entry.way), static_cast<int>(way));
        QCOMPARE(entry.oldSize, static_cast<qint64>(oldBytes.size()));
        QCOMPARE(entry.newSize, static_cast<qint64>(newBytes.size()));
        QCOMPARE(entry.splice.oldOf(newBytes), oldBytes);
    }
};

QTEST_GUILESS_MAIN(tst_Journal)
#include "tst_journal.moc"
