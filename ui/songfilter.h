#pragma once

#include "db/usersongsreltablemodel.h"

#include <QObject>
#include <QPersistentModelIndex>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QTableView;
QT_END_NAMESPACE

namespace tarvel4 {

/**
 * Hides the rows of the song table that a search leaves out, and keeps the selected song selected
 * and in sight when the table is sorted or searched. Jobs go on working on hidden songs.
 */
class SongFilter : public QObject
{
    Q_OBJECT

public:
    SongFilter(QTableView &table, UserSongsRelTableModel &model);

    /** Shows only rows that have all words of the text. */
    void setText(const QString &text);
    /** Shows only rows with that mark; Unmarked shows all. */
    void setMark(UserSongsRelTableModel::Mark mark);

    bool isActive() const;
    /** How many songs the table shows. */
    int shown() const;

Q_SIGNALS:
    /** The rows, what they hold or which of them are shown. */
    void changed();

private:
    bool accepts(int row) const;
    void filterAll();
    void filterRows(int first, int last);
    void rowsChanged(int first, int last);
    void rememberCurrent();
    void showAgain();
    int rowOf(int id);
    void makeCurrent(int row);

    QTableView &m_table;
    UserSongsRelTableModel &m_model;
    QStringList m_words;
    UserSongsRelTableModel::Mark m_mark = UserSongsRelTableModel::Unmarked;
    QPersistentModelIndex m_setAside; ///< was current, and is hidden by the search
    int m_currentId = 0; ///< while the model reads its rows again
    int m_currentColumn = 0;
};

} // namespace tarvel4
