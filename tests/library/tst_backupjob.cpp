#include "library/backupjob.h"

#include "tests/library/logcapture.h"
#include "tests/library/scriptedhost.h"
#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/tmpfsmount.h"
#include "tests/storage/unixfile.h"

#include <QtTest>

using namespace tarvel4;

using Answers = QVector<Answer>;
Q_DECLARE_METATYPE(Answers)

namespace {

QDateTime theTime()
{
    return QDateTime(QDate(2016, 12, 9), QTime(7, 0, 45));
}

const char folderName[] = "backup_kvaro_2016_12_09_07-00-45";
const char incompleteName[] = "backup_kvaro_2016_12_09_07-00-45 (incomplete)";
const char failed[] = "critical Backup|Backup FALLITO !!!";
const char succeeded[] = "information Backup|Backup eseguito correttamente";

} // namespace

class tst_BackupJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theBackupHoldsTheChosenSongsFlat();
    void answersThatMakeNoFolder_data();
    void answersThatMakeNoFolder();
    void aFolderThatCantBeMadeFails_data();
    void aFolderThatCantBeMadeFails();
    void anImportWithoutSongsGivesAnEmptyFolder();
    void aCancelledBackupFails_data();
    void aCancelledBackupFails();
    void theFolderHasItsNameOnlyWhenItIsWhole_data();
    void theFolderHasItsNameOnlyWhenItIsWhole();
    void aNameThatIsTakenMeanwhileFails();
    void aFailedCopyFails_data();
    void aFailedCopyFails();
    void aBackupThatDoesNotFitIsNotBegun();
    void sameNamesAreDecidedByTheQuestion_data();
    void sameNamesAreDecidedByTheQuestion();
    void sameNames();

private:
    QString to(const char *name) const { return m_dir->filePath(text("to/") + text(name)); }
    QString song(const char *name, const QByteArray &bytes) const
    {
        return TestFiles::write(m_dir->filePath(text("from/") + text(name)), bytes);
    }

    BackupSummary backUp(const QStringList &files, Disk &disk = Disk::real())
    {
        return BackupJob(m_host, m_host, m_host, disk, &theTime).run(files);
    }

    QStringList made() const { return TestFiles::namesIn(m_dir->filePath(text("to"))); }
    QString whereItIs() const // as the details say it
    {
        return to(incompleteName) + text(": qui resta il backup incompleto");
    }

    QScopedPointer<QTemporaryDir> m_dir;
    ScriptedHost m_host;
};

void tst_BackupJob::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
    QVERIFY(QDir(m_dir->path()).mkdir(text("to")));
    m_host = ScriptedHost();
    m_host.backupChoice = {BackupChoice::Backup, m_dir->filePath(text("to"))};
}

void tst_BackupJob::theBackupHoldsTheChosenSongsFlat()
{
    const QStringList files{song("1/a.mid", "first"), song("2/b.mp3", "second"),
                            song("2/c.mid", "third")};
    song("2/b.cdg", "graphics");
    LogCapture log;
    const BackupSummary summary = backUp(files);
    QVERIFY(summary.mayProceed);
    QCOMPARE(summary.folder, to(folderName));
    QCOMPARE(summary.incompleteFolder, QString());
    QCOMPARE(summary.songs.copied, 3);
    QCOMPARE(made(), strings({folderName}));
    QCOMPARE(TestFiles::namesIn(to(folderName)),
             QStringList({text("a.mid"), text("b.cdg"), text("b.mp3"), text("c.mid")}));
    QCOMPARE(TestFiles::read(to(folderName) + text("/a.mid")), QByteArray("first"));
    QCOMPARE(m_host.events,
             QStringList({text("ask backup"),
                          text("begin Backup|Eseguo backup dellla libreria...|Interrompi|3"),
                          text("progress 1"), text("progress 2"), text("progress 3"), text("end"),
                          text(succeeded)}));
    QCOMPARE(LogCapture::lines().mid(0, 4),
             QStringList({QString(44, QLatin1Char('=')), text("          BACKUP USER LIBRARY"),
                          QString(44, QLatin1Char('=')),
                          text("Making new root backup dir: \"%1\"").arg(to(folderName))}));
    QVERIFY(LogCapture::has(
        text("Copying file: \"%1\" to: \"%2/a.mid\"").arg(files.first(), to(folderName))));
}

