#include "ui/mainwindow.h"

#include "db/usersongsreltablemodel.h"
#include "library/usersettings.h"
#include "ui/aboutdialog.h"
#include "ui/appearance.h"
#include "ui/dataeditdialog.h"
#include "ui/helpdialog.h"
#include "ui/indexdialog.h"
#include "ui/jobreports.h"
#include "ui/librarysteps.h"
#include "ui/listening.h"
#include "ui/listenstrip.h"
#include "ui/shortcuttips.h"
#include "ui/songactions.h"
#include "ui/songdebug.h"
#include "ui/songdrop.h"
#include "ui/songintake.h"
#include "ui/songsearch.h"
#include "ui/songslistdialog.h"
#include "ui/songtable.h"
#include "ui/sortmenu.h"
#include "ui/syncpreview.h"
#include "ui/undochanges.h"
#include "ui/windowplace.h"
#include "ui_mainwindow.h"

#include <QCloseEvent>
#include <QDebug>
#include <QHeaderView>
#include <QScreen>
#include <QTimer>

#include <utility>

namespace tarvel4 {

MainWindow::MainWindow(QWidget *parent, std::unique_ptr<const Volume> volume,
                       std::unique_ptr<SongPlayers> players,
                       std::unique_ptr<RemovableDrives> drives)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::MainWindow>())
    , m_volume(std::move(volume))
    , m_drives(std::move(drives))
    , m_host(this)
    , m_journal(UserSettings::dataFolder(),
                [this](const QString &sentence) { m_host.addJournalNotice(sentence); })
{
    ui->setupUi(this);
    ui->updateDataToolButton->setCaption(ui->label_2);
    ui->transferFilesToolButton->setCaption(ui->label_3);
    shareTextSize({ui->selectDirToolButton, ui->updateDataToolButton, ui->transferFilesToolButton});
    tellShortcuts();
    adaptPictures();
    resize(size().boundedTo(screen()->availableSize()));
    ui->actionGerman->setVisible(false); // required: German comes from the setting only
    ui->actionItalian->setVisible(true);
    ui->debugGroupBox->hide();
    ui->debugKvaroGroupBox->hide();
    ui->updateDataToolButton->setEnabled(false);
    ui->transferFilesToolButton->setEnabled(false);

    tickLanguage(UserSettings::language(QStringLiteral("it")));
    tickCopyright();
    ui->dbgLogEnableCheckBox->setChecked(UserSettings::logEnabled());
    ui->dbgLogClearCheckBox->setChecked(UserSettings::logClear());

    m_steps = std::make_unique<LibrarySteps>(LibrarySteps::Widgets{ui->updateDataToolButton,
                                                                   ui->transferFilesToolButton,
                                                                   ui->userLibraryTableView},
                                             m_db, m_host, m_journal, *m_volume);
    m_steps->setDrives(m_drives.get());
    m_steps->setCopyrightAskChanged([this] { tickCopyright(); });
    m_reports = std::make_unique<JobReports>(JobReports::Widgets{ui->songsSplitter, ui->reportPanel,
                                                                 ui->actionReport,
                                                                 ui->userLibraryTableView},
                                             [this] { m_place->shareRoom(); });
    m_host.setReportTaker([this](const JobReport &report) { m_reports->take(report); });
    m_preview = std::make_unique<SyncPreview>(
        SyncPreview::Widgets{this, ui->actionPreview, ui->updateDataToolButton}, m_db, m_host,
        [this] { m_steps->synchronise(); });
    connect(ui->actionUndo, &QAction::triggered, this, [this] {
        UndoChanges(*ui->userLibraryTableView, m_model, m_host, m_journal).undoLast();
    });

    setUpIntake();
    m_place = std::make_unique<WindowPlace>(*this, *ui->userLibraryTableView->horizontalHeader(),
                                            *ui->songsSplitter);
    if (!m_db.init()) {
        qDebug() << "Error initializing DB !!!";
        m_place->restore();
        return;
    }
    qDebug() << "DB initialized correctly";
    setUpTable(std::move(players));
    m_place->restore();
    qApp->installEventFilter(this); // required, and lets every event pass
}

MainWindow::~MainWindow() = default;

