#include "ui/songchooser.h"

#include "ui/filedialogfit.h"
#include "ui/mediasidebar.h"
#include "ui/recentfolder.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>

#include <limits>

namespace tarvel4 {

QStringList chooseSongs(QWidget *parent, const QString &caption)
{
    RecentFolder recent(QLatin1String("songs"));
    QFileDialog dialog(parent, caption, recent.folder(QStringLiteral("/")),
                       QStringLiteral("Songs (*.mid *.kar *.mp3 *.mf3 *.mf4 *.mf5)"));
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setSupportedSchemes({QStringLiteral("file")});
    // else Qt's own dialog, which reads the choice from there, cuts it at 32,767 characters
    if (auto *names = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit")))
        names->setMaxLength(std::numeric_limits<int>::max());
    const MediaSidebar sidebar(dialog);
    fitFileDialog(dialog);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QStringList songs = dialog.selectedFiles();
    if (!songs.isEmpty())
        recent.setFolder(
            QFileInfo(songs.constFirst()).path()); // the dialog's own where none was typed
    return songs;
}

} // namespace tarvel4
