#include "cli/completion.h"

#include "cli/texts.h"

namespace tarvel4 {

namespace {

const QLatin1String space(" ");
const QLatin1String bar("|");

QString text(const char *source)
{
    return Cli::tr(source);
}

QString optionName(const Option &option)
{
    return QLatin1String("--") + QLatin1String(option.name);
}

QStringList choices(const Option &option)
{
    return option.kind == Option::Choice ? QString::fromLatin1(option.value).split(bar)
                                         : QStringList();
}

bool isFolder(const QString &value)
{
    return value == QLatin1String("DIR") || value == QLatin1String("ROOT")
        || value == QLatin1String("BACKUP");
}

/** The words that a command takes as its first operand: those in lower case. */
QStringList operandWords(const Command &command)
{
    QStringList words;
    QString first = QString::fromLatin1(command.operands).section(space, 0, 0);
    first.remove(QLatin1Char('(')).remove(QLatin1Char(')'));
    first.remove(QLatin1Char('[')).remove(QLatin1Char(']'));
    for (const QString &word : first.split(bar)) {
        if (!word.isEmpty() && word == word.toLower())
            words += word;
    }
    return words;
}

/** What the paths among a command's operands are called; empty where it takes none. */
QString pathOperand(const Command &command)
{
    const QString operands = QString::fromLatin1(command.operands);
    for (const char *path : {"PATH", "ROOT", "SONG"}) {
        if (operands.contains(QLatin1String(path)))
            return QLatin1String(path);
    }
    return QString();
}

QString quoted(QString words)
{
    return QLatin1Char('\'') + words.replace(QLatin1Char('\''), QLatin1String("'\\''"))
        + QLatin1Char('\'');
}

// --- bash

QString bashFiles(const QString &value)
{
    return isFolder(value) ? QStringLiteral("files=-d") : QStringLiteral("files=-f");
}

/** The cases of a command's options that take a value; \a key is the command or nothing. */
QString bashValues(const QString &key, const QVector<Option> &options)
{
    QString cases;
    for (const Option &option : options) {
        if (option.kind == Option::Flag)
            continue;
        QString what = QStringLiteral(":");
        if (option.kind == Option::Choice)
            what = QLatin1String("words=") + quoted(choices(option).join(space));
        else if (option.kind == Option::Path)
            what = bashFiles(QLatin1String(option.value));
        cases += QStringLiteral("        '%1 %2') %3 ;;\n").arg(key, optionName(option), what);
    }
    return cases;
}

QString bashOptions(const QVector<Option> &options)
{
    QStringList names;
    for (const Option &option : options)
        names += optionName(option);
    return names.join(space);
}

QString bashOperands(const Command &command)
{
    const QStringList words = operandWords(command);
    QStringList what;
    if (!words.isEmpty())
        what += QStringLiteral("[ $operands -gt 0 ] || words=") + quoted(words.join(space));
    if (!pathOperand(command).isEmpty()) {
        const QString files = bashFiles(pathOperand(command));
        what += words.isEmpty() ? files : QStringLiteral("[ $operands -eq 0 ] || ") + files;
    }
    return what.isEmpty() ? QString()
                          : QStringLiteral("        %1) %2 ;;\n")
                                .arg(QLatin1String(command.name), what.join(QLatin1String("; ")));
}

constexpr char bashFrame[] =
    R"(# bash completion for tarvel4soft-cli, made by "tarvel4soft-cli completion bash"

_tarvel4soft_cli()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command= words= files= ended= operands=0 i
    if [ "$current" = = ]; then
        current=
    elif [ "$previous" = = ]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for ((i = 1; i < COMP_CWORD; i++)); do
        if [ -n "$ended" ]; then
            ((operands++))
            continue
        fi
        case "$command ${COMP_WORDS[i]}" in
@VALUED@) [ "${COMP_WORDS[i + 1]}" != = ] || ((i++)); ((i++)) ;;
        ?*' --') ended=1 ;;
        *' -'*) ;;
        ' '*) command=${COMP_WORDS[i]} ;;
        *) ((operands++)) ;;
        esac
    done
    COMPREPLY=()
    if ((i > COMP_CWORD)); then
        case "$command $previous" in
