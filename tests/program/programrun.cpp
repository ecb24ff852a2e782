#include "tests/program/programrun.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

#include <memory>

namespace tarvel4 {

namespace {

constexpr int longestRun = 60000; // milliseconds

/** Puts whole records among a program's output down for records_match_schema, which ctest runs
 * after the tests. */
void keepRecords(const QByteArray &out)
{
    const QString folder = qEnvironmentVariable("TARVEL4_RECORDS");
    if (folder.isEmpty())
        return;
    static const auto file = [&folder] {
        auto records = std::make_unique<QFile>(
            QDir(folder).filePath(QCoreApplication::applicationName() + QLatin1String(".jsonl")));
        if (!QDir().mkpath(folder) || !records->open(QIODevice::WriteOnly))
            qFatal("can't write %s", qPrintable(records->fileName()));
        return records;
    }();
    for (const QByteArray &line : out.split('\n')) {
        if (line.startsWith("{\"") && line.endsWith('}'))
            file->write(line + '\n');
    }
    file->flush();
}

} // namespace

QVector<QJsonObject> Run::records() const
{
    QVector<QJsonObject> records;
    for (const QByteArray &line : out.split('\n')) {
        if (line.isEmpty())
            continue;
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(line, &error);
        if (!document.isObject())
            QTest::qFail(qPrintable(QStringLiteral("no JSON object (%1): %2")
                                        .arg(error.errorString(), QString::fromUtf8(line))),
                         __FILE__, __LINE__);
        records += document.object();
    }
    return records;
}

QByteArray Run::saidOfSongs() const
{
    QByteArray said;
    for (const QByteArray &line : err.split('\n')) {
        if (!line.isEmpty() && !line.startsWith("tarvel4soft-cli: The journal of changes "))
            said += line + '\n';
    }
    return said;
}

QStringList Run::texts(const char *key) const
{
    QStringList texts;
    for (const QJsonObject &record : records())
        texts += record.value(QLatin1String(key)).toString();
    return texts;
}

QByteArray Run::told() const
{
    return "status " + QByteArray::number(status) + "\nout: " + out + "\nerr: " + err;
}

char *toString(const Run &run)
{
    return qstrdup(run.told().constData());
}

Program::Program(const QString &folder)
    : m_folder(folder)
{}

void Program::setEnvironment(const QString &name, const QString &value)
{
    m_environment.append({name, value});
}

Run Program::run(const QStringList &arguments) const
{
    QProcess process;
    process.setProgram(QStringLiteral(TARVEL4_CLI));
    process.setArguments(arguments);
    return finish(process, {});
}

Run Program::shell(const QString &line) const
{
    QProcess process;
    process.setProgram(QStringLiteral("/bin/bash"));
    process.setArguments({QStringLiteral("-c"), line});
    return finish(process, {});
}

Run Program::terminal(const QString &line, const QStringList &keys) const
{
    QProcess process;
    process.setProgram(QStringLiteral("script"));
    process.setArguments({QStringLiteral("--quiet"), QStringLiteral("--return"),
                          QStringLiteral("--command"), line, QStringLiteral("/dev/null")});
    process.setProcessChannelMode(QProcess::MergedChannels);
    return finish(process, keys);
}

Run Program::finish(QProcess &process, const QStringList &keys) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("cli"), QStringLiteral(TARVEL4_CLI));
#ifdef TARVEL4_WINDOWS_CLI
    environment.insert(QStringLiteral("TARVEL4_WINDOWS_CLI"), QStringLiteral(TARVEL4_WINDOWS_CLI));
#endif
    environment.insert(QStringLiteral("SHELL"), QStringLiteral("/bin/bash"));
    for (const auto &variable : m_environment)
        environment.insert(variable.first, variable.second);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_folder);
    process.start();

    Run run;
    for (const QString &entry : keys) {
        const QByteArray awaited = entry.section(QLatin1Char('\t'), 0, 0).toUtf8();
        const auto from = run.out.size();
        while (!run.out.mid(from).contains(awaited) && process.waitForReadyRead(longestRun))
            run.out += process.readAllStandardOutput();
        process.write(entry.section(QLatin1Char('\t'), 1).toUtf8());
        process.waitForBytesWritten();
    }
    process.closeWriteChannel();
    if (!process.waitForFinished(longestRun))
        process.kill();
    run.out += process.readAllStandardOutput();
    run.err = process.readAllStandardError();
#ifdef TARVEL4_WINDOWS_CLI // what Unix calls "/", where a full path is told
    run.out.replace("Z:/", "/");
    run.err.replace("Z:/", "/");
#endif
    keepRecords(run.out);
    run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return run;
}

bool hasTool(const QString &name)
{
    return !QStandardPaths::findExecutable(name).isEmpty();
}

bool canTrace()
{
    return hasTool(QStringLiteral("strace"))
        && QProcess::execute(
               QStringLiteral("strace"),
               {QStringLiteral("-o"), QStringLiteral("/dev/null"), QStringLiteral("true")})
        == 0;
}

QString failingToOpen(const QString &file, const QString &error)
{
    if (error.isEmpty())
        return {};
    return QStringLiteral("ASAN_OPTIONS=detect_leaks=0 strace -f -o /dev/null -P %1 "
                          "-e trace=openat -e inject=openat:error=%2 ")
        .arg(file, error);
}

} // namespace tarvel4
