#include "ui/indexdialog.h"

#include "indexer/index.h"
#include "library/indexjob.h"
#include "library/recoveryjob.h"
#include "library/usersettings.h"
#include "ui/announcement.h"
#include "ui/causebox.h"
#include "ui/folderchooser.h"
#include "ui_indexdialog.h"

#include <QFileInfo>
#include <QMessageBox>
#include <QScreen>

namespace tarvel4 {

namespace {

constexpr int paintInterval = 40; // milliseconds
constexpr int full = 100;

QString withoutTrailingSeparator(const QString &path)
{
    const bool separated = path.endsWith(QLatin1Char('/')) || path.endsWith(QLatin1Char('\\'));
    return separated ? path.chopped(1) : path;
}

} // namespace

IndexDialog::IndexDialog(QWidget *parent, const DiskCheckTimings &timings)
    : QDialog(parent)
    , ui(std::make_unique<Ui::IndexDialog>())
    , m_timings(timings)
{
    ui->setupUi(this);
    // the smallest size of a dialog does not count the lines of a text that wraps
    ui->pathLabel->ensurePolished();
    ui->pathLabel->setMinimumHeight(ui->pathLabel->heightForWidth(ui->pathLabel->minimumWidth()));
    ui->pathLineEdit->setText(UserSettings::mediaRoot());
    ui->checkDiskCheckBox->setEnabled(ui->rebuildRadioButton->isChecked()); // an update ignores it
    connect(ui->rebuildRadioButton, &QAbstractButton::toggled, ui->checkDiskCheckBox,
            &QWidget::setEnabled);
    QPlainTextEdit *report = ui->reportPlainTextEdit;
    report->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // one line has no room where low
    connect(report, &QPlainTextEdit::textChanged, report, [report] {
        report->setVerticalScrollBarPolicy(report->document()->isEmpty() ? Qt::ScrollBarAlwaysOff
                                                                         : Qt::ScrollBarAsNeeded);
    });
    resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10)); // the report needs its room
}

IndexDialog::~IndexDialog() = default;

void IndexDialog::reject()
{
    if (!m_running)
        QDialog::reject();
}

void IndexDialog::browseDir()
{
    const QString folder = chooseFolder(this, tr("Scegli cartella"), FolderKind::Memory);
    if (folder.isEmpty())
        return;
    ui->pathLineEdit->setText(folder);
    UserSettings::setMediaRoot(folder);
}

void IndexDialog::updateLabelNum(int count)
{
    m_found = count;
    if (m_running && !m_foundPace.isDue())
        return;
    ui->numberLabel->setNum(count);
    paintNow();
}

void IndexDialog::initProgress(int maximum)
{
    ui->progressBar->setRange(0, maximum);
}

void IndexDialog::setProgressValue(int value)
{
    if (m_running && value < ui->progressBar->maximum() && !m_progressPace.isDue())
        return;
    ui->progressBar->setValue(value);
    paintNow();
}

void IndexDialog::updateLabelCurrPath(const QString &path)
{
    m_currentPath = path;
    if (m_running && !m_pathPace.isDue())
        return;
    ui->currentPathLabel->setText(path);
    paintNow();
}

void IndexDialog::errorFromIndexReceived(const QString &text)
{
    ui->reportPlainTextEdit->appendPlainText(text);
    ++m_errors;
    paintNow();
}

void IndexDialog::on_startPushButton_clicked()
{
    const QString path = ui->pathLineEdit->text();
    if (!QFileInfo::exists(path)) {
        QMessageBox::warning(this, tr("Ottimizza memoria"),
                             tr("Il percorso selezionato non esiste"));
        ui->pathLineEdit->setFocus();
        return;
    }
    setRunning(true);
    run(withoutTrailingSeparator(path));
    setRunning(false);
}

