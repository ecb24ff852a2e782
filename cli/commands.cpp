#include "cli/command.h"
#include "cli/texts.h"

#include <QFileInfo>

namespace tarvel4 {

QVector<Command> allCommands()
{
    return {infoCommand(),      editCommand(),    syncCommand(),    historyCommand(),
            undoCommand(),      restoreCommand(), backupCommand(),  transferCommand(),
            indexCommand(),     listCommand(),    extractCommand(), catalogueCommand(),
            completionCommand()};
}

const QVector<Option> &globalOptions()
{
    static const QVector<Option> options{
        {"catalogue", Option::Path, "FILE",
         QT_TRANSLATE_NOOP("Cli", "catalogo SQLite da usare al posto di quello incorporato")},
        {"json", Option::Flag, nullptr,
         QT_TRANSLATE_NOOP("Cli", "scrive i dati come JSON, un oggetto per riga")},
        {"log", Option::Flag, nullptr,
         QT_TRANSLATE_NOOP("Cli", "scrive il log in log.txt nella cartella corrente")},
        {"quiet", Option::Flag, nullptr, QT_TRANSLATE_NOOP("Cli", "non mostra l'avanzamento")},
        {"verbose", Option::Flag, nullptr,
         QT_TRANSLATE_NOOP("Cli",
                           "dice che cosa è stato fatto di ogni file, e che errore ha dato il "
                           "sistema (anche -v)"),
         true},
        {"help", Option::Flag, nullptr, QT_TRANSLATE_NOOP("Cli", "mostra questo aiuto (anche -h)")},
        {"version", Option::Flag, nullptr, QT_TRANSLATE_NOOP("Cli", "mostra la versione")},
    };
    return options;
}

Option recursiveOption()
{
    return {
        "recursive", Option::Flag, nullptr,
        QT_TRANSLATE_NOOP("Cli", "cerca le song anche nelle cartelle e nelle loro sottocartelle")};
}

Option dryRunOption()
{
    return {"dry-run", Option::Flag, nullptr,
            QT_TRANSLATE_NOOP("Cli", "mostra che cosa cambierebbe e non scrive nulla")};
}

QVector<Option> withPathLists(const QVector<Option> &options)
{
    static const QVector<Option> lists{
        {"files-from", Option::Path, "FILE",
         QT_TRANSLATE_NOOP("Cli", "altri PATH, uno per riga (-: dall'ingresso standard)")},
        {"null", Option::Flag, nullptr,
         QT_TRANSLATE_NOOP("Cli", "in FILE ogni PATH finisce con un byte zero")},
    };
    return options + lists;
}

ExitStatus wrongUsage(Session &session, const QString &text)
{
    session.host.say(text);
    session.host.say(Cli::tr("non è stato fatto nulla; --help spiega l'uso"));
    return ExitStatus::Usage;
}

void sayFailure(Session &session, const QString &path, const Outcome &cause)
{
    session.host.say(path + QLatin1String(": ") + cause.sentence());
    sayDetail(session, path, cause);
}

void sayDetail(Session &session, const QString &path, const Outcome &cause)
{
    if (session.host.isVerbose() && cause.systemError != 0)
        session.host.say(
            path + QLatin1String(": ")
            + Cli::tr("il sistema ha rifiutato %1: %2 (errore %3)")
                  .arg(cause.path, cause.systemWords(), QString::number(cause.systemError)));
}

void sayDone(Session &session, const QString &path, const QString &what)
{
    if (session.host.isVerbose())
        session.host.say(path + QLatin1String(": ") + what);
}

ExitStatus jobFailed(Session &session, const QString &text)
{
    session.host.say(text);
    return ExitStatus::Failed;
}

ExitStatus jobFailed(Session &session, const QString &path, const Outcome &cause)
{
    sayFailure(session, path, cause);
    return ExitStatus::Failed;
}

QString emptyPathText()
{
    return Cli::tr("un percorso vuoto non indica né un file né una cartella");
}

ExitStatus notAFolder(Session &session, const QString &path)
{
    if (path.isEmpty())
        return jobFailed(session, emptyPathText());
    const QString file = Arguments::onDisk(path);
    if (!QFileInfo::exists(file))
        return jobFailed(session, path, {Outcome::Code::NotFound, file, {}, {}});
    return jobFailed(session, Cli::tr("%1: non è una cartella").arg(path));
}

} // namespace tarvel4
