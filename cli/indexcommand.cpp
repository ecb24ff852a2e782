#include "cli/command.h"
#include "cli/console.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "indexer/index.h"
#include "indexer/indexverifier.h"
#include "library/indexjob.h"
#include "library/recoveryjob.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

namespace tarvel4 {

namespace {

ExitStatus build(IndexJob::Kind kind, const QString &root, const QString &given, Session &session)
{
    IndexJob job(session.host, session.host);
    job.setStopWhen(&Console::interrupted);
    job.setOnPath([&session](const QString &path) {
        if (!path.isEmpty())
            sayDone(session, path, Cli::tr("esaminato"));
    });
    const IndexSummary index = job.run(kind, root, {QString(), Cli::tr("Indice..."), QString()}, 0);

    for (const QString &error : index.errors)
        session.host.say(error);
    Record record = session.records.begin();
    record.addText("root", given);
    record.addNumber("found", index.found);
    record.addFlag("changed", index.isChanged);
    record.addFlag("prepared", index.isPrepared);
    record.addValue("errors", QJsonArray::fromStringList(index.errors),
                    index.errors.join(QLatin1String(", ")));
    if (!index.cause)
        addFailure(record, index.cause);
    session.records.write(record);
    if (Console::interrupted()) {
        session.host.say(index.isPrepared
                             ? Cli::tr("%1: interrotto, la memoria è preparata").arg(given)
                             : Cli::tr("%1: interrotto, la memoria non è preparata").arg(given));
        return ExitStatus::Interrupted;
    }
    if (!index.cause)
        return jobFailed(session, given, index.cause);
    if (index.hasFailed || (index.found > 0 && !index.isDone))
        return jobFailed(session, Cli::tr("%1: l'indice non è stato scritto").arg(given));
    return index.errors.isEmpty() ? ExitStatus::Done : ExitStatus::SomeFailed;
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
    if (given.isEmpty() || !QFileInfo(root).isDir()) // an empty path is not the working folder
        return notAFolder(session, given);
    if (job == QLatin1String("verify"))
        return verify(root, given, session);
    RecoveryJob(session.host).finishSaves(session.journal);
    if (job == QLatin1String("delete")) {
        Index index;
        if (!index.deleteIndex(root))
            return jobFailed(session, given, index.outcome());
        sayDone(session, given, Cli::tr("ora non c'è alcun indice"));
        return ExitStatus::Done;
    }
    return build(job == QLatin1String("update") ? IndexJob::Kind::Update : IndexJob::Kind::Rebuild,
                 root, given, session);
}

} // namespace

Command indexCommand()
{
    return {
        "index",
        "(update|rebuild|verify|delete) ROOT",
        QT_TRANSLATE_NOOP("Cli", "Aggiorna, rifà, controlla o toglie l'indice di una memoria."),
        "index update /media/card\n"
        "index verify --json /media/card",
        {},
        2,
        2,
        runIndex,
        {{"update", "ROOT", QT_TRANSLATE_NOOP("Cli", "Adegua l'indice alle song che ci sono."),
          "index update /media/card"},
         {"rebuild", "ROOT", QT_TRANSLATE_NOOP("Cli", "Rifà da capo l'indice di tutte le song."),
          "index rebuild --json /media/card"},
         {"verify", "ROOT",
          QT_TRANSLATE_NOOP("Cli",
                            "Controlla l'indice, senza cambiarlo: una riga per ogni errore."),
          "index verify --json /media/card"},
         {"delete", "ROOT", QT_TRANSLATE_NOOP("Cli", "Toglie l'indice; le song restano."),
          "index delete /media/card"}}};
}

} // namespace tarvel4
