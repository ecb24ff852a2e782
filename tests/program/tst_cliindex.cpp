#include "tests/program/programtest.h"
#include "tests/program/unixrows.h"

using namespace tarvel4;
using namespace Fixtures;

/** `index` update, rebuild, verify and delete. */
class tst_CliIndex : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder("mem/Pop none");
        write("mem/Pop/a.mid", wholeSong());
        write("mem/b.kar", midi());
    }

    void reportsABuild_data();
    void reportsABuild()
    {
        const auto [line, out, status] = cells<QString, QByteArray, int>();
        const Run run = shell("set -o pipefail\n"_s + line);
        QVERIFY2(run.out.startsWith(out), run.out.constData());
        QCOMPARE(run.records().size(), 1);
        VERIFY_STATUS(run, status);
        QCOMPARE(run.err.isEmpty(), status == 0);
        for (const QJsonValue each : run.records()[0].value("errors"_s).toArray())
            QCOMPARE(run.err.count("tarvel4soft-cli: " + each.toString().toUtf8() + '\n'), 1);
        const QString error = run.records()[0].value("error"_s).toString();
        QCOMPARE(run.err.count("tarvel4soft-cli: mem: " + error.toUtf8()), status == 3 ? 1 : 0);
    }

    void printsARunForPeople()
    {
        QCOMPARE(cli("index rebuild mem").out,
                 QByteArray("root: mem\nfound: 2\nchanged: true\nprepared: true\nerrors:\n"));
    }

    void verifiesAMemory_data()
    {
        const Table<QString, QByteArray> row;
        row("nothing wrong", "true", {});
        row("a song that is not in the index", "cp b.kar c.kar", {});
        row("a song that is gone", "rm b.kar", "index.id3");
        row("a song that changed since", "touch -d 2001-01-01 b.kar", "index.id3");
        row("a record cut off", "truncate -s -1 title.id3", "title.id3");
        row("a count that lies", R"(printf '\003' | dd of=fsinfos.id3 conv=notrunc status=none)",
            "fsinfos.id3");
    }
    void verifiesAMemory()
    {
        const auto [damage, file] = cells<QString, QByteArray>();
        prepare();
        shell("cd mem; "_s + damage);
        const bool isTrue = damage == "true"_s;

        const Run json = cli("index verify --json mem");
        VERIFY_STATUS(json, isTrue ? 0 : 1);
        QCOMPARE(json.records().isEmpty(), isTrue);
        for (const QJsonObject &record : json.records()) {
            QVERIFY(record.value("file"_s).isString());
            QVERIFY(!record.value("problem"_s).toString().isEmpty());
        }
        QVERIFY2(json.out.contains(file), json.out.constData());

        const Run text = cli("index verify mem");
        QCOMPARE(text.out.count('\n'), json.out.count('\n'));
        VERIFY_STATUS(text, json.status);
    }

    void saysWhatAnInterruptedRunLeft_data()
    {
        const Table<QString, QString, QByteArray, QByteArray> row; // the signal comes with a call
        row("a rebuild that removed the old index", "rebuild", "unlink",
            R"("changed":false,"prepared":false)", "not prepared");
        row("a rebuild that did not yet", "rebuild", "getdents64",
            R"("changed":false,"prepared":true)", "prepared");
        row("an update that wrote nothing", "update", "getdents64",
            R"("changed":false,"prepared":true)", "prepared");
        row("a rebuild that comes to its end", "rebuild", "rename",
            R"("changed":true,"prepared":true)", "prepared");
    }
    void saysWhatAnInterruptedRunLeft()
    {
        const auto [job, call, keys, memory] = cells<QString, QString, QByteArray, QByteArray>();
        prepare();
        if (!canTrace())
            QSKIP("strace is missing or may not trace here");
        const Run run =
            shell("cp mem/b.kar mem/c.kar; ASAN_OPTIONS=detect_leaks=0 strace "
                  "-f -o /dev/null -e trace=%2 "
                  "-e inject=%2:signal=INT:when=1 \"$cli\" index %1 --json mem"_s.arg(job, call));
        QCOMPARE(run,
                 (Run{130, R"({"root":"mem","found":3,)" + keys + ",\"errors\":[]}\n",
                      "tarvel4soft-cli: mem: interrupted, the memory is " + memory + '\n'}));
    }

    void deletesTheIndex()
    {
        prepare();
        QCOMPARE(cli("index delete mem; s=$?; ls mem; exit $s"), (Run{0, "Pop\nb.kar\n", ""}));
    }

    void refuses_data()
    {
        const Table<QString, QByteArray> row;
        for (const QString &job : words("update rebuild verify delete")) {
            row(qPrintable(job + " of a missing folder"_s), job + " gone"_s,
                "gone: there is no such file");
            row(qPrintable(job + " of an empty path"_s), job + " ''"_s,
                "an empty path names neither a file nor a folder\n");
            row(qPrintable(job + " of a file"_s), job + " mem/b.kar"_s, "mem/b.kar: not a");
        }
        row("verify of a memory that is not prepared", "verify mem",
            "mem: the memory is not prepared");
    }
    void refuses()
    {
        const auto [arguments, message] = cells<QString, QByteArray>();
        const Run run = cli("index "_s + arguments);
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(run.err.startsWith("tarvel4soft-cli: " + message), run.err.constData());
        VERIFY_STATUS(run, 3);
    }

private:
    void prepare() const { VERIFY_STATUS(cli("index rebuild mem"), 0); }
};

// Outside of the class: moc loses its way in these raw strings.
void tst_CliIndex::reportsABuild_data()
{
    const Table<QString, QByteArray, int> row;
    row("a rebuild", R"("$cli" index rebuild --json mem)",
        R"({"root":"mem","found":2,"changed":true,"prepared":true,"errors":[]})"
        "\n",
        0);
    row("an update of a memory without an index is a rebuild",
        R"("$cli" index update --json ./mem/)",
        R"({"root":"./mem/","found":2,"changed":true,"prepared":true,"errors":[]})"
        "\n",
        0);
    row("an update with nothing changed",
        R"("$cli" index update mem >/dev/null; "$cli" --json index update mem)",
        R"({"root":"mem","found":2,"changed":false,"prepared":true,"errors":[]})"
        "\n",
        0);
    row("no songs at all", R"("$cli" index --json update none)",
        R"({"root":"none","found":0,"changed":false,"prepared":false,"errors":[]})"
        "\n",
        0);
    row("a path that is too long is an error of its song",
        R"(d=mem/$(printf %0130d 0); mkdir -p $d/$d; cp mem/b.kar $d/$d
              "$cli" index rebuild --json mem)",
        R"({"root":"mem","found":2,"changed":true,"prepared":true,"errors":[")"
        "File not imported, path too long: /",
        1);
    row("an old index that can't be loaded",
        R"("$cli" index update mem >/dev/null; echo x >>mem/index.id3
              "$cli" index update --json mem)",
        R"({"root":"mem","found":0,"changed":false,"prepared":true,"errors":[],)"
        R"("error":"the index is damaged (index.id3: )",
        3);
    row("a file that can't be written leaves the memory unprepared",
        R"(for i in {1..9}; do cp mem/b.kar mem/$i.mid; done; ulimit -f 1
              "$cli" index rebuild --json mem)",
        QByteArray(
            R"({"root":"mem","found":11,"changed":false,"prepared":false,"errors":[],"error":"it is too large: )"),
        3);
}

QTEST_GUILESS_MAIN(tst_CliIndex)
#include "tst_cliindex.moc"
