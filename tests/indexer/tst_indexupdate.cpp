#include "tests/indexer/memoryfixture.h"
#include "tests/storage/failingdisk.h"

#include <QSignalSpy>

using namespace tarvel4;

using namespace SongBytes;

using Change = std::function<void(MemoryFixture &memory)>;
Q_DECLARE_METATYPE(Change)

/** An update: what is kept, read again, dropped and renumbered. */
class tst_IndexUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingChangedWritesNothing();
    void whatIsLostComesBack_data();
    void whatIsLostComesBack();
    void aDeletedSongLosesItsRecord();
    void newSongsGetTheNextNumbers();
    void changedSongsAreReadAgain_data();
    void changedSongsAreReadAgain();
    void namesAreMatched_data();
    void namesAreMatched();
    void updateWithoutSongsWritesNothing_data();
    void updateWithoutSongsWritesNothing();
    void unknownAttributeBitsAreDropped();
    void songsThatAllVanishDuringARunAreAFailure();

private:
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
    memory.prepare();
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

void tst_IndexUpdate::whatIsLostComesBack_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const QString &what, const Change &change) {
        QTest::addRow("%s", qPrintable(what)) << change;
    };
    for (const QString &name : MemoryFixture::preparedFiles()) {
        row(name + QStringLiteral(" is missing: all songs are read"), [name](auto &memory) {
            memory.patch("title.id3", 4, "WRONG");
            QVERIFY(QFile::remove(memory.path(QLatin1Char('/') + name)));
            QVERIFY(!Index::isPrepared(memory.root()));
        });
    }
    row(QStringLiteral("an index without entries"), [](auto &memory) {
        for (const QString &name : memory.indexFiles())
            write(memory.path(QLatin1Char('/') + name), QByteArray());
    });
    row(QStringLiteral("a title record shorter than 64 bytes"), [](auto &memory) {
        QVERIFY(QFile::resize(memory.path(QStringLiteral("/title.id3")), 63));
    });
    row(QStringLiteral("an artist record shorter than 64 bytes"), [](auto &memory) {
        QVERIFY(QFile::resize(memory.path(QStringLiteral("/artist.id3")), 65));
    });
    row(QStringLiteral("numbers that are not the places of their records"), [](auto &memory) {
        for (int i = 0; i < 3; ++i) {
            const QByteArray number = QByteArray(3, '\0') + static_cast<char>(10 + i);
            memory.patch("index.id3", 270 * i, number);
            memory.patch("title.id3", 64 * i, number);
        }
        for (const auto &[record, number] : {std::pair{1, 10}, {2, 12}, {4, 11}})
            memory.patch("artist.id3", 64 * record + 3, QByteArray(1, static_cast<char>(number)));
    });
}

void tst_IndexUpdate::whatIsLostComesBack()
{
    QFETCH(Change, change);
    MemoryFixture memory;
    memory.prepare();
    const auto before = snapshot(memory);
    change(memory);
    Index index;
    QVERIFY(index.update(memory.root()));
    QVERIFY(index.changed());
    QVERIFY(snapshot(memory) == before);
}

/** The songs left are not read again: a title that only the index holds stays. */
void tst_IndexUpdate::aDeletedSongLosesItsRecord()
{
    MemoryFixture memory;
    memory.prepare();
    memory.patch("title.id3", 2 * 64 + 4, "GONG!");
    QVERIFY(QFile::remove(memory.path(QStringLiteral("/b.mid"))));
    QVERIFY(Index().update(memory.root()));
    QCOMPARE(memory.paths().join(QLatin1Char(',')), QStringLiteral("/a.mid,/c.mid"));
    QCOMPARE(memory.read("index.id3").mid(270, 4).toHex(), QByteArray("00000001"));
    QCOMPARE(memory.titles().join(QLatin1Char(',')), QStringLiteral("ALFA,GONG!"));
    QCOMPARE(memory.read("title.id3").mid(64, 4).toHex(), QByteArray("00000001"));
    QCOMPARE(memory.record("artist.id3", 64, 0, 4, 58), QByteArray("ADA"));
    QCOMPARE(memory.read("fsinfos.id3").left(4).toHex(), QByteArray("02000100"));
    QCOMPARE(memory.problems(), QStringList());
}

