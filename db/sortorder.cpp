#include "db/sortorder.h"

#include "db/foldedtext.h"

#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <vector>

namespace tarvel4 {

namespace {

constexpr int rankSize = 3; // bytes, the highest one first
constexpr int mostSongs = 150000; // SQLite reads statements of a million characters

struct SongText
{
    int id;
    QString text;
};

std::vector<SongText> songsOf(const QString &column, const QSqlDatabase &db)
{
    std::vector<SongText> songs;
    QSqlQuery query(db);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("select id, %1 from usersongs").arg(column));
    while (query.next())
        songs.push_back({query.value(0).toInt(), FoldedText::of(query.value(1).toString())});
    return songs;
}

} // namespace

/** A table of ranks by the songs' ids: SQLite itself folds nothing but ASCII letters. */
QString SortOrder::ofTexts(const QString &column, const QSqlDatabase &db)
{
    std::vector<SongText> songs = songsOf(column, db);
    int highestId = 0;
    for (const SongText &song : songs)
        highestId = std::max(highestId, song.id);
    if (highestId > mostSongs)
        return column + QStringLiteral(" COLLATE NOCASE");

    std::sort(songs.begin(), songs.end(),
              [](const SongText &a, const SongText &b) { return a.text < b.text; });
    QByteArray ranks(rankSize * highestId, '\0');
    int rank = 0;
    const QString *previous = nullptr;
    for (const SongText &song : songs) {
        if (previous && *previous != song.text)
            ++rank;
        previous = &song.text;
        for (int byte = 0; byte < rankSize; ++byte)
            ranks[rankSize * song.id - 1 - byte] = static_cast<char>(rank >> (8 * byte));
    }
    return QStringLiteral("substr(x'%1', %2 * usersongs.id - %3, %2)")
        .arg(QLatin1String(ranks.toHex()))
        .arg(rankSize)
        .arg(rankSize - 1);
}

QVector<int> SortOrder::idsBy(const QString &orderBy, const QSqlDatabase &db)
{
    QVector<int> ids;
    QSqlQuery query(db);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("select id from usersongs %1").arg(orderBy));
    while (query.next())
        ids.append(query.value(0).toInt());
    return ids;
}

QString SortOrder::ofTimes(const QString &column)
{
    return QStringLiteral("printf('%10s', %1)").arg(column); // to the right in equal widths
}

} // namespace tarvel4
