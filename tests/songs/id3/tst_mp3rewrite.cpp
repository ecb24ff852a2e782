#include "tests/library/logcapture.h"
#include "tests/songs/savefixture.h"
#include "tests/storage/failingdisk.h"

using namespace tarvel4;

using namespace SaveFixture;
using namespace SongBytes;

/** The file beside an MP3 that is saved, and a song that changes meanwhile. */
class tst_Mp3Rewrite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<Folder>(); }
    void temporaryName_data();
    void temporaryName();
    void aForeignTemporaryFileIsKept_data();
    void aForeignTemporaryFileIsKept();
    void whatAKilledSaveLeftIsCleared_data();
    void whatAKilledSaveLeftIsCleared();
    void sourceChangedBeforeTheSave_data();
    void sourceChangedBeforeTheSave();
    void sourceChangesDuringTheSave_data();
    void sourceChangesDuringTheSave();

private:
    template <typename Name> QString path(const Name &name) const { return m_folder->path(name); }
    QString path() const { return m_folder->path(); }
    QStringList names() const { return m_folder->names(); }

    std::unique_ptr<Folder> m_folder;
};

void tst_Mp3Rewrite::temporaryName_data()
{
    QTest::addColumn<QString>("song");
    QTest::addColumn<QString>("temporary");

    QTest::newRow("song.mp3") << latin1("song.mp3") << latin1("song.tmp");
    QTest::newRow("only the last point counts") << latin1("a.b.mp3") << latin1("a.b.tmp");
    QTest::newRow("a name without a point") << latin1("songmp3") << latin1("songmp3.tmp");
    QTest::newRow("a point in the folder is none of the song's")
        << latin1("my.songs/songmp3") << latin1("my.songs/songmp3.tmp");
}

void tst_Mp3Rewrite::temporaryName()
{
    QFETCH(QString, song);
    QFETCH(QString, temporary);

    QVERIFY(QDir(path()).mkdir(latin1("my.songs")));
    const QString file = write(path(song), songOf(latin1("mp3")));
    FailingDisk disk;
    bool isThere = false;
    disk.before = [&](const QString &operation) {
        if (operation == latin1("sync"))
            isThere = QFile::exists(path(temporary));
    };
    QVERIFY(imported(file, disk).saveToFile(file));
    QVERIFY(isThere);
    QVERIFY(!QFile::exists(path(temporary)));
}

void tst_Mp3Rewrite::aForeignTemporaryFileIsKept_data()
{
    QTest::addColumn<QByteArray>("foreign");

    const QByteArray song = songOf(latin1("mp3"));
    QTest::newRow("a text") << QByteArray("my notes");
    QTest::newRow("another song") << tag(editMark()) + audio(3).replace('\0', '\1');
    QTest::newRow("the song without our mark") << song;
    QTest::newRow("the song with more audio") << tag(editMark()) + audio(600) + "more";
    QTest::newRow("a tag cut short") << tag(editMark() + QByteArray(100, 'x')).left(60);
}

void tst_Mp3Rewrite::aForeignTemporaryFileIsKept()
{
    QFETCH(QByteArray, foreign);

    const QString file = write(path("song.mp3"), songOf(latin1("mp3")));
    write(path("song.tmp"), foreign);
    write(path("song.1.tmp"), "and another");
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    QVERIFY(song.saveToFile(file));
    QCOMPARE(titleIn(file), latin1("New"));
    QVERIFY(read(file).endsWith(audio(600)));
    QCOMPARE(read(path("song.tmp")), foreign);
    QCOMPARE(read(path("song.1.tmp")), QByteArray("and another"));
    QCOMPARE(names().size(), 3);
}

