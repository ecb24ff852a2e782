#include "cli/command.h"
#include "cli/songpaths.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "library/editjob.h"
#include "library/songedit.h"
#include "songs/midi/rawmidifile.h"

#include <optional>

namespace tarvel4 {

namespace {

/** The changes that a command line asks for. */
struct Changes
{
    std::optional<QString> title;
    std::optional<QString> artist;
    std::optional<QString> genre;
    std::optional<QString> author;
    std::optional<QString> key;
    std::optional<int> length;
    std::optional<int> bpm;
    bool titleFromName = false;
    QVector<Marker> markers;

    bool any() const
    {
        return title || artist || genre || author || key || length || bpm || titleFromName
            || !markers.isEmpty();
    }
};

/** Reads the options of an edit; each function gives false where its option makes no sense. */
class ChangesReader
{
public:
    explicit ChangesReader(const Arguments &arguments)
        : m_arguments(arguments)
    {}

    /** What is wrong with the options; empty when nothing is. */
    QString read(Changes &changes) const
    {
        changes.title = text("title");
        changes.artist = text("artist");
        changes.genre = text("genre");
        changes.author = text("author");
        changes.key = text("key");
        changes.titleFromName = m_arguments.has("title-from-name");
        if (changes.title && changes.titleFromName)
            return Cli::tr("--title e --title-from-name si escludono");
        if (changes.key && !changes.key->isEmpty() && !RawMidiFile::isKnownKey(*changes.key))
            return Cli::tr("tonalità sconosciuta: %1").arg(*changes.key);
        if (!number("length", changes.length))
            return Cli::tr("--length vuole un numero di secondi");
        if (!number("bpm", changes.bpm))
            return Cli::tr("--bpm vuole un numero");
        if (!markers(changes.markers))
            return Cli::tr("--add-marker vuole BATTUTA:TESTO, con una battuta da 1 a 65535");
        return changes.any() ? QString() : Cli::tr("non c'è nulla da modificare");
    }

private:
    std::optional<QString> text(const char *option) const
    {
        if (!m_arguments.has(option))
            return std::nullopt;
        return m_arguments.value(option).trimmed(); // as the edit dialog takes it
    }

    bool number(const char *option, std::optional<int> &number) const
    {
        if (!m_arguments.has(option))
            return true;
        bool isNumber = false;
        number = m_arguments.value(option).toInt(&isNumber);
        return isNumber && *number >= 0;
    }

    bool markers(QVector<Marker> &markers) const
    {
        for (const QString &value : m_arguments.values("add-marker")) {
            const int colon = static_cast<int>(value.indexOf(QLatin1Char(':')));
            const quint16 bar = value.left(colon).toUShort();
            const QString label = value.mid(colon + 1).trimmed();
            if (colon < 0 || bar == 0 || label.isEmpty())
                return false;
            markers.append({bar, label});
        }
        return true;
    }

    const Arguments &m_arguments;
};

SongInfo changed(SongInfo info, const Changes &changes)
{
    info.title = changes.titleFromName ? SongPath::baseName(info.filename)
                                       : changes.title.value_or(info.title);
    info.artist = changes.artist.value_or(info.artist);
    info.genre = changes.genre.value_or(info.genre);
    info.author = changes.author.value_or(info.author);
    info.key = changes.key.value_or(info.key);
    info.length = changes.length.value_or(info.length);
    info.bpm = changes.bpm.value_or(info.bpm);
    return info;
}

ExitStatus runEdit(const Arguments &arguments, Session &session)
{
    Changes changes;
    const QString problem = ChangesReader(arguments).read(changes);
    if (!problem.isEmpty())
        return wrongUsage(session, problem);
    SongPaths paths(session, SongPaths::Takes::Files);
    if (!paths.recoverAndCollect(arguments.operands(), false))
        return ExitStatus::Failed;

    const SongChange change{[&changes](const SongInfo &info) { return changed(info, changes); },
                            changes.markers};
    int next = 0;
    SaveRun saves(Disk::real(), &session.journal, QStringLiteral("edit"));
    const EditSummary summary =
        EditJob(session.host, saves).run(paths.files(), change, [&](const SongOutcome &song) {
            const QString &path = paths.songs().at(next++).given;
            Record record = session.records.begin();
            if (song.isFailure()) {
                sayFailure(session, path, song.cause);
                session.records.write(errorRecord(record, path, song.cause));
            } else {
                sayDone(session, path, Cli::tr("salvata"));
                session.records.write(songRecord(record, path, song.after));
            }
        });
    return summary.unsaved.isEmpty() ? ExitStatus::Done : ExitStatus::SomeFailed;
}

} // namespace

Command editCommand()
{
    return {
        "edit",
        "PATH...",
        QT_TRANSLATE_NOOP("Cli", "Corregge i dati delle song a mano."),
        "edit --title \"Santa Lucia\" --key Bb SANTALUC.mid\n"
        "edit --title-from-name --add-marker 1:Intro *.mid",
        withPathLists(
            {{"title", Option::Text, "T", QT_TRANSLATE_NOOP("Cli", "titolo")},
             {"artist", Option::Text, "A", QT_TRANSLATE_NOOP("Cli", "interprete")},
             {"genre", Option::Text, "G", QT_TRANSLATE_NOOP("Cli", "genere musicale")},
             {"author", Option::Text, "U", QT_TRANSLATE_NOOP("Cli", "autore")},
             {"length", Option::Text, "SECONDS", QT_TRANSLATE_NOOP("Cli", "durata in secondi")},
             {"bpm", Option::Text, "N", QT_TRANSLATE_NOOP("Cli", "battiti al minuto")},
             {"key", Option::Text, "K", QT_TRANSLATE_NOOP("Cli", "tonalità, come Bb oppure A-")},
             {"title-from-name", Option::Flag, nullptr,
              QT_TRANSLATE_NOOP("Cli", "prende il titolo dal nome del file")},
             {"add-marker", Option::Text, "BAR:TEXT",
              QT_TRANSLATE_NOOP("Cli", "aggiunge un marker; può essere ripetuta")}}),
        1,
        INT_MAX,
        runEdit};
}

} // namespace tarvel4
