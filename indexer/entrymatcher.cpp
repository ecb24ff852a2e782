#include "indexer/entrymatcher.h"

#include <QHash>

#include <algorithm>

namespace {

/** The entries that no song has matched yet, by a form of their paths. */
class Unmatched
{
public:
    explicit Unmatched(bool caseMatters)
        : m_caseMatters(caseMatters)
    {}

    void add(const QString &path, int candidate) { m_candidates[form(path)].append(candidate); }

    /** Takes an entry for a song, the one with the song's date where several would do; -1: none. */
    int take(const ScannedSong &song, const QVector<IndexCandidate> &candidates)
    {
        const auto it = m_candidates.find(form(song.relativePath));
        if (it == m_candidates.end())
            return -1;
        QVector<int> &fitting = *it;
        fitting.erase(
            std::remove_if(fitting.begin(), fitting.end(),
                           [&](int candidate) { return candidates.at(candidate).isFound; }),
            fitting.end());
        if (fitting.isEmpty())
            return -1;
        const auto dated = std::find_if(fitting.begin(), fitting.end(), [&](int candidate) {
            const IndexEntry &entry = candidates.at(candidate).entry;
            return entry.date == song.date && entry.time == song.time;
        });
        return fitting.takeAt(dated == fitting.end() ? 0
                                                     : static_cast<int>(dated - fitting.begin()));
    }

private:
    QString form(const QString &path) const
    {
        const QString stored = QString::fromLatin1(path.toLatin1());
        return m_caseMatters ? stored : stored.toCaseFolded();
    }

    bool m_caseMatters;
    QHash<QString, QVector<int>> m_candidates;
};

void setPath(IndexEntry &entry, const QString &relativePath, const QString &root)
{
    entry.relativePath = relativePath;
    entry.absolutePath = root + relativePath;
}

void setFound(IndexCandidate &candidate, const ScannedSong &song, const QString &root)
{
    IndexEntry &entry = candidate.entry;
    candidate.isFound = true;
    candidate.isRenamed = entry.relativePath.toLatin1() != song.relativePath.toLatin1();
    candidate.mustBeRead =
        entry.title.isEmpty() || entry.date != song.date || entry.time != song.time;
    setPath(entry, song.relativePath, root);
    entry.date = song.date;
    entry.time = song.time;
}

IndexCandidate newCandidate(const ScannedSong &song, qint32 number, const QString &root)
{
    IndexCandidate candidate;
    candidate.entry.number = candidate.entry.order = number;
    setFound(candidate, song, root);
    return candidate;
}

} // namespace

QVector<IndexCandidate> matchEntries(const QVector<IndexEntry> &known,
                                     const QVector<ScannedSong> &songs, const QString &root)
{
    QVector<IndexCandidate> candidates;
    candidates.reserve(std::max(known.size(), songs.size()));
    Unmatched exact(true);
    Unmatched caseless(false);
    for (const IndexEntry &entry : known) {
        exact.add(entry.relativePath, candidates.size());
        caseless.add(entry.relativePath, candidates.size());
        candidates.append({entry, false, false, false});
    }

    // A song takes the entry of its own spelling before another one can, in case both are on the
    // memory.
    QVector<int> left;
    for (int i = 0; i < songs.size(); ++i) {
        const int match = known.isEmpty() ? -1 : exact.take(songs.at(i), candidates);
        if (match < 0)
            left.append(i);
        else
            setFound(candidates[match], songs.at(i), root);
    }
    for (const int i : std::as_const(left)) {
        const int match = known.isEmpty() ? -1 : caseless.take(songs.at(i), candidates);
        if (match < 0)
            candidates.append(newCandidate(songs.at(i), candidates.size(), root));
        else
            setFound(candidates[match], songs.at(i), root);
    }
    return candidates;
}
