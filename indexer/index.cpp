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

#include <QBuffer>
#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tarvel4 {

using namespace IndexFormat;

namespace {

QString withoutTrailingSeparator(QString path)
{
    if (path.endsWith(u'/') || path.endsWith(u'\\'))
        path.chop(1);
    return path;
}

/** The root as it is joined with names: absolute, and without the separator at its end. */
QString joinable(const QString &root)
{
    const QString path = withoutTrailingSeparator(root);
    if (path.isEmpty() || !QDir::isRelativePath(path))
        return path;
    return withoutTrailingSeparator(QDir::cleanPath(QDir(path + u'/').absolutePath()));
}

QString filePath(const QString &root, const char *name)
{
    return withoutTrailingSeparator(root) + u'/' + QLatin1String(name);
}

} // namespace

Index::Index(QObject *parent, Disk &disk)
    : QObject(parent)
    , m_disk(disk)
{}

bool Index::isPrepared(const QString &root)
{
    return !root.isEmpty()
        && std::all_of(preparedFiles.begin(), preparedFiles.end(), [&root](const char *name) {
               return QFileInfo::exists(filePath(root, name));
           });
}

bool Index::deleteIndex(const QString &root)
{
    if (root.isEmpty())
        return false;
    qDebug() << "delete index";
    bool deleted = true;
    for (const char *name : deletedFiles)
        deleted = m_disk.remove(filePath(root, name)) && deleted;
    return m_disk.remove(filePath(root, unfinishedNumFile)) && deleted;
}

void Index::start(const QString &root)
{
    m_root = joinable(root);
    m_songs.clear();
    m_entries.clear();
    m_changed = m_written = m_failed = false;
    m_found = 0;
}

bool Index::rebuild(const QString &root)
{
    start(root);
    Q_EMIT progressValueChanged(0);
    if (root.isEmpty() || !scan() || isStopped()) {
        m_failed = true;
        return false;
    }
    if (!deleteIndex(m_root)) {
        m_failed = true;
        if (isPrepared(m_root))
            return false; // a write-protected memory
    }
    build();
    return isPrepared(m_root) && !m_failed;
}

bool Index::update(const QString &root)
{
    start(root);
    if (!isPrepared(m_root))
        return rebuild(root);
    if (!loadEntries()) {
        m_failed = true;
        return false;
    }
    Q_EMIT progressValueChanged(0);
    if (!scan()) {
        m_failed = true;
        return false;
    }
    build();
    return isPrepared(m_root) && !m_failed;
}

/** A record's number is its place; an index in which one is not is read by its numbers and then
 * numbered anew. */
bool Index::loadEntries()
{
    IndexLoader loader(m_root);
    if (!loader.load())
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
    return memory.scan(m_root);
}

void Index::build()
{
    if (m_found == 0)
        return; // required: nothing is written, not even by an update of a memory whose songs are
                // gone
    std::vector<IndexCandidate> candidates = matchEntries(m_entries, m_songs, m_root);
    if (!readSongs(candidates)) {
        m_failed = true;
        return;
    }
    if (!m_changed)
        return;
    m_entries.clear();
    for (IndexCandidate &candidate : candidates) {
        if (candidate.entry.number >= 0)
            m_entries.append(std::move(candidate.entry));
    }
    if (m_entries.isEmpty())
        m_failed = true; // all songs vanished under the scan: this is not the memory that it was
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
        if (isStopped())
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
    if (!m_written) {
        m_failed = true;
        deleteIndex(m_root);
    }
}

/**
 * While the files are written the memory does not count as prepared: the counts go first and come
 * last, so that a run that is cut short can't leave a mixture that looks like an index.
 */
bool Index::writeAll()
{
    if (!m_disk.remove(filePath(m_root, numFile)) || !m_disk.syncVolume(m_root))
        return false;
    IndexWriter writer(m_root, m_entries, m_disk);
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
    if (writer.writeNumfileIndex(titles, artists) < 0)
        return false;
    Q_EMIT progressValueChanged(100);
    return true;
}

QVector<IndexEntry> Index::readEntries(const QString &root, bool &ok)
{
    IndexLoader loader(withoutTrailingSeparator(root));
    ok = loader.load();
    return ok ? loader.takeEntries() : QVector<IndexEntry>();
}

int Index::writeSongList(const QString &root, const QString &target, int order)
{
    if (!isPrepared(root))
        return -1;
    bool loaded = false;
    QVector<IndexEntry> entries = readEntries(root, loaded);
    if (!loaded)
        return 0;
    SongListWriter::sort(entries, order);
    if (OutputTarget::obstacleAt(target) != OutputTarget::Obstacle::None)
        return 0;
    Q_EMIT progressMaxSetup(entries.size());
    QBuffer list;
    list.open(QIODevice::WriteOnly);
    SongListWriter::write(list, entries, SongListWriter::Encoding::Local,
                          [this](const IndexEntry &entry, int count) {
                              Q_EMIT currentPathChanged(entry.relativePath);
                              Q_EMIT progressValueChanged(count);
                          });
    return NewFile::write(m_disk, target, list.data()) ? 1 : 0;
}

} // namespace tarvel4
