#include "songs/midi/cutpadding.h"

#include "tests/songs/songfixture.h"

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

/** A song that becomes shorter is whole at every moment, and nothing of the padding stays. */
class tst_CutPadding : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void removeFrom_data()
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
        QTest::newRow("one that holds something")
            << QByteArray("T4cu\0\0\0\5\0\0\0\0x", 13) << false;
        QTest::newRow("somebody's zeros") << QByteArray(13, '\0') << false;
        QTest::newRow("somebody's chunk") << foreignChunk << false;
        QTest::newRow("somebody's chunk of that name behind it")
            << QByteArray("T4cu\0\0\0\0", 8) + foreignChunk << false;
    }
    void removeFrom()
    {
        QFETCH(QByteArray, tail);
        QFETCH(bool, isRemoved);
        const QByteArray song = midi0(meta(3, "Title"));
        QByteArray bytes = song + tail;
        CutPadding::removeFrom(bytes);
        QCOMPARE(bytes, isRemoved ? song : song + tail);
    }

    void aSaveCutShortIsTheNewSong_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<int>("shorterBy"); // characters of the title
        QTest::newRow("a MIDI song, shorter by one byte") << "mid" << 1;
        QTest::newRow("a MIDI song, shorter by many bytes") << "mid" << 60;
        for (const char *suffix : {"mf3", "mf4", "mf5"})
            QTest::newRow(suffix) << suffix << 60;
    }
    void aSaveCutShortIsTheNewSong()
    {
        QFETCH(QString, suffix);
        QFETCH(int, shorterBy);
        const QString file = write(path("song"), fileOf(suffix, midi0()));
        FailingDisk disk;
        QByteArray atCut; // the file's bytes when the power fails
        disk.before = [&](const QString &operation, int) {
            if (operation == "truncate"_s)
                atCut = read(file);
        };
        MetaSong song = imported(file, disk);
        SongInfo info;
        info.title = QString(60, QLatin1Char('T'));
        info.length = 1234567;
        song.setSongInfo(info, edit);
        QVERIFY(song.saveToFile(file));
        const QByteArray old = read(file);

        info.title.chop(shorterBy);
        if (suffix != "mid"_s)
            info.length = 0; // an MFx song has its title in the header
        song.setSongInfo(info, edit);
        QVERIFY(song.saveToFile(file));
        const QByteArray whole = read(file);
        QVERIFY(whole.size() < old.size());
        QCOMPARE(atCut.size(), old.size());
        QVERIFY(atCut.startsWith(whole));

        MetaSong again = imported(write(file, atCut));
        QCOMPARE(recordOf(again).title, info.title);
        QCOMPARE(recordOf(again).length, info.length);
        QVERIFY(again.saveToFile(file));
        QCOMPARE(read(file), whole);
    }
};

QTEST_GUILESS_MAIN(tst_CutPadding)
#include "tst_cutpadding.moc"
