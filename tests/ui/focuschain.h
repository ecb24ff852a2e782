#pragma once

#include <QStringList>
#include <QWidget>

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
