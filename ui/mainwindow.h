#pragma once

#include "db/database.h"
#include "library/volume.h"
#include "player/songplayers.h"
#include "storage/journal.h"
#include "ui/removabledrive.h"
#include "ui/windowhost.h"

#include <QMainWindow>
#include <QModelIndex>
#include <QTranslator>

#include <functional>
#include <memory>

namespace tarvel4 {

namespace Ui {
class MainWindow;
}
class JobReports;
class LibrarySteps;
class Listening;
class SongActions;
class SongIntake;
class SongSearch;
class SortMenu;
class SyncPreview;
class UserSongsRelTableModel;
class WindowPlace;

/** The program's window: wires its three steps, its menus and the song table to the modules below.
 */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr,
                        std::unique_ptr<const Volume> volume = std::make_unique<SystemVolume>(),
                        std::unique_ptr<SongPlayers> players = std::make_unique<SystemPlayers>(),
                        std::unique_ptr<RemovableDrives> drives = RemovableDrives::ofSystem());
    ~MainWindow() override;

    /** Imports files and folders as soon as the window is on show; \a unreachable: what was named
     * too and has no name that a file can be opened by. */
    void importWhenShown(const QStringList &paths, const QStringList &unreachable);
    /** Ends the program, also while a workflow runs: as soon as no song is half-way to the disk. */
    void quit();

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    // required: the order of declaration is the meta-object's
private Q_SLOTS:
    void on_selectDirToolButton_clicked();
    void on_updateDataToolButton_clicked();
    void on_actionItalian_triggered();
    void on_actionEnglish_triggered();
    void on_actionGerman_triggered();
    void on_actionAbout_triggered();
    void on_actionAbout_QT_triggered();
    void on_actionContents_triggered();
    void on_actionCopyrightYes_triggered();
    void on_actionCopyrightNo_triggered();
    void onSongsTableViewDoubleClicked(QModelIndex index);
    void on_optimizeMemory_triggered();
    void on_transferFilesToolButton_clicked();
    void on_actionSongsList_triggered();
    void onSongsTableViewShowContextMenu(QPoint pos);
    void on_dbgImportPushButton_clicked();
    void on_dbgSavePushButton_clicked();
    void on_dbgAddMarkerPushButton_clicked();
    void on_dbgShowDialogPushButton_clicked();
    void on_dbgHidePushButton_clicked();
    void on_dbgBackupPushButton_clicked();
    void on_dbgLogEnableCheckBox_toggled(bool checked);
    void on_dbgLogClearCheckBox_toggled(bool checked);
    void on_dbgReloadStylePushButton_clicked();

private:
    void setUpIntake();
    void setUpTable(std::unique_ptr<SongPlayers> players);
    void tellShortcuts();
    void adaptPictures();
    void chooseLanguage(const QString &language);
    void tickLanguage(const QString &language);
    void setCopyrightAsk(bool ask);
    void tickCopyright();

    std::unique_ptr<Ui::MainWindow> ui;
    std::unique_ptr<const Volume> m_volume;
    std::unique_ptr<RemovableDrives> m_drives; ///< null: nothing can be ejected
    WindowHost m_host;
    Journal m_journal;
    Database m_db;
    UserSongsRelTableModel *m_model = nullptr; ///< null when the database could not be opened
    std::unique_ptr<LibrarySteps> m_steps;
    std::unique_ptr<SongIntake> m_intake;
    std::function<void()> m_whenShown; ///< called once the window is on show
    std::unique_ptr<JobReports> m_reports;
    std::unique_ptr<SyncPreview> m_preview;
    std::unique_ptr<Listening> m_listening; ///< null without a model
    std::unique_ptr<SongActions> m_songActions; ///< null without a model
    std::unique_ptr<WindowPlace> m_place;
    SongSearch *m_search = nullptr; ///< null without a model
    SortMenu *m_sortMenu = nullptr; ///< null without a model
    bool m_wasPainted = false;
    QTranslator m_translator;
};

} // namespace tarvel4
