#include "songs/id3/id3v2tag.h"
#include "songs/metasong.h"

#include "tests/songs/songbytes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <optional>

using namespace tarvel4;

using namespace SongBytes;

/** Songs that nobody here wrote, edited by us and read by other people's programs. */
class tst_RealSongs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void midiSongs();
    void mp3Songs_data();
    void mp3Songs();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    bool makeMp3(const QString &maker, const QString &file) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

constexpr char python[] = "/usr/bin/python3"; // the system's, which has Debian's modules

QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

/** Runs a program to its end; its output, or nothing when it can't be run or fails. */
std::optional<QByteArray> outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool isDone = process.waitForFinished(60'000)
        && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (!isDone) {
        qWarning("%s: %s", qPrintable(program), process.readAllStandardError().constData());
        return std::nullopt;
    }
    return process.readAllStandardOutput();
}

bool hasModule(const char *module)
{
    return outputOf(latin1(python), {latin1("-c"), latin1("import ") + latin1(module)}).has_value();
}

/** What a script of ours prints about each of the files. */
QVector<QJsonObject> factsOf(const char *script, const QStringList &files)
{
    const QString scriptPath = QFileInfo(latin1(__FILE__)).dir().filePath(latin1(script));
    const QList<QByteArray> lines = outputOf(latin1(python), QStringList(scriptPath) + files)
                                        .value_or(QByteArray())
                                        .split('\n');
    QVector<QJsonObject> facts;
    for (const QByteArray &line : lines) {
        if (!line.isEmpty())
            facts.append(QJsonDocument::fromJson(line).object());
    }
    return facts;
}

QStringList songsOfOpenttd()
{
    const QByteArray listing = QStandardPaths::findExecutable(latin1("dpkg")).isEmpty()
        ? QByteArray()
        : outputOf(latin1("dpkg"), {latin1("-L"), latin1("openttd-openmsx")})
              .value_or(QByteArray());
    return QString::fromLocal8Bit(listing)
        .split(QLatin1Char('\n'))
        .filter(QRegularExpression(latin1("\\.mid$")));
}

/** A key as mido calls it ("Ebm"), in our form ("Eb-"). */
QString ourKey(QString midoKey)
{
    return midoKey.replace(QLatin1Char('m'), QLatin1Char('-'));
}

SongInfo editedRecord()
{
    SongInfo info;
    info.title = latin1("Nel blu");
    info.artist = latin1("Mina");
    info.author = latin1("Modugno");
    info.genre = latin1("Pop");
    info.key = latin1("F#-");
    info.length = 215;
    info.bpm = 131;
    return info;
}

SongInfo recordOf(const QString &file)
{
    SongInfo info;
    MetaSong song;
    if (song.importFile(file))
        song.readInfo(info);
    return info;
}

} // namespace

void tst_RealSongs::initTestCase()
{
    QLoggingCategory::setFilterRules(latin1("*.debug=false"));
}

void tst_RealSongs::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_RealSongs::midiSongs()
{
    const QStringList originals = songsOfOpenttd();
    if (originals.isEmpty())
        QSKIP("Debian's package openttd-openmsx is not installed");
    if (!hasModule("mido"))
        QSKIP("Debian's package python3-mido is not installed");
    QCOMPARE(originals.size(), 31);

    QStringList files;
    for (const QString &original : originals)
        files.append(write(path(QFileInfo(original).fileName()), read(original)));
    const QVector<QJsonObject> before = factsOf("midi_facts.py", files);
    QCOMPARE(before.size(), files.size());
    for (int i = 0; i < files.size(); ++i) {
        const SongInfo info = recordOf(files.at(i));
        QCOMPARE(info.format, latin1("MIDI"));
        QCOMPARE(info.title, before.at(i).value(latin1("title")).toString().trimmed());
        QCOMPARE(info.key, ourKey(before.at(i).value(latin1("key")).toString()));

        MetaSong song;
        QVERIFY(song.importFile(files.at(i)));
        song.addMarker(latin1("Intro"), 2);
        song.setSongInfo(editedRecord(), WrittenBy::User);
        QVERIFY(song.saveToFile(files.at(i)));
    }
    const QVector<QJsonObject> after = factsOf("midi_facts.py", files);
    QCOMPARE(after.size(), files.size());
    const QJsonArray fields = {latin1("\1Pop"),
                               latin1("\2Mina"),
                               latin1("\5"
                                      "131"),
                               latin1("\3Modugno"),
                               latin1("\4"
                                      "215"),
                               QString(QChar(6)) + QChar(0) + QChar(2) + latin1("Intro")};
    for (int i = 0; i < files.size(); ++i) {
        QCOMPARE(after.at(i).value(latin1("title")).toString(), latin1("Nel blu"));
        QCOMPARE(after.at(i).value(latin1("key")).toString(), latin1("F#m"));
        QCOMPARE(after.at(i).value(latin1("fields")).toArray(), fields);
        // Nothing but the metadata has changed.
        QCOMPARE(after.at(i).value(latin1("music")), before.at(i).value(latin1("music")));
    }
}

