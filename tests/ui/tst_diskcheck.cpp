#include "tests/ui/diskcheckprogram.h"
#include "ui/diskcheck.h"

#include <QApplication>
#include <QtTest>

#include <csignal>

using namespace tarvel4;

namespace {

constexpr int pastAnyTest = 20000; // milliseconds

QStringList *loggedLines = nullptr;

void keepLines(QtMsgType, const QMessageLogContext &, const QString &line)
{
    loggedLines->append(line);
}

} // namespace

class tst_DiskCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_program.reset(new DiskCheckProgram); }
    void cleanup() { m_program.reset(); }

    void pathsWithoutADrive_data();
    void pathsWithoutADrive();
    void arguments_data();
    void arguments();
    void exitCodes_data();
    void exitCodes();
    void answers_data();
    void answers();
    void notStartable_data();
    void notStartable();
    void neverEnding_data();
    void neverEnding();
    void quittingTheProgramEndsTheCheck();
    void eventsAreProcessedMeanwhile();
    void outputIsLogged();
    void nextRunBeginsWithTheFirstLetter();

private:
    static DiskCheck::Result check(int toFinish = pastAnyTest)
    {
        return DiskCheck({pastAnyTest, toFinish}).run(QStringLiteral("E:"));
    }

    QScopedPointer<DiskCheckProgram> m_program;
};

void tst_DiskCheck::pathsWithoutADrive_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("empty") << QString();
    QTest::newRow("one character") << QStringLiteral("E");
    QTest::newRow("a mounted folder") << QStringLiteral("/media/card");
    QTest::newRow("a colon further on") << QStringLiteral("/E:/");
    QTest::newRow("a colon in the first place") << QStringLiteral(":E");
}

void tst_DiskCheck::pathsWithoutADrive()
{
    QFETCH(QString, path);
    QVERIFY(m_program->write("exit 0"));
    QCOMPARE(DiskCheck().run(path), DiskCheck::NotRun);
    QVERIFY2(m_program->written(QStringLiteral("arguments")).isNull(), "it was started");
}

void tst_DiskCheck::arguments_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("drive");
    QTest::newRow("a drive alone") << QStringLiteral("E:") << QByteArray("E:");
    QTest::newRow("a folder of a drive") << QStringLiteral("F:/songs/a") << QByteArray("F:");
    QTest::newRow("a lower-case letter") << QStringLiteral("g:\\songs") << QByteArray("g:");
}

void tst_DiskCheck::arguments()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, drive);
    QVERIFY(m_program->write("exit 0"));
    QCOMPARE(DiskCheck({pastAnyTest, pastAnyTest}).run(path), DiskCheck::NoErrors);
    QCOMPARE(m_program->written(QStringLiteral("arguments")), QByteArray(drive + "\n/F\n/R\n"));
}

void tst_DiskCheck::exitCodes_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<int>("result");
    QTest::newRow("0: no errors") << QByteArray("exit 0") << 0;
    QTest::newRow("1: errors found and fixed") << QByteArray("exit 1") << 1;
    QTest::newRow("2: errors left") << QByteArray("exit 2") << 2;
    QTest::newRow("3: errors left") << QByteArray("exit 3") << 2;
    QTest::newRow("255: errors left") << QByteArray("exit 255") << 2;
    QTest::newRow("after some output") << QByteArray("echo Checking...; sleep 0.05; exit 1") << 1;
    QTest::newRow("after output to the error channel")
        << QByteArray("seq 1 20000 >&2; exit 1") << 1;
    QTest::newRow("without any output, after a while") << QByteArray("sleep 0.2; exit 1") << 1;
    QTest::newRow("killed: errors left") << QByteArray("kill -KILL $$") << 2;
    QTest::newRow("hung up, whose number is 1: errors left") << QByteArray("kill -HUP $$") << 2;
    QTest::newRow("crashed after a question: errors left")
        << QByteArray("printf 'Fix (Y/N)? '; kill -SEGV $$") << 2;
    QTest::newRow("gone without reading the answer")
        << QByteArray("exec 0<&-; printf 'Fix (Y/N)? '; sleep 0.1; exit 1") << 1;
}

void tst_DiskCheck::exitCodes()
{
    QFETCH(QByteArray, script);
    QFETCH(int, result);
    QVERIFY(m_program->write(script));
    QCOMPARE(int(check()), result);
}

