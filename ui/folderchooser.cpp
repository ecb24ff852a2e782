#include "ui/folderchooser.h"

#include "library/mountedmedia.h"
#include "ui/filedialogfit.h"
#include "ui/mediasidebar.h"
#include "ui/recentfolder.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace tarvel4 {

namespace {

QLatin1String keyOf(FolderKind kind)
{
    switch (kind) {
    case FolderKind::Songs:
        return QLatin1String("songfolder");
    case FolderKind::Backup:
        return QLatin1String("backup");
    case FolderKind::Memory:
        return QLatin1String("memory");
    case FolderKind::Transfer:
        return QLatin1String("transfer");
    }
    return QLatin1String("folder");
}

QString firstFolder(FolderKind kind)
{
    if (kind != FolderKind::Transfer) {
        const QFileInfo homes(QStringLiteral("/home")); // Windows has none
        return homes.isDir() ? homes.absoluteFilePath() : QDir::homePath();
    }
    const QString volumes = QStringLiteral("/Volumes");
    if (QFileInfo(volumes).isDir())
        return volumes;
    const QString mounted = MountedMedia::startFolder(MountedMedia::list());
    return mounted.isEmpty() ? volumes : mounted;
}

} // namespace

QString chooseFolder(QWidget *parent, const QString &caption, FolderKind kind)
{
    QFileDialog::Options options = QFileDialog::ShowDirsOnly;
    if (kind != FolderKind::Transfer)
        options |= QFileDialog::DontResolveSymlinks;
    RecentFolder recent(keyOf(kind));
    QFileDialog dialog(parent, caption, recent.folder(firstFolder(kind)));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOptions(options);
    dialog.setSupportedSchemes({QStringLiteral("file")});
    const MediaSidebar sidebar(dialog);
    fitFileDialog(dialog);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QString folder = dialog.selectedFiles().value(0);
    recent.setFolder(folder);
    return folder;
}

} // namespace tarvel4
