#include "ui/jobreports.h"

#include "db/usersongsreltablemodel.h"
#include "ui/reportpanel.h"

#include <QAction>
#include <QDir>
#include <QEvent>
#include <QSplitter>
#include <QTableView>

#include <utility>

namespace tarvel4 {

JobReports::JobReports(const Widgets &widgets, std::function<void()> shareRoom)
    : m_widgets(widgets)
    , m_shareRoom(std::move(shareRoom))
{
    m_widgets.showAction->setEnabled(false);
    m_widgets.panel->hide();
    m_widgets.splitter->installEventFilter(this);
    connect(m_widgets.showAction, &QAction::triggered, this, [this] {
        showPanel();
        m_widgets.panel->focusList();
    });
    connect(m_widgets.panel, &ReportPanel::songChosen, this, &JobReports::showSong);
    connect(m_widgets.panel, &ReportPanel::closed, this, &JobReports::giveBackTable);
}

void JobReports::take(const JobReport &report)
{
    m_widgets.panel->setReport(report);
    m_widgets.showAction->setEnabled(true);
    if (report.hasFailures())
        showPanel();
}

void JobReports::showPanel()
{
    if (m_widgets.panel->isVisible())
        return;
    const bool hadFocus = m_widgets.table->hasFocus();
    coverTable(isRoomShort()); // first: the window would grow for both
    m_widgets.panel->show();
    if (m_isTableCovered && hadFocus)
        m_widgets.panel->focusList();
    else if (!m_isTableCovered)
        m_shareRoom();
}

/** On a small screen one of the two can be read, both can't. */
bool JobReports::isRoomShort() const
{
    const QSplitter &splitter = *m_widgets.splitter;
    return splitter.height() < splitter.widget(0)->minimumSizeHint().height()
        + splitter.handleWidth() + m_widgets.panel->minimumSizeHint().height();
}

void JobReports::coverTable(bool covers)
{
    m_isTableCovered = covers;
    m_widgets.splitter->widget(0)->setVisible(!covers);
}

void JobReports::uncoverTable()
{
    if (!m_isTableCovered)
        return;
    m_widgets.panel->hide();
    giveBackTable();
}

bool JobReports::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_widgets.splitter && event->type() == QEvent::Resize && m_isTableCovered
        && !isRoomShort()) {
        coverTable(false);
        m_shareRoom();
    }
    return QObject::eventFilter(watched, event);
}

void JobReports::giveBackTable()
{
    coverTable(false);
    m_widgets.table->setFocus(Qt::OtherFocusReason);
}

void JobReports::showSong(const QString &path, bool staysHere)
{
    const int row = rowOf(path);
    if (row < 0) {
        m_widgets.panel->setHint(
            tr("Questa song non è nella tabella: %1").arg(QDir::toNativeSeparators(path)));
        return;
    }
    QTableView *table = m_widgets.table;
    if (table->isRowHidden(row)) {
        m_widgets.panel->setHint(
            tr("La riga di questa song ora è nascosta: %1").arg(QDir::toNativeSeparators(path)));
        return;
    }
    uncoverTable();
    const QModelIndex current = table->currentIndex();
    const int column =
        current.isValid() ? current.column() : table->columnAt(0); // the first on show
    const QModelIndex cell = m_model->cellIndex(row, qMax(column, 0));
    table->setCurrentIndex(cell);
    table->scrollTo(cell, QAbstractItemView::PositionAtCenter);
    if (!staysHere)
        table->setFocus(Qt::OtherFocusReason);
}

/** The row of a song, which may be listed under another spelling of its path; -1: none. */
int JobReports::rowOf(const QString &path) const
{
    if (!m_model)
        return -1;
    const QString wanted = QDir::cleanPath(path);
    const int rows = m_model->totalRows();
    for (int row = 0; row < rows; ++row) {
        const QString listed = m_model->fileNameOf(row);
        if (listed == path || QDir::cleanPath(listed) == wanted)
            return row;
    }
    return -1;
}

} // namespace tarvel4
