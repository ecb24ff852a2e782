#include "tests/program/historytest.h"
#include "tests/program/unixrows.h"

#include <QElapsedTimer>

using namespace tarvel4;
using namespace Fixtures;

/** `undo`: songs get the bytes back that they had. */
class tst_CliUndo : public HistoryTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        SKIP_ROWS_WITHOUT_WINDOWS();
        makeFolder("s old");
        for (const char *name : {"s/a.mid", "s/b.mid", "s/c.mid"})
            write(name, wholeSong());
        QVERIFY(writeCatalogue(path("c.db")));
    }

    void givesEveryByteBack_data();
    void givesEveryByteBack();
    void writesARecordForEachSong();
    void choosesTheRun_data();
    void choosesTheRun();
    void leavesAloneWhatItCannotGiveBack_data();
    void leavesAloneWhatItCannotGiveBack();
    void canBeTriedAgainWhenTheCardIsBack();
    void whatWasTakenBackAlreadyIsDone_data();
    void whatWasTakenBackAlreadyIsDone();
    void keepsLinks_data();
    void keepsLinks();
    void givesEveryByteBackAfterKills();

private:
    /** Kills a command after a part of the time that it takes, in milliseconds. */
    void kill(const QString &command, qint64 after) const
    {
        shell(
            "\"$cli\" %1 >/dev/null 2>&1 & pid=$!; sleep %2; kill -9 $pid; wait"_s.arg(command).arg(
                static_cast<double>(after) / 1000, 0, 'f', 3));
    }
};

void tst_CliUndo::givesEveryByteBack_data()
{
    const Table<QString> row;
    row("a longer title", "edit --title 'A title that is much longer than the one before it' s/*");
    row("no title", "edit --title '' s/*.mid s/*.kar s/*.mp3 s/*.mf?");
    row("every field",
        "edit --title T --artist A --genre G --author U --length 9 --bpm 9 --key A s/*");
    row("markers", "edit --add-marker 1:Intro --add-marker 9:Fine s/*.mid s/*.kar s/*.mf?");
    row("the same twice", "edit --title T s/a.mid s/a.mid s/both.mp3 s/both.mp3 s/id3v1.mp3");
    row("three times, longer and shorter",
        "edit --title-from-name s/a.mid s/id3v1.mp3 s/a.mid "
        "s/id3v1.mp3 s/id3v1.mp3 s/a.mid s/FRAMARTI.mf3 s/FRAMARTI.mf3");
    row("a synchronisation", "sync --no-backup --unpublished yes --recursive s");
    row("a synchronisation by another catalogue",
        "sync --no-backup --unpublished yes --catalogue c.db --recursive s");
}

void tst_CliUndo::givesEveryByteBack()
{
    const auto [line] = cells<QString>();
    makeSongs();
    for (const char *song : {"a.mid", "both.mp3", "FRAMARTI.mf3"}) // as the catalogue calls one
        write("s/AZZURRO"_s + QLatin1String(song).mid(QLatin1String(song).size() - 4),
              read("s/"_s + QLatin1String(song)));
    VERIFY_STATUS(shell("chmod 640 s/a.mid s/both.mp3"), 0);
    const auto before = songs();
    const Run changed = cli(line);
    QVERIFY(changed.status == 0 || line.contains("sync"_s));
    const auto after = songs();
    QVERIFY(after != before);

    const QByteArray all = everything();
    VERIFY_STATUS(cli("undo --dry-run"), 0);
    QCOMPARE(everything(), all);
    for (const auto &expected : {before, after, before}) { // an undo that is undone redoes
        const Run run = cli("undo");
        QVERIFY2(run.status == 0 && run.err.isEmpty(), run.err.constData());
        const auto now = songs();
        QCOMPARE(now.keys(), expected.keys());
        for (auto song = now.begin(); song != now.end(); ++song)
            QVERIFY2(*song == expected.value(song.key()), qPrintable(song.key()));
    }
#ifndef TARVEL4_WINDOWS_CLI // which keeps no modes
    QCOMPARE(shell("stat -c %a s/a.mid s/both.mp3").out, QByteArray("640\n640\n"));
#endif
}

