#include "library/filecopier.h"

#include "logcapture.h"
#include "scripteddisk.h"
#include "scriptedhost.h"
#include "testfiles.h"
#include "tmpfsmount.h"

#include <QtTest>

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using Answers = QVector<Answer>;
Q_DECLARE_METATYPE(Answers)

class tst_FileCopier : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void anEmptyChoiceSucceedsAtOnce();
    void aCopyIsTheWholeSongWithItsTime_data();
    void aCopyIsTheWholeSongWithItsTime();
    void aReadOnlySongStaysReadOnly();
    void songsInPlace();
    void aSongOfAnotherCaseIsAnotherSong_data();
    void aSongOfAnotherCaseIsAnotherSong();
    void aSongReachedThroughALinkIsNotLost();
    void overwriteAnswers_data();
    void overwriteAnswers();
    void theAnswersForAllLastForOneRun();
    void companions_data();
    void companions();
    void anExistingCompanionMakesItsCopyFail_data();
    void anExistingCompanionMakesItsCopyFail();
    void aPairIsCopiedWholeOrNotAtAll_data();
    void aPairIsCopiedWholeOrNotAtAll();
    void whatIsNoRegularFileFails_data();
    void whatIsNoRegularFileFails();
    void aLinkAtTheDestinationIsReplacedNotFollowed();
    void aFolderOfTheSameNameFails();
    void progressMovesOncePerHandledSong();
    void sameNamesFromTwoFolders_data();
    void sameNamesFromTwoFolders();
    void namesThatDifferInCaseAreNotStagedTogether();
    void cancel_data();
    void cancel();
    void failingDisk_data();
    void failingDisk();
    void aDeadMediumFailsEverySong();
    void aSourceThatChangesWhileCopiedFails_data();
    void aSourceThatChangesWhileCopiedFails();
    void namesComeAfterTheBytesAndBeforeTheLastFlush();
    void manySongsAreFlushedInFewBatches();
    void leftovers_data();
    void leftovers();
    void onFatTheOldSongsWaitUntilTheNewOnesAreSafe();
    void onFatAFailureBringsTheOldSongsBack_data();
    void onFatAFailureBringsTheOldSongsBack();
    void onFatAKillLeavesOneOfTheTwo_data();
    void onFatAKillLeavesOneOfTheTwo();
    void aKilledRunIsMadeGoodByTheNext_data();
    void aKilledRunIsMadeGoodByTheNext();
    void aFullVolume();
    void replacedSongsMakeRoomOnAFullVolume();
    void aWriteProtectedVolume();

private:
    QString source(const QString &name) const
    {
        return m_dir->filePath(QStringLiteral("from/") + name);
    }
    QString target(const QString &name) const
    {
        return m_dir->filePath(QStringLiteral("to/") + name);
    }
    QString targetFolder() const { return m_dir->filePath(QStringLiteral("to")); }
    QStringList targetNames() const { return TestFiles::namesIn(targetFolder()); }

    QScopedPointer<QTemporaryDir> m_dir;
};

namespace {

const QByteArray oldBytes = "old";

QStringList strings(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QString::fromUtf8(text));
    return list;
}

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

} // namespace

void tst_FileCopier::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
    QVERIFY(QDir(m_dir->path()).mkdir(text("to")));
    QVERIFY(QDir(m_dir->path()).mkdir(text("from")));
}

void tst_FileCopier::anEmptyChoiceSucceedsAtOnce()
{
    ScriptedHost host;
    host.cancelAtProgress = 0;
    ScriptedDisk disk;
    FileCopier copier(host, disk);
    QVERIFY(copier.copyFiles({}, m_dir->filePath(text("not there"))));
    QCOMPARE(host.events, QStringList());
    QCOMPARE(disk.operations, QStringList());
    QCOMPARE(copier.copied(), 0);
}

void tst_FileCopier::aCopyIsTheWholeSongWithItsTime_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("an empty file") << 0;
    QTest::newRow("one byte") << 1;
    QTest::newRow("one block of the copy") << (1 << 17);
    QTest::newRow("one byte more than a block") << (1 << 17) + 1;
    QTest::newRow("several blocks") << 5 * (1 << 17) / 2;
}

void tst_FileCopier::aCopyIsTheWholeSongWithItsTime()
{
    QFETCH(int, size);
    QByteArray bytes(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i)
        bytes[i] = char(i * 31 + i / 251);
    const QDateTime time(QDate(2016, 12, 9), QTime(17, 0, 45, 678));
    TestFiles::write(source(text("song.mid")), bytes);
    TestFiles::setModified(source(text("song.mid")), time);

    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles({source(text("song.mid"))}, targetFolder()));
    QCOMPARE(copier.copied(), 1);
    QCOMPARE(copier.failures(), 0);
    QCOMPARE(targetNames(), strings({"song.mid"}));
    QVERIFY(TestFiles::read(target(text("song.mid"))) == bytes);
    QCOMPARE(QFileInfo(target(text("song.mid"))).lastModified(), time);
    QCOMPARE(host.events, strings({"progress 1"}));
}

