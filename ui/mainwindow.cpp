#include "ui/mainwindow.h"

#include "db/usersongsreltablemodel.h"
#include "library/backupjob.h"
#include "library/importjob.h"
#include "library/songrows.h"
#include "library/transferjob.h"
#include "library/updatejob.h"
#include "library/usersettings.h"
#include "ui/aboutdialog.h"
#include "ui/appearance.h"
#include "ui/dataeditdialog.h"
#include "ui/helpdialog.h"
#include "ui/indexdialog.h"
#include "ui/manualedit.h"
#include "ui/songdebug.h"
#include "ui/songslistdialog.h"
#include "ui/songtable.h"
#include "ui/undochanges.h"
#include "ui_mainwindow.h"

#include <QCloseEvent>
#include <QDebug>
#include <QFile>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <QShortcut>
#include <QTimer>

#include <utility>

namespace tarvel4 {

MainWindow::MainWindow(QWidget *parent, std::unique_ptr<const Volume> volume)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::MainWindow>())
    , m_volume(std::move(volume))
    , m_host(this)
    , m_journal(UserSettings::dataFolder(),
                [this](const QString &sentence) { m_host.addJournalNotice(sentence); })
{
    ui->setupUi(this);
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

    connect(ui->actionUndo, &QAction::triggered, this, [this] {
        UndoChanges(*ui->userLibraryTableView, m_model, m_host, m_journal).undoLast();
    });

    if (!m_db.init()) {
        qDebug() << "Error initializing DB !!!";
        return;
    }
    qDebug() << "DB initialized correctly";
    setUpTable();
    qApp->installEventFilter(this); // required, and lets every event pass
}

MainWindow::~MainWindow() = default;

void MainWindow::setUpTable()
{
    QTableView *table = ui->userLibraryTableView;
    connect(table, &QTableView::doubleClicked, this, &MainWindow::onSongsTableViewDoubleClicked);
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(table, &QTableView::customContextMenuRequested, this,
            &MainWindow::onSongsTableViewShowContextMenu);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *shortcut = new QShortcut(key, table, nullptr, nullptr, Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, table,
                [this, table] { onSongsTableViewDoubleClicked(table->currentIndex()); });
    }

    m_model = new UserSongsRelTableModel(this, m_db.userSongsDatabase());
    m_model->setHeaders();
    SongTable::setUp(*table, *m_model);
    SongTable::resizeColumns(*table);
}

void MainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    ui->retranslateUi(this);
    if (m_model)
        m_model->setHeaders();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (m_host.isRunning())
        event->ignore(); // a song may be half-way to the disk
    else
        QMainWindow::closeEvent(event);
}

void MainWindow::paintEvent(QPaintEvent *event)
{
    QMainWindow::paintEvent(event);
    if (!std::exchange(m_wasPainted, true)) // a slow card must not keep the window from appearing
        QTimer::singleShot(0, this, [this] { m_host.finishSaves(m_journal); });
}

void MainWindow::quit()
{
    m_host.stop();
    QCoreApplication::quit(); // ends the loops of open dialogs too, as if they were cancelled
}

// ---- step 1: import

void MainWindow::on_selectDirToolButton_clicked()
{
    const QStringList files = QFileDialog::getOpenFileNames(
        this, tr("Seleziona i file da importare"), QStringLiteral("/"),
        QStringLiteral("Songs (*.mid *.kar *.mp3 *.mf3 *.mf4 *.mf5)"));
    if (files.isEmpty())
        return;
    m_selectedFiles = files;
    ui->updateDataToolButton->setEnabled(false);
    ui->transferFilesToolButton->setEnabled(false);
    importUserLibrary();
    ui->transferFilesToolButton->setEnabled(true);
}

void MainWindow::importUserLibrary()
{
    if (!m_model)
        return;
    m_host.finishSaves(m_journal, m_selectedFiles); // they may be on a card that is there only now
    const ImportSummary summary =
        ImportJob(m_host, SongRows::imported(*m_model)).run(m_selectedFiles, [this] {
            return SongRows::clear(m_db, *m_model);
        });
    m_host.endProgress();
    if (!summary.isDone)
        return;
    m_model->totalRows(); // shows the rows that were appended last
    SongTable::resizeColumns(*ui->userLibraryTableView);
    const bool synchronise = ImportJob::askSynchronise(summary, m_host);
    tickCopyright();
    if (synchronise && updateUserLibrary())
        return;
    ui->updateDataToolButton->setEnabled(true);
}