void tst_CliUndo::writesARecordForEachSong()
{
    cli("edit --title T s/a.mid s/b.mid s/a.mid");
    write("s/b.mid", "changed by somebody");
    const QByteArray start = R"({"path":")" + path("s/").toUtf8();
    const QByteArray failed = start
        + R"(b.mid","status":"failed","error":"it has been changed since )"
          R"(then, so it stays as it is","code":"changed-meanwhile"})"
          "\n";
    const QByteArray said = "tarvel4soft-cli: " + path("s/b.mid").toUtf8()
        + ": it has been changed since then, so it stays as it is\n";
    QByteArray edited = wholeRecord("a.mid");
    edited.replace("Bella Ciao", "T");

    const Run dry = cli("undo --json --dry-run");
    VERIFY_STATUS(dry, 1);
    QCOMPARE(dry.err, said);
    QVERIFY2(dry.out.contains(failed), dry.out.constData());
    QVERIFY2(dry.out.contains(start + R"(a.mid","status":"would-restore",)" + edited + "}\n"),
             dry.out.constData());
    const Run run = cli("undo --json --quiet");
    VERIFY_STATUS(run, 1);
    QCOMPARE(run.err, said);
    QCOMPARE(run.records().size(), 2);
    QVERIFY2(run.out.contains(failed), run.out.constData());
    QVERIFY2(
        run.out.contains(start + R"(a.mid","status":"restored",)" + wholeRecord("a.mid") + "}\n"),
        run.out.constData());

    const Run text = cli("undo");
    QVERIFY(text.out.startsWith("path: " + path("s/a.mid").toUtf8()
                                + "\nstatus: restored\nname: a.mid\n"));
}

void tst_CliUndo::choosesTheRun_data()
{
    const Table<QString, int, QString, QString> row; // status, songs with old bytes, what is said
    row("the newest", "", 0, "c", "");
    row("an older one", "2", 0, "b", "");
    row("the oldest", "1", 0, "a", "");
    row("a dry run changes none", "--dry-run 1", 0, "", "");
    row("one that there never was", "9", 2, "", "no change has the number 9");
    row("none has a name", "edit", 2, "", "no change has the number edit");
    row("an empty number is not the newest", "''", 2, "", "no change has the number ");
    row("not two", "1 2", 2, "", "undo [OPTION]... [RUN]");
}

void tst_CliUndo::choosesTheRun()
{
    const auto [arguments, status, restored, message] = cells<QString, int, QString, QString>();
    const QString nothing = "tarvel4soft-cli: there is nothing to undo\n"_s;
    for (const char *command : {"undo", "undo --dry-run"})
        QCOMPARE(cli(command), (Run{3, "", nothing.toUtf8()}));
    VERIFY_STATUS(cli("undo 1"), 2);
    for (const char *song : {"a", "b", "c"})
        cli("edit --title T s/%1.mid"_s.arg(QLatin1String(song)));

    const Run run = cli("undo "_s + arguments);
    VERIFY_STATUS(run, status);
    QVERIFY2(run.err.contains(message.toUtf8()) && run.err.isEmpty() == message.isEmpty(),
             run.err.constData());
    QString old;
    for (const char *song : {"a", "b", "c"}) {
        if (read("s/%1.mid"_s.arg(QLatin1String(song))) == wholeSong())
            old += QLatin1String(song);
    }
    QCOMPARE(old, restored);
}

void tst_CliUndo::leavesAloneWhatItCannotGiveBack_data()
{
    const Table<QString, QString, QString, QStringList> row; // undo's arguments, code, statuses
    const QStringList mixed = words("failed restored");
    row("a song that somebody changed", "printf x >>s/a.mid", "", "changed-meanwhile", mixed);
    row("a song that somebody changed without changing its size",
        "printf x | dd of=s/a.mid bs=1 seek=20 conv=notrunc", "", "changed-meanwhile", mixed);
    row("a song that a later run changed", "\"$cli\" edit --title U s/a.mid", "1",
        "changed-meanwhile", mixed);
    row("a song that is gone", "rm s/a.mid", "", "not-found", mixed);
    row("a folder that has its name", "rm s/a.mid; mkdir s/a.mid", "", "not-a-file", mixed);
    row("a FIFO that has its name", "rm s/a.mid; mkfifo s/a.mid", "", "not-a-file", mixed);
    row("an MP3 whose audio somebody changed",
        "printf y | dd of=s/m.mp3 bs=1 seek=9000 conv=notrunc", "", "changed-meanwhile", mixed);
    row("both songs", "rm s/a.mid s/b.mid s/m.mp3", "", "not-found", "failed failed");
}

