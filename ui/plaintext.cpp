#include "ui/plaintext.h"

#include <QLabel>
#include <QMessageBox>

namespace tarvel4 {

QString PlainText::toolTip(const QString &text)
{
    return text.isEmpty() ? text : QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped());
}

void PlainText::addTo(QMessageBox &box, const QString &text)
{
    box.setInformativeText(text);
    // the format of the box is that of its first text alone
    if (auto *label = box.findChild<QLabel *>(QStringLiteral("qt_msgbox_informativelabel")))
        label->setTextFormat(Qt::PlainText);
}

} // namespace tarvel4
