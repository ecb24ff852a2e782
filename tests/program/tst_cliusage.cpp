#include "tests/program/programtest.h"

using namespace tarvel4;
using namespace Fixtures;

/** The conventions that every command shares: options, help, languages, exit statuses, streams. */
class tst_CliUsage : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        makeFolder();
        write("a.mid", wholeSong());
    }

    void saysItsVersion() { QCOMPARE(cli("--version"), (Run{0, "tarvel4soft-cli 1.0\n", ""})); }

    void helpNamesEveryCommandAndOption()
    {
        for (const char *word : {"-h", "--help"}) {
            const Run run = cliWith({QLatin1String(word)});
            QCOMPARE(run.status, 0);
            QCOMPARE(run.err, QByteArray());
            for (const char *name :
                 {"\n  info ", "\n  edit ", "\n  sync ", "\n  backup ", "\n  transfer ",
                  "\n  index ", "\n  list ", "\n  extract ", "\n  catalogue ", "--catalogue FILE",
                  "--log", "--quiet", "--json", "--help", "--version"}) {
                QVERIFY2(run.out.contains(name), name);
            }
        }
    }

    void helpOfACommand_data()
    {
        const Table<QStringList> row;
        row("info", "--recursive PATH...");
        row("edit",
            "--title --artist --genre --author --length --bpm --key --title-from-name "
            "--add-marker");
        row("sync", "--backup --no-backup --unpublished ask|yes|no --dry-run --recursive");
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
            QCOMPARE(run.status, 0);
            QVERIFY(run.out.contains("tarvel4soft-cli " + command));
            for (const QString &option : options)
                QVERIFY2(run.out.contains(option.toUtf8()), qPrintable(option));
            QVERIFY(run.out.contains("--json"));
        }
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
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(run.err.contains(message) && run.err.startsWith("tarvel4soft-cli: "),
                 run.err.constData());
        QCOMPARE(run.status, 2);
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
        QCOMPARE(run.status, 1);
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
                QCOMPARE(run.status, 0);
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
        row("a closed pipe",
            R"({ "$cli" info --json $(yes a.mid | head -9999); echo $? >status; } | true
              s=$(<status); [ $s = 3 ] || echo "status $s"; exit $s)");
    }
    void saysThatOutputCannotBeWritten()
    {
        const auto [line] = cells<QString>();
        QVERIFY(writeCatalogue(path("c.db")));
        const QByteArray catalogue = read("c.db");
        QCOMPARE(shell(line), (Run{3, "", "tarvel4soft-cli: the output can't be written\n"}));
        QCOMPARE(read("c.db"), catalogue);
    }
};

QTEST_GUILESS_MAIN(tst_CliUsage)
#include "tst_cliusage.moc"
