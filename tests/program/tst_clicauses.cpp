#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"
#include "tests/storage/tmpfsmount.h"

#include <QDir>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

using namespace tarvel4;

/** Commands that fail for different reasons say so: one line each, and a code of its own. */
class tst_CliCauses : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void eachCauseHasItsCode_data();
    void eachCauseHasItsCode();
    void everyCauseWithAnExampleIsTested();

private:
    enum Place { Folder, AsNobody, FullVolume, ReadOnlyVolume };
    void row(const char *code, const char *name, const char *setup, const QStringList &commands,
             Place place = Folder);
    void runRow(const Program &program, const QString &command, const QString &code) const;
    QString path(const char *name) const { return m_folder->filePath(QString::fromLatin1(name)); }

    QScopedPointer<QTemporaryDir> m_folder;
    QSet<QString> m_codes; ///< of all rows
};

void tst_CliCauses::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
    QVERIFY(Fixtures::writeCatalogue(path("c.db")));
}

void tst_CliCauses::row(const char *code, const char *name, const char *setup,
                        const QStringList &commands, Place place)
{
    const QString codeText = QString::fromLatin1(code);
    m_codes.insert(codeText);
    for (const QString &command : commands)
        QTest::newRow(qPrintable(QStringLiteral("%1, %2: %3")
                                     .arg(codeText, QString::fromUtf8(name),
                                          command.section(QLatin1String(" --title"), 0, 0))))
            << codeText << QString::fromUtf8(setup) << command << static_cast<int>(place);
}

void tst_CliCauses::eachCauseHasItsCode_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("setup");
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("place");

    const QStringList all{QStringLiteral("info x.mid"), QStringLiteral("edit --title T x.mid"),
                          QStringLiteral("sync --catalogue c.db --no-backup x.mid"),
                          QStringLiteral("sync --catalogue c.db --dry-run x.mid"),
                          QStringLiteral("extract x.mid")};
    const QStringList updating{QStringLiteral("edit --title T AZZURRO.mid"),
                               QStringLiteral("sync --catalogue c.db --no-backup AZZURRO.mid")};
    row("not-found", "a missing file", "true", all);
    row("not-found", "a link that leads nowhere", "ln -s gone x.mid", all);
    row("not-a-file", "a FIFO", "mkfifo x.mid", all);
    row("not-a-file", "a device", "ln -s /dev/zero x.mid", all);
    row("not-a-file", "a folder with the name of a song", "mkdir x.mid", all);
    row("read-denied", "a song of somebody else", "chmod 600 AZZURRO.mid; mv AZZURRO.mid x.mid",
        all.mid(0, 1) + all.mid(3), AsNobody);
    row("not-a-song", "a text", "echo text >x.mid", all);
    row("not-a-song", "an empty file", ": >x.mid", all);
    row("damaged-song", "a song that is cut off", "head -c 11 AZZURRO.mid >x.mid", all);
    row("other-format", "a MIDI song", "mv AZZURRO.mid x.mid", all.mid(4));
    row("letter-not-storable", "a letter that an MFx header has no place for",
        "cp " TARVEL4_SAMPLES "/*.mf3 x.mf3", {QStringLiteral("edit --title Citt\u00e0 x.mf3")});
    // A frame that nearly fills the tag; a title that fits into an argument does the rest.
    row("text-too-long", "a title that an MP3 tag can't take",
        R"(printf 'ID3\3\0\0\0\74\174\142PRIV\0\17\76\130\0\0' >x.mp3
           head -c 999000 /dev/zero >>x.mp3; printf '\377\373\220\0' >>x.mp3)",
        {QStringLiteral("edit --title \"$(printf %01000d 0)\" x.mp3")});
    row("too-large", "a file above the limit of its user",
        "truncate -s 1000 AZZURRO.mid; mv AZZURRO.mid x.mid; ulimit -f 1",
        {QStringLiteral("edit --title \"$(printf %0120d 0)\" x.mid")});
    row("no-markers", "an MP3", R"(printf 'ID3\3\0\0\0\0\0\0\377\373' >x.mp3)",
        {QStringLiteral("edit --add-marker 1:Intro x.mp3")});
    row("write-denied", "a song of somebody else", "chmod 644 AZZURRO.mid", updating, AsNobody);
    row("read-only-volume", "a card that is write-protected", "true", updating, ReadOnlyVolume);
    row("no-room", "a card that is full", "true", updating, FullVolume);
}

