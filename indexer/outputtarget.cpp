#include "indexer/outputtarget.h"

#include "indexer/index.h"
#include "indexer/indexformat.h"
#include "songs/id3/id3format.h"
#include "songs/metasong.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace tarvel4 {

namespace {

constexpr char catalogueMagic[] = "SQLite format 3"; // and a zero byte

bool isSame(const QString &name, const char *other)
{
    return name.compare(QLatin1String(other), Qt::CaseInsensitive) == 0;
}

bool isIndexFile(const QFileInfo &info)
{
    const QString name = info.fileName();
    const bool isReserved =
        std::any_of(IndexFormat::deletedFiles.begin(), IndexFormat::deletedFiles.end(),
                    [&name](const char *reserved) { return isSame(name, reserved); })
        || isSame(name, IndexFormat::playersFile) || isSame(name, IndexFormat::unfinishedNumFile);
    return isReserved && Index::isPrepared(info.absolutePath());
}

bool hasSongName(const QFileInfo &info)
{
    const QString suffix = info.suffix();
    return std::any_of(IndexFormat::songSuffixes.begin(), IndexFormat::songSuffixes.end(),
                       [&suffix](const char *song) { return isSame(suffix, song); });
}

} // namespace

OutputTarget::Obstacle OutputTarget::obstacleAt(const QString &path)
{
    QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return Obstacle::NoFile;
    if (info.exists() && info.isSymLink())
        info.setFile(info.canonicalFilePath());
    if (isIndexFile(info))
        return Obstacle::IndexFile;
    if (hasSongName(info))
        return Obstacle::Song;
    QFile file(info.filePath());
    if (!info.exists() || !file.open(QIODevice::ReadOnly))
        return Obstacle::None;
    const QByteArray start = file.read(sizeof(catalogueMagic));
    if (start == QByteArray(catalogueMagic, sizeof(catalogueMagic)))
        return Obstacle::Catalogue;
    // An MP3 is taken for a song by its name only, but it stays one.
    return start.startsWith(Id3Format::tagMagic) || MetaSong::isSong(info.filePath())
        ? Obstacle::Song
        : Obstacle::None;
}

Outcome OutputTarget::check(const QString &path)
{
    const auto refused = [&path](const char *what) {
        return Outcome{
            Outcome::Code::Refused, path, QCoreApplication::translate("OutputTarget", what), {}};
    };
    switch (obstacleAt(path)) {
    case Obstacle::NoFile:
        return {Outcome::Code::NotAFile, path, {}, {}};
    case Obstacle::Song:
        return refused(QT_TRANSLATE_NOOP("OutputTarget", "una song"));
    case Obstacle::Catalogue:
        return refused(QT_TRANSLATE_NOOP("OutputTarget", "un catalogo"));
    case Obstacle::IndexFile:
        return refused(QT_TRANSLATE_NOOP("OutputTarget", "un file dell'indice di una memoria"));
    case Obstacle::None:
        break;
    }
    return {};
}

} // namespace tarvel4
