#include "library/messagelog.h"
#include "storage/debuglog.h"
#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/storage/unixfile.h"

#include <QtTest>

using namespace tarvel4;

class tst_MessageLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void lines_data();
    void lines();
    void timeIsTheLocalTimeOfTheMessage();
    void bannerOpensTheLog();
    void unwritableLogLosesTheLineSilently();
    void silentHandlerWritesNothing();
    void songLinesArePutTogetherOnlyForALog();
    void fatalMessageEndsTheProcess_data();
    void fatalMessageEndsTheProcess();

private:
    static QByteArray log() { return TestFiles::read(text("log.txt")); }

    QString m_home;
    QScopedPointer<QTemporaryDir> m_dir;
};

namespace {

constexpr int stampLength = 21; // "[dd-MM-yyyy hh:mm:ss]"

void write(QtMsgType type, const QString &text)
{
    MessageLog::writeMessage(type, QMessageLogContext(), text);
}

} // namespace

void tst_MessageLog::init()
{
    m_home = QDir::currentPath();
    m_dir.reset(new QTemporaryDir);
    QVERIFY(QDir::setCurrent(m_dir->path()));
}

void tst_MessageLog::cleanup()
{
    QDir::setCurrent(m_home);
}

void tst_MessageLog::lines_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("line");
    const QString song = text("a song");
    QTest::newRow("warning") << static_cast<int>(QtWarningMsg) << song << QByteArray("W| a song\n");
    QTest::newRow("critical") << static_cast<int>(QtCriticalMsg) << song
                              << QByteArray("C| a song\n");
    QTest::newRow("an info message never reaches the file")
        << static_cast<int>(QtInfoMsg) << song << QByteArray();
    const auto row = [](const char *name, const QString &message, const char *line) {
        QTest::newRow(name) << static_cast<int>(QtDebugMsg) << message << QByteArray(line);
    };
    row("an empty message is a line of its own", QString(), "D| \n");
    row("line breaks are written as they are, with one added", text("one\ntwo\r\n"),
        "D| one\ntwo\r\n\n");
    row("the text is UTF-8", text("\u00e8"), "D| \xc3\xa8\n");
    row("half a surrogate pair does not stop the log", QString(QChar(0xd800)), "D| ?\n");
    row("percent signs are text", text("%s%n"), "D| %s%n\n");
}

void tst_MessageLog::lines()
{
    QFETCH(int, type);
    QFETCH(QString, message);
    QFETCH(QByteArray, line);
    write(QtMsgType(type), message);
    write(QtMsgType(type), message); // appended to what is there
    if (line.isEmpty())
        QVERIFY(!QFile::exists(text("log.txt")));
    else
        QCOMPARE(log().remove(0, stampLength).remove(line.size(), stampLength), line + line);
}

void tst_MessageLog::timeIsTheLocalTimeOfTheMessage()
{
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    write(QtDebugMsg, text("x"));
    const QDateTime after = QDateTime::currentDateTime();

    QCOMPARE(log().mid(stampLength), QByteArray("D| x\n"));
    const QDateTime stamp = QDateTime::fromString(QString::fromLatin1(log().left(stampLength)),
                                                  text("[dd-MM-yyyy hh:mm:ss]"));
    QVERIFY(before <= stamp && stamp <= after);
}

void tst_MessageLog::bannerOpensTheLog()
{
    const QtMessageHandler old = qInstallMessageHandler(&MessageLog::writeMessage);
    MessageLog::start();
    qDebug() << "Found file:" << text("a b");
    qInstallMessageHandler(old);

    QList<QByteArray> texts;
    for (const QByteArray &line : log().split('\n'))
        texts.append(line.mid(stampLength));
    QCOMPARE(texts.size(), 8);
    const QRegularExpression build(
        text("^D\\| Build:    [A-Z][a-z]{2} [ 1-3]\\d \\d{4} - \\d\\d:\\d\\d:\\d\\d$"));
    QVERIFY(build.match(QString::fromLatin1(texts.takeAt(4))).hasMatch());
    QCOMPARE(texts.join('\n'),
             "D| |" + QByteArray(78, '=') + "|\nD| V ========================  Log start  "
                 + QByteArray(39, '=') + " V\nD| (c)K-Varo Tarvel4 Soft\nD| Version:  1.0\nD| \n"
                 + "D| Found file: \"a b\"\n");
}

void tst_MessageLog::unwritableLogLosesTheLineSilently()
{
    QVERIFY(QDir().mkdir(text("log.txt")));
    write(QtDebugMsg, text("lost"));
    QVERIFY(QDir().rmdir(text("log.txt")));
    SKIP_WITHOUT_UNIX(true, "FIFO, and keeps a working folder from being removed");
    QVERIFY(UnixFile::makeFifo(text("log.txt")));
    write(QtDebugMsg, text("lost, without a hang"));
    QVERIFY(m_dir->remove()); // the working directory is gone
    write(QtDebugMsg, text("lost"));
    QVERIFY(!QFile::exists(m_dir->path()));
}

void tst_MessageLog::silentHandlerWritesNothing()
{
    for (const QtMsgType type : {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg})
        MessageLog::dropMessage(type, QMessageLogContext(), text("x"));
    QVERIFY(QDir(m_dir->path()).isEmpty());
}

void tst_MessageLog::songLinesArePutTogetherOnlyForALog()
{
    int lines = 0;
    const auto line = [&lines] { return ++lines; };
    const QtMessageHandler old = qInstallMessageHandler(&MessageLog::writeMessage);
    MessageLog::silence();
    qCDebug(debugLog) << "song" << line();
    QCOMPARE(lines, 0);
    QVERIFY(!QFile::exists(text("log.txt")));
    MessageLog::start();
    qCDebug(debugLog) << "song" << line();
    qInstallMessageHandler(old);
    QCOMPARE(lines, 1);
    QVERIFY(log().endsWith("]D| song 1\n"));
}

void tst_MessageLog::fatalMessageEndsTheProcess_data()
{
    QTest::addColumn<QString>("handler");
    QTest::addColumn<QByteArray>("logged");
    QTest::newRow("logged") << text("--fatal-logged") << QByteArray("F| the end\n");
    QTest::newRow("silent: nothing is written") << text("--fatal-silent") << QByteArray();
    QTest::newRow("where the log can't be written, too")
        << text("--fatal-unwritable") << QByteArray();
}

void tst_MessageLog::fatalMessageEndsTheProcess()
{
    QFETCH(QString, handler);
    QFETCH(QByteArray, logged);
    if (handler == text("--fatal-unwritable"))
        QVERIFY(QDir().mkdir(text("log.txt")));
    QProcess process;
    process.setWorkingDirectory(m_dir->path());
    process.start(QCoreApplication::applicationFilePath(), {handler});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus() == QProcess::CrashExit, UnixFile::isHere);
    QVERIFY(UnixFile::isHere || process.exitCode() == 3); // as abort() ends there
    QCOMPARE(logged.isEmpty(), !QFileInfo(text("log.txt")).isFile());
    if (!logged.isEmpty())
        QCOMPARE(log().mid(stampLength), logged);
}

int main(int argc, char *argv[])
{
    const QByteArray first = argc > 1 ? argv[1] : "";
    if (first == "--fatal-logged" || first == "--fatal-unwritable")
        MessageLog::writeMessage(QtFatalMsg, QMessageLogContext(), text("the end"));
    if (first == "--fatal-silent")
        MessageLog::dropMessage(QtFatalMsg, QMessageLogContext(), text("the end"));

    QCoreApplication app(argc, argv);
    tst_MessageLog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_messagelog.moc"
