#include "library/devicetransfer.h"

#include "indexer/index.h"

#include "tests/library/logcapture.h"
#include "tests/library/scriptedhost.h"
#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/failingdisk.h"

#include <QtTest>

#include <cstdio>

using namespace tarvel4;

using Answers = QVector<Answer>;
Q_DECLARE_METATYPE(Answers)

namespace {

const char done[] = "information Trasferimento|Tutti i file sono stati copiati correttamente";
const char failed[] = "critical Trasferimento|Non è stato possibile copiare uno o più file";
const char systemDisk[] =
    "warning Trasferimento|Non è possibile copiare i file sul disco di sistema";
const char rootFolder[] = "warning Trasferimento|Non è possibile copiare i file sulla cartella "
                          "principale, creare o selezionare una sottocartella";
const char reservedFolder[] =
    "warning Trasferimento|Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST "
    "perchè sono riservate, selezionare un'altra cartella";
const char copying[] = "begin Trasferimento|Trasferimento file...|Interrompi|%1";

/** A memory at a folder; whether that is the system's disk is for the test to say. */
class FakeVolume : public FolderVolume
{
public:
    FakeVolume(const QString &root, bool isSystem)
        : FolderVolume(root)
        , m_isSystem(isSystem)
    {}
    bool isSystemDisk(const QString &path) const override
    {
        Q_UNUSED(path)
        return m_isSystem;
    }

private:
    bool m_isSystem;
};

} // namespace

class tst_DeviceTransfer : public QObject
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
    void theIndexReportsThroughTheHost();
    void noSongsGoStraightOnToTheIndex();
    void noSongsOnAnEmptyMemoryIsAFailure();
    void songsOfTheDestinationCountAsTransferred();
    void relativePathsMeanTheSameFolders();
    void keptSongsAreNoFailure();
    void overwriteAnswers_data();
    void overwriteAnswers();
    void aFailedCopyLeavesTheIndexAlone();
    void aCancelledCopyIsAFailure();
    void anIndexThatCantBeWrittenIsAFailure();
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

    QScopedPointer<QTemporaryDir> m_dir;
    ScriptedHost m_host;
};

void tst_DeviceTransfer::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(QDir(m_dir->path()).mkdir(text("card")));
    m_host = ScriptedHost();
}

void tst_DeviceTransfer::refusals_data()
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

void tst_DeviceTransfer::refusals()
{
    QFETCH(QString, dir);
    QFETCH(bool, isSystem);
    QFETCH(QString, inTheWay);
    QFETCH(QStringList, events);
    if (!inTheWay.isEmpty())
        TestFiles::write(m_dir->filePath(inTheWay), "a file");
    const FakeVolume volume(card(), isSystem);
    DeviceTransfer transfer(m_host, volume);
    const QString chosen = dir.isEmpty() ? dir : m_dir->filePath(dir);
    const QStringList before = TestFiles::namesIn(card());
    QCOMPARE(transfer.transferFiles({song("a.mid")}, chosen), DeviceTransfer::Result::Refused);
    QCOMPARE(m_host.events, events);
    QCOMPARE(TestFiles::namesIn(card()), before);
}

void tst_DeviceTransfer::acceptedFolders_data()
{
    QTest::addColumn<QString>("folder");
    for (const char *name : {"songs", "sfx2", "my playlist", "sfx/inside", "songs/"})
        QTest::addRow("%s", name) << text(name);
}

void tst_DeviceTransfer::acceptedFolders()
{
    QFETCH(QString, folder);
    QVERIFY(QDir(card()).mkpath(folder));
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    transfer.transferFiles({song("a.mid")}, card("/") + folder);
    QCOMPARE(transfer.copied(), 1);
    QCOMPARE(TestFiles::namesIn(card("/") + folder), strings({"a.mid"}));
}

void tst_DeviceTransfer::theCardsRootGetsASongsFolder_data()
{
    QTest::addColumn<bool>("isThere");
    QTest::addColumn<QString>("dir");
    QTest::newRow("made where there is none") << false << text("card");
    QTest::newRow("used where there is one") << true << text("card");
    QTest::newRow("also with a trailing slash") << false << text("card/");
}

void tst_DeviceTransfer::theCardsRootGetsASongsFolder()
{
    QFETCH(bool, isThere);
    QFETCH(QString, dir);
    if (isThere)
        TestFiles::write(card("/songs/old.mid"), SongBytes::midi0());
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    QCOMPARE(transfer.transferFiles({song("a.mid")}, m_dir->filePath(dir)),
             DeviceTransfer::Result::Done);
    QVERIFY(TestFiles::namesIn(card("/songs")).contains(text("a.mid")));
    QCOMPARE(transfer.found(), isThere ? 2 : 1);
}

