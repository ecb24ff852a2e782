#include "library/transferjob.h"

#include "indexer/index.h"

#include "tests/library/logcapture.h"
#include "tests/library/scriptedhost.h"
#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/tmpfsmount.h"

#include <QtTest>

#include <cstdio>

using namespace tarvel4;

using Result = TransferSummary::Result;

namespace {

const char done[] = "information Trasferimento|Tutti i file sono stati copiati correttamente|"
                    "Tutto è scritto: ora si può togliere la memoria.";
const char failed[] = "critical Trasferimento|Non è stato possibile copiare uno o più file";
const char systemDisk[] =
    "warning Trasferimento|Non è possibile copiare i file sul disco di sistema";
const char rootFolder[] = "warning Trasferimento|Non è possibile copiare i file sulla cartella "
                          "principale, creare o selezionare una sottocartella";
const char reservedFolder[] =
    "warning Trasferimento|Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST "
    "perchè sono riservate, selezionare un'altra cartella";
const char copying[] = "begin Trasferimento|Trasferimento file...|Interrompi|%1";

/** The system's disk at a folder. */
class SystemDisk : public FolderVolume
{
public:
    using FolderVolume::FolderVolume;
    bool isSystemDisk(const QString &) const override { return true; }
};

} // namespace

class tst_TransferJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void refusals_data();
    void refusals();
    void acceptedFolders_data();
    void acceptedFolders();
    void theCardsRootGetsASongsFolder_data();
    void theCardsRootGetsASongsFolder();
    void aTransferCopiesAndIndexes();
    void theCardMayBePulledOnceAllIsFlushed_data();
    void theCardMayBePulledOnceAllIsFlushed();
    void theIndexReportsThroughTheHost();
    void noSongsGoStraightOnToTheIndex();
    void noSongsOnAnEmptyMemoryIsAFailure();
    void songsOfTheDestinationCountAsTransferred();
    void relativePathsMeanTheSameFolders();
    void keptSongsAreNoFailure();
    void aFailedCopyLeavesTheIndexAlone();
    void songsThatDoNotFitChangeNothing_data();
    void songsThatDoNotFitChangeNothing();
    void aCancelledCopyIsAFailure();
    void anIndexThatCantBeWrittenIsAFailure();
    void anIndexThatCantBeReadIsAFailure();
    void aMemoryThatIsGoneIsAFailure();
    void whatTheIndexCantTakeInIsAFailure_data();
    void whatTheIndexCantTakeInIsAFailure();

private:
    QString path(const char *below) const { return m_dir->filePath(text(below)); }
    QString card(const char *below = "") const { return path("card") + text(below); }
    QString song(const char *name)
    {
        return TestFiles::write(path("from/") + text(name), SongBytes::midi0());
    }

    TransferSummary transfer(const QStringList &files, const QString &dir,
                             Disk &disk = Disk::real())
    {
        const FolderVolume volume(card());
        return TransferJob(m_host, m_host, m_host, volume, disk).run(files, dir);
    }

    QScopedPointer<QTemporaryDir> m_dir;
    ScriptedHost m_host;
};

void tst_TransferJob::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(QDir(m_dir->path()).mkdir(text("card")));
    m_host = ScriptedHost();
}

void tst_TransferJob::refusals_data()
{
    QTest::addColumn<QString>("dir");
    QTest::addColumn<bool>("isSystem");
    QTest::addColumn<QString>("inTheWay");
    QTest::addColumn<QStringList>("events");

    QTest::newRow("no folder chosen ends silently")
        << QString() << false << QString() << QStringList();
    QTest::newRow("the system disk")
        << text("card/songs") << true << QString() << strings({systemDisk});
    QTest::newRow("the system disk comes before the root")
        << text("card") << true << QString() << strings({systemDisk});
    QTest::newRow("the system disk comes before a reserved name")
        << text("card/sfx") << true << QString() << strings({systemDisk});
    QTest::newRow("a root in which \"songs\" can't be made")
        << text("card") << false << text("card/songs") << strings({rootFolder});
    for (const char *name : {"SFX", "sfx", "BRIDGE", "Bridge", "PLAYLIST", "playlist", "a/b/Sfx",
                             "sfx/", "sfx/.", "x/../sfx"})
        QTest::addRow("the reserved folder %s", name)
            << text("card/") + text(name) << false << QString() << strings({reservedFolder});
}

