#pragma once

#include <QCoreApplication>
#include <QVector>

QT_BEGIN_NAMESPACE
class QTableView;
QT_END_NAMESPACE

namespace tarvel4 {

class Database;
class EditManyDialog;
struct EditSummary;
class Journal;
class UserSongsRelTableModel;
class WindowHost;

/** Gives the songs that the user chooses among those on show the same genre, artist or author, as
 * one change that is undone at once. Good for one dialog. */
class EditMany
{
    Q_DECLARE_TR_FUNCTIONS(EditMany)

public:
    EditMany(QTableView &table, const Database &db, UserSongsRelTableModel &model, WindowHost &host,
             Journal &journal);

    /** Starts with the table's current row chosen. Songs that are not saved are told, and offered
     * again with what was typed. */
    void run();

private:
    QVector<int> shownRows() const;
    EditSummary save(const EditManyDialog &dialog, const QVector<int> &rows, QVector<int> &unsaved);

    QTableView &m_table;
    const Database &m_db;
    UserSongsRelTableModel &m_model;
    WindowHost &m_host;
    Journal &m_journal;
};

} // namespace tarvel4
