#include "tests/library/updatejobfixture.h"

#include <QtTest>

using namespace tarvel4;

using namespace SongBytes;

using Answers = QVector<Answer>;
Q_DECLARE_METATYPE(Answers)

namespace {

const char begin[] = "begin Aggiornamento file|Aggiorno la libreria...|Interrompi|%1";

} // namespace

/** The update of the table: what is asked, backed up, written, shown and announced. */
class tst_UpdateJob : public QObject, private UpdateJobFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

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
    void aSongThatIsNotUpdatedHasFailedAndTheRunGoesOn_data();
    void aSongThatIsNotUpdatedHasFailedAndTheRunGoesOn();
    void theLogOfARun();
    void theDryRunWritesNothingAndAnnouncesTheRealRun();
};

void tst_UpdateJob::anEmptyTableIsNotUpdated()
{
    LogCapture log;
    QVERIFY(!update().isComplete);
    QCOMPARE(LogCapture::lines(),
             QStringList({QString(44, QLatin1Char('=')), text("          UPDATE USER LIBRARY"),
                          QString(44, QLatin1Char('=')),
                          text("[UPDATE] WARNING: Empty table. Aborting update !!!")}));
    QCOMPARE(m_library->host().events, QStringList());
}

void tst_UpdateJob::theTableShowsWhatIsInTheFiles()
{
    m_library->add(text("one.mid"), makersSong());
    m_library->add(text("unknown.mid"), makersSong("nothing"));
    m_library->add(text("two.mp3"), tag(frame("TCOP", "K-VARO")) + audio());
    m_library->import();
    const UpdateSummary summary = update();
    QVERIFY(summary.isComplete);
    QCOMPARE(summary.updated, 2);
    QCOMPARE(summary.unchanged, 1);
    QCOMPARE(summary.failed, 0);
    QCOMPARE(m_library->statuses(), QVector<int>({updated, failed, updated}));
    QCOMPARE(m_library->cell(0, "title"), text("UNO"));
    QCOMPARE(m_library->cell(0, "artist"), text("ADRIANO CELENTANO"));
    QCOMPARE(m_library->cell(0, "length"), text("03:20"));
    QCOMPARE(m_library->cell(0, "key"), text("A-"));
    QCOMPARE(m_library->cell(1, "title"), text("nothing"));
    QCOMPARE(m_library->cell(2, "title"), text("DUE"));
    QCOMPARE(m_library->cell(2, "key"), text("A -"));
    QCOMPARE(
        m_library->host().events,
        QStringList({text("ask backup"), text(begin).arg(3), text("progress 1"),
                     text("processPendingEvents"), text("progress 2"), text("processPendingEvents"),
                     text("progress 3"), text("processPendingEvents"), text("end")}));
}

void tst_UpdateJob::nothingIsWrittenWithoutTheBackup_data()
{
    QTest::addColumn<int>("action");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("removed"); // of the songs, before the update
    QTest::newRow("cancelled") << static_cast<int>(BackupChoice::Cancel) << QString() << QString();
    QTest::newRow("no folder") << static_cast<int>(BackupChoice::Backup) << QString() << QString();
    QTest::newRow("a folder that does not exist")
        << static_cast<int>(BackupChoice::Backup) << text("none") << QString();
    QTest::newRow("a song that can't be copied")
        << static_cast<int>(BackupChoice::Backup) << text("saved") << text("two.mid");
}

void tst_UpdateJob::nothingIsWrittenWithoutTheBackup()
{
    QFETCH(int, action);
    QFETCH(QString, folder);
    QFETCH(QString, removed);
    const QString path = m_library->add(text("one.mid"), makersSong());
    const QString other = m_library->add(text("two.mid"), makersSong());
    m_library->import();
    if (!removed.isEmpty())
        QVERIFY(QDir().mkdir(m_library->filePath("saved")) && QFile::remove(other));
    if (!folder.isEmpty())
        folder = m_library->filePath(folder.toLatin1().constData());
    m_library->host().backupChoice = {BackupChoice::Action(action), folder};
    QVERIFY(!update().isComplete);
    QVERIFY(TestFiles::read(path) == makersSong());
    QCOMPARE(m_library->statuses(), QVector<int>({listed, listed}));
    const QStringList begun = m_library->host().eventsOf(text("begin"));
    QCOMPARE(begun.filter(text("Aggiornamento file")), QStringList());
    QCOMPARE(begun.size(), removed.isEmpty() ? 0 : 1); // the backup itself
}

void tst_UpdateJob::theBackupHoldsTheOldBytes()
{
    m_library->add(text("one.mid"), makersSong("a"));
    m_library->add(text("two.mid"), makersSong("b"));
    m_library->import();
    QDir().mkpath(m_library->filePath("saved"));
    m_library->host().backupChoice = {BackupChoice::Backup, m_library->filePath("saved")};
    QVERIFY(update().isComplete);
    const QString folder =
        m_library->filePath("saved/") + TestFiles::namesIn(m_library->filePath("saved")).value(0);
    QVERIFY(TestFiles::read(folder + text("/one.mid")) == makersSong("a"));
    QVERIFY(TestFiles::read(folder + text("/two.mid")) == makersSong("b"));
    QVERIFY(TestFiles::read(m_library->files().at(0)) != makersSong("a"));
}

void tst_UpdateJob::theBackupCanBeLeftOut()
{
    const QString path = m_library->add(text("one.mid"), makersSong());
    m_library->import();
    QVERIFY(QDir().mkdir(m_library->filePath("saved"))); // chosen, then given up
    m_library->host().backupChoice = {BackupChoice::ProceedWithout, m_library->filePath("saved")};
    QVERIFY(update().isComplete);
    QVERIFY(TestFiles::read(path) != makersSong());
    QCOMPARE(TestFiles::namesIn(m_library->filePath("saved")), QStringList());
    QCOMPARE(TestFiles::namesIn(m_library->filePath("songs")), strings({"one.mid"}));
}

