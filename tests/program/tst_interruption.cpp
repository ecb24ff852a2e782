#include "storage/windowshandle.h"
#include "tests/storage/foldertest.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <optional>
#include <utility>

using namespace tarvel4;
using namespace SongBytes;

namespace {

constexpr int interrupted = 130;

BOOL WINAPI goOn(DWORD)
{
    return TRUE;
}

/** A pipe to or from the command line; a write of more than its bytes waits for a reader. */
class Pipe
{
public:
    Pipe()
    {
        constexpr DWORD fewBytes = 16; // less than a record
        SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
        CreatePipe(&m_readEnd, &m_writeEnd, &inherited, fewBytes);
    }
    ~Pipe()
    {
        CloseHandle(m_readEnd);
        closeWriteEnd();
    }
    Q_DISABLE_COPY(Pipe)

    HANDLE readEnd() const { return m_readEnd; }
    HANDLE writeEnd() const { return m_writeEnd; }
    void closeWriteEnd() { CloseHandle(std::exchange(m_writeEnd, nullptr)); }

    /** Some of what there is, once there is any. */
    QByteArray readSome() const
    {
        QByteArray bytes(1 << 12, '\0');
        DWORD got = 0;
        ReadFile(m_readEnd, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr);
        return bytes.left(static_cast<int>(got));
    }
    QByteArray readAll() const
    {
        QByteArray all;
        for (QByteArray bytes = readSome(); !bytes.isEmpty(); bytes = readSome())
            all += bytes;
        return all;
    }
    void write(const QByteArray &bytes) const
    {
        DWORD written = 0;
        WriteFile(m_writeEnd, bytes.constData(), static_cast<DWORD>(bytes.size()), &written,
                  nullptr);
    }
    bool isEmpty() const
    {
        DWORD waiting = 0;
        return PeekNamedPipe(m_readEnd, nullptr, 0, nullptr, &waiting, nullptr) && waiting == 0;
    }

private:
    HANDLE m_readEnd = nullptr;
    HANDLE m_writeEnd = nullptr;
};

} // namespace

/** Ctrl+C of Windows, which reaches whatever runs in a console. */
class tst_Interruption : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        FreeConsole(); // one of its own, in which nothing else is interrupted
        if (!AllocConsole())
            QSKIP("There is no console");
        QVERIFY(SetConsoleCtrlHandler(goOn, TRUE));
    }

    void init()
    {
        makeFolder();
        m_input.emplace();
        m_output.emplace();
        m_program.emplace();
    }
    void cleanup()
    {
        m_program->kill();
        m_program->waitForFinished();
    }

    void finishesTheSongInHand()
    {
        start({"edit"_s, "--json"_s, "--title"_s, "New"_s, "--files-from"_s, listOfSongs()});
        QByteArray records = m_output->readSome();
        interrupt();
        records += m_output->readAll();
        QVERIFY(m_program->waitForFinished());
        QCOMPARE(m_program->exitCode(), interrupted);

        QVERIFY(records.endsWith("}\n"));
        QStringList told;
        for (const QByteArray &record : records.trimmed().split('\n')) {
            const QJsonObject object = QJsonDocument::fromJson(record).object();
            told += QFileInfo(object["path"_s].toString()).fileName();
            QVERIFY2(object["title"_s] == "New"_s, record.constData());
        }
        QVERIFY2(told.size() < songCount, qPrintable(QString::number(told.size())));
        QStringList changed;
        for (const QString &name : names()) {
            if (name.endsWith(".mid"_s) && read(path(name)) != song())
                changed += name;
        }
        QCOMPARE(told, changed);
    }

    void endsWhileItWaitsForPaths()
    {
        start({"info"_s, "--files-from"_s, "-"_s});
        m_input->write("a.mid");
        QTRY_VERIFY(m_input->isEmpty());
        interrupt();
        QVERIFY(m_program->waitForFinished());
        QCOMPARE(m_program->exitCode(), interrupted);
        QCOMPARE(m_output->readAll(), QByteArray());
    }

    /** What it waits for is somebody who takes its first record. On a busy machine wine tells it of
     * two that come together as of one. */
    void endsAtOnceWhenInterruptedTwice()
    {
        start({"info"_s, "--json"_s, "--files-from"_s, listOfSongs()});
        QTRY_VERIFY(!m_output->isEmpty());
        interrupt();
        const auto endsByAnother = [this] {
            interrupt();
            return m_program->waitForFinished(500);
        };
        QVERIFY(QTest::qWaitFor(endsByAnother, 30000));
        QVERIFY(m_program->exitCode() != interrupted);
    }

private:
    static constexpr int songCount = 1000;

    static QByteArray song() { return midi0(meta(3, "Old") + meta(2, "(c) K-VARO")); }

    /** A file that names the songs, which it makes in the order of their names. */
    QString listOfSongs() const
    {
        QByteArray list;
        for (int i = 0; i < songCount; ++i) {
            const QString file = path("%1.mid"_s.arg(i, 4, 10, QLatin1Char('0')));
            write(file, song());
            list += QFile::encodeName(file) + '\n';
        }
        write(path("list"), list);
        return path("list");
    }

    void start(const QStringList &arguments)
    {
        m_program->setStandardInputFile(QProcess::nullDevice());
        m_program->setStandardOutputFile(QProcess::nullDevice());
        m_program->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_program->setCreateProcessArgumentsModifier([this](auto *process) {
            process->flags &= ~static_cast<unsigned long>(CREATE_NO_WINDOW); // the test's console
            process->startupInfo->hStdInput = m_input->readEnd();
            process->startupInfo->hStdOutput = m_output->writeEnd();
        });
        m_program->start(QStringLiteral(TARVEL4_CLI), arguments);
        QVERIFY(m_program->waitForStarted());
        m_output->closeWriteEnd();
    }

    static void interrupt() { QVERIFY(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0)); }

    std::optional<Pipe> m_input;
    std::optional<Pipe> m_output;
    std::optional<QProcess> m_program;
};

QTEST_GUILESS_MAIN(tst_Interruption)
#include "tst_interruption.moc"
