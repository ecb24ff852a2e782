#include "tests/songs/recordfixture.h"

using namespace tarvel4;

using namespace RecordFixture;
using namespace SongBytes;

/** What a record changes in a song besides its fields, what it leaves alone, and what is read back
 * from the file. */
class tst_WrittenRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void markers_data();
    void markers();
    void zerosOfTheCatalogue_data();
    void zerosOfTheCatalogue();
    void mfxFlags_data();
    void mfxFlags();
    void editMark_data();
    void editMark();
    void whatWasNotReadIsUntouched_data();
    void whatWasNotReadIsUntouched();
    void theRecordReadBack_data();
    void theRecordReadBack();
    void examplesOfTheFormatsPage();

private:
    MetaSong imported(const QString &suffix, const QByteArray &bytes)
    {
        return m_file.imported(suffix, bytes);
    }
    SongInfo savedAndReadBack(MetaSong &song) const { return m_file.savedAndReadBack(song); }

    FixtureSong m_file;
};

Q_DECLARE_METATYPE(SongInfo)
Q_DECLARE_METATYPE(Marker)

void tst_WrittenRecord::initTestCase()
{
    QLoggingCategory::setFilterRules(latin1("*.debug=false"));
}

void tst_WrittenRecord::markers_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<WrittenBy>("writtenBy");
    QTest::addColumn<QVector<Marker>>("record");
    QTest::addColumn<QVector<Marker>>("after");

    const QVector<Marker> none;
    const QVector<Marker> old = {{7, latin1("Old")}};
    const QVector<Marker> given = {{1, latin1("Intro")}, {5, latin1("Chorus")}};
    const QByteArray present = marker(7, "Old");
    for (const char *format : {"mid", "mf3", "mf4", "mf5"}) {
        const auto row = [&](const char *sentence, const QByteArray &before, WrittenBy writtenBy,
                             const QVector<Marker> &record, const QVector<Marker> &after) {
            QTest::addRow("%s: %s", format, sentence)
                << latin1(format) << before << writtenBy << record << after;
        };
        row("an update adds markers where there are none", {}, update, given, given);
        row("an update without markers adds none", {}, update, none, none);
        row("an update keeps markers", present, update, given, old);
        row("an edit adds none", {}, edit, given, none);
        row("an edit keeps markers", present, edit, given, old);
        row("an edit without markers keeps them, too", present, edit, none, old);
    }
}

void tst_WrittenRecord::markers()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, before);
    QFETCH(WrittenBy, writtenBy);
    QFETCH(QVector<Marker>, record);
    QFETCH(QVector<Marker>, after);

    const QByteArray bytes = format == latin1("mid") ? midi0(before)
        : format == latin1("mf4")                    ? mfx(4, {}, withFiller(midi0(before)))
                                  : mfx(format.right(1).toInt(), {}, midi0(before));
    for (const bool isPublisher : {true, false}) {
        MetaSong song = imported(format, bytes);
        SongInfo info = recordWith("title", "A", isPublisher);
        info.markers = record;
        song.setSongInfo(info, writtenBy);
        song.readInfo(info);
        QCOMPARE(info.markers, after);
        QCOMPARE(savedAndReadBack(song).markers, after);
    }
}

void tst_WrittenRecord::zerosOfTheCatalogue_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<int>("number"); // of the record's length and bpm
    QTest::addColumn<QByteArray>("after");

    const QByteArray texts = songInfo(1, {}) + songInfo(2, {});
    const QByteArray inTrack = songInfo(3, {}) + meta(3, {}) + songInfo(4, "0");
    QTest::newRow("mid: a length and a bpm of 0 are written")
        << latin1("mid") << midi0() << 0 << midi0(texts + songInfo(5, "0") + inTrack);
    QTest::newRow("mid: unknown ones are not")
        << latin1("mid") << midi0() << -1 << midi0(texts + songInfo(3, {}) + meta(3, {}));
    QTest::newRow("mp3: a length of 0 is written, a bpm of 0 removes its frame")
        << latin1("mp3") << audio() << 0
        << tag(SongBytes::editMark() + frame("TLEN", "0")) + audio();
    QTest::newRow("mp3: unknown ones are not")
        << latin1("mp3") << audio() << -1 << tag(SongBytes::editMark()) + audio();
    const auto song = [](int bpm, const QByteArray &events) {
        return mfx(3, {"", "", "", "", "", bpm, 0}, midi0(events));
    };
    QTest::newRow("mf3: a length of 0 is written, a bpm of 0 in place of 500")
        << latin1("mf3") << song(500, {}) << 0 << song(0, songInfo(4, "0"));
    QTest::newRow("mf3: unknown ones are not")
        << latin1("mf3") << song(500, {}) << -1 << song(500, {});
}

