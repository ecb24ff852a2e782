#include "cli/command.h"
#include "cli/songpaths.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "songs/disk.h"
#include "songs/metasong.h"

#include <QFileInfo>

namespace {

QString midiFileBeside(const QString &song)
{
    const QFileInfo info(song);
    return song.left(song.size() - info.fileName().size()) + info.completeBaseName()
        + QLatin1String(".mid");
}

/** Writes a file that is not there yet: whole, or not at all. */
bool writeNewFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    Disk &disk = Disk::real();
    if (disk.write(file, bytes) && disk.sync(file))
        return true;
    file.close();
    disk.remove(path);
    return false;
}

ExitStatus runExtract(const Arguments &arguments, Session &session)
{
    SongPaths paths(session.host);
    if (!paths.collect(arguments.operands(), false))
        return ExitStatus::Failed;
    const SongPath &path = paths.songs().first();
    const QString target = arguments.value("output", midiFileBeside(path.file));
    const QFileInfo targetInfo(target);
    if (targetInfo.exists() || targetInfo.isSymLink())
        return jobFailed(session, Cli::tr("%1: esiste già").arg(target));

    MetaSong song;
    if (!song.importFile(path.file)) {
        session.host.say(path.given + QLatin1String(": ") + QLatin1String(unknownFile));
        return ExitStatus::SomeFailed;
    }
    if (song.format() < MetaSong::Mf3 || song.format() > MetaSong::Mf5) {
        session.host.say(Cli::tr("%1: non è una song .mf3, .mf4 o .mf5").arg(path.given));
        return ExitStatus::SomeFailed;
    }
    return writeNewFile(target, song.midiData())
        ? ExitStatus::Done
        : jobFailed(session, Cli::tr("%1: non può essere scritto").arg(target));
}

} // namespace

Command extractCommand()
{
    return {"extract",
            "SONG",
            QT_TRANSLATE_NOOP("Cli", "Scrive come file .mid la parte MIDI di una song MFx."),
            {{"output", Option::Path, "FILE",
              QT_TRANSLATE_NOOP("Cli", "file da scrivere (accanto alla song, con suffisso .mid)")}},
            1,
            1,
            runExtract};
}
