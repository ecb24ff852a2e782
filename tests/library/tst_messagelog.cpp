#include "library/messagelog.h"
#include "storage/debuglog.h"

#include <QtTest>

#include <sys/stat.h>

using namespace tarvel4;

class tst_MessageLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void lineOfEachType_data();
    void lineOfEachType();
    void timeIsTheLocalTimeOfTheMessage();
    void linesAreAppended();
    void bannerOpensTheLog();
    void unwritableLogLosesTheLineSilently_data();
    void unwritableLogLosesTheLineSilently();
    void silentHandlerWritesNothing();
    void songLinesArePutTogetherOnlyForALog();
    void fatalMessageEndsTheProcess_data();
    void fatalMessageEndsTheProcess();

private:
    QByteArray log() const;
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

QByteArray tst_MessageLog::log() const
{
    QFile file(m_dir->filePath(QStringLiteral("log.txt")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_MessageLog::lineOfEachType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("debug") << int(QtDebugMsg) << QStringLiteral("a song")
                           << QByteArray("D| a song\n");
    QTest::newRow("warning") << int(QtWarningMsg) << QStringLiteral("a song")
                             << QByteArray("W| a song\n");
    QTest::newRow("critical") << int(QtCriticalMsg) << QStringLiteral("a song")
                              << QByteArray("C| a song\n");
    QTest::newRow("an info message never reaches the file")
        << int(QtInfoMsg) << QStringLiteral("a song") << QByteArray();
    QTest::newRow("an empty message is a line of its own")
        << int(QtDebugMsg) << QString() << QByteArray("D| \n");
    QTest::newRow("a text with line breaks is written as it is, with one break added")
        << int(QtDebugMsg) << QStringLiteral("one\ntwo\r\n") << QByteArray("D| one\ntwo\r\n\n");
    QTest::newRow("the text is UTF-8")
        << int(QtDebugMsg) << QString(QChar(0x00e8)) << QByteArray("D| \xc3\xa8\n");
    QTest::newRow("half a surrogate pair does not stop the log")
        << int(QtDebugMsg) << QString(QChar(0xd800)) << QByteArray("D| ?\n");
    QTest::newRow("percent signs are text")
        << int(QtDebugMsg) << QStringLiteral("%s%n") << QByteArray("D| %s%n\n");
}

void tst_MessageLog::lineOfEachType()
{
    QFETCH(int, type);
    QFETCH(QString, text);
    QFETCH(QByteArray, line);
    write(QtMsgType(type), text);
    if (line.isEmpty())
        QVERIFY(!QFile::exists(QStringLiteral("log.txt")));
    else
        QCOMPARE(log().mid(stampLength), line);
}

void tst_MessageLog::timeIsTheLocalTimeOfTheMessage()
{
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    write(QtDebugMsg, QStringLiteral("x"));
    const QDateTime after = QDateTime::currentDateTime();

    const QRegularExpression form(
        QStringLiteral("^\\[(\\d\\d)-(\\d\\d)-(\\d{4}) (\\d\\d):(\\d\\d):(\\d\\d)\\]D\\| x\n$"));
    const QRegularExpressionMatch match = form.match(QString::fromUtf8(log()));
    QVERIFY(match.hasMatch());
    const auto number = [&match](int group) { return match.captured(group).toInt(); };
    const QDateTime stamp(QDate(number(3), number(2), number(1)),
                          QTime(number(4), number(5), number(6)));
    QVERIFY(before <= stamp && stamp <= after);
}

void tst_MessageLog::linesAreAppended()
{
    write(QtDebugMsg, QStringLiteral("one"));
    write(QtWarningMsg, QStringLiteral("two"));
    const QList<QByteArray> lines = log().split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.at(0).endsWith("]D| one"));
    QVERIFY(lines.at(1).endsWith("]W| two"));
    QVERIFY(lines.at(2).isEmpty());
}

void tst_MessageLog::bannerOpensTheLog()
{
    const QtMessageHandler old = qInstallMessageHandler(&MessageLog::writeMessage);
    MessageLog::start();
    qDebug() << "Found file:" << QStringLiteral("a b");
    qInstallMessageHandler(old);

    const QList<QByteArray> lines = log().split('\n');
    QCOMPARE(lines.size(), 8);
    const auto text = [&lines](int i) { return lines.at(i).mid(stampLength); };
    QCOMPARE(text(0),
             QByteArray("D| |============================================================"
                        "==================|"));
    QCOMPARE(text(1),
             QByteArray("D| V ========================  Log start  "
                        "======================================= V"));
    QCOMPARE(text(2), QByteArray("D| (c)K-Varo Tarvel4 Soft"));
    QCOMPARE(text(3), QByteArray("D| Version:  1.0"));
    const QRegularExpression build(
        QStringLiteral("^D\\| Build:    [A-Z][a-z]{2} [ 1-3]\\d \\d{4} - \\d\\d:\\d\\d:\\d\\d$"));
    QVERIFY(build.match(QString::fromLatin1(text(4))).hasMatch());
    QCOMPARE(text(5), QByteArray("D| "));
    QCOMPARE(text(6), QByteArray("D| Found file: \"a b\""));
}

void tst_MessageLog::unwritableLogLosesTheLineSilently_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("the name is a folder's") << QStringLiteral("folder");
    QTest::newRow("the name is a FIFO's, without a hang") << QStringLiteral("fifo");
    QTest::newRow("the working directory is gone") << QStringLiteral("gone");
}

void tst_MessageLog::unwritableLogLosesTheLineSilently()
{
    QFETCH(QString, kind);
    if (kind == QLatin1String("folder"))
        QVERIFY(QDir().mkdir(QStringLiteral("log.txt")));
    else if (kind == QLatin1String("fifo"))
        QCOMPARE(mkfifo("log.txt", 0600), 0);
    else
        QVERIFY(QDir(m_dir->path()).removeRecursively());
    write(QtDebugMsg, QStringLiteral("lost"));
    QVERIFY(!QFileInfo(m_dir->filePath(QStringLiteral("log.txt"))).isFile());
}

void tst_MessageLog::silentHandlerWritesNothing()
{
    for (const QtMsgType type : {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg})
        MessageLog::dropMessage(type, QMessageLogContext(), QStringLiteral("x"));
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
    QVERIFY(log().isEmpty());
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
    QTest::newRow("logged") << QStringLiteral("--fatal-logged") << QByteArray("F| the end\n");
    QTest::newRow("silent: nothing is written") << QStringLiteral("--fatal-silent") << QByteArray();
    QTest::newRow("where the log can't be written, too")
        << QStringLiteral("--fatal-unwritable") << QByteArray();
}

void tst_MessageLog::fatalMessageEndsTheProcess()
{
    QFETCH(QString, handler);
    QFETCH(QByteArray, logged);
    if (handler == QLatin1String("--fatal-unwritable"))
        QVERIFY(QDir().mkdir(QStringLiteral("log.txt")));
    QProcess process;
    process.setWorkingDirectory(m_dir->path());
    process.start(QCoreApplication::applicationFilePath(), {handler});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    QCOMPARE(log().mid(stampLength), logged);
}

int main(int argc, char *argv[])
{
    const QByteArray first = argc > 1 ? argv[1] : "";
    if (first == "--fatal-logged" || first == "--fatal-unwritable")
        MessageLog::writeMessage(QtFatalMsg, QMessageLogContext(), QStringLiteral("the end"));
    if (first == "--fatal-silent")
        MessageLog::dropMessage(QtFatalMsg, QMessageLogContext(), QStringLiteral("the end"));

    QCoreApplication app(argc, argv);
    tst_MessageLog test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_messagelog.moc"
