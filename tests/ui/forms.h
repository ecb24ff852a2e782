#pragma once

#include "tests/library/texts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSettings>
#include <QtTest>

namespace tarvel4 {

/** The settings of the program. */
inline QSettings settings()
{
    return QSettings(text("kvaro"), text("tarvel4soft"));
}

/** The hands of a user in a form. */
template <class Widget = QWidget> Widget *child(const QWidget &form, const char *name)
{
    return form.findChild<Widget *>(QLatin1String(name));
}

/** Clicks where a check box has its box and a radio button its circle. */
inline void click(const QWidget &form, const char *name)
{
    auto *button = child<QAbstractButton>(form, name);
    QVERIFY2(button, name);
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

/** Types a text of any letters; QTest::keyClicks() knows the ASCII ones only. */
inline void typeText(QWidget *widget, const QString &text)
{
    for (const QChar letter : text) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, 0, Qt::NoModifier, QString(letter));
            QCoreApplication::sendEvent(widget, &event);
        }
    }
}

inline void retype(QLineEdit *edit, const QString &text)
{
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    typeText(edit, text);
}

/** Makes a window the active one, also where no window manager does it. */
inline bool activate(QWidget &window)
{
    window.show();
    QApplication::setActiveWindow(&window);
    return QTest::qWaitFor([&window] { return window.isActiveWindow(); });
}

/** The names of the widgets that Tab reaches, from \a first until it is reached again; those inside
 * a combo box have none. */
inline QString focusChain(QWidget *first)
{
    QStringList names;
    QWidget *widget = first;
    do {
        if ((widget->focusPolicy() & Qt::TabFocus) && widget->isVisible() && widget->isEnabled()
            && !widget->focusProxy() && !widget->objectName().isEmpty())
            names.append(widget->objectName());
        widget = widget->nextInFocusChain();
    } while (widget != first);
    return names.join(QLatin1Char(' '));
}

} // namespace tarvel4
