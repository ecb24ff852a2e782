#include "ui/songtabledelegate.h"

#include "db/usersongsreltablemodel.h"
#include "ui/plaintext.h"
#include "ui/songtableview.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

namespace tarvel4 {

namespace {

/** A mark in a square of side 1, drawn with a pen. */
QPainterPath shapeOf(int mark)
{
    QPainterPath path;
    switch (mark) {
    case UserSongsRelTableModel::MarkedUpdated: // a tick
    case UserSongsRelTableModel::MarkedComplete:
        path.moveTo(0.15, 0.55);
        path.lineTo(0.4, 0.8);
        path.lineTo(0.85, 0.25);
        break;
    case UserSongsRelTableModel::MarkedEdited: // a pencil
        path.moveTo(0.2, 0.8);
        path.lineTo(0.28, 0.55);
        path.lineTo(0.7, 0.15);
        path.lineTo(0.87, 0.32);
        path.lineTo(0.45, 0.72);
        path.closeSubpath();
        break;
    case UserSongsRelTableModel::MarkedLeftAlone: // a dash
        path.moveTo(0.25, 0.52);
        path.lineTo(0.75, 0.52);
        break;
    case UserSongsRelTableModel::MarkedFailed: // a cross
        path.moveTo(0.22, 0.22);
        path.lineTo(0.78, 0.78);
        path.moveTo(0.78, 0.22);
        path.lineTo(0.22, 0.78);
        break;
    default:
        break;
    }
    return path;
}

QPalette::ColorRole roleOf(int mark)
{
    switch (mark) {
    case UserSongsRelTableModel::MarkedUpdated:
    case UserSongsRelTableModel::MarkedComplete:
        return QPalette::Link;
    case UserSongsRelTableModel::MarkedFailed:
        return QPalette::BrightText;
    default:
        return QPalette::Text;
    }
}

} // namespace

SongTableDelegate::SongTableDelegate(int markColumn, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_markColumn(markColumn)
{}

void SongTableDelegate::initStyleOption(QStyleOptionViewItem *option,
                                        const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const QVariant alignment =
        index.model()->headerData(index.column(), Qt::Horizontal, Qt::TextAlignmentRole);
    if (alignment.isValid())
        option->displayAlignment = Qt::Alignment(alignment.toInt());
    const auto *table = qobject_cast<const SongTableView *>(option->widget);
    if (table && table->hoveredRow() == index.row())
        option->state |= QStyle::State_MouseOver;
    if (index.column() == m_markColumn) { // keeps room for the mark, whatever the status
        const int side = option->fontMetrics.ascent() + 2;
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->decorationSize = QSize(side, side);
    }
}

void SongTableDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    const QVariant mark = index.data(UserSongsRelTableModel::MarkRole);
    if (index.column() != m_markColumn || !mark.isValid())
        return;

    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QStyle *style = cell.widget ? cell.widget->style() : QApplication::style();
    const QRectF place =
        style->subElementRect(QStyle::SE_ItemViewItemDecoration, &cell, cell.widget);
    const bool selected = cell.state.testFlag(QStyle::State_Selected);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(place.topLeft());
    painter->scale(place.width(), place.height());
    const QBrush colour =
        QApplication::palette().brush(selected ? QPalette::HighlightedText : roleOf(mark.toInt()));
    painter->setPen(QPen(colour, 0.14, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPath(shapeOf(mark.toInt()));
    painter->restore();
}

bool SongTableDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                                  const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);

    QString text;
    if (index.column() == m_markColumn)
        text = markText(index);
    else if (sizeHint(option, index).width() > option.rect.width())
        text = index.data().toString();
    QToolTip::showText(event->globalPos(), PlainText::toolTip(text), view);
    return true;
}

QString SongTableDelegate::markText(const QModelIndex &index)
{
    const QString cause = index.data(Qt::ToolTipRole).toString();
    if (!cause.isEmpty())
        return cause;
    const int mark = index.data(UserSongsRelTableModel::MarkRole).toInt();
    return UserSongsRelTableModel::markText(static_cast<UserSongsRelTableModel::Mark>(mark));
}

} // namespace tarvel4
