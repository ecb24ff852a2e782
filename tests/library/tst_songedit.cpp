#include "library/songedit.h"

#include "tests/library/logcapture.h"
#include "tests/library/saveatonce.h"
#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/songs/songbytes.h"
#include "tests/storage/failingdisk.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace tarvel4;

using namespace SongBytes;

class tst_SongEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void aManualEditWritesEveryField_data();
    void aManualEditWritesEveryField();
    void markersAreNotTouched();
    void emptyValuesAreWrittenToo_data();
    void emptyValuesAreWrittenToo();
    void addMarkers();
    void anMp3TakesNoMarker();
    void aSaveThatFailsKeepsTheOldBytes_data();
    void aSaveThatFailsKeepsTheOldBytes();
    void aSongChangedSinceItWasReadIsLeftAlone();
    void unreadable();

private:
    QString song(const QString &name, const QByteArray &bytes)
    {
        return TestFiles::write(m_dir->filePath(name), bytes);
    }

    QScopedPointer<QTemporaryDir> m_dir;
};

void tst_SongEdit::init()
{
    m_dir.reset(new QTemporaryDir);
}

void tst_SongEdit::aManualEditWritesEveryField_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");

    const QByteArray events = meta(3, "Old") + songInfo(1, "OLD") + songInfo(2, "OLD")
        + songInfo(3, "OLD") + songInfo(4, "1") + songInfo(5, "2") + meta(0x59, hex("0000"));
    QTest::newRow("MIDI 0, fields missing") << text("a.mid") << midi0();
    QTest::newRow("MIDI 0, fields present") << text("a.mid") << midi0(events);
    QTest::newRow("MIDI 1, fields missing") << text("a.kar") << midi1();
    QTest::newRow("MIDI 1, fields present") << text("a.kar") << midi1(events);
    for (int version = 3; version <= 5; ++version) {
        const auto midi = [version](const QByteArray &bytes) {
            return version == 4 ? withFiller(bytes) : bytes;
        };
        QTest::addRow("MF%d, fields missing", version)
            << text("a.mf%1").arg(version) << mfx(version, MfxFields(), midi(midi0()));
        QTest::addRow("MF%d, fields present", version)
            << text("a.mf%1").arg(version)
            << mfx(version, {"Old", "OLD", "OLD", "OLD", "LONG", 90, 1}, midi(midi0(events)));
    }
    QTest::newRow("MP3, no tag") << text("a.mp3") << audio();
    QTest::newRow("MP3, fields present")
        << text("a.mp3")
        << tag(frame("TIT2", "Old") + frame("TPE1", "OLD") + frame("TCOM", "OLD")
               + frame("TCON", "OLD") + frame("TKEY", "C") + frame("TLEN", "1000")
               + frame("TBPM", "2"))
            + audio();
}

void tst_SongEdit::aManualEditWritesEveryField()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    const QString path = song(name, bytes);
    SongEdit edit;
    QVERIFY(edit.load(path));
    SongInfo info = edit.info();
    info.title = text("New title");
    info.artist = text("NEW ARTIST");
    info.altArtist = text("NOT THIS ONE");
    info.genre = text("NEW GENRE");
    info.author = text("NEW AUTHOR");
    info.length = 185;
    info.bpm = 97;
    info.key = text("Bb");
    LogCapture log;
    const SongOutcome saved = saveAtOnce(edit, info);
    QCOMPARE(saved.result, SongResult::Edited);
    QVERIFY(LogCapture::has(text("manual:  true")));
    QVERIFY(LogCapture::has(text("Saving to file:  \"%1\"").arg(path)));
    QVERIFY(LogCapture::has(text("Ok")));

    SongEdit reread;
    QVERIFY(reread.load(path));
    for (const SongInfo &now : {saved.after, reread.info()}) {
        QCOMPARE(now.title, text("New title"));
        QCOMPARE(now.artist, text("NEW ARTIST"));
        QCOMPARE(now.genre, text("NEW GENRE"));
        QCOMPARE(now.author, text("NEW AUTHOR"));
        QCOMPARE(now.length, 185);
        QCOMPARE(now.bpm, 97);
        QCOMPARE(now.key, text("Bb"));
        QCOMPARE(now.format, saved.before.format);
        QCOMPARE(now.isPublisher, saved.before.isPublisher);
        QCOMPARE(now.markers, saved.before.markers);
        QCOMPARE(now.mfxLongName, saved.before.mfxLongName);
        QCOMPARE(now.filename, path);
        QCOMPARE(now.shortname, name);
    }
    QCOMPARE(saved.after.mfxFlags, reread.info().mfxFlags);
}

void tst_SongEdit::markersAreNotTouched()
{
    SongEdit edit;
    QVERIFY(edit.load(song(text("a.mid"), midi0(marker(3, "Solo")))));
    SongInfo info = edit.info();
    info.markers = {{1, text("Intro")}};
    QCOMPARE(saveAtOnce(edit, info).after.markers, QVector<Marker>({{3, text("Solo")}}));
}

