#include "ui/targetchooser.h"

#include "ui/filedialogfit.h"
#include "ui/mediasidebar.h"

#include <QFileDialog>
#include <QFileInfo>

namespace tarvel4 {

QString chooseTarget(QWidget *parent, const QString &caption, const QString &start,
                     const QString &filter)
{
    const QFileInfo first(start);
    QFileDialog dialog(parent, caption, first.path(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setSupportedSchemes({QStringLiteral("file")});
    dialog.selectFile(first.fileName());
    const MediaSidebar sidebar(dialog);
    fitFileDialog(dialog);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace tarvel4
