#include "tests/storage/savefixture.h"

#include "storage/journalrecovery.h"

using namespace tarvel4;
using namespace SongBytes;

Q_DECLARE_METATYPE(Recovery::Result)

namespace {

const QByteArray oldSong = "SONG old title, and what the old song goes on with";
const QByteArray newSong = "SONG brand new title, and what the old song goes on with";

/** Beginnings, zeros and mixtures of the two songs, as a save that was cut short leaves them. */
QByteArray torn(int newBytes)
{
    return newSong.left(newBytes) + oldSong.mid(newBytes);
}

} // namespace

/** What becomes of a song whose save ended anywhere. */
class tst_JournalRecovery : public SaveTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void inItsPlace_data()
    {
        const Table<QByteArray, QByteArray, QVector<Recovery::Result>> row;
        const QVector<Recovery::Result> putBack{Recovery::Result::PutBack};
        const QVector<Recovery::Result> changed{Recovery::Result::ChangedSince};
        const QVector<Recovery::Result> none;
        row("a song with its old bytes stays", oldSong, oldSong, none);
        row("a song with its new bytes stays", newSong, newSong, none);
        for (const int bytes : {6, 10, 20, 40, 55})
            QTest::addRow("one whose first %d bytes are new gets its old ones", bytes)
                << torn(bytes) << oldSong << putBack;
        row("one whose middle is new gets its old bytes",
            oldSong.left(7) + newSong.mid(7, 6) + oldSong.mid(13), oldSong, putBack);
        row("one whose last bytes are new gets its old ones", oldSong.left(20) + newSong.mid(20),
            oldSong, putBack);
        row("one whose every second byte is new gets its old ones", alternating(), oldSong,
            putBack);
        row("one cut short within its old bytes gets them back", oldSong.left(20), oldSong,
            putBack);
        row("one cut short within its new bytes gets the old ones", newSong.left(20), oldSong,
            putBack);
        row("one that holds nothing gets its old bytes", "", oldSong, putBack);
        row("one of zeros gets its old bytes", QByteArray(oldSong.size(), '\0'), oldSong, putBack);
        row("one that grew with zeros gets its old bytes",
            oldSong + QByteArray(newSong.size() - oldSong.size(), '\0'), oldSong, putBack);
        row("one that grew with garbage gets its old bytes",
            torn(10) + QByteArray(newSong.size() - oldSong.size(), '\x5A'), oldSong, putBack);
        row("one of garbage gets its old bytes", QByteArray(oldSong.size(), '\x5A'), oldSong,
            putBack);
        row("one that is too long to be torn, and no song, gets its old bytes",
            QByteArray(200, 'x'), oldSong, putBack);
        row("another song in its place is left alone", "SONG of somebody else",
            "SONG of somebody else", changed);
        row("one that somebody else made longer is left alone", newSong + " and more",
            newSong + " and more", changed);
        row("one of the old size that somebody else wrote is left alone",
            QByteArray(oldSong).replace("title", "TITLE"),
            QByteArray(oldSong).replace("title", "TITLE"), changed);
    }
    void inItsPlace()
    {
        const auto [found, expected, results] =
            cells<QByteArray, QByteArray, QVector<Recovery::Result>>();
        const QString file = write(path("a.mid"), oldSong);
        Journal journal(journalFolder());
        noteAndDie(journal, file, Way::InPlace, newSong);
        write(file, found);
        QCOMPARE(recover(journal), results);
        QCOMPARE(read(file), expected);
        QCOMPARE(recover(journal), QVector<Recovery::Result>()); // nothing is left to say
        // What is neither can be taken back like what the run wrote.
        QCOMPARE(journal.runs()->size(), read(file) == oldSong ? 0 : 1);
        for (const JournalEntry &entry : journal.songsOf(1))
            QCOMPARE(entry.splice.oldOf(read(file)), oldSong);
        QCOMPARE(read(file), expected);
        QCOMPARE(names(), words("a.mid data"));
    }

    void aSongThatBecameShorterIsTheOldOneAgain_data()
    {
        const Table<QByteArray> row;
        row("not cut yet", oldSong + newSong.right(newSong.size() - oldSong.size()));
        row("some of it written", oldSong.left(8) + newSong.mid(8));
        row("its end cleared, and not yet cut",
            oldSong + QByteArray(newSong.size() - oldSong.size(), '\0'));
        row("cut before all of it was there", newSong.left(oldSong.size()));
    }
    /** The other way round: the long song was the old one. */
    void aSongThatBecameShorterIsTheOldOneAgain()
    {
        const auto [found] = cells<QByteArray>();
        const QString file = write(path("a.mid"), newSong);
        Journal journal(journalFolder());
        noteAndDie(journal, file, Way::InPlace, oldSong);
        write(file, found);
        QCOMPARE(recover(journal), QVector<Recovery::Result>{Recovery::Result::PutBack});
        QCOMPARE(read(file), newSong);
    }

    /** As FAT may leave it: both names lead to the same bytes, and removing one ends them. */
    void theOtherNameOfANewSongStays()
    {
        const QByteArray sameSize = QByteArray(oldSong).replace("old title", "odd title");
        const QString file = write(path("a.mp3"), oldSong);
        Journal journal(journalFolder());
        noteAndDie(journal, file, Way::Beside, sameSize, path("a.tmp"));
        write(file, sameSize);
        write(path("a.tmp"), sameSize);
        QCOMPARE(recover(journal), QVector<Recovery::Result>());
        QCOMPARE(names(), words("a.mp3 a.tmp data"));
    }

    void aNewFileGetsTheNameThatAHurtFatLost()
    {
        FailingDisk disk;
        disk.isFat = true;
        for (const QByteArray &found : {newSong, newSong.left(20)}) {
            const QString file = write(path("a.mp3"), oldSong);
            Journal journal(journalFolder());
            noteAndDie(journal, file, Way::Beside, newSong, path("a.tmp"));
            QVERIFY(QFile::remove(file));
            write(path("a.tmp"), found);
            const bool isWhole = found == newSong;
            QCOMPARE(recover(journal, disk),
                     QVector<Recovery::Result>{isWhole ? Recovery::Result::GivenBack
                                                       : Recovery::Result::Waits});
            QCOMPARE(QFile::exists(file), isWhole);
            QVERIFY(!isWhole || read(file) == newSong);
        }
    }

    void beside_data()
    {
        // temporary: null: none
        const Table<QByteArray, QByteArray, bool, QVector<Recovery::Result>> row;
        const QVector<Recovery::Result> changed{Recovery::Result::ChangedSince};
        const QVector<Recovery::Result> none;
        row("a song with its old bytes stays", oldSong, {}, false, none);
        row("a song with its new bytes stays", newSong, {}, false, none);
        row("a new file without a byte goes", oldSong, "", false, none);
        row("a new file of zeros goes", oldSong, QByteArray(20, '\0'), false, none);
        row("a new file with zeros within goes", oldSong,
            newSong.left(7) + QByteArray(9, '\0') + newSong.mid(16), false, none);
        row("a new file with part of its tag goes", oldSong, newSong.left(9), false, none);
        row("a new file with its tag goes", oldSong, newSong.left(21), false, none);
        row("a new file with some of the rest goes", oldSong, newSong.left(30), false, none);
        row("a new file that is whole goes", oldSong, newSong, false, none);
        row("somebody's file of that name stays", oldSong, "their notes", true, none);
        row("somebody's file that begins as the song does stays", oldSong, "SONG of theirs", true,
            none);
        row("somebody's longer file stays", oldSong, newSong + "more", true, none);
        row("a copy of the old song stays", oldSong, oldSong, true, none);
        row("a song that somebody else changed stays, and is told", "SONG of theirs", {}, false,
            changed);
        row("what is no song any more stays, and is told", "garbage", {}, false, changed);
    }
    void beside()
    {
        const auto [found, temporary, isTemporaryKept, results] =
            cells<QByteArray, QByteArray, bool, QVector<Recovery::Result>>();
        const QString file = write(path("a.mp3"), oldSong);
        Journal journal(journalFolder());
        noteAndDie(journal, file, Way::Beside, newSong, path("a.tmp"));
        write(file, found);
        if (!temporary.isNull())
            write(path("a.tmp"), temporary);
        QCOMPARE(recover(journal), results);
        QCOMPARE(read(file), found);
        QCOMPARE(QFile::exists(path("a.tmp")), isTemporaryKept);
        QVERIFY(!isTemporaryKept || read(path("a.tmp")) == temporary);
        QCOMPARE(journal.runs()->size(), found == newSong ? 1 : 0);
        QCOMPARE(recover(journal), QVector<Recovery::Result>());
    }

    void whatWasSetAsideOnFat_data()
    {
        const Table<QByteArray, QByteArray, QVector<Recovery::Result>> row; // found: null: none
        using Results = QVector<Recovery::Result>;
        row("comes back where there is no song", {}, oldSong, Results{Recovery::Result::GivenBack});
        row("comes back over zeros", QByteArray(newSong.size(), '\0'), oldSong,
            Results{Recovery::Result::GivenBack});
        row("goes where the new song is whole", newSong, newSong,
            Results{Recovery::Result::Removed});
    }
    void whatWasSetAsideOnFat()
    {
        const auto [found, left, results] =
            cells<QByteArray, QByteArray, QVector<Recovery::Result>>();
        const QString file = write(path("a.mp3"), oldSong);
        Journal journal(journalFolder());
        noteAndDie(journal, file, Way::Beside, newSong, path("a.tmp"));
        QVERIFY(QFile::rename(file, Recovery::recoveryPathOf(file)));
        if (!found.isNull())
            write(file, found);
        QCOMPARE(recover(journal), results);
        QCOMPARE(read(file), left);
        QCOMPARE(names(), words("a.mp3 data"));
        QCOMPARE(recover(journal), QVector<Recovery::Result>());
    }

private:
    static QByteArray alternating()
    {
        QByteArray bytes = oldSong;
        for (int i = 0; i < bytes.size(); i += 2)
            bytes[i] = newSong.at(i);
        return bytes;
    }

    static QVector<Recovery::Result> recover(Journal &journal, Disk &disk = Disk::real())
    {
        QVector<Recovery::Result> results;
        JournalRecovery::recover(
            journal, disk, [](const QString &file) { return read(file).startsWith("SONG"); },
            [&](const QString &, Recovery::Result result, const Outcome &) { results += result; });
        return results;
    }
};

QTEST_GUILESS_MAIN(tst_JournalRecovery)
#include "tst_journalrecovery.moc"
