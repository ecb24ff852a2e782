#include "tests/library/texts.h"
#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"

#include <QDir>
#include <QtTest>

using namespace tarvel4;

/** The program on a terminal: questions, progress, Ctrl-C. */
class tst_CliTerminal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void showsProgressInOneLine();
    void showsNoProgressWhereNobodyWantsIt();
    void asksAboutSongsOfOthers_data();
    void asksAboutSongsOfOthers();
    void asksNobodyWhoseQuestionsGoElsewhere();
    void asksBeforeItReplacesASong_data();
    void asksBeforeItReplacesASong();
    void asksWhichOfTwoSongsABackupHolds();
    void writesEachRecordAtOnce();
    void finishesTheRecordInHandOnATerminationSignal();
    void leavesABackgroundJobAlone();
    void listsTitlesWithoutTheirEscapeSequences();

private:
    QString path(const char *name) const { return m_folder->filePath(text(name)); }
    Run onTerminal(const QString &line, const QStringList &keys = {}) const
    {
        return Program(m_folder->path()).terminal(line, keys);
    }
    QStringList updatedSongs() const;

    QScopedPointer<QTemporaryDir> m_folder;
    QByteArray m_unpublished;
};

void tst_CliTerminal::initTestCase()
{
    if (!hasTool(text("script")))
        QSKIP("the program script, which gives a terminal, is not installed");
}

void tst_CliTerminal::init()
{
    m_folder.reset(new QTemporaryDir);
    m_unpublished = Fixtures::midi(Fixtures::meta(0x02, "(c) somebody"));
    for (const char *folder : {"1", "2", "3", "mem/Pop"})
        QVERIFY(QDir(m_folder->path()).mkpath(text(folder)));
    for (const char *song : {"1/azzurro.mid", "2/azzurro.mid", "3/azzurro.mid"})
        QVERIFY(Fixtures::write(path(song), m_unpublished));
    QVERIFY(Fixtures::write(path("0.mid"), Fixtures::wholeSong()));
    QVERIFY(Fixtures::writeCatalogue(path("c.db")));
}

/** The folders of the songs that are not what they were. */
QStringList tst_CliTerminal::updatedSongs() const
{
    QStringList updated;
    for (const char *song : {"1/azzurro.mid", "2/azzurro.mid", "3/azzurro.mid"}) {
        if (Fixtures::read(path(song)) != m_unpublished)
            updated += text(song).left(1);
    }
    return updated;
}

void tst_CliTerminal::showsProgressInOneLine()
{
    const Run run = onTerminal(text("stty cols 30; \"$cli\" info --json --recursive . >out.json"));
    QCOMPARE(run.status, 0);
    QVERIFY2(run.out.contains("0 of 4"), run.out.constData());
    QVERIFY2(run.out.contains("4 of 4, "), run.out.constData());
    QVERIFY(!run.out.contains('\n'));
    QVERIFY(run.out.endsWith("\r\033[K"));
    for (const QByteArray &line : run.out.split('\r'))
        QVERIFY2(line.size() - static_cast<int>(qstrlen("\033[K")) < 30, line.constData());
    QCOMPARE(Fixtures::read(path("out.json")).count('\n'), 4);
}

void tst_CliTerminal::showsNoProgressWhereNobodyWantsIt()
{
    for (const char *line : {R"("$cli" info --quiet --json 0.mid >out.json)",
                             R"("$cli" info --json 0.mid >out.json 2>err)"}) {
        const Run run = onTerminal(text(line));
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(run.status, 0);
    }
    QCOMPARE(Fixtures::read(path("err")), QByteArray());
}

void tst_CliTerminal::asksAboutSongsOfOthers_data()
{
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QStringList>("updated");
    QTest::addColumn<int>("status");
    const auto row = [](const char *name, const QStringList &answers, const char *updated,
                        int status) {
        QStringList keys;
        for (const QString &answer : answers)
            keys += text("[o] no to all: \t") + answer + text(answer == text("\003") ? "" : "\r");
        QTest::newRow(name) << keys
                            << QString::fromLatin1(updated).split(QLatin1Char(' '),
                                                                  Qt::SkipEmptyParts)
                            << status;
    };
    const auto typed = [](const char *text) {
        return QString::fromUtf8(text).split(QLatin1Char(','));
    };
    row("yes, no, yes", typed("y,n,yes"), "1 3", 1);
    row("yes to all", typed("a"), "1 2 3", 0);
    row("no, then yes to all", typed("n,a"), "2 3", 1);
    row("no to all", typed("o"), "", 1);
    row("yes, then no to all", typed("y,no to all"), "1", 1);
    row("in Italian", typed("s,no,sì"), "1 3", 1);
    row("anything else is asked again", typed("maybe,,YES,q,n,N"), "1", 1);
    row("the end of input is a no to all", typed("y,\004"), "1", 1);
    row("Ctrl-C at the first question stops", typed("\003"), "", 130);
    row("Ctrl-C at the second question stops before the second song", typed("y,\003"), "1", 130);
}

