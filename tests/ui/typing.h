#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QtTest>

namespace tarvel4 {

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

/** Makes a window the active one, also where no window manager does it. */
inline bool activate(QWidget &window)
{
    window.show();
    QApplication::setActiveWindow(&window);
    return QTest::qWaitFor([&window] { return window.isActiveWindow(); });
}

} // namespace tarvel4
