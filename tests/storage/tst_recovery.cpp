#include "storage/recovery.h"

#include "songs/metasong.h"
#include "tests/library/logcapture.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/failingdisk.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace tarvel4;

using namespace SongBytes;

Q_DECLARE_METATYPE(Recovery::Result)

/** What becomes of the files that a power cut left under the name for the time of a replacement. */
class tst_Recovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void names_data();
    void names();
    void recover_data();
    void recover();
    void bothStay_data();
    void bothStay();
    void aLinkIsFollowedByNobody();
    void whatIsSetAsideIsReadByTheNameOfItsSong_data();
    void whatIsSetAsideIsReadByTheNameOfItsSong();
    void everyFailureKeepsTheOldBytes();
    void everyStepOfAReplacementIsPutInOrder_data();
    void everyStepOfAReplacementIsPutInOrder();

private:
    QString path(const char *name) const { return m_folder->filePath(QLatin1String(name)); }
    /** The outcomes of a recovery in which every file that holds "old" or "new" is a song. */
    QVector<Recovery::Result> recoverAll(const QString &folder, Disk &disk = Disk::real()) const
    {
        QVector<Recovery::Result> outcomes;
        Recovery::recoverAll(
            disk, folder,
            [](const QString &file) {
                return !read(file).trimmed().isEmpty() && !read(file).startsWith('?');
            },
            [&](const QString &, Recovery::Result outcome) { outcomes += outcome; });
        return outcomes;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_Recovery::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_Recovery::names_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isOne");

    QTest::newRow("a song's") << "song.mp3.tarvel4.bak" << true;
    QTest::newRow("that of somebody's own copy is not") << "song.mp3.bak" << false;
    QTest::newRow("nor is that of a song") << "tarvel4.bak.mp3" << false;
    QTest::newRow("there must be a name to go back to") << ".tarvel4.bak" << false;
}

void tst_Recovery::names()
{
    QFETCH(QString, name);
    QTEST(Recovery::isRecoveryName(name), "isOne");
}

void tst_Recovery::recover_data()
{
    QTest::addColumn<QByteArrayList>("before"); // name, bytes, ...
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QByteArray>("song");
    QTest::addColumn<QVector<Recovery::Result>>("outcomes");

    const auto row = [](const char *name, const QByteArrayList &before, const char *names,
                        const QByteArray &song, const QVector<Recovery::Result> &outcomes) {
        QTest::newRow(name) << before << QString::fromLatin1(names).split(QLatin1Char(' ')) << song
                            << outcomes;
    };
    const QVector<Recovery::Result> givenBack{Recovery::Result::GivenBack};
    const QVector<Recovery::Result> removed{Recovery::Result::Removed};
    const QByteArray zeros(100000, '\0');
    row("a song that is gone comes back", {"a.mp3.tarvel4.bak", "old"}, "a.mp3", "old", givenBack);
    row("whatever it is", {"a.mp3.tarvel4.bak", "?"}, "a.mp3", "?", givenBack);
    row("one that never got its bytes comes back", {"a.mp3.tarvel4.bak", "old", "a.mp3", ""},
        "a.mp3", "old", givenBack);
    row("one whose bytes are no song comes back", {"a.mp3.tarvel4.bak", "old", "a.mp3", "?"},
        "a.mp3", "old", givenBack);
    row("one whose bytes are zeros comes back, though an MP3 may begin with them",
        {"a.mp3.tarvel4.bak", "old", "a.mp3", zeros}, "a.mp3", "old", givenBack);
    row("one with a byte behind zeros is a song",
        {"a.mp3.tarvel4.bak", "old", "a.mp3", zeros + 'x'}, "a.mp3", zeros + 'x', removed);
    row("one that is whole loses what stayed behind", {"a.mp3.tarvel4.bak", "old", "a.mp3", "new"},
        "a.mp3", "new", removed);
    row("somebody's own copy stays", {"a.mp3.bak", "theirs", "a.mp3", "new"}, "a.mp3 a.mp3.bak",
        "new", {});
    row("somebody's own copy is not taken for a song that is gone",
        {"a.mp3.bak", "theirs", "a.mp3.tarvel4.bak", "old"}, "a.mp3 a.mp3.bak", "old", givenBack);
}

void tst_Recovery::recover()
{
    QFETCH(QByteArrayList, before);
    QFETCH(QStringList, names);

    for (int i = 0; i + 1 < before.size(); i += 2)
        write(path(before.at(i).constData()), before.at(i + 1));
    QTEST(recoverAll(m_folder->path()), "outcomes");
    QCOMPARE(SongBytes::names(m_folder->path()), names);
    QTEST(read(path("a.mp3")), "song");
}

void tst_Recovery::bothStay_data()
{
    QTest::addColumn<QByteArray>("song"); // empty: a folder
    QTest::addColumn<QByteArray>("old");
    QTest::newRow("a folder in the way") << QByteArray() << QByteArray("old");
    QTest::newRow("neither is a song") << QByteArray("?") << QByteArray("?");
    QTest::newRow("both hold only zeros") << QByteArray(9, '\0') << QByteArray(9, '\0');
}

