#include "tests/program/programtest.h"
#include "tests/program/unixrows.h"

using namespace tarvel4;
using namespace Fixtures;

/** `info`: the record of each song. */
class tst_CliInfo : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder("sub s");
    }

    void cleanup()
    {
        // Qt itself can't remove a name that is not UTF-8.
        shell("rm -rf ./*");
    }

    void printsJson_data();
    void printsJson()
    {
        const auto [argument, bytes, status, line] = cells<QString, QByteArray, int, QByteArray>();
        write(argument, bytes);

        const Run run = cliWith({"info"_s, "--json"_s, argument});

        QCOMPARE(run.out, line + '\n');
        QCOMPARE(run.err.count('\n'), status); // the cause of a failure
        VERIFY_STATUS(run, status);
        QCOMPARE(run.records().size(), 1);
    }

    void printsTextForPeople()
    {
        write("a.mid", wholeSong());
        write("b.mid", "nothing");

        const Run run = cli("info a.mid b.mid");

        QCOMPARE(run.out,
                 QByteArray("path: a.mid\n"
                            "name: a.mid\n"
                            "format: MIDI\n"
                            "title: Bella Ciao\n"
                            "artist: Anonimo\n"
                            "genre: FOLK\n"
                            "author: Tradizionale\n"
                            "length: 185\n"
                            "bpm: 120\n"
                            "key: D-\n"
                            "publisher: true\n"
                            "markers: 1 Intro, 5 Strofa\n"
                            "\n"
                            "path: b.mid\n"
                            "error: Unknown/corrupted file\n"
                            "code: not-a-song\n"));
        VERIFY_STATUS(run, 1);
    }

    void printsChosenData_data()
    {
        const Table<int, QByteArray> row; // status, what is printed
        row("--csv a.mid", 0,
            "path,name,format,title,artist,genre,author,length,bpm,key,publisher,markers,"
            "mfxLongName,mfxFlags,error,code\n"
            "a.mid,a.mid,MIDI,Bella Ciao,Anonimo,FOLK,Tradizionale,185,120,D-,true,"
            "\"1 Intro, 5 Strofa\",,,,\n");
        row("--csv --fields length,title,path a.mid b.mid c.mid", 1,
            "length,title,path,error,code\n185,Bella Ciao,a.mid,,\n"
            ",,b.mid,Unknown/corrupted file,not-a-song\n"
            "185,\"a, \"\"b\"\"\",c.mid,,\n");
        row("--csv --fields mfxLongName,format,mfxLongName " TARVEL4_SAMPLES "/FRAMARTI.mf3", 0,
            "mfxLongName,format,mfxLongName,error,code\nFRA MARTINO,MF3,FRA MARTINO,,\n");
        row("--csv --recursive sub --fields title", 0, "title,error,code\n");
        row("--fields title a.mid", 0, "title: Bella Ciao\n");
        row("--fields length,title,bpm,publisher,markers a.mid", 0,
            "title: Bella Ciao\nlength: 185\nbpm: 120\npublisher: true\n"
            "markers: 1 Intro, 5 Strofa\n");
        row("--fields title b.mid", 1, "error: Unknown/corrupted file\ncode: not-a-song\n");
        row("--csv --json a.mid", 2, "");
        row("--fields title --json a.mid", 2, "");
        row("--fields titolo a.mid", 2, "");
        row("--fields= a.mid", 2, "");
        row("--csv gone.mid", 3, "");
    }
    void printsChosenData()
    {
        const auto [status, out] = cells<int, QByteArray>();
        write("a.mid", wholeSong());
        write("b.mid", "nothing");
        write("c.mid", wholeSong());
        VERIFY_STATUS(cli(R"x(edit --title 'a, "b"' c.mid)x"), 0);
        const Run run = cli("info "_s + QString::fromUtf8(QTest::currentDataTag()));
        QCOMPARE(run.out, out);
        VERIFY_STATUS(run, status);
    }

    void readsASong_data()
    {
        const Table<QString, QString> row;
        for (const QString &song : sampleSongs()) {
            const QString suffix = QFileInfo(song).suffix().toUpper();
            const bool isMidi = suffix == "MID"_s || suffix == "KAR"_s;
            row(qPrintable("sample "_s + QFileInfo(song).fileName()), song,
                isMidi ? "MIDI"_s : suffix);
        }
    }
    void readsASong()
    {
        const auto [sample, format] = cells<QString, QString>();
        const Run run = cliWith({"info"_s, "--json"_s, sample});
        VERIFY_STATUS(run, 0);
        const QJsonObject record = run.records().value(0);
        QCOMPARE(record.value("format"_s).toString(), format);
        const bool isMfx = format.startsWith("MF"_s);
        QCOMPARE(record.contains("mfxLongName"_s), isMfx);
        QCOMPARE(record.contains("mfxFlags"_s), isMfx);
        QVERIFY(!record.value("title"_s).toString().isEmpty());
    }

    void refusesPaths_data()
    {
        const Table<QString, int, QByteArray> row;
        row("a missing path ends it before any song is read", R"("$cli" info a.mid missing.mid)", 3,
            "missing.mid");
        row("a folder without --recursive", R"(mkdir d.mid; "$cli" info a.mid d.mid)", 3, "d.mid");
        row("a link that leads nowhere", R"(ln -s gone l.mid; "$cli" info l.mid)", 3, "l.mid");
        row("a name that is not UTF-8 is refused, and no other file is read",
            R"x(cp a.mid "$(printf 'bad\357\277\275.mid')"; cp a.mid "$(printf 'bad\377.mid')"
               "$cli" info "$(printf 'bad\377.mid')")x",
            3, "bad");
        row("no path at all is wrong usage", R"("$cli" info)", 2, "PATH");
    }
    void refusesPaths()
    {
        const auto [line, status, message] = cells<QString, int, QByteArray>();
        write("a.mid", wholeSong());
        const Run run = shell(line);
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(run.err.contains(message) && run.err.startsWith("tarvel4soft-cli: "),
                 run.err.constData());
        VERIFY_STATUS(run, status);
    }

    void leavesWhatAPowerCutLeftAside()
    {
        write("a.mid.tarvel4.bak", wholeSong());
        Run run = shell("\"$cli\" info --recursive .; ls a*; \"$cli\" info a.mid");
        QCOMPARE(run.out, QByteArray("a.mid.tarvel4.bak\n"));
        QVERIFY(run.err.contains("a.mid.tarvel4.bak"));
        VERIFY_STATUS(run, 3);

        write("a.mid", QByteArray(100, '\0'));
        run = cli("info a.mid; ls a*");
        QCOMPARE(run.out.right(24), QByteArray("a.mid\na.mid.tarvel4.bak\n"));
    }

    void walksAFolderInNameOrder()
    {
        const Run prepared =
            shell("mkdir -p s/b s/c.mid s/.hidden && cd s && touch b/2.MID b/1.Kar c.mid/x.mp3 "
                  "a.mf3 Z.mF5 "
                  "d.txt .e.mid .hidden/f.mid b/g.mid.bak && mkfifo h.mid && ln -s ../s b/loop");
        VERIFY_STATUS(prepared, 0);

        for (const char *folder : {"s", "./s", "s/"}) {
            const QString given = QLatin1String(folder);
            const Run run = cli("info --json --recursive "_s + given);
            const QString prefix = given.startsWith(QLatin1Char('.')) ? "./s/"_s : "s/"_s;
            QStringList expected = words("Z.mF5 a.mf3 b/1.Kar b/2.MID c.mid/x.mp3");
            expected.replaceInStrings(QRegularExpression("^"_s), prefix);
            QCOMPARE(run.texts("path"), expected);
            VERIFY_STATUS(run, 1);
        }
    }

    void saysWhatItCannotReachInAFolder()
    {
        write("s/a.mid", wholeSong());
        const Run run = shell("cp s/a.mid \"$(printf 's/bad\\377.mid')\"; \"$cli\" "
                              "info --json --recursive s");
        QCOMPARE(run.out, R"({"path":"s/a.mid",)" + wholeRecord("a.mid") + "}\n");
        QVERIFY2(run.err.contains("s/bad"), run.err.constData());
        VERIFY_STATUS(run, 1);
    }

    void controlCharactersNeverReachTheTerminal_data()
    {
        const Table<QByteArray, QByteArray> row;
        row("escape", "a\033[2Jb", "a\\u001b[2Jb");
        row("line feed", "a\nb", "a\\u000ab");
        row("delete", "a\177b", "a\\u007fb");
        row("the one-byte form of escape [", "a\2332Jb", "a\\u009b2Jb");
    }
    void controlCharactersNeverReachTheTerminal()
    {
        const auto [title, shown] = cells<QByteArray, QByteArray>();
        write("a.mid", midi(meta(0x03, title)));
        QVERIFY(cli("info a.mid").out.contains("\ntitle: " + shown + '\n'));
        const Run json = cli("info --json a.mid");
        QVERIFY(json.out.contains("\"title\":\"" + shown + '"'));
        QCOMPARE(json.records().value(0).value("title"_s).toString(), QString::fromLatin1(title));
    }

    void readsMp3sOfOtherPrograms_data()
    {
        const Table<QString, QStringList> row;
        const QString ffmpeg = "ffmpeg -v error -f lavfi -i sine=440:duration=1 %1"_s;
        const QString lame = ffmpeg.arg("-f wav - | lame --quiet %1 - a.mp3"_s);
        const QStringList texts = words("Tono Nessuno Prova");
        const QString tags =
            "-id3v2_version %1 -metadata title=Tono -metadata artist=Nessuno -metadata genre=Prova "
            "-metadata encoder= a.mp3"_s;
        row("ffmpeg, ID3v2.3", ffmpeg.arg(tags.arg(3)), texts);
        row("ffmpeg, ID3v2.4", ffmpeg.arg(tags.arg(4)), texts);
        row("lame, ID3v2.3",
            lame.arg("--add-id3v2 --id3v2-latin1 --tt Tono --ta Nessuno --tg Prova"_s), texts);
        // required: whatever encoding a tag declares, its texts are read as Latin-1 up to a zero
        // byte
        row("lame, ID3v2.3 in UTF-16 is taken as Latin-1",
            lame.arg("--add-id3v2 --tt Tono --ta Nessuno --tg Prova"_s),
            "\u00FF\u00FET \u00FF\u00FEN \u00FF\u00FEP");
        row("lame, without a tag", lame.arg(QString()),
            QStringList{QString(), QString(), QString()});
    }
    void readsMp3sOfOtherPrograms()
    {
        const auto [line, texts] = cells<QString, QStringList>();
        if (!hasTool("ffmpeg"_s) || !hasTool("lame"_s))
            QSKIP("ffmpeg and lame are not installed");
        const Run made = shell(line);
        QVERIFY2(made.status == 0, made.err.constData());
        const Run run = cli("info --json a.mp3");
        VERIFY_STATUS(run, 0);
        const QJsonObject record = run.records().value(0);
        QCOMPARE(record.value("format"_s).toString(), "MP3"_s);
        QStringList read;
        for (const char *key : {"title", "artist", "genre"})
            read += record.value(QLatin1String(key)).toString();
        QCOMPARE(read, texts);
    }
};

