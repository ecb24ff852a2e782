#include "tests/program/historytest.h"
#include "tests/program/unixrows.h"

#include <QDateTime>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <climits>

using namespace tarvel4;
using namespace Fixtures;

/** `history`: the runs that can be taken back, and the journal that they come from. */
class tst_CliHistory : public HistoryTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder("s old");
        for (const char *name : {"s/a.mid", "s/b.mid", "s/c.mid", "old/a.mid"})
            write(name, wholeSong());
        QVERIFY(writeCatalogue(path("c.db")));
    }

    void listsTheRunsTheNewestFirst()
    {
        QCOMPARE(history(), QVector<QJsonObject>());
        const QDateTime begun = QDateTime::currentDateTime().addSecs(-1);
        QCOMPARE(shell(R"(cp s/a.mid s/AZZURRO.mid; "$cli" edit --title T s/a.mid s/b.mid &&
            "$cli" sync --no-backup --catalogue c.db s/AZZURRO.mid && "$cli" undo &&
            "$cli" restore --from old s/a.mid)")
                     .status,
                 0);
        const QVector<QJsonObject> runs = history();
        QCOMPARE(historyOf("what"), (QVariantList{"restore"_s, "undo"_s, "sync"_s, "edit"_s}));
        QCOMPARE(historyOf("songs"), (QVariantList{1, 1, 1, 2}));
        QCOMPARE(historyOf("undoable"), (QVariantList{true, true, false, true}));
        int lastId = INT_MAX;
        for (const QJsonObject &run : runs) {
            QCOMPARE(run.keys(), words("run songs time undoable what"));
            QVERIFY(run.value("run"_s).toInt() < lastId);
            lastId = run.value("run"_s).toInt();
            const QString time = run.value("time"_s).toString();
            QVERIFY2(time.endsWith("+05:30"_s), qPrintable(time)); // the tests' time zone
            QVERIFY(QDateTime::fromString(time, Qt::ISODate) >= begun);
        }
    }

    void isALineAFieldForPeople()
    {
        cli("edit --title T s/a.mid");
        cli("edit --title U s/a.mid");
        const Run run = shell(R"("$cli" history | sed 's/^time: 2.*:.*+05:30$/time/')");
        QCOMPARE(run,
                 (Run{0,
                      "run: 2\ntime\nwhat: edit\nsongs: 1\nundoable: true\n\n"
                      "run: 1\ntime\nwhat: edit\nsongs: 1\nundoable: false\n",
                      ""}));
    }

    void writingCommandsPutRightWhatWasCutShort_data()
    {
        const Table<QString, bool> row;
        row("edit", "edit --title T s/a.mid", true);
        row("sync", "sync --no-backup --catalogue c.db s/a.mid", true);
        row("sync that writes nothing", "sync --dry-run --catalogue c.db s/a.mid", false);
        row("undo", "undo", true);
        row("undo that writes nothing", "undo --dry-run", false);
        row("restore", "restore --from old s/a.mid", true);
        row("restore that writes nothing", "restore --dry-run --from old s/a.mid", false);
        row("backup", "backup --to old s/a.mid", true);
        row("transfer", "transfer --memory old --to old/songs s/a.mid", true);
        row("index update", "index update s", true);
        row("index rebuild", "index rebuild s", true);
        row("index delete", "index delete s", true);
        row("info", "info s/b.mid", false);
        row("list", "list s", false);
        row("history", "history", false);
    }
    void writingCommandsPutRightWhatWasCutShort()
    {
        const auto [command, isWriting] = cells<QString, bool>();
        QVERIFY(QDir().mkpath(path("old/songs")));
        tear("s/b.mid");
        const QByteArray torn = read("s/b.mid");
        const Run run = cli(command);
        QCOMPARE(read("s/b.mid"), isWriting ? wholeSong() : torn);
        QCOMPARE(run.err.contains("s/b.mid: a save was interrupted, and the song is as it was "
                                  "before\n"),
                 isWriting);
    }

    void takesItsArguments_data()
    {
        const Table<QString, int, int> row; // runs
        row("all runs", "", 0, 3);
        row("the last one", "--limit 1", 0, 1);
        row("more than there are", "--limit=99", 0, 3);
        row("none", "--limit 0", 0, 0);
        row("no number", "--limit few", 2, 0);
        row("a negative number", "--limit=-1", 2, 0);
        row("an unknown word", "clean", 2, 0);
        row("a limit to what is forgotten", "clear --limit 1", 2, 0);
        row("a word too many", "clear all", 2, 0);
    }
    void takesItsArguments()
    {
        const auto [arguments, status, runs] = cells<QString, int, int>();
        shell(R"(for t in A B C; do "$cli" edit --title $t s/a.mid; done)");
        const Run run = cli("history --json "_s + arguments);
        VERIFY_STATUS(run, status);
        QCOMPARE(run.records().size(), runs);
        QCOMPARE(run.err.isEmpty(), status == 0);
        QCOMPARE(history().size(), 3);
    }

    void countsTheSongsWritten_data()
    {
        const Table<QString, QVariantList> row;
        row("two songs", R"("$cli" edit --title T s/a.mid s/b.mid)", QVariantList{2});
        row("a song given twice is one", R"("$cli" edit --title T s/a.mid s/a.mid)",
            QVariantList{1});
        row("not one that failed", R"(echo no >s/x.mid; "$cli" edit --title T s/a.mid s/x.mid)",
            QVariantList{1});
        const QVariantList none;
        row("a run in which every song failed is none", R"(echo no >s/x.mid
            "$cli" edit --title T s/x.mid)",
            none);
        row("wrong usage is no run", R"("$cli" edit --key H s/a.mid)", none);
        row("a dry run is none", R"(cp s/a.mid s/AZZURRO.mid
            "$cli" sync --dry-run --catalogue c.db s/AZZURRO.mid)",
            none);
        row("a synchronisation that finds nothing is none",
            R"("$cli" sync --no-backup --catalogue c.db s/a.mid)", none);
        row("a restore that finds the same bytes is none", R"("$cli" restore --from old s/a.mid)",
            none);
        row("a restore that finds no song is none", R"("$cli" restore --from old s/b.mid)", none);
        row("a backup is none", R"("$cli" backup --to old s/a.mid)", none);
        row("an undo that restored nothing is none", R"("$cli" edit --title T s/a.mid
            cp old/a.mid s/a.mid; "$cli" undo)",
            QVariantList{1});
    }
    void countsTheSongsWritten()
    {
        const auto [line, counts] = cells<QString, QVariantList>();
        shell(line);
        QCOMPARE(historyOf("songs"), counts);
    }

    void tellsWhatCanBeUndone_data()
    {
        const Table<QString, QVariantList> row;
        const QVariant yes = true;
        const QVariant no = false;
        row("a run", R"("$cli" edit --title T s/a.mid)", QVariantList{yes});
        row("not one whose only song was written again",
            R"("$cli" edit --title T s/a.mid; "$cli" edit --title U s/a.mid)",
            QVariantList{yes, no});
        row("one of whose songs one was not written again",
            R"("$cli" edit --title T s/a.mid s/b.mid; "$cli" edit --title U s/a.mid)",
            QVariantList{yes, yes});
        row("an undo, not what it took back", R"("$cli" edit --title T s/a.mid; "$cli" undo)",
            QVariantList{yes, no});
        row("what an undo gave back again",
            R"("$cli" edit --title T s/a.mid; "$cli" undo; "$cli" undo)",
            QVariantList{yes, no, yes});
    }
    void tellsWhatCanBeUndone()
    {
        const auto [line, undoable] = cells<QString, QVariantList>();
        shell(line);
        QCOMPARE(historyOf("undoable"), undoable);
    }

    void keepsTwentyRuns()
    {
        shell(R"(for i in {1..22}; do "$cli" edit --title $i s/a.mid; done)");
        const QVariantList runs = historyOf("run");
        QCOMPARE(runs.size(), 20);
        QCOMPARE(runs.first().toInt(), 22);
        QCOMPARE(runs.last().toInt(), 3);
        VERIFY_STATUS(cli("undo 2"), 2);
    }

    void forgetsWhenTold()
    {
        QCOMPARE(cli("history clear"), (Run{0, "", ""})); // without a journal too
        cli("edit --title T s/a.mid");
        const QByteArray edited = read("s/a.mid");
        QCOMPARE(cli("history clear"), (Run{0, "", ""}));
        QCOMPARE(history(), QVector<QJsonObject>());
        VERIFY_STATUS(cli("undo"), 3);
        QCOMPARE(read("s/a.mid"), edited);
        QVERIFY(!Fixtures::read(journal()).contains("Bella Ciao"));
        cli("edit --title U s/a.mid");
        QCOMPARE(historyOf("run"), QVariantList{2}); // a number is not given again
    }

    void isTheUsersOwn()
    {
        shell(R"(umask 0; "$cli" edit --title T s/a.mid)");
        const Run run = shell("cd '%1' && stat -c '%a %n' . *"_s.arg(QFileInfo(journal()).path()));
        QCOMPARE(run, (Run{0, "700 .\n600 journal.db\n", ""}));
    }

    void readingChangesNothing_data();
    void readingChangesNothing();
    void saysOnceWhatIsWrongWithIt_data();
    void saysOnceWhatIsWrongWithIt();
    void showsTwoProgramsAtOnce();

