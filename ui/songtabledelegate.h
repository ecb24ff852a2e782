#pragma once

#include <QStyledItemDelegate>

namespace tarvel4 {

/**
 * Shows beside the first text of a row how the last operation on its song ended, and as a tooltip
 * that or a text that its cell is too narrow for. Song texts are plain text.
 */
class SongTableDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /** \a markColumn gets the mark of the status that \a statusColumn holds. */
    SongTableDelegate(int markColumn, int statusColumn, QObject *parent);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

    static QString statusText(int status);

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    QString markText(const QModelIndex &index) const;
    int statusOf(const QModelIndex &index) const;

    int m_markColumn;
    int m_statusColumn;
};

} // namespace tarvel4
