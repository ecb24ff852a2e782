#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QFileDialog;
QT_END_NAMESPACE

namespace tarvel4 {

/** Gives Qt's own file dialog columns in which sizes and dates have room, and a size that the
 * screen has; nothing where the system has a dialog of its own. Only widths, which Qt keeps for the
 * dialogs of other programs, too. */
void fitFileDialog(QFileDialog &dialog);

} // namespace tarvel4