void tst_TransferJob::refusals()
{
    QFETCH(QString, dir);
    QFETCH(bool, isSystem);
    QFETCH(QString, inTheWay);
    QFETCH(QStringList, events);
    if (!inTheWay.isEmpty())
        TestFiles::write(m_dir->filePath(inTheWay), "a file");
    const FolderVolume folder(card());
    const SystemDisk system(card());
    const Volume &volume = isSystem ? static_cast<const Volume &>(system) : folder;
    TransferJob job(m_host, m_host, m_host, volume);
    const QString chosen = dir.isEmpty() ? dir : m_dir->filePath(dir);
    const QStringList before = TestFiles::namesIn(card());
    QVERIFY(job.run({song("a.mid")}, chosen).result == Result::Refused);
    QCOMPARE(m_host.events, events);
    QCOMPARE(TestFiles::namesIn(card()), before);
}

void tst_TransferJob::acceptedFolders_data()
{
    QTest::addColumn<QString>("folder");
    for (const char *name : {"songs", "sfx2", "my playlist", "sfx/inside", "songs/"})
        QTest::addRow("%s", name) << text(name);
}

void tst_TransferJob::acceptedFolders()
{
    QFETCH(QString, folder);
    QVERIFY(QDir(card()).mkpath(folder));
    const TransferSummary summary = transfer({song("a.mid")}, card("/") + folder);
    QCOMPARE(summary.songs.copied, 1);
    QCOMPARE(TestFiles::namesIn(card("/") + folder), strings({"a.mid"}));
}

void tst_TransferJob::theCardsRootGetsASongsFolder_data()
{
    QTest::addColumn<bool>("isThere");
    QTest::addColumn<QString>("dir");
    QTest::newRow("made where there is none") << false << text("card");
    QTest::newRow("used where there is one") << true << text("card");
    QTest::newRow("also with a trailing slash") << false << text("card/");
}

void tst_TransferJob::theCardsRootGetsASongsFolder()
{
    QFETCH(bool, isThere);
    QFETCH(QString, dir);
    if (isThere)
        TestFiles::write(card("/songs/old.mid"), SongBytes::midi0());
    const TransferSummary summary = transfer({song("a.mid")}, m_dir->filePath(dir));
    QVERIFY(summary.result == Result::Done);
    QVERIFY(TestFiles::namesIn(card("/songs")).contains(text("a.mid")));
    QCOMPARE(summary.index.found, isThere ? 2 : 1);
}

void tst_TransferJob::aTransferCopiesAndIndexes()
{
    LogCapture log;
    const QStringList files{song("a.mid"), song("b.mid")};
    const TransferSummary summary = transfer(files, card());
    QVERIFY(summary.result == Result::Done);
    QCOMPARE(summary.songs.copied, 2);
    QCOMPARE(summary.songs.failures.size(), 0);
    QCOMPARE(summary.songs.kept, 0);
    QCOMPARE(summary.index.found, 2);
    QVERIFY(summary.index.isPrepared);
    QVERIFY(Index::isPrepared(card()));
    QCOMPARE(m_host.events.mid(0, 4),
             QStringList({text(copying).arg(2), text("progress 1"), text("progress 2"),
                          text("begin Aggiornamento|Aggiornamento database...|Interrompi|100")}));
    QCOMPARE(m_host.events.last(), text(done));
    QVERIFY(m_host.events.contains(text("end")));

    QCOMPARE(LogCapture::lines().mid(0, 5),
             QStringList(
                 {QString(44, QLatin1Char('=')), text("          TRASFERIMENTO FILE"),
                  QString(44, QLatin1Char('=')),
                  text("Copying file: \"%1\" to: \"%2\"").arg(files.at(0), card("/songs/a.mid")),
                  text("Copying file: \"%1\" to: \"%2\"").arg(files.at(1), card("/songs/b.mid"))}));
    QCOMPARE(LogCapture::lines().last(), QString());
    QCOMPARE(LogCapture::lines().at(LogCapture::lines().size() - 2),
             text("[TRANSFER] all is on the medium: \"%1\"").arg(card()));
}