void tst_BackupJob::answersThatMakeNoFolder_data()
{
    QTest::addColumn<int>("action");
    QTest::addColumn<bool>("mayProceed");
    QTest::addColumn<QStringList>("events");
    QTest::newRow("to proceed without a backup, which makes no folder")
        << static_cast<int>(BackupChoice::ProceedWithout) << true << strings({"ask backup"});
    QTest::newRow("to cancel, or the dialog's frame, ends without a message")
        << static_cast<int>(BackupChoice::Cancel) << false << strings({"ask backup"});
    QTest::newRow("a backup without a folder fails")
        << static_cast<int>(BackupChoice::Backup) << false << strings({"ask backup", failed});
}

void tst_BackupJob::answersThatMakeNoFolder()
{
    QFETCH(int, action);
    // A folder that was chosen before the other buttons were pressed does not count.
    m_host.backupChoice.action = BackupChoice::Action(action);
    if (action == BackupChoice::Backup)
        m_host.backupChoice.folder.clear();
    const BackupSummary summary = backUp({song("a.mid", "x")});
    QTEST(summary.mayProceed, "mayProceed");
    QTEST(m_host.events, "events");
    QCOMPARE(summary.folder, QString());
    QCOMPARE(TestFiles::namesIn(m_dir->filePath(text("to"))), QStringList());
}

void tst_BackupJob::aFolderThatCantBeMadeFails_data()
{
    QTest::addColumn<QString>("existing");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("code");
    QTest::newRow("a second backup within one second")
        << text("to/") + text(folderName) + text("/old") << text("to") << text("already-exists");
    QTest::newRow("an incomplete backup of the same second") << text("to/") + text(incompleteName)
            + text("/old") << text("to") << text("already-exists");
    QTest::newRow("the chosen folder does not exist")
        << QString() << text("to/none") << text("not-found");
    QTest::newRow("the chosen folder is a file")
        << text("file") << text("file") << text("not-found");
    QTest::newRow("a name that is too long")
        << QString() << QString(4096, QLatin1Char('x')) << text("name-too-long");
}

void tst_BackupJob::aFolderThatCantBeMadeFails()
{
    QFETCH(QString, existing);
    QFETCH(QString, chosen);
    SKIP_WITHOUT_UNIX(chosen.size() > 255, "error for a folder's name that is too long in a path");
    if (!existing.isEmpty())
        TestFiles::write(m_dir->filePath(existing), "old");
    m_host.backupChoice.folder = m_dir->filePath(chosen);
    const QStringList before = made();
    LogCapture log;
    const BackupSummary summary = backUp({song("a.mid", "x")});
    QVERIFY(!summary.mayProceed);
    QTEST(summary.cause.codeName(), "code");
    QCOMPARE(m_host.events,
             QStringList(
                 {text("ask backup"), text(failed) + QLatin1Char('|') + summary.cause.message()}));
    QVERIFY(summary.cause.message().startsWith(m_host.backupChoice.folder + text("/backup_")));
    QCOMPARE(LogCapture::lines().last(), text("Dest root dir creation failed"));
    QCOMPARE(made(), before);
    if (!existing.isEmpty())
        QCOMPARE(TestFiles::read(m_dir->filePath(existing)), QByteArray("old"));
    QCOMPARE(summary.folder, QString());
}

void tst_BackupJob::anImportWithoutSongsGivesAnEmptyFolder()
{
    QVERIFY(backUp({}).mayProceed);
    QCOMPARE(made(), strings({folderName}));
    QCOMPARE(m_host.events.last(), text(succeeded));
}

void tst_BackupJob::aCancelledBackupFails_data()
{
    QTest::addColumn<int>("cancelAtProgress");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("what was copied stays, marked as incomplete") << 1 << strings({incompleteName});
    QTest::newRow("an empty folder goes") << 0 << QStringList();
}

