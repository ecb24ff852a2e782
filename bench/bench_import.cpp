// Appends and updates rows of the table of the user's songs, against plain prepared statements on
// the same table.
#include "db/database.h"
#include "db/usersongsreltablemodel.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSqlQuery>
#include <QVariant>

#include <cstdio>

using namespace tarvel4;

namespace {

double microseconds(const QElapsedTimer &timer, int songs)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1000 / songs;
}

SongInfo song(int number)
{
    SongInfo info;
    info.format = QStringLiteral("MIDI");
    info.title = QStringLiteral("La luna di carta %1").arg(number);
    info.artist = QStringLiteral("Ada Bellardi");
    info.genre = QStringLiteral("BALLO LISCIO");
    info.author = QStringLiteral("Corvinelli - Dondolini");
    info.length = 185;
    info.bpm = 120;
    info.key = QStringLiteral("A-");
    info.filename = QStringLiteral("/home/musician/songs/ballo/SONG%1.mid").arg(number);
    info.shortname = QStringLiteral("SONG%1.mid").arg(number);
    return info;
}

/** Bytes of memory in use; 0 where the system does not tell. */
qint64 memoryInUse()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    return statm.readAll().split(' ').value(1).toLongLong() * 4096;
}

/** The same inserts without a model; microseconds a song. */
double floorOfInserts(const QSqlDatabase &db, int songs)
{
    QSqlQuery insert(db);
    insert.prepare(QStringLiteral(
        "insert into usersongs (type, title, artist, genre, author, length, userbpm, key, "
        "filename, shortname, status) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < songs; ++i) {
        const SongInfo info = song(i);
        const QVariant values[] = {info.format,
                                   info.title,
                                   info.artist,
                                   info.genre,
                                   info.author,
                                   QStringLiteral("03:05"),
                                   info.bpm,
                                   info.key,
                                   info.filename,
                                   info.shortname,
                                   0};
        int position = 0;
        for (const QVariant &value : values)
            insert.bindValue(position++, value);
        insert.exec();
    }
    return microseconds(timer, songs);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Database db;
    db.init(QStringLiteral("/dev/null")); // the catalogue is not needed

    std::printf("%8s %14s %14s %8s %16s %12s\n", "songs", "insert us", "append us", "ratio",
                "update+status us", "bytes a song");
    for (const int songs : {1000, 10000, 50000}) {
        db.clearUserSongs();
        const double floor = floorOfInserts(db.userSongsDatabase(), songs);
        db.clearUserSongs();

        UserSongsRelTableModel model(nullptr, db.userSongsDatabase());
        const qint64 before = memoryInUse();
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < songs; ++i)
            model.appendSong(song(i));
        model.totalRows();
        const double append = microseconds(timer, songs);

        timer.start();
        for (int row = 0; row < songs; ++row) {
            SongInfo info = song(row);
            info.filename = model.fileNameOf(row);
            model.updateSong(row, info);
            model.setStatus(row, UserSongsRelTableModel::Updated);
        }
        const double update = microseconds(timer, songs);
        std::printf("%8d %14.1f %14.1f %8.2f %16.1f %12lld\n", songs, floor, append, append / floor,
                    update, static_cast<long long>((memoryInUse() - before) / songs));
    }
    return 0;
}
