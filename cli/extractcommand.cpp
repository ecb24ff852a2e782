#include "cli/command.h"
#include "cli/songpaths.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "songs/disk.h"
#include "songs/metasong.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString midiFileBeside(const QString &song)
{
    const QFileInfo info(song);
    return song.left(song.size() - info.fileName().size()) + info.completeBaseName()
        + QLatin1String(".mid");
}

/** The name of a file until it is whole; a point at the front keeps it out of every list of songs.
 */
QString unfinished(const QString &path)
{
    const QFileInfo info(path);
    // Shortened, since a file system that takes the name itself might not take more.
    return info.dir().filePath(QLatin1Char('.') + info.fileName().left(60)
                               + QLatin1String(".tarvel4.part"));
}

/** Writes a file that is not there yet: whole, or not at all. */
bool writeNewFile(const QString &path, const QByteArray &bytes)
{
    Disk &disk = Disk::real();
    QFile file(unfinished(path));
    disk.remove(file.fileName()); // of a run that was killed
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return false;
    const bool isWhole = disk.write(file, bytes) && disk.sync(file);
    file.close();
    if (isWhole && disk.replace(file.fileName(), path) && disk.syncFolder(path))
        return true;
    disk.remove(file.fileName());
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
