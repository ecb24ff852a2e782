#include "tests/storage/savefixture.h"

#include "storage/contenthash.h"

using namespace tarvel4;
using namespace SongBytes;

/** Saves that go together: their order, their flushes, and what the journal has of them. */
class tst_SaveBatch : public SaveTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void outcomesAreToldInTheOrderOfAdding()
    {
        FailingDisk disk;
        SaveBatch batch(disk);
        QStringList told;
        const auto tell = [&](const char *name, Way way) {
            const QString file = path(name);
            const QByteArray old = read(file);
            batch.add(file, FileStamp(file), changeOf(way, old, "new" + old),
                      [&told, file](const Outcome &outcome) {
                          QCOMPARE(outcome.path, file);
                          told +=
                              QFileInfo(file).fileName() + QLatin1Char(' ') + outcome.codeName();
                      });
        };
        for (const char *name : {"a.mp3", "b.mid", "c.mp3", "e.mid"})
            write(path(name), "old");
        QVERIFY(QDir().mkdir(path("d.mid")));
        tell("a.mp3", Way::Beside);
        tell("b.mid", Way::InPlace);
        tell("c.mp3", Way::Beside);
        tell("d.mid", Way::InPlace);
        tell("e.mid", Way::InPlace);
        batch.inTurn([&] { told += "between"_s; });
        if (UnixFile::isHere) // elsewhere it can't be removed as long as the batch has it open
            QVERIFY(QFile::remove(path("c.mp3")));
        QCOMPARE(told, QStringList());
        QCOMPARE(disk.operations, QStringList());
        QCOMPARE(read(path("b.mid")), QByteArray("old"));
        batch.commit();
        QCOMPARE(told,
                 (QStringList{"a.mp3 "_s, "b.mid "_s,
                              UnixFile::isHere ? "c.mp3 not-found"_s : "c.mp3 "_s,
                              "d.mid not-a-file"_s, "e.mid "_s, "between"_s}));
        batch.commit();
        QCOMPARE(told.size(), 6);
        batch.inTurn([&] { told += "at once"_s; });
        QCOMPARE(told.last(), "at once"_s);
    }

    void aBatchThatGoesAwayIsCommitted()
    {
        const QString file = write(path("a.mid"), "old");
        Outcome outcome{Outcome::Code::NotASong, {}, {}, {}};
        {
            SaveBatch batch(Disk::real());
            add(batch, file, Way::InPlace, "new", &outcome);
        }
        QVERIFY(outcome);
        QCOMPARE(read(file), QByteArray("new"));
    }

    void theFlushesOfABatchAreFixed_data()
    {
        Table<int, bool, bool, int>();
        for (const int songs : {1, 50, 200}) {
            QTest::addRow("one for %d songs in their place", songs) << songs << false << false << 1;
            QTest::addRow("one for %d songs in their place on FAT", songs)
                << songs << false << true << 1;
            QTest::addRow("two for %d songs that are replaced", songs)
                << songs << true << false << 2;
            QTest::addRow("four for %d songs that are replaced on FAT", songs)
                << songs << true << true << 4;
        }
    }
    void theFlushesOfABatchAreFixed()
    {
        const auto [songs, isBeside, isFat, flushes] = cells<int, bool, bool, int>();
        FailingDisk disk;
        disk.isFat = isFat;
        SaveBatch batch(disk);
        for (int i = 0; i < songs; ++i) {
            const QString file = write(path(QString::number(i)), "old");
            add(batch, file, isBeside ? Way::Beside : Way::InPlace, "new" + QByteArray::number(i));
        }
        batch.commit();
        QCOMPARE(disk.countOf("syncAll"), flushes);
        // Where no call reserves room, each song gets its own by a write.
        QCOMPARE(disk.countOf("sync"), UnixFile::isHere || isBeside ? 0 : songs);
        QCOMPARE(names().size(), songs);
        for (int i = 0; i < songs; ++i)
            QCOMPARE(read(path(QString::number(i))), "new" + QByteArray::number(i));
    }

    void isFull_data()
    {
        const Table<int, qint64, int, bool> row; // size: of each; age: milliseconds
        row("not one without songs, however old", 0, qint64(1), 600, false);
        row("not one of 199 songs", 199, qint64(1), 0, false);
        row("one of 200 songs", 200, qint64(1), 0, true);
        row("not one of a byte less than 64 MB", 1, (qint64(64) << 20) - 1, 0, false);
        row("one of 64 MB", 2, (qint64(32) << 20), 0, true);
        row("one of half a second", 1, qint64(1), 600, true);
    }
    void isFull()
    {
        const auto [songs, size, age, isFull] = cells<int, qint64, int, bool>();
        SaveBatch batch(Disk::real());
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < songs; ++i) {
            QFile file(path(QString::number(i)));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(size));
            file.close();
            batch.add(file.fileName(), FileStamp(file.fileName()),
                      {Way::Beside, {}, "new", 0, nullptr}, [](const Outcome &) {});
        }
        if (age > 0)
            QThread::msleep(static_cast<unsigned long>(age));
        const bool wasFull = batch.isFull();
        if (!isFull && songs > 0 && timer.elapsed() >= SaveBatch::mostMilliseconds)
            QSKIP("This took so long that the batch is full by its age");
        QCOMPARE(wasFull, isFull);
        for (const QString &name : names()) // what is gone need not be written
            QVERIFY(QFile::remove(path(name)) || !UnixFile::isHere);
        batch.commit();
        QVERIFY(!batch.isFull());
    }

    void whatWaitsIsKnownByAnyName_data()
    {
        const Table<bool> row;
        row("in its place", false);
        row("beside", true);
    }
    void whatWaitsIsKnownByAnyName()
    {
        const auto [isBeside] = cells<bool>();
        SKIP_WITHOUT_UNIX(true, "links that Qt makes");
        const QString third = write(path("3.mid"), "old");
        const QString other = write(path("4.mid"), "old");
        QVERIFY(QFile::link(third, path("soft.mid")));
        QVERIFY(UnixFile::makeHardLink(third, path("hard.mid")));
        SaveBatch batch(Disk::real());
        add(batch, third, isBeside ? Way::Beside : Way::InPlace, "new");
        for (const char *name : {"3.mid", "soft.mid", "hard.mid"})
            QVERIFY2(batch.hasPending(FileStamp(path(name))), name);
        QVERIFY(!batch.hasPending(FileStamp(other)));
        QVERIFY(!batch.hasPending(FileStamp(path("none.mid"))));
        QVERIFY(!batch.hasPending({}));
        batch.commit();
        QVERIFY(!batch.hasPending(FileStamp(third)));
    }

    void theJournalHasEachSongBeforeItIsTouched()
    {
        const QByteArrayList songs{"a.mid", "b.mp3"};
        for (const QByteArray &song : songs)
            write(path(song.constData()), "old");
        QStringList noted;
        Journal journal(journalFolder());
        Journal::Run run(journal, "edit"_s);
        FailingDisk disk;
        disk.before = [&](const QString &, int) {
            if (disk.operations.size() > 1)
                return;
            for (const QByteArray &song : songs)
                QCOMPARE(read(path(song.constData())), QByteArray("old"));
            // What is on the medium by now, as a recovery after a kill would find it.
            for (const char *suffix : {"", "-wal"})
                write(path("copy/journal.db"_s + QLatin1String(suffix)),
                      read(journalPath() + QLatin1String(suffix)));
            Journal copy(path("copy"));
            copy.settleUnfinished([&](JournalEntry &entry) {
                noted += QFileInfo(entry.path).fileName() + QLatin1Char(' ')
                    + QFileInfo(entry.temporary).fileName();
                return QByteArray();
            });
        };
        QVERIFY(QDir().mkdir(path("copy")));
        SaveBatch batch(disk, &run);
        add(batch, path("a.mid"), Way::InPlace, "new");
        add(batch, path("b.mp3"), Way::Beside, "new");
        add(batch, write(path("c.mid"), "old"), Way::InPlace, "new");
        write(path("c.mid"), "somebody's"); // is not to be touched, and not to be noted
        batch.commit();
        noted.sort();
        QCOMPARE(noted, (QStringList{"a.mid "_s, "b.mp3 b.tmp"_s}));
    }

    void onlyWhatWasWrittenStaysInTheJournal()
    {
        FailingDisk disk;
        disk.badPart = "bad"_s;
        Journal journal(journalFolder());
        Outcome bad;
        {
            Journal::Run run(journal, "edit"_s);
            SaveBatch batch(disk, &run);
            add(batch, write(path("a.mid"), "old"), Way::InPlace, "new a");
            add(batch, write(path("bad.mid"), "old"), Way::InPlace, "new", &bad);
            add(batch, write(path("bad.mp3"), "old"), Way::Beside, "new");
            add(batch, write(path("b.mp3"), "old"), Way::Beside, "new b");
        }
        QCOMPARE(journal.runs()->size(), 1);
        const QVector<JournalEntry> songs = journal.songsOf(journal.runs()->first().id);
        QCOMPARE(songs.size(), 2);
        for (const JournalEntry &entry : songs) {
            Outcome read;
            QCOMPARE(entry.newHash, ContentHash::ofFile(entry.path, read));
            QVERIFY(!entry.path.contains("bad"_s));
        }
        // The one whose old bytes are not known to be back waits for a recovery.
        QCOMPARE(bad.codeName(), "not-restored"_s);
        QCOMPARE(bad.detail, QString::fromUtf8("tornerà al prossimo avvio del programma"));
        QStringList unfinished;
        journal.settleUnfinished([&](JournalEntry &entry) {
            unfinished += QFileInfo(entry.path).fileName();
            return QByteArray();
        });
        QCOMPARE(unfinished, words("bad.mid"));
    }
};

QTEST_GUILESS_MAIN(tst_SaveBatch)
#include "tst_savebatch.moc"
