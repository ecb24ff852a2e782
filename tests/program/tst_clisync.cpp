#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"

#include <QDir>
#include <QJsonArray>
#include <QtTest>

using namespace tarvel4;

/** `sync`: the window's update. */
class tst_CliSync : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void printsARecordForEachSong_data();
    void printsARecordForEachSong();
    void findsASongByItsTitle();
    void asksNobodyWhereThereIsNobody_data();
    void asksNobodyWhereThereIsNobody();
    void keepsTheOrderOfThePaths();
    void changesExactlyWhatTheDryRunAnnounced();
    void savesTheSongsFirst();
    void wantsAChoiceAboutTheBackup_data();
    void wantsAChoiceAboutTheBackup();
    void writesNothingWithoutABackup_data();
    void writesNothingWithoutABackup();
    void needsACatalogue_data();
    void needsACatalogue();
    void goesOnAfterASongThatCannotBeSaved();
    void updatesASongNamedTwiceOnce();
    void putsInOrderWhatAPowerCutLeftAside();
    void stopsAtASignalBeforeTheNextSong();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    bool isUntouched() const;

    QScopedPointer<QTemporaryDir> m_folder;
    QByteArray m_published;
    QByteArray m_unpublished;
};

void tst_CliSync::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
    m_published = Fixtures::midi(Fixtures::meta(0x02, "(c) K-Varo"));
    m_unpublished = Fixtures::midi(Fixtures::meta(0x02, "(c) somebody"));
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("b")));
    QVERIFY(Fixtures::write(path(QStringLiteral("AZZURRO.mid")), m_published));
    QVERIFY(Fixtures::write(path(QStringLiteral("b/azzurro.KAR")), m_unpublished));
    QVERIFY(Fixtures::write(path(QStringLiteral("other.mid")), m_published));
    QVERIFY(Fixtures::write(path(QStringLiteral("x.mid")), "no song"));
    QVERIFY(Fixtures::writeCatalogue(path(QStringLiteral("c.db"))));
}

bool tst_CliSync::isUntouched() const
{
    return Fixtures::read(path(QStringLiteral("AZZURRO.mid"))) == m_published
        && Fixtures::read(path(QStringLiteral("b/azzurro.KAR"))) == m_unpublished
        && Fixtures::read(path(QStringLiteral("other.mid"))) == m_published;
}

void tst_CliSync::printsARecordForEachSong_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<int>("status");

    const QByteArray empty = R"("title":"","artist":"","genre":"","author":"","length":0,"bpm":0,)"
                             R"("key":"","publisher":true,"markers":[])";
    const QByteArray updated =
        R"("title":"Azzurro Cielo","artist":"Secondo","genre":"DANCE","author":"Rossi",)"
        R"("length":200,"bpm":128,"key":"A-","publisher":true,)"
        R"("markers":[{"bar":1,"text":"Intro"},{"bar":9,"text":"Fine"}])";
    QTest::newRow("updated")
        << "--no-backup AZZURRO.mid"
        << R"({"path":"AZZURRO.mid","status":"updated","match":"FILENAME: AZZURRO",)"
           R"("name":"AZZURRO.mid","format":"MIDI",)"
            + updated + "}\n"
        << 0;
    QTest::newRow("not in the catalogue")
        << "--no-backup other.mid"
        << R"({"path":"other.mid","status":"not-found","name":"other.mid","format":"MIDI",)" + empty
            + "}\n"
        << 1;
    QTest::newRow("refused, as the maker did not publish it")
        << "--no-backup b/azzurro.KAR"
        << R"({"path":"b/azzurro.KAR","status":"refused","name":"azzurro.KAR","format":"MIDI",)"
            + QByteArray(empty).replace("true", "false") + "}\n"
        << 1;
    const QByteArray unreadable =
        R"({"path":"x.mid","status":"unreadable","error":"it is no .mid, .kar, .mp3, .mf3, .mf4 or )"
        R"(.mf5 song","code":"not-a-song"})"
        "\n";
    QTest::newRow("unreadable") << "--no-backup x.mid" << unreadable << 1;
    QTest::newRow("what would be updated, without a choice about the backup")
        << "--dry-run AZZURRO.mid"
        << R"({"path":"AZZURRO.mid","status":"would-update","match":"FILENAME: AZZURRO",)"
           R"("name":"AZZURRO.mid","format":"MIDI",)"
            + empty
            + R"(,"changes":{"artist":["","Secondo"],"author":["","Rossi"],"bpm":[0,128],)"
              R"("genre":["","DANCE"],"key":["","A-"],"length":[0,200],)"
              R"("markers":[[],[{"bar":1,"text":"Intro"},{"bar":9,"text":"Fine"}]],)"
              R"("title":["","Azzurro Cielo"]}})"
              "\n"
        << 0;
    QTest::newRow("what would not be read") << "--dry-run x.mid" << unreadable << 1;
}

