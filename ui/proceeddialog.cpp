#include "ui/proceeddialog.h"

#include "ui_proceeddialog.h"

namespace tarvel4 {

ProceedDialog::ProceedDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::ProceedDialog>())
{
    ui->setupUi(this);
    ui->yesPushButton->setFocus();
    ui->problemsTextEdit->hide();
    connect(ui->problemsPushButton, &QPushButton::toggled, this, [this](bool isShown) {
        ui->problemsTextEdit->setVisible(isShown);
        adjustSize();
    });
    setProblems({});
}

ProceedDialog::~ProceedDialog() = default;

void ProceedDialog::setSummary(int songs, int makerSongs, int unknown)
{
    // required spelling
    ui->msgLabel->setText(
        tr("Sono stati esaminti %1 files, trovate %2 songs di cui %3 di (c)K-Varo")
            .arg(songs + unknown)
            .arg(songs)
            .arg(makerSongs));
}

void ProceedDialog::setProblems(const QStringList &problems)
{
    ui->problemsPushButton->setVisible(!problems.isEmpty());
    ui->problemsTextEdit->setPlainText(problems.join(QLatin1Char('\n')));
}

bool ProceedDialog::showAgain() const
{
    return !ui->checkBoxShowAgain->isChecked();
}

void ProceedDialog::on_yesPushButton_clicked()
{
    accept();
}

void ProceedDialog::on_noPushButton_clicked()
{
    reject();
}

} // namespace tarvel4
