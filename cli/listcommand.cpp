#include "cli/command.h"
#include "cli/console.h"
#include "cli/outputfile.h"
#include "cli/printable.h"
#include "cli/texts.h"
#include "indexer/index.h"
#include "indexer/songlistwriter.h"
#include "storage/newfile.h"

#include <QBuffer>
#include <QFileInfo>

#include <optional>

namespace tarvel4 {

namespace {

Index::SongOrder orderOf(const QString &name)
{
    if (name == QLatin1String("artist"))
        return Index::ByArtist;
    return name == QLatin1String("genre") ? Index::ByGenre : Index::ByTitle;
}

ExitStatus listFailed(const QString &target, Session &session)
{
    return jobFailed(session, Cli::tr("%1: non può essere scritto").arg(target));
}

/** The songs of a memory, sorted; none where its index can't be read. */
std::optional<QVector<IndexEntry>> sortedSongs(const QString &root, Index::SongOrder order)
{
    auto [read, entries] = Index::readEntries(root);
    if (!read)
        return {};
    SongListWriter::sort(entries, order);
    return entries;
}

/** The list as the window writes it, but in UTF-8 whatever the locale. */
void printList(const QVector<IndexEntry> &entries, Session &session)
{
    QBuffer list;
    list.open(QIODevice::ReadWrite);
    SongListWriter::write(list, entries, SongListWriter::Encoding::Utf8);
    list.seek(0);
    const bool isTerminal = Console::isTerminal(Console::Output);
    while (!list.atEnd() && !session.host.wasCancelled()) {
        const QByteArray line = list.readLine();
        session.records.writeRaw(
            isTerminal ? printable(QString::fromUtf8(line.chopped(1))).toUtf8() + '\n' : line);
    }
}

void writeRecords(const QVector<IndexEntry> &entries, RecordWriter &records, Session &session)
{
    for (const IndexEntry &entry : entries) {
        if (session.host.wasCancelled())
            break;
        Record record = records.begin();
        record.addText("title", entry.title);
        record.addText("artist", entry.artist);
        record.addText("file", entry.relativePath);
        records.write(record);
    }
}

bool writeRecordFile(const QVector<IndexEntry> &entries, const QString &target, Session &session)
{
    QByteArray list;
    RecordWriter records(Record::Json, [&list](const QByteArray &bytes) {
        list += bytes;
        return true;
    });
    writeRecords(entries, records, session);
    return session.host.wasCancelled() || NewFile::write(Disk::real(), target, list);
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

    const bool isFile = arguments.has("output");
    const OutputTarget::Obstacle obstacle = OutputTarget::obstacleAt(target);
    if (isFile && obstacle != OutputTarget::Obstacle::None) {
        sayObstacle(session, target, obstacle);
        return ExitStatus::Failed;
    }
    if (isFile && !isJson && Index().writeSongList(root, target, order) == 1)
        return ExitStatus::Done;
    const auto songs = sortedSongs(root, order);
    if (!songs)
        return jobFailed(session, Cli::tr("%1: l'indice non può essere letto").arg(given));
    if (isFile) {
        return isJson && writeRecordFile(*songs, target, session) ? ExitStatus::Done
                                                                  : listFailed(target, session);
    }
    if (isJson)
        writeRecords(*songs, session.records, session);
    else
        printList(*songs, session);
    return ExitStatus::Done;
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

} // namespace tarvel4