void tst_BackupJob::aCancelledBackupFails()
{
    QFETCH(QStringList, left);
    QFETCH(int, cancelAtProgress);
    m_host.cancelAtProgress = cancelAtProgress;
    LogCapture log;
    const BackupSummary summary = backUp({song("a.mid", "x"), song("b.mid", "y")});
    QVERIFY(!summary.mayProceed);
    QString event = text(failed);
    if (!left.isEmpty())
        event += QLatin1Char('|') + whereItIs();
    QCOMPARE(m_host.events.last(), event);
    QVERIFY(m_host.events.contains(text("end")));
    QCOMPARE(summary.songs.copied, 0);
    QCOMPARE(summary.folder, QString());
    QCOMPARE(summary.incompleteFolder, left.isEmpty() ? QString() : to(incompleteName));
    QCOMPARE(LogCapture::tells({text("WARNING: incomplete"), to(incompleteName)}), !left.isEmpty());
    QCOMPARE(made(), left);
    if (!left.isEmpty())
        QCOMPARE(TestFiles::namesIn(to(incompleteName)), strings({"a.mid"}));
}

void tst_BackupJob::theFolderHasItsNameOnlyWhenItIsWhole_data()
{
    QTest::addColumn<bool>("staysBroken");
    QTest::newRow("whatever step fails") << false;
    QTest::newRow("whatever step is the last that the medium does") << true;
}

void tst_BackupJob::theFolderHasItsNameOnlyWhenItIsWhole()
{
    QFETCH(bool, staysBroken);
    const QStringList files{song("a.mid", "x"), song("b.mp3", "y")};
    song("b.cdg", "graphics");
    const QStringList whole = strings({"a.mid", "b.cdg", "b.mp3"});
    bool isDone = false;
    int failures = 0;
    for (int failAt = 1; !isDone; ++failAt) {
        FailingDisk disk;
        disk.failAt = failAt;
        disk.staysBroken = staysBroken;
        QStringList flushed; // what the incomplete folder held when the medium was flushed last
        disk.before = [&](const QString &operation, int) {
            if (operation == text("syncAll") && QFileInfo::exists(to(incompleteName)))
                flushed = TestFiles::namesIn(to(incompleteName));
            QVERIFY(!QFileInfo::exists(to(folderName)) || flushed == whole);
        };
        const BackupSummary summary = backUp(files, disk);
        isDone = disk.operations.size() < failAt;
        failures += summary.mayProceed ? 0 : 1;
        if (isDone) // nothing relies on a name that a power cut can take back
            QCOMPARE(disk.operations.mid(disk.operations.size() - 3),
                     strings({"replace", "rename", "syncAll"}));
        QVERIFY(!summary.mayProceed || made() == strings({folderName}));
        if (QFileInfo::exists(to(folderName)))
            QCOMPARE(TestFiles::namesIn(to(folderName)), whole);
        if (!summary.mayProceed && QFileInfo::exists(to(incompleteName)))
            QVERIFY(m_host.events.last().endsWith(whereItIs()));
        for (const QString &name : made())
            QVERIFY(QDir(to("") + name).removeRecursively());
    }
    QVERIFY2(failures > 10, qPrintable(QString::number(failures))); // each of them is met
}

void tst_BackupJob::aNameThatIsTakenMeanwhileFails()
{
    const QStringList files{song("a.mid", "x")};
    FailingDisk disk;
    disk.before = [this](const QString &, int) { QDir().mkdir(to(folderName)); };
    const BackupSummary summary = backUp(files, disk);
    QVERIFY(!summary.mayProceed);
    QCOMPARE(summary.cause.codeName(), text("already-exists"));
    QCOMPARE(TestFiles::namesIn(to(folderName)), QStringList());
    QCOMPARE(TestFiles::namesIn(to(incompleteName)), strings({"a.mid"}));
}

void tst_BackupJob::aFailedCopyFails_data()
{
    QTest::addColumn<int>("failingWrite");
    QTest::addColumn<int>("failingSync");
    QTest::addColumn<QStringList>("lines"); // beside the box: name and code
    QTest::addColumn<QStringList>("left"); // in the folder, which is marked or gone
    QTest::newRow("a short write") << 1 << 0 << strings({"a.mid no-room"}) << strings({"b.mid"});
    QTest::newRow("bytes that do not reach the medium")
        << 0 << 1 << strings({"a.mid no-room", "b.mid no-room", "gone.mid not-found"})
        << QStringList();
    QTest::newRow("names that do not reach the medium")
        << 0 << 2 << strings({"a.mid not-confirmed", "b.mid not-confirmed", "gone.mid not-found"})
        << strings({"a.mid", "b.mid"});
    QTest::newRow("a song that has vanished")
        << 0 << 0 << strings({"gone.mid not-found"}) << strings({"a.mid", "b.mid"});
}

