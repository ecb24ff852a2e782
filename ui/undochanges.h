#pragma once

#include <QCoreApplication>
#include <QStringList>

QT_BEGIN_NAMESPACE
class QTableView;
QT_END_NAMESPACE

namespace tarvel4 {

class Journal;
struct JournalRun;
class UserSongsRelTableModel;
class WindowHost;

/** Shows the user what changed songs last, and takes it back where that is wanted. */
class UndoChanges
{
    Q_DECLARE_TR_FUNCTIONS(UndoChanges)

public:
    /** \a model: null where there is no table. */
    UndoChanges(QTableView &table, UserSongsRelTableModel *model, WindowHost &host,
                Journal &journal);

    /** Does nothing while a job runs; tells which songs could not be taken back. */
    void undoLast();

private:
    void askAndUndo();
    bool ask(const JournalRun &run, const QStringList &paths, int done) const;
    static QString kindOf(const JournalRun &run);
    static QString firstOf(const QStringList &paths);
    void undo(const JournalRun &run, const QStringList &paths);
    void tellResult(int restored, int songs, const QStringList &failed,
                    const QStringList &problems);

    QTableView &m_table;
    UserSongsRelTableModel *m_model;
    WindowHost &m_host;
    Journal &m_journal;
};

} // namespace tarvel4
