#pragma once

#include <QObject>
#include <QTimer>

QT_BEGIN_NAMESPACE
class QComboBox;
class QLabel;
class QLineEdit;
class QStatusBar;
class QTableView;
QT_END_NAMESPACE

namespace tarvel4 {

class ElidedLabel;
class SongFilter;
class UserSongsRelTableModel;

/** The search above the song table, the line below that counts its songs, and the text in place of
 * songs where there are none. */
class SongSearch : public QObject
{
    Q_OBJECT

public:
    struct Widgets
    {
        QTableView *table;
        QLineEdit *text;
        QComboBox *marks;
        QLabel *emptyText; ///< over the table
        QStatusBar *counts;
    };

    SongSearch(const Widgets &widgets, UserSongsRelTableModel &model);

    /** Puts all texts into the present language. */
    void retranslate();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /** The search's key was pressed, whatever covers its field. */
    void wanted();

private:
    void enterTable();
    void tellCounts();
    QString counts(int songs, int shown) const;

    const Widgets m_widgets;
    UserSongsRelTableModel &m_model;
    SongFilter *m_filter;
    ElidedLabel *m_counts;
    QTimer m_changes; ///< a job changes many rows a second
};

} // namespace tarvel4