// ---- step 2: synchronise

void MainWindow::on_updateDataToolButton_clicked()
{
    ui->updateDataToolButton->setEnabled(false);
    ui->transferFilesToolButton->setEnabled(false);
    if (!updateUserLibrary())
        ui->updateDataToolButton->setEnabled(true);
    ui->transferFilesToolButton->setEnabled(true);
}

bool MainWindow::updateUserLibrary()
{
    if (!m_model)
        return false;
    UpdateJob::Options options;
    options.asksUnpublished = UserSettings::copyrightAsk(m_askCopyright);
    const auto backup = [this] {
        return BackupJob(m_host, m_host, m_host).run(m_selectedFiles).mayProceed;
    };
    bool done = false;
    {
        SaveRun saves(Disk::real(), &m_journal, QStringLiteral("sync"));
        done = UpdateJob(m_db, m_host, m_host, options, saves)
                   .run(SongRows::paths(*m_model), SongRows::updated(*m_model), backup)
                   .isComplete;
    }
    m_host.endProgress();
    if (done)
        SongTable::resizeColumns(*ui->userLibraryTableView);
    m_host.tellNotices();
    return done;
}

bool MainWindow::backupUserLibrary()
{
    const bool proceed = BackupJob(m_host, m_host, m_host).run(m_selectedFiles).mayProceed;
    m_host.endProgress();
    return proceed;
}

// ---- step 3: transfer

void MainWindow::on_transferFilesToolButton_clicked()
{
    ui->updateDataToolButton->setEnabled(false);
    ui->transferFilesToolButton->setEnabled(false);
    transferFiles();
    ui->transferFilesToolButton->setEnabled(true); // required: the update stays disabled
}

void MainWindow::transferFiles()
{
    const QString dir =
        QFileDialog::getExistingDirectory(this, tr("Scegli cartella"), QStringLiteral("/Volumes"));
    if (dir.isEmpty())
        return;
    TransferJob(m_host, m_host, m_host, *m_volume).run(m_selectedFiles, dir);
    m_host.endProgress();
}

// ---- the song table

void MainWindow::onSongsTableViewDoubleClicked(QModelIndex index)
{
    if (index.row() >= 0)
        ManualEdit(this, m_db, *m_model, m_host, m_journal).editRow(index.row());
}

void MainWindow::onSongsTableViewShowContextMenu(QPoint pos)
{
    QTableView *table = ui->userLibraryTableView;
    const QModelIndex index = table->indexAt(pos);
    QMenu menu(this);
    const QAction *remove = menu.addAction(tr("Remove from list"));
    const QAction *erase = menu.addAction(tr("Delete file"));
    const QAction *chosen = menu.exec(table->viewport()->mapToGlobal(pos));
    if (!chosen || !index.isValid())
        return;
    if (chosen == remove)
        SongTable::removeRow(*table, *m_model, index.row());
    else if (chosen == erase)
        deleteSong(index.row());
}

void MainWindow::deleteSong(int row)
{
    const QString path = m_model->fileNameOf(row);
    const auto answer =
        QMessageBox::question(this, tr("Attenzione"), tr("Sei sicuro di voler cancellare il file?"),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    if (answer != QMessageBox::Yes)
        return;
    QFile::remove(path);
    // required: also when the file is still there
    SongTable::removeRow(*ui->userLibraryTableView, *m_model, row);
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
    const bool ask = UserSettings::copyrightAsk(m_askCopyright);
    ui->actionCopyrightYes->setChecked(ask);
    ui->actionCopyrightNo->setChecked(!ask);
}

void MainWindow::on_optimizeMemory_triggered()
{
    IndexDialog(this).exec();
}

void MainWindow::on_actionSongsList_triggered()
{
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
    importUserLibrary();
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
    backupUserLibrary();
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
