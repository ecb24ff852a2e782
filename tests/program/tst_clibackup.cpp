#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"
#include "tests/program/unixrows.h"
#include "tests/storage/tmpfsmount.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

using namespace tarvel4;

/** `backup`: the songs, flat, in a new folder. */
class tst_CliBackup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void copiesIntoANewFolder();
    void printsTheFolderForPeople();
    void refuses_data();
    void refuses();
    void namesEachSongThatFailed_data();
    void namesEachSongThatFailed();
    void saysWhyTheFolderCantBeMade();
    void saysHowMuchRoomIsMissing_data();
    void saysHowMuchRoomIsMissing();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    QStringList made() const
    {
        return QDir(path(QStringLiteral("to"))).entryList(QDir::AllDirs | QDir::NoDotAndDotDot);
    }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_CliBackup::init()
{
    SKIP_ROWS_WITHOUT_WINDOWS();
    m_folder.reset(new QTemporaryDir);
    const Run made = Program(m_folder->path())
                         .shell(QStringLiteral("mkdir -p lib/a lib/b to; echo 1 >lib/a/1.mid; "
                                               "echo 2 >lib/b/2.kar; echo 3 >lib/b/3.txt"));
    VERIFY_STATUS(made, 0);
}

void tst_CliBackup::copiesIntoANewFolder()
{
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("\"$cli\" backup --json --quiet --to to --recursive "
                                              "lib lib/a/1.mid"));
    VERIFY_STATUS(run, 0);
    const QVector<QJsonObject> records = run.records();
    QCOMPARE(records.size(), 1);
    const QString folder = records[0].value(QStringLiteral("folder")).toString();
    QVERIFY(run.out.startsWith("{\"folder\":\"to/backup_kvaro_"));
    QVERIFY(run.out.endsWith("\",\"copied\":2}\n"));
    QCOMPARE(QDir(path(folder)).entryList(QDir::Files),
             (QStringList{QStringLiteral("1.mid"), QStringLiteral("2.kar")}));
    QCOMPARE(Fixtures::read(path(folder + QLatin1String("/2.kar"))), QByteArray("2\n"));
}

void tst_CliBackup::printsTheFolderForPeople()
{
    const Run run =
        Program(m_folder->path()).shell(QStringLiteral("\"$cli\" backup --to to/ lib/a/1.mid"));
    QCOMPARE(made().size(), 1);
    QCOMPARE(run.out, QByteArray("to/") + made()[0].toUtf8() + '\n');
    VERIFY_STATUS(run, 0);
}

void tst_CliBackup::refuses_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArrayList>("messages");
    QTest::newRow("without a destination")
        << R"("$cli" backup lib/a/1.mid)" << 2 << QByteArrayList{"--to"};
    QTest::newRow("a destination that is missing")
        << R"("$cli" backup --to gone lib/a/1.mid)" << 3 << QByteArrayList{"gone"};
    QTest::newRow("two songs of the same name")
        << R"(cp lib/a/1.mid lib/b; "$cli" backup --to to --recursive lib)" << 3
        << QByteArrayList{"lib/a/1.mid", "lib/b/1.mid"};
    QTest::newRow("two songs whose names differ in case, as a card can't keep them apart")
        << R"(cp lib/a/1.mid lib/b/1.MID; "$cli" backup --to to --recursive lib)" << 3
        << QByteArrayList{"lib/a/1.mid", "lib/b/1.MID"};
    QTest::newRow("a song that is missing")
        << R"("$cli" backup --to to lib/a/1.mid gone.mid)" << 3 << QByteArrayList{"gone.mid"};
    QTest::newRow("a folder without --recursive")
        << R"("$cli" backup --to to lib)" << 3 << QByteArrayList{"lib"};
    QTest::newRow("a second one in a second, by its name")
        << R"(n=$(date +%s) # for five minutes; wine may have a time zone of its own
              for s in {0..300}; do for z in "$TZ" UTC
                  do TZ=$z printf '%(t/backup_kvaro_%Y_%m_%d_%H-%M-%S)T\n' $((n + s)); done
              done | xargs mkdir -p
              "$cli" backup --to t lib/a/1.mid)"
        << 3 << QByteArrayList{"tarvel4soft-cli: t/backup_kvaro_", ": it exists already"};
}

