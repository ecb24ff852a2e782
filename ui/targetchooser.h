#pragma once

#include <QString>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

/** Asks for the name of a file to be written, at first \a start; before it gives one that exists
 * the dialog asks about that. Empty when the user cancels. */
QString chooseTarget(QWidget *parent, const QString &caption, const QString &start,
                     const QString &filter);

} // namespace tarvel4
