#include "library/songselection.h"

#include "library/folderscan.h"

#include <QFileInfo>
#include <QSet>

namespace tarvel4 {

SongSelection SongSelection::of(const QStringList &paths, const std::function<bool(int)> &goesOn)
{
    SongSelection selection;
    QSet<QString> known;
    const auto askGoesOn = [&] {
        selection.isWhole = selection.isWhole && goesOn(static_cast<int>(selection.songs.size()));
    };
    const auto add = [&](const QString &path) {
        if (!known.contains(path)) {
            known.insert(path);
            selection.songs += path;
        }
        askGoesOn();
        return selection.isWhole;
    };
    const auto skip = [&](const QString &entry) { selection.skipped += entry; };
    for (const QString &path : paths) {
        if (!selection.isWhole)
            break;
        if (QFileInfo(path).isDir())
            FolderScan::scanDir(path, add, skip, FolderScan::Files::Songs, askGoesOn);
        else
            add(path);
    }
    return selection;
}

} // namespace tarvel4
