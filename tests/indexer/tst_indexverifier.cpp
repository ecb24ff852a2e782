#include "indexer/indexverifier.h"

#include <QtTest>

#include <functional>

using namespace tarvel4;

namespace {

using Change = std::function<void(const QString &root)>;

QByteArray padded(const QByteArray &text, int size)
{
    return text.leftJustified(size, '\0', true);
}

QByteArray bigEndian(quint32 number, int bytes)
{
    QByteArray result;
    while (bytes-- > 0)
        result.append(static_cast<char>(number >> (8 * bytes)));
    return result;
}

QByteArray pathRecord(quint32 number, const QByteArray &path, const QByteArray &stamp)
{
    return bigEndian(number, 4) + padded(path, 252) + stamp;
}

QByteArray songRecord(quint32 number, const QByteArray &title)
{
    return bigEndian(number, 4) + padded(title, 58) + QByteArray::fromHex("7800");
}

QByteArray groupRecord(quint32 previous, quint32 count, const QByteArray &artist)
{
    return bigEndian(previous, 2) + bigEndian(count, 2) + padded(artist, 58)
        + QByteArray::fromHex("00ff");
}

/** All slots unclaimed but those given as character and offset. */
QByteArray alpha(const QMap<char, quint32> &slots_)
{
    QByteArray result;
    for (char c = ' '; c <= '_'; ++c)
        result += bigEndian(slots_.value(c, 0xFFFFFFFF), 4);
    return result;
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

void writeSong(const QString &path, const QDateTime &modified)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("song") == 4 && file.flush());
    QVERIFY(file.setFileTime(modified, QFileDevice::FileModificationTime));
}

const QDateTime stampTime(QDate(2009, 3, 5), QTime(7, 8, 9));
const QByteArray stamp("20090305070809");

/** Four songs of two artists: /Zeta/x.mid (0), /b.mid (1), /Zeta.mid (2), /sub/d.mp3 (3). */
void makeMemory(const QString &root)
{
    QVERIFY(QDir(root).mkpath(QStringLiteral("Zeta")));
    QVERIFY(QDir(root).mkpath(QStringLiteral("sub")));
    for (const char *path : {"/Zeta/x.mid", "/b.mid", "/Zeta.mid", "/sub/d.mp3"})
        writeSong(root + QLatin1String(path), stampTime);

    write(root + QStringLiteral("/index.id3"),
          pathRecord(0, "/Zeta/x.mid", stamp) + pathRecord(1, "/b.mid", stamp)
              + pathRecord(2, "/Zeta.mid", stamp) + pathRecord(3, "/sub/d.mp3", stamp));
    write(root + QStringLiteral("/ordfile.id3"), QByteArray::fromHex("0100 0300 0200 0000"));
    write(root + QStringLiteral("/title.id3"),
          songRecord(1, "ALFA") + songRecord(0, "BETA") + songRecord(3, "BETA 2")
              + songRecord(2, "\xC0"));
    write(root + QStringLiteral("/atitle.id3"), alpha({{'A', 0}, {'B', 64}}));
    write(root + QStringLiteral("/artist.id3"),
          groupRecord(0, 3, "<UNKNOWN>") + songRecord(1, "ALFA") + songRecord(3, "BETA 2")
              + songRecord(2, "\xC0") + groupRecord(3, 1, "ABBA") + songRecord(0, "BETA"));
    write(root + QStringLiteral("/aartist.id3"), alpha({{'<', 0}, {'A', 256}}));
    write(root + QStringLiteral("/fsinfos.id3"), QByteArray::fromHex("040002000000000000000000"));
}

/** Replaces the bytes at an offset of a file. */
Change patch(const char *file, int offset, const QByteArray &bytes)
{
    return [=](const QString &root) {
        QFile target(root + QLatin1Char('/') + QLatin1String(file));
        QVERIFY(target.open(QIODevice::ReadWrite));
        QVERIFY(target.seek(offset));
        QCOMPARE(target.write(bytes), bytes.size());
    };
}

Change resize(const char *file, int size)
{
    return [=](const QString &root) {
        QVERIFY(QFile::resize(root + QLatin1Char('/') + QLatin1String(file), size));
    };
}

} // namespace

