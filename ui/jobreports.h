#pragma once

#include "library/jobreport.h"

#include <QObject>

#include <functional>

QT_BEGIN_NAMESPACE
class QAction;
class QSplitter;
class QTableView;
QT_END_NAMESPACE

namespace tarvel4 {

class ReportPanel;
class UserSongsRelTableModel;

/** Keeps the report of the last job for the panel under the song table, opens that when there is
 * something that the user did not want, and leads from a song of it to its row. */
class JobReports : public QObject
{
    Q_OBJECT

public:
    struct Widgets
    {
        QSplitter *splitter; ///< the table and, below it, the panel
        ReportPanel *panel;
        QAction *showAction;
        QTableView *table;
    };

    /** \a shareRoom gives the table and the panel their parts of the splitter. */
    JobReports(const Widgets &widgets, std::function<void()> shareRoom);

    /** Null, as it is at first, where there is no table. */
    void setModel(UserSongsRelTableModel *model) { m_model = model; }

    /** Takes the report of a job that has just ended. */
    void take(const JobReport &report);

    /** Closes a panel that covers the table. */
    void uncoverTable();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showPanel();
    bool isRoomShort() const;
    void coverTable(bool covers);
    void giveBackTable();
    void showSong(const QString &path, bool staysHere);
    int rowOf(const QString &path) const;

    Widgets m_widgets;
    std::function<void()> m_shareRoom;
    UserSongsRelTableModel *m_model = nullptr;
    bool m_isTableCovered = false; ///< by the panel, for want of room
};

} // namespace tarvel4
