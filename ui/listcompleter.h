#pragma once

#include <QCompleter>

QT_BEGIN_NAMESPACE
class QComboBox;
QT_END_NAMESPACE

namespace tarvel4 {

/**
 * Offers the entries of an editable box that go on from what is typed, in any case of letters. It
 * takes the place of the box's own completer, which on leaving the box would turn a text into an
 * entry that differs in case only.
 */
class ListCompleter : public QCompleter
{
    Q_OBJECT

public:
    /** Owned by \a box. */
    explicit ListCompleter(QComboBox *box);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void offer(const QString &typed);
};

} // namespace tarvel4
