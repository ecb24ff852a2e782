#include "tests/program/programtest.h"
#include "tests/program/unixrows.h"

#include <QJsonArray>

using namespace tarvel4;
using namespace Fixtures;

/** `edit`: the user's own correction of a song. */
class tst_CliEdit : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder();
        write("a.mid", wholeSong());
    }

    void changesTheNamedFields_data()
    {
        const Table<QString, QString, QJsonValue> row;
        row("the title", "--title=Nuova", "title", "Nuova"_s);
        row("the title, to nothing", "--title=", "title", ""_s);
        row("a text is trimmed as in the window", "--title=  Nuova  ", "title", "Nuova"_s);
        row("the title from the file's name", "--title-from-name", "title", "a"_s);
        row("the artist", "--artist=Altri", "artist", "Altri"_s);
        row("the genre", "--genre=DANCE", "genre", "DANCE"_s);
        row("the author", "--author=Rossi", "author", "Rossi"_s);
        row("the length", "--length=61", "length", 61);
        row("the length, to nothing", "--length=0", "length", 0);
        row("the tempo", "--bpm=99", "bpm", 99);
        row("the key", "--key=Bb", "key", "Bb"_s);
        row("the key, with a blank", "--key=C# -", "key", "C#-"_s);
        row("the key by another name", "--key=D#", "key", "Eb"_s);
        row("the key by another name that stands for E", "--key=G#", "key", "E"_s);
        row("the key, to nothing", "--key=", "key", ""_s);
        // required: texts are written as UTF-8 and read back as Latin-1
        row("a text outside ASCII", "--title=Perch\u00E9", "title",
            QStringLiteral("Perch\u00C3\u00A9"));
    }
    void changesTheNamedFields()
    {
        const auto [option, field, value] = cells<QString, QString, QJsonValue>();
        QJsonObject expected = cli("info --json a.mid").records().value(0);
        expected.insert(field, value);

        const Run run = cliWith({"edit"_s, "--json"_s, option, "a.mid"_s});
        QCOMPARE(run.err, QByteArray());
        VERIFY_STATUS(run, 0);
        QCOMPARE(run.records().value(0), expected);
        QCOMPARE(cli("info --json a.mid").out, run.out);
    }

    void addsMarkers_data()
    {
        const Table<QString, QByteArray> row;
        row("one, ahead of those present", "--add-marker 3:Ponte", R"({"bar":3,"text":"Ponte"})");
        row("several, in the order given", "--add-marker 7:Uno --add-marker=8:Due",
            R"({"bar":7,"text":"Uno"},{"bar":8,"text":"Due"})");
        row("with a colon in its text, at the last bar there is", "--add-marker 65535:a:b",
            R"({"bar":65535,"text":"a:b"})");
    }
    void addsMarkers()
    {
        const auto [options, added] = cells<QString, QByteArray>();
        const Run run = cli("edit --json %1 a.mid"_s.arg(options));
        VERIFY_STATUS(run, 0);
        const QByteArray present = R"({"bar":1,"text":"Intro"},{"bar":5,"text":"Strofa"})";
        QVERIFY2(run.out.contains("\"markers\":[" + added + ',' + present + ']'),
                 run.out.constData());
    }

    void editsEverySample_data()
    {
        const Table<QString> row;
        for (const QString &song : sampleSongs())
            row(qPrintable(QFileInfo(song).fileName()), song);
    }
    void editsEverySample()
    {
        const auto [sample] = cells<QString>();
        QVERIFY(QFile::copy(sample, path(QFileInfo(sample).fileName())));
        const Run run =
            cli("edit --json --title='T x' --artist='A x' --genre='G x' --author='U x' --length=77 "
                "--bpm=88 --key=F#- "_s
                + QFileInfo(sample).fileName());
        QCOMPARE(run.err, QByteArray());
        VERIFY_STATUS(run, 0);
        const QByteArray edited = R"("title":"T x","artist":"A x","genre":"G x","author":"U x",)"
                                  R"("length":77,"bpm":88,"key":"F#-")";
        QVERIFY2(run.out.contains(edited), run.out.constData());
    }

    void refusesAndLeavesTheFileAlone_data()
    {
        const Table<QString, int> row;
        row("nothing to change", "a.mid", 2);
        row("a key that nobody knows", "--key H a.mid", 2);
        row("a key in small letters", "--key bb a.mid", 2);
        row("a length that is no number", "--length 3:05 a.mid", 2);
        row("a length below zero", "--length=-1 a.mid", 2);
        row("a length beyond all bounds", "--length 99999999999 a.mid", 2);
        row("a tempo that is no number", "--bpm fast a.mid", 2);
        row("an empty tempo", "--bpm= a.mid", 2);
        row("a marker without a bar", "--add-marker Intro a.mid", 2);
        row("a marker without a text", "--add-marker 5: a.mid", 2);
        row("a marker at bar 0", "--add-marker 0:Intro a.mid", 2);
        row("a marker beyond the last bar", "--add-marker 65536:Intro a.mid", 2);
        row("two sources of the title", "--title x --title-from-name a.mid", 2);
        row("no song", "--title x", 2);
        row("a song missing among others", "--title x a.mid gone.mid", 3);
        row("a folder", "--title x a.mid .", 3);
    }
    void refusesAndLeavesTheFileAlone()
    {
        const auto [line, status] = cells<QString, int>();
        const Run run = cli("edit "_s + line);
        QCOMPARE(run.out, QByteArray());
        QVERIFY(run.err.startsWith("tarvel4soft-cli: "));
        QVERIFY(!run.err.contains("--recursive")); // which edit does not have
        VERIFY_STATUS(run, status);
        QCOMPARE(read("a.mid"), wholeSong());
    }

    void saysWhatCouldNotBeEdited_data();
    void saysWhatCouldNotBeEdited()
    {
        const auto [line, out, err] = cells<QString, QByteArray, QByteArray>();
        const Run run = shell("set -o pipefail\n"_s + line);
        QCOMPARE(run.out, out);
        QCOMPARE(run.saidOfSongs(), "tarvel4soft-cli: " + err + '\n');
    }
};

