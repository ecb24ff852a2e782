// Synchronises a library of which a third is in the catalogue, against a program that reads every
// song and writes the bytes of that third again. Usage: bench_sync [FOLDER [CLI]]
#include "bench/measure.h"
#include "db/database.h"
#include "library/messagelog.h"
#include "library/songpath.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace tarvel4;

namespace {

constexpr int catalogueRows = 8642;
constexpr int songsPerFolder = 500;
constexpr int songsNotFound = 1; // the status that a synchronisation exits with then
constexpr int songSize = 40 << 10;

const auto knownPrefix = QStringLiteral("CAT"); // of the names that the catalogue has

QString catalogueName(int number)
{
    return knownPrefix + QStringLiteral("%1").arg(number, 5, 10, QLatin1Char('0'));
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
        + "MTrk" + bigEndian(static_cast<int>(events.size())) + events;
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
    return static_cast<double>(timer.nsecsElapsed()) * 1e-9;
}

/** Returns the microseconds a song. */
double measure(const Measure::Setup &setup, const QString &catalogue, Database &db, int count)
{
    const QTemporaryDir folder(setup.folder + QStringLiteral("/bench_sync-XXXXXX"));
    const QString from = folder.filePath(QStringLiteral("from"));
    const QString work = folder.filePath(QStringLiteral("work"));
    const QString songs = work + QStringLiteral("/songs");
    const QStringList files = makeSongs(from, count);
    const auto copy = [&] {
        Measure::run({QStringLiteral("cp"), QStringLiteral("-r"), from, songs});
    };
    const Measure::Side plain = {{QStringLiteral(TARVEL4_REWRITEFOLDER), songs, knownPrefix}, copy};
    const Measure::Side ours = {{setup.cli, QStringLiteral("sync"), QStringLiteral("--no-backup"),
                                 QStringLiteral("--unpublished"), QStringLiteral("yes"),
                                 QStringLiteral("--quiet"), QStringLiteral("--catalogue"),
                                 catalogue, QStringLiteral("--recursive"), songs},
                                copy,
                                songsNotFound};
    const Measure::Cost cost = Measure::compare(QStringLiteral("%1 songs of 40 kB").arg(count),
                                                count, work, plain, ours, count > 10000 ? 3 : 5);
    const double lookups = lookUp(db, files);
    std::printf("  lookups %.3f s, %.1f %% of the whole\n", lookups, 100 * lookups / cost.wall);
    return cost.wall / count * 1e6;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    MessageLog::silence(); // as the programs do when no log is kept
    const Measure::Setup setup = Measure::setup(argc, argv);
    const QTemporaryDir dir;
    const QString catalogue = dir.filePath(QStringLiteral("catalogue"));
    makeCatalogue(catalogue);
    Database db;
    if (!db.init(catalogue))
        qFatal("no catalogue");
    Measure::printHeading("rewriting", "sync");
    std::vector<double> perSong;
    for (const int count : {1000, 10000, 50000})
        perSong.push_back(measure(setup, catalogue, db, count));
    const auto range = std::minmax_element(perSong.begin(), perSong.end());
    std::printf("time a song at the three sizes: the most is %.2f times the least\n",
                *range.second / *range.first);
    return 0;
}
