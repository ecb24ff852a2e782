#include "library/libraryupdate.h"

#include "library/librarybackup.h"

#include "logcapture.h"
#include "scripteddisk.h"
#include "testlibrary.h"
#include "tests/songs/mfxbytes.h"
#include "texts.h"
#include "tmpfsmount.h"

#include <QtTest>

using namespace SongBytes;

using Answers = QVector<Answer>;
Q_DECLARE_METATYPE(Answers)

namespace {

constexpr int listed = UserSongsRelTableModel::Listed;
constexpr int updated = UserSongsRelTableModel::Updated;
constexpr int failed = UserSongsRelTableModel::Failed;

const char begin[] = "begin Aggiornamento file|Aggiorno la libreria...|Interrompi|%1";

QByteArray makersSong(const char *title = "")
{
    return midi0(meta(2, "K-VARO") + meta(3, title));
}

} // namespace

class tst_LibraryUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void anEmptyTableIsNotUpdated();
    void theTableShowsWhatIsInTheFiles();
    void nothingIsWrittenWithoutTheBackup_data();
    void nothingIsWrittenWithoutTheBackup();
    void theBackupHoldsTheOldBytes();
    void theBackupCanBeLeftOut();
    void copyrightAnswers_data();
    void copyrightAnswers();
    void whereNobodyIsAskedOneAnswerHolds_data();
    void whereNobodyIsAskedOneAnswerHolds();
    void theLogOfARun();
    void cancelStopsBeforeTheNextSong_data();
    void cancelStopsBeforeTheNextSong();
    void theRunGoesOnAfterAFailure_data();
    void theRunGoesOnAfterAFailure();
    void theLogSaysHowManyFailedAndWhich();
    void aReadOnlySongIsMadeWritable();
    void aSongChangedDuringTheQuestionKeepsItsNewBytes();
    void aFullDiskLosesNothing();
    void theDryRunWritesNothingAndAnnouncesTheRealRun();

private:
    bool update(LibraryUpdate::Unpublished unpublished = {true, true}, Disk &disk = Disk::real());

    QScopedPointer<TestLibrary> m_library;
};

void tst_LibraryUpdate::init()
{
    m_library.reset();
    m_library.reset(new TestLibrary({{text("ONE"), text("UNO")},
                                     {text("TWO"), text("DUE")},
                                     {text("THREE"), text("TRE")},
                                     {text("ACCENT"), text("Città")}}));
}

bool tst_LibraryUpdate::update(LibraryUpdate::Unpublished unpublished, Disk &disk)
{
    LibraryBackup backup(m_library->host());
    LibraryUpdate update(m_library->db(), m_library->model(), m_library->host(), unpublished, disk);
    return update.updateUserLibrary(backup, m_library->files());
}

void tst_LibraryUpdate::anEmptyTableIsNotUpdated()
{
    LogCapture log;
    QVERIFY(!update());
    QCOMPARE(LogCapture::lines(),
             QStringList({QString(44, QLatin1Char('=')), text("          UPDATE USER LIBRARY"),
                          QString(44, QLatin1Char('=')),
                          text("[UPDATE] WARNING: Empty table. Aborting update !!!")}));
    QCOMPARE(m_library->host().events, QStringList());
}

void tst_LibraryUpdate::theTableShowsWhatIsInTheFiles()
{
    m_library->add(text("one.mid"), makersSong());
    m_library->add(text("unknown.mid"), makersSong("nothing"));
    m_library->add(text("two.mp3"), tag(frame("TCOP", "K-VARO")) + audio());
    m_library->import();
    QVERIFY(update());
    QCOMPARE(m_library->statuses(), QVector<int>({updated, failed, updated}));
    QCOMPARE(m_library->cell(0, "title"), text("UNO"));
    QCOMPARE(m_library->cell(0, "artist"), text("ADRIANO CELENTANO"));
    QCOMPARE(m_library->cell(0, "length"), text("03:20"));
    QCOMPARE(m_library->cell(0, "key"), text("A-"));
    QCOMPARE(m_library->cell(1, "title"), text("nothing"));
    QCOMPARE(m_library->cell(2, "title"), text("DUE"));
    QCOMPARE(m_library->cell(2, "key"), text("A -"));
    QCOMPARE(m_library->host().events,
             QStringList({text("ask backup"), text(begin).arg(3), text("progress 1"),
                          text("breathe"), text("progress 2"), text("breathe"), text("progress 3"),
                          text("breathe"), text("end")}));
}

