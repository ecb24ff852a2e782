#include "ui/unbrokenlabel.h"

#include <QPainter>
#include <QRegularExpression>
#include <QStyle>

namespace tarvel4 {

UnbrokenLabel::UnbrokenLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

QString UnbrokenLabel::unbroken(const QString &text)
{
    constexpr QChar unbreakableHyphen(0x2011);
    static const QRegularExpression hyphen(QStringLiteral("(?<=\\w)-(?=\\w)"));
    static const QRegularExpression afterNumber(QStringLiteral("(?<=\\d) (?=\\w)"));
    return QString(text)
        .replace(hyphen, unbreakableHyphen)
        .replace(afterNumber, QString(QChar(QChar::Nbsp)));
}

QSize UnbrokenLabel::sizeHint() const
{
    const int width = QLabel::sizeHint().expandedTo(minimumSizeHint()).width();
    return {width, heightForWidth(width)};
}

/** Where each piece has a line of its own. */
QSize UnbrokenLabel::minimumSizeHint() const
{
    return {sizeFor(0).width(), QLabel::minimumSizeHint().height()};
}

int UnbrokenLabel::heightForWidth(int width) const
{
    return sizeFor(width).height();
}

void UnbrokenLabel::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    const auto place = QStyle::visualAlignment(layoutDirection(), alignment());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(place) | Qt::TextWordWrap,
                          palette(), isEnabled(), unbroken(text()), foregroundRole());
}

QSize UnbrokenLabel::sizeFor(int width) const
{
    const QMargins margins = contentsMargins();
    const QSize around(margins.left() + margins.right(), margins.top() + margins.bottom());
    const QRect room(0, 0, qMax(0, width - around.width()), QWIDGETSIZE_MAX);
    return fontMetrics().boundingRect(room, Qt::TextWordWrap, unbroken(text())).size() + around;
}

} // namespace tarvel4
