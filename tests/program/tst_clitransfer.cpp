#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"
#include "tests/program/unixrows.h"
#include "tests/storage/tmpfsmount.h"

#include <QDir>
#include <QJsonArray>
#include <QtTest>

using namespace tarvel4;

/** `transfer`: the songs into a memory, and its index up to date. */
class tst_CliTransfer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void preparesAFolderMemory();
    void saysLastThatTheCardMayBePulled();
    void copiesIntoSongsWhereTheRootIsNamed();
    void decidesAboutSongsThatExist_data();
    void decidesAboutSongsThatExist();
    void refuses_data();
    void refuses();
    void refusesTheSystemDisk();
    void saysWhichSongFailed_data();
    void saysWhichSongFailed();
    void saysHowMuchRoomIsMissing();
    void saysWhyTheIndexFailed();
    void saysWhatTheIndexCouldNotTakeIn();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_CliTransfer::init()
{
    SKIP_ROWS_WITHOUT_WINDOWS();
    m_folder.reset(new QTemporaryDir);
    const Run made = Program(m_folder->path())
                         .shell(QStringLiteral("mkdir -p lib mem/Pop mem/sfx mem/x/Bridge"));
    VERIFY_STATUS(made, 0);
    QVERIFY(Fixtures::write(path(QStringLiteral("lib/a.mid")), Fixtures::wholeSong()));
    QVERIFY(Fixtures::write(path(QStringLiteral("lib/b.kar")), Fixtures::midi()));
}

void tst_CliTransfer::preparesAFolderMemory()
{
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("\"$cli\" transfer --json --quiet --to mem/Pop "
                                              "--memory mem --recursive lib && \"$cli\" index "
                                              "verify mem && cmp lib/a.mid mem/Pop/a.mid"));
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.out,
             QByteArray(R"({"copied":2,"failed":0,"kept":0,"found":2,"prepared":true,"errors":[]})"
                        "\n"));
    VERIFY_STATUS(run, 0);
}

void tst_CliTransfer::saysLastThatTheCardMayBePulled()
{
    if (!canTrace())
        QSKIP("tracing is not possible here");
    const Run run =
        Program(m_folder->path())
            .shell(QStringLiteral("export ASAN_OPTIONS=detect_leaks=0; strace -f -y -qq -o trace "
                                  "-e trace=%file,%desc \"$cli\" transfer --to mem/Pop --memory "
                                  "mem --recursive lib >/dev/null 2>messages; cat messages"));
    QVERIFY2(run.out.endsWith("tarvel4soft-cli: All files were copied correctly\n"
                              "tarvel4soft-cli: Everything is written: the memory can be taken out "
                              "now.\n"),
             run.out.constData());
    // Behind the last flush the memory is only asked whether its files are there.
    const QList<QByteArray> calls = Fixtures::read(path(QStringLiteral("trace"))).split('\n');
    int flushed = -1;
    int said = -1;
    int touched = -1;
    for (int i = 0; i < calls.size(); ++i) {
        const QByteArray call = calls.at(i).mid(calls.at(i).indexOf(' ') + 1).trimmed();
        if (call.startsWith("syncfs("))
            flushed = i;
        else if (call.startsWith("write(") && call.contains("Everything is"))
            said = i;
        else if (call.contains("/mem") && !call.contains("stat") && !call.startsWith("access("))
            touched = call.startsWith("close(") ? touched : i;
    }
    QVERIFY(touched > 0 && said > 0);
    QVERIFY2(touched < flushed && flushed < said, calls.value(touched).constData());
}

void tst_CliTransfer::copiesIntoSongsWhereTheRootIsNamed()
{
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("cd mem; \"$cli\" transfer --to . --memory ../mem/. "
                                              "../lib/a.mid; cd ..; find mem -name a.mid"));
    QVERIFY(run.out.contains("copied: 1\n"));
    QVERIFY(run.out.endsWith("mem/songs/a.mid\n"));
}

void tst_CliTransfer::decidesAboutSongsThatExist_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<int>("copied");
    QTest::addColumn<int>("kept");
    QTest::newRow("by default they are kept, which is no failure") << "" << 1 << 1;
    QTest::newRow("no by option") << "--overwrite=no" << 1 << 1;
    QTest::newRow("yes by option") << "--overwrite yes" << 2 << 0;
}

void tst_CliTransfer::decidesAboutSongsThatExist()
{
    QFETCH(QString, option);
    QFETCH(int, copied);
    QFETCH(int, kept);
    QVERIFY(Fixtures::write(path(QStringLiteral("mem/Pop/a.mid")), "old"));
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("yes | \"$cli\" transfer --json --to mem/Pop "
                                              "--memory mem %1 --recursive lib")
                                   .arg(option));
    VERIFY_STATUS(run, 0);
    QCOMPARE(run.records().value(0).value(QStringLiteral("copied")).toInt(), copied);
    QCOMPARE(run.records().value(0).value(QStringLiteral("kept")).toInt(), kept);
    QCOMPARE(Fixtures::read(path(QStringLiteral("mem/Pop/a.mid"))) == "old", kept == 1);
}