void tst_TransferJob::theCardMayBePulledOnceAllIsFlushed_data()
{
    QTest::addColumn<QString>("changed"); // by the run
    QTest::addColumn<bool>("isFlushed");
    QTest::newRow("songs and the index") << text("songs") << true;
    QTest::newRow("nothing but a folder that was made") << text("folder") << true;
    QTest::newRow("nothing but what a killed run had left") << text("leftover") << true;
    QTest::newRow("not when the last flush fails") << text("songs") << false;
}

void tst_TransferJob::theCardMayBePulledOnceAllIsFlushed()
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

void tst_TransferJob::theIndexReportsThroughTheHost()
{
    transfer({song("a.mid")}, card());
    const int begin =
        m_host.events.indexOf(text("begin Aggiornamento|Aggiornamento database...|Interrompi|100"));
    QVERIFY(begin >= 0);
    // 0 at the start, 1 song found, 1 read of 1, then the files by hundredths
    QCOMPARE(m_host.events.mid(begin + 1),
             strings({"value 0", "value 1", "maximum 1", "value 1", "maximum 100", "value 0",
                      "value 10", "value 20", "value 30", "value 40", "value 50", "value 90",
                      "value 100", "end", "end", done}));
}

void tst_TransferJob::noSongsGoStraightOnToTheIndex()
{
    TestFiles::write(card("/songs/old.mid"), SongBytes::midi0());
    const TransferSummary summary = transfer({}, card("/songs"));
    QVERIFY(summary.result == Result::Done);
    QCOMPARE(summary.songs.copied, 0);
    QCOMPARE(summary.index.found, 1);
    QCOMPARE(m_host.events.at(0), text(copying).arg(0));
    QCOMPARE(m_host.events.last(), text(done));
}

void tst_TransferJob::noSongsOnAnEmptyMemoryIsAFailure()
{
    const TransferSummary summary = transfer({}, card());
    QVERIFY(summary.result == Result::Failed);
    QCOMPARE(m_host.events.last(), text(failed)); // required: the memory is not prepared then
    QVERIFY(!summary.index.isPrepared);
}

void tst_TransferJob::songsOfTheDestinationCountAsTransferred()
{
    const QString there = TestFiles::write(card("/songs/a.mid"), SongBytes::midi0());
    const TransferSummary summary = transfer({there}, card("/songs"));
    QVERIFY(summary.result == Result::Done);
    QCOMPARE(summary.songs.copied, 1);
    QCOMPARE(m_host.eventsOf(text("ask")), QStringList());
    QCOMPARE(m_host.eventsOf(text("progress")), QStringList());
}

void tst_TransferJob::relativePathsMeanTheSameFolders()
{
    TestFiles::write(card("/songs/a.mid"), SongBytes::midi0());
    QVERIFY(QDir(card()).mkdir(text("sfx")));
    const QString home = QDir::currentPath();
    QVERIFY(QDir::setCurrent(card("/songs")));
    const Result inPlace = transfer({text("a.mid")}, text(".")).result;
    QVERIFY(QDir::setCurrent(card("/sfx")));
    const Result reserved = transfer({text("../songs/a.mid")}, text(".")).result;
    QVERIFY(QDir::setCurrent(home));
    QVERIFY(inPlace == Result::Done);
    QCOMPARE(m_host.eventsOf(text("ask overwrite")), QStringList());
    QVERIFY(reserved == Result::Refused);
    QCOMPARE(m_host.events.last(), text(reservedFolder));
}

void tst_TransferJob::keptSongsAreNoFailure()
{
    TestFiles::write(card("/songs/a.mid"), SongBytes::midi1());
    m_host.overwriteAnswers = {Answer::NoToAll};
    const TransferSummary summary = transfer({song("a.mid")}, card());
    QVERIFY(summary.result == Result::Done);
    QCOMPARE(summary.songs.kept, 1);
    QCOMPARE(summary.songs.copied, 0);
    QCOMPARE(TestFiles::read(card("/songs/a.mid")), SongBytes::midi1());
}

