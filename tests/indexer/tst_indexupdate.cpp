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
    void whatIsLostComesBack_data()
    {
        const Table<Change> row;
        for (const QString &name : MemoryFixture::preparedFiles()) {
            row(qPrintable(name + " is missing: all songs are read"_s), [name](auto &memory) {
                memory.patch("title.id3", 4, "WRONG");
                QVERIFY(QFile::remove(memory.file(name)));
                QVERIFY(!Index::isPrepared(memory.root()));
            });
        }
        row("an index without entries", [](auto &memory) {
            for (const QString &name : memory.indexFiles())
                write(memory.file(name), QByteArray());
        });
        row("a title record shorter than 64 bytes",
            [](auto &memory) { QVERIFY(QFile::resize(memory.file("title.id3"), 63)); });
        row("an artist record shorter than 64 bytes",
            [](auto &memory) { QVERIFY(QFile::resize(memory.file("artist.id3"), 65)); });
        row("numbers that are not the places of their records", [](auto &memory) {
            for (int i = 0; i < 3; ++i) {
                const QByteArray number = QByteArray(3, '\0') + static_cast<char>(10 + i);
                memory.patch("index.id3", 270 * i, number);
                memory.patch("title.id3", 64 * i, number);
            }
            for (const auto &[record, number] : {std::pair{1, 10}, {2, 12}, {4, 11}})
                memory.patch("artist.id3", 64 * record + 3,
                             QByteArray(1, static_cast<char>(number)));
        });
    }
    void whatIsLostComesBack()
    {
        const auto [change] = cells<Change>();
        PreparedMemory memory;
        const auto before = memory.index();
        change(memory);
        Index index;
        QVERIFY(index.update(memory.root()));
        QVERIFY(index.changed());
        QVERIFY(memory.index() == before);
    }

    /** The songs left are not read again: a title that only the index holds stays. */
    void aDeletedSongLosesItsRecord()
    {
        PreparedMemory memory;
        memory.patch("title.id3", 2 * 64 + 4, "GONG!");
        QVERIFY(QFile::remove(memory.path("/b.mid"_s)));
        QVERIFY(Index().update(memory.root()));
        QCOMPARE(memory.paths().join(QLatin1Char(',')), "/a.mid,/c.mid"_s);
        QCOMPARE(memory.hexOf("index.id3", 270, 4), "00000001"_s);
        QCOMPARE(memory.titles().join(QLatin1Char(',')), "ALFA,GONG!"_s);
        QCOMPARE(memory.hexOf("title.id3", 64, 4), "00000001"_s);
        QCOMPARE(memory.record("artist.id3", 64, 0, 4, 58), QByteArray("ADA"));
        QCOMPARE(memory.hexOf("fsinfos.id3", 0, 4), "02000100"_s);
        QCOMPARE(memory.problems(), QStringList());
    }

    void newSongsGetTheNextNumbers()
    {
        PreparedMemory memory;
        memory.putMidi("/0.mid"_s, "Zero");
        memory.putMidi("/z/1.kar"_s, "Uno");
        Index index;
        QVERIFY(index.update(memory.root()));
        QCOMPARE(index.found(), 5);
        QCOMPARE(memory.paths().join(QLatin1Char(',')), "/a.mid,/b.mid,/c.mid,/0.mid,/z/1.kar"_s);
        QCOMPARE(memory.hexOf("ordfile.id3"), "03000000010002000400"_s);
        QCOMPARE(memory.problems(), QStringList());
    }

    /** /b.mid before /Zeta.mid, as capitals; /Zeta.mid before /Zeta/x.mid, as "." is below "/". */
    void upperCasedPathsDecideTheOrdIndex()
    {
        MemoryFixture memory;
        for (const char *path : {"/Zeta/x.mid", "/Zeta.mid", "/b.mid"}) {
            memory.putMidi(QLatin1String(path), "t");
            QVERIFY(Index().update(memory.root())); // each is numbered behind those before
        }
        QCOMPARE(memory.paths().join(QLatin1Char(',')), "/Zeta/x.mid,/Zeta.mid,/b.mid"_s);
        QCOMPARE(memory.hexOf("ordfile.id3"), "020001000000"_s);
    }

    void changedSongsAreReadAgain_data()
    {
        const Table<QDateTime, QString> row;
        row("a new date", QDateTime(QDate(2010, 3, 5), QTime(7, 8, 9)), "NEW");
        row("a new time", QDateTime(QDate(2009, 3, 5), QTime(7, 8, 10)), "NEW");
        row("an earlier date", QDateTime(QDate(1999, 1, 1), QTime(0, 0)), "NEW");
        row("the same date and time: not read", QDateTime(QDate(2009, 3, 5), QTime(7, 8, 9)),
            "BETA");
    }
    void changedSongsAreReadAgain()
    {
        const auto [modified, title] = cells<QDateTime, QString>();
        PreparedMemory memory;
        memory.put("/b.mid"_s, midi0(meta(3, "New")), modified);
        Index index;
        QVERIFY(index.update(memory.root()));
        QCOMPARE(index.changed(), title == "NEW"_s);
        QVERIFY(memory.titles().contains(title));
        QCOMPARE(memory.read("index.id3").mid(270 + 256, 14),
                 modified.toString("yyyyMMddhhmmss"_s).toLatin1());
        QCOMPARE(memory.problems(), QStringList());
    }

    void namesAreMatched_data()
    {
        const Table<QString, QString, QString, bool> row;
        // title: of the song afterwards: kept from the index, or read
        row("the same name", "/x.mid", "/x.mid", "KEPT", false);
        row("outside ISO 8859-1: known again", "/\u0416.mid", "/\u0416.mid", "KEPT", false);
        row("renamed in case only: the index takes the new path", "/x.mid", "/X.MID", "KEPT", true);
        row("a folder renamed in case only", "/Pop/x.mid", "/POP/x.mid", "KEPT", true);
        row("another name is another song", "/x.mid", "/y.mid", "FRESH", true);
        row("another folder is another song", "/x.mid", "/z/x.mid", "FRESH", true);
    }
    void namesAreMatched()
    {
        const auto [before, after, title, changed] = cells<QString, QString, QString, bool>();
        MemoryFixture memory;
        memory.putMidi(before, "kept");
        QVERIFY(Index().rebuild(memory.root()));
        QVERIFY(QFile::remove(memory.path(before)));
        QDir().rmdir(QFileInfo(memory.path(before)).path()); // but for the root, which is not empty
        memory.putMidi(after, "fresh"); // with the date and time of the old one
        Index index;
        QVERIFY(index.update(memory.root()));
        QCOMPARE(index.changed(), changed);
        QCOMPARE(memory.titles(), QStringList{title});
        QCOMPARE(memory.paths(), QStringList{QString::fromLatin1(after.toLatin1())});
        QCOMPARE(memory.problems(), QStringList());
    }

    void anUpdateWritesNothing_data()
    {
        const Table<int, bool> row; // songs found, and whether the index has entries
        row("nothing changed", 3, true);
        row("the songs are gone", 0, true);
        row("there were none", 0, false);
    }
    void anUpdateWritesNothing()
    {
        const auto [found, hasEntries] = cells<int, bool>();
        PreparedMemory memory;
        for (const QString &name : memory.indexFiles()) {
            if (!hasEntries)
                write(memory.file(name), QByteArray());
        }
        const auto before = memory.index();
        for (const char *name : {"a.mid", "b.mid", "c.mid"})
            QVERIFY(found > 0 || QFile::remove(memory.file(name)));
        FailingDisk disk;
        Index index(nullptr, disk);
        QVERIFY(index.update(memory.root()));
        QCOMPARE(index.found(), found);
        QVERIFY(!index.changed() && !index.failed());
        QCOMPARE(disk.operations, QStringList());
        QVERIFY(memory.index() == before);
    }

    /** Kind and markers are kept, without the song being read. */
    void unknownAttributeBitsAreDropped()
    {
        PreparedMemory memory;
        memory.patch("title.id3", 63, hex("fb"));
        memory.putNewSong();
        QVERIFY(Index().update(memory.root()));
        QCOMPARE(memory.hexOf("title.id3", 63, 1), "0b"_s);
    }

    void songsThatAllVanishDuringARunAreAFailure()
    {
        PreparedMemory memory;
        const QStringList songs = QDir(memory.root()).entryList({"*.mid"_s});
        for (const QString &name : songs)
            memory.put(QLatin1Char('/') + name, midi0(), QDateTime(QDate(2010, 1, 1), QTime(0, 0)));
        const auto before = memory.index();
        Index index;
        QObject::connect(&index, &Index::progressMaxSetup, [&] {
            for (const QString &name : songs)
                QFile::remove(memory.file(name));
        });
        QVERIFY(!index.update(memory.root()));
        QVERIFY(index.failed() && !index.changed());
        QCOMPARE(index.outcome().codeName(), "changed-meanwhile"_s);
        QVERIFY(memory.index() == before);
    }
};

QTEST_GUILESS_MAIN(tst_IndexUpdate)
#include "tst_indexupdate.moc"
