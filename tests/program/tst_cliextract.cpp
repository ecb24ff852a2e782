#include "tests/program/programtest.h"
#include "tests/program/unixrows.h"

using namespace tarvel4;
using namespace Fixtures;

/** `extract`: the MIDI stream of an MFx song. */
class tst_CliExtract : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder();
        write("a.mid", wholeSong());
        for (const QString &song : sampleSongs().filter(QRegularExpression("mf[345]$"_s)))
            QVERIFY(QFile::copy(song, path("s.1."_s + QFileInfo(song).suffix())));
    }

    void writesAMidiFile_data()
    {
        const Table<QString, QString> row;
        row("of an MF3 song, beside it", "s.1.mf3", "s.1.mid");
        row("of an MF4 song, beside it", "./s.1.mf4", "s.1.mid");
        row("of an MF5 song, beside it", "$PWD/s.1.mf5", "s.1.mid");
        row("over the rest of a run that was killed", "s.1.mf3; ls -A | grep part; true",
            "s.1.mid");
        row("where it is told to", "--output out.mid s.1.mf4", "out.mid");
    }
    void writesAMidiFile()
    {
        const auto [line, target] = cells<QString, QString>();
        const Run run =
            shell(QLatin1String("echo x >.s.1.mid.tarvel4.part; \"$cli\" extract ") + line);
        QCOMPARE(run, (Run{0, "", ""}));
        QVERIFY(read(target).startsWith("MThd"));
        const Run loaded = shell(
            QStringLiteral("/usr/bin/python3 " TARVEL4_TEST_PROGRAM "/describe_midi.py ") + target);
        QVERIFY2(loaded.status == 0, loaded.err.constData());
    }

    void neverOverwrites_data()
    {
        const Table<QString> row;
        row("a song beside it", R"(cp a.mid s.1.mid; "$cli" extract s.1.mf3)");
        row("a file named", R"("$cli" extract --output a.mid s.1.mf3)");
        row("the song itself", R"("$cli" extract --output s.1.mf3 s.1.mf3)");
        row("a link that leads nowhere", R"(ln -s gone.mid s.1.mid; "$cli" extract s.1.mf3)");
        row("a FIFO", R"(mkfifo s.1.mid; "$cli" extract s.1.mf3)");
        row("a folder", R"(mkdir s.1.mid; "$cli" extract s.1.mf3)");
    }
    void neverOverwrites()
    {
        const auto [line] = cells<QString>();
        const QByteArray song = read("s.1.mf3");
        const Run run = shell(line);
        QVERIFY(run.err.contains(line.contains("a.mid"_s) ? ".mid" : "s.1.m"));
        VERIFY_STATUS(run, 3);
        QCOMPARE(read("a.mid"), wholeSong());
        QCOMPARE(read("s.1.mf3"), song);
        QVERIFY(!QFile::exists(path("gone.mid")));
    }

    void refuses_data()
    {
        const Table<QString, int, QByteArray> row;
        const QByteArray noMfx = "a.mid: it is no .mf3, .mf4 or .mf5 song";
        row("a song that is MIDI already", R"("$cli" extract --output o.mid a.mid)", 1, noMfx);
        row("a song that is MIDI already, beside itself", R"("$cli" extract a.mid)", 1, noMfx);
        row("a name of the index",
            R"("$cli" index rebuild . >/dev/null; "$cli" extract --output TEMP1.id3 s.1.mf3)", 3,
            "TEMP1.id3: it belongs to the index");
        row("a missing song", R"("$cli" extract --output o.mid gone.mf3)", 3, "gone.mf3: ");
        row("a target in a folder that is missing", R"("$cli" extract --output gone/o.mid s.1.mf3)",
            3, "gone/o.mid: there is no such file");
        row("a disk that fills up leaves no half file",
            R"(ulimit -f 0; "$cli" extract --output o.mid s.1.mf3)", 3, "o.mid: it is too large");
    }
    void refuses()
    {
        const auto [line, status, message] = cells<QString, int, QByteArray>();
        const Run run = shell(line);
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(run.err.startsWith("tarvel4soft-cli: ") && run.err.contains(message),
                 run.err.constData());
        VERIFY_STATUS(run, status);
        QVERIFY(!QFile::exists(path("o.mid")));
    }
};

QTEST_GUILESS_MAIN(tst_CliExtract)
#include "tst_cliextract.moc"
