#include "tests/program/programtest.h"

#include <QStandardPaths>

using namespace tarvel4;

/** What shells offer while a command line is typed, by the scripts that the program prints. */
class tst_CliCompletion : public ProgramTest
{
    Q_OBJECT

private:
    /** The lines that bash offers where the last of \a words is being typed. */
    QByteArray offered(const QString &words) const
    {
        return shell("source <(\"$cli\" completion bash)\n"
                     "COMP_WORDS=(tarvel4soft-cli %1); COMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n"
                     "_tarvel4soft_cli\n"
                     "printf '%s|' \"${COMPREPLY[@]}\""_s.replace("%1"_s, words))
            .out;
    }

private Q_SLOTS:
    void init()
    {
        makeFolder("songs");
        write("a b.mid", "");
        write("info.mid", "");
        write("-v.mid", "");
    }

    void bashOffers_data()
    {
        const Table<QString, QByteArray> row;
        row("the commands", "''",
            "info|edit|sync|history|undo|restore|backup|transfer|index|list|extract|catalogue|"
            "completion|");
        row("the commands that begin so", "in", "info|index|");
        row("an option of every command", "--vers", "--version|");
        row("an option of the command", "sync --un", "--unpublished|");
        row("none of another command", "info --un", "|");
        row("an option behind an operand", "info a.mid --rec", "--recursive|");
        row("the choices of a value", "sync --unpublished ''", "ask|yes|no|");
        row("the choices behind an equals sign", "sync --unpublished =", "ask|yes|no|");
        row("the choices that begin so behind an equals sign", "sync --unpublished = y", "yes|");
        row("files for a value that is one", "--catalogue in", "info.mid|");
        row("nothing for a text", "edit --title ''", "|");
        row("folders for a value that is one", "transfer --to ''", "songs|");
        row("songs", "info a", "a b.mid|");
        row("songs behind a value", "edit --title x in", "info.mid|");
        row("songs behind a value and an equals sign", "edit --title = x in", "info.mid|");
        row("files behind the end of the options", "info -- -", "-v.mid|");
        row("files, whatever they begin with", "info -- i", "info.mid|");
        row("files behind another one", "edit --title x -- -v.mid a", "a b.mid|");
        row("files behind a word like an option", "edit -- --title", "|");
        row("options where the end of them is a value", "edit --title -- --vers", "--version|");
        row("what to do with an index, behind the end of the options", "index -- v", "verify|");
        row("a value is no command", "--catalogue edit in", "info|index|");
        row("what to do with an index", "index ''", "update|rebuild|verify|delete|");
        row("then the folder of the index", "index --json verify ''", "songs|");
        row("what to do with the history", "history ''", "clear|");
        row("nothing where nothing can come", "catalogue --genres ''", "|");
    }
    void bashOffers()
    {
        const auto [words, replies] = cells<QString, QByteArray>();
        QCOMPARE(offered(words), replies);
    }

    /** As help shows them. */
    void bashOffersEveryOption()
    {
        const Run commands =
            shell(R"("$cli" --help | sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p')");
        const QByteArrayList names = commands.out.trimmed().split('\n');
        QVERIFY(names.size() >= 12);
        for (const QByteArray &name : names) {
            const QString command = QString::fromUtf8(name);
            const Run help =
                cli(command + QStringLiteral(R"( --help | grep -oE '^  --[a-z-]+' | tr -d ' ')"));
            QCOMPARE(offered(command + " --"_s), QByteArray(help.out).replace('\n', '|'));
        }
    }

    void isAScriptOf_data()
    {
        const Table<QString> row;
        for (const char *name : {"bash", "zsh", "fish"})
            row(name, name);
    }
    void isAScriptOf()
    {
        const auto [name] = cells<QString>();
        if (QStandardPaths::findExecutable(name).isEmpty())
            QSKIP("this shell is not installed");
        for (const char *locale : {"C", "it_IT.UTF-8"}) { // whose texts have apostrophes
            const Run run =
                shell("LC_ALL=%1 \"$cli\" completion %2 >s && %2 -n s && wc -l <s"_s.arg(
                    QString::fromLatin1(locale), name));
            QCOMPARE(run.err, QByteArray());
            VERIFY_STATUS(run, 0);
            QVERIFY(run.out.toInt() > 20);
        }
    }

    void fishOffers_data()
    {
        const Table<QString, QByteArray> row;
        row("the commands that begin so", "in", "index|info|");
        row("an option of the command", "sync --un", "--unpublished|");
        row("the choices of a value", "sync --unpublished ", "ask|no|yes|");
        row("what to do with an index", "index v", "verify|");
        row("all that can be done with an index", "index ", "delete|rebuild|update|verify|");
        row("then the folder of the index", "index --json verify ", "songs/|");
        row("nothing behind all words of a command", "history clear ", "");
        row("songs behind the end of the options", "info -- -", "-v.mid|");
        row("no option there", "info -- --rec", "");
    }
    void fishOffers()
    {
        if (QStandardPaths::findExecutable("fish"_s).isEmpty())
            QSKIP("fish is not installed");
        const auto [words, replies] = cells<QString, QByteArray>();
        const Run run = shell(R"("$cli" completion fish >s
            fish -c 'source s; complete -C "tarvel4soft-cli %1"' | cut -f1 | LC_ALL=C sort | tr '\n' '|')"_s
                                  .arg(words));
        QCOMPARE(run.out, replies);
    }

    void zshOffers_data()
    {
        const Table<QString, QByteArray> row;
        row("the commands that begin so", "in", "index|info|");
        row("an option of the command", "sync --un", "--unpublished|");
        row("an option behind another", "info --json --rec", "--recursive|");
        row("the choices of a value", "sync --unpublished ", "ask|no|yes|");
        row("the choices behind an equals sign", "sync --unpublished=y", "yes|");
        row("songs", "info i", "info.mid|");
        row("folders for a value that is one", "transfer --to ", "songs|");
        row("what to do with an index", "index v", "verify|");
        row("what to do with an index, behind an option", "index --json v", "verify|");
        row("then the folder of the index", "index --json verify ", "songs|");
        row("songs behind the end of the options", "info -- -", "-v.mid|");
        row("no option there", "info -- --rec", "");
        row("what to do with an index, behind the end of the options", "index -- v", "verify|");
    }
    void zshOffers()
    {
        if (QStandardPaths::findExecutable("zsh"_s).isEmpty())
            QSKIP("zsh is not installed");
        const auto [words, replies] = cells<QString, QByteArray>();
        const Run run = shell(R"("$cli" completion zsh >.s
            zsh -f "%1/zsh_offers" .s "tarvel4soft-cli %2")"_s.arg(
            QStringLiteral(TARVEL4_TEST_PROGRAM), words));
        QCOMPARE(run.out, replies);
    }

    void refusesOtherShells()
    {
        const Run run = cli("completion tcsh");
        VERIFY_STATUS(run, 2);
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(run.err.contains("completion takes bash, zsh or fish"), run.err.constData());
    }
};

QTEST_GUILESS_MAIN(tst_CliCompletion)
#include "tst_clicompletion.moc"
