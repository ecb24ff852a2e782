#include "indexer/entrymatcher.h"
#include "indexer/sortkeys.h"
#include "tests/storage/table.h"

#include <QtTest>

using namespace tarvel4;

namespace {

constexpr quint32 date = 20090305;

/** Entries of an old index, in the order of their records. */
QVector<IndexEntry> known(const QStringList &paths)
{
    QVector<IndexEntry> entries;
    for (const QString &path : paths) {
        IndexEntry entry;
        entry.number = entry.order = static_cast<int>(entries.size());
        entry.title = "T%1"_s.arg(entry.number);
        entry.artist = "A"_s;
        entry.relativePath = path;
        entry.absolutePath = "/card"_s + path;
        entry.date = date;
        entries.append(entry);
    }
    return entries;
}

/** Songs of a scan; a path may be followed by a time of its own, as in "/a.mid@7". */
std::vector<ScannedSong> scanned(const QStringList &songs)
{
    std::vector<ScannedSong> found;
    for (const QString &song : songs) {
        const QString path = song.section(QLatin1Char('@'), 0, 0);
        found.push_back(
            {path, SortKeys::ofPath(path), date, song.section(QLatin1Char('@'), 1).toUInt()});
    }
    return found;
}

/** Each candidate as its title, path and marks: "-" gone, "!" to be read, "~" renamed. */
QStringList described(const std::vector<IndexCandidate> &candidates)
{
    QStringList texts;
    for (const IndexCandidate &candidate : candidates) {
        const IndexEntry &entry = candidate.entry;
        const auto mark = [](bool isSet, QLatin1Char sign) {
            return isSet ? QString(QChar(sign)) : QString();
        };
        texts << entry.title + entry.relativePath + mark(!candidate.isFound, QLatin1Char('-'))
                + mark(candidate.mustBeRead, QLatin1Char('!'))
                + mark(candidate.isRenamed, QLatin1Char('~'));
    }
    return texts;
}

} // namespace

/** Who is known, who is new, who is gone. */
class tst_EntryMatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void matching_data()
    {
        const Table<QStringList, QStringList, QStringList> row;
        row("nothing known: all are new", "", "/a.mid /b.mid", "/a.mid! /b.mid!");
        row("nothing found: all are gone", "/a.mid /b.mid", "", "T0/a.mid- T1/b.mid-");
        row("the same songs", "/a.mid /b.mid", "/a.mid /b.mid", "T0/a.mid T1/b.mid");
        row("another time: to be read", "/a.mid /b.mid", "/a.mid@5 /b.mid", "T0/a.mid! T1/b.mid");
        row("new songs come last, in the order of the scan", "/m.mid /n.mid",
            "/a.mid /m.mid /n.mid /z.mid", "T0/m.mid T1/n.mid /a.mid! /z.mid!");
        row("another case and another time", "/a.mid", "/A.mid@5", "T0/A.mid!~");
        row("records in another order than the scan's", "/c.mid /a.mid /b.mid",
            "/a.mid /b.mid /c.mid", "T0/c.mid T1/a.mid T2/b.mid");
        row("a song removed and one added", "/a.mid /b.mid /c.mid", "/b.mid /bb.mid /c.mid",
            "T0/a.mid- T1/b.mid T2/c.mid /bb.mid!");
        row("case does not tell songs apart", "/a.mid", "/A.MID", "T0/A.MID~");
        row("accented letters have cases, too", "/\u00e8.mid", "/\u00c8.mid", "T0/\u00c8.mid~");
        row("two spellings: each keeps its own entry", "/a.mid /A.mid", "/A.mid /a.mid",
            "T0/a.mid T1/A.mid");
        row("two spellings, one gone: the other keeps its own", "/A.mid /a.mid", "/a.mid",
            "T0/A.mid- T1/a.mid");
        row("a second spelling is new", "/a.mid", "/A.mid /a.mid", "T0/a.mid /A.mid!");
        row("an entry twice is matched once", "/a.mid /a.mid", "/a.mid", "T0/a.mid T1/a.mid-");
        row("outside ISO 8859-1: known by the recorded form", "/?.mid", "/\u0416.mid",
            "T0/\u0416.mid");
        row("two of one form, both still there", "/?.mid /?.mid", "/\u0414.mid /\u0416.mid",
            "T0/\u0414.mid T1/\u0416.mid");
        row("two of one form, one gone: nobody knows which, so it is read", "/?.mid /?.mid",
            "/\u0416.mid", "T0/\u0416.mid! T1/?.mid-");
        row("one more of a form: nobody knows which is new, so both are read", "/?.mid",
            "/\u0414.mid /\u0416.mid", "T0/\u0414.mid! /\u0416.mid!");
        row("two of one form, one exchanged: its time differs, so both are read", "/?.mid /?.mid",
            "/\u0414.mid@5 /\u0416.mid", "T0/\u0414.mid! T1/\u0416.mid!");
        row("a path that leads out of the memory matches nothing", "/../a.mid", "/a.mid",
            "T0/../a.mid- /a.mid!");
        row("a path without its slash matches nothing", "a.mid", "/a.mid", "T0a.mid- /a.mid!");
    }
    void matching()
    {
        const auto [entries, songs, expected] = cells<QStringList, QStringList, QStringList>();
        const auto candidates = matchEntries(known(entries), scanned(songs), "/card"_s);
        QCOMPARE(described(candidates), expected);
        int number = 0;
        for (const IndexCandidate &candidate : candidates) {
            const IndexEntry &entry = candidate.entry;
            QCOMPARE(candidate.sortKey, SortKeys::ofPath(entry.relativePath));
            QCOMPARE(entry.absolutePath, "/card"_s + entry.relativePath);
            QCOMPARE(entry.number, number);
            QCOMPARE(entry.order, number++);
            const bool isLate = songs.contains(entry.relativePath + "@5"_s);
            QCOMPARE(entry.time, isLate ? 5u : 0u);
        }
    }

    /** Names outside ISO 8859-1 of the same length are all alike to a record. */
    void manySongsOfOneFormTakeLinearTime()
    {
        constexpr int count = 50'000;
        QStringList paths;
        QStringList names;
        for (int i = 0; i < count; ++i) {
            paths.append("/??.mid"_s);
            names.append(QLatin1Char('/') + QString(QChar(0x4E00 + i % 20'000))
                         + QChar(0x4E00 + i / 20'000) + ".mid"_s);
        }
        const auto candidates = matchEntries(known(paths), scanned(names), "/card"_s);
        QCOMPARE(candidates.size(), static_cast<std::size_t>(count));
        QVERIFY(
            std::all_of(candidates.begin(), candidates.end(), [](const IndexCandidate &candidate) {
                return candidate.isFound && !candidate.mustBeRead;
            }));
        QCOMPARE(candidates.back().entry.relativePath, names.last());
    }
};

QTEST_GUILESS_MAIN(tst_EntryMatcher)
#include "tst_entrymatcher.moc"
