#pragma once

#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"
#include "tests/storage/table.h"

#include <QDir>
#include <QTemporaryDir>

#include <memory>

namespace tarvel4 {

/** A test of the command line that runs in a folder of its own. Names of files are below it. */
class ProgramTest : public QObject
{
protected:
    /** A new folder, empty but for the named ones. */
    void makeFolder(const char *folders = "")
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_home = std::make_unique<QTemporaryDir>();
        for (const QString &folder : words(folders))
            QVERIFY(QDir(path()).mkpath(path(folder)));
    }

    QString path() const { return m_folder->path(); }
    QString path(const QString &name) const { return path() + QLatin1Char('/') + name; }
    QString path(const char *name) const { return path(QString::fromUtf8(name)); }

    template <typename Name> void write(const Name &name, const QByteArray &bytes) const
    {
        if (!Fixtures::write(path(name), bytes))
            qFatal("can't write %s", qPrintable(path(name)));
    }
    template <typename Name> QByteArray read(const Name &name) const
    {
        return Fixtures::read(path(name));
    }

    /** The user's folder, in which the programs keep their journal. */
    QString home() const { return m_home->path(); }

    Program program() const
    {
        Program program(path());
        program.setEnvironment("HOME"_s, home());
        return program;
    }

    /** Runs a line of the shell, where "$cli" is the program. */
    Run shell(const QString &line) const { return program().shell(line); }
    Run shell(const char *line) const { return shell(QString::fromUtf8(line)); }

    /** Runs the program with arguments as they are typed into a shell. */
    Run cli(const QString &arguments) const { return shell("\"$cli\" "_s + arguments); }
    Run cli(const char *arguments) const { return cli(QString::fromUtf8(arguments)); }

    /** Runs the program without a shell. */
    Run cliWith(const QStringList &arguments) const { return program().run(arguments); }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QTemporaryDir> m_home;
};

/** The samples that are songs, as paths. */
inline QStringList sampleSongs()
{
    QStringList paths;
    const QDir samples(QStringLiteral(TARVEL4_SAMPLES));
    for (const QString &name : samples.entryList(words("*.mid *.kar *.mf? *.mp3"), QDir::Files))
        paths.append(samples.filePath(name));
    return paths;
}

} // namespace tarvel4
