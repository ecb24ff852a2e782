#include "cli/command.h"
#include "cli/opencatalogue.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "db/database.h"
#include "library/songpath.h"

namespace {

ExitStatus printList(const QStringList &values, const char *key, Session &session)
{
    for (const QString &value : values) {
        Record record;
        record.add(key, value);
        session.records.writeLine(record, value);
    }
    return ExitStatus::Done;
}

ExitStatus printRecord(const SongInfo &song, Session &session)
{
    Record record;
    record.add("title", song.title);
    record.add("artist", song.artist);
    record.add("genre", song.genre);
    record.add("author", song.author);
    if (song.length >= 0)
        record.add("length", song.length);
    if (song.bpm >= 0)
        record.add("bpm", song.bpm);
    record.add("key", song.key);
    record.add("altArtist", song.altArtist);
    record.add("markers", markerArray(song.markers), markerText(song.markers));
    session.records.write(record);
    return ExitStatus::Done;
}

ExitStatus runCatalogue(const Arguments &arguments, Session &session)
{
    int questions = 0;
    for (const char *option : {"name", "title", "genres", "artists"})
        questions += arguments.has(option) ? 1 : 0;
    if (questions != 1)
        return wrongUsage(
            session,
            Cli::tr("catalogue vuole una sola opzione tra --name, --title, --genres e "
                    "--artists"));
    Database db;
    if (!openCatalogue(db, session))
        return ExitStatus::Failed;
    if (arguments.has("genres"))
        return printList(db.genres(), "genre", session);
    if (arguments.has("artists"))
        return printList(db.altArtists(), "artist", session);

    SongInfo song;
    const QString name = SongPath::catalogueKey(arguments.value("name"));
    const QString title = arguments.value("title").toUpper();
    const bool isFound = arguments.has("name") ? db.getRecordByFilename(name, song)
                                               : db.getRecordByTitle(title, song);
    if (isFound)
        return printRecord(song, session);
    session.host.say(Cli::tr("il catalogo non lo contiene, o non una volta sola"));
    return ExitStatus::SomeFailed;
}

} // namespace

Command catalogueCommand()
{
    return {"catalogue",
            "",
            QT_TRANSLATE_NOOP("Cli", "Cerca nel catalogo."),
            {{"name", Option::Text, "NAME",
              QT_TRANSLATE_NOOP("Cli", "la song con questo nome di file")},
             {"title", Option::Text, "TITLE",
              QT_TRANSLATE_NOOP("Cli", "la sola song con questo titolo")},
             {"genres", Option::Flag, nullptr, QT_TRANSLATE_NOOP("Cli", "i generi")},
             {"artists", Option::Flag, nullptr, QT_TRANSLATE_NOOP("Cli", "gli interpreti")}},
            0,
            0,
            runCatalogue};
}