void tst_FileCopier::aReadOnlySongStaysReadOnly()
{
    TestFiles::write(source(text("song.mid")), "new");
    QVERIFY(QFile::setPermissions(source(text("song.mid")), QFile::ReadOwner | QFile::ReadUser));
    TestFiles::write(target(text("song.mid")), oldBytes);
    QVERIFY(QFile::setPermissions(target(text("song.mid")), QFile::ReadOwner | QFile::ReadUser));

    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles({source(text("song.mid"))}, targetFolder()));
    QCOMPARE(TestFiles::read(target(text("song.mid"))), QByteArray("new"));
    QVERIFY(!(QFileInfo(target(text("song.mid"))).permissions() & QFile::WriteOwner));
}

void tst_FileCopier::songsInPlace()
{
    TestFiles::write(target(text("song.mid")), oldBytes);
    TestFiles::write(target(text("song.mp3")), oldBytes);
    TestFiles::write(target(text("song.cdg")), oldBytes);
    ScriptedHost host;
    ScriptedDisk disk;
    FileCopier copier(host, disk);
    QVERIFY(copier.copyFiles({target(text("song.mid")), target(text("song.mp3"))}, targetFolder()));
    QCOMPARE(copier.copied(), 2);
    QCOMPARE(copier.kept(), 0);
    QCOMPARE(host.events, QStringList()); // required: no question, no progress
    QCOMPARE(disk.operations, QStringList());
    QCOMPARE(TestFiles::read(target(text("song.mid"))), oldBytes);
}

void tst_FileCopier::aSongOfAnotherCaseIsAnotherSong_data()
{
    QTest::addColumn<bool>("isThere");
    QTest::newRow("where the destination has a song of that name") << true;
    QTest::newRow("where the destination has none") << false;
}

void tst_FileCopier::aSongOfAnotherCaseIsAnotherSong()
{
    QFETCH(bool, isThere);
    const QString folder = m_dir->filePath(text("TO"));
    if (!QDir().mkdir(folder))
        QSKIP("names do not keep case apart here");
    const QString song = TestFiles::write(folder + text("/song.mid"), "new");
    if (isThere)
        TestFiles::write(target(text("song.mid")), oldBytes);

    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles({song}, targetFolder()));
    QCOMPARE(copier.copied(), 1);
    QCOMPARE(TestFiles::read(target(text("song.mid"))), QByteArray("new"));
    QCOMPARE(host.eventsOf(text("ask overwrite")).size(), isThere ? 1 : 0);
}

void tst_FileCopier::aSongReachedThroughALinkIsNotLost()
{
    TestFiles::write(target(text("song.mid")), "only copy");
    QVERIFY(QFile::link(targetFolder(), m_dir->filePath(text("link"))));
    ScriptedHost host; // yes, replace it
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles({m_dir->filePath(text("link/song.mid"))}, targetFolder()));
    QCOMPARE(TestFiles::read(target(text("song.mid"))), QByteArray("only copy"));
    QCOMPARE(targetNames(), strings({"song.mid"}));
}

void tst_FileCopier::overwriteAnswers_data()
{
    QTest::addColumn<Answers>("answers");
    QTest::addColumn<QStringList>("events");
    QTest::addColumn<QStringList>("replaced");

    const QStringList askAll =
        strings({"ask overwrite a.mid", "ask overwrite b.mid", "ask overwrite c.mid"});
    QTest::newRow("yes replaces this song")
        << Answers{Answer::Yes, Answer::No, Answer::No}
        << strings(
               {"ask overwrite a.mid", "progress 1", "ask overwrite b.mid", "ask overwrite c.mid"})
        << strings({"a.mid"});
    QTest::newRow("yes to all replaces every song and asks no more")
        << Answers{Answer::YesToAll}
        << strings({"ask overwrite a.mid", "progress 1", "progress 2", "progress 3"})
        << strings({"a.mid", "b.mid", "c.mid"});
    QTest::newRow("no keeps this song") << Answers{Answer::No, Answer::Yes, Answer::No}
                                        << strings({"ask overwrite a.mid", "ask overwrite b.mid",
                                                    "progress 2", "ask overwrite c.mid"})
                                        << strings({"b.mid"});
    QTest::newRow("no to all keeps every song and asks no more")
        << Answers{Answer::NoToAll} << strings({"ask overwrite a.mid"}) << QStringList();
    QTest::newRow("yes, then no to all")
        << Answers{Answer::Yes, Answer::NoToAll}
        << strings({"ask overwrite a.mid", "progress 1", "ask overwrite b.mid"})
        << strings({"a.mid"});
    QTest::newRow("no, then yes to all")
        << Answers{Answer::No, Answer::YesToAll}
        << strings({"ask overwrite a.mid", "ask overwrite b.mid", "progress 2", "progress 3"})
        << strings({"b.mid", "c.mid"});
    QTest::newRow("closing the question by its frame is yes")
        << Answers()
        << strings({"ask overwrite a.mid", "progress 1", "ask overwrite b.mid", "progress 2",
                    "ask overwrite c.mid", "progress 3"})
        << strings({"a.mid", "b.mid", "c.mid"});
}

