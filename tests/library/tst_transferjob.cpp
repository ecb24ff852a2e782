#include "indexer/index.h"

#include "tests/library/logcapture.h"
#include "tests/library/transferfixture.h"
#include "tests/storage/table.h"

using namespace tarvel4;

namespace {

const char systemDisk[] =
    "warning Trasferimento|Non è possibile copiare i file sul disco di sistema";
const char rootFolder[] = "warning Trasferimento|Non è possibile copiare i file sulla cartella "
                          "principale, creare o selezionare una sottocartella";
const char reservedFolder[] =
    "warning Trasferimento|Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST "
    "perchè sono riservate, selezionare un'altra cartella";

/** The system's disk at a folder. */
class SystemDisk : public FolderVolume
{
public:
    using FolderVolume::FolderVolume;
    bool isSystemDisk(const QString &) const override { return true; }
};

} // namespace

class tst_TransferJob : public QObject, private TransferFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void refusals_data();
    void refusals();
    void acceptedFolders_data();
    void acceptedFolders();
    void theCardsRootGetsASongsFolder_data();
    void theCardsRootGetsASongsFolder();
    void aTransferCopiesAndIndexes();
    void theIndexReportsThroughTheHost();
    void noSongsGoStraightOnToTheIndex();
    void songsOfTheDestinationCountAsTransferred();
    void relativePathsMeanTheSameFolders();
    void keptSongsAreNoFailure();
    void theIndexTellsWhatASongWasReplacedBy_data();
    void theIndexTellsWhatASongWasReplacedBy();
    void theIndexTellsItAfterATransferThatFailed();

private:
    /** Transfers a.mid with that title and time over the one that is there, and \a others. */
    Result transferTitle(const QByteArray &title, const QDateTime &modified,
                         const QStringList &others = {})
    {
        const QByteArray bytes = SongBytes::midi0(SongBytes::meta(3, title));
        const QString file = TestFiles::write(path("from/a.mid"), bytes);
        TestFiles::setModified(file, modified);
        m_host.overwriteAnswers = {Answer::Yes};
        return transfer(QStringList(file) + others, card()).result;
    }

    QString indexedTitle() const
    {
        const Index::Contents index = Index::readEntries(card());
        return index.entries.size() == 1 ? index.entries.first().title : QString();
    }

    const QDateTime m_time{QDate(2016, 12, 9), QTime(17, 0, 42)};
};

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

void tst_TransferJob::theIndexReportsThroughTheHost()
{
    transfer({song("a.mid")}, card());
    const int begin = static_cast<int>(m_host.events.indexOf(
        text("begin Aggiornamento|Aggiornamento database...|Interrompi|100")));
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

void tst_TransferJob::theIndexTellsWhatASongWasReplacedBy_data()
{
    const Table<int, QString, bool> row; // milliseconds after the old one, title, keeps its time
    row("another song of the same time", 0, "Two", false);
    row("another song of the same two seconds, in which FAT counts", 1900, "Two", false);
    row("another song of two seconds before", -1900, "Two", false);
    row("another song of another time", 2001, "Two", true);
    row("the same song", 0, "One", true);
}

void tst_TransferJob::theIndexTellsWhatASongWasReplacedBy()
{
    const auto [later, title, keepsTime] = cells<int, QString, bool>();
    QVERIFY(transferTitle("One", m_time) == Result::Done);
    QVERIFY(transferTitle(title.toLatin1(), m_time.addMSecs(later)) == Result::Done);
    QCOMPARE(indexedTitle(), title.toUpper());
    const QDateTime copied = QFileInfo(card("/songs/a.mid")).lastModified();
    QCOMPARE(copied, keepsTime ? m_time.addMSecs(later) : m_time.addSecs(2));
}

void tst_TransferJob::theIndexTellsItAfterATransferThatFailed()
{
    QVERIFY(transferTitle("One", m_time) == Result::Done);
    QVERIFY(transferTitle("Two", m_time, {path("gone.mid")}) == Result::Failed);
    QCOMPARE(indexedTitle(), text("ONE")); // required: the index waits for a whole transfer
    QVERIFY(transferTitle("Two", m_time) == Result::Done);
    QCOMPARE(indexedTitle(), text("TWO"));
}

QTEST_GUILESS_MAIN(tst_TransferJob)
#include "tst_transferjob.moc"
