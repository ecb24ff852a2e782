#include "ui/listenstrip.h"

#include "player/songsound.h"
#include "ui/elidedlabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>

#include <utility>

namespace tarvel4 {

namespace {

QString clock(qint64 ms)
{
    const qint64 seconds = ms / 1000;
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QPushButton *addButton(QHBoxLayout &layout, const QString &name)
{
    auto *button = new QPushButton(layout.parentWidget());
    button->setObjectName(name);
    layout.addWidget(button);
    return button;
}

} // namespace

ListenStrip::ListenStrip(QWidget *parent)
    : QFrame(parent)
    , m_title(new ElidedLabel(this))
    , m_time(new QLabel(this))
    , m_mark(new ElidedLabel(this))
{
    setObjectName(QStringLiteral("listenStrip"));
    m_title->setObjectName(QStringLiteral("listenTitleLabel"));
    m_time->setObjectName(QStringLiteral("listenTimeLabel"));
    m_mark->setObjectName(QStringLiteral("listenMarkLabel"));

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addWidget(m_title);
    layout->addWidget(m_time);
    layout->addWidget(m_mark, 1);
    m_marks = addButton(*layout, QStringLiteral("listenMarksButton"));
    m_marks->setMenu(new QMenu(m_marks));
    m_stop = addButton(*layout, QStringLiteral("listenStopButton"));
    connect(m_stop, &QPushButton::clicked, this, &ListenStrip::stopAsked);
    m_mark->setMinimumWidth(m_mark->fontMetrics().averageCharWidth() * 4); // on a small screen
    setTexts();
    hide();
}

void ListenStrip::showSong(const SongSound &song)
{
    m_song = song.title;
    m_title->setText(QStringLiteral("▶  ") + m_song);
    setTexts();
    m_marks->menu()->clear();
    addMarks(*m_marks->menu(), song, [this](int mark) { Q_EMIT markAsked(mark); });
    m_marks->setVisible(!song.marks.isEmpty());
    m_shownMark = -1;
    m_mark->setText({});
    showPosition(song, 0);
    show();
}

void ListenStrip::showPosition(const SongSound &song, qint64 ms)
{
    const bool isLengthKnown = song.lengthMs > 0;
    const qint64 shown = isLengthKnown ? qMin(ms, song.lengthMs) : ms;
    m_time->setText(isLengthKnown ? clock(shown) + QStringLiteral(" / ") + clock(song.lengthMs)
                                  : clock(shown));
    const int mark = song.markAt(ms);
    if (mark != std::exchange(m_shownMark, mark)) // a screen reader hears each once
        m_mark->setText(mark < 0 ? QString() : song.marks.at(mark).text);
}

void ListenStrip::addMarks(QMenu &menu, const SongSound &song,
                           const std::function<void(int mark)> &chosen)
{
    for (int i = 0; i < song.marks.size(); ++i) {
        QString text = song.marks.at(i).text;
        text.replace(QLatin1Char('&'), QLatin1String("&&")); // no key of the menu
        connect(menu.addAction(text + QLatin1Char('\t') + clock(song.marks.at(i).ms)),
                &QAction::triggered, &menu, [chosen, i] { chosen(i); });
    }
}

void ListenStrip::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setTexts();
}

void ListenStrip::setTexts()
{
    m_title->setAccessibleName(tr("In ascolto: %1").arg(m_song));
    m_marks->setText(tr("Marker"));
    m_marks->setToolTip(tr("Ascolta da un marker"));
    m_stop->setText(tr("Ferma"));
    m_stop->setToolTip(tr("Ferma l'ascolto (Spazio nella tabella)"));
    m_time->setAccessibleName(tr("Posizione nella song"));
}

} // namespace tarvel4
