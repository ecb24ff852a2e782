#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"

#include <QDir>
#include <QJsonArray>
#include <QtTest>

using namespace tarvel4;

/** `edit`: the user's own correction of a song. */
class tst_CliEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void changesTheNamedFields_data();
    void changesTheNamedFields();
    void addsMarkers_data();
    void addsMarkers();
    void editsEverySample_data();
    void editsEverySample();
    void leavesEverythingElseOfASong();
    void leavesEverythingElseOfAnMp3();
    void refusesAndLeavesTheFileAlone_data();
    void refusesAndLeavesTheFileAlone();
    void saysWhatCouldNotBeEdited_data();
    void saysWhatCouldNotBeEdited();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_CliEdit::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
    QVERIFY(Fixtures::write(path(QStringLiteral("a.mid")), Fixtures::wholeSong()));
}

void tst_CliEdit::changesTheNamedFields_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QJsonValue>("value");
    const auto row = [](const char *name, const QStringList &options, const char *field,
                        const QJsonValue &value) {
        QTest::newRow(name) << options << QString::fromLatin1(field) << value;
    };
    const auto text = [](const char *value) { return QString::fromUtf8(value); };
    row("the title", {text("--title=Nuova")}, "title", text("Nuova"));
    row("the title, to nothing", {text("--title=")}, "title", text(""));
    row("a text is trimmed as in the window", {text("--title=  Nuova  ")}, "title", text("Nuova"));
    row("the title from the file's name", {text("--title-from-name")}, "title", text("a"));
    row("the artist", {text("--artist=Altri")}, "artist", text("Altri"));
    row("the genre", {text("--genre=DANCE")}, "genre", text("DANCE"));
    row("the author", {text("--author=Rossi")}, "author", text("Rossi"));
    row("the length", {text("--length=61")}, "length", 61);
    row("the length, to nothing", {text("--length=0")}, "length", 0);
    row("the tempo", {text("--bpm=99")}, "bpm", 99);
    row("the key", {text("--key=Bb")}, "key", text("Bb"));
    row("the key, with a blank", {text("--key=C# -")}, "key", text("C#-"));
    row("the key by another name", {text("--key=D#")}, "key", text("Eb"));
    row("the key by another name that stands for E", {text("--key=G#")}, "key", text("E"));
    row("the key, to nothing", {text("--key=")}, "key", text(""));
    // required: texts are written as UTF-8 and read back as Latin-1
    row("a text outside ASCII", {text("--title=Perch\u00E9")}, "title", text("Perch\u00C3\u00A9"));
}

void tst_CliEdit::changesTheNamedFields()
{
    QFETCH(QStringList, options);
    QFETCH(QString, field);
    QFETCH(QJsonValue, value);
    const Program program(m_folder->path());
    const QJsonObject before =
        program.run({QStringLiteral("info"), QStringLiteral("--json"), QStringLiteral("a.mid")})
            .records()
            .value(0);
    QJsonObject expected = before;
    expected.insert(field, value);

    const Run run = program.run(QStringList{QStringLiteral("edit"), QStringLiteral("--json")}
                                + options + QStringList{QStringLiteral("a.mid")});
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    QCOMPARE(run.records().value(0), expected);
    QCOMPARE(
        program.run({QStringLiteral("info"), QStringLiteral("--json"), QStringLiteral("a.mid")})
            .out,
        run.out);
}

void tst_CliEdit::addsMarkers_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QByteArray>("markers");
    QTest::newRow("one, ahead of those present")
        << "--add-marker 3:Ponte"
        << QByteArray(R"([{"bar":3,"text":"Ponte"},{"bar":1,"text":"Intro"},)"
                      R"({"bar":5,"text":"Strofa"}])");
    QTest::newRow("several, in the order given")
        << "--add-marker 7:Uno --add-marker=8:Due"
        << QByteArray(R"([{"bar":7,"text":"Uno"},{"bar":8,"text":"Due"},)"
                      R"({"bar":1,"text":"Intro"},{"bar":5,"text":"Strofa"}])");
    QTest::newRow("with a colon in its text, at the last bar there is")
        << "--add-marker 65535:a:b"
        << QByteArray(R"([{"bar":65535,"text":"a:b"},{"bar":1,"text":"Intro"},)"
                      R"({"bar":5,"text":"Strofa"}])");
}

