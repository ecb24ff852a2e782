#include "songs/metasong.h"
#include "songs/midi/cutpadding.h"

#include "tests/songs/mfxbytes.h"
#include "tests/storage/failingdisk.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace tarvel4;

using namespace SongBytes;

/** A song that becomes shorter is whole at every moment, and nothing of the padding stays. */
class tst_CutPadding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void removeFrom_data();
    void removeFrom();
    void aSaveCutShortIsTheNewSong_data();
    void aSaveCutShortIsTheNewSong();
};

void tst_CutPadding::removeFrom_data()
{
    QTest::addColumn<QByteArray>("tail"); // behind the last chunk
    QTest::addColumn<bool>("isRemoved");

    const QByteArray foreignChunk = "XFIH" + bigEndian(3, 4) + "abc";
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("one byte of it") << QByteArray("T") << true;
    QTest::newRow("its first bytes") << QByteArray("T4cu\0\0", 6) << true;
    QTest::newRow("its header") << QByteArray("T4cu\0\0\0\0", 8) << true;
    QTest::newRow("a whole one") << QByteArray("T4cu\0\0\0\5\0\0\0\0\0", 13) << true;
    QTest::newRow("one whose length lies") << QByteArray("T4cu\0\0\0\4\0\0\0\0\0", 13) << false;
    QTest::newRow("one that holds something") << QByteArray("T4cu\0\0\0\5\0\0\0\0x", 13) << false;
    QTest::newRow("somebody's zeros") << QByteArray(13, '\0') << false;
    QTest::newRow("somebody's chunk") << foreignChunk << false;
    QTest::newRow("somebody's chunk of that name behind it")
        << QByteArray("T4cu\0\0\0\0", 8) + foreignChunk << false;
}

void tst_CutPadding::removeFrom()
{
    QFETCH(QByteArray, tail);
    QFETCH(bool, isRemoved);

    const QByteArray song = midi0(meta(3, "Title"));
    QByteArray bytes = song + tail;
    CutPadding::removeFrom(bytes);
    QCOMPARE(bytes, isRemoved ? song : song + tail);
}

void tst_CutPadding::aSaveCutShortIsTheNewSong_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("shorterBy"); // characters of the title

    QTest::newRow("a MIDI song, shorter by one byte") << midi0() << 1;
    QTest::newRow("a MIDI song, shorter by many bytes") << midi0() << 60;
    for (const int version : {3, 4, 5}) {
        const QByteArray stream = version == 4 ? withFiller(midi0()) : midi0();
        QTest::addRow("an MF%d song", version) << mfx(version, {}, stream) << 60;
    }
}

void tst_CutPadding::aSaveCutShortIsTheNewSong()
{
    QFETCH(QByteArray, file);
    QFETCH(int, shorterBy);

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("song"));
    write(path, file);
    FailingDisk disk;
    QByteArray atCut; // the file's bytes when the power fails
    disk.before = [&](const QString &operation) {
        if (operation == QLatin1String("truncate"))
            atCut = read(path);
    };
    MetaSong song(disk);
    QVERIFY(song.importFile(path));
    SongInfo info;
    info.title = QString(60, QLatin1Char('T'));
    info.length = 1234567;
    song.setSongInfo(info, WrittenBy::User);
    QVERIFY(song.saveToFile(path));
    const QByteArray old = read(path);

    info.title.chop(shorterBy);
    if (!file.startsWith("MThd"))
        info.length = 0; // an MFx song has its title in the header
    song.setSongInfo(info, WrittenBy::User);
    QVERIFY(song.saveToFile(path));
    const QByteArray whole = read(path);
    QVERIFY(whole.size() < old.size());
    QCOMPARE(atCut.size(), old.size());
    QVERIFY(atCut.startsWith(whole));

    write(path, atCut);
    MetaSong again;
    QVERIFY(again.importFile(path));
    SongInfo padded;
    again.readInfo(padded);
    QCOMPARE(padded.title, info.title);
    QCOMPARE(padded.length, info.length);
    QVERIFY(again.saveToFile(path));
    QCOMPARE(read(path), whole);
}

QTEST_GUILESS_MAIN(tst_CutPadding)
#include "tst_cutpadding.moc"
