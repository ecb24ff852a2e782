#include "songs/setaside.h"

#include "failingdisk.h"
#include "songbytes.h"
#include "tests/library/logcapture.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace SongBytes;

/** What becomes of the files that a power cut left under the name for the time of a replacement. */
class tst_SetAside : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void names_data();
    void names();
    void recover_data();
    void recover();
    void aFolderInTheWayKeepsBoth();
    void aLinkIsFollowedByNobody();
    void everyFailureKeepsTheOldBytes();
    void everyStepOfAReplacementIsPutInOrder_data();
    void everyStepOfAReplacementIsPutInOrder();

private:
    QString path(const char *name) const { return m_folder->filePath(QLatin1String(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_SetAside::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_SetAside::names_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isOne");

    QTest::newRow("a song's") << "song.mp3.tarvel4.bak" << true;
    QTest::newRow("that of somebody's own copy is not") << "song.mp3.bak" << false;
    QTest::newRow("nor is that of a song") << "tarvel4.bak.mp3" << false;
    QTest::newRow("there must be a name to go back to") << ".tarvel4.bak" << false;
}

void tst_SetAside::names()
{
    QFETCH(QString, name);
    QTEST(SetAside::isOne(name), "isOne");
}

void tst_SetAside::recover_data()
{
    QTest::addColumn<QByteArrayList>("before"); // name, bytes, ...
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QByteArray>("song");

    const auto row = [](const char *name, const QByteArrayList &before, const char *names,
                        const char *song) {
        QTest::newRow(name) << before << QString::fromLatin1(names).split(QLatin1Char(' '))
                            << QByteArray(song);
    };
    row("a song that is gone comes back", {"a.mp3.tarvel4.bak", "old"}, "a.mp3", "old");
    row("one that never got its bytes comes back", {"a.mp3.tarvel4.bak", "old", "a.mp3", ""},
        "a.mp3", "old");
    row("one that is whole loses what stayed behind", {"a.mp3.tarvel4.bak", "old", "a.mp3", "new"},
        "a.mp3", "new");
    row("somebody's own copy stays", {"a.mp3.bak", "theirs", "a.mp3", "new"}, "a.mp3 a.mp3.bak",
        "new");
    row("somebody's own copy is not taken for a song that is gone",
        {"a.mp3.bak", "theirs", "a.mp3.tarvel4.bak", "old"}, "a.mp3 a.mp3.bak", "old");
}

void tst_SetAside::recover()
{
    QFETCH(QByteArrayList, before);
    QFETCH(QStringList, names);

    for (int i = 0; i + 1 < before.size(); i += 2)
        write(path(before.at(i).constData()), before.at(i + 1));
    QVERIFY(SetAside::recoverAll(Disk::real(), m_folder->path()));
    QCOMPARE(SongBytes::names(m_folder->path()), names);
    QTEST(read(path("a.mp3")), "song");
}

void tst_SetAside::aFolderInTheWayKeepsBoth()
{
    write(path("a.mp3.tarvel4.bak"), "old");
    QVERIFY(QDir().mkdir(path("a.mp3")));
    const LogCapture capture;
    QVERIFY(!SetAside::recoverAll(Disk::real(), m_folder->path()));
    QCOMPARE(read(path("a.mp3.tarvel4.bak")), QByteArray("old"));
    QVERIFY(capture.lines().value(0).contains(path("a.mp3.tarvel4.bak")));
}

void tst_SetAside::aLinkIsFollowedByNobody()
{
    QVERIFY(QDir().mkdir(path("folder.tarvel4.bak")));
    QVERIFY(QFile::link(path("nowhere"), path("a.mp3.tarvel4.bak")));
    QVERIFY(SetAside::recoverAll(Disk::real(), m_folder->path()));
    QVERIFY(QFileInfo(path("folder.tarvel4.bak")).isDir());
    QVERIFY(QFileInfo(path("a.mp3.tarvel4.bak")).isSymLink());
}

void tst_SetAside::everyFailureKeepsTheOldBytes()
{
    constexpr int steps = 3; // the empty file goes, the name comes back, all is flushed
    for (int step = 1; step <= steps; ++step) {
        write(path("a.mp3"), "");
        write(path("a.mp3.tarvel4.bak"), "old");
        FailingDisk disk;
        disk.failAt = step;
        QVERIFY(!SetAside::recoverAll(disk, m_folder->path()));
        QCOMPARE(read(path(step == steps ? "a.mp3" : "a.mp3.tarvel4.bak")), QByteArray("old"));
        QVERIFY(SetAside::recoverAll(Disk::real(), m_folder->path()));
        QCOMPARE(SongBytes::names(m_folder->path()), QStringList{QStringLiteral("a.mp3")});
        QCOMPARE(read(path("a.mp3")), QByteArray("old"));
    }
}

void tst_SetAside::everyStepOfAReplacementIsPutInOrder_data()
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

void tst_SetAside::everyStepOfAReplacementIsPutInOrder()
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
    QVERIFY(SetAside::recoverAll(Disk::real(), atCut));
    QTEST(read(atCut + QLatin1String("/a.mp3")), "song");
    QVERIFY(!SongBytes::names(atCut).contains(QLatin1String("a.mp3.tarvel4.bak")));
}

QTEST_GUILESS_MAIN(tst_SetAside)
#include "tst_setaside.moc"
