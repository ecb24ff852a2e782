#pragma once

#include <QStyledItemDelegate>

namespace tarvel4 {

/**
 * Shows beside the first text of a row how the last operation on its song ended, and as a tooltip
 * that or a text that its cell is too narrow for. Song texts are plain text; a cell is aligned as
 * the header of its column is.
 */
class SongTableDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /** \a markColumn is the one in which the model marks its rows. */
    SongTableDelegate(int markColumn, QObject *parent);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

    /** Why the song of a row is as it was, else what became of it; empty for an unmarked one.
     * \a index is of the column in which the model marks its rows. */
    static QString markText(const QModelIndex &index);

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    int m_markColumn;
};

} // namespace tarvel4
