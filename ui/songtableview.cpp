#include "ui/songtableview.h"

#include <QHoverEvent>

namespace tarvel4 {

SongTableView::SongTableView(QWidget *parent)
    : QTableView(parent)
{}

void SongTableView::keyboardSearch(const QString &typed)
{
    const QModelIndex before = currentIndex();
    QTableView::keyboardSearch(typed);
    if (currentIndex().isValid() && isRowHidden(currentIndex().row()))
        setCurrentIndex(before);
}

bool SongTableView::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        setHoveredRow(rowAt(static_cast<const QHoverEvent *>(event)->pos().y()));
        break;
    case QEvent::HoverLeave:
    case QEvent::Leave:
        setHoveredRow(-1);
        break;
    default:
        break;
    }
    return QTableView::viewportEvent(event);
}

void SongTableView::setHoveredRow(int row)
{
    if (row == m_hoveredRow)
        return;
    updateRow(m_hoveredRow);
    m_hoveredRow = row;
    updateRow(row);
}

void SongTableView::updateRow(int row)
{
    viewport()->update(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
}

} // namespace tarvel4
