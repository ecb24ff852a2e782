#include "cli/command.h"
#include "cli/texts.h"
#include "indexer/index.h"
#include "indexer/outputtarget.h"
#include "indexer/songlistwriter.h"
#include "storage/newfile.h"

#include <QBuffer>
#include <QFileInfo>

namespace tarvel4 {

namespace {

Index::SongOrder orderOf(const QString &name)
{
    if (name == QLatin1String("artist"))
        return Index::ByArtist;
    return name == QLatin1String("genre") ? Index::ByGenre : Index::ByTitle;
}

/** The list as the window writes it, but in UTF-8 whatever the locale. */
void printList(const QVector<IndexEntry> &entries, Session &session)
{
    QByteArray bytes = SongListWriter::listOf(entries, SongListWriter::Encoding::Utf8);
    QBuffer list(&bytes);
    list.open(QIODevice::ReadOnly);
    while (!list.atEnd() && !session.host.wasCancelled())
        session.records.writeTableLine(list.readLine());
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

QByteArray recordsOf(const QVector<IndexEntry> &entries, Session &session)
{
    QByteArray list;
    RecordWriter records(Record::Json, [&list](const QByteArray &bytes) {
        list += bytes;
        return true;
    });
    writeRecords(entries, records, session);
    return list;
}

ExitStatus runList(const Arguments &arguments, Session &session)
{
    const QString given = arguments.operands().first();
    const QString root = Arguments::onDisk(given);
    const QString target = arguments.value("output");
    const Index::SongOrder order = orderOf(arguments.value("order"));
    const bool isJson = session.records.format() == Record::Json;
    if (!QFileInfo(root).isDir())
        return notAFolder(session, given);
    if (!Index::isPrepared(root))
        return jobFailed(session, Cli::tr("%1: la memoria non è preparata").arg(given));

    const bool isFile = arguments.has("output");
    if (isFile) {
        if (const Outcome checked = OutputTarget::check(target); !checked)
            return jobFailed(session, target, checked);
    }
    auto [read, songs] = Index::readEntries(root);
    if (!read)
        return jobFailed(session, given, read);
    SongListWriter::sort(songs, order);
    if (isFile) {
        const QByteArray list = isJson
            ? recordsOf(songs, session)
            : SongListWriter::listOf(songs, SongListWriter::Encoding::Local);
        if (session.host.wasCancelled())
            return ExitStatus::Interrupted;
        const Outcome written = NewFile::write(Disk::real(), target, list);
        if (!written)
            return jobFailed(session, target, written);
        sayDone(session, target, Cli::tr("scritto"));
        return ExitStatus::Done;
    }
    if (isJson)
        writeRecords(songs, session.records, session);
    else
        printList(songs, session);
    return ExitStatus::Done;
}

} // namespace

Command listCommand()
{
    return {"list",
            "ROOT",
            QT_TRANSLATE_NOOP("Cli", "Scrive la lista delle song di una memoria preparata."),
            "list --order artist --output SongsList.csv /media/card",
            {{"order", Option::Choice, "title|artist|genre",
              QT_TRANSLATE_NOOP("Cli", "ordine della lista (title)")},
             {"output", Option::Path, "FILE",
              QT_TRANSLATE_NOOP("Cli", "file da scrivere, al posto dell'uscita standard")}},
            1,
            1,
            runList};
}

} // namespace tarvel4
