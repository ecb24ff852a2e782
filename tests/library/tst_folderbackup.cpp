#include "library/folderbackup.h"

#include "tests/library/logcapture.h"
#include "tests/library/testfiles.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/unixfile.h"

#include <QtTest>

#include <filesystem>

using namespace tarvel4;

class tst_FolderBackup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void theWholeTreeIsCopied();
    void theLogTellsEachStep();
    void whatStandsThereIsNotReplaced();
    void aFolderInsideWhatIsCopiedIsNotCopiedIntoItself();
    void loopsOfLinksEnd();
    void unusableFolders_data();
    void unusableFolders();
    void aNameThatCantBeSaidIsAFailure();
    void aFileThatFailsStopsNoOther();

private:
    QString at(const char *name) const { return m_dir->filePath(QString::fromUtf8(name)); }

    QScopedPointer<QTemporaryDir> m_dir;
};

void tst_FolderBackup::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(m_dir->isValid());
    TestFiles::write(at("from/b.mid"), "b");
    TestFiles::write(at("from/sub/deep/a.mp3"), "a");
}

void tst_FolderBackup::theWholeTreeIsCopied()
{
    const QDateTime time(QDate(2009, 3, 5), QTime(7, 8, 9));
    TestFiles::setModified(at("from/b.mid"), time);
    TestFiles::write(at("from/.hidden"), "h");
    QVERIFY(QDir().mkpath(at("from/empty")));
    QVERIFY(FolderBackup::backupDir(at("from"), at("to")));
    QCOMPARE(TestFiles::namesIn(at("to")), TestFiles::namesIn(at("from")));
    QCOMPARE(TestFiles::read(at("to/b.mid")), QByteArray("b"));
    QCOMPARE(TestFiles::read(at("to/sub/deep/a.mp3")), QByteArray("a"));
    QCOMPARE(QFileInfo(at("to/b.mid")).lastModified(), time);
}

void tst_FolderBackup::theLogTellsEachStep()
{
    QVERIFY(QDir().mkpath(at("to")));
    const LogCapture log;
    QVERIFY(FolderBackup::backupDir(at("from"), at("to")));
    const auto line = [this](const char *text, const char *first, const char *second = nullptr) {
        QString expected = QString::fromUtf8(text) + QStringLiteral(" \"%1\"").arg(at(first));
        return second ? expected + QStringLiteral(" to: \"%1\"").arg(at(second)) : expected;
    };
    QCOMPARE(
        LogCapture::lines(),
        (QStringList{
            line("Backing up directory:", "from", "to"), line("Copying file:", "from/b.mid"),
            line("Backing up directory:", "from/sub", "to/sub"), line("Making new dir:", "to/sub"),
            line("Backing up directory:", "from/sub/deep", "to/sub/deep"),
            line("Making new dir:", "to/sub/deep"), line("Copying file:", "from/sub/deep/a.mp3")}));
}

void tst_FolderBackup::whatStandsThereIsNotReplaced()
{
    TestFiles::write(at("to/b.mid"), "older");
    TestFiles::write(at("to/sub/deep/c.mid"), "older");
    TestFiles::write(at("from/sub/deep/c.mid"), "c");
    const Outcome outcome = FolderBackup::backupDir(at("from"), at("to"));
    QCOMPARE(outcome.codeName(), QStringLiteral("already-exists"));
    QCOMPARE(outcome.path, at("to/b.mid")); // the first of them
    QCOMPARE(TestFiles::read(at("to/b.mid")), QByteArray("older"));
    QCOMPARE(TestFiles::read(at("to/sub/deep/a.mp3")), QByteArray("a"));
}

void tst_FolderBackup::aFolderInsideWhatIsCopiedIsNotCopiedIntoItself()
{
    QVERIFY(QDir().mkpath(at("from/backup")));
    QVERIFY(FolderBackup::backupDir(at("from"), at("from/backup")));
    QCOMPARE(TestFiles::namesIn(at("from/backup")),
             QStringList({QStringLiteral("b.mid"), QStringLiteral("sub")}));
}

