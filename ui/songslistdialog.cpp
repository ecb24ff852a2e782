#include "ui/songslistdialog.h"

#include "indexer/index.h"
#include "library/usersettings.h"
#include "ui/causebox.h"
#include "ui/folderchooser.h"
#include "ui/plaintext.h"
#include "ui/targetchooser.h"
#include "ui_songslistdialog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>

#include <utility>

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

/** False where nobody could put a list: in a folder that is not there, or not to be written to. */
bool isPlaceForAList(const QString &path)
{
    const QFileInfo folder(QFileInfo(path).absolutePath());
    return folder.isDir() && folder.isWritable();
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
    const QString folder = chooseFolder(this, tr("Scegli cartella"), FolderKind::Memory);
    if (folder.isEmpty())
        return;
    const bool isDefault =
        ui->targetLineEdit->text() == listOn(UserSettings::mediaRoot()); // and may be no place
    ui->sourceLineEdit->setText(folder);
    UserSettings::setMediaRoot(folder);
    if (isDefault && !isPlaceForAList(ui->targetLineEdit->text()))
        ui->targetLineEdit->setText(listOn(folder));
}

void SongsListDialog::browseFile()
{
    QString start = ui->targetLineEdit->text();
    if (!isPlaceForAList(start))
        start = QDir::home().filePath(QFileInfo(start).fileName());
    const QString file = chooseTarget(this, tr("Scegli nome del file"), start, tr("File (*.csv)"));
    if (file.isEmpty())
        return;
    ui->targetLineEdit->setText(file);
    m_confirmedTarget = file; // the file dialog asks before it gives an existing one
}

void SongsListDialog::initProgress(int maximum)
{
    ui->progressBar->setRange(0, maximum);
}

void SongsListDialog::setProgressValue(int value)
{
    if (value >= ui->progressBar->maximum() || m_pace.isDue())
        ui->progressBar->setValue(value);
}

void SongsListDialog::start()
{
    const QString title = tr("Salva lista song");
    const QString source = ui->sourceLineEdit->text();
    const QString target = ui->targetLineEdit->text();
    const bool isNew = QFileInfo(target).size() == 0;
    if (!QFileInfo::exists(source)) {
        QMessageBox::warning(this, title, tr("Il percorso selezionato non esiste"));
        return;
    }
    if (!isWritable(target)) {
        QMessageBox::warning(this, title, tr("Il percorso di destinazione non esiste"));
        return;
    }
    if (!isNew && !mayReplace(target))
        return;

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

bool SongsListDialog::mayReplace(const QString &target)
{
    const bool isConfirmed = target == std::exchange(m_confirmedTarget, QString());
    if (isConfirmed)
        return true;
    QMessageBox box(QMessageBox::Question, tr("Salva lista song"),
                    tr("Il file esiste già, vuoi sostituirlo?"), QMessageBox::Yes | QMessageBox::No,
                    this);
    PlainText::addTo(box, QDir::toNativeSeparators(target));
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

int SongsListDialog::writeList(Index &index, const QString &source, const QString &target)
{
    connect(&index, &Index::progressMaxSetup, this, &SongsListDialog::initProgress);
    connect(&index, &Index::progressValueChanged, this, &SongsListDialog::setProgressValue);
    return index.writeSongList(source, target, ui->orderComboBox->currentIndex());
}

} // namespace tarvel4