void tst_LibraryUpdate::nothingIsWrittenWithoutTheBackup_data()
{
    QTest::addColumn<int>("action");
    QTest::addColumn<QString>("folder");
    QTest::newRow("cancelled") << int(BackupChoice::Cancel) << QString();
    QTest::newRow("no folder") << int(BackupChoice::Backup) << QString();
    QTest::newRow("a folder that does not exist") << int(BackupChoice::Backup) << text("none");
}

void tst_LibraryUpdate::nothingIsWrittenWithoutTheBackup()
{
    QFETCH(int, action);
    QFETCH(QString, folder);
    const QString path = m_library->add(text("one.mid"), makersSong());
    m_library->import();
    m_library->host().backupChoice = {BackupChoice::Action(action), folder};
    QVERIFY(!update());
    QVERIFY(TestFiles::read(path) == makersSong());
    QCOMPARE(m_library->statuses(), QVector<int>({listed}));
    QCOMPARE(m_library->host().eventsOf(text("begin")), QStringList());
}

void tst_LibraryUpdate::theBackupHoldsTheOldBytes()
{
    const QString path = m_library->add(text("one.mid"), makersSong());
    m_library->import();
    m_library->host().backupChoice = {BackupChoice::Backup, m_library->filePath("songs")};
    LibraryBackup backup(m_library->host());
    LibraryUpdate run(m_library->db(), m_library->model(), m_library->host(), {});
    QVERIFY(run.updateUserLibrary(backup, m_library->files()));
    QVERIFY(TestFiles::read(backup.folder() + text("/one.mid")) == makersSong());
    QVERIFY(TestFiles::read(path) != makersSong());
}

void tst_LibraryUpdate::theBackupCanBeLeftOut()
{
    const QString path = m_library->add(text("one.mid"), makersSong());
    m_library->import();
    m_library->host().backupChoice.action = BackupChoice::ProceedWithout;
    QVERIFY(update());
    QVERIFY(TestFiles::read(path) != makersSong());
    QCOMPARE(TestFiles::namesIn(m_library->filePath("songs")), strings({"one.mid"}));
}

void tst_LibraryUpdate::copyrightAnswers_data()
{
    QTest::addColumn<Answers>("answers");
    QTest::addColumn<QStringList>("questions");
    QTest::addColumn<QVector<int>>("statuses");
    const char first[] = "ask unpublished one.mid";
    const char second[] = "ask unpublished three.mid";
    QTest::newRow("yes changes this song")
        << Answers{Answer::Yes, Answer::No} << strings({first, second})
        << QVector<int>{updated, updated, failed};
    QTest::newRow("yes to all changes every song and asks no more")
        << Answers{Answer::YesToAll} << strings({first}) << QVector<int>{updated, updated, updated};
    QTest::newRow("no skips this song")
        << Answers{Answer::No, Answer::Yes} << strings({first, second})
        << QVector<int>{failed, updated, updated};
    QTest::newRow("no to all skips every song but the maker's and asks no more")
        << Answers{Answer::NoToAll} << strings({first}) << QVector<int>{failed, updated, failed};
    QTest::newRow("closing the question by its frame is yes")
        << Answers() << strings({first, second}) << QVector<int>{updated, updated, updated};
}