void tst_CliTransfer::refuses_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("without a destination") << "--memory mem lib/a.mid" << 2 << QByteArray("--to");
    QTest::newRow("asking where there is nobody")
        << "--to mem/Pop --memory mem --overwrite ask lib/a.mid" << 2 << QByteArray("--overwrite");
    QTest::newRow("a destination that is missing")
        << "--to mem/gone --memory mem lib/a.mid" << 3 << QByteArray("mem/gone");
    QTest::newRow("a memory that is missing")
        << "--to mem/Pop --memory gone lib/a.mid" << 3 << QByteArray("gone");
    QTest::newRow("a destination outside the memory")
        << "--to lib --memory mem lib/a.mid" << 3 << QByteArray("lib");
    QTest::newRow("a destination beside the memory whose name begins like it")
        << "--to mem/../mem2 --memory mem lib/a.mid" << 3 << QByteArray("mem2");
    QTest::newRow("a reserved folder")
        << "--to mem/sfx --memory mem lib/a.mid" << 3 << QByteArray("SFX");
    QTest::newRow("a reserved folder, with a slash at its end")
        << "--to mem/x/Bridge/ --memory mem lib/a.mid" << 3 << QByteArray("BRIDGE");
    QTest::newRow("a reserved folder, by way of a link")
        << "--to mem/link --memory mem lib/a.mid" << 3 << QByteArray("SFX");
    QTest::newRow("a song that is missing")
        << "--to mem/Pop --memory mem lib/a.mid gone.mid" << 3 << QByteArray("gone.mid");
}

void tst_CliTransfer::refuses()
{
    QFETCH(QString, line);
    QFETCH(int, status);
    QFETCH(QByteArray, message);
    const Run run = Program(m_folder->path())
                        .shell(QLatin1String("mkdir mem2; ln -s sfx mem/link; find mem >before\n"
                                             "\"$cli\" transfer ")
                               + line + QLatin1String("; s=$?; find mem | diff before -; exit $s"));
    QCOMPARE(run.out, QByteArray());
    QVERIFY2(run.err.contains(message), run.err.constData());
    VERIFY_STATUS(run, status);
}

void tst_CliTransfer::refusesTheSystemDisk()
{
#ifdef TARVEL4_WINDOWS_CLI
    const QString onSystemDisk = QStringLiteral("C:/users"); // a folder of the drive with WINDOWS
    const QString folder = qEnvironmentVariable("WINEPREFIX") + QLatin1String("/drive_c/users");
    QVERIFY(QFileInfo(folder).isDir());
#else
    const QString onSystemDisk = QStringLiteral("/usr/share");
    if (!QFileInfo(onSystemDisk).isDir())
        QSKIP("there is no /usr/share here");
    const QString folder = onSystemDisk;
#endif
    const Run run =
        Program(m_folder->path())
            .shell(QStringLiteral("\"$cli\" transfer --to %1 lib/a.mid").arg(onSystemDisk));
    QCOMPARE(run.out, QByteArray());
    QVERIFY(!run.err.isEmpty());
    VERIFY_STATUS(run, 3);
    QVERIFY(!QFile::exists(folder + QStringLiteral("/a.mid")));
}

void tst_CliTransfer::saysWhichSongFailed_data()
{
    QTest::addColumn<QString>("before"); // in the shell
    QTest::addColumn<QString>("injected"); // into the opening of lib/x.mp3
    QTest::addColumn<QString>("code");
    const QString none;
    QTest::newRow("a song that is larger than a file may be")
        << "truncate -s 9000 lib/x.mp3; ulimit -f 4" << none << "too-large";
    QTest::newRow("a song that must not be read") << none << "EACCES"
                                                  << "read-denied";
    QTest::newRow("a song that has vanished meanwhile") << none << "ENOENT"
                                                        << "not-found";
    QTest::newRow("a song on a dying disk") << none << "EIO"
                                            << "medium-failed";
    QTest::newRow("a companion that is there already")
        << "touch lib/x.cdg mem/Pop/x.cdg" << none << "already-exists";
    QTest::newRow("a folder of its name") << "mkdir mem/Pop/x.mp3" << none << "not-a-file";
}

