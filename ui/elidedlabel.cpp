#include "ui/elidedlabel.h"

#include "ui/plaintext.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace tarvel4 {

namespace {

constexpr int mostCharacters = 60; // of the preferred width
constexpr int fewestCharacters = 12;

} // namespace

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::sizeHint() const
{
    const QSize whole = QLabel::sizeHint();
    const int most = fontMetrics().averageCharWidth() * mostCharacters;
    return {qMin(whole.width(), most), minimumSizeHint().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    const QMargins margins = contentsMargins();
    return {fontMetrics().averageCharWidth() * fewestCharacters,
            fontMetrics().height() + margins.top() + margins.bottom()};
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const QString tip = elided() == text() ? QString() : PlainText::toolTip(text());
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), tip, this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(),
                          static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment())),
                          palette(), isEnabled(), elided(), foregroundRole());
}

QString ElidedLabel::elided() const
{
    // a line break in a file name must not make a second line
    QString line = text();
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return fontMetrics().elidedText(line, m_elideMode, contentsRect().width());
}

} // namespace tarvel4
