#include "tests/program/programtest.h"
#include "tests/program/unixrows.h"

using namespace tarvel4;
using namespace Fixtures;

/** `list`: the songs that the player will show. */
class tst_CliList : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder("mem/Pop none");
        const auto song = [](const char *title, const char *artist) {
            return midi(meta(0x03, title) + songInfo(2, artist));
        };
        write("mem/1.mid", song("Zeta", "Abba"));
        write("mem/2.mid", song("Perch\xE9", "ABBA"));
        write("mem/Pop/3.mid", song("Alfa; Uno", "Zucchero"));
        QVERIFY(writeCatalogue(path("c.db")));
        VERIFY_STATUS(cli("index rebuild mem"), 0);
    }

    void listsTheSongs_data()
    {
        const Table<QString, QByteArray> row;
        const QByteArray header = "TITLE;ARTIST;FILE;\n";
        const QByteArray alfa = "ALFA; UNO;ZUCCHERO;/Pop/3.mid;\n";
        const QByteArray perche = "PERCHÉ;ABBA;/2.mid;\n";
        const QByteArray zeta = "ZETA;ABBA;/1.mid;\n";
        row("by title", R"("$cli" list mem)", header + alfa + perche + zeta);
        row("by artist, then title", R"("$cli" list --order artist mem)",
            header + perche + zeta + alfa);
        row("by genre, which the memory does not hold, then title",
            R"("$cli" list --order=genre mem)", header + alfa + perche + zeta);
#ifdef TARVEL4_WINDOWS_CLI
        const QByteArray local = "PERCH\xC9;ABBA;/2.mid;\n";
#else
        const QByteArray local = perche;
#endif
        row("into a file", R"("$cli" list --output l.csv mem; cat l.csv)",
            header + alfa + local + zeta);
        row("UTF-8 whatever the locale", R"(LC_ALL=C "$cli" list mem)",
            header + alfa + perche + zeta);
        row("with an Italian header", R"(LC_ALL=it_IT.UTF-8 "$cli" list mem | sed -n 1p)",
            "TITOLO;ARTISTA;FILE;\n");
        const QByteArray json = R"({"title":"PERCHÉ","artist":"ABBA","file":"/2.mid"})"
                                "\n"
                                R"({"title":"ZETA","artist":"ABBA","file":"/1.mid"})"
                                "\n"
                                R"({"title":"ALFA; UNO","artist":"ZUCCHERO","file":"/Pop/3.mid"})"
                                "\n";
        row("as records", R"("$cli" list --json --order artist mem)", json);
        row("as records into a file",
            R"("$cli" list --json --order artist --output l.json mem; cat l.json)", json);
    }
    void listsTheSongs()
    {
        const auto [line, out] = cells<QString, QByteArray>();
        QCOMPARE(shell(line), (Run{0, out, ""}));
    }

    void refuses_data()
    {
        const Table<QString, int, QByteArray> row; // status, and what the message begins with
        row("a memory that is not prepared", "list none", 3, "none: ");
        row("a missing memory", "list gone", 3, "gone: there is no such file");
        row("a memory that is a file", "list old.csv", 3, "old.csv: not a");
        row("a target in a folder that is missing", "list --output gone/l.csv mem", 3,
            "gone/l.csv: there is no such file");
        row("a target that is a folder", "list --output none mem", 3, "none: ");
        row("records into a target that is a folder", "list --json --output none mem", 3, "none: ");
        row("a target that is a FIFO", "list --output fifo mem", 3, "fifo: ");
        row("records into a target that is a FIFO", "list --json --output fifo mem", 3, "fifo: ");
        row("a target that is a device", "list --output /dev/full mem", 3,
            "/dev/full: it is no file");
        row("a target that is a song", "list --output mem/1.mid mem", 3,
            "mem/1.mid: it is not overwritten, since it is a song");
        row("records into a target that is a song", "list --json --output mem/1.mid mem", 3,
            "mem/1.mid: it is not overwritten, since it is a song");
        row("a target that is a catalogue", "list --output c.db mem", 3,
            "c.db: it is not overwritten, since it is a catalogue");
        row("a target that is a file of the index", "list --output mem/index.id3 mem", 3,
            "mem/index.id3: it is not overwritten, since it is a file of a memory's index");
        row("a full disk", "list --output old.csv mem", 3, "old.csv: it is too large");
        row("records on a full disk", "list --json --output old.csv mem", 3,
            "old.csv: it is too large");
        row("a memory that lost one of its index files", "list lost", 3,
            "lost: the memory is not prepared");
        row("an index that can't be read", "list cut", 3, "cut: the index is damaged (index.id3: ");
        row("an index that can't be read into a file", "list --output l.csv cut", 3,
            "cut: the index is damaged (index.id3: ");
        row("an unknown order", "list --order length mem", 2, {});
        row("no memory", "list", 2, {});
    }
    void refuses()
    {
        const auto [line, status, named] = cells<QString, int, QByteArray>();
        const Run run =
            shell(QLatin1String("cp -r mem cut; echo x >>cut/index.id3; cp -r mem lost; rm "
                                "lost/title.id3; mkfifo fifo; echo old >old.csv; ulimit -f 0; "
                                "timeout 10 \"$cli\" ")
                  + line);
        QCOMPARE(read("old.csv"), QByteArray("old\n"));
        QCOMPARE(QDir(path()).entryList({".*"_s}, QDir::Files | QDir::Hidden), QStringList());
        QVERIFY(read("mem/1.mid").startsWith("MThd"));
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(run.err.startsWith("tarvel4soft-cli: " + named), run.err.constData());
        VERIFY_STATUS(run, status);
    }
};

QTEST_GUILESS_MAIN(tst_CliList)
#include "tst_clilist.moc"