void tst_WrittenRecord::zerosOfTheCatalogue()
{
    QFETCH(QString, suffix);
    QFETCH(QByteArray, before);
    QFETCH(int, number);
    QFETCH(QByteArray, after);

    MetaSong song = imported(suffix, before);
    SongInfo info;
    info.length = info.bpm = number;
    info.isPublisher = true;
    song.setSongInfo(info, update);
    QVERIFY(song.saveToFile(m_file.path()));
    QCOMPARE(read(m_file.path()), after);
}

void tst_WrittenRecord::mfxFlags_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<WrittenBy>("writtenBy");
    QTest::addColumn<bool>("hasMarkers");
    QTest::addColumn<int>("after");

    QTest::newRow("an update with markers sets bit 0") << 0x40 << update << true << 0x41;
    QTest::newRow("an edit with markers sets bit 0") << 0x40 << edit << true << 0x41;
    QTest::newRow("an update without markers leaves the flags") << 0x40 << update << false << 0x40;
    QTest::newRow("an edit without markers leaves the flags") << 0x40 << edit << false << 0x40;
    QTest::newRow("bit 0 is never cleared by an update") << 0x81 << update << false << 0x81;
    QTest::newRow("bit 0 is never cleared by an edit") << 0x81 << edit << false << 0x81;
}

void tst_WrittenRecord::mfxFlags()
{
    QFETCH(int, before);
    QFETCH(WrittenBy, writtenBy);
    QFETCH(bool, hasMarkers);
    QFETCH(int, after);

    MfxFields header;
    header.flags = before;
    // Also when the song's own markers stay.
    MetaSong song = imported(latin1("mf3"), mfx(3, header, midi0(marker(1, "A"))));
    SongInfo info;
    if (hasMarkers)
        info.markers = {{1, latin1("A")}};
    song.setSongInfo(info, writtenBy);
    song.readInfo(info);
    QCOMPARE(int(info.mfxFlags), after);
    QCOMPARE(int(savedAndReadBack(song).mfxFlags), after);
}

void tst_WrittenRecord::editMark_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<WrittenBy>("writtenBy");

    QTest::newRow("an edit marks an MP3") << tag() + audio() << edit;
    QTest::newRow("an update marks an MP3") << tag() + audio() << update;
    QTest::newRow("an MP3 without a tag is marked, too") << audio() << update;
    QTest::newRow("an edit marks it once") << tag(SongBytes::editMark()) + audio() << edit;
    QTest::newRow("an update marks it once") << tag(SongBytes::editMark()) + audio() << update;
}

void tst_WrittenRecord::editMark()
{
    QFETCH(QByteArray, before);
    QFETCH(WrittenBy, writtenBy);

    MetaSong song = imported(latin1("mp3"), before);
    SongInfo info;
    info.length = -1;
    song.setSongInfo(info, writtenBy);
    song.setSongInfo(info, writtenBy);
    QVERIFY(song.saveToFile(m_file.path()));
    QCOMPARE(read(m_file.path()).count(SongBytes::editMark()), 1);
    QVERIFY(read(m_file.path()).endsWith(audio()));
}