void tst_DiskCheck::answers_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QByteArray>("answers");
    const QByteArray ask =
        "ask() { printf \"$1\"; read -r answer; printf '%s\\n' \"$answer\" >> answers; }\n";
    const QByteArray accept =
        "until [ \"$answer\" = \"$(printf '%s\\r')\" ]; do ask 'Riparare (S/N)? '; done";
    const auto untilTaken = [&](char letter) {
        return ask + QByteArray(accept).replace("%s", QByteArray(1, letter));
    };
    QTest::newRow("s ends an Italian conversation") << untilTaken('s') << QByteArray("s\r\n");
    QTest::newRow("y ends an English one") << untilTaken('y') << QByteArray("s\r\ny\r\n");
    QTest::newRow("j ends a German one") << untilTaken('j') << QByteArray("s\r\ny\r\nj\r\n");
    QTest::newRow("o ends a French one") << untilTaken('o') << QByteArray("s\r\ny\r\nj\r\no\r\n");
    QTest::newRow("each question takes the next letter, and s follows o")
        << QByteArray(ask + "for i in 1 2 3 4 5 6; do ask \"Question $i (Y/N)? \"; done")
        << QByteArray("s\r\ny\r\nj\r\no\r\ns\r\ny\r\n");
    QTest::newRow("output that asks nothing takes no letter")
        << QByteArray(ask
                      + "echo 'Is it FAT32? '; sleep 0.05; printf '100 %% (done)?'; sleep 0.05\n"
                        "printf ' Fix (Y/N)? x'; sleep 0.05; ask ' (Y/N)? '")
        << QByteArray("s\r\n");
    QTest::newRow("a question in several pieces") << QByteArray(
        ask
        + "printf 'Fix'; sleep 0.05; printf ' (Y/N)'; sleep 0.05; printf '?'; sleep 0.05\n"
          "ask ' '; ask 'Sure (Y/N)? '") << QByteArray("s\r\ny\r\n");
    QTest::newRow("a question after more than 3000 bytes")
        << QByteArray(ask + "printf '%05000d' 0; ask ' (Y/N)? '") << QByteArray("s\r\n");
    QTest::newRow("a question before a zero byte")
        << QByteArray(ask + "ask 'Fix (Y/N)? \\000rest'") << QByteArray("s\r\n");
    QTest::newRow("a question in letters of another alphabet")
        << QByteArray(ask + "ask 'R\\351parer l\\047unit\\351 \\200\\377 (O/N)? '")
        << QByteArray("s\r\n");
}

void tst_DiskCheck::answers()
{
    QFETCH(QByteArray, script);
    QFETCH(QByteArray, answers);
    QVERIFY(m_program->write(script + "\nexit 1"));
    QCOMPARE(check(), DiskCheck::ErrorsFixed);
    QCOMPARE(m_program->written(QStringLiteral("answers")), answers);
}

void tst_DiskCheck::notStartable_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("there is no such program") << QStringLiteral("missing");
    QTest::newRow("it is no program") << QStringLiteral("interpreter");
    QTest::newRow("it is a folder") << QStringLiteral("folder");
}

void tst_DiskCheck::notStartable()
{
    QFETCH(QString, how);
    if (how == QLatin1String("interpreter"))
        QVERIFY(m_program->write("exit 0", "/no/such/interpreter"));
    if (how == QLatin1String("folder"))
        QVERIFY(QDir().mkdir(m_program->path(QStringLiteral("chkdsk"))));
    QCOMPARE(check(), DiskCheck::NotRun);
}

void tst_DiskCheck::neverEnding_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("saying nothing") << QByteArray("exec sleep 60");
    QTest::newRow("after a question") << QByteArray("printf 'Fix (Y/N)? '; exec sleep 60");
    QTest::newRow("going on and on") << QByteArray("while :; do echo ...; sleep 0.02; done");
    QTest::newRow("deaf to all but a kill")
        << QByteArray("trap '' TERM HUP INT; while :; do sleep 0.02; done");
}

void tst_DiskCheck::neverEnding()
{
    QFETCH(QByteArray, script);
    QVERIFY(m_program->write("echo $$ > pid\n" + script));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(check(300), DiskCheck::NotRun);
    QVERIFY(timer.elapsed() >= 300);
    QVERIFY(timer.elapsed() < 10000);
    const int pid = m_program->written(QStringLiteral("pid")).trimmed().toInt();
    QVERIFY(pid > 0);
    QVERIFY2(kill(pid, 0) != 0, "it still runs");
}

void tst_DiskCheck::quittingTheProgramEndsTheCheck()
{
    QVERIFY(m_program->write("exec sleep 60"));
    QTimer::singleShot(100, qApp, &QCoreApplication::quit);
    DiskCheck::Result result = DiskCheck::NoErrors;
    QTimer::singleShot(0, [&result] { result = check(); });
    QElapsedTimer timer;
    timer.start();
    QCoreApplication::exec();
    QCOMPARE(result, DiskCheck::NotRun);
    QVERIFY(timer.elapsed() < 10000);
}

void tst_DiskCheck::eventsAreProcessedMeanwhile()
{
    QVERIFY(m_program->write("sleep 0.3; exit 0"));
    int ticks = 0;
    QTimer ticking;
    connect(&ticking, &QTimer::timeout, [&ticks] { ++ticks; });
    ticking.start(20);
    QCOMPARE(check(), DiskCheck::NoErrors);
    QVERIFY2(ticks >= 3, qPrintable(QString::number(ticks)));
}

void tst_DiskCheck::outputIsLogged()
{
    QVERIFY(m_program->write("printf 'Controllo unit\\303\\240 \\377'; exit 0"));
    QStringList lines;
    loggedLines = &lines;
    const auto before = qInstallMessageHandler(keepLines);
    const DiskCheck::Result result = check();
    qInstallMessageHandler(before);
    QCOMPARE(result, DiskCheck::NoErrors);
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().startsWith(QStringLiteral("\"Controllo unità ")),
             qPrintable(lines.constFirst()));
}

void tst_DiskCheck::nextRunBeginsWithTheFirstLetter()
{
    QVERIFY(m_program->write("printf 'Fix (Y/N)? '; read -r a; printf '%s\\n' \"$a\" >> answers"));
    DiskCheck diskCheck({pastAnyTest, pastAnyTest});
    QCOMPARE(diskCheck.run(QStringLiteral("E:")), DiskCheck::NoErrors);
    QCOMPARE(diskCheck.run(QStringLiteral("E:")), DiskCheck::NoErrors);
    QCOMPARE(m_program->written(QStringLiteral("answers")), QByteArray("s\r\ns\r\n"));
}

QTEST_MAIN(tst_DiskCheck)
#include "tst_diskcheck.moc"
