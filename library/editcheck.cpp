#include "library/editcheck.h"

#include "songs/song.h"

#include <algorithm>
#include <utility>

namespace tarvel4 {

namespace {

/** The songs of one format. */
struct Group
{
    QString format;
    int songs = 0;
    const SongEdit *sample = nullptr; ///< null: none of them can be read
};

/** A note, and the groups that it is about. */
struct Finding
{
    FieldNote note;
    int songs = 0;
    QStringList formats;
};

bool isWritten(const ApplyToAll &fields, const QString &key)
{
    return (fields.artist && key == keyOf(SongField::Artist))
        || (fields.genre && key == keyOf(SongField::Genre))
        || (fields.author && key == keyOf(SongField::Author));
}

/** Formats of which the same is to be said of a field stand together. */
void add(QVector<Finding> &findings, const FieldNote &note, const Group &group)
{
    const auto same = std::find_if(findings.begin(), findings.end(), [&note](const Finding &f) {
        return f.note.field == note.field && f.note.text == note.text;
    });
    if (same == findings.end())
        return findings.append({note, group.songs, {group.format}});
    same->songs += group.songs;
    same->formats += group.format;
}

} // namespace

QVector<FieldNote> EditCheck::notes(const QVector<Song> &songs, const ApplyToAll &fields,
                                    const SongInfo &edited)
{
    QVector<Group> groups;
    for (const Song &song : songs) {
        auto group = std::find_if(groups.begin(), groups.end(),
                                  [&song](const Group &g) { return g.format == song.format; });
        if (group == groups.end())
            group = groups.insert(groups.end(), Group{song.format});
        ++group->songs;
        if (!group->sample)
            group->sample = sampleOf(song);
    }
    QVector<Finding> findings;
    const SongChange change = fields.changeFrom(edited);
    for (const Group &group : std::as_const(groups)) {
        if (!group.sample)
            continue;
        for (const FieldNote &note : group.sample->check(change.record(group.sample->info()))) {
            if (isWritten(fields, note.field))
                add(findings, note, group);
        }
    }

    std::stable_sort(
        findings.begin(), findings.end(),
        [](const Finding &one, const Finding &other) { return one.note.grade < other.note.grade; });

    QVector<FieldNote> notes;
    for (const Finding &finding : std::as_const(findings)) {
        FieldNote note = finding.note;
        if (songs.size() > 1)
            note.text = tr("in %1 song su %2 (%3): ")
                            .arg(finding.songs)
                            .arg(songs.size())
                            .arg(finding.formats.join(QLatin1String(", ")))
                + note.text;
        const auto sameField =
            std::find_if(notes.begin(), notes.end(),
                         [&note](const FieldNote &n) { return n.field == note.field; });
        if (sameField == notes.end())
            notes.append(note);
        else if (note.grade < FieldNote::Grade::NearLimit || note.grade == sameField->grade)
            sameField->text += QLatin1String("; ") + note.text;
    }
    return notes;
}

/** Null where no song of its format was read, this one included. */
const SongEdit *EditCheck::sampleOf(const Song &song)
{
    const auto known = m_samples.find(song.format);
    if (known != m_samples.end())
        return &known->second;
    if (m_unread.contains(song.path))
        return nullptr;
    SongEdit sample;
    if (!sample.load(song.path)) {
        m_unread.insert(song.path);
        return nullptr;
    }
    return &m_samples.emplace(song.format, std::move(sample)).first->second;
}

} // namespace tarvel4
