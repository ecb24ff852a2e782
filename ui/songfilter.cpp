#include "ui/songfilter.h"

#include "db/foldedtext.h"
#include "ui/songtable.h"

#include <QHeaderView>
#include <QTableView>

namespace tarvel4 {

SongFilter::SongFilter(QTableView &table, UserSongsRelTableModel &model)
    : QObject(&table)
    , m_table(table)
    , m_model(model)
{
    connect(&model, &QAbstractItemModel::modelAboutToBeReset, this, &SongFilter::rememberCurrent);
    connect(&model, &QAbstractItemModel::modelReset, this, &SongFilter::showAgain);
    connect(&model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &topLeft, const QModelIndex &bottomRight) {
                rowsChanged(topLeft.row(), bottomRight.row());
            });
}

void SongFilter::setText(const QString &text)
{
    m_words = FoldedText::wordsOf(text);
    filterAll();
}

void SongFilter::setMark(UserSongsRelTableModel::Mark mark)
{
    m_mark = mark;
    filterAll();
}

bool SongFilter::isActive() const
{
    return !m_words.isEmpty() || m_mark != UserSongsRelTableModel::Unmarked;
}

int SongFilter::shown() const
{
    if (!isActive())
        return m_model.songs();
    return m_model.rowCount() - m_table.verticalHeader()->hiddenSectionCount();
}

bool SongFilter::accepts(int row) const
{
    if (m_mark != UserSongsRelTableModel::Unmarked && m_model.markOf(row) != m_mark)
        return false;
    return m_words.isEmpty() || m_model.matches(row, m_words);
}

void SongFilter::filterAll()
{
    while (isActive() && m_model.canFetchMore())
        m_model.fetchMore();
    filterRows(0, m_model.rowCount() - 1);

    const QModelIndex current = m_table.currentIndex();
    if (current.isValid()) {
        if (m_table.isRowHidden(current.row())) {
            m_setAside = current;
            m_table.selectionModel()->clear(); // Enter is not to open a song that nobody sees
        } else {
            m_table.scrollTo(current);
        }
    } else if (m_setAside.isValid() && !m_table.isRowHidden(m_setAside.row())) {
        m_table.setCurrentIndex(m_setAside);
        m_table.scrollTo(m_table.currentIndex());
    }
    Q_EMIT changed();
}

void SongFilter::filterRows(int first, int last)
{
    const bool isOne = first == last;
    if (!isOne)
        m_table.setUpdatesEnabled(false); // else the header would look for each row on the screen
    for (int row = first; row <= last; ++row)
        m_table.setRowHidden(row, isActive() && !accepts(row));
    if (!isOne)
        m_table.setUpdatesEnabled(true);
}

void SongFilter::rowsChanged(int first, int last)
{
    if (isActive()) {
        filterRows(first, last);
        const QModelIndex current = m_table.currentIndex();
        if (current.isValid() && m_table.isRowHidden(current.row())) {
            m_currentColumn = current.column();
            makeCurrent(SongTable::shownRow(m_table, current.row()));
        }
    }
    Q_EMIT changed();
}

void SongFilter::rememberCurrent()
{
    const QModelIndex current =
        m_table.currentIndex().isValid() ? m_table.currentIndex() : QModelIndex(m_setAside);
    m_currentId = current.isValid() ? m_model.idOf(current.row()) : 0;
    m_currentColumn = current.column();
}

void SongFilter::showAgain()
{
    if (isActive())
        filterAll();
    const int row = m_currentId > 0 ? rowOf(m_currentId) : -1;
    if (row >= 0 && m_table.isRowHidden(row))
        m_setAside = m_model.index(row, m_currentColumn);
    else if (row >= 0)
        makeCurrent(row);
    Q_EMIT changed();
}

int SongFilter::rowOf(int id)
{
    for (int row = 0;; ++row) {
        while (row >= m_model.rowCount() && m_model.canFetchMore())
            m_model.fetchMore();
        if (row >= m_model.rowCount())
            return -1;
        if (m_model.idOf(row) == id)
            return row;
    }
}

void SongFilter::makeCurrent(int row)
{
    if (row < 0) {
        m_table.selectionModel()->clear();
        return;
    }
    m_table.setCurrentIndex(m_model.index(row, m_currentColumn));
    m_table.scrollTo(m_table.currentIndex());
}

} // namespace tarvel4
