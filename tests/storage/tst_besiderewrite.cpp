#include "tests/songs/songfixture.h"
#include "tests/storage/unixfile.h"

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

/** The new file beside an MP3 that is saved, and a song that changes meanwhile. */
class tst_BesideRewrite : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { makeFolder(); }

    void temporaryName_data()
    {
        const Table<QString, QString> row;
        row("it ends with tmp", "song.mp3", "song.tmp");
        row("only the last point counts", "a.b.mp3", "a.b.tmp");
        row("a name without a point", "songmp3", "songmp3.tmp");
        row("a point in the folder is none of the song's", "my.songs/songmp3",
            "my.songs/songmp3.tmp");
    }
    void temporaryName()
    {
        const auto [song, temporary] = cells<QString, QString>();
        QVERIFY(QDir(path()).mkdir("my.songs"_s));
        const QString file = write(path(song), songOf("mp3"_s));
        FailingDisk disk;
        bool isThere = false;
        disk.before = [&, &temporary = temporary](const QString &operation, int) {
            isThere = isThere || (operation == "syncAll"_s && QFile::exists(path(temporary)));
        };
        QVERIFY(imported(file, disk).saveToFile(file));
        QVERIFY(isThere);
        QVERIFY(!QFile::exists(path(temporary)));
    }

    void aFileWithTheTemporaryNameIsKept_data()
    {
        const Table<QByteArray> row;
        const QByteArray newTag = tag(editMark() + frame("TIT2", "Whatever"));
        row("a text", QByteArray("my notes"));
        row("nothing", {});
        row("what a save was killed over", newTag + audio(600).left(100'000));
        row("the song with another tag", newTag + audio(600));
    }
    void aFileWithTheTemporaryNameIsKept()
    {
        const auto [bytes] = cells<QByteArray>();
        const QString file = write(path("song.mp3"), songOf("mp3"_s));
        write(path("song.tmp"), bytes);
        if (UnixFile::isHere)
            QVERIFY(QFile::link(path("nowhere"), path("song.1.tmp")));
        MetaSong song = imported(file);
        setTitle(song, "New"_s);
        QVERIFY(song.saveToFile(file));
        QCOMPARE(titleIn(file), "New"_s);
        QVERIFY(read(file).endsWith(audio(600)));
        QCOMPARE(read(path("song.tmp")), bytes);
        QCOMPARE(QFileInfo(path("song.1.tmp")).isSymLink(), UnixFile::isHere);
        QCOMPARE(names(),
                 words(UnixFile::isHere ? "song.1.tmp song.mp3 song.tmp" : "song.mp3 song.tmp"));
    }

    void sourceChangedBeforeTheSave_data()
    {
        const Table<QByteArray, QString> row; // now: null: removed
        const QByteArray song = songOf("mp3"_s);
        row("it has another tag", tag(frame("TIT2", "Somebody's longer title")) + audio(600),
            "changed-meanwhile");
        row("it has another tag of the same size", QByteArray(song).replace("Old", "Odd"),
            "changed-meanwhile");
        row("it is shorter than its tag was", song.left(20), "changed-meanwhile");
        row("it has less audio, which is kept as it is", song.left(song.size() - 1000), "");
        row("it has more audio, which is kept, too", song + "more", "");
        row("it is gone", {}, "not-found");
    }
    void sourceChangedBeforeTheSave()
    {
        const auto [now, code] = cells<QByteArray, QString>();
        const QByteArray old = songOf("mp3"_s);
        const QString file = write(path("song.mp3"), old);
        MetaSong song = imported(file);
        setTitle(song, "New"_s);
        if (now.isNull())
            QVERIFY(QFile::remove(file));
        else
            write(file, now);
        const LogCapture capture;
        QCOMPARE(song.saveToFile(file).codeName(), code);
        const char *line = now.isNull() ? "[MetaSong::saveToFile] Impossible to read from file."
                                        : "[MetaSong::saveToFile] Impossible to seek file.";
        QCOMPARE(capture.lines(),
                 code.isEmpty() ? QStringList() : QStringList(QLatin1String(line)));
        if (code.isEmpty())
            QVERIFY(read(file).endsWith(now.mid(old.size() - audio(600).size())));
        else if (!now.isNull())
            QCOMPARE(read(file), now);
        QCOMPARE(names().size(), now.isNull() ? 0 : 1);
    }

    void sourceChangesDuringTheSave_data()
    {
        const Table<QByteArray> row; // now: null: removed
        const QByteArray song = songOf("mp3"_s);
        row("it grows", song + "more");
        row("it shrinks", song.left(song.size() / 2));
        row("it is gone", {});
    }
    void sourceChangesDuringTheSave()
    {
        const auto [now] = cells<QByteArray>();
        SKIP_WITHOUT_UNIX(now.isNull(), "way to remove a file that a program has open like that");
        for (const char *operation : {"write", "syncAll"}) {
            const QString file = write(path("song.mp3"), songOf("mp3"_s));
            FailingDisk disk;
            disk.before = [&, &now = now](const QString &name, int) {
                if (name != QLatin1String(operation))
                    return;
                if (now.isNull())
                    QFile::remove(file);
                else
                    write(file, now);
            };
            MetaSong song = imported(file, disk);
            setTitle(song, "New"_s);
            const LogCapture capture;
            QCOMPARE(song.saveToFile(file).codeName(), "changed-meanwhile"_s);
            QVERIFY(!capture.lines().isEmpty());
            QCOMPARE(names().size(), now.isNull() ? 0 : 1);
            if (!now.isNull())
                QCOMPARE(read(file), now);
        }
    }
};

QTEST_GUILESS_MAIN(tst_BesideRewrite)
#include "tst_besiderewrite.moc"
