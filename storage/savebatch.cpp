#include "storage/savebatch.h"

#include "storage/filerewrite.h"
#include "storage/regularfile.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace tarvel4 {

namespace {

/** Why a file is not what was read; done where it is. */
Outcome changedSince(const FileStamp &stamp, const QString &path)
{
    if (!stamp.isFile() || stamp.matches(path))
        return {Outcome::Code::Done, path, {}, {}};
    const QFileInfo now(path);
    if (!now.exists())
        return {Outcome::Code::NotFound, path, {}, {}};
    return {now.isFile() ? Outcome::Code::ChangedMeanwhile : Outcome::Code::NotAFile, path, {}, {}};
}

} // namespace

SaveBatch::SaveBatch(Disk &disk, Journal::Run *run)
    : m_disk(disk)
    , m_run(run)
{}

SaveBatch::~SaveBatch()
{
    commit();
}

bool SaveBatch::hasPending(const FileStamp &file) const
{
    return !m_pending.isEmpty() && file.isFile() && m_pending.contains(file.identity());
}

void SaveBatch::add(const QString &path, const FileStamp &stamp, const FileChange &change,
                    Done done)
{
    if (m_saves.empty())
        m_age.start();
    Save save;
    save.path = path;
    save.stamp = stamp;
    save.change = change;
    save.done = std::move(done);
    save.outcome = changedSince(stamp, path);
    if (save.outcome) {
        save.rewrite = FileRewrite::make(m_disk, path, stamp, change);
        save.outcome = save.rewrite->open();
    }
    if (save.outcome) {
        if (change.logLine)
            qDebug() << change.logLine;
        m_bytes += qMax<qint64>(stamp.size(), change.newHead.size());
        m_pending.insert(stamp.identity());
    }
    m_saves.push_back(std::move(save));
}

void SaveBatch::inTurn(std::function<void()> what)
{
    if (m_saves.empty())
        return what();
    m_saves.back().done = [before = std::move(m_saves.back().done),
                           what = std::move(what)](const Outcome &outcome) {
        before(outcome);
        what();
    };
}

bool SaveBatch::isFull() const
{
    return !m_saves.empty()
        && (m_saves.size() >= mostSongs || m_bytes >= mostBytes
            || m_age.hasExpired(mostMilliseconds));
}

void SaveBatch::commit()
{
    const Saves saves = writable();
    note(saves);
    write(saves);
    settle(saves);
    const std::vector<Save> all = std::exchange(m_saves, {});
    m_pending.clear();
    m_bytes = 0;
    for (const Save &save : all) {
        Outcome outcome = save.outcome;
        outcome.path = save.path;
        save.done(outcome);
    }
}

/** Those that can be written, as far as one can tell without touching them. */
SaveBatch::Saves SaveBatch::writable()
{
    Saves saves;
    for (Save &save : m_saves) {
        if (save.outcome)
            save.outcome = changedSince(save.stamp, save.path);
        if (save.outcome)
            saves.push_back(&save);
    }
    return saves;
}

/** On the medium before the first song is touched. */
void SaveBatch::note(const Saves &saves)
{
    if (!m_run)
        return;
    QVector<JournalEntry> entries;
    entries.reserve(static_cast<int>(saves.size()));
    for (const Save *save : saves) {
        entries.append(JournalEntry::of(save->path, save->change, save->stamp.size()));
        entries.last().temporary = save->rewrite->temporary();
    }
    if (!m_run->add(entries))
        return;
    for (std::size_t i = 0; i < saves.size(); ++i)
        saves[i]->entry = entries.at(static_cast<int>(i)).id;
}

void SaveBatch::write(const Saves &saves)
{
    Saves written;
    for (Save *save : saves) {
        // The journal and the songs before it took their time.
        save->outcome = changedSince(save->stamp, save->path);
        if (!save->outcome)
            continue;
        save->outcome = save->rewrite->write();
        // The others' new files may be what takes the room, until they have replaced the old ones.
        if (save->outcome == Outcome::Code::NoRoom && !written.empty()) {
            finish(written);
            save->outcome = save->rewrite->write();
        }
        if (save->outcome)
            written.push_back(save);
    }
    finish(written);
}

/** Brings what was written to the medium and to its names. */
void SaveBatch::finish(Saves &written)
{
    Saves named;
    QStringList names;
    for (Save *save : setAside(flushWritten(std::exchange(written, {})))) {
        save->outcome = save->rewrite->publish();
        if (!save->outcome)
            continue;
        named.push_back(save);
        if (save->rewrite->hasName())
            names += save->path;
    }
    const Outcome flushed = flush(names);
    bool isDirty = false;
    for (Save *save : named) {
        if (save->rewrite->hasName())
            save->outcome = flushed;
        isDirty |= save->rewrite->confirm(save->outcome);
    }
    if (isDirty)
        flush(names);
}

/** Those whose bytes are on the medium. */
SaveBatch::Saves SaveBatch::flushWritten(const Saves &written)
{
    QStringList paths;
    for (const Save *save : written)
        paths += save->rewrite->written();
    const Outcome all = flush(paths);
    if (all)
        return written;
    // One bad file, or one volume of several, is no reason to take back the others. The system
    // tells of a lost byte once: a second flush of the volume, or of a file that was flushed by
    // itself, would find nothing wrong.
    Saves flushed;
    for (Save *save : written) {
        Outcome outcome = save->rewrite->sync();
        if (outcome && written.size() == 1)
            outcome = all;
        if (outcome)
            flushed.push_back(save);
        else
            save->outcome = save->rewrite->takeBack(outcome);
    }
    return flushed;
}

/** Those whose names may be given: where a medium could lose an old file and the new one in one
 * step, the old one's other name is on it. */
SaveBatch::Saves SaveBatch::setAside(const Saves &flushed)
{
    Saves ready;
    QStringList paths;
    for (Save *save : flushed) {
        save->outcome = save->rewrite->setAside();
        if (!save->outcome)
            continue;
        ready.push_back(save);
        if (save->rewrite->isSetAside())
            paths += save->path;
    }
    const Outcome named = flush(paths);
    if (named)
        return ready;
    const auto isLost = [&named](Save *save) {
        if (!save->rewrite->isSetAside())
            return false;
        save->outcome = save->rewrite->takeBack(named);
        return true;
    };
    ready.erase(std::remove_if(ready.begin(), ready.end(), isLost), ready.end());
    return ready;
}

Outcome SaveBatch::flush(const QStringList &paths)
{
    return paths.isEmpty() ? Outcome() : m_disk.syncAll(paths);
}

void SaveBatch::settle(const Saves &saves)
{
    if (!m_run)
        return;
    QVector<Journal::Settled> songs;
    for (Save *save : saves) {
        const bool isNew = save->outcome || save->outcome == Outcome::Code::NotConfirmed;
        if (save->entry == 0)
            continue;
        const bool isRestLeft = !isNew && QFileInfo::exists(save->rewrite->temporary());
        if (save->outcome != Outcome::Code::NotRestored && !isRestLeft)
            songs.append({save->entry, isNew ? save->rewrite->hash() : QByteArray()});
        else if (save->outcome == Outcome::Code::NotRestored
                 && save->change.way == FileChange::Way::InPlace)
            save->outcome.detail =
                QCoreApplication::translate("Outcome", "tornerà al prossimo avvio del programma");
    }
    m_run->settle(songs);
}

} // namespace tarvel4