void tst_CliSync::printsARecordForEachSong()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, out);
    QFETCH(int, status);
    const Run run = Program(m_folder->path())
                        .shell(QLatin1String("\"$cli\" sync --json --catalogue c.db ") + arguments);
    QCOMPARE(run.out, out);
    QCOMPARE(run.err,
             out.contains("unreadable") ? QByteArray("tarvel4soft-cli: x.mid: it is no .mid, .kar, "
                                                     ".mp3, .mf3, .mf4 or .mf5 song\n")
                                        : QByteArray());
    QCOMPARE(run.status, status);
    if (!out.contains("\"updated\""))
        QVERIFY(isUntouched());
    QVERIFY(!run.records().isEmpty());
}

void tst_CliSync::findsASongByItsTitle()
{
    QVERIFY(Fixtures::write(path(QStringLiteral("t.mid")),
                            Fixtures::midi(Fixtures::meta(0x03, "azzurro cielo"))));
    QVERIFY(Fixtures::write(path(QStringLiteral("d.mid")),
                            Fixtures::midi(Fixtures::meta(0x03, "Doppia"))));
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("\"$cli\" sync --json --catalogue c.db --dry-run "
                                              "--unpublished yes t.mid d.mid"));
    const QVector<QJsonObject> records = run.records();
    QCOMPARE(records.size(), 2);
    QCOMPARE(records[0].value(QStringLiteral("match")).toString(),
             QStringLiteral("TITLE: AZZURRO CIELO"));
    QCOMPARE(records[1].value(QStringLiteral("status")).toString(), QStringLiteral("not-found"));
}

void tst_CliSync::asksNobodyWhereThereIsNobody_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("isWritten");
    QTest::newRow("no is the answer by default") << "" << 1 << false;
    QTest::newRow("no by option") << "--unpublished no" << 1 << false;
    QTest::newRow("yes by option") << "--unpublished=yes" << 0 << true;
    QTest::newRow("asking is wrong usage") << "--unpublished ask" << 2 << false;
}

void tst_CliSync::asksNobodyWhereThereIsNobody()
{
    QFETCH(QString, option);
    QFETCH(int, status);
    QFETCH(bool, isWritten);
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("yes | \"$cli\" sync --catalogue c.db --no-backup %1 "
                                              "AZZURRO.mid b/azzurro.KAR")
                                   .arg(option));
    QCOMPARE(run.status, status);
    QCOMPARE(Fixtures::read(path(QStringLiteral("b/azzurro.KAR"))) != m_unpublished, isWritten);
    QCOMPARE(Fixtures::read(path(QStringLiteral("AZZURRO.mid"))) != m_published, status != 2);
}

void tst_CliSync::keepsTheOrderOfThePaths()
{
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral(
                            "cp x.mid y.mid; \"$cli\" sync --json --catalogue c.db --no-backup "
                            "x.mid AZZURRO.mid y.mid other.mid b/azzurro.KAR --recursive b"));
    QStringList statuses;
    for (const QJsonObject &record : run.records())
        statuses += record.value(QStringLiteral("path")).toString() + QLatin1Char(' ')
            + record.value(QStringLiteral("status")).toString();
    QCOMPARE(statuses,
             (QStringList{QStringLiteral("x.mid unreadable"), QStringLiteral("AZZURRO.mid updated"),
                          QStringLiteral("y.mid unreadable"), QStringLiteral("other.mid not-found"),
                          QStringLiteral("b/azzurro.KAR refused")}));
    QCOMPARE(run.status, 1);
}

void tst_CliSync::changesExactlyWhatTheDryRunAnnounced()
{
    const Program program(m_folder->path());
    const QString line = QStringLiteral("\"$cli\" sync --json --catalogue c.db --unpublished yes "
                                        "%1 AZZURRO.mid b/azzurro.KAR");
    QVector<QJsonObject> planned = program.shell(line.arg(QStringLiteral("--dry-run"))).records();
    QVERIFY(isUntouched());
    const QVector<QJsonObject> done =
        program.shell(line.arg(QStringLiteral("--no-backup"))).records();
    QCOMPARE(planned.size(), 2);
    QCOMPARE(done.size(), 2);
    for (int i = 0; i < planned.size(); ++i) {
        const QJsonObject changes = planned[i].take(QStringLiteral("changes")).toObject();
        QVERIFY(!changes.isEmpty());
        for (auto change = changes.begin(); change != changes.end(); ++change) {
            QCOMPARE(planned[i].value(change.key()), change.value().toArray().at(0));
            planned[i].insert(change.key(), change.value().toArray().at(1));
        }
        planned[i].insert(QStringLiteral("status"), QStringLiteral("updated"));
        QCOMPARE(done[i], planned[i]);
    }
}

