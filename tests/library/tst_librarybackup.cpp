#include "library/librarybackup.h"

#include "tests/library/logcapture.h"
#include "tests/library/scriptedhost.h"
#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/tmpfsmount.h"

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
const char failed[] = "critical Backup|Backup FALLITO !!!";
const char succeeded[] = "information Backup|Backup eseguito correttamente";

} // namespace

class tst_LibraryBackup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theBackupHoldsTheChosenSongsFlat();
    void proceedingWithoutABackupMakesNoFolder();
    void cancellingStopsTheUpdate();
    void aBackupWithoutAFolderFails();
    void aFolderThatCantBeMadeFails_data();
    void aFolderThatCantBeMadeFails();
    void anImportWithoutSongsGivesAnEmptyFolder();
    void aCancelledBackupFails();
    void aFailedCopyFails_data();
    void aFailedCopyFails();
    void aFullFolderFails();
    void sameNamesAreDecidedByTheQuestion_data();
    void sameNamesAreDecidedByTheQuestion();
    void sameNames();

private:
    QString to(const char *name) const { return m_dir->filePath(text("to/") + text(name)); }
    QString song(const char *name, const QByteArray &bytes) const
    {
        return TestFiles::write(m_dir->filePath(text("from/") + text(name)), bytes);
    }

    QScopedPointer<QTemporaryDir> m_dir;
    ScriptedHost m_host;
};

void tst_LibraryBackup::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
    QVERIFY(QDir(m_dir->path()).mkdir(text("to")));
    m_host = ScriptedHost();
    m_host.backupChoice = {BackupChoice::Backup, m_dir->filePath(text("to"))};
}

