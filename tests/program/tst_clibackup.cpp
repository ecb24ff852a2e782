#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"

#include <QDir>
#include <QtTest>

using namespace tarvel4;

/** `backup`: the songs, flat, in a new folder. */
class tst_CliBackup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void copiesIntoANewFolder();
    void printsTheFolderForPeople();
    void refuses_data();
    void refuses();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_CliBackup::init()
{
    m_folder.reset(new QTemporaryDir);
    const Run made = Program(m_folder->path())
                         .shell(QStringLiteral("mkdir -p lib/a lib/b to; echo 1 >lib/a/1.mid; "
                                               "echo 2 >lib/b/2.kar; echo 3 >lib/b/3.txt"));
    QCOMPARE(made.status, 0);
}

void tst_CliBackup::copiesIntoANewFolder()
{
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("\"$cli\" backup --json --quiet --to to --recursive "
                                              "lib lib/a/1.mid"));
    QCOMPARE(run.status, 0);
    const QVector<QJsonObject> records = run.records();
    QCOMPARE(records.size(), 1);
    const QString folder = records[0].value(QStringLiteral("folder")).toString();
    QVERIFY(run.out.startsWith("{\"folder\":\"to/backup_kvaro_"));
    QVERIFY(run.out.endsWith("\",\"copied\":2}\n"));
    QCOMPARE(QDir(path(folder)).entryList(QDir::Files),
             (QStringList{QStringLiteral("1.mid"), QStringLiteral("2.kar")}));
    QCOMPARE(Fixtures::read(path(folder + QLatin1String("/2.kar"))), QByteArray("2\n"));
}

void tst_CliBackup::printsTheFolderForPeople()
{
    const Run run =
        Program(m_folder->path()).shell(QStringLiteral("\"$cli\" backup --to to/ lib/a/1.mid"));
    const QStringList made =
        QDir(path(QStringLiteral("to"))).entryList(QDir::AllDirs | QDir::NoDotAndDotDot);
    QCOMPARE(made.size(), 1);
    QCOMPARE(run.out, QByteArray("to/") + made[0].toUtf8() + '\n');
    QCOMPARE(run.status, 0);
}

void tst_CliBackup::refuses_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArrayList>("messages");
    QTest::newRow("without a destination")
        << R"("$cli" backup lib/a/1.mid)" << 2 << QByteArrayList{"--to"};
    QTest::newRow("a destination that is missing")
        << R"("$cli" backup --to gone lib/a/1.mid)" << 3 << QByteArrayList{"gone"};
    QTest::newRow("two songs of the same name")
        << R"(cp lib/a/1.mid lib/b; "$cli" backup --to to --recursive lib)" << 3
        << QByteArrayList{"lib/a/1.mid", "lib/b/1.mid"};
    QTest::newRow("two songs whose names differ in case, as a card can't keep them apart")
        << R"(cp lib/a/1.mid lib/b/1.MID; "$cli" backup --to to --recursive lib)" << 3
        << QByteArrayList{"lib/a/1.mid", "lib/b/1.MID"};
    QTest::newRow("a song that is missing")
        << R"("$cli" backup --to to lib/a/1.mid gone.mid)" << 3 << QByteArrayList{"gone.mid"};
    QTest::newRow("a folder without --recursive")
        << R"("$cli" backup --to to lib)" << 3 << QByteArrayList{"lib"};
}

void tst_CliBackup::refuses()
{
    QFETCH(QString, line);
    QFETCH(int, status);
    QFETCH(QByteArrayList, messages);
    const Run run = Program(m_folder->path()).shell(line);
    QCOMPARE(run.out, QByteArray());
    for (const QByteArray &message : messages)
        QVERIFY2(run.err.contains(message), run.err.constData());
    QCOMPARE(run.status, status);
    QVERIFY(QDir(path(QStringLiteral("to"))).isEmpty());
}

QTEST_GUILESS_MAIN(tst_CliBackup)
#include "tst_clibackup.moc"