// Outside of the class: moc loses its way in these raw strings.
void tst_CliInfo::printsJson_data()
{
    const Table<QString, QByteArray, int, QByteArray> row;

    const QByteArray unknown = R"("error":"Unknown/corrupted file","code":"not-a-song"})";
    const QByteArray damaged = R"("error":"Unknown/corrupted file","code":"damaged-song"})";
    row("every field, in the order of the record", "a.mid", wholeSong(), 0,
        R"({"path":"a.mid",)" + wholeRecord("a.mid") + '}');
    row("a song without data has empty texts and zeros, never null", "b.kar", midi(), 0,
        R"({"path":"b.kar","name":"b.kar","format":"MIDI","title":"","artist":"",)"
        R"("genre":"","author":"","length":0,"bpm":0,"key":"","publisher":false,)"
        R"("markers":[]})");
    row("the path is the one given, the name is without folder", "./sub/../sub//a.mid", wholeSong(),
        0, R"({"path":"./sub/../sub//a.mid",)" + wholeRecord("a.mid") + '}');
    row("a name that begins with a colon is a file's", ":a.mid", wholeSong(), 0,
        R"({"path":":a.mid",)" + wholeRecord(":a.mid") + '}');
    row("a name outside ASCII is UTF-8", "perch\u00E9 \u4E2D.mid", wholeSong(), 0,
        R"({"path":"perché 中.mid",)" + wholeRecord("perché 中.mid") + '}');
    row("a name with quotes, backslash and line feed is escaped", "a\"\\\n.mid", "no song", 1,
        R"({"path":"a\"\\\u000a.mid",)" + unknown);
    row("a file that is no song", "x.mid", "no song at all", 1, R"({"path":"x.mid",)" + unknown);
    row("an empty file", "x.mid", {}, 1, R"({"path":"x.mid",)" + unknown);
    row("a song cut off in its header", "x.mid", wholeSong().left(11), 1,
        R"({"path":"x.mid",)" + damaged);
    row("an MFx song cut off in its header", "x.mf4", "_MF4 and little more", 1,
        R"({"path":"x.mf4",)" + damaged);
}

QTEST_GUILESS_MAIN(tst_CliInfo)
#include "tst_cliinfo.moc"