void tst_DeviceTransfer::aTransferCopiesAndIndexes()
{
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    LogCapture log;
    const QStringList files{song("a.mid"), song("b.mid")};
    QCOMPARE(transfer.transferFiles(files, card()), DeviceTransfer::Result::Done);
    QCOMPARE(transfer.copied(), 2);
    QCOMPARE(transfer.failures(), 0);
    QCOMPARE(transfer.kept(), 0);
    QCOMPARE(transfer.found(), 2);
    QVERIFY(transfer.prepared());
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
}

void tst_DeviceTransfer::theIndexReportsThroughTheHost()
{
    const FakeVolume volume(card(), false);
    DeviceTransfer(m_host, volume).transferFiles({song("a.mid")}, card());
    const int begin =
        m_host.events.indexOf(text("begin Aggiornamento|Aggiornamento database...|Interrompi|100"));
    QVERIFY(begin >= 0);
    // 0 at the start, 1 song found, 1 read of 1, then the files by hundredths
    QCOMPARE(m_host.events.mid(begin + 1),
             strings({"value 0", "value 1", "maximum 1", "value 1", "maximum 100", "value 0",
                      "value 10", "value 20", "value 30", "value 40", "value 50", "value 90",
                      "value 100", "end", "end", done}));
}

void tst_DeviceTransfer::noSongsGoStraightOnToTheIndex()
{
    TestFiles::write(card("/songs/old.mid"), SongBytes::midi0());
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    QCOMPARE(transfer.transferFiles({}, card("/songs")), DeviceTransfer::Result::Done);
    QCOMPARE(transfer.copied(), 0);
    QCOMPARE(transfer.found(), 1);
    QCOMPARE(m_host.events.at(0), text(copying).arg(0));
    QCOMPARE(m_host.events.last(), text(done));
}

void tst_DeviceTransfer::noSongsOnAnEmptyMemoryIsAFailure()
{
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    QCOMPARE(transfer.transferFiles({}, card()), DeviceTransfer::Result::Failed);
    QCOMPARE(m_host.events.last(), text(failed)); // required: the memory is not prepared then
    QVERIFY(!transfer.prepared());
}

void tst_DeviceTransfer::songsOfTheDestinationCountAsTransferred()
{
    const QString there = TestFiles::write(card("/songs/a.mid"), SongBytes::midi0());
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    QCOMPARE(transfer.transferFiles({there}, card("/songs")), DeviceTransfer::Result::Done);
    QCOMPARE(transfer.copied(), 1);
    QCOMPARE(m_host.eventsOf(text("ask")), QStringList());
    QCOMPARE(m_host.eventsOf(text("progress")), QStringList());
}

void tst_DeviceTransfer::relativePathsMeanTheSameFolders()
{
    TestFiles::write(card("/songs/a.mid"), SongBytes::midi0());
    QVERIFY(QDir(card()).mkdir(text("sfx")));
    const QString home = QDir::currentPath();
    QVERIFY(QDir::setCurrent(card("/songs")));
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    const auto inPlace = transfer.transferFiles({text("a.mid")}, text("."));
    QVERIFY(QDir::setCurrent(card("/sfx")));
    const auto reserved = transfer.transferFiles({text("../songs/a.mid")}, text("."));
    QVERIFY(QDir::setCurrent(home));
    QCOMPARE(inPlace, DeviceTransfer::Result::Done);
    QCOMPARE(m_host.eventsOf(text("ask overwrite")), QStringList());
    QCOMPARE(reserved, DeviceTransfer::Result::Refused);
    QCOMPARE(m_host.events.last(), text(reservedFolder));
}

void tst_DeviceTransfer::keptSongsAreNoFailure()
{
    TestFiles::write(card("/songs/a.mid"), SongBytes::midi1());
    m_host.overwriteAnswers = {Answer::NoToAll};
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    QCOMPARE(transfer.transferFiles({song("a.mid")}, card()), DeviceTransfer::Result::Done);
    QCOMPARE(transfer.kept(), 1);
    QCOMPARE(transfer.copied(), 0);
    QCOMPARE(TestFiles::read(card("/songs/a.mid")), SongBytes::midi1());
}

void tst_DeviceTransfer::overwriteAnswers_data()
{
    QTest::addColumn<Answers>("answers");
    QTest::addColumn<int>("questions");
    QTest::addColumn<int>("copied");
    QTest::newRow("yes") << Answers{Answer::Yes, Answer::No} << 2 << 1;
    QTest::newRow("yes to all") << Answers{Answer::YesToAll} << 1 << 2;
    QTest::newRow("no") << Answers{Answer::No, Answer::Yes} << 2 << 1;
    QTest::newRow("no to all") << Answers{Answer::NoToAll} << 1 << 0;
    QTest::newRow("closed by its frame, which is yes") << Answers() << 2 << 2;
}