void MainWindow::setUpIntake()
{
    m_intake = std::make_unique<SongIntake>(*this, *m_steps, m_host, m_journal);
    connect(ui->actionImportFolder, &QAction::triggered, this,
            [this] { m_intake->importFolder(); });
    new SongDrop(
        *this, [this] { return !m_model || m_host.isRunning(); },
        [this](const SongDrop::Songs &songs) { m_intake->import(songs.paths, songs.unreachable); });
}

void MainWindow::setUpTable(std::unique_ptr<SongPlayers> players)
{
    QTableView *table = ui->userLibraryTableView;
    connect(table, &QTableView::doubleClicked, this, &MainWindow::onSongsTableViewDoubleClicked);
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(table, &QTableView::customContextMenuRequested, this,
            &MainWindow::onSongsTableViewShowContextMenu);

    m_model = new UserSongsRelTableModel(this, m_db.userSongsDatabase());
    m_model->setHeaders();
    SongTable::setUp(*table, *m_model);
    SongTable::resizeColumns(*table);
    m_search = new SongSearch(
        {table, ui->searchLineEdit, ui->searchMarkComboBox, ui->emptyTableLabel, ui->statusBar},
        *m_model);
    connect(m_search, &SongSearch::wanted, m_reports.get(), &JobReports::uncoverTable);
    m_steps->setModel(m_model);
    m_reports->setModel(m_model);
    m_preview->setModel(m_model);
    m_sortMenu = new SortMenu(*table->horizontalHeader(), *ui->menuStrumenti);
    auto *strip = new ListenStrip(ui->songsPane);
    ui->songsLayout->addWidget(strip);
    m_listening = std::make_unique<Listening>(*table, *m_model, *ui->menuStrumenti, *strip,
                                              std::move(players));
    m_host.setJobBegins([this] { m_listening->stop(); });
    m_songActions = std::make_unique<SongActions>(
        EditPlace{*table, m_db, *m_model, m_host, m_journal}, *m_listening);
    connect(ui->actionEditMany, &QAction::triggered, this, [this] { m_songActions->editMany(); });
}

void MainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::StyleChange) // of the application, with other colours
        adaptPictures();
    if (event->type() != QEvent::LanguageChange)
        return;
    ui->retranslateUi(this);
    tellShortcuts();
    if (m_model) {
        m_model->setHeaders();
        SongTable::showWholeHeaders(*ui->userLibraryTableView);
    }
    if (m_search)
        m_search->retranslate();
    if (m_sortMenu)
        m_sortMenu->retranslate();
    if (m_listening)
        m_listening->retranslate();
}

void MainWindow::tellShortcuts()
{
    tarvel4::tellShortcuts(
        {ui->selectDirToolButton, ui->updateDataToolButton, ui->transferFilesToolButton});
}

void MainWindow::adaptPictures()
{
    Appearance::adaptPictures({ui->logoLabel, ui->label, ui->logoKvaroLabel});
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (m_host.isRunning())
        return event->ignore(); // a song may be half-way to the disk
    if (m_listening)
        m_listening->stop();
    QMainWindow::closeEvent(event);
}

void MainWindow::paintEvent(QPaintEvent *event)
{
    QMainWindow::paintEvent(event);
    if (!std::exchange(m_wasPainted, true)) // a slow card must not keep the window from appearing
        QTimer::singleShot(0, this, [this] {
            m_host.finishSaves(m_journal);
            if (m_whenShown)
                m_whenShown();
        });
}

void MainWindow::importWhenShown(const QStringList &paths, const QStringList &unreachable)
{
    m_whenShown = [this, paths, unreachable] { m_intake->import(paths, unreachable); };
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    constexpr int roomForPictures = 520; // below that, the songs need it
    for (QWidget *picture :
         {static_cast<QWidget *>(ui->logoLabel), static_cast<QWidget *>(ui->frame),
          static_cast<QWidget *>(ui->logoKvaroLabel)})
        picture->setVisible(height() >= roomForPictures);
}

void MainWindow::quit()
{
    m_host.stop();
    // Ends the loops of open dialogs too, as if they were cancelled; quit() asks the windows in
    // Qt 6.
    QCoreApplication::exit();
}

// ---- the three steps

void MainWindow::on_selectDirToolButton_clicked()
{
    m_steps->chooseAndImport();
}

