#include "tests/program/historytest.h"
#include "tests/program/unixrows.h"

using namespace tarvel4;
using namespace Fixtures;

/** `restore`: songs get the bytes that a backup has of them. */
class tst_CliRestore : public HistoryTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder("s old");
        for (const char *name : {"s/a.mid", "s/b.mid", "s/c.mid"})
            write(name, wholeSong());
    }

    void givesTheBytesOfABackup_data();
    void givesTheBytesOfABackup();
    void saysWhatIsWrong_data();
    void saysWhatIsWrong();
    void takesNoneOfSeveralSongsOfOneName();
    void isARunOfItsOwn();
};

void tst_CliRestore::givesTheBytesOfABackup_data()
{
    const Table<QString> row;
    row("songs that were edited", "\"$cli\" edit --title T s/*");
    row("songs that were edited twice",
        "\"$cli\" edit --title T s/*; \"$cli\" edit --title Umore s/*");
    row("songs that are torn", "for f in s/*; do truncate -s 11 $f; done");
    row("songs that are damaged",
        "for f in s/*; do printf '\\0\\0\\0\\0' | dd of=$f bs=1 conv=notrunc; done");
    row("songs that are empty", "for f in s/*; do : >$f; done");
    row("songs that grew", "for f in s/*; do printf more >>$f; done");
    row("MP3s whose audio differs",
        "for f in s/*.mp3; do printf x | dd of=$f bs=1 seek=99 conv=notrunc; done");
}

void tst_CliRestore::givesTheBytesOfABackup()
{
    const auto [setup] = cells<QString>();
    makeSongs();
    const auto before = songs();
    VERIFY_STATUS(cli("backup --to old --recursive s"), 0);
    shell(setup);
    const auto damaged = songs();
    QVERIFY(damaged != before);

    const QByteArray all = everything();
    const Run dry = cli("restore --json --dry-run --from old/backup_kvaro_* --recursive s");
    VERIFY_STATUS(dry, 0);
    QCOMPARE(dry.texts("status").count("would-restore"_s), before.size());
    QCOMPARE(everything(), all);
    const Run run = cli("restore --json --from old/backup_kvaro_* --recursive s");
    QVERIFY2(run.status == 0 && run.err.isEmpty(), run.err.constData());
    QCOMPARE(run.texts("status").count("restored"_s), before.size());
    QVERIFY(!run.texts("format").contains(QString()));
    QVERIFY(songs() == before);

    const int runs = static_cast<int>(history().size());
    VERIFY_STATUS(cli("restore --from old/backup_kvaro_* --recursive s"), 0);
    QCOMPARE(history().size(), runs); // the same bytes are not written
    VERIFY_STATUS(cli("undo"), 0);
    QVERIFY(songs() == damaged);
}

void tst_CliRestore::saysWhatIsWrong_data()
{
    const Table<QString, int, QString, QString> row; // status, code, what is said
    row("a song that the backup does not hold", "--from old s/a.mid s/b.mid", 1, "not-found",
        "s/b.mid: the backup holds no song of this name\n");
    row("in a dry run too", "--dry-run --from old s/a.mid s/b.mid", 1, "not-found",
        "s/b.mid: the backup holds no song of this name\n");
    row("a folder in the backup has the name", "--from old s/c.mid", 1, "not-a-file",
        "s/c.mid: old/c.mid: it is no file");
    row("more than fits into memory, in the backup", "--from old s/d.mid", 1, "too-large",
        "s/d.mid: old/d.mid: it is too large: at most 2");
    row("a song of more than fits into memory", "--from old s/e.mid", 1, "too-large",
        "s/e.mid: it is too large: at most 2");
    row("no backup is named", "s/a.mid", 2, "", "--from BACKUP is missing");
    row("no song is named", "--from old", 2, "", "restore [OPTION]... PATH...");
    row("the backup is missing", "--from gone s/a.mid", 3, "", "gone: there is no such file");
    row("the backup is a file", "--from old/a.mid s/a.mid", 3, "", "old/a.mid: not a folder");
    row("a song is missing", "--from old s/a.mid s/gone.mid", 3, "not-found",
        "s/gone.mid: there is no such file");
    row("a folder without --recursive", "--from old s", 3, "not-a-file", "s: it is a folder");
}

