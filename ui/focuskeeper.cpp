#include "ui/focuskeeper.h"

#include <QWidget>

namespace tarvel4 {

FocusKeeper::FocusKeeper(const QList<QWidget *> &controls)
{
    const QWidget *focused = controls.constFirst()->window()->focusWidget();
    for (int i = 0; i < controls.size(); ++i) {
        if (controls.at(i) == focused)
            m_next = controls.mid(i);
    }
}

FocusKeeper::~FocusKeeper()
{
    for (QWidget *control : m_next) {
        if (control->isEnabled()) {
            control->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

} // namespace tarvel4
