#include "ui/windowhost.h"

#include "ui/backupdialog.h"
#include "ui/nocopyrightdialog.h"
#include "ui/proceeddialog.h"
#include "ui/progressdialog.h"

namespace tarvel4 {

WindowHost::WindowHost(QWidget *window)
    : m_window(window)
{}

WindowHost::~WindowHost() = default;

void WindowHost::beginProgress(const ProgressTexts &texts, int maximum)
{
    m_progressDialog = std::make_unique<ProgressDialog>(texts, maximum, m_window);
}

void WindowHost::setProgressMaximum(int maximum)
{
    if (m_progressDialog)
        m_progressDialog->setMaximum(maximum);
}

void WindowHost::setProgress(int value)
{
    if (!m_progressDialog)
        return;
    m_progressDialog->setLabelText(tr("%1 di %2").arg(value).arg(m_progressDialog->maximum()));
    setProgressValue(value);
}

void WindowHost::setProgressValue(int value)
{
    if (m_progressDialog)
        m_progressDialog->setValue(value);
    processPendingEvents();
}

void WindowHost::processPendingEvents()
{
    QCoreApplication::processEvents();
}

void WindowHost::endProgress()
{
    m_progressDialog.reset();
}

bool WindowHost::wasCancelled() const
{
    return m_stopped || (m_progressDialog && m_progressDialog->cancelled());
}

Answer WindowHost::askNotPublished(const QString &fileName)
{
    NoCopyrightDialog dialog(dialogParent());
    dialog.setFileName(fileName);
    return ask(dialog);
}

Answer WindowHost::askOverwrite(const QString &fileName)
{
    NoCopyrightDialog dialog(dialogParent());
    dialog.setFileName(fileName);
    dialog.setMessage(tr("esiste già, vuoi sostituirlo?"));
    return ask(dialog);
}

Answer WindowHost::ask(NoCopyrightDialog &dialog)
{
    const auto answer = Answer(dialog.exec()); // required: closing the dialog answers yes
    return m_stopped ? Answer::NoToAll : answer;
}

BackupChoice WindowHost::askBackup()
{
    BackupDialog dialog(dialogParent());
    BackupChoice choice;
    choice.action = BackupChoice::Action(dialog.exec());
    choice.folder = dialog.backupDir();
    return choice;
}

ProceedChoice WindowHost::askProceed(const ImportSummary &summary)
{
    ProceedDialog dialog(dialogParent());
    dialog.setSummary(summary.found, summary.published, summary.unknown);
    dialog.setProblems(summary.problems);
    ProceedChoice choice;
    choice.synchronise = dialog.exec() == QDialog::Accepted;
    choice.showAgain = dialog.showAgain();
    return choice;
}

void WindowHost::information(const QString &title, const QString &text, const QStringList &details)
{
    message(QMessageBox::Information, title, text, details);
}

void WindowHost::warning(const QString &title, const QString &text, const QStringList &details)
{
    message(QMessageBox::Warning, title, text, details);
}

void WindowHost::critical(const QString &title, const QString &text, const QStringList &details)
{
    message(QMessageBox::Critical, title, text, details);
}

/** A question asked during a run lies over its progress. */
QWidget *WindowHost::dialogParent() const
{
    return m_progressDialog ? m_progressDialog.get() : m_window;
}

void WindowHost::message(QMessageBox::Icon icon, const QString &title, const QString &text,
                         const QStringList &details)
{
    QMessageBox box(icon, title, text, QMessageBox::Ok, dialogParent());
    box.setTextFormat(Qt::PlainText);
    if (icon == QMessageBox::Information)
        box.setInformativeText(details.join(u'\n')); // too few and too welcome to be hidden
    else
        box.setDetailedText(details.join(u'\n')); // no button for it where there is none
    box.exec();
}

} // namespace tarvel4