void tst_LibraryUpdate::copyrightAnswers()
{
    QFETCH(Answers, answers);
    QFETCH(QStringList, questions);
    QFETCH(QVector<int>, statuses);
    m_library->add(text("one.mid"), midi0());
    m_library->add(text("two.mid"), makersSong());
    m_library->add(text("three.mid"), midi0());
    m_library->import();
    m_library->host().notPublishedAnswers = answers;
    QVERIFY(update());
    QCOMPARE(m_library->host().eventsOf(text("ask unpublished")), questions);
    QCOMPARE(m_library->statuses(), statuses);
    for (int row = 0; row < 3; ++row) {
        const QByteArray old = row == 1 ? makersSong() : midi0();
        QCOMPARE(TestFiles::read(m_library->files().at(row)) != old, statuses.at(row) == updated);
    }

    // The answers for all last for one run.
    m_library->host().events.clear();
    m_library->host().notPublishedAnswers.clear();
    QVERIFY(update());
    QCOMPARE(m_library->host().eventsOf(text("ask unpublished")),
             strings({"ask unpublished one.mid", "ask unpublished three.mid"}));
}

void tst_LibraryUpdate::whereNobodyIsAskedOneAnswerHolds_data()
{
    QTest::addColumn<bool>("answer");
    QTest::newRow("yes") << true;
    QTest::newRow("no") << false;
}

void tst_LibraryUpdate::whereNobodyIsAskedOneAnswerHolds()
{
    QFETCH(bool, answer);
    m_library->add(text("one.mid"), midi0());
    m_library->add(text("two.mid"), makersSong());
    m_library->import();
    QVERIFY(update({false, answer}));
    QCOMPARE(m_library->host().eventsOf(text("ask unpublished")), QStringList());
    QCOMPARE(m_library->statuses(), QVector<int>({answer ? updated : failed, updated}));
}

void tst_LibraryUpdate::theLogOfARun()
{
    const QString path = m_library->add(text("one.mid"), makersSong());
    m_library->import();
    LogCapture log;
    QVERIFY(update());
    const QStringList &lines = LogCapture::lines();
    const QString ruler(44, QLatin1Char('='));
    QCOMPARE(
        lines.mid(0, 6),
        QStringList({ruler, text("          UPDATE USER LIBRARY"), ruler,
                     text("[UPDATE] rowIdx:  0"), text("[UPDATE] updating file:  \"%1\"").arg(path),
                     text("Found in DB by:  \"FILENAME: ONE\"")}));
    QVERIFY(LogCapture::has(text("manual:  false")));
    QCOMPARE(lines.mid(lines.size() - 2), QStringList({QString(74, QLatin1Char('=')), QString()}));
}

void tst_LibraryUpdate::cancelStopsBeforeTheNextSong_data()
{
    QTest::addColumn<int>("cancelAt");
    QTest::addColumn<QVector<int>>("statuses");
    QTest::newRow("before the first song") << 0 << QVector<int>{listed, listed, listed};
    QTest::newRow("during the first song") << 1 << QVector<int>{updated, listed, listed};
    QTest::newRow("during the second song") << 2 << QVector<int>{updated, updated, listed};
}

void tst_LibraryUpdate::cancelStopsBeforeTheNextSong()
{
    QFETCH(int, cancelAt);
    QFETCH(QVector<int>, statuses);
    for (const char *name : {"one.mid", "two.mid", "three.mid"})
        m_library->add(text(name), makersSong());
    m_library->import();
    m_library->host().cancelAtProgress = cancelAt;
    QVERIFY(!update());
    QCOMPARE(m_library->statuses(), statuses);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(TestFiles::read(m_library->files().at(row)) != makersSong(),
                 statuses.at(row) == updated);
    QCOMPARE(m_library->host().events.last(), text("end"));
}

void tst_LibraryUpdate::theRunGoesOnAfterAFailure_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("cause");
    QTest::newRow("a song that has vanished") << text("vanish") << text("can't be read");
    QTest::newRow("a song that is no song any more") << text("garbage") << text("can't be read");
    QTest::newRow("a song that is a folder now") << text("folder") << text("can't be read");
    QTest::newRow("a write that comes up short") << text("write") << text("not saved");
    QTest::newRow("a song that does not reach the medium") << text("sync") << text("not saved");
    QTest::newRow("a song whose header can't hold the text")
        << text("accent") << text("can't be saved");
}

