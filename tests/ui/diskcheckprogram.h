#pragma once

#include <QtTest>

namespace tarvel4 {

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
        qputenv("PATH", m_dir.path().toLocal8Bit() + ':' + m_path);
    }
    ~DiskCheckProgram()
    {
        qputenv("PATH", m_path);
        QDir::setCurrent(m_workingDirectory);
    }
    Q_DISABLE_COPY(DiskCheckProgram)

    /** \a body follows the line that keeps the arguments in the file "arguments". */
    bool write(const QByteArray &body, const QByteArray &interpreter = "/bin/sh")
    {
        QFile file(path(QStringLiteral("chkdsk")));
        const QByteArray script =
            "#!" + interpreter + "\nprintf '%s\\n' \"$@\" > arguments\n" + body + '\n';
        if (!file.open(QIODevice::WriteOnly) || file.write(script) != script.size())
            return false;
        file.close();
        return file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
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