void tst_LibraryBackup::theBackupHoldsTheChosenSongsFlat()
{
    const QStringList files{song("1/a.mid", "first"), song("2/b.mp3", "second"),
                            song("2/c.mid", "third")};
    song("2/b.cdg", "graphics");
    LibraryBackup backup(m_host, Disk::real(), &theTime);
    LogCapture log;
    QVERIFY(backup.backupUserLibrary(files));
    QCOMPARE(backup.folder(), to(folderName));
    QCOMPARE(backup.copied(), 3);
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

void tst_LibraryBackup::proceedingWithoutABackupMakesNoFolder()
{
    m_host.backupChoice.action = BackupChoice::ProceedWithout;
    LibraryBackup backup(m_host, Disk::real(), &theTime);
    QVERIFY(backup.backupUserLibrary({song("a.mid", "x")}));
    QCOMPARE(TestFiles::namesIn(m_dir->filePath(text("to"))), QStringList());
    QCOMPARE(m_host.events, QStringList(text("ask backup")));
    QCOMPARE(backup.folder(), QString());
}

void tst_LibraryBackup::cancellingStopsTheUpdate()
{
    // The dialog's "Annulla" and its frame both give 0.
    m_host.backupChoice = BackupChoice();
    LibraryBackup backup(m_host, Disk::real(), &theTime);
    QVERIFY(!backup.backupUserLibrary({song("a.mid", "x")}));
    QCOMPARE(m_host.events, QStringList(text("ask backup"))); // no message
}

void tst_LibraryBackup::aBackupWithoutAFolderFails()
{
    m_host.backupChoice.folder.clear();
    LibraryBackup backup(m_host, Disk::real(), &theTime);
    QVERIFY(!backup.backupUserLibrary({song("a.mid", "x")}));
    QCOMPARE(m_host.events, QStringList({text("ask backup"), text(failed)}));
}

void tst_LibraryBackup::aFolderThatCantBeMadeFails_data()
{
    QTest::addColumn<QString>("existing");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("two backups within one second")
        << text("to/") + text(folderName) + text("/old") << text("to");
    QTest::newRow("the chosen folder does not exist") << QString() << text("to/none");
    QTest::newRow("the chosen folder is a file") << text("file") << text("file");
}

void tst_LibraryBackup::aFolderThatCantBeMadeFails()
{
    QFETCH(QString, existing);
    QFETCH(QString, chosen);
    if (!existing.isEmpty())
        TestFiles::write(m_dir->filePath(existing), "old");
    m_host.backupChoice.folder = m_dir->filePath(chosen);
    LibraryBackup backup(m_host, Disk::real(), &theTime);
    LogCapture log;
    QVERIFY(!backup.backupUserLibrary({song("a.mid", "x")}));
    QCOMPARE(m_host.events, QStringList({text("ask backup"), text(failed)}));
    QCOMPARE(LogCapture::lines().last(), text("Dest root dir creation failed"));
    if (!existing.isEmpty())
        QCOMPARE(TestFiles::read(m_dir->filePath(existing)), QByteArray("old"));
    QCOMPARE(backup.folder(), QString());
}

void tst_LibraryBackup::anImportWithoutSongsGivesAnEmptyFolder()
{
    LibraryBackup backup(m_host, Disk::real(), &theTime);
    QVERIFY(backup.backupUserLibrary({}));
    QVERIFY(QFileInfo(to(folderName)).isDir());
    QCOMPARE(m_host.events.last(), text(succeeded));
}

void tst_LibraryBackup::aCancelledBackupFails()
{
    m_host.cancelAtProgress = 1;
    LibraryBackup backup(m_host, Disk::real(), &theTime);
    QVERIFY(!backup.backupUserLibrary({song("a.mid", "x"), song("b.mid", "y")}));
    QCOMPARE(m_host.events.last(), text(failed));
    QVERIFY(m_host.events.contains(text("end")));
    QCOMPARE(backup.copied(), 0);
    QCOMPARE(backup.folder(), QString());
}

void tst_LibraryBackup::aFailedCopyFails_data()
{
    QTest::addColumn<int>("failingWrite");
    QTest::addColumn<int>("failingSync");
    QTest::addColumn<bool>("vanished");
    QTest::newRow("a short write") << 1 << 0 << false;
    QTest::newRow("bytes that do not reach the medium") << 0 << 1 << false;
    QTest::newRow("names that do not reach the medium") << 0 << 2 << false;
    QTest::newRow("a song that has vanished") << 0 << 0 << true;
}

void tst_LibraryBackup::aFailedCopyFails()
{
    QFETCH(int, failingWrite);
    QFETCH(int, failingSync);
    QFETCH(bool, vanished);
    const QStringList files{song("a.mid", "x"), song("b.mid", "y")};
    if (vanished)
        QFile::remove(files.last());
    FailingDisk disk;
    disk.failingWrite = failingWrite;
    disk.failingSync = failingSync;
    LibraryBackup backup(m_host, disk, &theTime);
    QVERIFY(!backup.backupUserLibrary(files));
    QCOMPARE(m_host.events.last(), text(failed));
    QCOMPARE(m_host.eventsOf(text("information")), QStringList());
    QCOMPARE(TestFiles::read(files.first()), QByteArray("x"));
}

void tst_LibraryBackup::aFullFolderFails()
{
    TmpfsMount volume(m_dir->filePath(text("to")), "size=32k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    const QStringList files{song("a.mid", QByteArray(20000, 'a')),
                            song("b.mid", QByteArray(20000, 'b'))};
    LibraryBackup backup(m_host, Disk::real(), &theTime);
    QVERIFY(!backup.backupUserLibrary(files));
    QCOMPARE(m_host.events.last(), text(failed));
    QCOMPARE(TestFiles::namesIn(to(folderName)), QStringList(text("a.mid")));
    QCOMPARE(TestFiles::read(files.last()), QByteArray(20000, 'b'));
}

void tst_LibraryBackup::sameNamesAreDecidedByTheQuestion_data()
{
    QTest::addColumn<Answers>("answers");
    QTest::addColumn<QByteArray>("held");
    QTest::addColumn<int>("questions");
    QTest::addColumn<int>("missing");
    QTest::newRow("yes") << Answers{Answer::Yes, Answer::Yes} << QByteArray("third") << 2 << 0;
    QTest::newRow("yes to all") << Answers{Answer::YesToAll} << QByteArray("third") << 1 << 0;
    QTest::newRow("no") << Answers{Answer::No, Answer::No} << QByteArray("first") << 2 << 1;
    QTest::newRow("no to all") << Answers{Answer::NoToAll} << QByteArray("first") << 1 << 1;
    QTest::newRow("closed by its frame, which is yes")
        << Answers() << QByteArray("third") << 2 << 0;
}

void tst_LibraryBackup::sameNamesAreDecidedByTheQuestion()
{
    QFETCH(Answers, answers);
    QFETCH(QByteArray, held);
    QFETCH(int, questions);
    QFETCH(int, missing);
    const QStringList files{song("1/a.mid", "first"), song("2/a.mid", "second"),
                            song("3/a.mid", "third")};
    m_host.overwriteAnswers = answers;
    LibraryBackup backup(m_host, Disk::real(), &theTime);
    LogCapture log;
    QVERIFY(backup.backupUserLibrary(files)); // the user decided
    QCOMPARE(m_host.eventsOf(text("ask overwrite")).size(), questions);
    QCOMPARE(TestFiles::read(to(folderName) + text("/a.mid")), held);
    QVERIFY(LogCapture::tells({text("not in the backup"), files.at(missing)}));
    QVERIFY(LogCapture::tells({text("not in the backup"), files.at(1)}));
}

void tst_LibraryBackup::sameNames()
{
    const QStringList files{text("/1/a.mid"), text("/1/b.mid"), text("/2/a.mid"), text("/3/A.MID"),
                            text("/1/a.mid")};
    const QVector<QPair<QString, QString>> expected{{text("/1/a.mid"), text("/2/a.mid")},
                                                    {text("/1/a.mid"), text("/3/A.MID")}};
    QCOMPARE(LibraryBackup::sameNames(files), expected);
    QVERIFY(LibraryBackup::sameNames(files.mid(0, 2)).isEmpty());
}

QTEST_GUILESS_MAIN(tst_LibraryBackup)
#include "tst_librarybackup.moc"
