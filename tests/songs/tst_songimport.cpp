#include "songs/metasong.h"
#include "storage/regularfile.h"

#include "tests/library/logcapture.h"
#include "tests/songs/mfxbytes.h"

#include <QTemporaryDir>
#include <QtTest>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace tarvel4;

using namespace SongBytes;

/** Which files are taken for songs, and of which format. */
class tst_SongImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void importFile_data();
    void importFile();
    void onlyRegularFilesAreSongs_data();
    void onlyRegularFilesAreSongs();
    void aFileOfMoreThanTwoGigabytesIsNoSong_data();
    void aFileOfMoreThanTwoGigabytesIsNoSong();
    void aReadThatFailsHalfWayIsNoSong();
    void largeTags_data();
    void largeTags();
    void aFailedImportForgetsTheSongBefore();
    void corruptStreamsAreLogged_data();
    void corruptStreamsAreLogged();
    void mf4FillerIsTakenOut_data();
    void mf4FillerIsTakenOut();

private:
    QString path(const char *name) const { return m_folder->filePath(QLatin1String(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

} // namespace

void tst_SongImport::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_SongImport::importFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("format"); // 0: refused

    const auto row = [](const char *sentence, const char *name, const QByteArray &bytes,
                        int format) {
        QTest::newRow(sentence) << QString::fromLatin1(name) << bytes << format;
    };
    const QByteArray song = midi0();
    row("a MIDI song of format 0 has code 1", "a.mid", song, MetaSong::Midi0);
    row("a MIDI song of format 1 has code 2", "a.kar", midi1(), MetaSong::Midi1);
    row("a MIDI song of format 2 is refused", "a.mid", midi(2, {track(note())}), 0);
    row("the bytes decide, not the suffix", "a.mp3", song, MetaSong::Midi0);
    row("a MIDI song needs no suffix", "song", song, MetaSong::Midi0);
    row("an MF3 song, 512 bytes of header and a stream, has code 3", "a.mf3", mfx(3, {}, song),
        MetaSong::Mf3);
    row("an MF4 song has code 4", "a.mf4", mfx(4, {}, withFiller(song)), MetaSong::Mf4);
    row("an MF5 song has code 5", "a.mf5", mfx(5, {}, song), MetaSong::Mf5);
    row("an MFx song around format 1 keeps the code of its container", "a.mf3", mfx(3, {}, midi1()),
        MetaSong::Mf3);
    row("an MFx song of an unknown version is refused", "a.mf6",
        mfx(3, {}, song).replace(0, 4, "_MF6"), 0);
    row("an MF5 song of 1023 bytes is refused", "a.mf5", mfx(5, {}, song).left(1023), 0);
    row("an MF5 song of 1027 bytes is refused", "a.mf5", mfx(5, {}, song).left(1027), 0);
    row("an MF3 song of 512 bytes is refused", "a.mf3", mfx(3, {}, song).left(512), 0);
    row("an MFx song around no MIDI is refused", "a.mf3", mfx(3, {}, "no MIDI at all"), 0);
    row("an MFx song around nothing is refused", "a.mf3", mfx(3, {}, QByteArray()), 0);
    row("an MF4 song that ends with its track header is loaded", "a.mf4", mfx(4, {}, song.left(22)),
        MetaSong::Mf4);

    row("an MP3 song with a tag has code 6", "a.mp3", tag() + audio(), MetaSong::Mp3);
    row("an MP3 song without one, too", "a.mp3", audio(), MetaSong::Mp3);
    row("x.MP3 that begins with 00 00 is an MP3", "x.MP3", QByteArray(20, '\0'), MetaSong::Mp3);
    row("x.mp3 that begins with FF 05 is an MP3", "x.mp3", hex("FF05") + QByteArray(20, 'x'),
        MetaSong::Mp3);
    row("FF F3 is an MP3", "x.mp3", hex("FFF3") + QByteArray(20, 'x'), MetaSong::Mp3);
    row("FF FF is an MP3", "x.mp3", hex("FFFF") + QByteArray(20, 'x'), MetaSong::Mp3);
    row("FF 7F is an MP3", "x.mp3", hex("FF7F") + QByteArray(20, 'x'), MetaSong::Mp3);
    row("FF 80 is none", "x.mp3", hex("FF80") + QByteArray(20, 'x'), 0);
    row("FF F2 is none", "x.mp3", hex("FFF2") + QByteArray(20, 'x'), 0);
    row("00 01 is none", "x.mp3", hex("0001") + QByteArray(20, 'x'), 0);
    row("an MP3 frame in x.mid is no song", "x.mid", audio(), 0);
    row("an MP3 frame in x.mp3.bak is no song", "x.mp3.bak", audio(), 0);
    row("a tag in x.mid is no song", "x.mid", tag() + audio(), 0);
    row("a name that ends with mp3 without a point is enough", "xMp3", audio(), MetaSong::Mp3);
    row("an MP3 of ten bytes is loaded", "x.mp3", audio().left(10), MetaSong::Mp3);
    row("an MP3 of nine bytes is refused", "x.mp3", audio().left(9), 0);
    row("an MP3 shorter than its tag is refused", "x.mp3",
        "ID3" + hex("030000 00000100") + QByteArray(100, 'x'), 0);
    row("an MP3 as long as the size in its tag is loaded", "x.mp3",
        "ID3" + hex("030000 00000100") + QByteArray(118, 'x'), MetaSong::Mp3);
    row("an MP3 whose tag counts as empty is loaded", "x.mp3",
        "ID3" + hex("030000 00000081") + QByteArray(9, 'x'), MetaSong::Mp3);

    row("an empty file is refused", "x.mid", QByteArray(), 0);
    row("an empty MP3 is refused", "x.mp3", QByteArray(), 0);
    row("one byte is refused", "x.mp3", hex("FF"), 0);
    row("a text is refused", "x.mid", "Once upon a time", 0);
}

void tst_SongImport::importFile()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(int, format);

    const QString file = write(m_folder->filePath(name), bytes);
    MetaSong song;
    QCOMPARE(static_cast<bool>(song.importFile(file)), format != 0);
    QCOMPARE(song.format(), format);
    QCOMPARE(read(file), bytes);
}

