#include "tests/library/logcapture.h"
#include "tests/library/texts.h"
#include "tests/storage/table.h"
#include "tests/ui/diskcheckprogram.h"
#include "ui/diskcheck.h"

#include <QApplication>
#include <QtTest>

using namespace tarvel4;

namespace {

constexpr int pastAnyTest = 20000; // milliseconds

} // namespace

class tst_DiskCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_program.reset(new DiskCheckProgram); }
    void cleanup() { m_program.reset(); }

    void drives_data()
    {
        const Table<QString, QByteArray> row;
        row("none of an empty path", "", QByteArray());
        row("none of one character", "E", QByteArray());
        row("none of a mounted folder", "/media/card", QByteArray());
        row("none where the colon comes later", "/E:/", QByteArray());
        row("none where the colon comes first", ":E", QByteArray());
        row("a drive alone", "E:", QByteArray("E:"));
        row("that of a folder, in lower case", "g:\\songs", QByteArray("g:"));
    }
    void drives()
    {
        const auto [path, drive] = cells<QString, QByteArray>();
        QVERIFY(m_program->write("exit 0"));
        QCOMPARE(DiskCheck({pastAnyTest, pastAnyTest}).run(path),
                 drive.isEmpty() ? DiskCheck::NotRun : DiskCheck::NoErrors);
        QCOMPARE(m_program->written(text("arguments")),
                 drive.isEmpty() ? QByteArray() : QByteArray(drive + "\n/F\n/R\n"));
    }

    void exitCodes_data()
    {
        const Table<QString, int> row;
        row("0: no errors", "exit 0", 0);
        row("1: errors found and fixed", "exit 1", 1);
        row("2: errors left", "exit 2", 2);
        row("255: errors left", "exit 255", 2);
        row("after some output", "echo Checking...; sleep 0.05; exit 1", 1);
#ifdef Q_OS_UNIX
        row("after output to the error channel", "seq 1 20000 >&2; exit 1", 1);
        row("hung up, whose number is 1: errors left", "kill -HUP $$", 2);
        row("crashed after a question: errors left", "printf 'Fix (Y/N)? '; kill -SEGV $$", 2);
        row("gone without reading the answer", "exec 0<&-; printf 'Fix (Y/N)? '; sleep 0.1; exit 1",
            1);
#endif
    }
    void exitCodes()
    {
        const auto [script, result] = cells<QString, int>();
        QVERIFY(m_program->write(script.toUtf8()));
        QCOMPARE(static_cast<int>(check()), result);
    }

    void answers_data()
    {
        const Table<QString, QString> row;
        row("each question takes the next letter, and s follows o",
            "ask '1 (Y/N)? '; ask '2 (Y/N)? '; ask '3 (Y/N)? '; ask '4 (Y/N)? '; ask '5 (Y/N)? '\n"
            "ask '6 (Y/N)? '",
            "syjosy");
        row("output that asks nothing takes no letter",
            "echo 'Is it FAT32? '; sleep 0.05; printf '100 %% (done)?'; sleep 0.05\n"
            "printf ' Fix (Y/N)? x'; sleep 0.05; ask ' (Y/N)? '",
            "s");
        row("a question in several pieces",
            "printf 'Fix'; sleep 0.05; printf ' (Y/N)'; sleep 0.05; printf '?'; sleep 0.05\n"
            "ask ' '; ask 'Sure (Y/N)? '",
            "sy");
#ifdef Q_OS_UNIX
        row("a question after more than 3000 bytes", "printf '%05000d' 0; ask ' (Y/N)? '", "s");
#endif
        row("a question before a zero byte", "ask 'Fix (Y/N)? \\000rest'", "s");
        row("a question in letters of another alphabet",
            "ask 'R\\351parer l\\047unit\\351 \\200\\377 (O/N)? '", "s");
    }
    void answers()
    {
        const auto [script, letters] = cells<QString, QString>();
        QVERIFY(m_program->write(script.toUtf8() + "\nexit 1"));
        QCOMPARE(check(), DiskCheck::ErrorsFixed);
        QByteArray answers;
        for (const QChar letter : qAsConst(letters))
            answers += letter.toLatin1() + QByteArray("\r\n");
        QCOMPARE(m_program->written(text("answers")), answers);
    }

    void waitsAsLongAsIsRequired()
    {
        QCOMPARE(DiskCheckTimings().toStart, 60000);
        QCOMPARE(DiskCheckTimings().toFinish, 300000);
    }

    void notStartable()
    {
        QCOMPARE(check(), DiskCheck::NotRun); // there is no such program
#ifdef Q_OS_UNIX
        QVERIFY(m_program->write("exit 0", "/no/such/interpreter"));
        QCOMPARE(check(), DiskCheck::NotRun);
        QVERIFY(QFile::remove(m_program->program()));
#endif
        QVERIFY(QDir().mkdir(m_program->program()));
        QCOMPARE(check(), DiskCheck::NotRun);
    }

    void neverEnding_data()
    {
        const Table<QString> row;
        row("saying nothing", "exec sleep 60");
        row("after a question", "printf 'Fix (Y/N)? '; exec sleep 60");
#ifdef Q_OS_UNIX
        row("going on and on", "while :; do echo ...; sleep 0.02; done");
        row("deaf to all but a kill", "trap '' TERM HUP INT; while :; do sleep 0.02; done");
#endif
    }
    void neverEnding()
    {
        const auto [script] = cells<QString>();
        QVERIFY(m_program->write("echo $$ > pid\n" + script.toUtf8()));
        int pid = 0;
        // A busy machine may not have come to the script's first line by then.
        for (int toFinish = 300; pid == 0 && toFinish < 10000; toFinish *= 3) {
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(check(toFinish), DiskCheck::NotRun);
            QVERIFY(timer.elapsed() >= toFinish);
            QVERIFY(timer.elapsed() < 20000);
            pid = m_program->written(text("pid")).trimmed().toInt();
        }
        QVERIFY(pid > 0);
        QVERIFY2(!DiskCheckScript::isRunning(pid), "it still runs");
    }

    void quittingTheProgramEndsTheCheck()
    {
        QVERIFY(m_program->write("exec sleep 60"));
        QTimer::singleShot(100, qApp, &QCoreApplication::quit);
        DiskCheck::Result result = DiskCheck::NoErrors;
        QTimer::singleShot(0, [&result] { result = check(); });
        QCoreApplication::exec();
        QCOMPARE(result, DiskCheck::NotRun);
    }

    void eventsAreProcessedMeanwhile()
    {
        QVERIFY(m_program->write("await go; exit 0"));
        int ticks = 0;
        QTimer ticking;
        connect(&ticking, &QTimer::timeout, [&] {
            if (m_program->hasBegun() && ++ticks == 3)
                QVERIFY(m_program->letGo());
        });
        ticking.start(20);
        QCOMPARE(check(), DiskCheck::NoErrors);
    }

    void outputIsLogged()
    {
        const QByteArray unit = text("unità").toLocal8Bit(); // as the program speaks
        QByteArray script = "printf 'Controllo ";
        for (const char letter : unit)
            script +=
                '\\' + QByteArray::number(static_cast<uchar>(letter), 8).rightJustified(3, '0');
        QVERIFY(m_program->write(script + " \\377'; exit 0"));
        const LogCapture log;
        QCOMPARE(check(), DiskCheck::NoErrors);
        QCOMPARE(LogCapture::lines().size(), 1);
        QVERIFY2(LogCapture::lines().constFirst().startsWith(text("\"Controllo unità ")),
                 qPrintable(LogCapture::lines().constFirst()));
    }

    void nextRunBeginsWithTheFirstLetter()
    {
        QVERIFY(m_program->write("ask 'Fix (Y/N)? '"));
        DiskCheck diskCheck({pastAnyTest, pastAnyTest});
        QCOMPARE(diskCheck.run(text("E:")), DiskCheck::NoErrors);
        QCOMPARE(diskCheck.run(text("E:")), DiskCheck::NoErrors);
        QCOMPARE(m_program->written(text("answers")), QByteArray("s\r\ns\r\n"));
    }

private:
    static DiskCheck::Result check(int toFinish = pastAnyTest)
    {
        return DiskCheck({pastAnyTest, toFinish}).run(text("E:"));
    }

    QScopedPointer<DiskCheckProgram> m_program;
};

QTEST_MAIN(tst_DiskCheck)
#include "tst_diskcheck.moc"
