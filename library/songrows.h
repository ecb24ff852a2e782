#pragma once

#include "library/songoutcome.h"

#include <QStringList>

namespace tarvel4 {

class Database;
class UserSongsRelTableModel;

/** The window's table as the observer of a job over its songs: row i is the i-th path. */
namespace SongRows {

/** The songs of the table in its present order. */
QStringList paths(UserSongsRelTableModel &model);

/** Takes every row out of the table; false when they are still there. */
bool clear(Database &db, UserSongsRelTableModel &model);

/** Appends a row for each song read. */
SongObserver imported(UserSongsRelTableModel &model);
/** Shows in each row how its update ended. */
SongObserver updated(UserSongsRelTableModel &model);
/** Shows in each row, but the one left out, how its edit ended. */
SongObserver edited(UserSongsRelTableModel &model, int leftOut);

/** Shows a song that has its earlier bytes again as it is now listed, and one that could not be
 * given them as failed; \a song's row is found by its path, if it has one. */
SongObserver restored(UserSongsRelTableModel &model);

/** Shows in a row how its edit ended. */
void showEdit(UserSongsRelTableModel &model, int row, const SongOutcome &song);

} // namespace SongRows

} // namespace tarvel4
