#include "tests/library/copyfixture.h"
#include "tests/storage/unixfile.h"

#include <QtTest>

using namespace tarvel4;

using Answers = QVector<Answer>;
Q_DECLARE_METATYPE(Answers)

/** What a copy is, and what the user is asked about it. */
class tst_FileCopier : public QObject, private CopyFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void anEmptyChoiceSucceedsAtOnce();
    void aCopyIsTheWholeSongWithItsTime_data();
    void aCopyIsTheWholeSongWithItsTime();
    void aReadOnlySongStaysReadOnly();
    void songsInPlaceCountAsCopiedAndAreLeftAlone();
    void aSongReachedByAnotherCaseIsInPlace();
    void aSongOfAnotherCaseIsAnotherSong_data();
    void aSongOfAnotherCaseIsAnotherSong();
    void aSongReachedThroughALinkIsNotLost();
    void overwriteAnswers_data();
    void overwriteAnswers();
    void aLinkAtTheDestinationIsReplacedNotFollowed();
    void progressMovesOncePerHandledSong();
    void sameNamesFromTwoFolders_data();
    void sameNamesFromTwoFolders();
    void cancel_data();
    void cancel();
};

void tst_FileCopier::anEmptyChoiceSucceedsAtOnce()
{
    m_host.cancelAtProgress = 0;
    FailingDisk disk;
    const CopySummary summary = copy({}, disk);
    QVERIFY(summary.isComplete());
    QCOMPARE(summary.copied, 0);
    QCOMPARE(m_host.events, QStringList());
    QCOMPARE(disk.operations, QStringList());
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
        bytes[i] = static_cast<char>(i * 31 + i / 251);
    const QDateTime time(QDate(2016, 12, 9), QTime(17, 0, 45, 678));
    TestFiles::write(source(text("song.mid")), bytes);
    TestFiles::setModified(source(text("song.mid")), time);

    const CopySummary summary = copy({source(text("song.mid"))});
    QVERIFY(summary.isComplete());
    QCOMPARE(summary.copied, 1);
    QCOMPARE(targetNames(), strings({"song.mid"}));
    QVERIFY(TestFiles::read(target(text("song.mid"))) == bytes);
    QCOMPARE(QFileInfo(target(text("song.mid"))).lastModified(), time);
    QCOMPARE(m_host.events, strings({"progress 1"}));
}

void tst_FileCopier::aReadOnlySongStaysReadOnly()
{
    TestFiles::write(source(text("song.mid")), "new");
    QVERIFY(QFile::setPermissions(source(text("song.mid")), QFile::ReadOwner | QFile::ReadUser));
    TestFiles::write(target(text("song.mid")), oldBytes);
    QVERIFY(QFile::setPermissions(target(text("song.mid")), QFile::ReadOwner | QFile::ReadUser));

    QVERIFY(copy({source(text("song.mid"))}).isComplete());
    QCOMPARE(TestFiles::read(target(text("song.mid"))), QByteArray("new"));
    QVERIFY(!(QFileInfo(target(text("song.mid"))).permissions() & QFile::WriteOwner));
}

void tst_FileCopier::songsInPlaceCountAsCopiedAndAreLeftAlone()
{
    TestFiles::write(target(text("song.mid")), oldBytes);
    TestFiles::write(target(text("song.mp3")), oldBytes);
    TestFiles::write(target(text("song.cdg")), oldBytes);
    FailingDisk disk;
    const CopySummary summary = copy({target(text("song.mid")), target(text("song.mp3"))}, disk);
    QVERIFY(summary.isComplete());
    QCOMPARE(summary.copied, 2);
    QCOMPARE(summary.kept, 0);
    QCOMPARE(m_host.events, QStringList()); // required: no question, no progress
    QCOMPARE(disk.operations, QStringList());
    QCOMPARE(TestFiles::read(target(text("song.mid"))), oldBytes);
}

