#include "indexer/index.h"

#include "indexer/entrymatcher.h"
#include "indexer/indexformat.h"
#include "indexer/indexloader.h"
#include "indexer/indexwriter.h"
#include "indexer/outputtarget.h"
#include "indexer/songlistwriter.h"
#include "indexer/songreader.h"
#include "indexer/sortkeys.h"
#include "songs/metasong.h"
#include "storage/newfile.h"
#include "storage/recovery.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tarvel4 {

using namespace IndexFormat;

namespace {

QString withoutTrailingSeparator(QString path)
{
    if (path.endsWith(QLatin1Char('/')) || path.endsWith(QLatin1Char('\\')))
        path.chop(1);
    return path;
}

/** The root as it is joined with names: absolute, and without the separator at its end. */
QString joinable(const QString &root)
{
    const QString path = withoutTrailingSeparator(root);
    if (path.isEmpty() || !QDir::isRelativePath(path))
        return path;
    return withoutTrailingSeparator(QDir::cleanPath(QDir(path + QLatin1Char('/')).absolutePath()));
}

QString filePath(const QString &root, const char *name)
{
    return withoutTrailingSeparator(root) + QLatin1Char('/') + QLatin1String(name);
}

/** The first file that a prepared memory has and this one has not; empty where it has them all. */
QString missingFile(const QString &root)
{
    const auto *const missing =
        std::find_if(preparedFiles.begin(), preparedFiles.end(), [&root](const char *name) {
            return !QFileInfo::exists(filePath(root, name));
        });
    return missing == preparedFiles.end() ? QString() : filePath(root, *missing);
}

} // namespace

Index::Index(QObject *parent, Disk &disk)
    : QObject(parent)
    , m_disk(disk)
{}

bool Index::isPrepared(const QString &root)
{
    return !root.isEmpty() && missingFile(root).isEmpty();
}

bool Index::deleteIndex(const QString &root)
{
    m_outcome = {};
    return isDone(removeIndex(root), root);
}

/** Removes each file that can be; the outcome is the first failure. */
Outcome Index::removeIndex(const QString &root)
{
    if (root.isEmpty())
        return {Outcome::Code::NotFound, root, {}, {}};
    qDebug() << "delete index";
    Outcome outcome;
    const auto remove = [&](const char *name) {
        Outcome removed = m_disk.remove(filePath(root, name));
        removed.path = filePath(root, name);
        if (outcome)
            outcome = removed;
    };
    for (const char *name : deletedFiles)
        remove(name);
    remove(unfinishedNumFile);
    return outcome;
}

/** Keeps the cause of the first failure, with the path that it happened to. */
bool Index::isDone(const Outcome &outcome, const QString &path)
{
    if (!outcome && m_outcome) {
        m_outcome = outcome;
        if (m_outcome.path.isEmpty())
            m_outcome.path = path;
    }
    return static_cast<bool>(outcome);
}

bool Index::mustStop()
{
    m_isStopped = m_stopWhen && m_stopWhen();
    return m_isStopped;
}

void Index::start(const QString &root)
{
    m_root = joinable(root);
    m_songs.clear();
    m_entries.clear();
    m_changed = m_written = m_isStopped = false;
    m_outcome = {};
    m_found = 0;
}

bool Index::rebuild(const QString &root)
{
    start(root);
    Q_EMIT progressValueChanged(0);
    if (root.isEmpty())
        return isDone({Outcome::Code::NotFound, root, {}, {}}, root);
    if (!scan() || mustStop())
        return false;
    if (!isDone(removeIndex(m_root), m_root) && isPrepared(m_root))
        return false; // a write-protected memory
    build();
    return isPrepared(m_root) && !failed();
}

bool Index::update(const QString &root)
{
    start(root);
    if (!isPrepared(m_root))
        return rebuild(root);
    if (!loadEntries())
        return false;
    Q_EMIT progressValueChanged(0);
    if (!scan())
        return false;
    build();
    return isPrepared(m_root) && !failed();
}

/** A record's number is its place; an index in which one is not is read by its numbers and then
 * numbered anew. */
bool Index::loadEntries()
{
    IndexLoader loader(m_root);
    if (!isDone(loader.load(), m_root))
        return false;
    m_entries = loader.takeEntries();
    for (int i = 0; i < m_entries.size(); ++i) {
        if (m_entries.at(i).number != i)
            m_changed = true;
        m_entries[i].number = m_entries[i].order = i;
    }
    return true;
}

bool Index::scan()
{
    MemoryScan memory;
    memory.onFolder = [this](const QString &path) { Q_EMIT currentPathChanged(path); };
    memory.onUnreadable = [this](const QString &path) {
        Q_EMIT errorFromIndex(tr("Impossibile leggere: ") + path);
    };
    memory.onSetAside = [this](const QString &path) {
        Recovery::recoverAll(m_disk, path, MetaSong::isSong, m_onRecovered);
    };
    memory.onSong = [this](const ScannedSong &song) {
        if (song.relativePath.size() > longestPath) {
            Q_EMIT errorFromIndex(tr("File non importato, path troppo lungo: ") + m_root
                                  + song.relativePath);
            return;
        }
        m_songs.push_back(song);
        ++m_found;
        Q_EMIT fileFoundChanged(m_found);
    };
    Outcome scanned = memory.scan(m_root);
    scanned.path = m_root;
    return isDone(scanned, m_root);
}