void tst_CliCauses::runRow(const Program &program, const QString &command,
                           const QString &code) const
{
    const Run run = program.shell(command);
    QVERIFY(run.status == 1 || run.status == 3);
    const QVector<QJsonObject> records = run.records();
    QVERIFY2(records.size() == 1, run.err.constData());
    const QString error = records[0].value(QStringLiteral("error")).toString();
    QCOMPARE(records[0].value(QStringLiteral("code")).toString(), code);
    QCOMPARE(run.err.count('\n'), 1); // said once, and with --quiet too
    const QString said = QString::fromUtf8(run.err).section(QLatin1String(": "), 2).trimmed();
    QVERIFY(!error.isEmpty() && !said.isEmpty());
    if (error == QLatin1String("Unknown/corrupted file"))
        QVERIFY(command.contains(QLatin1String(" info ")));
    else
        QCOMPARE(said, error);
    QVERIFY(run.err.startsWith(
        "tarvel4soft-cli: " + records[0].value(QStringLiteral("path")).toString().toUtf8() + ": "));
}

void tst_CliCauses::eachCauseHasItsCode()
{
    QFETCH(QString, code);
    QFETCH(QString, setup);
    QFETCH(QString, command);
    QFETCH(int, place);
    QString folder = m_folder->path();
    QScopedPointer<TmpfsMount> volume;
    if (place == FullVolume || place == ReadOnlyVolume) {
        folder = path("card");
        volume.reset(new TmpfsMount(folder, "size=64k"));
        if (!volume->isMounted())
            QSKIP("mounting is not possible here");
        QVERIFY(QFile::copy(path("c.db"), folder + QLatin1String("/c.db")));
    }
    // A song that fills its page to the last bytes can't grow where there is no page left.
    QByteArray song = Fixtures::midi(Fixtures::meta(0x02, "(c) K-Varo"));
    constexpr int nearlyAPage = 4090;
    QByteArray events = Fixtures::meta(0x02, "(c) K-Varo");
    while (place == FullVolume && song.size() < nearlyAPage) {
        const int missing = nearlyAPage - song.size() - 4;
        events += Fixtures::meta(1, QByteArray(missing > 100 ? 96 : missing, 'x'));
        song = Fixtures::midi(events);
    }
    const QString file = folder + QLatin1String("/AZZURRO.mid");
    QVERIFY(Fixtures::write(file, song));
    const Program program(folder);
    if (place == ReadOnlyVolume)
        QVERIFY(volume->makeReadOnly());
    else
        QCOMPARE(program.shell(setup.section(QLatin1String("; ulimit"), 0, 0)).status, 0);

    QString line = QLatin1String("\"$cli\" ") + command.section(QLatin1Char(' '), 0, 0)
        + QLatin1String(" --quiet --json --unpublished yes ")
        + command.section(QLatin1Char(' '), 1);
    if (!command.startsWith(QLatin1String("sync")))
        line.remove(QLatin1String("--unpublished yes "));
    if (setup.contains(QLatin1String("ulimit")))
        line.prepend(QLatin1String("ulimit -f 1; "));
    if (place == AsNobody) {
        const QString drop = QStringLiteral("setpriv --reuid=65534 --regid=65534 --clear-groups ");
        if (program
                .shell(QLatin1String("chmod 755 .; ") + drop
                       + QLatin1String("\"$cli\" --version && test $(id -u) = 0"))
                .status
            != 0)
            QSKIP("the tests don't run as root, or the program can't be run as somebody else");
        line.prepend(drop);
    }
    if (place == FullVolume)
        program.shell(QStringLiteral("cat /dev/zero >rest"));
    runRow(program, line, code);
    if (place != Folder)
        QCOMPARE(Fixtures::read(QFile::exists(file) ? file : path("x.mid")), song);
}

void tst_CliCauses::everyCauseWithAnExampleIsTested()
{
    QFile page(QStringLiteral(TARVEL4_TEST_PROGRAM "/../../docs/commands.md"));
    QVERIFY(page.open(QIODevice::ReadOnly));
    static const QRegularExpression cause(
        QStringLiteral(R"(^\| `([a-z-]+)` \|[^|]*\|[^|]*\| `tarvel4soft-cli [^|]*` \|$)"),
        QRegularExpression::MultilineOption);
    QSet<QString> documented;
    auto match = cause.globalMatch(QString::fromUtf8(page.readAll()));
    while (match.hasNext())
        documented.insert(match.next().captured(1));
    QCOMPARE(documented, m_codes);
}

QTEST_GUILESS_MAIN(tst_CliCauses)
#include "tst_clicauses.moc"
