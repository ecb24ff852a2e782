#include "ui/helpdialog.h"

#include "library/usersettings.h"
#include "ui_helpdialog.h"

#include <QEvent>
#include <QFile>
#include <QScreen>

namespace tarvel4 {

HelpDialog::HelpDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::HelpDialog>())
{
    ui->setupUi(this);
    const QSize comfortable(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 36);
    resize(comfortable.boundedTo(screen()->availableSize() * 9 / 10));
    ui->textBrowser->document()->setDefaultStyleSheet(
        QStringLiteral("h1, h2, h3 { color: %1; }").arg(palette().color(QPalette::Link).name()));
    loadPage();
}

HelpDialog::~HelpDialog() = default;

void HelpDialog::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    setWindowTitle(tr("Aiuto Tarvel4 Soft"));
    loadPage();
}

void HelpDialog::loadPage()
{
    const QString italian = QStringLiteral("it");
    // required: German readers get the English page
    QFile page(UserSettings::language(italian) == italian ? QStringLiteral(":/help/help_it.html")
                                                          : QStringLiteral(":/help/help_en.html"));
    if (page.open(QIODevice::ReadOnly))
        ui->textBrowser->setHtml(QString::fromUtf8(page.readAll()));
}

} // namespace tarvel4
