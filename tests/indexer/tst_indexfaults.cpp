#include "tests/indexer/memoryfixture.h"
#include "tests/storage/failingdisk.h"

#include <QProcess>

using namespace tarvel4;

using namespace SongBytes;

/** What a broken old index, a run that is cut short or a failing card do to an update. */
class tst_IndexFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void brokenIndexes_data();
    void brokenIndexes();
    void lyingIndexesAreMadeGood_data();
    void lyingIndexesAreMadeGood();
    void anUpdateCutShortLeavesTheMemoryUnprepared_data();
    void anUpdateCutShortLeavesTheMemoryUnprepared();
    void aFailingStepLeavesNoIndex_data();
    void aFailingStepLeavesNoIndex();
    void anOldIndexThatStaysIsAFailure();
    void aStoppedRunWritesNothing_data();
    void aStoppedRunWritesNothing();
    void onlyRegularFilesAreOpened_data();
    void onlyRegularFilesAreOpened();
    void songsThatAPowerCutLeftAsideComeBack_data();
    void songsThatAPowerCutLeftAsideComeBack();
};

void tst_IndexFaults::brokenIndexes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("detail");
    const QString path = QStringLiteral("index.id3");
    QTest::newRow("a path record shorter than 270 bytes")
        << path << 3 * 270 - 1 << QStringLiteral("index.id3: l'ultimo record non è intero");
    for (const char *name : {"index.id3", "title.id3", "artist.id3"}) {
        QTest::addRow("%s claims to be huge", name)
            << QString::fromLatin1(name) << 2000000000
            << QString::fromLatin1(name) + QStringLiteral(": sono ammessi al massimo");
    }
}

/** An old index that can't be loaded: false, and nothing is changed. */
void tst_IndexFaults::brokenIndexes()
{
    QFETCH(QString, name);
    QFETCH(int, size);
    QFETCH(QString, detail);
    MemoryFixture memory;
    memory.prepare();
    QVERIFY(QFile::resize(memory.path(QLatin1Char('/') + name), size));
    memory.putMidi(QStringLiteral("/new.mid"), "new");
    const QStringList before = names(memory.root());
    FailingDisk disk;
    Index index(nullptr, disk);
    QVERIFY(!index.update(memory.root()));
    QVERIFY(index.failed());
    QVERIFY(!index.changed());
    QCOMPARE(index.outcome().codeName(), QStringLiteral("damaged-index"));
    QCOMPARE(index.outcome().path, memory.path(QLatin1Char('/') + name));
    QVERIFY2(index.outcome().detail.startsWith(detail), qPrintable(index.outcome().detail));
    QCOMPARE(disk.operations, QStringList());
    QCOMPARE(names(memory.root()), before);
    QCOMPARE(QFileInfo(memory.path(QLatin1Char('/') + name)).size(), static_cast<qint64>(size));
    QVERIFY(index.rebuild(memory.root()));
}

void tst_IndexFaults::lyingIndexesAreMadeGood_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("at");
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char *what, const char *name, int at, const QByteArray &bytes) {
        QTest::newRow(what) << QString::fromLatin1(name) << at << bytes;
    };
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
void tst_IndexFaults::lyingIndexesAreMadeGood()
{
    QFETCH(QString, name);
    QFETCH(int, at);
    QFETCH(QByteArray, bytes);
    MemoryFixture memory;
    memory.prepare();
    memory.patch(name.toLatin1().constData(), at, bytes);
    memory.putMidi(QStringLiteral("/new.mid"), "new");
    QVERIFY(Index().update(memory.root()));
    const QStringList problems = memory.problems();
    QCOMPARE(problems, QStringList());
}

/** The counts are gone while anything is written, and are the last file to come. */
void tst_IndexFaults::anUpdateCutShortLeavesTheMemoryUnprepared_data()
{
    QTest::addColumn<bool>("update");
    QTest::newRow("an update") << true;
    QTest::newRow("a rebuild") << false;
}

