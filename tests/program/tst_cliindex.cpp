#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"

#include <QDir>
#include <QtTest>

using namespace tarvel4;

/** `index` update, rebuild, verify and delete. */
class tst_CliIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void reportsABuild_data();
    void reportsABuild();
    void printsARunForPeople();
    void verifiesAMemory_data();
    void verifiesAMemory();
    void saysWhatAnInterruptedRunLeft_data();
    void saysWhatAnInterruptedRunLeft();
    void deletesTheIndex();
    void refuses_data();
    void refuses();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    void prepare() const;

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_CliIndex::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("mem/Pop")));
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("none")));
    QVERIFY(Fixtures::write(path(QStringLiteral("mem/Pop/a.mid")), Fixtures::wholeSong()));
    QVERIFY(Fixtures::write(path(QStringLiteral("mem/b.kar")), Fixtures::midi()));
}

void tst_CliIndex::prepare() const
{
    const Run run = Program(m_folder->path()).shell(QStringLiteral("\"$cli\" index rebuild mem"));
    QCOMPARE(run.status, 0);
}

void tst_CliIndex::reportsABuild_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<int>("status");
    QTest::newRow("a rebuild") << R"("$cli" index rebuild --json mem)"
                               << QByteArray(R"({"root":"mem","found":2,"changed":true,)"
                                             R"("prepared":true,"errors":[]})"
                                             "\n")
                               << 0;
    QTest::newRow("an update of a memory without an index is a rebuild")
        << R"("$cli" index update --json ./mem/)"
        << QByteArray(R"({"root":"./mem/","found":2,"changed":true,"prepared":true,"errors":[]})"
                      "\n")
        << 0;
    QTest::newRow("an update with nothing changed")
        << R"("$cli" index update mem >/dev/null; "$cli" --json index update mem)"
        << QByteArray(R"({"root":"mem","found":2,"changed":false,"prepared":true,"errors":[]})"
                      "\n")
        << 0;
    QTest::newRow("no songs at all") << R"("$cli" index --json update none)"
                                     << QByteArray(R"({"root":"none","found":0,"changed":false,)"
                                                   R"("prepared":false,"errors":[]})"
                                                   "\n")
                                     << 0;
    QTest::newRow("a path that is too long is an error of its song")
        << R"(d=mem/$(printf %0130d 0); mkdir -p $d/$d; cp mem/b.kar $d/$d
              "$cli" index rebuild --json mem)"
        << QByteArray(R"({"root":"mem","found":2,"changed":true,"prepared":true,"errors":[")"
                      "File not imported, path too long: /")
        << 1;
    QTest::newRow("an old index that can't be loaded")
        << R"("$cli" index update mem >/dev/null; echo x >>mem/index.id3
              "$cli" index update --json mem)"
        << QByteArray(R"({"root":"mem","found":0,"changed":false,"prepared":true,"errors":[],)"
                      R"("error":"the index is damaged (index.id3: )")
        << 3;
    QTest::newRow("a file that can't be written leaves the memory unprepared")
        << R"(for i in {1..9}; do cp mem/b.kar mem/$i.mid; done; ulimit -f 1
              "$cli" index rebuild --json mem)"
        << QByteArray(
               R"({"root":"mem","found":11,"changed":false,"prepared":false,"errors":[],"error":"it is too large: )")
        << 3;
}

void tst_CliIndex::reportsABuild()
{
    QFETCH(QString, line);
    QFETCH(QByteArray, out);
    QFETCH(int, status);
    const Run run = Program(m_folder->path()).shell(QLatin1String("set -o pipefail\n") + line);
    QVERIFY2(run.out.startsWith(out), run.out.constData());
    QCOMPARE(run.records().size(), 1);
    QCOMPARE(run.status, status);
    QCOMPARE(run.err.isEmpty(), status != 3);
    const QString error = run.records()[0].value(QStringLiteral("error")).toString();
    QCOMPARE(run.err.count("tarvel4soft-cli: mem: " + error.toUtf8()), status == 3 ? 1 : 0);
}

void tst_CliIndex::printsARunForPeople()
{
    const Run run = Program(m_folder->path()).shell(QStringLiteral("\"$cli\" index rebuild mem"));
    QCOMPARE(run.out, QByteArray("root: mem\nfound: 2\nchanged: true\nprepared: true\nerrors:\n"));
}