void tst_CliRestore::saysWhatIsWrong()
{
    const auto [arguments, status, code, message] = cells<QString, int, QString, QString>();
    write("old/a.mid", midi(meta(3, "Old")));
    QVERIFY(QDir().mkpath(path("old/c.mid")));
    for (const char *name : {"d.mid", "e.mid"}) {
        write("s/"_s + QLatin1String(name), wholeSong());
        write("old/"_s + QLatin1String(name), wholeSong());
    }
    for (const char *name : {"old/d.mid", "s/e.mid"}) // mostly a hole
        QVERIFY(QFile::resize(path(name), 2000000001));
    const Run run = cli("restore --json --quiet "_s + arguments);
    VERIFY_STATUS(run, status);
    QVERIFY2(run.err.contains(QByteArray("tarvel4soft-cli: ") + message.toUtf8())
                 || run.err.contains(message.toUtf8()),
             run.err.constData());
    if (!code.isEmpty()) {
        QCOMPARE(run.texts("code").last(), code);
        QCOMPARE(run.err.count('\n'), 1);
    }
    const bool isGiven = status == 1 && arguments.startsWith("--from old s/a"_s);
    QCOMPARE(read("s/a.mid") == read("old/a.mid"), isGiven);
    QCOMPARE(read("s/b.mid"), wholeSong());
}

/** Nobody can tell which of them the backup holds. */
void tst_CliRestore::takesNoneOfSeveralSongsOfOneName()
{
    const QByteArray old = midi(meta(3, "Old"));
    write("old/a.mid", old);
    QVERIFY(QDir().mkpath(path("s/1")) && QDir().mkpath(path("s/2")));
    write("s/1/a.mid", old);
    write("s/2/a.mid", "another");
    QVERIFY(QFile::link(path("s/1/a.mid"), path("s/2/link.mid")));
    for (const char *option : {"--dry-run ", ""}) {
        const Run run =
            cli("restore --json --from old --recursive s/1 s/2 s/a.mid "_s + QLatin1String(option));
        VERIFY_STATUS(run, 1);
        QCOMPARE(run.texts("code"),
                 QStringList({{}, "refused-target"_s, "not-found"_s, "refused-target"_s}));
        QVERIFY(run.err.contains("s/2/a.mid: it is not overwritten, since it is one of "
                                 "several songs of this name, and the backup holds only one\n"));
        QCOMPARE(run.texts("status").count("failed"_s), 3); // all but the first one
    }
    QCOMPARE(read("s/1/a.mid"), old); // has those bytes
    QCOMPARE(read("s/2/a.mid"), QByteArray("another"));
    QCOMPARE(read("s/a.mid"), wholeSong());
    VERIFY_STATUS(cli("restore --from old s/2/a.mid"), 0); // said by name
    QCOMPARE(read("s/2/a.mid"), old);
    QCOMPARE(shell("rm s/2/a.mid; ln -s ../a.mid s/2").status, 0);
    VERIFY_STATUS(cli("restore --from old s/a.mid s/2/a.mid"), 0); // one song by two names
    QCOMPARE(read("s/a.mid"), old);
}

void tst_CliRestore::isARunOfItsOwn()
{
    write("old/a.mid", midi(meta(3, "Old")));
    VERIFY_STATUS(cli("restore --from old --recursive s"), 1);
    QCOMPARE(historyOf("what"), QVariantList{"restore"_s});
    QCOMPARE(historyOf("songs"), QVariantList{1});
    VERIFY_STATUS(cli("undo"), 0);
    QCOMPARE(read("s/a.mid"), wholeSong());
    VERIFY_STATUS(cli("undo"), 0);
    QCOMPARE(read("s/a.mid"), read("old/a.mid"));
}

QTEST_GUILESS_MAIN(tst_CliRestore)
#include "tst_clirestore.moc"