void Index::build()
{
    if (m_found == 0)
        return; // required: nothing is written, not even by an update of a memory whose songs are
                // gone
    std::vector<IndexCandidate> candidates = matchEntries(m_entries, m_songs, m_root);
    if (!readSongs(candidates) || !m_changed)
        return;
    m_entries.clear();
    for (IndexCandidate &candidate : candidates) {
        if (candidate.entry.number >= 0)
            m_entries.append(std::move(candidate.entry));
    }
    if (m_entries.isEmpty())
        // All songs vanished under the scan: this is not the memory that it was.
        isDone({Outcome::Code::ChangedMeanwhile, m_root, {}, {}}, m_root);
    else
        writeFiles();
}

/** Reads what is new or changed, in path order, and marks what is gone with the number -1. False:
 * stopped before the last one. */
bool Index::readSongs(std::vector<IndexCandidate> &candidates)
{
    Q_EMIT progressMaxSetup(m_found);
    qDebug() << "create title index";
    std::vector<QByteArray> keys;
    keys.reserve(candidates.size());
    for (const IndexCandidate &candidate : candidates)
        keys.push_back(candidate.sortKey);

    int progress = 0;
    for (const int position : SortKeys::byPath(keys)) {
        if (mustStop())
            return false;
        IndexCandidate &candidate = candidates[static_cast<std::size_t>(position)];
        Q_EMIT currentPathChanged(candidate.entry.absolutePath);
        const bool isThere =
            candidate.isFound && (!candidate.mustBeRead || SongReader::read(candidate.entry));
        if (!isThere)
            candidate.entry.number = -1;
        if (!candidate.isFound || candidate.mustBeRead || candidate.isRenamed)
            m_changed = true;
        Q_EMIT progressValueChanged(++progress);
    }
    Q_EMIT currentPathChanged(QString());
    return true;
}

void Index::writeFiles()
{
    Q_EMIT progressMaxSetup(100);
    Q_EMIT progressValueChanged(0);
    // The entries stand in the order of their records: those that are gone have left no gaps.
    for (int i = 0; i < m_entries.size(); ++i)
        m_entries[i].number = m_entries[i].order = i;
    Q_EMIT progressValueChanged(10);
    m_written = writeAll();
    if (!m_written)
        removeIndex(m_root);
}

/**
 * While the files are written the memory does not count as prepared: the counts go first and come
 * last, so that a run that is cut short can't leave a mixture that looks like an index.
 */
bool Index::writeAll()
{
    const QString counts = filePath(m_root, numFile);
    if (!isDone(m_disk.remove(counts), counts))
        return false;
    Outcome flushed = m_disk.syncAll({counts});
    flushed.path = m_root;
    if (!isDone(flushed, m_root))
        return false;
    IndexWriter writer(m_root, m_entries, m_disk);
    if (!writeAll(writer))
        return isDone(writer.outcome(), m_root);
    Q_EMIT progressValueChanged(100);
    return true;
}

bool Index::writeAll(IndexWriter &writer)
{
    if (writer.writeOrdIndex() < 0 || writer.writePathIndex() < 0)
        return false;
    Q_EMIT progressValueChanged(20);
    const int titles = writer.writeTitleIndex();
    if (titles < 0 || writer.writeAlphaIndex(titleAlphaFile) < 0)
        return false;
    Q_EMIT progressValueChanged(30);
    const int artists = writer.writeArtistIndex();
    if (artists < 0 || writer.writeAlphaIndex(artistAlphaFile) < 0)
        return false;
    for (const int value :
         {40, 50, 90}) // the steps between stand for a genre index, which is not written
        Q_EMIT progressValueChanged(value);
    return writer.writeNumfileIndex(titles, artists) == 0;
}

Index::Contents Index::readEntries(const QString &root)
{
    IndexLoader loader(withoutTrailingSeparator(root));
    const Outcome outcome = loader.load();
    return {outcome, outcome ? loader.takeEntries() : QVector<IndexEntry>()};
}

int Index::writeSongList(const QString &root, const QString &target, int order)
{
    m_outcome = {};
    m_isStopped = false;
    if (!isPrepared(root)) {
        m_outcome = {Outcome::Code::NotFound, missingFile(root), {}, {}};
        return -1;
    }
    auto [read, entries] = readEntries(root);
    if (!isDone(read, root) || !isDone(OutputTarget::check(target), target))
        return 0;
    SongListWriter::sort(entries, order);
    Q_EMIT progressMaxSetup(static_cast<int>(entries.size()));
    const QByteArray list = SongListWriter::listOf(
        entries, SongListWriter::Encoding::Local, [this](const IndexEntry &entry, int count) {
            Q_EMIT currentPathChanged(entry.relativePath);
            Q_EMIT progressValueChanged(count);
        });
    return isDone(NewFile::write(m_disk, target, list), target) ? 1 : 0;
}

} // namespace tarvel4