private:
    /** Leaves a song and the journal as an edit that was killed inside its write. */
    void tear(const char *name) const
    {
        VERIFY_STATUS(cli("edit --title 'A longer title' "_s + QLatin1String(name)), 0);
        const QByteArray edited = read(name);
        const QString connection = "journal"_s;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE"_s, connection);
            db.setDatabaseName(journal());
            QVERIFY(db.open());
            QSqlQuery query(db);
            QVERIFY(query.exec("SELECT prefix, suffix FROM song"_s) && query.next());
            const int prefix = query.value(0).toInt();
            const int suffix = query.value(1).toInt();
            query.prepare("INSERT INTO pending SELECT id, 0, '', ?, ? FROM song"_s);
            query.addBindValue(edited.mid(prefix, edited.size() - prefix - suffix));
            query.addBindValue(wholeSong());
            QVERIFY(query.exec());
            QVERIFY(query.exec("UPDATE song SET newHash = NULL"_s));
        }
        QSqlDatabase::removeDatabase(connection);
        write(name, edited.left(edited.size() / 2));
    }
};

void tst_CliHistory::readingChangesNothing_data()
{
    const Table<QString> row;
    const char *edit = R"("$cli" edit --title T s/a.mid s/b.mid >/dev/null; )";
    row("there is no journal", "");
    row("a journal", edit);
    const QString killed = QLatin1String(edit)
        + R"(ASAN_OPTIONS=detect_leaks=0 strace -f -o /dev/null -e trace=fsync,fdatasync,syncfs \
          -e inject=fsync,fdatasync,syncfs:signal=KILL:when=3 "$cli" edit --title U s/a.mid; )"_s;
    row("a killed run left a log beside the journal", killed + "[ -s $j-wal ]; "_s);
    row("a killed run left a log without its index", killed + "[ -s $j-wal ]; rm $j-shm; "_s);
    row("a journal that can't be written",
        QLatin1String(edit) + "chmod 400 $j; chmod 500 ${j%/*}; "_s);
    row("a damaged journal", QLatin1String(edit) + "truncate -s 9999 $j; "_s);
    row("a journal of zeros", QLatin1String(edit) + "head -c 99999 /dev/zero >$j; "_s);
}

