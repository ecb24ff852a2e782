#include "tests/program/programtest.h"
#include "tests/program/unixrows.h"

using namespace tarvel4;
using namespace Fixtures;

/** What --verbose adds on standard error, and that it changes nothing else. */
class tst_CliVerbose : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder("card/SONGS old u");
        write("AZZURRO.mid", wholeSong());
        write("b.mid", wholeSong());
        write("u/AZZURRO.mid", midi(meta(0x02, "(c) somebody")));
        QVERIFY(writeCatalogue(path("c.db")));
    }

    void tellsOfEachFile_data()
    {
        const Table<QString, QByteArray> row; // what goes ahead, what is said (@: the folder)
        const char *none = "true";
        row("info -v b.mid", none, "b.mid: read\n");
        row("-v info b.mid", none, "b.mid: read\n");
        row("info --verbose --quiet b.mid AZZURRO.mid", none, "b.mid: read\nAZZURRO.mid: read\n");
        row("info --verb --json b.mid", none, "b.mid: read\n");
        row("edit -v --title T b.mid", none, "b.mid: saved\n");
        row("sync -v --no-backup --unpublished yes --catalogue c.db AZZURRO.mid b.mid", none,
            "AZZURRO.mid: saved\nb.mid: the catalogue does not have it\n");
        row("sync -v --dry-run --unpublished yes --catalogue c.db AZZURRO.mid", none,
            "AZZURRO.mid: to be saved\n");
        row("sync -v --dry-run --unpublished no --catalogue c.db u/AZZURRO.mid", none,
            "u/AZZURRO.mid: not published by K-Varo, left as it was\n");
        row("undo -v --dry-run", R"("$cli" edit --title T b.mid)", "@b.mid: to be restored\n");
        row("undo -v", R"("$cli" edit --title T b.mid)", "@b.mid: restored\n");
        row("restore -v --from old b.mid", "cp AZZURRO.mid old/b.mid", "b.mid: restored\n");
        row("backup -v --to old b.mid", none, "b.mid: copied\n");
        row("transfer -v --quiet --to card/SONGS --memory card b.mid AZZURRO.mid",
            "cp b.mid card/SONGS", "b.mid: exists already, not copied\nAZZURRO.mid: copied\n");
        row("index update -v card", "cp b.mid card/SONGS", "@card/SONGS/b.mid: examined\n");
        row("index delete -v card", none, "card: there is no index now\n");
        row("list -v --output l.csv card", R"(cp b.mid card; "$cli" index rebuild card)",
            "l.csv: written\n");
        row("extract -v --output s.mid s.mf3", "cp " TARVEL4_SAMPLES "/FRAMARTI.mf3 s.mf3",
            "s.mid: written\n");
    }
    void tellsOfEachFile()
    {
        const auto [setup, said] = cells<QString, QByteArray>();
        VERIFY_STATUS(shell(setup), 0);
        const Run run = cli(QTest::currentDataTag());
        QVERIFY2(run.status < 2, run.err.constData());
        for (QByteArray line : said.split('\n')) {
            line.replace('@', path().toUtf8() + '/');
            QVERIFY2(line.isEmpty() || run.err.contains("tarvel4soft-cli: " + line + '\n'),
                     run.err.constData());
        }
        QVERIFY2(run.err.count('\n') >= said.count('\n'), run.err.constData());
    }

    void addsTheSystemsOwnWords_data()
    {
        const Table<QString, QByteArray> row; // the line, what is said behind the cause
        row("a file above the limit of its user",
            R"(truncate -s 1000 b.mid; ulimit -f 1
               "$cli" edit --quiet -v --title $(printf %0120d 0) b.mid)",
            "b.mid: the system refused b.mid: File too large (error 27)\n");
        row("a name with a percent sign, above the limit",
            R"(truncate -s 1000 b.mid; mv b.mid b%1.mid; ulimit -f 1
               "$cli" edit --quiet -v --title $(printf %0120d 0) b%1.mid)",
            "b%1.mid: the system refused b%1.mid: File too large (error 27)\n");
        row("a file that the system had no part in", R"(echo text >t.mid; "$cli" info -v t.mid)",
            "");
        row("without the option", R"(truncate -s 1000 b.mid; ulimit -f 1
                                     "$cli" edit --quiet --title $(printf %0120d 0) b.mid)",
            "");
    }
    void addsTheSystemsOwnWords()
    {
        const auto [line, detail] = cells<QString, QByteArray>();
        const Run run = shell(line);
        VERIFY_STATUS(run, 1);
        const QByteArray said = run.saidOfSongs();
        QCOMPARE(said.mid(said.indexOf('\n') + 1),
                 detail.isEmpty() ? QByteArray() : "tarvel4soft-cli: " + detail);
    }

    void leavesTheRecordsAsTheyAre_data()
    {
        const Table<QString> row; // what is told without the option
        row("info --json", "b.mid t.mid AZZURRO.mid");
        row("sync --dry-run --catalogue c.db", "AZZURRO.mid t.mid b.mid");
        row("index verify", "card");
        row("list --json", "card");
        row("history --json", "");
        row("catalogue --catalogue c.db", "--genres");
    }
    void leavesTheRecordsAsTheyAre()
    {
        const auto [arguments] = cells<QString>();
        write("t.mid", "text");
        VERIFY_STATUS(cli("index rebuild card"), 0);
        const QString command = QString::fromUtf8(QTest::currentDataTag());
        const Run usual = cli(command + QLatin1Char(' ') + arguments);
        const Run verbose = cli(command + " -v "_s + arguments);
        QCOMPARE(verbose.out, usual.out);
        VERIFY_STATUS(verbose, usual.status);
        for (const QByteArray &line : usual.err.split('\n'))
            QVERIFY2(verbose.err.contains(line), verbose.err.constData());
    }

    void leavesShortenedNamesAsTheyWere_data()
    {
        const Table<QByteArray> row;
        row("--ver", "tarvel4soft-cli 1.0\n");
        row("--v", "tarvel4soft-cli 1.0\n");
        row("--version -v", "tarvel4soft-cli 1.0\n");
        row("info --ve", "tarvel4soft-cli 1.0\n");
    }
    void leavesShortenedNamesAsTheyWere()
    {
        const auto [out] = cells<QByteArray>();
        QCOMPARE(cli(QTest::currentDataTag()), (Run{0, out, ""}));
    }
};

QTEST_GUILESS_MAIN(tst_CliVerbose)
#include "tst_cliverbose.moc"