void tst_FileCopier::overwriteAnswers()
{
    QFETCH(Answers, answers);
    QFETCH(QStringList, events);
    QFETCH(QStringList, replaced);
    const QStringList names = strings({"a.mid", "b.mid", "c.mid"});
    QStringList files;
    for (const QString &name : names) {
        files.append(TestFiles::write(source(name), "new " + name.toUtf8()));
        TestFiles::write(target(name), oldBytes);
    }
    ScriptedHost host;
    host.overwriteAnswers = answers;
    FileCopier copier(host, Disk::real());

    QVERIFY(copier.copyFiles(files, targetFolder())); // a kept song is no failure
    QCOMPARE(host.events, events);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)),
                 replaced.contains(name) ? "new " + name.toUtf8() : oldBytes);
    QCOMPARE(copier.copied(), replaced.size());
    QCOMPARE(copier.kept(), names.size() - replaced.size());
    QCOMPARE(targetNames(), names);
}

void tst_FileCopier::theAnswersForAllLastForOneRun()
{
    const QStringList files{TestFiles::write(source(text("a.mid")), "new")};
    TestFiles::write(target(text("a.mid")), oldBytes);
    ScriptedHost host;
    host.overwriteAnswers = {Answer::NoToAll, Answer::Yes};
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles(files, targetFolder()));
    QCOMPARE(TestFiles::read(target(text("a.mid"))), oldBytes);
    QVERIFY(copier.copyFiles(files, targetFolder()));
    QCOMPARE(TestFiles::read(target(text("a.mid"))), QByteArray("new"));
    QCOMPARE(copier.kept(), 0);
}

void tst_FileCopier::companions_data()
{
    QTest::addColumn<QString>("song");
    QTest::addColumn<QString>("beside");
    QTest::addColumn<QStringList>("names");

    QTest::newRow("an MP3 without a companion is copied alone")
        << text("s.mp3") << QString() << strings({"s.mp3"});
    QTest::newRow("an MP3 takes its .cdg along")
        << text("s.mp3") << text("s.cdg") << strings({"s.cdg", "s.mp3"});
    QTest::newRow("an upper-case MP3 takes its .cdg along")
        << text("s.MP3") << text("s.cdg") << strings({"s.MP3", "s.cdg"});
    QTest::newRow("a .CDG is found too")
        << text("s.mp3") << text("s.CDG") << strings({"s.cdg", "s.mp3"});
    QTest::newRow("and a .cDg") << text("s.Mp3") << text("s.cDg") << strings({"s.Mp3", "s.cdg"});
    QTest::newRow("only the suffix is replaced")
        << text("x.mp3.d/s.mp3.mp3") << text("x.mp3.d/s.mp3.cdg")
        << strings({"s.mp3.cdg", "s.mp3.mp3"});
    QTest::newRow("the companion of another name stays")
        << text("s.mp3.mp3") << text("s.cdg.mp3") << strings({"s.mp3.mp3"});
    QTest::newRow("a MIDI song has no companion")
        << text("s.mid") << text("s.cdg") << strings({"s.mid"});
    QTest::newRow("a name that only ends with the letters mp3 has none")
        << text("songmp3") << text("song.cdg") << strings({"songmp3"});
    QTest::newRow("a folder is no companion")
        << text("s.mp3") << text("s.cdg/inside") << strings({"s.mp3"});
}

void tst_FileCopier::companions()
{
    QFETCH(QString, song);
    QFETCH(QString, beside);
    QFETCH(QStringList, names);
    TestFiles::write(source(song), "song");
    if (!beside.isEmpty())
        TestFiles::write(source(beside), "graphics");
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles({source(song)}, targetFolder()));
    QCOMPARE(copier.copied(), 1); // a pair counts once
    QCOMPARE(copier.failures(), 0);
    QCOMPARE(targetNames(), names);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)),
                 QByteArray(name.endsWith(text(".cdg")) ? "graphics" : "song"));
}