void MainWindow::on_updateDataToolButton_clicked()
{
    m_steps->synchronise();
}

void MainWindow::on_transferFilesToolButton_clicked()
{
    m_steps->transfer();
}

// ---- the song table

void MainWindow::onSongsTableViewDoubleClicked(QModelIndex index)
{
    m_songActions->edit(index.row());
}

void MainWindow::onSongsTableViewShowContextMenu(QPoint pos)
{
    m_songActions->showMenu(pos);
}

// ---- menus

void MainWindow::on_actionItalian_triggered()
{
    chooseLanguage(QStringLiteral("it"));
}

void MainWindow::on_actionEnglish_triggered()
{
    chooseLanguage(QStringLiteral("en"));
}

void MainWindow::on_actionGerman_triggered()
{
    chooseLanguage(QStringLiteral("de"));
}

void MainWindow::chooseLanguage(const QString &language)
{
    UserSettings::setLanguage(language);
    tickLanguage(language);
    Appearance::installLanguage(m_translator, language);
}

void MainWindow::tickLanguage(const QString &language)
{
    const bool italian = language == QLatin1String("it");
    const bool german = language == QLatin1String("de");
    ui->actionItalian->setChecked(italian);
    ui->actionGerman->setChecked(german);
    ui->actionEnglish->setChecked(!italian && !german);
}

void MainWindow::on_actionCopyrightYes_triggered()
{
    setCopyrightAsk(true);
}

void MainWindow::on_actionCopyrightNo_triggered()
{
    setCopyrightAsk(false);
}

void MainWindow::setCopyrightAsk(bool ask)
{
    UserSettings::setCopyrightAsk(ask);
    tickCopyright();
}

void MainWindow::tickCopyright()
{
    const bool ask = UserSettings::copyrightAsk(true);
    ui->actionCopyrightYes->setChecked(ask);
    ui->actionCopyrightNo->setChecked(!ask);
}

void MainWindow::on_optimizeMemory_triggered()
{
    if (!m_host.isRunning())
        IndexDialog(this).exec();
}

void MainWindow::on_actionSongsList_triggered()
{
    if (!m_host.isRunning())
        SongsListDialog(this).exec();
}

void MainWindow::on_actionContents_triggered()
{
    HelpDialog(this).exec();
}

void MainWindow::on_actionAbout_triggered()
{
    AboutDialog(this).exec();
}

void MainWindow::on_actionAbout_QT_triggered()
{
    QApplication::aboutQt();
}

// ---- developer actions

void MainWindow::on_dbgImportPushButton_clicked()
{
    m_steps->importSongs();
}

void MainWindow::on_dbgSavePushButton_clicked()
{
    const int row = ui->userLibraryTableView->currentIndex().row();
    if (row >= 0)
        SongDebug::save(m_model->fileNameOf(row), row);
}

void MainWindow::on_dbgAddMarkerPushButton_clicked()
{
    const int row = ui->userLibraryTableView->currentIndex().row();
    if (row >= 0)
        SongDebug::addMarker(m_model->fileNameOf(row), row, ui->dbgMarkerTextLineEdit->text(),
                             static_cast<quint16>(ui->dbgMarkerBarSpinBox->value()));
}

void MainWindow::on_dbgShowDialogPushButton_clicked()
{
    if (DataEditDialog(this).exec() == QDialog::Accepted)
        qDebug() << "Accettato";
    else
        qDebug() << "Rifiutato";
}

void MainWindow::on_dbgHidePushButton_clicked()
{
    ui->debugGroupBox->setVisible(!ui->debugGroupBox->isVisible());
}

void MainWindow::on_dbgBackupPushButton_clicked()
{
    m_steps->backUp();
}

void MainWindow::on_dbgLogEnableCheckBox_toggled(bool checked)
{
    UserSettings::setLogEnabled(checked);
}

void MainWindow::on_dbgLogClearCheckBox_toggled(bool checked)
{
    UserSettings::setLogClear(checked);
}

void MainWindow::on_dbgReloadStylePushButton_clicked()
{
    Appearance::applyStyleSheet(QCoreApplication::applicationDirPath()
                                + QStringLiteral("/default.qss"));
}

} // namespace tarvel4