void tst_BackupJob::aFailedCopyFails()
{
    QFETCH(int, failingWrite);
    QFETCH(int, failingSync);
    QFETCH(QStringList, lines);
    QFETCH(QStringList, left);
    QStringList files{song("a.mid", "x"), song("b.mid", "y")};
    if (lines.last().startsWith(text("gone")))
        files.append(m_dir->filePath(text("gone.mid")));
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    disk.failingWrite = failingWrite;
    disk.failingSync = failingSync;
    const BackupSummary summary = backUp(files, disk);
    QVERIFY(!summary.mayProceed);
    QStringList told;
    QStringList details;
    for (const SongOutcome &failure : summary.songs.failures) {
        const QString name = QFileInfo(failure.path).fileName();
        told += name + QLatin1Char(' ') + failure.cause.codeName();
        details += name + text(": ") + failure.cause.sentence();
    }
    QCOMPARE(told, lines);
    if (!left.isEmpty())
        details += whereItIs();
    QCOMPARE(made(), left.isEmpty() ? QStringList() : strings({incompleteName}));
    QCOMPARE(TestFiles::namesIn(to(incompleteName)), left);
    QCOMPARE(m_host.events.last(),
             text(failed) + QLatin1Char('|') + details.join(QLatin1Char('|')));
    QCOMPARE(m_host.eventsOf(text("information")), QStringList());
    QCOMPARE(TestFiles::read(files.first()), QByteArray("x"));
}

void tst_BackupJob::aBackupThatDoesNotFitIsNotBegun()
{
    const TmpfsMount volume(m_dir->filePath(text("to")), "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    const QStringList files{song("a.mid", "x"), song("b.mid", QByteArray(100000, 'b'))};
    const BackupSummary summary = backUp(files);
    QVERIFY(!summary.mayProceed);
    QCOMPARE(summary.cause.codeName(), text("no-room"));
    QCOMPARE(summary.incompleteFolder, QString());
    QCOMPARE(made(), QStringList());
    QCOMPARE(m_host.events.last(), text(failed) + QLatin1Char('|') + summary.cause.message());
    QVERIFY(summary.cause.message().startsWith(to(folderName) + text(": ")));
}

void tst_BackupJob::sameNamesAreDecidedByTheQuestion_data()
{
    QTest::addColumn<Answers>("answers");
    QTest::addColumn<QByteArray>("held");
    QTest::addColumn<int>("questions");
    QTest::addColumn<int>("missing");
    QTest::newRow("yes") << Answers{Answer::Yes, Answer::Yes} << QByteArray("third") << 2 << 0;
    QTest::newRow("no to all") << Answers{Answer::NoToAll} << QByteArray("first") << 1 << 1;
    QTest::newRow("closed by its frame, which is yes")
        << Answers() << QByteArray("third") << 2 << 0;
}

void tst_BackupJob::sameNamesAreDecidedByTheQuestion()
{
    QFETCH(Answers, answers);
    QFETCH(QByteArray, held);
    QFETCH(int, questions);
    QFETCH(int, missing);
    const QStringList files{song("1/a.mid", "first"), song("2/a.mid", "second"),
                            song("3/a.mid", "third")};
    m_host.overwriteAnswers = answers;
    LogCapture log;
    QVERIFY(backUp(files).mayProceed); // the user decided
    QCOMPARE(m_host.eventsOf(text("ask overwrite")).size(), questions);
    QCOMPARE(TestFiles::read(to(folderName) + text("/a.mid")), held);
    QVERIFY(LogCapture::tells({text("not in the backup"), files.at(missing)}));
    QVERIFY(LogCapture::tells({text("not in the backup"), files.at(1)}));
}

void tst_BackupJob::sameNames()
{
    const QStringList files{text("/1/a.mid"), text("/1/b.mid"), text("/2/a.mid"), text("/3/A.MID"),
                            text("/1/a.mid")};
    const QVector<QPair<QString, QString>> expected{{text("/1/a.mid"), text("/2/a.mid")},
                                                    {text("/1/a.mid"), text("/3/A.MID")}};
    QCOMPARE(BackupJob::sameNames(files), expected);
    QVERIFY(BackupJob::sameNames(files.mid(0, 2)).isEmpty());
}

QTEST_GUILESS_MAIN(tst_BackupJob)
#include "tst_backupjob.moc"
