#include "indexer/entrymatcher.h"

#include "indexer/indexformat.h"
#include "indexer/sortkeys.h"

#include <QHash>
#include <QStringBuilder>

#include <algorithm>
#include <utility>

namespace tarvel4 {

namespace {

/** What a record holds of a path. */
QString recorded(const QString &path)
{
    return QString::fromLatin1(path.toLatin1());
}

QString caselessRecorded(const QString &path)
{
    return recorded(path).toCaseFolded();
}

bool isWhollyKnown(const IndexEntry &entry)
{
    return !entry.title.isEmpty() && !entry.artist.isEmpty()
        && entry.kind <= IndexFormat::highestKind;
}

bool haveSameTime(const IndexEntry &entry, const ScannedSong &song)
{
    return entry.date == song.date && entry.time == song.time;
}

/** Pairs the old entries with the songs, in a time that grows with their number only. */
class Matching
{
public:
    Matching(const QVector<IndexEntry> &known, const std::vector<ScannedSong> &songs,
             const QString &root)
        : m_songs(songs)
        , m_root(root)
        , m_isMatched(songs.size(), false)
    {
        m_candidates.reserve(std::max(static_cast<std::size_t>(known.size()), songs.size()));
        for (const IndexEntry &entry : known)
            m_candidates.push_back({entry, {}, false, false, false});
        m_knownCount = m_candidates.size();
    }

    /** Both stand nearly in the same order, so that most are found by walking them side by side. */
    void pairSamePlaces()
    {
        std::size_t known = 0;
        for (std::size_t song = 0; song < m_songs.size() && known < m_knownCount; ++song) {
            if (m_candidates[known].entry.relativePath == m_songs[song].relativePath)
                pair(known++, song);
        }
    }

    /** Pairs those whose paths have the same form, in their order. */
    void pairSameForms(QString (*form)(const QString &))
    {
        QHash<QString, Group> groups;
        for (std::size_t known = 0; known < m_knownCount; ++known) {
            if (!m_candidates[known].isFound)
                groups[form(m_candidates[known].entry.relativePath)].known.push_back(known);
        }
        if (groups.isEmpty())
            return;
        for (std::size_t song = 0; song < m_songs.size(); ++song) {
            const auto group =
                m_isMatched[song] ? groups.end() : groups.find(form(m_songs[song].relativePath));
            if (group != groups.end())
                group->songs.push_back(song);
        }
        for (const Group &group : std::as_const(groups))
            pairGroup(group);
    }

    void appendNew()
    {
        for (std::size_t song = 0; song < m_songs.size(); ++song) {
            if (m_isMatched[song])
                continue;
            IndexCandidate candidate;
            candidate.entry.number = candidate.entry.order = static_cast<int>(m_candidates.size());
            setPath(candidate.entry, m_songs[song]);
            m_candidates.push_back(candidate);
            pair(m_candidates.size() - 1, song);
        }
    }

    std::vector<IndexCandidate> takeCandidates()
    {
        for (IndexCandidate &candidate : m_candidates) {
            if (!candidate.isFound)
                candidate.sortKey = SortKeys::ofPath(candidate.entry.relativePath);
        }
        return std::move(m_candidates);
    }

private:
    struct Group
    {
        std::vector<std::size_t> known;
        std::vector<std::size_t> songs;
    };

    /** Where several share a form, only their number and times tell whether they are the same ones;
     * when these differ, all of them are read again. */
    void pairGroup(const Group &group)
    {
        const std::size_t count = std::min(group.known.size(), group.songs.size());
        const bool isOnlyOne = group.known.size() == 1 && group.songs.size() == 1;
        bool isCertain = isOnlyOne || group.known.size() == group.songs.size();
        for (std::size_t i = 0; i < count && isCertain && !isOnlyOne; ++i)
            isCertain = haveSameTime(m_candidates[group.known[i]].entry, m_songs[group.songs[i]]);
        for (std::size_t i = 0; i < count; ++i) {
            pair(group.known[i], group.songs[i]);
            if (!isCertain)
                m_candidates[group.known[i]].mustBeRead = true;
        }
    }

    void pair(std::size_t known, std::size_t song)
    {
        const ScannedSong &found = m_songs[song];
        IndexCandidate &candidate = m_candidates[known];
        IndexEntry &entry = candidate.entry;
        m_isMatched[song] = true;
        candidate.isFound = true;
        candidate.sortKey = found.sortKey;
        candidate.mustBeRead = !isWhollyKnown(entry) || !haveSameTime(entry, found);
        entry.date = found.date;
        entry.time = found.time;
        if (entry.relativePath == found.relativePath)
            return;
        candidate.isRenamed = entry.relativePath.toLatin1() != found.relativePath.toLatin1();
        setPath(entry, found);
    }

    void setPath(IndexEntry &entry, const ScannedSong &song) const
    {
        entry.relativePath = song.relativePath;
        entry.absolutePath = m_root % song.relativePath;
    }

    const std::vector<ScannedSong> &m_songs;
    const QString &m_root;
    std::vector<bool> m_isMatched; ///< of each song
    std::vector<IndexCandidate> m_candidates; ///< first those of the old index
    std::size_t m_knownCount = 0;
};

} // namespace

std::vector<IndexCandidate> matchEntries(const QVector<IndexEntry> &known,
                                         const std::vector<ScannedSong> &songs, const QString &root)
{
    Matching matching(known, songs, root);
    matching.pairSamePlaces();
    // A song takes the entry of its own spelling before another one can, in case both are on the
    // memory.
    matching.pairSameForms(recorded);
    matching.pairSameForms(caselessRecorded);
    matching.appendNew();
    return matching.takeCandidates();
}

} // namespace tarvel4