void tst_IndexFaults::anUpdateCutShortLeavesTheMemoryUnprepared()
{
    QFETCH(bool, update);
    MemoryFixture memory;
    memory.prepare();
    memory.putMidi(QStringLiteral("/new.mid"), "new");
    FailingDisk disk;
    int written = 0;
    disk.before = [&](const QString &operation, int) {
        if (operation != QLatin1String("write") && operation != QLatin1String("rename"))
            return;
        ++written;
        QVERIFY2(!Index::isPrepared(memory.root()), qPrintable(QString::number(written)));
    };
    Index index(nullptr, disk);
    QVERIFY(update ? index.update(memory.root()) : index.rebuild(memory.root()));
    QVERIFY(written >= 8);
    QVERIFY(disk.operations.endsWith(QStringLiteral("syncAll")));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_IndexFaults::aFailingStepLeavesNoIndex_data()
{
    QTest::addColumn<bool>("update");
    QTest::addColumn<bool>("staysBroken");
    QTest::newRow("an update, one step fails") << true << false;
    QTest::newRow("an update, the card dies") << true << true;
    QTest::newRow("a rebuild, one step fails") << false << false;
    QTest::newRow("a rebuild, the card dies") << false << true;
}

/** Each operation of a run fails in turn: the result is false, and the memory true or visibly not
 * prepared. */
void tst_IndexFaults::aFailingStepLeavesNoIndex()
{
    QFETCH(bool, update);
    QFETCH(bool, staysBroken);
    int steps = 1;
    for (int failAt = 1; failAt <= steps; ++failAt) {
        MemoryFixture memory;
        memory.prepare();
        memory.putMidi(QStringLiteral("/new.mid"), "new");
        FailingDisk disk;
        disk.failAt = failAt;
        disk.staysBroken = staysBroken;
        disk.cause = Outcome::Code::NoRoom;
        Index index(nullptr, disk);
        const bool succeeded = update ? index.update(memory.root()) : index.rebuild(memory.root());
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
        // An index that could not even be removed is still the old one, whole, and its songs are
        // there.
        if (Index::isPrepared(memory.root())) {
            QStringList problems = memory.problems();
            problems.removeAll(
                problems.value(problems.size() - 1).contains(QLatin1String("/new.mid"))
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

void tst_IndexFaults::anOldIndexThatStaysIsAFailure()
{
    MemoryFixture memory;
    memory.prepare();
    QVERIFY(QFile::remove(memory.path(QStringLiteral("/title.id3"))));
    QVERIFY(QDir(memory.root()).mkdir(QStringLiteral("title.id3"))); // seven names exist, one can't
                                                                     // be removed as a file
    memory.putMidi(QStringLiteral("/new.mid"), "new");
    Index index;
    QVERIFY(!index.rebuild(memory.root()));
    QVERIFY(index.failed());
    QVERIFY(!index.deleteIndex(memory.root()));
    QCOMPARE(index.outcome().path, memory.path(QStringLiteral("/title.id3")));
    QCOMPARE(memory.indexFiles(), QStringList()); // but that one all are gone
}

void tst_IndexFaults::aStoppedRunWritesNothing_data()
{
    QTest::addColumn<bool>("update");
    QTest::addColumn<int>("stopAt"); // the n-th time that it is asked
    QTest::addColumn<bool>("staysPrepared");
    QTest::newRow("an update, before the first song") << true << 1 << true;
    QTest::newRow("an update, before the last song") << true << 4 << true;
    QTest::newRow("a rebuild, before the old index is removed") << false << 1 << true;
    QTest::newRow("a rebuild, before the first song") << false << 2 << false;
    QTest::newRow("a rebuild, before the last song") << false << 5 << false;
}

void tst_IndexFaults::aStoppedRunWritesNothing()
{
    QFETCH(bool, update);
    QFETCH(int, stopAt);
    QFETCH(bool, staysPrepared);
    MemoryFixture memory;
    memory.prepare();
    const QByteArray paths = memory.read("index.id3");
    memory.putMidi(QStringLiteral("/new.mid"), "new");
    FailingDisk disk;
    Index index(nullptr, disk);
    int asked = 0;
    index.setStopWhen([&] { return ++asked >= stopAt; });
    QVERIFY(!(update ? index.update(memory.root()) : index.rebuild(memory.root())));
    QCOMPARE(asked, stopAt);
    QVERIFY(index.failed() && !index.changed() && index.outcome());
    QVERIFY(!disk.operations.contains(QStringLiteral("write")));
    QCOMPARE(memory.indexFiles().size(), staysPrepared ? 7 : 0);
    if (staysPrepared)
        QCOMPARE(memory.read("index.id3"), paths);
}

void tst_IndexFaults::onlyRegularFilesAreOpened_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isReadFirst");
    const QStringList read{QStringLiteral("index.id3"), QStringLiteral("title.id3"),
                           QStringLiteral("artist.id3")};
    for (const QString &name :
         MemoryFixture::preparedFiles() + QStringList{QStringLiteral(".fsinfos.new")})
        QTest::addRow("%s", qPrintable(name)) << name << read.contains(name);
}

/** What a link leads to stays as it is. With a FIFO in the place of a file that is to be read the
 * index is left as it is; other files are written anew. */
void tst_IndexFaults::onlyRegularFilesAreOpened()
{
#ifndef Q_OS_UNIX
    QSKIP("there are no FIFOs here");
#endif
    QFETCH(QString, name);
    QFETCH(bool, isReadFirst);
    MemoryFixture memory;
    memory.prepare();
    memory.putMidi(QStringLiteral("/new.mid"), "new");
    const QString path = memory.path(QLatin1Char('/') + name);
    const QTemporaryDir elsewhere;
    const QString outside = elsewhere.filePath(QStringLiteral("file"));
    const QByteArray bytes = memory.read(name.toLatin1());
    write(outside, bytes);
    QFile::remove(path);
    QVERIFY(QFile::link(outside, path));
    QVERIFY(Index().update(memory.root()));
    QCOMPARE(SongBytes::read(outside), bytes);
    QVERIFY(!QFileInfo(path).isSymLink());
    QCOMPARE(memory.problems(), QStringList());

    QFile::remove(path);
    memory.putMidi(QStringLiteral("/newer.mid"), "newer");
    QCOMPARE(QProcess::execute(QStringLiteral("mkfifo"), {path}), 0);
    QVERIFY(!memory.problems().isEmpty());
    QCOMPARE(Index().writeSongList(memory.root(), memory.path(QStringLiteral("/l.csv")), 0),
             isReadFirst ? 0 : 1);
    Index index;
    QCOMPARE(index.update(memory.root()), !isReadFirst);
    QCOMPARE(index.outcome().codeName(), isReadFirst ? QStringLiteral("not-a-file") : QString());
    QCOMPARE(index.outcome().path, isReadFirst ? path : QString());
    QVERIFY(!isReadFirst || Index().rebuild(memory.root()));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_IndexFaults::songsThatAPowerCutLeftAsideComeBack_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("update");
    for (const bool update : {true, false}) {
        const char *job = update ? "update" : "rebuild";
        QTest::addRow("%s, at the root", job) << QStringLiteral("/") << update;
        QTest::addRow("%s, in a folder", job) << QStringLiteral("/Pop/x/") << update;
    }
}

/** One song is gone but for its old file, another has both: the memory ends with both songs. */
void tst_IndexFaults::songsThatAPowerCutLeftAsideComeBack()
{
    QFETCH(QString, folder);
    QFETCH(bool, update);
    MemoryFixture memory;
    memory.prepare();
    memory.putMidi(folder + QStringLiteral("gone.mid.tarvel4.bak"), "gone");
    memory.putMidi(folder + QStringLiteral("both.mid.tarvel4.bak"), "old");
    memory.putMidi(folder + QStringLiteral("both.mid"), "new");
    Index index;
    QStringList recovered;
    index.setOnRecovered(
        [&](const QString &path, Recovery::Result, const Outcome &) { recovered += QFileInfo(path).fileName(); });
    QVERIFY(update ? index.update(memory.root()) : index.rebuild(memory.root()));
    QCOMPARE(recovered.size(), 2);
    QVERIFY(recovered.contains(QStringLiteral("gone.mid")));
    QCOMPARE(index.found(), 5);
    QVERIFY(memory.titles().contains(QStringLiteral("GONE")));
    QVERIFY(memory.titles().contains(QStringLiteral("NEW")));
    QCOMPARE(memory.problems(), QStringList());
    const QStringList left = QDir(memory.path(folder)).entryList({QStringLiteral("*.bak")});
    QCOMPARE(left, QStringList());
}

QTEST_GUILESS_MAIN(tst_IndexFaults)
#include "tst_indexfaults.moc"