@VALUES@        esac
    elif [[ -z $ended && $current == -* ]]; then
        case $command in
@OPTIONS@        esac
        words+=' @GLOBAL@'
    else
        case $command in
        '') words='@COMMANDS@' ;;
@OPERANDS@        esac
    fi
    [ -z "$words" ] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    if [ -n "$files" ]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen "$files" -- "$current")
    fi
}
complete -F _tarvel4soft_cli tarvel4soft-cli
)";

// --- zsh

/** A text between brackets in a word of _arguments. */
QString zshText(QString words)
{
    for (const char special : {'\\', '[', ']', ':'}) {
        const QLatin1Char character(special);
        words.replace(character, QLatin1String("\\") + character);
    }
    return words;
}

QString zshFiles(const QString &value)
{
    return isFolder(value) ? QStringLiteral("_files -/") : QStringLiteral("_files");
}

QStringList zshOptions(const QVector<Option> &options)
{
    QStringList words;
    for (const Option &option : options) {
        const QString value = QString::fromLatin1(option.value).section(QLatin1Char(':'), 0, 0);
        QString word = optionName(option);
        if (option.kind != Option::Flag)
            word = QLatin1Char('*') + word + QLatin1Char('=');
        word += QLatin1Char('[') + zshText(text(option.help)) + QLatin1Char(']');
        if (option.kind == Option::Choice)
            word += QStringLiteral(":%1:(%2)").arg(optionName(option), choices(option).join(space));
        else if (option.kind == Option::Path)
            word += QStringLiteral(":%1:%2").arg(value, zshFiles(value));
        else if (option.kind == Option::Text)
            word += QStringLiteral(":%1: ").arg(value);
        words += quoted(word);
    }
    return words;
}

QString zshCase(const Command &command)
{
    QStringList arguments = zshOptions(command.options + globalOptions());
    const QStringList words = operandWords(command);
    if (!words.isEmpty())
        arguments +=
            quoted(QStringLiteral("1:%1:(%2)").arg(QLatin1String(command.name), words.join(space)));
    const QString path = pathOperand(command);
    if (!path.isEmpty())
        arguments += quoted(QStringLiteral("*:%1:%2").arg(path, zshFiles(path)));
    return QStringLiteral("    %1)\n      _arguments -S %2 ;;\n")
        .arg(QLatin1String(command.name), arguments.join(QLatin1String(" \\\n        ")));
}

// --- fish

QString fishQuoted(QString words)
{
    words.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    words.replace(QLatin1Char('\''), QLatin1String("\\'"));
    return QLatin1Char('\'') + words + QLatin1Char('\'');
}

QString fishOption(const Option &option, const QString &condition)
{
    const QString value = QString::fromLatin1(option.value);
    QString line = QStringLiteral("complete -c tarvel4soft-cli%1 -l %2")
                       .arg(condition, QLatin1String(option.name));
    if (option.kind == Option::Choice)
        line += QLatin1String(" -x -a ") + fishQuoted(choices(option).join(space));
    else if (option.kind == Option::Path && isFolder(value))
        line += QLatin1String(" -x -a '(__fish_complete_directories)'");
    else if (option.kind == Option::Path)
        line += QLatin1String(" -r -F");
    else if (option.kind == Option::Text)
        line += QLatin1String(" -x");
    return line + QLatin1String(" -d ") + fishQuoted(text(option.help)) + QLatin1Char('\n');
}

