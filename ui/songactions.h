#pragma once

#include "ui/editplace.h"

#include <QCoreApplication>

QT_BEGIN_NAMESPACE
class QPoint;
QT_END_NAMESPACE

namespace tarvel4 {

class Listening;

/** What can be done with one song of the table: edit, take out of the list, delete. */
class SongActions
{
    Q_DECLARE_TR_FUNCTIONS(SongActions)

public:
    /** All of them must outlive the actions, which stay with its table. */
    SongActions(const EditPlace &at, Listening &listening);

    /** Lets the user correct a song; does nothing for a row below 0. */
    void edit(int row);
    /** Lets the user give several songs the same genre, artist or author; does nothing while a job
     * runs. */
    void editMany();
    /** Shows the menu of the row at a point of the table's viewport. */
    void showMenu(const QPoint &pos);

private:
    void deleteFile(int row);
    QString markTextOf(int row) const;
    void tellMark(int row);

    const EditPlace m_at;
    Listening &m_listening;
};

} // namespace tarvel4
