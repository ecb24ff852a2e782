#include "cli/command.h"
#include "cli/console.h"
#include "cli/printable.h"
#include "cli/texts.h"
#include "indexer/index.h"

#include <QFileInfo>
#include <QTemporaryFile>

namespace {

Index::SongOrder orderOf(const QString &name)
{
    if (name == QLatin1String("artist"))
        return Index::ByArtist;
    return name == QLatin1String("genre") ? Index::ByGenre : Index::ByTitle;
}

ExitStatus listFailed(Session &session)
{
    return jobFailed(session, Cli::tr("la lista non può essere scritta"));
}

/** The list as the window writes it, by way of a file. */
ExitStatus printList(Index &index, const QString &root, Index::SongOrder order, Session &session)
{
    QTemporaryFile list;
    if (!list.open() || index.writeSongList(root, list.fileName(), order) != 1)
        return listFailed(session);
    QFile written(list.fileName());
    if (!written.open(QIODevice::ReadOnly))
        return listFailed(session);
    const bool isTerminal = Console::isTerminal(Console::Output);
    while (!written.atEnd() && !session.host.wasCancelled()) {
        const QByteArray line = written.readLine();
        session.records.writeRaw(
            isTerminal ? printable(QString::fromUtf8(line.chopped(1))).toUtf8() + '\n' : line);
    }
    return ExitStatus::Done;
}

ExitStatus writeRecords(Index &index, const QString &root, Index::SongOrder order,
                        RecordWriter &records, Session &session)
{
    bool ok = false;
    QVector<IndexEntry> entries = index.readEntries(root, ok);
    if (!ok)
        return listFailed(session);
    Index::sortForList(entries, order);
    for (const IndexEntry &entry : entries) {
        if (session.host.wasCancelled())
            break;
        Record record = records.begin();
        record.addText("title", entry.title);
        record.addText("artist", entry.artist);
        record.addText("file", entry.relativePath);
        records.write(record);
    }
    return records.failed() ? listFailed(session) : ExitStatus::Done;
}

ExitStatus runList(const Arguments &arguments, Session &session)
{
    const QString given = arguments.operands().first();
    const QString root = Arguments::onDisk(given);
    const QString target = arguments.value("output");
    const Index::SongOrder order = orderOf(arguments.value("order"));
    const bool isJson = session.records.format() == Record::Json;
    if (!QFileInfo(root).isDir())
        return jobFailed(session, Cli::tr("%1: non è una cartella").arg(given));
    if (!Index::isPrepared(root))
        return jobFailed(session, Cli::tr("%1: la memoria non è preparata").arg(given));

    Index index;
    if (isJson && arguments.has("output")) {
        QFile file(target);
        if (!file.open(QIODevice::WriteOnly))
            return listFailed(session);
        RecordWriter records(Record::Json, [&file](const QByteArray &bytes) {
            return Disk::real().write(file, bytes);
        });
        return writeRecords(index, root, order, records, session);
    }
    if (isJson)
        return writeRecords(index, root, order, session.records, session);
    if (!arguments.has("output"))
        return printList(index, root, order, session);
    return index.writeSongList(root, target, order) == 1 ? ExitStatus::Done : listFailed(session);
}

} // namespace

Command listCommand()
{
    return {"list",
            "ROOT",
            QT_TRANSLATE_NOOP("Cli", "Scrive la lista delle song di una memoria preparata."),
            {{"order", Option::Choice, "title|artist|genre",
              QT_TRANSLATE_NOOP("Cli", "ordine della lista (title)")},
             {"output", Option::Path, "FILE",
              QT_TRANSLATE_NOOP("Cli", "file da scrivere, al posto dell'uscita standard")}},
            1,
            1,
            runList};
}