void IndexDialog::setRunning(bool running)
{
    m_running = running;
    ui->choiceWidget->setEnabled(!running);
    ui->startPushButton->setEnabled(!running);
    ui->closePushButton->setEnabled(!running);
    if (running) {
        setCursor(Qt::BusyCursor);
        Announcement::say(*this, tr("Ottimizzazione memoria in corso..."));
    } else {
        updateLabelNum(m_found); // the last steps may have been held back
        updateLabelCurrPath(m_currentPath);
        unsetCursor();
        ui->closePushButton->setFocus();
    }
}

void IndexDialog::run(const QString &path)
{
    m_lastPaint.start();
    updateLabelNum(0);
    setProgressValue(0);
    repaint();
    if (ui->checkDiskCheckBox->isChecked() && ui->rebuildRadioButton->isChecked()
        && !passesDiskCheck(path))
        return;

    clearReport();
    ui->reportPlainTextEdit->appendPlainText(tr("Ottimizzazione memoria in corso..."));
    repaint();
    reportOutcome(buildIndex(path));
    ui->reportPlainTextEdit->appendPlainText(tr("Operazione completata"));
}

/** False when the memory has errors that only formatting removes. */
bool IndexDialog::passesDiskCheck(const QString &path)
{
    switch (DiskCheck(m_timings).run(path)) {
    case DiskCheck::NotRun:
        QMessageBox::warning(this, tr("ATTENZIONE"), tr("Controllo memoria non eseguito!"));
        return true;
    case DiskCheck::ErrorsLeft:
        fillProgress();
        QMessageBox::critical(this, tr("Controllo memoria"),
                              tr("Non è stato possibile correggere gli errori, è necesario "
                                 "formattare la memoria")); // required spelling
        return false;
    case DiskCheck::NoErrors:
    case DiskCheck::ErrorsFixed:
        break;
    }
    return true;
}

IndexSummary IndexDialog::buildIndex(const QString &root)
{
    Index index;
    connect(&index, &Index::fileFoundChanged, this, &IndexDialog::updateLabelNum);
    connect(&index, &Index::progressMaxSetup, this, &IndexDialog::initProgress);
    connect(&index, &Index::progressValueChanged, this, &IndexDialog::setProgressValue);
    connect(&index, &Index::currentPathChanged, this, &IndexDialog::updateLabelCurrPath);
    connect(&index, &Index::errorFromIndex, this, &IndexDialog::errorFromIndexReceived);
    index.setOnRecovered(
        [this](const QString &path, Recovery::Result result, const Outcome &cause) {
            ui->reportPlainTextEdit->appendPlainText(RecoveryJob::sentence(path, result, cause));
            paintNow();
        });
    const bool isUpdate = ui->updateRadioButton->isChecked();
    return IndexJob::run(isUpdate ? IndexJob::Kind::Update : IndexJob::Kind::Rebuild, root, index);
}

void IndexDialog::reportOutcome(const IndexSummary &index)
{
    const QString title = tr("Ottimizza memoria");
    if (m_errors != 0) {
        QMessageBox::critical(this, title,
                              tr("Durante l'operazione si sono verificati alcuni errori.\n"
                                 "Consultare il report per maggiori informazioni."));
    } else if (index.isDone) {
        QMessageBox::information(this, title, tr("Operazione completata con successo"));
    } else {
        fillProgress();
        showWithCause(*this, QMessageBox::Critical, title,
                      tr("Operazione non riuscita.\nAssicurarsi che il disco abbia "
                         "sufficiente spazio libero e che non sia protetto da scrittura."),
                      index.cause);
    }
}

void IndexDialog::clearReport()
{
    ui->reportPlainTextEdit->clear();
    m_errors = 0;
}

void IndexDialog::fillProgress()
{
    initProgress(full);
    setProgressValue(full);
}

/** Shows at once what a run has reached, since no events are processed while the index is built. */
void IndexDialog::paintNow()
{
    if (!m_running || !m_lastPaint.hasExpired(paintInterval))
        return;
    repaint();
    m_lastPaint.restart();
}

} // namespace tarvel4