void tst_SongImport::onlyRegularFilesAreSongs_data()
{
    QTest::addColumn<QString>("kind");
    for (const char *kind : {"missing", "folder", "FIFO", "socket", "device", "dangling link",
                             "link to itself", "link to a song"}) {
        QTest::newRow(kind) << QString::fromLatin1(kind);
    }
}

void tst_SongImport::onlyRegularFilesAreSongs()
{
#ifndef Q_OS_UNIX
    QSKIP("There are no such files here");
#else
    QFETCH(QString, kind);

    const QString file = path("x.mid");
    const QByteArray name = QFile::encodeName(file);
    if (kind == latin1("folder"))
        QVERIFY(QDir().mkdir(file));
    if (kind == latin1("FIFO"))
        QCOMPARE(mkfifo(name.constData(), 0600), 0);
    if (kind == latin1("socket") && mknod(name.constData(), S_IFSOCK | 0600, 0) != 0)
        QSKIP("A socket can't be made here");
    if (kind == latin1("device"))
        QVERIFY(QFile::link(latin1("/dev/zero"), file));
    if (kind == latin1("dangling link"))
        QVERIFY(QFile::link(path("nowhere.mid"), file));
    if (kind == latin1("link to itself"))
        QVERIFY(QFile::link(file, file));
    if (kind == latin1("link to a song"))
        QVERIFY(QFile::link(write(path("song"), midi0()), file));
    QCOMPARE(static_cast<bool>(MetaSong().importFile(file)), kind == latin1("link to a song"));
#endif
}

void tst_SongImport::aFileOfMoreThanTwoGigabytesIsNoSong_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("MIDI") << midi0();
    QTest::newRow("MF3") << mfx(3, {}, midi0());
}

