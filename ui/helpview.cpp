#include "ui/helpview.h"

#include "ui/appearance.h"
#include "ui/unbrokenlabel.h"

#include <QApplication>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QtMath>

#include <algorithm>
#include <utility>

namespace tarvel4 {

namespace {

constexpr qreal picturesScale = 2; // they were taken at 200 %

constexpr QChar unbreakableHyphen(0x2011);

/** Without case and accents, letter by letter, so that places stay the same; with hyphens and
 * blanks as one types them. */
QString folded(const QString &text)
{
    QString plain = text;
    plain.replace(unbreakableHyphen, QLatin1Char('-'));
    plain.replace(QChar(QChar::Nbsp), QLatin1Char(' '));
    for (QChar &letter : plain) {
        const QString parts = letter.decomposition();
        const bool hasMark = !parts.isEmpty() && letter.decompositionTag() == QChar::Canonical;
        letter = (hasMark ? parts.at(0) : letter).toCaseFolded();
    }
    return plain;
}

/** With a border: the window in it has the background of the page. */
QImage fitted(const QString &name, int room, qreal ratio, const QColor &border)
{
    const QImage whole(name);
    if (whole.isNull())
        return whole;
    const qreal width = std::min(whole.width() / picturesScale, static_cast<qreal>(room));
    // Qt 6 would give a scaled picture with a palette the colours of a palette of its own.
    QImage image = whole.convertToFormat(QImage::Format_RGB32)
                       .scaledToWidth(qRound(width * ratio), Qt::SmoothTransformation);
    QPainter painter(&image);
    painter.setPen(border);
    painter.drawRect(image.rect().adjusted(0, 0, -1, -1));
    painter.end();
    image.setDevicePixelRatio(ratio);
    return image;
}

} // namespace

HelpView::HelpView(QWidget *parent)
    : QTextBrowser(parent)
{
    setOpenExternalLinks(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // the width stays as it is
}

void HelpView::setPage(const QString &html)
{
    m_page = html;
    m_fittedWidth = viewport()->width();
    showPage();
    clearHistory();
    setSource(QUrl(QStringLiteral("#top")));
    m_isAtTop = !isVisible();
    verticalScrollBar()->setValue(0);
}

/** Keeps together what belongs together, but for a hyphen of a command, which may be copied. */
void HelpView::showPage()
{
    setHtml(m_page);
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const bool isHeading = block.blockFormat().headingLevel() > 0;
        const QString text = block.text();
        const QString whole = UnbrokenLabel::unbroken(text); // letter by letter
        for (int at = 0; at < text.size(); ++at) {
            if (text.at(at) == whole.at(at)
                || (text.at(at) == QLatin1Char('-') && !isHeading && !text.at(at + 1).isUpper()))
                continue;
            QTextCursor cursor(block);
            cursor.setPosition(block.position() + at);
            cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
            cursor.insertText(whole.at(at));
        }
    }
}

bool HelpView::findWords(const QString &words, Direction direction, bool goesOn)
{
    const QString page = folded(document()->toRawText());
    const QString wanted = folded(words);
    const QTextCursor before = textCursor();
    qsizetype place = -1;
    if (direction == Direction::Next) {
        const int first = goesOn ? before.selectionEnd() : before.selectionStart();
        place = page.indexOf(wanted, first);
        if (place < 0)
            place = page.indexOf(wanted);
    } else {
        const int last = before.selectionStart() - 1;
        place = last < 0 ? -1 : page.lastIndexOf(wanted, last);
        if (place < 0)
            place = page.lastIndexOf(wanted);
    }
    QTextCursor found = before;
    found.setPosition(place < 0 ? before.selectionStart() : static_cast<int>(place));
    if (place >= 0 && !wanted.isEmpty())
        found.setPosition(static_cast<int>(place + wanted.size()), QTextCursor::KeepAnchor);
    setTextCursor(found);
    const int line = cursorRect().top();
    if (line < 0 || line > viewport()->height() * 3 / 4) // what follows is to be read, too
        verticalScrollBar()->setValue(verticalScrollBar()->value() + line
                                      - viewport()->height() / 4);
    return place >= 0;
}

/** The base class goes to the anchor here, and hides the margin above it. */
void HelpView::showEvent(QShowEvent *event)
{
    QTextBrowser::showEvent(event);
    if (std::exchange(m_isAtTop, false))
        verticalScrollBar()->setValue(0);
}

/** A page with smaller pictures is laid out anew: Qt keeps the width that it once had. */
void HelpView::resizeEvent(QResizeEvent *event)
{
    const Place before = place();
    QTextBrowser::resizeEvent(event);
    if (!m_page.isEmpty() && m_fittedWidth != viewport()->width())
        layOutAt(before);
}

void HelpView::layOutAgain()
{
    layOutAt(place());
}

HelpView::Place HelpView::place() const
{
    const QTextCursor top = cursorForPosition(QPoint());
    return {verticalScrollBar()->value() == 0, top.position(), cursorRect(top).top(),
            textCursor().anchor(), textCursor().position()};
}

void HelpView::layOutAt(const Place &place)
{
    m_fittedWidth = viewport()->width();
    showPage();
    QTextCursor cursor = textCursor();
    cursor.setPosition(place.anchor);
    cursor.setPosition(place.position, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    cursor.setPosition(place.top);
    verticalScrollBar()->setValue(
        place.isAtTop ? 0 : verticalScrollBar()->value() + cursorRect(cursor).top() - place.offset);
}

QVariant HelpView::loadResource(int type, const QUrl &name)
{
    if (type != QTextDocument::ImageResource)
        return QTextBrowser::loadResource(type, name);
    QString file = QLatin1Char(':') + name.path();
    if (Appearance::scheme() == Colours::Scheme::Dark)
        file.replace(QLatin1String(".png"), QLatin1String("-dark.png"));
    constexpr int usualDpi = 96; // a page's pictures grow where letters are larger
    const int room = (viewport()->width() - qCeil(2 * document()->documentMargin())) * usualDpi
        / std::max(usualDpi, logicalDpiX());
    return fitted(file, room, devicePixelRatioF(), QApplication::palette().color(QPalette::Mid));
}

} // namespace tarvel4
