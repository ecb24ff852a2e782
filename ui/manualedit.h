#pragma once

#include <QCoreApplication>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

struct ApplyToAll;
class Database;
struct EditSummary;
class Journal;
class SongEdit;
struct SongInfo;
class UserSongsRelTableModel;
class WindowHost;

/** Lets the user correct the song of a row, and carries what was applied to all to the others. */
class ManualEdit
{
    Q_DECLARE_TR_FUNCTIONS(ManualEdit)

public:
    ManualEdit(QWidget *window, const Database &db, UserSongsRelTableModel &model, WindowHost &host,
               Journal &journal);

    /** Shows nothing where the song can't be read; tells which songs could not be saved. */
    void editRow(int row);

private:
    EditSummary save(int row, SongEdit &song, const SongInfo &edited, const ApplyToAll &fields);
    void tellUnsaved(const EditSummary &summary);

    QWidget *m_window;
    const Database &m_db;
    UserSongsRelTableModel &m_model;
    WindowHost &m_host;
    Journal &m_journal;
};

} // namespace tarvel4
