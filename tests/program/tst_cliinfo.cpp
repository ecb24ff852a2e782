#include "tests/program/fixtures.h"
#include "tests/program/programrun.h"

#include <QDir>
#include <QtTest>

using namespace tarvel4;

/** `info`: the record of each song. */
class tst_CliInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void printsJson_data();
    void printsJson();
    void printsTextForPeople();
    void readsASong_data();
    void readsASong();
    void refusesPaths_data();
    void refusesPaths();
    void leavesWhatAPowerCutLeftAside();
    void walksAFolderInNameOrder();
    void saysWhatItCannotReachInAFolder();
    void controlCharactersNeverReachTheTerminal_data();
    void controlCharactersNeverReachTheTerminal();
    void readsSongsThatNobodyHereWrote();
    void readsMp3sOfOtherPrograms_data();
    void readsMp3sOfOtherPrograms();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    QScopedPointer<QTemporaryDir> m_folder;
};

void tst_CliInfo::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
}

void tst_CliInfo::cleanup()
{
    // Qt itself can't remove a name that is not UTF-8.
    Program(m_folder->path()).shell(QStringLiteral("rm -rf ./*"));
}

void tst_CliInfo::printsJson_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("line");

    const QByteArray unknown = R"("error":"Unknown/corrupted file","code":"not-a-song"})";
    const QByteArray damaged = R"("error":"Unknown/corrupted file","code":"damaged-song"})";
    QTest::newRow("every field, in the order of the record")
        << "a.mid" << Fixtures::wholeSong() << 0
        << R"({"path":"a.mid",)" + Fixtures::wholeRecord("a.mid") + '}';
    QTest::newRow("a song without data has empty texts and zeros, never null")
        << "b.kar" << Fixtures::midi() << 0
        << QByteArray(R"({"path":"b.kar","name":"b.kar","format":"MIDI","title":"","artist":"",)"
                      R"("genre":"","author":"","length":0,"bpm":0,"key":"","publisher":false,)"
                      R"("markers":[]})");
    QTest::newRow("the path is the one given, the name is without folder")
        << "./sub/../sub//a.mid" << Fixtures::wholeSong() << 0
        << R"({"path":"./sub/../sub//a.mid",)" + Fixtures::wholeRecord("a.mid") + '}';
    QTest::newRow("a name that begins with a colon is a file's")
        << ":a.mid" << Fixtures::wholeSong() << 0
        << R"({"path":":a.mid",)" + Fixtures::wholeRecord(":a.mid") + '}';
    QTest::newRow("a name outside ASCII is UTF-8")
        << "perch\u00E9 \u4E2D.mid" << Fixtures::wholeSong() << 0
        << R"({"path":"perché 中.mid",)" + Fixtures::wholeRecord("perché 中.mid") + '}';
    QTest::newRow("a name with quotes, backslash and line feed is escaped")
        << "a\"\\\n.mid" << QByteArray("no song") << 1 << R"({"path":"a\"\\\u000a.mid",)" + unknown;
    QTest::newRow("a file that is no song")
        << "x.mid" << QByteArray("no song at all") << 1 << R"({"path":"x.mid",)" + unknown;
    QTest::newRow("an empty file")
        << "x.mid" << QByteArray() << 1 << R"({"path":"x.mid",)" + unknown;
    QTest::newRow("a song cut off in its header")
        << "x.mid" << Fixtures::wholeSong().left(11) << 1 << R"({"path":"x.mid",)" + damaged;
    QTest::newRow("an MFx song cut off in its header")
        << "x.mf4" << QByteArray("_MF4 and little more") << 1 << R"({"path":"x.mf4",)" + damaged;
}

void tst_CliInfo::printsJson()
{
    QFETCH(QString, argument);
    QFETCH(QByteArray, bytes);
    QFETCH(int, status);
    QFETCH(QByteArray, line);
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("sub")));
    QVERIFY(Fixtures::write(m_folder->path() + QLatin1Char('/') + argument, bytes));

    const Run run =
        Program(m_folder->path()).run({QStringLiteral("info"), QStringLiteral("--json"), argument});

    QCOMPARE(run.out, line + '\n');
    QCOMPARE(run.err.count('\n'), status); // the cause of a failure
    QCOMPARE(run.status, status);
    QCOMPARE(run.records().size(), 1);
}

