#include "cli/command.h"
#include "cli/texts.h"

namespace tarvel4 {

namespace {

Record runRecord(Record record, const JournalRun &run)
{
    record.addNumber("run", static_cast<int>(run.id));
    record.addText("time",
                   run.time.toOffsetFromUtc(run.time.offsetFromUtc()).toString(Qt::ISODate));
    record.addText("what", run.what);
    record.addNumber("songs", run.songs);
    record.addFlag("undoable", run.isUndoable);
    return record;
}

ExitStatus runHistory(const Arguments &arguments, Session &session)
{
    if (!arguments.operands().isEmpty()) {
        if (arguments.operands().first() != QLatin1String("clear") || arguments.has("limit"))
            return wrongUsage(session, Cli::tr("history vuole clear oppure nulla"));
        return session.journal.clear() ? ExitStatus::Done : ExitStatus::Failed;
    }
    bool isNumber = true;
    const int limit =
        arguments.has("limit") ? arguments.value("limit").toInt(&isNumber) : Journal::keptRuns;
    if (!isNumber || limit < 0)
        return wrongUsage(session, Cli::tr("--limit vuole un numero"));
    const auto runs = session.journal.runs();
    if (!runs)
        return ExitStatus::Failed;
    for (const JournalRun &run : runs->mid(0, limit))
        session.records.write(runRecord(session.records.begin(), run));
    return ExitStatus::Done;
}

} // namespace

Command historyCommand()
{
    return {"history",
            "[clear]",
            QT_TRANSLATE_NOOP("Cli", "Elenca le ultime modifiche, o le dimentica."),
            "history --limit 5\n"
            "history clear",
            {{"limit", Option::Text, "N", QT_TRANSLATE_NOOP("Cli", "solo le ultime N")}},
            0,
            1,
            runHistory};
}

} // namespace tarvel4
