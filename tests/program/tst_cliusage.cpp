#include "tests/program/programtest.h"
#include "tests/program/unixrows.h"

using namespace tarvel4;
using namespace Fixtures;

/** The conventions that every command shares: options, help, languages, exit statuses, streams. */
class tst_CliUsage : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder();
        write("a.mid", wholeSong());
    }

    void saysItsVersion() { QCOMPARE(cli("--version"), (Run{0, "tarvel4soft-cli 1.0\n", ""})); }

    void helpNamesEveryCommandAndOption()
    {
        for (const char *word : {"-h", "--help"}) {
            const Run run = cliWith({QLatin1String(word)});
            VERIFY_STATUS(run, 0);
            QCOMPARE(run.err, QByteArray());
            for (const char *name : {"\n  info ",        "\n  edit ",
                                     "\n  sync ",        "\n  history ",
                                     "\n  undo ",        "\n  restore ",
                                     "\n  backup ",      "\n  transfer ",
                                     "\n  index ",       "\n  list ",
                                     "\n  extract ",     "\n  catalogue ",
                                     "--catalogue FILE", "--log",
                                     "--quiet",          "--verbose",
                                     "--json",           "--help",
                                     "--version",        "\nExamples:\n  tarvel4soft-cli sync ",
                                     "\n  3  "}) {
                QVERIFY2(run.out.contains(name), name);
            }
        }
    }

    void helpOfACommand_data()
    {
        const Table<QStringList> row;
        row("info", "--fields --csv --recursive --files-from --null PATH...");
        row("history", "[clear] --limit");
        row("undo", "[RUN] --dry-run");
        row("restore", "--from --dry-run --recursive --files-from --null PATH...");
        row("edit",
            "PATH... --files-from --null --title --artist --genre --author --length --bpm --key "
            "--title-from-name "
            "--add-marker");
        row("sync",
            "--backup --no-backup --unpublished ask|yes|no --dry-run --recursive --files-from");
        row("backup", "--to --recursive");
        row("transfer", "--to --memory --overwrite --recursive");
        row("index", "update rebuild verify delete ROOT");
        row("list", "--order title|artist|genre --output ROOT");
        row("extract", "--output SONG");
        row("catalogue", "--name --title --genres --artists");
    }
    void helpOfACommand()
    {
        const auto [options] = cells<QStringList>();
        const QByteArray command = QTest::currentDataTag();
        for (const char *word : {"-h", "--help"}) {
            const Run run = cliWith({QString::fromLatin1(command), QLatin1String(word)});
            VERIFY_STATUS(run, 0);
            QVERIFY(run.out.contains("tarvel4soft-cli " + command));
            for (const QString &option : options)
                QVERIFY2(run.out.contains(option.toUtf8()), qPrintable(option));
            QVERIFY(run.out.contains("--json"));
            QVERIFY(run.out.contains("\nExamples:\n  tarvel4soft-cli " + command));
            QVERIFY(run.out.contains("\n  141  "));
        }
    }

    void helpOfAnAction_data()
    {
        const Table<QByteArray> row; // how its help begins
        row("index update --help", "Usage: tarvel4soft-cli index update [OPTION]... ROOT\nBrings ");
        row("index rebuild -h", "Usage: tarvel4soft-cli index rebuild [OPTION]... ROOT\nBuilds ");
        row("index --help verify", "Usage: tarvel4soft-cli index verify [OPTION]... ROOT\nChecks ");
        row("index delete --help .",
            "Usage: tarvel4soft-cli index delete [OPTION]... ROOT\nRemoves ");
        row("index renew --help", "Usage: tarvel4soft-cli index [OPTION]... (update|");
        row("info update --help", "Usage: tarvel4soft-cli info [OPTION]... PATH...\n");
    }
    void helpOfAnAction()
    {
        const auto [beginning] = cells<QByteArray>();
        const Run run = cli(QTest::currentDataTag());
        VERIFY_STATUS(run, 0);
        QVERIFY2(run.out.startsWith(beginning), run.out.constData());
        QVERIFY(run.out.contains("\nExamples:\n  tarvel4soft-cli i"));
    }

    void acceptsOptionsInEveryForm_data()
    {
        const Table<QString, QByteArray> row;
        const QByteArray record = R"({"path":"a.mid",)" + wholeRecord("a.mid") + "}\n";
        row("after the command", R"("$cli" info --json a.mid)", record);
        row("after the paths", R"("$cli" info a.mid --json)", record);
        row("ahead of the command", R"("$cli" --json info a.mid)", record);
        row("shortened", R"("$cli" info --js --recu a.mid)", record);
        row("shortened, ahead of the command", R"("$cli" --js info a.mid)", record);
        row("shortened, with a value",
            R"x("$cli" edit --genr=Altro --art Altri a.mid | grep -E "^(artist|genre)")x",
            "artist: Altri\ngenre: Altro\n");
        row("given twice", R"("$cli" --json info --json a.mid)", record);
        row("two hyphens end the options", R"(cp a.mid -- -rf.mid; "$cli" info --json -- -rf.mid)",
            R"({"path":"-rf.mid",)" + wholeRecord("-rf.mid") + "}\n");
        row("two hyphens after a path end them too",
            R"(cp a.mid ./--json; "$cli" info --json -- --json)",
            R"({"path":"--json",)" + wholeRecord("--json") + "}\n");
        row("a lone hyphen is a path", R"(cp a.mid -- -; "$cli" info --json -)",
            R"({"path":"-",)" + wholeRecord("-") + "}\n");
        row("a value as a word of its own", R"("$cli" edit --json --title "Bella Ciao" a.mid)",
            record);
        row("a value after an equals sign", R"("$cli" edit --json --title="Bella Ciao" a.mid)",
            record);
        row("of a value given twice the last counts",
            R"("$cli" edit --json --title=x --title="Bella Ciao" a.mid)", record);
        row("a value may begin with hyphens", R"("$cli" edit --title --json a.mid | grep ^title)",
            "title: --json\n");
        row("a value may hold an equals sign", R"("$cli" edit --title=a=b a.mid | grep ^title)",
            "title: a=b\n");
    }
    void acceptsOptionsInEveryForm()
    {
        const auto [line, out] = cells<QString, QByteArray>();
        QCOMPARE(shell(line), (Run{0, out, ""}));
    }

    void refusesWrongUsage_data()
    {
        const Table<QString, QByteArray> row;
        row("no command", "", "");
        row("an unknown command", "play a.mid", "play");
        row("an unknown option", "info --bogus a.mid", "--bogus");
        row("an unknown option ahead of the command", "--bogus info a.mid", "--bogus");
        row("an unknown short option", "info -x a.mid", "-x");
        row("another command's option", "info --title x a.mid", "--title");
        row("a shortened option that could be two", "edit --title= --a=x a.mid",
            "ambiguous option: --a=x");
        row("a shortened option with one hyphen", "info -recurs a.mid", "-recurs");
        row("a shortened option with more to it", "info --recursively a.mid", "--recursively");
        row("nothing but hyphens and a value", "info --=x a.mid", "--=x");
        row("a flag with a value", "info --json=yes a.mid", "--json");
        row("a missing value", "edit a.mid --title", "--title");
        row("an empty path as a value", "list --output '' .", "--output");
        row("an empty path after an equals sign", "--catalogue= catalogue --genres", "--catalogue");
        row("a word that is none of the choices", "sync --no-backup --unpublished maybe a.mid",
            "--unpublished");
        row("a text that is not UTF-8", R"x(edit --title "$(printf 'a\377')" a.mid)x", "--title");
        row("index without a job", "index", "index");
        row("index with a job unknown", "index renew .", "index");
        row("two roots for a list", "list . .", "list");
        row("two songs for an extract", "extract a.mid a.mid", "extract");
    }
    void refusesWrongUsage()
    {
        const auto [line, message] = cells<QString, QByteArray>();
        const Run run = cli(line + QLatin1Char('\n'));
        VERIFY_STATUS(run, 2);
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(run.err.contains(message) && run.err.startsWith("tarvel4soft-cli: "),
                 run.err.constData());
        QCOMPARE(read("a.mid"), wholeSong());
    }

    void speaksTheLanguageOfTheLocale_data()
    {
        const Table<QByteArray> row;
        const QByteArray italian = "tarvel4soft-cli: a.mid: non è una song .mf3, .mf4 o .mf5\n";
        const QByteArray english = "tarvel4soft-cli: a.mid: it is no .mf3, .mf4 or .mf5 song\n";
        row("LC_ALL=it_IT.UTF-8", italian);
        row("LC_ALL= LANG=it_CH.UTF-8", italian);
        row("LC_ALL= LANG=en_US.UTF-8 LC_MESSAGES=it_IT.UTF-8", italian);
        row("LC_ALL=it_IT.ISO-8859-1", italian);
        row("LC_ALL=de_DE.UTF-8", english);
        row("LC_ALL=C", english);
        row("LC_ALL= LANG=it_IT.UTF-8 LC_MESSAGES=en_US.UTF-8", english);
    }
    void speaksTheLanguageOfTheLocale()
    {
        const auto [message] = cells<QByteArray>();
        const Run run =
            shell("unset LANGUAGE LC_MESSAGES; "_s + QString::fromUtf8(QTest::currentDataTag())
                  + " \"$cli\" extract a.mid"_s);
        QCOMPARE(run.err, message);
        VERIFY_STATUS(run, 1);
    }

    void keepsFileNamesInEveryLocale()
    {
        const QString name = QStringLiteral("citt\u00E0 \u4E2D.mid");
        write(name, wholeSong());
        for (const char *locale : {"C", "POSIX", "C.UTF-8", "it_IT.ISO-8859-1", "no_such_locale"}) {
            Program inLocale = program();
            inLocale.setEnvironment("LC_ALL"_s, QString::fromUtf8(locale));
            for (const QString &argument : {name, "."_s}) {
                const Run run =
                    inLocale.run(words("info --json --recursive") + QStringList(argument));
                QVERIFY2(run.out.contains(R"("name":"città 中.mid","format":"MIDI")"), locale);
                VERIFY_STATUS(run, 0);
            }
        }
    }

    void writesALogOnlyWhenAsked()
    {
        cli("info a.mid");
        QVERIFY(!QFile::exists(path("log.txt")));

        QCOMPARE(cli("info --log --recursive .").err, QByteArray());
        const QByteArray lines = read("log.txt");
        QVERIFY(lines.contains("Log start"));
        QVERIFY(lines.contains("]D| [scanDir] Found file: \"./a.mid\"\n"));
    }

    void saysThatOutputCannotBeWritten_data()
    {
        const Table<QString> row;
        row("a full disk, records", R"("$cli" info --json a.mid >/dev/full)");
        row("a full disk, help", R"("$cli" --help >/dev/full)");
        row("a full disk, a list", R"("$cli" catalogue --catalogue c.db --genres >/dev/full)");
        row("a closed stream", R"("$cli" info --json a.mid >&-)");
        row("all streams closed, and the catalogue is not written instead",
            R"("$cli" catalogue --catalogue c.db --genres <&- >&-)");
    }
    void saysThatOutputCannotBeWritten()
    {
        const auto [line] = cells<QString>();
        QVERIFY(writeCatalogue(path("c.db")));
        const QByteArray catalogue = read("c.db");
        QCOMPARE(shell(line), (Run{3, "", "tarvel4soft-cli: the output can't be written\n"}));
        QCOMPARE(read("c.db"), catalogue);
    }

    void endsSilentlyOnAClosedPipe_data()
    {
        const Table<QString, QByteArray> row; // what a song then holds
        row("info", R"("$cli" info --json $(yes a.mid | head -4000))", "");
        row("help", R"("$cli" --help)", "");
        row("a command's help", R"("$cli" info --help)", "");
        row("the version", R"("$cli" --version)", "");
        row("a list of the catalogue", R"("$cli" catalogue --catalogue c.db --genres)", "");
        row("a song list", R"("$cli" list memory)", "");
        row("a song list, as records", R"("$cli" list --json memory)", "");
        row("a verification", R"(rm memory/a.mid; "$cli" index verify memory)", "");
        row("a dry run", R"("$cli" sync --dry-run --catalogue c.db $(yes a.mid | head -4000))", "");
        row("an edit, when the songs in hand are saved",
            R"("$cli" edit --title Nuova --json {1..900}.mid)", "title: Nuova\n");
        row("an undo, when the songs in hand are given back",
            R"("$cli" edit --title Nuova {9..1}.mid >/dev/null; "$cli" undo)", // 1.mid first
            "title: Bella Ciao\n");
        row("a restore, when the songs in hand are given back",
            R"("$cli" edit --title Nuova {1..9}.mid >/dev/null
               mkdir old; for i in {1..9}; do cp a.mid old/$i.mid; done
               "$cli" restore --from old {1..9}.mid)",
            "title: Bella Ciao\n");
        row("a synchronisation, when the songs in hand are saved",
            R"(for i in {1..9}; do mkdir d$i; cp a.mid d$i/AZZURRO.mid; done
               "$cli" sync --no-backup --catalogue c.db d?/AZZURRO.mid)",
            "artist: Primo\n");
    }
    void endsSilentlyOnAClosedPipe()
    {
        const auto [line, field] = cells<QString, QByteArray>();
        QVERIFY(writeCatalogue(path("c.db")));
        const bool isLong = line.contains("{1..900}"_s);
        QCOMPARE(shell("mkdir memory; cp a.mid memory; \"$cli\" index rebuild memory >/dev/null; "
                       "tee {1..%1}.mid <a.mid >/dev/null"_s.arg(isLong ? 900 : 9))
                     .status,
                 0);
        // The status of the last command is what counts, and the copy behind it changes nothing.
        const Run run = shell("set -o pipefail; mkfifo ready; { read -r _ <ready; %1\ns=$?; "
                              "[ -e d1 ] && cp d1/AZZURRO.mid 1.mid; exit $s; } | "
                              "{ exec <&-; echo >ready; }"_s.arg(line));
        QCOMPARE(run, (Run{141, "", ""}));
        if (!field.isEmpty())
            QVERIFY2(cli("info 1.mid").out.contains(field), cli("info 1.mid").out.constData());
        if (isLong) // one batch, and no further one
            QCOMPARE(cli("info 900.mid | grep ^title").out, QByteArray("title: Bella Ciao\n"));
    }

    void takesPathsFromAFile_data()
    {
        const Table<QString, int, QString, QByteArray> row; // status, paths, what is said
        row("one a line", R"(printf 'a.mid\nb c.mid\n' >l; "$cli" info --json --files-from l)", 0,
            "a.mid|b c.mid", "");
        row("the last line may lack its end",
            R"(printf 'a.mid\nb c.mid' >l; "$cli" info --json --files-from=l)", 0, "a.mid|b c.mid",
            "");
        row("a byte order mark is no part of a name",
            R"(printf '\357\273\277a.mid\n' >l; "$cli" info --json --files-from l)", 0, "a.mid",
            "");
#ifdef TARVEL4_WINDOWS_CLI
        row("a line ends as Windows ends it",
            R"(printf 'a.mid\r\n\r\nb c.mid\r\n' >l; "$cli" info --json --files-from l)", 0,
            "a.mid|b c.mid", "");
        row("wildcards are those of the command line alone",
            R"(cp a.mid d.mid; echo d.mid >l; "$cli" info --json --files-from l '?.mid' 'B*')", 0,
            "a.mid|d.mid|b c.mid|d.mid", "");
        row("a wildcard in a list is a letter", R"(echo '?.mid' >l; "$cli" info --files-from l)", 3,
            "", "?.mid: there is no");
        row("a backslash parts folders",
            R"(mkdir f; cp a.mid f; echo 'f\a.mid' >l; "$cli" info --json --files-from l '.\f\a.mid')",
            0, "./f/a.mid|f/a.mid", "");
#else
        row("a carriage return is a letter of a name",
            R"(cp a.mid $'n.mid\r'; printf 'n.mid\r\n' >l; "$cli" info --json --files-from l)", 0,
            "n.mid\r", "");
#endif
        row("empty lines are none", R"(printf '\na.mid\n\n' >l; "$cli" info --json --files-from l)",
            0, "a.mid", "");
        row("each ended by a zero byte",
            R"(cp a.mid $'n\nl.mid'; find . -name '*l.mid' -print0 |
               "$cli" info --json --null --files-from -)",
            0, "./n\nl.mid", "");
        row("from standard input", R"(ls *.mid | "$cli" info --json --files-from -)", 0,
            "a.mid|b c.mid", "");
        row("from a pipe with a name", R"("$cli" info --json --files-from <(ls *.mid))", 0,
            "a.mid|b c.mid", "");
        row("behind those of the command line",
            R"(echo a.mid >l; "$cli" info --json --files-from l 'b c.mid')", 0, "b c.mid|a.mid",
            "");
        row("from two files", R"(echo a.mid >l; echo 'b c.mid' >m
               "$cli" info --json --files-from l --files-from m)",
            0, "a.mid|b c.mid", "");
        row("hyphens are no options there", R"(cp a.mid ./--json; echo --json >l
               "$cli" info --json --files-from l)",
            0, "--json", "");
        row("folders too", R"(echo . >l; "$cli" info --json --recursive --files-from l)", 0,
            "./a.mid|./b c.mid", "");
        row("none at all is nothing to do", R"("$cli" info --json --files-from /dev/null)", 0, "",
            "");
        row("a missing song ends the command",
            R"(echo gone.mid >l; "$cli" info --files-from l a.mid)", 3, "",
            "gone.mid: there is no");
        row("a name that is not UTF-8", R"(printf 'a\377.mid\n' >l; "$cli" info --files-from l)", 3,
            "", "is not valid UTF-8");
        row("a list that is missing", R"("$cli" info --files-from gone a.mid)", 3, "",
            "gone: there is no such file");
        row("a folder in place of a list", R"("$cli" info --files-from . a.mid)", 3, "",
            ".: it is no file");
        row("--null alone is wrong usage", R"("$cli" info --null a.mid)", 2, "", "--files-from");
        row("a command without PATHs takes none", R"("$cli" history --files-from l)", 2, "",
            "--files-from");
        row("edit takes it", R"(echo a.mid | "$cli" edit --json --title T --files-from -)", 0,
            "a.mid", "");
        row("sync takes it", R"(echo a.mid | "$cli" sync --json --dry-run --files-from -)", 0,
            "a.mid", "");
        row("restore takes it",
            R"(mkdir o; cp a.mid o; echo a.mid | "$cli" restore --json --from o --files-from -)", 0,
            "a.mid", "");
        row("backup takes it",
            R"(mkdir o; echo a.mid | "$cli" backup --quiet --to o --files-from - >/dev/null
               ls o/*)",
            0, "", "");
        row("transfer takes it", R"(mkdir -p m/o; echo a.mid | "$cli" transfer --quiet --to m/o \
               --memory m --files-from - >/dev/null && ls m/o)",
            0, "", "");
    }
    void takesPathsFromAFile()
    {
        const auto [line, status, paths, message] = cells<QString, int, QString, QByteArray>();
        write("b c.mid", wholeSong());
        const Run run = shell(line);
        VERIFY_STATUS(run, status);
        if (message.isEmpty())
            QCOMPARE(run.err, QByteArray());
        QVERIFY2(run.err.contains(message), run.err.constData());
        if (run.out == "a.mid\n") // of ls
            return;
        QCOMPARE(run.texts("path").join(QLatin1Char('|')), paths);
    }

    void canBeInterruptedWhileItWaitsForPaths()
    {
        const Run run = shell(R"(mkfifo paths; exec 9<>paths
                                 "$cli" info --files-from - <paths & pid=$!
                                 # until it catches SIGTERM, the 15th bit
                                 until grep -qs '^SigCgt:.*[4-7c-f]...$' /proc/$pid/status; do sleep .02; done
                                 kill -TERM $pid; wait $pid)");
        QCOMPARE(run, (Run{130, "", ""}));
    }
};

QTEST_GUILESS_MAIN(tst_CliUsage)
#include "tst_cliusage.moc"