void tst_CliInfo::printsTextForPeople()
{
    QVERIFY(Fixtures::write(path(QStringLiteral("a.mid")), Fixtures::wholeSong()));
    QVERIFY(Fixtures::write(path(QStringLiteral("b.mid")), "nothing"));

    const Run run =
        Program(m_folder->path())
            .run({QStringLiteral("info"), QStringLiteral("a.mid"), QStringLiteral("b.mid")});

    QCOMPARE(run.out,
             QByteArray("path: a.mid\n"
                        "name: a.mid\n"
                        "format: MIDI\n"
                        "title: Bella Ciao\n"
                        "artist: Anonimo\n"
                        "genre: FOLK\n"
                        "author: Tradizionale\n"
                        "length: 185\n"
                        "bpm: 120\n"
                        "key: D-\n"
                        "publisher: true\n"
                        "markers: 1 Intro, 5 Strofa\n"
                        "\n"
                        "path: b.mid\n"
                        "error: Unknown/corrupted file\n"
                        "code: not-a-song\n"));
    QCOMPARE(run.status, 1);
}

void tst_CliInfo::readsASong_data()
{
    QTest::addColumn<QString>("sample");
    QTest::addColumn<QString>("format");
    const QDir samples(QStringLiteral(TARVEL4_SAMPLES));
    const QStringList names = samples.entryList({QStringLiteral("*.mid"), QStringLiteral("*.kar"),
                                                 QStringLiteral("*.mf?"), QStringLiteral("*.mp3")},
                                                QDir::Files);
    for (const QString &name : names) {
        const QString suffix = QFileInfo(name).suffix().toUpper();
        const bool isMidi = suffix == QLatin1String("MID") || suffix == QLatin1String("KAR");
        QTest::newRow(qPrintable(QStringLiteral("sample ") + name))
            << samples.filePath(name) << (isMidi ? QStringLiteral("MIDI") : suffix);
    }
}

void tst_CliInfo::readsASong()
{
    QFETCH(QString, sample);
    QFETCH(QString, format);
    const Run run =
        Program(m_folder->path()).run({QStringLiteral("info"), QStringLiteral("--json"), sample});
    QCOMPARE(run.status, 0);
    const QJsonObject record = run.records().value(0);
    QCOMPARE(record.value(QStringLiteral("format")).toString(), format);
    const bool isMfx = format.startsWith(QLatin1String("MF"));
    QCOMPARE(record.contains(QStringLiteral("mfxLongName")), isMfx);
    QCOMPARE(record.contains(QStringLiteral("mfxFlags")), isMfx);
    QVERIFY(!record.value(QStringLiteral("title")).toString().isEmpty());
}

void tst_CliInfo::refusesPaths_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("a missing path ends it before any song is read")
        << R"("$cli" info a.mid missing.mid)" << 3 << QByteArray("missing.mid");
    QTest::newRow("an empty path is a missing one") << R"("$cli" info '')" << 3 << QByteArray();
    QTest::newRow("a folder without --recursive")
        << R"(mkdir d.mid; "$cli" info a.mid d.mid)" << 3 << QByteArray("d.mid");
    QTest::newRow("a link that leads nowhere")
        << R"(ln -s gone l.mid; "$cli" info l.mid)" << 3 << QByteArray("l.mid");
    QTest::newRow("a name that is not UTF-8 is refused, and no other file is read")
        << R"x(cp a.mid "$(printf 'bad\357\277\275.mid')"; cp a.mid "$(printf 'bad\377.mid')"
               "$cli" info "$(printf 'bad\377.mid')")x"
        << 3 << QByteArray("bad");
    QTest::newRow("no path at all is wrong usage") << R"("$cli" info)" << 2 << QByteArray("PATH");
}

void tst_CliInfo::refusesPaths()
{
    QFETCH(QString, line);
    QFETCH(int, status);
    QFETCH(QByteArray, message);
    QVERIFY(Fixtures::write(path(QStringLiteral("a.mid")), Fixtures::wholeSong()));
    const Run run = Program(m_folder->path()).shell(line);
    QCOMPARE(run.out, QByteArray());
    QVERIFY2(run.err.contains(message) && run.err.startsWith("tarvel4soft-cli: "),
             run.err.constData());
    QCOMPARE(run.status, status);
}

