#include "cli/command.h"
#include "cli/songpaths.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "library/importjob.h"

namespace tarvel4 {

namespace {

ExitStatus runInfo(const Arguments &arguments, Session &session)
{
    SongPaths paths(session);
    if (!paths.collect(arguments.operands(), arguments.has("recursive")))
        return ExitStatus::Failed;

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
            "info --json --recursive ~/songs",
            withPathLists({recursiveOption()}),
            1,
            INT_MAX,
            runInfo};
}

} // namespace tarvel4
