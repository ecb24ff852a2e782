#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"

#include <QtTest>

using namespace tarvel4;

/** `catalogue`: one record, looked up as the update does, or one of the two lists. */
class tst_CliCatalogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void answers_data();
    void answers();
    void refuses_data();
    void refuses();
    void hasOneBuiltIn();
    void writesNothingIntoTheCatalogue();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_CliCatalogue::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(Fixtures::writeCatalogue(path(QStringLiteral("c.db"))));
    QVERIFY(Fixtures::write(path(QStringLiteral("x.db")), "no catalogue"));
}

void tst_CliCatalogue::answers_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("out");
    const QByteArray azzurro =
        R"({"title":"Azzurro Cielo","artist":"Primo","genre":"DANCE","author":"Rossi",)"
        R"("length":200,"bpm":128,"key":"A -","altArtist":"Secondo",)"
        R"("markers":[{"bar":1,"text":"Intro"},{"bar":9,"text":"Fine"}]})"
        "\n";
    QTest::newRow("by name") << "--json --name AZZURRO" << azzurro;
    QTest::newRow("by name in small letters, with its extension")
        << "--json --name azzurro.mid" << azzurro;
    QTest::newRow("by title, whatever its case") << "--json --title 'azzurro cielo'" << azzurro;
    const QByteArray zeri = R"({"title":"CITTÀ","artist":"Sesto","genre":"DANCE","author":"Neri",)"
                            R"("length":0,"bpm":0,"key":"C","altArtist":"Quarto","markers":[]})"
                            "\n";
    QTest::newRow("by title, upper-cased beyond ASCII as well")
        << QStringLiteral("--json --title citt\u00E0") << zeri;
    QTest::newRow("a length and a tempo of 0 are known") << "--json --name zeri" << zeri;
    QTest::newRow("an unknown length and tempo are left out")
        << "--json --name doppia1"
        << QByteArray(R"({"title":"Doppia","artist":"Terzo","genre":"","author":"Bianchi",)"
                      R"("key":"","altArtist":"Quarto","markers":[]})"
                      "\n");
    QTest::newRow("the genres, the empty one included")
        << "--json --genres" << QByteArray("{\"genre\":\"DANCE\"}\n{\"genre\":\"\"}\n");
    QTest::newRow("the artists") << "--json --artists"
                                 << QByteArray(
                                        "{\"artist\":\"Secondo\"}\n{\"artist\":\"Quarto\"}\n");
    QTest::newRow("the artists, for people") << "--artists" << QByteArray("Secondo\nQuarto\n");
    QTest::newRow("a record, for people")
        << "--name azzurro"
        << QByteArray("title: Azzurro Cielo\nartist: Primo\ngenre: DANCE\nauthor: Rossi\n"
                      "length: 200\nbpm: 128\nkey: A -\naltArtist: Secondo\n"
                      "markers: 1 Intro, 9 Fine\n");
}

void tst_CliCatalogue::answers()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, out);
    const Run run = Program(m_folder->path())
                        .shell(QLatin1String("\"$cli\" catalogue --catalogue c.db ") + arguments);
    QCOMPARE(run.out, out);
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
}

void tst_CliCatalogue::refuses_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("message");
    const QByteArray none = "the catalogue does not hold it";
    QTest::newRow("a name that is not there") << "--catalogue c.db --name nothing" << 1 << none;
    QTest::newRow("an empty name") << "--catalogue c.db --name ''" << 1 << none;
    QTest::newRow("a name whose extension has two letters keeps it")
        << "--catalogue c.db --name azzurro.mi" << 1 << none;
    QTest::newRow("a title that two songs share") << "--catalogue c.db --title doppia" << 1 << none;
    QTest::newRow("a name that is a column of the catalogue")
        << "--catalogue c.db --name filename" << 1 << none;
    QTest::newRow("a title with a double quote")
        << R"(--catalogue c.db --title 'a"b')" << 1 << none;
    QTest::newRow("nothing asked") << "--catalogue c.db" << 2 << QByteArray();
    QTest::newRow("two questions") << "--catalogue c.db --genres --artists" << 2 << QByteArray();
    QTest::newRow("an operand") << "--catalogue c.db --genres x" << 2 << QByteArray();
    QTest::newRow("a catalogue that is missing")
        << "--catalogue gone.db --genres" << 3 << QByteArray("gone.db: there is no such file");
    QTest::newRow("a catalogue that is none")
        << "--catalogue x.db --genres" << 3 << QByteArray("x.db: it is no catalogue");
    QTest::newRow("a catalogue that is a folder")
        << "--catalogue . --genres" << 3 << QByteArray(".: it is no file, but a folder");
}

void tst_CliCatalogue::refuses()
{
    QFETCH(QString, arguments);
    QFETCH(int, status);
    QFETCH(QByteArray, message);
    const Run run =
        Program(m_folder->path()).shell(QLatin1String("\"$cli\" catalogue ") + arguments);
    QCOMPARE(run.out, QByteArray());
    QVERIFY2(run.err.startsWith("tarvel4soft-cli: " + message), run.err.constData());
    QCOMPARE(run.status, status);
    QVERIFY(!QFile::exists(path(QStringLiteral("gone.db"))));
}

void tst_CliCatalogue::hasOneBuiltIn()
{
    const Run run =
        Program(m_folder->path()).shell(QStringLiteral("\"$cli\" catalogue --genres --json"));
    QCOMPARE(run.records().size(), 21);
    QCOMPARE(run.status, 0);
}

void tst_CliCatalogue::writesNothingIntoTheCatalogue()
{
    const QByteArray before = Fixtures::read(path(QStringLiteral("c.db")));
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("chmod a-w c.db; \"$cli\" catalogue --catalogue c.db "
                                              "--name azzurro >/dev/null; s=$?; ls; exit $s"));
    QCOMPARE(run.out, QByteArray("c.db\nx.db\n"));
    QCOMPARE(run.status, 0);
    QCOMPARE(Fixtures::read(path(QStringLiteral("c.db"))), before);
}

QTEST_GUILESS_MAIN(tst_CliCatalogue)
#include "tst_clicatalogue.moc"