Q_DECLARE_METATYPE(Change)

class tst_IndexVerifier : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void problems_data();
    void problems();
    void whatTheFilesCannotHold_data();
    void whatTheFilesCannotHold();
    void changesNothing();
};

void tst_IndexVerifier::problems_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("record");
    const auto row = [](const char *name, const char *file, int record, const Change &change) {
        QTest::newRow(name) << change << QString::fromLatin1(file) << record;
    };
    const auto remove = [](const char *path) -> Change {
        return [path](const QString &root) { QVERIFY(QFile::remove(root + QLatin1String(path))); };
    };

    row("a file of the seven is missing", "title.id3", -1, remove("/title.id3"));
    row("a file of the seven is a folder", "artist.id3", -1, [](const QString &root) {
        QVERIFY(QFile::remove(root + QStringLiteral("/artist.id3")));
        QVERIFY(QDir(root).mkdir(QStringLiteral("artist.id3")));
    });
    for (const char *name :
         {"index.id3", "ordfile.id3", "title.id3", "artist.id3", "atitle.id3", "fsinfos.id3"})
        row(qPrintable(QStringLiteral("%1 claims to be larger than any").arg(QLatin1String(name))),
            name, -1, resize(name, 512 * 1024 * 1024));
    row("the path index ends inside a record", "index.id3", 3, resize("index.id3", 4 * 270 - 1));
    row("the title index ends inside a record", "title.id3", 3, resize("title.id3", 4 * 64 - 1));
    row("the artist index ends inside a record", "artist.id3", 5, resize("artist.id3", 6 * 64 - 1));
    row("the ord index ends inside a value", "ordfile.id3", 3, resize("ordfile.id3", 7));
    row("the ord index has a value too few", "ordfile.id3", -1, resize("ordfile.id3", 6));
    row("an alpha index is short", "atitle.id3", -1, resize("atitle.id3", 255));
    row("an alpha index is long", "aartist.id3", -1, resize("aartist.id3", 512));
    row("the counts are short", "fsinfos.id3", -1, resize("fsinfos.id3", 0));

    row("the count of titles disagrees", "fsinfos.id3", 0, patch("fsinfos.id3", 0, "\x05"));
    row("the count of artists disagrees", "fsinfos.id3", 0, patch("fsinfos.id3", 2, "\x01"));
    row("a reserved count is not zero", "fsinfos.id3", 0, patch("fsinfos.id3", 11, "\x01"));
    row("a title record is missing", "title.id3", -1, resize("title.id3", 3 * 64));

    row("a path record has another's number", "index.id3", 1, patch("index.id3", 270 + 3, "\x02"));
    row("a path record's number is no song's", "index.id3", 1, patch("index.id3", 270, "\x80"));
    row("a number is used twice in the titles", "title.id3", 1, patch("title.id3", 64 + 3, "\x01"));
    row("a number is missing in the titles", "title.id3", -1, patch("title.id3", 64 + 3, "\x01"));
    row("a number of the artist index is no song's", "artist.id3", 1,
        patch("artist.id3", 64, "\x7f"));
    row("a value of the ord index is used twice", "ordfile.id3", 1,
        patch("ordfile.id3", 2, "\x02"));

    row("the path order does not hold", "ordfile.id3", 0,
        patch("ordfile.id3", 0, QByteArray::fromHex("03000100")));
    row("the title order does not hold", "title.id3", 1, patch("title.id3", 4, "ZETA"));
    row("the artist order does not hold", "artist.id3", 4,
        patch("artist.id3", 4, "ZETA\0\0\0\0\0"));
    row("the titles of a group are not in order", "artist.id3", 2,
        patch("artist.id3", 64 + 4, "ZETA"));
    row("two groups have one artist", "artist.id3", 4,
        patch("artist.id3", 4 * 64 + 4, "<Unknown>"));

    row("a group counts one song too many", "artist.id3", 0, patch("artist.id3", 3, "\x04"));
    row("a group's back-count is wrong", "artist.id3", 4, patch("artist.id3", 4 * 64 + 1, "\x02"));
    row("the first group has a back-count", "artist.id3", 0, patch("artist.id3", 1, "\x01"));
    row("a group is empty", "artist.id3", 4, resize("artist.id3", 5 * 64));
    row("the first record is no group", "artist.id3", 0,
        patch("artist.id3", 63, QByteArray(1, '\0')));
    row("a song's record differs from its title record", "artist.id3", 1,
        patch("artist.id3", 64 + 62, "\x50"));

    row("a slot points at another letter", "atitle.id3", 'A' - ' ',
        patch("atitle.id3", 4 * ('A' - ' ') + 3, "\x40"));
    row("a slot points behind the first of its letter", "atitle.id3", 'B' - ' ',
        patch("atitle.id3", 4 * ('B' - ' ') + 3, "\x80"));
    row("a slot without a letter is claimed", "atitle.id3", 'C' - ' ',
        patch("atitle.id3", 4 * ('C' - ' '), QByteArray(4, '\0')));
    row("a slot points at a song, not at its group", "aartist.id3", 'A' - ' ',
        patch("aartist.id3", 4 * ('A' - ' ') + 2, QByteArray::fromHex("0040")));

    row("a path does not begin at the root", "index.id3", 1, patch("index.id3", 270 + 4, "x"));
    row("a path does not end", "index.id3", 1,
        patch("index.id3", 270 + 4 + 6, QByteArray(246, 'x')));
    row("bytes stand behind the end of a path", "index.id3", 1, patch("index.id3", 270 + 255, "x"));
    row("bytes stand behind the end of a title", "title.id3", 0, patch("title.id3", 4 + 57, "x"));
    row("bytes stand behind the end of an artist", "artist.id3", 0,
        patch("artist.id3", 4 + 57, "x"));
    row("a title is empty", "title.id3", 0, patch("title.id3", 4, QByteArray(4, '\0')));
    row("a title is not in upper case", "title.id3", 2, patch("title.id3", 2 * 64 + 5, "e"));
    row("a title begins with a blank", "title.id3", 0, patch("title.id3", 4, " ALF"));
    row("a title ends with a blank", "title.id3", 0, patch("title.id3", 4, "ALF "));
    row("an artist is empty", "artist.id3", 4,
        patch("artist.id3", 4 * 64 + 4, QByteArray(4, '\0')));
    row("an artist is not in upper case", "artist.id3", 4, patch("artist.id3", 4 * 64 + 4, "Abba"));
    row("an artist has a letter without an upper-case form in ISO 8859-1", "artist.id3", 4,
        patch("artist.id3", 4 * 64 + 7, "\xff"));
    row("an artist ends with a blank", "artist.id3", 4, patch("artist.id3", 4 * 64 + 8, " "));
    row("a kind that no song has", "title.id3", 0, patch("title.id3", 63, "\x05"));
    row("an attribute byte with unknown bits", "title.id3", 0, patch("title.id3", 63, "\x10"));

    row("a song was deleted", "index.id3", 3, remove("/sub/d.mp3"));
    row("a path leads out of the memory", "index.id3", 1, patch("index.id3", 270 + 4, "/../b.mid"));
    row("a folder has the name of a song", "index.id3", 1, [](const QString &root) {
        QVERIFY(QFile::remove(root + QStringLiteral("/b.mid")));
        QVERIFY(QDir(root).mkdir(QStringLiteral("b.mid")));
    });
    row("a song has another date", "index.id3", 1, [](const QString &root) {
        writeSong(root + QStringLiteral("/b.mid"), stampTime.addDays(1));
    });
    row("a song has another time", "index.id3", 1, patch("index.id3", 270 + 269, "0"));
    row("the date is no number", "index.id3", 1, patch("index.id3", 270 + 256, "x"));
    row("a song of the memory is not in the index", "index.id3", -1,
        [](const QString &root) { writeSong(root + QStringLiteral("/sub/new.KAR"), stampTime); });
    row("a name differs in case", "index.id3", 1, [](const QString &root) {
        QVERIFY(QFile::rename(root + QStringLiteral("/b.mid"), root + QStringLiteral("/B.mid")));
    });
}

