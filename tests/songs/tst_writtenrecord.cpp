#include "tests/songs/songfixture.h"

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

namespace {

SongInfo fullRecord()
{
    SongInfo info;
    info.title = "Volare"_s;
    info.artist = "Mina"_s;
    info.author = "Conte"_s;
    info.genre = "Pop"_s;
    info.key = "A-"_s;
    info.length = 215;
    info.bpm = 120;
    info.isPublisher = true;
    info.markers = {{1, "Intro"_s}, {65535, "Coda"_s}};
    return info;
}

} // namespace

/** What a record changes in a song besides its fields, what it leaves alone, and what is read back
 * from the file. */
class tst_WrittenRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("*.debug=false"_s); }

    void markers_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<WrittenBy>("writtenBy");
        QTest::addColumn<QVector<Marker>>("record");
        QTest::addColumn<QVector<Marker>>("after");
        const QVector<Marker> none;
        const QVector<Marker> old = {{7, "Old"_s}};
        const QVector<Marker> given = {{1, "Intro"_s}, {5, "Chorus"_s}};
        const QByteArray present = marker(7, "Old");
        for (const char *format : {"mid", "mf3", "mf4", "mf5"}) {
            const auto row = [&](const char *sentence, const QByteArray &before,
                                 WrittenBy writtenBy, const QVector<Marker> &record,
                                 const QVector<Marker> &after) {
                QTest::addRow("%s: %s", format, sentence)
                    << QString::fromLatin1(format) << before << writtenBy << record << after;
            };
            row("an update adds markers where there are none", {}, update, given, given);
            row("an update without markers adds none", {}, update, none, none);
            row("an update keeps markers", present, update, given, old);
            row("an edit adds none", {}, edit, given, none);
            row("an edit keeps markers", present, edit, given, old);
            row("an edit without markers keeps them, too", present, edit, none, old);
        }
    }
    void markers()
    {
        QFETCH(QString, format);
        QFETCH(QByteArray, before);
        QFETCH(WrittenBy, writtenBy);
        QFETCH(QVector<Marker>, record);
        QFETCH(QVector<Marker>, after);
        for (const bool isPublisher : {true, false}) {
            MetaSong song = m_file.imported(format, fileOf(format, midi0(before)));
            SongInfo info;
            info.isPublisher = isPublisher;
            info.markers = record;
            song.setSongInfo(info, writtenBy);
            QCOMPARE(recordOf(song).markers, after);
            QCOMPARE(m_file.savedAndReadBack(song).markers, after);
        }
    }

    void bytesOfTheSong_data()
    {
        Table<QString, QByteArray, SongInfo, WrittenBy, QByteArray>();
        addRowsOfNumbersMarkAndFlags();
        addRowsOfAFullRecord();
    }
    void bytesOfTheSong()
    {
        const auto [suffix, before, record, writtenBy, after] =
            cells<QString, QByteArray, SongInfo, WrittenBy, QByteArray>();
        MetaSong song = m_file.imported(suffix, before);
        song.setSongInfo(record, writtenBy);
        QVERIFY(song.saveToFile(m_file.path()));
        QCOMPARE(read(m_file.path()), after);
    }

    void theRecordReadBack_data()
    {
        Table<QString, QByteArray, SongInfo, WrittenBy>();
        SongInfo odd;
        odd.title = "  K-VARO "_s + QChar(0) + "hidden"_s;
        odd.artist = QString(200, QLatin1Char('A'));
        odd.author = "TIT2TPE1MEDT"_s;
        odd.genre = "\t"_s;
        odd.key = "G #"_s;
        odd.length = 2147483647;
        odd.bpm = 70000;
        odd.isPublisher = true;
        odd.markers = {{0, QString()}, {3, QString(300, QLatin1Char('m'))}};

        SongInfo accents = fullRecord();
        accents.title = "Perch\xE9 no"_s;
        accents.artist = QString(130, QChar(0x20AC));
        accents.markers = {{2, QString(125, QChar(0x20AC))}};

        SongInfo empty;
        empty.length = empty.bpm = -1;

        const QByteArray song = midi1(meta(2, "K-Varo") + meta(3, "Vol") + meta(0x59, hex("0A00")));
        const QVector<QPair<QString, QByteArray>> songs = {
            {"mid"_s, song},
            {"mf4"_s, mfx(4, {}, withFiller(song))},
            {"mf5"_s, mfx(5, {"-", "--", "", "x", "LONG.MF5", 500, 0}, song)},
            {"tagged.mp3"_s, tag(frame("TIT2", "Old") + QByteArray(40, '\0')) + audio()},
            {"bare.mp3"_s, audio()},
            {"odd.mp3"_s, "ID3" + hex("040000 00000080") + QByteArray(200, 'x') + audio()},
        };
        const QVector<QPair<const char *, SongInfo>> records = {
            {"usual", fullRecord()}, {"odd", odd}, {"accented", accents}, {"empty", empty}};
        for (const auto &[suffix, bytes] : songs) {
            for (const auto &[name, record] : records) {
                for (const WrittenBy writtenBy : {WrittenBy::User, WrittenBy::Catalogue}) {
                    // An MFx header takes no accents; a test of saving has that.
                    if (suffix.startsWith("mf"_s) && qstrcmp(name, "accented") == 0)
                        continue;
                    QTest::addRow("%s: %s record, %s", qPrintable(suffix), name,
                                  writtenBy == WrittenBy::User ? "edit" : "update")
                        << suffix << bytes << record << writtenBy;
                }
            }
        }
    }
    void theRecordReadBack()
    {
        const auto [suffix, bytes, record, writtenBy] =
            cells<QString, QByteArray, SongInfo, WrittenBy>();
        MetaSong song = m_file.imported(suffix, bytes);
        song.setSongInfo(record, writtenBy);
        QVERIFY(song.whyNotSavable());
        QCOMPARE(textOf(m_file.savedAndReadBack(song)), textOf(recordOf(song)));
    }

    void examplesOfTheFormatsPage()
    {
        const QByteArray rest = track(note() + endOfTrack());
        const QByteArray old = hex("00 ff 58 04 04 02 18 08  00 ff 51 03 07 a1 20  00 ff 2f 00");
        MetaSong song = m_file.imported("mid"_s, midi(1, {track(old), rest}));
        SongInfo info;
        QVERIFY(song.addMarker("Intro"_s, 1) > 0);
        song.readInfo(info);
        info.title = "Ciao"_s;
        info.artist = "Mina"_s;
        info.key = "Eb"_s;
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

        MetaSong mp3 = m_file.imported("mp3"_s, audio());
        mp3.readInfo(info);
        info.title = "Ciao"_s;
        mp3.setSongInfo(info, edit);
        QVERIFY(mp3.saveToFile(m_file.path()));
        QCOMPARE(read(m_file.path()),
                 hex("49 44 33  03 00 00  00 00 00 29"
                     "4d 45 44 54  00 00 00 04  00 00  00  00 00 00"
                     "54 49 54 32  00 00 00 05  00 00  00  43 69 61 6f"
                     "54 4c 45 4e  00 00 00 02  00 00  00  30")
                     + audio());
    }