void tst_CliIndex::verifiesAMemory_data()
{
    QTest::addColumn<QString>("damage");
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("nothing wrong") << "true" << QByteArray();
    QTest::newRow("a song that is not in the index") << "cp b.kar c.kar" << QByteArray();
    QTest::newRow("a song that is gone") << "rm b.kar" << QByteArray("index.id3");
    QTest::newRow("a song that changed since")
        << "touch -d 2001-01-01 b.kar" << QByteArray("index.id3");
    QTest::newRow("a record cut off") << "truncate -s -1 title.id3" << QByteArray("title.id3");
    QTest::newRow("a count that lies")
        << R"(printf '\003' | dd of=fsinfos.id3 conv=notrunc status=none)"
        << QByteArray("fsinfos.id3");
}

void tst_CliIndex::verifiesAMemory()
{
    QFETCH(QString, damage);
    QFETCH(QByteArray, file);
    prepare();
    const Program program(m_folder->path());
    program.shell(QLatin1String("cd mem; ") + damage);
    const bool isTrue = damage == QLatin1String("true");

    const Run json = program.shell(QStringLiteral("\"$cli\" index verify --json mem"));
    QCOMPARE(json.status, isTrue ? 0 : 1);
    QCOMPARE(json.records().isEmpty(), isTrue);
    for (const QJsonObject &record : json.records()) {
        QVERIFY(record.value(QStringLiteral("file")).isString());
        QVERIFY(!record.value(QStringLiteral("problem")).toString().isEmpty());
    }
    QVERIFY2(json.out.contains(file), json.out.constData());

    const Run text = program.shell(QStringLiteral("\"$cli\" index verify mem"));
    QCOMPARE(text.out.count('\n'), json.out.count('\n'));
    QCOMPARE(text.status, json.status);
}

void tst_CliIndex::saysWhatAnInterruptedRunLeft_data()
{
    QTest::addColumn<QString>("job");
    QTest::addColumn<QString>("call"); // the signal comes with the first one
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QByteArray>("err");
    const auto row = [](const char *name, const char *job, const char *call, const char *keys,
                        const char *err) {
        QTest::newRow(name) << QString::fromLatin1(job) << QString::fromLatin1(call)
                            << R"({"root":"mem","found":3,)" + QByteArray(keys)
                + R"(,"errors":[]})"
                  "\n"
                            << QByteArray("tarvel4soft-cli: mem: interrupted, the memory is ") + err
                + '\n';
    };
    row("a rebuild that removed the old index", "rebuild", "unlink",
        R"("changed":false,"prepared":false)", "not prepared");
    row("a rebuild that did not yet", "rebuild", "getdents64", R"("changed":false,"prepared":true)",
        "prepared");
    row("an update that wrote nothing", "update", "getdents64",
        R"("changed":false,"prepared":true)", "prepared");
    row("a rebuild that comes to its end", "rebuild", "rename", R"("changed":true,"prepared":true)",
        "prepared");
}

void tst_CliIndex::saysWhatAnInterruptedRunLeft()
{
    QFETCH(QString, job);
    QFETCH(QString, call);
    prepare();
    const Program program(m_folder->path());
    if (!canTrace())
        QSKIP("strace is missing or may not trace here");
    const Run run =
        program.shell(QStringLiteral("cp mem/b.kar mem/c.kar; ASAN_OPTIONS=detect_leaks=0 strace "
                                     "-f -o /dev/null -e trace=%2 "
                                     "-e inject=%2:signal=INT:when=1 \"$cli\" index %1 --json mem")
                          .arg(job, call));
    QTEST(run.out, "out");
    QTEST(run.err, "err");
    QCOMPARE(run.status, 130);
}

void tst_CliIndex::deletesTheIndex()
{
    prepare();
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("\"$cli\" index delete mem; s=$?; ls mem; exit $s"));
    QCOMPARE(run.out, QByteArray("Pop\nb.kar\n"));
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.status, 0);
}

void tst_CliIndex::refuses_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("message");
    for (const char *job : {"update", "rebuild", "verify", "delete"}) {
        QTest::addRow("%s of a missing folder", job) << QLatin1String(job) + QLatin1String(" gone")
                                                     << QByteArray("gone: there is no such file");
        QTest::addRow("%s of a file", job)
            << QLatin1String(job) + QLatin1String(" mem/b.kar") << QByteArray("mem/b.kar: not a");
    }
    QTest::newRow("verify of a memory that is not prepared")
        << "verify mem" << QByteArray("mem: the memory is not prepared");
}

void tst_CliIndex::refuses()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, message);
    const Run run = Program(m_folder->path()).shell(QLatin1String("\"$cli\" index ") + arguments);
    QCOMPARE(run.out, QByteArray());
    QVERIFY2(run.err.startsWith("tarvel4soft-cli: " + message), run.err.constData());
    QCOMPARE(run.status, 3);
}

QTEST_GUILESS_MAIN(tst_CliIndex)
#include "tst_cliindex.moc"
