#include "tests/library/logcapture.h"
#include "tests/songs/savefixture.h"
#include "tests/storage/failingdisk.h"

using namespace tarvel4;

using namespace SaveFixture;
using namespace SongBytes;

/** What is on disk after a save, and which images are not saved. */
class tst_SongSave : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<Folder>(); }
    void imagesThatAreNotSaved_data();
    void imagesThatAreNotSaved();
    void aSongThatWasNotLoadedIsNotSaved();
    void theLargestStreamIsSaved_data();
    void theLargestStreamIsSaved();
    void aMp3TagThatCouldNotBeReadAgainIsNotSaved();
    void saveIsLogged_data();
    void saveIsLogged();
    void mfxSizesFollowTheStream_data();
    void mfxSizesFollowTheStream();
    void mf4FillerIsPutBack();
    void savingUnchangedChangesNothing_data();
    void savingUnchangedChangesNothing();
    void aShorterSongLeavesNoTail();

private:
    template <typename Name> QString path(const Name &name) const { return m_folder->path(name); }
    QString path() const { return m_folder->path(); }
    QStringList names() const { return m_folder->names(); }

    std::unique_ptr<Folder> m_folder;
};

Q_DECLARE_METATYPE(SongInfo)

// --- The image in memory --------------------------------------------------------------------

void tst_SongSave::imagesThatAreNotSaved_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<SongInfo>("edit");

    SongInfo accents;
    accents.title = latin1("Perch\xE9");
    for (const char *suffix : {"mf3", "mf4", "mf5"})
        QTest::addRow("%s: a text that is not ASCII makes the header too long", suffix)
            << latin1(suffix) << accents;
    SongInfo accentedGenre;
    accentedGenre.genre = latin1("\xC8");
    QTest::newRow("mf3: in any text of the header") << latin1("mf3") << accentedGenre;
}

void tst_SongSave::imagesThatAreNotSaved()
{
    QFETCH(QString, suffix);
    QFETCH(SongInfo, edit);

    const QByteArray old = songOf(suffix);
    const QString file = write(path(QLatin1String("a.") + suffix), old);
    FailingDisk disk;
    MetaSong song = imported(file, disk);
    QVERIFY(song.whyNotSavable());
    song.setSongInfo(edit, WrittenBy::User);
    QVERIFY(!song.whyNotSavable());
    const LogCapture capture;
    QVERIFY(!song.saveToFile(file));
    QCOMPARE(capture.lines(), QStringList(latin1(unknownFormat)));
    QCOMPARE(disk.operations, QStringList());
    QCOMPARE(read(file), old);
}

void tst_SongSave::aSongThatWasNotLoadedIsNotSaved()
{
    const QString file = write(path("a.mid"), "somebody's");
    MetaSong song;
    QVERIFY(!song.importFile(file));
    const LogCapture capture;
    QVERIFY(!song.saveToFile(file));
    QCOMPARE(capture.lines(), QStringList(latin1(unknownFormat)));
    QCOMPARE(read(file), QByteArray("somebody's"));
}

void tst_SongSave::theLargestStreamIsSaved_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("midiSize"); // after the edit, without the filler of an MF4 song
    QTest::addColumn<bool>("isSavable");

    QTest::newRow("an MF3 stream of 500,000 bytes") << 3 << 500'000 << true;
    QTest::newRow("an MF3 stream of 500,001 bytes is not saved") << 3 << 500'001 << false;
    QTest::newRow("an MF5 stream of 500,001 bytes is not saved") << 5 << 500'001 << false;
    QTest::newRow("an MF4 stream of 499,997 bytes and its filler") << 4 << 499'997 << true;
    QTest::newRow("an MF4 stream of 499,998 bytes and its filler is not saved")
        << 4 << 499'998 << false;
}

void tst_SongSave::theLargestStreamIsSaved()
{
    QFETCH(int, version);
    QFETCH(int, midiSize);
    QFETCH(bool, isSavable);

    constexpr int markerSize = 8; // of one with a label of one letter
    const int bodySize = midiSize - midi1().size() - markerSize - 4 - 4;
    const QByteArray body = hex("00 FF 01 00") + QByteArray(bodySize, 'x') + hex("00 FF 01 00");
    const QByteArray song = midi1(body);
    QCOMPARE(song.size() + markerSize, midiSize);
    const QByteArray old = mfx(version, {}, version == 4 ? withFiller(song) : song);
    const QString file = write(path("a.mf"), old);
    MetaSong object = imported(file);
    QCOMPARE(object.addMarker(latin1("A"), 1), markerSize);
    QCOMPARE(static_cast<bool>(object.whyNotSavable()), isSavable);
    QCOMPARE(static_cast<bool>(object.saveToFile(file)), isSavable);
    if (isSavable)
        QCOMPARE(imported(file).midiData().size(), midiSize);
    else
        QCOMPARE(read(file), old);
}

