#include "library/freespace.h"

#include "tests/library/testfiles.h"
#include "tests/library/texts.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/tmpfsmount.h"

#include <QtTest>

using namespace tarvel4;

namespace {

constexpr int block = 4096;

/** A file of a test: its size in bytes. */
struct Sized
{
    const char *name;
    int size;
};
using Files = QVector<Sized>;

} // namespace

Q_DECLARE_METATYPE(Files)

/** Songs on a volume of 16 blocks. */
class tst_FreeSpace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void check_data();
    void check();
    void aVolumeThatTellsNothingIsNotJudged();
};

void tst_FreeSpace::check_data()
{
    QTest::addColumn<Files>("there");
    QTest::addColumn<Files>("songs");
    QTest::addColumn<int>("missing"); // blocks
    const auto row = [](const char *name, const Files &there, const Files &songs, int missing) {
        QTest::newRow(name) << there << songs << missing;
    };
    row("songs that fill the last block", {}, {{"a.mid", 7 * block}, {"b.mid", 9 * block}}, 0);
    row("one byte more", {}, {{"a.mid", 7 * block}, {"b.mid", 9 * block + 1}}, 1);
    row("what others hold is not free", {{"x", 10 * block}}, {{"a.mid", 9 * block}}, 3);
    row("the smallest song takes a whole block", {{"x", 15 * block}}, {{"a.mid", 1}, {"b.mid", 1}},
        1);
    row("a folder of a song's name takes none", {{"x", 16 * block}}, {{"folder.mid", 0}}, 0);
    row("a song that has vanished takes none", {{"x", 16 * block}}, {{"gone.mid", -1}}, 0);

    row("a replaced song gives its room back", {{"x", 8 * block}, {"a.mid", 8 * block}},
        {{"a.mid", 8 * block}}, 0);
    row("so that it is room for others", {{"x", 8 * block}, {"a.mid", 8 * block}},
        {{"a.mid", block}, {"b.mid", 7 * block}}, 0);
    row("but for no more than that", {{"x", 8 * block}, {"a.mid", 8 * block}},
        {{"a.mid", block}, {"b.mid", 8 * block}}, 1);
    row("a song that exists may be kept", {{"x", 15 * block}, {"a.mid", 1}}, {{"a.mid", 9 * block}},
        0);
    row("which makes no room for others", {{"x", 15 * block}, {"a.mid", 1}},
        {{"a.mid", 9 * block}, {"b.mid", 1}}, 1);

    row("a companion takes room", {{"x", 8 * block}}, {{"a.mp3", 8 * block}, {"a.cdg", 1}}, 1);
    row("a companion of any case does", {{"x", 8 * block}}, {{"a.mp3", 8 * block}, {"a.CdG", 1}},
        1);
    row("one of a song that may be kept may not", {{"x", 15 * block}, {"a.mp3", 1}},
        {{"a.mp3", 1}, {"a.cdg", 1}}, 0);
    row("one that exists is not copied", {{"x", 14 * block}, {"a.CDG", 1}},
        {{"a.mp3", 1}, {"a.cdg", 2 * block}}, 0);

    row("of two songs of one name the smaller may be kept", {{"x", 15 * block}},
        {{"1/a.mid", 9 * block}, {"2/a.mid", 1}}, 0);
    row("but one of them takes room", {{"x", 15 * block}},
        {{"1/a.mid", 9 * block}, {"2/a.mid", 2 * block}}, 1);
    row("so is it with names that a card can't keep apart", {{"x", 15 * block}},
        {{"1/A.mid", 9 * block}, {"2/a.MID", 1}}, 0);
    row("a name of another case gives room back where it is replaced",
        {{"x", 8 * block}, {"a.mid", 8 * block}}, {{"1/A.mid", 7 * block}, {"2/a.mid", block}}, 0);
}

void tst_FreeSpace::check()
{
    QFETCH(Files, there);
    QFETCH(Files, songs);
    QFETCH(int, missing);
    const QTemporaryDir dir;
    const QString folder = dir.filePath(text("to"));
    const TmpfsMount volume(folder, "size=64k");
    if (!volume.isMounted())
        QSKIP("mounting is not possible here");
    for (const Sized &file : there)
        TestFiles::write(folder + text("/") + text(file.name), QByteArray(file.size, 'o'));
    QStringList paths;
    for (const Sized &song : songs) {
        const QString path = dir.filePath(text("from/") + text(song.name));
        if (path.endsWith(text("folder.mid")))
            QVERIFY(QDir().mkpath(path));
        else if (song.size >= 0)
            TestFiles::write(path, QByteArray(song.size, 'n'));
        if (!path.endsWith(text(".cdg"), Qt::CaseInsensitive))
            paths += path;
    }

    FailingDisk disk;
    const Outcome outcome = FreeSpace::check(paths, folder, disk);
    QCOMPARE(outcome.codeName(), missing > 0 ? text("no-room") : QString());
    QCOMPARE(disk.operations, missing > 0 ? strings({"syncAll"}) : QStringList());
    if (missing == 0)
        return;
    const QString amount =
        QLocale().formattedDataSize(missing * block, 1, QLocale::DataSizeTraditionalFormat);
    QCOMPARE(outcome.detail, text("mancano almeno ") + amount);
    QVERIFY(outcome.sentence().endsWith(text(": mancano almeno ") + amount));
    QCOMPARE(outcome.path, folder);
}

void tst_FreeSpace::aVolumeThatTellsNothingIsNotJudged()
{
    if (!QFileInfo(text("/proc/self")).isDir())
        QSKIP("there is no /proc here");
    const QTemporaryDir dir;
    const QString song = TestFiles::write(dir.filePath(text("a.mid")), "song");
    QVERIFY(FreeSpace::check({song}, text("/proc"), Disk::real()));
}

QTEST_GUILESS_MAIN(tst_FreeSpace)
#include "tst_freespace.moc"