QString fishCommand(const Command &command)
{
    const QString name = QString::fromLatin1(command.name);
    const auto conditionOf = [&name](const QString &more) {
        return QLatin1String(" -n ")
            + fishQuoted(QLatin1String("__fish_seen_subcommand_from ") + name + more);
    };
    const QString condition = conditionOf({});
    const QString line = QLatin1String("complete -c tarvel4soft-cli");
    QString lines = line + QLatin1String(" -n __fish_use_subcommand -f -a ") + name
        + QLatin1String(" -d ") + fishQuoted(text(command.summary)) + QLatin1Char('\n');
    const QStringList words = operandWords(command);
    const QString seen = QLatin1String(" __fish_seen_subcommand_from ") + words.join(space);
    if (!words.isEmpty())
        lines += line + conditionOf(QLatin1String("; and not") + seen) + QLatin1String(" -f -a ")
            + fishQuoted(words.join(space)) + QLatin1Char('\n');
    const QString path = pathOperand(command);
    if (isFolder(path)) {
        const QString behindWord = words.isEmpty() ? QString() : QLatin1String("; and") + seen;
        lines += line + conditionOf(behindWord)
            + QLatin1String(" -f -a '(__fish_complete_directories)'\n");
    } else if (path.isEmpty())
        lines += line + condition + QLatin1String(" -f\n");
    for (const Option &option : command.options)
        lines += fishOption(option, condition);
    return lines;
}

} // namespace

bool Completion::knows(const QByteArray &shell)
{
    return shell == "bash" || shell == "zsh" || shell == "fish";
}

QString Completion::script(const QByteArray &shell) const
{
    if (shell == "bash")
        return bash();
    return shell == "zsh" ? zsh() : fish();
}

QString Completion::bash() const
{
    QString values = bashValues(QString(), globalOptions());
    QString options;
    QString operands;
    for (const Command &command : m_commands) {
        const QString name = QString::fromLatin1(command.name);
        values += bashValues(name, command.options + globalOptions());
        options += QStringLiteral("        %1) words=%2 ;;\n")
                       .arg(name, quoted(bashOptions(command.options)));
        operands += bashOperands(command);
    }
    QStringList valued; // the patterns alone
    for (const QString &line : values.split(QLatin1Char('\n')))
        valued += line.section(QLatin1Char(')'), 0, 0).trimmed();
    valued.removeAll(QString());

    QString script = QString::fromLatin1(bashFrame);
    script.replace(QLatin1String("@VALUED@"),
                   QLatin1String("        ") + valued.join(QLatin1String(" | ")));
    script.replace(QLatin1String("@VALUES@"), values);
    script.replace(QLatin1String("@OPTIONS@"), options);
    script.replace(QLatin1String("@GLOBAL@"), bashOptions(globalOptions()));
    script.replace(QLatin1String("@COMMANDS@"), names().join(space));
    return script.replace(QLatin1String("@OPERANDS@"), operands);
}

QString Completion::zsh() const
{
    QString cases;
    QString commands;
    for (const Command &command : m_commands) {
        cases += zshCase(command);
        commands += QLatin1String("      ")
            + quoted(QLatin1String(command.name) + QLatin1Char(':') + text(command.summary))
            + QLatin1Char('\n');
    }
    return QStringLiteral("#compdef tarvel4soft-cli\n"
                          "# Made by \"tarvel4soft-cli completion zsh\"\n\n"
                          "local state line curcontext=$curcontext\n"
                          "typeset -A opt_args\n"
                          "_arguments -C -A '-*' %1 \\\n"
                          "  '1:command:->command' '*::argument:->argument'\n"
                          "case $state in\n"
                          "  command)\n    local -a commands\n    commands=(\n%2    )\n"
                          "    _describe command commands ;;\n"
                          "  argument)\n    case $words[1] in\n%3    esac ;;\n"
                          "esac\n")
        .arg(zshOptions(globalOptions()).join(QLatin1String(" \\\n  ")), commands, cases);
}

QString Completion::fish() const
{
    QString script = QStringLiteral("# Made by \"tarvel4soft-cli completion fish\"\n"
                                    "complete -c tarvel4soft-cli -n __fish_use_subcommand -f\n");
    for (const Option &option : globalOptions())
        script += fishOption(option, QString());
    for (const Command &command : m_commands)
        script += fishCommand(command);
    return script;
}

QStringList Completion::names() const
{
    QStringList names;
    for (const Command &command : m_commands)
        names += QLatin1String(command.name);
    return names;
}

} // namespace tarvel4