void tst_CliEdit::addsMarkers()
{
    QFETCH(QString, options);
    QFETCH(QByteArray, markers);
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("\"$cli\" edit --json %1 a.mid").arg(options));
    QCOMPARE(run.status, 0);
    QVERIFY2(run.out.contains("\"markers\":" + markers), run.out.constData());
}

void tst_CliEdit::editsEverySample_data()
{
    QTest::addColumn<QString>("sample");
    const QDir samples(QStringLiteral(TARVEL4_SAMPLES));
    const QStringList names = samples.entryList({QStringLiteral("*.mid"), QStringLiteral("*.kar"),
                                                 QStringLiteral("*.mf?"), QStringLiteral("*.mp3")},
                                                QDir::Files);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << samples.filePath(name);
}

void tst_CliEdit::editsEverySample()
{
    QFETCH(QString, sample);
    const QString copy = path(QFileInfo(sample).fileName());
    QVERIFY(QFile::copy(sample, copy));
    const Run run =
        Program(m_folder->path())
            .run({QStringLiteral("edit"), QStringLiteral("--json"), QStringLiteral("--title=T x"),
                  QStringLiteral("--artist=A x"), QStringLiteral("--genre=G x"),
                  QStringLiteral("--author=U x"), QStringLiteral("--length=77"),
                  QStringLiteral("--bpm=88"), QStringLiteral("--key=F#-"), copy});
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
    const QByteArray edited = R"("title":"T x","artist":"A x","genre":"G x","author":"U x",)"
                              R"("length":77,"bpm":88,"key":"F#-")";
    QVERIFY2(run.out.contains(edited), run.out.constData());
}

void tst_CliEdit::leavesEverythingElseOfASong()
{
    const Program program(m_folder->path());
    if (program.shell(QStringLiteral("/usr/bin/python3 -c 'import mido'")).status != 0)
        QSKIP("python3-mido is not installed");
    const Run packaged = program.shell(QStringLiteral(
        "cp $(dpkg -L openttd-openmsx | grep '\\.mid$' | sed -n '1~3p') . && mkdir before && "
        "cp *.mid before"));
    if (packaged.status != 0)
        QSKIP("the package openttd-openmsx is not installed");

    const Run run = program.shell(QStringLiteral(
        "\"$cli\" edit --title Nuova --key Bb --length 61 --add-marker 2:Ponte *.mid"));
    QVERIFY2(run.status == 0, run.err.constData());
    const Run compared = program.shell(QStringLiteral("/usr/bin/python3 " TARVEL4_TEST_PROGRAM
                                                      "/compare_midi.py before/*.mid -- *.mid"));
    QCOMPARE(compared.out, QByteArray("12 songs hold the same music\n"));
    QCOMPARE(compared.status, 0);
}

void tst_CliEdit::leavesEverythingElseOfAnMp3()
{
    const Program program(m_folder->path());
    if (program.shell(QStringLiteral("/usr/bin/python3 -c 'import mutagen' && type ffmpeg")).status
        != 0)
        QSKIP("ffmpeg and python3-mutagen are not installed");
    const Run run = program.shell(QLatin1String(
        R"(ffmpeg -v error -f lavfi -i sine=440:duration=2 -id3v2_version 3 -metadata title=Tono \
             -metadata album=Disco before.mp3
           cp before.mp3 after.mp3
           "$cli" edit --title "Nuovo titolo" --artist Altri --length 61 after.mp3 >/dev/null || exit
           /usr/bin/python3 -c 'import mutagen
tags = mutagen.File("after.mp3").tags
print(tags["TIT2"], tags["TPE1"], tags["TLEN"], tags["TALB"], sep="|")'
           for f in before after; do ffmpeg -v error -i $f.mp3 -map 0:a -c copy -f data - | md5sum; done |
             uniq | wc -l)"));
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.out, QByteArray("Nuovo titolo|Altri|61000|Disco\n1\n"));
}