void tst_CliHistory::readingChangesNothing()
{
    const auto [setup] = cells<QString>();
    if (setup.contains("strace"_s) && !canTrace())
        QSKIP("processes can't be traced here");
    shell("cp s/a.mid s/AZZURRO.mid; j='%1'; "_s.arg(journal()) + setup);
    if (setup.contains("strace"_s))
        QVERIFY(QFileInfo(journal() + "-wal"_s).size() > 0);
    const QByteArray before = everything();
    QVERIFY(!before.isEmpty());
    for (const char *command :
         {"history", "history --json --limit 1", "undo --dry-run", "undo --dry-run 1",
          "restore --dry-run --from old s/a.mid", "sync --dry-run --catalogue c.db s/AZZURRO.mid",
          "info s/a.mid", "catalogue --catalogue c.db --genres"}) {
        const Run run = cli(command);
        QVERIFY2(everything() == before, command);
        if (setup.contains("title T"_s) && !setup.contains("$j; "_s))
            VERIFY_STATUS(run, 0);
        if (setup.contains("title T"_s) && QByteArray(command) == "history")
            QCOMPARE(run.out.count("run: 1\n"),
                     setup.contains("-s 9999"_s) || setup.contains("zero"_s) ? 0 : 1);
    }
}

void tst_CliHistory::saysOnceWhatIsWrongWithIt_data()
{
    const Table<QString, QString, QString> row; // what is said, of the next command too
    const QString aside = "It was set aside as "_s;
    row("a damaged journal is set aside", "head -c 9000 /dev/urandom >$j", "is damaged. "_s + aside,
        "");
    row("one that was cut off is set aside", "truncate -s 20000 $j", "is damaged. "_s + aside, "");
    row("one of zeros is set aside", "head -c 50000 /dev/zero >$j", "is damaged. "_s + aside, "");
    row("one of a newer version is set aside",
        "printf '\\0\\0\\0\\143' | dd of=$j bs=1 seek=60 conv=notrunc",
        "newer version of the program. "_s + aside, "");
    row("one that can't be made", "mv ${j%/*} s/away; : >${j%/*}", "can't be written (",
        "can't be written (");
    row("a folder in its place", "rm $j; mkdir $j", "journal.db can't be ", "journal.db can't be ");
    row("an empty file is as good as none", ": >$j", "", "");
    row("none is made again", "rm -r ${j%/*}", "", "");
}