void tst_FileCopier::anExistingCompanionMakesItsCopyFail_data()
{
    QTest::addColumn<QString>("existing");
    QTest::newRow("of the same name") << text("s.cdg");
    QTest::newRow("of a name that differs in case") << text("s.CDG");
}

void tst_FileCopier::anExistingCompanionMakesItsCopyFail()
{
    QFETCH(QString, existing);
    TestFiles::write(source(text("s.mp3")), "song");
    TestFiles::write(source(text("s.cdg")), "graphics");
    TestFiles::write(target(existing), oldBytes);
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(!copier.copyFiles({source(text("s.mp3"))}, targetFolder()));
    QCOMPARE(host.events, strings({"progress 1"})); // required: no question
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(copier.copied(), 0);
    QCOMPARE(TestFiles::read(target(existing)), oldBytes);
    QCOMPARE(TestFiles::read(target(text("s.mp3"))), QByteArray("song"));
    QCOMPARE(targetNames().size(), 2);
}

void tst_FileCopier::aPairIsCopiedWholeOrNotAtAll_data()
{
    QTest::addColumn<int>("failingWrite");
    QTest::newRow("the song can't be written") << 1;
    QTest::newRow("its companion can't be written") << 2;
}

void tst_FileCopier::aPairIsCopiedWholeOrNotAtAll()
{
    QFETCH(int, failingWrite);
    TestFiles::write(source(text("s.mp3")), "song");
    TestFiles::write(source(text("s.cdg")), "graphics");
    TestFiles::write(target(text("s.mp3")), oldBytes);
    ScriptedHost host;
    ScriptedDisk disk;
    disk.failingWrite = failingWrite;
    FileCopier copier(host, disk);
    QVERIFY(!copier.copyFiles({source(text("s.mp3"))}, targetFolder()));
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(copier.copied(), 0);
    QCOMPARE(targetNames(), strings({"s.mp3"}));
    QCOMPARE(TestFiles::read(target(text("s.mp3"))), oldBytes);
}

void tst_FileCopier::whatIsNoRegularFileFails_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("a song that has vanished") << text("none");
    QTest::newRow("a folder called like a song") << text("folder");
    QTest::newRow("a FIFO, which would hang") << text("fifo");
    QTest::newRow("a device") << text("device");
    QTest::newRow("a link that leads nowhere") << text("link");
    QTest::newRow("a song that must not be read") << text("unreadable");
}

void tst_FileCopier::whatIsNoRegularFileFails()
{
    QFETCH(QString, kind);
    const QString song = source(text("x.mid"));
    const QByteArray native = QFile::encodeName(song);
    if (kind == text("folder"))
        QVERIFY(QDir().mkdir(song));
    if (kind == text("fifo"))
        QCOMPARE(mkfifo(native.constData(), 0600), 0);
    if (kind == text("device") && mknod(native.constData(), S_IFCHR | 0600, makedev(1, 3)) != 0)
        QSKIP("devices can't be made here");
    if (kind == text("link"))
        QVERIFY(QFile::link(source(text("nowhere.mid")), song));
    if (kind == text("unreadable")) {
        TestFiles::write(song, "new");
        QVERIFY(QFile::setPermissions(song, QFile::Permissions()));
        if (QFile(song).open(QIODevice::ReadOnly))
            QSKIP("this user may read everything");
    }
    TestFiles::write(source(text("y.mid")), "new");
    TestFiles::write(target(text("x.mid")), oldBytes);

    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    LogCapture log;
    QVERIFY(!copier.copyFiles({song, source(text("y.mid"))}, targetFolder()));
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(copier.copied(), 1); // the loop goes on
    QCOMPARE(targetNames(), strings({"x.mid", "y.mid"}));
    QCOMPARE(TestFiles::read(target(text("x.mid"))), oldBytes);
    QVERIFY(LogCapture::tells({text("can't be read"), song}));
}

void tst_FileCopier::aLinkAtTheDestinationIsReplacedNotFollowed()
{
    TestFiles::write(source(text("a.mid")), "new");
    const QString elsewhere = TestFiles::write(m_dir->filePath(text("elsewhere")), oldBytes);
    QVERIFY(QFile::link(elsewhere, target(text("a.mid"))));
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles({source(text("a.mid"))}, targetFolder()));
    QCOMPARE(TestFiles::read(elsewhere), oldBytes);
    QVERIFY(!QFileInfo(target(text("a.mid"))).isSymLink());
    QCOMPARE(TestFiles::read(target(text("a.mid"))), QByteArray("new"));
}