void tst_LibraryUpdate::theRunGoesOnAfterAFailure()
{
    QFETCH(QString, fault);
    QFETCH(QString, cause);
    const bool isMfx = fault == text("accent");
    const QByteArray old = isMfx ? mfx(3, MfxFields(), midi0()) : makersSong();
    const QString path = m_library->add(isMfx ? text("accent.mf3") : text("one.mid"), old);
    m_library->add(text("two.mid"), makersSong());
    m_library->import();

    ScriptedDisk disk;
    if (fault == text("vanish") || fault == text("folder"))
        QVERIFY(QFile::remove(path));
    if (fault == text("folder"))
        QVERIFY(QDir().mkdir(path));
    if (fault == text("garbage"))
        TestFiles::write(path, "garbage");
    if (fault == text("write"))
        disk.failingWrite = 1;
    if (fault == text("sync"))
        disk.failingSync = 1;

    LogCapture log;
    QVERIFY(update({}, disk));
    QCOMPARE(m_library->statuses(), QVector<int>({failed, updated}));
    QVERIFY(LogCapture::tells({cause, path}));
    QVERIFY(LogCapture::has(text("[UPDATE] WARNING: songs that failed: 1")));
    QVERIFY(LogCapture::has(text("[UPDATE] failed: \"%1\"").arg(path)));
    if (fault == text("vanish"))
        QVERIFY(!QFileInfo::exists(path));
    if (fault == text("garbage"))
        QCOMPARE(TestFiles::read(path), QByteArray("garbage"));
    if (isMfx || fault == text("write") || fault == text("sync"))
        QVERIFY(TestFiles::read(path) == old);
}

void tst_LibraryUpdate::theLogSaysHowManyFailedAndWhich()
{
    const QStringList gone{m_library->add(text("one.mid"), makersSong()),
                           m_library->add(text("two.mid"), makersSong())};
    m_library->add(text("unknown.mid"), makersSong("nothing")); // not found is no failure
    m_library->import();
    for (const QString &path : gone)
        QVERIFY(QFile::remove(path));
    LogCapture log;
    LibraryBackup backup(m_library->host());
    LibraryUpdate run(m_library->db(), m_library->model(), m_library->host(), {});
    QVERIFY(run.updateUserLibrary(backup, m_library->files()));
    QCOMPARE(run.failures(), gone);
    const QStringList &lines = LogCapture::lines();
    QCOMPARE(lines.mid(lines.size() - 3),
             QStringList({text("[UPDATE] WARNING: songs that failed: 2"),
                          text("[UPDATE] failed: \"%1\"").arg(gone.at(0)),
                          text("[UPDATE] failed: \"%1\"").arg(gone.at(1))}));
}

void tst_LibraryUpdate::aReadOnlySongIsMadeWritable()
{
    const QString path = m_library->add(text("one.mid"), makersSong());
    m_library->import();
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    QVERIFY(update());
    QCOMPARE(m_library->statuses(), QVector<int>({updated}));
    QVERIFY(QFileInfo(path).permissions() & QFile::WriteOwner);
}

void tst_LibraryUpdate::aSongChangedDuringTheQuestionKeepsItsNewBytes()
{
    const QString path = m_library->add(text("one.mid"), midi0());
    m_library->import();
    const QByteArray newBytes = midi0(meta(3, "edited elsewhere"));
    m_library->host().onQuestion = [&] { TestFiles::write(path, newBytes); };
    QVERIFY(update());
    QCOMPARE(m_library->statuses(), QVector<int>({failed}));
    QVERIFY(TestFiles::read(path) == newBytes);
}

