#include "tests/indexer/memoryfixture.h"

#include "tests/songs/failingdisk.h"

#include <QSignalSpy>

using namespace SongBytes;

/** An update: what is kept, read again, dropped and renumbered, and what a broken index or card
 * does to it. */
class tst_IndexUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingChangedWritesNothing();
    void aMemoryThatIsNotPreparedIsRebuilt_data();
    void aMemoryThatIsNotPreparedIsRebuilt();
    void anIndexWithoutEntriesIsRebuilt();
    void aDeletedSongLosesItsRecord();
    void newSongsGetTheNextNumbers();
    void changedSongsAreReadAgain_data();
    void changedSongsAreReadAgain();
    void namesAreMatched_data();
    void namesAreMatched();
    void anEntryIsMatchedByOneFileOnly();
    void aSongTakesTheEntryOfItsOwnSpelling();
    void updateWithoutSongsWritesNothing();
    void brokenIndexes_data();
    void brokenIndexes();
    void lyingIndexesAreMadeGood_data();
    void lyingIndexesAreMadeGood();
    void anUpdateCutShortLeavesTheMemoryUnprepared_data();
    void anUpdateCutShortLeavesTheMemoryUnprepared();
    void aFailingStepLeavesNoIndex_data();
    void aFailingStepLeavesNoIndex();
    void anOldIndexThatStaysIsAFailure();

private:
    /** A memory with the songs /a.mid "ALFA", /b.mid "BETA", /c.mid "GAMMA", prepared. */
    static void prepare(MemoryFixture &memory)
    {
        memory.putMidi(QStringLiteral("/a.mid"), "Alfa", "Ada");
        memory.putMidi(QStringLiteral("/b.mid"), "Beta", "Bice");
        memory.putMidi(QStringLiteral("/c.mid"), "Gamma", "Ada");
        QVERIFY(Index().rebuild(memory.root()));
    }

    static void patch(const MemoryFixture &memory, const char *name, int at,
                      const QByteArray &bytes)
    {
        const QByteArray old = memory.read(name);
        write(memory.root() + u'/' + QLatin1String(name),
              QByteArray(old).replace(at, bytes.size(), bytes));
    }

    static QMap<QString, QByteArray> snapshot(const MemoryFixture &memory)
    {
        QMap<QString, QByteArray> files;
        for (const QString &name : memory.indexFiles())
            files.insert(name, memory.read(name.toLatin1()));
        return files;
    }
};

void tst_IndexUpdate::nothingChangedWritesNothing()
{
    MemoryFixture memory;
    prepare(memory);
    const auto before = snapshot(memory);
    FailingDisk disk;
    Index index(nullptr, disk);
    QVERIFY(index.update(memory.root()));
    QCOMPARE(index.found(), 3);
    QVERIFY(!index.changed());
    QVERIFY(!index.failed());
    QCOMPARE(disk.operations, QStringList());
    QVERIFY(snapshot(memory) == before);
}

