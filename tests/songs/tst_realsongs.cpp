#include "songs/id3/id3v2tag.h"
#include "songs/metasong.h"

#include "tests/songs/songfixture.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QProcess>
#include <QStandardPaths>

#include <optional>

using namespace tarvel4;
using namespace SongBytes;
using namespace SongFixture;

namespace {

constexpr char python[] = "/usr/bin/python3"; // the system's, which has Debian's modules

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
    return outputOf(QString::fromLatin1(python),
                    {"-c"_s, "import "_s + QString::fromLatin1(module)})
        .has_value();
}

/** What a script of ours prints about each of the files. */
QVector<QJsonObject> factsOf(const char *script, const QStringList &files)
{
    const QString scriptPath =
        QFileInfo(QString::fromLatin1(__FILE__)).dir().filePath(QString::fromLatin1(script));
    const QList<QByteArray> lines =
        outputOf(QString::fromLatin1(python), QStringList(scriptPath) + files)
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
    const QByteArray listing = QStandardPaths::findExecutable("dpkg"_s).isEmpty()
        ? QByteArray()
        : outputOf("dpkg"_s, {"-L"_s, "openttd-openmsx"_s}).value_or(QByteArray());
    return QString::fromLocal8Bit(listing).split(u'\n').filter(QRegularExpression("\\.mid$"_s));
}

/** A key as mido calls it ("Ebm"), in our form ("Eb-"). */
QString ourKey(QString midoKey)
{
    return midoKey.replace(QLatin1Char('m'), QLatin1Char('-'));
}

SongInfo editedRecord()
{
    SongInfo info;
    info.title = "Nel blu"_s;
    info.artist = "Mina"_s;
    info.author = "Modugno"_s;
    info.genre = "Pop"_s;
    info.key = "F#-"_s;
    info.length = 215;
    info.bpm = 131;
    return info;
}

} // namespace

/** Songs that nobody here wrote, edited by us and read by other people's programs. */
class tst_RealSongs : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules("*.debug=false"_s); }

    void init() { makeFolder(); }

    void midiSongs()
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
            const SongInfo info = recordOf(imported(files.at(i)));
            QCOMPARE(info.format, "MIDI"_s);
            QCOMPARE(info.title, before.at(i).value("title"_s).toString().trimmed());
            QCOMPARE(info.key, ourKey(before.at(i).value("key"_s).toString()));

            MetaSong song;
            QVERIFY(song.importFile(files.at(i)));
            song.addMarker("Intro"_s, 2);
            song.setSongInfo(editedRecord(), edit);
            QVERIFY(song.saveToFile(files.at(i)));
        }
        const QVector<QJsonObject> after = factsOf("midi_facts.py", files);
        QCOMPARE(after.size(), files.size());
        const QJsonArray fields = {"\1Pop"_s,
                                   "\2Mina"_s,
                                   "\5"
                                   "131"_s,
                                   "\3Modugno"_s,
                                   "\4"
                                   "215"_s,
                                   QString(QChar(6)) + QChar(0) + QChar(2) + "Intro"_s};
        for (int i = 0; i < files.size(); ++i) {
            QCOMPARE(after.at(i).value("title"_s).toString(), "Nel blu"_s);
            QCOMPARE(after.at(i).value("key"_s).toString(), "F#m"_s);
            QCOMPARE(after.at(i).value("fields"_s).toArray(), fields);
            // Nothing but the metadata has changed.
            QCOMPARE(after.at(i).value("music"_s), before.at(i).value("music"_s));
        }
    }

    void mp3Songs_data()
    {
        const Table<QString, QString> row; // maker, and the title as we read it
        row("ffmpeg, ID3v2.3", "ffmpeg 3", "Volare");
        row("ffmpeg, ID3v2.4", "ffmpeg 4", "Volare");
        row("ffmpeg without a tag", "ffmpeg 0", {});
        row("lame writes Latin-1", "lame --id3v2-latin1", "Volare");
        row("lame writes UTF-16", "lame", "\xFF\xFEV"_s);
        row("mutagen: a picture, UTF-16 and padding", "mutagen", "\xFF\xFEP"_s);
    }
    void mp3Songs()
    {
        const auto [maker, title] = cells<QString, QString>();
        for (const char *program : {"ffmpeg", "lame"}) {
            if (QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty())
                QSKIP("Debian's packages ffmpeg and lame are not installed");
        }
        if (!hasModule("mutagen"))
            QSKIP("Debian's package python3-mutagen is not installed");

        const QString file = path("song.mp3"_s);
        QVERIFY(makeMp3(maker, file));
        const QByteArray old = read(file);
        const QJsonObject before = factsOf("mp3_facts.py", {file}).value(0);
        MetaSong song;
        QVERIFY(song.importFile(file));
        SongInfo info;
        song.readInfo(info);
        QCOMPARE(info.title, title);
        song.setSongInfo(editedRecord(), edit);
        QVERIFY(song.saveToFile(file));

        const QJsonObject after = factsOf("mp3_facts.py", {file}).value(0);
        const QMap<QString, QString> written = {
            {"TIT2"_s, "Nel blu"_s}, {"TPE1"_s, "Mina"_s}, {"TCOM"_s, "Modugno"_s},
            {"TCON"_s, "Pop"_s},     {"TKEY"_s, "F#-"_s},  {"TLEN"_s, "215000"_s},
            {"TBPM"_s, "131"_s},
        };
        for (auto frame = written.cbegin(); frame != written.cend(); ++frame)
            QCOMPARE(after.value(frame.key()).toString(), frame.value());
        QCOMPARE(after.value("TALB"_s), before.value("TALB"_s));
        QCOMPARE(after.value("pictures"_s), before.value("pictures"_s));
        QCOMPARE(after.value("seconds"_s), before.value("seconds"_s));
        QVERIFY(after.value("seconds"_s).toDouble() > 1.9);
        // The audio is the same, byte by byte.
        const int audioSize =
            static_cast<int>(old.size() - static_cast<int>(Id3v2Tag::bytesWanted(old.left(10))));
        QVERIFY(read(file).endsWith(maker.endsWith(QLatin1Char('0')) ? old : old.right(audioSize)));
    }

private:
    bool makeMp3(const QString &maker, const QString &file) const
    {
        const QString sound = path("tone.wav"_s);
        const QStringList tone = words("-v error -f lavfi -i sine=frequency=440:duration=2");
        if (maker.startsWith("lame"_s)) {
            const QStringList encoding = maker.split(QLatin1Char(' ')).mid(1);
            return outputOf("ffmpeg"_s, tone + QStringList(sound))
                && outputOf("lame"_s,
                            words("--quiet --add-id3v2") + encoding + words("--tt Volare")
                                + QStringList{sound, file});
        }
        QStringList arguments = tone;
        if (maker.startsWith("ffmpeg"_s) && !maker.endsWith(QLatin1Char('0')))
            arguments +=
                words("-metadata title=Volare -id3v2_version") + QStringList(maker.right(1));
        else
            arguments += words("-id3v2_version 0");
        const bool isMade = outputOf("ffmpeg"_s, arguments << file).has_value();
        if (maker != "mutagen"_s)
            return isMade;
        const QString script =
            QFileInfo(QString::fromLatin1(__FILE__)).dir().filePath("mp3_facts.py"_s);
        return isMade && outputOf(QString::fromLatin1(python), {script, "--tag"_s, file});
    }
};

QTEST_GUILESS_MAIN(tst_RealSongs)
#include "tst_realsongs.moc"