void tst_CliTransfer::saysWhichSongFailed()
{
    QFETCH(QString, before);
    QFETCH(QString, injected);
    if (!injected.isEmpty() && !canTrace())
        QSKIP("tracing is not possible here");
    QVERIFY(Fixtures::write(path(QStringLiteral("lib/x.mp3")), "song"));
    const Run run =
        Program(m_folder->path())
            .shell(before + QLatin1Char('\n') + failingToOpen(QStringLiteral("lib/x.mp3"), injected)
                   + QStringLiteral("\"$cli\" transfer --json --quiet --to mem/Pop "
                                    "--memory mem --overwrite yes lib/a.mid lib/x.mp3 "
                                    "lib/b.kar"));
    const QVector<QJsonObject> records = run.records();
    QCOMPARE(records.size(), 2);
    const QByteArray error = records[0].value(QStringLiteral("error")).toString().toUtf8();
    QCOMPARE(records[0].value(QStringLiteral("path")).toString(), QStringLiteral("lib/x.mp3"));
    QTEST(records[0].value(QStringLiteral("code")).toString(), "code");
    QCOMPARE(error.startsWith("x.cdg: "), before.contains(QLatin1String("x.cdg")));
    QVERIFY(run.out.endsWith(R"({"copied":2,"failed":1,"kept":0,"found":0,"prepared":false,)"
                             R"("errors":[]})"
                             "\n"));
    // strace says a word of its own first
    QCOMPARE(run.err.mid(run.err.indexOf("tarvel4soft-cli")),
             "tarvel4soft-cli: lib/x.mp3: " + error
                 + "\ntarvel4soft-cli: One or more files could not be copied\n");
    VERIFY_STATUS(run, 1);
}

void tst_CliTransfer::saysHowMuchRoomIsMissing()
{
    const TmpfsMount volume(path(QStringLiteral("mem/Pop")), "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    QVERIFY(Fixtures::write(path(QStringLiteral("lib/x.mp3")), QByteArray(100000, 'b')));
    QVERIFY(Fixtures::write(path(QStringLiteral("mem/Pop/a.mid")), "old"));
    const Run run =
        Program(m_folder->path())
            .shell(QStringLiteral("export LC_NUMERIC=C; find mem >before; \"$cli\" transfer --json "
                                  "--quiet --to mem/Pop --memory mem --overwrite yes lib/a.mid "
                                  "lib/x.mp3; s=$?; find mem | diff before -; exit $s"));
    // 25 blocks of 4 KiB, and there are 15
    const QByteArray error = "there is not enough free room on the disk or card: at least 40.0 kB "
                             "are missing";
    QCOMPARE(run.out,
             R"({"copied":0,"failed":0,"kept":0,"found":0,"prepared":false,"errors":[],"error":")"
                 + error + R"(","code":"no-room"})" + '\n');
    QCOMPARE(run.err,
             "tarvel4soft-cli: One or more files could not be copied\ntarvel4soft-cli: "
                 + QFileInfo(path(QStringLiteral("mem/Pop"))).canonicalFilePath().toUtf8() + ": "
                 + error + '\n');
    VERIFY_STATUS(run, 3); // no song was begun
    QCOMPARE(Fixtures::read(path(QStringLiteral("mem/Pop/a.mid"))), QByteArray("old"));
}

void tst_CliTransfer::saysWhyTheIndexFailed()
{
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("\"$cli\" transfer --quiet --to mem/Pop --memory mem "
                                              "lib/a.mid >/dev/null; echo x >>mem/index.id3; "
                                              "\"$cli\" transfer --json --quiet --to mem/Pop "
                                              "--memory mem lib/b.kar"));
    const QJsonObject record = run.records().value(0);
    QCOMPARE(record.value(QStringLiteral("copied")).toInt(), 1);
    QCOMPARE(record.value(QStringLiteral("code")).toString(), QStringLiteral("damaged-index"));
    QVERIFY2(run.err.endsWith("/mem: " + record.value(QStringLiteral("error")).toString().toUtf8()
                              + '\n')
                 && run.err.count("index.id3") == 1,
             run.err.constData());
    VERIFY_STATUS(run, 3);
}

void tst_CliTransfer::saysWhatTheIndexCouldNotTakeIn()
{
    const QByteArray error = "File not imported, path too long: ";
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("d=mem/$(printf %0130d 0)/$(printf %0130d 0); "
                                              "mkdir -p $d; \"$cli\" transfer --json --to $d "
                                              "--memory mem lib/a.mid lib/b.kar"));
    QVERIFY2(run.out.startsWith(R"({"copied":2,"failed":0,"kept":0,"found":0,"prepared":false,)"),
             run.out.constData());
    QCOMPARE(run.records().value(0).value(QStringLiteral("errors")).toArray().size(), 2);
    QCOMPARE(run.err.count("tarvel4soft-cli: " + error), 2);
    QVERIFY2(!run.err.contains("All files"), run.err.constData());
    VERIFY_STATUS(run, 1);

    const Run again = Program(m_folder->path())
                          .shell(QStringLiteral("\"$cli\" transfer --to mem/Pop --memory mem "
                                                "lib/a.mid"));
    QVERIFY2(again.out.contains("errors: " + error), again.out.constData());
    QVERIFY2(!again.err.contains("All files"), again.err.constData());
    VERIFY_STATUS(again, 1);
}

QTEST_GUILESS_MAIN(tst_CliTransfer)
#include "tst_clitransfer.moc"