void tst_CliTerminal::asksAboutSongsOfOthers()
{
    QFETCH(QStringList, keys);
    QFETCH(QStringList, updated);
    QFETCH(int, status);
    const Run run = onTerminal(
        text("\"$cli\" sync --no-backup --catalogue c.db [123]/azzurro.mid >/dev/null"), keys);
    QVERIFY2(run.out.contains("azzurro.mid: "), run.out.constData());
    QCOMPARE(run.out.count("[o] no to all: "), keys.size());
    QCOMPARE(updatedSongs(), updated);
    QCOMPARE(run.status, status);
}

void tst_CliTerminal::asksNobodyWhoseQuestionsGoElsewhere()
{
    const Run run = onTerminal(text("timeout 20 \"$cli\" sync --no-backup --catalogue c.db "
                                    "[123]/azzurro.mid >/dev/null 2>err"));
    QCOMPARE(run.out, QByteArray());
    QCOMPARE(Fixtures::read(path("err")), QByteArray());
    QCOMPARE(updatedSongs(), QStringList());
    QCOMPARE(run.status, 1);
}

void tst_CliTerminal::asksBeforeItReplacesASong_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<bool>("isReplaced");
    const QString question = text("[o] no to all: \t%1\r");
    QTest::newRow("yes") << "" << QStringList{question.arg(QLatin1Char('y'))} << true;
    QTest::newRow("no") << "" << QStringList{question.arg(QLatin1Char('n'))} << false;
    QTest::newRow("not asked, yes by option") << "--overwrite yes" << QStringList() << true;
    QTest::newRow("not asked, no by option") << "--overwrite no" << QStringList() << false;
}

void tst_CliTerminal::asksBeforeItReplacesASong()
{
    QFETCH(QString, option);
    QFETCH(QStringList, keys);
    QFETCH(bool, isReplaced);
    QVERIFY(Fixtures::write(path("mem/Pop/0.mid"), "old"));
    const Run run = onTerminal(
        text("\"$cli\" transfer --memory mem --to mem/Pop %1 0.mid >/dev/null").arg(option), keys);
    QCOMPARE(run.status, 0);
    QCOMPARE(run.out.contains("[o] no to all: "), !keys.isEmpty());
    QCOMPARE(Fixtures::read(path("mem/Pop/0.mid")) != "old", isReplaced);
}

void tst_CliTerminal::asksWhichOfTwoSongsABackupHolds()
{
    QVERIFY(Fixtures::write(path("2/azzurro.mid"), "the second"));
    const Run run = onTerminal(text("\"$cli\" backup --to mem [12]/azzurro.mid >/dev/null && cmp "
                                    "mem/backup_kvaro_*/azzurro.mid 2/azzurro.mid"),
                               {text("[o] no to all: \ty\r")});
    QCOMPARE(run.status, 0);
}

void tst_CliTerminal::writesEachRecordAtOnce()
{
    // Ctrl-\ ends the program on the spot: what was only buffered would be lost.
    const Run run = onTerminal(
        text("\"$cli\" sync --json --no-backup --catalogue c.db 0.mid 1/azzurro.mid >out.json"),
        {text("[o] no to all: \t\034")});
    QVERIFY(run.status != 0);
    const QByteArray written = Fixtures::read(path("out.json"));
    QVERIFY2(written.startsWith(R"({"path":"0.mid","status":"not-found",)")
                 && written.endsWith("}\n"),
             written.constData());
}

void tst_CliTerminal::finishesTheRecordInHandOnATerminationSignal()
{
    const Run run = Program(m_folder->path()).shell(QStringLiteral(R"(mkfifo pipe
                               "$cli" info --json $(yes 0.mid | head -20000) >pipe & pid=$!
                               { IFS= read -r line; kill -TERM $pid; cat >rest; } <pipe
                               wait $pid; s=$?
                               case $(tail -c 2 rest) in '' | '}') ;; *) exit 99 ;; esac
                               [ $(wc -l <rest) -lt 19999 ] && exit $s)"));
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 130);
}

void tst_CliTerminal::leavesABackgroundJobAlone()
{
    // The shell has a job in its background ignore Ctrl-C, and so it goes on.
    const Run run = Program(m_folder->path()).shell(QStringLiteral(R"(mkfifo pipe
                               "$cli" info --json $(yes 0.mid | head -2000) >pipe & pid=$!
                               { IFS= read -r line; kill -INT $pid; cat >rest; } <pipe
                               wait $pid && wc -l <rest)"));
    QCOMPARE(run.out, QByteArray("1999\n"));
    QCOMPARE(run.status, 0);
}

void tst_CliTerminal::listsTitlesWithoutTheirEscapeSequences()
{
    QVERIFY(Fixtures::write(path("mem/a.mid"), Fixtures::midi(Fixtures::meta(0x03, "a\033[2Jb"))));
    const Program program(m_folder->path());
    QCOMPARE(program.shell(text("\"$cli\" index rebuild mem")).status, 0);
    QCOMPARE(program.shell(text("\"$cli\" list mem | tail -n1")).out,
             QByteArray("A\033[2JB;<UNKNOWN>;/a.mid;\n"));
    const Run run = program.terminal(text("\"$cli\" list mem"));
    QVERIFY2(run.out.endsWith("\nA\\u001b[2JB;<UNKNOWN>;/a.mid;\r\n"), run.out.constData());
}

QTEST_GUILESS_MAIN(tst_CliTerminal)
#include "tst_cliterminal.moc"
