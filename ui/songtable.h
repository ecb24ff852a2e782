#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QTableView;
QT_END_NAMESPACE

namespace tarvel4 {

class UserSongsRelTableModel;

/** How the window's table view shows the user's songs. */
namespace SongTable {

/** Gives the view its model, its behaviour and its hidden columns. */
void setUp(QTableView &view, UserSongsRelTableModel &model);

constexpr int firstColumn = 1; ///< of those on show

/** Fits the columns to their contents; none gets wider than a third of the table but the last one,
 * which takes what is left. */
void resizeColumns(QTableView &view);

/** Widens the columns that cut their header, as in another language. */
void showWholeHeaders(QTableView &view);

/** The row, or where it is hidden the next one on show, else the last one; -1 where none is. */
int shownRow(const QTableView &view, int row);

/** Reads the rows again when a job has changed many: in their order now, and the memory is freed
 * that the model takes for each change. */
void readAgain(QTableView &view, UserSongsRelTableModel &model);

/** Takes a row out of the table; the next one takes its place, in view and as the current one. */
void removeRow(QTableView &view, UserSongsRelTableModel &model, int row);

} // namespace SongTable

} // namespace tarvel4
