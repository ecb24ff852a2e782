#include "storage/journal.h"

#include "storage/runlock.h"

#include <QDir>
#include <QFileInfo>
#include <QVariant>

namespace tarvel4 {

namespace {

constexpr char entryColumns[] =
    "SELECT id, path, way, oldSize, newSize, prefix, suffix, oldMiddle, newHash FROM song ";

/** From the columns above. */
JournalEntry readEntry(const QSqlQuery &row)
{
    JournalEntry entry;
    int column = 0;
    entry.id = row.value(column++).toLongLong();
    entry.path = row.value(column++).toString();
    entry.way = static_cast<FileChange::Way>(row.value(column++).toInt());
    entry.oldSize = row.value(column++).toLongLong();
    entry.newSize = row.value(column++).toLongLong();
    entry.splice.prefix = row.value(column++).toLongLong();
    entry.splice.suffix = row.value(column++).toLongLong();
    entry.splice.oldMiddle = row.value(column++).toByteArray();
    entry.newHash = row.value(column++).toByteArray();
    return entry;
}

} // namespace

JournalEntry JournalEntry::of(const QString &path, const FileChange &change, qint64 oldSize)
{
    JournalEntry entry;
    // A link may lead nowhere while the file itself has another name.
    const QFileInfo info(path);
    if (info.isSymLink())
        entry.path = info.canonicalFilePath();
    if (entry.path.isEmpty())
        entry.path = QDir::cleanPath(QDir::current().absoluteFilePath(path));
    entry.way = change.way;
    entry.oldSize = oldSize;
    QByteArray oldHead = change.oldHead;
    qint64 rest = 0;
    if (change.way == FileChange::Way::Beside) {
        oldHead.truncate(static_cast<int>(qMin<qint64>(change.tail, oldHead.size())));
        rest = qMax<qint64>(0, oldSize - change.tail);
    } else {
        entry.oldBytes = change.oldHead;
    }
    entry.newSize = change.newHead.size() + rest;
    entry.splice = Splice::between(oldHead, change.newHead, rest);
    return entry;
}

Journal::Journal(const QString &folder, JournalFile::Notice notice, qint64 mostBytes)
    : m_file(folder, std::move(notice))
    , m_mostBytes(mostBytes)
{}

QString Journal::lockPath(const QString &name) const
{
    return m_file.folder() + QLatin1Char('/') + name;
}

// ---- writing

bool Journal::settle(const QVector<Settled> &songs)
{
    QSqlQuery pending = m_file.prepare("DELETE FROM pending WHERE song = ?");
    QSqlQuery written = m_file.prepare("UPDATE song SET newHash = ? WHERE id = ?");
    QSqlQuery asBefore = m_file.prepare("DELETE FROM song WHERE id = ?");
    for (const Settled &song : songs) {
        pending.bindValue(0, song.entry);
        QSqlQuery &last = song.newHash.isEmpty() ? asBefore : written;
        if (!song.newHash.isEmpty())
            last.bindValue(0, song.newHash);
        last.bindValue(song.newHash.isEmpty() ? 0 : 1, song.entry);
        if (!m_file.exec(pending) || !m_file.exec(last))
            return false;
    }
    return true;
}

/** Forgets runs without songs, and the oldest where there are too many; in a transaction. */
bool Journal::tidy()
{
    constexpr char oldest[] =
        "WITH size AS (SELECT run, sum(length(oldMiddle)) AS bytes FROM song"
        " WHERE newHash IS NOT NULL GROUP BY run),"
        " later AS (SELECT run, count(*) OVER newer AS runs, sum(bytes) OVER newer AS bytes"
        " FROM size WINDOW newer AS (ORDER BY run DESC))"
        " DELETE FROM song WHERE newHash IS NOT NULL"
        " AND run IN (SELECT run FROM later WHERE runs > ? OR (runs > 1 AND bytes > ?))";
    QSqlQuery query = m_file.prepare(oldest);
    query.addBindValue(keptRuns);
    query.addBindValue(m_mostBytes);
    return m_file.exec(query)
        && m_file.exec("DELETE FROM run WHERE id NOT IN (SELECT run FROM song)")
        && m_file.exec("DELETE FROM unfinished WHERE run NOT IN (SELECT id FROM run)");
}

bool Journal::clear()
{
    if (!m_file.exists())
        return true;
    if (!m_file.open(JournalFile::Access::Write))
        return false;
    const auto forget = [this] {
        return m_file.exec("DELETE FROM song WHERE newHash IS NOT NULL") && tidy();
    };
    // What is deleted stays in the file until it is made anew.
    const bool isDone = m_file.transaction(forget) && m_file.exec("VACUUM");
    m_file.close();
    return isDone;
}

// ---- reading

std::optional<QVector<JournalRun>> Journal::runs()
{
    QVector<JournalRun> runs;
    if (!m_file.exists())
        return runs;
    if (!m_file.open(JournalFile::Access::Read))
        return std::nullopt;
    const QByteArray takesBack = m_file.hasUnfinished()
        ? "(SELECT takesBack FROM unfinished WHERE unfinished.run = run.id)"
        : "0";
    QSqlQuery query = m_file.prepare(
        "SELECT run.id, time, what, count(DISTINCT path), max(newHash = (SELECT newHash FROM song "
        "AS later"
        " WHERE later.path = song.path AND newHash IS NOT NULL ORDER BY later.id DESC LIMIT 1)), "
        + takesBack
        + " FROM run JOIN song ON song.run = run.id WHERE newHash IS NOT NULL"
          " GROUP BY run.id ORDER BY run.id DESC");
    const bool isRead = m_file.exec(query);
    if (isRead) {
        while (query.next())
            runs.append({query.value(0).toLongLong(),
                         QDateTime::fromMSecsSinceEpoch(query.value(1).toLongLong()),
                         query.value(2).toString(), query.value(3).toInt(), query.value(4).toBool(),
                         query.value(5).toLongLong()});
    }
    query = QSqlQuery();
    m_file.close();
    return isRead ? std::make_optional(runs) : std::nullopt;
}

QVector<JournalEntry> Journal::songsOf(qint64 run)
{
    return written("run = :run", run);
}

QVector<JournalEntry> Journal::writtenAfter(qint64 run)
{
    return written("run > :run AND path IN (SELECT path FROM song WHERE run = :run)", run);
}

QVector<JournalEntry> Journal::written(const char *which, qint64 run)
{
    QVector<JournalEntry> songs;
    if (!m_file.open(JournalFile::Access::Read))
        return songs;
    QSqlQuery query = m_file.prepare(QByteArray(entryColumns)
                                         .append("WHERE newHash IS NOT NULL AND ")
                                         .append(which)
                                         .append(" ORDER BY id"));
    query.bindValue(QStringLiteral(":run"), run);
    if (m_file.exec(query)) {
        while (query.next())
            songs.append(readEntry(query));
    }
    query = QSqlQuery();
    m_file.close();
    return songs;
}

// ---- recovery

/** True when no program is still saving songs of a run. */
bool Journal::hasEnded(qint64 run)
{
    if (!m_file.open(JournalFile::Access::Read))
        return false;
    QSqlQuery query = m_file.prepare("SELECT lock FROM run WHERE id = ?");
    query.addBindValue(run);
    const bool isKnown = m_file.exec(query) && query.next();
    const QString lock = isKnown ? query.value(0).toString() : QString();
    query = QSqlQuery();
    m_file.close();
    return isKnown && RunLock(lockPath(lock)).isHeld();
}

void Journal::settleUnfinished(const Decision &decide)
{
    if (!m_file.exists() || !m_file.open(JournalFile::Access::Write))
        return;
    QVector<QPair<qint64, QString>> runs;
    QSqlQuery query = m_file.prepare(
        "SELECT id, lock FROM run WHERE id IN"
        " (SELECT run FROM song JOIN pending ON pending.song = song.id) ORDER BY id DESC");
    if (m_file.exec(query)) {
        while (query.next())
            runs.append({query.value(0).toLongLong(), query.value(1).toString()});
    }
    query = QSqlQuery();
    for (const auto &run : runs) {
        const RunLock ended(lockPath(run.second));
        if (ended.isHeld())
            settleRun(run.first, decide);
    }
    m_file.transaction([this] { return tidy(); });
    m_file.close();
    RunLock::removeEnded(m_file.folder());
}

void Journal::settleRun(qint64 run, const Decision &decide)
{
    QVector<JournalEntry> entries;
    QSqlQuery query = m_file.prepare(
        QByteArray(entryColumns)
            .append("JOIN pending ON pending.song = song.id WHERE run = ? ORDER BY id DESC"));
    query.addBindValue(run);
    if (m_file.exec(query)) {
        while (query.next())
            entries.append(readEntry(query));
    }
    query = QSqlQuery();
    for (JournalEntry &entry : entries) {
        if (!readPending(entry))
            return;
        const std::optional<QByteArray> newHash = decide(entry);
        const auto settleEntry = [&] {
            return storeSplice(entry) && settle({{entry.id, *newHash}});
        };
        if (!(newHash ? m_file.transaction(settleEntry) : storeTold(entry)))
            return;
    }
}

/** One song at a time: it may be large. */
bool Journal::readPending(JournalEntry &entry)
{
    QSqlQuery query =
        m_file.prepare("SELECT isTold, temporary, newMiddle, oldBytes FROM pending WHERE song = ?");
    query.addBindValue(entry.id);
    if (!m_file.exec(query) || !query.next())
        return false;
    int column = 0;
    entry.isTold = query.value(column++).toBool();
    entry.temporary = query.value(column++).toString();
    entry.splice.newMiddle = query.value(column++).toByteArray();
    entry.oldBytes = query.value(column++).toByteArray();
    return true;
}

bool Journal::storeSplice(const JournalEntry &entry)
{
    QSqlQuery query = m_file.prepare(
        "UPDATE song SET newSize = ?, prefix = ?, suffix = ?, oldMiddle = ? WHERE id = ?");
    query.addBindValue(entry.newSize);
    query.addBindValue(entry.splice.prefix);
    query.addBindValue(entry.splice.suffix);
    query.addBindValue(JournalFile::blob(entry.splice.oldMiddle));
    query.addBindValue(entry.id);
    return m_file.exec(query);
}

bool Journal::storeTold(const JournalEntry &entry)
{
    QSqlQuery query = m_file.prepare("UPDATE pending SET isTold = ? WHERE song = ?");
    query.addBindValue(entry.isTold);
    query.addBindValue(entry.id);
    return m_file.exec(query);
}

} // namespace tarvel4
