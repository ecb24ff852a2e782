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
    void showsNoProgressWhereNobodyWantsIt_data();
    void showsNoProgressWhereNobodyWantsIt();
    void asksAboutSongsOfOthers_data();
    void asksAboutSongsOfOthers();
    void asksNobodyWhoseQuestionsGoElsewhere();
    void asksBeforeItReplacesASong_data();
    void asksBeforeItReplacesASong();
    void asksWhichOfTwoSongsABackupHolds();
    void writesEachRecordAtOnce();
    void stopsBeforeTheNextSong_data();
    void stopsBeforeTheNextSong();
    void finishesTheRecordInHandOnATerminationSignal();
    void leavesABackgroundJobAlone();
    void listsTitlesWithoutTheirEscapeSequences();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QStringList updatedSongs() const;

    QScopedPointer<QTemporaryDir> m_folder;
    QByteArray m_unpublished;
};

void tst_CliTerminal::initTestCase()
{
    if (!hasTool(QStringLiteral("script")))
        QSKIP("the program script, which gives a terminal, is not installed");
}

void tst_CliTerminal::init()
{
    m_folder.reset(new QTemporaryDir);
    m_unpublished = Fixtures::midi(Fixtures::meta(0x02, "(c) somebody"));
    for (const char *folder : {"1", "2", "3", "mem/Pop"})
        QVERIFY(QDir(m_folder->path()).mkpath(QLatin1String(folder)));
    for (const char *song : {"1/azzurro.mid", "2/azzurro.mid", "3/azzurro.mid"})
        QVERIFY(Fixtures::write(path(QLatin1String(song)), m_unpublished));
    QVERIFY(Fixtures::write(path(QStringLiteral("0.mid")), Fixtures::wholeSong()));
    QVERIFY(Fixtures::writeCatalogue(path(QStringLiteral("c.db"))));
}

/** The folders of the songs that are not what they were. */
QStringList tst_CliTerminal::updatedSongs() const
{
    QStringList updated;
    for (const char *folder : {"1", "2", "3"}) {
        const QString name = QLatin1String(folder);
        if (Fixtures::read(path(name + QLatin1String("/azzurro.mid"))) != m_unpublished)
            updated += name;
    }
    return updated;
}

void tst_CliTerminal::showsProgressInOneLine()
{
    const Run run = Program(m_folder->path())
                        .terminal(QStringLiteral("stty cols 30; \"$cli\" info --json --recursive . "
                                                 ">out.json"));
    QCOMPARE(run.status, 0);
    QVERIFY2(run.out.contains("0 of 4"), run.out.constData());
    QVERIFY2(run.out.contains("4 of 4, "), run.out.constData());
    QVERIFY(!run.out.contains('\n'));
    QVERIFY(run.out.endsWith("\r\033[K"));
    for (const QByteArray &line : run.out.split('\r'))
        QVERIFY2(line.size() - int(qstrlen("\033[K")) < 30, line.constData());
    QCOMPARE(Fixtures::read(path(QStringLiteral("out.json"))).count('\n'), 4);
}

void tst_CliTerminal::showsNoProgressWhereNobodyWantsIt_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("--quiet") << R"("$cli" info --quiet --json 0.mid >out.json)";
    QTest::newRow("standard error is a file") << R"("$cli" info --json 0.mid >out.json 2>err)";
}

void tst_CliTerminal::showsNoProgressWhereNobodyWantsIt()
{
    QFETCH(QString, line);
    const Run run = Program(m_folder->path()).terminal(line);
    QCOMPARE(run.out, QByteArray());
    QCOMPARE(run.status, 0);
    if (QFile::exists(path(QStringLiteral("err"))))
        QCOMPARE(Fixtures::read(path(QStringLiteral("err"))), QByteArray());
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
            keys += QStringLiteral("[o] no to all: \t%1\r").arg(answer);
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
}

void tst_CliTerminal::asksAboutSongsOfOthers()
{
    QFETCH(QStringList, keys);
    QFETCH(QStringList, updated);
    QFETCH(int, status);
    const Run run = Program(m_folder->path())
                        .terminal(QStringLiteral("\"$cli\" sync --no-backup --catalogue c.db "
                                                 "[123]/azzurro.mid >/dev/null"),
                                  keys);
    QVERIFY2(run.out.contains("azzurro.mid: "), run.out.constData());
    QCOMPARE(updatedSongs(), updated);
    QCOMPARE(run.status, status);
}

