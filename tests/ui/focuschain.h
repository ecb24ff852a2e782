#pragma once

#include <QStringList>
#include <QWidget>

namespace tarvel4 {

/** The names of the widgets that Tab reaches, one after another, from \a first until it is reached
 * again. */
inline QStringList focusChain(QWidget *first)
{
    QStringList names;
    QWidget *widget = first;
    do {
        if ((widget->focusPolicy() & Qt::TabFocus) && widget->isVisible() && widget->isEnabled()
            && !widget->focusProxy())
            names.append(widget->objectName());
        widget = widget->nextInFocusChain();
    } while (widget != first);
    return names;
}

} // namespace tarvel4
