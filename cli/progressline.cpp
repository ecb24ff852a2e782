#include "cli/progressline.h"

#include "cli/console.h"
#include "cli/printable.h"
#include "cli/texts.h"

namespace tarvel4 {

namespace {

constexpr qint64 redrawMilliseconds = 100;

QString minutesAndSeconds(qint64 seconds)
{
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

void ProgressLine::begin(const QString &label, int maximum)
{
    end();
    m_isRunning = true;
    m_label = label;
    m_maximum = maximum;
    m_value = 0;
    m_sinceBegin.start();
    draw();
}

void ProgressLine::setMaximum(int maximum)
{
    m_maximum = maximum;
    m_value = 0;
    m_sinceBegin.start();
}

void ProgressLine::setValue(int value)
{
    m_value = value;
    if (value == m_maximum || m_sinceDrawn.hasExpired(redrawMilliseconds))
        draw();
}

void ProgressLine::end()
{
    hide();
    m_isRunning = false;
}

void ProgressLine::hide()
{
    if (m_shownLength > 0)
        show(QString());
}

void ProgressLine::draw()
{
    if (!m_enabled || !m_isRunning)
        return;
    show(printable(text()));
    m_sinceDrawn.start();
}

void ProgressLine::show(const QString &text)
{
    const int width = Console::columns() - 1;
    const QString line = text.left(width);
    // Spaces clear what is left of a longer line: not every terminal knows escape sequences.
    const QString padded = line.leftJustified(qMin(m_shownLength, width));
    Console::write(Console::Error, '\r' + padded.toUtf8());
    if (line.isEmpty())
        Console::write(Console::Error, "\r");
    m_shownLength = static_cast<int>(line.size());
}

QString ProgressLine::text() const
{
    const QString label = m_label + QLatin1Char(' ');
    if (m_maximum <= 0)
        return label + QString::number(m_value);
    const QString count = label + Cli::tr("%1 di %2").arg(m_value).arg(m_maximum);
    if (m_value <= 0)
        return count;
    const double seconds = static_cast<double>(m_sinceBegin.nsecsElapsed()) / 1e9;
    const double perSecond = m_value / seconds;
    const auto left = qRound64((m_maximum - m_value) / perSecond);
    return count
        + Cli::tr(", %1/s, ancora %2").arg(perSecond, 0, 'f', 1).arg(minutesAndSeconds(left));
}

} // namespace tarvel4
