#include "ui/aboutdialog.h"

#include "library/programversion.h"

#include "ui_aboutdialog.h"

#include <QDate>
#include <QLocale>

namespace tarvel4 {

namespace {

/** The frame that both rich texts stand in. */
QString framed(const QString &paragraph)
{
    return QStringLiteral(
               "<html><head><meta name=\"qrichtext\" content=\"1\" /><style type=\"text/css\">"
               "p, li { white-space: pre-wrap; }"
               "</style></head><body style=\" font-family:'Sans Serif'; font-size:12pt;"
               " font-weight:400; font-style:normal;\">"
               "<p style=\" margin-top:0px; margin-bottom:0px; margin-left:0px; margin-right:0px;"
               " -qt-block-indent:0; text-indent:0px;\">")
        + paragraph + QStringLiteral("</p></body></html>");
}

} // namespace

AboutDialog::AboutDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::AboutDialog>())
{
    ui->setupUi(this);
    const QString date = buildDate(QStringLiteral(__DATE__), QLocale::system());
    ui->versionLabel->setText(
        framed(tr("Version:&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp; %1<br/>"
                  "Build date: %2<br/>")
                   .arg(QLatin1String(programVersion()), date.toHtmlEscaped())));
    ui->copyrightLabel->setText(framed(
        tr("Copyright &copy; 2026 <a href=\"https://www.k-varo.example/\">K-Varo</a>. Tutti i "
           "diritti riservati.<br/>Assistenza: "
           "<a href=\"mailto:assistenza@k-varo.example\">assistenza@k-varo.example</a>")));
}

AboutDialog::~AboutDialog() = default;

QString AboutDialog::buildDate(const QString &compilerDate, const QLocale &locale)
{
    const QDate date = QLocale(QStringLiteral("en_US"))
                           .toDate(compilerDate.simplified(), QStringLiteral("MMM d yyyy"));
    return locale.toString(date, QLocale::ShortFormat);
}

} // namespace tarvel4