void tst_CliTerminal::asksNobodyWhoseQuestionsGoElsewhere()
{
    const Run run =
        Program(m_folder->path())
            .terminal(QStringLiteral("timeout 20 \"$cli\" sync --no-backup --catalogue c.db "
                                     "[123]/azzurro.mid >/dev/null 2>err"));
    QCOMPARE(run.out, QByteArray());
    QCOMPARE(Fixtures::read(path(QStringLiteral("err"))), QByteArray());
    QCOMPARE(updatedSongs(), QStringList());
    QCOMPARE(run.status, 1);
}

void tst_CliTerminal::asksBeforeItReplacesASong_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<bool>("isReplaced");
    const QString question = QStringLiteral("[o] no to all: \t%1\r");
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
    QVERIFY(Fixtures::write(path(QStringLiteral("mem/Pop/0.mid")), "old"));
    const Run run = Program(m_folder->path())
                        .terminal(QStringLiteral("\"$cli\" transfer --memory mem --to mem/Pop %1 "
                                                 "0.mid >/dev/null")
                                      .arg(option),
                                  keys);
    QCOMPARE(run.status, 0);
    QCOMPARE(run.out.contains("[o] no to all: "), !keys.isEmpty());
    QCOMPARE(Fixtures::read(path(QStringLiteral("mem/Pop/0.mid"))) != "old", isReplaced);
}

void tst_CliTerminal::asksWhichOfTwoSongsABackupHolds()
{
    QVERIFY(Fixtures::write(path(QStringLiteral("2/azzurro.mid")), "the second"));
    const Run run =
        Program(m_folder->path())
            .terminal(QStringLiteral("\"$cli\" backup --to mem [12]/azzurro.mid >/dev/null && cmp "
                                     "mem/backup_kvaro_*/azzurro.mid 2/azzurro.mid"),
                      {QStringLiteral("[o] no to all: \ty\r")});
    QCOMPARE(run.status, 0);
}

void tst_CliTerminal::writesEachRecordAtOnce()
{
    // Ctrl-\ ends the program on the spot: what was only buffered would be lost.
    const Run run =
        Program(m_folder->path())
            .terminal(QStringLiteral("\"$cli\" sync --json --no-backup --catalogue c.db 0.mid "
                                     "1/azzurro.mid >out.json"),
                      {QStringLiteral("[o] no to all: \t\034")});
    QVERIFY(run.status != 0);
    const QByteArray written = Fixtures::read(path(QStringLiteral("out.json")));
    QVERIFY2(written.startsWith(R"({"path":"0.mid","status":"not-found",)")
                 && written.endsWith("}\n"),
             written.constData());
}

void tst_CliTerminal::stopsBeforeTheNextSong_data()
{
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QStringList>("updated");
    const QString question = QStringLiteral("[o] no to all: \t%1");
    QTest::newRow("Ctrl-C at the first question")
        << QStringList{question.arg(QLatin1Char('\003'))} << QStringList();
    QTest::newRow("Ctrl-C at the second question")
        << QStringList{question.arg(QLatin1String("y\r")), question.arg(QLatin1Char('\003'))}
        << QStringList{QStringLiteral("1")};
}

void tst_CliTerminal::stopsBeforeTheNextSong()
{
    QFETCH(QStringList, keys);
    QFETCH(QStringList, updated);
    const Run run = Program(m_folder->path())
                        .terminal(QStringLiteral("\"$cli\" sync --no-backup --catalogue c.db "
                                                 "[123]/azzurro.mid >/dev/null"),
                                  keys);
    QCOMPARE(updatedSongs(), updated);
    QCOMPARE(run.out.count("[o] no to all: "), keys.size());
    QCOMPARE(run.status, 130);
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
    QVERIFY(Fixtures::write(path(QStringLiteral("mem/a.mid")),
                            Fixtures::midi(Fixtures::meta(0x03, "a\033[2Jb"))));
    const Program program(m_folder->path());
    QCOMPARE(program.shell(QStringLiteral("\"$cli\" index rebuild mem")).status, 0);
    QCOMPARE(program.shell(QStringLiteral("\"$cli\" list mem | tail -n1")).out,
             QByteArray("A\033[2JB;<UNKNOWN>;/a.mid;\n"));
    const Run run = program.terminal(QStringLiteral("\"$cli\" list mem"));
    QVERIFY2(run.out.endsWith("\nA\\u001b[2JB;<UNKNOWN>;/a.mid;\r\n"), run.out.constData());
}

QTEST_GUILESS_MAIN(tst_CliTerminal)
#include "tst_cliterminal.moc"
