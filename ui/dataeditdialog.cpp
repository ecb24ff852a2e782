#include "ui/dataeditdialog.h"

#include "library/songpath.h"
#include "ui/listcompleter.h"
#include "ui_dataeditdialog.h"

#include <QMessageBox>
#include <QRegularExpressionValidator>

namespace tarvel4 {

namespace {

constexpr int secondsPerMinute = 60;

void setEntries(QComboBox *box, const QStringList &entries)
{
    box->clear();
    box->addItems(entries);
}

/** A text longer than its field shows its beginning. */
void showText(QLineEdit *edit, const QString &text)
{
    edit->setText(text);
    edit->setCursorPosition(0);
}

} // namespace

DataEditDialog::DataEditDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::DataEditDialog>())
{
    ui->setupUi(this);
    setWindowTitle(tr("Modifica dati song"));

    const auto *threeDigits =
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("^[0-9]{3}")), this);
    const auto *twoDigits =
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("^[0-9]{2}")), this);
    ui->bpmLineEdit->setValidator(threeDigits);
    ui->lenMmLineEdit->setValidator(twoDigits);
    ui->lenSsLineEdit->setValidator(twoDigits); // required: seconds go up to 99

    new ListCompleter(ui->artistComboBox);
    new ListCompleter(ui->genreComboBox);
}

DataEditDialog::~DataEditDialog() = default;

void DataEditDialog::setArtists(const QStringList &artists)
{
    setEntries(ui->artistComboBox, artists);
}

void DataEditDialog::setGenres(const QStringList &genres)
{
    setEntries(ui->genreComboBox, genres);
}

void DataEditDialog::setKeys(const QStringList &keys)
{
    setEntries(ui->keyComboBox, QStringList(QString()) + keys);
}

void DataEditDialog::setSong(const SongInfo &song)
{
    ui->fileNameLabel->setText(song.filename);
    ui->formatLabel->setText(song.format);
    showText(ui->titleLineEdit, song.title);
    showText(ui->authorLineEdit, song.author);
    showText(ui->artistComboBox->lineEdit(), song.artist);
    showText(ui->genreComboBox->lineEdit(), song.genre);
    ui->lenMmLineEdit->setText(QString::number(song.length / secondsPerMinute));
    ui->lenSsLineEdit->setText(QString::number(song.length % secondsPerMinute));
    // required: a key that is not listed selects nothing, and is saved as an empty one
    ui->keyComboBox->setCurrentIndex(
        ui->keyComboBox->findText(song.key, Qt::MatchExactly | Qt::MatchCaseSensitive));
    ui->bpmLineEdit->setText(QString::number(song.bpm));
    m_song = song;

    for (QCheckBox *box : {ui->checkBoxToAllAuthor, ui->checkBoxToAllArtist, ui->checkBoxToAllGenre,
                           ui->checkBoxToAllTitle})
        box->setChecked(false);
    ui->checkBoxToAllTitle->setEnabled(false);
    ui->radioButtonTitle1->setChecked(true);
    m_applyToAllAuthor = false;
    m_applyToAllArtist = false;
    m_applyToAllGenre = false;
    m_applyToAllTitle = false;
}

void DataEditDialog::getSong(SongInfo &song) const
{
    song.title = ui->titleLineEdit->text().trimmed();
    song.author = ui->authorLineEdit->text().trimmed();
    song.artist = ui->artistComboBox->currentText().trimmed();
    song.genre = ui->genreComboBox->currentText().trimmed();
    song.key = ui->keyComboBox->currentText().trimmed();
    song.length =
        ui->lenMmLineEdit->text().toInt() * secondsPerMinute + ui->lenSsLineEdit->text().toInt();
    song.bpm = ui->bpmLineEdit->text().toInt();
}

void DataEditDialog::on_savePushButton_clicked()
{
    accept();
}

void DataEditDialog::on_exitPushButton_clicked()
{
    reject();
}

void DataEditDialog::on_checkBoxToAllAuthor_clicked()
{
    m_applyToAllAuthor = confirmedForAll(
        ui->checkBoxToAllAuthor,
        tr("L'autore inserito verrà applicato a tutte le song della lista, sei sicuro?"));
}

void DataEditDialog::on_checkBoxToAllArtist_clicked()
{
    m_applyToAllArtist = confirmedForAll(
        ui->checkBoxToAllArtist,
        tr("L'interprete inserito verrà applicato a tutte le song della lista, sei sicuro?"));
}

void DataEditDialog::on_checkBoxToAllGenre_clicked()
{
    m_applyToAllGenre = confirmedForAll(
        ui->checkBoxToAllGenre,
        tr("Il genere inserito verrà applicato a tutte le song della lista, sei sicuro?"));
}

void DataEditDialog::on_checkBoxToAllTitle_clicked()
{
    // required wording: "non il nome del file"
    m_applyToAllTitle =
        ui->checkBoxToAllTitle->isEnabled()
        && confirmedForAll(
            ui->checkBoxToAllTitle,
            tr("Il titolo di tutte le song della lista verrà sovrascritto non il nome "
               "del file, sei sicuro?"));
}

bool DataEditDialog::confirmedForAll(QCheckBox *box, const QString &question)
{
    if (box->isChecked()
        && QMessageBox::question(this, tr("ATTENZIONE"), question,
                                 QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
            != QMessageBox::Yes)
        box->setChecked(false);
    return box->isChecked();
}

void DataEditDialog::on_radioButtonTitle1_clicked()
{
    if (!ui->radioButtonTitle1->isChecked())
        return;
    // required: the title flag keeps what its last click gave it
    ui->checkBoxToAllTitle->setChecked(false);
    ui->checkBoxToAllTitle->setEnabled(false);
    ui->titleLineEdit->setText(m_song.title);
}

void DataEditDialog::on_radioButtonTitle2_clicked()
{
    if (!ui->radioButtonTitle2->isChecked())
        return;
    ui->checkBoxToAllTitle->setEnabled(true);
    ui->titleLineEdit->setText(SongPath::baseName(m_song.filename));
}

} // namespace tarvel4
