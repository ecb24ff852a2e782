#pragma once

#include <QtTest>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <csignal>
#endif

namespace tarvel4 {

/** What differs between the systems in a DiskCheckProgram. */
namespace DiskCheckScript {

inline bool writeAll(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

#ifdef Q_OS_WIN

constexpr char suffix[] = ".exe";

/** A program that knows as much of a script as is needed here (chkdsk.cpp). */
inline bool write(const QString &program, const QByteArray &body, const QByteArray &)
{
    QFile::remove(program);
    return QFile::copy(QStringLiteral(TARVEL4_CHKDSK), program)
        && writeAll(QFileInfo(program).path() + QStringLiteral("/script"), body);
}

inline bool isRunning(int pid)
{
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(pid));
    const bool runs = process != nullptr && WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return runs;
}

#else

constexpr char suffix[] = "";

inline bool write(const QString &program, const QByteArray &body, const QByteArray &interpreter)
{
    const QByteArray script = "#!" + interpreter
        + "\nprintf '%s\\n' \"$@\" > arguments\n"
          "ask() { printf \"$1\"; read -r answer; printf '%s\\n' \"$answer\" >> answers; }\n"
          "await() { until [ -e \"$1\" ]; do sleep 0.01; done; }\n"
        + body + '\n';
    return writeAll(program, script)
        && QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
}

inline bool isRunning(int pid)
{
    return kill(pid, 0) == 0;
}

#endif

} // namespace DiskCheckScript

/**
 * A disk check program of a test's own: a shell script that stands first on the search path, in a
 * folder that is the working directory and holds a folder "E:" for the drive.
 */
class DiskCheckProgram
{
public:
    DiskCheckProgram()
        : m_path(qgetenv("PATH"))
        , m_workingDirectory(QDir::currentPath())
    {
        QDir(m_dir.path()).mkdir(QStringLiteral("E:"));
        QDir::setCurrent(m_dir.path());
        qputenv("PATH", m_dir.path().toLocal8Bit() + QDir::listSeparator().toLatin1() + m_path);
    }
    ~DiskCheckProgram()
    {
        qputenv("PATH", m_path);
        QDir::setCurrent(m_workingDirectory);
    }
    Q_DISABLE_COPY(DiskCheckProgram)

    /** \a body follows the line that keeps the arguments in the file "arguments"; it can ask. */
    bool write(const QByteArray &body, const QByteArray &interpreter = "/bin/sh")
    {
        return DiskCheckScript::write(program(), body, interpreter);
    }

    /** True once the program has begun. */
    bool hasBegun() const { return !written(QStringLiteral("arguments")).isEmpty(); }

    /** Ends its "await go". */
    bool letGo() { return DiskCheckScript::writeAll(path(QStringLiteral("go")), {}); }

    /** Where the program is. */
    QString program() const
    {
        return path(QStringLiteral("chkdsk") + QLatin1String(DiskCheckScript::suffix));
    }

    QString path(const QString &name) const { return m_dir.filePath(name); }

    /** What the program wrote into a file; null where there is none. */
    QByteArray written(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_dir;
    QByteArray m_path;
    QString m_workingDirectory;
};

} // namespace tarvel4