void tst_CliUndo::leavesAloneWhatItCannotGiveBack()
{
    const auto [setup, arguments, code, statuses] = cells<QString, QString, QString, QStringList>();
    const QString song = setup.contains("m.mp3 bs"_s) ? "s/m.mp3"_s : "s/a.mid"_s;
    write("s/m.mp3", QByteArray::fromHex("FFFB9000") + QByteArray(20000, 'x'));
    VERIFY_STATUS(cli("edit --title T s/b.mid "_s + song), 0);
    shell(setup);
    const QByteArray before = QFileInfo(path(song)).isFile() ? read(song) : QByteArray();
    for (const char *option : {" --dry-run", ""}) {
        const Run run = cli("undo --json "_s + arguments + QLatin1String(option));
        VERIFY_STATUS(run, 1);
        QStringList found = run.texts("status");
        found.replaceInStrings("would-restore"_s, "restored"_s);
        found.sort();
        QCOMPARE(found, statuses);
        QVERIFY(run.texts("code").contains(code));
        QCOMPARE(run.err.count('\n'), statuses.count("failed"_s));
        QVERIFY(run.err.contains("tarvel4soft-cli: " + path(song).toUtf8() + ": "));
        if (!before.isEmpty())
            QCOMPARE(read(song), before);
    }
    QCOMPARE(QFile::exists(path("s/b.mid")) && read("s/b.mid") == wholeSong(),
             statuses.contains("restored"_s));
}

void tst_CliUndo::canBeTriedAgainWhenTheCardIsBack()
{
    cli("edit --title T s/a.mid s/b.mid");
    QVERIFY(QDir().rename(path("s"), path("away")));
    const Run without = cli("undo --json");
    VERIFY_STATUS(without, 1);
    QCOMPARE(without.texts("code"), words("not-found not-found"));
    QCOMPARE(historyOf("what"), QVariantList{"edit"_s});

    QVERIFY(QDir().rename(path("away"), path("s")));
    QVERIFY(QFile::rename(path("s/b.mid"), path("s/away")));
    VERIFY_STATUS(cli("undo"), 1);
    QCOMPARE(read("s/a.mid"), wholeSong());
    QVERIFY(QFile::rename(path("s/away"), path("s/b.mid")));
    // It had come to its end: what it did would be redone.
    QCOMPARE(cli("undo --json --dry-run").texts("path"), QStringList(path("s/a.mid")));
    VERIFY_STATUS(cli("undo 1"), 0);
    QCOMPARE(read("s/b.mid"), wholeSong());
    QCOMPARE(read("s/a.mid"), wholeSong());
}

void tst_CliUndo::whatWasTakenBackAlreadyIsDone_data()
{
    const Table<QString, QString> row; // what comes after the run, its songs' statuses then
    const QString undo = "\"$cli\" undo; "_s;
    row("all of it", undo, "restored restored restored");
    row("one song, while another was not there", "mv s/a.mid x; "_s + undo + "mv x s/a.mid"_s,
        "restored restored restored");
    row("all of it, redone and taken back again", undo + undo + undo, "restored restored restored");
    row("all of it, and one was edited since", undo + "\"$cli\" edit --title U s/a.mid"_s,
        "failed restored restored");
    row("all of it, and somebody else changed one since", undo + "printf x >>s/m.mp3"_s,
        "failed restored restored");
    row("all of it, after a later run", "\"$cli\" edit --title U s/*.mid s/m.mp3; "_s + undo + undo,
        "failed failed failed"); // the second one redoes the later run
}

void tst_CliUndo::whatWasTakenBackAlreadyIsDone()
{
    const auto [after, statuses] = cells<QString, QString>();
    QVERIFY(QFile::remove(path("s/c.mid")));
    write("s/m.mp3", QByteArray::fromHex("FFFB9000") + QByteArray(20000, 'x'));
    cli("edit --title T s/a.mid s/b.mid s/m.mp3");
    shell(after);
    const auto before = songs();
    const int runs = static_cast<int>(history().size());
    for (const char *command : {"undo --json --dry-run 1", "undo --json 1"}) {
        const Run run = cli(command);
        VERIFY_STATUS(run, statuses.contains("failed"_s) ? 1 : 0);
        QStringList found = run.texts("status");
        found.replaceInStrings("would-restore"_s, "restored"_s);
        found.sort();
        QCOMPARE(found.join(QLatin1Char(' ')), statuses);
    }
    const bool isWritten = after.contains("mv"_s);
    QCOMPARE(songs() != before, isWritten);
    QCOMPARE(history().size(), runs + (isWritten ? 1 : 0));
    QCOMPARE(read("s/b.mid") == wholeSong(), statuses.contains("restored"_s));
}

