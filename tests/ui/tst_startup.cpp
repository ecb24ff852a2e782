#include "tests/library/testfiles.h"
#include "tests/library/texts.h"

#include <QtTest>

#include <csignal>

using namespace tarvel4;

/** The program itself, started as a user starts it, with a settings store and a folder of its own.
 */
class tst_Startup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void firstRunChoosesTheLanguage_data();
    void firstRunChoosesTheLanguage();
    void storedLanguageIsKept();
    void logOpensWithTheBanner();
    void oldLog_data();
    void oldLog();
    void fatalMessageComesAfterTheBanner();
    void catalogueThatCantBeOpenedIsLogged();
    void closingTheWindowEndsTheProgram();
    void signalsEndTheProgram();

private:
    void store(const QByteArray &settings) const;
    QString stored(const QString &key) const;
    void start(const QString &platform = QString());
    void startAndWait();
    QByteArray log() const;
    QList<QByteArray> logTexts() const;
    QString logName() const { return m_dir->filePath(text("work/log.txt")); }

    QScopedPointer<QTemporaryDir> m_dir;
    QScopedPointer<QProcess> m_program;
    QString m_locale;
};

namespace {

constexpr int prefixLength = 24; // "[dd-MM-yyyy hh:mm:ss]D| "
constexpr int patience = 20000; // milliseconds

} // namespace

void tst_Startup::init()
{
    m_dir.reset(new QTemporaryDir);
    QVERIFY(QDir(m_dir->path()).mkpath(text("work")));
    m_program.reset(new QProcess);
    m_locale = text("C.UTF-8");
}

void tst_Startup::cleanup()
{
    m_program->kill();
    m_program->waitForFinished();
}

/** Writes the settings store that the program will find. */
void tst_Startup::store(const QByteArray &settings) const
{
    TestFiles::write(m_dir->filePath(text("config/kvaro/tarvel4soft.conf")),
                     "[General]\n" + settings);
}

QString tst_Startup::stored(const QString &key) const
{
    return QSettings(m_dir->filePath(text("config/kvaro/tarvel4soft.conf")), QSettings::IniFormat)
        .value(key)
        .toString();
}

void tst_Startup::start(const QString &platform)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(text("XDG_CONFIG_HOME"), m_dir->filePath(text("config")));
    environment.insert(text("HOME"), m_dir->path());
    // a program that is killed by cleanup() leaves its copy of the catalogue
    environment.insert(text("TMPDIR"), m_dir->path());
    environment.insert(text("LC_ALL"), m_locale);
    if (!platform.isEmpty())
        environment.insert(text("QT_QPA_PLATFORM"), platform);
    m_program->setProcessEnvironment(environment);
    m_program->setWorkingDirectory(m_dir->filePath(text("work")));
    m_program->start(QStringLiteral(TARVEL4_PROGRAM), QStringList());
    QVERIFY(m_program->waitForStarted());
}

/** Starts the program, and waits for the last line that it writes before its window opens. */
void tst_Startup::startAndWait()
{
    start();
    QTRY_VERIFY_WITH_TIMEOUT(log().contains("DB initialized correctly"), patience);
}

QByteArray tst_Startup::log() const
{
    return TestFiles::read(logName());
}

/** The debug lines of the log without their time and tag. */
QList<QByteArray> tst_Startup::logTexts() const
{
    QList<QByteArray> texts;
    const QList<QByteArray> lines = log().split('\n');
    for (const QByteArray &line : lines) {
        if (line.mid(prefixLength - 3, 3) == "D| ")
            texts.append(line.mid(prefixLength));
    }
    return texts;
}

void tst_Startup::firstRunChoosesTheLanguage_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("language");
    QTest::newRow("it_CH.UTF-8") << QByteArray() << text("it");
    QTest::newRow("de_DE.UTF-8") << QByteArray() << text("en");
    QTest::newRow("it_IT.UTF-8") << QByteArray("language=--\n") << text("it"); // no choice yet
}

void tst_Startup::firstRunChoosesTheLanguage()
{
    QFETCH(QByteArray, settings);
    QFETCH(QString, language);
    if (!settings.isEmpty())
        store(settings);
    m_locale = text(QTest::currentDataTag());
    start();
    QTRY_COMPARE_WITH_TIMEOUT(stored(text("language")), language, patience);
    QVERIFY2(!QFile::exists(logName()), "logging is off");
}