void tst_CliSync::savesTheSongsFirst()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("saved")));
    const Program program(m_folder->path());
    const Run run =
        program.shell(QStringLiteral("\"$cli\" sync --json --catalogue c.db --backup saved "
                                     "AZZURRO.mid x.mid b/azzurro.KAR"));
    QCOMPARE(run.records().size(), 3);
    QCOMPARE(run.status, 1);
    QVERIFY(Fixtures::read(path(QStringLiteral("AZZURRO.mid"))) != m_published);
    const Run backup = program.shell(QStringLiteral("cd saved/backup_kvaro_* && ls && cmp "
                                                    "../../b/azzurro.KAR azzurro.KAR"));
    QCOMPARE(backup.out, QByteArray("AZZURRO.mid\nazzurro.KAR\nx.mid\n"));
    QCOMPARE(backup.status, 0);
    const QString folder = QDir(path(QStringLiteral("saved"))).entryList({QStringLiteral("b*")})[0];
    QCOMPARE(Fixtures::read(path(QStringLiteral("saved/%1/AZZURRO.mid").arg(folder))), m_published);
}

void tst_CliSync::wantsAChoiceAboutTheBackup_data()
{
    QTest::addColumn<QString>("options");
    QTest::newRow("none") << "";
    QTest::newRow("both") << "--backup . --no-backup";
    QTest::newRow("both, and a dry run") << "--backup . --no-backup --dry-run";
}

void tst_CliSync::wantsAChoiceAboutTheBackup()
{
    QFETCH(QString, options);
    const Run run =
        Program(m_folder->path())
            .shell(QStringLiteral("\"$cli\" sync --catalogue c.db %1 AZZURRO.mid").arg(options));
    QCOMPARE(run.out, QByteArray());
    QVERIFY(run.err.contains("--no-backup"));
    QCOMPARE(run.status, 2);
    QVERIFY(isUntouched());
}

void tst_CliSync::writesNothingWithoutABackup_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QByteArrayList>("messages");
    QTest::newRow("a backup folder that is missing")
        << R"("$cli" sync --catalogue c.db --backup gone AZZURRO.mid)" << QByteArrayList{"gone"};
    QTest::newRow("a backup folder that is a file")
        << R"("$cli" sync --catalogue c.db --backup x.mid AZZURRO.mid)" << QByteArrayList{"x.mid"};
    QTest::newRow("two songs of the same name: both are named, nothing is copied")
        << R"(cp b/azzurro.KAR .; "$cli" sync --catalogue c.db --backup b AZZURRO.mid azzurro.KAR \
              b/azzurro.KAR; s=$?; ls b; exit $s)"
        << QByteArrayList{" azzurro.KAR", " b/azzurro.KAR"};
    QTest::newRow("a disk that fills up") << R"(truncate -s 5000 big.mid; ulimit -f 2
              "$cli" sync --catalogue c.db --backup b AZZURRO.mid big.mid)"
                                          << QByteArrayList{"Backup", " big.mid"};
    QTest::newRow("a song that is missing")
        << R"("$cli" sync --catalogue c.db --backup b AZZURRO.mid gone.mid; s=$?; ls b; exit $s)"
        << QByteArrayList{"gone.mid"};
}

void tst_CliSync::writesNothingWithoutABackup()
{
    QFETCH(QString, line);
    QFETCH(QByteArrayList, messages);
    const Run run = Program(m_folder->path()).shell(line);
    QCOMPARE(run.out, QByteArray(line.contains(QLatin1String("ls b")) ? "azzurro.KAR\n" : ""));
    for (const QByteArray &message : messages)
        QVERIFY2(run.err.contains(message), run.err.constData());
    QCOMPARE(run.status, 3);
    QVERIFY(isUntouched());
}

void tst_CliSync::needsACatalogue_data()
{
    QTest::addColumn<QString>("catalogue");
    QTest::newRow("missing") << "gone.db";
    QTest::newRow("no SQLite file") << "x.mid";
    QTest::newRow("a folder") << "b";
}

void tst_CliSync::needsACatalogue()
{
    QFETCH(QString, catalogue);
    const Run run =
        Program(m_folder->path())
            .shell(QStringLiteral("\"$cli\" sync --no-backup --catalogue %1 AZZURRO.mid")
                       .arg(catalogue));
    QCOMPARE(run.out, QByteArray());
    QVERIFY(run.err.startsWith("tarvel4soft-cli: " + catalogue.toUtf8() + ": "));
    QCOMPARE(run.status, 3);
    QVERIFY(isUntouched());
    QVERIFY(!QFile::exists(path(QStringLiteral("gone.db"))));
}