void tst_FileCopier::aFolderOfTheSameNameFails()
{
    TestFiles::write(source(text("a.mid")), "new");
    TestFiles::write(target(text("a.mid/inside")), oldBytes);
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(!copier.copyFiles({source(text("a.mid"))}, targetFolder()));
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(targetNames(), strings({"a.mid"}));
    QCOMPARE(TestFiles::read(target(text("a.mid/inside"))), oldBytes);
}

void tst_FileCopier::progressMovesOncePerHandledSong()
{
    TestFiles::write(source(text("new.mid")), "new");
    TestFiles::write(source(text("kept.mid")), "new");
    TestFiles::write(source(text("last.mid")), "new");
    TestFiles::write(target(text("kept.mid")), oldBytes);
    TestFiles::write(target(text("here.mid")), oldBytes);
    ScriptedHost host;
    host.overwriteAnswers = {Answer::No};
    FileCopier copier(host, Disk::real());
    QVERIFY(!copier.copyFiles({target(text("here.mid")), source(text("new.mid")),
                               source(text("kept.mid")), source(text("vanished.mid")),
                               source(text("last.mid"))},
                              targetFolder()));
    QCOMPARE(host.events,
             strings({"progress 2", "ask overwrite kept.mid", "progress 4", "progress 5"}));
    QCOMPARE(copier.copied(), 3);
    QCOMPARE(copier.kept(), 1);
    QCOMPARE(copier.failures(), 1);
}

void tst_FileCopier::sameNamesFromTwoFolders_data()
{
    QTest::addColumn<Answers>("answers");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("displaced");
    QTest::newRow("no keeps the first") << Answers{Answer::No} << QByteArray("first") << 1;
    QTest::newRow("yes takes the second") << Answers{Answer::Yes} << QByteArray("second") << 0;
}

void tst_FileCopier::sameNamesFromTwoFolders()
{
    QFETCH(Answers, answers);
    QFETCH(QByteArray, bytes);
    QFETCH(int, displaced);
    const QStringList files{TestFiles::write(source(text("1/s.mid")), "first"),
                            TestFiles::write(source(text("2/s.mid")), "second")};
    ScriptedHost host;
    host.overwriteAnswers = answers;
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles(files, targetFolder()));
    QCOMPARE(host.eventsOf(text("ask overwrite")), strings({"ask overwrite s.mid"}));
    QCOMPARE(TestFiles::read(target(text("s.mid"))), bytes);
    QCOMPARE(copier.displaced(), QStringList{files.at(displaced)});
}

void tst_FileCopier::namesThatDifferInCaseAreNotStagedTogether()
{
    // On a card the first must have its name before the second looks whether it is there.
    const QStringList files{TestFiles::write(source(text("1/s.mid")), "first"),
                            TestFiles::write(source(text("2/S.MID")), "second")};
    ScriptedHost host;
    ScriptedDisk disk;
    FileCopier copier(host, disk);
    QVERIFY(copier.copyFiles(files, targetFolder()));
    QCOMPARE(disk.operations,
             strings({"write", "sync", "replace", "write", "sync", "replace", "sync"}));
    QCOMPARE(targetNames(), strings({"S.MID", "s.mid"}));
}

void tst_FileCopier::cancel_data()
{
    QTest::addColumn<int>("cancelAt");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("before the first song") << 0 << QStringList();
    QTest::newRow("after the first song") << 1 << strings({"a.mid"});
    QTest::newRow("after the second song") << 2 << strings({"a.mid", "b.mid"});
}

void tst_FileCopier::cancel()
{
    QFETCH(int, cancelAt);
    QFETCH(QStringList, names);
    QStringList files;
    for (const QString &name : strings({"a.mid", "b.mid", "c.mid"}))
        files.append(TestFiles::write(source(name), "new"));
    ScriptedHost host;
    host.cancelAtProgress = cancelAt;
    host.beginProgress(ProgressTexts(), files.size());
    host.events.clear();
    FileCopier copier(host, Disk::real());
    QVERIFY(!copier.copyFiles(files, targetFolder()));
    QCOMPARE(copier.copied(), 0); // required
    QCOMPARE(copier.failures(), 0);
    QCOMPARE(host.events.last(), text("end"));
    // What was shown as done is there, whole; nothing else is.
    QCOMPARE(targetNames(), names);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), QByteArray("new"));
}

