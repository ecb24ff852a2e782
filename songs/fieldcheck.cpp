#include "songs/fieldcheck.h"

#include "songs/fieldrules.h"
#include "songs/song.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace tarvel4 {

namespace {

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(FieldCheck)
};

using Grade = FieldNote::Grade;

constexpr int fewCharacters = 10;

struct TextField
{
    SongField field;
    QString SongInfo::*text;
};
constexpr TextField textFields[] = {{SongField::Title, &SongInfo::title},
                                    {SongField::Artist, &SongInfo::artist},
                                    {SongField::Genre, &SongInfo::genre},
                                    {SongField::Author, &SongInfo::author}};

FieldNote refused(const Outcome &cause)
{
    return {Grade::Refused, cause.field, cause.sentence()};
}

/** The one that the save itself blames comes first, then each text that does not fit by itself. */
QVector<FieldNote> refusals(const Song &song, const SongInfo &edited)
{
    const auto whole = song.clone();
    FieldRules::applyEdit(*whole, edited);
    const Outcome cause = whole->whyNotSavable();
    if (cause)
        return {};
    QVector<FieldNote> notes{refused(cause)};
    for (const TextField &place : textFields) {
        const auto alone = song.clone();
        alone->write(place.field, edited);
        const Outcome ownCause = alone->whyNotSavable();
        if (ownCause.field == keyOf(place.field) && ownCause.field != cause.field)
            notes.append(refused(ownCause));
    }
    return notes;
}

/** A text as it would be read back, with a mark for each letter that has no shape. */
QString shown(QString text)
{
    for (QChar &letter : text) {
        if (!letter.isPrint())
            letter = QChar::ReplacementCharacter;
    }
    return text;
}

/** Empty where nothing is to be said. */
FieldNote noteOf(const TextLimits &limits, const QString &wanted, const QString &stored)
{
    const int bytes = static_cast<int>(wanted.left(limits.characters).toUtf8().size());
    if (limits.bytes > 0 && bytes > limits.bytes)
        return {Grade::Misread,
                {},
                Texts::tr("occuperebbe %1 byte, più di %2: altri programmi non leggerebbero più "
                          "la song")
                    .arg(bytes)
                    .arg(limits.bytes)};
    if (!stored.isEmpty() && !wanted.startsWith(stored))
        return {Grade::Garbled, {}, Texts::tr("il lettore mostrerà: %1").arg(shown(stored))};
    if (stored.size() < wanted.size())
        return {
            Grade::Cut,
            {},
            Texts::tr("ne resteranno %1 caratteri su %2").arg(stored.size()).arg(wanted.size())};
    const int left = static_cast<int>(limits.characters - wanted.size());
    if (limits.characters > 0 && left <= fewCharacters)
        return {Grade::NearLimit, {}, Texts::tr("caratteri che restano: %1").arg(left)};
    return {};
}

} // namespace

QVector<FieldNote> FieldCheck::ofEdit(const Song &song, const SongInfo &edited)
{
    const auto trial = song.trial();
    QVector<FieldNote> notes = refusals(*trial, edited);
    SongInfo storable = edited; // what is refused would hide what becomes of the rest
    QVector<TextField> others;
    for (const TextField &place : textFields) {
        const auto isHere = [&](const FieldNote &note) { return note.field == keyOf(place.field); };
        if (std::any_of(notes.cbegin(), notes.cend(), isHere))
            (storable.*place.text).clear();
        else
            others.append(place);
    }
    const auto written = trial->clone();
    FieldRules::applyEdit(*written, storable);
    if (!written->whyNotSavable())
        return notes;
    for (const TextField &place : std::as_const(others)) {
        FieldNote note =
            noteOf(song.limitsOf(place.field), edited.*place.text, written->textIn(place.field));
        note.field = keyOf(place.field);
        if (!note.text.isEmpty())
            notes.append(note);
    }
    return notes;
}

} // namespace tarvel4
