#include "tests/program/programtest.h"
#include "tests/program/unixrows.h"

using namespace tarvel4;
using namespace Fixtures;

/** `catalogue`: one record, looked up as the update does, or one of the two lists. */
class tst_CliCatalogue : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder();
        QVERIFY(writeCatalogue(path("c.db")));
        write("x.db", "no catalogue");
    }

    void answers_data()
    {
        const Table<QString, QByteArray> row;
        const QByteArray azzurro =
            R"({"title":"Azzurro Cielo","artist":"Primo","genre":"DANCE","author":"Rossi",)"
            R"("length":200,"bpm":128,"key":"A -","altArtist":"Secondo",)"
            R"("markers":[{"bar":1,"text":"Intro"},{"bar":9,"text":"Fine"}]})"
            "\n";
        row("by name", "--json --name AZZURRO", azzurro);
        row("by name in small letters, with its extension", "--json --name azzurro.mid", azzurro);
        row("by title, whatever its case", "--json --title 'azzurro cielo'", azzurro);
        const QByteArray zeri =
            R"({"title":"CITTÀ","artist":"Sesto","genre":"DANCE","author":"Neri",)"
            R"("length":0,"bpm":0,"key":"C","altArtist":"Quarto","markers":[]})"
            "\n";
        row("by title, upper-cased beyond ASCII as well", "--json --title citt\u00E0", zeri);
        row("a length and a tempo of 0 are known", "--json --name zeri", zeri);
        row("an unknown length and tempo are left out", "--json --name doppia1",
            R"({"title":"Doppia","artist":"Terzo","genre":"","author":"Bianchi",)"
            R"("key":"","altArtist":"Quarto","markers":[]})"
            "\n");
        row("the genres, the empty one included", "--json --genres",
            "{\"genre\":\"DANCE\"}\n{\"genre\":\"\"}\n");
        row("the artists", "--json --artists",
            QByteArray("{\"artist\":\"Secondo\"}\n{\"artist\":\"Quarto\"}\n"));
        row("the artists, for people", "--artists", "Secondo\nQuarto\n");
        row("a record, for people", "--name azzurro",
            "title: Azzurro Cielo\nartist: Primo\ngenre: DANCE\nauthor: Rossi\n"
            "length: 200\nbpm: 128\nkey: A -\naltArtist: Secondo\n"
            "markers: 1 Intro, 9 Fine\n");
    }
    void answers()
    {
        const auto [arguments, out] = cells<QString, QByteArray>();
        const Run run = cli("catalogue --catalogue c.db "_s + arguments);
        QCOMPARE(run, (Run{0, out, ""}));
    }

    void refuses_data();
    void refuses()
    {
        const auto [arguments, status, message] = cells<QString, int, QByteArray>();
        const Run run = cli("catalogue "_s + arguments);
        QCOMPARE(run.out, QByteArray());
        QVERIFY2(run.err.startsWith("tarvel4soft-cli: " + message), run.err.constData());
        VERIFY_STATUS(run, status);
        QVERIFY(!QFile::exists(path("gone.db")));
    }

    void hasOneBuiltIn()
    {
        const Run run = cli("catalogue --genres --json");
        QCOMPARE(run.records().size(), 21);
        VERIFY_STATUS(run, 0);
    }

    void writesNothingIntoTheCatalogue()
    {
        const QByteArray before = read("c.db");
        const Run run = shell("chmod a-w c.db; \"$cli\" catalogue --catalogue c.db "
                              "--name azzurro >/dev/null; s=$?; ls; exit $s");
        QCOMPARE(run.out, QByteArray("c.db\nx.db\n"));
        VERIFY_STATUS(run, 0);
        QCOMPARE(read("c.db"), before);
    }
};

// Outside of the class: moc loses its way in these raw strings.
void tst_CliCatalogue::refuses_data()
{
    const Table<QString, int, QByteArray> row;
    const QByteArray none = "the catalogue does not hold it";
    row("a name that is not there", "--catalogue c.db --name nothing", 1, none);
    row("an empty name", "--catalogue c.db --name ''", 1, none);
    row("a name whose extension has two letters keeps it", "--catalogue c.db --name azzurro.mi", 1,
        none);
    row("a title that two songs share", "--catalogue c.db --title doppia", 1, none);
    row("a name that is a column of the catalogue", "--catalogue c.db --name filename", 1, none);
    row("a title with a double quote", R"(--catalogue c.db --title 'a"b')", 1, none);
    row("nothing asked", "--catalogue c.db", 2, {});
    row("two questions", "--catalogue c.db --genres --artists", 2, {});
    row("an operand", "--catalogue c.db --genres x", 2, {});
    row("a catalogue that is missing", "--catalogue gone.db --genres", 3,
        "gone.db: there is no such file");
    row("a catalogue that is none", "--catalogue x.db --genres", 3, "x.db: it is no catalogue");
    row("a catalogue that is a folder", "--catalogue . --genres", 3,
        ".: it is no file, but a folder");
}

QTEST_GUILESS_MAIN(tst_CliCatalogue)
#include "tst_clicatalogue.moc"
