#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QTableView;
QT_END_NAMESPACE

namespace tarvel4 {

class Database;
class Journal;
class UserSongsRelTableModel;
class WindowHost;

/** Where songs are edited from, and what an edit needs. */
struct EditPlace
{
    QTableView &table;
    const Database &db;
    UserSongsRelTableModel &model;
    WindowHost &host;
    Journal &journal;
};

} // namespace tarvel4
