#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"

#include <QDir>
#include <QtTest>

using namespace tarvel4;

/** `extract`: the MIDI stream of an MFx song. */
class tst_CliExtract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void writesAMidiFile_data();
    void writesAMidiFile();
    void neverOverwrites_data();
    void neverOverwrites();
    void refuses_data();
    void refuses();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_CliExtract::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(Fixtures::write(path(QStringLiteral("a.mid")), Fixtures::wholeSong()));
    const QDir samples(QStringLiteral(TARVEL4_SAMPLES));
    for (const char *suffix : {"mf3", "mf4", "mf5"}) {
        const QStringList names = samples.entryList({QLatin1String("*.") + QLatin1String(suffix)});
        QVERIFY(!names.isEmpty());
        QVERIFY(QFile::copy(samples.filePath(names[0]),
                            path(QLatin1String("s.1.") + QLatin1String(suffix))));
    }
}

void tst_CliExtract::writesAMidiFile_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("target");
    QTest::newRow("of an MF3 song, beside it") << "s.1.mf3"
                                               << "s.1.mid";
    QTest::newRow("of an MF4 song, beside it") << "./s.1.mf4"
                                               << "s.1.mid";
    QTest::newRow("of an MF5 song, beside it") << "$PWD/s.1.mf5"
                                               << "s.1.mid";
    QTest::newRow("over the rest of a run that was killed") << "s.1.mf3; ls -A | grep part; true"
                                                            << "s.1.mid";
    QTest::newRow("where it is told to") << "--output out.mid s.1.mf4"
                                         << "out.mid";
}

void tst_CliExtract::writesAMidiFile()
{
    QFETCH(QString, line);
    QFETCH(QString, target);
    const Program program(m_folder->path());
    const Run run =
        program.shell(QLatin1String("echo x >.s.1.mid.tarvel4.part; \"$cli\" extract ") + line);
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.out, QByteArray());
    QCOMPARE(run.status, 0);
    QVERIFY(Fixtures::read(path(target)).startsWith("MThd"));
    const Run loaded = program.shell(
        QStringLiteral("/usr/bin/python3 " TARVEL4_TEST_PROGRAM "/describe_midi.py ") + target);
    QVERIFY2(loaded.status == 0, loaded.err.constData());
}

void tst_CliExtract::neverOverwrites_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("a song beside it") << R"(cp a.mid s.1.mid; "$cli" extract s.1.mf3)";
    QTest::newRow("a file named") << R"("$cli" extract --output a.mid s.1.mf3)";
    QTest::newRow("the song itself") << R"("$cli" extract --output s.1.mf3 s.1.mf3)";
    QTest::newRow("a link that leads nowhere")
        << R"(ln -s gone.mid s.1.mid; "$cli" extract s.1.mf3)";
    QTest::newRow("a FIFO") << R"(mkfifo s.1.mid; "$cli" extract s.1.mf3)";
    QTest::newRow("a folder") << R"(mkdir s.1.mid; "$cli" extract s.1.mf3)";
}

void tst_CliExtract::neverOverwrites()
{
    QFETCH(QString, line);
    const QByteArray song = Fixtures::read(path(QStringLiteral("s.1.mf3")));
    const Run run = Program(m_folder->path()).shell(line);
    QVERIFY(run.err.contains(line.contains(QLatin1String("a.mid")) ? ".mid" : "s.1.m"));
    QCOMPARE(run.status, 3);
    QCOMPARE(Fixtures::read(path(QStringLiteral("a.mid"))), Fixtures::wholeSong());
    QCOMPARE(Fixtures::read(path(QStringLiteral("s.1.mf3"))), song);
    QVERIFY(!QFile::exists(path(QStringLiteral("gone.mid"))));
}

void tst_CliExtract::refuses_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("message");
    const QByteArray noMfx = "a.mid: it is no .mf3, .mf4 or .mf5 song";
    QTest::newRow("a song that is MIDI already")
        << R"("$cli" extract --output o.mid a.mid)" << 1 << noMfx;
    QTest::newRow("a song that is MIDI already, beside itself")
        << R"("$cli" extract a.mid)" << 1 << noMfx;
    QTest::newRow("a name of the index")
        << R"("$cli" index rebuild . >/dev/null; "$cli" extract --output TEMP1.id3 s.1.mf3)" << 3
        << QByteArray("TEMP1.id3: it belongs to the index");
    QTest::newRow("a missing song")
        << R"("$cli" extract --output o.mid gone.mf3)" << 3 << QByteArray("gone.mf3: ");
    QTest::newRow("a target in a folder that is missing")
        << R"("$cli" extract --output gone/o.mid s.1.mf3)" << 3 << QByteArray("gone/o.mid: ");
    QTest::newRow("a disk that fills up leaves no half file")
        << R"(ulimit -f 0; "$cli" extract --output o.mid s.1.mf3)" << 3 << QByteArray("o.mid: ");
}

void tst_CliExtract::refuses()
{
    QFETCH(QString, line);
    QFETCH(int, status);
    QFETCH(QByteArray, message);
    const Run run = Program(m_folder->path()).shell(line);
    QCOMPARE(run.out, QByteArray());
    QVERIFY2(run.err.startsWith("tarvel4soft-cli: ") && run.err.contains(message),
             run.err.constData());
    QCOMPARE(run.status, status);
    QVERIFY(!QFile::exists(path(QStringLiteral("o.mid"))));
}

QTEST_GUILESS_MAIN(tst_CliExtract)
#include "tst_cliextract.moc"