void tst_FolderBackup::loopsOfLinksEnd()
{
    SKIP_WITHOUT_UNIX(true, "links that Qt makes");
    QVERIFY(QFile::link(at("from"), at("from/sub/loop")));
    QVERIFY(FolderBackup::backupDir(at("from"), at("to")));
    QCOMPARE(TestFiles::namesIn(at("to/sub")), QStringList{QStringLiteral("deep")});
}

void tst_FolderBackup::unusableFolders_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("dest");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("path"); // that it happened to
    const auto row = [](const char *name, const QString &source, const QString &dest,
                        const char *code, const QString &path) {
        QTest::newRow(name) << source << dest << QString::fromLatin1(code) << path;
    };
    const QString file = QStringLiteral("from/b.mid");
    const QString none = QStringLiteral("none");
    const QString to = QStringLiteral("to");
    row("a source that is not there", none, to, "not-found", none);
    row("a source that is a file", file, to, "not-found", file);
    row("a destination that is a file", QStringLiteral("from/sub"), file, "already-exists", file);
    row("a destination in a folder that is not there", QStringLiteral("from"),
        QStringLiteral("none/to"), "not-found", QStringLiteral("none/to"));
}

void tst_FolderBackup::unusableFolders()
{
    QFETCH(QString, source);
    QFETCH(QString, dest);
    QFETCH(QString, path);
    const Outcome outcome = FolderBackup::backupDir(m_dir->filePath(source), m_dir->filePath(dest));
    QTEST(outcome.codeName(), "code");
    QCOMPARE(outcome.path, m_dir->filePath(path));
    QCOMPARE(TestFiles::namesIn(m_dir->path()), QStringList{QStringLiteral("from")});
}

void tst_FolderBackup::aNameThatCantBeSaidIsAFailure()
{
    const QByteArray bad = QFile::encodeName(at("from/bad")) + "\xff.mid";
    std::error_code refused;
    std::filesystem::create_symlink("b.mid", bad.toStdString(), refused);
    if (refused)
        QSKIP("the file system takes only names in UTF-8");
    const Outcome outcome = FolderBackup::backupDir(at("from"), at("to"));
    std::filesystem::remove(bad.toStdString()); // Qt can't
    QCOMPARE(outcome.codeName(), QStringLiteral("not-found"));
    QVERIFY(outcome.path.startsWith(at("from/bad")));
    QCOMPARE(TestFiles::namesIn(at("to")), TestFiles::namesIn(at("from")));
}

void tst_FolderBackup::aFileThatFailsStopsNoOther()
{
    TestFiles::write(at("from/c.mid"), "c");
    FailingDisk disk;
    disk.failingWrite = 1;
    disk.cause = Outcome::Code::NoRoom;
    Outcome outcome = FolderBackup::backupDir(at("from"), at("to"), disk);
    QCOMPARE(outcome.codeName(), QStringLiteral("no-room"));
    QCOMPARE(outcome.path, at("to/b.mid"));
    QCOMPARE(TestFiles::namesIn(at("to")),
             QStringList({QStringLiteral("c.mid"), QStringLiteral("sub")}));

    disk = FailingDisk();
    disk.failingSync = 1; // of the deepest folder, which is flushed first
    QVERIFY(QDir(at("to")).removeRecursively());
    outcome = FolderBackup::backupDir(at("from"), at("to"), disk);
    QCOMPARE(outcome.codeName(), QStringLiteral("medium-failed"));
    QCOMPARE(outcome.path, at("to/sub/deep"));
    QCOMPARE(TestFiles::namesIn(at("to/sub/deep")), QStringList());
    QCOMPARE(TestFiles::read(at("to/c.mid")), QByteArray("c"));
}

QTEST_GUILESS_MAIN(tst_FolderBackup)
#include "tst_folderbackup.moc"