// Outside of the class: moc loses its way in these raw strings.
void tst_CliEdit::saysWhatCouldNotBeEdited_data()
{
    const Table<QString, QByteArray, QByteArray> row;
    row("a file that is no song, and the next one is edited",
        R"(echo x >x.mid; "$cli" edit --json --title Nuova x.mid a.mid | cut -c-61)",
        R"({"path":"x.mid","error":"it is no .mid, .kar, .mp3, .mf3, .mf)"
        "\n"
        R"({"path":"a.mid","name":"a.mid","format":"MIDI","title":"Nuova)"
        "\n",
        "x.mid: it is no .mid, .kar, .mp3, .mf3, .mf4 or .mf5 song");
    row("an MP3 takes no marker", R"(printf 'ID3\3\0\0\0\0\0\0\377\373' >x.mp3
              "$cli" edit --json --title x --add-marker 1:x x.mp3
              printf 'ID3\3\0\0\0\0\0\0\377\373' | cmp - x.mp3)",
        R"({"path":"x.mp3","error":"this format can't hold markers",)"
        R"("code":"no-markers","field":"markers"})"
        "\n",
        "x.mp3: this format can't hold markers");
    row("a song that can't grow, and stays as it was",
        R"x(truncate -s 1000 a.mid; cp a.mid old; ulimit -f 1
              "$cli" edit --json --title "$(printf %0120d 0)" --add-marker 1:x a.mid
              cmp a.mid old)x",
        QByteArray(R"({"path":"a.mid","error":"it is too large: more than the disk or card takes",)"
                   R"("code":"too-large"})"
                   "\n"),
        "a.mid: it is too large: more than the disk or card takes");
}

QTEST_GUILESS_MAIN(tst_CliEdit)
#include "tst_cliedit.moc"
