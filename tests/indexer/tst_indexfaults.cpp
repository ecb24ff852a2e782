#include "tests/indexer/memoryfixture.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/unixfile.h"

using namespace tarvel4;
using namespace SongBytes;

namespace {

bool run(Index &index, const MemoryFixture &memory, bool update)
{
    return update ? index.update(memory.root()) : index.rebuild(memory.root());
}

} // namespace

/** What a broken old index, a run that is cut short or a failing card do to an update. */
class tst_IndexFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void brokenIndexes_data()
    {
        const Table<QString, int, QString> row;
        row("a path record shorter than 270 bytes", "index.id3", 3 * 270 - 1,
            "index.id3: l'ultimo record non è intero");
        for (const QString &name : words("index.id3 title.id3 artist.id3"))
            row(qPrintable(name + " claims to be huge"_s), name, 2000000000,
                name + ": sono ammessi al massimo"_s);
    }
    /** An old index that can't be loaded: false, and nothing is changed. */
    void brokenIndexes()
    {
        const auto [name, size, detail] = cells<QString, int, QString>();
        PreparedMemory memory;
        QVERIFY(QFile::resize(memory.file(name), size));
        memory.putNewSong();
        const QStringList before = names(memory.root());
        FailingDisk disk;
        Index index(nullptr, disk);
        QVERIFY(!index.update(memory.root()));
        QVERIFY(index.failed() && !index.changed());
        QCOMPARE(index.outcome().codeName(), "damaged-index"_s);
        QCOMPARE(index.outcome().path, memory.file(name));
        QVERIFY2(index.outcome().detail.startsWith(detail), qPrintable(index.outcome().detail));
        QCOMPARE(disk.operations, QStringList());
        QCOMPARE(names(memory.root()), before);
        QCOMPARE(QFileInfo(memory.file(name)).size(), static_cast<qint64>(size));
        QVERIFY(index.rebuild(memory.root()));
    }

    void lyingIndexesAreMadeGood_data()
    {
        const Table<QString, int, QByteArray> row;
        row("a path with \"..\"", "index.id3", 4, QByteArray("/../a.mid\0", 10));
        row("a path that does not begin with \"/\"", "index.id3", 4, "xa");
        row("a path without an end", "index.id3", 4, QByteArray(252, '/'));
        row("an empty path", "index.id3", 4, QByteArray(2, '\0'));
        row("a negative number", "index.id3", 0, hex("ffffffff"));
        row("a number beyond the last record", "index.id3", 0, hex("7fffffff"));
        row("a number that stands twice", "index.id3", 3, hex("01"));
        row("a title's number fits no record", "title.id3", 0, hex("00ffffff"));
        row("an artist's number fits no record", "artist.id3", 64, hex("80000000"));
        row("an empty title", "title.id3", 4, QByteArray(58, '\0'));
        row("bytes behind the last title", "title.id3", 3 * 64, "x");
        row("bytes behind the last artist", "artist.id3", 5 * 64, QByteArray(63, '\0'));
        row("a title in lower case", "title.id3", 4, "alfa");
        row("an artist in lower case", "artist.id3", 4, "ada");
        row("a kind that no song has", "title.id3", 63, hex("0f"));
        row("a group that is none", "artist.id3", 62, hex("0000"));
        row("a count that lies", "artist.id3", 2, hex("7777"));
        row("digits that are no digits", "index.id3", 256, "x/:-+e.01  \t\n\"");
    }
    /** What an index holds misplaces nothing: the next update that writes leaves a true memory. */
    void lyingIndexesAreMadeGood()
    {
        const auto [name, at, bytes] = cells<QString, int, QByteArray>();
        PreparedMemory memory;
        memory.patch(name.toLatin1().constData(), at, bytes);
        memory.putNewSong();
        QVERIFY(Index().update(memory.root()));
        QCOMPARE(memory.problems(), QStringList());
    }

    /** The counts are gone while anything is written, and are the last file to come. */
    void anUpdateCutShortLeavesTheMemoryUnprepared_data()
    {
        const Table<bool> row;
        row("an update", true);
        row("a rebuild", false);
    }
    void anUpdateCutShortLeavesTheMemoryUnprepared()
    {
        const auto [update] = cells<bool>();
        PreparedMemory memory;
        memory.putNewSong();
        FailingDisk disk;
        int written = 0;
        disk.before = [&](const QString &operation, int) {
            if (operation != "write"_s && operation != "rename"_s)
                return;
            ++written;
            QVERIFY2(!Index::isPrepared(memory.root()), qPrintable(QString::number(written)));
        };
        Index index(nullptr, disk);
        QVERIFY(run(index, memory, update));
        QVERIFY(written >= 8);
        QVERIFY(disk.operations.endsWith("syncAll"_s));
        QCOMPARE(memory.problems(), QStringList());
    }

    void aFailingStepLeavesNoIndex_data()
    {
        const Table<bool, bool> row;
        row("an update, one step fails", true, false);
        row("an update, the card dies", true, true);
        row("a rebuild, one step fails", false, false);
        row("a rebuild, the card dies", false, true);
    }
    /** Each operation of a run fails in turn: the result is false, and the memory true or visibly
     * not prepared. */
    void aFailingStepLeavesNoIndex()
    {
        const auto [update, staysBroken] = cells<bool, bool>();
        int steps = 1;
        for (int failAt = 1; failAt <= steps; ++failAt) {
            PreparedMemory memory;
            memory.putNewSong();
            FailingDisk disk;
            disk.failAt = failAt;
            disk.staysBroken = staysBroken;
            disk.cause = Outcome::Code::NoRoom;
            Index index(nullptr, disk);
            const bool succeeded = run(index, memory, update);
            if (failAt == 1)
                QVERIFY(!disk.operations.isEmpty());
            steps = qMax(steps, qMin(static_cast<int>(disk.operations.size()), 40));
            if (disk.operations.size() < failAt)
                break;
            const QByteArray step =
                QByteArray::number(failAt) + ' ' + disk.operations.value(failAt - 1).toLatin1();
            QVERIFY2(!succeeded, step.constData());
            QVERIFY2(index.failed() && index.outcome() == disk.cause, step.constData());
            QVERIFY2(index.outcome().path.startsWith(memory.root()), step.constData());
            // An index that could not even be removed is still the old one, whole, and its songs
            // are there.
            if (Index::isPrepared(memory.root())) {
                QStringList problems = memory.problems();
                problems.removeAll(problems.value(problems.size() - 1).contains("/new.mid"_s)
                                       ? problems.last()
                                       : QString());
                QVERIFY2(problems.isEmpty(),
                         (step + ' ' + problems.join(QLatin1Char('|')).toLocal8Bit()).constData());
            }
            QVERIFY2(Index().update(memory.root()), step.constData());
            QVERIFY2(memory.problems().isEmpty(), step.constData());
        }
        QVERIFY(steps > 8);
    }

    void anOldIndexThatStaysIsAFailure()
    {
        PreparedMemory memory;
        QVERIFY(QFile::remove(memory.file("title.id3")));
        // Seven names exist, one of which can't be removed as a file.
        QVERIFY(QDir(memory.root()).mkdir("title.id3"_s));
        memory.putNewSong();
        Index index;
        QVERIFY(!index.rebuild(memory.root()));
        QVERIFY(index.failed());
        QVERIFY(!index.deleteIndex(memory.root()));
        QCOMPARE(index.outcome().path, memory.file("title.id3"));
        QCOMPARE(index.outcome().codeName(), "not-a-file"_s);
        QVERIFY(!index.outcome().systemWords().isEmpty());
        QCOMPARE(memory.indexFiles(), QStringList()); // but that one all are gone
    }

    void aStoppedRunWritesNothing_data()
    {
        const Table<bool, int, bool> row; // the number: it stops when asked so often
        row("an update, before the first song", true, 1, true);
        row("an update, before the last song", true, 4, true);
        row("a rebuild, before the old index is removed", false, 1, true);
        row("a rebuild, before the first song", false, 2, false);
        row("a rebuild, before the last song", false, 5, false);
    }
    void aStoppedRunWritesNothing()
    {
        const auto [update, stops, staysPrepared] = cells<bool, int, bool>();
        const int stopAt = stops;
        PreparedMemory memory;
        const QByteArray paths = memory.read("index.id3");
        memory.putNewSong();
        FailingDisk disk;
        Index index(nullptr, disk);
        int asked = 0;
        index.setStopWhen([&] { return ++asked >= stopAt; });
        QVERIFY(!(run(index, memory, update)));
        QCOMPARE(asked, stopAt);
        QVERIFY(index.failed() && !index.changed() && index.outcome());
        QVERIFY(!disk.operations.contains("write"_s));
        QCOMPARE(memory.indexFiles().size(), staysPrepared ? 7 : 0);
        if (staysPrepared)
            QCOMPARE(memory.read("index.id3"), paths);
    }

    void songsThatCantBeReadAreIndexedByTheirNames_data()
    {
        const Table<QString> row; // a file of the system that no user may open, or that fails
        row("a song that can't be opened", "/proc/sys/vm/compact_memory");
        row("a song that can't be read", "/proc/self/mem");
    }
    void songsThatCantBeReadAreIndexedByTheirNames()
    {
        const auto [unreadable] = cells<QString>();
        PreparedMemory memory;
        QFile song(memory.file("bad.mid"));
        if (!QFileInfo(unreadable).isFile() || !QFile::link(unreadable, song.fileName())
            || (song.open(QIODevice::ReadOnly) && !song.read(1).isEmpty()))
            QSKIP("there is no such file here");
        QVERIFY(Index().update(memory.root()));
        const int at = static_cast<int>(64 * memory.titles().indexOf("BAD"_s));
        QVERIFY(at >= 0);
        QCOMPARE(memory.hexOf("title.id3", at + 62, 2), "7800"_s); // tempo 120, kind 0, no markers
        QVERIFY(memory.read("artist.id3").contains("<UNKNOWN>"));
    }

    void onlyRegularFilesAreOpened_data()
    {
        Table<QString, bool>();
        const QStringList read{"index.id3"_s, "title.id3"_s, "artist.id3"_s};
        for (const QString &name : MemoryFixture::preparedFiles() + QStringList(".fsinfos.new"_s))
            QTest::addRow("%s", qPrintable(name)) << name << read.contains(name);
    }
    /** What a link leads to stays as it is. With a FIFO in the place of a file that is to be read
     * the index is left as it is; other files are written anew. */
    void onlyRegularFilesAreOpened()
    {
#ifndef Q_OS_UNIX
        QSKIP("there are no FIFOs here");
#endif
        const auto [name, isReadFirst] = cells<QString, bool>();
        PreparedMemory memory;
        memory.putNewSong();
        const QString path = memory.file(name);
        const QTemporaryDir elsewhere;
        const QString outside = elsewhere.filePath("file"_s);
        const QByteArray bytes = memory.read(name.toLatin1());
        write(outside, bytes);
        QFile::remove(path);
        QVERIFY(QFile::link(outside, path));
        QVERIFY(Index().update(memory.root()));
        QCOMPARE(SongBytes::read(outside), bytes);
        QVERIFY(!QFileInfo(path).isSymLink());
        QCOMPARE(memory.problems(), QStringList());

        QFile::remove(path);
        memory.putMidi("/newer.mid"_s, "newer");
        QVERIFY(UnixFile::makeFifo(path));
        QVERIFY(!memory.problems().isEmpty());
        QCOMPARE(Index().writeSongList(memory.root(), memory.file("l.csv"), 0),
                 isReadFirst ? 0 : 1);
        Index index;
        QCOMPARE(index.update(memory.root()), !isReadFirst);
        QCOMPARE(index.outcome().codeName(), isReadFirst ? "not-a-file"_s : QString());
        QCOMPARE(index.outcome().path, isReadFirst ? path : QString());
        QVERIFY(!isReadFirst || Index().rebuild(memory.root()));
        QCOMPARE(memory.problems(), QStringList());
    }

    void songsThatAPowerCutLeftAsideComeBack_data()
    {
        Table<QString, bool>();
        for (const bool update : {true, false}) {
            const char *job = update ? "update" : "rebuild";
            QTest::addRow("%s, at the root", job) << "/"_s << update;
            QTest::addRow("%s, in a folder", job) << "/Pop/x/"_s << update;
        }
    }
    /** One song is gone but for its old file, another has both: the memory ends with both songs. */
    void songsThatAPowerCutLeftAsideComeBack()
    {
        const auto [folder, update] = cells<QString, bool>();
        PreparedMemory memory;
        memory.putMidi(folder + "gone.mid.tarvel4.bak"_s, "gone");
        memory.putMidi(folder + "both.mid.tarvel4.bak"_s, "old");
        memory.putMidi(folder + "both.mid"_s, "new");
        Index index;
        QStringList recovered;
        index.setOnRecovered([&](const QString &path, Recovery::Result, const Outcome &) {
            recovered += QFileInfo(path).fileName();
        });
        QVERIFY(run(index, memory, update));
        QCOMPARE(recovered.size(), 2);
        QVERIFY(recovered.contains("gone.mid"_s));
        QCOMPARE(index.found(), 5);
        QVERIFY(memory.titles().contains(QStringLiteral("GONE")));
        QVERIFY(memory.titles().contains("NEW"_s));
        QCOMPARE(memory.problems(), QStringList());
        const QStringList left = QDir(memory.path(folder)).entryList({"*.bak"_s});
        QCOMPARE(left, QStringList());
    }
};

QTEST_GUILESS_MAIN(tst_IndexFaults)
#include "tst_indexfaults.moc"