void tst_CliInfo::leavesWhatAPowerCutLeftAside()
{
    QVERIFY(Fixtures::write(path(QStringLiteral("a.mid.tarvel4.bak")), Fixtures::wholeSong()));
    const Program program(m_folder->path());
    Run run =
        program.shell(QStringLiteral("\"$cli\" info --recursive .; ls a*; \"$cli\" info a.mid"));
    QCOMPARE(run.out, QByteArray("a.mid.tarvel4.bak\n"));
    QVERIFY(run.err.contains("a.mid.tarvel4.bak"));
    QCOMPARE(run.status, 3);

    QVERIFY(Fixtures::write(path(QStringLiteral("a.mid")), QByteArray(100, '\0')));
    run = program.shell(QStringLiteral("\"$cli\" info a.mid; ls a*"));
    QCOMPARE(run.out.right(24), QByteArray("a.mid\na.mid.tarvel4.bak\n"));
}

void tst_CliInfo::walksAFolderInNameOrder()
{
    const Run prepared =
        Program(m_folder->path())
            .shell(QStringLiteral(
                "mkdir -p s/b s/c.mid s/.hidden && cd s && touch b/2.MID b/1.Kar c.mid/x.mp3 a.mf3 "
                "Z.mF5 "
                "d.txt .e.mid .hidden/f.mid b/g.mid.bak && mkfifo h.mid && ln -s ../s b/loop"));
    QCOMPARE(prepared.status, 0);

    for (const char *folder : {"s", "./s", "s/"}) {
        const QString given = QLatin1String(folder);
        const Run run = Program(m_folder->path())
                            .run({QStringLiteral("info"), QStringLiteral("--json"),
                                  QStringLiteral("--recursive"), given});
        QStringList names;
        for (const QJsonObject &record : run.records())
            names += record.value(QStringLiteral("path")).toString();
        const QString prefix =
            given.startsWith(QLatin1Char('.')) ? QStringLiteral("./s/") : QStringLiteral("s/");
        const QStringList expected{prefix + QLatin1String("Z.mF5"), prefix + QLatin1String("a.mf3"),
                                   prefix + QLatin1String("b/1.Kar"),
                                   prefix + QLatin1String("b/2.MID"),
                                   prefix + QLatin1String("c.mid/x.mp3")};
        QCOMPARE(names, expected);
        QCOMPARE(run.status, 1);
    }
}

void tst_CliInfo::saysWhatItCannotReachInAFolder()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("s")));
    QVERIFY(Fixtures::write(path(QStringLiteral("s/a.mid")), Fixtures::wholeSong()));
    const Run run = Program(m_folder->path())
                        .shell(QStringLiteral("cp s/a.mid \"$(printf 's/bad\\377.mid')\"; \"$cli\" "
                                              "info --json --recursive s"));
    QCOMPARE(run.out, R"({"path":"s/a.mid",)" + Fixtures::wholeRecord("a.mid") + "}\n");
    QVERIFY2(run.err.contains("s/bad"), run.err.constData());
    QCOMPARE(run.status, 1);
}

void tst_CliInfo::controlCharactersNeverReachTheTerminal_data()
{
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<QByteArray>("shown");
    QTest::newRow("escape") << QByteArray("a\033[2Jb") << QByteArray("a\\u001b[2Jb");
    QTest::newRow("line feed") << QByteArray("a\nb") << QByteArray("a\\u000ab");
    QTest::newRow("delete") << QByteArray("a\177b") << QByteArray("a\\u007fb");
    QTest::newRow("the one-byte form of escape [") << QByteArray("a\x9B"
                                                                 "2Jb")
                                                   << QByteArray("a\\u009b2Jb");
}

void tst_CliInfo::controlCharactersNeverReachTheTerminal()
{
    QFETCH(QByteArray, title);
    QFETCH(QByteArray, shown);
    QVERIFY(Fixtures::write(path(QStringLiteral("a.mid")),
                            Fixtures::midi(Fixtures::meta(0x03, title))));
    const Program program(m_folder->path());
    QVERIFY(program.run({QStringLiteral("info"), QStringLiteral("a.mid")})
                .out.contains("\ntitle: " + shown + '\n'));
    const Run json =
        program.run({QStringLiteral("info"), QStringLiteral("--json"), QStringLiteral("a.mid")});
    QVERIFY(json.out.contains("\"title\":\"" + shown + '"'));
    QCOMPARE(json.records().value(0).value(QStringLiteral("title")).toString(),
             QString::fromLatin1(title));
}

