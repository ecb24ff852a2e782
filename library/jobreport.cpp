#include "library/jobreport.h"

#include "library/companion.h"
#include "library/fieldtexts.h"

#include <QHash>
#include <QLocale>
#include <QSet>

#include <algorithm>
#include <array>
#include <utility>

namespace tarvel4 {

namespace {

using Group = JobReport::Group;

constexpr int groupCount = static_cast<int>(Group::Unchanged) + 1;

struct Words
{
    const char *one;
    const char *many;
};

/** By group; null where it depends on the job. */
constexpr std::array<Words, groupCount> groupWords{{
    {QT_TRANSLATE_NOOP("JobReport", "non letta"), QT_TRANSLATE_NOOP("JobReport", "non lette")},
    {nullptr, nullptr},
    {QT_TRANSLATE_NOOP("JobReport", "con la grafica (.cdg) non copiata"),
     QT_TRANSLATE_NOOP("JobReport", "con la grafica (.cdg) non copiata")},
    {QT_TRANSLATE_NOOP("JobReport", "problema della memoria"),
     QT_TRANSLATE_NOOP("JobReport", "problemi della memoria")},
    {QT_TRANSLATE_NOOP("JobReport", "non raggiunta"),
     QT_TRANSLATE_NOOP("JobReport", "non raggiunte")},
    {QT_TRANSLATE_NOOP("JobReport", "non nel catalogo"),
     QT_TRANSLATE_NOOP("JobReport", "non nel catalogo")},
    {QT_TRANSLATE_NOOP("JobReport", "non pubblicata da K-Varo"),
     QT_TRANSLATE_NOOP("JobReport", "non pubblicate da K-Varo")},
    {QT_TRANSLATE_NOOP("JobReport", "da confermare"),
     QT_TRANSLATE_NOOP("JobReport", "da confermare")},
    {QT_TRANSLATE_NOOP("JobReport", "già presente"),
     QT_TRANSLATE_NOOP("JobReport", "già presenti")},
    {QT_TRANSLATE_NOOP("JobReport", "sostituita"), QT_TRANSLATE_NOOP("JobReport", "sostituite")},
    {QT_TRANSLATE_NOOP("JobReport", "aggiornata"), QT_TRANSLATE_NOOP("JobReport", "aggiornate")},
    {QT_TRANSLATE_NOOP("JobReport", "corretta"), QT_TRANSLATE_NOOP("JobReport", "corrette")},
    {QT_TRANSLATE_NOOP("JobReport", "tornata com'era"),
     QT_TRANSLATE_NOOP("JobReport", "tornate com'erano")},
    {QT_TRANSLATE_NOOP("JobReport", "copiata"), QT_TRANSLATE_NOOP("JobReport", "copiate")},
    {QT_TRANSLATE_NOOP("JobReport", "importata"), QT_TRANSLATE_NOOP("JobReport", "importate")},
    {QT_TRANSLATE_NOOP("JobReport", "già completa"),
     QT_TRANSLATE_NOOP("JobReport", "già complete")},
}};

bool isFailure(Group group)
{
    return group <= Group::Memory;
}

Group groupOf(const SongOutcome &song)
{
    switch (song.result) {
    case SongResult::Read:
        return Group::Imported;
    case SongResult::Updated:
        return song.isComplete() ? Group::Unchanged : Group::Updated;
    case SongResult::Edited:
        return Group::Edited;
    case SongResult::Restored:
        return Group::Restored;
    case SongResult::Copied:
        return Group::Copied;
    case SongResult::Kept:
        return Group::Kept;
    case SongResult::NotFound:
        return Group::NotFound;
    case SongResult::Refused:
        return Group::Refused;
    case SongResult::Unreadable:
        return Group::Unreadable;
    case SongResult::Failed:
        break;
    }
    return Companion::isCompanion(song.cause.path) ? Group::Companion : Group::Failed;
}

QString fieldNames(const QVector<FieldChange> &changes)
{
    QStringList names;
    for (const FieldChange &change : changes)
        names += FieldTexts::nameOf(change.field);
    return names.join(QLatin1String(", "));
}

/** A name may hold anything; a line of the report stays one. */
QString onOneLine(QString text)
{
    for (QChar &letter : text) {
        if (letter.category() == QChar::Other_Control || letter == QChar::LineSeparator
            || letter == QChar::ParagraphSeparator)
            letter = QChar::ReplacementCharacter;
    }
    return text;
}

} // namespace

QString JobReport::Entry::sentence() const
{
    if (!line.isEmpty())
        return line;
    if (!cause) {
        SongOutcome song;
        song.path = path;
        song.cause = cause;
        return song.sentence();
    }
    switch (group) {
    case Group::NotReached:
        return tr("il lavoro si è fermato prima");
    case Group::NotFound:
        return tr("non trovata né per nome né per titolo");
    case Group::Refused:
        return tr("lasciata com'era, come hai scelto");
    case Group::ToConfirm:
        return tr("non pubblicata da K-Varo: prima di cambiarla ti viene chiesto");
    case Group::Kept:
        return tr("il file che c'era già è rimasto, come hai scelto");
    case Group::Displaced:
        return tr("un'altra song con lo stesso nome ha preso il suo posto");
    case Group::Unchanged:
        return tr("il catalogo non aggiunge nulla");
    default:
        return fieldNames(changes);
    }
}

JobReport::JobReport(Job job, const QDateTime &time)
    : m_job(job)
    , m_time(time)
{}

SongObserver JobReport::observe(const SongObserver &next)
{
    return [this, next](const SongOutcome &song) {
        add(song);
        if (next)
            next(song);
    };
}

void JobReport::add(const SongOutcome &song)
{
    add(song, groupOf(song));
}

void JobReport::add(const SongOutcome &song, Group group)
{
    m_entries.append({song.path, group, song.cause, {}, song.changes});
}

void JobReport::displace(const QStringList &paths)
{
    const QSet<QString> displaced(paths.cbegin(), paths.cend());
    for (Entry &entry : m_entries) {
        if (entry.group == Group::Copied && displaced.contains(entry.path))
            entry.group = Group::Displaced;
    }
}

void JobReport::finish(const QStringList &paths)
{
    QHash<QString, int> told; // a list may hold a path twice
    for (const Entry &entry : std::as_const(m_entries))
        ++told[entry.path];
    for (const QString &path : paths) {
        if (--told[path] < 0)
            m_entries.append({path, Group::NotReached, {}, {}, {}});
    }
    std::stable_sort(m_entries.begin(), m_entries.end(), [this](const Entry &a, const Entry &b) {
        return rank(a.group) < rank(b.group);
    });
}

/** By which the groups are in order: a preview is read for what would change. */
int JobReport::rank(Group group) const
{
    const bool wouldChange =
        m_job == Job::Preview && (group == Group::ToConfirm || group == Group::Updated);
    const int place = static_cast<int>(group);
    return isFailure(group) || wouldChange ? place : place + groupCount;
}

QVector<JobReport::Group> JobReport::groups() const
{
    QVector<Group> found;
    for (const Entry &entry : m_entries) {
        if (found.isEmpty() || found.constLast() != entry.group)
            found.append(entry.group);
    }
    return found;
}

int JobReport::count(Group group) const
{
    return static_cast<int>(
        std::count_if(m_entries.cbegin(), m_entries.cend(),
                      [group](const Entry &entry) { return entry.group == group; }));
}

bool JobReport::hasFailures() const
{
    return std::any_of(m_entries.cbegin(), m_entries.cend(),
                       [](const Entry &entry) { return isFailure(entry.group); });
}

QString JobReport::heading() const
{
    const auto jobName = [this] {
        switch (m_job) {
        case Job::Import:
            return tr("Importazione");
        case Job::Synchronise:
            return tr("Sincronizzazione");
        case Job::Preview:
            return tr("Anteprima della sincronizzazione");
        case Job::Transfer:
            return tr("Trasferimento");
        case Job::Edit:
            return tr("Correzione");
        case Job::Undo:
            return tr("Annullamento");
        }
        return QString();
    };
    QStringList counts;
    for (const Group group : groups()) {
        const int number = count(group);
        counts += QString::number(number) + QLatin1Char(' ') + word(group, number == 1);
    }
    if (counts.isEmpty())
        counts += tr("nessuna song");
    return jobName() + QLatin1String(": ") + counts.join(QLatin1String(", "));
}

QString JobReport::word(Group group, bool isOne) const
{
    if (group == Group::Failed)
        return tr(failureWord(isOne));
    if (group == Group::Updated && m_job == Job::Preview)
        return tr("da aggiornare");
    const Words &words = groupWords.at(static_cast<std::size_t>(group));
    return tr(isOne ? words.one : words.many);
}

const char *JobReport::failureWord(bool isOne) const
{
    switch (m_job) {
    case Job::Preview:
        return isOne ? QT_TRANSLATE_NOOP("JobReport", "non salvabile")
                     : QT_TRANSLATE_NOOP("JobReport", "non salvabili");
    case Job::Transfer:
        return isOne ? QT_TRANSLATE_NOOP("JobReport", "non copiata")
                     : QT_TRANSLATE_NOOP("JobReport", "non copiate");
    case Job::Undo:
        return isOne ? QT_TRANSLATE_NOOP("JobReport", "non tornata com'era")
                     : QT_TRANSLATE_NOOP("JobReport", "non tornate com'erano");
    default:
        return isOne ? QT_TRANSLATE_NOOP("JobReport", "non salvata")
                     : QT_TRANSLATE_NOOP("JobReport", "non salvate");
    }
}

QString JobReport::asText() const
{
    QString text = heading() + QLatin1Char('\n')
        + QLocale::system().toString(m_time, QLocale::ShortFormat) + QLatin1Char('\n');
    bool isFirst = true;
    Group group{};
    for (const Entry &entry : m_entries) {
        if (isFirst || entry.group != group) {
            group = entry.group;
            isFirst = false;
            const int number = count(group);
            text += QLatin1Char('\n') + QString::number(number) + QLatin1Char(' ')
                + word(group, number == 1) + QLatin1Char('\n');
        }
        const QString sentence = entry.sentence();
        QStringList parts;
        for (const QString &part : {entry.path, sentence}) {
            if (!part.isEmpty())
                parts += onOneLine(part);
        }
        text += QLatin1String("  ") + parts.join(QLatin1String(": ")) + QLatin1Char('\n');
    }
    return text;
}

} // namespace tarvel4
