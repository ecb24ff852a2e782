#include "ui/windowplace.h"

#include "ui/statefile.h"

#include <QEvent>
#include <QHeaderView>
#include <QScreen>
#include <QSplitter>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace tarvel4 {

namespace {

const QLatin1String geometryKey("window/geometry");
const QLatin1String columnsKey("window/columns");
const QLatin1String splitterKey("window/splitter");
constexpr int narrowest = 16; // column, in pixels
constexpr int widest = 4000;

QString toText(const QList<int> &sizes)
{
    QStringList numbers;
    for (const int size : sizes)
        numbers += QString::number(size);
    return numbers.join(QLatin1Char(' '));
}

/** Empty where one is no number. */
QList<int> toSizes(const QString &text)
{
    QList<int> sizes;
    const QStringList numbers = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &number : numbers) {
        bool isNumber = false;
        sizes += number.toInt(&isNumber);
        if (!isNumber)
            return {};
    }
    return sizes;
}

} // namespace

WindowPlace::WindowPlace(QWidget &window, QHeaderView &columns, QSplitter &splitter)
    : m_window(window)
    , m_columns(columns)
    , m_splitter(splitter)
{
    const QList<int> stored = toSizes(StateFile::value(splitterKey));
    const bool isUsable = stored.size() == m_splitter.count()
        && std::all_of(stored.begin(), stored.end(), [](int part) { return part > 0; });
    m_parts = isUsable ? stored : QList<int>();
    window.installEventFilter(this);
    connect(&splitter, &QSplitter::splitterMoved, this, [this] { m_parts = m_splitter.sizes(); });
}

WindowPlace::~WindowPlace()
{
    if (m_window.isVisible())
        store();
}

void WindowPlace::restore()
{
    const QByteArray geometry = QByteArray::fromBase64(StateFile::value(geometryKey).toLatin1());
    if (!geometry.isEmpty())
        m_window.restoreGeometry(geometry); // corrects one that lies on no screen by now
    restoreColumns();
}

QRect WindowPlace::fitted(const QRect &frame, const QRect &screen)
{
    QRect place(frame.topLeft(), frame.size().boundedTo(screen.size()));
    place.moveLeft(qBound(screen.left(), place.left(), screen.right() - place.width() + 1));
    place.moveTop(qBound(screen.top(), place.top(), screen.bottom() - place.height() + 1));
    return place;
}

bool WindowPlace::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Close)
        store();
    else if (event->type() == QEvent::Paint && !std::exchange(m_wasPainted, true))
        QTimer::singleShot(0, this, &WindowPlace::keepFrameOnScreen); // by now there is a frame
    return QObject::eventFilter(watched, event);
}

void WindowPlace::store() const
{
    StateFile::setValue(geometryKey, QString::fromLatin1(m_window.saveGeometry().toBase64()));
    QList<int> widths;
    for (int column = 0; column < m_columns.count(); ++column)
        widths += m_columns.sectionSize(column); // 0 of a hidden one
    if (!widths.isEmpty())
        StateFile::setValue(columnsKey, toText(widths));
    if (!m_parts.isEmpty())
        StateFile::setValue(splitterKey, toText(m_parts));
}

void WindowPlace::keepFrameOnScreen()
{
    if (m_window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen))
        return;
    const QRect frame = m_window.frameGeometry();
    const QRect place = fitted(frame, m_window.screen()->availableGeometry());
    if (place == frame)
        return;
    const QSize borders = frame.size() - m_window.size();
    m_window.resize(place.size() - borders);
    m_window.move(place.topLeft());
}

void WindowPlace::restoreColumns()
{
    const QList<int> widths = toSizes(StateFile::value(columnsKey));
    if (widths.size() != m_columns.count())
        return;
    for (int column = 0; column < widths.size(); ++column) {
        const int width = widths.at(column);
        if (width >= narrowest && width <= widest && !m_columns.isSectionHidden(column))
            m_columns.resizeSection(column, width);
    }
}

void WindowPlace::shareRoom()
{
    const int height = m_splitter.height();
    m_splitter.setSizes(m_parts.isEmpty() ? QList<int>{height * 3, height * 2} : m_parts);
}

} // namespace tarvel4