void tst_IndexUpdate::newSongsGetTheNextNumbers()
{
    MemoryFixture memory;
    memory.prepare();
    memory.putMidi(QStringLiteral("/0.mid"), "Zero");
    memory.putMidi(QStringLiteral("/z/1.kar"), "Uno");
    Index index;
    QVERIFY(index.update(memory.root()));
    QCOMPARE(index.found(), 5);
    QCOMPARE(memory.paths().join(QLatin1Char(',')),
             QStringLiteral("/a.mid,/b.mid,/c.mid,/0.mid,/z/1.kar"));
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
    memory.prepare();
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
    const auto row = [](const char *what, const char *before, const char *after, const char *title,
                        bool changed) {
        QTest::newRow(what) << QString::fromUtf8(before) << QString::fromUtf8(after)
                            << QString::fromLatin1(title) << changed;
    };
    row("the same name", "/x.mid", "/x.mid", "KEPT", false);
    row("outside ISO 8859-1: known again", "/\u0416.mid", "/\u0416.mid", "KEPT", false);
    row("renamed in case only: the index takes the new path", "/x.mid", "/X.MID", "KEPT", true);
    row("a folder renamed in case only", "/Pop/x.mid", "/POP/x.mid", "KEPT", true);
    row("another name is another song", "/x.mid", "/y.mid", "FRESH", true);
    row("another folder is another song", "/x.mid", "/z/x.mid", "FRESH", true);
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

void tst_IndexUpdate::updateWithoutSongsWritesNothing_data()
{
    QTest::addColumn<bool>("hasEntries");
    QTest::newRow("the songs are gone") << true;
    QTest::newRow("there were none") << false;
}

void tst_IndexUpdate::updateWithoutSongsWritesNothing()
{
    QFETCH(bool, hasEntries);
    MemoryFixture memory;
    memory.prepare();
    for (const QString &name : memory.indexFiles()) {
        if (!hasEntries)
            write(memory.path(QLatin1Char('/') + name), QByteArray());
    }
    const auto before = snapshot(memory);
    for (const char *name : {"/a.mid", "/b.mid", "/c.mid"})
        QVERIFY(QFile::remove(memory.path(QLatin1String(name))));
    FailingDisk disk;
    Index index(nullptr, disk);
    QVERIFY(index.update(memory.root()));
    QCOMPARE(index.found(), 0);
    QVERIFY(!index.changed());
    QCOMPARE(disk.operations, QStringList());
    QVERIFY(snapshot(memory) == before);
}

/** Kind and markers are kept, without the song being read. */
void tst_IndexUpdate::unknownAttributeBitsAreDropped()
{
    MemoryFixture memory;
    memory.prepare();
    memory.patch("title.id3", 63, hex("fb"));
    memory.putMidi(QStringLiteral("/new.mid"), "new");
    QVERIFY(Index().update(memory.root()));
    QCOMPARE(memory.read("title.id3").mid(63, 1).toHex(), QByteArray("0b"));
}

void tst_IndexUpdate::songsThatAllVanishDuringARunAreAFailure()
{
    MemoryFixture memory;
    memory.prepare();
    const QStringList songs = QDir(memory.root()).entryList({QStringLiteral("*.mid")});
    for (const QString &name : songs)
        memory.put(QLatin1Char('/') + name, midi0(), QDateTime(QDate(2010, 1, 1), QTime(0, 0)));
    const auto before = snapshot(memory);
    Index index;
    QObject::connect(&index, &Index::progressMaxSetup, [&] {
        for (const QString &name : songs)
            QFile::remove(memory.path(QLatin1Char('/') + name));
    });
    QVERIFY(!index.update(memory.root()));
    QVERIFY(index.failed() && !index.changed());
    QCOMPARE(index.outcome().codeName(), QStringLiteral("changed-meanwhile"));
    QVERIFY(snapshot(memory) == before);
}

QTEST_GUILESS_MAIN(tst_IndexUpdate)
#include "tst_indexupdate.moc"
