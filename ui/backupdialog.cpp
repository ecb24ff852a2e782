#include "ui/backupdialog.h"

#include "ui/folderchooser.h"
#include "ui_backupdialog.h"

namespace tarvel4 {

namespace {

enum Result { Cancelled = 0, BackUp = 1, GoOnWithout = 2 };

} // namespace

BackupDialog::BackupDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::BackupDialog>())
{
    ui->setupUi(this);
    ui->directoryLineEdit->setReadOnly(true);
    ui->doBackupPushButton->setEnabled(false);
    ui->previewPushButton->hide();
    ui->backupLabel->setText(tr(
        "Si consiglia di effettuare un backup della libreria prima di procedere con "
        "l'aggiornamento.\nSelezionare una cartella di destinazione per il backup oppure premere "
        "'Prosegui senza backup'."));
    ui->browsePushButton->setFocus();
}

BackupDialog::~BackupDialog() = default;

void BackupDialog::setPreview(std::function<void()> show)
{
    connect(ui->previewPushButton, &QPushButton::clicked, this, std::move(show));
    ui->previewPushButton->show();
}

void BackupDialog::on_browsePushButton_clicked()
{
    const QString folder = chooseFolder(this, tr("Scegli cartella"), FolderKind::Backup);
    if (folder.isEmpty())
        return;
    m_backupDir = folder;
    ui->directoryLineEdit->setText(folder);
    ui->doBackupPushButton->setEnabled(true);
    ui->doBackupPushButton->setDefault(true);
    ui->doBackupPushButton->setFocus();
}

void BackupDialog::on_abortPushButton_clicked()
{
    done(Cancelled);
}

void BackupDialog::on_doBackupPushButton_clicked()
{
    done(BackUp);
}

void BackupDialog::on_exitPushButton_clicked()
{
    done(GoOnWithout);
}

} // namespace tarvel4
