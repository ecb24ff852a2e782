#include "ui/shortcuttips.h"

#include <QAbstractButton>
#include <QKeySequence>

namespace tarvel4 {

void tellShortcuts(const QList<QAbstractButton *> &buttons)
{
    for (QAbstractButton *button : buttons) {
        const QString words = button->text().isEmpty() ? button->accessibleName() : button->text();
        button->setToolTip(QStringLiteral("%1 (%2)").arg(
            words.simplified(), button->shortcut().toString(QKeySequence::NativeText)));
    }
}

} // namespace tarvel4
