#include "tests/library/saveatonce.h"
#include "tests/library/texts.h"
#include "tests/songs/songfixture.h"
#include "tests/storage/unixfile.h"

#include "storage/recovery.h"

#include <QElapsedTimer>

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

/** Many songs of one edit or update: what waits, what is told, and what the history has of it. */
class tst_SaveRun : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        m_told.clear();
    }

    void aSongThatWaitsIsWrittenBeforeItIsReadAgain_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("way"); // by which it is reached the second time
        QTest::newRow("a MIDI song by the same path") << "mid"
                                                      << "path";
        QTest::newRow("a MIDI song by a link") << "mid"
                                               << "soft";
        QTest::newRow("a MIDI song by another name of it") << "mid"
                                                           << "hard";
        QTest::newRow("an MP3 by the same path") << "mp3"
                                                 << "path";
        QTest::newRow("an MP3 by a link") << "mp3"
                                          << "soft";
    }
    void aSongThatWaitsIsWrittenBeforeItIsReadAgain()
    {
        QFETCH(QString, suffix);
        QFETCH(QString, way);
        SKIP_WITHOUT_UNIX(way == "soft"_s || way == "hard"_s, "links that Qt makes");
        const QString file = write(path("a."_s + suffix), songOf(suffix));
        const QString again = way == "path"_s ? file : path("b."_s + suffix);
        if (way == "soft"_s)
            QVERIFY(QFile::link(file, again));
        if (way == "hard"_s)
            QVERIFY(UnixFile::makeHardLink(file, again));
        SaveRun saves(Disk::real(), nullptr, "edit"_s);
        edit(saves, file, [](SongInfo &info) { info.title = "First"_s; });
        QCOMPARE(recordOf(imported(file)).title, recordOf(imported(again)).title);
        if (m_told.isEmpty()) // else the machine was slow, and the batch full by its age
            QVERIFY(recordOf(imported(file)).title != "First"_s);
        edit(saves, again, [](SongInfo &info) { info.genre = "SECOND"_s; });
        saves.commit();
        QCOMPARE(m_told, words("edited edited"));
        QCOMPARE(recordOf(imported(file)).title, "First"_s);
        QCOMPARE(recordOf(imported(file)).genre, "SECOND"_s);
    }

    void aRunOfManyBatchesIsOneInTheHistory()
    {
        constexpr int songs = SaveBatch::mostSongs + 30;
        Journal journal(path("data"));
        {
            SaveRun saves(Disk::real(), &journal, "sync"_s);
            for (int i = 0; i < songs; ++i) {
                const QString file = write(path(QString::number(i) + ".mid"_s), midi0());
                edit(saves, file, [](SongInfo &info) { info.title = "New"_s; });
            }
            // A full batch is written by itself; on a slow disk its age makes it full.
            QVERIFY(m_told.size() > songs - SaveBatch::mostSongs);
            QCOMPARE(titleIn(path("0.mid")), "New"_s);
        }
        QCOMPARE(m_told.size(), songs);
        const QVector<JournalRun> runs = journal.runs().value();
        QCOMPARE(runs.size(), 1);
        QCOMPARE(runs.first().what, "sync"_s);
        QCOMPARE(runs.first().songs, songs);
    }

    void aSongThatCantBeSavedIsToldInItsTurn()
    {
        SaveRun saves(Disk::real(), nullptr, "edit"_s);
        const auto rename = [](SongInfo &info) { info.title = QString::fromUtf8("Città"); };
        QElapsedTimer timer;
        timer.start();
        edit(saves, write(path("a.mid"), songOf("mid"_s)), rename);
        edit(saves, write(path("b.mf3"), songOf("mf3"_s)), rename);
        edit(saves, write(path("c.mid"), songOf("mid"_s)), rename);
        if (timer.elapsed() < SaveBatch::mostMilliseconds) // else the batch is full by its age
            QCOMPARE(m_told, QStringList());
        saves.commit();
        QCOMPARE(m_told, words("edited letter-not-storable edited"));
        QCOMPARE(read(path("b.mf3")), songOf("mf3"_s));
    }

    void whatLiesUnderTheNeededNameIsPutInOrderFirst_data()
    {
        QTest::addColumn<bool>("isLink");
        QTest::newRow("beside the song") << false;
        QTest::newRow("beside the song behind a link") << true;
    }
    void whatLiesUnderTheNeededNameIsPutInOrderFirst()
    {
        QFETCH(bool, isLink);
        SKIP_WITHOUT_UNIX(isLink, "links that Qt makes");
        const QString file = write(path("a.mp3"), songOf("mp3"_s));
        write(Recovery::recoveryPathOf(file), songOf("mf3"_s)); // or both might be one file
        FailingDisk disk;
        disk.isFat = true;
        SaveRun saves(disk, nullptr, "edit"_s);
        if (isLink)
            QVERIFY(QFile::link(file, path("link.mp3")));
        edit(saves, isLink ? path("link.mp3") : file, [](SongInfo &info) { info.title = "New"_s; });
        saves.commit();
        QCOMPARE(m_told, words("edited"));
        QCOMPARE(titleIn(file), "New"_s);
        QCOMPARE(names(), words(isLink ? "a.mp3 link.mp3" : "a.mp3"));
    }

private:
    void edit(SaveRun &saves, const QString &file, const std::function<void(SongInfo &)> &change)
    {
        saves.beforeReading(file);
        SongEdit song(saves.disk());
        QVERIFY(song.load(file));
        SongInfo info = song.info();
        change(info);
        song.save(info, saves, [this](const SongOutcome &outcome) {
            m_told += outcome.cause ? "edited"_s : outcome.cause.codeName();
        });
    }

    QStringList m_told;
};

QTEST_GUILESS_MAIN(tst_SaveRun)
#include "tst_saverun.moc"