void tst_FileCopier::failingDisk_data()
{
    QTest::addColumn<int>("failingWrite");
    QTest::addColumn<int>("failingSync");
    QTest::addColumn<int>("failingReplace");
    QTest::addColumn<QStringList>("replaced");
    QTest::addColumn<int>("failures");

    QTest::newRow("the first write") << 1 << 0 << 0 << strings({"b.mid", "c.mid"}) << 1;
    QTest::newRow("a later write, also when tried again")
        << 2 << 0 << 0 << strings({"a.mid", "b.mid", "c.mid"}) << 0;
    QTest::newRow("the flush of the bytes") << 0 << 1 << 0 << QStringList() << 3;
    QTest::newRow("the first name") << 0 << 0 << 1 << strings({"b.mid", "c.mid"}) << 1;
    QTest::newRow("the last name") << 0 << 0 << 3 << strings({"a.mid", "b.mid"}) << 1;
    QTest::newRow("the flush of the names, so that nothing is certain")
        << 0 << 2 << 0 << strings({"a.mid", "b.mid", "c.mid"}) << 3;
}

void tst_FileCopier::failingDisk()
{
    QFETCH(int, failingWrite);
    QFETCH(int, failingSync);
    QFETCH(int, failingReplace);
    QFETCH(QStringList, replaced);
    QFETCH(int, failures);
    const QStringList names = strings({"a.mid", "b.mid", "c.mid"});
    QStringList files;
    for (const QString &name : names) {
        files.append(TestFiles::write(source(name), "new"));
        TestFiles::write(target(name), oldBytes);
    }
    ScriptedHost host;
    ScriptedDisk disk;
    disk.failingWrite = failingWrite;
    disk.failingSync = failingSync;
    disk.failingReplace = failingReplace;
    FileCopier copier(host, disk);

    LogCapture log;
    QCOMPARE(copier.copyFiles(files, targetFolder()), failures == 0);
    QCOMPARE(copier.failures(), failures);
    QCOMPARE(copier.copied(), files.size() - failures);
    QCOMPARE(targetNames(), names); // no temporary file
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)),
                 replaced.contains(name) ? QByteArray("new") : oldBytes);
    QVERIFY(LogCapture::tells({text("WARNING")}));
}

void tst_FileCopier::aDeadMediumFailsEverySong()
{
    const QStringList files{TestFiles::write(source(text("a.mid")), "new"),
                            TestFiles::write(source(text("b.mid")), "new")};
    ScriptedHost host;
    ScriptedDisk disk;
    disk.failingSync = 1;
    disk.staysBroken = true;
    FileCopier copier(host, disk);
    QVERIFY(!copier.copyFiles(files, targetFolder()));
    QCOMPARE(copier.failures(), 2);
    QCOMPARE(copier.copied(), 0);
    QCOMPARE(targetNames(), QStringList());
}

void tst_FileCopier::aSourceThatChangesWhileCopiedFails_data()
{
    QTest::addColumn<QByteArray>("changed");
    QTest::newRow("it grows") << QByteArray("longer than before");
    QTest::newRow("it shrinks") << QByteArray("x");
    QTest::newRow("it is rewritten") << QByteArray("rewritten!");
    QTest::newRow("it vanishes") << QByteArray();
}

void tst_FileCopier::aSourceThatChangesWhileCopiedFails()
{
    QFETCH(QByteArray, changed);
    const QString song = TestFiles::write(source(text("a.mid")), "first text");
    TestFiles::setModified(song, QDateTime::currentDateTime().addSecs(-60));
    TestFiles::write(target(text("a.mid")), oldBytes);
    ScriptedHost host;
    ScriptedDisk disk;
    disk.before = [&](const QString &operation, int) {
        if (operation != text("write"))
            return;
        if (changed.isEmpty())
            QFile::remove(song);
        else
            TestFiles::write(song, changed);
    };
    FileCopier copier(host, disk);
    QVERIFY(!copier.copyFiles({song}, targetFolder()));
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(targetNames(), strings({"a.mid"}));
    QCOMPARE(TestFiles::read(target(text("a.mid"))), oldBytes);
}

void tst_FileCopier::namesComeAfterTheBytesAndBeforeTheLastFlush()
{
    const QStringList files{TestFiles::write(source(text("a.mid")), "new"),
                            TestFiles::write(source(text("b.mid")), "new")};
    ScriptedHost host;
    ScriptedDisk disk;
    QStringList namesAtLastProgress;
    host.onProgress = [&](int value) {
        if (value == 2)
            namesAtLastProgress = disk.operations;
    };
    FileCopier copier(host, disk);
    QVERIFY(copier.copyFiles(files, targetFolder()));
    const QStringList expected = strings({"write", "write", "sync", "replace", "replace", "sync"});
    QCOMPARE(disk.operations, expected);
    QCOMPARE(namesAtLastProgress, expected); // a full progress bar means done
}

