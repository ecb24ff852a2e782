#include "tests/library/texts.h"
#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"

#include <QtTest>

using namespace tarvel4;

/** The conventions that every command shares: options, help, languages, exit statuses, streams. */
class tst_CliUsage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void saysItsVersion();
    void helpNamesEveryCommandAndOption();
    void helpOfACommand_data();
    void helpOfACommand();
    void acceptsOptionsInEveryForm_data();
    void acceptsOptionsInEveryForm();
    void refusesWrongUsage_data();
    void refusesWrongUsage();
    void speaksTheLanguageOfTheLocale_data();
    void speaksTheLanguageOfTheLocale();
    void keepsFileNamesInEveryLocale();
    void writesALogOnlyWhenAsked();
    void saysThatOutputCannotBeWritten_data();
    void saysThatOutputCannotBeWritten();

private:
    QString path(const char *name) const { return m_folder->filePath(text(name)); }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_CliUsage::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
    QVERIFY(Fixtures::write(path("a.mid"), Fixtures::wholeSong()));
}

void tst_CliUsage::saysItsVersion()
{
    const Run run = Program(m_folder->path()).run({text("--version")});
    QCOMPARE(run.out, QByteArray("tarvel4soft-cli 1.0\n"));
    QCOMPARE(run.status, 0);
}

void tst_CliUsage::helpNamesEveryCommandAndOption()
{
    for (const char *word : {"-h", "--help"}) {
        const Run run = Program(m_folder->path()).run({QLatin1String(word)});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.err, QByteArray());
        for (const char *name :
             {"\n  info ", "\n  edit ", "\n  sync ", "\n  backup ", "\n  transfer ", "\n  index ",
              "\n  list ", "\n  extract ", "\n  catalogue ", "--catalogue FILE", "--log", "--quiet",
              "--json", "--help", "--version"}) {
            QVERIFY2(run.out.contains(name), name);
        }
    }
}

void tst_CliUsage::helpOfACommand_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("options");
    const auto row = [](const char *command, const char *options) {
        QTest::newRow(command) << QString::fromLatin1(
            command) << QString::fromLatin1(options).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    };
    row("info", "--recursive PATH...");
    row("edit",
        "--title --artist --genre --author --length --bpm --key --title-from-name --add-marker");
    row("sync", "--backup --no-backup --unpublished ask|yes|no --dry-run --recursive");
    row("backup", "--to --recursive");
    row("transfer", "--to --memory --overwrite --recursive");
    row("index", "update rebuild verify delete ROOT");
    row("list", "--order title|artist|genre --output ROOT");
    row("extract", "--output SONG");
    row("catalogue", "--name --title --genres --artists");
}

void tst_CliUsage::helpOfACommand()
{
    QFETCH(QString, command);
    QFETCH(QStringList, options);
    const Program program(m_folder->path());
    for (const char *word : {"-h", "--help"}) {
        const Run run = program.run({command, QLatin1String(word)});
        QCOMPARE(run.status, 0);
        QVERIFY(run.out.contains("tarvel4soft-cli " + command.toUtf8()));
        for (const QString &option : options)
            QVERIFY2(run.out.contains(option.toUtf8()), qPrintable(option));
        QVERIFY(run.out.contains("--json"));
    }
}

void tst_CliUsage::acceptsOptionsInEveryForm_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("out");
    const QByteArray record = R"({"path":"a.mid",)" + Fixtures::wholeRecord("a.mid") + "}\n";
    QTest::newRow("after the command") << R"("$cli" info --json a.mid)" << record;
    QTest::newRow("after the paths") << R"("$cli" info a.mid --json)" << record;
    QTest::newRow("ahead of the command") << R"("$cli" --json info a.mid)" << record;
    QTest::newRow("shortened") << R"("$cli" info --js --recu a.mid)" << record;
    QTest::newRow("shortened, ahead of the command") << R"("$cli" --js info a.mid)" << record;
    QTest::newRow("shortened, with a value")
        << R"x("$cli" edit --genr=Altro --art Altri a.mid | grep -E "^(artist|genre)")x"
        << QByteArray("artist: Altri\ngenre: Altro\n");
    QTest::newRow("given twice") << R"("$cli" --json info --json a.mid)" << record;
    QTest::newRow("two hyphens end the options")
        << R"(cp a.mid -- -rf.mid; "$cli" info --json -- -rf.mid)"
        << R"({"path":"-rf.mid",)" + Fixtures::wholeRecord("-rf.mid") + "}\n";
    QTest::newRow("two hyphens after a path end them too")
        << R"(cp a.mid ./--json; "$cli" info --json -- --json)"
        << R"({"path":"--json",)" + Fixtures::wholeRecord("--json") + "}\n";
    QTest::newRow("a lone hyphen is a path")
        << R"(cp a.mid -- -; "$cli" info --json -)"
        << R"({"path":"-",)" + Fixtures::wholeRecord("-") + "}\n";
    QTest::newRow("a value as a word of its own")
        << R"("$cli" edit --json --title "Bella Ciao" a.mid)" << record;
    QTest::newRow("a value after an equals sign")
        << R"("$cli" edit --json --title="Bella Ciao" a.mid)" << record;
    QTest::newRow("of a value given twice the last counts")
        << R"("$cli" edit --json --title=x --title="Bella Ciao" a.mid)" << record;
    QTest::newRow("a value may begin with hyphens")
        << R"("$cli" edit --title --json a.mid | grep ^title)" << QByteArray("title: --json\n");
    QTest::newRow("a value may hold an equals sign")
        << R"("$cli" edit --title=a=b a.mid | grep ^title)" << QByteArray("title: a=b\n");
}