void tst_Startup::storedLanguageIsKept()
{
    m_locale = text("it_IT.UTF-8");
    store("logenabled=true\nlanguage=fr\n");
    startAndWait();
    QCOMPARE(stored(text("language")), text("fr"));
}

void tst_Startup::logOpensWithTheBanner()
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

void tst_Startup::oldLog_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<bool>("kept");
    QTest::addColumn<bool>("written");
    QTest::newRow("enabled, not cleared: each start appends")
        << QByteArray("logenabled=true\nlogclear=false\n") << true << true;
    QTest::newRow("enabled and cleared: starts afresh")
        << QByteArray("logenabled=true\nlogclear=true\n") << false << true;
    QTest::newRow("cleared but not enabled: the old log is kept")
        << QByteArray("logenabled=false\nlogclear=true\n") << true << false;
}

void tst_Startup::oldLog()
{
    QFETCH(QByteArray, settings);
    QFETCH(bool, kept);
    QFETCH(bool, written);
    store(settings);
    TestFiles::write(logName(), "an old line\n");
    start();
    if (written)
        QTRY_VERIFY_WITH_TIMEOUT(log().contains("DB initialized correctly"), patience);
    else
        QTRY_COMPARE_WITH_TIMEOUT(stored(text("language")), text("en"), patience);
    QCOMPARE(log().startsWith("an old line\n"), kept);
    QCOMPARE(log().count("Log start"), written ? 1 : 0);
}

void tst_Startup::fatalMessageComesAfterTheBanner()
{
    start(text("no-such-platform")); // the application object can't be made, and there is no log
    QVERIFY(m_program->waitForFinished(patience));
    QCOMPARE(m_program->exitStatus(), QProcess::CrashExit);
    QVERIFY(!QFile::exists(logName()));
    QVERIFY(m_program->readAllStandardError().isEmpty());

    store("logenabled=true\n");
    start(text("no-such-platform"));
    QVERIFY(m_program->waitForFinished(patience));
    QCOMPARE(m_program->exitStatus(), QProcess::CrashExit);
    QCOMPARE(logTexts().value(2), QByteArray("(c)K-Varo Tarvel4 Soft"));
    QVERIFY2(log().contains("]F| "), "the fatal message is in the log");
    QVERIFY2(stored(text("language")).isEmpty(), "chosen later");
}

void tst_Startup::catalogueThatCantBeOpenedIsLogged()
{
    store("logenabled=true\n");
    QVERIFY(QDir(m_dir->path()).mkpath(text("work/songsdb_debug"))); // a folder
    start();
    QTRY_VERIFY_WITH_TIMEOUT(log().contains("D| Error initializing DB !!!"), patience);
    QVERIFY2(!m_program->waitForFinished(500), "the window opens all the same");
}

void tst_Startup::closingTheWindowEndsTheProgram()
{
    if (qEnvironmentVariable("QT_QPA_PLATFORM") != text("xcb"))
        QSKIP("There is no frame to close without an X server.");
    if (!QFile::exists(QStringLiteral(TARVEL4_CLOSEWINDOW)))
        QSKIP("Built without Xlib.");
    store("logenabled=true\n");
    start();
    bool asked = false;
    const auto askToClose = [&asked] {
        asked = asked
            || QProcess::execute(QStringLiteral(TARVEL4_CLOSEWINDOW), {text("Tarvel4 Soft")}) == 0;
        return asked;
    };
    QTRY_VERIFY_WITH_TIMEOUT(askToClose(), patience);
    QVERIFY(m_program->waitForFinished(patience));
    QCOMPARE(m_program->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_program->exitCode(), 0);
}

void tst_Startup::signalsEndTheProgram()
{
    const auto catalogues = [this] {
        return QDir(m_dir->path()).entryList({text("tarvel4soft.*")}, QDir::Files);
    };
    store("logenabled=true\n");
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        QFile::remove(logName());
        startAndWait();
        QCOMPARE(catalogues().size(), 1);
        QCOMPARE(kill(static_cast<pid_t>(m_program->processId()), signal), 0);
        QVERIFY(m_program->waitForFinished(patience));
        QCOMPARE(m_program->exitStatus(), QProcess::NormalExit);
        QCOMPARE(m_program->exitCode(), 0);
        QCOMPARE(catalogues(), QStringList());
    }
}

QTEST_MAIN(tst_Startup)
#include "tst_startup.moc"
