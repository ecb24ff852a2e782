#include "tests/program/programtest.h"
#include "tests/program/unixrows.h"

using namespace tarvel4;
using namespace Fixtures;

/** The program on a terminal: questions, progress, Ctrl-C. */
class tst_CliTerminal : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!hasTool("script"_s))
            QSKIP("the program script, which gives a terminal, is not installed");
    }

    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder("1 2 3 mem/Pop");
        m_unpublished = midi(meta(0x02, "(c) somebody"));
        for (const char *song : {"1/azzurro.mid", "2/azzurro.mid", "3/azzurro.mid"})
            write(song, m_unpublished);
        write("0.mid", wholeSong());
        QVERIFY(writeCatalogue(path("c.db")));
    }

    void showsProgressInOneLine()
    {
        const Run run = onTerminal("stty cols 30; \"$cli\" info --json --recursive . >out.json"_s);
        VERIFY_STATUS(run, 0);
        QVERIFY2(run.out.contains("0 of 4"), run.out.constData());
        QVERIFY2(run.out.contains("4 of 4, "), run.out.constData());
        QVERIFY(!run.out.contains('\n'));
        for (const QByteArray &line : run.out.split('\r'))
            QVERIFY2(line.size() < 30, line.constData());
        QCOMPARE(shown(run.out).trimmed(), QByteArray());
        QVERIFY(run.out.endsWith('\r'));
        QVERIFY(!run.out.contains('\033')); // a terminal may know no escape sequences
        QCOMPARE(read("out.json").count('\n'), 4);
    }

    void showsNoProgressWhereNobodyWantsIt()
    {
        for (const char *line : {R"("$cli" info --quiet --json 0.mid >out.json)",
                                 R"("$cli" info --json 0.mid >out.json 2>err)"}) {
            const Run run = onTerminal(QString::fromUtf8(line));
            QCOMPARE(run.out, QByteArray());
            VERIFY_STATUS(run, 0);
        }
        QCOMPARE(read("err"), QByteArray());
    }

    void asksAboutSongsOfOthers_data()
    {
        const Table<QString, QStringList, int> row; // answers, folders of the updated songs, status
        row("yes, no, yes", "y,n,yes", "1 3", 1);
        row("yes to all", "a", "1 2 3", 0);
        row("no, then yes to all", "n,a", "2 3", 1);
        row("no to all", "o", "", 1);
        row("yes, then no to all", "y,no to all", "1", 1);
        row("in Italian", "s,no,sì", "1 3", 1);
        row("anything else is asked again", "maybe,,YES,q,n,N", "1", 1);
        row("the end of input is a no to all", "y,\004", "1", 1);
        row("Ctrl-C at the first question stops", "\003", "", 130);
        row("Ctrl-C at the second question stops before the second song", "y,\003", "1", 130);
    }
    void asksAboutSongsOfOthers()
    {
        const auto [answers, updated, status] = cells<QString, QStringList, int>();
        QStringList keys;
        for (const QString &answer : answers.split(QLatin1Char(',')))
            keys += "[o] no to all: \t"_s + answer + (answer == QChar(3) ? QString() : "\r"_s);
        const Run run = onTerminal(
            "\"$cli\" sync --no-backup --catalogue c.db [123]/azzurro.mid >/dev/null"_s, keys);
        QVERIFY2(run.out.contains("azzurro.mid: "), run.out.constData());
        QCOMPARE(run.out.count("[o] no to all: "), keys.size());
        QCOMPARE(updatedSongs(), updated);
        VERIFY_STATUS(run, status);
    }

    void asksNobodyWhoseQuestionsGoElsewhere()
    {
        const Run run = onTerminal("timeout 20 \"$cli\" sync --no-backup --catalogue c.db "
                                   "[123]/azzurro.mid >/dev/null 2>err"_s);
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(read("err"), QByteArray());
        QCOMPARE(updatedSongs(), QStringList());
        VERIFY_STATUS(run, 1);
    }

    void asksBeforeItReplacesASong_data()
    {
        const Table<QString, QStringList, bool> row;
        const QString question = "[o] no to all: \t%1\r"_s;
        row("yes", "", QStringList{question.arg(QLatin1Char('y'))}, true);
        row("no", "", QStringList{question.arg(QLatin1Char('n'))}, false);
        row("not asked, yes by option", "--overwrite yes", QStringList(), true);
        row("not asked, no by option", "--overwrite no", QStringList(), false);
    }
    void asksBeforeItReplacesASong()
    {
        const auto [option, keys, isReplaced] = cells<QString, QStringList, bool>();
        write("mem/Pop/0.mid", "old");
        const Run run = onTerminal(
            "\"$cli\" transfer --memory mem --to mem/Pop %1 0.mid >/dev/null"_s.arg(option), keys);
        VERIFY_STATUS(run, 0);
        QCOMPARE(run.out.contains("[o] no to all: "), !keys.isEmpty());
        QCOMPARE(read("mem/Pop/0.mid") != "old", isReplaced);
    }

    void asksWhichOfTwoSongsABackupHolds()
    {
        write("2/azzurro.mid", "the second");
        const Run run = onTerminal("\"$cli\" backup --to mem [12]/azzurro.mid >/dev/null && cmp "
                                   "mem/backup_kvaro_*/azzurro.mid 2/azzurro.mid"_s,
                                   {"[o] no to all: \ty\r"_s});
        VERIFY_STATUS(run, 0);
    }

    void writesEachRecordAtOnce()
    {
        // Ctrl-\ ends the program on the spot: what was only buffered would be lost.
        const Run run = onTerminal(
            "\"$cli\" sync --json --no-backup --catalogue c.db 0.mid 1/azzurro.mid >out.json"_s,
            {QStringLiteral("[o] no to all: \t\034")});
        QVERIFY(run.status != 0);
        const QByteArray written = read("out.json");
        QVERIFY2(written.startsWith(R"({"path":"0.mid","status":"not-found",)")
                     && written.endsWith("}\n"),
                 written.constData());
    }

    void finishesTheRecordInHandOnATerminationSignal()
    {
        const Run run = shell(R"(mkfifo pipe
                               "$cli" info --json $(yes 0.mid | head -20000) >pipe & pid=$!
                               { IFS= read -r line; kill -TERM $pid; cat >rest; } <pipe
                               wait $pid; s=$?
                               case $(tail -c 2 rest) in '' | '}') ;; *) exit 99 ;; esac
                               [ $(wc -l <rest) -lt 19999 ] && exit $s)");
        QCOMPARE(run.err, QByteArray());
        VERIFY_STATUS(run, 130);
    }

    void leavesABackgroundJobAlone()
    {
        // The shell has a job in its background ignore Ctrl-C, and so it goes on.
        const Run run = shell(R"(mkfifo pipe
                               "$cli" info --json $(yes 0.mid | head -2000) >pipe & pid=$!
                               { IFS= read -r line; kill -INT $pid; cat >rest; } <pipe
                               wait $pid && wc -l <rest)");
        QCOMPARE(run.out, QByteArray("1999\n"));
        VERIFY_STATUS(run, 0);
    }

    void listsTitlesWithoutTheirEscapeSequences_data()
    {
        const Table<QByteArray, QByteArray> row; // the last line in a pipe, and on a terminal
        row("list mem", "A\033[2JB;<UNKNOWN>;/a.mid;\n", "A\\u001b[2JB;<UNKNOWN>;/a.mid;\r\n");
        row("info --csv --fields title mem/a.mid", "a\033[2Jb,,\n", "a\\u001b[2Jb,,\r\n");
    }
    void listsTitlesWithoutTheirEscapeSequences()
    {
        const auto [piped, shown] = cells<QByteArray, QByteArray>();
        const QString command = "\"$cli\" "_s + QString::fromUtf8(QTest::currentDataTag());
        write("mem/a.mid", midi(meta(0x03, "a\033[2Jb")));
        VERIFY_STATUS(cli("index rebuild mem"), 0);
        QCOMPARE(shell(command + " | tail -n1"_s).out, piped);
        const Run run = onTerminal(command);
        QVERIFY2(run.out.contains(shown), run.out.constData());
    }

    void coloursWhereTheyAreWelcome_data()
    {
        const Table<QString, QByteArray> row; // what is printed
        const QByteArray coloured = "\033[36mtitle:\033[0m Bella Ciao\r\n";
        const QByteArray plain = "title: Bella Ciao\r\n";
        row("keys of a record", "TERM=xterm NO_COLOR= \"$cli\" info 0.mid", coloured);
        row("none with NO_COLOR", "TERM=xterm NO_COLOR=1 \"$cli\" info 0.mid", plain);
        row("none on a dumb terminal", "TERM=dumb NO_COLOR= \"$cli\" info 0.mid", plain);
        row("none on a terminal unknown", "TERM= NO_COLOR= \"$cli\" info 0.mid", plain);
        row("none in JSON", "TERM=xterm NO_COLOR= \"$cli\" info --json 0.mid",
            R"(,"title":"Bella Ciao",)");
        row("none in a pipe", "TERM=xterm NO_COLOR= \"$cli\" info 0.mid | cat", plain);
        row("headings of help", "TERM=xterm NO_COLOR= \"$cli\" --help",
            "\033[1mCommands:\033[0m\r\n");
        row("plain headings with NO_COLOR", "TERM=xterm NO_COLOR=1 \"$cli\" --help",
            "\nCommands:\r\n");
    }
    void coloursWhereTheyAreWelcome()
    {
        const auto [line, printed] = cells<QString, QByteArray>();
        const Run run = onTerminal(line);
        QVERIFY2(run.out.contains(printed), run.out.constData());
        const bool isColoured = printed.startsWith('\033');
        QCOMPARE(run.out.contains('\033'), isColoured);
    }

private:
    Run onTerminal(const QString &line, const QStringList &keys = {}) const
    {
        return program().terminal(line, keys);
    }
    /** What stands in a terminal's line after \a bytes. */
    static QByteArray shown(const QByteArray &bytes)
    {
        QByteArray line;
        for (const QByteArray &part : bytes.split('\r'))
            line = part + line.mid(part.size());
        return line;
    }
    /** The folders of the songs that are not what they were. */
    QStringList updatedSongs() const
    {
        QStringList updated;
        for (const char *song : {"1/azzurro.mid", "2/azzurro.mid", "3/azzurro.mid"}) {
            if (read(song) != m_unpublished)
                updated += QString::fromUtf8(song).left(1);
        }
        return updated;
    }

    QByteArray m_unpublished;
};

QTEST_GUILESS_MAIN(tst_CliTerminal)
#include "tst_cliterminal.moc"
