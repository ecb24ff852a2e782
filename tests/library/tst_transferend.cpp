#include "indexer/index.h"

#include "tests/library/transferfixture.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/tmpfsmount.h"
#include "tests/storage/unixfile.h"

#include <QtTest>

#include <cstdio>

using namespace tarvel4;

/** How a transfer ends: when the card may be pulled, and what is said where something failed. */
class tst_TransferEnd : public QObject, private TransferFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void noSongsOnAnEmptyMemoryIsAFailure();
    void theCardMayBePulledOnceAllIsFlushed_data();
    void theCardMayBePulledOnceAllIsFlushed();
    void songsThatDoNotFitChangeNothing_data();
    void songsThatDoNotFitChangeNothing();
    void aFailedCopyLeavesTheIndexAlone();
    void aCancelledCopyIsAFailure();
    void anIndexThatCantBeWrittenIsAFailure();
    void anIndexThatCantBeReadIsAFailure();
    void aMemoryThatIsGoneIsAFailure();
    void whatTheIndexCantTakeInIsAFailure_data();
    void whatTheIndexCantTakeInIsAFailure();
};

void tst_TransferEnd::noSongsOnAnEmptyMemoryIsAFailure()
{
    const TransferSummary summary = transfer({}, card());
    QVERIFY(summary.result == Result::Failed);
    QCOMPARE(m_host.events.last(), text(failed)); // required: the memory is not prepared then
    QVERIFY(!summary.index.isPrepared);
}

void tst_TransferEnd::theCardMayBePulledOnceAllIsFlushed_data()
{
    QTest::addColumn<QString>("changed"); // by the run
    QTest::addColumn<bool>("isFlushed");
    QTest::newRow("songs and the index") << text("songs") << true;
    QTest::newRow("nothing but a folder that was made") << text("folder") << true;
    QTest::newRow("nothing but what a killed run had left") << text("leftover") << true;
    QTest::newRow("not when the last flush fails") << text("songs") << false;
}

void tst_TransferEnd::theCardMayBePulledOnceAllIsFlushed()
{
    QFETCH(QString, changed);
    QFETCH(bool, isFlushed);
    const QString old = TestFiles::write(card("/Pop/a.mid"), SongBytes::midi0());
    QVERIFY(transfer({}, card("/Pop")).result == Result::Done);
    QStringList files;
    if (changed == text("songs")) {
        files = QStringList{song("b.mid")};
    } else if (changed == text("leftover")) {
        TestFiles::write(
            card("/Pop/.tarvel4soft-%1-0.part").arg(QCoreApplication::applicationPid()), "part");
        files = QStringList{old};
    }
    m_host.events.clear();
    FailingDisk disk;
    if (!isFlushed) // two of the copy and three of the index come first
        disk.failingSync = 6;
    disk.before = [this](const QString &, int) {
        QCOMPARE(m_host.eventsOf(text("information")), QStringList());
    };
    const TransferSummary summary =
        transfer(files, changed == text("folder") ? card() : card("/Pop"), disk);
    QCOMPARE(disk.operations.mid(disk.operations.size() - 1), strings({"syncAll"}));
    QCOMPARE(summary.songs.copied, files.size());
    QVERIFY(summary.index.isPrepared);
    QVERIFY(summary.result == (isFlushed ? Result::Done : Result::Failed));
    if (!isFlushed)
        QCOMPARE(summary.index.cause.codeName(), text("not-confirmed"));
    QCOMPARE(m_host.events.last(),
             isFlushed ? text(done)
                       : text(failed) + QLatin1Char('|') + summary.index.cause.message());
    QCOMPARE(TestFiles::namesIn(card("/Pop")).filter(text(".part")), QStringList());
}

void tst_TransferEnd::songsThatDoNotFitChangeNothing_data()
{
    QTest::addColumn<QString>("dir");
    QTest::addColumn<QString>("made");
    QTest::newRow("in a folder") << text("card/Pop") << text("Pop");
    QTest::newRow("in the root, where no folder is left that was made for them")
        << text("card") << QString();
    QTest::newRow("in the root, where the folder was there") << text("card") << text("songs");
}

