#include "ui/diskcheck.h"

#include <QDebug>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>

#ifdef Q_OS_WIN
#include <QStandardPaths>

#include <array>
#include <windows.h>

#include <shlobj.h>
#endif

namespace tarvel4 {

namespace {

constexpr int driveLength = 2; // a letter and a colon
constexpr int mostBytesAtOnce = 3000;
constexpr char questionEnd[] = ")? ";
constexpr char yesLetters[] = {'s', 'y', 'j', 'o'}; // Italian, English, German, French

/** The text that a chunk of output holds: what stands before its first zero byte. */
QByteArray textOf(const QByteArray &chunk)
{
    return chunk.left(
        static_cast<int>(qstrnlen(chunk.constData(), static_cast<uint>(chunk.size()))));
}

#ifdef Q_OS_WIN

/** Never from the current folder, where Windows looks too: that may be one of the memory. */
QString diskCheckProgram()
{
    // else it says that errors are left, and the user would format a memory that has none
    if (!IsUserAnAdmin()) {
        qDebug() << "The disk check needs an administrator";
        return {};
    }
    const QString name = QStringLiteral("chkdsk");
    std::array<wchar_t, MAX_PATH> folder{};
    GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    const QString ofTheSystem =
        QStandardPaths::findExecutable(name, {QString::fromWCharArray(folder.data())});
    return ofTheSystem.isEmpty() ? QStandardPaths::findExecutable(name) : ofTheSystem;
}

#else

QString diskCheckProgram()
{
    return QStringLiteral("chkdsk");
}

#endif

DiskCheck::Result resultOf(const QProcess &ended)
{
    if (ended.exitStatus() == QProcess::CrashExit)
        return DiskCheck::ErrorsLeft;
    switch (ended.exitCode()) {
    case 0:
        return DiskCheck::NoErrors;
    case 1:
        return DiskCheck::ErrorsFixed;
    default:
        return DiskCheck::ErrorsLeft;
    }
}

} // namespace

DiskCheck::DiskCheck(const DiskCheckTimings &timings)
    : m_timings(timings)
{}

DiskCheck::Result DiskCheck::run(const QString &path)
{
    if (path.size() < driveLength || path.at(1) != QLatin1Char(':'))
        return NotRun;
    m_tail.clear();
    m_answer = 0;

    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    QEventLoop loop;
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &loop,
                     [this, &process] { readOutput(process); });
    QObject::connect(&process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), &loop,
                     &QEventLoop::quit);

    const QString program = diskCheckProgram();
    if (program.isEmpty())
        return NotRun;
    process.start(program, {path.left(driveLength), QStringLiteral("/F"), QStringLiteral("/R")},
                  QIODevice::ReadWrite);
    if (!process.waitForStarted(m_timings.toStart))
        return NotRun;
    QTimer::singleShot(m_timings.toFinish, &loop, &QEventLoop::quit);
    if (process.state() != QProcess::NotRunning)
        loop.exec();

    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
        return NotRun;
    }
    return resultOf(process);
}

/** Answers each question with the next letter, beginning again after the last. */
void DiskCheck::readOutput(QProcess &process)
{
    while (process.bytesAvailable() > 0) {
        const QByteArray text = textOf(process.read(mostBytesAtOnce));
        if (text.isEmpty())
            continue;
        qDebug() << QString::fromLocal8Bit(text);
        // a question may come in pieces
        m_tail = (m_tail + text).right(static_cast<int>(qstrlen(questionEnd)));
        if (m_tail != questionEnd)
            continue;
        process.write(QByteArray(1, yesLetters[m_answer]) + "\r\n");
        m_answer = (m_answer + 1) % static_cast<int>(sizeof yesLetters);
    }
}

} // namespace tarvel4
