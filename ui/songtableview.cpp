#include "ui/songtableview.h"

#include <QEvent>
#include <QPainter>

namespace tarvel4 {

namespace {

constexpr int margin = 24;

} // namespace

SongTableView::SongTableView(QWidget *parent)
    : QTableView(parent)
{}

void SongTableView::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (!model() || model()->rowCount() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap,
                     tr("Qui compaiono le tue song: sceglile con il pulsante in alto a sinistra."));
}

void SongTableView::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        viewport()->update();
}

} // namespace tarvel4
