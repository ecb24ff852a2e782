#include "cli/command.h"
#include "cli/songpaths.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "library/importjob.h"

#include <optional>

namespace tarvel4 {

namespace {

/** The keys that the user wants, and those of a failure; none but for a problem, which is said. */
std::optional<QByteArrayList> keysOf(const Arguments &arguments, Session &session)
{
    QByteArrayList keys = songKeys();
    if (arguments.has("fields")) {
        keys = arguments.value("fields").toUtf8().split(',');
        for (const QByteArray &key : std::as_const(keys)) {
            if (!songKeys().contains(key)) {
                wrongUsage(session,
                           Cli::tr("--fields vuole nomi fra questi, separati da virgole: %1")
                               .arg(QString::fromLatin1(songKeys().join(", "))));
                return std::nullopt;
            }
        }
    }
    return keys + QByteArrayList{"error", "code"};
}

ExitStatus runInfo(const Arguments &arguments, Session &session)
{
    const auto keys = keysOf(arguments, session);
    if (!keys)
        return ExitStatus::Usage;
    if (arguments.has("json") && (arguments.has("csv") || arguments.has("fields")))
        return wrongUsage(session, Cli::tr("--csv e --fields non vanno con --json"));
    SongPaths paths(session);
    if (!paths.collect(arguments.operands(), arguments.has("recursive")))
        return ExitStatus::Failed;

    if (arguments.has("csv"))
        session.records.useTable(*keys);
    else if (arguments.has("fields"))
        session.records.select(*keys);

    int done = 0;
    int unreadable = 0;
    session.host.beginProgress({QString(), Cli::tr("Lettura..."), QString()},
                               static_cast<int>(paths.songs().size()));
    for (const GivenPath &path : paths.songs()) {
        if (session.host.wasCancelled())
            break;
        const SongOutcome song = ImportJob::read(path.file);
        if (song.isFailure()) {
            ++unreadable;
            sayFailure(session, path.given, song.cause);
            session.records.write(errorRecord(session.records.begin(), path.given, song.cause,
                                              QLatin1String(unknownFile)));
        } else {
            sayDone(session, path.given, Cli::tr("letta"));
            session.records.write(songRecord(session.records.begin(), path.given, song.after));
        }
        session.host.setProgress(++done);
    }
    session.host.endProgress();
    return unreadable > 0 || paths.hasSkipped() ? ExitStatus::SomeFailed : ExitStatus::Done;
}

} // namespace

Command infoCommand()
{
    return {"info",
            "PATH...",
            QT_TRANSLATE_NOOP("Cli", "Mostra i dati di ogni song."),
            "info SANTALUC.mid\n"
            "info --json --recursive ~/songs\n"
            "info --csv --fields path,title,artist --recursive ~/songs",
            withPathLists(
                {{"fields", Option::Text, "KEY,KEY...",
                  QT_TRANSLATE_NOOP("Cli", "solo questi dati di ogni song")},
                 {"csv", Option::Flag, nullptr,
                  QT_TRANSLATE_NOOP("Cli", "scrive una tabella CSV, con i nomi nella prima riga")},
                 recursiveOption()}),
            1,
            INT_MAX,
            runInfo};
}

} // namespace tarvel4
