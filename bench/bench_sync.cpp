// Synchronises a library of which a third is in the catalogue, beside a program that only rewrites
// the same bytes into the same files with the same flushing.
#include "db/database.h"
#include "library/messagelog.h"
#include "library/songpath.h"
#include "library/updatejob.h"

#include "bench/silenthost.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <cstdio>

using namespace tarvel4;

using namespace tarvel4;

namespace {

constexpr int catalogueRows = 8642;
constexpr int songsPerFolder = 500;
constexpr int songSize = 40 << 10;

QString catalogueName(int number)
{
    return QStringLiteral("S%1").arg(number, 7, 10, QLatin1Char('0'));
}

void makeCatalogue(const QString &path)
{
    const QString connection = QStringLiteral("making");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(path);
        db.open();
        QSqlQuery query(db);
        query.exec(QStringLiteral(
            "CREATE TABLE Songs(title varchar, artist varchar, genre varchar, author varchar, "
            "length integer, bpm integer, key varchar, filename varchar primary key, markers "
            "varchar, altartist varchar)"));
        db.transaction();
        query.prepare(QStringLiteral("INSERT INTO Songs VALUES (?,'ARTIST','POP','AUTHOR',200,120,"
                                     "'A -',?,'1;Intro;5;Verse 1;13;Chorus 1;29;Fine;','OTHER')"));
        for (int i = 0; i < catalogueRows; ++i) {
            query.bindValue(0, QStringLiteral("TITLE NUMBER %1").arg(i));
            query.bindValue(1, catalogueName(i));
            if (!query.exec())
                qFatal("can't make the catalogue");
        }
        db.commit();
    }
    QSqlDatabase::removeDatabase(connection);
}

/** A MIDI song of the usual size: a track of notes. */
QByteArray midiSong()
{
    QByteArray events;
    while (events.size() < songSize)
        events += QByteArray::fromHex("00903C4060803C00");
    events += QByteArray::fromHex("00FF2F00");
    const auto bigEndian = [](int number) {
        QByteArray bytes(4, '\0');
        for (int i = 0; i < 4; ++i)
            bytes[i] = static_cast<char>(number >> (8 * (3 - i)) & 0xFF);
        return bytes;
    };
    return "MThd"
        + QByteArray::fromHex("0000000600000001"
                              "0060")
        + "MTrk" + bigEndian(events.size()) + events;
}

/** Every third song has a name that the catalogue has, the others one that it lacks. */
QStringList makeSongs(const QString &folder, int count)
{
    const QByteArray bytes = midiSong();
    QStringList files;
    for (int i = 0; i < count; ++i) {
        const QString below = QStringLiteral("%1/%2").arg(folder).arg(i / songsPerFolder);
        if (i % songsPerFolder == 0)
            QDir().mkpath(below);
        // Above the catalogue's size its rows serve again, from another folder.
        const QString name =
            i % 3 == 0 ? catalogueName(i / 3 % catalogueRows) : QStringLiteral("My song %1").arg(i);
        files.append(QStringLiteral("%1/%2.mid").arg(below, name));
        QFile file(files.last());
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("can't make the songs");
    }
    return files;
}

double secondsSince(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

/** Writes the bytes that a file holds into it again. */
double rewrite(const QStringList &files)
{
    double seconds = 0;
    for (const QString &path : files) {
        QFile file(path);
        if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
            qFatal("can't open %s", qPrintable(path));
        const QByteArray bytes = file.readAll();
        file.close();
        QElapsedTimer timer;
        timer.start();
        if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)
            || file.write(bytes) != bytes.size() || !Disk::real().sync(file)) {
            qFatal("can't rewrite %s", qPrintable(path));
        }
        file.close();
        seconds += secondsSince(timer);
    }
    return seconds;
}

/** The lookups of an update alone: by file name, then by title. */
double lookUp(Database &db, const QStringList &files)
{
    QElapsedTimer timer;
    timer.start();
    SongInfo record;
    for (const QString &path : files) {
        if (!db.getRecordByFilename(SongPath::catalogueKey(SongPath::fileName(path)), record))
            db.getRecordByTitle(QString(), record);
    }
    return secondsSince(timer);
}

void measure(Database &db, const QString &base, int count)
{
    QTemporaryDir dir(base + QStringLiteral("/bench_sync-XXXXXX"));
    const QStringList files = makeSongs(dir.path(), count);
    SilentHost host;
    Disk::real().syncAll({dir.path()});

    QStringList updated;
    QElapsedTimer timer;
    timer.start();
    const UpdateSummary summary = UpdateJob(db, host, host, {})
                                      .run(
                                          files,
                                          [&updated](const SongOutcome &song) {
                                              if (song.result == SongResult::Updated)
                                                  updated.append(song.path);
                                          },
                                          [] { return true; });
    if (!summary.isComplete)
        qFatal("the update failed");
    const double ours = secondsSince(timer);
    const double lookups = lookUp(db, files);
    const double bare = rewrite(updated);
    std::printf("%6d songs, %5d updated: %6.2f s, %6.1f us a song; rewriting %6.2f s, ratio %.2f; "
                "lookups %.3f s, %.1f %%\n",
                count, static_cast<int>(updated.size()), ours, ours / count * 1e6, bare,
                ours / bare, lookups, 100 * lookups / ours);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    // The medium is the folder given, else the one for temporary files.
    const QString base = argc > 1 ? QFile::decodeName(argv[1]) : QDir::tempPath();
    MessageLog::silence(); // as the programs do when no log is kept
    QTemporaryDir dir;
    const QString catalogue = dir.filePath(QStringLiteral("catalogue"));
    makeCatalogue(catalogue);
    Database db;
    if (!db.init(catalogue))
        qFatal("no catalogue");
    for (int count : {1000, 10000, 50000})
        measure(db, base, count);
    return 0;
}