void tst_SongImport::aFileOfMoreThanTwoGigabytesIsNoSong()
{
    QFETCH(QByteArray, start);

    QFile file(write(path("big.mid"), start));
    QVERIFY(file.open(QIODevice::ReadWrite));
    if (!file.resize(3'000'000'000))
        QSKIP("The file system takes no file of 3 GB");
    QVERIFY(!MetaSong().importFile(file.fileName()));
}

void tst_SongImport::aReadThatFailsHalfWayIsNoSong()
{
    // The kernel gives its files the size of a page and fewer bytes.
    QFile file(latin1("/sys/kernel/mm/transparent_hugepage/enabled"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        QSKIP("There is no file here that gives fewer bytes than its size");
    QByteArray bytes;
    QVERIFY(!FileBytes::readAll(file, bytes));
}

void tst_SongImport::largeTags_data()
{
    QTest::addColumn<int>("tagSize");
    QTest::addColumn<int>("audioSize");
    QTest::addColumn<bool>("isSong");

    QTest::newRow("a tag of 900,000 bytes is read") << 900'000 << 1'000'000 << true;
    QTest::newRow("a tag of 1,000,000 bytes is read") << 1'000'000 << 1'000'000 << true;
    QTest::newRow("a tag of 1,000,001 bytes is not") << 1'000'001 << 1'000'000 << false;
    QTest::newRow("a file that ends before its tag of 900,000 bytes is refused")
        << 900'000 << -11 << false;
}

void tst_SongImport::largeTags()
{
    QFETCH(int, tagSize);
    QFETCH(int, audioSize);
    QFETCH(bool, isSong);

    QByteArray bytes =
        tag(frame("TIT2", "Title") + QByteArray(tagSize - 16 - 16, '\0') + frame("TPE1", "Last!"));
    QCOMPARE(bytes.size(), tagSize + 10);
    if (audioSize < 0)
        bytes.chop(-audioSize);
    else
        bytes += QByteArray(audioSize, 'a');
    MetaSong song;
    QCOMPARE(static_cast<bool>(song.importFile(write(path("x.mp3"), bytes))), isSong);
    SongInfo info;
    song.readInfo(info);
    QCOMPARE(info.artist, isSong ? latin1("Last!") : QString());
}

void tst_SongImport::aFailedImportForgetsTheSongBefore()
{
    MetaSong song;
    QVERIFY(song.importFile(write(path("a.mid"), midi0(meta(3, "Volare") + note()))));
    QVERIFY(!song.importFile(path("missing.mid")));
    QCOMPARE(song.format(), 0);
    QCOMPARE(song.midiData(), QByteArray());
    SongInfo info;
    song.readInfo(info);
    QCOMPARE(info.title, QString());
    QCOMPARE(info.format, latin1("UNKNOWN"));
    QVERIFY(!song.whyNotSavable());
    QCOMPARE(song.addMarker(latin1("A"), 1), 0);
}

void tst_SongImport::corruptStreamsAreLogged_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("line");

    const QString expand = latin1("[MetaSong::importFile] LzHuff Expand filed, skipping file");
    const QString stream = latin1("[MetaSong::importFile] MidiStream corrupted, skipping file");
    QTest::newRow("a size of 0") << mfxHeader(3) + hex("00000000") << expand;
    QTest::newRow("a size above 500,000") << mfxHeader(3) + littleEndian(500'001, 4) << expand;
    QTest::newRow("no size") << mfxHeader(5) + "abc" << expand;
    QTest::newRow("a stream that ends at once")
        << mfxHeader(3) + littleEndian(500'000, 4) << stream;
    QTest::newRow("a stream that holds no MIDI") << mfx(5, {}, "no MIDI at all") << stream;
    QTest::newRow("a stream of format 2") << mfx(4, {}, midi(2, {track(note())})) << stream;
}

void tst_SongImport::corruptStreamsAreLogged()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, line);

    const QString file = write(path("a.mf3"), bytes);
    const LogCapture capture;
    QVERIFY(!MetaSong().importFile(file));
    QCOMPARE(capture.lines().last(), line);
}

void tst_SongImport::mf4FillerIsTakenOut_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QByteArray>("midi");

    const QByteArray song = midi1(meta(3, "Volare") + note());
    QTest::newRow("of an MF4 song") << 4 << withFiller(song) << song;
    QTest::newRow("whatever it is") << 4 << withFiller(song, "abc") << song;
    QTest::newRow("and no more than that") << 4 << withFiller(withFiller(song)) << withFiller(song);
    QTest::newRow("but not of an MF3 song") << 3 << song << song;
    QTest::newRow("nor of an MF5 song") << 5 << song << song;
}

void tst_SongImport::mf4FillerIsTakenOut()
{
    QFETCH(int, version);
    QFETCH(QByteArray, stream);
    QFETCH(QByteArray, midi);

    MetaSong song;
    QVERIFY(song.importFile(write(path("a"), mfx(version, {}, stream))));
    QCOMPARE(song.midiData(), midi);
}

QTEST_GUILESS_MAIN(tst_SongImport)
#include "tst_songimport.moc"