void tst_CliHistory::saysOnceWhatIsWrongWithIt()
{
    const auto [setup, first, second] = cells<QString, QString, QString>();
    cli("edit --title T s/a.mid");
    shell("j='%1'; "_s.arg(journal()) + setup);
    for (const QString &message : {first, second}) {
        const QByteArray before = read("s/a.mid");
        const Run run = cli(message == first ? "edit --quiet --title Umore s/a.mid"
                                             : "edit --quiet --title V s/a.mid");
        VERIFY_STATUS(run, 0); // the command goes on
        QVERIFY(read("s/a.mid") != before);
        QCOMPARE(run.err.count('\n'), message.isEmpty() ? 0 : 1);
        QVERIFY2(run.err.contains(message.toUtf8()), run.err.constData());
        if (message.contains("aside"_s)) {
            const QString aside =
                QString::fromUtf8(run.err).section("aside as "_s, 1).section(".db:"_s, 0, 0);
            QVERIFY2(QFile::exists(aside + ".db"_s), qPrintable(aside));
        }
        if (first == second)
            break;
    }
    if (second.isEmpty())
        VERIFY_STATUS(cli("undo"), 0);
}

void tst_CliHistory::showsTwoProgramsAtOnce()
{
    if (!canTrace())
        QSKIP("processes can't be traced here");
    const Run run = shell(R"(for i in {1..9}; do mkdir s/$i; cp s/a.mid s/$i/AZZURRO.mid; done
        # stopped at the first byte of a song, until the other program has begun and ended
        ASAN_OPTIONS=detect_leaks=0 strace -f -o trace -P "$PWD/s/5/AZZURRO.mid" -e trace=write,pwrite64,writev \
          -e inject=write,pwrite64,writev:signal=STOP:when=1 \
          "$cli" sync --no-backup --catalogue c.db "$PWD"/s/?/AZZURRO.mid >synced 2>said & pid=$!
        until grep -q 'stopped by' trace 2>/dev/null || ! kill -0 $pid; do sleep .02; done
        "$cli" edit --title T s/b.mid >/dev/null; echo $?
        kill -0 $pid && echo lives; kill -CONT $(awk '{ print $1; exit }' trace); wait $pid; echo $?; cat said)");
    QCOMPARE(run, (Run{0, "0\nlives\n0\n", ""}));
    QCOMPARE(read("synced").count("status: updated"), 9);
    QVariantList what = historyOf("what");
    QVERIFY(what == (QVariantList{"edit"_s, "sync"_s})
            || what == (QVariantList{"sync"_s, "edit"_s}));
    for (const QString &id : {"1"_s, "2"_s})
        VERIFY_STATUS(cli("undo "_s + id), 0);
    for (const char *song : {"s/b.mid", "s/1/AZZURRO.mid", "s/9/AZZURRO.mid"})
        QCOMPARE(read(song), wholeSong());
    QVERIFY(QDir(QFileInfo(journal()).path()).entryList({"*.lock"_s}).isEmpty());
}

QTEST_GUILESS_MAIN(tst_CliHistory)
#include "tst_clihistory.moc"