void tst_CliUsage::acceptsOptionsInEveryForm()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, out);
    const Run run = Program(m_folder->path()).shell(line);
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QCOMPARE(run.out, out);
}

void tst_CliUsage::refusesWrongUsage_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char *name, const char *line, const char *message) {
        QTest::newRow(name) << text(line) << QByteArray(message);
    };
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

void tst_CliUsage::refusesWrongUsage()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, message);
    const Run run = Program(m_folder->path()).shell(text("\"$cli\" ") + line + QLatin1Char('\n'));
    QCOMPARE(run.out, QByteArray());
    QVERIFY2(run.err.contains(message) && run.err.startsWith("tarvel4soft-cli: "),
             run.err.constData());
    QCOMPARE(run.status, 2);
    QCOMPARE(Fixtures::read(path("a.mid")), Fixtures::wholeSong());
}

void tst_CliUsage::speaksTheLanguageOfTheLocale_data()
{
    QTest::addColumn<QByteArray>("message");
    const QByteArray italian = "tarvel4soft-cli: a.mid: non è una song .mf3, .mf4 o .mf5\n";
    const QByteArray english = "tarvel4soft-cli: a.mid: it is no .mf3, .mf4 or .mf5 song\n";
    QTest::newRow("LC_ALL=it_IT.UTF-8") << italian;
    QTest::newRow("LC_ALL= LANG=it_CH.UTF-8") << italian;
    QTest::newRow("LC_ALL= LANG=en_US.UTF-8 LC_MESSAGES=it_IT.UTF-8") << italian;
    QTest::newRow("LC_ALL=it_IT.ISO-8859-1") << italian;
    QTest::newRow("LC_ALL=de_DE.UTF-8") << english;
    QTest::newRow("LC_ALL=C") << english;
    QTest::newRow("LC_ALL= LANG=it_IT.UTF-8 LC_MESSAGES=en_US.UTF-8") << english;
}

void tst_CliUsage::speaksTheLanguageOfTheLocale()
{
    QFETCH(QByteArray, message);
    const Run run = Program(m_folder->path())
                        .shell(text("unset LANGUAGE LC_MESSAGES; ") + text(QTest::currentDataTag())
                               + text(" \"$cli\" extract a.mid"));
    QCOMPARE(run.err, message);
    QCOMPARE(run.status, 1);
}

void tst_CliUsage::keepsFileNamesInEveryLocale()
{
    const QString name = text("citt\u00E0 \u4E2D.mid");
    QVERIFY(Fixtures::write(m_folder->filePath(name), Fixtures::wholeSong()));
    for (const char *locale : {"C", "POSIX", "C.UTF-8", "it_IT.ISO-8859-1", "no_such_locale"}) {
        Program program(m_folder->path());
        program.setEnvironment(text("LC_ALL"), text(locale));
        for (const QString &argument : {name, text(".")}) {
            const Run run =
                program.run(strings({"info", "--json", "--recursive"}) + QStringList(argument));
            QVERIFY2(run.out.contains(R"("name":"città 中.mid","format":"MIDI")"), locale);
            QCOMPARE(run.status, 0);
        }
    }
}

void tst_CliUsage::writesALogOnlyWhenAsked()
{
    const Program program(m_folder->path());
    const QString log = path("log.txt");
    program.run(strings({"info", "a.mid"}));
    QVERIFY(!QFile::exists(log));

    const Run run = program.run(strings({"info", "--log", "--recursive", "."}));
    QCOMPARE(run.err, QByteArray());
    const QByteArray lines = Fixtures::read(log);
    QVERIFY(lines.contains("Log start"));
    QVERIFY(lines.contains("]D| [scanDir] Found file: \"./a.mid\"\n"));
}

void tst_CliUsage::saysThatOutputCannotBeWritten_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("a full disk, records") << R"("$cli" info --json a.mid >/dev/full)";
    QTest::newRow("a full disk, help") << R"("$cli" --help >/dev/full)";
    QTest::newRow("a full disk, a list")
        << R"("$cli" catalogue --catalogue c.db --genres >/dev/full)";
    QTest::newRow("a closed stream") << R"("$cli" info --json a.mid >&-)";
    QTest::newRow("all streams closed, and the catalogue is not written instead")
        << R"("$cli" catalogue --catalogue c.db --genres <&- >&-)";
    QTest::newRow("a closed pipe")
        << R"({ "$cli" info --json $(yes a.mid | head -9999); echo $? >status; } | true
              s=$(<status); [ $s = 3 ] || echo "status $s"; exit $s)";
}

void tst_CliUsage::saysThatOutputCannotBeWritten()
{
    QFETCH(QString, line);
    QVERIFY(Fixtures::writeCatalogue(path("c.db")));
    const QByteArray catalogue = Fixtures::read(path("c.db"));
    const Run run = Program(m_folder->path()).shell(line);
    QCOMPARE(run.out, QByteArray());
    QCOMPARE(run.err, QByteArray("tarvel4soft-cli: the output can't be written\n"));
    QCOMPARE(run.status, 3);
    QCOMPARE(Fixtures::read(path("c.db")), catalogue);
}

QTEST_GUILESS_MAIN(tst_CliUsage)
#include "tst_cliusage.moc"
