#include "tests/library/copyfixture.h"

#include <QtTest>

using namespace tarvel4;

/** The karaoke graphics that go wherever their MP3 goes. */
class tst_Companions : public QObject, private CopyFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void companions_data();
    void companions();
    void anExistingCompanionMakesItsCopyFail_data();
    void anExistingCompanionMakesItsCopyFail();
    void theOneThatFailedIsNamed_data();
    void theOneThatFailedIsNamed();
    void aPairIsCopiedWholeOrNotAtAll_data();
    void aPairIsCopiedWholeOrNotAtAll();
};

void tst_Companions::companions_data()
{
    QTest::addColumn<QString>("song");
    QTest::addColumn<QString>("beside");
    QTest::addColumn<QStringList>("names");

    QTest::newRow("an MP3 without a companion is copied alone")
        << text("s.mp3") << QString() << strings({"s.mp3"});
    QTest::newRow("an upper-case MP3 without a companion is copied alone")
        << text("s.MP3") << QString() << strings({"s.MP3"});
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

void tst_Companions::companions()
{
    QFETCH(QString, song);
    QFETCH(QString, beside);
    QFETCH(QStringList, names);
    TestFiles::write(source(song), "song");
    if (!beside.isEmpty())
        TestFiles::write(source(beside), "graphics");
    const CopySummary summary = copy({source(song)});
    QVERIFY(summary.isComplete());
    QCOMPARE(summary.copied, 1); // a pair counts once
    QCOMPARE(summary.failures.size(), 0);
    QCOMPARE(targetNames(), names);
    for (const QString &name : names)
        QCOMPARE(TestFiles::read(target(name)),
                 QByteArray(name.endsWith(text(".cdg")) ? "graphics" : "song"));
}

void tst_Companions::anExistingCompanionMakesItsCopyFail_data()
{
    QTest::addColumn<QString>("existing");
    QTest::newRow("of the same name") << text("s.cdg");
    QTest::newRow("of a name that differs in case") << text("s.CDG");
}

void tst_Companions::anExistingCompanionMakesItsCopyFail()
{
    QFETCH(QString, existing);
    TestFiles::write(source(text("s.mp3")), "song");
    TestFiles::write(source(text("s.cdg")), "graphics");
    TestFiles::write(target(existing), oldBytes);
    const CopySummary summary = copy({source(text("s.mp3"))});
    QVERIFY(!summary.isComplete());
    QCOMPARE(m_host.events, strings({"progress 1"})); // required: no question
    QCOMPARE(m_told, strings({"s.mp3 already-exists"}));
    QCOMPARE(summary.copied, 0);
    QCOMPARE(TestFiles::read(target(existing)), oldBytes);
    QCOMPARE(TestFiles::read(target(text("s.mp3"))), QByteArray("song"));
    QCOMPARE(targetNames().size(), 2);
}

void tst_Companions::theOneThatFailedIsNamed_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("failing");
    QTest::addColumn<QString>("line"); // of the details, ahead of the cause
    QTest::newRow("a song that can't be written") << text("write") << 1 << text("s.mp3: ");
    QTest::newRow("a companion that can't be written")
        << text("write") << 2 << text("s.mp3: s.cdg: ");
    QTest::newRow("a companion that changes meanwhile")
        << text("change") << 2 << text("s.mp3: s.cdg: ");
    QTest::newRow("a song that can't be named") << text("replace") << 1 << text("s.mp3: ");
    QTest::newRow("a companion that can't be named")
        << text("replace") << 2 << text("s.mp3: s.cdg: ");
    QTest::newRow("a companion that exists") << text("exists") << 0 << text("s.mp3: s.cdg: ");
}

void tst_Companions::theOneThatFailedIsNamed()
{
    QFETCH(QString, operation);
    QFETCH(int, failing);
    QFETCH(QString, line);
    TestFiles::write(source(text("s.mp3")), "song");
    TestFiles::write(source(text("s.cdg")), "graphics");
    if (operation == text("exists"))
        TestFiles::write(target(text("s.cdg")), oldBytes);
    FailingDisk disk;
    disk.cause = Outcome::Code::InUse;
    disk.failingWrite = operation == text("write") ? failing : 0;
    disk.failingReplace = operation == text("replace") ? failing : 0;
    disk.before = [&](const QString &, int count) {
        if (operation == text("change") && count == failing)
            TestFiles::write(source(text("s.cdg")), "longer graphics");
    };
    const CopySummary summary = copy({source(text("s.mp3"))}, disk);
    QCOMPARE(summary.failures.size(), 1);
    const SongOutcome &song = summary.failures.at(0);
    QCOMPARE(song.path, source(text("s.mp3")));
    QCOMPARE(summary.details(), QStringList(line + song.cause.sentence()));
    QCOMPARE(song.problem(), summary.details().at(0));
    QVERIFY(!song.cause.sentence().isEmpty());
}

void tst_Companions::aPairIsCopiedWholeOrNotAtAll_data()
{
    QTest::addColumn<int>("failingWrite");
    QTest::newRow("the song can't be written") << 1;
    QTest::newRow("its companion can't be written") << 2;
}

void tst_Companions::aPairIsCopiedWholeOrNotAtAll()
{
    QFETCH(int, failingWrite);
    TestFiles::write(source(text("s.mp3")), "song");
    TestFiles::write(source(text("s.cdg")), "graphics");
    TestFiles::write(target(text("s.mp3")), oldBytes);
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    disk.failingWrite = failingWrite;
    const CopySummary summary = copy({source(text("s.mp3"))}, disk);
    QVERIFY(!summary.isComplete());
    QCOMPARE(m_told, strings({"s.mp3 no-room"}));
    QCOMPARE(summary.copied, 0);
    QCOMPARE(targetNames(), strings({"s.mp3"}));
    QCOMPARE(TestFiles::read(target(text("s.mp3"))), oldBytes);
}

QTEST_GUILESS_MAIN(tst_Companions)
#include "tst_companions.moc"
