#include "cli/completion.h"
#include "cli/texts.h"

namespace tarvel4 {

namespace {

ExitStatus runCompletion(const Arguments &arguments, Session &session)
{
    const QByteArray shell = arguments.operands().first().toUtf8();
    if (!Completion::knows(shell))
        return wrongUsage(session, Cli::tr("completion vuole bash, zsh o fish"));
    session.records.writeRaw(Completion(allCommands()).script(shell).toUtf8());
    return ExitStatus::Done;
}

} // namespace

Command completionCommand()
{
    return {"completion",
            "bash|zsh|fish",
            QT_TRANSLATE_NOOP(
                "Cli", "Scrive lo script con cui quella shell completa una riga di comando."),
            "completion bash",
            {},
            1,
            1,
            runCompletion};
}

} // namespace tarvel4
