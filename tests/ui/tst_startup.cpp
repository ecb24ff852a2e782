#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/storage/table.h"

#include <QSettings>

#include <csignal>
#include <optional>

using namespace tarvel4;
using namespace TestFiles;

namespace {

constexpr int prefixLength = 24; // "[dd-MM-yyyy hh:mm:ss]D| "
constexpr int patience = 20000; // milliseconds

} // namespace

/** The program itself, started as a user starts it, with a settings store and a folder of its own.
 */
class tst_Startup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.emplace();
        QVERIFY(QDir(m_folder->path()).mkdir(text("work")));
        m_program.emplace();
        m_locale = text("C.UTF-8");
    }
    void cleanup()
    {
        m_program->kill();
        m_program->waitForFinished();
    }

    void starts_data()
    {
        const Table<QString, QByteArray, QString, bool, bool> row;
        row("with no choice made yet", "it_IT.UTF-8", QByteArray("language=--\n"), "it", false,
            true);
        row("with a language that is stored, and kept", "it_IT.UTF-8",
            QByteArray("logenabled=true\nlanguage=fr\n"), "fr", true, true);
        row("with a log that is enabled, not cleared: each start appends the banner", "C.UTF-8",
            QByteArray("logenabled=true\nlogclear=false\n"), "en", true, true);
        row("with a log that is enabled and cleared: it begins afresh", "C.UTF-8",
            QByteArray("logenabled=true\nlogclear=true\n"), "en", true, false);
        row("with a log that is cleared but not enabled: the old one is kept", "C.UTF-8",
            QByteArray("logenabled=false\nlogclear=true\n"), "en", false, true);
    }
    void starts()
    {
        const auto [locale, settings, language, isLogged, isOldLogKept] =
            cells<QString, QByteArray, QString, bool, bool>();
        if (!settings.isEmpty())
            store(settings);
        write(logName(), "an old line\n");
        m_locale = locale;
        start();
        if (isLogged)
            QTRY_VERIFY_WITH_TIMEOUT(log().contains("DB initialized correctly"), patience);
        QTRY_COMPARE_WITH_TIMEOUT(stored("language"), language, patience);
        QCOMPARE(log().startsWith("an old line\n"), isOldLogKept);
        QCOMPARE(log().count("Log start"), isLogged ? 1 : 0);
        if (isLogged) { // its six lines, right behind the old log
            QVERIFY(logTexts().constFirst().startsWith("|=="));
            QCOMPARE(logTexts().value(5), QByteArray());
        }
    }

    void startsTheFirstTime_data()
    {
        const Table<QString, QString> row;
        row("on an Italian system: \"it\" is kept, and there is no log.txt", "it_CH.UTF-8", "it");
        row("on any other system: \"en\" is kept, and there is no log.txt", "de_DE.UTF-8", "en");
    }
    void startsTheFirstTime()
    {
        const auto [locale, language] = cells<QString, QString>();
        m_locale = locale;
        start();
        // the copy of the catalogue is the last thing that is made before the window opens
        QTRY_COMPARE_WITH_TIMEOUT(catalogues().size(), 1, patience);
        QCOMPARE(stored("language"), language);
        QVERIFY(!QFile::exists(logName()));
    }

    void logOpensWithTheBanner()
    {
        store("logenabled=true\n");
        startAndWait();
        const QList<QByteArray> texts = logTexts();
        QVERIFY(texts.size() > 7);
        QVERIFY(texts.at(1).contains("Log start")); // tst_messagelog has the whole banner
        QCOMPARE(texts.at(5), QByteArray());
        QVERIFY(texts.at(6).startsWith("[Database::init] Created temporary db file: "));
        QCOMPARE(texts.at(7), QByteArray("DB initialized correctly"));
    }

    void fatalMessageComesAfterTheBanner()
    {
        // the application object can't be made, and there is no log
        start("no-such-platform");
        QVERIFY(m_program->waitForFinished(patience));
        QCOMPARE(m_program->exitStatus(), QProcess::CrashExit);
        QVERIFY(!QFile::exists(logName()));
        QVERIFY(m_program->readAllStandardError().isEmpty());

        store("logenabled=true\n");
        start("no-such-platform");
        QVERIFY(m_program->waitForFinished(patience));
        QCOMPARE(m_program->exitStatus(), QProcess::CrashExit);
        QCOMPARE(logTexts().value(2), QByteArray("(c)K-Varo Tarvel4 Soft"));
        QVERIFY2(log().contains("]F| "), "the fatal message is in the log");
        QVERIFY2(stored("language").isEmpty(), "chosen later");
    }

    void catalogueThatCantBeOpenedIsLogged()
    {
        store("logenabled=true\n");
        QVERIFY(QDir().mkdir(path("work/songsdb_debug"))); // a folder
        start();
        QTRY_VERIFY_WITH_TIMEOUT(log().contains("D| Error initializing DB !!!"), patience);
        QVERIFY2(!m_program->waitForFinished(500), "the window opens all the same");
    }

    void closingTheWindowEndsTheProgram_data()
    {
        const Table<bool> row;
        row("with a log", true);
        row("without a dialog before it where the log can't be written", false);
    }
    void closingTheWindowEndsTheProgram()
    {
        const auto [isLogWritable] = cells<bool>();
        if (qEnvironmentVariable("QT_QPA_PLATFORM") != text("xcb"))
            QSKIP("There is no frame to close without an X server.");
        if (!QFile::exists(QStringLiteral(TARVEL4_CLOSEWINDOW)))
            QSKIP("Built without Xlib.");
        store("logenabled=true\n");
        if (!isLogWritable)
            QVERIFY(QDir().mkdir(logName())); // a folder
        start();
        bool asked = false;
        const auto askToClose = [&asked] {
            asked = asked
                || QProcess::execute(QStringLiteral(TARVEL4_CLOSEWINDOW), {text("Tarvel4 Soft")})
                    == 0;
            return asked;
        };
        QTRY_VERIFY_WITH_TIMEOUT(askToClose(), patience);
        QVERIFY(endsWell());
        QCOMPARE(QFileInfo(logName()).isDir(), !isLogWritable);
    }

    void signalsEndTheProgram()
    {
        store("logenabled=true\n");
        for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
            QFile::remove(logName());
            startAndWait();
            QCOMPARE(catalogues().size(), 1);
            QCOMPARE(kill(static_cast<pid_t>(m_program->processId()), signal), 0);
            QVERIFY(endsWell());
            QCOMPARE(catalogues(), QStringList());
        }
    }