void tst_WrittenRecord::whatWasNotReadIsUntouched_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<WrittenBy>("writtenBy");
    QTest::addColumn<QByteArray>("after");

    const QByteArray lyrics = meta(5, "La la") + hex("60 F0 03 41 10 F7");
    const QByteArray track2 = track(meta(3, "Piano") + note() + endOfTrack());
    const QByteArray lastEvents =
        songInfo(1, "Pop") + songInfo(2, "Mina") + songInfo(5, "120") + songInfo(3, "Conte");
    const QByteArray firstEvents = songInfo(4, "215") + meta(0x59, hex("0001"));
    const auto song = [&](const QByteArray &events) {
        return midi(1, {track(events + lyrics + endOfTrack()), track2});
    };
    QTest::newRow("mid: an edit changes the head of the first track only")
        << latin1("mid") << song(meta(3, "Old") + songInfo(1, "Old") + marker(1, "A")) << edit
        << song(lastEvents + meta(3, "Volare") + firstEvents + marker(1, "A"));
    QTest::newRow("mid: an update, too, and takes a name in a later track for the song's")
        << latin1("mid") << song({}) << update
        << song(lastEvents + firstEvents + marker(9, "Coda"));

    const QByteArray picture = "APIC" + bigEndian(300, 4) + hex("0000") + QByteArray(300, '\xAB');
    const QByteArray padding(64, '\0');
    const QByteArray newFrames = SongBytes::editMark() + frame("TCON", "Pop")
        + frame("TPE1", "Mina") + frame("TBPM", "120") + frame("TCOM", "Conte")
        + frame("TIT2", "Volare") + frame("TLEN", "215000") + frame("TKEY", "A-");
    QTest::newRow("mp3: an edit puts its frames first, picture, padding and audio stay")
        << latin1("mp3") << tag(frame("TIT2", "Old") + picture + padding) + audio(500) << edit
        << tag(newFrames + picture + padding) + audio(500);
    QTest::newRow("mp3: a song without a tag gains one in front of its audio")
        << latin1("mp3") << audio(500) << update << tag(newFrames) + audio(500);
    QTest::newRow("mp3: what follows a tag that counts as empty is kept")
        << latin1("mp3") << "ID3" + hex("030000 00000081") + frame("TIT2", "Lost") + audio()
        << update << tag(newFrames) + frame("TIT2", "Lost") + audio();
}

void tst_WrittenRecord::whatWasNotReadIsUntouched()
{
    QFETCH(QString, suffix);
    QFETCH(QByteArray, before);
    QFETCH(WrittenBy, writtenBy);
    QFETCH(QByteArray, after);

    MetaSong song = imported(suffix, before);
    SongInfo info;
    info.title = latin1("Volare");
    info.artist = latin1("Mina");
    info.author = latin1("Conte");
    info.genre = latin1("Pop");
    info.key = latin1("A-");
    info.length = 215;
    info.bpm = 120;
    info.isPublisher = true;
    info.markers = {{9, latin1("Coda")}};
    song.setSongInfo(info, writtenBy);
    QVERIFY(song.saveToFile(m_file.path()));
    QCOMPARE(read(m_file.path()), after);
}

void tst_WrittenRecord::theRecordReadBack_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<SongInfo>("record");
    QTest::addColumn<WrittenBy>("writtenBy");

    SongInfo usual;
    usual.title = latin1("Volare");
    usual.artist = latin1("Mina");
    usual.altArtist = latin1("Mazzini");
    usual.author = latin1("Conte");
    usual.genre = latin1("Pop");
    usual.key = latin1("A-");
    usual.length = 215;
    usual.bpm = 120;
    usual.isPublisher = true;
    usual.markers = {{1, latin1("Intro")}, {65535, latin1("Coda")}};

    SongInfo odd;
    odd.title = latin1("  K-VARO ") + QChar(0) + latin1("hidden");
    odd.artist = QString(200, QLatin1Char('A'));
    odd.author = latin1("TIT2TPE1MEDT");
    odd.genre = latin1("\t");
    odd.key = latin1("G #");
    odd.length = 2147483647;
    odd.bpm = 70000;
    odd.isPublisher = true;
    odd.markers = {{0, QString()}, {3, QString(300, QLatin1Char('m'))}};

    SongInfo accents = usual;
    accents.title = latin1("Perch\xE9 no");
    accents.artist = QString(130, QChar(0x20AC));
    accents.markers = {{2, QString(125, QChar(0x20AC))}};

    SongInfo empty;
    empty.length = empty.bpm = -1;

    const QByteArray song = midi1(meta(2, "K-Varo") + meta(3, "Vol") + meta(0x59, hex("0A00")));
    const QVector<QPair<QString, QByteArray>> songs = {
        {latin1("mid"), song},
        {latin1("mf3"), mfx(3, {}, song)},
        {latin1("mf4"), mfx(4, {}, withFiller(song))},
        {latin1("mf5"), mfx(5, {"-", "--", "", "x", "LONG.MF5", 500, 0}, song)},
        {latin1("tagged.mp3"), tag(frame("TIT2", "Old") + QByteArray(40, '\0')) + audio()},
        {latin1("bare.mp3"), audio()},
        {latin1("odd.mp3"), "ID3" + hex("040000 00000080") + QByteArray(200, 'x') + audio()},
    };
    const QVector<QPair<const char *, SongInfo>> records = {
        {"usual", usual}, {"odd", odd}, {"accented", accents}, {"empty", empty}};
    for (const auto &[suffix, bytes] : songs) {
        for (const auto &[name, record] : records) {
            for (const WrittenBy writtenBy : {WrittenBy::User, WrittenBy::Catalogue}) {
                // An MFx header takes no accents; a test of saving has that.
                if (suffix.startsWith(latin1("mf")) && qstrcmp(name, "accented") == 0)
                    continue;
                QTest::addRow("%s: %s record, %s", qPrintable(suffix), name,
                              writtenBy == WrittenBy::User ? "edit" : "update")
                    << suffix << bytes << record << writtenBy;
            }
        }
    }
}

