#include "ui/folderchooser.h"

#include <QFileDialog>

namespace tarvel4 {

QString chooseFolder(QWidget *parent, const QString &caption)
{
    return QFileDialog::getExistingDirectory(parent, caption, QStringLiteral("/home"),
                                             QFileDialog::ShowDirsOnly
                                                 | QFileDialog::DontResolveSymlinks);
}

} // namespace tarvel4