private:
    QString path(const char *name) const { return m_folder->filePath(text(name)); }
    QString logName() const { return path("work/log.txt"); }
    QByteArray log() const { return read(logName()); }

    /** The debug lines of the log without their time and tag. */
    QList<QByteArray> logTexts() const
    {
        QList<QByteArray> texts;
        const QList<QByteArray> lines = log().split('\n');
        for (const QByteArray &line : lines) {
            if (line.mid(prefixLength - 3, 3) == "D| ")
                texts.append(line.mid(prefixLength));
        }
        return texts;
    }

    /** The copies of the catalogue that programs have made and not yet removed. */
    QStringList catalogues() const
    {
        return QDir(m_folder->path()).entryList({text("tarvel4soft.*")}, QDir::Files);
    }

    QString settingsName() const { return path("config/kvaro/tarvel4soft.conf"); }
    /** Writes the settings store that the program will find. */
    void store(const QByteArray &settings) const
    {
        write(settingsName(), "[General]\n" + settings);
    }
    QString stored(const char *key) const
    {
        return QSettings(settingsName(), QSettings::IniFormat).value(text(key)).toString();
    }

    void start(const char *platform = nullptr)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("XDG_CONFIG_HOME"), path("config"));
        environment.insert(text("HOME"), m_folder->path());
        // a program that is killed by cleanup() leaves its copy of the catalogue
        environment.insert(text("TMPDIR"), m_folder->path());
        environment.insert(text("LC_ALL"), m_locale);
        if (platform)
            environment.insert(text("QT_QPA_PLATFORM"), text(platform));
        m_program->setProcessEnvironment(environment);
        m_program->setWorkingDirectory(path("work"));
        m_program->start(QStringLiteral(TARVEL4_PROGRAM), QStringList());
        QVERIFY(m_program->waitForStarted());
    }
    /** Starts the program, and waits for the last line that it writes before its window opens. */
    void startAndWait()
    {
        start();
        QTRY_VERIFY_WITH_TIMEOUT(log().contains("DB initialized correctly"), patience);
    }
    bool endsWell()
    {
        return m_program->waitForFinished(patience)
            && m_program->exitStatus() == QProcess::NormalExit && m_program->exitCode() == 0;
    }

    std::optional<QTemporaryDir> m_folder;
    std::optional<QProcess> m_program;
    QString m_locale;
};

QTEST_MAIN(tst_Startup)
#include "tst_startup.moc"
