#include "tests/ui/undotest.h"

#include <QDirIterator>
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
constexpr char folderVariable[] = "TARVEL4_KILLED_FOLDER"; ///< of songs there already; else its own
constexpr char jobVariable[] = "TARVEL4_KILLED_JOB"; ///< "sync", or "undo" of the last one

constexpr int patience = 60000; // milliseconds; a busy machine takes its time
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

/** A test with a library that is more than one batch of saves. */
class LibraryTest : public UndoTest
{
protected:
    /** The samples, and 500 songs more, all called as one song of the catalogue is. */
    void makeLibrary() const
    {
        using namespace SongBytes;
        int folder = 0;
        const auto add = [&](const QString &suffix, const QByteArray &bytes) {
            const QString below = path("songs/") + QString::number(folder++);
            QDir().mkpath(below);
            TestFiles::write(below + text("/volare.") + suffix, bytes);
        };
        const QDir samples(QStringLiteral(TARVEL4_SAMPLES));
        for (const QFileInfo &sample :
             samples.entryInfoList(strings({"*.mid", "*.kar", "*.mf?", "*.mp3"}), QDir::Files))
            add(sample.suffix(), TestFiles::read(sample.filePath()));
        for (int i = 0; i < 500; ++i) {
            const QByteArray number = QByteArray::number(i);
            if (i % 3 == 0)
                add(text("mp3"), tag(frame("TIT2", "Song " + number)) + audio() + number);
            else
                add(text("mid"),
                    midi0(meta(3, "Song " + number) + meta(1, QByteArray(i % 90, 'x'))
                          + meta(2, "(c) K-VARO")));
        }
    }
    static QStringList songsBelow(const QString &folder)
    {
        QStringList songs;
        QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            songs += files.next();
        songs.sort();
        return songs;
    }
};

/** The window that is killed: the same program, started by the test. */
class Victim : public LibraryTest
{
    Q_OBJECT

private Q_SLOTS:
    void worksUntilItIsKilled()
    {
        const QString library = qEnvironmentVariable(folderVariable);
        makeFolder();
        if (!library.isEmpty())
            qputenv("XDG_DATA_HOME", QFile::encodeName(library + text("/data")));
        std::printf("FOLDER=%s\n", qPrintable(path("")));
        std::fflush(stdout);
        openWindowWithoutSummaries();
        const bool isUndo = qEnvironmentVariable(jobVariable) == text("undo");
        if (!isUndo)
            import(library.isEmpty() ? everyFormat() : songsBelow(library + text("/songs")));
        writesToCome = qEnvironmentVariableIntValue(lastWriteVariable);
        if (isUndo)
            undo();
        else
            make(text("sync"));
        QFAIL("not killed");
    }
};

/** The window is killed in the middle of an update, and the next one puts its songs right. */
class tst_WindowKilled : public LibraryTest
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

    /** The samples and 500 songs, in several batches. */
    void everyByteOfALibraryComesBack_data()
    {
        const Table<QString, int> row; // what is killed, at which write to a song
        row("after a synchronisation", "", 0);
        row("after one that was killed in its first batch", "sync", 21);
        row("after one that was killed later", "sync", 420);
        row("when the undo was killed in its first batch", "undo", 20);
        row("when the undo was killed later", "undo", 420);
    }
    void everyByteOfALibraryComesBack()
    {
#ifndef Q_OS_LINUX
        QSKIP("A write can't be replaced here");
#endif
        const auto [job, lastWrite] = cells<QString, int>();
        makeLibrary();
        const QStringList songs = songsBelow(path("songs"));
        QVERIFY(songs.size() > 500);
        const QVector<QByteArray> before = bytesOf(songs);
        if (job != text("sync")) {
            openWindowWithoutSummaries();
            import(songs);
            make(text("sync"));
            m_window.reset();
            QVERIFY(bytesOf(songs) != before);
        }
        if (!job.isEmpty()) {
            m_left = killAWindow(lastWrite, job, path(""));
            QVERIFY(!m_left.isEmpty());
            m_driver->answerBox(QMessageBox::Ok); // tells what was put right
        }
        openWindowWithoutSummaries();
        QVERIFY(QTest::qWaitFor(&isRecovered, patience));
        if (!job.isEmpty())
            QTRY_COMPARE(m_driver->boxes.size(), 1);
        const bool isUndone = bytesOf(songs) == before; // all that was written was put back
        if (!isUndone)
            undo();
        QVERIFY(!isUndone || job == text("sync"));
        const QVector<QByteArray> now = bytesOf(songs);
        for (int i = 0; i < songs.size(); ++i)
            QVERIFY2(now.at(i) == before.at(i), qPrintable(songs.at(i)));
        QCOMPARE(songsBelow(path("songs")), songs);
    }

private:
    /** The folder of a window that was killed at a write to a song; empty where it came to no harm.
     */
    static QString killAWindow(int lastWrite, const QString &job = QString(),
                               const QString &library = QString())
    {
        QProcess victim;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text(lastWriteVariable), QString::number(lastWrite));
        environment.insert(text(jobVariable), job);
        environment.insert(text(folderVariable), library);
        victim.setProcessEnvironment(environment);
        victim.start(QCoreApplication::applicationFilePath(), QStringList());
        if (!victim.waitForFinished(-1) || victim.exitStatus() != QProcess::CrashExit)
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