void tst_CliBackup::refuses()
{
    QFETCH(QString, line);
    QFETCH(int, status);
    QFETCH(QByteArrayList, messages);
    const Run run = Program(m_folder->path()).shell(line);
    QCOMPARE(run.out, QByteArray());
    for (const QByteArray &message : messages)
        QVERIFY2(run.err.contains(message), run.err.constData());
    VERIFY_STATUS(run, status);
    QVERIFY(QDir(path(QStringLiteral("to"))).isEmpty());
}

void tst_CliBackup::namesEachSongThatFailed_data()
{
    QTest::addColumn<QString>("injected"); // into the opening of lib/a/1.mid
    QTest::addColumn<QString>("code");
    QTest::newRow("a song that must not be read") << "EACCES"
                                                  << "read-denied";
    QTest::newRow("a song that has vanished meanwhile") << "ENOENT"
                                                        << "not-found";
    QTest::newRow("a song on a dying disk") << "EIO"
                                            << "medium-failed";
}

void tst_CliBackup::namesEachSongThatFailed()
{
    QFETCH(QString, injected);
    QFETCH(QString, code);
    if (!canTrace())
        QSKIP("tracing is not possible here");
    const Run run =
        Program(m_folder->path())
            .shell(failingToOpen(QStringLiteral("lib/a/1.mid"), injected)
                   + QStringLiteral("\"$cli\" backup --json --quiet --to to -- lib/a/1.mid "
                                    "lib/b/2.kar; s=$?; cat to/*/2.kar >&2; exit $s"));
    QCOMPARE(run.records().size(), 1);
    const QJsonObject record = run.records()[0];
    const QByteArray error = record.value(QStringLiteral("error")).toString().toUtf8();
    QCOMPARE(record.value(QStringLiteral("path")).toString(), QStringLiteral("lib/a/1.mid"));
    QCOMPARE(record.value(QStringLiteral("code")).toString(), code);
    QVERIFY(!error.isEmpty());
    // strace says a word of its own first
    QCOMPARE(run.err.mid(run.err.indexOf("tarvel4soft-cli")),
             "tarvel4soft-cli: lib/a/1.mid: " + error
                 + "\ntarvel4soft-cli: Backup FAILED !!!\ntarvel4soft-cli: to/"
                 + made().value(0).toUtf8() + ": the incomplete backup stays here\n2\n");
    QVERIFY(QRegularExpression(QStringLiteral("^backup_kvaro_[\\d_-]+ \\(incomplete\\)$"))
                .match(made().join(QLatin1Char('/')))
                .hasMatch());
    VERIFY_STATUS(run, 3);
}

void tst_CliBackup::saysWhyTheFolderCantBeMade()
{
    TmpfsMount volume(path(QStringLiteral("to")), "size=64k");
    if (!volume.isMounted() || !volume.makeReadOnly())
        QSKIP("mounting is not possible here");
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("\"$cli\" backup --json --to to lib/a/1.mid"));
    QCOMPARE(run.out, QByteArray());
    QVERIFY2(run.err.contains("tarvel4soft-cli: to: the disk or card is write-protected ("
                              + volume.name()
                              + "): if it could be written to before, repair the card\n"),
             run.err.constData());
    VERIFY_STATUS(run, 3);
}

void tst_CliBackup::saysHowMuchRoomIsMissing_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("backup") << "backup --to to lib/a/1.mid lib/b/2.kar";
    QTest::newRow("sync") << "sync --backup to lib/a/1.mid lib/b/2.kar";
}

void tst_CliBackup::saysHowMuchRoomIsMissing()
{
    QFETCH(QString, command);
    const TmpfsMount volume(path(QStringLiteral("to")), "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    QVERIFY(Fixtures::write(path(QStringLiteral("lib/a/1.mid")), QByteArray(100000, 'b')));
    const Run run =
        Program(m_folder->path())
            .shell(QStringLiteral("export LC_NUMERIC=C; \"$cli\" --json --quiet %1").arg(command));
    QCOMPARE(run.out, QByteArray());
    // 25 blocks and 1 of 4 KiB, and there are 16
    QCOMPARE(run.err,
             QByteArray("tarvel4soft-cli: Backup FAILED !!!\n"
                        "tarvel4soft-cli: to: there is not enough free room on the disk or card: "
                        "at least 40.0 kB are missing\n"));
    VERIFY_STATUS(run, 3);
    QCOMPARE(made(), QStringList());
}

QTEST_GUILESS_MAIN(tst_CliBackup)
#include "tst_clibackup.moc"
