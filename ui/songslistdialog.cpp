#include "ui/songslistdialog.h"

#include "indexer/index.h"
#include "library/usersettings.h"
#include "ui/causebox.h"
#include "ui/folderchooser.h"
#include "ui_songslistdialog.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

namespace tarvel4 {

namespace {

constexpr int written = 1;
constexpr int notPrepared = -1;

/** Where the list of a memory goes by default: beside its songs. */
QString listOn(const QString &root)
{
    QString path = root;
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!path.endsWith(QLatin1Char('/')))
        path += QLatin1Char('/');
    return path + QStringLiteral("SongsList.csv");
}

/** Leaves what the file holds, and does not wait for the other end of a pipe. */
bool isWritable(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return false;
    return QFile(path).open(QIODevice::WriteOnly | QIODevice::Append);
}

} // namespace

SongsListDialog::SongsListDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::SongsListDialog>())
{
    ui->setupUi(this);
    const QString root = UserSettings::mediaRoot();
    ui->sourceLineEdit->setText(root);
    ui->targetLineEdit->setText(listOn(root));
}

SongsListDialog::~SongsListDialog() = default;

void SongsListDialog::browseDir()
{
    const QString folder = chooseFolder(this, tr("Scegli cartella"));
    if (folder.isEmpty())
        return;
    ui->sourceLineEdit->setText(folder);
    UserSettings::setMediaRoot(folder);
}

void SongsListDialog::browseFile()
{
    const QString file = QFileDialog::getSaveFileName(
        this, tr("Scegli nome del file"), ui->targetLineEdit->text(), tr("File (*.csv)"));
    if (!file.isEmpty())
        ui->targetLineEdit->setText(file);
}

void SongsListDialog::initProgress(int maximum)
{
    ui->progressBar->setRange(0, maximum);
}

void SongsListDialog::setProgressValue(int value)
{
    ui->progressBar->setValue(value);
}

void SongsListDialog::start()
{
    const QString title = tr("Salva lista song");
    const QString source = ui->sourceLineEdit->text();
    const QString target = ui->targetLineEdit->text();
    if (!QFileInfo::exists(source)) {
        QMessageBox::warning(this, title, tr("Il percorso selezionato non esiste"));
        return;
    }
    if (!isWritable(target)) {
        QMessageBox::warning(this, title, tr("Il percorso di destinazione non esiste"));
        return;
    }

    ui->savePushButton->setEnabled(false);
    ui->exitPushButton->setEnabled(false);
    Index index;
    switch (writeList(index, source, target)) {
    case written:
        QMessageBox::information(this, title, tr("Operazione completata"));
        break;
    case notPrepared:
        QMessageBox::warning(this, title,
                             tr("Impossibile proseguire, la memoria non è preparata per Tarvel"));
        break;
    default:
        showWithCause(*this, QMessageBox::Warning, title,
                      tr("Errore durante la creazione del file"), index.outcome());
    }
    ui->savePushButton->setEnabled(true);
    ui->exitPushButton->setEnabled(true);
    ui->exitPushButton->setFocus();
}

int SongsListDialog::writeList(Index &index, const QString &source, const QString &target)
{
    connect(&index, &Index::progressMaxSetup, this, &SongsListDialog::initProgress);
    connect(&index, &Index::progressValueChanged, this, &SongsListDialog::setProgressValue);
    return index.writeSongList(source, target, ui->orderComboBox->currentIndex());
}

} // namespace tarvel4