void tst_TransferJob::aFailedCopyLeavesTheIndexAlone()
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

void tst_TransferJob::songsThatDoNotFitChangeNothing_data()
{
    QTest::addColumn<QString>("dir");
    QTest::addColumn<QString>("made");
    QTest::newRow("in a folder") << text("card/Pop") << text("Pop");
    QTest::newRow("in the root, where no folder is left that was made for them")
        << text("card") << QString();
    QTest::newRow("in the root, where the folder was there") << text("card") << text("songs");
}

void tst_TransferJob::songsThatDoNotFitChangeNothing()
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

void tst_TransferJob::aCancelledCopyIsAFailure()
{
    m_host.cancelAtProgress = 1;
    const TransferSummary summary = transfer({song("a.mid"), song("b.mid")}, card());
    QVERIFY(summary.result == Result::Failed);
    QCOMPARE(summary.songs.copied, 0);
    QCOMPARE(m_host.events.last(), text(failed));
    QCOMPARE(TestFiles::namesIn(card("/songs")), strings({"a.mid"}));
}

void tst_TransferJob::anIndexThatCantBeWrittenIsAFailure()
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

void tst_TransferJob::anIndexThatCantBeReadIsAFailure()
{
    QVERIFY(transfer({song("a.mid")}, card()).result == Result::Done);
    TestFiles::write(card("/index.id3"), "x");
    const TransferSummary summary = transfer({song("b.mid")}, card());
    QVERIFY(summary.result == Result::Failed);
    QCOMPARE(summary.index.cause.codeName(), text("damaged-index"));
    QVERIFY(summary.index.cause.detail.startsWith(text("index.id3: ")));
    QCOMPARE(m_host.events.last(), text(failed) + QLatin1Char('|') + summary.index.cause.message());
}

void tst_TransferJob::aMemoryThatIsGoneIsAFailure()
{
    const FolderVolume volume(path("gone"));
    const TransferSummary summary =
        TransferJob(m_host, m_host, m_host, volume).run({}, path("gone/songs"));
    QVERIFY(summary.result == Result::Failed);
    QCOMPARE(summary.index.cause.codeName(), text("not-found"));
    QCOMPARE(m_host.events.last(), text(failed) + QLatin1Char('|') + summary.index.cause.message());
    QVERIFY(!QFileInfo::exists(path("gone")));
}

void tst_TransferJob::whatTheIndexCantTakeInIsAFailure_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("error");
    QTest::newRow("a path of 252 characters below the root") << '/' + QByteArray(150, 'd') + '/'
            + QByteArray(96, 'x') + ".mid" << text("File non importato, path troppo lungo: ");
    QTest::newRow("a name that can't be read")
        << QByteArray("/d/\xFF.mid") << text("Impossibile leggere: ");
}

/** The copy is whole and the index written, but a song of the memory is not in it. */
void tst_TransferJob::whatTheIndexCantTakeInIsAFailure()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, error);
    const QByteArray lost = QFile::encodeName(card()) + name;
    QVERIFY(QDir().mkpath(QString::fromLatin1(lost.left(lost.lastIndexOf('/')))));
    std::FILE *const file = std::fopen(lost.constData(), "w"); // Qt can't say each of these names
    QVERIFY(file && std::fclose(file) == 0);
    const TransferSummary summary = transfer({song("a.mid")}, card());
    QCOMPARE(std::remove(lost.constData()), 0);
    QVERIFY(summary.result == Result::Failed);
    QVERIFY(!summary.index.hasFailed && summary.index.isPrepared);
    QCOMPARE(summary.index.errors.size(), 1);
    QVERIFY2(summary.index.errors.at(0).startsWith(error + card()),
             qPrintable(summary.index.errors.at(0)));
    QCOMPARE(m_host.events.last(), text(failed) + QLatin1Char('|') + summary.index.errors.at(0));
    QCOMPARE(m_host.eventsOf(text("information")), QStringList());
}

QTEST_GUILESS_MAIN(tst_TransferJob)
#include "tst_transferjob.moc"
