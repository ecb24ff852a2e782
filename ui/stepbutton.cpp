#include "ui/stepbutton.h"

#include "ui/unbrokenlabel.h"

#include <QEvent>
#include <QStyleOptionToolButton>
#include <QStylePainter>

#include <algorithm>

namespace tarvel4 {

namespace {

constexpr int gap = 10; // between the picture and the words
constexpr int usualLine = 30; // in characters of mean width
constexpr int smallestPicture = 24;
constexpr qreal smallestText = 8; // points
constexpr qreal smallestUnbroken = 9; // below it, more lines are read more easily
constexpr qreal sizeStep = 0.5;

/** Words with breaks of their own, as they are laid out: with those alone where they have room, and
 * else with others, wherever a line is full. */
struct Layout
{
    Layout(const QString &words, const QFont &font, int width)
        : text(words)
    {
        const QFontMetrics metrics(font);
        size = metrics.size(0, text);
        isBroken = size.width() > width;
        if (!isBroken)
            return;
        text.replace(QLatin1Char('\n'), QLatin1Char(' '));
        text = UnbrokenLabel::unbroken(text);
        flags = Qt::TextWordWrap;
        size = metrics.boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), flags, text).size();
    }

    QString text;
    int flags = 0;
    QSize size;
    bool isBroken = false;
};

} // namespace

StepButton::StepButton(QWidget *parent)
    : QToolButton(parent)
{}

void StepButton::setCaption(StepCaption *caption)
{
    m_caption = caption;
    caption->m_step = this;
    caption->setEnabled(isEnabled());
}

QSize StepButton::sizeHint() const
{
    const int line = fontMetrics().averageCharWidth() * usualLine;
    const int width = Layout(words(), font(), line).size.width();
    return sizeFor(iconSize().width(), width, font().pointSizeF());
}

QSize StepButton::minimumSizeHint() const
{
    const QFontMetrics metrics(fontOf(smallestText));
    int longest = 0;
    for (const QString &word : words().simplified().split(QLatin1Char(' ')))
        longest = std::max(longest, metrics.horizontalAdvance(word));
    return {sizeFor(smallestPicture, longest, smallestText).width(), sizeHint().height()};
}

bool StepButton::event(QEvent *event)
{
    const bool isDone = QToolButton::event(event);
    switch (event->type()) {
    case QEvent::EnabledChange:
        if (m_caption)
            m_caption->setEnabled(isEnabled());
        break;
    case QEvent::FontChange:
    case QEvent::LanguageChange:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::StyleChange:
        Q_EMIT roomChanged();
        break;
    default:
        break;
    }
    return isDone;
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
    icon().paint(&painter, pictureRect(), Qt::AlignCenter,
                 isEnabled() ? QIcon::Normal : QIcon::Disabled);
    if (!m_caption)
        drawWords(painter, option.palette, QPalette::ButtonText);
}

void StepButton::drawWords(QPainter &painter, const QPalette &colours,
                           QPalette::ColorRole role) const
{
    const QRect place = wordsRect();
    painter.setFont(wordsFont());
    const Layout layout(words(), painter.font(), place.width());
    style()->drawItemText(&painter, place,
                          static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | layout.flags,
                          colours, isEnabled(), layout.text, role);
}

qreal StepButton::largestTextSize() const
{
    const QSize room = wordsRect().size();
    const qreal largest = font().pointSizeF();
    if (words().contains(QLatin1Char('\n'))) {
        for (qreal points = largest; points >= smallestUnbroken; points -= sizeStep) {
            if (!Layout(words(), fontOf(points), room.width()).isBroken)
                return points;
        }
    }
    qreal points = largest;
    while (points > smallestText && !hasRoom(points, room))
        points -= sizeStep;
    return points;
}

void StepButton::setTextSize(qreal points)
{
    m_textSize = points;
    update();
    if (m_caption)
        m_caption->update();
}

QString StepButton::words() const
{
    return m_caption ? m_caption->text() : text();
}

QFont StepButton::fontOf(qreal points) const
{
    QFont sized = font();
    if (points > 0)
        sized.setPointSizeF(points);
    return sized;
}

QRect StepButton::insideFrame() const
{
    const QSize frame = frameSize() / 2;
    return rect().adjusted(frame.width(), frame.height(), -frame.width(), -frame.height());
}

QRect StepButton::pictureRect() const
{
    const QRect inside = insideFrame();
    const int side = qBound(smallestPicture, inside.width() / 5, iconSize().width());
    return {inside.topLeft(), QSize(side, inside.height())};
}

QRect StepButton::wordsRect() const
{
    return insideFrame().adjusted(pictureRect().width() + gap, 0, 0, 0);
}

bool StepButton::hasRoom(qreal points, const QSize &room) const
{
    const QSize size = Layout(words(), fontOf(points), room.width()).size;
    return size.width() <= room.width() && size.height() <= room.height();
}

QSize StepButton::sizeFor(int pictureWidth, int wordsWidth, qreal points) const
{
    const int height = Layout(words(), fontOf(points), wordsWidth).size.height();
    return frameSize()
        + QSize(pictureWidth + gap + wordsWidth, std::max(iconSize().height(), height));
}

/** What the style adds around the contents, whether or not the button has the focus. */
QSize StepButton::frameSize() const
{
    ensurePolished();
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.state &= ~QStyle::State_HasFocus;
    const QSize contents(100, 100);
    return style()->sizeFromContents(QStyle::CT_ToolButton, &option, contents, this) - contents;
}

// ---- the caption

StepCaption::StepCaption(QWidget *parent)
    : QLabel(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void StepCaption::paintEvent(QPaintEvent *event)
{
    if (!m_step) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    m_step->drawWords(painter, palette(), foregroundRole());
}

// ---- all of them

void shareTextSize(const QList<StepButton *> &steps)
{
    const auto share = [steps] {
        qreal smallest = steps.constFirst()->largestTextSize();
        for (const StepButton *step : steps)
            smallest = std::min(smallest, step->largestTextSize());
        for (StepButton *step : steps)
            step->setTextSize(smallest);
    };
    for (StepButton *step : steps)
        QObject::connect(step, &StepButton::roomChanged, step, share);
}

} // namespace tarvel4
