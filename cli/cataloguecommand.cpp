#include "cli/command.h"
#include "cli/opencatalogue.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "db/database.h"
#include "library/songpath.h"

namespace tarvel4 {

namespace {

ExitStatus printList(const QStringList &values, const char *key, Session &session)
{
    for (const QString &value : values) {
        Record record = session.records.begin();
        record.addText(key, value);
        session.records.writeLine(record, value);
    }
    return ExitStatus::Done;
}

ExitStatus printRecord(const SongInfo &song, Session &session)
{
    Record record = session.records.begin();
    record.addText("title", song.title);
    record.addText("artist", song.artist);
    record.addText("genre", song.genre);
    record.addText("author", song.author);
    if (song.length >= 0)
        record.addNumber("length", song.length);
    if (song.bpm >= 0)
        record.addNumber("bpm", song.bpm);
    record.addText("key", song.key);
    record.addText("altArtist", song.altArtist);
    addMarkers(record, song.markers);
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
            "catalogue --name SANTALUC\n"
            "catalogue --genres",
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

} // namespace tarvel4
