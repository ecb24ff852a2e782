#include "cli/command.h"
#include "cli/texts.h"

namespace tarvel4 {

QVector<Command> allCommands()
{
    return {infoCommand(),  editCommand(), syncCommand(),    backupCommand(),   transferCommand(),
            indexCommand(), listCommand(), extractCommand(), catalogueCommand()};
}

Option recursiveOption()
{
    return {
        "recursive", Option::Flag, nullptr,
        QT_TRANSLATE_NOOP("Cli", "cerca le song anche nelle cartelle e nelle loro sottocartelle")};
}

ExitStatus wrongUsage(Session &session, const QString &text)
{
    session.host.say(text);
    session.host.say(Cli::tr("non è stato fatto nulla; --help spiega l'uso"));
    return ExitStatus::Usage;
}

void sayNotCopied(Session &session, const QStringList &files)
{
    for (const QString &file : files)
        session.host.say(Cli::tr("%1: non può essere copiato").arg(file));
}

ExitStatus jobFailed(Session &session, const QString &text)
{
    session.host.say(text);
    return ExitStatus::Failed;
}

} // namespace tarvel4
