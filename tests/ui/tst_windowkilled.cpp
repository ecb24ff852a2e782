#include "tests/ui/undotest.h"

#include <QProcess>

#include <climits>
#include <cstdio>
#include <cstring>
#include <string>

#ifdef Q_OS_LINUX
#include <csignal>
#include <sys/syscall.h>
#include <unistd.h>
#endif

using namespace tarvel4;

namespace {

constexpr char lastWriteVariable[] = "TARVEL4_LAST_WRITE"; ///< to a song; set for the one to die

constexpr int patience = 3000; // milliseconds
int writesToCome = 0; ///< until the process kills itself inside one; 0: it never does

} // namespace

#ifdef Q_OS_LINUX

extern "C" ssize_t write(int file, const void *bytes, std::size_t size)
{
    char path[PATH_MAX] = {};
    const auto link = "/proc/self/fd/" + std::to_string(file);
    const bool isSong = writesToCome > 0 && readlink(link.c_str(), path, sizeof path - 1) > 0
        && std::strstr(path, "/songs/") != nullptr;
    if (isSong && --writesToCome == 0) {
        syscall(SYS_write, file, bytes, size / 2);
        raise(SIGKILL);
    }
    return syscall(SYS_write, file, bytes, size);
}

#endif

/** The window that is killed: the same program, started by the test. */
class Victim : public UndoTest
{
    Q_OBJECT

private Q_SLOTS:
    void updatesSongsUntilItIsKilled()
    {
        makeFolder();
        std::printf("FOLDER=%s\n", qPrintable(path("")));
        std::fflush(stdout);
        openWindowWithoutSummaries();
        import(everyFormat());
        writesToCome = qEnvironmentVariableIntValue(lastWriteVariable);
        make(text("sync"));
        QFAIL("not killed");
    }
};

/** The window is killed in the middle of an update, and the next one puts its songs right. */
class tst_WindowKilled : public UndoTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }
    void cleanup()
    {
        if (!m_left.isEmpty())
            QDir(m_left).removeRecursively();
        closeWindow();
    }

    void nextWindowPutsTheSongsRight_data()
    {
        const Table<int, QString, QString> row; // the song that is written then; the new ones
        row("in the first song", 1, "volare.mid", "");
        row("in a song in the middle", 4, "volare.mf4", "volare.mid volare.kar volare.mf3");
        row("in the new file of an MP3", 6, "",
            "volare.mid volare.kar volare.mf3 volare.mf4 volare.mf5");
    }
    void nextWindowPutsTheSongsRight()
    {
#ifndef Q_OS_LINUX
        QSKIP("A write can't be replaced here");
#endif
        const auto [lastWrite, torn, renewed] = cells<int, QString, QString>();
        const QVector<QByteArray> before = bytesOf(everyFormat());
        const QString left = m_left = killAWindow(lastWrite);
        QVERIFY(!left.isEmpty());
        QStringList songs;
        for (const QString &song : everyFormat())
            songs += left + text("/songs/") + QFileInfo(song).fileName();
        const QVector<QByteArray> killed = bytesOf(songs);
        if (lastWrite == 6)
            QVERIFY(QFile::exists(left + text("/songs/volare.tmp")));

        qputenv("XDG_DATA_HOME", QFile::encodeName(left + text("/data")));
        if (!torn.isEmpty())
            m_driver->answerBox(QMessageBox::Ok);
        openWindowWithoutSummaries();
        QVERIFY(QTest::qWaitFor(&isRecovered, patience));
        QTRY_COMPARE(m_driver->boxes.size(), torn.isEmpty() ? 0 : 1);
        if (!torn.isEmpty())
            QVERIFY(m_driver->boxes.at(0).contains(torn));
        for (int i = 0; i < songs.size(); ++i) {
            const QString name = QFileInfo(songs.at(i)).fileName();
            const QByteArray now = TestFiles::read(songs.at(i));
            QCOMPARE(now != before.at(i), renewed.contains(name));
            QCOMPARE(now != killed.at(i), name == torn);
        }
        QVERIFY(!QFile::exists(left + text("/songs/volare.tmp")));

        if (!renewed.isEmpty())
            undo();
        QCOMPARE(bytesOf(songs), before);
    }

private:
    /** The folder of a window that was killed at a write to a song; empty where it came to no harm.
     */
    static QString killAWindow(int lastWrite)
    {
        QProcess victim;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text(lastWriteVariable), QString::number(lastWrite));
        victim.setProcessEnvironment(environment);
        victim.start(QCoreApplication::applicationFilePath(), QStringList());
        if (!victim.waitForFinished() || victim.exitStatus() != QProcess::CrashExit)
            return {};
        const QByteArray said = victim.readAllStandardOutput();
        const int begin =
            static_cast<int>(said.indexOf("FOLDER=") + static_cast<int>(qstrlen("FOLDER=")));
        return QFile::decodeName(said.mid(begin, said.indexOf('\n', begin) - begin));
    }

    /** True when nothing of a run waits any more. */
    static bool isRecovered()
    {
        JournalFile file(UserSettings::dataFolder(), {});
        if (!file.open(JournalFile::Access::Read))
            return false;
        QSqlQuery query = file.prepare("SELECT count(*) FROM pending");
        return file.exec(query) && query.next() && query.value(0).toInt() == 0;
    }

    QString m_left; ///< the victim's folder
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QTEST_SET_MAIN_SOURCE_PATH
    if (qEnvironmentVariableIsSet(lastWriteVariable)) {
        Victim victim;
        return QTest::qExec(&victim, argc, argv);
    }
    tst_WindowKilled test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_windowkilled.moc"