void tst_TransferEnd::songsThatDoNotFitChangeNothing()
{
    QFETCH(QString, dir);
    QFETCH(QString, made);
    const TmpfsMount volume(card(), "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    if (!made.isEmpty())
        QVERIFY(QDir(card()).mkdir(made));
    const QStringList before = TestFiles::namesIn(card());
    const QString big = TestFiles::write(path("from/big.mid"), QByteArray(100000, 'b'));
    const TransferSummary summary = transfer({song("a.mid"), big}, m_dir->filePath(dir));
    QVERIFY(summary.result == Result::Failed);
    QCOMPARE(summary.songs.cause.codeName(), text("no-room"));
    QCOMPARE(summary.songs.copied + summary.songs.failures.size(), 0);
    QCOMPARE(m_host.events,
             QStringList({text(copying).arg(2), text("end"),
                          text(failed) + QLatin1Char('|') + summary.songs.cause.message()}));
    QCOMPARE(TestFiles::namesIn(card()), before);
    QCOMPARE(TestFiles::namesIn(card("/") + made).filter(text(".mid")), QStringList());
}

void tst_TransferEnd::aFailedCopyLeavesTheIndexAlone()
{
    const TransferSummary summary = transfer({song("a.mid"), path("vanished.mid")}, card());
    QVERIFY(summary.result == Result::Failed);
    QCOMPARE(summary.songs.copied, 1);
    QCOMPARE(summary.songs.failures.size(), 1);
    const Outcome cause = summary.songs.failures.at(0).cause;
    QCOMPARE(cause.codeName(), text("not-found"));
    QVERIFY(!summary.index.isPrepared);
    QCOMPARE(m_host.events.mid(m_host.events.size() - 2),
             QStringList({text("end"), text(failed) + text("|vanished.mid: ") + cause.sentence()}));
    QCOMPARE(m_host.eventsOf(text("begin")).size(), 1);
    QCOMPARE(TestFiles::namesIn(card()), strings({"songs"}));
}

void tst_TransferEnd::aCancelledCopyIsAFailure()
{
    m_host.cancelAtProgress = 1;
    const TransferSummary summary = transfer({song("a.mid"), song("b.mid")}, card());
    QVERIFY(summary.result == Result::Failed);
    QCOMPARE(summary.songs.copied, 0);
    QCOMPARE(m_host.events.last(), text(failed));
    QCOMPARE(TestFiles::namesIn(card("/songs")), strings({"a.mid"}));
}

void tst_TransferEnd::anIndexThatCantBeWrittenIsAFailure()
{
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    const QString file = song("a.mid");
    disk.failingWrite = 2; // the first one is the song's
    disk.staysBroken = true;
    const TransferSummary summary = transfer({file}, card(), disk);
    QVERIFY(summary.result == Result::Failed);
    QCOMPARE(summary.songs.copied, 1);
    QVERIFY(summary.index.hasFailed && !summary.index.isPrepared);
    QCOMPARE(summary.index.cause.codeName(), text("no-room"));
    // required: the same words for both causes
    QCOMPARE(m_host.events.last(), text(failed) + QLatin1Char('|') + summary.index.cause.message());
}

void tst_TransferEnd::anIndexThatCantBeReadIsAFailure()
{
    QVERIFY(transfer({song("a.mid")}, card()).result == Result::Done);
    TestFiles::write(card("/index.id3"), "x");
    const TransferSummary summary = transfer({song("b.mid")}, card());
    QVERIFY(summary.result == Result::Failed);
    QCOMPARE(summary.index.cause.codeName(), text("damaged-index"));
    QVERIFY(summary.index.cause.detail.startsWith(text("index.id3: ")));
    QCOMPARE(m_host.events.last(), text(failed) + QLatin1Char('|') + summary.index.cause.message());
}

void tst_TransferEnd::aMemoryThatIsGoneIsAFailure()
{
    const FolderVolume volume(path("gone"));
    const TransferSummary summary =
        TransferJob(m_host, m_host, m_host, volume).run({}, path("gone/songs"));
    QVERIFY(summary.result == Result::Failed);
    QCOMPARE(summary.index.cause.codeName(), text("not-found"));
    QCOMPARE(m_host.eventsOf(text("begin")).size(), 1); // no index is begun
    QCOMPARE(m_host.events.last(), text(failed) + QLatin1Char('|') + summary.index.cause.message());
    QVERIFY(!QFileInfo::exists(path("gone")));
}

void tst_TransferEnd::whatTheIndexCantTakeInIsAFailure_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("error");
    QTest::newRow("a path of 252 characters below the root") << '/' + QByteArray(150, 'd') + '/'
            + QByteArray(96, 'x') + ".mid" << text("File non importato, path troppo lungo: ");
    QTest::newRow("a name that can't be read")
        << QByteArray("/d/\xFF.mid") << text("Impossibile leggere: ");
}

/** The copy is whole and the index written, but a song of the memory is not in it. */
void tst_TransferEnd::whatTheIndexCantTakeInIsAFailure()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, error);
    SKIP_WITHOUT_UNIX(name.contains('\xFF'), "names that are no text");
    const QByteArray lost = QFile::encodeName(card()) + name;
    QVERIFY(QDir().mkpath(QString::fromLatin1(lost.left(lost.lastIndexOf('/')))));
    std::FILE *const file = std::fopen(lost.constData(), "w"); // Qt can't say each of these names
    QVERIFY(file && std::fclose(file) == 0);
    const TransferSummary summary = transfer({song("a.mid")}, card());
    QVERIFY(std::remove(lost.constData()) == 0 || QFile::remove(QFile::decodeName(lost)));
    QVERIFY(summary.result == Result::Failed);
    QVERIFY(!summary.index.hasFailed && summary.index.isPrepared);
    QCOMPARE(summary.index.errors.size(), 1);
    QVERIFY2(summary.index.errors.at(0).startsWith(error + card()),
             qPrintable(summary.index.errors.at(0)));
    QCOMPARE(m_host.events.last(), text(failed) + QLatin1Char('|') + summary.index.errors.at(0));
    QCOMPARE(m_host.eventsOf(text("information")), QStringList());
}

QTEST_GUILESS_MAIN(tst_TransferEnd)
#include "tst_transferend.moc"
