#include "ui/stepbutton.h"

#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace tarvel4 {

namespace {

constexpr int gap = 14; // between the picture and the text
constexpr int usualLine = 30; // in characters of mean width
constexpr int narrowestLine = 11;
constexpr int smallestPicture = 40;
constexpr qreal smallestFont = 8; // points

} // namespace

StepButton::StepButton(QWidget *parent)
    : QToolButton(parent)
{}

QSize StepButton::sizeHint() const
{
    return sizeFor(iconSize().width(), fontMetrics().averageCharWidth() * usualLine);
}

QSize StepButton::minimumSizeHint() const
{
    const int width =
        sizeFor(smallestPicture, fontMetrics().averageCharWidth() * narrowestLine).width();
    return QSize(width, sizeHint().height());
}

void StepButton::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    option.icon = QIcon();
    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_ToolButton, option);

    const QSize frame = frameSize();
    const QRect inside = rect().adjusted(frame.width() / 2, frame.height() / 2, -frame.width() / 2,
                                         -frame.height() / 2);
    const int side = qBound(smallestPicture, inside.width() / 4, iconSize().width());
    const QRect picture(inside.topLeft(), QSize(side, inside.height()));
    icon().paint(&painter, picture, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    const QRect words = inside.adjusted(picture.width() + gap, 0, 0, 0);
    painter.setFont(fontFor(words.size()));
    painter.drawItemText(words, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, option.palette,
                         isEnabled(), text(), QPalette::ButtonText);
}

/** The button's font, or where the text needs more room than there is a smaller one. */
QFont StepButton::fontFor(const QSize &room) const
{
    QFont smaller = font();
    const QRect limit(0, 0, room.width(), QWIDGETSIZE_MAX);
    while (smaller.pointSizeF() > smallestFont
           && QFontMetrics(smaller).boundingRect(limit, Qt::TextWordWrap, text()).height()
               > room.height())
        smaller.setPointSizeF(smaller.pointSizeF() - 0.5);
    return smaller;
}

QSize StepButton::sizeFor(int pictureWidth, int textWidth) const
{
    const QRect room(0, 0, textWidth, QWIDGETSIZE_MAX);
    const QRect label = fontMetrics().boundingRect(room, Qt::TextWordWrap, text());
    return frameSize()
        + QSize(pictureWidth + gap + textWidth, qMax(iconSize().height(), label.height()));
}

/** What the style adds around the contents. */
QSize StepButton::frameSize() const
{
    ensurePolished();
    QStyleOptionToolButton option;
    initStyleOption(&option);
    const QSize contents(100, 100);
    return style()->sizeFromContents(QStyle::CT_ToolButton, &option, contents, this) - contents;
}

} // namespace tarvel4
