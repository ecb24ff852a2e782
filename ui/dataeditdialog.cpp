#include "ui/dataeditdialog.h"

#include "library/songpath.h"
#include "songs/song.h"
#include "ui/fieldnotes.h"
#include "ui/listcompleter.h"
#include "ui_dataeditdialog.h"

#include <QMessageBox>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QShortcut>

#include <algorithm>
#include <tuple>

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

/** Where the list has the text, it opens there. */
void showText(QComboBox *box, const QString &text)
{
    box->setCurrentIndex(box->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    showText(box->lineEdit(), text);
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

    m_notes = new FieldNotes(ui->noteIconLabel, ui->noteLabel, this);
    const std::pair<SongField, QLineEdit *> texts[] = {
        {SongField::Title, ui->titleLineEdit},
        {SongField::Artist, ui->artistComboBox->lineEdit()},
        {SongField::Genre, ui->genreComboBox->lineEdit()},
        {SongField::Author, ui->authorLineEdit}};
    for (const auto &[field, edit] : texts) {
        m_notes->addField(keyOf(field), edit);
        connect(edit, &QLineEdit::textChanged, this, &DataEditDialog::showNotes);
    }
    addStep(ui->previousPushButton, tr("Salva le modifiche e passa alla song precedente"),
            "Alt+PgUp");
    addStep(ui->nextPushButton, tr("Salva le modifiche e passa alla song successiva"),
            "Alt+PgDown");
}

DataEditDialog::~DataEditDialog() = default;

QSize DataEditDialog::sizeHint() const
{
    constexpr int moreLetters = 8; // than the rows need
    return QDialog::sizeHint() + QSize(fontMetrics().averageCharWidth() * moreLetters, 0);
}

/** What stands in rows of its own begins below the fields, or further left where it is narrow. */
void DataEditDialog::showEvent(QShowEvent *event)
{
    int column = 0;
    for (const QLabel *label :
         {ui->titoloSongLabel, ui->interpreteLabel, ui->genereMusicaleLabel, ui->autoreLabel})
        column = std::max(column, label->sizeHint().width());
    column = std::max(column, ui->durataLabel->sizeHint().width());
    ui->durataLabel->setMaximumWidth(column);
    ui->titleSourceIndent->setMaximumWidth(column);
    if (!testAttribute(Qt::WA_Resized)) // by itself it takes two thirds of a screen at most
        resize(sizeHint().boundedTo(screen()->availableSize()));
    QDialog::showEvent(event);
}

/** The keys are told in the tooltip. */
void DataEditDialog::addStep(QPushButton *button, const QString &tip, const char *keys)
{
    const QKeySequence sequence(QLatin1String(keys), QKeySequence::PortableText);
    button->setToolTip(
        QStringLiteral("%1 (%2)").arg(tip, sequence.toString(QKeySequence::NativeText)));
    connect(new QShortcut(sequence, this), &QShortcut::activated, button, &QPushButton::click);
}

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
    m_check = nullptr; // it was about another one
    ui->fileNameLabel->setText(song.filename);
    ui->formatLabel->setText(song.format);
    showText(ui->titleLineEdit, song.title);
    showText(ui->authorLineEdit, song.author);
    showText(ui->artistComboBox, song.artist);
    showText(ui->genreComboBox, song.genre);
    ui->lenMmLineEdit->setText(QString::number(song.length / secondsPerMinute));
    ui->lenSsLineEdit->setText(QString::number(song.length % secondsPerMinute));
    // required: a key that is not listed selects nothing, and is saved as an empty one
    ui->keyComboBox->setCurrentIndex(
        ui->keyComboBox->findText(song.key, Qt::MatchExactly | Qt::MatchCaseSensitive));
    ui->bpmLineEdit->setText(QString::number(song.bpm));
    m_song = song;
    ui->radioButtonTitle1->setChecked(true);
    clearApplyToAll();
    m_shown = edited();
    showNotes();
}

void DataEditDialog::clearApplyToAll()
{
    for (QCheckBox *box : {ui->checkBoxToAllAuthor, ui->checkBoxToAllArtist, ui->checkBoxToAllGenre,
                           ui->checkBoxToAllTitle})
        box->setChecked(false);
    ui->checkBoxToAllTitle->setEnabled(ui->radioButtonTitle2->isChecked());
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

SongInfo DataEditDialog::edited() const
{
    SongInfo song = m_song;
    getSong(song);
    return song;
}

bool DataEditDialog::isChanged() const
{
    const auto fields = [](const SongInfo &song) {
        return std::tie(song.title, song.author, song.artist, song.genre, song.key, song.length,
                        song.bpm);
    };
    const SongInfo now = edited();
    return fields(now) != fields(m_shown) || m_applyToAllAuthor || m_applyToAllArtist
        || m_applyToAllGenre || m_applyToAllTitle;
}

void DataEditDialog::setCheck(std::function<QVector<FieldNote>(const SongInfo &)> check)
{
    m_check = std::move(check);
    showNotes();
}

void DataEditDialog::showNotes()
{
    m_notes->show(m_check ? m_check(edited()) : QVector<FieldNote>());
}

void DataEditDialog::setNeighbours(bool hasPrevious, bool hasNext)
{
    ui->previousPushButton->setEnabled(hasPrevious);
    ui->nextPushButton->setEnabled(hasNext);
}

void DataEditDialog::on_previousPushButton_clicked()
{
    Q_EMIT stepRequested(-1);
}

void DataEditDialog::on_nextPushButton_clicked()
{
    Q_EMIT stepRequested(1);
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