void tst_CliSync::goesOnAfterASongThatCannotBeSaved()
{
    const Run run = Program(m_folder->path()).shell(QStringLiteral(R"(mkdir big; cp AZZURRO.mid big
                               truncate -s 1000 big/AZZURRO.mid; cp big/AZZURRO.mid old
                               (ulimit -f 1; "$cli" sync --json --catalogue c.db --no-backup \
                                  big/AZZURRO.mid AZZURRO.mid) || s=$?
                               cmp old big/AZZURRO.mid && exit $s)"));
    const QVector<QJsonObject> records = run.records();
    QCOMPARE(records.size(), 2);
    QCOMPARE(records[0].value(QStringLiteral("status")).toString(), QStringLiteral("failed"));
    QCOMPARE(records[0].value(QStringLiteral("match")).toString(),
             QStringLiteral("FILENAME: AZZURRO"));
    QCOMPARE(records[0].value(QStringLiteral("title")).toString(), QString());
    QCOMPARE(records[1].value(QStringLiteral("status")).toString(), QStringLiteral("updated"));
    QCOMPARE(records[0].value(QStringLiteral("code")).toString(), QStringLiteral("too-large"));
    QVERIFY(run.err.contains("big/AZZURRO.mid: it is too large"));
    QCOMPARE(run.status, 1);
}

void tst_CliSync::updatesASongNamedTwiceOnce()
{
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("\"$cli\" sync --json --catalogue c.db --no-backup "
                                              "AZZURRO.mid ./AZZURRO.mid b/../AZZURRO.mid"));
    QCOMPARE(run.records().size(), 1);
    QCOMPARE(run.status, 0);
}

void tst_CliSync::putsInOrderWhatAPowerCutLeftAside()
{
    const QString old = path(QStringLiteral("b/other.mid.tarvel4.bak"));
    QVERIFY(Fixtures::write(old, m_published));
    const Program program(m_folder->path());
    const QString line = QStringLiteral("\"$cli\" sync --json --catalogue c.db --recursive b ");
    Run run = program.shell(line + QLatin1String("--dry-run"));
    QCOMPARE(run.records().size(), 1);
    QVERIFY(QFile::exists(old));

    run = program.shell(line + QLatin1String("--no-backup"));
    QCOMPARE(run.records().size(), 2);
    QCOMPARE(run.err,
             QByteArray("tarvel4soft-cli: b/other.mid: put back in its place after an "
                        "interruption\n"));
    QVERIFY(!QFile::exists(old));

    QVERIFY(Fixtures::write(old, m_published));
    QVERIFY(Fixtures::write(path(QStringLiteral("b/x.mid")), "no song"));
    QVERIFY(Fixtures::write(path(QStringLiteral("b/x.mid.tarvel4.bak")), "no song"));
    run = program.shell(QStringLiteral("\"$cli\" edit --title=T b/other.mid b/x.mid"));
    QCOMPARE(run.err,
             QByteArray("tarvel4soft-cli: b/other.mid: the old copy that an interruption left was "
                        "removed\n"
                        "tarvel4soft-cli: b/x.mid: the old copy that an interruption left stays as "
                        "b/x.mid.tarvel4.bak\n"
                        "tarvel4soft-cli: b/x.mid: it is no .mid, .kar, .mp3, .mf3, .mf4 or .mf5 "
                        "song\n"));
    QVERIFY(!QFile::exists(old));
    QCOMPARE(Fixtures::read(path(QStringLiteral("b/x.mid.tarvel4.bak"))), QByteArray("no song"));
}

void tst_CliSync::stopsAtASignalBeforeTheNextSong()
{
    const Program program(m_folder->path());
    if (program.shell(QStringLiteral("strace -qq -o /dev/null true")).status != 0)
        QSKIP("strace is not installed, or not allowed");
    const Run run = program.shell(QStringLiteral(R"(set -o pipefail
        export ASAN_OPTIONS=detect_leaks=0 # leaks can't be looked for in a traced program
        strace -qq -o /dev/null -P AZZURRO.mid -e inject=openat:signal=TERM:when=1 \
            "$cli" sync --quiet --no-backup x.mid AZZURRO.mid other.mid | grep ^path)"));
    QCOMPARE(run.out, QByteArray("path: x.mid\npath: AZZURRO.mid\n"));
    QCOMPARE(run.status, 130);
}

QTEST_GUILESS_MAIN(tst_CliSync)
#include "tst_clisync.moc"
