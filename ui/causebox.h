#pragma once

#include "storage/outcome.h"

#include <QMessageBox>

namespace tarvel4 {

/** Shows a message as QMessageBox's static functions do; the cause of the failure stands in its
 * details. */
void showWithCause(QWidget &parent, QMessageBox::Icon icon, const QString &title,
                   const QString &text, const Outcome &cause);

} // namespace tarvel4
