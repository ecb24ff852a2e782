#include "tests/program/programtest.h"
#include "tests/program/unixrows.h"
#include "tests/storage/tmpfsmount.h"

#include <QRegularExpression>
#include <QSet>

using namespace tarvel4;
using namespace Fixtures;

/** Commands that fail for different reasons say so: one line each, and a code of its own. */
class tst_CliCauses : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder();
        QVERIFY(writeCatalogue(path("c.db")));
    }

    void eachCauseHasItsCode_data()
    {
        Table<QString, QString, QString, int>();

        const QStringList all{"info x.mid"_s, "edit --title T x.mid"_s,
                              "sync --catalogue c.db --no-backup x.mid"_s,
                              "sync --catalogue c.db --dry-run x.mid"_s, "extract x.mid"_s};
        const QStringList updating{"edit --title T AZZURRO.mid"_s,
                                   "sync --catalogue c.db --no-backup AZZURRO.mid"_s};
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
            "cp " TARVEL4_SAMPLES "/*.mf3 x.mf3",
            {QStringLiteral("edit --title Citt\u00e0 x.mf3")});
        // A frame that nearly fills the tag; a title that fits into an argument does the rest.
        row("text-too-long", "a title that an MP3 tag can't take",
            R"(printf 'ID3\3\0\0\0\74\174\142PRIV\0\17\76\130\0\0' >x.mp3
           head -c 999000 /dev/zero >>x.mp3; printf '\377\373\220\0' >>x.mp3)",
            {"edit --title \"$(printf %01000d 0)\" x.mp3"_s});
        row("too-large", "a file above the limit of its user",
            "truncate -s 1000 AZZURRO.mid; mv AZZURRO.mid x.mid; ulimit -f 1",
            {"edit --title \"$(printf %0120d 0)\" x.mid"_s});
        row("too-large", "a song of 3 GB", "truncate -s 3G AZZURRO.mid; mv AZZURRO.mid x.mid", all);
        row("no-markers", "an MP3", R"(printf 'ID3\3\0\0\0\0\0\0\377\373' >x.mp3)",
            {"edit --add-marker 1:Intro x.mp3"_s});
        row("write-denied", "a song of somebody else", "chmod 644 AZZURRO.mid", updating, AsNobody);
        row("read-only-volume", "a card that is write-protected", "true", updating, ReadOnlyVolume);
        row("no-room", "a card that is full", "true", updating, FullVolume);
    }
    void eachCauseHasItsCode()
    {
        const auto [code, setup, command, place] = cells<QString, QString, QString, int>();
        QString folder = path();
        QScopedPointer<TmpfsMount> volume;
        if (place == FullVolume || place == ReadOnlyVolume) {
            folder = path("card");
            volume.reset(new TmpfsMount(folder, "size=64k"));
            if (!volume->isMounted())
                QSKIP("mounting is not possible here");
            QVERIFY(QFile::copy(path("c.db"), folder + "/c.db"_s));
        }
        // A song that fills its page to the last bytes can't grow where there is no page left.
        QByteArray song = midi(meta(0x02, "(c) K-Varo"));
        constexpr int nearlyAPage = 4090;
        QByteArray events = meta(0x02, "(c) K-Varo");
        while (place == FullVolume && song.size() < nearlyAPage) {
            const int missing = static_cast<int>(nearlyAPage - song.size() - 4);
            events += meta(1, QByteArray(missing > 100 ? 96 : missing, 'x'));
            song = midi(events);
        }
        const QString file = folder + "/AZZURRO.mid"_s;
        QVERIFY(Fixtures::write(file, song));
        const Program program(folder);
        if (place == ReadOnlyVolume)
            QVERIFY(volume->makeReadOnly());
        else
            QCOMPARE(program.shell(setup.section("; ulimit"_s, 0, 0)).status, 0);

        QString line = "\"$cli\" "_s + command.section(QLatin1Char(' '), 0, 0)
            + " --quiet --json --unpublished yes "_s + command.section(QLatin1Char(' '), 1);
        if (!command.startsWith("sync"_s))
            line.remove("--unpublished yes "_s);
        if (setup.contains("ulimit"_s))
            line.prepend("ulimit -f 1; "_s);
        if (place == AsNobody) {
            const QString drop = "setpriv --reuid=65534 --regid=65534 --clear-groups "_s;
            if (program
                    .shell("chmod 755 .; "_s + drop
                           + QLatin1String("\"$cli\" --version && test $(id -u) = 0"))
                    .status
                != 0)
                QSKIP("the tests don't run as root, or the program can't be run as somebody else");
            line.prepend(drop);
        }
        if (place == FullVolume)
            program.shell("cat /dev/zero >rest"_s);
        runRow(program, line, code);
        if (place != Folder)
            QCOMPARE(Fixtures::read(QFile::exists(file) ? file : path("x.mid")), song);
    }

    void anEmptyPathIsSaidToBeEmpty_data()
    {
        const Table<QString, QString, QByteArray, QByteArray> row; // in which language what is said
        const QByteArray english = "an empty path names neither a file nor a folder";
        const QByteArray italian = "un percorso vuoto non indica né un file né una cartella";
        const auto record = [](const QByteArray &said) {
            return QByteArray(R"({"path":"","error":"?","code":"not-found"})").replace("?", said)
                + '\n';
        };
        for (const char *command :
             {"info", "info --recursive", "edit --title T", "edit --title T AZZURRO.mid",
              "sync --dry-run", "sync --no-backup", "restore --from .", "backup --to .",
              "transfer --to . --memory .", "extract", "list"})
            row(command, "C", command, english, QByteArray());
        for (const char *command : {"info --json", "edit --json --title T AZZURRO.mid",
                                    "sync --json --no-backup", "extract --json"})
            row(command, "C", command, english, record(english));
        row("a record in Italian", "it_IT.UTF-8", "info --json", italian, record(italian));
        row("a root in Italian", "it_IT.UTF-8", "list", italian, QByteArray());
    }
    void anEmptyPathIsSaidToBeEmpty()
    {
        const auto [language, command, sentence, record] =
            cells<QString, QString, QByteArray, QByteArray>();
        const QByteArray song = midi(meta(0x02, "(c) K-Varo"));
        write("AZZURRO.mid", song);
        const Run run = shell("LC_ALL=%1 \"$cli\" %2 ''"_s.arg(language, command));
        QCOMPARE(run, (Run{3, record, "tarvel4soft-cli: " + sentence + '\n'}));
        QCOMPARE(read("AZZURRO.mid"), song);
    }

    void everyCauseWithAnExampleIsTested()
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

