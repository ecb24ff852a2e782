#include "ui/causebox.h"

namespace tarvel4 {

void showWithCause(QWidget &parent, QMessageBox::Icon icon, const QString &title,
                   const QString &text, const Outcome &cause)
{
    QMessageBox box(icon, title, text, QMessageBox::Ok, &parent);
    box.setDetailedText(cause.message()); // no button for it where there is none
    box.exec();
}

} // namespace tarvel4