void tst_IndexUpdate::aMemoryThatIsNotPreparedIsRebuilt_data()
{
    QTest::addColumn<QString>("missing");
    for (const char *name : {"index.id3", "ordfile.id3", "title.id3", "artist.id3", "atitle.id3",
                             "aartist.id3", "fsinfos.id3"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_IndexUpdate::aMemoryThatIsNotPreparedIsRebuilt()
{
    QFETCH(QString, missing);
    MemoryFixture memory;
    prepare(memory);
    patch(memory, "title.id3", 4, "WRONG");
    QVERIFY(QFile::remove(memory.path(u'/' + missing)));
    QVERIFY(!Index::isPrepared(memory.root()));
    Index index;
    QVERIFY(index.update(memory.root()));
    QVERIFY(index.changed());
    QCOMPARE(memory.titles().join(u','), QStringLiteral("ALFA,BETA,GAMMA"));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_IndexUpdate::anIndexWithoutEntriesIsRebuilt()
{
    MemoryFixture memory;
    prepare(memory);
    for (const QString &name : memory.indexFiles())
        write(memory.path(u'/' + name), QByteArray());
    QVERIFY(Index().update(memory.root()));
    QCOMPARE(memory.problems(), QStringList());
}

/** The songs left are not read again: a title that only the index holds stays. */
void tst_IndexUpdate::aDeletedSongLosesItsRecord()
{
    MemoryFixture memory;
    prepare(memory);
    patch(memory, "title.id3", 2 * 64 + 4, "GONG!");
    QVERIFY(QFile::remove(memory.path(QStringLiteral("/b.mid"))));
    Index index;
    QVERIFY(index.update(memory.root()));
    QCOMPARE(memory.paths().join(u','), QStringLiteral("/a.mid,/c.mid"));
    QCOMPARE(memory.read("index.id3").mid(270, 4).toHex(), QByteArray("00000001"));
    QCOMPARE(memory.titles().join(u','), QStringLiteral("ALFA,GONG!"));
    QCOMPARE(memory.read("title.id3").mid(64, 4).toHex(), QByteArray("00000001"));
    QCOMPARE(memory.record("artist.id3", 64, 0, 4, 58), QByteArray("ADA"));
    QCOMPARE(memory.read("fsinfos.id3").left(4).toHex(), QByteArray("02000100"));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_IndexUpdate::newSongsGetTheNextNumbers()
{
    MemoryFixture memory;
    prepare(memory);
    memory.putMidi(QStringLiteral("/0.mid"), "Zero");
    memory.putMidi(QStringLiteral("/z/1.kar"), "Uno");
    Index index;
    QVERIFY(index.update(memory.root()));
    QCOMPARE(index.found(), 5);
    QCOMPARE(memory.paths().join(u','), QStringLiteral("/a.mid,/b.mid,/c.mid,/0.mid,/z/1.kar"));
    QCOMPARE(memory.read("ordfile.id3").toHex(), QByteArray("03000000010002000400"));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_IndexUpdate::changedSongsAreReadAgain_data()
{
    QTest::addColumn<QDateTime>("modified");
    QTest::addColumn<QString>("title");
    QTest::newRow("a new date") << QDateTime(QDate(2010, 3, 5), QTime(7, 8, 9))
                                << QStringLiteral("NEW");
    QTest::newRow("a new time") << QDateTime(QDate(2009, 3, 5), QTime(7, 8, 10))
                                << QStringLiteral("NEW");
    QTest::newRow("an earlier date")
        << QDateTime(QDate(1999, 1, 1), QTime(0, 0)) << QStringLiteral("NEW");
    QTest::newRow("the same date and time: not read")
        << QDateTime(QDate(2009, 3, 5), QTime(7, 8, 9)) << QStringLiteral("BETA");
}

void tst_IndexUpdate::changedSongsAreReadAgain()
{
    QFETCH(QDateTime, modified);
    QFETCH(QString, title);
    MemoryFixture memory;
    prepare(memory);
    memory.put(QStringLiteral("/b.mid"), midi0(meta(3, "New")), modified);
    Index index;
    QVERIFY(index.update(memory.root()));
    QCOMPARE(index.changed(), title == QLatin1String("NEW"));
    QVERIFY(memory.titles().contains(title));
    QCOMPARE(memory.read("index.id3").mid(270 + 256, 14),
             modified.toString(QStringLiteral("yyyyMMddhhmmss")).toLatin1());
    QCOMPARE(memory.problems(), QStringList());
}

void tst_IndexUpdate::namesAreMatched_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("title"); // of the song afterwards: kept from the index, or read
    QTest::addColumn<bool>("changed");
    const QString kept = QStringLiteral("KEPT");
    const QString fresh = QStringLiteral("FRESH");
    QTest::newRow("the same name")
        << QStringLiteral("/x.mid") << QStringLiteral("/x.mid") << kept << false;
    QTest::newRow("a name outside ISO 8859-1 is known again")
        << QStringLiteral("/\u0416.mid") << QStringLiteral("/\u0416.mid") << kept << false;
    QTest::newRow("renamed in case only: known, and the index takes the new path")
        << QStringLiteral("/x.mid") << QStringLiteral("/X.MID") << kept << true;
    QTest::newRow("a folder renamed in case only")
        << QStringLiteral("/Pop/x.mid") << QStringLiteral("/POP/x.mid") << kept << true;
    QTest::newRow("another name is another song")
        << QStringLiteral("/x.mid") << QStringLiteral("/y.mid") << fresh << true;
    QTest::newRow("another folder is another song")
        << QStringLiteral("/x.mid") << QStringLiteral("/z/x.mid") << fresh << true;
}

void tst_IndexUpdate::namesAreMatched()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(QString, title);
    QFETCH(bool, changed);
    MemoryFixture memory;
    memory.putMidi(before, "kept");
    QVERIFY(Index().rebuild(memory.root()));
    QVERIFY(QFile::remove(memory.path(before)));
    memory.putMidi(after, "fresh"); // with the date and time of the old one
    Index index;
    QVERIFY(index.update(memory.root()));
    QCOMPARE(index.changed(), changed);
    QCOMPARE(memory.titles(), QStringList{title});
    QCOMPARE(memory.paths(), QStringList{QString::fromLatin1(after.toLatin1())});
    QCOMPARE(memory.problems(), QStringList());
}

void tst_IndexUpdate::anEntryIsMatchedByOneFileOnly()
{
    MemoryFixture memory;
    memory.putMidi(QStringLiteral("/\u0416.mid"), "first");
    QVERIFY(Index().rebuild(memory.root()));
    memory.putMidi(QStringLiteral("/\u0414.mid"), "second"); // has the same form
    Index index;
    QVERIFY(index.update(memory.root()));
    QCOMPARE(memory.paths(), (QStringList{QStringLiteral("/?.mid"), QStringLiteral("/?.mid")}));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_IndexUpdate::aSongTakesTheEntryOfItsOwnSpelling()
{
    MemoryFixture memory;
    memory.putMidi(QStringLiteral("/b.mid"), "old");
    QVERIFY(Index().rebuild(memory.root()));
    memory.putMidi(QStringLiteral("/B.mid"), "new"); // met first
    if (QDir(memory.root()).entryList({QStringLiteral("*.mid")}).size() < 2)
        QSKIP("the file system does not keep case apart");
    QVERIFY(Index().update(memory.root()));
    bool ok = false;
    const QVector<IndexEntry> entries = Index().readEntries(memory.root(), ok);
    QCOMPARE(entries.at(0).relativePath + entries.at(0).title, QStringLiteral("/b.midOLD"));
    QCOMPARE(entries.at(1).relativePath + entries.at(1).title, QStringLiteral("/B.midNEW"));
}

void tst_IndexUpdate::updateWithoutSongsWritesNothing()
{
    MemoryFixture memory;
    prepare(memory);
    const auto before = snapshot(memory);
    for (const char *name : {"/a.mid", "/b.mid", "/c.mid"})
        QVERIFY(QFile::remove(memory.path(QLatin1String(name))));
    Index index;
    index.update(memory.root());
    QCOMPARE(index.found(), 0);
    QVERIFY(!index.changed());
    QVERIFY(snapshot(memory) == before);
}

void tst_IndexUpdate::brokenIndexes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("size");
    QTest::newRow("a path record shorter than 270 bytes")
        << QStringLiteral("index.id3") << 3 * 270 - 1;
    QTest::newRow("a title record shorter than 64 bytes") << QStringLiteral("title.id3") << 63;
    QTest::newRow("an artist record shorter than 64 bytes") << QStringLiteral("artist.id3") << 65;
    QTest::newRow("a path index that claims to be huge")
        << QStringLiteral("index.id3") << 2000000000;
}

/** An old index that can't be loaded: false, and nothing is changed. */
void tst_IndexUpdate::brokenIndexes()
{
    QFETCH(QString, name);
    QFETCH(int, size);
    MemoryFixture memory;
    prepare(memory);
    QVERIFY(QFile::resize(memory.path(u'/' + name), size));
    memory.putMidi(QStringLiteral("/new.mid"), "new");
    const QStringList before = names(memory.root());
    FailingDisk disk;
    Index index(nullptr, disk);
    QVERIFY(!index.update(memory.root()));
    QVERIFY(index.failed());
    QVERIFY(!index.changed());
    QCOMPARE(disk.operations, QStringList());
    QCOMPARE(names(memory.root()), before);
    QCOMPARE(QFileInfo(memory.path(u'/' + name)).size(), qint64(size));
    QVERIFY(index.rebuild(memory.root()));
}

void tst_IndexUpdate::lyingIndexesAreMadeGood_data()
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
    row("a group that is none", "artist.id3", 62, hex("0000"));
    row("a count that lies", "artist.id3", 2, hex("7777"));
    row("digits that are no digits", "index.id3", 256, "x/:-+e.01  \t\n\"");
}

/** What an index holds misplaces nothing: the next update that writes leaves a true memory. */
void tst_IndexUpdate::lyingIndexesAreMadeGood()
{
    QFETCH(QString, name);
    QFETCH(int, at);
    QFETCH(QByteArray, bytes);
    MemoryFixture memory;
    prepare(memory);
    patch(memory, name.toLatin1().constData(), at, bytes);
    memory.putMidi(QStringLiteral("/new.mid"), "new");
    Index index;
    QVERIFY(index.update(memory.root()));
    const QStringList problems = memory.problems();
    QCOMPARE(problems, QStringList());
}

/** The counts are gone while anything is written, and are the last file to come. */
void tst_IndexUpdate::anUpdateCutShortLeavesTheMemoryUnprepared_data()
{
    QTest::addColumn<bool>("update");
    QTest::newRow("an update") << true;
    QTest::newRow("a rebuild") << false;
}

void tst_IndexUpdate::anUpdateCutShortLeavesTheMemoryUnprepared()
{
    QFETCH(bool, update);
    MemoryFixture memory;
    prepare(memory);
    memory.putMidi(QStringLiteral("/new.mid"), "new");
    FailingDisk disk;
    int written = 0;
    disk.before = [&](const QString &operation) {
        if (operation != QLatin1String("write") && operation != QLatin1String("rename"))
            return;
        ++written;
        QVERIFY2(!Index::isPrepared(memory.root()), qPrintable(QString::number(written)));
    };
    Index index(nullptr, disk);
    QVERIFY(update ? index.update(memory.root()) : index.rebuild(memory.root()));
    QVERIFY(written >= 8);
    QVERIFY(disk.operations.endsWith(QStringLiteral("syncVolume")));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_IndexUpdate::aFailingStepLeavesNoIndex_data()
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
void tst_IndexUpdate::aFailingStepLeavesNoIndex()
{
    QFETCH(bool, update);
    QFETCH(bool, staysBroken);
    int steps = 1;
    for (int failAt = 1; failAt <= steps; ++failAt) {
        MemoryFixture memory;
        prepare(memory);
        memory.putMidi(QStringLiteral("/new.mid"), "new");
        FailingDisk disk;
        disk.failAt = failAt;
        disk.staysBroken = staysBroken;
        Index index(nullptr, disk);
        const bool succeeded = update ? index.update(memory.root()) : index.rebuild(memory.root());
        if (failAt == 1)
            QVERIFY(!disk.operations.isEmpty());
        steps = qMax(steps, qMin(int(disk.operations.size()), 40));
        if (disk.operations.size() < failAt)
            break;
        const QByteArray step =
            QByteArray::number(failAt) + ' ' + disk.operations.value(failAt - 1).toLatin1();
        QVERIFY2(!succeeded, step.constData());
        QVERIFY2(index.failed(), step.constData());
        // An index that could not even be removed is still the old one, whole, and its songs are
        // there.
        if (Index::isPrepared(memory.root())) {
            QStringList problems = memory.problems();
            problems.removeAll(
                problems.value(problems.size() - 1).contains(QLatin1String("/new.mid"))
                    ? problems.last()
                    : QString());
            QVERIFY2(problems.isEmpty(),
                     (step + ' ' + problems.join(u'|').toLocal8Bit()).constData());
        }
        QVERIFY2(Index().update(memory.root()), step.constData());
        QVERIFY2(memory.problems().isEmpty(), step.constData());
    }
    QVERIFY(steps > 8);
}

void tst_IndexUpdate::anOldIndexThatStaysIsAFailure()
{
    MemoryFixture memory;
    prepare(memory);
    QVERIFY(QFile::remove(memory.path(QStringLiteral("/title.id3"))));
    QVERIFY(QDir(memory.root()).mkdir(QStringLiteral("title.id3"))); // seven names exist, one can't
                                                                     // be removed as a file
    memory.putMidi(QStringLiteral("/new.mid"), "new");
    Index index;
    QVERIFY(!index.rebuild(memory.root()));
    QVERIFY(index.failed());
    QVERIFY(!index.deleteIndex(memory.root()));
}

QTEST_GUILESS_MAIN(tst_IndexUpdate)
#include "tst_indexupdate.moc"