private:
    enum Place { Folder, AsNobody, FullVolume, ReadOnlyVolume };
    void row(const char *code, const char *name, const char *setup, const QStringList &commands,
             Place place = Folder)
    {
        const QString codeText = QString::fromLatin1(code);
        m_codes.insert(codeText);
        for (const QString &command : commands)
            QTest::newRow(qPrintable("%1, %2: %3"_s.arg(codeText, QString::fromUtf8(name),
                                                        command.section(" --title"_s, 0, 0))))
                << codeText << QString::fromUtf8(setup) << command << static_cast<int>(place);
    }

    void runRow(const Program &program, const QString &command, const QString &code) const
    {
        const Run run = program.shell(command);
        QVERIFY(run.status == 1 || run.status == 3);
        const QVector<QJsonObject> records = run.records();
        QVERIFY2(records.size() == 1, run.err.constData());
        const QString error = records[0].value("error"_s).toString();
        QCOMPARE(records[0].value("code"_s).toString(), code);
        QCOMPARE(run.saidOfSongs().count('\n'), 1); // said once, and with --quiet too
        const QString said = QString::fromUtf8(run.saidOfSongs()).section(": "_s, 2).trimmed();
        QVERIFY(!error.isEmpty() && !said.isEmpty());
        if (error == "Unknown/corrupted file"_s)
            QVERIFY(command.contains(" info "_s));
        else
            QCOMPARE(said, error);
        QVERIFY(run.saidOfSongs().startsWith(
            "tarvel4soft-cli: " + records[0].value("path"_s).toString().toUtf8() + ": "));
    }

    QSet<QString> m_codes; ///< of all rows
};

QTEST_GUILESS_MAIN(tst_CliCauses)
#include "tst_clicauses.moc"
