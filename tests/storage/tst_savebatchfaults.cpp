#include "tests/storage/savefixture.h"
#include "tests/storage/tmpfsmount.h"

using namespace tarvel4;
using namespace SongBytes;

/** A song of a batch that fails takes none of the others with it, and keeps what it holds. */
class tst_SaveBatchFaults : public SaveTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void theSeventhSongFailsAlone_data()
    {
        Table<QString, QString, bool, QString>();
        const QVector<QPair<const char *, const char *>> faults{{"vanishes", "not-found"},
                                                                {"grows", "changed-meanwhile"},
                                                                {"becomes a FIFO", "not-a-file"},
                                                                {"becomes a folder", "not-a-file"}};
        for (const auto &fault : faults) {
            for (const char *when : {"before it is added", "before the batch is written",
                                     "while the first one is written"}) {
                for (const bool isBeside : {false, true})
                    QTest::addRow("%s %s %s", isBeside ? "an MP3" : "a MIDI song", fault.first,
                                  when)
                        << fault.first << when << isBeside << fault.second;
            }
        }
        for (const bool isBeside : {false, true})
            QTest::addRow("%s lies on a read-only volume", isBeside ? "an MP3" : "a MIDI song")
                << "is read-only"
                << "from the start" << isBeside << "read-only-volume";
    }
    void theSeventhSongFailsAlone()
    {
        const auto [fault, when, isBeside, code] = cells<QString, QString, bool, QString>();
        SKIP_WITHOUT_UNIX(fault == "becomes a FIFO"_s, "FIFO");
        SKIP_WITHOUT_UNIX(fault != "grows"_s && fault != "is read-only"_s
                              && when != "before it is added"_s,
                          "way to remove a file that a program has open like that");
        const Way way = isBeside ? Way::Beside : Way::InPlace;
        std::unique_ptr<TmpfsMount> volume;
        if (fault == "is read-only"_s) {
            volume = std::make_unique<TmpfsMount>(path("card"), "size=1m");
            if (!volume->isMounted())
                QSKIP("A volume can't be mounted here");
        }
        const QString seventh = write(path(volume ? "card/7" : "7"), "old");
        QVERIFY(!volume || volume->makeReadOnly());
        FailingDisk disk;
        disk.before = [&, &fault = fault, &when = when](const QString &, int) {
            if (disk.operations.size() == 1 && when.startsWith("while"_s))
                strike(fault, seventh);
        };
        SaveBatch batch(disk);
        QVector<Outcome> outcomes(10);
        for (int i = 1; i < outcomes.size(); ++i) {
            const QString file = i == 7 ? seventh : write(path(QString::number(i)), "old");
            const FileStamp stamp(file);
            if (i == 7 && when == "before it is added"_s)
                strike(fault, seventh);
            batch.add(file, stamp, changeOf(way, "old", "new"),
                      [&outcomes, i](const Outcome &outcome) { outcomes[i] = outcome; });
        }
        if (when == "before the batch is written"_s)
            strike(fault, seventh);
        batch.commit();
        QCOMPARE(outcomes.at(7).codeName(), code);
        QCOMPARE(outcomes.at(7).path, seventh);
        for (int i = 1; i < outcomes.size(); ++i) {
            if (i == 7)
                continue;
            QVERIFY2(outcomes.at(i), qPrintable(outcomes.at(i).codeName()));
            QCOMPARE(read(path(QString::number(i))), QByteArray("new"));
        }
        if (fault == "grows"_s)
            QCOMPARE(read(seventh), QByteArray("old, and more"));
        if (volume)
            QCOMPARE(read(seventh), QByteArray("old"));
        QCOMPARE(names().filter(".tmp"_s), QStringList());
    }

    void theSeventhSongLiesOnAnotherVolume_data()
    {
        const Table<bool, bool> row;
        row("a MIDI song is saved there", false, false);
        row("an MP3 is saved there", true, false);
        row("a MIDI song that finds no room there fails alone", false, true);
        row("an MP3 that finds no room there fails alone", true, true);
    }
    void theSeventhSongLiesOnAnotherVolume()
    {
        const auto [isBeside, isFull] = cells<bool, bool>();
        const TmpfsMount volume(path("card"), "size=64k");
        if (!volume.isMounted())
            QSKIP("A volume can't be mounted here");
        const QByteArray seventh(4090, 'o');
        write(path("card/7"), seventh);
        QFile filler(path("card/filler"));
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (isFull && filler.write(QByteArray(4096, 'x')) == 4096) {}
        std::vector<Outcome> outcomes(10);
        {
            SaveBatch batch(Disk::real());
            for (std::size_t i = 1; i < outcomes.size(); ++i) {
                const QString file =
                    i == 7 ? path("card/7") : write(path(QString::number(i)), seventh);
                add(batch, file, isBeside ? Way::Beside : Way::InPlace, "longer title" + seventh,
                    &outcomes[i]);
            }
        }
        for (std::size_t i = 1; i < outcomes.size(); ++i) {
            const bool isSaved = !(isFull && i == 7);
            QCOMPARE(outcomes[i].codeName(), isSaved ? QString() : "no-room"_s);
            QCOMPARE(read(i == 7 ? path("card/7") : path(QString::number(i))),
                     isSaved ? "longer title" + seventh : seventh);
        }
        QCOMPARE(SongBytes::names(path("card")), words("7 filler"));
    }

    void aFlushThatFailsTakesBackWhatItConcerns_data()
    {
        // comesBack: to work, once the old bytes are flushed
        // codes: of a.mid, b.mp3, card/c.mid, card/d.mp3
        const Table<QString, bool, QByteArrayList> row;
        row("one file is bad", "a.mid", true, QByteArrayList{"medium-failed", "", "", ""});
        row("one file is bad and stays so", "a.mid", false,
            QByteArrayList{"not-restored", "", "", ""});
        row("one new file is bad", "d.tmp", false, QByteArrayList{"", "", "", "medium-failed"});
        row("one volume is bad", "card", true,
            QByteArrayList{"", "", "medium-failed", "medium-failed"});
        row("one volume is bad and stays so", "card", false,
            QByteArrayList{"", "", "not-restored", "medium-failed"});
        row("all are bad and stay so", "/", false,
            QByteArrayList{"not-restored", "medium-failed", "not-restored", "medium-failed"});
    }
    void aFlushThatFailsTakesBackWhatItConcerns()
    {
        const auto [badPart, comesBack, codes] = cells<QString, bool, QByteArrayList>();
        QVERIFY(QDir().mkdir(path("card")));
        FailingDisk disk;
        disk.badPart = badPart;
        disk.before = [&, &badPart = badPart, comesBack = comesBack](const QString &operation,
                                                                     int) {
            // Right after the old bytes were written.
            const bool isTakingBack = operation == "sync"_s
                && disk.operations.value(disk.operations.size() - 2) == "write"_s;
            disk.badPart = comesBack && isTakingBack ? QString() : badPart;
        };
        SaveBatch batch(disk);
        const char *const songs[] = {"a.mid", "b.mp3", "card/c.mid", "card/d.mp3"};
        std::vector<Outcome> outcomes(std::size(songs));
        for (std::size_t i = 0; i < outcomes.size(); ++i)
            add(batch, write(path(songs[i]), "old tag, audio"),
                QLatin1String(songs[i]).endsWith("3"_s) ? Way::Beside : Way::InPlace,
                "new tag, audio", &outcomes[i]);
        batch.commit();
        for (std::size_t i = 0; i < outcomes.size(); ++i) {
            const QByteArray code = codes.at(static_cast<int>(i));
            QCOMPARE(outcomes[i].codeName(), QString::fromLatin1(code));
            QCOMPARE(read(path(songs[i])),
                     code.isEmpty() ? QByteArray("new tag, audio") : QByteArray("old tag, audio"));
        }
        QCOMPARE((names() + SongBytes::names(path("card"))).filter(".tmp"_s), QStringList());
    }

    void aLostByteIsNotForgotten_data()
    {
        Table<bool, bool>();
        for (const bool isFat : {false, true}) {
            for (const bool isBeside : {false, true})
                QTest::addRow("of %s%s", isBeside ? "an MP3" : "a MIDI song",
                              isFat ? " on FAT" : "")
                    << isBeside << isFat;
        }
    }
    /** The system tells of it once: the next flush of the same finds nothing wrong. */
    void aLostByteIsNotForgotten()
    {
        const auto [isBeside, isFat] = cells<bool, bool>();
        const QString file = write(path("a"), "old");
        FailingDisk disk;
        disk.isFat = isFat;
        disk.failingSync = 1;
        Outcome outcome;
        SaveBatch batch(disk);
        add(batch, file, isBeside ? Way::Beside : Way::InPlace, "new", &outcome);
        batch.commit();
        QCOMPARE(outcome.codeName(), "medium-failed"_s);
        QCOMPARE(read(file), QByteArray("old"));
        QCOMPARE(names(), words("a"));
    }

    void aNameThatIsNotFlushed_data()
    {
        const Table<bool, QString, QByteArray> row;
        row("is told, and the new song stays", false, "not-confirmed", QByteArray("new"));
        row("on FAT, gives the old song back", true, "medium-failed", QByteArray("old"));
    }
    void aNameThatIsNotFlushed()
    {
        const auto [isFat, code, bytes] = cells<bool, QString, QByteArray>();
        FailingDisk disk;
        disk.isFat = isFat;
        disk.failingSync = 2;
        std::vector<Outcome> outcomes(2);
        {
            SaveBatch batch(disk);
            add(batch, write(path("a.mid"), "old"), Way::InPlace, "new", &outcomes[0]);
            add(batch, write(path("b.mp3"), "old"), Way::Beside, "new", &outcomes[1]);
        }
        QVERIFY(outcomes[0]);
        QCOMPARE(read(path("a.mid")), QByteArray("new"));
        QCOMPARE(outcomes[1].codeName(), code);
        QCOMPARE(read(path("b.mp3")), bytes);
        QCOMPARE(names(), words("a.mid b.mp3"));
    }

    void onFatEachOldSongWaitsUntilAllNamesAreFlushed()
    {
        FailingDisk disk;
        disk.isFat = true;
        QVector<QStringList> atFlush;
        disk.before = [&](const QString &operation, int) {
            if (operation == "syncAll"_s)
                atFlush += names();
        };
        {
            SaveBatch batch(disk);
            for (const char *name : {"a.mp3", "b.mp3"})
                add(batch, write(path(name), "old"), Way::Beside, "new");
        }
        QCOMPARE(atFlush,
                 (QVector<QStringList>{words("a.mp3 a.tmp b.mp3 b.tmp"),
                                       words("a.mp3.tarvel4.bak a.tmp b.mp3.tarvel4.bak b.tmp"),
                                       words("a.mp3 a.mp3.tarvel4.bak b.mp3 b.mp3.tarvel4.bak"),
                                       words("a.mp3 b.mp3")}));
    }

    void twoFaultsInOneBatch()
    {
        const QByteArray old = "old tag, audio";
        for (int first = 1; first < 20; ++first) {
            for (int second = first + 1; second < 24; ++second) {
                makeFolder();
                FailingDisk disk;
                disk.before = [&](const QString &, int) {
                    const int now = static_cast<int>(disk.operations.size());
                    disk.failAt = now == second ? second : first;
                };
                std::vector<Outcome> outcomes(4);
                {
                    SaveBatch batch(disk);
                    for (std::size_t i = 0; i < outcomes.size(); ++i)
                        add(batch, write(path(QString::number(i)), old),
                            i % 2 == 0 ? Way::InPlace : Way::Beside, "new tag, audio",
                            &outcomes[i]);
                }
                for (std::size_t i = 0; i < outcomes.size(); ++i) {
                    const QByteArray now = read(path(QString::number(i)));
                    const Outcome &outcome = outcomes[i];
                    const bool isNew = outcome || outcome == Outcome::Code::NotConfirmed;
                    if (outcome == Outcome::Code::NotRestored)
                        continue;
                    QVERIFY2(now == (isNew ? QByteArray("new tag, audio") : old),
                             qPrintable("%1, %2: song %3, %4"_s.arg(first).arg(second).arg(i).arg(
                                 outcome.codeName())));
                }
            }
        }
    }

    void whereTheNewFilesTakeTheRoomTheyReplaceTheOldOnes()
    {
        const TmpfsMount volume(path("card"), "size=1m");
        if (!volume.isMounted())
            QSKIP("A volume can't be mounted here");
        constexpr int size = 256 << 10; // three of them, and one more, fill the volume
        FailingDisk disk;
        std::vector<Outcome> outcomes(3);
        {
            SaveBatch batch(disk);
            for (std::size_t i = 0; i < outcomes.size(); ++i)
                add(batch,
                    write(path("card/"_s + QString::number(i)),
                          "old" + QByteArray(size - 8192, static_cast<char>('a' + i))),
                    Way::Beside, "new" + QByteArray(size - 8192, static_cast<char>('a' + i)),
                    &outcomes[i]);
        }
        for (std::size_t i = 0; i < outcomes.size(); ++i) {
            QVERIFY2(outcomes[i], qPrintable(outcomes[i].codeName()));
            QCOMPARE(read(path("card/"_s + QString::number(i))).left(4),
                     "new" + QByteArray(1, static_cast<char>('a' + i)));
        }
        QVERIFY(disk.countOf("syncAll") > 2); // it was not only large enough
    }

    void withoutAJournalABackupIsAdvised()
    {
        FailingDisk disk;
        disk.badPart = "a.mid"_s;
        Outcome outcome;
        {
            SaveBatch batch(disk);
            add(batch, write(path("a.mid"), "old"), Way::InPlace, "new", &outcome);
        }
        QCOMPARE(outcome.codeName(), "not-restored"_s);
        QCOMPARE(outcome.detail, "la song va ripresa da un backup"_s);
    }

private:
    static void strike(const QString &fault, const QString &file)
    {
        if (fault == "grows"_s) {
            write(file, "old, and more");
            return;
        }
        if (!QFile::remove(file))
            qFatal("can't remove %s", qPrintable(file));
        if (fault == "becomes a FIFO"_s && !UnixFile::makeFifo(file))
            qFatal("no FIFO");
        if (fault == "becomes a folder"_s && !QDir().mkdir(file))
            qFatal("no folder");
    }
};

QTEST_GUILESS_MAIN(tst_SaveBatchFaults)
#include "tst_savebatchfaults.moc"
