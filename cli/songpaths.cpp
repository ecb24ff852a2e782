#include "cli/songpaths.h"

#include "cli/arguments.h"
#include "cli/terminalhost.h"
#include "cli/texts.h"
#include "library/folderscan.h"
#include "songs/metasong.h"
#include "storage/disk.h"
#include "storage/recovery.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace tarvel4 {

QString withoutSlash(const QString &folder)
{
    QString path = folder;
    while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    return path;
}

bool SongPaths::collect(const QStringList &paths, bool recursive)
{
    if (!areUsable(paths, recursive, SetAsideFile::DoesNotCount))
        return false;
    for (const QString &path : paths) {
        if (QFileInfo(Arguments::onDisk(path)).isDir())
            walk(path);
        else
            m_songs.append({path, Arguments::onDisk(path)});
    }
    return true;
}

bool SongPaths::recoverAndCollect(const QStringList &paths, bool recursive)
{
    if (!areUsable(paths, recursive, SetAsideFile::Counts))
        return false;
    for (const QString &path : paths) {
        const QString file = Arguments::onDisk(path);
        if (!QFileInfo(file).isDir())
            recover(file);
        else
            for (const QString &below : FolderScan::setAsideBelow(withoutSlash(file)))
                recover(below);
    }
    return collect(paths, recursive);
}

void SongPaths::removeRepeats()
{
    QSet<QString> known;
    const auto isRepeat = [&known](const SongPath &song) {
        const QString path = QDir::cleanPath(QFileInfo(song.file).absoluteFilePath());
        const bool isKnown = known.contains(path);
        known.insert(path);
        return isKnown;
    };
    m_songs.erase(std::remove_if(m_songs.begin(), m_songs.end(), isRepeat), m_songs.end());
}

QStringList SongPaths::files() const
{
    QStringList files;
    files.reserve(m_songs.size());
    for (const SongPath &song : m_songs)
        files += song.file;
    return files;
}

bool SongPaths::areUsable(const QStringList &paths, bool recursive, SetAsideFile setAside)
{
    return std::all_of(paths.begin(), paths.end(),
                       [&](const QString &path) { return isUsable(path, recursive, setAside); });
}

bool SongPaths::isUsable(const QString &path, bool recursive, SetAsideFile setAside)
{
    const QString file = Arguments::onDisk(path);
    const QFileInfo info(file);
    const bool isSetAside = QFileInfo(Recovery::recoveryPathOf(file)).isFile();
    if (!path.isEmpty() && !info.exists() && isSetAside && setAside == SetAsideFile::Counts)
        return true;
    if (path.isEmpty() || !info.exists()) {
        m_host.say(isSetAside ? Cli::tr("%1: un'interruzione lo ha lasciato come %2")
                                    .arg(path, Recovery::recoveryPathOf(path))
                              : Cli::tr("%1: non esiste").arg(path));
        return false;
    }
    if (info.isDir() && !recursive) {
        m_host.say(Cli::tr("%1: è una cartella (senza --recursive non viene letta)").arg(path));
        return false;
    }
    if (info.isDir() && !(info.isReadable() && info.isExecutable())) {
        m_host.say(Cli::tr("%1: la cartella non può essere letta").arg(path));
        return false;
    }
    return true;
}

void SongPaths::recover(const QString &file)
{
    const Recovery::Result outcome = Recovery::recover(Disk::real(), file, MetaSong::isSong);
    if (outcome != Recovery::Result::NoneThere)
        m_host.recovered(file, outcome);
}

void SongPaths::walk(const QString &folder)
{
    const QString given = withoutSlash(folder);
    const QString onDisk = Arguments::onDisk(given);
    FolderScan::scanDir(
        onDisk,
        [&](const QString &file) {
            m_songs.append({given + file.midRef(onDisk.size()), file});
            return true;
        },
        [&](const QString &entry) {
            m_host.say(Cli::tr("%1: non può essere letto, viene saltato").arg(entry));
            m_hasSkipped = true;
        });
}

} // namespace tarvel4