void tst_WrittenRecord::theRecordReadBack()
{
    QFETCH(QString, suffix);
    QFETCH(QByteArray, bytes);
    QFETCH(SongInfo, record);
    QFETCH(WrittenBy, writtenBy);

    MetaSong song = imported(suffix, bytes);
    song.setSongInfo(record, writtenBy);
    QVERIFY(song.whyNotSavable());
    SongInfo inMemory;
    song.readInfo(inMemory);
    const SongInfo inFile = savedAndReadBack(song);
    QCOMPARE(inFile.title, inMemory.title);
    QCOMPARE(inFile.artist, inMemory.artist);
    QCOMPARE(inFile.genre, inMemory.genre);
    QCOMPARE(inFile.author, inMemory.author);
    QCOMPARE(inFile.length, inMemory.length);
    QCOMPARE(inFile.bpm, inMemory.bpm);
    QCOMPARE(inFile.key, inMemory.key);
    QCOMPARE(inFile.isPublisher, inMemory.isPublisher);
    QCOMPARE(inFile.markers, inMemory.markers);
    QCOMPARE(inFile.format, inMemory.format);
    QCOMPARE(inFile.mfxLongName, inMemory.mfxLongName);
    QCOMPARE(inFile.mfxFlags, inMemory.mfxFlags);
}

void tst_WrittenRecord::examplesOfTheFormatsPage()
{
    const QByteArray rest = track(note() + endOfTrack());
    const QByteArray old = hex("00 ff 58 04 04 02 18 08  00 ff 51 03 07 a1 20  00 ff 2f 00");
    MetaSong song = imported(latin1("mid"), midi(1, {track(old), rest}));
    SongInfo info;
    QVERIFY(song.addMarker(latin1("Intro"), 1) > 0);
    song.readInfo(info);
    info.title = latin1("Ciao");
    info.artist = latin1("Mina");
    info.key = latin1("Eb");
    info.length = 215;
    song.setSongInfo(info, edit);
    QVERIFY(song.saveToFile(m_file.path()));
    QCOMPARE(read(m_file.path()),
             hex("4d 54 68 64  00 00 00 06  00 01 00 02  00 60"
                 "4d 54 72 6b  00 00 00 4e"
                 "00 ff 4b 01 01"
                 "00 ff 4b 05 02  4d 69 6e 61"
                 "00 ff 4b 02 05  30"
                 "00 ff 4b 01 03"
                 "00 ff 03 04  43 69 61 6f"
                 "00 ff 4b 04 04  32 31 35"
                 "00 ff 59 02  fd 00"
                 "00 ff 4b 08 06  00 01  49 6e 74 72 6f")
                 + old + rest);

    MetaSong mp3 = imported(latin1("mp3"), audio());
    mp3.readInfo(info);
    info.title = latin1("Ciao");
    mp3.setSongInfo(info, edit);
    QVERIFY(mp3.saveToFile(m_file.path()));
    QCOMPARE(read(m_file.path()),
             hex("49 44 33  03 00 00  00 00 00 29"
                 "4d 45 44 54  00 00 00 04  00 00  00  00 00 00"
                 "54 49 54 32  00 00 00 05  00 00  00  43 69 61 6f"
                 "54 4c 45 4e  00 00 00 02  00 00  00  30")
                 + audio());
}

QTEST_GUILESS_MAIN(tst_WrittenRecord)
#include "tst_writtenrecord.moc"
