#pragma once

#include <QList>

QT_BEGIN_NAMESPACE
class QAbstractButton;
QT_END_NAMESPACE

namespace tarvel4 {

/** Tells the words and the shortcut of each button in its tool tip, which is also what a screen
 * reader tells of it; to be called again once the language has changed. */
void tellShortcuts(const QList<QAbstractButton *> &buttons);

} // namespace tarvel4
