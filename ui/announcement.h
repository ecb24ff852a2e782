#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QString;
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

/** What a screen reader is to say at once, although nothing that has the focus changes. */
namespace Announcement {

/** Says a text in the window that \a widget belongs to. */
void say(QWidget &widget, const QString &text);

} // namespace Announcement

} // namespace tarvel4
