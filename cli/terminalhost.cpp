#include "cli/terminalhost.h"

#include "cli/console.h"
#include "cli/printable.h"
#include "cli/texts.h"
#include "library/recoveryjob.h"
#include "library/songpath.h"

#include <QHash>

#include <optional>

namespace tarvel4 {

namespace {

/** The answer that a typed line gives, in English or Italian. */
std::optional<Answer> answerOf(const QString &line)
{
    static const QHash<QString, Answer> answers{
        {QStringLiteral("y"), Answer::Yes},
        {QStringLiteral("yes"), Answer::Yes},
        {QStringLiteral("s"), Answer::Yes},
        {QStringLiteral("si"), Answer::Yes},
        {QStringLiteral("s\u00EC"), Answer::Yes},
        {QStringLiteral("a"), Answer::YesToAll},
        {QStringLiteral("all"), Answer::YesToAll},
        {QStringLiteral("yes to all"), Answer::YesToAll},
        {QStringLiteral("t"), Answer::YesToAll},
        {QStringLiteral("tutti"), Answer::YesToAll},
        {QStringLiteral("si tutti"), Answer::YesToAll},
        {QStringLiteral("n"), Answer::No},
        {QStringLiteral("no"), Answer::No},
        {QStringLiteral("o"), Answer::NoToAll},
        {QStringLiteral("none"), Answer::NoToAll},
        {QStringLiteral("no to all"), Answer::NoToAll},
        {QStringLiteral("nessuno"), Answer::NoToAll},
        {QStringLiteral("no tutti"), Answer::NoToAll},
    };
    const auto found = answers.constFind(line.simplified().toLower());
    return found == answers.cend() ? std::nullopt : std::make_optional(*found);
}

} // namespace

TerminalHost::TerminalHost(bool quiet)
    : m_quiet(quiet)
    , m_progress(!quiet && Console::isTerminal(Console::Error))
{}

bool TerminalHost::canAsk()
{
    return Console::isTerminal(Console::Input) && Console::isTerminal(Console::Error);
}

void TerminalHost::say(const QString &text)
{
    hideProgress();
    Console::write(Console::Error, "tarvel4soft-cli: " + printable(text).toUtf8() + '\n');
}

void TerminalHost::beginProgress(const ProgressTexts &texts, int maximum)
{
    m_progress.begin(texts.label, maximum);
}

void TerminalHost::setProgressMaximum(int maximum)
{
    m_progress.setMaximum(maximum);
}

void TerminalHost::setProgress(int value)
{
    m_progress.setValue(value);
}

void TerminalHost::endProgress()
{
    m_progress.end();
}

bool TerminalHost::wasCancelled() const
{
    return m_hasNameClash || Console::interrupted() || (m_stopWhen && m_stopWhen());
}

void TerminalHost::recovered(const QString &path, Recovery::Result result, const Outcome &cause)
{
    say(RecoveryJob::sentence(path, result, cause));
}

Answer TerminalHost::askNotPublished(const QString &fileName)
{
    return ask(Cli::tr("%1: non è stato pubblicato da K-Varo. Si vuole procedere comunque con le "
                       "modifiche?")
                   .arg(fileName));
}

Answer TerminalHost::askOverwrite(const QString &source, const QString &)
{
    const QString fileName = SongPath::fileName(source);
    switch (m_overwrite) {
    case Overwrite::Ask:
        return ask(Cli::tr("%1: esiste già, vuoi sostituirlo?").arg(fileName));
    case Overwrite::Yes:
        return Answer::YesToAll;
    case Overwrite::No:
        return Answer::NoToAll;
    case Overwrite::Never:
        break;
    }
    say(Cli::tr("%1: esiste già").arg(fileName));
    m_hasNameClash = true;
    return Answer::NoToAll;
}

ProceedChoice TerminalHost::askProceed(const ImportSummary &)
{
    return {true, true};
}

void TerminalHost::information(const QString &, const QString &text, const QStringList &details)
{
    if (m_quiet)
        return;
    for (const QString &line : QStringList(text) + details)
        say(line);
}

void TerminalHost::warning(const QString &, const QString &text, const QStringList &)
{
    say(text);
}

void TerminalHost::critical(const QString &, const QString &text, const QStringList &)
{
    say(text);
}

Answer TerminalHost::ask(const QString &question)
{
    const QString choices = Cli::tr("[s] sì, [t] sì a tutti, [n] no, [o] no a tutti");
    hideProgress();
    QByteArray line;
    do {
        Console::write(Console::Error,
                       printable(question).toUtf8() + '\n' + choices.toUtf8() + ": ");
        if (!Console::readLine(line)) {
            Console::write(Console::Error, "\n");
            return Answer::NoToAll;
        }
    } while (!answerOf(QString::fromUtf8(line)));
    return *answerOf(QString::fromUtf8(line));
}

} // namespace tarvel4