private:
    static void row(const char *name, const QByteArray &before, const SongInfo &record,
                    WrittenBy writtenBy, const QByteArray &after)
    {
        QTest::newRow(name) << QString::fromLatin1(name, 3) << before << record << writtenBy
                            << after;
    }

    static void addRowsOfNumbersMarkAndFlags()
    {
        const auto lengthAndBpm = [](int number) {
            SongInfo info;
            info.length = info.bpm = number;
            info.isPublisher = true;
            return info;
        };
        const QByteArray mark = SongBytes::editMark();
        const auto texts = songInfo(1, {}) + songInfo(2, {});
        row("mid: a length and a bpm of 0 in the catalogue are written", midi0(), lengthAndBpm(0),
            update,
            midi0(texts + songInfo(5, "0") + songInfo(3, {}) + meta(3, {}) + songInfo(4, "0")));
        row("mid: a length and a bpm of -1 in the catalogue are not written", midi0(),
            lengthAndBpm(-1), update, midi0(texts + songInfo(3, {}) + meta(3, {})));
        row("mp3: a length of 0 is written, a bpm of 0 removes its frame", audio(), lengthAndBpm(0),
            update, tag(mark + frame("TLEN", "0")) + audio());
        row("mp3: a length and a bpm of -1 are not written, only the mark is", audio(),
            lengthAndBpm(-1), update, tag(mark) + audio());
        row("mp3: an update marks it once", tag(mark) + audio(), lengthAndBpm(-1), update,
            tag(mark) + audio());
        row("mp3: an edit marks it", tag() + audio(), {}, edit,
            tag(mark + frame("TLEN", "0")) + audio());
        row("mp3: an edit marks it once", tag(mark) + audio(), {}, edit,
            tag(frame("TLEN", "0") + mark) + audio());
        const auto mf3 = [](int bpm, int flags, const QByteArray &events) {
            return mfx(3, {"", "", "", "", "", bpm, flags}, midi0(events));
        };
        row("mf3: a length of 0 is written, a bpm of 0 in place of 500", mf3(500, 0, {}),
            lengthAndBpm(0), update, mf3(0, 0, songInfo(4, "0")));
        row("mf3: a length and a bpm of -1 are not written", mf3(500, 0, {}), lengthAndBpm(-1),
            update, mf3(500, 0, {}));
        SongInfo withMarkers;
        withMarkers.markers = {{9, "Coda"_s}};
        const QByteArray own = marker(1, "A"), zero = songInfo(4, "0");
        row("mf3: an update with markers sets bit 0 of the flags, also when the song's own stay",
            mf3(0, 0x40, own), withMarkers, update, mf3(0, 0x41, own));
        row("mf3: so does an edit", mf3(0, 0x40, own), withMarkers, edit, mf3(0, 0x41, zero + own));
        row("mf3: an update without markers leaves the flags", mf3(0, 0x40, own), {}, update,
            mf3(0, 0x40, own));
        row("mf3: an edit without markers leaves the flags", mf3(0, 0x40, own), {}, edit,
            mf3(0, 0x40, zero + own));
        row("mf3: bit 0 is never cleared", mf3(0, 0x81, own), {}, edit, mf3(0, 0x81, zero + own));
    }

    static void addRowsOfAFullRecord()
    {
        const QByteArray own = marker(1, "A");
        const SongInfo full = fullRecord();
        const QByteArray lyrics = meta(5, "La la") + hex("60 F0 03 41 10 F7");
        const QByteArray track2 = track(meta(3, "Piano") + note() + endOfTrack());
        const QByteArray lastEvents =
            songInfo(1, "Pop") + songInfo(2, "Mina") + songInfo(5, "120") + songInfo(3, "Conte");
        const QByteArray firstEvents = songInfo(4, "215") + meta(0x59, hex("0001"));
        const auto song = [&](const QByteArray &events) {
            return midi(1, {track(events + lyrics + endOfTrack()), track2});
        };
        row("mid: an edit changes the head of the first track only",
            song(meta(3, "Old") + songInfo(1, "Old") + own), full, edit,
            song(lastEvents + meta(3, "Volare") + firstEvents + own));
        row("mid: an update, too, and takes a name in a later track for the song's", song({}), full,
            update, song(lastEvents + firstEvents + marker(1, "Intro") + marker(65535, "Coda")));

        const QByteArray picture =
            "APIC" + bigEndian(300, 4) + hex("0000") + QByteArray(300, '\xAB');
        const QByteArray padding(64, '\0');
        const QByteArray frames = SongBytes::editMark() + frame("TCON", "Pop")
            + frame("TPE1", "Mina") + frame("TBPM", "120") + frame("TCOM", "Conte")
            + frame("TIT2", "Volare") + frame("TLEN", "215000") + frame("TKEY", "A-");
        row("mp3: an edit puts its frames first, picture, padding and audio stay",
            tag(frame("TIT2", "Old") + picture + padding) + audio(500), full, edit,
            tag(frames + picture + padding) + audio(500));
        row("mp3: a song without a tag gains one in front of its audio", audio(500), full, update,
            tag(frames) + audio(500));
        row("mp3: what follows a tag that counts as empty is kept",
            "ID3" + hex("030000 00000081") + frame("TIT2", "Lost") + audio(), full, update,
            tag(frames) + frame("TIT2", "Lost") + audio());
    }

    FixtureSong m_file;
};

QTEST_GUILESS_MAIN(tst_WrittenRecord)
#include "tst_writtenrecord.moc"
