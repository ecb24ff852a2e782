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

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    QString markText(const QModelIndex &index) const;

    int m_markColumn;
};

} // namespace tarvel4
