#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QProgressBar>
#include <QProgressDialog>

#include <functional>

namespace tarvel4 {

/** Acts as a user does while a progress is on show: at its beginning, and at each of its values. */
class ProgressWatcher : public QObject
{
public:
    ProgressWatcher() { qApp->installEventFilter(this); }

    static void cancel(QProgressDialog &dialog) { dialog.findChild<QAbstractButton *>()->click(); }

    std::function<void(QProgressDialog &)> onShow;
    std::function<void(QProgressDialog &, int value)> onValue;

    QStringList seen; ///< "TITLE|LABEL|CANCEL|MAXIMUM" of each progress
    QStringList labels; ///< each label shown, in order

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *dialog = qobject_cast<QProgressDialog *>(watched);
        if (dialog && event->type() == QEvent::Show)
            watch(*dialog);
        return false;
    }

private:
    void watch(QProgressDialog &dialog)
    {
        const auto *cancel = dialog.findChild<QAbstractButton *>();
        seen.append(QStringList({dialog.windowTitle(), dialog.labelText(), cancel->text(),
                                 QString::number(dialog.maximum())})
                        .join(QLatin1Char('|')));
        connect(dialog.findChild<QProgressBar *>(), &QProgressBar::valueChanged, this,
                [this, &dialog](int value) {
                    labels.append(dialog.labelText());
                    if (onValue)
                        onValue(dialog, value);
                });
        if (onShow)
            onShow(dialog);
    }
};

} // namespace tarvel4
