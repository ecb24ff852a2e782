#include "ui/songtable.h"

#include "db/usersongsreltablemodel.h"
#include "ui/lastcolumn.h"
#include "ui/songtabledelegate.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

namespace tarvel4 {

namespace {

constexpr int idColumn = 0;

} // namespace

void SongTable::setUp(QTableView &view, UserSongsRelTableModel &model)
{
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.setSortingEnabled(true);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setSelectionMode(QAbstractItemView::SingleSelection);
    view.setShowGrid(false);
    view.verticalHeader()->hide();
    view.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    view.setAlternatingRowColors(false);
    for (const int column : model.numberColumns())
        model.setHeaderData(column, Qt::Horizontal, int{Qt::AlignRight | Qt::AlignVCenter},
                            Qt::TextAlignmentRole);
    view.setModel(&model);
    view.setColumnHidden(model.fileNameColumn(), true);
    view.setColumnHidden(model.statusColumn(), true);
    view.setColumnHidden(idColumn, true);
    new LastColumn(view);
    view.setItemDelegate(new SongTableDelegate(firstColumn, &view));
}

void SongTable::resizeColumns(QTableView &view)
{
    const int widest = view.viewport()->width() / 3;
    for (const int column : {0, 1, 2, 3, 4, 5, 6, 7, 8, 10}) {
        view.resizeColumnToContents(column);
        if (view.columnWidth(column) > widest)
            view.setColumnWidth(column, widest);
    }
    showWholeHeaders(view);
}

void SongTable::showWholeHeaders(QTableView &view)
{
    const QHeaderView &header = *view.horizontalHeader();
    for (int column = 0; column < header.count(); ++column) {
        const int width = header.sectionSizeHint(column);
        if (!header.isSectionHidden(column) && header.sectionSize(column) < width)
            view.setColumnWidth(column, width);
    }
}

int SongTable::shownRow(const QTableView &view, int row)
{
    const int rows = view.model()->rowCount();
    for (int next = row; next < rows; ++next) {
        if (!view.isRowHidden(next))
            return next;
    }
    for (int previous = qMin(row, rows) - 1; previous >= 0; --previous) {
        if (!view.isRowHidden(previous))
            return previous;
    }
    return -1;
}

void SongTable::readAgain(QTableView &view, UserSongsRelTableModel &model)
{
    const int scrolled = view.verticalScrollBar()->value();
    model.select();
    model.totalRows();
    view.verticalScrollBar()->setValue(scrolled);
}

void SongTable::removeRow(QTableView &view, UserSongsRelTableModel &model, int row)
{
    const int scrolled = view.verticalScrollBar()->value();
    const QModelIndex current = view.currentIndex();
    model.removeRow(row);
    model.select(); // until then the model shows a blank row
    model.totalRows();
    const int next = shownRow(view, row);
    if (next >= 0)
        view.setCurrentIndex(
            model.cellIndex(next, current.isValid() ? current.column() : firstColumn));
    view.verticalScrollBar()->setValue(scrolled);
}

} // namespace tarvel4