void tst_IndexVerifier::problems()
{
    QFETCH(Change, change);
    QFETCH(QString, file);
    QFETCH(int, record);
    QTemporaryDir folder;
    makeMemory(folder.path());
    change(folder.path());

    const QVector<IndexProblem> problems = IndexVerifier(folder.path()).verify();
    const bool named =
        std::any_of(problems.begin(), problems.end(), [&](const IndexProblem &problem) {
            return problem.file == file && problem.record == record && !problem.problem.isEmpty();
        });
    QVERIFY(problems.size() < 100); // a file that can't be one of an index is not read
    for (const IndexProblem &problem : problems)
        qInfo() << problem.file << problem.record << problem.problem;
    QVERIFY(named);
}

/** What ISO 8859-1 and 16 bits leave out is no disagreement. */
void tst_IndexVerifier::whatTheFilesCannotHold_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };

    row("nothing, in a true memory", [](const QString &) {});
    row("songs in sfx and bridge, hidden names and other files are not missed",
        [](const QString &root) {
            for (const char *name : {"SFX", "sub/Bridge", ".Trash"}) {
                QVERIFY(QDir(root).mkpath(QLatin1String(name)));
                writeSong(root + QLatin1Char('/') + QLatin1String(name) + QStringLiteral("/x.mid"),
                          stampTime);
            }
            writeSong(root + QStringLiteral("/._b.mid"), stampTime);
            writeSong(root + QStringLiteral("/song.wav"), stampTime);
        });
    row("a song whose path has 252 characters is not missed", [](const QString &root) {
        writeSong(root + QLatin1Char('/') + QString(247, QLatin1Char('x')) + QStringLiteral(".mid"),
                  stampTime);
    });
    row("a loop of links ends", [](const QString &root) {
        QVERIFY(QFile::link(root, root + QStringLiteral("/sub/loop")));
    });
    row("a name outside ISO 8859-1 is its replaced form", [](const QString &root) {
        QVERIFY(
            QFile::rename(root + QStringLiteral("/b.mid"), root + QStringLiteral("/\u0416.mid")));
        patch("index.id3", 270 + 5, "?")(root);
        patch("ordfile.id3", 0, QByteArray::fromHex("0100 0300 0200 0000"))(root);
    });
    row("a title with a replaced character may stand anywhere", [](const QString &root) {
        patch("title.id3", 3 * 64 + 4, "?")(root);
        patch("artist.id3", 3 * 64 + 4, "?")(root);
    });
    row("a title that was cut behind a blank ends with it", [](const QString &root) {
        const QByteArray title = "BETA 2" + QByteArray(51, 'X') + ' ';
        patch("title.id3", 2 * 64 + 4, title)(root);
        patch("artist.id3", 2 * 64 + 4, title)(root);
    });
    row("a title that begins with a real question mark claims its slot", [](const QString &root) {
        patch("title.id3", 4, "?LFA")(root);
        patch("artist.id3", 64 + 4, "?LFA")(root);
        write(root + QStringLiteral("/atitle.id3"), alpha({{'?', 0}, {'B', 64}}));
    });
}

void tst_IndexVerifier::whatTheFilesCannotHold()
{
    QFETCH(Change, change);
    QTemporaryDir folder;
    makeMemory(folder.path());
    change(folder.path());
    for (const QString &root : {folder.path(), QString(folder.path() + QLatin1Char('/'))}) {
        for (const IndexProblem &problem : IndexVerifier(root).verify())
            QFAIL(qPrintable(QStringLiteral("%1 %2 %3")
                                 .arg(problem.file)
                                 .arg(problem.record)
                                 .arg(problem.problem)));
    }
}

void tst_IndexVerifier::changesNothing()
{
    QTemporaryDir folder;
    makeMemory(folder.path());
    const auto snapshot = [&folder] {
        QDirIterator entries(folder.path(), QDir::Files, QDirIterator::Subdirectories);
        QMap<QString, QByteArray> files;
        while (entries.hasNext()) {
            QFile file(entries.next());
            if (file.open(QIODevice::ReadOnly))
                files.insert(file.fileName(), file.readAll());
        }
        return files;
    };
    const auto before = snapshot();
    IndexVerifier(folder.path()).verify();
    QVERIFY(snapshot() == before);
}

QTEST_GUILESS_MAIN(tst_IndexVerifier)
#include "tst_indexverifier.moc"
