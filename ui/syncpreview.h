#pragma once

#include "ui/previewdialog.h"

#include <QObject>

#include <functional>

QT_BEGIN_NAMESPACE
class QAction;
class QWidget;
QT_END_NAMESPACE

namespace tarvel4 {

class Database;
class UserSongsRelTableModel;
class WindowHost;

/** Shows what step 2 would change before it does: from the menu, whenever its button can be
 * pressed, and from the question about the backup. */
class SyncPreview : public QObject
{
    Q_OBJECT

public:
    struct Widgets
    {
        QWidget *window;
        QAction *action;
        QWidget *updateButton;
    };

    /** \a synchronise: step 2 itself, for the go-ahead. */
    SyncPreview(const Widgets &widgets, Database &db, WindowHost &host,
                std::function<void()> synchronise);

    /** Null, as it is at first, where there is no table. */
    void setModel(UserSongsRelTableModel *model) { m_model = model; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool show(QWidget &parent, PreviewDialog::Next next);

    Widgets m_widgets;
    Database &m_db;
    WindowHost &m_host;
    UserSongsRelTableModel *m_model = nullptr;
};

} // namespace tarvel4
