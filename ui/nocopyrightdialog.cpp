#include "ui/nocopyrightdialog.h"

#include "ui/filefacts.h"
#include "ui_nocopyrightdialog.h"

#include <QKeyEvent>

namespace tarvel4 {

namespace {

enum Result { Yes = 0, YesToAll = 1, No = 2, NoToAll = 3 };

// required: to close the question is to say yes
static_assert(static_cast<int>(Yes) == static_cast<int>(QDialog::Rejected),
              "closing a dialog rejects it");

} // namespace

NoCopyrightDialog::NoCopyrightDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::NoCopyrightDialog>())
{
    ui->setupUi(this);
    ui->comparisonWidget->hide();
    // the question can come up under the user's fingers: a stray Enter must change no song
    ui->noPushButton->setDefault(true);
    ui->noPushButton->setFocus();
}

NoCopyrightDialog::~NoCopyrightDialog() = default;

void NoCopyrightDialog::setFileName(const QString &name)
{
    ui->fileNameLabel->setText(name);
}

void NoCopyrightDialog::compare(const QString &source, const QString &destination)
{
    ui->sourceFactsLabel->setText(FileFacts::sentence(source, destination));
    ui->destinationFactsLabel->setText(FileFacts::sentence(destination, source));
    ui->comparisonWidget->show();
}

void NoCopyrightDialog::setMessage(const QString &text)
{
    ui->messageLabel->setText(text);
}

void NoCopyrightDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel))
        done(No); // left to QDialog it would close the question, which is to say yes
    else
        QDialog::keyPressEvent(event);
}

void NoCopyrightDialog::on_yesPushButton_clicked()
{
    done(Yes);
}

void NoCopyrightDialog::on_yesAllPushButton_clicked()
{
    done(YesToAll);
}

void NoCopyrightDialog::on_noPushButton_clicked()
{
    done(No);
}

void NoCopyrightDialog::on_noAllPushButton_clicked()
{
    done(NoToAll);
}

} // namespace tarvel4
