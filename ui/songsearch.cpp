#include "ui/songsearch.h"

#include "db/usersongsreltablemodel.h"
#include "ui/elidedlabel.h"
#include "ui/songfilter.h"
#include "ui/songtable.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QStatusBar>
#include <QTableView>

namespace tarvel4 {

namespace {

constexpr int countsAtMostEach = 100; // milliseconds

} // namespace

SongSearch::SongSearch(const Widgets &widgets, UserSongsRelTableModel &model)
    : QObject(widgets.table)
    , m_widgets(widgets)
    , m_model(model)
    , m_filter(new SongFilter(*widgets.table, model))
    , m_counts(new ElidedLabel)
{
    m_counts->setObjectName(QStringLiteral("songCountsLabel"));
    m_counts->setElideMode(Qt::ElideRight);
    m_counts->setContentsMargins(10, 0, 0, 4); // below the left edge of the table
    m_widgets.counts->addWidget(m_counts, 1);
    m_widgets.emptyText->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_changes.setSingleShot(true);
    m_changes.setInterval(countsAtMostEach);
    connect(&m_changes, &QTimer::timeout, this, &SongSearch::tellCounts);
    connect(m_filter, &SongFilter::changed, this, [this] {
        if (!m_changes.isActive())
            m_changes.start();
    });

    m_widgets.text->installEventFilter(this);
    connect(m_widgets.text, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_filter->setText(text);
        tellCounts();
    });
    const auto *shortcut = new QShortcut(QKeySequence::Find, m_widgets.table->window());
    connect(shortcut, &QShortcut::activated, this, [this] {
        Q_EMIT wanted();
        m_widgets.text->setFocus(Qt::ShortcutFocusReason);
        m_widgets.text->selectAll();
    });

    for (const auto mark :
         {UserSongsRelTableModel::Unmarked, UserSongsRelTableModel::MarkedUpdated,
          UserSongsRelTableModel::MarkedComplete, UserSongsRelTableModel::MarkedEdited,
          UserSongsRelTableModel::MarkedLeftAlone, UserSongsRelTableModel::MarkedFailed})
        m_widgets.marks->addItem(QString(), mark);
    connect(m_widgets.marks, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] {
        const int mark = m_widgets.marks->currentData().toInt();
        m_filter->setMark(static_cast<UserSongsRelTableModel::Mark>(mark));
        tellCounts();
    });
    m_widgets.text->setEnabled(true);
    m_widgets.marks->setEnabled(true);
    retranslate();
}

void SongSearch::retranslate()
{
    const QString key = QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText);
    m_widgets.text->setPlaceholderText(tr("Cerca nelle song (%1)").arg(key));
    const QString marks[] = {tr("Tutte le song"),     tr("Aggiornate"),     tr("Già complete"),
                             tr("Modificate a mano"), tr("Non aggiornate"), tr("Non riuscite")};
    for (int i = 0; i < m_widgets.marks->count(); ++i)
        m_widgets.marks->setItemText(i, marks[i]);
    tellCounts();
}

bool SongSearch::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_widgets.text || event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    switch (static_cast<const QKeyEvent *>(event)->key()) {
    case Qt::Key_Escape:
        m_widgets.text->clear();
        m_widgets.table->setFocus();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        enterTable();
        return true;
    default:
        return false;
    }
}

/** With a song to go on from. */
void SongSearch::enterTable()
{
    QTableView &table = *m_widgets.table;
    const int first = SongTable::shownRow(table, 0);
    if (!table.currentIndex().isValid() && first >= 0)
        table.setCurrentIndex(m_model.index(first, SongTable::firstColumn));
    table.setFocus();
}

void SongSearch::tellCounts()
{
    m_changes.stop();
    const int songs = m_model.songs();
    const int shown = m_filter->shown();
    m_counts->setText(counts(songs, shown));
    QString empty;
    if (songs == 0)
        empty = tr("Qui compaiono le tue song: sceglile con il pulsante in alto a sinistra.");
    else if (shown == 0)
        empty = tr("Nessuna song corrisponde alla ricerca.");
    m_widgets.emptyText->setText(empty);
    m_widgets.emptyText->setVisible(!empty.isEmpty());
    m_widgets.table->setAccessibleDescription(empty);
}

QString SongSearch::counts(int songs, int shown) const
{
    const auto count = [](int number, const QString &one, const QString &many) {
        return number == 1 ? one : many.arg(number);
    };
    QStringList parts{count(songs, tr("1 song"), tr("%1 song"))};
    if (m_filter->isActive())
        parts += count(shown, tr("1 mostrata"), tr("%1 mostrate"));
    if (const int updated = m_model.marked(UserSongsRelTableModel::MarkedUpdated))
        parts += count(updated, tr("1 aggiornata"), tr("%1 aggiornate"));
    if (const int complete = m_model.marked(UserSongsRelTableModel::MarkedComplete))
        parts += count(complete, tr("1 già completa"), tr("%1 già complete"));
    if (const int edited = m_model.marked(UserSongsRelTableModel::MarkedEdited))
        parts += count(edited, tr("1 modificata a mano"), tr("%1 modificate a mano"));
    if (const int leftAlone = m_model.marked(UserSongsRelTableModel::MarkedLeftAlone))
        parts += count(leftAlone, tr("1 non aggiornata"), tr("%1 non aggiornate"));
    if (const int failed = m_model.marked(UserSongsRelTableModel::MarkedFailed))
        parts += count(failed, tr("1 non riuscita"), tr("%1 non riuscite"));
    QString text = parts.join(QLatin1String(", "));
    if (shown < songs)
        text += tr(". Anche quelle nascoste vengono sincronizzate.");
    return text;
}

} // namespace tarvel4
