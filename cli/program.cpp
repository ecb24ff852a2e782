#include "cli/program.h"

#include "cli/console.h"
#include "cli/texts.h"
#include "library/messagelog.h"
#include "library/programversion.h"
#include "library/usersettings.h"

#include <algorithm>
#include <array>

namespace tarvel4 {

namespace {

constexpr int helpColumn = 28;
constexpr char examples[] = "sync --backup ~/backups --recursive ~/songs\n"
                            "info --json --recursive ~/songs";

struct Meaning
{
    const char *name;
    const char *text;
};

constexpr std::array<Meaning, 6> exitStatuses{{
    {"0", QT_TRANSLATE_NOOP("Cli", "tutto fatto")},
    {"1",
     QT_TRANSLATE_NOOP("Cli",
                       "finito, ma una song è illeggibile, non trovata, rifiutata o fallita, o un "
                       "indice ha errori")},
    {"2", QT_TRANSLATE_NOOP("Cli", "uso errato, nulla di fatto")},
    {"3", QT_TRANSLATE_NOOP("Cli", "il lavoro non può essere fatto")},
    {"130", QT_TRANSLATE_NOOP("Cli", "interrotto prima della song successiva")},
    {"141", QT_TRANSLATE_NOOP("Cli", "nessuno legge più i dati (| head)")},
}};

QString line(const QString &name, const char *meaning)
{
    return QLatin1String("  ") + name.leftJustified(helpColumn - 3) + QLatin1Char(' ')
        + Cli::tr(meaning) + QLatin1Char('\n');
}

QString lines(const QVector<Option> &options)
{
    QString text;
    for (const Option &option : options) {
        QString name = QLatin1String("--") + QLatin1String(option.name);
        if (option.kind != Option::Flag)
            name += QLatin1Char(' ') + QLatin1String(option.value);
        text += line(name, option.help);
    }
    return text;
}

QString heading(const QString &text)
{
    if (!Console::hasColours(Console::Output))
        return QLatin1Char('\n') + text + QLatin1Char('\n');
    return QStringLiteral("\n\x1b[1m%1\x1b[0m\n").arg(text);
}

/** What every help ends with. */
QString closing(const char *exampleLines)
{
    QString text = heading(Cli::tr("Opzioni di ogni comando:")) + lines(globalOptions());
    text += heading(Cli::tr("Esempi:"));
    for (const QString &example : QString::fromLatin1(exampleLines).split(QLatin1Char('\n')))
        text += QLatin1String("  tarvel4soft-cli ") + example + QLatin1Char('\n');
    text += heading(Cli::tr("Stato d'uscita:"));
    for (const Meaning &status : exitStatuses)
        text += line(QLatin1String(status.name), status.text);
    return text;
}

ExitStatus printed(const QString &text)
{
    if (Console::write(Console::Output, text.toUtf8()))
        return ExitStatus::Done;
    if (Console::isPipeClosed())
        return ExitStatus::PipeClosed;
    TerminalHost(false).say(Cli::tr("i dati non possono essere scritti"));
    return ExitStatus::Failed;
}

ExitStatus refused(const Arguments::Error &error)
{
    TerminalHost host(false);
    host.say(error.text);
    host.say(Cli::tr("non è stato fatto nulla; --help spiega l'uso"));
    return error.status;
}

} // namespace

ExitStatus Program::run(QByteArrayList words) const
{
    Arguments arguments;
    if (!arguments.read(words, globalOptions(), Arguments::UpToFirstOperand))
        return refused(arguments.error());
    const Command *command = nullptr;
    if (!words.isEmpty()) {
        const QByteArray name = words.takeFirst();
        command = find(name);
        if (!command)
            return refused({ExitStatus::Usage,
                            Cli::tr("comando sconosciuto: %1").arg(QString::fromUtf8(name))});
        if (!arguments.read(words, command->options + globalOptions(), Arguments::All))
            return refused(arguments.error());
    }

    if (arguments.has("version"))
        return printed(QStringLiteral("tarvel4soft-cli %1\n").arg(QLatin1String(programVersion())));
    if (arguments.has("help"))
        return printed(command ? help(*command, arguments.operands().value(0)) : help());
    if (!command)
        return refused({ExitStatus::Usage, Cli::tr("manca il comando")});
    if (arguments.has("null") && !arguments.has("files-from"))
        return refused({ExitStatus::Usage, Cli::tr("--null vuole --files-from FILE")});
    if (!arguments.readLists())
        return Console::interrupted() ? ExitStatus::Interrupted : refused(arguments.error());
    return execute(*command, arguments);
}

const Command *Program::find(const QByteArray &name) const
{
    const auto found =
        std::find_if(m_commands.cbegin(), m_commands.cend(),
                     [&name](const Command &command) { return name == command.name; });
    return found == m_commands.cend() ? nullptr : &*found;
}

ExitStatus Program::execute(const Command &command, const Arguments &arguments) const
{
    const int operands = static_cast<int>(arguments.operands().size());
    const bool isEnough = operands >= command.leastOperands || arguments.has("files-from");
    if (!isEnough || operands > command.mostOperands)
        return refused({ExitStatus::Usage, Cli::tr("uso: %1").arg(synopsis(command))});

    if (arguments.has("log"))
        MessageLog::start();
    TerminalHost host(arguments.has("quiet"));
    host.setVerbose(arguments.has("verbose"));
    const bool isTerminal = Console::isTerminal(Console::Output);
    RecordWriter records(arguments.has("json") ? Record::Json : Record::Text,
                         [&host, isTerminal](const QByteArray &bytes) {
                             if (isTerminal)
                                 host.hideProgress();
                             return Console::write(Console::Output, bytes);
                         });
    if (Console::hasColours(Console::Output))
        records.useColours();
    host.setStopWhen([&records] { return records.failed(); });
    Journal journal(UserSettings::dataFolder(), [&host](const QString &text) { host.say(text); });
    Session session{records, host, journal, arguments.value("catalogue")};

    const ExitStatus status = command.run(arguments, session);
    host.endProgress();
    if (status == ExitStatus::Usage)
        return status;
    if (Console::interrupted())
        return ExitStatus::Interrupted;
    if (Console::isPipeClosed())
        return ExitStatus::PipeClosed;
    if (records.failed())
        return jobFailed(session, Cli::tr("i dati non possono essere scritti"));
    return status;
}

QString Program::synopsis(const Command &command) const
{
    QString text = QLatin1String("tarvel4soft-cli ") + QLatin1String(command.name);
    text += QLatin1String(" [OPTION]...");
    if (command.mostOperands > 0)
        text += QLatin1Char(' ') + QLatin1String(command.operands);
    return text;
}

QString Program::help() const
{
    QString text =
        Cli::tr("Uso: %1").arg(QLatin1String("tarvel4soft-cli COMMAND [OPTION]... [ARGUMENT]..."));
    text += QLatin1Char('\n') + heading(Cli::tr("Comandi:"));
    for (const Command &command : m_commands)
        text += line(QLatin1String(command.name), command.summary);
    return text + closing(examples);
}

/** Of the action that the operand names, where it names one. */
QString Program::help(const Command &command, const QString &operand) const
{
    const auto action = std::find_if(
        command.actions.cbegin(), command.actions.cend(),
        [&operand](const Action &candidate) { return operand == QLatin1String(candidate.name); });
    if (action != command.actions.cend()) {
        const QString usage = QStringLiteral("tarvel4soft-cli %1 %2 [OPTION]... %3")
                                  .arg(QLatin1String(command.name), QLatin1String(action->name),
                                       QLatin1String(action->operands));
        return Cli::tr("Uso: %1").arg(usage) + QLatin1Char('\n') + Cli::tr(action->summary)
            + QLatin1Char('\n') + closing(action->examples);
    }
    QString text = Cli::tr("Uso: %1").arg(synopsis(command));
    text += QLatin1Char('\n') + Cli::tr(command.summary) + QLatin1Char('\n');
    if (!command.actions.isEmpty())
        text += heading(Cli::tr("Azioni:"));
    for (const Action &each : command.actions)
        text += line(QLatin1String(each.name), each.summary);
    if (!command.options.isEmpty())
        text += heading(Cli::tr("Opzioni:")) + lines(command.options);
    return text + closing(command.examples);
}

} // namespace tarvel4
