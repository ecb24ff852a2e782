#pragma once

#include <QCoreApplication>

QT_BEGIN_NAMESPACE
class QPoint;
class QTableView;
QT_END_NAMESPACE

namespace tarvel4 {

class Database;
class Journal;
class Listening;
class UserSongsRelTableModel;
class WindowHost;

/** What can be done with one song of the table: edit, take out of the list, delete. */
class SongActions
{
    Q_DECLARE_TR_FUNCTIONS(SongActions)

public:
    /** All of them must outlive the actions, which stay with \a table. */
    SongActions(QTableView &table, const Database &db, UserSongsRelTableModel &model,
                WindowHost &host, Journal &journal, Listening &listening);

    /** Lets the user correct a song; does nothing for a row below 0. */
    void edit(int row);
    /** Lets the user give several songs the same genre, artist or author; does nothing while a job
     * runs. */
    void editMany();
    /** Shows the menu of the row at a point of the table's viewport. */
    void showMenu(const QPoint &pos);

private:
    void deleteFile(int row);

    QTableView &m_table;
    const Database &m_db;
    UserSongsRelTableModel &m_model;
    WindowHost &m_host;
    Journal &m_journal;
    Listening &m_listening;
};

} // namespace tarvel4
