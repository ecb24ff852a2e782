#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QMessageBox;
class QString;
QT_END_NAMESPACE

namespace tarvel4 {

/** Texts that are not ours, as names of files, where Qt would take what looks like HTML for HTML.
 */
namespace PlainText {

/** A tool tip that shows a text as it is; none for no text. */
QString toolTip(const QString &text);

/** Shows a text below that of a message box. */
void addTo(QMessageBox &box, const QString &text);

} // namespace PlainText

} // namespace tarvel4