void tst_LibraryUpdate::aFullDiskLosesNothing()
{
    const QString folder = m_library->filePath("songs/full");
    TmpfsMount volume(folder, "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    // A song that fills its pages to the last byte can't grow when there is no page left.
    const auto song = [](int size) {
        const int rest = size - makersSong().size() - 4;
        QByteArray filler;
        while (filler.size() < rest)
            filler += meta(1, QByteArray(qMin(100, rest - filler.size()), 'x'));
        return midi0(meta(2, "K-VARO") + meta(3, "") + filler);
    };
    const QByteArray midiSong = song(4080);
    const QByteArray mp3Song = tag(frame("TCOP", "K-VARO")) + audio(9);
    m_library->add(text("full/one.mid"), midiSong);
    m_library->add(text("full/two.mp3"), mp3Song);
    m_library->import();
    QFile rest(folder + text("/rest"));
    QVERIFY(rest.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (rest.write(QByteArray(4096, 'r')) == 4096) {}
    rest.close();

    QVERIFY(update());
    QCOMPARE(m_library->statuses(), QVector<int>({failed, failed}));
    QVERIFY(TestFiles::read(m_library->files().at(0)) == midiSong);
    QVERIFY(TestFiles::read(m_library->files().at(1)) == mp3Song);
    QCOMPARE(TestFiles::namesIn(folder), strings({"one.mid", "rest", "two.mp3"}));
}

void tst_LibraryUpdate::theDryRunWritesNothingAndAnnouncesTheRealRun()
{
    m_library->add(text("one.mid"), midi0());
    m_library->add(text("two.mf3"), mfx(3, MfxFields(), midi0()));
    m_library->add(text("three.mp3"), audio());
    m_library->add(text("unknown.mid"), makersSong("nothing"));
    m_library->add(text("accent.mf5"), mfx(5, MfxFields(), midi0()));
    m_library->add(text("accent.mid"), makersSong());
    const QString gone = m_library->add(text("gone.mid"), midi0());
    m_library->import();
    QVERIFY(QFile::remove(gone));
    QVector<QByteArray> before;
    for (const QString &path : m_library->files())
        before.append(TestFiles::read(path));

    struct Outcome
    {
        int row;
        UpdateOutcome outcome;
        QString reason;
        QVector<FieldChange> changes;
    };
    QVector<Outcome> outcomes[2];
    for (int run = 0; run < 2; ++run) {
        m_library->host().notPublishedAnswers = {Answer::Yes, Answer::No};
        LibraryBackup backup(m_library->host());
        LibraryUpdate update(m_library->db(), m_library->model(), m_library->host(), {});
        update.setDryRun(run == 0);
        update.setObserver([&](int row, UpdateOutcome outcome, const SongUpdate &song) {
            outcomes[run].append({row, outcome, song.reason(), song.changes()});
        });
        QVERIFY(update.updateUserLibrary(backup, m_library->files()));
        if (run == 0) {
            QCOMPARE(m_library->host().eventsOf(text("ask backup")), QStringList());
            QCOMPARE(m_library->statuses(), QVector<int>(7, listed));
            for (int row = 0; row < 7; ++row)
                QVERIFY(TestFiles::read(m_library->files().at(row)) == before.at(row));
        }
    }
    const QVector<UpdateOutcome> expected{
        UpdateOutcome::Updated,    UpdateOutcome::Updated, UpdateOutcome::Refused,
        UpdateOutcome::NotFound,   UpdateOutcome::Failed,  UpdateOutcome::Updated,
        UpdateOutcome::Unreadable,
    };
    for (int row = 0; row < 7; ++row) {
        const Outcome &announced = outcomes[0].at(row);
        const Outcome &done = outcomes[1].at(row);
        QCOMPARE(announced.row, row);
        QCOMPARE(announced.outcome, expected.at(row));
        QCOMPARE(done.outcome, expected.at(row));
        QCOMPARE(done.reason, announced.reason);
        if (expected.at(row) != UpdateOutcome::Updated)
            continue;
        QVERIFY(!announced.changes.isEmpty());
        QCOMPARE(done.changes.size(), announced.changes.size());
        for (int i = 0; i < done.changes.size(); ++i) {
            QCOMPARE(done.changes.at(i).field, announced.changes.at(i).field);
            QCOMPARE(done.changes.at(i).before, announced.changes.at(i).before);
            QCOMPARE(done.changes.at(i).after, announced.changes.at(i).after);
        }
    }
}

QTEST_GUILESS_MAIN(tst_LibraryUpdate)
#include "tst_libraryupdate.moc"