void tst_Recovery::bothStay()
{
    QFETCH(QByteArray, song);
    QFETCH(QByteArray, old);
    write(path("a.mp3.tarvel4.bak"), old);
    if (song.isEmpty())
        QVERIFY(QDir().mkdir(path("a.mp3")));
    else
        write(path("a.mp3"), song);
    const LogCapture capture;
    QCOMPARE(recoverAll(m_folder->path()), QVector<Recovery::Result>{Recovery::Result::Kept});
    QCOMPARE(read(path("a.mp3.tarvel4.bak")), old);
    QVERIFY(song.isEmpty() || read(path("a.mp3")) == song);
    QVERIFY(capture.lines().value(0).contains(path("a.mp3.tarvel4.bak")));
}

void tst_Recovery::whatIsSetAsideIsReadByTheNameOfItsSong_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isSong");
    const QByteArray mp3 = tag(frame("TIT2", "x"));
    const QByteArray midi0 = midi(0, {track(note() + endOfTrack())});
    QTest::newRow("an MP3") << "a.mp3" << mp3 << true;
    QTest::newRow("an MP3 set aside") << "a.MP3.tarvel4.bak" << mp3 << true;
    QTest::newRow("an MP3 under no song's name") << "a.bak" << mp3 << false;
    QTest::newRow("a MIDI song set aside") << "a.mid.tarvel4.bak" << midi0 << true;
    QTest::newRow("no song") << "a.mid.tarvel4.bak" << QByteArray(100, '\0') << false;
}

void tst_Recovery::whatIsSetAsideIsReadByTheNameOfItsSong()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    write(m_folder->filePath(name), bytes);
    QTEST(MetaSong::isSong(m_folder->filePath(name)), "isSong");
}

void tst_Recovery::aLinkIsFollowedByNobody()
{
    QVERIFY(QDir().mkdir(path("folder.tarvel4.bak")));
    QVERIFY(QFile::link(path("nowhere"), path("a.mp3.tarvel4.bak")));
    QVERIFY(QFile::link(path("nowhere"), path("b.mp3")));
    write(path("b.mp3.tarvel4.bak"), "old");
    write(path("c.mp3"), "old");
    QVERIFY(QFile::link(path("c.mp3"), path("c.mp3.tarvel4.bak")));
    QCOMPARE(recoverAll(m_folder->path()), QVector<Recovery::Result>{Recovery::Result::Kept});
    QVERIFY(QFileInfo(path("b.mp3")).isSymLink());
    QVERIFY(QFileInfo(path("c.mp3.tarvel4.bak")).isSymLink());
    QVERIFY(QFileInfo(path("folder.tarvel4.bak")).isDir());
    QVERIFY(QFileInfo(path("a.mp3.tarvel4.bak")).isSymLink());
}

void tst_Recovery::everyFailureKeepsTheOldBytes()
{
    constexpr int steps = 3; // the empty file goes, the name comes back, all is flushed
    for (int step = 1; step <= steps; ++step) {
        write(path("a.mp3"), "");
        write(path("a.mp3.tarvel4.bak"), "old");
        FailingDisk disk;
        disk.failAt = step;
        QCOMPARE(recoverAll(m_folder->path(), disk),
                 QVector<Recovery::Result>{Recovery::Result::Kept});
        QCOMPARE(read(path(step == steps ? "a.mp3" : "a.mp3.tarvel4.bak")), QByteArray("old"));
        recoverAll(m_folder->path());
        QCOMPARE(SongBytes::names(m_folder->path()), QStringList{QStringLiteral("a.mp3")});
        QCOMPARE(read(path("a.mp3")), QByteArray("old"));
    }
}

void tst_Recovery::everyStepOfAReplacementIsPutInOrder_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<QByteArray>("song"); // afterwards

    QTest::newRow("cut before the first") << 1 << QByteArray("old");
    QTest::newRow("cut before the old one is set aside") << 2 << QByteArray("old");
    QTest::newRow("cut between the two renames") << 3 << QByteArray("old");
    QTest::newRow("cut before the names are synced") << 4 << QByteArray("new");
    QTest::newRow("cut before the old one goes") << 5 << QByteArray("new");
    QTest::newRow("cut at the end") << 6 << QByteArray("new");
}

void tst_Recovery::everyStepOfAReplacementIsPutInOrder()
{
    QFETCH(int, step);

    write(path("new"), "new");
    write(path("a.mp3"), "old");
    FailingDisk disk;
    disk.isFat = true;
    const QString atCut = path("cut");
    disk.before = [&](const QString &) {
        if (disk.operations.size() != step)
            return;
        QDir().mkdir(atCut);
        for (const QString &name : SongBytes::names(m_folder->path()))
            QFile::copy(m_folder->filePath(name), atCut + QLatin1Char('/') + name);
    };
    QVERIFY(disk.replace(path("new"), path("a.mp3")));
    recoverAll(atCut);
    QTEST(read(atCut + QLatin1String("/a.mp3")), "song");
    QVERIFY(!SongBytes::names(atCut).contains(QLatin1String("a.mp3.tarvel4.bak")));
}

QTEST_GUILESS_MAIN(tst_Recovery)
#include "tst_recovery.moc"
