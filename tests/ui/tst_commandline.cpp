#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/storage/table.h"

#include <optional>

using namespace tarvel4;
using namespace TestFiles;

namespace {

constexpr int patience = 20000; // milliseconds

} // namespace

/** What the program says on the terminal in place of opening its window: its help, its version, and
 * why there is no window. */
class tst_CommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.emplace();
        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert(text("HOME"), m_folder->path());
        m_environment.insert(text("XDG_CONFIG_HOME"), m_folder->filePath(text("config")));
        m_environment.insert(text("XDG_RUNTIME_DIR"), m_folder->path());
        m_environment.insert(text("LC_ALL"), text("C.UTF-8"));
        for (const char *name : {"DISPLAY", "QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "WAYLAND_SOCKET",
                                 "XDG_SESSION_TYPE"})
            m_environment.remove(text(name));
    }

    void helpAndVersionNeedNoDisplay_data()
    {
        const Table<QStringList, QString, QByteArray> row;
        row("version", strings({"--version"}), "C.UTF-8", QByteArray("tarvel4soft 1.0\n"));
        row("help", strings({"--help"}), "C.UTF-8", QByteArray("Usage: tarvel4soft "));
        row("help, shortly", strings({"-h"}), "C.UTF-8", QByteArray("Usage: tarvel4soft "));
        row("help in Italian", strings({"--help"}), "it_IT.UTF-8", QByteArray("Uso: tarvel4soft "));
        row("help among other words", strings({"a.mid", "--help"}), "C.UTF-8",
            QByteArray("Usage: tarvel4soft "));
        row("of a platform that is not there", strings({"-platform", "none", "--version"}),
            "C.UTF-8", QByteArray("tarvel4soft 1.0\n"));
    }
    void helpAndVersionNeedNoDisplay()
    {
        const auto [words, locale, output] = cells<QStringList, QString, QByteArray>();
        m_environment.insert(text("LC_ALL"), locale);
        QCOMPARE(run(words), 0);
        QVERIFY2(m_output.startsWith(output), m_output);
        QCOMPARE(m_errors, QByteArray());
        QVERIFY2(!QFile::exists(m_folder->filePath(text("config/kvaro/tarvel4soft.conf"))),
                 "the language is not chosen yet");
    }

    void displayThatCantBeReached_data()
    {
        const Table<QStringList, QStringList> row;
        row("none", {}, {});
        row("an X server that is not there", {}, strings({"DISPLAY=:9999"}));
        row("a display that is no name of one", {}, strings({"DISPLAY=nonsense"}));
        row("named by an option, before the one that is there", strings({"-display", ":9999"}),
            {text("DISPLAY=") + qEnvironmentVariable("DISPLAY")});
        row("a platform that needs one, named by an option", strings({"-platform", "xcb"}),
            strings({"QT_QPA_PLATFORM=offscreen"}));
        row("a platform that needs one, named by a variable", {}, strings({"QT_QPA_PLATFORM=xcb"}));
        row("a Wayland that is not there", {},
            strings({"WAYLAND_DISPLAY=wayland-9", "XDG_SESSION_TYPE=wayland"}));
        row("a Wayland and an X server that are not there", {},
            strings({"QT_QPA_PLATFORM=wayland-egl;xcb", "DISPLAY=:9999"}));
        row("options of Qt behind the end of the options",
            strings({"--", "-platform", "offscreen"}), {});
    }
    void displayThatCantBeReached()
    {
        const auto [words, variables] = cells<QStringList, QStringList>();
        for (const QString &variable : variables)
            m_environment.insert(variable.section(QLatin1Char('='), 0, 0),
                                 variable.section(QLatin1Char('='), 1));
        QCOMPARE(run(words), 1);
        QCOMPARE(m_errors,
                 QByteArray("tarvel4soft: no display can be reached, the window does not open.\n"));
        QCOMPARE(m_output, QByteArray());
    }

    void missingDisplayStandsInTheLog()
    {
        write(m_folder->filePath(text("config/kvaro/tarvel4soft.conf")),
              "[General]\nlogenabled=true\nlanguage=it\n");
        QCOMPARE(run({}), 1);
        QVERIFY(m_errors.startsWith("tarvel4soft: nessuno schermo raggiungibile"));
        const QByteArray log = read(m_folder->filePath(text("log.txt")));
        QVERIFY(log.contains("Log start"));
        QVERIFY(log.endsWith("]C| No display can be reached\n"));
    }

    void unknownOption_data()
    {
        const Table<QStringList> row;
        row("--bogus", strings({"-platform", "offscreen", "--bogus"}));
        row("-x", strings({"--platform", "offscreen", "-x", "--bogus", "a.mid"}));
    }
    void unknownOption()
    {
        const auto [words] = cells<QStringList>();
        QCOMPARE(run(words), 2);
        QCOMPARE(m_errors,
                 QByteArray("tarvel4soft: unknown option: ") + QTest::currentDataTag()
                     + " (--help shows those that there are)\n");
    }

private:
    /** The exit status; -1 after a crash, or where the program has not ended. */
    int run(const QStringList &words)
    {
        QProcess program;
        program.setProcessEnvironment(m_environment);
        program.setWorkingDirectory(m_folder->path());
        program.start(QStringLiteral(TARVEL4_PROGRAM), words);
        const bool hasEnded = program.waitForFinished(patience);
        if (!hasEnded) {
            program.kill();
            program.waitForFinished();
        }
        m_output = program.readAllStandardOutput();
        m_errors = program.readAllStandardError();
        return hasEnded && program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
    }

    std::optional<QTemporaryDir> m_folder;
    QProcessEnvironment m_environment;
    QByteArray m_output;
    QByteArray m_errors;
};

QTEST_MAIN(tst_CommandLine)
#include "tst_commandline.moc"