void tst_FileCopier::manySongsAreFlushedInFewBatches()
{
    QStringList files;
    for (int i = 0; i < 501; ++i)
        files.append(TestFiles::write(source(QString::number(i) + text(".mid")), "new"));
    ScriptedHost host;
    ScriptedDisk disk;
    FileCopier copier(host, disk);
    QVERIFY(copier.copyFiles(files, targetFolder()));
    QCOMPARE(copier.copied(), 501);
    QCOMPARE(disk.countOf(text("sync")), 3);
    QCOMPARE(targetNames().size(), 501);
}

void tst_FileCopier::leftovers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("stays");
    const qint64 own = QCoreApplication::applicationPid();
    QTest::newRow("of a copier that is gone") << text(".tarvel4soft-2147483646-0.part") << false;
    QTest::newRow("of this process") << text(".tarvel4soft-%1-7.part").arg(own) << false;
    QTest::newRow("of a copier that is at work") << text(".tarvel4soft-1-0.part") << true;
    QTest::newRow("a name that only resembles ours") << text(".tarvel4soft-x-0.part") << true;
    QTest::newRow("another name with a point") << text(".hidden") << true;
    QTest::newRow("a song") << text("tarvel4soft-2147483646-0.part.mid") << true;
}

void tst_FileCopier::leftovers()
{
    QFETCH(QString, name);
    QFETCH(bool, stays);
    TestFiles::write(target(name), "half");
    TestFiles::write(source(text("a.mid")), "new");
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles({source(text("a.mid"))}, targetFolder()));
    QCOMPARE(targetNames().contains(name), stays);
    QCOMPARE(TestFiles::read(target(text("a.mid"))), QByteArray("new"));
}

void tst_FileCopier::aKilledRunIsMadeGoodByTheNext_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("replaced");
    QTest::newRow("killed at the first write") << text("write") << 1 << QStringList();
    QTest::newRow("killed at the third write") << text("write") << 3 << QStringList();
    QTest::newRow("killed at the flush of the bytes") << text("sync") << 1 << QStringList();
    QTest::newRow("killed at the first name") << text("replace") << 1 << QStringList();
    QTest::newRow("killed at the second name") << text("replace") << 2 << strings({"a.mid"});
    QTest::newRow("killed at the last flush")
        << text("sync") << 2 << strings({"a.mid", "b.mid", "c.mid"});
}

void tst_FileCopier::aKilledRunIsMadeGoodByTheNext()
{
    QFETCH(QString, operation);
    QFETCH(int, count);
    QFETCH(QStringList, replaced);
    const QStringList names = strings({"a.mid", "b.mid", "c.mid"});
    QStringList files;
    for (const QString &name : names) {
        files.append(TestFiles::write(source(name), "new"));
        TestFiles::write(target(name), oldBytes);
    }

    const pid_t child = fork();
    if (child == 0) {
        ScriptedHost host;
        ScriptedDisk disk;
        disk.before = [&](const QString &done, int doneCount) {
            if (done == operation && doneCount == count)
                raise(SIGKILL);
        };
        FileCopier(host, disk).copyFiles(files, targetFolder());
        _exit(0);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status));

    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)),
                 replaced.contains(name) ? QByteArray("new") : oldBytes);
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles(files, targetFolder()));
    QCOMPARE(targetNames(), names);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), QByteArray("new"));
}

void tst_FileCopier::onFatTheOldSongsWaitUntilTheNewOnesAreSafe()
{
    const QStringList files{TestFiles::write(source(text("a.mid")), "new"),
                            TestFiles::write(source(text("b.mid")), "new"),
                            TestFiles::write(source(text("c.mid")), "new")};
    TestFiles::write(target(text("a.mid")), oldBytes);
    TestFiles::write(target(text("b.mid")), oldBytes);
    ScriptedHost host;
    ScriptedDisk disk;
    disk.isFat = true;
    QStringList namesBeforeTheLastFlush;
    disk.before = [&](const QString &operation, int count) {
        if (operation == text("sync") && count == 2)
            namesBeforeTheLastFlush = targetNames();
    };
    FileCopier copier(host, disk);
    QVERIFY(copier.copyFiles(files, targetFolder()));
    QCOMPARE(namesBeforeTheLastFlush,
             strings({"a.mid", "a.mid.bak", "b.mid", "b.mid.bak", "c.mid"}));
    QCOMPARE(targetNames(), strings({"a.mid", "b.mid", "c.mid"}));
    QCOMPARE(disk.countOf(text("sync")), 3); // the bytes, the names, the old ones' removal
}

