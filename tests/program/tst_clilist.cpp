#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"

#include <QDir>
#include <QtTest>

using namespace tarvel4;

/** `list`: the songs that the player will show. */
class tst_CliList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void listsTheSongs_data();
    void listsTheSongs();
    void refuses_data();
    void refuses();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_CliList::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("mem/Pop")));
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("none")));
    const auto song = [](const char *title, const char *artist) {
        return Fixtures::midi(Fixtures::meta(0x03, title) + Fixtures::songInfo(2, artist));
    };
    QVERIFY(Fixtures::write(path(QStringLiteral("mem/1.mid")), song("Zeta", "Abba")));
    QVERIFY(Fixtures::write(path(QStringLiteral("mem/2.mid")), song("Perch\xE9", "ABBA")));
    QVERIFY(Fixtures::write(path(QStringLiteral("mem/Pop/3.mid")), song("Alfa; Uno", "Zucchero")));
    QVERIFY(Fixtures::writeCatalogue(path(QStringLiteral("c.db"))));
    const Run run = Program(m_folder->path()).shell(QStringLiteral("\"$cli\" index rebuild mem"));
    QCOMPARE(run.status, 0);
}

void tst_CliList::listsTheSongs_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("out");
    const QByteArray header = "TITLE;ARTIST;FILE;\n";
    const QByteArray alfa = "ALFA; UNO;ZUCCHERO;/Pop/3.mid;\n";
    const QByteArray perche = "PERCHÉ;ABBA;/2.mid;\n";
    const QByteArray zeta = "ZETA;ABBA;/1.mid;\n";
    QTest::newRow("by title") << R"("$cli" list mem)" << header + alfa + perche + zeta;
    QTest::newRow("by artist, then title")
        << R"("$cli" list --order artist mem)" << header + perche + zeta + alfa;
    QTest::newRow("by genre, which the memory does not hold, then title")
        << R"("$cli" list --order=genre mem)" << header + alfa + perche + zeta;
    QTest::newRow("into a file") << R"("$cli" list --output l.csv mem; cat l.csv)"
                                 << header + alfa + perche + zeta;
    QTest::newRow("UTF-8 whatever the locale")
        << R"(LC_ALL=C "$cli" list mem)" << header + alfa + perche + zeta;
    QTest::newRow("with an Italian header") << R"(LC_ALL=it_IT.UTF-8 "$cli" list mem | sed -n 1p)"
                                            << QByteArray("TITOLO;ARTISTA;FILE;\n");
    const QByteArray json = R"({"title":"PERCHÉ","artist":"ABBA","file":"/2.mid"})"
                            "\n"
                            R"({"title":"ZETA","artist":"ABBA","file":"/1.mid"})"
                            "\n"
                            R"({"title":"ALFA; UNO","artist":"ZUCCHERO","file":"/Pop/3.mid"})"
                            "\n";
    QTest::newRow("as records") << R"("$cli" list --json --order artist mem)" << json;
    QTest::newRow("as records into a file")
        << R"("$cli" list --json --order artist --output l.json mem; cat l.json)" << json;
}

void tst_CliList::listsTheSongs()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, out);
    const Run run = Program(m_folder->path()).shell(line);
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.out, out);
    QCOMPARE(run.status, 0);
}

void tst_CliList::refuses_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("named"); // what the message begins with
    QTest::newRow("a memory that is not prepared") << "list none" << 3 << QByteArray("none: ");
    QTest::newRow("a missing memory")
        << "list gone" << 3 << QByteArray("gone: there is no such file");
    QTest::newRow("a memory that is a file") << "list old.csv" << 3 << QByteArray("old.csv: not a");
    QTest::newRow("a target in a folder that is missing")
        << "list --output gone/l.csv mem" << 3 << QByteArray("gone/l.csv: there is no such file");
    QTest::newRow("a target that is a folder")
        << "list --output none mem" << 3 << QByteArray("none: ");
    QTest::newRow("records into a target that is a folder")
        << "list --json --output none mem" << 3 << QByteArray("none: ");
    QTest::newRow("a target that is a FIFO")
        << "list --output fifo mem" << 3 << QByteArray("fifo: ");
    QTest::newRow("records into a target that is a FIFO")
        << "list --json --output fifo mem" << 3 << QByteArray("fifo: ");
    QTest::newRow("a target that is a device")
        << "list --output /dev/full mem" << 3 << QByteArray("/dev/full: it is no file");
    QTest::newRow("a target that is a song")
        << "list --output mem/1.mid mem" << 3
        << QByteArray("mem/1.mid: it is not overwritten, since it is a song");
    QTest::newRow("records into a target that is a song")
        << "list --json --output mem/1.mid mem" << 3
        << QByteArray("mem/1.mid: it is not overwritten, since it is a song");
    QTest::newRow("a target that is a catalogue")
        << "list --output c.db mem" << 3
        << QByteArray("c.db: it is not overwritten, since it is a catalogue");
    QTest::newRow("a target that is a file of the index")
        << "list --output mem/index.id3 mem" << 3
        << QByteArray(
               "mem/index.id3: it is not overwritten, since it is a file of a memory's index");
    QTest::newRow("a full disk") << "list --output old.csv mem" << 3
                                 << QByteArray("old.csv: it is too large");
    QTest::newRow("records on a full disk")
        << "list --json --output old.csv mem" << 3 << QByteArray("old.csv: it is too large");
    QTest::newRow("a memory that lost one of its index files")
        << "list lost" << 3 << QByteArray("lost: the memory is not prepared");
    QTest::newRow("an index that can't be read")
        << "list cut" << 3 << QByteArray("cut: the index is damaged (index.id3: ");
    QTest::newRow("an index that can't be read into a file")
        << "list --output l.csv cut" << 3 << QByteArray("cut: the index is damaged (index.id3: ");
    QTest::newRow("an unknown order") << "list --order length mem" << 2 << QByteArray();
    QTest::newRow("no memory") << "list" << 2 << QByteArray();
}

void tst_CliList::refuses()
{
    QFETCH(QString, line);
    QFETCH(int, status);
    QFETCH(QByteArray, named);
    const Run run =
        Program(m_folder->path())
            .shell(QLatin1String("cp -r mem cut; echo x >>cut/index.id3; cp -r mem lost; rm "
                                 "lost/title.id3; mkfifo fifo; echo old >old.csv; ulimit -f 0; "
                                 "timeout 10 \"$cli\" ")
                   + line);
    QCOMPARE(Fixtures::read(path(QStringLiteral("old.csv"))), QByteArray("old\n"));
    QCOMPARE(QDir(m_folder->path()).entryList({QStringLiteral(".*")}, QDir::Files | QDir::Hidden),
             QStringList());
    QVERIFY(Fixtures::read(path(QStringLiteral("mem/1.mid"))).startsWith("MThd"));
    QCOMPARE(run.out, QByteArray());
    QVERIFY2(run.err.startsWith("tarvel4soft-cli: " + named), run.err.constData());
    QCOMPARE(run.status, status);
}

QTEST_GUILESS_MAIN(tst_CliList)
#include "tst_clilist.moc"