void tst_UpdateJob::copyrightAnswers_data()
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

void tst_UpdateJob::copyrightAnswers()
{
    QFETCH(Answers, answers);
    QFETCH(QStringList, questions);
    QFETCH(QVector<int>, statuses);
    m_library->add(text("one.mid"), midi0());
    m_library->add(text("two.mid"), makersSong());
    m_library->add(text("three.mid"), midi0());
    m_library->import();
    m_library->host().notPublishedAnswers = answers;
    QVERIFY(update().isComplete);
    QCOMPARE(m_library->host().eventsOf(text("ask unpublished")), questions);
    QCOMPARE(m_library->statuses(), statuses);
    for (int row = 0; row < 3; ++row) {
        const QByteArray old = row == 1 ? makersSong() : midi0();
        QCOMPARE(TestFiles::read(m_library->files().at(row)) != old, statuses.at(row) == updated);
    }

    // The answers for all last for one run.
    m_library->host().events.clear();
    m_library->host().notPublishedAnswers.clear();
    QVERIFY(update().isComplete);
    QCOMPARE(m_library->host().eventsOf(text("ask unpublished")),
             strings({"ask unpublished one.mid", "ask unpublished three.mid"}));
}

void tst_UpdateJob::whereNobodyIsAskedOneAnswerHolds_data()
{
    QTest::addColumn<bool>("answer");
    QTest::newRow("yes") << true;
    QTest::newRow("no") << false;
}

void tst_UpdateJob::whereNobodyIsAskedOneAnswerHolds()
{
    QFETCH(bool, answer);
    m_library->add(text("one.mid"), midi0());
    m_library->add(text("two.mid"), makersSong());
    m_library->import();
    QVERIFY(update({answer ? UnpublishedPolicy::Change : UnpublishedPolicy::Leave}).isComplete);
    QCOMPARE(m_library->host().eventsOf(text("ask unpublished")), QStringList());
    QCOMPARE(m_library->statuses(), QVector<int>({answer ? updated : failed, updated}));
}

void tst_UpdateJob::aSongThatIsNotUpdatedHasFailedAndTheRunGoesOn_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("bytes"); // when the update comes to it
    QTest::newRow("it is not in the catalogue") << text("unknown.mid") << makersSong("nothing");
    QTest::newRow("it can't be read") << text("one.mid") << QByteArray("no song");
    QTest::newRow("another's copyright, and the answer is no") << text("one.mid") << midi0();
}

void tst_UpdateJob::aSongThatIsNotUpdatedHasFailedAndTheRunGoesOn()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, bytes);
    const QString path = m_library->add(fileName, makersSong());
    m_library->add(text("two.mid"), makersSong());
    m_library->import();
    TestFiles::write(path, bytes);
    m_library->host().notPublishedAnswers = {Answer::No};
    QVERIFY(update().isComplete);
    QCOMPARE(m_library->statuses(), QVector<int>({failed, updated}));
    QVERIFY(TestFiles::read(path) == bytes);
}

void tst_UpdateJob::theLogOfARun()
{
    const QString path = m_library->add(text("one.mid"), makersSong());
    m_library->import();
    LogCapture log;
    QVERIFY(update().isComplete);
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

void tst_UpdateJob::theDryRunWritesNothingAndAnnouncesTheRealRun()
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

    QVector<SongOutcome> outcomes[2];
    for (int run = 0; run < 2; ++run) {
        m_library->host().notPublishedAnswers = {Answer::Yes, Answer::No};
        UpdateJob::Options options;
        options.isDryRun = run == 0;
        QVERIFY(update(options, Disk::real(), [&](const SongOutcome &song) {
                    outcomes[run].append(song);
                }).isComplete);
        if (run == 0) {
            QCOMPARE(m_library->host().eventsOf(text("ask backup")), QStringList());
            QCOMPARE(m_library->statuses(), QVector<int>(7, listed));
            for (int row = 0; row < 7; ++row)
                QVERIFY(TestFiles::read(m_library->files().at(row)) == before.at(row));
        }
    }
    const QVector<SongResult> expected{
        SongResult::Updated, SongResult::Updated, SongResult::Refused,    SongResult::NotFound,
        SongResult::Failed,  SongResult::Updated, SongResult::Unreadable,
    };
    for (int row = 0; row < 7; ++row) {
        const SongOutcome &announced = outcomes[0].at(row);
        const SongOutcome &done = outcomes[1].at(row);
        QCOMPARE(announced.path, m_library->files().at(row));
        QCOMPARE(announced.result, expected.at(row));
        QCOMPARE(done.result, expected.at(row));
        QCOMPARE(done.cause.codeName(), announced.cause.codeName());
        QCOMPARE(done.cause.codeName().isEmpty(), !done.isFailure());
        QCOMPARE(done.matchedBy, announced.matchedBy);
        QCOMPARE(announced.changes.isEmpty(), expected.at(row) != SongResult::Updated);
        QCOMPARE(done.changes.size(), announced.changes.size());
        for (int i = 0; i < done.changes.size(); ++i) {
            QCOMPARE(done.changes.at(i).field, announced.changes.at(i).field);
            QCOMPARE(done.changes.at(i).before, announced.changes.at(i).before);
            QCOMPARE(done.changes.at(i).after, announced.changes.at(i).after);
        }
    }
}

QTEST_GUILESS_MAIN(tst_UpdateJob)
#include "tst_updatejob.moc"