void tst_SongEdit::emptyValuesAreWrittenToo_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("MIDI") << text("a.mid")
                          << midi0(meta(3, "Old") + songInfo(1, "OLD") + songInfo(5, "90")
                                   + meta(0x59, hex("0000")));
    QTest::newRow("MFx") << text(
        "a.mf3") << mfx(3, {"Old", "", "", "OLD", "", 90, 0}, midi0(meta(0x59, hex("0000"))));
    QTest::newRow("MP3") << text("a.mp3")
                         << tag(frame("TIT2", "Old") + frame("TCON", "OLD") + frame("TBPM", "90")
                                + frame("TKEY", "C"))
            + audio();
}

void tst_SongEdit::emptyValuesAreWrittenToo()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    SongEdit edit;
    QVERIFY(edit.load(song(name, bytes)));
    const SongInfo now = saveAtOnce(edit, SongInfo()).after;
    QCOMPARE(now.title, QString());
    QCOMPARE(now.genre, QString());
    QCOMPARE(now.bpm, 0);
    QCOMPARE(now.key, QString());
}

void tst_SongEdit::addMarkers()
{
    const QString path = song(text("a.mid"), midi0(marker(3, "Solo")));
    SongEdit edit;
    QVERIFY(edit.load(path));
    QVERIFY(edit.addMarkers({{1, text("Intro")}, {2, text("Verse")}}));
    const QVector<Marker> expected{{1, text("Intro")}, {2, text("Verse")}, {3, text("Solo")}};
    QCOMPARE(edit.info().markers, expected);
    QVERIFY(TestFiles::read(path) == midi0(marker(3, "Solo"))); // not before it is saved
    QCOMPARE(saveAtOnce(edit, edit.info()).after.markers, expected);
}

void tst_SongEdit::anMp3TakesNoMarker()
{
    SongEdit edit;
    QVERIFY(edit.load(song(text("a.mp3"), tag() + audio())));
    QCOMPARE(edit.addMarkers({{1, text("Intro")}}).codeName(), text("no-markers"));
}

void tst_SongEdit::aSaveThatFailsKeepsTheOldBytes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("failingWrite");
    QTest::addColumn<QString>("code");
    QTest::newRow("a short write")
        << text("a.mid") << midi0(meta(3, "Old")) << text("New") << 1 << text("no-room");
    QTest::newRow("a short write of an MP3") << text("a.mp3") << tag(frame("TIT2", "Old")) + audio()
                                             << text("New") << 1 << text("no-room");
    QTest::newRow("required: an MFx header that an accent lengthens")
        << text("a.mf3") << mfx(3, {"Old", "", "", "", "", 0, 0}, midi0()) << text("Città") << 0
        << text("letter-not-storable");
    QTest::newRow("an MP3 title of more than a tag can hold")
        << text("a.mp3") << tag(frame("TIT2", "Old")) + audio()
        << QString(17 << 20, QLatin1Char('x')) << 0 << text("text-too-long");
}

void tst_SongEdit::aSaveThatFailsKeepsTheOldBytes()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, title);
    QFETCH(int, failingWrite);
    const QString path = song(name, bytes);
    FailingDisk disk;
    disk.cause = Outcome::Code::NoRoom;
    disk.failingWrite = failingWrite;
    SongEdit edit(disk);
    QVERIFY(edit.load(path));
    SongInfo info = edit.info();
    info.title = title;
    LogCapture log;
    const SongOutcome saved = saveAtOnce(edit, info, disk);
    QCOMPARE(saved.result, SongResult::Failed);
    QTEST(saved.cause.codeName(), "code");
    const int last = static_cast<int>(LogCapture::lines().size() - 1);
    QVERIFY(LogCapture::has(text("Error!")));
    QCOMPARE(LogCapture::lines().at(last),
             text("[EDIT] Saving %1 refused: %2").arg(path, saved.cause.sentence()));
    QVERIFY(TestFiles::read(path) == bytes);
    QCOMPARE(saved.after.title, text("Old")); // what the file holds
    QCOMPARE(TestFiles::namesIn(m_dir->path()), QStringList(name));
}

void tst_SongEdit::aSongChangedSinceItWasReadIsLeftAlone()
{
    const QString path = song(text("a.mid"), midi0(meta(3, "Old")));
    SongEdit edit;
    QVERIFY(edit.load(path));
    const QByteArray newer = midi0(meta(3, "Edited elsewhere"));
    TestFiles::write(path, newer);
    const SongOutcome saved = saveAtOnce(edit, edit.info());
    QCOMPARE(saved.cause.codeName(), text("changed-meanwhile"));
    QVERIFY(TestFiles::read(path) == newer);
    QCOMPARE(saved.after.title, text("Edited elsewhere"));
}

void tst_SongEdit::unreadable()
{
    SongEdit edit;
    QCOMPARE(edit.load(song(text("a.mid"), "no song")).codeName(), text("not-a-song"));
    SongEdit vanished;
    QCOMPARE(vanished.load(m_dir->filePath(text("none.mid"))).codeName(), text("not-found"));
}

QTEST_GUILESS_MAIN(tst_SongEdit)
#include "tst_songedit.moc"