void tst_FileCopier::aSongReachedByAnotherCaseIsInPlace()
{
    TestFiles::write(target(text("song.mid")), oldBytes);
    const QString song = m_dir->filePath(text("TO/song.mid"));
    if (QDir().mkdir(QFileInfo(song).path())) // names keep case apart: the same song by a link
        QVERIFY(UnixFile::makeHardLink(target(text("song.mid")), song));
    FailingDisk disk;
    const CopySummary summary = copy({song}, disk);
    QVERIFY(summary.isComplete());
    QCOMPARE(summary.copied, 1);
    QCOMPARE(m_host.events, QStringList());
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

    const CopySummary summary = copy({song});
    QVERIFY(summary.isComplete());
    QCOMPARE(summary.copied, 1);
    QCOMPARE(TestFiles::read(target(text("song.mid"))), QByteArray("new"));
    QCOMPARE(m_host.eventsOf(text("ask overwrite")).size(), isThere ? 1 : 0);
    if (isThere)
        QCOMPARE(m_host.comparedPaths, QStringList({song, target(text("song.mid"))}));
}

void tst_FileCopier::aSongReachedThroughALinkIsNotLost()
{
    SKIP_WITHOUT_UNIX(true, "links that Qt makes");
    TestFiles::write(target(text("song.mid")), "only copy");
    QVERIFY(QFile::link(targetFolder(), m_dir->filePath(text("link"))));
    QVERIFY(copy({m_dir->filePath(text("link/song.mid"))}).isComplete());
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
    m_host.overwriteAnswers = answers;

    const CopySummary summary = copy(files);
    QVERIFY(summary.isComplete()); // a kept song is no failure
    QCOMPARE(m_host.events, events);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)),
                 replaced.contains(name) ? "new " + name.toUtf8() : oldBytes);
    QCOMPARE(summary.copied, replaced.size());
    QCOMPARE(summary.kept, names.size() - replaced.size());
    QCOMPARE(targetNames(), names);
}

void tst_FileCopier::aLinkAtTheDestinationIsReplacedNotFollowed()
{
    TestFiles::write(source(text("a.mid")), "new");
    const QString elsewhere = TestFiles::write(m_dir->filePath(text("elsewhere")), oldBytes);
    QVERIFY(QFile::link(elsewhere, target(text("a.mid"))));
    QVERIFY(copy({source(text("a.mid"))}).isComplete());
    QCOMPARE(TestFiles::read(elsewhere), oldBytes);
    QVERIFY(!QFileInfo(target(text("a.mid"))).isSymLink());
    QCOMPARE(TestFiles::read(target(text("a.mid"))), QByteArray("new"));
}

void tst_FileCopier::progressMovesOncePerHandledSong()
{
    TestFiles::write(source(text("new.mid")), "new");
    TestFiles::write(source(text("kept.mid")), "new");
    TestFiles::write(source(text("last.mid")), "new");
    TestFiles::write(target(text("kept.mid")), oldBytes);
    TestFiles::write(target(text("here.mid")), oldBytes);
    m_host.overwriteAnswers = {Answer::No};
    const CopySummary summary =
        copy({target(text("here.mid")), source(text("new.mid")), source(text("kept.mid")),
              source(text("vanished.mid")), source(text("last.mid"))});
    QVERIFY(!summary.isComplete());
    QCOMPARE(m_host.events,
             strings({"progress 2", "ask overwrite kept.mid", "progress 4", "progress 5"}));
    QCOMPARE(summary.copied, 3);
    QCOMPARE(summary.kept, 1);
    QCOMPARE(m_told,
             strings({"here.mid copied", "new.mid copied", "kept.mid kept",
                      "vanished.mid not-found", "last.mid copied"}));
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
    m_host.overwriteAnswers = answers;
    const CopySummary summary = copy(files);
    QVERIFY(summary.isComplete());
    QCOMPARE(m_host.eventsOf(text("ask overwrite")), strings({"ask overwrite s.mid"}));
    QCOMPARE(TestFiles::read(target(text("s.mid"))), bytes);
    QCOMPARE(summary.displaced, QStringList{files.at(displaced)});
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
    m_host.cancelAtProgress = cancelAt;
    m_host.beginProgress(ProgressTexts(), static_cast<int>(files.size()));
    m_host.events.clear();
    const CopySummary summary = copy(files);
    QVERIFY(!summary.isComplete());
    QCOMPARE(summary.copied, 0); // required
    QCOMPARE(summary.failures.size(), 0);
    QCOMPARE(m_host.events.last(), text("end"));
    // What was shown as done is there, whole; nothing else is.
    QCOMPARE(targetNames(), names);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)), QByteArray("new"));
}

QTEST_GUILESS_MAIN(tst_FileCopier)
#include "tst_filecopier.moc"