void tst_CliUndo::keepsLinks_data()
{
    const Table<QString> row;
    row("a symbolic link to a song", "s/link.mid");
    row("a song and a symbolic link to it", "s/a.mid s/link.mid");
    row("a hard link", "s/hard.mid");
    row("a song, both links, and the song again", "s/a.mid s/hard.mid s/link.mid s/a.mid");
    row("a symbolic link to an MP3", "s/link.mp3");
    row("an MP3 and a symbolic link to it", "s/link.mp3 s/m.mp3");
}

void tst_CliUndo::keepsLinks()
{
    const auto [paths] = cells<QString>();
    const QByteArray mp3 = QByteArray::fromHex("FFFB9000") + QByteArray(20000, 'x');
    write("s/m.mp3", mp3);
    QCOMPARE(shell("cd s; ln -s a.mid link.mid; ln a.mid hard.mid; ln -s m.mp3 link.mp3").status,
             0);
    const QString kinds =
        "find s -name '*.mid' -printf '%f %y %n %l\\n' -o -name '*.mp3' -printf '%f %y %n %l\\n' | sort"_s;
    const QByteArray before = shell(kinds).out;
    VERIFY_STATUS(cli("edit --title T "_s + paths), 0);
    QVERIFY(read("s/a.mid") != wholeSong() || read("s/m.mp3") != mp3);
    const Run dry = cli("undo --json --dry-run");
    VERIFY_STATUS(dry, 0);
    const Run run = cli("undo --json");
    VERIFY_STATUS(run, 0);
    QSet<QString> named; // a symbolic link counts as the file that it leads to
    for (const QString &name : paths.split(QLatin1Char(' ')))
        named += QFileInfo(path(name)).canonicalFilePath();
    QCOMPARE(run.records().size(), named.size());
    QCOMPARE(dry.texts("path"), run.texts("path"));
    QCOMPARE(read("s/a.mid"), wholeSong());
    QCOMPARE(read("s/hard.mid"), wholeSong());
    QCOMPARE(read("s/m.mp3"), mp3);
    QCOMPARE(shell(kinds).out, before);
}

void tst_CliUndo::givesEveryByteBackAfterKills()
{
    makeSongs();
#ifdef TARVEL4_WINDOWS_CLI // each call of the system's takes longer under wine
    constexpr int count = 150;
#else
    constexpr int count = 500;
#endif
    for (int i = 0; i < count; ++i) {
        const QByteArray song = midi(meta(3, QByteArray("Song ") + QByteArray::number(i))
                                     + meta(1, QByteArray(i % 120, 'x')));
        const QByteArray mp3 = QByteArray::fromHex("FFFB9000") + QByteArray(1000 + i, 'x');
        QDir().mkpath(path("s/%1"_s.arg(i)));
        write("s/%1/AZZURRO.%2"_s.arg(i).arg(i % 3 == 0 ? "mp3"_s : "mid"_s),
              i % 3 == 0 ? mp3 : song);
    }
    const QString sync =
        "sync --quiet --no-backup --unpublished yes --catalogue c.db --recursive s"_s;
    const auto before = songs();
    QElapsedTimer timer;
    timer.start();
    cli(sync);
    const qint64 whole = timer.elapsed();
    const auto after = songs();
    VERIFY_STATUS(cli("undo"), 0);
    QVERIFY(songs() == before);

    int undone = 0;
    for (const int part : {2, 4, 6, 8}) {
        cli("history clear");
        kill(sync, whole * part / 10);
        const auto killed = songs();
        const Run run = cli("undo"); // puts in order first what the kill left half-done
        QVERIFY(run.status == 0 || run.status == 3);
        QVERIFY(songs() == before);
        undone += run.status == 0 && killed != before && killed != after ? 1 : 0;
    }
    for (const int part : {2, 5, 8}) {
        cli(sync);
        kill("undo"_s, whole * part / 10);
        // Goes on with the killed one: the two are one run, which is taken back whole.
        if (songs() != before)
            VERIFY_STATUS(cli("undo"), 0);
        QVERIFY(songs() == before);
        VERIFY_STATUS(cli("undo"), 0);
        QVERIFY(songs() == after);
        VERIFY_STATUS(cli("undo"), 0);
        QVERIFY(songs() == before);
    }
    if (undone == 0)
        QWARN("no run was killed between two of its batches");
}

QTEST_GUILESS_MAIN(tst_CliUndo)
#include "tst_cliundo.moc"
