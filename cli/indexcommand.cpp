#include "cli/command.h"
#include "cli/console.h"
#include "cli/texts.h"
#include "indexer/index.h"
#include "indexer/indexverifier.h"
#include "library/indexprogress.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

namespace tarvel4 {

namespace {

ExitStatus build(bool (Index::*job)(const QString &), const QString &root, const QString &given,
                 Session &session)
{
    Index index;
    showProgressOf(index, session.host);
    index.setStopWhen(&Console::interrupted);
    QStringList errors;
    QObject::connect(&index, &Index::errorFromIndex,
                     [&errors](const QString &text) { errors += text; });
    session.host.beginProgress({QString(), Cli::tr("Indice..."), QString()}, 0);
    const bool prepared = (index.*job)(root);
    session.host.endProgress();

    Record record = session.records.begin();
    record.addText("root", given);
    record.addNumber("found", index.found());
    record.addFlag("changed", index.changed());
    record.addFlag("prepared", Index::isPrepared(root));
    record.addValue("errors", QJsonArray::fromStringList(errors), errors.join(QLatin1String(", ")));
    session.records.write(record);
    if (Console::interrupted()) {
        session.host.say(Index::isPrepared(root)
                             ? Cli::tr("%1: interrotto, la memoria è preparata").arg(given)
                             : Cli::tr("%1: interrotto, la memoria non è preparata").arg(given));
        return ExitStatus::Interrupted;
    }
    if (index.failed() || (index.found() > 0 && !prepared))
        return jobFailed(session, Cli::tr("%1: l'indice non è stato scritto").arg(given));
    return errors.isEmpty() ? ExitStatus::Done : ExitStatus::SomeFailed;
}

ExitStatus verify(const QString &root, const QString &given, Session &session)
{
    if (!Index::isPrepared(root))
        return jobFailed(session, Cli::tr("%1: la memoria non è preparata").arg(given));
    const QVector<IndexProblem> problems = IndexVerifier(root).verify();
    for (const IndexProblem &problem : problems) {
        Record record = session.records.begin();
        QString line = problem.file;
        record.addText("file", problem.file);
        if (problem.record >= 0) {
            record.addNumber("record", problem.record);
            line += QLatin1Char(' ') + QString::number(problem.record);
        }
        record.addText("problem", problem.problem);
        session.records.writeLine(record, line + QLatin1String(": ") + problem.problem);
    }
    return problems.isEmpty() ? ExitStatus::Done : ExitStatus::SomeFailed;
}

ExitStatus runIndex(const Arguments &arguments, Session &session)
{
    const QString job = arguments.operands().first();
    const QString given = arguments.operands().last();
    const QString root = QDir(Arguments::onDisk(given)).absolutePath();
    const QStringList jobs{QStringLiteral("update"), QStringLiteral("rebuild"),
                           QStringLiteral("verify"), QStringLiteral("delete")};
    if (!jobs.contains(job))
        return wrongUsage(session, Cli::tr("index vuole update, rebuild, verify oppure delete"));
    if (!QFileInfo(root).isDir())
        return jobFailed(session, Cli::tr("%1: non è una cartella").arg(given));
    if (job == QLatin1String("verify"))
        return verify(root, given, session);
    if (job == QLatin1String("delete"))
        return Index().deleteIndex(root)
            ? ExitStatus::Done
            : jobFailed(session, Cli::tr("%1: l'indice non può essere tolto").arg(given));
    return build(job == QLatin1String("update") ? &Index::update : &Index::rebuild, root, given,
                 session);
}

} // namespace

Command indexCommand()
{
    return {"index",
            "(update|rebuild|verify|delete) ROOT",
            QT_TRANSLATE_NOOP("Cli", "Aggiorna, rifà, controlla o toglie l'indice di una memoria."),
            {},
            2,
            2,
            runIndex};
}

} // namespace tarvel4