void tst_FileCopier::onFatAFailureBringsTheOldSongsBack_data()
{
    QTest::addColumn<int>("failingReplace");
    QTest::addColumn<int>("failingSync");
    QTest::addColumn<QStringList>("replaced");
    QTest::newRow("the old song can't step aside") << 1 << 0 << strings({"b.mid"});
    QTest::newRow("the new song can't be named") << 2 << 0 << strings({"b.mid"});
    QTest::newRow("the flush of the names") << 0 << 2 << QStringList();
    QTest::newRow("the flush after the old ones' removal, which harms nothing")
        << 0 << 3 << strings({"a.mid", "b.mid"});
}

void tst_FileCopier::onFatAFailureBringsTheOldSongsBack()
{
    QFETCH(int, failingReplace);
    QFETCH(int, failingSync);
    QFETCH(QStringList, replaced);
    const QStringList names = strings({"a.mid", "b.mid"});
    QStringList files;
    for (const QString &name : names) {
        files.append(TestFiles::write(source(name), "new"));
        TestFiles::write(target(name), oldBytes);
    }
    ScriptedHost host;
    ScriptedDisk disk;
    disk.isFat = true;
    disk.failingReplace = failingReplace;
    disk.failingSync = failingSync;
    FileCopier copier(host, disk);
    QCOMPARE(copier.copyFiles(files, targetFolder()), replaced.size() == names.size());
    QCOMPARE(copier.copied(), replaced.size());
    QCOMPARE(targetNames(), names);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)),
                 replaced.contains(name) ? QByteArray("new") : oldBytes);
}

void tst_FileCopier::onFatAKillLeavesOneOfTheTwo_data()
{
    QTest::addColumn<int>("count");
    for (int count = 1; count <= 4; ++count)
        QTest::addRow("killed at rename %d", count) << count;
}

void tst_FileCopier::onFatAKillLeavesOneOfTheTwo()
{
    QFETCH(int, count);
    const QStringList names = strings({"a.mid", "b.mid"});
    QStringList files;
    for (const QString &name : names) {
        files.append(TestFiles::write(source(name), "new"));
        TestFiles::write(target(name), oldBytes);
    }
    const pid_t child = fork();
    if (child == 0) {
        ScriptedHost host;
        ScriptedDisk disk;
        disk.isFat = true;
        disk.before = [&](const QString &operation, int done) {
            if (operation == text("replace") && done == count)
                raise(SIGKILL);
        };
        FileCopier(host, disk).copyFiles(files, targetFolder());
        _exit(0);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status));
    for (const QString &name : names) {
        const QByteArray now = TestFiles::read(target(name));
        const bool isThere = now == oldBytes || now == QByteArray("new");
        QVERIFY(isThere || TestFiles::read(target(name + text(".bak"))) == oldBytes);
    }
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles(files, targetFolder()));
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), QByteArray("new"));
}

void tst_FileCopier::aFullVolume()
{
    TmpfsMount volume(targetFolder(), "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    const QStringList files{TestFiles::write(source(text("small.mid")), QByteArray(1000, 's')),
                            TestFiles::write(source(text("big.mid")), QByteArray(100000, 'b')),
                            TestFiles::write(source(text("tiny.mid")), QByteArray(100, 't'))};
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(!copier.copyFiles(files, targetFolder()));
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(copier.copied(), 2);
    QCOMPARE(targetNames(), strings({"small.mid", "tiny.mid"}));
    QCOMPARE(TestFiles::read(target(text("small.mid"))), QByteArray(1000, 's'));
}

void tst_FileCopier::replacedSongsMakeRoomOnAFullVolume()
{
    TmpfsMount volume(targetFolder(), "size=128k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    const QStringList names = strings({"a.mid", "b.mid"});
    QStringList files;
    for (const QString &name : names) {
        files.append(TestFiles::write(source(name), QByteArray(40000, 'n')));
        TestFiles::write(target(name), QByteArray(40000, 'o'));
    }
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(copier.copyFiles(files, targetFolder()));
    QCOMPARE(copier.copied(), 2);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), QByteArray(40000, 'n'));
}

void tst_FileCopier::aWriteProtectedVolume()
{
    TmpfsMount volume(targetFolder(), "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    TestFiles::write(target(text("a.mid")), oldBytes);
    QVERIFY(volume.makeReadOnly());
    ScriptedHost host;
    FileCopier copier(host, Disk::real());
    QVERIFY(!copier.copyFiles({TestFiles::write(source(text("a.mid")), "new")}, targetFolder()));
    QCOMPARE(copier.failures(), 1);
    QCOMPARE(TestFiles::read(target(text("a.mid"))), oldBytes);
}

QTEST_GUILESS_MAIN(tst_FileCopier)
#include "tst_filecopier.moc"
