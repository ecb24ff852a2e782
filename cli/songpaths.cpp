#include "cli/songpaths.h"

#include "cli/command.h"
#include "cli/songrecord.h"
#include "cli/texts.h"
#include "library/folderscan.h"
#include "library/recoveryjob.h"
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
    RecoveryJob(m_session.host).finishSaves(m_session.journal);
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
    const auto isRepeat = [&known](const GivenPath &song) {
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
    for (const GivenPath &song : m_songs)
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
    const Outcome missing{Outcome::Code::NotFound, path, {}, {}};
    if (path.isEmpty())
        return refuse(path, missing.code, emptyPathText());
    const QString file = Arguments::onDisk(path);
    const QFileInfo info(file);
    const bool isSetAside = QFileInfo(Recovery::recoveryPathOf(file)).isFile();
    if (!info.exists() && isSetAside && setAside == SetAsideFile::Counts)
        return true;
    if (!info.exists())
        return refuse(path, missing.code,
                      isSetAside ? Cli::tr("un'interruzione lo ha lasciato come %1")
                                       .arg(Recovery::recoveryPathOf(path))
                                 : missing.sentence());
    const Outcome folder{Outcome::Code::NotAFile, path, {}, {}};
    if (info.isDir() && !recursive)
        return refuse(path, folder.code,
                      m_takes == Takes::Files
                          ? folder.sentence()
                          : Cli::tr("è una cartella (senza --recursive non viene letta)"));
    if (info.isDir() && !(info.isReadable() && info.isExecutable()))
        return refuse(path, Outcome::Code::ReadDenied, Cli::tr("la cartella non può essere letta"));
    return true;
}

bool SongPaths::refuse(const QString &path, Outcome::Code code, const QString &error)
{
    m_session.host.say(path.isEmpty() ? error : path + QLatin1String(": ") + error);
    RecordWriter &records = m_session.records;
    if (records.format() == Record::Json)
        records.write(errorRecord(records.begin(), path, {code, path, {}, {}}, error));
    return false;
}

void SongPaths::recover(const QString &file)
{
    const Recovery::Result outcome = Recovery::recover(Disk::real(), file, MetaSong::isSong);
    if (outcome != Recovery::Result::NoneThere)
        m_session.host.recovered(file, outcome, {});
}

void SongPaths::walk(const QString &folder)
{
    const QString given = withoutSlash(folder);
    const QString onDisk = Arguments::onDisk(given);
    FolderScan::scanDir(
        onDisk,
        [&](const QString &file) {
            m_songs.append({given + file.mid(onDisk.size()), file});
            return true;
        },
        [&](const QString &entry) {
            m_session.host.say(Cli::tr("%1: non può essere letto, viene saltato").arg(entry));
            m_hasSkipped = true;
        });
}

} // namespace tarvel4