void tst_CliInfo::readsSongsThatNobodyHereWrote()
{
    const Program program(m_folder->path());
    const Run packaged = program.shell(QStringLiteral("dpkg -L openttd-openmsx | grep '\\.mid$'"));
    const QStringList songs =
        QString::fromUtf8(packaged.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (songs.isEmpty())
        QSKIP("the package openttd-openmsx is not installed");
    QCOMPARE(songs.size(), 31);

    QStringList arguments{QStringLiteral("info"), QStringLiteral("--json")};
    const Run run = program.run(arguments + songs);
    QCOMPARE(run.status, 0);
    QByteArray ours;
    for (const QJsonObject &record : run.records()) {
        ours += record.value(QStringLiteral("path")).toString().toUtf8() + '\t'
            + record.value(QStringLiteral("title")).toString().toUtf8() + '\t'
            + record.value(QStringLiteral("key")).toString().toUtf8() + '\n';
    }
    const Run other =
        program.shell(QStringLiteral("/usr/bin/python3 " TARVEL4_TEST_PROGRAM "/describe_midi.py ")
                      + songs.join(QLatin1Char(' ')));
    QCOMPARE(other.status, 0);
    QCOMPARE(ours, other.out);
}

void tst_CliInfo::readsMp3sOfOtherPrograms_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("texts");
    const QString ffmpeg = QStringLiteral("ffmpeg -v error -f lavfi -i sine=440:duration=1 %1");
    const QString lame = ffmpeg.arg(QLatin1String("-f wav - | lame --quiet %1 - a.mp3"));
    const QStringList texts{QStringLiteral("Tono"), QStringLiteral("Nessuno"),
                            QStringLiteral("Prova")};
    const QString tags = QStringLiteral(
        "-id3v2_version %1 -metadata title=Tono -metadata artist=Nessuno -metadata genre=Prova "
        "-metadata encoder= a.mp3");
    QTest::newRow("ffmpeg, ID3v2.3") << ffmpeg.arg(tags.arg(3)) << texts;
    QTest::newRow("ffmpeg, ID3v2.4") << ffmpeg.arg(tags.arg(4)) << texts;
    QTest::newRow("lame, ID3v2.3")
        << lame.arg(QLatin1String("--add-id3v2 --id3v2-latin1 --tt Tono --ta Nessuno --tg Prova"))
        << texts;
    // required: whatever encoding a tag declares, its texts are read as Latin-1 up to a zero byte
    QTest::newRow("lame, ID3v2.3 in UTF-16 is taken as Latin-1")
        << lame.arg(QLatin1String("--add-id3v2 --tt Tono --ta Nessuno --tg Prova"))
        << QStringList{QStringLiteral("\u00FF\u00FET"), QStringLiteral("\u00FF\u00FEN"),
                       QStringLiteral("\u00FF\u00FEP")};
    QTest::newRow("lame, without a tag")
        << lame.arg(QString()) << QStringList{QString(), QString(), QString()};
}

void tst_CliInfo::readsMp3sOfOtherPrograms()
{
    QFETCH(QString, line);
    QFETCH(QStringList, texts);
    if (!hasTool(QStringLiteral("ffmpeg")) || !hasTool(QStringLiteral("lame")))
        QSKIP("ffmpeg and lame are not installed");
    const Program program(m_folder->path());
    const Run made = program.shell(line);
    QVERIFY2(made.status == 0, made.err.constData());
    const Run run =
        program.run({QStringLiteral("info"), QStringLiteral("--json"), QStringLiteral("a.mp3")});
    QCOMPARE(run.status, 0);
    const QJsonObject record = run.records().value(0);
    QCOMPARE(record.value(QStringLiteral("format")).toString(), QStringLiteral("MP3"));
    QStringList read;
    for (const char *key : {"title", "artist", "genre"})
        read += record.value(QLatin1String(key)).toString();
    QCOMPARE(read, texts);
}

QTEST_GUILESS_MAIN(tst_CliInfo)
#include "tst_cliinfo.moc"
