#include "ui/proceeddialog.h"

#include "ui_proceeddialog.h"

namespace tarvel4 {

ProceedDialog::ProceedDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::ProceedDialog>())
{
    ui->setupUi(this);
    ui->yesPushButton->setFocus();
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