void tst_CliEdit::refusesAndLeavesTheFileAlone_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("status");
    QTest::newRow("nothing to change") << "a.mid" << 2;
    QTest::newRow("a key that nobody knows") << "--key H a.mid" << 2;
    QTest::newRow("a key in small letters") << "--key bb a.mid" << 2;
    QTest::newRow("a length that is no number") << "--length 3:05 a.mid" << 2;
    QTest::newRow("a length below zero") << "--length=-1 a.mid" << 2;
    QTest::newRow("a length beyond all bounds") << "--length 99999999999 a.mid" << 2;
    QTest::newRow("a tempo that is no number") << "--bpm fast a.mid" << 2;
    QTest::newRow("an empty tempo") << "--bpm= a.mid" << 2;
    QTest::newRow("a marker without a bar") << "--add-marker Intro a.mid" << 2;
    QTest::newRow("a marker without a text") << "--add-marker 5: a.mid" << 2;
    QTest::newRow("a marker at bar 0") << "--add-marker 0:Intro a.mid" << 2;
    QTest::newRow("a marker beyond the last bar") << "--add-marker 65536:Intro a.mid" << 2;
    QTest::newRow("two sources of the title") << "--title x --title-from-name a.mid" << 2;
    QTest::newRow("no song") << "--title x" << 2;
    QTest::newRow("a song missing among others") << "--title x a.mid gone.mid" << 3;
    QTest::newRow("a folder") << "--title x a.mid ." << 3;
}

void tst_CliEdit::refusesAndLeavesTheFileAlone()
{
    QFETCH(QString, line);
    QFETCH(int, status);
    const Run run = Program(m_folder->path()).shell(QLatin1String("\"$cli\" edit ") + line);
    QCOMPARE(run.out, QByteArray());
    QVERIFY(run.err.startsWith("tarvel4soft-cli: "));
    QCOMPARE(run.status, status);
    QCOMPARE(Fixtures::read(path(QStringLiteral("a.mid"))), Fixtures::wholeSong());
}

void tst_CliEdit::saysWhatCouldNotBeEdited_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QByteArray>("err");
    QTest::newRow("a file that is no song, and the next one is edited")
        << R"(echo x >x.mid; "$cli" edit --json --title Nuova x.mid a.mid | cut -c-61)"
        << QByteArray(R"({"path":"x.mid","error":"it is no .mid, .kar, .mp3, .mf3, .mf)"
                      "\n"
                      R"({"path":"a.mid","name":"a.mid","format":"MIDI","title":"Nuova)"
                      "\n")
        << QByteArray("x.mid: it is no .mid, .kar, .mp3, .mf3, .mf4 or .mf5 song");
    QTest::newRow("an MP3 takes no marker")
        << R"(printf 'ID3\3\0\0\0\0\0\0\377\373' >x.mp3
              "$cli" edit --json --title x --add-marker 1:x x.mp3
              printf 'ID3\3\0\0\0\0\0\0\377\373' | cmp - x.mp3)"
        << QByteArray(R"({"path":"x.mp3","error":"this format can't hold markers",)"
                      R"("code":"no-markers","field":"markers"})"
                      "\n")
        << QByteArray("x.mp3: this format can't hold markers");
    QTest::newRow("a song that can't grow, and stays as it was")
        << R"x(truncate -s 1000 a.mid; cp a.mid old; ulimit -f 1
              "$cli" edit --json --title "$(printf %0120d 0)" --add-marker 1:x a.mid
              cmp a.mid old)x"
        << QByteArray(
               R"({"path":"a.mid","error":"it is too large: more than the disk or card takes",)"
               R"("code":"too-large"})"
               "\n")
        << QByteArray("a.mid: it is too large: more than the disk or card takes");
}

void tst_CliEdit::saysWhatCouldNotBeEdited()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, out);
    QFETCH(QByteArray, err);
    const Run run = Program(m_folder->path()).shell(QLatin1String("set -o pipefail\n") + line);
    QCOMPARE(run.out, out);
    QCOMPARE(run.err, "tarvel4soft-cli: " + err + '\n');
}

QTEST_GUILESS_MAIN(tst_CliEdit)
#include "tst_cliedit.moc"
