#include "cli/command.h"
#include "cli/songpaths.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "indexer/outputtarget.h"
#include "songs/metasong.h"
#include "storage/disk.h"
#include "storage/newfile.h"

#include <QFileInfo>

namespace tarvel4 {

namespace {

QString midiFileBeside(const QString &song)
{
    const QFileInfo info(song);
    return song.left(song.size() - info.fileName().size()) + info.completeBaseName()
        + QLatin1String(".mid");
}

ExitStatus runExtract(const Arguments &arguments, Session &session)
{
    SongPaths paths(session, SongPaths::Takes::Files);
    if (!paths.collect(arguments.operands(), false))
        return ExitStatus::Failed;
    const GivenPath &path = paths.songs().first();
    const QString target = arguments.value("output", midiFileBeside(path.file));
    MetaSong song;
    Outcome outcome = song.importFile(path.file);
    if (outcome && (song.format() < MetaSong::Mf3 || song.format() > MetaSong::Mf5))
        outcome = {Outcome::Code::OtherFormat, path.file, {}, {}};
    if (!outcome) {
        sayFailure(session, path.given, outcome);
        if (session.records.format() == Record::Json)
            session.records.write(errorRecord(session.records.begin(), path.given, outcome));
        return ExitStatus::SomeFailed;
    }
    const QFileInfo targetInfo(target);
    if (targetInfo.exists() || targetInfo.isSymLink())
        return jobFailed(session, Cli::tr("%1: esiste già").arg(target));
    if (OutputTarget::obstacleAt(target) == OutputTarget::Obstacle::IndexFile)
        return jobFailed(
            session,
            Cli::tr("%1: appartiene all'indice di una memoria, non può essere sovrascritto")
                .arg(target));
    if (const Outcome written = NewFile::write(Disk::real(), target, song.midiData()); !written)
        return jobFailed(session, target, written);
    sayDone(session, target, Cli::tr("scritto"));
    return ExitStatus::Done;
}

} // namespace

Command extractCommand()
{
    return {"extract",
            "SONG",
            QT_TRANSLATE_NOOP("Cli", "Scrive come file .mid la parte MIDI di una song MFx."),
            "extract --output part.mid GREENSLV.mf5",
            {{"output", Option::Path, "FILE",
              QT_TRANSLATE_NOOP("Cli", "file da scrivere (accanto alla song, con suffisso .mid)")}},
            1,
            1,
            runExtract};
}

} // namespace tarvel4