void tst_RealSongs::mp3Songs_data()
{
    QTest::addColumn<QString>("maker");
    QTest::addColumn<QString>("title"); // as we read it

    QTest::newRow("ffmpeg, ID3v2.3") << latin1("ffmpeg 3") << latin1("Volare");
    QTest::newRow("ffmpeg, ID3v2.4") << latin1("ffmpeg 4") << latin1("Volare");
    QTest::newRow("ffmpeg without a tag") << latin1("ffmpeg 0") << QString();
    QTest::newRow("lame writes UTF-16") << latin1("lame") << latin1("\xFF\xFEV");
    QTest::newRow("mutagen: a picture, UTF-16 and padding")
        << latin1("mutagen") << latin1("\xFF\xFEP");
}

bool tst_RealSongs::makeMp3(const QString &maker, const QString &file) const
{
    const QString sound = path(latin1("tone.wav"));
    const QStringList tone = {latin1("-v"), latin1("error"),
                              latin1("-f"), latin1("lavfi"),
                              latin1("-i"), latin1("sine=frequency=440:duration=2")};
    if (maker == latin1("lame")) {
        return outputOf(latin1("ffmpeg"), tone + QStringList(sound))
            && outputOf(latin1("lame"),
                        {latin1("--quiet"), latin1("--add-id3v2"), latin1("--tt"), latin1("Volare"),
                         sound, file});
    }
    QStringList arguments = tone;
    if (maker.startsWith(latin1("ffmpeg")) && !maker.endsWith(QLatin1Char('0')))
        arguments << latin1("-metadata") << latin1("title=Volare") << latin1("-id3v2_version")
                  << maker.right(1);
    else
        arguments << latin1("-id3v2_version") << latin1("0");
    const bool isMade = outputOf(latin1("ffmpeg"), arguments << file).has_value();
    if (maker != latin1("mutagen"))
        return isMade;
    const QString script = QFileInfo(latin1(__FILE__)).dir().filePath(latin1("mp3_facts.py"));
    return isMade && outputOf(latin1(python), {script, latin1("--tag"), file});
}

void tst_RealSongs::mp3Songs()
{
    QFETCH(QString, maker);
    QFETCH(QString, title);

    for (const char *program : {"ffmpeg", "lame"}) {
        if (QStandardPaths::findExecutable(latin1(program)).isEmpty())
            QSKIP("Debian's packages ffmpeg and lame are not installed");
    }
    if (!hasModule("mutagen"))
        QSKIP("Debian's package python3-mutagen is not installed");

    const QString file = path(latin1("song.mp3"));
    QVERIFY(makeMp3(maker, file));
    const QByteArray old = read(file);
    const QJsonObject before = factsOf("mp3_facts.py", {file}).value(0);
    MetaSong song;
    QVERIFY(song.importFile(file));
    SongInfo info;
    song.readInfo(info);
    QCOMPARE(info.title, title);
    song.setSongInfo(editedRecord(), WrittenBy::User);
    QVERIFY(song.saveToFile(file));

    const QJsonObject after = factsOf("mp3_facts.py", {file}).value(0);
    const QMap<QString, QString> written = {
        {latin1("TIT2"), latin1("Nel blu")}, {latin1("TPE1"), latin1("Mina")},
        {latin1("TCOM"), latin1("Modugno")}, {latin1("TCON"), latin1("Pop")},
        {latin1("TKEY"), latin1("F#-")},     {latin1("TLEN"), latin1("215000")},
        {latin1("TBPM"), latin1("131")},
    };
    for (auto frame = written.cbegin(); frame != written.cend(); ++frame)
        QCOMPARE(after.value(frame.key()).toString(), frame.value());
    QCOMPARE(after.value(latin1("TALB")), before.value(latin1("TALB")));
    QCOMPARE(after.value(latin1("pictures")), before.value(latin1("pictures")));
    QCOMPARE(after.value(latin1("seconds")), before.value(latin1("seconds")));
    QVERIFY(after.value(latin1("seconds")).toDouble() > 1.9);
    // The audio is the same, byte by byte.
    const int audioSize = old.size() - int(Id3v2Tag::bytesWanted(old.left(10)));
    QVERIFY(read(file).endsWith(maker.endsWith(QLatin1Char('0')) ? old : old.right(audioSize)));
}

QTEST_GUILESS_MAIN(tst_RealSongs)
#include "tst_realsongs.moc"
