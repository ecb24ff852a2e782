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