void tst_Mp3Rewrite::whatAKilledSaveLeftIsCleared_data()
{
    QTest::addColumn<QByteArray>("left");

    const QByteArray newTag = tag(editMark() + frame("TIT2", "Whatever"));
    QTest::newRow("nothing yet") << QByteArray();
    QTest::newRow("a new tag") << newTag;
    QTest::newRow("with some of the audio") << newTag + audio(600).left(100'000);
    QTest::newRow("with all of it") << newTag + audio(600);
}

void tst_Mp3Rewrite::whatAKilledSaveLeftIsCleared()
{
    QFETCH(QByteArray, left);

    const QString file = write(path("song.mp3"), songOf(latin1("mp3")));
    write(path("song.tmp"), left);
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    QVERIFY(song.saveToFile(file));
    QCOMPARE(titleIn(file), latin1("New"));
    QVERIFY(read(file).endsWith(audio(600)));
    QCOMPARE(names(), QStringList(latin1("song.mp3")));
}

void tst_Mp3Rewrite::sourceChangedBeforeTheSave_data()
{
    QTest::addColumn<QByteArray>("now"); // null: removed
    QTest::addColumn<bool>("isSaved");
    QTest::addColumn<QString>("line");

    const QString seek = latin1("[MetaSong::saveToFile] Impossible to seek file.");
    const QByteArray song = songOf(latin1("mp3"));
    QTest::newRow("it has another tag")
        << tag(frame("TIT2", "Somebody's longer title")) + audio(600) << false << seek;
    QTest::newRow("it has another tag of the same size")
        << QByteArray(song).replace("Old", "Odd") << false << seek;
    QTest::newRow("it is shorter than its tag was") << song.left(20) << false << seek;
    QTest::newRow("it is empty") << QByteArray("") << false << seek;
    QTest::newRow("it has less audio, which is kept as it is")
        << song.left(song.size() - 1000) << true << QString();
    QTest::newRow("it has more audio, which is kept, too") << song + "more" << true << QString();
    QTest::newRow("it is gone") << QByteArray() << false
                                << latin1("[MetaSong::saveToFile] Impossible to read from file.");
}

void tst_Mp3Rewrite::sourceChangedBeforeTheSave()
{
    QFETCH(QByteArray, now);
    QFETCH(bool, isSaved);
    QFETCH(QString, line);

    const QByteArray old = songOf(latin1("mp3"));
    const QString file = write(path("song.mp3"), old);
    MetaSong song = imported(file);
    setTitle(song, latin1("New"));
    if (now.isNull())
        QVERIFY(QFile::remove(file));
    else
        write(file, now);
    const LogCapture capture;
    QCOMPARE(static_cast<bool>(song.saveToFile(file)), isSaved);
    QCOMPARE(capture.lines().value(0), line);
    if (isSaved)
        QVERIFY(read(file).endsWith(now.mid(old.size() - audio(600).size())));
    else if (!now.isNull())
        QCOMPARE(read(file), now);
    QCOMPARE(names().size(), now.isNull() ? 0 : 1);
}

void tst_Mp3Rewrite::sourceChangesDuringTheSave_data()
{
    QTest::addColumn<QByteArray>("now"); // null: removed
    const QByteArray song = songOf(latin1("mp3"));
    QTest::newRow("it grows") << song + "more";
    QTest::newRow("it shrinks") << song.left(song.size() / 2);
    QTest::newRow("it is gone") << QByteArray();
}

void tst_Mp3Rewrite::sourceChangesDuringTheSave()
{
    QFETCH(QByteArray, now);

    for (const char *operation : {"write", "sync"}) {
        const QString file = write(path("song.mp3"), songOf(latin1("mp3")));
        FailingDisk disk;
        disk.before = [&](const QString &name) {
            if (name != latin1(operation))
                return;
            if (now.isNull())
                QFile::remove(file);
            else
                write(file, now);
        };
        MetaSong song = imported(file, disk);
        setTitle(song, latin1("New"));
        const LogCapture capture;
        QVERIFY(!song.saveToFile(file));
        QVERIFY(!capture.lines().isEmpty());
        QCOMPARE(names().size(), now.isNull() ? 0 : 1);
        if (!now.isNull())
            QCOMPARE(read(file), now);
    }
}

QTEST_GUILESS_MAIN(tst_Mp3Rewrite)
#include "tst_mp3rewrite.moc"