void tst_SongSave::aMp3TagThatCouldNotBeReadAgainIsNotSaved()
{
    const QString file = write(path("a.mp3"), tag());
    MetaSong edited = imported(file);
    setTitle(edited, latin1("x"));
    QVERIFY(edited.saveToFile(file));
    const QByteArray frames = read(file).mid(10);
    write(file, tag(frames + QByteArray(999'999 - frames.size(), '\0')) + audio());

    MetaSong song = imported(file);
    setTitle(song, latin1("xx"));
    QVERIFY(song.whyNotSavable()); // 1,000,000 bytes
    QVERIFY(song.saveToFile(file));
    QCOMPARE(imported(file).format(), int(MetaSong::Mp3));
    const QByteArray old = read(file);
    setTitle(song, latin1("xxx"));
    QVERIFY(!song.whyNotSavable());
    const LogCapture capture;
    QVERIFY(!song.saveToFile(file));
    QCOMPARE(capture.lines(), QStringList(latin1(unknownFormat)));
    QCOMPARE(read(file), old);
    QCOMPARE(names(), QStringList(latin1("a.mp3")));
}

void tst_SongSave::saveIsLogged_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("line");
    QTest::newRow("MIDI") << latin1("mid") << latin1("[MetaSong::saveToFile] MIDI");
    QTest::newRow("MFx") << latin1("mf5") << latin1("[MetaSong::saveToFile] MFx");
}

void tst_SongSave::saveIsLogged()
{
    QFETCH(QString, suffix);
    QFETCH(QString, line);

    const QString file = write(path("a"), songOf(suffix));
    MetaSong song = imported(file);
    const LogCapture capture;
    QVERIFY(song.saveToFile(file));
    QVERIFY(capture.lines().contains(line));
}

// --- What is written ------------------------------------------------------------------------

void tst_SongSave::mfxSizesFollowTheStream_data()
{
    addSuffixRows("mf3 mf4 mf5");
}

void tst_SongSave::mfxSizesFollowTheStream()
{
    QFETCH(QString, suffix);

    const QByteArray old = songOf(suffix);
    const QString file = write(path("a"), old);
    MetaSong song = imported(file);
    setTitle(song, latin1("Ciao"));
    QCOMPARE(song.addMarker(latin1("Intro"), 1), 12);
    QVERIFY(song.saveToFile(file));

    const QByteArray saved = read(file);
    const int filler = suffix == latin1("mf4") ? 3 : 0;
    QCOMPARE(saved.mid(4, 4), littleEndian(quint32(saved.size()), 4));
    QCOMPARE(saved.mid(12, 4), littleEndian(quint32(song.midiData().size() + filler), 4));
    QCOMPARE(saved.mid(122, 32), QByteArray("Ciao").leftJustified(32, '\0'));
    QCOMPARE(expanded(saved).size(), song.midiData().size() + filler);
    // Nothing else in the header has changed.
    const int headerSize = suffix == latin1("mf5") ? 1024 : 512;
    QByteArray header = old.left(headerSize);
    header.replace(4, 4, saved.mid(4, 4)).replace(12, 4, saved.mid(12, 4));
    header.replace(122, 32, saved.mid(122, 32));
    QCOMPARE(saved.left(headerSize), header);
}

void tst_SongSave::mf4FillerIsPutBack()
{
    const QByteArray song = midi1(meta(3, "Song"));
    const QString file = write(path("a.mf4"), mfx(4, {}, withFiller(song, "abc")));
    MetaSong object = imported(file);
    QVERIFY(object.saveToFile(file));
    QCOMPARE(expanded(read(file)), withFiller(song, hex("FF00FF")));
    QCOMPARE(imported(file).midiData(), song);
}

void tst_SongSave::savingUnchangedChangesNothing_data()
{
    addSuffixRows();
}

void tst_SongSave::savingUnchangedChangesNothing()
{
    QFETCH(QString, suffix);

    const QString file = write(path(QLatin1String("a.") + suffix), songOf(suffix));
    MetaSong song = imported(file);
    QVERIFY(song.saveToFile(file));
    QCOMPARE(read(file), songOf(suffix));
    QCOMPARE(names().size(), 1);
}

void tst_SongSave::aShorterSongLeavesNoTail()
{
    const QString file = write(path("a.mid"), midi1(meta(3, QByteArray(100, 'x'))));
    MetaSong song = imported(file);
    SongInfo info;
    song.setSongInfo(info, WrittenBy::User);
    QVERIFY(song.saveToFile(file));
    QCOMPARE(read(file), song.midiData());
    QVERIFY(read(file).size() < 100);
}

QTEST_GUILESS_MAIN(tst_SongSave)
#include "tst_songsave.moc"
