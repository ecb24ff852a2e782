#include "storage/recovery.h"

#include "tests/storage/foldertest.h"

using namespace tarvel4;
using namespace SongBytes;

Q_DECLARE_METATYPE(Recovery::Result)

/** What becomes of the files that a power cut left under the name for the time of a replacement. */
class tst_Recovery : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void onlyOurNamesAreRecoveryNames()
    {
        QVERIFY(Recovery::isRecoveryName("song.mp3.tarvel4.bak"_s));
        QVERIFY(!Recovery::isRecoveryName("song.mp3.bak"_s)); // somebody's own copy
        QVERIFY(!Recovery::isRecoveryName("tarvel4.bak.mp3"_s));
        QVERIFY(!Recovery::isRecoveryName(".tarvel4.bak"_s)); // no name to go back to
    }

    void recover_data()
    {
        QTest::addColumn<QByteArrayList>("before"); // name, bytes, ...
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QByteArray>("song");
        QTest::addColumn<QVector<Recovery::Result>>("outcomes");
        const auto row = [](const char *name, const QByteArrayList &before, const char *names,
                            const QByteArray &song, const QVector<Recovery::Result> &outcomes) {
            QTest::newRow(name) << before << QString::fromLatin1(names).split(QLatin1Char(' '))
                                << song << outcomes;
        };
        const QVector<Recovery::Result> givenBack{Recovery::Result::GivenBack};
        const QVector<Recovery::Result> removed{Recovery::Result::Removed};
        const QByteArray zeros(100000, '\0');
        row("a song that is gone comes back", {"a.mp3.tarvel4.bak", "old"}, "a.mp3", "old",
            givenBack);
        row("whatever it is", {"a.mp3.tarvel4.bak", "?"}, "a.mp3", "?", givenBack);
        row("one that never got its bytes comes back", {"a.mp3.tarvel4.bak", "old", "a.mp3", ""},
            "a.mp3", "old", givenBack);
        row("one whose bytes are no song comes back", {"a.mp3.tarvel4.bak", "old", "a.mp3", "?"},
            "a.mp3", "old", givenBack);
        row("one whose bytes are zeros comes back, though an MP3 may begin with them",
            {"a.mp3.tarvel4.bak", "old", "a.mp3", zeros}, "a.mp3", "old", givenBack);
        row("one with a byte behind zeros is a song",
            {"a.mp3.tarvel4.bak", "old", "a.mp3", zeros + 'x'}, "a.mp3", zeros + 'x', removed);
        row("one that is whole loses what stayed behind",
            {"a.mp3.tarvel4.bak", "old", "a.mp3", "new"}, "a.mp3", "new", removed);
        row("somebody's own copy stays", {"a.mp3.bak", "theirs", "a.mp3", "new"}, "a.mp3 a.mp3.bak",
            "new", {});
        row("somebody's own copy is not taken for a song that is gone",
            {"a.mp3.bak", "theirs", "a.mp3.tarvel4.bak", "old"}, "a.mp3 a.mp3.bak", "old",
            givenBack);
    }
    void recover()
    {
        QFETCH(QByteArrayList, before);
        for (int i = 0; i + 1 < before.size(); i += 2)
            write(path(before.at(i).constData()), before.at(i + 1));
        QTEST(recoverAll(path()), "outcomes");
        QTEST(names(), "names");
        QTEST(read(path("a.mp3")), "song");
    }

    void bothStay_data()
    {
        QTest::addColumn<QByteArray>("song"); // empty: a folder
        QTest::addColumn<QByteArray>("old");
        QTest::newRow("a folder in the way") << QByteArray() << QByteArray("old");
        QTest::newRow("neither is a song") << QByteArray("?") << QByteArray("?");
        QTest::newRow("both hold only zeros") << QByteArray(9, '\0') << QByteArray(9, '\0');
    }
    void bothStay()
    {
        QFETCH(QByteArray, song);
        QFETCH(QByteArray, old);
        write(path("a.mp3.tarvel4.bak"), old);
        if (song.isEmpty())
            QVERIFY(QDir().mkdir(path("a.mp3")));
        else
            write(path("a.mp3"), song);
        const LogCapture capture;
        QCOMPARE(recoverAll(path()), QVector<Recovery::Result>{Recovery::Result::Kept});
        QCOMPARE(read(path("a.mp3.tarvel4.bak")), old);
        QVERIFY(song.isEmpty() || read(path("a.mp3")) == song);
        QVERIFY(capture.lines().value(0).contains(path("a.mp3.tarvel4.bak")));
    }

    void onFatASecondNameOfTheSongStays_data()
    {
        QTest::addColumn<bool>("isFat");
        QTest::addColumn<Recovery::Result>("result");
        QTest::newRow("on FAT") << true << Recovery::Result::Kept;
        QTest::newRow("elsewhere, where the file has another name left")
            << false << Recovery::Result::Removed;
    }
    void onFatASecondNameOfTheSongStays()
    {
        SKIP_WITHOUT_UNIX(true, "a hard link, which looks as what FAT is left with");
        QFETCH(Recovery::Result, result);
        QFETCH(bool, isFat);
        FailingDisk disk;
        disk.isFat = isFat;
        write(path("a.mp3"), "old");
        QVERIFY(UnixFile::makeHardLink(path("a.mp3"), path("a.mp3.tarvel4.bak")));
        QCOMPARE(recoverAll(path(), disk), QVector<Recovery::Result>{result});
        QCOMPARE(QFileInfo::exists(path("a.mp3.tarvel4.bak")), isFat);
        QCOMPARE(read(path("a.mp3")), QByteArray("old"));
    }

    void aLinkIsFollowedByNobody()
    {
        SKIP_WITHOUT_UNIX(true, "links that Qt makes");
        QVERIFY(QDir().mkdir(path("folder.tarvel4.bak")));
        QVERIFY(QFile::link(path("nowhere"), path("a.mp3.tarvel4.bak")));
        QVERIFY(QFile::link(path("nowhere"), path("b.mp3")));
        write(path("b.mp3.tarvel4.bak"), "old");
        write(path("c.mp3"), "old");
        QVERIFY(QFile::link(path("c.mp3"), path("c.mp3.tarvel4.bak")));
        QCOMPARE(recoverAll(path()), QVector<Recovery::Result>{Recovery::Result::Kept});
        QVERIFY(QFileInfo(path("b.mp3")).isSymLink());
        QVERIFY(QFileInfo(path("c.mp3.tarvel4.bak")).isSymLink());
        QVERIFY(QFileInfo(path("folder.tarvel4.bak")).isDir());
        QVERIFY(QFileInfo(path("a.mp3.tarvel4.bak")).isSymLink());
    }

    void everyFailureKeepsTheOldBytes()
    {
        constexpr int steps = 4; // the empty file goes, the name comes back, all is flushed
        for (int step = 1; step <= steps; ++step) {
            write(path("a.mp3"), "");
            write(path("a.mp3.tarvel4.bak"), "old");
            FailingDisk disk;
            disk.failAt = step;
            QCOMPARE(recoverAll(path(), disk), QVector<Recovery::Result>{Recovery::Result::Kept});
            QCOMPARE(read(path(step == steps ? "a.mp3" : "a.mp3.tarvel4.bak")), QByteArray("old"));
            recoverAll(path());
            QCOMPARE(names(), QStringList{"a.mp3"_s});
            QCOMPARE(read(path("a.mp3")), QByteArray("old"));
        }
    }

    void everyStepOfAReplacementIsPutInOrder_data()
    {
        QTest::addColumn<int>("step");
        QTest::addColumn<QByteArray>("song"); // afterwards
        QTest::newRow("cut before the first") << 2 << QByteArray("old");
        QTest::newRow("cut before the old one is set aside") << 3 << QByteArray("old");
        QTest::newRow("cut between the two renames") << 4 << QByteArray("old");
        QTest::newRow("cut before the names are synced") << 5 << QByteArray("new");
        QTest::newRow("cut before the old one goes") << 6 << QByteArray("new");
        QTest::newRow("cut at the end") << 7 << QByteArray("new");
    }
    void everyStepOfAReplacementIsPutInOrder()
    {
        QFETCH(int, step);
        write(path("new"), "new");
        write(path("a.mp3"), "old");
        FailingDisk disk;
        disk.isFat = true;
        const QString atCut = path("cut");
        disk.before = [&](const QString &, int) {
            if (disk.operations.size() != step)
                return;
            QDir().mkdir(atCut);
            for (const QString &name : names())
                QFile::copy(path(name), atCut + QLatin1Char('/') + name);
        };
        QVERIFY(disk.replace(path("new"), path("a.mp3")));
        recoverAll(atCut);
        QTEST(read(atCut + "/a.mp3"_s), "song");
        QVERIFY(!SongBytes::names(atCut).contains("a.mp3.tarvel4.bak"_s));
    }

private:
    /** The outcomes of a recovery in which every file that holds "old" or "new" is a song. */
    QVector<Recovery::Result> recoverAll(const QString &folder, Disk &disk = Disk::real()) const
    {
        QVector<Recovery::Result> outcomes;
        Recovery::recoverAll(
            disk, folder,
            [](const QString &file) {
                return !read(file).trimmed().isEmpty() && !read(file).startsWith('?');
            },
            [&](const QString &, Recovery::Result outcome, const Outcome &) {
                outcomes += outcome;
            });
        return outcomes;
    }
};

QTEST_GUILESS_MAIN(tst_Recovery)
#include "tst_recovery.moc"
