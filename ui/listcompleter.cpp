#include "ui/listcompleter.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>

namespace tarvel4 {

ListCompleter::ListCompleter(QComboBox *box)
    : QCompleter(box->model(), box)
{
    box->setCompleter(nullptr);
    setCaseSensitivity(Qt::CaseInsensitive);
    setWidget(box->lineEdit());
    if (auto *offers = qobject_cast<QListView *>(popup()))
        offers->setUniformItemSizes(true); // else each letter measures every entry
    connect(box->lineEdit(), &QLineEdit::textEdited, this, &ListCompleter::offer);
    connect(this, QOverload<const QString &>::of(&QCompleter::activated), box->lineEdit(),
            &QLineEdit::setText);
}

void ListCompleter::offer(const QString &typed)
{
    setCompletionPrefix(typed);
    if (typed.isEmpty())
        popup()->hide();
    else
        complete();
}

/** Enter with no offer chosen belongs to the dialog, as if nothing had been offered. */
bool ListCompleter::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched == popup()
        && !popup()->currentIndex().isValid()) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            popup()->hide();
            QCoreApplication::sendEvent(widget(), event);
            return true;
        }
    }
    return QCompleter::eventFilter(watched, event);
}

} // namespace tarvel4
