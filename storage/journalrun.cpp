#include "storage/journal.h"
#include "storage/runlock.h"

#include <QVariant>

namespace tarvel4 {

Journal::Run::Run(Journal &journal, const QString &what)
    : m_journal(journal)
    , m_what(what)
{}

Journal::Run::~Run()
{
    if (m_id != 0)
        m_journal.m_file.transaction([this] { return m_journal.tidy(); });
    end();
}

bool Journal::Run::begin()
{
    if (!m_journal.m_file.open(JournalFile::Access::Write))
        return false;
    m_lockName = RunLock::newName();
    m_lock = std::make_unique<RunLock>(m_journal.lockPath(m_lockName));
    if (m_lock->isHeld())
        return true;
    end();
    return false;
}

void Journal::Run::end()
{
    if (!m_lock)
        return;
    m_journal.m_file.close();
    m_lock.reset();
    m_id = 0;
    m_continued = 0;
}

void Journal::Run::takeBack(qint64 run)
{
    m_takenBack = run;
    const QVector<JournalRun> runs = m_journal.runs().value_or(QVector<JournalRun>());
    if (!runs.isEmpty() && runs.constFirst().takesBack == run
        && m_journal.hasEnded(runs.constFirst().id))
        m_continued = runs.constFirst().id;
}

void Journal::Run::finish()
{
    const qint64 run = m_id != 0 ? m_id : m_continued;
    JournalFile &file = m_journal.m_file;
    if (run == 0 || !file.open(JournalFile::Access::Write))
        return;
    file.transaction([&] {
        QSqlQuery query = file.prepare("DELETE FROM unfinished WHERE run = ?");
        query.addBindValue(run);
        return file.exec(query);
    });
    file.close();
}

bool Journal::Run::add(QVector<JournalEntry> &entries)
{
    if (entries.isEmpty())
        return true;
    const auto tryOnce = [&] {
        return (m_lock || begin())
            && m_journal.m_file.transaction([&] { return insertRun() && insert(entries); });
    };
    bool isAdded = !m_hasFailed && tryOnce();
    if (!isAdded && !m_hasFailed && m_journal.m_file.wasSetAside()) {
        end(); // what it noted so far was in that file
        isAdded = tryOnce();
    }
    m_hasFailed = !isAdded;
    return isAdded;
}

/** Each time: another program forgets runs of which no song is left. */
bool Journal::Run::insertRun()
{
    JournalFile &file = m_journal.m_file;
    QSqlQuery query =
        file.prepare("INSERT OR IGNORE INTO run (id, time, what, lock) VALUES (?, ?, ?, ?)");
    const qint64 known = m_id != 0 ? m_id : m_continued;
    query.addBindValue(known == 0 ? QVariant() : known);
    query.addBindValue(QDateTime::currentMSecsSinceEpoch());
    query.addBindValue(m_what);
    query.addBindValue(m_lockName);
    if (!file.exec(query))
        return false;
    if (m_id == 0)
        m_id = known != 0 ? known : query.lastInsertId().toLongLong();
    return m_takenBack == 0 || noteUndo();
}

/** With the songs, so that there is no run of which it isn't known. */
bool Journal::Run::noteUndo()
{
    JournalFile &file = m_journal.m_file;
    QSqlQuery lock = file.prepare("UPDATE run SET lock = ? WHERE id = ?");
    lock.addBindValue(m_lockName);
    lock.addBindValue(m_id);
    QSqlQuery undo = file.prepare("INSERT OR REPLACE INTO unfinished VALUES (?, ?)");
    undo.addBindValue(m_id);
    undo.addBindValue(m_takenBack);
    return file.exec(lock) && file.exec(undo);
}

bool Journal::Run::insert(QVector<JournalEntry> &entries)
{
    JournalFile &file = m_journal.m_file;
    QSqlQuery song = file.prepare(
        "INSERT INTO song (run, path, way, oldSize, newSize, prefix, suffix, oldMiddle)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?)");
    QSqlQuery pending = file.prepare("INSERT INTO pending (song, isTold, temporary, newMiddle, "
                                     "oldBytes) VALUES (?, 0, ?, ?, ?)");
    for (JournalEntry &entry : entries) {
        int column = 0;
        song.bindValue(column++, m_id);
        song.bindValue(column++, entry.path);
        song.bindValue(column++, static_cast<int>(entry.way));
        song.bindValue(column++, entry.oldSize);
        song.bindValue(column++, entry.newSize);
        song.bindValue(column++, entry.splice.prefix);
        song.bindValue(column++, entry.splice.suffix);
        song.bindValue(column++, JournalFile::blob(entry.splice.oldMiddle));
        if (!file.exec(song))
            return false;
        entry.id = song.lastInsertId().toLongLong();
        column = 0;
        pending.bindValue(column++, entry.id);
        pending.bindValue(column++, entry.temporary.isNull() ? QLatin1String("") : entry.temporary);
        pending.bindValue(column++, JournalFile::blob(entry.splice.newMiddle));
        pending.bindValue(column++, JournalFile::blob(entry.oldBytes));
        if (!file.exec(pending))
            return false;
    }
    return true;
}

void Journal::Run::settle(const QVector<Settled> &songs)
{
    if (m_id != 0)
        m_journal.m_file.transaction([&] { return m_journal.settle(songs); });
}

} // namespace tarvel4
