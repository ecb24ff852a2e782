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

/** Fits the columns to their contents. */
void resizeColumns(QTableView &view);

/** Takes a row out of the table; the next one takes its place, in view and as the current one. */
void removeRow(QTableView &view, UserSongsRelTableModel &model, int row);

} // namespace SongTable

} // namespace tarvel4