void tst_DeviceTransfer::overwriteAnswers()
{
    QFETCH(Answers, answers);
    QFETCH(int, questions);
    QFETCH(int, copied);
    TestFiles::write(card("/songs/a.mid"), SongBytes::midi1());
    TestFiles::write(card("/songs/b.mid"), SongBytes::midi1());
    m_host.overwriteAnswers = answers;
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    QCOMPARE(transfer.transferFiles({song("a.mid"), song("b.mid")}, card()),
             DeviceTransfer::Result::Done);
    QCOMPARE(m_host.eventsOf(text("ask overwrite")).size(), questions);
    QCOMPARE(transfer.copied(), copied);
    QCOMPARE(transfer.kept(), 2 - copied);
}

void tst_DeviceTransfer::aFailedCopyLeavesTheIndexAlone()
{
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    QCOMPARE(transfer.transferFiles({song("a.mid"), path("vanished.mid")}, card()),
             DeviceTransfer::Result::Failed);
    QCOMPARE(transfer.copied(), 1);
    QCOMPARE(transfer.failures(), 1);
    QVERIFY(!transfer.prepared());
    QCOMPARE(m_host.events.mid(m_host.events.size() - 2), strings({"end", failed}));
    QCOMPARE(m_host.eventsOf(text("begin")).size(), 1);
    QCOMPARE(TestFiles::namesIn(card()), strings({"songs"}));
}

void tst_DeviceTransfer::aCancelledCopyIsAFailure()
{
    m_host.cancelAtProgress = 1;
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    QCOMPARE(transfer.transferFiles({song("a.mid"), song("b.mid")}, card()),
             DeviceTransfer::Result::Failed);
    QCOMPARE(transfer.copied(), 0);
    QCOMPARE(m_host.events.last(), text(failed));
    QCOMPARE(TestFiles::namesIn(card("/songs")), strings({"a.mid"}));
}

void tst_DeviceTransfer::anIndexThatCantBeWrittenIsAFailure()
{
    FailingDisk disk;
    const FakeVolume volume(card(), false);
    const QString file = song("a.mid");
    disk.failingWrite = 2; // the first one is the song's
    disk.staysBroken = true;
    DeviceTransfer transfer(m_host, volume, disk);
    QCOMPARE(transfer.transferFiles({file}, card()), DeviceTransfer::Result::Failed);
    QCOMPARE(transfer.copied(), 1);
    QVERIFY(!transfer.prepared());
    QCOMPARE(m_host.events.last(), text(failed)); // required: the same words for both causes
}

void tst_DeviceTransfer::aMemoryThatIsGoneIsAFailure()
{
    const FakeVolume volume(path("gone"), false);
    DeviceTransfer transfer(m_host, volume);
    QCOMPARE(transfer.transferFiles({}, path("gone/songs")), DeviceTransfer::Result::Failed);
    QCOMPARE(m_host.events.last(), text(failed));
    QVERIFY(!QFileInfo::exists(path("gone")));
}

void tst_DeviceTransfer::whatTheIndexCantTakeInIsAFailure_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("error");
    QTest::newRow("a path of 252 characters below the root") << '/' + QByteArray(150, 'd') + '/'
            + QByteArray(96, 'x') + ".mid" << text("File non importato, path troppo lungo: ");
    QTest::newRow("a name that can't be read")
        << QByteArray("/d/\xFF.mid") << text("Impossibile leggere: ");
}

/** The copy is whole and the index written, but a song of the memory is not in it. */
void tst_DeviceTransfer::whatTheIndexCantTakeInIsAFailure()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, error);
    const QByteArray lost = QFile::encodeName(card()) + name;
    QVERIFY(QDir().mkpath(QString::fromLatin1(lost.left(lost.lastIndexOf('/')))));
    std::FILE *const file = std::fopen(lost.constData(), "w"); // Qt can't say each of these names
    QVERIFY(file && std::fclose(file) == 0);
    const FakeVolume volume(card(), false);
    DeviceTransfer transfer(m_host, volume);
    const auto result = transfer.transferFiles({song("a.mid")}, card());
    QCOMPARE(std::remove(lost.constData()), 0);
    QCOMPARE(result, DeviceTransfer::Result::Failed);
    QVERIFY(!transfer.indexFailed() && transfer.prepared());
    QCOMPARE(transfer.errors().size(), 1);
    QVERIFY2(transfer.errors().at(0).startsWith(error + card()),
             qPrintable(transfer.errors().at(0)));
    QCOMPARE(m_host.events.last(), text(failed) + QLatin1Char('|') + transfer.errors().at(0));
    QCOMPARE(m_host.eventsOf(text("information")), QStringList());
}

QTEST_GUILESS_MAIN(tst_DeviceTransfer)
#include "tst_devicetransfer.moc"
